// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/qenhost.h"
#include "module/host_services/busy.h"
#include "module/host_services/classessis.h"
#include "module/host_services/clientdataset.h"
#include "module/host_services/clock.h"
#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/tabelas.h"
#include "tests/support/engines.h"
#include "tests/support/testdatabase.h"

#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSettings>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

/// Services as screens ask for them, besides those that the application alone answers: the host's own test has them.
class TestFuncoesHost : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }
    void initTestCase();
    void init();
    void cleanup();

    void theUserIsTheOneWhoLoggedIn();
    void theBusyMarkerGoesWithItsScope();
    void aLogLineAfterTheCommitStandsByItself();
    void enterGoesToTheNextFieldThatTakesTheTabKey();
    void otherKeysLeaveTheFocus();
    void aScaleTextIsAWeight_data();
    void aScaleTextIsAWeight();
    void aDateIsMovedByWorkingDays_data();
    void aDateIsMovedByWorkingDays();
    void anInventoryIsWritten();
    void stockMovementsHaveTheirCodes();

private:
    QTemporaryDir m_folder;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<TestDatabase> m_data;
    std::unique_ptr<TTabela> m_tabela;
    std::unique_ptr<QenHost> m_host;
};

void TestFuncoesHost::initTestCase()
{
    qputenv("XDG_DATA_HOME", m_folder.path().toUtf8());
}

void TestFuncoesHost::init()
{
    Clock::pin(QDateTime(QDate(2026, 3, 10), QTime(10, 30)));
    m_settings = std::make_unique<QSettings>(m_folder.filePath(u"qen.ini"_s), QSettings::IniFormat);
    m_data = std::make_unique<TestDatabase>(Engines::current());
    m_data->addCommonData();
    m_tabela = std::make_unique<TTabela>();
    m_tabela->IBDatabase->open(m_data->settings());
    m_host = std::make_unique<QenHost>(*m_settings);
    m_host->login(u"ADMIN"_s, 1);
}

void TestFuncoesHost::cleanup()
{
    m_host.reset();
    m_tabela.reset();
    m_data.reset();
    m_settings.reset();
    Clock::pin({});
}

void TestFuncoesHost::theUserIsTheOneWhoLoggedIn()
{
    QCOMPARE(Funcoes::vUsuario(), u"ADMIN"_s);
    m_host.reset();
    QVERIFY_THROWS_EXCEPTION(EProgramming, Funcoes::vUsuario());
}

void TestFuncoesHost::theBusyMarkerGoesWithItsScope()
{
    QObject screen;
    try {
        const Busy busy(&screen);
        QVERIFY(m_host->busyMarker().isBusy());
        Funcoes::Ocupado(true, &screen, true, {});
        Funcoes::Ocupado(false, &screen, true, {});
        QVERIFY(m_host->busyMarker().isBusy());
        throw EQen(u"x"_s);
    } catch (const EQen &) {
        QVERIFY(!m_host->busyMarker().isBusy());
    }
    QVERIFY(!QApplication::overrideCursor());
}

void TestFuncoesHost::aLogLineAfterTheCommitStandsByItself()
{
    Save save(*m_tabela->IBDatabase);
    m_tabela->IBDatabase->run(u"DELETE FROM OF_MALHA_001"_s);
    save.CommitRetaining();
    Funcoes::GeraLog(u"MALHARIA"_s, u"EXCLUSAO"_s, olExclusao, u"1"_s);
    QCOMPARE(m_data->value(u"SELECT COUNT(*) FROM QEN_LOG"_s).toInt(), 1);
}

void TestFuncoesHost::enterGoesToTheNextFieldThatTakesTheTabKey()
{
    QWidget form;
    auto *layout = new QVBoxLayout(&form);
    auto *first = new QLineEdit(&form);
    auto *disabled = new QLineEdit(&form);
    auto *hidden = new QLineEdit(&form);
    auto *clickOnly = new QLineEdit(&form);
    auto *pages = new QTabWidget(&form);
    auto *onPage = new QLineEdit;
    auto *onOtherPage = new QLineEdit;
    auto *text = new QPlainTextEdit(&form);
    for (QWidget *widget : QWidgetList{first, disabled, hidden, clickOnly, pages, text})
        layout->addWidget(widget);
    pages->addTab(onPage, u"1"_s);
    pages->addTab(onOtherPage, u"2"_s);
    pages->tabBar()->setFocusPolicy(Qt::NoFocus);
    QWidget::setTabOrder(clickOnly, onOtherPage);
    QWidget::setTabOrder(onOtherPage, onPage);
    QWidget::setTabOrder(onPage, text);
    disabled->setEnabled(false);
    clickOnly->setFocusPolicy(Qt::ClickFocus);
    form.show();
    hidden->hide();
    form.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    first->setFocus();
    QWidget *const expected[] = {onPage, text, first};
    for (QWidget *next : expected) {
        Funcoes::pSetFocus(&form, u'\r');
        QCOMPARE(form.focusWidget(), next);
    }
}

void TestFuncoesHost::otherKeysLeaveTheFocus()
{
    QWidget form;
    auto *first = new QLineEdit(&form);
    auto *second = new QLineEdit(&form);
    form.show();
    first->setFocus();
    for (const QChar key : {QChar(u'a'), QChar(u'\t'), QChar(u' '), QChar()})
        Funcoes::pSetFocus(&form, key);
    QCOMPARE(form.focusWidget(), first);
    Funcoes::pSetFocus(&form, u'\n');
    QCOMPARE(form.focusWidget(), second);
    second->setEnabled(false);
    first->setEnabled(false);
    Funcoes::pSetFocus(&form, u'\r');
}

void TestFuncoesHost::aScaleTextIsAWeight_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QChar>("terminator");
    QTest::addColumn<double>("kg");
    QTest::newRow("kilograms and CR") << u"ST,GS,+  12.345kg\r\n"_s << QChar(u'\r') << 12.345;
    QTest::newRow("the last of two") << u"ST,GS,+   1.000kg\r\nST,GS,+   2.000kg\r\n"_s << QChar(u'\n') << 2.0;
    QTest::newRow("unstable") << u"US,GS,+  12.345kg\r\n"_s << QChar(u'\r') << 0.0;
    QTest::newRow("negative") << u"ST,GS,-  12.345kg\r\n"_s << QChar(u'\r') << 0.0;
    QTest::newRow("unreadable") << u"####\r"_s << QChar(u'\r') << 0.0;
    QTest::newRow("nothing") << QString() << QChar(u'\r') << 0.0;
}

void TestFuncoesHost::aScaleTextIsAWeight()
{
    QFETCH(QString, text);
    QFETCH(QChar, terminator);
    QTEST(Funcoes::PegaPesoBalanca(text, terminator), "kg");
}

void TestFuncoesHost::aDateIsMovedByWorkingDays_data()
{
    QTest::addColumn<QDate>("from");
    QTest::addColumn<int>("days");
    QTest::addColumn<QDate>("to");
    QTest::newRow("over a weekend") << QDate(2026, 3, 10) << 5 << QDate(2026, 3, 17);
    QTest::newRow("over Good Friday") << QDate(2026, 4, 2) << 1 << QDate(2026, 4, 6);
    QTest::newRow("over Carnival") << QDate(2026, 2, 13) << 1 << QDate(2026, 2, 18);
    QTest::newRow("none, from a Sunday") << QDate(2026, 3, 8) << 0 << QDate(2026, 3, 9);
    QTest::newRow("backwards") << QDate(2026, 3, 9) << -1 << QDate(2026, 3, 6);
}

void TestFuncoesHost::aDateIsMovedByWorkingDays()
{
    QFETCH(QDate, from);
    QFETCH(int, days);
    QTEST(Funcoes::DiaUtil(from, days), "to");
}

void TestFuncoesHost::anInventoryIsWritten()
{
    TClientDataSet rows;
    rows.CreateDataSet({{u"CODIGO"_s, TField::Type::Text}, {u"COR"_s, TField::Type::Text},
        {u"TAM"_s, TField::Type::Text}, {u"POSSE"_s, TField::Type::Text}, {u"UNITARIO"_s, TField::Type::Float},
        {u"FISICO"_s, TField::Type::Float}});
    for (const auto &[code, kg] : {std::pair(u"FIO30CO"_s, 100.5), {u"M0001"_s, 20.25}}) {
        rows.Append();
        rows.setValue(u"CODIGO"_s, code);
        rows.setValue(u"UNITARIO"_s, 12.5);
        rows.setValue(u"FISICO"_s, kg);
        rows.Post();
    }
    InventoryColumns columns;
    columns.codigo = u"CODIGO"_s;
    columns.cor = u"COR"_s;
    columns.tam = u"TAM"_s;
    columns.posse = u"POSSE"_s;
    columns.unitario = u"UNITARIO"_s;
    columns.quantidade = u"FISICO"_s;
    QCOMPARE(Funcoes::GeraInventario(columns, rows), 2);
    QCOMPARE(Funcoes::GeraInventario(columns, rows), 2);
    QCOMPARE(m_data->rows(u"SELECT EMPRESA, CODIGO, UNITARIO, QTDE, LOTE FROM {INVENTARIO} "
                          "WHERE DATA = '03/10/2026' ORDER BY CODIGO"_s),
        QStringList({u"1|FIO30CO|12.5|100.5|"_s, u"1|M0001|12.5|20.25|"_s}));
}

void TestFuncoesHost::stockMovementsHaveTheirCodes()
{
    using Classessis::TEstoque;
    QCOMPARE(int(tmProducao), 7);
    QCOMPARE(TEstoque::CodigoTipoMovEstoque(tmProducao), u"08"_s);
    QSet<QString> codes;
    for (int kind = tmCompra; kind <= tmProducao; ++kind)
        codes.insert(TEstoque::CodigoTipoMovEstoque(TTipoMovimentoEstoque(kind)));
    QCOMPARE(codes.size(), 8);
    for (const QString &code : codes)
        QCOMPARE(code.size(), 2); // as MAT_MOV.OPERACAO holds it
}

QTEST_MAIN(TestFuncoesHost)
#include "tst_funcoeshost.moc"
