// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/reports/inboundstation.h"
#include "tests/support/paper.h"

using namespace Qt::StringLiterals;

/// The report of the clients' inbound invoices: orders, sums, paper and sheet.
class TestRelDoctoPaper : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void rowsStandByClientDateAndInvoice();
    void rowsStandByClientMaterialAndInvoice();
    void aLotStaysTogetherInBothOrders_data();
    void aLotStaysTogetherInBothOrders();
    void whatCameInCountsOncePerLot();
    void gridPaperAndSheetShowTheSameFigures();
    void thePaperAddsUpInvoicesAndClients();
    void thePaperAddsUpMaterialsInTheOtherOrder();
    void withoutOutputsEachLotIsALine();
    void theOrderOfThePaperIsThatOfItsRows();
    void clientsThatShareACodeHaveTheirOwnTitles();
    void longNamesAreNotCut();
    void pagesAddUpToTheWhole();
};

void TestRelDoctoPaper::rowsStandByClientDateAndInvoice()
{
    InboundStation station;
    station.insertInvoices();
    station.receive({.number = u"0000900"_s, .date = u"03/10/2026"_s}, {{}}); // a lower number that came later
    station.openReport();
    QCOMPARE(station.found(),
        (QStringList{u"0001001|FIO150PES|L1|"_s, u"0001001|FIO30CO|L1|S000001"_s, u"0001001|FIO30CO|L1|S000002"_s,
            u"0001002|FIO150PES|L3|"_s, u"0001002|FIO30CO|L2|"_s, u"0000900|FIO30CO|L1|"_s,
            u"0001003|FIO150PES|L9|S000006"_s}));
    QCOMPARE(station.grid()->dataSet()->row(), 0);
}

void TestRelDoctoPaper::rowsStandByClientMaterialAndInvoice()
{
    InboundStation station;
    station.insertInvoices();
    station.openReport();
    station.click(u"rbMaterial"_s);
    QCOMPARE(station.found(),
        (QStringList{u"0001001|FIO150PES|L1|"_s, u"0001002|FIO150PES|L3|"_s, u"0001001|FIO30CO|L1|S000001"_s,
            u"0001001|FIO30CO|L1|S000002"_s, u"0001002|FIO30CO|L2|"_s, u"0001003|FIO150PES|L9|S000006"_s}));
}

void TestRelDoctoPaper::aLotStaysTogetherInBothOrders_data()
{
    QTest::addColumn<QString>("order");
    QTest::newRow("by invoice") << u"rbNotas"_s;
    QTest::newRow("by material") << u"rbMaterial"_s;
}

void TestRelDoctoPaper::aLotStaysTogetherInBothOrders()
{
    QFETCH(QString, order);
    InboundStation station;
    station.receive({.number = u"0001001"_s}, {{.lot = u"A"_s, .physical = 9}, {.lot = u"B"_s, .physical = 3}});
    station.send({.number = u"S000001"_s}, {{.order = 2, .lot = u"A"_s}, {.order = 1, .lot = u"A"_s}});
    station.send({.number = u"S000002"_s}, {{.lot = u"B"_s}});
    station.send({.number = u"S000003"_s}, {{.lot = u"A"_s}});
    station.openReport();
    station.click(order);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(shown(station, {u"LOTE"_s, u"FATURA"_s, u"ORDEM"_s, u"ENTRADA"_s}),
        (QStringList{u"A|S000001|1|9,000"_s, u"A|S000001|2|"_s, u"A|S000003|1|"_s, u"B|S000002|1|3,000"_s}));
}

void TestRelDoctoPaper::whatCameInCountsOncePerLot()
{
    InboundStation station;
    station.insertInvoices();
    station.openReport();
    QCOMPARE(station.consult(u"ENTRADA"_s),
        (QStringList{u"50,125"_s, u"100,000"_s, QString(), u"5,000"_s, u"30,000"_s, u"75,500"_s}));
    QCOMPARE(station.column(u"VALOR_ENTRADA"_s),
        (QStringList{u"626,56"_s, u"2.000,00"_s, QString(), u"60,00"_s, u"600,00"_s, u"755,00"_s}));
    // The columns of the lot tell it on each row.
    QCOMPARE(station.column(u"QTDE_ENTRADA"_s),
        (QStringList{u"50,125"_s, u"100,000"_s, u"100,000"_s, u"5,000"_s, u"30,000"_s, u"75,500"_s}));
}

void TestRelDoctoPaper::gridPaperAndSheetShowTheSameFigures()
{
    InboundStation station;
    station.insertInvoices();
    station.openReport();
    Paper paper(station.host);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(shown(station, {u"FATURA"_s, u"QTDE"_s, u"VALOR_NF"_s, u"DEVOLVIDA"_s}),
        (QStringList{u"|||N"_s, u"S000001|40,13|802,50|N"_s, u"S000002|10,00|200,00|S"_s, u"|||N"_s, u"|||N"_s,
            u"S000006|20,00|200,00|N"_s}));
    QCOMPARE(station.print().name, u"WMalNF1"_s);
    QCOMPARE(
        firstMissing(paper.flatText(),
            {u"FIO150PES Fio poliéster 150/48 L1 50,125 12,50 626,56\n"_s,
                u"FIO30CO Fio algodão 30/1 penteado L1 100,000 20,00 2.000,00 S000001 08/03/2026 1 40,13 802,50\n"_s,
                u" S000002 09/03/2026 1 10,00 200,00 sim\n"_s,
                u"FIO150PES Fio poliéster 150/48 L3 5,000 12,00 60,00\n"_s,
                u"FIO30CO Fio algodão 30/1 penteado L2 30,000 20,00 600,00\n"_s,
                u"L9 Cataguases 75,500 10,00 755,00 S000006 09/03/2026 1 20,00 200,00\n"_s}),
        QString());
    const ExportedGrid sheet(station);
    QCOMPARE(
        sheet.column(u"Kg Entrada"_s), (QStringList{u"50.125"_s, u"100"_s, QString(), u"5"_s, u"30"_s, u"75.5"_s}));
    QCOMPARE(sheet.column(u"Kg Saída"_s), (QStringList{QString(), u"40.13"_s, u"10"_s, QString(), QString(), u"20"_s}));
    QCOMPARE(sheet.column(u"Valor Entrada"_s),
        (QStringList{u"626.56"_s, u"2000"_s, QString(), u"60"_s, u"600"_s, u"755"_s}));
    QCOMPARE(
        sheet.column(u"Valor Saída"_s), (QStringList{QString(), u"802.5"_s, u"200"_s, QString(), QString(), u"200"_s}));
}

void TestRelDoctoPaper::thePaperAddsUpInvoicesAndClients()
{
    InboundStation station;
    station.insertInvoices();
    station.openReport();
    Paper paper(station.host);
    QCOMPARE(station.print().dataSets, QStringList{u"tbRelatorio"_s});
    const QString text = paper.flatText();
    QVERIFY2(text.contains(u"Período de entrada: 10/02/2026 a 10/03/2026 · Saídas até: 10/03/2026 · Situação: Total"_s),
        qPrintable(text));
    QCOMPARE(
        firstMissing(text,
            {u"Cliente 00001 Confecções Serra Azul Ltda"_s, u"Nota 0001001 de 02/03/2026 Entrega parcial"_s,
                u"Total da nota 2 lotes 150,125 2.626,56 50,13 1.002,50"_s, u"Nota 0001002 de 05/03/2026"_s,
                u"Total da nota 2 lotes 35,000 660,00 0,00 0,00"_s,
                u"Total do cliente 4 lotes 185,125 3.286,56 50,13 1.002,50"_s, u"das quais devolvidas 10,00 200,00"_s,
                u"Cliente 00002 Malhas São Bento S.A."_s, u"Nota 0001003 de 06/03/2026 Frete pago"_s,
                u"Total do cliente 1 lote 75,500 755,00 20,00 200,00"_s,
                u"Total geral 5 lotes 260,625 4.041,56 70,13 1.202,50"_s, u"das quais devolvidas 10,00 200,00"_s,
                u"Nesta página 5 lotes 260,625 4.041,56 70,13 1.202,50"_s, u"Página 1 de 1"_s}),
        QString());
    QCOMPARE(text.count(u"das quais"_s), 2); // not where nothing came back
    QVERIFY(!text.contains(u"Material FIO"_s));
}

void TestRelDoctoPaper::thePaperAddsUpMaterialsInTheOtherOrder()
{
    InboundStation station;
    station.insertInvoices();
    station.openReport();
    station.click(u"rbMaterial"_s);
    Paper paper(station.host);
    station.print();
    QCOMPARE(
        firstMissing(paper.flatText(),
            {u"Cliente 00001"_s, u"Material FIO150PES Fio poliéster 150/48"_s, u"Nota 0001001 de 02/03/2026"_s,
                u"Nota 0001002 de 05/03/2026"_s, u"Total do material 2 lotes 55,125 686,56 0,00 0,00"_s,
                u"Material FIO30CO Fio algodão 30/1 penteado"_s, u"Nota 0001001"_s, u"S000001"_s, u"S000002"_s,
                u"Nota 0001002"_s, u"Total do material 2 lotes 130,000 2.600,00 50,13 1.002,50"_s,
                u"Total do cliente 4 lotes 185,125"_s, u"Cliente 00002"_s,
                u"Total do material 1 lote 75,500 755,00 20,00 200,00"_s, u"Total geral 5 lotes 260,625 4.041,56"_s}),
        QString());
}

void TestRelDoctoPaper::withoutOutputsEachLotIsALine()
{
    InboundStation station;
    station.insertInvoices();
    station.openReport();
    station.click(u"ckSaidas"_s);
    Paper paper(station.host);
    const RecordedReport report = station.print();
    QCOMPARE(report.name, u"WMalNF2"_s);
    QCOMPARE(report.rowCounts, QList<int>{6}); // the query is the same
    const QString text = paper.flatText();
    QCOMPARE(firstMissing(text,
                 {u"Cliente 00001 Confecções Serra Azul Ltda"_s, u"Nota 0001001 de 02/03/2026 Entrega parcial"_s,
                     u"FIO150PES Fio poliéster 150/48 L1 50,125 12,50 626,56\n"_s,
                     u"FIO30CO Fio algodão 30/1 penteado L1 100,000 20,00 2.000,00\n"_s,
                     u"Total da nota 2 lotes 150,125 2.626,56\n"_s, u"Total da nota 2 lotes 35,000 660,00\n"_s,
                     u"Total do cliente 4 lotes 185,125 3.286,56\n"_s, u"Total do cliente 1 lote 75,500 755,00\n"_s,
                     u"Total geral 5 lotes 260,625 4.041,56\n"_s, u"Nesta página 5 lotes 260,625 4.041,56\n"_s}),
        QString());
    QCOMPARE(text.count(u"FIO30CO"_s), 2);
    QVERIFY(!text.contains(u"S00000"_s));
}

void TestRelDoctoPaper::theOrderOfThePaperIsThatOfItsRows()
{
    InboundStation station;
    station.insertInvoices();
    station.openReport();
    station.found();
    station.click(u"rbMaterial"_s); // not consulted yet
    Paper paper(station.host);
    station.print();
    QVERIFY2(!paper.flatText().contains(u"Total do material"_s), qPrintable(paper.text()));
    station.found();
    station.print();
    QVERIFY2(paper.flatText().contains(u"Total do material"_s), qPrintable(paper.text()));
}

void TestRelDoctoPaper::clientsThatShareACodeHaveTheirOwnTitles()
{
    InboundStation station;
    station.database.addCommonData(2);
    station.database.run(u"UPDATE ENTIDADE_002 SET NOME = 'Tecidos Outra Ltda' WHERE CODCLI = '00001'"_s);
    station.receive({.number = u"0001001"_s}, {{.physical = 10}});
    station.receive({.number = u"0001003"_s, .date = u"03/06/2026"_s}, {{.physical = 20}});
    station.receive({.number = u"0001002"_s, .date = u"03/04/2026"_s}, {{.physical = 3}}, u"_002"_s);
    station.openReport();
    station.click(u"ckTodasEmpresas"_s);
    QCOMPARE(station.consult(u"DOCTO"_s), (QStringList{u"0001001"_s, u"0001002"_s, u"0001003"_s}));
    Paper paper(station.host);
    for (const QString &choice : {u"rbNotas"_s, u"ckSaidas"_s}) { // with outputs and without
        station.click(choice);
        station.print();
        QCOMPARE(firstMissing(paper.flatText(),
                     {u"Cliente 00001 Confecções Serra Azul Ltda"_s, u"Nota 0001001"_s, u"Nota 0001003"_s,
                         u"Total do cliente 2 lotes 30,000"_s, u"Cliente 00001 Tecidos Outra Ltda"_s, u"Nota 0001002"_s,
                         u"Total do cliente 1 lote 3,000"_s, u"Total geral 3 lotes 33,000"_s}),
            QString());
    }
}

void TestRelDoctoPaper::longNamesAreNotCut()
{
    const QString longest =
        u"Fio misto algodão e poliéster cardado para malharia circular de grande diâmetro, cor cru, "
        "cone de 2"_s;
    InboundStation station;
    station.database.run(u"INSERT INTO {MATERIAL} (CODIGO, DESCRICAO) VALUES ('FIOMISTO5050/30', '%1')"_s.arg(longest));
    station.receive({.number = u"0001001"_s, .observation = u"Entrega parcial, "_s.repeated(20) + u"fim"_s},
        {{.material = u"FIOMISTO5050/30"_s,
            .lot = u"WWWWWWWWWWWWWWW"_s,
            .physical = 1234567.891,
            .price = 1234.5678,
            .value = 12345678.9,
            .brand = u"Fiação Brasileira do Nordeste"_s}});
    station.openReport();
    Paper paper(station.host);
    for (const QString &choice : {u"rbNotas"_s, u"ckSaidas"_s}) {
        station.click(choice);
        station.print();
        const QString text = paper.text();
        const QStringList words =
            u"FIOMISTO5050/30 1.234.567,891 1.234,5678 12.345.678,90 Nordeste fim"_s.split(u' ') + longest.split(u' ');
        for (const QString &word : words)
            QVERIFY2(text.contains(word), qPrintable(word + u" is missing in\n"_s + text));
        QCOMPARE(text.count(u'W'), 15);
        QVERIFY2(!text.contains(u'…'), qPrintable(text));
    }
}

void TestRelDoctoPaper::pagesAddUpToTheWhole()
{
    InboundStation station;
    QList<InboundLot> lots;
    QList<Outbound::Item> items;
    for (int i = 1; i <= 50; ++i) {
        lots.append({.lot = u"L%1"_s.arg(i, 2, 10, QChar(u'0')), .physical = 0.1, .value = 2});
        items.append({.order = i, .kg = 0.1, .value = 0.25, .lot = lots.last().lot});
    }
    station.receive({.number = u"0001001"_s}, lots);
    station.send({.number = u"S000001"_s}, items);
    station.openReport();
    Paper paper(station.host);
    station.print();
    QCOMPARE(paper.pages(), 2);
    static const QRegularExpression onPage(u"Nesta página (\\d+) lotes ([\\d,]+) ([\\d,]+) ([\\d,]+) ([\\d,]+)"_s);
    QList<double> sums(5, 0);
    for (const int page : {1, 2}) {
        const QRegularExpressionMatch match = onPage.match(paper.flatText(page));
        for (int i = 0; i < sums.size(); ++i)
            sums[i] += match.captured(i + 1).replace(u',', u'.').toDouble();
        QVERIFY2(paper.flatText(page).contains(u"Material Lote Marca Entrada (kg)"_s), qPrintable(paper.text(page)));
    }
    QCOMPARE(sums, (QList<double>{50, 5, 100, 5, 12.5}));
    QVERIFY(paper.flatText(2).contains(u"Total geral 50 lotes 5,000 100,00 5,00 12,50"_s)); // tenths add up exactly
}

QTEST_MAIN(TestRelDoctoPaper)
#include "tst_reldoctopaper.moc"
