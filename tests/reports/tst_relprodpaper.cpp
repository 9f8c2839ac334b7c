// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/reports/figures.h"
#include "tests/reports/producedstation.h"
#include "tests/support/paper.h"

#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

class PrintingStation : public ProducedStation
{
public:
    PrintingStation()
        : paper(host)
    {
        insertProduction();
        insertPrices();
    }

    QString printed(const QString &choice)
    {
        click(choice);
        print();
        return paper.flatText();
    }
    int pictures() const
    {
        QProcess process;
        process.start(u"pdfimages"_s, {u"-list"_s, paper.file()});
        process.waitForFinished(-1);
        return int(process.readAllStandardOutput().count("image"));
    }

    Paper paper;
};

} // namespace

/// The papers of the report of produced orders.
class TestRelProdPaper : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void machinesHaveTheirFabricsAndTotals();
    void fabricsHaveTheirMachinesAndTotals();
    void daysHaveTheirTotals();
    void clientsHaveTheirMachinesAndTotals();
    void valuesStandBeneathTheirKilograms();
    void whatHasNoPriceIsSaid();
    void valuesFollowTheGrouping_data();
    void valuesFollowTheGrouping();
    void workingDaysGiveTheProductionPerDay();
    void thePictureIsPrintedWhenWished();
    void aGroupStaysWithItsTotal_data();
    void aGroupStaysWithItsTotal();
    void totalsStandOnEachPage();
};

void TestRelProdPaper::machinesHaveTheirFabricsAndTotals()
{
    PrintingStation station;
    station.openMarch();
    const QString text = station.printed(u"rbMaquina"_s);
    QCOMPARE(firstMissing(text,
                 {u"Produção por máquina"_s, u"Período: 01/03/2026 a 10/03/2026"_s,
                     u"Máquina 001 Circular 30\" 28 agulhas"_s,
                     u"M0001 Meia-malha PV 60/40 00001 Confecções Serra Azul Ltda 41,625 19,250 18,000 78,875"_s,
                     u"M0002 Ribana 2x1 00002 Malhas São Bento S.A. 25,000 24,375 49,375"_s,
                     u"Total da máquina 66,625 19,250 24,375 18,000 128,250"_s,
                     u"Total da máquina 30,125 0,000 0,000 0,000 30,125"_s,
                     u"Total geral (kg) 96,750 19,250 24,375 18,000 158,375"_s, u"Página 1 de 1"_s}),
        QString());
    QVERIFY(!text.contains(u"Dias úteis"_s));
}

void TestRelProdPaper::fabricsHaveTheirMachinesAndTotals()
{
    PrintingStation station;
    station.openMarch();
    const QString text = station.printed(u"rbMaterial"_s);
    QCOMPARE(firstMissing(text,
                 {u"Produção por material"_s, u"Malha M0001 Meia-malha PV 60/40"_s,
                     u"002 Circular 34\" 24 agulhas 00001 Confecções Serra Azul Ltda 30,125 30,125"_s,
                     u"Total da malha 71,750 19,250 0,000 18,000 109,000"_s,
                     u"Total da malha 25,000 0,000 24,375 0,000 49,375"_s,
                     u"Total geral (kg) 96,750 19,250 24,375 18,000 158,375"_s}),
        QString());
}

void TestRelProdPaper::daysHaveTheirTotals()
{
    PrintingStation station;
    station.openMarch();
    const QString text = station.printed(u"rbDataBaixa"_s);
    QCOMPARE(firstMissing(text,
                 {u"Produção por data da baixa"_s, u"Data da baixa 02/03/2026"_s,
                     u"Total do dia 45,500 19,250 0,000 0,000 64,750"_s, u"Data da baixa 03/03/2026"_s,
                     u"Total do dia 51,250 0,000 24,375 18,000 93,625"_s,
                     u"Total geral (kg) 96,750 19,250 24,375 18,000 158,375"_s}),
        QString());
}

void TestRelProdPaper::clientsHaveTheirMachinesAndTotals()
{
    PrintingStation station;
    station.openMarch();
    const QString text = station.printed(u"rbClienteMaquina"_s);
    QCOMPARE(firstMissing(text,
                 {u"Produção por cliente e máquina"_s, u"Cliente 00001 Confecções Serra Azul Ltda"_s,
                     u"Total do cliente 71,750 19,250 0,000 18,000 109,000"_s,
                     u"Total do cliente 25,000 0,000 24,375 0,000 49,375"_s,
                     u"Total geral (kg) 96,750 19,250 24,375 18,000 158,375"_s}),
        QString());
}

void TestRelProdPaper::valuesStandBeneathTheirKilograms()
{
    PrintingStation station;
    station.openMarch();
    station.enter(u"EdtCodTab"_s, u"01"_s);
    station.click(u"CheckBox1"_s);
    const QString text = station.printed(u"rbMaquina"_s);
    QCOMPARE(firstMissing(text,
                 {u"Produção com valores por máquina"_s, u"Tabela: 01 Sul"_s, u"41,625 19,250 18,000 78,875"_s,
                     u"83,25 38,50 36,00 157,75 2,00"_s, u"60,25 60,25 2,00"_s,
                     u"Total geral (kg) 96,750 19,250 24,375 18,000 158,375"_s,
                     u"Total geral (R$) 143,50 38,50 0,00 36,00 218,00 2,00"_s}),
        QString());
}

void TestRelProdPaper::whatHasNoPriceIsSaid()
{
    PrintingStation station;
    station.openMarch();
    station.enter(u"EdtCodTab"_s, u"01"_s);
    station.click(u"CheckBox1"_s);
    QCOMPARE(firstMissing(station.printed(u"rbMaterial"_s), {u"Sem preço na tabela: 49,375 kg"_s}), QString());
    station.enter(u"EdtCodCli"_s, u"00001"_s);
    station.click(u"BtnExecutaSQL"_s);
    QVERIFY(!station.printed(u"rbMaterial"_s).contains(u"Sem preço"_s));
}

void TestRelProdPaper::valuesFollowTheGrouping_data()
{
    QTest::addColumn<QString>("choice");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("material") << u"rbMaterial"_s
                              << QStringList{u"valores por material"_s,
                                     u"Total da malha 71,750 19,250 0,000 18,000 109,000"_s, u"143,50 38,50"_s,
                                     u"Malha M0002 Ribana 2x1"_s};
    QTest::newRow("date") << u"rbDataBaixa"_s
                          << QStringList{u"valores por data da baixa"_s,
                                 u"Total do dia 45,500 19,250 0,000 0,000 64,750"_s, u"41,00 38,50"_s,
                                 u"Data da baixa 03/03/2026"_s};
    QTest::newRow("client") << u"rbClienteMaquina"_s
                            << QStringList{u"valores por cliente e máquina"_s,
                                   u"Total do cliente 71,750 19,250 0,000 18,000 109,000"_s, u"218,00 2,00"_s,
                                   u"Cliente 00002 Malhas São Bento S.A."_s};
}

void TestRelProdPaper::valuesFollowTheGrouping()
{
    QFETCH(const QString, choice);
    QFETCH(const QStringList, texts);
    PrintingStation station;
    station.openMarch();
    station.enter(u"EdtCodTab"_s, u"01"_s);
    station.click(u"CheckBox1"_s);
    const QString printed = station.printed(choice);
    QCOMPARE(firstMissing(printed, texts), QString());
}

void TestRelProdPaper::workingDaysGiveTheProductionPerDay()
{
    PrintingStation station;
    station.openMarch();
    station.click(u"ckContarDiasUteis"_s);
    for (const QString &choice : {u"rbMaquina"_s, u"rbMaterial"_s, u"rbDataBaixa"_s}) {
        const QString text = station.printed(choice);
        QCOMPARE(firstMissing(text, {u"Dias úteis no período: 7"_s, u"Produção por dia útil: 22,625 kg"_s}), QString());
    }
}

void TestRelProdPaper::thePictureIsPrintedWhenWished()
{
    PrintingStation station;
    station.openMarch();
    station.printed(u"rbMaquina"_s);
    QCOMPARE(station.pictures(), 0);
    station.click(u"ckGrafico"_s);
    for (const QString &choice : {u"rbMaquina"_s, u"rbMaterial"_s, u"rbDataBaixa"_s}) {
        station.printed(choice);
        QCOMPARE(station.pictures(), 1);
    }
    station.click(u"CheckBox1"_s);
    station.printed(u"rbMaquina"_s);
    QCOMPARE(station.pictures(), 1);
}

void TestRelProdPaper::aGroupStaysWithItsTotal_data()
{
    QTest::addColumn<QString>("choice");
    QTest::addColumn<QString>("title"); // of the group that the first page has no room for
    QTest::addColumn<QString>("total");
    QTest::newRow("material") << u"rbMaterial"_s << u"Malha F2"_s << u"Total da malha"_s;
    QTest::newRow("machine") << u"rbMaquina"_s << u"Máquina 002"_s << u"Total da máquina"_s;
    QTest::newRow("date") << u"rbDataBaixa"_s << u"Data da baixa 05/03/2026"_s << u"Total do dia"_s;
    QTest::newRow("client") << u"rbClienteMaquina"_s << u"Cliente 00002"_s << u"Total do cliente"_s;
}

void TestRelProdPaper::aGroupStaysWithItsTotal()
{
    QFETCH(const QString, choice);
    QFETCH(const QString, title);
    QFETCH(const QString, total);
    PrintingStation station;
    station.database.run(u"DELETE FROM {OF_MALHA_BAIXAS}"_s);
    // Each choice has two groups of thirteen rows: a page has room for one and a half of them, or a whole one
    // with values.
    for (int order = 0; order < 26; ++order) {
        const bool second = order >= 13;
        const QString number = u"0001"_s + QString::number(10 + order);
        // What the choice does not group by differs from row to row.
        const QString own = QString::number(10 + order);
        const QString material = choice == u"rbMaterial"_s ? (second ? u"F2"_s : u"F1"_s) : u"F"_s + own;
        const QString machine = choice == u"rbMaterial"_s ? u"M"_s + own : (second ? u"002"_s : u"001"_s);
        Orders::insert(station.database,
            {.number = number, .client = second ? u"00002"_s : u"00001"_s, .material = material, .machine = machine});
        station.insertRolls({{number, second ? u"03/05/2026"_s : u"03/04/2026"_s, u"08:00:00"_s, u"2"_s, 10}});
    }
    station.openMarch();
    for (const bool values : {false, true}) {
        if (values)
            station.click(u"CheckBox1"_s);
        station.printed(choice);
        QCOMPARE(station.paper.pages(), 2);
        const QString first = station.paper.flatText(1);
        const QString second = station.paper.flatText(2);
        QVERIFY2(!first.contains(title) && first.contains(total + u" 0,000 130,000"_s), qPrintable(first));
        QVERIFY2(second.contains(title) && second.contains(total + u" 0,000 130,000"_s), qPrintable(second));
    }
}

void TestRelProdPaper::totalsStandOnEachPage()
{
    PrintingStation station;
    for (int order = 100; order < 160; ++order) {
        const QString number = u"000"_s + QString::number(order);
        const QString material = u"F"_s + QString::number(order);
        Orders::insert(station.database, {.number = number, .material = material, .machine = u"002"_s});
        station.insertRolls({{number, u"03/05/2026"_s, u"08:00:00"_s, u"2"_s, 10}});
    }
    station.openMarch();
    station.printed(u"rbMaquina"_s);
    QVERIFY(station.paper.pages() > 1);
    double sum = 0;
    for (int page = 1; page <= station.paper.pages(); ++page) {
        const QString text = station.paper.flatText(page);
        QCOMPARE(firstMissing(text,
                     {u"1º turno 2º turno 3º turno 4º turno Total (kg)"_s,
                         u"Página %1 de %2"_s.arg(page).arg(station.paper.pages())}),
            QString());
        const QString total = text.section(u"Nesta página (kg) "_s, 1).section(u'\n', 0, 0).trimmed();
        sum += Format::parseNumber(total.section(u' ', -1)).value_or(-1);
    }
    QCOMPARE(sum, 758.375);
    QCOMPARE(
        firstMissing(station.paper.flatText(), {u"Total da máquina 30,125 600,000 0,000 0,000 630,125"_s}), QString());
}

QTEST_MAIN(TestRelProdPaper)
#include "tst_relprodpaper.moc"
