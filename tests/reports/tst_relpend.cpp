// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/reports/reportstation.h"

#include <QGroupBox>
#include <QRadioButton>

using namespace Qt::StringLiterals;

namespace {

class PendingStation : public ReportStation
{
public:
    explicit PendingStation(const QString &user = u"ADMIN"_s)
        : ReportStation(u"TfmRelPend"_s, user)
    {
    }

    void insertOrder(const Orders::Order &order = {}) { Orders::insert(database, order); }
    void writeOff(const QString &order, const QList<double> &rolls) { Orders::writeOff(database, order, rolls); }
    /// An order of the second company, with its machine and rolls of 10 kg.
    void insertOfSecond(const QString &number, const QString &machine, int rolls)
    {
        database.run(u"INSERT INTO OF_MALHA_002 (NUM_OF, DATA, CLIENTE, MATERIAL, MAQUINA, KG_ROLO, KG_TOTAL) "
                     "VALUES ('%1', '03/02/2026', '00001', 'M0001', '%2', 10, 100)"_s.arg(number, machine));
        for (int roll = 1; roll <= rolls; ++roll)
            database.run(u"INSERT INTO OF_MALHA_BAIXAS_002 (NUM_BAIXA, NUM_OF, QTDE) VALUES ('%1', '%2', 10)"_s.arg(
                QString::number(roll).rightJustified(3, u'0'), number));
    }
    QStringList pending() { return consult(u"NUM_OF"_s); }
    QStringList all()
    {
        click(u"rbTodos"_s);
        return consult(u"NUM_OF"_s);
    }
    void setPeriod(const QString &from, const QString &to)
    {
        enter(u"edtDataIni"_s, from);
        enter(u"edtDataFim"_s, to);
    }
};

} // namespace

/// The report of pending orders.
class TestRelPend : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void everyControlBearsItsCaption();
    void itOpensOnTheLastMonthAndThePendingOrders();
    void theKeyboardAloneIsEnough();
    void anOrderIsPendingWhileItsRollsStayBelowThePlan_data();
    void anOrderIsPendingWhileItsRollsStayBelowThePlan();
    void anOrderWithoutRollsHasNoWeightAndNoRoll();
    void rowsShowWhatTheCodesStandFor();
    void theColumnsComeInTheirOrder();
    void rowsComeByMachineAndNumber();
    void thePeriodIsAlwaysApplied_data();
    void thePeriodIsAlwaysApplied();
    void everyFilterFindsByItself_data();
    void everyFilterFindsByItself();
    void hostileTextFindsNothing();
    void allCompaniesComeSortedTogether();
    void onlyCompaniesThatTheUserMaySeeAreRead();
    void wrongCodesGetTheirMessageAndTheirSearch();
    void nothingFoundIsSaidAndNotPrinted();
    void theRowsArePrinted();
    void aFailedStatementLeavesTheScreenReady();
    void theSharedTablesCloseWithTheScreen();
};

void TestRelPend::everyControlBearsItsCaption()
{
    PendingStation station;
    station.openReport();
    QCOMPARE(station.form()->windowTitle(), u"Relatório de OFs Pendentes"_s);
    QCOMPARE(station.captions({u"lbPeriodo"_s, u"lbDe"_s, u"lbAte"_s, u"lbCliente"_s, u"lbMaquina"_s, u"lbNumero"_s}),
        (QStringList{u"Período"_s, u"De"_s, u"Até"_s, u"Cliente"_s, u"Máquina"_s, u"Número"_s}));
    QCOMPARE(station.child<QGroupBox>(u"rgSituacao"_s)->title(), u"Situação"_s);
    QCOMPARE(station.captions({u"rbPendente"_s, u"rbTodos"_s, u"ckTodasEmpresas"_s}),
        (QStringList{u"Pendente"_s, u"Todos"_s, u"Todas Empresas"_s}));
    QCOMPARE(station.captions({u"BtnExecutaSQL"_s, u"BtnImprimir"_s, u"BitBtn5"_s}),
        (QStringList{u"Confirmar"_s, u"Imprimir"_s, u"Fechar"_s}));
}

void TestRelPend::itOpensOnTheLastMonthAndThePendingOrders()
{
    PendingStation station;
    station.insertOrder();
    station.openReport();
    QCOMPARE(station.text(u"edtDataIni"_s), u"10/02/2026"_s);
    QCOMPARE(station.text(u"edtDataFim"_s), u"10/03/2026"_s);
    QVERIFY(station.child<QRadioButton>(u"rbPendente"_s)->isChecked());
    QVERIFY(!station.child<QAbstractButton>(u"ckTodasEmpresas"_s)->isChecked());
    QCOMPARE(station.rows(), QStringList());
    QCOMPARE(station.focus(), u"edtDataIni"_s);
}

void TestRelPend::theKeyboardAloneIsEnough()
{
    PendingStation station;
    station.insertOrder();
    station.openReport();
    const QStringList order{
        u"edtDataFim"_s, u"edtCodCliente"_s, u"EdtMaq"_s, u"edtNumero"_s, u"rbPendente"_s, u"ckTodasEmpresas"_s};
    for (const QString &next : order) {
        station.key(Qt::Key_Tab);
        QCOMPARE(station.focus(), next);
    }
    station.key(Qt::Key_Tab);
    QCOMPARE(station.focus(), u"BtnExecutaSQL"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.rows().size(), 1);
    station.key(Qt::Key_Tab);
    QCOMPARE(station.focus(), u"BtnImprimir"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.host.recordedReports().size(), 1);
    station.key(Qt::Key_Escape);
    QTRY_VERIFY(!station.form());
}

void TestRelPend::anOrderIsPendingWhileItsRollsStayBelowThePlan_data()
{
    QTest::addColumn<QList<double>>("rolls");
    QTest::addColumn<bool>("isPending");
    QTest::newRow("nothing written off") << QList<double>{} << true;
    QTest::newRow("half a kilogram short") << QList<double>{50, 49.5} << true;
    QTest::newRow("a gram short") << QList<double>{99.999} << true;
    QTest::newRow("all of it") << QList<double>{60, 40} << false;
    QTest::newRow("ten rolls that add up") << QList<double>(10, 10.0) << false;
    QTest::newRow("thirds that add up") << QList<double>{33.333, 33.333, 33.334} << false;
    QTest::newRow("more than planned") << QList<double>{100.5} << false;
}

void TestRelPend::anOrderIsPendingWhileItsRollsStayBelowThePlan()
{
    QFETCH(QList<double>, rolls);
    QFETCH(bool, isPending);
    PendingStation station;
    station.insertOrder();
    station.writeOff(u"000012"_s, rolls);
    station.openReport();
    QCOMPARE(station.pending(), isPending ? QStringList{u"000012"_s} : QStringList());
    QCOMPARE(station.all(), QStringList{u"000012"_s});
    QCOMPARE(station.column(u"ROLO"_s), QStringList{QString::number(rolls.size())});
}

void TestRelPend::anOrderWithoutRollsHasNoWeightAndNoRoll()
{
    PendingStation station;
    station.insertOrder();
    station.openReport();
    QCOMPARE(station.consult(u"QTDE"_s), QStringList{QString()});
    QCOMPARE(station.column(u"ROLO"_s), QStringList{u"0"_s});
    QCOMPARE(station.column(u"KG_TOTAL"_s), QStringList{u"100,000"_s});
}

void TestRelPend::rowsShowWhatTheCodesStandFor()
{
    PendingStation station;
    station.insertOrder({.totalKg = 1250.5});
    station.writeOff(u"000012"_s, {25.125, 24.875});
    station.insertOrder({.number = u"000013"_s, .client = u"99999"_s, .material = u"GONE"_s, .machine = u"999"_s});
    station.openReport();
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.rows(),
        (QStringList{u"|000013|02/03/2026|||0|100,000||99999|GONE|"_s,
            u"001|000012|02/03/2026|Confecções Serra Azul Ltda|50,000|2|1.250,500|Meia-malha PV 60/40|00001|M0001|Circular 30\" 28 agulhas"_s}));
}

void TestRelPend::theColumnsComeInTheirOrder()
{
    PendingStation station;
    station.insertOrder();
    station.openReport();
    station.click(u"BtnExecutaSQL"_s);
    QStringList names;
    for (const TField &field : station.grid()->dataSet()->fields())
        names.append(field.name);
    QCOMPARE(names.join(u' '), u"CLIENTE NOME DATA NUM_OF MATERIAL DESCRICAO MAQUINA DESC_MAQ QTDE ROLO KG_TOTAL"_s);
}

void TestRelPend::rowsComeByMachineAndNumber()
{
    PendingStation station;
    station.insertOrder({.number = u"000003"_s, .machine = u"002"_s});
    station.insertOrder({.number = u"000004"_s, .machine = u"001"_s});
    station.insertOrder({.number = u"000001"_s, .machine = u"002"_s});
    station.insertOrder({.number = u"000002"_s, .machine = u"001"_s});
    station.insertOrder({.number = u"000009"_s, .machine = {}});
    station.openReport();
    QCOMPARE(station.pending(), (QStringList{u"000009"_s, u"000002"_s, u"000004"_s, u"000001"_s, u"000003"_s}));
}

void TestRelPend::thePeriodIsAlwaysApplied_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QStringList>("found");
    const QStringList all{u"000001"_s, u"000002"_s, u"000003"_s};
    QTest::newRow("both ends belong to it") << u"01/02/2026"_s << u"28/02/2026"_s << all.mid(0, 2);
    QTest::newRow("one day") << u"28/02/2026"_s << u"28/02/2026"_s << all.mid(1, 1);
    QTest::newRow("without beginning") << QString() << u"01/02/2026"_s << all.mid(0, 1);
    QTest::newRow("without end") << u"02/02/2026"_s << QString() << all.mid(1);
    QTest::newRow("without both: orders without a date are in no period") << QString() << QString() << all;
    QTest::newRow("backwards") << u"28/02/2026"_s << u"01/02/2026"_s << QStringList();
}

void TestRelPend::thePeriodIsAlwaysApplied()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    PendingStation station;
    station.insertOrder({.number = u"000001"_s, .date = u"02/01/2026"_s});
    station.insertOrder({.number = u"000002"_s, .date = u"02/28/2026"_s});
    station.insertOrder({.number = u"000003"_s, .date = u"12/31/2026"_s});
    station.insertOrder({.number = u"000004"_s, .date = {}});
    station.openReport();
    station.setPeriod(from, to);
    QTEST(station.pending(), "found");
}

void TestRelPend::everyFilterFindsByItself_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QStringList>("found");
    QTest::newRow("client") << u"edtCodCliente"_s << u"00002"_s << QStringList{u"000002"_s};
    QTest::newRow("machine") << u"EdtMaq"_s << u"002"_s << QStringList{u"000003"_s};
    QTest::newRow("number") << u"edtNumero"_s << u"000001"_s << QStringList{u"000001"_s};
    QTest::newRow("number without zeros") << u"edtNumero"_s << u"1"_s << QStringList();
    QTest::newRow("none") << u"edtNumero"_s << QString() << QStringList{u"000001"_s, u"000002"_s, u"000003"_s};
}

void TestRelPend::everyFilterFindsByItself()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    PendingStation station;
    station.insertOrder({.number = u"000001"_s});
    station.insertOrder({.number = u"000002"_s, .client = u"00002"_s});
    station.insertOrder({.number = u"000003"_s, .machine = u"002"_s});
    station.openReport();
    station.enter(field, value);
    QTEST(station.pending(), "found");
}

void TestRelPend::hostileTextFindsNothing()
{
    PendingStation station;
    station.insertOrder();
    station.openReport();
    for (const QString &text : {u"' OR 1"_s, u"%"_s, u"{X}"_s, u"'--"_s}) {
        station.enter(u"edtNumero"_s, text);
        QCOMPARE(station.pending(), QStringList());
    }
}

void TestRelPend::allCompaniesComeSortedTogether()
{
    PendingStation station;
    station.database.addCommonData(2);
    station.insertOrder({.number = u"000001"_s, .machine = u"002"_s});
    station.insertOrder({.number = u"000004"_s, .machine = u"001"_s});
    station.writeOff(u"000004"_s, {30});
    station.insertOfSecond(u"000003"_s, u"001"_s, 2);
    station.insertOfSecond(u"000004"_s, u"001"_s, 0); // the same number in both
    station.insertOfSecond(u"000005"_s, u"002"_s, 10);
    station.openReport();
    QCOMPARE(station.pending(), (QStringList{u"000004"_s, u"000001"_s}));
    station.click(u"ckTodasEmpresas"_s);
    QCOMPARE(station.pending(), (QStringList{u"000003"_s, u"000004"_s, u"000004"_s, u"000001"_s}));
    const QStringList weights = station.column(u"QTDE"_s);
    QCOMPARE(weights[0], u"20,000"_s);
    QCOMPARE(weights[1] + weights[2], u"30,000"_s); // the rolls of the first company's alone
    QCOMPARE(station.all(), (QStringList{u"000003"_s, u"000004"_s, u"000004"_s, u"000001"_s, u"000005"_s}));
    QCOMPARE(station.column(u"DESC_MAQ"_s).last(), u"Circular 34\" 24 agulhas"_s);
}

void TestRelPend::onlyCompaniesThatTheUserMaySeeAreRead()
{
    PendingStation station(u"SEMDIREITO"_s); // who sees the first alone
    station.database.addCommonData(2);
    station.insertOrder({.number = u"000001"_s});
    station.insertOfSecond(u"000003"_s, u"001"_s, 2);
    station.openReport();
    station.click(u"ckTodasEmpresas"_s);
    QCOMPARE(station.pending(), QStringList{u"000001"_s});
}

void TestRelPend::wrongCodesGetTheirMessageAndTheirSearch()
{
    PendingStation station;
    station.openReport();
    station.checkWrongCode(u"edtCodCliente"_s, u"Cliente inválido."_s, u"Clientes"_s, u"bento"_s);
    QCOMPARE(station.text(u"edtCodCliente"_s), u"00002"_s);
    QCOMPARE(station.text(u"edtNomeCliente"_s), u"Malhas São Bento S.A."_s);
    station.checkWrongCode(u"EdtMaq"_s, u"Máquina inválida."_s, u"Máquinas"_s, u"34"_s);
    QCOMPARE(station.text(u"EdtMaq"_s), u"002"_s);
    QCOMPARE(station.text(u"EdtDescMaq"_s), u"Circular 34\" 24 agulhas"_s);
}

void TestRelPend::nothingFoundIsSaidAndNotPrinted()
{
    PendingStation station;
    station.openReport();
    station.checkNothingFound();
}

void TestRelPend::theRowsArePrinted()
{
    PendingStation station;
    station.insertOrder({.number = u"000001"_s});
    station.insertOrder({.number = u"000002"_s});
    station.openReport();
    const RecordedReport report = station.print(); // which reads the rows first
    QCOMPARE(report.name, u"WMalPend"_s);
    QCOMPARE(report.kind, ReportCall::Kind::Graphic);
    QCOMPARE(report.dataSets, QStringList{u"qryRelatorio"_s});
    QCOMPARE(report.rowCounts, QList<int>{2});
    QCOMPARE(station.text(u"lbResultado"_s), u"2 registros"_s);
}

void TestRelPend::aFailedStatementLeavesTheScreenReady()
{
    PendingStation station;
    station.database.run(u"DROP TABLE {OF_MALHA_BAIXAS}"_s);
    station.openReport();
    station.checkRefusedStatement();
}

void TestRelPend::theSharedTablesCloseWithTheScreen()
{
    PendingStation station;
    station.openReport();
    for (const QString &name : {u"tbEntidade"_s, u"tbNFTerceiros"_s, u"tbMaquina"_s})
        QVERIFY2(station.tabela.tabela(name), qPrintable(name));
    station.closeForm();
    for (const QString &name : {u"tbEntidade"_s, u"tbNFTerceiros"_s, u"tbMaquina"_s})
        QVERIFY2(!station.tabela.tabela(name), qPrintable(name));
}

QTEST_MAIN(TestRelPend)
#include "tst_relpend.moc"
