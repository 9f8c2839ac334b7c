// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/qenhost.h"
#include "module/host_services/busy.h"
#include "module/host_services/classregistry.h"
#include "module/host_services/clientdataset.h"
#include "module/host_services/clock.h"
#include "module/host_services/errors.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/tabelas.h"
#include "tests/support/engines.h"
#include "tests/support/messageanswers.h"
#include "tests/support/testdatabase.h"

#include <QCloseEvent>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// A screen that closes only when it may.
class TestScreen : public QWidget
{
public:
    TestScreen()
    {
        setAttribute(Qt::WA_DeleteOnClose);
        setWindowTitle(u"Tela de teste"_s);
    }
    bool mayClose = true;

protected:
    void closeEvent(QCloseEvent *event) override { event->setAccepted(mayClose); }
};

InventoryColumns inventoryColumns()
{
    return {u"CODIGO"_s, u"COR"_s, u"TAM"_s, u"POSSE"_s, u"UNITARIO"_s, u"FISICO"_s, u"CODCLI"_s, u"UN"_s,
        u"DESCRICAO"_s, u"DEPOSITO"_s, u"LOTE"_s};
}

} // namespace

class TstQenHost : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data();
    void initTestCase();
    void init();
    void cleanup();

    void anUnknownUserOrAForbiddenCompanyChangesNothing();
    void theUserAndHisCompanyAreThoseLoggedIn();
    void theCurrentCompanyIsAlwaysVisible();
    void anAdministratorMayDoEverything();
    void anotherUserNeedsTheRowOfScreenLetterAndLevel();
    void aUserWhoBecameInactiveMayDoNothingMore();
    void aParameterIsThatOfTheCompanyAndOfNow();
    void aLogLineStandsWithUserDateAndTime();
    void aLogLineWithinASaveGoesWithIt();
    void aTextThatIsLongerThanTheLogIsCut();
    void theBusyMarkerGoesWhenTheLastCallerIsDone();
    void aCallerThatDiesIsNotBusyAnyMore();
    void aScreenThatNobodyRegisteredIsToldAsNotYetAvailable();
    void aShownScreenIsBroughtToTheFrontInsteadOfASecondOne();
    void aModalScreenIsHandedOverWithoutBeingShown();
    void aModalScreenTakesThePlaceOfAnOpenOne();
    void aScreenThatWillNotCloseIsNotOpenedASecondTime();
    void aReportIsRecordedWithItsDataAndItsPrinter();
    void theLastReportsAreKept();
    void aPictureIsFoundInAnyCaseAndTheBestKindFirst();
    void aCodeWithAPathInItHasNoPicture();
    void anInventoryHoldsTodaysRowsOfTheCompany();
    void anInventoryMadeAgainReplacesItselfAndNothingElse();
    void anInventoryThatFailsLeavesNothing();

private:
    void fillInventoryRows(TClientDataSet &rows, const QString &client, const QString &code, double kg);

    QTemporaryDir m_home;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<TestDatabase> m_database;
    std::unique_ptr<TTabela> m_tables;
    std::unique_ptr<QenHost> m_host;
};

void TstQenHost::initTestCase_data()
{
    Engines::addEngineRows();
}

void TstQenHost::initTestCase()
{
    qputenv("XDG_DATA_HOME", m_home.path().toUtf8()); // the log file
}

void TstQenHost::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_settings = std::make_unique<QSettings>(m_folder->filePath(u"qen.ini"_s), QSettings::IniFormat);
    m_database = std::make_unique<TestDatabase>(Engines::current());
    m_database->addCommonData();
    m_tables = std::make_unique<TTabela>();
    m_tables->IBDatabase->open(m_database->settings());
    m_host = std::make_unique<QenHost>(*m_settings);
    m_host->login(u"ADMIN"_s, 1);
    ClassRegistry::RegisterClass({u"TfmTeste"_s, u"Tela de teste"_s, [] { return new TestScreen; }});
}

void TstQenHost::cleanup()
{
    ClassRegistry::UnRegisterClass(u"TfmTeste"_s);
    Clock::pin({});
    if (m_host)
        delete m_host->openForm(u"TfmTeste"_s);
    m_host.reset();
    m_tables.reset();
    m_database.reset();
}

void TstQenHost::anUnknownUserOrAForbiddenCompanyChangesNothing()
{
    QVERIFY_EXCEPTION_THROWN(m_host->login(u"NINGUEM"_s, 1), EQen);
    QVERIFY_EXCEPTION_THROWN(m_host->login(u"SEMDIREITO"_s, 2), EQen);
    QVERIFY_EXCEPTION_THROWN(m_host->login(u"ADMIN"_s, 9), EQen);
    QCOMPARE(m_host->user(), u"ADMIN"_s);
    QCOMPARE(m_host->company(), 1);
}

void TstQenHost::theUserAndHisCompanyAreThoseLoggedIn()
{
    m_host->login(u"admin"_s, 2);
    QCOMPARE(Funcoes::vUsuario(), u"ADMIN"_s);
    QCOMPARE(Funcoes::DBLocal(u"OF_MALHA"_s), u"OF_MALHA_002"_s);
    QCOMPARE(m_host->currentCompany().label(), u"002 - Serra Azul Beneficiamento"_s);
}

void TstQenHost::theCurrentCompanyIsAlwaysVisible()
{
    QCOMPARE(m_host->visibleCompanies(), (QList<int>{1, 2}));
    m_host->login(u"ADMIN"_s, 2);
    m_database->run(u"UPDATE QEN_EMPRESA SET ATIVO = 'N' WHERE NUMERO = 2"_s);
    QCOMPARE(m_host->visibleCompanies(), (QList<int>{1, 2}));
    m_host->login(u"SEMDIREITO"_s, 1);
    QCOMPARE(m_host->visibleCompanies(), QList<int>{1});
}

void TstQenHost::anAdministratorMayDoEverything()
{
    QVERIFY(Funcoes::Acessa(u"TfmMalhaOF"_s, u'A', u"0"_s));
    QVERIFY(Funcoes::Acessa(u"TfmQualquer"_s, u'E', u"1"_s));
}

void TstQenHost::anotherUserNeedsTheRowOfScreenLetterAndLevel()
{
    m_host->login(u"SEMDIREITO"_s, 1);
    QVERIFY(!Funcoes::Acessa(u"TfmMalhaOF"_s, u'A', u"0"_s));
    m_database->run(u"INSERT INTO QEN_DIREITO (USUARIO, TELA, LETRA, NIVEL) VALUES "
                    "('SEMDIREITO', 'TfmMalhaOF', 'A', '0')"_s);
    QVERIFY(Funcoes::Acessa(u"TfmMalhaOF"_s, u'A', u"0"_s));
    QVERIFY(!Funcoes::Acessa(u"TfmMalhaOF"_s, u'A', u"1"_s));
    QVERIFY(!Funcoes::Acessa(u"TfmMalhaOF"_s, u'E', u"0"_s));
    QVERIFY(!Funcoes::Acessa(u"TfmMalhaOFBaixa"_s, u'A', u"0"_s));
    QVERIFY(!Funcoes::Acessa(u"TfmMalhaOF' OR '1'='1"_s, u'E', u"0"_s));
}

void TstQenHost::aUserWhoBecameInactiveMayDoNothingMore()
{
    m_database->run(u"UPDATE QEN_USUARIO SET ATIVO = 'N' WHERE USUARIO = 'ADMIN'"_s);
    QVERIFY(!Funcoes::Acessa(u"TfmMalhaOF"_s, u'A', u"0"_s));
}

void TstQenHost::aParameterIsThatOfTheCompanyAndOfNow()
{
    QCOMPARE(Funcoes::BuscaParametro(u"MAL"_s, 10), u"S"_s);
    QCOMPARE(Funcoes::BuscaParametro(u"MAL"_s, 11), QString());
    m_database->run(u"UPDATE QEN_PARAMETRO SET VALOR = 'N' WHERE EMPRESA = 1 AND MODULO = 'MAL' AND NUMERO = 10"_s);
    QCOMPARE(Funcoes::BuscaParametro(u"MAL"_s, 10), u"N"_s);
    m_database->run(u"INSERT INTO QEN_PARAMETRO (EMPRESA, MODULO, NUMERO, VALOR) VALUES (2, 'MAL', 10, 'S')"_s);
    m_host->login(u"ADMIN"_s, 2);
    QCOMPARE(Funcoes::BuscaParametro(u"MAL"_s, 10), u"S"_s);
    QCOMPARE(Funcoes::BuscaParametro(u"VEN"_s, 190), QString());
}

void TstQenHost::aLogLineStandsWithUserDateAndTime()
{
    Clock::pin(QDateTime({2026, 3, 10}, {14, 5, 9, 250}));
    m_host->login(u"ADMIN"_s, 2);
    Funcoes::GeraLog(u"BAIXA OF BARRA"_s, u"BAIXA OF MALHARIA NR.: 000123 QTDE.: 25.3"_s, olBaixa, u"000123"_s);
    QCOMPARE(m_database->rows(u"SELECT EMPRESA, USUARIO, ROTULO, TEXTO, OPERACAO, CHAVE FROM QEN_LOG"_s),
        QStringList{u"2|ADMIN|BAIXA OF BARRA|BAIXA OF MALHARIA NR.: 000123 QTDE.: 25.3|3|000123"_s});
    QCOMPARE(m_database->value(u"SELECT MOMENTO FROM QEN_LOG"_s).toDateTime(), Clock::now());
}

void TstQenHost::aLogLineWithinASaveGoesWithIt()
{
    {
        Save save(*m_tables->IBDatabase);
        Funcoes::GeraLog(u"ORDEM FAB. MAL."_s, u"INCLUSAO DA OF MAL. NR.: 000124"_s, olInclusao, u"000124"_s);
    }
    QCOMPARE(m_database->value(u"SELECT COUNT(*) FROM QEN_LOG"_s).toInt(), 0);
    {
        Save save(*m_tables->IBDatabase);
        Funcoes::GeraLog(u"ORDEM FAB. MAL."_s, u"INCLUSAO DA OF MAL. NR.: 000124"_s, olInclusao, u"000124"_s);
        save.CommitRetaining();
    }
    QCOMPARE(m_database->value(u"SELECT COUNT(*) FROM QEN_LOG"_s).toInt(), 1);
}

void TstQenHost::aTextThatIsLongerThanTheLogIsCut()
{
    Funcoes::GeraLog(QString(40, u'R'), QString(300, u'É'), olAlteracao, QString(70, u'C'));
    QCOMPARE(m_database->rows(u"SELECT ROTULO, TEXTO, CHAVE FROM QEN_LOG"_s),
        QStringList{u"%1|%2|%3"_s.arg(QString(30, u'R'), QString(250, u'É'), QString(60, u'C'))});
}

void TstQenHost::theBusyMarkerGoesWhenTheLastCallerIsDone()
{
    QSignalSpy changed(&m_host->busyMarker(), &BusyMarker::changed);
    QObject first;
    QObject second;
    Funcoes::Ocupado(true, &first);
    Funcoes::Ocupado(true, &first);
    Funcoes::Ocupado(true, &second);
    QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    Funcoes::Ocupado(false, &second);
    Funcoes::Ocupado(false, &second); // one too many
    Funcoes::Ocupado(false, &first);
    QVERIFY(m_host->busyMarker().isBusy());
    Funcoes::Ocupado(false, &first);
    QVERIFY(!QApplication::overrideCursor());
    QCOMPARE(changed.size(), 2);
    QCOMPARE(changed[0][0].toBool(), true);
    QCOMPARE(changed[1][0].toBool(), false);
}

void TstQenHost::aCallerThatDiesIsNotBusyAnyMore()
{
    auto *caller = new QObject;
    Funcoes::Ocupado(true, caller);
    delete caller;
    QVERIFY(!QApplication::overrideCursor());
    QVERIFY(!m_host->busyMarker().isBusy());
}

void TstQenHost::aScreenThatNobodyRegisteredIsToldAsNotYetAvailable()
{
    MessageAnswers answers;
    answers.expect(u"Esta tela ainda não está disponível."_s);
    QVERIFY(!Funcoes::Carrega_Form(u"qenMalharia"_s, u"TfmNinguem"_s, {}, true, false));
}

void TstQenHost::aShownScreenIsBroughtToTheFrontInsteadOfASecondOne()
{
    QWidgetList placed;
    m_host->setPlacer([&](QWidget *form) { placed.append(form); });
    QWidget *first = Funcoes::Carrega_Form(u"qenMalharia"_s, u"TfmTeste"_s, {}, false, true);
    QVERIFY(first);
    QCOMPARE(Funcoes::Carrega_Form(u"qenMalharia"_s, u"TfmTeste"_s, {}, false, true), first);
    QCOMPARE(placed, (QWidgetList{first, first}));
    delete first;
    QVERIFY(!m_host->openForm(u"TfmTeste"_s));
    QWidget *second = Funcoes::Carrega_Form(u"qenMalharia"_s, u"TfmTeste"_s, {}, false, true);
    QCOMPARE(placed.size(), 3);
    QCOMPARE(placed.last(), second);
}

void TstQenHost::aModalScreenIsHandedOverWithoutBeingShown()
{
    QWidgetList placed;
    m_host->setPlacer([&](QWidget *form) { placed.append(form); });
    const std::unique_ptr<QWidget> form(Funcoes::Carrega_Form(u"qenMalharia"_s, u"TfmTeste"_s, {}, true, false));
    QVERIFY(form);
    QVERIFY(!form->isVisible());
    QVERIFY(placed.isEmpty());
}

void TstQenHost::aModalScreenTakesThePlaceOfAnOpenOne()
{
    const QPointer<QWidget> open = Funcoes::Carrega_Form(u"qenMalharia"_s, u"TfmTeste"_s, {}, false, true);
    QWidget *modal = Funcoes::Carrega_Form(u"qenMalharia"_s, u"TfmTeste"_s, {}, true, false);
    QVERIFY(!open);
    QVERIFY(modal);
    QCOMPARE(m_host->openForm(u"TfmTeste"_s), modal);
}

void TstQenHost::aScreenThatWillNotCloseIsNotOpenedASecondTime()
{
    QWidget *open = Funcoes::Carrega_Form(u"qenMalharia"_s, u"TfmTeste"_s, {}, false, true);
    static_cast<TestScreen *>(open)->mayClose = false;
    MessageAnswers answers;
    answers.expect(u"A tela \"Tela de teste\" já está aberta. Termine o que está nela primeiro."_s);
    QVERIFY(!Funcoes::Carrega_Form(u"qenMalharia"_s, u"TfmTeste"_s, {}, true, false));
    QCOMPARE(m_host->openForm(u"TfmTeste"_s), open);
}

void TstQenHost::aReportIsRecordedWithItsDataAndItsPrinter()
{
    m_settings->setValue(u"Impressoras/padrao"_s, u"Escritório"_s);
    m_settings->setValue(u"Impressoras/WEtqBarra"_s, u"Etiquetas da balança"_s);
    TClientDataSet rows;
    rows.CreateDataSet({TField(u"NUM_OF"_s, TField::Type::Text, 6)});
    rows.Append();
    rows.Post();
    ReportCall call;
    call.name = u"WEtqBarra"_s;
    call.dataSets = {{u"Etiqueta"_s, &rows}};
    Funcoes::Chama_RelatorioWin(call);
    call.name = u"TMalOF"_s;
    Funcoes::Chama_RelatorioTxt(call);
    QCOMPARE(m_host->recordedReports().size(), 2);
    const RecordedReport label = m_host->recordedReports()[0];
    QCOMPARE(label.name, u"WEtqBarra"_s);
    QCOMPARE(label.kind, ReportCall::Kind::Graphic);
    QCOMPARE(label.dataSets, QStringList{u"Etiqueta"_s});
    QCOMPARE(label.rowCounts, QList<int>{1});
    QCOMPARE(label.printer, u"Etiquetas da balança"_s);
    QCOMPARE(m_host->recordedReports()[1].kind, ReportCall::Kind::Text);
    QCOMPARE(m_host->recordedReports()[1].printer, u"Escritório"_s);
}

/// A station prints labels for months.
void TstQenHost::theLastReportsAreKept()
{
    for (int label = 1; label <= 250; ++label) {
        ReportCall call;
        call.name = u"WEtqBarra%1"_s.arg(label);
        Funcoes::Chama_RelatorioWin(call);
    }
    QCOMPARE(m_host->recordedReports().size(), 100);
    QCOMPARE(m_host->recordedReports().first().name, u"WEtqBarra151"_s);
    QCOMPARE(m_host->recordedReports().last().name, u"WEtqBarra250"_s);
}

void TstQenHost::aPictureIsFoundInAnyCaseAndTheBestKindFirst()
{
    const QString folder = m_folder->filePath(u"imagens"_s);
    QDir().mkpath(folder);
    m_settings->setValue(u"Pastas/imagens"_s, folder);
    for (const QString &name : {u"m0001.jpg"_s, u"M0001.PNG"_s, u"M00011.png"_s, u"a.b.Svg"_s, u"m0002.txt"_s})
        QVERIFY(QFile(folder + u'/' + name).open(QIODevice::WriteOnly));
    QCOMPARE(Funcoes::BuscaArquivo(u"M0001"_s, {}, tpImagemMaterial), folder + u"/M0001.PNG"_s);
    QCOMPARE(Funcoes::BuscaArquivo(u"A.B"_s, {}, tpImagemMaterial), folder + u"/a.b.Svg"_s);
    QCOMPARE(Funcoes::BuscaArquivo(u"M0002"_s, {}, tpImagemMaterial), QString());
    QCOMPARE(Funcoes::BuscaArquivo(u"M000?"_s, {}, tpImagemMaterial), QString());
    QCOMPARE(Funcoes::BuscaArquivo(u""_s, {}, tpImagemMaterial), QString());
}

void TstQenHost::aCodeWithAPathInItHasNoPicture()
{
    const QString folder = m_folder->filePath(u"imagens"_s);
    QDir().mkpath(folder);
    m_settings->setValue(u"Pastas/imagens"_s, folder);
    QVERIFY(QFile(m_folder->filePath(u"fora.png"_s)).open(QIODevice::WriteOnly));
    for (const QString &code : {u"../fora"_s, u"..\\fora"_s, m_folder->filePath(u"fora"_s), u".."_s, u"."_s})
        QCOMPARE(Funcoes::BuscaArquivo(code, {}, tpImagemMaterial), QString());
}

void TstQenHost::fillInventoryRows(TClientDataSet &rows, const QString &client, const QString &code, double kg)
{
    if (rows.fields().isEmpty()) {
        QVector<TField> fields;
        for (const QString &name : {u"CODIGO"_s, u"COR"_s, u"TAM"_s, u"POSSE"_s, u"CODCLI"_s, u"UN"_s, u"DESCRICAO"_s,
                 u"DEPOSITO"_s, u"LOTE"_s})
            fields.append(TField(name, TField::Type::Text, 40));
        fields.append(TField(u"UNITARIO"_s, TField::Type::Float));
        fields.append(TField(u"FISICO"_s, TField::Type::Float));
        rows.CreateDataSet(fields);
    }
    rows.Append();
    const QHash<QString, QVariant> values{{u"CODIGO"_s, code}, {u"COR"_s, u"0"_s}, {u"TAM"_s, u"0"_s},
        {u"POSSE"_s, u"2"_s}, {u"CODCLI"_s, client}, {u"UN"_s, u"KG"_s}, {u"DESCRICAO"_s, u"Fio d'água"_s},
        {u"DEPOSITO"_s, u"0000"_s}, {u"LOTE"_s, u"000000"_s}, {u"UNITARIO"_s, 12.3456}, {u"FISICO"_s, kg}};
    for (auto value = values.begin(); value != values.end(); ++value)
        rows.setValue(value.key(), value.value());
    rows.Post();
}

void TstQenHost::anInventoryHoldsTodaysRowsOfTheCompany()
{
    Clock::pin(QDateTime({2026, 3, 10}, {14, 0}));
    TClientDataSet rows;
    fillInventoryRows(rows, u"00001"_s, u"FIO30CO"_s, 1234.5);
    fillInventoryRows(rows, u"00001"_s, {}, 5);
    m_host->login(u"ADMIN"_s, 2);
    QCOMPARE(Funcoes::GeraInventario(inventoryColumns(), rows), 1);
    QCOMPARE(m_database->rows(u"SELECT EMPRESA, CODIGO, COR, TAM, POSSE, UNITARIO, QTDE, CODCLI, UN, DESCRICAO, "
                              "DEPOSITO, LOTE FROM INVENTARIO_002"_s),
        QStringList{u"2|FIO30CO|0|0|2|12.3456|1234.5|00001|KG|Fio d'água|0000|000000"_s});
    QCOMPARE(m_database->value(u"SELECT DATA FROM INVENTARIO_002"_s).toDate(), QDate(2026, 3, 10));
}

void TstQenHost::anInventoryMadeAgainReplacesItselfAndNothingElse()
{
    const auto make = [this](QDate day, const QString &client, const QString &code, double kg) {
        Clock::pin(QDateTime(day, {14, 0}));
        TClientDataSet rows;
        fillInventoryRows(rows, client, code, kg);
        Funcoes::GeraInventario(inventoryColumns(), rows);
    };
    make({2026, 3, 9}, u"00001"_s, u"FIO30CO"_s, 1);
    make({2026, 3, 10}, u"00001"_s, u"FIO30CO"_s, 2);
    make({2026, 3, 10}, u"00001"_s, u"M0001"_s, 3);
    make({2026, 3, 10}, u"00002"_s, u"FIO30CO"_s, 4);
    make({2026, 3, 10}, {}, u"FIO30CO"_s, 5);
    make({2026, 3, 10}, u"00001"_s, u"FIO30CO"_s, 6);
    make({2026, 3, 10}, {}, u"FIO30CO"_s, 7);
    QStringList kilograms;
    for (const QString &kg : m_database->rows(u"SELECT QTDE FROM {INVENTARIO} ORDER BY QTDE"_s))
        kilograms.append(QString::number(kg.toDouble()));
    QCOMPARE(kilograms, (QStringList{u"1"_s, u"3"_s, u"4"_s, u"6"_s, u"7"_s}));
}

void TstQenHost::anInventoryThatFailsLeavesNothing()
{
    TClientDataSet rows;
    fillInventoryRows(rows, u"00001"_s, u"FIO30CO"_s, 1);
    fillInventoryRows(rows, u"00001"_s, u"A CODE THAT FITS NO COLUMN"_s, 2);
    QVERIFY_EXCEPTION_THROWN(Funcoes::GeraInventario(inventoryColumns(), rows), EDatabaseError);
    QCOMPARE(m_database->count(u"INVENTARIO"_s), 0);
    InventoryColumns wrong = inventoryColumns();
    wrong.lote = u"NADA"_s;
    QVERIFY_EXCEPTION_THROWN(Funcoes::GeraInventario(wrong, rows), EProgramming);
}

QTEST_MAIN(TstQenHost)
#include "tst_qenhost.moc"
