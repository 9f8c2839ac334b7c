// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/clock.h"
#include "module/host_services/database.h"
#include "module/host_services/searchmodel.h"
#include "tests/support/engines.h"
#include "tests/support/testdatabase.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const SearchSource &materials()
{
    static const SearchSource source{u"MATERIAL_001"_s,
        {{u"CODIGO"_s, u"Código"_s}, {u"DESCRICAO"_s, u"Descrição"_s}, {u"GRUPO"_s, u"Grupo"_s}}, {}};
    return source;
}

} // namespace

class TestSearchModel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }
    void init();
    void cleanup();

    void rowsAreListedByTheirKey();
    void aTextFindsPartsInAnyColumn_data();
    void aTextFindsPartsInAnyColumn();
    void everyWordMustBeFound();
    void hostileTextIsOnlyText_data();
    void hostileTextIsOnlyText();
    void anotherTextListsAnew();
    void rowsAreSortedByAnyColumn();
    void equalRowsAreSortedByTheKey();
    void theFilterAlwaysHolds();
    void aSelectTakesTheTablesPlace();
    void valuesAreShownTheBrazilianWay();
    void datesAndFiguresAreFoundAsTheyAreShown();
    void valuesAreFoundByTheirColumnInAnyCase();
    void pagesFollowEachOtherWithoutGapOrRepetition();
    void theFirstPageOfALargeTableReadsOnePage_data();
    void theFirstPageOfALargeTableReadsOnePage();
    void aLongTextIsSearchedToo();

private:
    QStringList codes(const SearchModel &model) const;
    void fillColours();
    int recordsRead();
    void readsOnePage(const SearchSource &source, int sortColumn);

    std::unique_ptr<TestDatabase> m_data;
    std::unique_ptr<TTIDatabase> m_database;
    QString m_lastStatement;
};

void TestSearchModel::init()
{
    m_data = std::make_unique<TestDatabase>(Engines::current());
    m_data->addCommonData();
    m_database = std::make_unique<TTIDatabase>();
    m_database->open(m_data->settings());
    m_database->setObserver([this](const QString &statement) { m_lastStatement = statement; });
}

void TestSearchModel::cleanup()
{
    m_database.reset();
    m_data.reset();
}

QStringList TestSearchModel::codes(const SearchModel &model) const
{
    QStringList result;
    for (int row = 0; row < model.rowCount(); ++row)
        result.append(model.index(row, 0).data().toString());
    return result;
}

void TestSearchModel::rowsAreListedByTheirKey()
{
    SearchModel model(*m_database, materials());
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QCOMPARE(codes(model), QStringList({u"FIO150PES"_s, u"FIO20ELA"_s, u"FIO30CO"_s, u"M0001"_s, u"M0002"_s}));
    QCOMPARE(model.columnCount(), 3);
    QCOMPARE(model.headerData(1, Qt::Horizontal).toString(), u"Descrição"_s);
    QVERIFY(!model.canFetchMore({}));
    model.setText(u"fio"_s);
    model.sort(1, Qt::DescendingOrder);
    model.setText(u"nada disso"_s);
    QCOMPARE(model.rowCount(), 0);
    model.setText({});
    QCOMPARE(model.rowCount(), 5);
}

void TestSearchModel::aTextFindsPartsInAnyColumn_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("found");
    QTest::newRow("part of the code") << u"20E"_s << QStringList{u"FIO20ELA"_s};
    QTest::newRow("part of the description") << u"pente"_s << QStringList{u"FIO30CO"_s};
    QTest::newRow("another column") << u"150"_s << QStringList{u"FIO150PES"_s, u"M0001"_s};
    QTest::newRow("lower case") << u"m0001"_s << QStringList{u"M0001"_s};
    QTest::newRow("upper case with accents") << u"ALGODÃO"_s << QStringList{u"FIO30CO"_s};
    QTest::newRow("lower case with accents") << u"algodão"_s << QStringList{u"FIO30CO"_s};
    QTest::newRow("blanks around") << u"   ribana "_s << QStringList{u"M0002"_s};
    QTest::newRow("accents in a code") << u"ção1"_s << QStringList{u"ÇÃO1"_s};
    QTest::newRow("nothing like it") << u"seda"_s << QStringList{};
}

void TestSearchModel::aTextFindsPartsInAnyColumn()
{
    QFETCH(QString, text);
    if (text.startsWith(u'ç'))
        m_data->run(u"INSERT INTO {MATERIAL} (CODIGO) VALUES ('ÇÃO1')"_s);
    SearchModel model(*m_database, materials());
    model.setText(text);
    QTEST(codes(model), "found");
}

void TestSearchModel::everyWordMustBeFound()
{
    SearchModel model(*m_database, materials());
    model.setText(u"fio 150"_s);
    QCOMPARE(codes(model), QStringList(u"FIO150PES"_s));
    model.setText(u"pente  FIO   10"_s);
    QCOMPARE(codes(model), QStringList(u"FIO30CO"_s));
    model.setText(u"fio ribana"_s);
    QCOMPARE(codes(model), QStringList());
}

void TestSearchModel::hostileTextIsOnlyText_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text :
        {"'", "''", "%", "_", "\\", "' OR 1=1 --", "{MATERIAL}", "%1", "?", ":x", ";", "[0-9]", "\"", "*/", "$$"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void TestSearchModel::hostileTextIsOnlyText()
{
    QFETCH(QString, text);
    SearchModel model(*m_database, materials());
    model.setText(text);
    QCOMPARE(codes(model), QStringList());
    QString literal = text;
    m_data->run(u"INSERT INTO MATERIAL_001 (CODIGO, DESCRICAO) VALUES ('ZZZ', 'a"_s + literal.replace(u"'"_s, u"''"_s)
        + u"b')"_s);
    model.setText({});
    model.setText(text);
    QCOMPARE(codes(model), QStringList(u"ZZZ"_s));
}

void TestSearchModel::anotherTextListsAnew()
{
    SearchModel model(*m_database, materials());
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    model.setText(u"fio"_s);
    model.setText(u" fio  "_s);
    QCOMPARE(reset.size(), 1);
    QCOMPARE(model.rowCount(), 3);
    model.setText(u"m0"_s);
    QCOMPARE(reset.size(), 2);
    QCOMPARE(model.rowCount(), 2);
}

void TestSearchModel::rowsAreSortedByAnyColumn()
{
    SearchModel model(*m_database, materials());
    model.sort(1);
    QCOMPARE(codes(model), QStringList({u"FIO20ELA"_s, u"FIO30CO"_s, u"FIO150PES"_s, u"M0001"_s, u"M0002"_s}));
    QCOMPARE(model.sortColumn(), 1);
    model.sort(0, Qt::DescendingOrder);
    QCOMPARE(codes(model).first(), u"M0002"_s);
    model.setText(u"fio"_s);
    QCOMPARE(codes(model), QStringList({u"FIO30CO"_s, u"FIO20ELA"_s, u"FIO150PES"_s}));
    model.sort(7);
    model.sort(-1);
    QCOMPARE(model.sortColumn(), 0);
}

void TestSearchModel::equalRowsAreSortedByTheKey()
{
    SearchModel model(*m_database, materials());
    model.sort(2);
    QCOMPARE(codes(model).mid(0, 3), QStringList({u"FIO150PES"_s, u"FIO20ELA"_s, u"FIO30CO"_s}));
    model.sort(2, Qt::DescendingOrder);
    QCOMPARE(codes(model).mid(2), QStringList({u"FIO30CO"_s, u"FIO20ELA"_s, u"FIO150PES"_s}));
}

void TestSearchModel::theFilterAlwaysHolds()
{
    SearchSource source = materials();
    source.filter = u"GRUPO = '10' OR GRUPO = '15'"_s;
    SearchModel model(*m_database, source);
    QCOMPARE(model.rowCount(), 4);
    model.setText(u"m0"_s);
    QCOMPARE(codes(model), QStringList(u"M0002"_s));
}

void TestSearchModel::aSelectTakesTheTablesPlace()
{
    SearchSource source = materials();
    source.from = u"(SELECT M.CODIGO, M.DESCRICAO, G.DESCRICAO AS GRUPO FROM MATERIAL_001 M "
                  "LEFT JOIN GRUPO_MA_001 G ON G.CODIGO = M.GRUPO)"_s;
    SearchModel model(*m_database, source);
    QCOMPARE(model.rowCount(), 5);
    model.setText(u"terceiros"_s);
    QCOMPARE(codes(model), QStringList(u"M0001"_s));
    QCOMPARE(model.value(0, u"GRUPO"_s), u"Malhas de terceiros"_s);
}

void TestSearchModel::valuesAreShownTheBrazilianWay()
{
    m_data->run(u"INSERT INTO {OF_MALHA} (NUM_OF, DATA, KG_TOTAL) VALUES ('000001', '12/31/2026', 1234.5)"_s);
    m_data->run(u"INSERT INTO {OF_MALHA} (NUM_OF) VALUES ('000002')"_s);
    SearchModel model(*m_database,
        {u"OF_MALHA_001"_s, {{u"NUM_OF"_s, u"OF"_s}, {u"DATA"_s, u"Data"_s}, {u"KG_TOTAL"_s, u"Kg"_s}}, {}});
    const auto shown = [&](int row, int column) { return model.index(row, column).data().toString(); };
    QCOMPARE(shown(0, 1), u"31/12/2026"_s);
    QCOMPARE(shown(0, 2), u"1.234,50"_s);
    QCOMPARE(shown(1, 1), QString());
    QCOMPARE(shown(1, 2), QString());
}

void TestSearchModel::datesAndFiguresAreFoundAsTheyAreShown()
{
    Clock::pin(QDateTime(QDate(2026, 3, 10), QTime(10, 30)));
    m_data->run(u"INSERT INTO {OF_MALHA} (NUM_OF, DATA, KG_TOTAL) VALUES ('000001', '12/31/2026', 1234.5)"_s);
    m_data->run(u"INSERT INTO {OF_MALHA} (NUM_OF, DATA, KG_TOTAL) VALUES ('000002', '03/09/2026', 20)"_s);
    SearchModel model(*m_database,
        {u"OF_MALHA_001"_s, {{u"NUM_OF"_s, u"OF"_s}, {u"DATA"_s, u"Data"_s}, {u"KG_TOTAL"_s, u"Kg"_s}}, {}});
    const QList<std::pair<QString, QString>> expected{{u"31/12/2026"_s, u"000001"_s}, {u"9/3"_s, u"000002"_s},
        {u"1.234,50"_s, u"000001"_s}, {u"1234,5"_s, u"000001"_s}, {u"20,00"_s, u"000002"_s}};
    for (const auto &[text, order] : expected) {
        model.setText(text);
        QCOMPARE(codes(model), QStringList(order));
    }
    Clock::pin({});
}

void TestSearchModel::valuesAreFoundByTheirColumnInAnyCase()
{
    SearchModel model(*m_database, materials());
    QCOMPARE(model.value(3, u"codigo"_s), u"M0001"_s);
    QCOMPARE(model.value(3, u"Grupo"_s), u"150"_s);
    QCOMPARE(model.value(3, u"COR"_s), QString());
    QCOMPARE(model.value(-1, u"CODIGO"_s), QString());
    QCOMPARE(model.value(5, u"CODIGO"_s), QString());
}

/// 200,000 colours, of which every second one has the same description.
void TestSearchModel::fillColours()
{
    m_data->run(u"DELETE FROM {CADCOR}"_s);
    m_data->run(u"DELETE FROM {GRUPO_MA}"_s);
    for (int digit = 0; digit <= 9; ++digit)
        m_data->run(u"INSERT INTO {GRUPO_MA} (CODIGO) VALUES ('%1')"_s.arg(digit));
    m_data->run(u"INSERT INTO {CADCOR} (COR, DESCRICAO) SELECT A.CODIGO || B.CODIGO || C.CODIGO || D.CODIGO || E.CODIGO"
                " || F.CODIGO, CASE WHEN F.CODIGO < '5' THEN 'Azul' ELSE 'Cor ' || E.CODIGO || F.CODIGO END "
                "FROM {GRUPO_MA} A, {GRUPO_MA} B, {GRUPO_MA} C, {GRUPO_MA} D, {GRUPO_MA} E, {GRUPO_MA} F "
                "WHERE A.CODIGO < '2'"_s);
}

void TestSearchModel::pagesFollowEachOtherWithoutGapOrRepetition()
{
    fillColours();
    SearchModel model(*m_database, {u"CADCOR_001"_s, {{u"COR"_s, u"Cor"_s}, {u"DESCRICAO"_s, u"Descrição"_s}}, {}});
    while (model.rowCount() < 5 * SearchModel::pageSize && model.canFetchMore({}))
        model.fetchMore({});
    QCOMPARE(model.value(499, u"COR"_s), u"000499"_s);
    model.setText(u"azul"_s);
    model.sort(1);
    for (int page = model.rowCount() / SearchModel::pageSize; page < 3; ++page)
        model.fetchMore({});
    const QStringList found = codes(model);
    QCOMPARE(found.size(), 3 * SearchModel::pageSize);
    QCOMPARE(QSet<QString>(found.begin(), found.end()).size(), found.size());
    QCOMPARE(found.last(), u"000594"_s);
}

/// How many records the engine has read for this connection so far.
int TestSearchModel::recordsRead()
{
    return m_database
        ->value(u"SELECT R.MON$RECORD_SEQ_READS + R.MON$RECORD_IDX_READS FROM MON$RECORD_STATS R "
                "JOIN MON$ATTACHMENTS A ON A.MON$STAT_ID = R.MON$STAT_ID "
                "WHERE A.MON$ATTACHMENT_ID = CURRENT_CONNECTION"_s)
        .toInt();
}

void TestSearchModel::readsOnePage(const SearchSource &source, int sortColumn)
{
    SearchModel model(*m_database, source);
    const bool firebird = Engines::current() == u"firebird"_s;
    const int before = firebird ? recordsRead() : 0;
    model.sort(sortColumn, sortColumn > 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
    QCOMPARE(model.rowCount(), SearchModel::pageSize);
    QVERIFY(model.canFetchMore({}));
    if (firebird) {
        const int read = recordsRead() - before;
        QVERIFY2(read < 5 * SearchModel::pageSize, qPrintable(u"%1 records"_s.arg(read)));
    } else {
        m_data->run(u"ANALYZE"_s);
        const QString plan = m_data->rows(u"EXPLAIN "_s + m_lastStatement).join(u'\n');
        QVERIFY2(plan.contains(u"Index"_s) && !plan.contains(u"Seq Scan"_s), qPrintable(plan));
    }
}

void TestSearchModel::theFirstPageOfALargeTableReadsOnePage_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("sortColumn");
    QTest::newRow("clients by code, last first") << u"ENTIDADE_001"_s << u"CODCLI"_s << u"NOME"_s << 0;
    QTest::newRow("clients by name") << u"ENTIDADE_001"_s << u"CODCLI"_s << u"NOME"_s << 1;
    QTest::newRow("materials by code, last first") << u"MATERIAL_001"_s << u"CODIGO"_s << u"DESCRICAO"_s << 0;
    QTest::newRow("materials by description") << u"MATERIAL_001"_s << u"CODIGO"_s << u"DESCRICAO"_s << 1;
}

void TestSearchModel::theFirstPageOfALargeTableReadsOnePage()
{
    QFETCH(QString, from);
    QFETCH(QString, key);
    QFETCH(QString, text);
    QFETCH(int, sortColumn);
    m_data->run(u"DELETE FROM {GRUPO_MA}"_s);
    for (int digit = 0; digit <= 9; ++digit)
        m_data->run(u"INSERT INTO {GRUPO_MA} (CODIGO) VALUES ('%1')"_s.arg(digit));
    m_data->run(u"DELETE FROM "_s + from);
    m_data->run(u"INSERT INTO %1 (%2, %3) SELECT A.CODIGO || B.CODIGO || C.CODIGO || D.CODIGO, "
                "'Nome ' || D.CODIGO || C.CODIGO FROM {GRUPO_MA} A, {GRUPO_MA} B, {GRUPO_MA} C, {GRUPO_MA} D"_s.arg(
                    from, key, text));
    readsOnePage({from, {{key, u"Código"_s}, {text, u"Nome"_s}}, {}}, sortColumn);
}

void TestSearchModel::aLongTextIsSearchedToo()
{
    m_data->run(u"INSERT INTO {OF_MALHA} (NUM_OF, OBSERVACAO) VALUES ('000001', '%1 fim')"_s.arg(QString(900, u'x')));
    SearchModel model(
        *m_database, {u"OF_MALHA_001"_s, {{u"NUM_OF"_s, u"OF"_s}, {u"OBSERVACAO"_s, u"Observação"_s}}, {}});
    model.setText(u"fim"_s);
    QCOMPARE(model.rowCount(), 1);
}

QTEST_MAIN(TestSearchModel)
#include "tst_searchmodel.moc"
