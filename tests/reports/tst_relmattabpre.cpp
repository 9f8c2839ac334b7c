// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/reports/figures.h"
#include "tests/support/paper.h"

#include <QRadioButton>

using namespace Qt::StringLiterals;

namespace {

const QStringList instalments{QStringLiteral("PRECO_00"), QStringLiteral("PRECO_07"), QStringLiteral("PRECO_14"),
    QStringLiteral("PRECO_21"), QStringLiteral("PRECO_28"), QStringLiteral("PRECO_35"), QStringLiteral("PRECO_42"),
    QStringLiteral("PRECO_49"), QStringLiteral("PRECO_56"), QStringLiteral("PRECO_63"), QStringLiteral("PRECO_70"),
    QStringLiteral("PRECO_77"), QStringLiteral("PRECO_84"), QStringLiteral("PRECO_91")};

class PriceListStation : public ReportStation
{
public:
    PriceListStation()
        : ReportStation(u"TfmRelMatTabPre"_s)
    {
        database.run(u"INSERT INTO {REGIAO} (REGIAO, DESCRICAO) VALUES ('001', 'Praça Sul')"_s);
    }

    /// Fourteen prices, each `step` above the one before; what the columns are called from "PRECO_00" on.
    void insertPrice(const QString &code, double first, double step, double mean, const QString &colourGroup = u"00"_s,
        const QString &region = u"001"_s)
    {
        QStringList values{SqlText::quoted(region), SqlText::quoted(code), SqlText::quoted(colourGroup)};
        for (int i = 0; i < instalments.size(); ++i)
            values.append(QString::number(first + i * step, 'f', 4));
        values.append(SqlText::number(mean));
        database.run(u"INSERT INTO {TABPRECO} (REGIAO, CODIGO, GRUPO_COR, %1, PRECO_MEDIO) VALUES (%2)"_s.arg(
            instalments.join(u", "_s), values.join(u", "_s)));
    }
    void insertMaterial(const QString &code, const QString &description, const QString &group = u"150"_s,
        const QString &client = u"00001"_s)
    {
        database.run(u"INSERT INTO {MATERIAL} (CODIGO, DESCRICAO, GRUPO, CODCLI) VALUES ('%1', '%2', '%3', '%4')"_s.arg(
            code, description, group, client));
    }
    /// Two of the client's fabrics, one of them in two colour groups, and one of another client and group.
    void insertList()
    {
        insertMaterial(u"A0009"_s, u"Xadrez leve"_s);
        insertPrice(u"A0009"_s, 3, 0, 3);
        insertPrice(u"M0001"_s, 5, 0.05, 5.325, u"01"_s);
        insertPrice(u"M0001"_s, 4.8, 0.05, 5.125);
        insertPrice(u"M0002"_s, 6.1025, 0, 6.1025);
    }
    QStringList list(const QString &field = u"CODIGO"_s) { return consult(field); }
};

} // namespace

/// The report of the prices of a region.
class TestRelMatTabPre : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void everyControlBearsItsCaption();
    void itOpensOnTableOneByTheChoiceCode();
    void theKeyboardAloneIsEnough();
    void aRowShowsMaterialRegionGroupAndFourteenPrices();
    void aColumnThatIsSelectedTwiceIsReadByItsName();
    void aMaterialWithoutAPriceInTheRegionIsNotListed();
    void aMaterialIsListedOncePerColourGroup();
    void choicesAndOrdersAreCrossed();
    void aClientHasOnlyItsOwnMaterials();
    void gridPaperAndSheetShowTheSameFigures();
    void thePaperStandsByMaterialGroup();
    void aGroupStaysWithItsMeans();
    void aLongListIsPrintedWhole();
    void wrongCodesGetTheirMessageAndTheirSearch();
    void nothingFoundIsSaidAndNotPrinted();
    void aFailedStatementLeavesTheScreenReady();
    void hostileTextFindsNothing();
    void theSharedTablesCloseWithTheScreen();
};

void TestRelMatTabPre::everyControlBearsItsCaption()
{
    PriceListStation station;
    station.openReport();
    QCOMPARE(station.form()->windowTitle(), u"Relatório de Tabela de Preços"_s);
    QCOMPARE(station.captions({u"lbTabela"_s, u"lbCliente"_s, u"rbCodigo"_s, u"rbDescricao"_s}),
        (QStringList{u"Tabela"_s, u"Cliente"_s, u"Código"_s, u"Descrição"_s}));
    QCOMPARE(station.text(u"ComfirmaRepresen"_s), u"&Confirmar"_s);
    QCOMPARE(station.text(u"ImprimiRepresen"_s), u"&Imprimir"_s);
    QCOMPARE(station.text(u"BitBtn1"_s), u"&Fechar"_s);
}

void TestRelMatTabPre::itOpensOnTableOneByTheChoiceCode()
{
    PriceListStation station;
    station.insertList();
    station.openReport();
    QCOMPARE(station.text(u"edtTabPre_CodReg"_s), u"001"_s);
    QCOMPARE(station.text(u"edtTabPre_DescReg"_s), u"Praça Sul"_s);
    QCOMPARE(station.text(u"EdtCodCli"_s), QString());
    QVERIFY(station.child<QRadioButton>(u"rbCodigo"_s)->isChecked());
    QCOMPARE(station.rows(), QStringList());
    QCOMPARE(station.focus(), u"edtTabPre_CodReg"_s);
}

void TestRelMatTabPre::theKeyboardAloneIsEnough()
{
    PriceListStation station;
    station.insertList();
    station.openReport();
    for (const QString &next : {u"EdtCodCli"_s, u"rbCodigo"_s, u"ComfirmaRepresen"_s}) {
        station.key(Qt::Key_Tab);
        QCOMPARE(station.focus(), next);
    }
    station.key(Qt::Key_Return);
    QCOMPARE(station.rows().size(), 4);
    station.key(Qt::Key_Tab);
    QCOMPARE(station.focus(), u"ImprimiRepresen"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.host.recordedReports().size(), 1);
    station.key(Qt::Key_Escape);
    QTRY_VERIFY(!station.form());
}

void TestRelMatTabPre::aRowShowsMaterialRegionGroupAndFourteenPrices()
{
    PriceListStation station;
    station.insertPrice(u"M0001"_s, 4.8, 0.05, 5.125);
    station.openReport();
    QCOMPARE(station.list(u"PRECO_MEDIO"_s), QStringList{u"5,125"_s});
    QCOMPARE(station.rows(),
        QStringList{u"Meia-malha PV 60/40|M0001|4,80|4,85|4,90|4,95|5,00|5,05|5,10|5,15|5,20|5,25|5,30|5,35|5,40|5,45"
                    "|5,125|Malhas de terceiros|150|Praça Sul|001"_s});
    QCOMPARE(station.grid()->dataSet()->AsString(u"OPCOES"_s), u"N"_s);
}

void TestRelMatTabPre::aColumnThatIsSelectedTwiceIsReadByItsName()
{
    PriceListStation station;
    station.insertPrice(u"M0001"_s, 1, 1, 7.5);
    station.openReport();
    QCOMPARE(station.list(u"PRECO_84"_s), QStringList{u"13,00"_s});
    QCOMPARE(station.column(u"PRECO_91"_s), QStringList{u"14,00"_s});
    QStringList names;
    for (const TField &field : station.grid()->dataSet()->fields())
        names.append(field.name);
    QCOMPARE(names.join(u' '),
        u"LOCAL CODIGO DESCRICAO GRUPO PRECO_00 PRECO_07 OPCOES DESGRUPO PRECO_14 PRECO_21 PRECO_28 PRECO_35 PRECO_42 "
        "PRECO_49 PRECO_56 PRECO_63 PRECO_70 PRECO_77 PRECO_84 PRECO_84 PRECO_91 PRECO_MEDIO REGIAO"_s);
    Paper paper(station.host);
    station.print();
    QVERIFY2(paper.flatText().contains(u"12,00 13,00 14,00 7,50"_s), qPrintable(paper.text()));
}

void TestRelMatTabPre::aMaterialWithoutAPriceInTheRegionIsNotListed()
{
    PriceListStation station;
    station.insertPrice(u"M0001"_s, 4.8, 0.05, 5.125);
    station.insertPrice(u"M0002"_s, 7, 0, 7, u"00"_s, u"01"_s);
    station.openReport();
    QCOMPARE(station.list(), QStringList{u"M0001"_s});
    station.enter(u"edtTabPre_CodReg"_s, u"01"_s);
    QCOMPARE(station.list(), QStringList{u"M0002"_s});
    QCOMPARE(station.column(u"LOCAL"_s), QStringList{u"Sul"_s});
}

void TestRelMatTabPre::aMaterialIsListedOncePerColourGroup()
{
    PriceListStation station;
    station.insertPrice(u"M0001"_s, 5.2, 0, 5.2, u"02"_s);
    station.insertPrice(u"M0001"_s, 5, 0, 5, u"01"_s);
    station.insertPrice(u"M0001"_s, 4.8, 0, 4.8, u"00"_s);
    station.openReport();
    QCOMPARE(station.list(), (QStringList{u"M0001"_s, u"M0001"_s, u"M0001"_s}));
    QCOMPARE(station.column(u"PRECO_00"_s), (QStringList{u"4,80"_s, u"5,00"_s, u"5,20"_s}));
}

void TestRelMatTabPre::choicesAndOrdersAreCrossed()
{
    PriceListStation station;
    station.insertList();
    station.openReport();
    QCOMPARE(station.list(), (QStringList{u"M0001"_s, u"M0001"_s, u"M0002"_s, u"A0009"_s})); // by description
    station.click(u"rbDescricao"_s);
    QCOMPARE(station.list(), (QStringList{u"A0009"_s, u"M0001"_s, u"M0001"_s, u"M0002"_s})); // by code
    QCOMPARE(station.column(u"PRECO_00"_s), (QStringList{u"3,00"_s, u"4,80"_s, u"5,00"_s, u"6,1025"_s}));
}

void TestRelMatTabPre::aClientHasOnlyItsOwnMaterials()
{
    PriceListStation station;
    station.insertList();
    station.openReport();
    station.enter(u"EdtCodCli"_s, u"00002"_s);
    QCOMPARE(station.text(u"EdtNomeCli"_s), u"Malhas São Bento S.A."_s);
    QCOMPARE(station.list(), QStringList{u"M0002"_s});
    station.enter(u"EdtCodCli"_s, u"00003"_s);
    QCOMPARE(station.list(), QStringList());
}

void TestRelMatTabPre::gridPaperAndSheetShowTheSameFigures()
{
    PriceListStation station;
    station.insertList();
    station.openReport();
    Paper paper(station.host);
    QCOMPARE(station.list(u"PRECO_91"_s), (QStringList{u"5,45"_s, u"5,65"_s, u"6,1025"_s, u"3,00"_s}));
    QCOMPARE(station.print().name, u"WVenPreCol"_s);
    const QString text = paper.flatText();
    for (const QString &row : {u"M0001 Meia-malha PV 60/40 4,80 4,85 4,90 4,95 5,00 5,05 5,10 5,15 5,20 5,25 5,30 5,35 "
                               "5,40 5,45 5,125\n"_s,
             u"M0001 Meia-malha PV 60/40 5,00 5,05 5,10 5,15 5,20 5,25 5,30 5,35 5,40 5,45 5,50 5,55 5,60 5,65 "
             "5,325\n"_s,
             u"A0009 Xadrez leve 3,00 3,00 "_s, u"M0002 Ribana 2x1 6,1025 6,1025 "_s})
        QVERIFY2(text.contains(row), qPrintable(row + text));
    const ExportedGrid sheet(station);
    QCOMPARE(sheet.column(u"1ª Parc."_s), (QStringList{u"4.8"_s, u"5"_s, u"6.1025"_s, u"3"_s}));
    QCOMPARE(sheet.column(u"14ª Parc."_s), (QStringList{u"5.45"_s, u"5.65"_s, u"6.1025"_s, u"3"_s}));
    QCOMPARE(sheet.column(u"Preço Méd."_s), (QStringList{u"5.125"_s, u"5.325"_s, u"6.1025"_s, u"3"_s}));
}

void TestRelMatTabPre::thePaperStandsByMaterialGroup()
{
    PriceListStation station;
    station.insertList();
    station.openReport();
    station.click(u"rbDescricao"_s);
    Paper paper(station.host);
    QCOMPARE(station.print().rowCounts, QList<int>{4});
    const QString text = paper.flatText();
    QVERIFY2(text.contains(u"Tabela: 001 Praça Sul"_s), qPrintable(text));
    // The groups by their codes; in them the order that was chosen.
    QCOMPARE(firstMissing(text,
                 {u"Grupo 15 Malhas próprias"_s, u"M0002"_s, u"1 preço Média do grupo 6,10"_s,
                     u"Grupo 150 Malhas de terceiros"_s, u"A0009"_s, u"M0001"_s, u"3 preços Média do grupo 4,27 4,30"_s,
                     u"4 preços Média geral 4,73"_s, u"Nesta página: 4 preços"_s, u"Página 1 de 1"_s}),
        QString());
    QVERIFY2(text.contains(u"4,67 4,70 4,48\n"_s), qPrintable(text)); // means of the 13th, the 14th, and of the means
}

void TestRelMatTabPre::aGroupStaysWithItsMeans()
{
    PriceListStation station;
    for (int i = 10; i < 46; ++i) { // eighteen of each group: one and a half of them fill a page
        const QString code = u"T"_s + QString::number(i);
        station.insertMaterial(code, u"Tecido %1"_s.arg(i), i < 28 ? u"15"_s : u"150"_s);
        station.insertPrice(code, 2, 0, 2);
    }
    station.openReport();
    Paper paper(station.host);
    station.print();
    QCOMPARE(paper.pages(), 2);
    const QString mean = u"18 preços Média do grupo 2,00"_s;
    QVERIFY2(!paper.flatText(1).contains(u"Grupo 150"_s) && paper.flatText(1).contains(mean), qPrintable(paper.text()));
    QVERIFY2(paper.flatText(2).contains(u"Grupo 150"_s) && paper.flatText(2).contains(mean), qPrintable(paper.text()));
}

void TestRelMatTabPre::aLongListIsPrintedWhole()
{
    PriceListStation station;
    for (int i = 1; i <= 205; ++i) { // more than a query fetches at once
        const QString code = u"T%1"_s.arg(i, 4, 10, QChar(u'0'));
        station.insertMaterial(code, u"Tecido %1"_s.arg(i), i % 2 == 0 ? u"15"_s : u"150"_s);
        station.insertPrice(code, 2, 0, 2);
    }
    station.openReport();
    Paper paper(station.host);
    QCOMPARE(station.print().rowCounts, QList<int>{205});
    QVERIFY2(paper.flatText().contains(u"102 preços Média do grupo 2,00"_s), qPrintable(paper.flatText()));
    QVERIFY(paper.flatText().contains(u"103 preços Média do grupo 2,00"_s));
    QVERIFY(paper.flatText().contains(u"205 preços Média geral 2,00"_s));
    QVERIFY(paper.pages() > 1);
    int onPages = 0;
    static const QRegularExpression onPage(u"Nesta página: (\\d+) preço"_s);
    for (int page = 1; page <= paper.pages(); ++page)
        onPages += onPage.match(paper.flatText(page)).captured(1).toInt();
    QCOMPARE(onPages, 205);
}

void TestRelMatTabPre::wrongCodesGetTheirMessageAndTheirSearch()
{
    PriceListStation station;
    station.openReport();
    station.checkWrongCode(u"edtTabPre_CodReg"_s, u"Tabela inválida."_s, u"Tabelas de preços"_s, u"sudeste"_s);
    QCOMPARE(station.text(u"edtTabPre_CodReg"_s), u"02"_s);
    station.checkWrongCode(u"EdtCodCli"_s, u"Cliente inválido."_s, u"Clientes"_s, u"bento"_s);
    QCOMPARE(station.text(u"EdtNomeCli"_s), u"Malhas São Bento S.A."_s);
}

void TestRelMatTabPre::nothingFoundIsSaidAndNotPrinted()
{
    PriceListStation station;
    station.openReport();
    station.checkNothingFound();
}

void TestRelMatTabPre::aFailedStatementLeavesTheScreenReady()
{
    PriceListStation station;
    station.openReport();
    station.database.run(u"DROP TABLE {TABPRECO}"_s);
    station.checkRefusedStatement();
}

void TestRelMatTabPre::hostileTextFindsNothing()
{
    PriceListStation station;
    station.insertList();
    station.openReport();
    station.click(u"rbCodigo"_s); // a field that is left refuses such a code
    for (const QString &text : {u"'--"_s, u"%"_s, u"{X}"_s}) {
        station.child<QLineEdit>(u"edtTabPre_CodReg"_s)->setText(text);
        QCOMPARE(station.list(), QStringList());
    }
}

void TestRelMatTabPre::theSharedTablesCloseWithTheScreen()
{
    const QStringList shared{u"tbEntidade"_s, u"TBRegiao"_s, u"TbProduto"_s, u"Tbcolecao"_s, u"tbGrupo"_s};
    PriceListStation station;
    station.openReport();
    for (const QString &name : shared)
        QVERIFY2(station.tabela.tabela(name), qPrintable(name));
    station.closeForm();
    for (const QString &name : shared)
        QVERIFY2(!station.tabela.tabela(name), qPrintable(name));
}

QTEST_MAIN(TestRelMatTabPre)
#include "tst_relmattabpre.moc"
