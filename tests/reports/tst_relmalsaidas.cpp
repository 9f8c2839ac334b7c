// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/reports/figures.h"
#include "tests/reports/outbound.h"
#include "tests/support/paper.h"

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

namespace {

class OutputStation : public ReportStation
{
public:
    explicit OutputStation(const QString &user = u"ADMIN"_s)
        : ReportStation(u"TfmRelMalSaidas"_s, user)
    {
    }

    void insert(const Outbound::Invoice &invoice, const QList<Outbound::Item> &items)
    {
        Outbound::insert(database, invoice, items);
    }
    /// The fabric M0001 belongs to 00001 and M0002 to 00002. The last invoice takes fabric of both to 00002.
    void insertInvoices()
    {
        insert({.number = u"0000101"_s, .date = u"03/02/2026"_s},
            {{.kg = 100.5, .value = 251.25}, {.order = 2, .material = u"FIO30CO"_s}}); // yarn of nobody in particular
        insert({.number = u"0000102"_s, .date = u"03/05/2026"_s, .printed = u"C"_s}, {{.kg = 20.25, .value = 50.63}});
        insert({.number = u"0000103"_s, .client = u"00002"_s, .date = u"03/06/2026"_s, .printed = {}},
            {{.material = u"M0002"_s, .kg = 33.333, .price = 3.125, .value = 104.17}});
        insert({.number = u"0000104"_s, .client = u"00002"_s, .date = u"03/07/2026"_s, .printed = u"N"_s},
            {{.order = 10, .material = u"M0002"_s, .kg = 66.667, .price = 3.125, .value = 208.33}, {.order = 2}});
    }
    /// "invoice|item" of the rows found.
    QStringList found()
    {
        click(u"BtnExecutaSQL"_s);
        return shown(*this, {u"FATURA"_s, u"ORDEM"_s});
    }
    void addGroup(const QString &sought)
    {
        expectSearchAndTake(answers, sought, u"Grupos de materiais"_s);
        click(u"PqGrupoMat"_s);
        QVERIFY(answers.allCame());
    }
    QString groups() const { return text(u"edtGrupoMat"_s); }
};

} // namespace

/// The report of what went out of each client's materials.
class TestRelMalSaidas : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void everyControlBearsItsCaption();
    void itOpensOnTheLastMonth();
    void theKeyboardAloneIsEnough();
    void theClientIsTheOwnerOfTheMaterial();
    void rowsStandByAddresseeInvoiceAndItem();
    void everyFilterFindsByItself_data();
    void everyFilterFindsByItself();
    void severalGroupsAreCombinedUntilTheListIsCleared();
    void theListOfGroupsIsFilledByItsSearchAlone();
    void cancelledInvoicesAreListedWithTheirState();
    void gridPaperAndSheetShowTheSameFigures();
    void thePaperAddsUpEachClientWhoeverTheInvoicesWentTo();
    void aPaperWithoutCancelledInvoicesDoesNotMentionThem();
    void pagesAddUpToTheWhole();
    void allCompaniesComeTogether();
    void wrongCodesGetTheirMessageAndTheirSearch();
    void nothingFoundIsSaidAndNotPrinted();
    void aFailedStatementLeavesTheScreenReady();
    void hostileTextFindsNothing();
};

void TestRelMalSaidas::everyControlBearsItsCaption()
{
    OutputStation station;
    station.openReport();
    QCOMPARE(station.form()->windowTitle(), u"Relatório de saídas por cliente."_s);
    QCOMPARE(station.captions({u"lbCliente"_s, u"lbMaterial"_s, u"lbGrupo"_s, u"lbPeriodo"_s, u"lbDe"_s, u"lbAte"_s,
                 u"ckTodasEmpresas"_s}),
        (QStringList{u"Cliente"_s, u"Código"_s, u"Grupo"_s, u"Período"_s, u"De"_s, u"Até"_s, u"Todas Empresas"_s}));
    QCOMPARE(station.text(u"BtnExecutaSQL"_s), u"&Confirmar"_s);
}

void TestRelMalSaidas::itOpensOnTheLastMonth()
{
    OutputStation station;
    station.insertInvoices();
    station.openReport();
    QCOMPARE(station.text(u"dteEmiIni02"_s), u"10/02/2026"_s);
    QCOMPARE(station.text(u"dteEmiFim02"_s), u"10/03/2026"_s);
    QCOMPARE(station.groups(), QString());
    QCOMPARE(station.rows(), QStringList());
    QCOMPARE(station.focus(), u"edtClienteCod"_s);
}

void TestRelMalSaidas::theKeyboardAloneIsEnough()
{
    OutputStation station;
    station.insertInvoices();
    station.openReport();
    station.key(Qt::Key_Tab);
    station.key(Qt::Key_Tab);
    QCOMPARE(station.focus(), u"edtGrupoMat"_s);
    expectSearchAndTake(station.answers, u"terceiros"_s, u"Grupos de materiais"_s);
    station.key(Qt::Key_F4);
    QCOMPARE(station.groups(), u"'150'"_s);
    for (const QString &next :
        {u"spbGrupoClear"_s, u"dteEmiIni02"_s, u"dteEmiFim02"_s, u"ckTodasEmpresas"_s, u"BtnExecutaSQL"_s}) {
        station.key(Qt::Key_Tab);
        QCOMPARE(station.focus(), next);
    }
    station.key(Qt::Key_Return);
    QCOMPARE(station.rows().size(), 3);
}

void TestRelMalSaidas::theClientIsTheOwnerOfTheMaterial()
{
    OutputStation station;
    station.insertInvoices();
    station.openReport();
    station.enter(u"edtClienteCod"_s, u"00001"_s);
    QCOMPARE(station.found(), (QStringList{u"0000101|1"_s, u"0000102|1"_s, u"0000104|2"_s}));
    // The last invoice is addressed to another one.
    QCOMPARE(station.column(u"CODCLI"_s), (QStringList{u"00001"_s, u"00001"_s, u"00002"_s}));
    QCOMPARE(station.column(u"NOME"_s), QStringList(3, u"Confecções Serra Azul Ltda"_s));
    station.enter(u"edtClienteCod"_s, u"00002"_s);
    QCOMPARE(station.found(), (QStringList{u"0000103|1"_s, u"0000104|10"_s}));
}

void TestRelMalSaidas::rowsStandByAddresseeInvoiceAndItem()
{
    OutputStation station;
    station.insert({.number = u"0000001"_s, .client = u"00002"_s}, {{.order = 10}, {.order = 9}});
    station.insert({.number = u"0000003"_s}, {{}});
    station.insert({.number = u"0000002"_s}, {{}});
    station.openReport();
    QCOMPARE(station.found(), (QStringList{u"0000002|1"_s, u"0000003|1"_s, u"0000001|9"_s, u"0000001|10"_s}));
    QCOMPARE(station.grid()->dataSet()->row(), 0);
}

void TestRelMalSaidas::everyFilterFindsByItself_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QStringList>("invoices");
    QTest::newRow("material") << u"edtMatCod"_s << u"M0002"_s << QStringList{u"0000103"_s, u"0000104"_s};
    QTest::newRow("from that day") << u"dteEmiIni02"_s << u"06/03/2026"_s
                                   << QStringList{u"0000103"_s, u"0000104"_s, u"0000104"_s};
    QTest::newRow("to that day") << u"dteEmiFim02"_s << u"05/03/2026"_s << QStringList{u"0000101"_s, u"0000102"_s};
    QTest::newRow("without beginning") << u"dteEmiIni02"_s << QString()
                                       << QStringList{
                                              u"0000101"_s, u"0000102"_s, u"0000103"_s, u"0000104"_s, u"0000104"_s};
}

void TestRelMalSaidas::everyFilterFindsByItself()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    OutputStation station;
    station.insertInvoices();
    station.insert({.number = u"0000999"_s, .date = u"03/11/2026"_s}, {{}}); // tomorrow
    station.openReport();
    station.enter(field, value);
    QTEST(station.consult(u"FATURA"_s), "invoices");
}

void TestRelMalSaidas::severalGroupsAreCombinedUntilTheListIsCleared()
{
    OutputStation station;
    station.insertInvoices();
    station.database.run(u"UPDATE {MATERIAL} SET CODCLI = '00003' WHERE CODIGO = 'FIO30CO'"_s);
    station.openReport();
    station.addGroup(u"terceiros"_s);
    QCOMPARE(station.groups(), u"'150'"_s);
    QCOMPARE(station.found(), (QStringList{u"0000101|1"_s, u"0000102|1"_s, u"0000104|2"_s}));
    station.addGroup(u"fios"_s);
    QCOMPARE(station.groups(), u"'150','10'"_s);
    QCOMPARE(station.found(), (QStringList{u"0000101|1"_s, u"0000101|2"_s, u"0000102|1"_s, u"0000104|2"_s}));
    station.click(u"spbGrupoClear"_s);
    QCOMPARE(station.groups(), QString());
    QCOMPARE(station.found().size(), 6);
}

void TestRelMalSaidas::theListOfGroupsIsFilledByItsSearchAlone()
{
    OutputStation station;
    station.openReport();
    station.child(u"edtGrupoMat"_s)->setFocus();
    QTest::keyClicks(station.child(u"edtGrupoMat"_s), u"') OR (1=1"_s);
    QCOMPARE(station.groups(), QString());
    station.addGroup(u"fios"_s);
    station.addGroup(u"fios"_s); // which stands there already
    QCOMPARE(station.groups(), u"'10'"_s);
    QStringList offered;
    expectSearchAndLeave(station.answers, &offered, u"Grupos de materiais"_s);
    station.click(u"PqGrupoMat"_s);
    QCOMPARE(offered, (QStringList{u"10"_s, u"15"_s, u"150"_s}));
    QCOMPARE(station.groups(), u"'10'"_s);
}

void TestRelMalSaidas::cancelledInvoicesAreListedWithTheirState()
{
    OutputStation station;
    station.insertInvoices();
    station.openReport();
    QCOMPARE(station.consult(u"IMPRESSO"_s), (QStringList{u"S"_s, u"C"_s, QString(), u"N"_s, u"N"_s}));
    QCOMPARE(station.column(u"FATURA"_s),
        (QStringList{u"0000101"_s, u"0000102"_s, u"0000103"_s, u"0000104"_s, u"0000104"_s}));
}

void TestRelMalSaidas::gridPaperAndSheetShowTheSameFigures()
{
    OutputStation station;
    station.insertInvoices();
    station.openReport();
    Paper paper(station.host);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(shown(station, {u"FATURA"_s, u"QTDE"_s, u"PRECO"_s, u"VALOR"_s}),
        (QStringList{u"0000101|100,500|2,50|251,25"_s, u"0000102|20,250|2,50|50,63"_s, u"0000103|33,333|3,125|104,17"_s,
            u"0000104|10,000|2,50|25,00"_s, u"0000104|66,667|3,125|208,33"_s}));
    QCOMPARE(station.print().name, u"WMalSaida"_s);
    const QString text = paper.flatText();
    for (const QString &row : {u"02/03/2026 0000101 1 impressa 00001 M0001 Meia-malha PV 60/40 100,500 2,50 251,25\n"_s,
             u"05/03/2026 0000102 1 cancelada 00001 M0001 Meia-malha PV 60/40 20,250 2,50 50,63\n"_s,
             u"06/03/2026 0000103 1 00002 M0002 Ribana 2x1 33,333 3,125 104,17\n"_s,
             u"07/03/2026 0000104 2 não impressa 00002 M0001 Meia-malha PV 60/40 10,000 2,50 25,00\n"_s,
             u"07/03/2026 0000104 10 não impressa 00002 M0002 Ribana 2x1 66,667 3,125 208,33\n"_s})
        QVERIFY2(text.contains(row), qPrintable(row + text));
    const ExportedGrid sheet(station);
    QCOMPARE(
        sheet.column(u"Nota"_s), (QStringList{u"0000101"_s, u"0000102"_s, u"0000103"_s, u"0000104"_s, u"0000104"_s}));
    QCOMPARE(sheet.column(u"Quantidade"_s), (QStringList{u"100.5"_s, u"20.25"_s, u"33.333"_s, u"10"_s, u"66.667"_s}));
    QCOMPARE(sheet.column(u"Valor"_s), (QStringList{u"251.25"_s, u"50.63"_s, u"104.17"_s, u"25"_s, u"208.33"_s}));
}

void TestRelMalSaidas::thePaperAddsUpEachClientWhoeverTheInvoicesWentTo()
{
    OutputStation station;
    station.insertInvoices();
    station.openReport();
    Paper paper(station.host);
    QCOMPARE(station.print().dataSets, QStringList{u"tbRelatorio"_s});
    const QString text = paper.flatText();
    QVERIFY2(text.contains(u"Período: 10/02/2026 a 10/03/2026"_s), qPrintable(text));
    // Each client once, with all of its rows.
    QCOMPARE(
        firstMissing(text,
            {u"Confecções Serra Azul Ltda"_s, u"0000101"_s, u"0000102"_s, u"0000104 2"_s,
                u"3 itens Total do cliente 130,750 326,88"_s, u"dos quais em notas canceladas 20,250 50,63"_s,
                u"Malhas São Bento S.A."_s, u"0000103"_s, u"0000104 10"_s, u"2 itens Total do cliente 100,000 312,50"_s,
                u"5 itens Total geral 230,750 639,38"_s, u"dos quais em notas canceladas 20,250 50,63"_s,
                u"Nesta página 230,750 639,38"_s, u"Página 1 de 1"_s}),
        QString());
    QCOMPARE(text.count(u"dos quais"_s), 2);
}

void TestRelMalSaidas::aPaperWithoutCancelledInvoicesDoesNotMentionThem()
{
    OutputStation station;
    station.insert({.number = u"0000101"_s}, {{.kg = 12.345, .value = 30.86}});
    station.openReport();
    Paper paper(station.host);
    station.print();
    QVERIFY2(paper.flatText().contains(u"1 item Total geral 12,345 30,86"_s), qPrintable(paper.text()));
    QVERIFY(!paper.flatText().contains(u"cancelada"_s));
}

void TestRelMalSaidas::pagesAddUpToTheWhole()
{
    OutputStation station;
    QList<Outbound::Item> items;
    for (int order = 1; order <= 50; ++order)
        items.append({.order = order, .kg = 0.1, .value = 0.25});
    station.insert({.number = u"0000101"_s}, items);
    station.openReport();
    Paper paper(station.host);
    station.print();
    QCOMPARE(paper.pages(), 2);
    static const QRegularExpression onPage(u"Nesta página ([\\d,]+) ([\\d,]+)"_s);
    double kg = 0;
    double value = 0;
    for (const int page : {1, 2}) {
        const QRegularExpressionMatch sums = onPage.match(paper.flatText(page));
        kg += sums.captured(1).replace(u',', u'.').toDouble();
        value += sums.captured(2).replace(u',', u'.').toDouble();
        QVERIFY2(paper.flatText(page).contains(u"Situação Destinatário Material"_s), qPrintable(paper.text(page)));
    }
    QCOMPARE(kg, 5.0);
    QCOMPARE(value, 12.5);
    QVERIFY(paper.flatText(2).contains(u"50 itens Total geral 5,000 12,50"_s)); // tenths add up exactly
}

void TestRelMalSaidas::allCompaniesComeTogether()
{
    OutputStation station;
    station.database.addCommonData(2);
    station.insertInvoices();
    Outbound::insert(station.database, {.number = u"0000101"_s}, {{.kg = 7}}, u"_002"_s);
    station.openReport();
    QCOMPARE(station.found().size(), 5);
    station.click(u"ckTodasEmpresas"_s);
    QCOMPARE(station.found(),
        (QStringList{u"0000101|1"_s, u"0000101|1"_s, u"0000102|1"_s, u"0000103|1"_s, u"0000104|2"_s, u"0000104|10"_s}));
    QStringList weights = station.column(u"QTDE"_s).mid(0, 2);
    weights.sort();
    QCOMPARE(weights, (QStringList{u"100,500"_s, u"7,000"_s}));
    OutputStation narrow(u"SEMDIREITO"_s); // who sees the first company alone
    narrow.database.addCommonData(2);
    Outbound::insert(narrow.database, {.number = u"0000101"_s}, {{.kg = 7}}, u"_002"_s);
    narrow.openReport();
    narrow.click(u"ckTodasEmpresas"_s);
    QCOMPARE(narrow.found(), QStringList());
}

void TestRelMalSaidas::wrongCodesGetTheirMessageAndTheirSearch()
{
    OutputStation station;
    station.openReport();
    station.checkWrongCode(u"edtClienteCod"_s, u"Cliente inválido."_s, u"Clientes"_s, u"bento"_s);
    QCOMPARE(station.text(u"edtClienteNome"_s), u"Malhas São Bento S.A."_s);
    station.checkWrongCode(u"edtMatCod"_s, u"Material inválido."_s, u"Materiais"_s, u"ribana"_s);
    QCOMPARE(station.text(u"edtMatDesc"_s), u"Ribana 2x1"_s);
}

void TestRelMalSaidas::nothingFoundIsSaidAndNotPrinted()
{
    OutputStation station;
    station.openReport();
    station.checkNothingFound();
}

void TestRelMalSaidas::aFailedStatementLeavesTheScreenReady()
{
    OutputStation station;
    station.openReport();
    station.database.run(u"DROP TABLE {NOTAITEN}"_s);
    station.checkRefusedStatement();
}

void TestRelMalSaidas::hostileTextFindsNothing()
{
    OutputStation station;
    station.insertInvoices();
    station.openReport();
    for (const QString &text : {u"' OR 1"_s, u"%"_s, u"{X}"_s, u"'--"_s}) {
        station.child<QLineEdit>(u"edtMatCod"_s)->setText(text);
        QCOMPARE(station.found(), QStringList());
    }
}

QTEST_MAIN(TestRelMalSaidas)
#include "tst_relmalsaidas.moc"
