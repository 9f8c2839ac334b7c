// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/module/controls/rollgrid.h"
#include "tests/support/messageanswers.h"
#include "tests/support/recordinghost.h"
#include "tests/support/sheetreader.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>

using namespace Qt::StringLiterals;

/// The menu of a grid, by mouse and keys: copying, sorting, files for spreadsheet programs.
class TestDBGridMenu : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theMenuOpensByMouseAndKeys();
    void theMenuBeginsWithTheScreensActions();
    void anEmptyGridOffersNoRows();
    void theMenuSortsByAColumn();
    void ctrlCCopiesTheRowAsItIsRead();
    void severalRowsAreCopiedInTheOrderShown();
    void selectedCellsAloneAreCopied();
    void cellsWithTabsStayOneCell();
    void allIsCopiedWithItsTitles();
    void allOfALongListIsFetchedFirst();
    void aGridThatIsLeftHasOneRowSelected();
    void theMenuLeavesTheSelection();
    void rowsAreExportedAsTheyStand();
    void aCsvFileIsExported();
    void theLastFolderIsRemembered();
    void anExportThatFailsIsReported();
    void anAbandonedExportWritesNothing();

private:
    static QString clipboard() { return QApplication::clipboard()->text(); }
    static QMenu *menu() { return qobject_cast<QMenu *>(QApplication::activePopupWidget()); }
    /// Opens the menu with the menu key and takes what is named so.
    void choose(const QString &text);
    void expectFile(MessageAnswers &answers, const QString &name);

    QTemporaryDir m_folder;
    std::unique_ptr<RecordingHost> m_host;
    std::unique_ptr<RollGrid> m;
};

void TestDBGridMenu::init()
{
    m_host = std::make_unique<RecordingHost>();
    m_host->settings().setValue(u"Pastas/planilhas"_s, m_folder.path());
    m = std::make_unique<RollGrid>();
    m->grid->setWindowTitle(u"Baixa/Rolos"_s);
    m->add(u"1"_s, 20.5);
    m->add(u"10"_s, 1234.5);
    m->add(u"9"_s, 3.25);
    m->rolls.First();
    m->show();
    QApplication::clipboard()->setText(u"before"_s);
}

void TestDBGridMenu::cleanup()
{
    if (QMenu *open = menu())
        open->close();
    m.reset();
    m_host.reset();
}

void TestDBGridMenu::choose(const QString &text)
{
    QTest::keyClick(m->grid, Qt::Key_Menu);
    QVERIFY(menu());
    QList<QAction *> actions = menu()->actions();
    for (QMenu *inner : menu()->findChildren<QMenu *>())
        actions += inner->actions();
    for (QAction *action : actions) {
        if (action->text().remove(u'&').section(u'\t', 0, 0) == text) {
            QVERIFY(action->isEnabled());
            menu()->close();
            action->trigger();
            return;
        }
    }
    QFAIL(qPrintable(text + u" is missing"_s));
}

void TestDBGridMenu::theMenuOpensByMouseAndKeys()
{
    const QPoint second = m->grid->visualRect(m->grid->rows()->index(1, 0)).center();
    QTest::mouseClick(m->grid->viewport(), Qt::RightButton, {}, second);
    QContextMenuEvent asked(QContextMenuEvent::Mouse, second, m->grid->viewport()->mapToGlobal(second));
    QApplication::sendEvent(m->grid->viewport(), &asked);
    QVERIFY(menu());
    QCOMPARE(m->current(), u"10"_s); // the row beneath the mouse
    QStringList texts;
    for (const QAction *action : menu()->actions())
        texts.append(action->text().remove(u'&').section(u'\t', 0, 0));
    texts.removeAll(QString());
    QCOMPARE(texts,
        (QStringList{u"Copiar"_s, u"Copiar tudo"_s, u"Ordenar"_s, u"Exportar para planilha (XLSX)…"_s,
            u"Exportar CSV…"_s, u"Restaurar colunas"_s}));
    menu()->close();
    QTest::keyClick(m->grid, Qt::Key_F10, Qt::ShiftModifier);
    QVERIFY(menu());
    const QRect row = m->grid->visualRect(m->grid->currentIndex());
    QVERIFY(m->grid->viewport()->mapFromGlobal(menu()->pos()).y() >= row.top());
    menu()->close();
    QTest::keyClick(m->grid, Qt::Key_Menu);
    QVERIFY(menu());
    QTest::keyClick(menu(), Qt::Key_C); // by the letter that is underlined
    QCOMPARE(clipboard(), u"10\t1.234,500\t09/03/2026\t1"_s);
}

void TestDBGridMenu::theMenuBeginsWithTheScreensActions()
{
    QAction print(u"Imprimir Etiqueta"_s);
    m->grid->addAction(&print);
    QTest::keyClick(m->grid, Qt::Key_Menu);
    QVERIFY(menu());
    QCOMPARE(menu()->actions().first(), &print);
    QVERIFY(menu()->actions().at(1)->isSeparator());
}

void TestDBGridMenu::anEmptyGridOffersNoRows()
{
    m->rolls.EmptyDataSet();
    QTest::keyClick(m->grid, Qt::Key_Menu);
    QVERIFY(menu());
    for (const QAction *action : menu()->actions())
        QCOMPARE(action->isEnabled(), action->isSeparator() || action->text().contains(u"Restaurar"_s));
}

void TestDBGridMenu::theMenuSortsByAColumn()
{
    choose(u"Peso"_s);
    QCOMPARE(m->shown(0), (QStringList{u"9"_s, u"1"_s, u"10"_s}));
    choose(u"Peso"_s);
    QCOMPARE(m->shown(0), (QStringList{u"10"_s, u"1"_s, u"9"_s}));
}

void TestDBGridMenu::ctrlCCopiesTheRowAsItIsRead()
{
    QTest::keyClick(m->grid, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), u"1\t20,500\t09/03/2026\t1"_s);
    m->header()->moveSection(1, 0);
    choose(u"Copiar"_s);
    QCOMPARE(clipboard(), u"20,500\t1\t09/03/2026\t1"_s);
}

void TestDBGridMenu::severalRowsAreCopiedInTheOrderShown()
{
    m->clickTitle(1);
    QTest::keyClick(m->grid, Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(m->grid, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(m->grid, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), u"9\t3,250\t09/03/2026\t1\n1\t20,500\t09/03/2026\t1"_s);
    QTest::keyClick(m->grid, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(m->grid, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard().count(u'\n'), 2);
}

void TestDBGridMenu::selectedCellsAloneAreCopied()
{
    m->grid->setSelectionBehavior(QAbstractItemView::SelectItems);
    m->grid->clearSelection();
    m->grid->selectionModel()->select(m->grid->rows()->index(0, 1), QItemSelectionModel::Select);
    m->grid->selectionModel()->select(m->grid->rows()->index(2, 1), QItemSelectionModel::Select);
    QTest::keyClick(m->grid, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), u"20,500\n3,250"_s);
}

void TestDBGridMenu::cellsWithTabsStayOneCell()
{
    m->rolls.CreateDataSet({TField(u"OBS"_s, TField::Type::Text), TField(u"BAIXA"_s, TField::Type::Text, 1).asTick()});
    m->rolls.Append();
    m->rolls.setValue(u"OBS"_s, u"a\tb\r\nc"_s);
    m->rolls.setValue(u"BAIXA"_s, u"S"_s);
    m->rolls.Post();
    QTest::keyClick(m->grid, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), u"a b c\tSim"_s);
}

void TestDBGridMenu::allIsCopiedWithItsTitles()
{
    m->clickTitle(1);
    choose(u"Copiar tudo"_s);
    QCOMPARE(clipboard(),
        u"Rolo\tPeso\tData\tTurno\n9\t3,250\t09/03/2026\t1\n1\t20,500\t09/03/2026\t1\n10\t1.234,500\t09/03/2026\t1"_s);
}

void TestDBGridMenu::allOfALongListIsFetchedFirst()
{
    NumbersInSteps numbers(1000, 200);
    m->grid->setDataSet(&numbers);
    choose(u"Copiar tudo"_s);
    QCOMPARE(clipboard().count(u'\n'), 1000);
    QCOMPARE(m_host->busy, 0);
    m->grid->setDataSet(nullptr);
}

void TestDBGridMenu::aGridThatIsLeftHasOneRowSelected()
{
    QPushButton button;
    button.setParent(m->grid); // in the same window
    button.show();
    QTest::keyClick(m->grid, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(m->grid->selectionModel()->selectedRows().size(), 3);
    button.setFocus();
    QCOMPARE(m->grid->selectionModel()->selectedRows().size(), 1);
    QCOMPARE(m->grid->selectionModel()->selectedRows().first().row(), m->rolls.row());
}

void TestDBGridMenu::theMenuLeavesTheSelection()
{
    QTest::keyClick(m->grid, Qt::Key_A, Qt::ControlModifier);
    choose(u"Copiar"_s);
    QCOMPARE(clipboard().count(u'\n'), 2);
}

/// The dialog for a file comes next; the name is typed over the one that it offers.
void TestDBGridMenu::expectFile(MessageAnswers &answers, const QString &name)
{
    answers.expectWindow([name](QWidget *window) {
        auto *dialog = qobject_cast<QFileDialog *>(window);
        QVERIFY(dialog);
        auto *typed = dialog->findChild<QLineEdit *>(u"fileNameEdit"_s);
        QVERIFY(typed);
        if (!name.isEmpty())
            typed->setText(name);
        QTest::keyClick(typed, Qt::Key_Return);
    });
}

void TestDBGridMenu::rowsAreExportedAsTheyStand()
{
    m->clickTitle(1);
    m->header()->moveSection(1, 0);
    MessageAnswers answers;
    expectFile(answers, {});
    choose(u"Exportar para planilha (XLSX)…"_s);
    QVERIFY(answers.allCame());
    const SheetReader sheet(m_folder.filePath(u"Baixa Rolos.xlsx"_s));
    QVERIFY(sheet.isReadable());
    QCOMPARE(sheet.cell(u"A1"_s).value, u"Peso"_s);
    QCOMPARE(sheet.cell(u"B2"_s).value, u"9"_s);
    QCOMPARE(sheet.cell(u"A2"_s).value.toDouble(), 3.25);
    QCOMPARE(sheet.cell(u"A4"_s).value.toDouble(), 1234.5);
    QCOMPARE(sheet.name(), u"Baixa Rolos"_s);
    QCOMPARE(m->current(), u"1"_s);
}

void TestDBGridMenu::aCsvFileIsExported()
{
    MessageAnswers answers;
    expectFile(answers, u"rolos"_s);
    choose(u"Exportar CSV…"_s);
    QFile file(m_folder.filePath(u"rolos.csv"_s));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(file.readAll()).section(u"\r\n"_s, 1, 1), u"1;20,500;09/03/2026;1"_s);
}

void TestDBGridMenu::theLastFolderIsRemembered()
{
    QVERIFY(QDir(m_folder.path()).mkpath(u"outra"_s));
    MessageAnswers answers;
    expectFile(answers, m_folder.filePath(u"outra/a"_s));
    choose(u"Exportar CSV…"_s);
    expectFile(answers, u"b"_s);
    choose(u"Exportar CSV…"_s);
    QVERIFY(QFile::exists(m_folder.filePath(u"outra/b.csv"_s)));
}

void TestDBGridMenu::anExportThatFailsIsReported()
{
    NumbersInSteps numbers(1000, 200);
    m->grid->setDataSet(&numbers);
    numbers.failing = true;
    MessageAnswers answers;
    expectFile(answers, u"falta"_s);
    choose(u"Exportar CSV…"_s);
    QCOMPARE(m_host->failures, QStringList{u"the server is gone"_s});
    QVERIFY(!QFile::exists(m_folder.filePath(u"falta.csv"_s)));
    numbers.failing = false;
    m->grid->setDataSet(nullptr);
}

void TestDBGridMenu::anAbandonedExportWritesNothing()
{
    MessageAnswers answers;
    answers.expectWindow([](QWidget *window) { QTest::keyClick(window, Qt::Key_Escape); });
    choose(u"Exportar CSV…"_s);
    QVERIFY(!QFile::exists(m_folder.filePath(u"Baixa Rolos.csv"_s)));
    QVERIFY(m_host->failures.isEmpty());
}

QTEST_MAIN(TestDBGridMenu)
#include "tst_dbgridmenu.moc"
