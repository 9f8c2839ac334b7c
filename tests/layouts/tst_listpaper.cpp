// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/reports/figures.h"
#include "tests/support/paper.h"

#include <QRadioButton>

using namespace Qt::StringLiterals;

namespace {

class PendingStation : public ReportStation
{
public:
    PendingStation()
        : ReportStation(u"TfmRelPend"_s)
        , paper(host)
    {
    }

    /// Orders of 100 kg with a roll of 25.5 kg each, numbered on from `first`.
    void insertOrders(int first, int count, const QString &machine)
    {
        for (int order = first; order < first + count; ++order) {
            const QString number = QString::number(order).rightJustified(6, u'0');
            Orders::insert(database, {.number = number, .machine = machine});
            Orders::writeOff(database, number, {25.5});
        }
    }

    Paper paper;
};

} // namespace

/// The paper of the list of pending orders.
class TestListPaper : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void rowsBearTheFiguresOfTheOrders();
    void machinesAndAllHaveTheirTotals();
    void titlesAndPageTotalsStandOnEachPage();
    void ordersOfAllCompaniesAreOnOnePaper();
    void machinesThatShareACodeHaveTheirOwnTitles();
    void gridPaperAndSheetShowTheSameFigures();
};

void TestListPaper::rowsBearTheFiguresOfTheOrders()
{
    PendingStation station;
    Orders::insert(station.database, {.totalKg = 1250.5});
    Orders::writeOff(station.database, u"000012"_s, {25.125, 24.875});
    Orders::insert(station.database, {.number = u"000013"_s, .machine = {}});
    station.openReport();
    station.enter(u"edtCodCliente"_s, u"00001"_s);
    station.print();
    const QString text = station.paper.flatText();
    QVERIFY2(text.contains(u"OFs pendentes"_s), qPrintable(text));
    QVERIFY2(text.contains(u"Cliente: 00001 Confecções Serra Azul Ltda"_s), qPrintable(text));
    QVERIFY2(text.contains(u"Máquina 001 Circular 30\" 28 agulhas"_s), qPrintable(text));
    QVERIFY2(text.contains(u"000012 02/03/2026 00001 Confecções Serra Azul Ltda M0001 Meia-malha PV 60/40"_s),
        qPrintable(text));
    QVERIFY2(text.contains(u"1.250,500 50,000 1.200,500 2 3%"_s), qPrintable(text));
    // Without a roll there is no weight, and all is still to be made.
    QVERIFY2(text.contains(u"Sem máquina"_s), qPrintable(text));
    QVERIFY2(text.contains(u"Meia-malha PV 60/40 100,000 100,000 0"_s), qPrintable(text));
    QVERIFY2(text.contains(u"Página 1 de 1"_s), qPrintable(text));
}

void TestListPaper::machinesAndAllHaveTheirTotals()
{
    PendingStation station;
    station.insertOrders(1, 2, u"001"_s);
    station.insertOrders(3, 3, u"002"_s);
    station.openReport();
    station.print();
    const QString text = station.paper.flatText();
    QVERIFY2(text.contains(u"2 OFs Total da máquina 200,000 51,000 149,000 2 25%"_s), qPrintable(text));
    QVERIFY2(text.contains(u"3 OFs Total da máquina 300,000 76,500 223,500 3 25%"_s), qPrintable(text));
    QVERIFY2(text.contains(u"5 OFs Total geral 500,000 127,500 372,500 5 25%"_s), qPrintable(text));
    QVERIFY2(text.contains(u"Nesta página 500,000 127,500 372,500 5"_s), qPrintable(text));
}

void TestListPaper::titlesAndPageTotalsStandOnEachPage()
{
    PendingStation station;
    station.insertOrders(1, 80, u"001"_s);
    station.openReport();
    station.print();
    QCOMPARE(station.paper.pages(), 3);
    int orders = 0;
    for (int page = 1; page <= 3; ++page) {
        QString text = station.paper.flatText(page);
        QVERIFY2(text.contains(u"Página %1 de 3"_s.arg(page)), qPrintable(text));
        QVERIFY2(text.contains(u"OF Data Cliente Malha Previsto (kg) Baixado (kg) Saldo (kg) Rolos Feito"_s),
            qPrintable(text));
        QVERIFY2(text.contains(u"Máquina 001"_s), qPrintable(text));
        const int here = int(text.count(u"00001 Confecções"_s));
        orders += here;
        const QString total = u"Nesta página %1,000"_s.arg(here * 100);
        QVERIFY2(text.remove(u'.').contains(total), qPrintable(text));
    }
    QCOMPARE(orders, 80);
    QVERIFY(station.paper.flatText(3).contains(u"80 OFs Total geral 8.000,000 2.040,000 5.960,000 80 25%"_s));
    QVERIFY(!station.paper.flatText(1).contains(u"Total geral"_s));
}

void TestListPaper::ordersOfAllCompaniesAreOnOnePaper()
{
    PendingStation station;
    station.database.addCommonData(2);
    station.insertOrders(4, 1, u"001"_s);
    station.database.run(u"INSERT INTO OF_MALHA_002 (NUM_OF, DATA, CLIENTE, MATERIAL, MAQUINA, KG_ROLO, KG_TOTAL) "
                         "VALUES ('000003', '03/02/2026', '00001', 'M0001', '001', 10, 60)"_s);
    station.database.run(u"INSERT INTO OF_MALHA_BAIXAS_002 (NUM_BAIXA, NUM_OF, QTDE) VALUES ('001', '000003', 14.5)"_s);
    station.openReport();
    station.click(u"ckTodasEmpresas"_s);
    station.print();
    const QString text = station.paper.flatText();
    QVERIFY2(text.contains(u"Empresas: todas"_s), qPrintable(text));
    QVERIFY2(text.contains(u"60,000 14,500 45,500 1 24%"_s), qPrintable(text));
    QVERIFY2(text.contains(u"100,000 25,500 74,500 1 25%"_s), qPrintable(text));
    QVERIFY(text.indexOf(u"000003"_s) < text.indexOf(u"000004"_s));
    QVERIFY2(text.contains(u"2 OFs Total da máquina 160,000 40,000 120,000 2 25%"_s), qPrintable(text));
}

void TestListPaper::machinesThatShareACodeHaveTheirOwnTitles()
{
    PendingStation station;
    station.database.addCommonData(2);
    station.database.run(u"UPDATE MAQUINA_002 SET DESCRICAO = 'Retilínea' WHERE MAQUINA = '001'"_s);
    station.insertOrders(4, 1, u"001"_s);
    station.insertOrders(6, 1, u"001"_s);
    for (const QString &number : {u"000003"_s, u"000005"_s}) {
        station.database.run(u"INSERT INTO OF_MALHA_002 (NUM_OF, DATA, CLIENTE, MATERIAL, MAQUINA, KG_ROLO, KG_TOTAL) "
                             "VALUES ('%1', '03/02/2026', '00001', 'M0001', '001', 10, 60)"_s.arg(number));
    }
    station.openReport();
    station.click(u"ckTodasEmpresas"_s);
    QCOMPARE(station.consult(u"NUM_OF"_s), (QStringList{u"000003"_s, u"000004"_s, u"000005"_s, u"000006"_s}));
    QCOMPARE(station.print().rowCounts, QList<int>{4});
    QCOMPARE(firstMissing(station.paper.flatText(),
                 {u"Máquina 001 Circular 30\" 28 agulhas"_s, u"000004"_s, u"000006"_s,
                     u"2 OFs Total da máquina 200,000 51,000"_s, u"Máquina 001 Retilínea"_s, u"000003"_s, u"000005"_s,
                     u"2 OFs Total da máquina 120,000 0,000"_s, u"4 OFs Total geral 320,000 51,000"_s}),
        QString());
}

void TestListPaper::gridPaperAndSheetShowTheSameFigures()
{
    PendingStation station;
    Orders::insert(station.database, {.totalKg = 1250.5});
    Orders::writeOff(station.database, u"000012"_s, {25.125, 24.875, 0.3});
    Orders::insert(station.database, {.number = u"000013"_s, .machine = u"002"_s});
    station.openReport();
    station.print();
    QCOMPARE(shown(station, {u"NUM_OF"_s, u"QTDE"_s, u"ROLO"_s, u"KG_TOTAL"_s}),
        (QStringList{u"000012|50,300|3|1.250,500"_s, u"000013||0|100,000"_s}));
    QCOMPARE(firstMissing(station.paper.flatText(),
                 {u"000012 02/03/2026"_s, u"1.250,500 50,300 1.200,200 3 4%"_s, u"000013 02/03/2026"_s,
                     u"100,000 100,000 0"_s, u"2 OFs Total geral 1.350,500 50,300 1.300,200 3 3%"_s}),
        QString());
    const ExportedGrid sheet(station);
    QCOMPARE(sheet.column(u"OF"_s), (QStringList{u"000012"_s, u"000013"_s}));
    QCOMPARE(sheet.column(u"Produzido"_s), (QStringList{u"50.3"_s, QString()}));
    QCOMPARE(sheet.column(u"Rolos"_s), (QStringList{u"3"_s, u"0"_s}));
    QCOMPARE(sheet.column(u"KG Total"_s), (QStringList{u"1250.5"_s, u"100"_s}));
}

QTEST_MAIN(TestListPaper)
#include "tst_listpaper.moc"
