// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/reports/reportstation.h"

#include "module/host_services/clientdataset.h"

#include <QGroupBox>
#include <QRadioButton>

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

namespace {

const QString caption = QStringLiteral("Relatorio de OFs");

class SheetStation : public ReportStation
{
public:
    SheetStation()
        : ReportStation(u"TfmRelOrdFab"_s)
    {
    }

    void insertOrder(const Orders::Order &order = {}) { Orders::insert(database, order); }
    void reserve(const QString &order, const QString &yarn, const QString &lot, double kg)
    {
        database.run(
            u"INSERT INTO {BAIXA_FIO} (NUMERO, DOCTO, CODIGO, LOTE, QTDE) VALUES ('%1', '1001', '%2', '%3', %4)"_s.arg(
                order, yarn, lot, SqlText::number(kg)));
    }
    QStringList orders() { return consult(u"NUM_OF"_s, u"gdOrdens"_s); }
    /// "order:number" of every line of the roll sheets.
    QStringList sheetLines() const
    {
        const auto *items = form()->findChild<TClientDataSet *>(u"tbItens"_s);
        QStringList lines;
        for (int row = 0; row < items->rowCount(); ++row)
            lines.append(items->cell(row, 0).toString() + u':' + items->cell(row, 1).toString());
        return lines;
    }
};

} // namespace

/// The sheets that are printed for orders.
class TestRelOrdFab : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void everyControlBearsItsCaption();
    void itOpensWithoutFiltersForInkOrLaser();
    void aSheetHasALineForEveryRollAndThreeMore_data();
    void aSheetHasALineForEveryRollAndThreeMore();
    void everyOrderHasItsOwnLines();
    void theSheetsColumnsAreTextsOfTheirSizes();
    void withoutFiltersEveryOrderIsReadByNumber();
    void everyFilterFindsByItself_data();
    void everyFilterFindsByItself();
    void theHeaderShowsWhatTheCodesStandFor();
    void theCompositionComesByOrderAndYarn();
    void theReservedYarnIsThatOfTheNumber();
    void anOrderWithoutReservedYarnIsPrinted();
    void thePrinterChoosesTheLayout_data();
    void thePrinterChoosesTheLayout();
    void anotherConsultationReplacesTheSheets();
    void anOrderWithTooManyRollsIsNamed();
    void aWrongClientGetsItsMessageAndItsSearch();
    void nothingFoundIsSaidAndNotPrinted();
    void aFailedStatementLeavesTheScreenReady();
    void hostileTextFindsNothing();
};

void TestRelOrdFab::everyControlBearsItsCaption()
{
    SheetStation station;
    station.openReport();
    QCOMPARE(station.form()->windowTitle(), caption);
    QCOMPARE(station.captions({u"lbPeriodo"_s, u"lbDe"_s, u"lbAte"_s, u"lbNumero"_s, u"lbCliente"_s}),
        (QStringList{u"Período de Datas"_s, u"De"_s, u"Até"_s, u"Número"_s, u"Cliente"_s}));
    QCOMPARE(station.child<QGroupBox>(u"rgImpressora"_s)->title(), u"Tipo Impressora"_s);
    QCOMPARE(
        station.captions({u"rbMatricial"_s, u"rbJatoTinta"_s}), (QStringList{u"Matricial"_s, u"Jato Tinta/Laser"_s}));
    QCOMPARE(station.text(u"BtnExecutaSQL"_s), u"&Confirmar"_s);
    QCOMPARE(station.text(u"BtnImprimir"_s), u"Imprimir"_s);
    QCOMPARE(station.text(u"BitBtn5"_s), u"&Fechar"_s);
}

void TestRelOrdFab::itOpensWithoutFiltersForInkOrLaser()
{
    SheetStation station;
    station.insertOrder();
    station.openReport();
    for (const QString &field : {u"edtDataIni"_s, u"edtDataFim"_s, u"edtNumero"_s, u"edtCliCod"_s})
        QCOMPARE(station.text(field), QString());
    QVERIFY(station.child<QRadioButton>(u"rbJatoTinta"_s)->isChecked());
    QCOMPARE(station.rows(u"gdOrdens"_s), QStringList());
    QCOMPARE(station.focus(), u"edtDataIni"_s);
}

void TestRelOrdFab::aSheetHasALineForEveryRollAndThreeMore_data()
{
    QTest::addColumn<double>("total");
    QTest::addColumn<double>("roll");
    QTest::addColumn<QStringList>("numbers");
    QTest::newRow("whole rolls") << 100.0 << 25.0 << QStringList{u"001"_s, u"002"_s, u"003"_s, u"004"_s, {}, {}, {}};
    QTest::newRow("a rest that is no roll") << 70.0 << 25.0 << QStringList{u"001"_s, u"002"_s, {}, {}, {}};
    QTest::newRow("0,1 has no exact binary form")
        << 0.3 << 0.1 << QStringList{u"001"_s, u"002"_s, u"003"_s, {}, {}, {}};
    QTest::newRow("less than a roll") << 10.0 << 25.0 << QStringList{{}, {}, {}};
    QTest::newRow("no roll weight") << 100.0 << 0.0 << QStringList{{}, {}, {}};
}

void TestRelOrdFab::aSheetHasALineForEveryRollAndThreeMore()
{
    QFETCH(double, total);
    QFETCH(double, roll);
    QFETCH(QStringList, numbers);
    SheetStation station;
    station.insertOrder({.rollKg = roll, .totalKg = total});
    station.openReport();
    QCOMPARE(station.orders(), QStringList{u"000012"_s});
    QStringList expected;
    for (const QString &number : numbers)
        expected.append(u"000012:"_s + number);
    QCOMPARE(station.sheetLines(), expected);
}

void TestRelOrdFab::everyOrderHasItsOwnLines()
{
    SheetStation station;
    station.insertOrder({.number = u"000002"_s, .rollKg = 50});
    station.insertOrder({.number = u"000001"_s, .rollKg = 100});
    station.database.run(u"INSERT INTO {OF_MALHA} (NUM_OF) VALUES ('000003')"_s); // weights still to come
    station.openReport();
    QCOMPARE(station.orders(), (QStringList{u"000001"_s, u"000002"_s, u"000003"_s}));
    QCOMPARE(station.sheetLines(),
        (QStringList{u"000001:001"_s, u"000001:"_s, u"000001:"_s, u"000001:"_s, u"000002:001"_s, u"000002:002"_s,
            u"000002:"_s, u"000002:"_s, u"000002:"_s, u"000003:"_s, u"000003:"_s, u"000003:"_s}));
}

void TestRelOrdFab::theSheetsColumnsAreTextsOfTheirSizes()
{
    SheetStation station;
    station.insertOrder();
    station.openReport();
    station.orders();
    const auto *items = station.form()->findChild<TClientDataSet *>(u"tbItens"_s);
    QStringList columns;
    for (const TField &field : items->fields()) {
        QCOMPARE(field.type, TField::Type::Text);
        columns.append(field.name + QString::number(field.size));
    }
    QCOMPARE(columns.join(u' '),
        u"Numero8 NR4 F_Tecido10 Furo_Fio15 Corte15 F_Corr15 Pe_Gal15 Total_Def15 Peso30 Data30 Observacao30"_s);
    for (int column = 2; column < items->fields().size(); ++column)
        QVERIFY(items->cell(0, column).isNull());
}

void TestRelOrdFab::withoutFiltersEveryOrderIsReadByNumber()
{
    SheetStation station;
    station.insertOrder({.number = u"000300"_s, .date = u"03/11/2031"_s});
    station.insertOrder({.number = u"000020"_s, .date = {}});
    station.insertOrder({.number = u"000001"_s, .date = u"01/15/1999"_s});
    station.openReport();
    QCOMPARE(station.orders(), (QStringList{u"000001"_s, u"000020"_s, u"000300"_s}));
    QCOMPARE(station.print().rowCounts.first(), 3);
}

void TestRelOrdFab::everyFilterFindsByItself_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QStringList>("found");
    QTest::newRow("from") << u"edtDataIni"_s << u"28/02/2026"_s << QStringList{u"000002"_s, u"000003"_s};
    QTest::newRow("to") << u"edtDataFim"_s << u"28/02/2026"_s << QStringList{u"000001"_s, u"000002"_s};
    QTest::newRow("number") << u"edtNumero"_s << u"000003"_s << QStringList{u"000003"_s};
    QTest::newRow("client") << u"edtCliCod"_s << u"00002"_s << QStringList{u"000002"_s};
}

void TestRelOrdFab::everyFilterFindsByItself()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    QFETCH(QStringList, found);
    SheetStation station;
    station.insertOrder({.number = u"000001"_s, .date = u"01/15/2026"_s});
    station.insertOrder({.number = u"000002"_s, .date = u"02/28/2026"_s, .client = u"00002"_s});
    station.insertOrder({.number = u"000003"_s, .date = u"03/01/2026"_s});
    station.insertOrder({.number = u"000004"_s, .date = {}});
    station.openReport();
    station.enter(field, value);
    QCOMPARE(station.orders(), found);
    // The composition meets the same filters.
    QStringList composed = station.column(u"NUM_OF"_s, u"gdComposicao"_s);
    composed.removeDuplicates();
    QCOMPARE(composed, found);
}

void TestRelOrdFab::theHeaderShowsWhatTheCodesStandFor()
{
    SheetStation station;
    station.database.run(u"UPDATE {MATERIAL} SET DESCRICAO2 = 'Penteada' WHERE CODIGO = 'M0001'"_s);
    station.insertOrder({.totalKg = 1250.5, .observation = u"Fio D'água, sem emenda"_s});
    station.openReport();
    station.orders();
    TDataSet &header = *station.grid(u"gdOrdens"_s)->dataSet();
    QStringList shown;
    for (const TField &field : header.fields())
        shown.append(field.name + u'=' + field.text(header.value(field.name)));
    QCOMPARE(shown,
        (QStringList{u"CLIENTE=00001"_s, u"NOME=Confecções Serra Azul Ltda"_s, u"DATA=02/03/2026"_s,
            u"KG_ROLO=20,000"_s, u"KG_TOTAL=1.250,500"_s, u"MATCOMPCOD=M0001"_s, u"NUM_OF=000012"_s,
            u"MATCOMPDESC=Meia-malha PV 60/40"_s, u"MATDESC2=Penteada"_s, u"MAQUINA=001"_s,
            u"MAQUINA_DESC=Circular 30\" 28 agulhas"_s, u"MAQUINA_NOME=Serra Azul 1"_s,
            u"OBSERVACAO=Fio D'água, sem emenda"_s}));
}

void TestRelOrdFab::theCompositionComesByOrderAndYarn()
{
    SheetStation station;
    station.insertOrder({.number = u"000002"_s});
    station.insertOrder({.number = u"000001"_s, .material = u"M0002"_s});
    station.insertOrder({.number = u"000003"_s, .material = u"GONE"_s});
    station.openReport();
    station.orders();
    QCOMPARE(station.rows(u"gdComposicao"_s),
        (QStringList{u"000001|Fio algodão 30/1 penteado|30/1|310|60|FIO30CO"_s,
            u"000002|Fio poliéster 150/48|150/48|290|48|FIO150PES"_s,
            u"000002|Fio algodão 30/1 penteado|30/1|290|48|FIO30CO"_s, u"000003|||||"_s}));
}

void TestRelOrdFab::theReservedYarnIsThatOfTheNumber()
{
    SheetStation station;
    station.insertOrder({.number = u"000001"_s});
    station.insertOrder({.number = u"000002"_s});
    station.reserve(u"000001"_s, u"FIO30CO"_s, u"L2"_s, 60.125);
    station.reserve(u"000001"_s, u"FIO30CO"_s, u"L1"_s, 10);
    station.reserve(u"000002"_s, u"FIO150PES"_s, u"L9"_s, 40);
    station.openReport();
    QCOMPARE(station.orders().size(), 2);
    QCOMPARE(station.rows(u"gdFios"_s), QStringList()); // of no order in particular
    station.enter(u"edtNumero"_s, u"000001"_s);
    QCOMPARE(station.orders().size(), 1);
    QCOMPARE(station.rows(u"gdFios"_s),
        (QStringList{u"Fio algodão 30/1 penteado|L1|10,000|1001|FIO30CO"_s,
            u"Fio algodão 30/1 penteado|L2|60,125|1001|FIO30CO"_s}));
    QCOMPARE(station.print().rowCounts, (QList<int>{1, 2, 2, 8}));
}

void TestRelOrdFab::anOrderWithoutReservedYarnIsPrinted()
{
    SheetStation station;
    station.insertOrder();
    station.openReport();
    station.enter(u"edtNumero"_s, u"000012"_s);
    const RecordedReport report = station.print();
    QCOMPARE(report.dataSets, (QStringList{u"qryCabecalho"_s, u"qryMateriais"_s, u"qryFios"_s, u"tbItens"_s}));
    QCOMPARE(report.rowCounts, (QList<int>{1, 2, 0, 8}));
}

void TestRelOrdFab::thePrinterChoosesTheLayout_data()
{
    QTest::addColumn<QString>("choice");
    QTest::addColumn<QString>("layout");
    QTest::addColumn<int>("kind");
    QTest::newRow("matrix") << u"rbMatricial"_s << u"TMalOF"_s << int(ReportCall::Kind::Text);
    QTest::newRow("ink or laser") << u"rbJatoTinta"_s << u"WMalOF"_s << int(ReportCall::Kind::Graphic);
}

void TestRelOrdFab::thePrinterChoosesTheLayout()
{
    QFETCH(QString, choice);
    QFETCH(int, kind);
    SheetStation station;
    station.insertOrder();
    station.openReport();
    station.click(choice);
    const RecordedReport report = station.print();
    QTEST(report.name, "layout");
    QCOMPARE(int(report.kind), kind);
}

void TestRelOrdFab::anotherConsultationReplacesTheSheets()
{
    SheetStation station;
    station.insertOrder({.number = u"000001"_s});
    station.insertOrder({.number = u"000002"_s, .rollKg = 100});
    station.openReport();
    QCOMPARE(station.orders().size(), 2);
    station.enter(u"edtNumero"_s, u"000002"_s);
    QCOMPARE(station.orders(), QStringList{u"000002"_s});
    QCOMPARE(station.sheetLines().join(u' '), u"000002:001 000002: 000002: 000002:"_s);
}

void TestRelOrdFab::anOrderWithTooManyRollsIsNamed()
{
    SheetStation station;
    station.insertOrder({.number = u"000001"_s});
    station.insertOrder({.number = u"000002"_s, .rollKg = 1, .totalKg = 10000});
    station.openReport();
    expectFailure(station.answers, caption, u"A OF 000002 daria 10000 etiquetas. Verifique o peso e o KG Rolo."_s);
    station.click(u"BtnExecutaSQL"_s);
    QVERIFY(station.answers.allCame());
    station.checkReady();
    station.enter(u"edtNumero"_s, u"000001"_s);
    QCOMPARE(station.print().rowCounts, (QList<int>{1, 2, 0, 8}));
}

void TestRelOrdFab::aWrongClientGetsItsMessageAndItsSearch()
{
    SheetStation station;
    station.openReport();
    station.checkWrongCode(u"edtCliCod"_s, u"Cliente inválido."_s, u"Clientes"_s, u"bento"_s);
    QCOMPARE(station.text(u"edtCliCod"_s), u"00002"_s);
    QCOMPARE(station.text(u"edtCliNome"_s), u"Malhas São Bento S.A."_s);
}

void TestRelOrdFab::nothingFoundIsSaidAndNotPrinted()
{
    SheetStation station;
    station.openReport();
    station.checkNothingFound();
}

void TestRelOrdFab::aFailedStatementLeavesTheScreenReady()
{
    SheetStation station;
    station.insertOrder();
    station.database.run(u"DROP TABLE {BAIXA_FIO}"_s); // which is read last
    station.openReport();
    station.checkRefusedStatement();
    station.expectRefusedStatement();
    QCOMPARE(station.print().name, QString()); // half a sheet is not printed
}

void TestRelOrdFab::hostileTextFindsNothing()
{
    SheetStation station;
    station.insertOrder();
    station.openReport();
    for (const QString &text : {u"' OR 1"_s, u"%"_s, u"{X}"_s, u"'--"_s}) {
        station.enter(u"edtNumero"_s, text);
        QCOMPARE(station.orders(), QStringList());
        QCOMPARE(station.sheetLines(), QStringList());
    }
}

QTEST_MAIN(TestRelOrdFab)
#include "tst_relordemfab.moc"
