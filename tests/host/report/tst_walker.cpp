// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/report/layoutreader.h"
#include "host/report/walker.h"
#include "module/host_services/clientdataset.h"
#include "module/host_services/clock.h"
#include "module/host_services/errors.h"
#include "module/host_services/host.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Type = TField::Type;

/// Writes down what it is to print.
class Recorder : public BandSink
{
public:
    void print(const Layout::Band &band, const ExpressionScope &scope) override
    {
        QStringList texts;
        for (const Layout::Item &item : band.items)
            texts.append(item.text.evaluate(scope));
        events.append(texts.join(u'|'));
        if (walker && walker->pageRow() >= 0)
            pageRows.append(walker->pageRow());
    }
    void beginBlock(bool keepTogether) override { events.append(keepTogether ? u"(("_s : u"("_s); }
    void endBlock() override { events.append(u")"_s); }
    void pushRepeated(const Layout::Band &, const ExpressionScope &) override { events.append(u"repeat"_s); }
    void popRepeated() override { events.append(u"drop"_s); }
    void newPage() override
    {
        events.append(u"page after "_s + (walker ? walker->pageScope().value(u"NUM_OF"_s).toString() : QString()));
    }

    QStringList events;
    QVector<qint64> pageRows;
    Walker *walker = nullptr;
};

/// A layout of those elements.
Layout::Document layoutOf(const QString &content)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"WTeste.xml"_s);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("no temporary file");
    file.write((u"<layout title='Teste'>\n"_s + content + u"</layout>"_s).toUtf8());
    file.close();
    return LayoutReader::read(path);
}

void fill(TClientDataSet &data, const QVector<TField> &fields, const QVector<QVariantList> &rows)
{
    data.CreateDataSet(fields);
    for (const QVariantList &row : rows) {
        data.Append();
        for (int i = 0; i < row.size(); ++i)
            data.setValue(fields[i].name, row[i]);
        data.Post();
    }
}

QStringList walked(const Layout::Document &layout, const ReportCall &call)
{
    Recorder recorder;
    Walker walker(layout, call);
    recorder.walker = &walker;
    while (walker.step(recorder)) { }
    return recorder.events;
}

QString refusal(const QString &content, const ReportCall &call)
{
    const Layout::Document layout = layoutOf(content);
    try {
        const Walker walker(layout, call);
    } catch (const EQen &error) {
        return error.sentence();
    }
    return {};
}

/// A data set that, like a query, has its rows only when they are fetched.
class Fetching : public TClientDataSet
{
public:
    int rowCount() const override { return qMin(m_shown, TClientDataSet::rowCount()); }
    bool canFetchMore() const override { return m_shown < TClientDataSet::rowCount(); }
    void fetchMore() override
    {
        m_shown += 200;
        ++fetches;
    }
    int fetches = 0;

private:
    int m_shown = 0;
};

} // namespace

class tst_Walker : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void groupsThreeDeepHaveTheirOwnTotals();
    void aChangeOfTheOuterGroupEndsTheInnerOnes();
    void aNewPageComesBetweenTheTotalsAndTheNextHeader();
    void twoDataSetsStandBeneathARow();
    void rowsMatchOverTwoFieldsOfDifferentTypes();
    void noRowsPrintTheEmptyBandAlone();
    void bandsWithAConditionAreLeftOut();
    void reportsWithoutRowsPrintParameters();
    void theLayoutsNamesAreFoundInAnyCase();
    void whatTheScreenDoesNotOfferIsTold_data();
    void whatTheScreenDoesNotOfferIsTold();
    void foreignFunctionsAreAskedOfTheScreen();
    void theClockAndTheHostAnswerTheirFunctions();
    void pageTotalsCountWhatThePageHolds();
    void theCursorAndARowBeingEditedAreLeftAlone();
    void tenThousandRowsAreFetchedAsTheyAreNeeded();
    void manyRowsBeneathManyAreFoundThroughAnIndex();

private:
    std::unique_ptr<TClientDataSet> m_orders; ///< machine, client, order, kg
    std::unique_ptr<TClientDataSet> m_rolls; ///< order, roll, kg
    ReportCall m_call;
};

void tst_Walker::init()
{
    m_orders = std::make_unique<TClientDataSet>();
    fill(*m_orders,
        {{u"MAQUINA"_s, Type::Text, 5}, {u"CLIENTE"_s, Type::Text, 5}, {u"NUM_OF"_s, Type::Text, 6},
            {u"QTDE"_s, Type::Float}},
        {{u"M1"_s, u"C1"_s, u"1"_s, 10.1}, {u"M1"_s, u"C1"_s, u"1"_s, 0.2}, {u"M1"_s, u"C1"_s, u"2"_s, QVariant()},
            {u"M1"_s, u"C2"_s, u"3"_s, 5.0}, {u"M2"_s, u"C2"_s, u"3"_s, 7.5}});
    m_rolls = std::make_unique<TClientDataSet>();
    fill(*m_rolls, {{u"NUMERO"_s, Type::Text, 6}, {u"NR"_s, Type::Text, 3}, {u"PESO"_s, Type::Float}},
        {{u"3"_s, u"001"_s, 1.5}, {u"1"_s, u"001"_s, 4.0}, {u"1"_s, u"002"_s, 6.1}});
    m_call = {};
    m_call.dataSets = {{u"qryRelatorio"_s, m_orders.get()}, {u"tbItens"_s, m_rolls.get()}};
}

void tst_Walker::cleanup()
{
    Clock::pin({});
}

void tst_Walker::groupsThreeDeepHaveTheirOwnTotals()
{
    const Layout::Document layout =
        layoutOf(u"<rows data='qryRelatorio'><group by='MAQUINA'><header><text>{MAQUINA}</text></header>"
                 "<footer><text>{MAQUINA} {SUM(QTDE)} {COUNT()}</text></footer></group>"
                 "<group by='CLIENTE'><footer><text>{CLIENTE} {SUM(QTDE)} {COUNT(QTDE)}</text></footer></group>"
                 "<group by='NUM_OF'><footer><text>OF {NUM_OF} {SUM(QTDE):0.00} {MAX(QTDE)}</text></footer></group>"
                 "<detail><text>{ROW()}</text></detail>"
                 "<footer><text>{AVG(QTDE)} {MIN(QTDE)}</text></footer></rows>"
                 "<summary><text>{SUM(QTDE * 2)}</text></summary>"_s);
    QStringList events = walked(layout, m_call);
    events.removeAll(u"("_s);
    events.removeAll(u")"_s);
    QCOMPARE(events,
        QStringList({u"M1"_s, u"1"_s, u"2"_s, u"OF 1 10,30 10,1"_s, u"3"_s, u"OF 2 0,00 "_s, u"C1 10,3 2"_s, u"4"_s,
            u"OF 3 5,00 5"_s, u"C2 5 1"_s, u"M1 15,3 4"_s, u"M2"_s, u"5"_s, u"OF 3 7,50 7,5"_s, u"C2 7,5 1"_s,
            u"M2 7,5 1"_s, u"5,7 0,2"_s, u"45,6"_s}));
}

void tst_Walker::aChangeOfTheOuterGroupEndsTheInnerOnes()
{
    const Layout::Document layout =
        layoutOf(u"<rows data='qryRelatorio'><header repeat='yes'><text>cab</text></header>"
                 "<group by='MAQUINA' keep-together='yes'><header repeat='yes'><text>{MAQUINA}</text></header></group>"
                 "<group by='CLIENTE'/><detail><text>{NUM_OF}</text></detail></rows>"_s);
    QCOMPARE(walked(layout, m_call),
        QStringList({u"cab"_s, u"repeat"_s, u"(("_s, u"M1"_s, u"repeat"_s, u"("_s, u"1"_s, u"1"_s, u"2"_s, u")"_s,
            u"("_s, u"3"_s, u")"_s, u"drop"_s, u")"_s, u"(("_s, u"M2"_s, u"repeat"_s, u"("_s, u"3"_s, u")"_s, u"drop"_s,
            u")"_s, u"drop"_s}));
}

void tst_Walker::aNewPageComesBetweenTheTotalsAndTheNextHeader()
{
    const Layout::Document layout =
        layoutOf(u"<title new-page-after='yes'><text>capa</text></title>"
                 "<rows data='qryRelatorio'><group by='NUM_OF' new-page='yes'><header><text>OF {NUM_OF}</text></header>"
                 "<footer><text>fim {NUM_OF}</text></footer></group></rows>"
                 "<summary new-page-before='yes'><text>resumo</text></summary>"_s);
    QStringList events = walked(layout, m_call);
    events.removeAll(u"("_s);
    events.removeAll(u")"_s);
    QCOMPARE(events,
        QStringList({u"capa"_s, u"page after 1"_s, u"OF 1"_s, u"fim 1"_s, u"page after 1"_s, u"OF 2"_s, u"fim 2"_s,
            u"page after 2"_s, u"OF 3"_s, u"fim 3"_s, u"page after 3"_s, u"resumo"_s}));
}

void tst_Walker::twoDataSetsStandBeneathARow()
{
    TClientDataSet yarns;
    fill(yarns, {{u"OF"_s, Type::Text, 6}, {u"LOTE"_s, Type::Text, 10}}, {{u"2"_s, u"L7"_s}, {u"1"_s, u"L9"_s}});
    m_call.dataSets.append({u"qryFios"_s, &yarns});
    const Layout::Document layout = layoutOf(
        u"<rows data='qryRelatorio' keep-together='yes'><detail><text>OF {NUM_OF} {QTDE}</text></detail>"
        "<rows data='tbItens' match='NUMERO=NUM_OF'><header><text>rolos de {qryRelatorio.NUM_OF}</text></header>"
        "<detail><text>{ROW()} {NR} {CLIENTE}</text></detail>"
        "<footer><text>{SUM(PESO)} {COUNT()} {SUM(qryRelatorio.QTDE)}</text></footer></rows>"
        "<rows data='qryFios' match='OF=NUM_OF'><empty><text>sem fios para {NUM_OF}{LOTE}</text></empty>"
        "<detail><text>{LOTE}</text></detail></rows></rows>"
        "<rows data='tbItens'><footer><text>{SUM(PESO)}</text></footer></rows>"_s);
    m_orders->setFilter([](const QVector<QVariant> &row) { return row[2] != u"2"_s && row[3].toDouble() > 1; });
    QCOMPARE(walked(layout, m_call),
        QStringList({u"(("_s, u"OF 1 10,1"_s, u"rolos de 1"_s, u"1 001 C1"_s, u"2 002 C1"_s, u"10,1 2 20,2"_s, u"L9"_s,
            u")"_s, u"(("_s, u"OF 3 5"_s, u"rolos de 3"_s, u"1 001 C2"_s, u"1,5 1 5"_s, u"sem fios para 3"_s, u")"_s,
            u"(("_s, u"OF 3 7,5"_s, u"rolos de 3"_s, u"1 001 C2"_s, u"1,5 1 7,5"_s, u"sem fios para 3"_s, u")"_s,
            u"11,6"_s}));
}

void tst_Walker::rowsMatchOverTwoFieldsOfDifferentTypes()
{
    TClientDataSet yarns;
    fill(yarns, {{u"OF"_s, Type::Integer}, {u"MAQ"_s, Type::Text, 5}, {u"LOTE"_s, Type::Text, 10}},
        {{3, u"M1"_s, u"L1"_s}, {3, u"M2"_s, u"L2"_s}, {QVariant(), u"M2"_s, u"L3"_s}, {3, u"M2"_s, u"L4"_s}});
    m_call.dataSets.append({u"qryFios"_s, &yarns});
    const Layout::Document layout =
        layoutOf(u"<rows data='qryRelatorio'><rows data='qryFios' match='OF=NUM_OF;MAQ=MAQUINA'>"
                 "<detail><text>{NUM_OF} {MAQUINA} {LOTE}</text></detail></rows></rows>"_s);
    QCOMPARE(walked(layout, m_call), QStringList({u"3 M1 L1"_s, u"3 M2 L2"_s, u"3 M2 L4"_s}));
}

void tst_Walker::noRowsPrintTheEmptyBandAlone()
{
    m_orders->EmptyDataSet();
    const Layout::Document layout = layoutOf(
        u"<title><text>titulo {NUM_OF}</text></title><rows data='qryRelatorio'>"
        "<header repeat='yes'><text>cab</text></header><empty><text>Nada</text></empty>"
        "<group by='MAQUINA'><header><text>grupo</text></header></group><detail><text>linha</text></detail>"
        "<footer><text>fim</text></footer></rows><summary><text>{SUM(QTDE)} {COUNT()} {MAX(QTDE)}</text></summary>"_s);
    QCOMPARE(walked(layout, m_call), QStringList({u"titulo "_s, u"Nada"_s, u"0 0 "_s}));
}

void tst_Walker::bandsWithAConditionAreLeftOut()
{
    const Layout::Document layout =
        layoutOf(u"<rows data='qryRelatorio'><detail if='QTDE &gt; 5'><text>{QTDE}</text></detail>"
                 "<footer if='SUM(QTDE) &gt; 100'><text>muito</text></footer></rows>"
                 "<summary if='SUM(QTDE) &lt; 100'><text>pouco</text></summary>"_s);
    QCOMPARE(walked(layout, m_call), QStringList({u"10,1"_s, u"7,5"_s, u"pouco"_s}));
}

void tst_Walker::reportsWithoutRowsPrintParameters()
{
    m_call.parameters = {{u"periodo"_s, u"01/01/2026 a 31/01/2026"_s}};
    const Layout::Document layout =
        layoutOf(u"<title><text>{PERIODO}{PARAM('Cliente')}</text><text>{PARAM('Periodo')}</text>"
                 "<text>{qryRelatorio.NUM_OF}</text></title>"_s);
    m_orders->setRow(3);
    QCOMPARE(walked(layout, m_call), QStringList({u"01/01/2026 a 31/01/2026|01/01/2026 a 31/01/2026|3"_s}));
}

void tst_Walker::theLayoutsNamesAreFoundInAnyCase()
{
    const Layout::Document layout =
        layoutOf(u"<rows data='QRYRELATORIO'><detail if='num_of = 2'><text>{Cliente}</text></detail></rows>"_s);
    QCOMPARE(walked(layout, m_call), QStringList({u"C1"_s}));
}

void tst_Walker::whatTheScreenDoesNotOfferIsTold_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("data set") << u"\n<rows data='qryOutra'/>"_s
                              << u"linha 3: o relatório não recebeu os dados qryOutra"_s;
    QTest::newRow("field") << u"<rows data='tbItens'>\n<detail>\n<text>{QTDE}</text></detail></rows>"_s
                           << u"linha 4: o campo ou parâmetro QTDE não existe nos dados do relatório"_s;
    QTest::newRow("qualified")
        << u"<title if='qryRelatorio.PESO &gt; 1'/>"_s
        << u"linha 2: o campo ou parâmetro QRYRELATORIO.PESO não existe nos dados do relatório"_s;
    QTest::newRow("in a total") << u"<rows data='tbItens'/><summary>\n<text>{SUM(QTDE)}</text></summary>"_s
                                << u"linha 3: o campo ou parâmetro QTDE não existe nos dados do relatório"_s;
    QTest::newRow("group") << u"<rows data='tbItens'>\n<group by='MAQUINA'/></rows>"_s
                           << u"linha 3: o campo ou parâmetro MAQUINA não existe nos dados do relatório"_s;
    QTest::newRow("match") << u"<rows data='qryRelatorio'><rows data='tbItens' match='OF=NUM_OF'/></rows>"_s
                           << u"linha 2: os dados tbItens não têm o campo OF"_s;
    QTest::newRow("match above") << u"<rows data='qryRelatorio'><rows data='tbItens' match='NUMERO=OF'/></rows>"_s
                                 << u"linha 2: o campo OF não existe nos dados acima"_s;
    QTest::newRow("function") << u"<title><text>{ZEROE(1)}</text></title>"_s << u"linha 2: função ZEROE desconhecida"_s;
}

void tst_Walker::whatTheScreenDoesNotOfferIsTold()
{
    QFETCH(QString, content);
    QFETCH(QString, sentence);
    QCOMPARE(refusal(content, m_call), u"WTeste.xml, %1."_s.arg(sentence));
}

void tst_Walker::foreignFunctionsAreAskedOfTheScreen()
{
    m_call.unknownFunction = [](const QString &function, const QVariantList &arguments) {
        return function == "ZEROE"_L1 ? QVariant(arguments.value(0).toString() + u"0"_s) : QVariant();
    };
    const Layout::Document known =
        layoutOf(u"<title><text>{ZeroE(NUM_OF)}</text></title><rows data='qryRelatorio'/>"_s);
    QCOMPARE(walked(known, m_call), QStringList({u"10"_s}));
    const Layout::Document unknown = layoutOf(u"<title><text>{Outra(1)}</text></title>"_s);
    try {
        walked(unknown, m_call);
        QFAIL("nobody knows the function");
    } catch (const EQen &error) {
        QCOMPARE(error.sentence(), u"WTeste.xml: função OUTRA desconhecida."_s);
    }
}

void tst_Walker::theClockAndTheHostAnswerTheirFunctions()
{
    Clock::pin(QDateTime(QDate(2026, 3, 9), QTime(14, 5, 9)));
    const Layout::Document layout =
        layoutOf(u"<title><text>{DATE()} {TIME():hh:mm} {NOW()} {USER()} {TITLE()}</text></title>"_s);
    Recorder recorder;
    Walker walker(layout, m_call);
    walker.setFunction(u"User"_s, [] { return u"ANA"_s; });
    walker.step(recorder);
    QCOMPARE(recorder.events, QStringList({u"09/03/2026 14:05 09/03/2026 14:05:09 ANA Teste"_s}));
}

void tst_Walker::pageTotalsCountWhatThePageHolds()
{
    const Layout::Document layout =
        layoutOf(u"<rows data='qryRelatorio'><header/><group by='MAQUINA'><header/></group>"
                 "<detail if='QTDE &lt;&gt; 5'/><detail/><rows data='tbItens'><detail/></rows></rows>"
                 "<page-footer><text>{SUM(QTDE)} {COUNT()} {MAX(NUM_OF)}</text></page-footer>"_s);
    Recorder recorder;
    Walker walker(layout, m_call);
    recorder.walker = &walker;
    while (walker.step(recorder)) { }
    QCOMPARE(recorder.pageRows.size(), 5); // once for each order, whatever bands it has

    const auto total = [&] { return layout.pageFooter->items.front().text.evaluate(walker.pageScope()); };
    walker.startPage();
    walker.countOnPage(recorder.pageRows[0]);
    walker.countOnPage(recorder.pageRows[1]);
    walker.countOnPage(recorder.pageRows[1]);
    walker.countOnPage(-1);
    QCOMPARE(total(), u"10,3 2 1"_s);
    walker.startPage();
    QCOMPARE(total(), u"0 0 "_s);
    for (int i = 2; i < 5; ++i)
        walker.countOnPage(recorder.pageRows[i]);
    QCOMPARE(total(), u"12,5 3 3"_s);
    QCOMPARE(walker.rowsDone(), 5);
}

void tst_Walker::theCursorAndARowBeingEditedAreLeftAlone()
{
    m_rolls->setRow(1);
    m_orders->setRow(2);
    m_orders->Edit();
    m_orders->setValue(u"QTDE"_s, 99.0);
    int moves = 0;
    connect(m_orders.get(), &TDataSet::AfterScroll, this, [&] { ++moves; });
    const Layout::Document layout =
        layoutOf(u"<rows data='qryRelatorio'><rows data='tbItens' match='NUMERO=NUM_OF'><detail/></rows></rows>"_s);
    QCOMPARE(walked(layout, m_call).size(), 6);
    QCOMPARE(m_orders->state(), TClientDataSet::State::Edit);
    QCOMPARE(m_orders->AsFloat(u"QTDE"_s), 99.0);
    QCOMPARE(m_orders->row(), 2);
    QCOMPARE(m_rolls->row(), 1);
    QCOMPARE(moves, 0);
}

void tst_Walker::tenThousandRowsAreFetchedAsTheyAreNeeded()
{
    Fetching rows;
    rows.CreateDataSet({{u"NUM_OF"_s, Type::Integer}, {u"QTDE"_s, Type::Float}});
    for (int i = 0; i < 10000; ++i) {
        rows.Append();
        rows.setValue(u"NUM_OF"_s, i);
        rows.setValue(u"QTDE"_s, 20.001);
        rows.Post();
    }
    m_call.dataSets = {{u"qryRelatorio"_s, &rows}};
    const Layout::Document layout = layoutOf(
        u"<rows data='qryRelatorio'><group by='TRUNC(NUM_OF / 1000)'><footer><text>{SUM(QTDE)}</text></footer></group>"
        "</rows><summary><text>{SUM(QTDE)} {COUNT()}</text></summary>"_s);
    Recorder recorder;
    Walker walker(layout, m_call);
    QCOMPARE(rows.fetches, 0);
    for (int i = 0; i < 10; ++i)
        QVERIFY(walker.step(recorder));
    QCOMPARE(rows.fetches, 1);
    while (walker.step(recorder)) { }
    QCOMPARE(walker.rowsDone(), 10000);
    QCOMPARE(recorder.events.count(u"20001"_s), 10);
    QCOMPARE(recorder.events.last(), u"200010 10000"_s);
}

void tst_Walker::manyRowsBeneathManyAreFoundThroughAnIndex()
{
    // Counts how often a cell is read: a scan for each order would be five million.
    class Counting : public TClientDataSet
    {
    public:
        QVariant cell(int row, int field) const override
        {
            ++reads;
            return TClientDataSet::cell(row, field);
        }
        mutable qint64 reads = 0;
    };
    TClientDataSet orders;
    Counting rolls;
    orders.CreateDataSet({{u"NUM_OF"_s, Type::Integer}});
    rolls.CreateDataSet({{u"NUMERO"_s, Type::Text, 8}});
    for (int i = 0; i < 1000; ++i) {
        orders.Append();
        orders.setValue(u"NUM_OF"_s, i);
        orders.Post();
        for (int roll = 0; roll < 5; ++roll) {
            rolls.Append();
            rolls.setValue(u"NUMERO"_s, QString::number(i));
            rolls.Post();
        }
    }
    rolls.reads = 0;
    m_call.dataSets = {{u"qryOF"_s, &orders}, {u"tbItens"_s, &rolls}};
    const Layout::Document layout =
        layoutOf(u"<rows data='qryOF'><rows data='tbItens' match='NUMERO=NUM_OF'><detail/></rows></rows>"_s);
    QCOMPARE(walked(layout, m_call).size(), 5000);
    QCOMPARE(rolls.reads, 5000);
}

QTEST_GUILESS_MAIN(tst_Walker)
#include "tst_walker.moc"
