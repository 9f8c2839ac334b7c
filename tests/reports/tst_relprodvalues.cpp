// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/reports/figures.h"
#include "tests/reports/producedstation.h"

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

namespace {

const QStringList valueFields{
    u"MATERIAL"_s, u"MAQUINA"_s, u"VALOR1"_s, u"VALOR2"_s, u"VALOR3"_s, u"VALOR4"_s, u"VALOR_TOTAL"_s};

} // namespace

/// The report of produced orders: values, pictures, spreadsheet, and what goes to paper.
class TestRelProdValues : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void thePriceOfTheLowestColourGroupValuesARoll();
    void aPriceStoredTwiceCountsARollOnce();
    void theTermPicksThePrice_data();
    void theTermPicksThePrice();
    void aTermWithoutAPriceIsRefused_data();
    void aTermWithoutAPriceIsRefused();
    void valuesAreShownWhenWished();
    void picturesFollowTheFilters();
    void theSpreadsheetBearsTheFiguresOfTheGrid();
    void eachGroupingHasItsLayout_data();
    void eachGroupingHasItsLayout();
};

void TestRelProdValues::thePriceOfTheLowestColourGroupValuesARoll()
{
    ProducedStation station;
    station.insertProduction();
    station.insertPrices();
    station.openMarch();
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.fields(valueFields), (QStringList{u"M0001|001|||||"_s, u"M0001|002|||||"_s, u"M0002|001|||||"_s}));
    station.enter(u"EdtCodTab"_s, u"01"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.fields(valueFields),
        (QStringList{u"M0001|001|83,25|38,50||36,00|157,75"_s, u"M0001|002|60,25||||60,25"_s, u"M0002|001|||||"_s}));
    QCOMPARE(station.totalKg(), u"158.375"_s);
}

void TestRelProdValues::aPriceStoredTwiceCountsARollOnce()
{
    ProducedStation station;
    station.insertProduction();
    station.insertPrices();
    station.insertPrices();
    station.openMarch();
    station.enter(u"EdtCodTab"_s, u"01"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.totalKg(), u"158.375"_s);
    QCOMPARE(station.sum(u"VALOR_TOTAL"_s), 218.0);
}

void TestRelProdValues::theTermPicksThePrice_data()
{
    QTest::addColumn<QString>("term");
    QTest::addColumn<QStringList>("values");
    const auto first = u"M0001|001|83,25|38,50||36,00|157,75"_s;
    QTest::newRow("none") << QString() << QStringList{first, u"M0001|002|60,25||||60,25"_s, u"M0002|001|||||"_s};
    QTest::newRow("at once") << u"0"_s << QStringList{first, u"M0001|002|60,25||||60,25"_s, u"M0002|001|||||"_s};
    // To the cent, a half away from zero: 104,0625, 48,125, 45 and 75,3125.
    for (const QString &term : {u"7"_s, u"07"_s}) {
        QTest::newRow(qPrintable(u"seven days as "_s + term))
            << term
            << QStringList{
                   u"M0001|001|104,06|48,13||45,00|197,19"_s, u"M0001|002|75,31||||75,31"_s, u"M0002|001|||||"_s};
    }
    QTest::newRow("ninety-one days") << u"91"_s
                                     << QStringList{u"M0001|001|166,50|77,00||72,00|315,50"_s,
                                            u"M0001|002|120,50||||120,50"_s, u"M0002|001|||||"_s};
}

void TestRelProdValues::theTermPicksThePrice()
{
    QFETCH(const QString, term);
    ProducedStation station;
    station.insertProduction();
    station.insertPrices();
    station.openMarch();
    station.enter(u"EdtCodTab"_s, u"01"_s);
    station.enter(u"Edit1"_s, term);
    station.click(u"BtnExecutaSQL"_s);
    QTEST(station.fields(valueFields), "values");
}

void TestRelProdValues::aTermWithoutAPriceIsRefused_data()
{
    QTest::addColumn<QString>("term");
    for (const char *term : {"8", "98", "1", "-7", "x", "*0"})
        QTest::newRow(term) << QString::fromLatin1(term);
}

void TestRelProdValues::aTermWithoutAPriceIsRefused()
{
    QFETCH(const QString, term);
    ProducedStation station;
    station.insertProduction();
    station.openMarch();
    station.click(u"BtnExecutaSQL"_s);
    expectInformation(station.answers, station.form()->windowTitle(), u"Prazo inválido."_s);
    station.enter(u"Edit1"_s, term);
    QVERIFY(station.answers.allCame());
    QCOMPARE(station.focus(), u"Edit1"_s);
    expectInformation(station.answers, station.form()->windowTitle(), u"Prazo inválido."_s);
    station.key(Qt::Key_O, Qt::AltModifier); // a tick by its key: leaves the field as well
    QVERIFY(station.answers.allCame());
    QCOMPARE(station.rows().size(), 3);
}

void TestRelProdValues::valuesAreShownWhenWished()
{
    ProducedStation station;
    station.insertProduction();
    station.insertPrices();
    station.openMarch();
    station.enter(u"EdtCodTab"_s, u"01"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.grid()->columnOf(u"VALOR1"_s), -1);
    station.click(u"CheckBox1"_s);
    QCOMPARE(station.column(u"VALOR1"_s), (QStringList{u"83,25"_s, u"60,25"_s, QString()}));
    QCOMPARE(station.column(u"VALOR_TOTAL"_s), (QStringList{u"157,75"_s, u"60,25"_s, QString()}));
}

void TestRelProdValues::picturesFollowTheFilters()
{
    ProducedStation station;
    station.insertProduction();
    station.openMarch();
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.drawn(u"GraficoMaquinas"_s),
        (QStringList{u"001: 66,625 19,250 24,375 18,000"_s, u"002: 30,125 0,000 0,000 0,000"_s}));
    QStringList shifts;
    for (const ReportChart::Series &series : station.chart(u"GraficoMaquinas"_s).series())
        shifts.append(series.name);
    QCOMPARE(shifts, (QStringList{u"1º"_s, u"2º"_s, u"3º"_s, u"4º"_s}));
    QCOMPARE(station.drawn(u"GraficoDias"_s), (QStringList{u"02/03: 64,750"_s, u"03/03: 93,625"_s}));
    station.enter(u"EdtCodCli"_s, u"00002"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.drawn(u"GraficoMaquinas"_s), QStringList{u"001: 25,000 24,375"_s});
    QCOMPARE(station.drawn(u"GraficoDias"_s), (QStringList{u"02/03: 25,000"_s, u"03/03: 24,375"_s}));
}

void TestRelProdValues::theSpreadsheetBearsTheFiguresOfTheGrid()
{
    ProducedStation station;
    station.insertProduction();
    station.insertPrices();
    station.openMarch();
    station.enter(u"EdtCodTab"_s, u"01"_s);
    station.click(u"CheckBox1"_s);
    station.click(u"BtnExecutaSQL"_s);
    const ExportedGrid sheet(station);
    QCOMPARE(sheet.rowCount(), 3);
    QCOMPARE(sheet.column(u"1º Turno"_s), (QStringList{u"41.625"_s, u"30.125"_s, u"25"_s}));
    QCOMPARE(sheet.column(u"2º Turno"_s), (QStringList{u"19.25"_s, {}, {}}));
    QCOMPARE(sheet.column(u"3º Turno"_s), (QStringList{{}, {}, u"24.375"_s}));
    QCOMPARE(sheet.column(u"4º Turno"_s), (QStringList{u"18"_s, {}, {}}));
    QCOMPARE(sheet.column(u"Total"_s), (QStringList{u"78.875"_s, u"30.125"_s, u"49.375"_s}));
    QCOMPARE(sheet.column(u"Valor 1º"_s), (QStringList{u"83.25"_s, u"60.25"_s, {}}));
    QCOMPARE(sheet.column(u"Valor"_s), (QStringList{u"157.75"_s, u"60.25"_s, {}}));
}

void TestRelProdValues::eachGroupingHasItsLayout_data()
{
    QTest::addColumn<QString>("choice");
    QTest::addColumn<bool>("values");
    QTest::addColumn<QString>("layout");
    QTest::newRow("material") << u"rbMaterial"_s << false << u"WMalProdR"_s;
    QTest::newRow("machine") << u"rbMaquina"_s << false << u"WMalProd"_s;
    QTest::newRow("date") << u"rbDataBaixa"_s << false << u"WMalProdD"_s;
    QTest::newRow("client and machine") << u"rbClienteMaquina"_s << false << u"WMalProdD"_s;
    QTest::newRow("material with values") << u"rbMaterial"_s << true << u"WMalProdT"_s;
    QTest::newRow("date with values") << u"rbDataBaixa"_s << true << u"WMalProdT"_s;
}

void TestRelProdValues::eachGroupingHasItsLayout()
{
    QFETCH(const QString, choice);
    QFETCH(const bool, values);
    ProducedStation station;
    station.insertProduction();
    station.openMarch();
    station.click(u"BtnExecutaSQL"_s);
    station.click(choice);
    if (values)
        station.click(u"CheckBox1"_s);
    const RecordedReport report = station.print();
    QTEST(report.name, "layout");
    QCOMPARE(report.kind, ReportCall::Kind::Graphic);
    QCOMPARE(report.dataSets, QStringList{u"tbProducao"_s});
    QCOMPARE(report.rowCounts, QList<int>{choice == u"rbDataBaixa"_s ? 5 : 3});
}

QTEST_MAIN(TestRelProdValues)
#include "tst_relprodvalues.moc"
