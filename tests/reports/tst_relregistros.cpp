// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/host_services/format.h"
#include "tests/reports/figures.h"
#include "tests/support/paper.h"

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

namespace {

const QString caption = QStringLiteral(".:Relatório de Registro Quantitativo:.");

class RegisterStation : public ReportStation
{
public:
    RegisterStation()
        : ReportStation(u"TfmRelRegistros"_s)
    {
    }

    /// Three orders; by date they come backwards, and the client of the last is the first. In all 5 rolls of 98,625 kg.
    void insertRolls()
    {
        Orders::insert(database, {.client = u"00002"_s, .machine = u"002"_s});
        Orders::insert(
            database, {.number = u"000013"_s, .date = u"03/01/2026"_s, .client = u"00002"_s, .material = u"M0002"_s});
        Orders::insert(database, {.number = u"000014"_s, .date = u"02/27/2026"_s});
        for (const auto &[order, lot] :
            {std::pair{u"000012"_s, u"A12"_s}, {u"000013"_s, u"120"_s}, {u"000014"_s, u"B7"_s}})
            database.run(u"UPDATE {OF_MALHA} SET LOTE = '%1' WHERE NUM_OF = '%2'"_s.arg(lot, order));
        roll(u"000012"_s, u"001"_s, u"03/04/2026"_s, u"000101"_s, 20.5);
        roll(u"000012"_s, u"002"_s, u"03/02/2026"_s, u"000102"_s, 19.125);
        roll(u"000013"_s, u"001"_s, u"03/03/2026"_s, u"000101"_s, 25);
        roll(u"000013"_s, u"010"_s, u"03/03/2026"_s, u"000101"_s, 24);
        roll(u"000014"_s, u"001"_s, u"03/05/2026"_s, u"000101"_s, 10);
    }
    void roll(const QString &order, const QString &number, const QString &date, const QString &operatorCode, double kg)
    {
        database.run(u"INSERT INTO {OF_MALHA_BAIXAS} (NUM_BAIXA, NUM_OF, DATA, HORA, TURNO, FUNCIONARIO, QTDE) VALUES "
                     "('%1', '%2', '%3', '08:05:09', '1', '%4', %5)"_s.arg(
                         number, order, date, operatorCode, SqlText::number(kg)));
    }
    void openOn(const QString &first, const QString &last)
    {
        openReport();
        enter(u"edtOfIni"_s, first);
        enter(u"edtOfFim"_s, last);
    }
    /// "OF/roll" of each line.
    QStringList lines()
    {
        click(u"BtnExecutaSQL"_s);
        QStringList result;
        for (const QString &line : shown(*this, {u"NUM_OF"_s, u"NUM_BAIXA"_s}))
            result.append(QString(line).replace(u'|', u'/'));
        return result;
    }
};

const QStringList allByClient{u"000014/001"_s, u"000012/001"_s, u"000012/002"_s, u"000013/001"_s, u"000013/010"_s};

} // namespace

/// The quantitative register: one line per roll.
class TestRelRegistros : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void everyControlBearsItsCaption();
    void theKeyboardAloneIsEnough();
    void withoutAFirstOrderNothingIsAsked_data();
    void withoutAFirstOrderNothingIsAsked();
    void theLastOrderIsFilledOnEntering();
    void withoutALastOrderNothingIsFound();
    void rowsShowTheRollAndItsOrder();
    void eachOrderSortsInItsWay_data();
    void eachOrderSortsInItsWay();
    void rollNumbersSortAsNumbers();
    void theOrdersCompareAsText();
    void everyFilterFindsByItself_data();
    void everyFilterFindsByItself();
    void theLotMatchesAnywhere();
    void thePeriodIsThatOfTheRolls_data();
    void thePeriodIsThatOfTheRolls();
    void codesAreDescribedAndNotRefused();
    void hostileTextFindsNothing();
    void nothingFoundIsSaidAndNotPrinted();
    void aFailedStatementLeavesTheScreenReady();
    void theSpreadsheetBearsTheFiguresOfTheGrid();
    void clientsAndOrdersHaveTheirTotalsOnPaper();
    void thePaperFollowsTheOrder();
    void longFiltersAndNamesAreNotCut();
    void totalsStandOnEachPage();
};

void TestRelRegistros::everyControlBearsItsCaption()
{
    RegisterStation station;
    station.openReport();
    QCOMPARE(station.form()->windowTitle(), caption);
    QCOMPARE(station.captions({u"lbOF"_s, u"lbOFDe"_s, u"lbOFAte"_s, u"lbPeriodo"_s, u"lbDataDe"_s, u"lbDataAte"_s,
                 u"lbCliente"_s, u"lbCodigo"_s, u"lbBaixa"_s, u"lbBaixaDe"_s, u"lbBaixaAte"_s, u"lbLote"_s,
                 u"lbFuncionario"_s, u"lbMaquina"_s, u"rbClienteOF"_s, u"rbOF"_s, u"rbData"_s, u"BtnExecutaSQL"_s,
                 u"BtnImprimir"_s, u"BitBtn5"_s}),
        (QStringList{u"OF"_s, u"De"_s, u"Até"_s, u"Período de Datas"_s, u"De"_s, u"Até"_s, u"Cliente"_s, u"Código"_s,
            u"Número da Baixa"_s, u"De"_s, u"Até"_s, u"Lote"_s, u"Funcionário"_s, u"Máquina"_s, u"Cliente/OF"_s,
            u"OF"_s, u"Data"_s, u"Confirmar"_s, u"Imprimir"_s, u"Fechar"_s}));
    QVERIFY(station.child<QAbstractButton>(u"rbClienteOF"_s)->isChecked());
    QCOMPARE(station.text(u"edtDataIni"_s), u"10/02/2026"_s);
    QCOMPARE(station.text(u"edtDataFim"_s), u"10/03/2026"_s);
}

void TestRelRegistros::theKeyboardAloneIsEnough()
{
    RegisterStation station;
    station.insertRolls();
    station.openReport();
    QCOMPARE(station.focus(), u"edtOfIni"_s);
    station.type(u"edtOfIni"_s, u"000012"_s);
    const QStringList order{u"edtOfFim"_s, u"edtDataIni"_s, u"edtDataFim"_s, u"edtClienteCod"_s, u"edtMatCod"_s,
        u"edtBaixaIni"_s, u"edtBaixaFim"_s, u"edtLote"_s, u"edtFuncCod"_s, u"edtCodMaq"_s, u"rbClienteOF"_s,
        u"BtnExecutaSQL"_s};
    for (const QString &next : order) {
        station.key(Qt::Key_Return);
        if (next == u"BtnExecutaSQL"_s && station.focus() != next)
            station.key(Qt::Key_Tab);
        QCOMPARE(station.focus(), next);
    }
    station.key(Qt::Key_Return);
    QCOMPARE(station.rows().size(), 2);
    station.key(Qt::Key_Escape);
    QTRY_VERIFY(!station.form());
}

void TestRelRegistros::withoutAFirstOrderNothingIsAsked_data()
{
    QTest::addColumn<QString>("first");
    QTest::newRow("empty") << QString();
    QTest::newRow("blank") << u"   "_s;
}

void TestRelRegistros::withoutAFirstOrderNothingIsAsked()
{
    QFETCH(const QString, first);
    RegisterStation station;
    station.insertRolls();
    station.openOn(first, u"000014"_s);
    expectInformation(station.answers, caption, u"Digite uma OF."_s);
    QCOMPARE(station.lines(), QStringList());
    QVERIFY(station.answers.allCame());
    QCOMPARE(station.focus(), u"edtOfIni"_s);
    QCOMPARE(station.text(u"lbResultado"_s), QString());
    expectInformation(station.answers, caption, u"Digite uma OF."_s);
    QCOMPARE(station.print().name, QString());
    station.checkReady();
}

void TestRelRegistros::theLastOrderIsFilledOnEntering()
{
    RegisterStation station;
    station.openReport();
    station.enter(u"edtOfIni"_s, u"000012"_s);
    QCOMPARE(station.focus(), u"edtOfFim"_s);
    QCOMPARE(station.text(u"edtOfFim"_s), u"000012"_s);
    station.enter(u"edtOfFim"_s, u"000013"_s);
    QCOMPARE(station.text(u"edtOfFim"_s), u"000013"_s);
    station.key(Qt::Key_Backtab, Qt::ShiftModifier); // each time that it is entered
    QCOMPARE(station.text(u"edtOfFim"_s), u"000012"_s);
}

void TestRelRegistros::withoutALastOrderNothingIsFound()
{
    RegisterStation station;
    station.insertRolls();
    station.openOn(u"000012"_s, {});
    QCOMPARE(station.text(u"edtOfFim"_s), QString());
    QCOMPARE(station.lines(), QStringList());
}

void TestRelRegistros::rowsShowTheRollAndItsOrder()
{
    RegisterStation station;
    station.insertRolls();
    station.openOn(u"000012"_s, u"000012"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.rows().first(),
        u"000012|001|04/03/2026|08:05:09|20,500|1|A12|Malhas São Bento S.A.|Meia-malha PV 60/40|000101|00002|M0001"_s);
    QStringList fields;
    for (const TField &field : station.grid()->dataSet()->fields())
        fields.append(field.name.toUpper());
    QCOMPARE(fields.first(2), (QStringList{u"CLIENTE"_s, u"NOME"_s}));
    QCOMPARE(fields.last(3), (QStringList{u"MATERIAL"_s, u"DESCRICAO"_s, u"LOTE"_s}));
    QCOMPARE(station.text(u"lbResultado"_s), u"2 registros"_s);
}

void TestRelRegistros::eachOrderSortsInItsWay_data()
{
    QTest::addColumn<QString>("choice");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("client and order") << u"rbClienteOF"_s << allByClient;
    QTest::newRow("order") << u"rbOF"_s
                           << QStringList{
                                  u"000012/001"_s, u"000012/002"_s, u"000013/001"_s, u"000013/010"_s, u"000014/001"_s};
    // The order's date: the rolls of the last order came last, and the second roll of the first came before its first.
    QTest::newRow("date") << u"rbData"_s
                          << QStringList{
                                 u"000014/001"_s, u"000013/001"_s, u"000013/010"_s, u"000012/001"_s, u"000012/002"_s};
}

void TestRelRegistros::eachOrderSortsInItsWay()
{
    QFETCH(const QString, choice);
    RegisterStation station;
    station.insertRolls();
    station.openOn(u"000012"_s, u"000014"_s);
    station.click(choice);
    QTEST(station.lines(), "lines");
}

void TestRelRegistros::rollNumbersSortAsNumbers()
{
    RegisterStation station;
    Orders::insert(station.database, {});
    for (const QString &number : {u"1001"_s, u"999"_s, u"1000"_s})
        station.roll(u"000012"_s, number, u"03/02/2026"_s, u"000101"_s, 20);
    station.openOn(u"000012"_s, u"000012"_s);
    QCOMPARE(station.lines(), (QStringList{u"000012/999"_s, u"000012/1000"_s, u"000012/1001"_s}));
    station.enter(u"edtBaixaIni"_s, u"1000"_s);
    QCOMPARE(station.lines(), (QStringList{u"000012/1000"_s, u"000012/1001"_s}));
}

void TestRelRegistros::theOrdersCompareAsText()
{
    RegisterStation station;
    station.insertRolls();
    station.openOn(u"000013"_s, u"1"_s);
    QCOMPARE(station.lines(), (QStringList{u"000014/001"_s, u"000013/001"_s, u"000013/010"_s}));
    station.enter(u"edtOfIni"_s, u"13"_s);
    station.enter(u"edtOfFim"_s, u"14"_s);
    QCOMPARE(station.lines(), QStringList());
}

void TestRelRegistros::everyFilterFindsByItself_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("client") << u"edtClienteCod"_s << u"00001"_s << QStringList{u"000014/001"_s};
    QTest::newRow("fabric") << u"edtMatCod"_s << u"M0002"_s << QStringList{u"000013/001"_s, u"000013/010"_s};
    QTest::newRow("first roll") << u"edtBaixaIni"_s << u"002"_s << QStringList{u"000012/002"_s, u"000013/010"_s};
    QTest::newRow("last roll") << u"edtBaixaFim"_s << u"001"_s
                               << QStringList{u"000014/001"_s, u"000012/001"_s, u"000013/001"_s};
    QTest::newRow("lot") << u"edtLote"_s << u"B7"_s << QStringList{u"000014/001"_s};
    QTest::newRow("operator") << u"edtFuncCod"_s << u"000102"_s << QStringList{u"000012/002"_s};
    QTest::newRow("machine") << u"edtCodMaq"_s << u"002"_s << QStringList{u"000012/001"_s, u"000012/002"_s};
    QTest::newRow("blank") << u"edtClienteCod"_s << u"  "_s << allByClient;
}

void TestRelRegistros::everyFilterFindsByItself()
{
    QFETCH(const QString, field);
    QFETCH(const QString, text);
    RegisterStation station;
    station.insertRolls();
    station.openOn(u"000012"_s, u"000014"_s);
    station.enter(field, text);
    QTEST(station.lines(), "lines");
}

void TestRelRegistros::theLotMatchesAnywhere()
{
    RegisterStation station;
    station.insertRolls();
    Orders::insert(station.database, {.number = u"000015"_s});
    station.database.run(u"UPDATE {OF_MALHA} SET LOTE = '12' WHERE NUM_OF = '000015'"_s);
    station.roll(u"000015"_s, u"001"_s, u"03/04/2026"_s, u"000101"_s, 20);
    station.openOn(u"000012"_s, u"000015"_s);
    station.enter(u"edtLote"_s, u"12"_s);
    // The lots 12, A12 and 120.
    QCOMPARE(station.lines(),
        (QStringList{u"000015/001"_s, u"000012/001"_s, u"000012/002"_s, u"000013/001"_s, u"000013/010"_s}));
}

void TestRelRegistros::thePeriodIsThatOfTheRolls_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("one day") << u"03/03/2026"_s << u"03/03/2026"_s << QStringList{u"000013/001"_s, u"000013/010"_s};
    QTest::newRow("both ends") << u"02/03/2026"_s << u"05/03/2026"_s << allByClient;
    QTest::newRow("open at its beginning") << QString() << u"02/03/2026"_s << QStringList{u"000012/002"_s};
    QTest::newRow("open at its end") << u"05/03/2026"_s << QString() << QStringList{u"000014/001"_s};
    QTest::newRow("the order's own date") << u"27/02/2026"_s << u"27/02/2026"_s << QStringList{};
}

void TestRelRegistros::thePeriodIsThatOfTheRolls()
{
    QFETCH(const QString, from);
    QFETCH(const QString, to);
    RegisterStation station;
    station.insertRolls();
    station.openOn(u"000012"_s, u"000014"_s);
    station.enter(u"edtDataIni"_s, from);
    station.enter(u"edtDataFim"_s, to);
    QTEST(station.lines(), "lines");
}

void TestRelRegistros::codesAreDescribedAndNotRefused()
{
    RegisterStation station;
    station.insertRolls();
    station.openOn(u"000012"_s, u"000014"_s);
    const std::tuple<QString, QString, QString, QString> fields[]{
        {u"edtClienteCod"_s, u"00002"_s, u"edtClienteNome"_s, u"Malhas São Bento S.A."_s},
        {u"edtMatCod"_s, u"M0002"_s, u"edtMatDesc"_s, u"Ribana 2x1"_s},
        {u"edtFuncCod"_s, u"000101"_s, u"edtFuncNome"_s, u"Ana Souza"_s},
        {u"edtCodMaq"_s, u"002"_s, u"edtNomeMaq"_s, u"Vale Claro 2"_s}};
    for (const auto &[field, code, name, text] : fields) {
        station.enter(field, code);
        QCOMPARE(station.text(name), text);
        station.enter(field, u"777"_s);
        QCOMPARE(station.text(name), QString());
        QCOMPARE(station.lines(), QStringList());
        station.enter(field, {});
    }
    QCOMPARE(station.lines(), allByClient);
}

void TestRelRegistros::hostileTextFindsNothing()
{
    RegisterStation station;
    station.insertRolls();
    station.openOn(u"000012"_s, u"000014"_s);
    for (const QString &field : {u"edtLote"_s, u"edtMatCod"_s, u"edtClienteCod"_s, u"edtFuncCod"_s}) {
        for (const QString &text : {u"' OR 1"_s, u"x'--"_s, u"{X}"_s}) {
            station.enter(field, text);
            QCOMPARE(station.lines(), QStringList());
        }
        station.enter(field, {});
    }
    QCOMPARE(station.lines(), allByClient);
}

void TestRelRegistros::nothingFoundIsSaidAndNotPrinted()
{
    RegisterStation station;
    station.insertRolls();
    station.openOn(u"000099"_s, u"000099"_s);
    station.checkNothingFound();
}

void TestRelRegistros::aFailedStatementLeavesTheScreenReady()
{
    RegisterStation station;
    station.database.run(u"DROP TABLE {OF_MALHA_BAIXAS}"_s);
    station.openOn(u"000012"_s, u"000014"_s);
    station.checkRefusedStatement();
}

void TestRelRegistros::theSpreadsheetBearsTheFiguresOfTheGrid()
{
    RegisterStation station;
    station.insertRolls();
    station.openOn(u"000012"_s, u"000014"_s);
    QCOMPARE(station.lines(), allByClient);
    const ExportedGrid sheet(station);
    QCOMPARE(sheet.rowCount(), 5);
    QCOMPARE(sheet.column(u"Quantidade"_s), (QStringList{u"10"_s, u"20.5"_s, u"19.125"_s, u"25"_s, u"24"_s}));
    QCOMPARE(sheet.column(u"Baixa"_s), (QStringList{u"001"_s, u"001"_s, u"002"_s, u"001"_s, u"010"_s}));
    QCOMPARE(sheet.column(u"OF"_s).first(), u"000014"_s);
}

void TestRelRegistros::clientsAndOrdersHaveTheirTotalsOnPaper()
{
    RegisterStation station;
    Paper paper(station.host);
    station.insertRolls();
    station.openOn(u"000012"_s, u"000014"_s);
    const RecordedReport report = station.print();
    QCOMPARE(report.name, u"WMalRegi"_s);
    QCOMPARE(report.kind, ReportCall::Kind::Graphic);
    QCOMPARE(report.dataSets, QStringList{u"qryRelatorio"_s});
    const QString text = paper.flatText();
    QCOMPARE(firstMissing(text,
                 {u"Registro quantitativo"_s, u"OF: 000012 a 000014"_s, u"Ordem: Cliente/OF"_s,
                     u"Cliente 00001 Confecções Serra Azul Ltda"_s, u"OF 000014 M0001 Meia-malha PV 60/40 Lote B7"_s,
                     u"001 05/03/2026 08:05:09 1 000101 10,000"_s, u"Total da OF 1 rolo 10,000"_s,
                     u"Total do cliente 1 rolo 10,000"_s, u"Cliente 00002 Malhas São Bento S.A."_s,
                     u"Total da OF 2 rolos 39,625"_s, u"Total da OF 2 rolos 49,000"_s,
                     u"Total do cliente 4 rolos 88,625"_s, u"Total geral 5 rolos 98,625"_s, u"Página 1 de 1"_s}),
        QString());
}

void TestRelRegistros::thePaperFollowsTheOrder()
{
    RegisterStation station;
    Paper paper(station.host);
    station.insertRolls();
    station.openOn(u"000012"_s, u"000014"_s);
    station.click(u"rbOF"_s);
    QCOMPARE(station.lines().first(), u"000012/001"_s);
    station.click(u"rbClienteOF"_s); // not asked for yet
    station.print();
    const QString text = paper.flatText();
    QVERIFY2(!text.contains(u"Total do cliente"_s), qPrintable(text));
    QVERIFY2(text.contains(u"Ordem: OF"_s), qPrintable(text));
    QVERIFY2(text.contains(u"00002 Malhas São Bento S.A."_s), qPrintable(text));
    QVERIFY(text.indexOf(u"OF 000012"_s) < text.indexOf(u"OF 000014 "_s));
    QVERIFY2(text.contains(u"Total geral 5 rolos 98,625"_s), qPrintable(text));
}

void TestRelRegistros::longFiltersAndNamesAreNotCut()
{
    const QString client = u"Companhia Industrial de Confecções e Malharia do Vale do Itapocu e Região Cliente"_s;
    const QString fabric =
        u"Meia-malha penteada de algodão e poliéster com elastano para moletinho flanelado de inverno Malha"_s;
    RegisterStation station;
    Paper paper(station.host);
    station.insertRolls();
    station.database.run(u"UPDATE {ENTIDADE} SET NOME = '%1' WHERE CODCLI = '00001'"_s.arg(client.left(80)));
    station.database.run(u"UPDATE {MATERIAL} SET DESCRICAO = '%1' WHERE CODIGO = 'M0001'"_s.arg(fabric));
    station.openOn(u"000012"_s, u"000014"_s);
    const std::pair<QString, QString> filters[]{{u"edtClienteCod"_s, u"00001"_s}, {u"edtMatCod"_s, u"M0001"_s},
        {u"edtBaixaIni"_s, u"001"_s}, {u"edtBaixaFim"_s, u"001"_s}, {u"edtLote"_s, u"B7"_s},
        {u"edtFuncCod"_s, u"000101"_s}, {u"edtCodMaq"_s, u"001"_s}};
    for (const auto &[field, text] : filters)
        station.enter(field, text);
    for (const QString &order : {u"rbClienteOF"_s, u"rbData"_s}) {
        station.click(order);
        QCOMPARE(station.lines(), QStringList{u"000014/001"_s});
        station.print();
        const QString text = paper.flatText();
        QVERIFY2(text.contains(u"Máquina: 001 Serra Azul 1"_s), qPrintable(text));
        QCOMPARE(text.count(u"inverno"_s), 2); // in the filters and above the rolls
        QVERIFY2(!text.contains(u'…'), qPrintable(text));
        QCOMPARE(paper.pages(), 1);
    }
}

void TestRelRegistros::totalsStandOnEachPage()
{
    RegisterStation station;
    Paper paper(station.host);
    Orders::insert(station.database, {});
    for (int roll = 1; roll <= 250; ++roll) // more than a query fetches at once
        station.roll(u"000012"_s, QString::number(roll).rightJustified(3, u'0'), u"03/02/2026"_s, u"000101"_s, 20.125);
    station.openOn(u"000012"_s, u"000012"_s);
    station.print();
    QVERIFY(paper.pages() > 3);
    double kg = 0;
    int rolls = 0;
    for (int page = 1; page <= paper.pages(); ++page) {
        const QString text = paper.flatText(page);
        QVERIFY2(text.contains(u"Baixa Data Hora Turno Funcionário Quantidade (kg)"_s), qPrintable(text));
        const QStringList total =
            text.section(u"Nesta página "_s, 1).section(u'\n', 0, 0).split(u' ', Qt::SkipEmptyParts);
        rolls += total.value(0).toInt();
        kg += Format::parseNumber(total.value(2)).value_or(-1);
    }
    QCOMPARE(rolls, 250);
    QCOMPARE(kg, 5031.25);
    QVERIFY(paper.flatText().contains(u"Total geral 250 rolos 5.031,250"_s));
}

QTEST_MAIN(TestRelRegistros)
#include "tst_relregistros.moc"
