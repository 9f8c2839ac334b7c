// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/reports/figures.h"
#include "tests/reports/stockstation.h"
#include "tests/support/paper.h"

using namespace Qt::StringLiterals;

namespace {

class StockPaperStation : public StockStation
{
public:
    StockPaperStation()
        : paper(host)
    {
    }

    Paper paper;
};

} // namespace

/// The paper of the stock by client, and the same figures in grid and spreadsheet.
class TestStockPaper : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void gridPaperAndSpreadsheetBearTheSameYarn();
    void gridPaperAndSpreadsheetBearTheSameFabric();
    void fabricsAndAllHaveTheirTotals();
    void thePictureIsPrintedWhenWished();
    void titlesAndPageTotalsStandOnEachPage();
    void anEmptyListSaysSo();
};

void TestStockPaper::gridPaperAndSpreadsheetBearTheSameYarn()
{
    StockPaperStation station;
    station.insertMill();
    station.openFor(u"00001"_s);
    station.click(u"ckbZerados"_s);
    station.click(u"BtnExecutaSQL"_s);
    const QStringList figures{u"CODIGO"_s, u"CONTABIL"_s, u"FISICO"_s, u"SAIDAS"_s, u"QTDE_RESERVADA"_s, u"UNITARIO"_s};
    QCOMPARE(shown(station, figures),
        (QStringList{
            u"FIO150PES|300,000|252,000||80,000|10,0000"_s, u"FIO30CO|705,250|633,250|45,250|150,000|22,0000"_s}));
    const ExportedGrid sheet(station);
    QCOMPARE(sheet.column(u"Código"_s), (QStringList{u"FIO150PES"_s, u"FIO30CO"_s}));
    QCOMPARE(sheet.column(u"Contábil"_s), (QStringList{u"300"_s, u"705.25"_s}));
    QCOMPARE(sheet.column(u"Físico"_s), (QStringList{u"252"_s, u"633.25"_s}));
    QCOMPARE(sheet.column(u"Saídas"_s), (QStringList{QString(), u"45.25"_s}));
    QCOMPARE(sheet.column(u"Reservado"_s), (QStringList{u"80"_s, u"150"_s}));
    QCOMPARE(sheet.column(u"Unitário"_s), (QStringList{u"10"_s, u"22"_s}));
    station.print();
    // Of the book stock, 48 and 72 kg lie in fabric.
    QCOMPARE(firstMissing(station.paper.flatText(),
                 {u"Estoque por cliente"_s, u"Cliente: 00001 Confecções Serra Azul Ltda"_s,
                     u"FIO150PES Fio poliéster 150/48 KG 1 300,000 48,000 252,000 80,000 10,0000"_s,
                     u"FIO30CO Fio algodão 30/1 penteado KG 1 705,250 72,000 633,250 45,250 150,000 22,0000"_s}),
        QString());
}

void TestStockPaper::gridPaperAndSpreadsheetBearTheSameFabric()
{
    StockPaperStation station;
    station.insertMill();
    station.openFor(u"00001"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.column(u"QTDE"_s, u"DBGrid2"_s), (QStringList{u"100,000"_s, u"20,000"_s}));
    QCOMPARE(station.column(u"UNITARIO"_s, u"DBGrid2"_s), (QStringList{u"29,9500"_s, u"29,9500"_s}));
    const ExportedGrid sheet(station, u"DBGrid2"_s);
    QCOMPARE(sheet.column(u"OF"_s), (QStringList{u"000012"_s, u"000013"_s}));
    QCOMPARE(sheet.column(u"Quantidade"_s), (QStringList{u"100"_s, u"20"_s}));
    QCOMPARE(sheet.column(u"Unitário"_s), (QStringList{u"29.95"_s, u"29.95"_s}));
    station.print();
    QCOMPARE(firstMissing(station.paper.flatText(),
                 {u"M0001 Meia-malha PV 60/40 KG 1 000012 02/03/2026 A1 00001 100,000 29,9500"_s,
                     u"M0001 Meia-malha PV 60/40 KG 1 000013 02/03/2026 00001 20,000 29,9500"_s}),
        QString());
}

void TestStockPaper::fabricsAndAllHaveTheirTotals()
{
    StockPaperStation station;
    station.insertMill();
    station.setOwnedMaterials(false);
    station.openFor(u"00001"_s);
    station.print();
    const QString text = station.paper.flatText();
    for (const QString &line :
        {u"Fios zerados: incluídos · Malhas: de todos os clientes"_s, u"FIOPARADO Fio parado 1 0,000 0,000 0,000"_s,
            u"4 fios Total dos fios 1.005,250 120,000 885,250 45,250 230,000"_s, u"Total de M0001 em 2 OFs 120,000"_s,
            u"3 OFs Total das malhas 127,500"_s, u"Fios nesta página 1.005,250 120,000 885,250 45,250 230,000"_s,
            u"Página 1 de 1"_s})
        QVERIFY2(text.contains(line), qPrintable(line + u" in "_s + text));
    QVERIFY2(!text.contains(u"Total de M0002"_s), qPrintable(text)); // one order needs no sum
}

void TestStockPaper::thePictureIsPrintedWhenWished()
{
    StockPaperStation station;
    station.insertMill();
    station.openFor(u"00001"_s);
    station.print();
    const auto pictures = [&] {
        QProcess list;
        list.start(u"pdfimages"_s, {u"-list"_s, station.paper.file()});
        list.waitForFinished();
        return list.readAllStandardOutput().count('\n') - 2; // beneath two lines of titles
    };
    QCOMPARE(pictures(), 0);
    station.click(u"ckGrafico"_s);
    station.print();
    QCOMPARE(pictures(), 1);
    QCOMPARE(station.paper.pages(), 1);
    // Without any yarn there is nothing to draw.
    station.enter(u"EdtCodCli"_s, QString());
    station.click(u"BtnExecutaSQL"_s);
    station.print();
    QCOMPARE(pictures(), 0);
}

void TestStockPaper::titlesAndPageTotalsStandOnEachPage()
{
    StockPaperStation station;
    station.setOwnedMaterials(true);
    for (int yarn = 1; yarn <= 60; ++yarn) {
        const QString code = u"F%1"_s.arg(yarn, 3, 10, QChar(u'0'));
        station.insertYarn(code, u"Fio "_s + code);
        Invoices::insert(station.database, u"00001"_s + code.last(2), u"00001"_s, {{.material = code, .quantity = 10}});
    }
    for (int order = 1; order <= 40; ++order)
        station.insertFabric(u"0000%1"_s.arg(order, 2, 10, QChar(u'0')), 1.5);
    station.openFor(u"00001"_s);
    station.print();
    const int pages = station.paper.pages();
    QVERIFY(pages > 2);
    int yarns = 0;
    int orders = 0;
    for (int page = 1; page <= pages; ++page) {
        const QString text = station.paper.flatText(page);
        const int here = int(text.count(u"Fio F"_s));
        yarns += here;
        orders += int(text.count(u" 1,500"_s));
        QVERIFY2(text.contains(u"Página %1 de %2"_s.arg(page).arg(pages)), qPrintable(text));
        QCOMPARE(text.contains(u"Código Fio Un. Emp. Contábil (kg)"_s), here > 0 || text.contains(u"Total dos fios"_s));
        QCOMPARE(
            text.contains(u"Código Malha Un. Emp. OF Data Lote Cliente Quantidade (kg)"_s), text.contains(u" 1,500"_s));
        QCOMPARE(text.contains(u"Fios nesta página"_s), here > 0);
        if (here > 0)
            QVERIFY2(text.contains(u"Fios nesta página %1,000 0,000 %1,000"_s.arg(here * 10)), qPrintable(text));
    }
    QCOMPARE(yarns, 60);
    QCOMPARE(orders, 40);
    const QString text = station.paper.flatText();
    QVERIFY2(text.contains(u"60 fios Total dos fios 600,000 0,000 600,000"_s), qPrintable(text));
    QVERIFY2(text.contains(u"Total de M0001 em 40 OFs 60,000"_s), qPrintable(text));
}

void TestStockPaper::anEmptyListSaysSo()
{
    StockPaperStation station;
    station.insertMill();
    station.openFor(u"00002"_s);
    station.database.run(u"DELETE FROM {PA_MALHA}"_s);
    station.print();
    QVERIFY2(station.paper.flatText().contains(u"Nenhuma malha a faturar."_s), qPrintable(station.paper.text()));
    station.insertFabric(u"000020"_s, 5);
    station.enter(u"EdtCodCli"_s, u"00003"_s);
    station.setOwnedMaterials(false);
    station.click(u"BtnExecutaSQL"_s);
    station.print();
    QVERIFY2(station.paper.flatText().contains(u"Nenhum fio do cliente."_s), qPrintable(station.paper.text()));
}

QTEST_MAIN(TestStockPaper)
#include "tst_stockpaper.moc"
