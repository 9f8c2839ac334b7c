// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/reports/stockstation.h"

#include <QCheckBox>

using namespace Qt::StringLiterals;

/// The stock by client: yarn, fabric, and what of the one lies in the other.
class TestRelEstoqueMat : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void everyControlBearsItsCaption();
    void theKeyboardAloneIsEnough();
    void theYarnIsWhatCameLessWhatLeft();
    void theFabricIsWhatIsNotInvoiced();
    void everyRowHasItsPlaceInTheInventory();
    void aLotThatWentBackWholeDoesNotCount_data();
    void aLotThatWentBackWholeDoesNotCount();
    void cancelledInvoicesTakeNothing_data();
    void cancelledInvoicesTakeNothing();
    void yarnThatIsAllKnittedIsZeroButOnTheBooks();
    void yarnThatSumsLeaveAHairOfIsZero();
    void yarnsWithoutStockComeWhenWished();
    void knittingMoreThanCameGoesBelowZero();
    void onlyActiveColoursTakeYarn();
    void coloursAlikeTakeTheirYarnOnce();
    void yarnsWithTheSameShareBothMakeThePrice();
    void whoseFabricIsListedDependsOnWhoOwnsMaterials();
    void withoutAClientThereIsNoYarn();
    void aWrongClientGetsItsMessageAndItsSearch();
    void hostileTextFindsNothing();
    void nothingFoundIsSaidAndNotPrinted();
    void aFailedStatementLeavesTheScreenReady();
};

void TestRelEstoqueMat::everyControlBearsItsCaption()
{
    StockStation station;
    station.openReport();
    QCOMPARE(station.form()->windowTitle(), u"Relatório de Estoque por Cliente"_s);
    QCOMPARE(station.captions({u"lbCliente"_s, u"ckbZerados"_s, u"cbRelEmpresa"_s, u"CbInv"_s, u"ckGrafico"_s}),
        (QStringList{
            u"Cliente"_s, u"Incluir Zerados"_s, u"Todas Empresas"_s, u"Gerar Inventário"_s, u"Imprimir gráfico"_s}));
    QCOMPARE(station.captions({u"BtnExecutaSQL"_s, u"BtnImprimir"_s, u"BitBtn5"_s}),
        (QStringList{u"Consultar"_s, u"Imprimir"_s, u"Fechar"_s}));
    QVERIFY(station.child<QCheckBox>(u"ckbZerados"_s)->isChecked());
    for (const QString &name : {u"cbRelEmpresa"_s, u"CbInv"_s, u"ckGrafico"_s})
        QVERIFY2(!station.child<QCheckBox>(name)->isChecked(), qPrintable(name));
}

void TestRelEstoqueMat::theKeyboardAloneIsEnough()
{
    StockStation station;
    station.insertMill();
    station.openReport();
    QCOMPARE(station.focus(), u"EdtCodCli"_s);
    station.type(u"EdtCodCli"_s, u"00001"_s);
    for (const QString &next : {u"ckbZerados"_s, u"cbRelEmpresa"_s, u"CbInv"_s, u"ckGrafico"_s, u"BtnExecutaSQL"_s}) {
        station.key(Qt::Key_Tab);
        QCOMPARE(station.focus(), next);
    }
    QCOMPARE(station.text(u"EdtNome"_s), u"Confecções Serra Azul Ltda"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.rows().size(), 4);
    QCOMPARE(station.text(u"lbResultado"_s), u"4 registros"_s);
    station.key(Qt::Key_Tab);
    station.key(Qt::Key_Return);
    QCOMPARE(station.host.recordedReports().size(), 1);
    station.key(Qt::Key_Escape);
    QTRY_VERIFY(!station.form());
}

void TestRelEstoqueMat::theYarnIsWhatCameLessWhatLeft()
{
    StockStation station;
    station.insertMill();
    station.openFor(u"00001"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.rows(),
        (QStringList{u"Fio poliéster 150/48|FIO150PES|300,000|252,000||80,000|10,0000|KG|1"_s,
            u"Fio algodão 30/1 penteado|FIO30CO|705,250|633,250|45,250|150,000|22,0000|KG|1"_s,
            u"Fio parado|FIOPARADO|0,000|0,000|||||1"_s, u"Fio tinto parado|FIOTINTO|0,000|0,000|||||1"_s}));
    QCOMPARE(station.chart(),
        (QStringList{u"FIO30CO FIO150PES"_s, u"Recebido 750.5 300"_s, u"Em malha 72 48"_s, u"Devolvido 45.25 0"_s,
            u"Livre 633.25 252"_s}));
    station.enter(u"EdtCodCli"_s, u"00002"_s);
    QCOMPARE(station.yarns(), QStringList{u"FIO30CO"_s});
    QCOMPARE(station.yarn(u"FIO30CO"_s, u"FISICO"_s), u"70,000"_s);
    QCOMPARE(station.chart(), (QStringList{u"FIO30CO"_s, u"Recebido 70"_s, u"Livre 70"_s}));
}

void TestRelEstoqueMat::theFabricIsWhatIsNotInvoiced()
{
    StockStation station;
    station.insertMill();
    station.openFor(u"00001"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.fabrics(),
        (QStringList{u"Meia-malha PV 60/40|000012|100,000|29,9500|M0001|02/03/2026|A1|KG|00001|1"_s,
            u"Meia-malha PV 60/40|000013|20,000|29,9500|M0001|02/03/2026||KG|00001|1"_s}));
}

void TestRelEstoqueMat::everyRowHasItsPlaceInTheInventory()
{
    StockStation station;
    station.insertMill();
    station.openFor(u"00001"_s);
    station.click(u"BtnExecutaSQL"_s);
    for (const QString &name : {u"tbRelMaterial"_s, u"tbRelMalha"_s}) {
        auto *rows = station.form()->findChild<TDataSet *>(name);
        QVERIFY2(rows && !rows->IsEmpty(), qPrintable(name));
        for (rows->First(); !rows->Eof(); rows->Next()) {
            QStringList place;
            for (const QString &field : {u"DEPOSITO"_s, u"LOTE"_s, u"COR"_s, u"TAM"_s, u"POSSE"_s, u"CODCLI"_s})
                place.append(rows->AsString(field));
            QCOMPARE(place.join(u'|'), u"0000|000000|0|0|2|00001"_s);
            if (rows->hasField(u"CLIENTE"_s))
                QCOMPARE(rows->AsString(u"CLIENTE"_s), u" "_s);
        }
    }
}

void TestRelEstoqueMat::aLotThatWentBackWholeDoesNotCount_data()
{
    QTest::addColumn<double>("returned");
    QTest::addColumn<QStringList>("book");
    QTest::newRow("nothing") << 0.0 << QStringList{u"100,000"_s};
    QTest::newRow("all but a gram: it counts with what it holds") << 99.999 << QStringList{u"100,000"_s};
    QTest::newRow("all of it") << 100.0 << QStringList();
    QTest::newRow("more than came") << 100.5 << QStringList();
}

void TestRelEstoqueMat::aLotThatWentBackWholeDoesNotCount()
{
    QFETCH(double, returned);
    StockStation station;
    Invoices::insert(station.database, u"0000100"_s, u"00001"_s, {{.quantity = 100, .returned = returned}});
    station.openFor(u"00001"_s);
    QTEST(station.consult(u"CONTABIL"_s), "book");
}

void TestRelEstoqueMat::cancelledInvoicesTakeNothing_data()
{
    QTest::addColumn<QString>("printed");
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("gone");
    QTest::newRow("printed") << u"S"_s << u"69,500"_s << u"30,500"_s;
    QTest::newRow("not printed") << u"N"_s << u"69,500"_s << u"30,500"_s;
    QTest::newRow("not known") << QString() << u"69,500"_s << u"30,500"_s;
    QTest::newRow("cancelled") << u"C"_s << u"100,000"_s << QString();
}

void TestRelEstoqueMat::cancelledInvoicesTakeNothing()
{
    QFETCH(QString, printed);
    StockStation station;
    Invoices::insert(station.database, u"0000100"_s, u"00001"_s, {{.quantity = 100}});
    Outbound::insert(station.database, {.number = u"0000901"_s, .printed = printed},
        {{.order = 1, .material = u"FIO30CO"_s, .kg = 20.5, .lot = u"L1"_s, .document = u"0000100"_s},
            {.order = 2, .material = u"FIO30CO"_s, .kg = 10, .lot = u"L1"_s, .document = u"0000100"_s},
            {.order = 3, .material = u"FIO30CO"_s, .kg = 99, .lot = u"L9"_s, .document = u"0000100"_s},
            {.order = 4, .material = u"FIO30CO"_s, .kg = 99, .lot = u"L1"_s, .document = u"0000999"_s}});
    station.openFor(u"00001"_s);
    QCOMPARE(station.yarns(), QStringList{u"FIO30CO"_s});
    for (const QString &field : {u"CONTABIL"_s, u"FISICO"_s})
        QTEST(station.yarn(u"FIO30CO"_s, field), "left");
    QTEST(station.yarn(u"FIO30CO"_s, u"SAIDAS"_s), "gone");
}

void TestRelEstoqueMat::yarnThatIsAllKnittedIsZeroButOnTheBooks()
{
    StockStation station;
    station.setOwnedMaterials(true);
    Invoices::insert(
        station.database, u"0000100"_s, u"00001"_s, {{.quantity = 60}, {.material = u"FIO150PES"_s, .quantity = 50}});
    station.insertFabric(u"000012"_s, 100);
    station.openFor(u"00001"_s);
    QCOMPARE(station.yarns(), (QStringList{u"FIO150PES"_s, u"FIO30CO"_s}));
    QCOMPARE(station.column(u"FISICO"_s), (QStringList{u"10,000"_s, u"0,000"_s}));
    QCOMPARE(station.column(u"CONTABIL"_s), (QStringList{u"50,000"_s, u"60,000"_s}));
    station.click(u"ckbZerados"_s);
    QCOMPARE(station.yarns(), QStringList{u"FIO150PES"_s});
    QCOMPARE(station.fabrics().size(), 1);
}

void TestRelEstoqueMat::yarnThatSumsLeaveAHairOfIsZero()
{
    StockStation station;
    Invoices::insert(station.database, u"0000100"_s, u"00002"_s, {{.quantity = 0.3}});
    station.database.run(
        u"INSERT INTO {MAT_ITEN} (CODIGO, COR, LOTE, DEPOSITO) VALUES ('M0002', '000001', 'L', '1')"_s);
    for (const QString &order : {u"000001"_s, u"000002"_s, u"000003"_s})
        station.insertFabric(order, 0.1, 0, u"M0002"_s);
    station.openFor(u"00002"_s);
    QCOMPARE(station.yarns(), QStringList{u"FIO30CO"_s});
    QCOMPARE(station.column(u"FISICO"_s), QStringList{u"0,000"_s});
    station.click(u"ckbZerados"_s);
    QCOMPARE(station.yarns(), QStringList());
    QCOMPARE(station.text(u"lbResultado"_s), u"3 registros"_s); // fabric alone is a result, too
}

void TestRelEstoqueMat::yarnsWithoutStockComeWhenWished()
{
    StockStation station;
    station.insertMill();
    station.database.run(u"INSERT INTO {MATERIAL} (CODIGO, DESCRICAO, GRUPO, CODCLI) VALUES ('FIOALHEIO', 'Alheio', "
                         "'10', '00002')"_s);
    station.database.run(u"UPDATE {MATERIAL} SET CODCLI = '00001' WHERE CODIGO = 'FIO30CO'"_s); // is listed already
    station.openFor(u"00001"_s);
    QCOMPARE(station.yarns(), (QStringList{u"FIO150PES"_s, u"FIO30CO"_s, u"FIOPARADO"_s, u"FIOTINTO"_s}));
    station.click(u"ckbZerados"_s);
    QCOMPARE(station.yarns(), (QStringList{u"FIO150PES"_s, u"FIO30CO"_s}));
}

void TestRelEstoqueMat::knittingMoreThanCameGoesBelowZero()
{
    StockStation station;
    station.setOwnedMaterials(true);
    Invoices::insert(station.database, u"0000100"_s, u"00001"_s, {{.quantity = 10}});
    station.insertFabric(u"000012"_s, 20);
    station.openFor(u"00001"_s);
    station.click(u"ckbZerados"_s);
    QCOMPARE(station.consult(u"FISICO"_s), QStringList{u"-2,000"_s});
    QCOMPARE(station.chart(), (QStringList{u"FIO30CO"_s, u"Recebido 10"_s, u"Em malha 12"_s, u"Livre -2"_s}));
}

void TestRelEstoqueMat::onlyActiveColoursTakeYarn()
{
    StockStation station;
    station.setOwnedMaterials(true);
    Invoices::insert(station.database, u"0000100"_s, u"00001"_s, {{.quantity = 1000}});
    station.insertFabric(u"000012"_s, 100);
    // Colour 2 is active by null, colour 3 is not.
    for (const QString &line : {u"'000002', 7"_s, u"'000003', 11"_s})
        station.database.run(
            u"INSERT INTO {COMP_MATERIAL} (MATERIAL, CODIGO, COR, PERC) VALUES ('M0001', 'FIO30CO', "_s + line + u')');
    station.openFor(u"00001"_s);
    QCOMPARE(station.consult(u"FISICO"_s), QStringList{u"933,000"_s}); // less 60 and 7
}

void TestRelEstoqueMat::coloursAlikeTakeTheirYarnOnce()
{
    StockStation station;
    station.setOwnedMaterials(true);
    Invoices::insert(station.database, u"0000100"_s, u"00001"_s, {{.quantity = 1000}});
    station.insertFabric(u"000012"_s, 100);
    station.database.run(u"INSERT INTO {COMP_MATERIAL} (MATERIAL, CODIGO, COR, PERC) VALUES ('M0001', 'FIO30CO', "
                         "'000002', 60)"_s);
    station.openFor(u"00001"_s);
    QCOMPARE(station.consult(u"FISICO"_s), QStringList{u"940,000"_s});
}

void TestRelEstoqueMat::yarnsWithTheSameShareBothMakeThePrice()
{
    StockStation station;
    station.setOwnedMaterials(true);
    station.database.run(u"UPDATE {COMP_MATERIAL} SET PERC = 50 WHERE MATERIAL = 'M0001'"_s);
    Invoices::insert(station.database, u"0000100"_s, u"00001"_s,
        {{.price = 20}, {.material = u"FIO150PES"_s, .price = 10},
            {.material = u"FIO150PES"_s, .lot = u"L2"_s, .price = 13}});
    station.insertFabric(u"000012"_s, 10);
    station.openFor(u"00001"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.column(u"UNITARIO"_s, u"DBGrid2"_s), QStringList{u"15,7500"_s}); // 20 / 2 + 11.5 / 2
}

void TestRelEstoqueMat::whoseFabricIsListedDependsOnWhoOwnsMaterials()
{
    StockStation station;
    station.insertMill();
    station.openFor(u"00001"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.column(u"CODCLI"_s, u"DBGrid2"_s), (QStringList{u"00001"_s, u"00001"_s}));
    station.setOwnedMaterials(false);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.column(u"CODCLI"_s, u"DBGrid2"_s), (QStringList{u"00001"_s, u"00001"_s, u"00002"_s}));
    QCOMPARE(station.fabrics().last(), u"Ribana 2x1|000015|7,500|43,2500|M0002|||KG|00002|1"_s);
}

void TestRelEstoqueMat::withoutAClientThereIsNoYarn()
{
    StockStation station;
    station.insertMill();
    station.openReport();
    QCOMPARE(station.yarns(), QStringList());
    QCOMPARE(station.column(u"NUM_OF"_s, u"DBGrid2"_s), (QStringList{u"000012"_s, u"000013"_s, u"000015"_s}));
    QCOMPARE(station.chart(), QStringList());
    QCOMPARE(station.text(u"lbResultado"_s), u"3 registros"_s);
    QCOMPARE(station.print().rowCounts, (QList<int>{0, 3}));
}

void TestRelEstoqueMat::aWrongClientGetsItsMessageAndItsSearch()
{
    StockStation station;
    station.openReport();
    station.checkWrongCode(u"EdtCodCli"_s, u"Cliente inválido."_s, u"Clientes"_s, u"bento"_s);
    QCOMPARE(station.text(u"EdtCodCli"_s), u"00002"_s);
    QCOMPARE(station.text(u"EdtNome"_s), u"Malhas São Bento S.A."_s);
}

void TestRelEstoqueMat::hostileTextFindsNothing()
{
    StockStation station;
    station.insertMill();
    station.openReport();
    for (const QString &text : {u"' OR"_s, u"%"_s, u"{X}"_s, u"'--"_s}) {
        station.type(u"EdtCodCli"_s, text);
        // The message and the search of a client that is not there.
        ScreenChecks::expectInformation(station.answers, station.form()->windowTitle(), u"Cliente inválido."_s);
        QStringList clients;
        ScreenChecks::expectSearchAndLeave(station.answers, &clients, u"Clientes"_s);
        station.key(Qt::Key_Tab);
        QVERIFY(station.answers.allCame());
        QCOMPARE(clients.size(), 3);
    }
}

void TestRelEstoqueMat::nothingFoundIsSaidAndNotPrinted()
{
    StockStation station;
    station.openFor(u"00001"_s);
    station.checkNothingFound();
}

void TestRelEstoqueMat::aFailedStatementLeavesTheScreenReady()
{
    StockStation station;
    station.database.run(u"DROP TABLE {BAIXA_FIO}"_s);
    station.openFor(u"00001"_s);
    station.checkRefusedStatement();
}

QTEST_MAIN(TestRelEstoqueMat)
#include "tst_relestoquemat.moc"
