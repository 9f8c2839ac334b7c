// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/reports/producedstation.h"

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

/// The report of produced orders.
class TestRelProd : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void everyControlBearsItsCaption();
    void itOpensOnTheLastMonthAndWholeDays();
    void theKeyboardAloneIsEnough();
    void theTableHasItsFieldsInTheirOrder();
    void shiftsStandSideBySide();
    void eachGroupingHasItsOrder_data();
    void eachGroupingHasItsOrder();
    void groupingAnewReadsNothingAgain();
    void rowsBearTheirPeriodAndGrouping();
    void aRollWithoutTimeCountsAtEitherEnd_data();
    void aRollWithoutTimeCountsAtEitherEnd();
    void thePeriodRunsFromMomentToMoment_data();
    void thePeriodRunsFromMomentToMoment();
    void aTimeThatIsNoneIsRefused();
    void clientAndMaterialFindByThemselves_data();
    void clientAndMaterialFindByThemselves();
    void aRollOfAnotherShiftCountsInTheTotalAlone();
    void anOrderWithoutMachineOrFabricIsListed();
    void theSumOfManyRollsIsExactToTheGram();
    void workingDaysAreCountedWhenAsked();
    void anOpenPeriodCountsWorkingDaysFromRollToRoll();
    void allCompaniesAreReadTogether();
    void wrongCodesGetTheirMessageAndTheirSearch();
    void nothingFoundIsSaidAndNotPrinted();
    void aFailedStatementLeavesTheScreenReady();
    void theSharedTableClosesWithTheScreen();
};

void TestRelProd::everyControlBearsItsCaption()
{
    ProducedStation station;
    station.openReport();
    QCOMPARE(station.form()->windowTitle(), u"Relatório de OFs Produzidas"_s);
    QCOMPARE(station.captions({u"lbData"_s, u"lbDe"_s, u"lbAte"_s, u"lbHora"_s, u"lbHoraDe"_s, u"lbHoraAte"_s,
                 u"lbCliente"_s, u"lbTabela"_s, u"lbPrazo"_s, u"rbMaterial"_s, u"rbMaquina"_s, u"rbDataBaixa"_s,
                 u"rbClienteMaquina"_s, u"CheckBox1"_s, u"CkEmpresas"_s, u"BtnExecutaSQL"_s, u"BtnImprimir"_s,
                 u"BitBtn5"_s}),
        (QStringList{u"Data"_s, u"De"_s, u"Até"_s, u"Hora"_s, u"De"_s, u"Até"_s, u"Cliente"_s, u"Tabela"_s, u"Prazo"_s,
            u"Material"_s, u"Máquina"_s, u"Data Baixa"_s, u"Cliente/Máquina"_s, u"Inclui Valores"_s,
            u"Todas Empresas"_s, u"Consultar"_s, u"Imprimir"_s, u"Fechar"_s}));
}

void TestRelProd::itOpensOnTheLastMonthAndWholeDays()
{
    ProducedStation station;
    station.openReport();
    QCOMPARE(station.text(u"EdtDataIni"_s), u"10/02/2026"_s);
    QCOMPARE(station.text(u"EdtDataFim"_s), u"10/03/2026"_s);
    QCOMPARE(station.text(u"EdtHoraIni"_s), u"00:00:00"_s);
    QCOMPARE(station.text(u"EdtHoraFim"_s), u"23:59:59"_s);
    QVERIFY(station.child<QAbstractButton>(u"rbMaterial"_s)->isChecked());
    for (const QString &option : {u"CheckBox1"_s, u"CkEmpresas"_s, u"ckContarDiasUteis"_s, u"ckGrafico"_s})
        QVERIFY2(!station.child<QAbstractButton>(option)->isChecked(), qPrintable(option));
    QCOMPARE(station.rows(), QStringList());
    QVERIFY(station.chart(u"GraficoMaquinas"_s).isEmpty());
    QCOMPARE(station.focus(), u"EdtDataIni"_s);
}

void TestRelProd::theKeyboardAloneIsEnough()
{
    ProducedStation station;
    station.insertProduction();
    station.openReport();
    const QStringList order{u"EdtDataFim"_s, u"EdtHoraIni"_s, u"EdtHoraFim"_s, u"EdtCodCli"_s, u"EdtCodMat"_s,
        u"EdtCodTab"_s, u"Edit1"_s, u"rbMaterial"_s, u"CheckBox1"_s, u"CkEmpresas"_s, u"ckContarDiasUteis"_s,
        u"ckGrafico"_s, u"BtnExecutaSQL"_s};
    for (const QString &next : order) {
        station.key(Qt::Key_Tab);
        QCOMPARE(station.focus(), next);
    }
    station.key(Qt::Key_Return);
    QCOMPARE(station.rows().size(), 3);
    station.key(Qt::Key_Tab);
    station.key(Qt::Key_Return);
    QCOMPARE(station.host.recordedReports().size(), 1);
    station.key(Qt::Key_Escape);
    QTRY_VERIFY(!station.form());
}

void TestRelProd::theTableHasItsFieldsInTheirOrder()
{
    ProducedStation station;
    station.openReport();
    QStringList names;
    for (const TField &field : station.grid()->dataSet()->fields())
        names.append(field.name);
    QCOMPARE(names.first(19),
        (QStringList{u"Maquina"_s, u"Desc_Maq"_s, u"Material"_s, u"Opcao"_s, u"Dt_Baixa"_s, u"Dt_ini"_s, u"dt_Fim"_s,
            u"Dias_uteis"_s, u"Turno1"_s, u"Turno2"_s, u"Turno3"_s, u"Turno4"_s, u"Valor1"_s, u"Valor2"_s, u"Valor3"_s,
            u"Valor4"_s, u"Cod_Cliente"_s, u"Cliente"_s, u"Desc_Mat"_s}));
}

void TestRelProd::shiftsStandSideBySide()
{
    ProducedStation station;
    station.insertProduction();
    station.openMarch();
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.rows(),
        (QStringList{
            u"Meia-malha PV 60/40|001|41,625|19,250||18,000|78,875|Confecções Serra Azul Ltda|M0001|00001|Circular 30\" 28 agulhas"_s,
            u"Meia-malha PV 60/40|002|30,125||||30,125|Confecções Serra Azul Ltda|M0001|00001|Circular 34\" 24 agulhas"_s,
            u"Ribana 2x1|001|25,000||24,375||49,375|Malhas São Bento S.A.|M0002|00002|Circular 30\" 28 agulhas"_s}));
    QCOMPARE(station.text(u"lbResultado"_s), u"3 registros"_s);
}

void TestRelProd::eachGroupingHasItsOrder_data()
{
    QTest::addColumn<QString>("choice");
    QTest::addColumn<QStringList>("rows");
    QTest::newRow("material") << u"rbMaterial"_s
                              << QStringList{u"M0001|001||00001|78,875"_s, u"M0001|002||00001|30,125"_s,
                                     u"M0002|001||00002|49,375"_s};
    QTest::newRow("machine") << u"rbMaquina"_s
                             << QStringList{u"M0001|001||00001|78,875"_s, u"M0002|001||00002|49,375"_s,
                                    u"M0001|002||00001|30,125"_s};
    QTest::newRow("date") << u"rbDataBaixa"_s
                          << QStringList{u"M0001|001|02/03/2026|00001|39,750"_s, u"M0002|001|02/03/2026|00002|25,000"_s,
                                 u"M0001|001|03/03/2026|00001|39,125"_s, u"M0002|001|03/03/2026|00002|24,375"_s,
                                 u"M0001|002|03/03/2026|00001|30,125"_s};
    QTest::newRow("client and machine") << u"rbClienteMaquina"_s
                                        << QStringList{u"M0001|001||00001|78,875"_s, u"M0001|002||00001|30,125"_s,
                                               u"M0002|001||00002|49,375"_s};
}

void TestRelProd::eachGroupingHasItsOrder()
{
    QFETCH(const QString, choice);
    ProducedStation station;
    station.insertProduction();
    station.openMarch();
    station.click(choice);
    station.click(u"BtnExecutaSQL"_s);
    QTEST(station.fields({u"MATERIAL"_s, u"MAQUINA"_s, u"DT_BAIXA"_s, u"COD_CLIENTE"_s, u"TOTAL"_s}), "rows");
    QCOMPARE(station.totalKg(), u"158.375"_s);
}

void TestRelProd::groupingAnewReadsNothingAgain()
{
    ProducedStation station;
    station.insertProduction();
    station.openMarch();
    station.click(u"BtnExecutaSQL"_s);
    station.insertRolls({{u"000012"_s, u"03/04/2026"_s, u"08:00:00"_s, u"1"_s, 500}});
    station.click(u"rbDataBaixa"_s);
    QCOMPARE(station.column(u"DT_BAIXA"_s).first(), u"02/03/2026"_s);
    QCOMPARE(station.text(u"lbResultado"_s), u"5 registros"_s);
    QCOMPARE(station.totalKg(), u"158.375"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.totalKg(), u"658.375"_s);
}

void TestRelProd::rowsBearTheirPeriodAndGrouping()
{
    ProducedStation station;
    station.insertProduction();
    station.openMarch();
    station.click(u"rbMaquina"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.fields({u"OPCAO"_s, u"DT_INI"_s, u"DT_FIM"_s, u"DIAS_UTEIS"_s}),
        QStringList(3, u"Máquina|01/03/2026|10/03/2026|"_s));
}

void TestRelProd::aRollWithoutTimeCountsAtEitherEnd_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<bool>("atBegin"); // on the first day
    QTest::addColumn<bool>("atEnd"); // on the last day
    QTest::newRow("whole days") << u"00:00:00"_s << u"23:59:59"_s << true << true;
    QTest::newRow("from its second on") << u"00:00:01"_s << u"23:59:59"_s << true << true;
    QTest::newRow("a second later") << u"00:00:02"_s << u"23:59:59"_s << false << true;
    QTest::newRow("a second earlier") << u"00:00:00"_s << u"23:59:58"_s << true << false;
    QTest::newRow("office hours") << u"08:00:00"_s << u"17:00:00"_s << false << false;
    QTest::newRow("no times") << QString() << QString() << true << true;
}

void TestRelProd::aRollWithoutTimeCountsAtEitherEnd()
{
    QFETCH(const QString, from);
    QFETCH(const QString, to);
    QFETCH(const bool, atBegin);
    QFETCH(const bool, atEnd);
    ProducedStation station;
    Orders::insert(station.database, {});
    station.insertRolls({{u"000012"_s, u"03/02/2026"_s, {}, u"1"_s, 1}, {u"000012"_s, u"03/03/2026"_s, {}, u"1"_s, 10},
        {u"000012"_s, u"03/04/2026"_s, {}, u"1"_s, 100}});
    station.openReport();
    station.setPeriod(u"02/03/2026"_s, u"04/03/2026"_s);
    station.setTimes(from, to);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.sum(u"TURNO1"_s), 10 + (atBegin ? 1 : 0) + (atEnd ? 100 : 0));
}

void TestRelProd::thePeriodRunsFromMomentToMoment_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<double>("kg");
    QTest::newRow("from the first roll's second on") << u"08:00:00"_s << u"23:59:59"_s << 158.375;
    QTest::newRow("up to the last roll's second, before the one without a time")
        << u"00:00:00"_s << u"23:30:00"_s << 134.0;
    QTest::newRow("a second after the first") << u"08:00:01"_s << u"23:59:59"_s << 137.875;
    QTest::newRow("a second before the last") << u"00:00:00"_s << u"23:29:59"_s << 116.0;
    QTest::newRow("the night between") << u"15:00:01"_s << u"08:59:59"_s << 0.0;
    QTest::newRow("hours alone") << u"9"_s << u"12"_s << 95.5;
}

void TestRelProd::thePeriodRunsFromMomentToMoment()
{
    QFETCH(const QString, from);
    QFETCH(const QString, to);
    ProducedStation station;
    station.insertProduction();
    station.openReport();
    station.setPeriod(u"02/03/2026"_s, u"03/03/2026"_s);
    station.setTimes(from, to);
    station.click(u"BtnExecutaSQL"_s);
    QTEST(station.sum(u"TOTAL"_s), "kg");
}

void TestRelProd::aTimeThatIsNoneIsRefused()
{
    ProducedStation station;
    station.openReport();
    for (const QString &field : {u"EdtHoraIni"_s, u"EdtHoraFim"_s}) {
        expectInformation(station.answers, station.form()->windowTitle(), u"Hora inválida."_s);
        station.enter(field, u"24:00:00"_s);
        QVERIFY(station.answers.allCame());
        QCOMPARE(station.focus(), field);
        station.enter(field, u"12:00:00"_s);
    }
}

void TestRelProd::clientAndMaterialFindByThemselves_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("code");
    QTest::addColumn<double>("kg");
    QTest::newRow("client") << u"EdtCodCli"_s << u"00002"_s << 49.375;
    QTest::newRow("material") << u"EdtCodMat"_s << u"M0001"_s << 109.0;
}

void TestRelProd::clientAndMaterialFindByThemselves()
{
    QFETCH(const QString, field);
    QFETCH(const QString, code);
    ProducedStation station;
    station.insertProduction();
    station.openMarch();
    station.enter(field, code);
    station.click(u"BtnExecutaSQL"_s);
    QTEST(station.sum(u"TOTAL"_s), "kg");
}

void TestRelProd::aRollOfAnotherShiftCountsInTheTotalAlone()
{
    ProducedStation station;
    Orders::insert(station.database, {});
    station.insertRolls({{u"000012"_s, u"03/02/2026"_s, {}, u"1"_s, 20}, {u"000012"_s, u"03/02/2026"_s, {}, u"5"_s, 7},
        {u"000012"_s, u"03/02/2026"_s, {}, {}, 0.5}});
    station.openMarch();
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.fields({u"TURNO1"_s, u"TURNO2"_s, u"TURNO3"_s, u"TURNO4"_s, u"TOTAL"_s}),
        QStringList{u"20,000||||27,500"_s});
    QCOMPARE(station.chart(u"GraficoMaquinas"_s).series().last().name, u"Sem turno"_s);
}

void TestRelProd::anOrderWithoutMachineOrFabricIsListed()
{
    ProducedStation station;
    Orders::insert(station.database, {.client = {}, .material = {}, .machine = {}});
    station.insertRolls({{u"000012"_s, u"03/02/2026"_s, {}, u"2"_s, 20}});
    station.openMarch();
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.fields({u"MAQUINA"_s, u"MATERIAL"_s, u"COD_CLIENTE"_s, u"TURNO2"_s}), QStringList{u"|||20,000"_s});
    QCOMPARE(station.drawn(u"GraficoMaquinas"_s), QStringList{u"Sem máquina: 20,000"_s});
}

void TestRelProd::theSumOfManyRollsIsExactToTheGram()
{
    ProducedStation station;
    Orders::insert(station.database, {});
    for (int day = 1; day <= 9; ++day) {
        const QString date = u"03/0%1/2026"_s.arg(day);
        station.insertRolls({{u"000012"_s, date, {}, u"1"_s, 0.1}, {u"000012"_s, date, {}, u"2"_s, 0.2}});
    }
    station.openMarch();
    station.click(u"BtnExecutaSQL"_s);
    const TDataSet *rows = station.grid()->dataSet();
    QVERIFY(rows->AsFloat(u"TURNO1"_s) == 0.9); // QCOMPARE would let a rounding error pass
    QVERIFY(rows->AsFloat(u"TURNO2"_s) == 1.8);
    QVERIFY(rows->AsFloat(u"TOTAL"_s) == 2.7);
}

void TestRelProd::workingDaysAreCountedWhenAsked()
{
    ProducedStation station;
    station.insertProduction();
    station.openMarch();
    station.click(u"ckContarDiasUteis"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.fields({u"DIAS_UTEIS"_s}), QStringList(3, u"7"_s)); // the 1st is a Sunday, the 10th a Tuesday
    station.click(u"ckContarDiasUteis"_s);
    QCOMPARE(station.fields({u"DIAS_UTEIS"_s}), QStringList(3, QString()));
    station.setPeriod(u"01/03/2026"_s, u"01/03/2026"_s);
    station.insertRolls({{u"000012"_s, u"03/01/2026"_s, {}, u"1"_s, 20}});
    station.click(u"ckContarDiasUteis"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.fields({u"DIAS_UTEIS"_s}), QStringList{u"0"_s});
}

void TestRelProd::anOpenPeriodCountsWorkingDaysFromRollToRoll()
{
    ProducedStation station;
    station.insertProduction();
    station.insertRolls({{u"000014"_s, u"02/17/2026"_s, {}, u"1"_s, 20}}); // Carnival's Tuesday
    station.openReport();
    station.setPeriod({}, {});
    station.click(u"ckContarDiasUteis"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.totalKg(), u"178.375"_s);
    // The 18th to the 20th, the week from the 23rd, the 2nd and 3rd of March.
    QCOMPARE(station.fields({u"DIAS_UTEIS"_s}).first(), u"10"_s);
    QCOMPARE(station.fields({u"DT_INI"_s, u"DT_FIM"_s}).first(), u"|"_s);
}

void TestRelProd::allCompaniesAreReadTogether()
{
    ProducedStation station;
    station.insertProduction();
    station.database.addCommonData(2);
    station.database.run(u"UPDATE MAQUINA_002 SET DESCRICAO = 'Retilínea' WHERE MAQUINA = '001'"_s);
    station.database.run(u"INSERT INTO OF_MALHA_002 (NUM_OF, DATA, CLIENTE, MATERIAL, MAQUINA) "
                         "VALUES ('000012', '03/02/2026', '00001', 'M0001', '001')"_s);
    station.database.run(u"INSERT INTO OF_MALHA_BAIXAS_002 (NUM_BAIXA, NUM_OF, DATA, TURNO, QTDE) "
                         "VALUES ('001', '000012', '03/02/2026', '1', 50)"_s);
    station.openMarch();
    station.click(u"rbMaquina"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.totalKg(), u"158.375"_s);
    station.click(u"CkEmpresas"_s);
    station.click(u"BtnExecutaSQL"_s);
    // Two machines that share a code are two, each with all of its rows together.
    QCOMPARE(station.fields({u"MAQUINA"_s, u"DESC_MAQ"_s, u"MATERIAL"_s, u"TOTAL"_s}),
        (QStringList{u"001|Circular 30\" 28 agulhas|M0001|78,875"_s, u"001|Circular 30\" 28 agulhas|M0002|49,375"_s,
            u"001|Retilínea|M0001|50,000"_s, u"002|Circular 34\" 24 agulhas|M0001|30,125"_s}));
}

void TestRelProd::wrongCodesGetTheirMessageAndTheirSearch()
{
    ProducedStation station;
    station.openReport();
    station.checkWrongCode(u"EdtCodCli"_s, u"Cliente inválido."_s, u"Clientes"_s, u"00002"_s);
    QCOMPARE(station.text(u"EdtNome"_s), u"Malhas São Bento S.A."_s);
    station.checkWrongCode(u"EdtCodMat"_s, u"Material inválido."_s, u"Materiais"_s, u"M0002"_s);
    QCOMPARE(station.text(u"EdtDescMat"_s), u"Ribana 2x1"_s);
    station.checkWrongCode(u"EdtCodTab"_s, u"Tabela inválida."_s, u"Regiões"_s, u"02"_s);
    QCOMPARE(station.text(u"EdtDescTab"_s), u"Sudeste"_s);
}

void TestRelProd::nothingFoundIsSaidAndNotPrinted()
{
    ProducedStation station;
    station.insertProduction();
    station.openReport();
    station.setPeriod(u"01/01/2026"_s, u"31/01/2026"_s);
    station.checkNothingFound();
    QVERIFY(station.chart(u"GraficoDias"_s).isEmpty());
}

void TestRelProd::aFailedStatementLeavesTheScreenReady()
{
    ProducedStation station;
    station.database.run(u"DROP TABLE {OF_MALHA_BAIXAS}"_s);
    station.openReport();
    station.checkRefusedStatement();
}

void TestRelProd::theSharedTableClosesWithTheScreen()
{
    ProducedStation station;
    station.openReport();
    QVERIFY(station.tabela.tabela(u"tbEntidade"_s));
    station.closeForm();
    QVERIFY(!station.tabela.tabela(u"tbEntidade"_s));
}

QTEST_MAIN(TestRelProd)
#include "tst_relprod.moc"
