// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/application.h"
#include "host/mainwindow.h"
#include "host/qenhost.h"
#include "module/controls/dbgrid.h"
#include "module/form.h"
#include "module/host_services/busy.h"
#include "module/host_services/classregistry.h"
#include "module/host_services/clientdataset.h"
#include "module/host_services/comport.h"
#include "module/host_services/tabelas.h"
#include "module/host_services/table.h"
#include "tests/support/engines.h"
#include "tests/support/messageanswers.h"
#include "tests/support/testdatabase.h"

#include <QComboBox>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

/// A screen with two fields and a list of lots, that may refuse to close.
class TestForm : public TForm
{
    Q_OBJECT

public:
    TestForm()
    {
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(new QLabel);
        for (const QString &name : {u"edtUm"_s, u"edtDois"_s}) {
            auto *field = new QLineEdit;
            field->setObjectName(name);
            layout->addWidget(field);
        }
        lots->CreateDataSet({{u"LOTE"_s, TField::Type::Text, 5}, {u"QTDE"_s, TField::Type::Float}});
        for (const auto &[lot, kg] : {std::pair(u"A"_s, 20.0), {u"B"_s, 10.0}}) {
            lots->Append();
            lots->setValue(u"LOTE"_s, lot);
            lots->setValue(u"QTDE"_s, kg);
            lots->Post();
        }
        grid->setDataSet(lots);
        layout->addWidget(grid);
    }
    bool closes = true;
    TClientDataSet *const lots = new TClientDataSet(this);
    TDBGrid *const grid = new TDBGrid;

protected:
    void FormCreate() override { AbreTabelas({u"tbMateriais"_s}); }
    bool mayClose() override { return closes; }
};

class TstMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data();
    void init();
    void cleanup();

    void registeredScreensStandInTheirFoldersByTheirCaptions();
    void theTwoWriteOffsOfOneCaptionAreToldApart();
    void screensThatAreNotRegisteredAreNotListed();
    void menusLeaveTheCommonButtonsTheirLetters();
    void aMenuGivesItsLetterToTheScreenInFront();
    void theMenuBarIsReachedByTheAltKeyAlone();
    void everyEntryOfAMenuHasALetterOfItsOwn();
    void severalScreensAreOpenTogetherOneTabEach();
    void aScreenThatIsOpenComesToTheFront();
    void theKeysOpenAndChangeAndCloseScreens();
    void inAListTheNumbersSortAndOpenNoScreen();
    void aFieldKeepsItsFocusWhileAnotherScreenIsInFront();
    void aScreenThatClosesItselfTakesItsTabAlong();
    void withoutScreensTheStartPageOffersTheMainOnes();
    void aScreenThatFailsToOpenIsToldAndTheWindowGoesOn();
    void theStatusBarShowsCompanyUserEngineAndWork();
    void anotherCompanyIsChosenFromTheList();
    void anotherCompanyWaitsUntilAllScreensAreClosed();
    void closingAsksEveryScreen();
    void thePlaceOfTheWindowIsRemembered();
    void theScaleIsSetUpFromTheMenu();
    void theProgramTellsAboutItself();

private:
    void add(const QString &name, const QString &caption);
    void show();
    QTabWidget *screens() const { return m_window->findChild<QTabWidget *>(u"screens"_s); }
    TestForm *form(int tab) const { return qobject_cast<TestForm *>(screens()->widget(tab)); }
    QStringList menu(const QString &name) const;
    QString text(const QString &label) const { return m_window->findChild<QLabel *>(label)->text(); }
    bool isShown(const QString &name) const { return m_window->findChild<QWidget *>(name)->isVisible(); }
    void trigger(const QString &action);

    QTemporaryDir m_home;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<TestDatabase> m_database;
    std::unique_ptr<TTabela> m_tables;
    std::unique_ptr<QenHost> m_host;
    std::unique_ptr<MainWindow> m_window;
    QStringList m_classes;
    QString m_letter; ///< text of the label on the screens that are opened next
};

void TstMainWindow::initTestCase_data()
{
    Engines::addEngineRows();
}

void TstMainWindow::init()
{
    qputenv("XDG_DATA_HOME", m_home.path().toUtf8());
    m_settings = std::make_unique<QSettings>(m_home.filePath(u"qen.ini"_s), QSettings::IniFormat);
    m_settings->clear();
    m_letter.clear();
    m_database = std::make_unique<TestDatabase>(Engines::current());
    m_database->addCommonData();
    m_tables = std::make_unique<TTabela>();
    m_tables->IBDatabase->open(m_database->settings());
    m_host = std::make_unique<QenHost>(*m_settings);
    m_host->login(u"ADMIN"_s, 1);
    add(u"TfmNFTerceiros"_s, u"Entrada de Notas Fiscais"_s);
    add(u"TfmMalhaOF"_s, u"Ordem de Fabricação"_s);
    add(u"TfmMalhaOFBaixaBarra"_s, u"Baixa Ordem de Fabricação"_s);
}

void TstMainWindow::cleanup()
{
    m_window.reset();
    for (const QString &name : m_classes)
        ClassRegistry::UnRegisterClass(name);
    m_classes.clear();
    m_host.reset();
    m_tables.reset();
    m_database.reset();
}

void TstMainWindow::add(const QString &name, const QString &caption)
{
    m_classes.append(name);
    ClassRegistry::RegisterClass({name, caption, [this, caption] {
                                      auto *form = new TestForm;
                                      form->findChild<QLabel *>()->setText(m_letter);
                                      form->setWindowTitle(caption);
                                      form->Create();
                                      return form;
                                  }});
}

void TstMainWindow::show()
{
    m_window = std::make_unique<MainWindow>(*m_host, u"Firebird (arquivo local)"_s, u"/dados/malha.fdb"_s);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

QStringList TstMainWindow::menu(const QString &name) const
{
    QStringList texts;
    for (const QAction *action : m_window->findChild<QMenu *>(name)->actions())
        texts.append(action->text().remove(u'&'));
    return texts;
}

void TstMainWindow::trigger(const QString &action)
{
    auto *found = m_window->findChild<QAction *>(action);
    QVERIFY2(found && found->isEnabled(), qPrintable(action));
    found->trigger();
}

void TstMainWindow::registeredScreensStandInTheirFoldersByTheirCaptions()
{
    add(u"TfmCadDefMalha"_s, u"Cadastro de Defeitos da Malha"_s);
    add(u"TfmRelRegistros"_s, u".:Relatório de Registro Quantitativo:."_s);
    add(u"TfmNova"_s, u"Tela nova"_s);
    show();
    QCOMPARE(menu(u"menuProduction"_s),
        (QStringList{u"Baixa Ordem de Fabricação (código de barras)"_s, u"Ordem de Fabricação"_s}));
    QCOMPARE(menu(u"menuRegistries"_s), QStringList{u"Cadastro de Defeitos da Malha"_s});
    QCOMPARE(menu(u"menuInvoicing"_s), QStringList{u"Entrada de Notas Fiscais"_s});
    QCOMPARE(menu(u"menuReports"_s), QStringList{u".:Relatório de Registro Quantitativo:."_s});
    QCOMPARE(menu(u"menuOthers"_s), QStringList{u"Tela nova"_s});
}

void TstMainWindow::theTwoWriteOffsOfOneCaptionAreToldApart()
{
    add(u"TfmMalhaOFBaixa"_s, u"Baixa Ordem de Fabricação"_s);
    show();
    QCOMPARE(menu(u"menuProduction"_s),
        (QStringList{u"Baixa Ordem de Fabricação (código de barras)"_s, u"Ordem de Fabricação"_s,
            u"Baixa Ordem de Fabricação (manual)"_s}));
    trigger(u"TfmMalhaOFBaixa"_s);
    QCOMPARE(screens()->tabText(0), u"Baixa Ordem de Fabricação"_s);
}

void TstMainWindow::screensThatAreNotRegisteredAreNotListed()
{
    show();
    for (const QString &name : {u"menuRegistries"_s, u"menuReports"_s, u"menuOthers"_s}) {
        QVERIFY(menu(name).isEmpty());
        QVERIFY(!m_window->findChild<QMenu *>(name)->menuAction()->isVisible());
    }
    QVERIFY(m_window->findChild<QMenu *>(u"menuProduction"_s)->menuAction()->isVisible());
}

void TstMainWindow::menusLeaveTheCommonButtonsTheirLetters()
{
    show();
    QString letters;
    for (const QAction *action : m_window->menuBar()->actions()) {
        const QString title = action->text();
        letters += title.at(title.indexOf(u'&') + 1).toUpper();
    }
    // &Incluir &Alterar &Excluir &Fechar &Confirmar &Cancelar
    for (const QChar taken : u"IAEFC"_s)
        QVERIFY2(!letters.contains(taken), qPrintable(letters));
    QCOMPARE(QSet<QChar>(letters.begin(), letters.end()).size(), letters.size());
}

void TstMainWindow::aMenuGivesItsLetterToTheScreenInFront()
{
    show();
    const QAction *menu = m_window->findChild<QMenu *>(u"menuRegistries"_s)->menuAction();
    const QAction *other = m_window->findChild<QMenu *>(u"menuSystem"_s)->menuAction();
    QCOMPARE(menu->text(), u"Ca&dastros"_s);
    trigger(u"TfmMalhaOF"_s);
    QCOMPARE(menu->text(), u"Ca&dastros"_s);
    m_window->closeScreens();
    m_letter = u"&Data"_s;
    trigger(u"TfmMalhaOF"_s);
    QCOMPARE(menu->text(), u"Cadastros"_s);
    QCOMPARE(other->text(), u"&Sistema"_s);
    m_letter.clear();
    trigger(u"TfmNFTerceiros"_s);
    QCOMPARE(menu->text(), u"Ca&dastros"_s);
    trigger(u"TfmMalhaOF"_s);
    QCOMPARE(menu->text(), u"Cadastros"_s);
    form(0)->close();
    QTRY_COMPARE(menu->text(), u"Ca&dastros"_s);
}

void TstMainWindow::theMenuBarIsReachedByTheAltKeyAlone()
{
    show();
    trigger(u"TfmMalhaOF"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Alt);
    QVERIFY(m_window->menuBar()->activeAction());
    QCOMPARE(m_window->menuBar()->activeAction()->text(), u"P&rodução"_s);
}

void TstMainWindow::everyEntryOfAMenuHasALetterOfItsOwn()
{
    QCOMPARE(ScreenCatalog::withMnemonics({u"Baixa de OF"_s, u"Baixa manual"_s, u".:Bb:."_s, u"A & B"_s, u"ã"_s}),
        (QStringList{u"&Baixa de OF"_s, u"B&aixa manual"_s, u".:Bb:."_s, u"A && B"_s, u"ã"_s}));
}

void TstMainWindow::severalScreensAreOpenTogetherOneTabEach()
{
    show();
    trigger(u"TfmMalhaOF"_s);
    trigger(u"TfmNFTerceiros"_s);
    QCOMPARE(screens()->count(), 2);
    QCOMPARE(screens()->currentIndex(), 1);
    QCOMPARE(screens()->tabText(0), u"Ordem de Fabricação"_s);
    QVERIFY(form(1)->isVisible());
    QVERIFY(!form(0)->isVisible());
    QCOMPARE(screens()->isTabVisible(0), true);
}

void TstMainWindow::aScreenThatIsOpenComesToTheFront()
{
    show();
    trigger(u"TfmMalhaOF"_s);
    trigger(u"TfmNFTerceiros"_s);
    const QWidget *first = form(0);
    trigger(u"TfmMalhaOF"_s);
    QCOMPARE(screens()->count(), 2);
    QCOMPARE(screens()->currentWidget(), first);
}

void TstMainWindow::theKeysOpenAndChangeAndCloseScreens()
{
    show();
    QTest::keyClick(m_window.get(), Qt::Key_2, Qt::ControlModifier);
    QTest::keyClick(m_window.get(), Qt::Key_3, Qt::ControlModifier);
    QCOMPARE(screens()->count(), 2);
    QCOMPARE(form(0)->windowTitle(), u"Ordem de Fabricação"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(screens()->currentIndex(), 0);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(screens()->currentIndex(), 1);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(screens()->count(), 1);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_W, Qt::ControlModifier);
    QVERIFY(isShown(u"startPage"_s));
}

void TstMainWindow::inAListTheNumbersSortAndOpenNoScreen()
{
    show();
    trigger(u"TfmMalhaOF"_s);
    TDBGrid *grid = form(0)->grid;
    grid->setFocus();
    const auto firstLot = [grid] { return grid->model()->index(0, 0).data().toString(); };
    QCOMPARE(firstLot(), u"A"_s);
    QTest::keyClick(grid, Qt::Key_2, Qt::ControlModifier);
    QCOMPARE(firstLot(), u"B"_s);
    QTest::keyClick(grid, Qt::Key_1, Qt::ControlModifier);
    QCOMPARE(firstLot(), u"A"_s);
    QTest::keyClick(grid, Qt::Key_3, Qt::ControlModifier);
    QCOMPARE(screens()->count(), 1);
    form(0)->findChild<QLineEdit *>(u"edtUm"_s)->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_3, Qt::ControlModifier);
    QCOMPARE(screens()->count(), 2);
}

void TstMainWindow::aFieldKeepsItsFocusWhileAnotherScreenIsInFront()
{
    show();
    trigger(u"TfmMalhaOF"_s);
    auto *field = form(0)->findChild<QLineEdit *>(u"edtDois"_s);
    field->setFocus();
    trigger(u"TfmNFTerceiros"_s);
    QVERIFY(form(1)->isAncestorOf(QApplication::focusWidget()) || form(1)->hasFocus());
    trigger(u"TfmMalhaOF"_s);
    QVERIFY(field->hasFocus());
}

void TstMainWindow::aScreenThatClosesItselfTakesItsTabAlong()
{
    show();
    trigger(u"TfmMalhaOF"_s);
    trigger(u"TfmNFTerceiros"_s);
    form(1)->close();
    QTRY_COMPARE(screens()->count(), 1);
    QVERIFY(form(0)->isVisible());
    form(0)->close();
    QTRY_VERIFY(isShown(u"startPage"_s));
}

void TstMainWindow::withoutScreensTheStartPageOffersTheMainOnes()
{
    add(u"TfmCadDefMalha"_s, u"Cadastro de Defeitos da Malha"_s);
    show();
    QVERIFY(isShown(u"startPage"_s));
    QCOMPARE(text(u"companyName"_s), u"001 - Malharia Serra Azul"_s);
    QStringList names;
    for (const QAction *action : m_window->findChild<QToolBar *>()->actions())
        names.append(action->objectName());
    QCOMPARE(names, (QStringList{u"TfmMalhaOFBaixaBarra"_s, u"TfmMalhaOF"_s, u"TfmNFTerceiros"_s}));
    QVERIFY(!m_window->findChild<QWidget *>(u"startTfmCadDefMalha"_s));
    m_window->findChild<QPushButton *>(u"startTfmMalhaOF"_s)->click();
    QCOMPARE(form(0)->windowTitle(), u"Ordem de Fabricação"_s);
    QVERIFY(!isShown(u"startPage"_s));
}

void TstMainWindow::aScreenThatFailsToOpenIsToldAndTheWindowGoesOn()
{
    m_classes.append(u"TfmCadRaport"_s);
    ClassRegistry::RegisterClass({u"TfmCadRaport"_s, u"Cadastro de Raport"_s, []() -> QWidget * {
                                      Tabela->IBDatabase->run(u"SELECT 1 FROM NENHUMA"_s);
                                      return nullptr;
                                  }});
    show();
    MessageAnswers answers;
    answers.expect(u"O banco de dados recusou a operação. Nada foi gravado."_s);
    trigger(u"TfmCadRaport"_s);
    QCOMPARE(screens()->count(), 0);
    trigger(u"TfmMalhaOF"_s);
    QCOMPARE(screens()->count(), 1);
}

void TstMainWindow::theStatusBarShowsCompanyUserEngineAndWork()
{
    show();
    QCOMPARE(text(u"statusCompany"_s), u"Empresa 001 - Malharia Serra Azul"_s);
    QCOMPARE(text(u"statusUser"_s), u"Usuário ADMIN"_s);
    QCOMPARE(text(u"statusEngine"_s), u"Firebird (arquivo local)"_s);
    QCOMPARE(m_window->windowTitle(), u"Malharia Serra Azul - qen"_s);
    QVERIFY(!isShown(u"statusBusy"_s));
    {
        const Busy busy(m_window.get());
        QVERIFY(isShown(u"statusBusy"_s));
    }
    QVERIFY(!isShown(u"statusBusy"_s));
}

void TstMainWindow::anotherCompanyIsChosenFromTheList()
{
    show();
    trigger(u"TfmMalhaOF"_s);
    QCOMPARE(m_tables->tabela(u"tbMateriais"_s)->tableName(), u"MATERIAL_001"_s);
    MessageAnswers answers;
    answers.expectWindow(
        [](QWidget *window) {
            auto *list = window->findChild<QComboBox *>();
            QCOMPARE(list->currentText(), u"001 - Malharia Serra Azul"_s);
            list->setCurrentIndex(1);
            qobject_cast<QDialog *>(window)->accept();
        },
        u"Trocar empresa"_s);
    trigger(u"actionCompany"_s);
    QCOMPARE(m_host->company(), 2);
    QCOMPARE(text(u"statusCompany"_s), u"Empresa 002 - Serra Azul Beneficiamento"_s);
    QCOMPARE(screens()->count(), 0);
    trigger(u"TfmMalhaOF"_s);
    QCOMPARE(m_tables->tabela(u"tbMateriais"_s)->tableName(), u"MATERIAL_002"_s);
}

void TstMainWindow::anotherCompanyWaitsUntilAllScreensAreClosed()
{
    show();
    trigger(u"TfmMalhaOF"_s);
    trigger(u"TfmNFTerceiros"_s);
    form(0)->closes = false;
    m_window->changeCompany(2);
    QCOMPARE(m_host->company(), 1);
    QCOMPARE(screens()->count(), 1);
    form(0)->closes = true;
    m_window->changeCompany(2);
    QCOMPARE(m_host->company(), 2);
}

void TstMainWindow::closingAsksEveryScreen()
{
    show();
    trigger(u"TfmMalhaOF"_s);
    trigger(u"TfmNFTerceiros"_s);
    form(1)->closes = false;
    QVERIFY(!m_window->close());
    QVERIFY(m_window->isVisible());
    QCOMPARE(screens()->count(), 2);
    form(1)->closes = true;
    QVERIFY(m_window->close());
    QCOMPARE(screens()->count(), 0);
}

void TstMainWindow::thePlaceOfTheWindowIsRemembered()
{
    show();
    m_window->resize(1010, 707);
    m_window->close();
    show();
    QCOMPARE(m_window->size(), QSize(1010, 707));
}

void TstMainWindow::theScaleIsSetUpFromTheMenu()
{
    show();
    MessageAnswers answers;
    answers.expectWindow([](QWidget *window) {
        window->findChild<QComboBox *>(u"cbPorta"_s)->setCurrentText(u"/dev/ttyUSB7"_s);
        qobject_cast<QDialog *>(window)->accept();
    });
    trigger(u"actionScale"_s);
    TCustomComPort port;
    port.LoadSettings(*m_settings, scaleSettingsKey);
    QCOMPARE(port.Settings().port, u"/dev/ttyUSB7"_s);
}

void TstMainWindow::theProgramTellsAboutItself()
{
    show();
    MessageAnswers answers;
    answers.expectWindow(
        [](QWidget *window) {
            const QString text = qobject_cast<QMessageBox *>(window)->text();
            QVERIFY(text.contains(QCoreApplication::applicationVersion()));
            QVERIFY(text.contains(u"/dados/malha.fdb"_s));
            qobject_cast<QDialog *>(window)->accept();
        },
        u"Sobre o qen"_s);
    trigger(u"actionAbout"_s);
}

int main(int argc, char **argv)
{
    Application application(argc, argv);
    TstMainWindow tests;
    return QTest::qExec(&tests, argc, argv);
}
#include "tst_mainwindow.moc"
