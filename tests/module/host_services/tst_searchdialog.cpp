// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/database.h"
#include "module/host_services/pesquisa.h"
#include "module/host_services/searchdialog.h"
#include "module/host_services/searchmodel.h"
#include "module/host_services/tabelas.h"
#include "tests/support/engines.h"
#include "tests/support/keys.h"
#include "tests/support/messageanswers.h"
#include "tests/support/recordinghost.h"
#include "tests/support/testdatabase.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

/// The search beside a client's code, worked from the keyboard.
class TestSearchDialog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }
    void init();
    void cleanup();

    void theFirstRowIsChosenByEnter();
    void arrowsChooseARow();
    void typingFilters();
    void enterRightAfterTypingTakesWhatTheTextFinds();
    void escapeCancels();
    void aCancelledSearchForgetsTheChoiceBefore();
    void nothingFoundCannotBeChosen();
    void controlAndANumberSort();
    void aClickedTitleSorts();
    void aDoubleClickChooses();
    void scrollingDownFetchesMore();
    void theCountIsShown();
    void hostileTextFindsNothing();

    void f4OpensTheSearchOfTheField();
    void screensInOneWindowHaveTheirOwnSearches();
    void noSearchOfAReadOnlyFieldOrADisabledButton();
    void theSearchHasItsTitleFilterAndColumns();
    void aFailingSearchIsReportedAndEnds();

private:
    /// Opens the search and does the work in it; afterwards it is closed.
    void search(const std::function<void(QWidget *)> &work);
    static QLineEdit *textOf(QWidget *dialog) { return dialog->findChild<QLineEdit *>(u"text"_s); }
    static QTableView *rowsOf(QWidget *dialog) { return dialog->findChild<QTableView *>(u"rows"_s); }
    static QStringList codesOf(QWidget *dialog);
    static void filter(QWidget *dialog, const QString &text, const QStringList &codes);

    std::unique_ptr<TestDatabase> m_data;
    std::unique_ptr<RecordingHost> m_host;
    std::unique_ptr<TTabela> m_tabela;
    std::unique_ptr<QWidget> m_form;
    QLineEdit *m_code = nullptr;
    TPesquisa *m_search = nullptr;
};

void TestSearchDialog::init()
{
    m_data = std::make_unique<TestDatabase>(Engines::current());
    m_data->addCommonData();
    m_host = std::make_unique<RecordingHost>();
    m_tabela = std::make_unique<TTabela>();
    m_tabela->IBDatabase->open(m_data->settings());
    m_form = std::make_unique<QWidget>();
    auto *layout = new QVBoxLayout(m_form.get());
    m_code = new QLineEdit;
    m_code->setObjectName(u"edtCliente"_s);
    m_search = new TPesquisa;
    m_search->setTabela(u"ENTIDADE"_s);
    m_search->setColunas(u"CODCLI=Código;NOME=Nome"_s);
    m_search->setTitulo(u"Clientes"_s);
    m_search->setCampo(u"edtCliente"_s);
    layout->addWidget(m_code);
    layout->addWidget(m_search);
    m_form->show();
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
    m_code->setFocus();
}

void TestSearchDialog::cleanup()
{
    m_form.reset();
    m_tabela.reset();
    m_host.reset();
    m_data.reset();
}

void TestSearchDialog::search(const std::function<void(QWidget *)> &work)
{
    MessageAnswers answers;
    answers.expectWindow(work);
    m_search->AbrePesquisa();
    QVERIFY(answers.allCame());
}

QStringList TestSearchDialog::codesOf(QWidget *dialog)
{
    const QAbstractItemModel *model = rowsOf(dialog)->model();
    QStringList codes;
    for (int row = 0; row < model->rowCount(); ++row)
        codes.append(model->index(row, 0).data().toString());
    return codes;
}

void TestSearchDialog::filter(QWidget *dialog, const QString &text, const QStringList &codes)
{
    textOf(dialog)->selectAll();
    Keys::type(textOf(dialog), text);
    QTRY_COMPARE(codesOf(dialog), codes);
}

void TestSearchDialog::theFirstRowIsChosenByEnter()
{
    QSignalSpy closed(m_search, &TPesquisa::FechaPesquisa);
    search([](QWidget *dialog) { QTest::keyClick(textOf(dialog), Qt::Key_Return); });
    QCOMPARE(closed.size(), 1);
    QCOMPARE(m_search->RetornoPesquisa(u"CODCLI"_s), u"00001"_s);
    QCOMPARE(m_search->RetornoPesquisa(u"nome"_s), u"Confecções Serra Azul Ltda"_s);
    QCOMPARE(m_search->RetornoPesquisa(u"GRUPO"_s), QString());
}

void TestSearchDialog::arrowsChooseARow()
{
    search([](QWidget *dialog) {
        QTest::keyClick(textOf(dialog), Qt::Key_Down);
        QTest::keyClick(textOf(dialog), Qt::Key_Down);
        QTest::keyClick(textOf(dialog), Qt::Key_Down);
        QTest::keyClick(textOf(dialog), Qt::Key_Up);
        QCOMPARE(QApplication::focusWidget(), textOf(dialog));
        QTest::keyClick(textOf(dialog), Qt::Key_Return);
    });
    QCOMPARE(m_search->RetornoPesquisa(u"CODCLI"_s), u"00002"_s);
}

void TestSearchDialog::typingFilters()
{
    search([](QWidget *dialog) {
        filter(dialog, u"azul"_s, {u"00001"_s});
        filter(dialog, u"são m"_s, {u"00002"_s});
        QTest::keyClick(textOf(dialog), Qt::Key_Return);
    });
    QCOMPARE(m_search->RetornoPesquisa(u"CODCLI"_s), u"00002"_s);
}

void TestSearchDialog::enterRightAfterTypingTakesWhatTheTextFinds()
{
    search([](QWidget *dialog) {
        Keys::type(textOf(dialog), u"00003"_s);
        QTest::keyClick(textOf(dialog), Qt::Key_Return);
    });
    QCOMPARE(m_search->RetornoPesquisa(u"CODCLI"_s), u"00003"_s);
}

void TestSearchDialog::escapeCancels()
{
    QSignalSpy closed(m_search, &TPesquisa::FechaPesquisa);
    search([](QWidget *dialog) { QTest::keyClick(textOf(dialog), Qt::Key_Escape); });
    QCOMPARE(closed.size(), 1);
    QCOMPARE(m_search->RetornoPesquisa(u"CODCLI"_s), QString());
}

void TestSearchDialog::aCancelledSearchForgetsTheChoiceBefore()
{
    search([](QWidget *dialog) { QTest::keyClick(textOf(dialog), Qt::Key_Return); });
    search([](QWidget *dialog) {
        auto *buttons = dialog->findChild<QDialogButtonBox *>(u"buttons"_s);
        QTest::mouseClick(buttons->button(QDialogButtonBox::Cancel), Qt::LeftButton);
    });
    QCOMPARE(m_search->RetornoPesquisa(u"CODCLI"_s), QString());
}

void TestSearchDialog::nothingFoundCannotBeChosen()
{
    search([](QWidget *dialog) {
        filter(dialog, u"nada"_s, {});
        QVERIFY(!dialog->findChild<QDialogButtonBox *>(u"buttons"_s)->button(QDialogButtonBox::Ok)->isEnabled());
        QTest::keyClick(textOf(dialog), Qt::Key_Return);
        QVERIFY(dialog->isVisible());
        QTest::keyClick(textOf(dialog), Qt::Key_Escape);
    });
    QCOMPARE(m_search->RetornoPesquisa(u"CODCLI"_s), QString());
}

void TestSearchDialog::controlAndANumberSort()
{
    const QStringList byName{u"00001"_s, u"00002"_s, u"00003"_s};
    const QStringList backwards{byName.rbegin(), byName.rend()};
    m_data->run(u"UPDATE {ENTIDADE} SET NOME = 'Zilda' WHERE CODCLI = '00001'"_s);
    search([&](QWidget *dialog) {
        QTest::keyClick(textOf(dialog), Qt::Key_2, Qt::ControlModifier);
        QCOMPARE(codesOf(dialog), QStringList({u"00002"_s, u"00003"_s, u"00001"_s}));
        QTest::keyClick(textOf(dialog), Qt::Key_2, Qt::ControlModifier);
        QCOMPARE(codesOf(dialog), QStringList({u"00001"_s, u"00003"_s, u"00002"_s}));
        QTest::keyClick(textOf(dialog), Qt::Key_1, Qt::ControlModifier);
        QCOMPARE(codesOf(dialog), byName);
        QTest::keyClick(textOf(dialog), Qt::Key_1, Qt::ControlModifier);
        QCOMPARE(codesOf(dialog), backwards);
        QTest::keyClick(textOf(dialog), Qt::Key_9, Qt::ControlModifier);
        QCOMPARE(codesOf(dialog), backwards);
        QCOMPARE(textOf(dialog)->text(), QString());
        QTest::keyClick(textOf(dialog), Qt::Key_Return);
    });
    QCOMPARE(m_search->RetornoPesquisa(u"CODCLI"_s), u"00003"_s);
}

void TestSearchDialog::aClickedTitleSorts()
{
    m_data->run(u"UPDATE {ENTIDADE} SET NOME = 'Zilda' WHERE CODCLI = '00001'"_s);
    search([&](QWidget *dialog) {
        QHeaderView *header = rowsOf(dialog)->horizontalHeader();
        const QPoint title(header->sectionViewportPosition(1) + 20, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, title);
        QCOMPARE(codesOf(dialog), QStringList({u"00002"_s, u"00003"_s, u"00001"_s}));
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, title);
        QCOMPARE(codesOf(dialog).first(), u"00001"_s);
        QTest::keyClick(textOf(dialog), Qt::Key_Escape);
    });
}

void TestSearchDialog::aDoubleClickChooses()
{
    search([](QWidget *dialog) {
        const QPoint cell = rowsOf(dialog)->visualRect(rowsOf(dialog)->model()->index(1, 1)).center();
        QTest::mouseClick(rowsOf(dialog)->viewport(), Qt::LeftButton, {}, cell);
        QTest::mouseDClick(rowsOf(dialog)->viewport(), Qt::LeftButton, {}, cell);
    });
    QCOMPARE(m_search->RetornoPesquisa(u"CODCLI"_s), u"00002"_s);
}

void TestSearchDialog::scrollingDownFetchesMore()
{
    for (int client = 100; client < 100 + 2 * SearchModel::pageSize; ++client)
        m_data->run(u"INSERT INTO {ENTIDADE} (CODCLI) VALUES ('%1')"_s.arg(client));
    search([](QWidget *dialog) {
        const QAbstractItemModel *model = rowsOf(dialog)->model();
        QCOMPARE(model->rowCount(), SearchModel::pageSize);
        for (int press = 0; press < 40 && model->rowCount() == SearchModel::pageSize; ++press) {
            QTest::keyClick(textOf(dialog), Qt::Key_PageDown);
            QCoreApplication::processEvents();
        }
        QTRY_VERIFY(model->rowCount() > SearchModel::pageSize);
        QTest::keyClick(textOf(dialog), Qt::Key_Return);
    });
    QVERIFY(!m_search->RetornoPesquisa(u"CODCLI"_s).isEmpty());
}

void TestSearchDialog::theCountIsShown()
{
    const auto count = [](QWidget *dialog) { return dialog->findChild<QLabel *>(u"count"_s)->text(); };
    search([&](QWidget *dialog) {
        QCOMPARE(count(dialog), u"3 registros"_s);
        filter(dialog, u"azul"_s, {u"00001"_s});
        QCOMPARE(count(dialog), u"1 registro"_s);
        filter(dialog, u"nada"_s, {});
        QCOMPARE(count(dialog), u"Nenhum registro encontrado"_s);
        QTest::keyClick(textOf(dialog), Qt::Key_Escape);
    });
    for (int client = 100; client < 100 + SearchModel::pageSize; ++client)
        m_data->run(u"INSERT INTO {ENTIDADE} (CODCLI) VALUES ('%1')"_s.arg(client));
    search([&](QWidget *dialog) {
        QCOMPARE(count(dialog), u"Mais de 100 registros"_s);
        QTest::keyClick(textOf(dialog), Qt::Key_Escape);
    });
}

void TestSearchDialog::hostileTextFindsNothing()
{
    search([](QWidget *dialog) {
        filter(dialog, u"'; DELETE FROM ENTIDADE_001; --"_s, {});
        filter(dialog, u"'"_s, {u"00003"_s});
        QTest::keyClick(textOf(dialog), Qt::Key_Escape);
    });
    QCOMPARE(m_data->count(u"ENTIDADE"_s), 3);
}

void TestSearchDialog::f4OpensTheSearchOfTheField()
{
    MessageAnswers answers;
    answers.expectWindow([](QWidget *dialog) { QTest::keyClick(textOf(dialog), Qt::Key_Return); }, u"Clientes"_s);
    QTest::keyClick(m_code, Qt::Key_F4);
    QVERIFY(answers.allCame());
    QCOMPARE(m_search->RetornoPesquisa(u"CODCLI"_s), u"00001"_s);
    QVERIFY(m_code->hasFocus() || m_form->focusWidget() == m_code);
}

/// Two screens stand in the main window, and both have a field of that name.
void TestSearchDialog::screensInOneWindowHaveTheirOwnSearches()
{
    QTabWidget window;
    QLineEdit *fields[2];
    for (int screen = 0; screen < 2; ++screen) {
        auto *form = new QWidget;
        auto *panel = new QWidget(form); // the search does not always stand right beside its field
        auto *search = new TPesquisa(panel);
        search->setTabela(u"ENTIDADE"_s);
        search->setColunas(u"CODCLI=Código;NOME=Nome"_s);
        search->setTitulo(u"Clientes %1"_s.arg(screen));
        search->setCampo(u"edtCliente"_s);
        fields[screen] = new QLineEdit(form);
        fields[screen]->setObjectName(u"edtCliente"_s);
        window.addTab(form, search->title());
    }
    window.show();
    window.setCurrentIndex(1);
    MessageAnswers answers;
    for (const int screen : {1, 0}) {
        window.setCurrentIndex(screen);
        answers.expectWindow(
            [](QWidget *dialog) { QTest::keyClick(textOf(dialog), Qt::Key_Escape); }, u"Clientes %1"_s.arg(screen));
        QTest::keyClick(fields[screen], Qt::Key_F4);
        QVERIFY(answers.allCame());
    }
}

void TestSearchDialog::noSearchOfAReadOnlyFieldOrADisabledButton()
{
    const MessageAnswers none;
    m_search->setEnabled(false);
    QTest::keyClick(m_code, Qt::Key_F4);
    m_search->setEnabled(true);
    m_code->setReadOnly(true);
    QTest::keyClick(m_code, Qt::Key_F4);
    m_code->setReadOnly(false);
    QTest::keyClick(m_code, Qt::Key_F4, Qt::AltModifier);
    QCOMPARE(none.shown().size(), 0);
}

void TestSearchDialog::theSearchHasItsTitleFilterAndColumns()
{
    m_search->setFilter(u"GRUPO = '2'"_s);
    search([](QWidget *dialog) {
        QCOMPARE(dialog->windowTitle(), u"Clientes"_s);
        QCOMPARE(codesOf(dialog), QStringList(u"00003"_s));
        QCOMPARE(rowsOf(dialog)->model()->headerData(1, Qt::Horizontal).toString(), u"Nome"_s);
        QTest::keyClick(textOf(dialog), Qt::Key_Return);
    });
    QCOMPARE(m_search->RetornoPesquisa(u"CODCLI"_s), u"00003"_s);
    m_search->setFilter({});
    m_search->setSQL(u"SELECT CODCLI, NOME FROM ENTIDADE_001 WHERE CODCLI > '00001'"_s);
    search([](QWidget *dialog) {
        QCOMPARE(codesOf(dialog), QStringList({u"00002"_s, u"00003"_s}));
        QTest::keyClick(textOf(dialog), Qt::Key_Escape);
    });
}

void TestSearchDialog::aFailingSearchIsReportedAndEnds()
{
    QSignalSpy closed(m_search, &TPesquisa::FechaPesquisa);
    m_search->setTabela(u"NADA"_s);
    m_search->AbrePesquisa();
    QCOMPARE(m_host->failures, QStringList(u"O banco de dados recusou a operação. Nada foi gravado."_s));
    QCOMPARE(closed.size(), 1);
    QCOMPARE(m_search->RetornoPesquisa(u"CODCLI"_s), QString());
}

QTEST_MAIN(TestSearchDialog)
#include "tst_searchdialog.moc"
