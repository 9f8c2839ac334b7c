// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/reports/inboundstation.h"

#include <QCheckBox>
#include <QRadioButton>

using namespace Qt::StringLiterals;

/// The report of the clients' inbound invoices: what is listed.
class TestRelDocto : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void everyControlBearsItsCaption();
    void itOpensOnTheLastMonthWithAllOutputsUpToToday();
    void theKeyboardAloneIsEnough();
    void theColumnsComeInTheirOrder();
    void aRowShowsALotAndWhatWentOutOfIt();
    void aLotWithoutOutputsIsListedOnce();
    void outputsAfterTheChosenDateAreLeftOut_data();
    void outputsAfterTheChosenDateAreLeftOut();
    void outputsOfCancelledInvoicesAreLeftOut();
    void outputsAreThoseOfTheDocumentTheMaterialAndTheLot();
    void anOutputIsReturnedWhenAValidInvoiceTakesItBack();
    void outputsAreRoundedToTwoDecimals();
    void pendingHidesLotsThatAreWhollyReturned_data();
    void pendingHidesLotsThatAreWhollyReturned();
    void everyFilterFindsByItself_data();
    void everyFilterFindsByItself();
    void blanksInAFieldAreNoFilter();
    void allCompaniesComeTogether();
    void equalLotsOfTwoCompaniesBothCount();
    void wrongCodesGetTheirMessageAndTheirSearch();
    void nothingFoundIsSaidAndNotPrinted();
    void aFailedStatementLeavesTheScreenReady();
    void hostileTextFindsNothing();
};

void TestRelDocto::everyControlBearsItsCaption()
{
    InboundStation station;
    station.openReport();
    QCOMPARE(station.form()->windowTitle(), u"Relatório de Notas Fiscais de Entrada"_s);
    QCOMPARE(station.captions({u"lbCliente"_s, u"lbMaterial"_s, u"lbDocumento"_s, u"lbGrupoCli"_s, u"lbPeriodo"_s,
                 u"lbDe"_s, u"lbAte"_s}),
        (QStringList{u"Cliente"_s, u"Código"_s, u"Documento"_s, u"Grupo Cliente"_s, u"Período de Entrada"_s, u"De"_s,
            u"Até"_s}));
    QCOMPARE(station.captions({u"rbNotas"_s, u"rbMaterial"_s, u"ckTodasEmpresas"_s}),
        (QStringList{u"Cliente/Notas"_s, u"Cliente/Material/Notas"_s, u"Todas Empresas"_s}));
    QCOMPARE(station.text(u"lbDtMov"_s).remove(u'&').trimmed(), u"Saídas até"_s);
    QCOMPARE(station.text(u"rbTotal"_s), u"&Total"_s);
    QCOMPARE(station.text(u"rbPendente"_s), u"&Pendente"_s);
    QCOMPARE(station.text(u"ckSaidas"_s), u"Trazer &Saídas"_s);
    QCOMPARE(station.captions({u"BtnExecutaSQL"_s, u"BtnImprimir"_s, u"BitBtn5"_s}),
        (QStringList{u"Consultar"_s, u"Imprimir"_s, u"Fechar"_s}));
}

void TestRelDocto::itOpensOnTheLastMonthWithAllOutputsUpToToday()
{
    InboundStation station;
    station.insertInvoices();
    station.openReport();
    QCOMPARE(station.text(u"dteEmiIni02"_s), u"10/02/2026"_s);
    QCOMPARE(station.text(u"dteEmiFim02"_s), u"10/03/2026"_s);
    QCOMPARE(station.text(u"DtMov"_s), u"10/03/2026"_s);
    QVERIFY(station.child<QRadioButton>(u"rbTotal"_s)->isChecked());
    QVERIFY(station.child<QRadioButton>(u"rbNotas"_s)->isChecked());
    QVERIFY(station.child<QCheckBox>(u"ckSaidas"_s)->isChecked());
    QVERIFY(!station.child<QCheckBox>(u"ckTodasEmpresas"_s)->isChecked());
    QCOMPARE(station.rows(), QStringList());
    QCOMPARE(station.focus(), u"edtClienteCod"_s);
}

void TestRelDocto::theKeyboardAloneIsEnough()
{
    InboundStation station;
    station.insertInvoices();
    station.openReport();
    for (const QString &next : {u"edtMatCod"_s, u"EdtDocumento"_s, u"EdtGrupoCli"_s, u"dteEmiIni02"_s, u"dteEmiFim02"_s,
             u"DtMov"_s, u"rbTotal"_s, u"rbNotas"_s, u"ckSaidas"_s, u"ckTodasEmpresas"_s, u"BtnExecutaSQL"_s}) {
        station.key(Qt::Key_Tab);
        QCOMPARE(station.focus(), next);
    }
    station.key(Qt::Key_Return);
    QCOMPARE(station.rows().size(), 6);
}

void TestRelDocto::theColumnsComeInTheirOrder()
{
    InboundStation station;
    station.openReport();
    QStringList names;
    for (const TField &field : station.grid()->dataSet()->fields().mid(0, 20))
        names.append(field.name);
    QCOMPARE(names.join(u' '),
        u"DOCTO CODCLI NOME DATA CODIGO DESCRICAO QTDE_ENTRADA OBS MARCA LOTE UNITARIO VALOR FATURA IMPRESSO "
        "DT_EMISSAO ORDEM QTDE VALOR_NF ESTOQUE_ORIGINAL DEVOLVIDA"_s);
}

void TestRelDocto::aRowShowsALotAndWhatWentOutOfIt()
{
    InboundStation station;
    station.insertInvoices();
    station.openReport();
    station.enter(u"EdtDocumento"_s, u"0001003"_s);
    QCOMPARE(station.found(), QStringList{u"0001003|FIO150PES|L9|S000006"_s});
    TDataSet &row = *station.grid()->dataSet();
    QStringList cells;
    for (const TField &field : row.fields().mid(0, 20))
        cells.append(field.text(row.value(field.name)));
    QCOMPARE(cells.join(u'|'),
        u"0001003|00002|Malhas São Bento S.A.|06/03/2026|FIO150PES|Fio poliéster 150/48|75,500|Frete pago|Cataguases|L9"
        "|10,00|755,00|S000006|S|09/03/2026|1|20,00|200,00|80,000|N"_s);
}

void TestRelDocto::aLotWithoutOutputsIsListedOnce()
{
    InboundStation station;
    station.receive({.number = u"0000001"_s}, {{}});
    station.openReport();
    QCOMPARE(station.found(), QStringList{u"0000001|FIO30CO|L1|"_s});
    const QStringList empty{u"DT_EMISSAO"_s, u"ORDEM"_s, u"QTDE"_s, u"VALOR_NF"_s};
    QCOMPARE(shown(station, empty), QStringList{u"|||"_s});
    QCOMPARE(shown(station, {u"IMPRESSO"_s, u"DEVOLVIDA"_s}), QStringList{u"S|N"_s});
}

void TestRelDocto::outputsAfterTheChosenDateAreLeftOut_data()
{
    QTest::addColumn<QString>("until");
    QTest::addColumn<QStringList>("outputs");
    QTest::newRow("the day belongs to it") << u"08/03/2026"_s << QStringList{u"S000001"_s};
    QTest::newRow("a later day") << u"09/03/2026"_s << QStringList{u"S000001"_s, u"S000002"_s};
    QTest::newRow("before all") << u"07/03/2026"_s << QStringList{QString()};
    QTest::newRow("without a last day") << QString() << QStringList{u"S000001"_s, u"S000002"_s, u"S000004"_s};
}

void TestRelDocto::outputsAfterTheChosenDateAreLeftOut()
{
    QFETCH(QString, until);
    InboundStation station;
    station.insertInvoices();
    station.openReport();
    station.enter(u"EdtDocumento"_s, u"0001001"_s);
    station.enter(u"edtMatCod"_s, u"FIO30CO"_s);
    station.enter(u"DtMov"_s, until);
    QTEST(station.consult(u"FATURA"_s), "outputs");
}

void TestRelDocto::outputsOfCancelledInvoicesAreLeftOut()
{
    InboundStation station;
    station.receive({.number = u"0001001"_s}, {{}});
    station.send({.number = u"S000001"_s, .printed = u"C"_s}, {{}});
    station.send({.number = u"S000002"_s, .printed = {}}, {{}}); // which is not told from a cancelled one
    station.send({.number = u"S000003"_s, .printed = u"N"_s}, {{}});
    station.openReport();
    QCOMPARE(station.consult(u"FATURA"_s), QStringList{u"S000003"_s});
}

void TestRelDocto::outputsAreThoseOfTheDocumentTheMaterialAndTheLot()
{
    InboundStation station;
    station.receive({.number = u"0001001"_s}, {{}, {.lot = u"L2"_s}, {.material = u"FIO150PES"_s}});
    station.receive({.number = u"0001002"_s}, {{}});
    station.send({.number = u"S000001"_s}, {{.order = 2, .lot = u"L2"_s}, {.order = 1}});
    station.send({.number = u"S000002"_s}, {{.document = u"0001002"_s}});
    station.openReport();
    QCOMPARE(station.found(),
        (QStringList{u"0001001|FIO150PES|L1|"_s, u"0001001|FIO30CO|L1|S000001"_s, u"0001001|FIO30CO|L2|S000001"_s,
            u"0001002|FIO30CO|L1|S000002"_s}));
    QCOMPARE(station.column(u"ORDEM"_s), (QStringList{QString(), u"1"_s, u"2"_s, u"1"_s}));
}

void TestRelDocto::anOutputIsReturnedWhenAValidInvoiceTakesItBack()
{
    InboundStation station;
    station.receive({.number = u"0001001"_s}, {{}});
    for (const QString &number : {u"S000001"_s, u"S000002"_s, u"S000003"_s, u"S000004"_s})
        station.send({.number = number}, {{}});
    station.send({.number = u"R000001"_s, .takesBack = u"S000001"_s}, {});
    station.send({.number = u"R000002"_s, .printed = u"C"_s, .takesBack = u"S000002"_s}, {});
    station.send({.number = u"R000003"_s, .printed = {}, .takesBack = u"S000003"_s}, {});
    station.send({.number = u"R000011"_s, .printed = u"N"_s, .takesBack = u"S000001"_s}, {}); // twice counts once
    station.openReport();
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(shown(station, {u"FATURA"_s, u"DEVOLVIDA"_s}),
        (QStringList{u"S000001|S"_s, u"S000002|N"_s, u"S000003|N"_s, u"S000004|N"_s}));
}

void TestRelDocto::outputsAreRoundedToTwoDecimals()
{
    InboundStation station;
    station.receive({.number = u"0001001"_s}, {{}});
    station.send({.number = u"S000001"_s}, {{.kg = 40.125}});
    station.send({.number = u"S000002"_s}, {{.kg = 40.124}});
    station.openReport();
    QCOMPARE(station.consult(u"QTDE"_s), (QStringList{u"40,13"_s, u"40,12"_s}));
}

void TestRelDocto::pendingHidesLotsThatAreWhollyReturned_data()
{
    QTest::addColumn<double>("physical");
    QTest::addColumn<double>("returned");
    QTest::addColumn<bool>("isPending");
    QTest::newRow("nothing returned") << 50.0 << 0.0 << true;
    QTest::newRow("a gram is left") << 50.0 << 49.999 << true;
    QTest::newRow("all returned") << 50.0 << 50.0 << false;
    QTest::newRow("more than there is") << 40.0 << 50.0 << false;
}

void TestRelDocto::pendingHidesLotsThatAreWhollyReturned()
{
    QFETCH(double, physical);
    QFETCH(double, returned);
    QFETCH(bool, isPending);
    InboundStation station;
    station.receive({.number = u"0001001"_s}, {{.physical = physical, .returned = returned}});
    station.openReport();
    QCOMPARE(station.found().size(), 1);
    station.click(u"rbPendente"_s);
    QCOMPARE(station.found().size(), isPending ? 1 : 0);
}

void TestRelDocto::everyFilterFindsByItself_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QStringList>("documents");
    QTest::newRow("client") << u"edtClienteCod"_s << u"00002"_s << QStringList{u"0001003"_s};
    QTest::newRow("material") << u"edtMatCod"_s << u"FIO150PES"_s
                              << QStringList{u"0001001"_s, u"0001002"_s, u"0001003"_s};
    QTest::newRow("document") << u"EdtDocumento"_s << u"0001002"_s << QStringList{u"0001002"_s};
    QTest::newRow("client group") << u"EdtGrupoCli"_s << u"2"_s << QStringList{u"0001004"_s};
    QTest::newRow("from that day") << u"dteEmiIni02"_s << u"06/03/2026"_s << QStringList{u"0001003"_s, u"0001004"_s};
    QTest::newRow("to that day") << u"dteEmiFim02"_s << u"02/03/2026"_s << QStringList{u"0001001"_s};
    QTest::newRow("without end") << u"dteEmiFim02"_s << QString()
                                 << QStringList{u"0001001"_s, u"0001002"_s, u"0001005"_s, u"0001003"_s, u"0001004"_s};
}

void TestRelDocto::everyFilterFindsByItself()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    InboundStation station;
    station.insertInvoices();
    station.receive({.number = u"0001004"_s, .client = u"00003"_s, .date = u"03/10/2026"_s}, {{}});
    station.receive({.number = u"0001005"_s, .date = u"03/11/2026"_s}, {{}}); // tomorrow
    station.openReport();
    station.enter(field, value);
    QStringList documents = station.consult(u"DOCTO"_s);
    documents.removeDuplicates();
    QTEST(documents, "documents");
}

void TestRelDocto::blanksInAFieldAreNoFilter()
{
    InboundStation station;
    station.insertInvoices();
    station.openReport();
    for (const QString &field : {u"edtClienteCod"_s, u"edtMatCod"_s, u"EdtDocumento"_s, u"EdtGrupoCli"_s})
        station.enter(field, u"  "_s);
    QCOMPARE(station.found().size(), 6);
}

void TestRelDocto::allCompaniesComeTogether()
{
    InboundStation station;
    station.database.addCommonData(2);
    station.receive({.number = u"0001001"_s}, {{}});
    station.send({.number = u"S000001"_s}, {{.kg = 10}});
    station.receive({.number = u"0001001"_s}, {{.received = 20, .physical = 20}}, u"_002"_s); // a lot of the same names
    Outbound::insert(station.database, {.number = u"S000009"_s, .date = u"03/05/2026"_s},
        {{.material = u"FIO30CO"_s, .kg = 3, .lot = u"L1"_s, .document = u"0001001"_s}}, u"_002"_s);
    station.openReport();
    QCOMPARE(station.found().size(), 1);
    station.click(u"ckTodasEmpresas"_s);
    QCOMPARE(station.found(), (QStringList{u"0001001|FIO30CO|L1|S000001"_s, u"0001001|FIO30CO|L1|S000009"_s}));
    QCOMPARE(shown(station, {u"ENTRADA"_s, u"QTDE"_s}), (QStringList{u"50,000|10,00"_s, u"20,000|3,00"_s}));
    InboundStation narrow(u"SEMDIREITO"_s); // who sees the first company alone
    narrow.database.addCommonData(2);
    narrow.receive({.number = u"0001001"_s}, {{}}, u"_002"_s);
    narrow.openReport();
    narrow.click(u"ckTodasEmpresas"_s);
    QCOMPARE(narrow.found(), QStringList());
}

void TestRelDocto::equalLotsOfTwoCompaniesBothCount()
{
    InboundStation station;
    station.database.addCommonData(2);
    for (const QString &company : {QString(), u"_002"_s})
        station.receive({.number = u"0001001"_s}, {{}}, company);
    station.openReport();
    station.click(u"ckTodasEmpresas"_s);
    QCOMPARE(station.consult(u"ENTRADA"_s), (QStringList{u"50,000"_s, u"50,000"_s}));
    // Out of the first company's lot goods went, out of the other one's nothing.
    station.send({.number = u"S000001"_s}, {{.kg = 10}});
    station.send({.number = u"S000002"_s}, {{.kg = 20}});
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(
        shown(station, {u"ENTRADA"_s, u"FATURA"_s}), (QStringList{u"50,000|"_s, u"50,000|S000001"_s, u"|S000002"_s}));
}

void TestRelDocto::wrongCodesGetTheirMessageAndTheirSearch()
{
    InboundStation station;
    station.openReport();
    station.checkWrongCode(u"edtClienteCod"_s, u"Cliente inválido."_s, u"Clientes"_s, u"bento"_s);
    QCOMPARE(station.text(u"edtClienteNome"_s), u"Malhas São Bento S.A."_s);
    station.checkWrongCode(u"edtMatCod"_s, u"Material inválido."_s, u"Materiais"_s, u"ribana"_s);
    QCOMPARE(station.text(u"edtMatDesc"_s), u"Ribana 2x1"_s);
    station.checkWrongCode(u"EdtGrupoCli"_s, u"Grupo de clientes inválido."_s, u"Grupos de clientes"_s, u"atacado"_s);
    QCOMPARE(station.text(u"EdtDescGrupoCli"_s), u"Atacado"_s);
}

void TestRelDocto::nothingFoundIsSaidAndNotPrinted()
{
    InboundStation station;
    station.openReport();
    station.checkNothingFound();
}

void TestRelDocto::aFailedStatementLeavesTheScreenReady()
{
    InboundStation station;
    station.openReport();
    station.database.run(u"DROP TABLE {NOTAITEN}"_s);
    station.checkRefusedStatement();
}

void TestRelDocto::hostileTextFindsNothing()
{
    InboundStation station;
    station.insertInvoices();
    station.openReport();
    for (const QString &text : {u"' OR 1"_s, u"%"_s, u"{X}"_s, u"'--"_s}) {
        station.child<QLineEdit>(u"EdtDocumento"_s)->setText(text);
        QCOMPARE(station.found(), QStringList());
    }
}

QTEST_MAIN(TestRelDocto)
#include "tst_reldocto.moc"
