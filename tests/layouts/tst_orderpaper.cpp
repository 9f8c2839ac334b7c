// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/production/orderstation.h"
#include "tests/production/writeoffstation.h"
#include "tests/reports/figures.h"
#include "tests/support/paper.h"

using namespace Qt::StringLiterals;

namespace {

void reserve(TestDatabase &database, const QString &order, const QString &yarn, const QString &lot, double kg)
{
    database.run(
        u"INSERT INTO {BAIXA_FIO} (NUMERO, DOCTO, CODIGO, LOTE, QTDE) VALUES ('%1', '1001', '%2', '%3', %4)"_s.arg(
            order, yarn, lot, SqlText::number(kg)));
}

class SheetStation : public ReportStation
{
public:
    SheetStation()
        : ReportStation(u"TfmRelOrdFab"_s)
        , paper(host)
    {
    }

    /// The sheets of one order, or of all of them.
    void printSheets(const QString &number = {})
    {
        openReport();
        enter(u"edtNumero"_s, number);
        print();
    }
    /// The same on characters, without what the printer is told: the lines, and those that are printed condensed.
    QStringList printLines(const QString &number, QStringList *condensed)
    {
        openReport();
        click(u"rbMatricial"_s);
        enter(u"edtNumero"_s, number);
        print();
        QStringList lines;
        for (QByteArray line : paper.bytes().split('\n')) {
            const bool narrow = line.contains('\x0f');
            line.replace("\x1b@", "")
                .replace("\x1b"
                         "E",
                    "")
                .replace("\x1b"
                         "F",
                    "")
                .replace("\r", "");
            line.replace("\x0f", "").replace("\x12", "").replace("\f", "");
            (narrow ? *condensed : lines).append(QString::fromLatin1(line));
        }
        return lines;
    }

    Paper paper;
};

} // namespace

/// The sheets of orders: what goes up at the machine, on both kinds of printers, and the order screen's own.
class TestOrderPaper : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void theSheetShowsOrderCompositionAndLots();
    void gridsAndSpreadsheetsBearTheFiguresOfTheSheet();
    void theSheetHasALineForEveryRollAndThreeMore();
    void theStationReadsTheBarcodeOfTheSheet();
    void anOrderWithoutLotsOrCompositionSaysSo();
    void eachOrderBeginsAPage();
    void aLongSheetRepeatsOrderAndTitles();
    void aFabricInSeveralColoursShowsItsYarnOnce();
    void theMatrixSheetKeepsToItsColumns();
    void theMatrixSheetSaysWhenTheObservationGoesOn();
    void theMatrixSheetShowsTheSameOrder();
    void theOrderScreenPrintsCompositionAndSlips();
    void slipsGoOnOverPages();
    void anOrderWithoutMachineAndCompositionIsPrinted();
};

void TestOrderPaper::theSheetShowsOrderCompositionAndLots()
{
    SheetStation station;
    Orders::insert(station.database, {.rollKg = 25, .totalKg = 1250.5, .observation = u"Cuidado com o barramento"_s});
    reserve(station.database, u"000012"_s, u"FIO30CO"_s, u"LX-4711"_s, 750.3);
    reserve(station.database, u"000012"_s, u"FIO150PES"_s, u"P-88"_s, 500.25);
    reserve(station.database, u"000099"_s, u"FIO150PES"_s, u"OUTRA"_s, 7);
    station.printSheets(u"000012"_s);
    const QString text = station.paper.flatText();
    for (const QString &shown :
        {u"Malharia Serra Azul"_s, u"Ordem de fabricação"_s, u"000012"_s, u"Máquina 001 Circular 30\" 28 agulhas"_s,
            u"Serra Azul 1"_s, u"00001 Confecções Serra Azul Ltda"_s, u"M0001 Meia-malha PV 60/40"_s, u"02/03/2026"_s,
            u"1.250,50 kg"_s, u"25,00 kg"_s, u"Cuidado com o barramento"_s,
            u"FIO30CO Fio algodão 30/1 penteado 30/1 290 48"_s, u"FIO150PES Fio poliéster 150/48 150/48 290 48"_s,
            u"FIO30CO Fio algodão 30/1 penteado 1001 LX-4711 750,300 kg"_s,
            u"FIO150PES Fio poliéster 150/48 1001 P-88 500,250 kg"_s, u"2 lotes Total reservado 1.250,550 kg"_s})
        QVERIFY2(text.contains(shown), qUtf8Printable(shown + u'\n' + text));
    QVERIFY(!text.contains(u"OUTRA"_s));
    QCOMPARE(station.paper.barcodes(), QStringList(u"CODE-128:000012"_s));
}

void TestOrderPaper::gridsAndSpreadsheetsBearTheFiguresOfTheSheet()
{
    SheetStation station;
    Orders::insert(station.database, {.rollKg = 25.125, .totalKg = 1250.5});
    reserve(station.database, u"000012"_s, u"FIO30CO"_s, u"L1"_s, 750.3);
    reserve(station.database, u"000012"_s, u"FIO150PES"_s, u"L2"_s, 500.25);
    station.printSheets(u"000012"_s);
    const QStringList weights{u"1.250,50 kg"_s, u"25,125 kg"_s, u"Total reservado 1.250,550 kg"_s};
    QCOMPARE(firstMissing(station.paper.flatText(), weights), QString());
    station.click(u"rbMatricial"_s);
    station.print();
    QCOMPARE(firstMissing(station.paper.flatText(), weights), QString());
    QCOMPARE(station.column(u"KG_TOTAL"_s, u"gdOrdens"_s), QStringList{u"1.250,500"_s});
    QCOMPARE(station.column(u"QTDE"_s, u"gdFios"_s), (QStringList{u"500,250"_s, u"750,300"_s}));
    const ExportedGrid orders(station, u"gdOrdens"_s);
    QCOMPARE(orders.column(u"OF"_s), QStringList{u"000012"_s});
    QCOMPARE(orders.column(u"KG Rolo"_s), QStringList{u"25.125"_s});
    QCOMPARE(orders.column(u"KG Total"_s), QStringList{u"1250.5"_s});
    const ExportedGrid composition(station, u"gdComposicao"_s);
    QCOMPARE(composition.column(u"Cód. Fio"_s), (QStringList{u"FIO150PES"_s, u"FIO30CO"_s}));
    QCOMPARE(composition.column(u"LFA"_s), (QStringList{u"290"_s, u"290"_s}));
    const ExportedGrid lots(station, u"gdFios"_s);
    QCOMPARE(lots.column(u"Lote"_s), (QStringList{u"L2"_s, u"L1"_s}));
    QCOMPARE(lots.column(u"Quantidade"_s), (QStringList{u"500.25"_s, u"750.3"_s}));
}

void TestOrderPaper::theSheetHasALineForEveryRollAndThreeMore()
{
    SheetStation station;
    Orders::insert(station.database, {.rollKg = 25, .totalKg = 100});
    station.openReport();
    const RecordedReport report = station.print();
    QCOMPARE(report.rowCounts.last(), 7);
    const QString text = station.paper.flatText();
    QVERIFY2(text.contains(u"001\n"_s) && text.contains(u"004\n"_s) && !text.contains(u"005\n"_s), qPrintable(text));
    QVERIFY2(text.contains(
                 u"Rolo Furo tecido Furo fio Corte Fio corrido Pé de galinha Total def. Peso (kg) Data Observação"_s),
        qPrintable(text));
    QVERIFY2(text.contains(u"4 rolos previstos"_s), qPrintable(text));
    QCOMPARE(station.paper.pages(), 1);
}

void TestOrderPaper::theStationReadsTheBarcodeOfTheSheet()
{
    WriteOffStation station(Engines::current());
    const Paper paper(station.host);
    station.open(u"TfmRelOrdFab"_s);
    station.enter(u"edtNumero"_s, u"000012"_s);
    station.click(u"BtnImprimir"_s);
    const QStringList codes = paper.barcodes();
    QCOMPARE(codes.size(), 1);
    station.closeForm();
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    station.enter(u"edtOF"_s, codes[0].section(u':', 1));
    QCOMPARE(station.text(u"edtOF"_s), u"000012"_s);
    QCOMPARE(station.text(u"EdtSaldo"_s), u"100,00"_s);
}

void TestOrderPaper::anOrderWithoutLotsOrCompositionSaysSo()
{
    SheetStation station;
    station.database.run(u"INSERT INTO {MATERIAL} (CODIGO, DESCRICAO, GRUPO) VALUES ('M0009', 'Malha nova', '150')"_s);
    Orders::insert(station.database, {.material = u"M0009"_s});
    station.printSheets(u"000012"_s);
    const QString text = station.paper.flatText();
    QVERIFY2(text.contains(u"M0009 Malha nova"_s), qPrintable(text));
    QVERIFY2(text.contains(u"A malha não tem composição cadastrada."_s), qPrintable(text));
    QVERIFY2(text.contains(u"Nenhum lote reservado."_s), qPrintable(text));
}

void TestOrderPaper::eachOrderBeginsAPage()
{
    SheetStation station;
    Orders::insert(station.database, {.number = u"000012"_s, .rollKg = 25, .totalKg = 100});
    Orders::insert(station.database, {.number = u"000013"_s, .material = u"M0002"_s, .rollKg = 25, .totalKg = 50});
    reserve(station.database, u"000012"_s, u"FIO30CO"_s, u"LX-4711"_s, 60);
    station.printSheets();
    QCOMPARE(station.paper.pages(), 2);
    QCOMPARE(station.paper.barcodes(1), QStringList(u"CODE-128:000012"_s));
    QCOMPARE(station.paper.barcodes(2), QStringList(u"CODE-128:000013"_s));
    const QString second = station.paper.flatText(2);
    QVERIFY2(second.contains(u"M0002 Ribana 2x1"_s) && !second.contains(u"000012"_s), qPrintable(second));
    QVERIFY2(second.contains(u"2 rolos previstos"_s) && second.contains(u"310 60"_s), qPrintable(second));
    // Lots are read by the order's number alone; that they are not here does not mean that there are none.
    QVERIFY2(second.contains(u"Os lotes saem na folha impressa pelo número da OF."_s), qPrintable(second));
    QVERIFY(!station.paper.text().contains(u"Nenhum lote"_s));
}

void TestOrderPaper::aLongSheetRepeatsOrderAndTitles()
{
    SheetStation station;
    Orders::insert(station.database, {.rollKg = 1, .totalKg = 100});
    station.printSheets(u"000012"_s);
    // 24 lines stand beneath the order, 31 on each page that follows; there are 103.
    QCOMPARE(station.paper.pages(), 4);
    for (int page = 1; page <= 4; ++page) {
        const QString text = station.paper.flatText(page);
        QVERIFY2(text.contains(u"Página %1 de 4"_s.arg(page)), qPrintable(text));
        QVERIFY2(text.contains(u"Rolo Furo tecido Furo fio Corte"_s), qPrintable(text));
        QVERIFY2(text.contains(u"000012"_s), qPrintable(text));
        QCOMPARE(text.contains(u"Composição"_s), page == 1);
        QCOMPARE(text.contains(u"100 rolos previstos"_s), page == 4);
    }
    QVERIFY(station.paper.flatText(4).contains(u"100\n"_s));
    QCOMPARE(station.paper.barcodes(4), QStringList(u"CODE-128:000012"_s));
}

void TestOrderPaper::aFabricInSeveralColoursShowsItsYarnOnce()
{
    SheetStation station;
    Orders::insert(station.database, {});
    const auto addColour = [&](const QString &colour, int lfa) {
        station.database.run(u"INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, ORDEM, PERC, ROCA, LFA) "
                             "VALUES ('M0001', '%1', 'FIO30CO', '%1', 1, 60, 48, %2)"_s.arg(colour)
                                 .arg(lfa));
    };
    addColour(u"000002"_s, 290);
    station.printSheets(u"000012"_s);
    QCOMPARE(station.paper.text().count(u"FIO30CO"_s), 1);
    // Another yarn length is another line, and the colours after it add none.
    addColour(u"000003"_s, 310);
    addColour(u"000004"_s, 290);
    addColour(u"000005"_s, 310);
    station.click(u"BtnExecutaSQL"_s);
    station.print();
    QCOMPARE(station.paper.text().count(u"FIO30CO"_s), 2);
}

void TestOrderPaper::theMatrixSheetKeepsToItsColumns()
{
    SheetStation station;
    Orders::insert(station.database, {.totalKg = 10000, .observation = QString(250, u'x')});
    station.database.run(u"UPDATE {ENTIDADE} SET NOME = '%1' WHERE CODCLI = '00001'"_s.arg(QString(60, u'N')));
    reserve(station.database, u"000012"_s, u"FIO30CO"_s, u"ABCDEFGHIJKLMNO"_s, 12345.678);
    QStringList condensed;
    const QStringList lines = station.printLines(u"000012"_s, &condensed);
    for (const QString &line : lines)
        QVERIFY2(line.size() <= 80, qPrintable(line));
    for (const QString &line : condensed)
        QVERIFY2(line.size() == 136, qPrintable(line));
    const QString all = lines.join(u'\n');
    QCOMPARE(all.count(u'x'), 250); // the whole observation
    QVERIFY2(all.contains(u"12.345,678 kg"_s), qPrintable(all));
    QVERIFY(!all.contains(u"continua"_s));
}

void TestOrderPaper::theMatrixSheetSaysWhenTheObservationGoesOn()
{
    SheetStation station;
    Orders::insert(station.database, {.observation = QString(277, u'x')});
    QStringList condensed;
    const QString all = station.printLines(u"000012"_s, &condensed).join(u'\n');
    QCOMPARE(all.count(u'x'), 276);
    QVERIFY2(all.contains(u"continua na tela da OF."_s), qPrintable(all));
}

void TestOrderPaper::theMatrixSheetShowsTheSameOrder()
{
    SheetStation station;
    Orders::insert(station.database, {.rollKg = 25, .totalKg = 100});
    Orders::insert(station.database, {.number = u"000013"_s});
    reserve(station.database, u"000012"_s, u"FIO30CO"_s, u"LX-4711"_s, 60.5);
    QStringList condensed;
    station.printLines(u"000012"_s, &condensed);
    const QString text = station.paper.flatText();
    for (const QString &shown : {u"ORDEM DE FABRICAÇÃO OF 000012"_s, u"00001 Confecções Serra Azul Ltda"_s,
             u"M0001 Meia-malha PV 60/40"_s, u"FIO30CO Fio algodão 30/1 penteado 30/1 290 48"_s,
             u"FIO30CO Fio algodão 30/1 penteado 1001 LX-4711 60,500 kg"_s, u"Total reservado 60,500 kg"_s,
             u"4 rolos previstos"_s, u"Folha 1 de 1"_s})
        QVERIFY2(text.contains(shown), qUtf8Printable(shown + u'\n' + text));
    QCOMPARE(condensed.filter(u"|001 |"_s).size(), 1);
    QCOMPARE(condensed.filter(u"|004 |"_s).size(), 1);
    QCOMPARE(condensed.filter(u"|    |___"_s).size(), 3);
    QVERIFY(!text.contains(u"000013"_s));
    // As the printer of the mill has its letters.
    QVERIFY(station.paper.bytes().contains("COMPOSI\x80\xc7O"));
}

void TestOrderPaper::theOrderScreenPrintsCompositionAndSlips()
{
    OrderStation station;
    const Paper paper(station.host);
    station.insertOrder({.rollKg = 25, .totalKg = 100, .observation = u"Urgente"_s});
    station.database.run(u"INSERT INTO {MAT_OBS} (CODIGO, OBSERVACAO) VALUES ('M0001', 'Ponto fechado')"_s);
    station.openOrders();
    station.click(u"BtnImprimir"_s);
    const QString text = paper.flatText();
    for (const QString &shown :
        {u"Ordem de fabricação"_s, u"Máquina 001 Circular 30\" 28 agulhas"_s, u"00001 Confecções Serra Azul Ltda"_s,
            u"M0001 Meia-malha PV 60/40"_s, u"100,00 kg"_s, u"25,00 kg"_s, u"01 Tecer"_s, u"1,20 m"_s, u"165 g/m²"_s,
            u"Urgente"_s, u"Ponto fechado"_s, u"FIO30CO Fio algodão 30/1 penteado 30/1 48 48 290 2,9 60,00"_s,
            u"FIO150PES Fio poliéster 150/48 150/48 48 48 290 2,9 40,00"_s, u"Fichas dos rolos da OF 000012"_s})
        QVERIFY2(text.contains(shown), qUtf8Printable(shown + u'\n' + text));
    QCOMPARE(paper.pages(), 1);
    QCOMPARE(paper.barcodes(), QStringList(u"CODE-128:000012"_s));
    // The head, four rolls and three that are spare.
    QCOMPARE(text.count(u"Peso (kg)"_s), 7);
    for (const QString &roll : {u"001"_s, u"002"_s, u"003"_s, u"004"_s})
        QVERIFY2(text.contains(u"000012 "_s + roll), qPrintable(text));
}

void TestOrderPaper::slipsGoOnOverPages()
{
    OrderStation station;
    const Paper paper(station.host);
    station.insertOrder({.rollKg = 3, .totalKg = 100});
    station.openOrders();
    station.click(u"BtnImprimir"_s);
    QCOMPARE(paper.pages(), 3);
    int slips = 0;
    for (int page = 1; page <= 3; ++page) {
        const QString text = paper.flatText(page);
        QVERIFY2(text.contains(u"Fichas dos rolos da OF 000012"_s), qPrintable(text));
        QVERIFY2(text.contains(u"Página %1 de 3"_s.arg(page)), qPrintable(text));
        slips += int(text.count(u"Peso (kg)"_s));
    }
    QCOMPARE(paper.barcodes(2), QStringList(u"CODE-128:000012"_s));
    QCOMPARE(slips, 36); // 33 whole rolls and three that are spare
}

void TestOrderPaper::anOrderWithoutMachineAndCompositionIsPrinted()
{
    OrderStation station;
    const Paper paper(station.host);
    station.database.run(u"INSERT INTO {MATERIAL} (CODIGO, DESCRICAO, GRUPO) VALUES ('M0009', 'Malha nova', '150')"_s);
    station.insertOrder({.material = u"M0009"_s, .machine = {}, .flow = {}});
    station.openOrders();
    station.click(u"BtnImprimir"_s);
    const QString text = paper.flatText();
    QVERIFY2(text.contains(u"Sem máquina"_s), qPrintable(text));
    QVERIFY2(text.contains(u"A malha não tem composição com cor ativa."_s), qPrintable(text));
    QCOMPARE(text.count(u"Peso (kg)"_s), 8);
}

QTEST_MAIN(TestOrderPaper)
#include "tst_orderpaper.moc"
