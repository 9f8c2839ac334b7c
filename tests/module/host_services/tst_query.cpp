// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/query.h"
#include "tests/support/engines.h"
#include "tests/support/testdatabase.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/// Rolls of one order, read by a query.
class TestQuery : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }
    void init();
    void cleanup();

    void aSelectStandsOnItsFirstRow();
    void aSelectOfNothingStandsNowhere();
    void rowsAreFetchedAsTheyAreAskedFor();
    void rowsAreFetchedInSteps();
    void fetchAllFetchesWhatIsLeft();
    void rowsOpenedInASaveAreFetchedWhole();
    void rowsOpenedBeforeASaveGoOnAfterIt();
    void noRowIsShownTwiceWhenOthersComeMeanwhile();
    void anotherStatementBeforeTheNextRowsChangesNothing();
    void aFullPageIsNotTheEnd();
    void fieldsHaveTheirNamesInUpperCaseAndAreFoundInAny();
    void columnsHaveTheirTypes();
    void aColumnSelectedTwiceIsTheFirst();
    void nullIsNull();
    void kilogramsAddUpExactly();
    void figuresComeAsTheyAreKept();
    void titlesAndMasksAreKept();
    void openingAgainReadsAnew();
    void anotherSelectHasItsOwnFields();
    void aPreparedSelectIsRunAgainAndReadsAnew();
    void aWrongSelectIsRefusedWhenItIsPrepared();
    void aFailedSelectLeavesTheRowsAsTheyWere();
    void aRowThatCannotBeFetchedIsAnError();
    void aClosedQueryHasNoRows();
    void aChangeTellsHowManyRowsItMet();
    void linesOfAStatementAreJoined();
    void datesAreLiteralsWithTheMonthFirst();

private:
    void insertRolls(int count);
    void open(const QString &select);

    std::unique_ptr<TestDatabase> m_data;
    std::unique_ptr<TTIDatabase> m_database;
    std::unique_ptr<TTIQuery> m_query;
};

void TestQuery::init()
{
    m_data = std::make_unique<TestDatabase>(Engines::current());
    m_database = std::make_unique<TTIDatabase>();
    m_database->open(m_data->settings());
    m_query = std::make_unique<TTIQuery>();
    m_query->SetDatabase(m_database.get());
}

void TestQuery::cleanup()
{
    m_query.reset();
    m_database.reset();
    m_data.reset();
}

void TestQuery::insertRolls(int count)
{
    Save save(*m_database);
    for (int i = 1; i <= count; ++i) {
        m_database->run(u"INSERT INTO OF_MALHA_BAIXAS_001 (NUM_OF, NUM_BAIXA, DATA, HORA, TURNO, QTDE) "
                        "VALUES ('000001', '%1', '12/31/2026', '14:05:09', NULL, 3.333)"_s.arg(i, 3, 10, QChar(u'0')));
    }
    save.CommitRetaining();
}

void TestQuery::open(const QString &select)
{
    m_query->SQL.clear();
    m_query->SQL.add(select);
    m_query->Open();
}

void TestQuery::aSelectStandsOnItsFirstRow()
{
    insertRolls(3);
    QSignalSpy scrolled(m_query.get(), &TDataSet::AfterScroll);
    open(u"SELECT * FROM OF_MALHA_BAIXAS_001 ORDER BY NUM_BAIXA"_s);
    QVERIFY(m_query->Active());
    QCOMPARE(m_query->rowCount(), 3);
    QCOMPARE(m_query->AsString(u"NUM_BAIXA"_s), u"001"_s);
    QVERIFY(!m_query->Eof());
    QCOMPARE(scrolled.size(), 1);
}

void TestQuery::aSelectOfNothingStandsNowhere()
{
    open(u"SELECT * FROM OF_MALHA_BAIXAS_001"_s);
    QVERIFY(m_query->Active());
    QVERIFY(m_query->IsEmpty());
    QVERIFY(m_query->Eof());
    QVERIFY(!m_query->canFetchMore());
    QVERIFY(m_query->IsNull(u"QTDE"_s));
}

void TestQuery::rowsAreFetchedAsTheyAreAskedFor()
{
    insertRolls(3 * TTIQuery::fetchSize + 5);
    open(u"SELECT NUM_BAIXA FROM OF_MALHA_BAIXAS_001 ORDER BY NUM_BAIXA"_s);
    QCOMPARE(m_query->rowCount(), TTIQuery::fetchSize);
    QVERIFY(m_query->canFetchMore());
    m_query->setRow(TTIQuery::fetchSize);
    QCOMPARE(m_query->rowCount(), 2 * TTIQuery::fetchSize);
    QCOMPARE(m_query->AsString(u"NUM_BAIXA"_s), u"201"_s);
    m_query->Last();
    QCOMPARE(m_query->rowCount(), 3 * TTIQuery::fetchSize + 5);
    QCOMPARE(m_query->AsString(u"NUM_BAIXA"_s), u"605"_s);
    QVERIFY(!m_query->canFetchMore());
}

void TestQuery::rowsAreFetchedInSteps()
{
    insertRolls(TTIQuery::fetchSize + 7);
    QSignalSpy inserted(m_query.get(), &TDataSet::rowsAboutToBeInserted);
    open(u"SELECT NUM_BAIXA FROM OF_MALHA_BAIXAS_001 ORDER BY NUM_BAIXA"_s);
    int rows = 0;
    for (m_query->First(); !m_query->Eof(); m_query->Next())
        ++rows;
    QCOMPARE(rows, TTIQuery::fetchSize + 7);
    // The first step is there when the query has been opened.
    QCOMPARE(inserted.size(), 1);
    QCOMPARE(inserted[0][0].toInt(), TTIQuery::fetchSize);
    QCOMPARE(inserted[0][1].toInt(), TTIQuery::fetchSize + 6);
}

void TestQuery::fetchAllFetchesWhatIsLeft()
{
    insertRolls(TTIQuery::fetchSize + 7);
    open(u"SELECT NUM_BAIXA FROM OF_MALHA_BAIXAS_001"_s);
    m_query->FetchAll();
    QCOMPARE(m_query->rowCount(), TTIQuery::fetchSize + 7);
    QCOMPARE(m_query->row(), 0);
}

void TestQuery::rowsOpenedInASaveAreFetchedWhole()
{
    insertRolls(TTIQuery::fetchSize + 7);
    Save save(*m_database);
    open(u"SELECT NUM_BAIXA FROM OF_MALHA_BAIXAS_001"_s);
    QCOMPARE(m_query->rowCount(), TTIQuery::fetchSize + 7);
    QCOMPARE(m_query->row(), 0);
}

void TestQuery::rowsOpenedBeforeASaveGoOnAfterIt()
{
    insertRolls(TTIQuery::fetchSize + 7);
    open(u"SELECT NUM_BAIXA FROM OF_MALHA_BAIXAS_001"_s);
    Save save(*m_database);
    m_database->run(u"DELETE FROM OF_MALHA_BAIXAS_001"_s);
    save.CommitRetaining();
    m_query->Last();
    // The cursor of the one keeps the rows of the opening, the other driver reads those that are left: none.
    const bool keeps = m_database->settings().engine != Engine::PostgreSQL;
    QCOMPARE(m_query->rowCount(), keeps ? TTIQuery::fetchSize + 7 : 0);
    QCOMPARE(m_query->Eof(), true);
}

void TestQuery::noRowIsShownTwiceWhenOthersComeMeanwhile()
{
    insertRolls(TTIQuery::fetchSize + 7);
    open(u"SELECT NUM_BAIXA, NUM_OF FROM OF_MALHA_BAIXAS_001 ORDER BY NUM_OF, NUM_BAIXA"_s);
    m_query->setRow(3);
    m_database->run(u"INSERT INTO OF_MALHA_BAIXAS_001 (NUM_OF, NUM_BAIXA) VALUES ('000000', '001')"_s);
    m_query->FetchAll();
    QSet<QString> seen;
    for (int row = 0; row < m_query->rowCount(); ++row)
        seen.insert(m_query->cell(row, 1).toString() + m_query->cell(row, 0).toString());
    QCOMPARE(int(seen.size()), m_query->rowCount());
    QVERIFY(m_query->rowCount() >= TTIQuery::fetchSize + 7);
    QCOMPARE(m_query->row(), 3);
}

void TestQuery::anotherStatementBeforeTheNextRowsChangesNothing()
{
    insertRolls(TTIQuery::fetchSize + 7);
    open(u"SELECT NUM_BAIXA FROM OF_MALHA_BAIXAS_001 ORDER BY NUM_BAIXA"_s);
    m_query->SQL.clear();
    m_query->SQL.add(u"SELECT NUM_OF FROM OF_MALHA_BAIXAS_001"_s);
    m_query->Last();
    QCOMPARE(m_query->rowCount(), TTIQuery::fetchSize + 7);
    QCOMPARE(m_query->AsString(u"NUM_BAIXA"_s), u"%1"_s.arg(TTIQuery::fetchSize + 7));
}

void TestQuery::aFullPageIsNotTheEnd()
{
    insertRolls(TTIQuery::fetchSize);
    open(u"SELECT NUM_BAIXA FROM OF_MALHA_BAIXAS_001"_s);
    m_query->Last();
    QCOMPARE(m_query->rowCount(), TTIQuery::fetchSize);
    QVERIFY(m_query->Eof());
    QVERIFY(!m_query->canFetchMore());
}

void TestQuery::fieldsHaveTheirNamesInUpperCaseAndAreFoundInAny()
{
    insertRolls(1);
    open(u"select Num_Of, qtde as Peso from of_malha_baixas_001"_s);
    QCOMPARE(m_query->fields()[0].name, u"NUM_OF"_s);
    QCOMPARE(m_query->fields()[1].name, u"PESO"_s);
    QCOMPARE(m_query->AsString(u"num_of"_s), u"000001"_s);
    QCOMPARE(m_query->AsFloat(u"Peso"_s), 3.333);
    QVERIFY_THROWS_EXCEPTION(EProgramming, m_query->AsFloat(u"QTDE"_s));
}

void TestQuery::columnsHaveTheirTypes()
{
    insertRolls(1);
    m_data->run(u"INSERT INTO {DEF_MOV} (NUMERO, ROLO, CODIGO, QUANT) VALUES ('000001', 7, '001', 2.5)"_s);
    m_data->run(u"INSERT INTO QEN_LOG (MOMENTO, TEXTO) VALUES ('12/31/2026 14:05:09', 'x')"_s);
    open(u"SELECT B.NUM_OF, B.DATA, B.HORA, B.QTDE, D.ROLO, D.QUANT, L.MOMENTO, "
         "(SELECT COUNT(*) FROM OF_MALHA_BAIXAS_001) AS ROLOS "
         "FROM OF_MALHA_BAIXAS_001 B, DEF_MOV_001 D, QEN_LOG L"_s);
    using Type = TField::Type;
    const QVector<Type> expected{
        Type::Text, Type::Date, Type::Time, Type::Float, Type::Integer, Type::Float, Type::DateTime, Type::Integer};
    for (qsizetype i = 0; i < expected.size(); ++i)
        QCOMPARE(m_query->fields()[i].type, expected[i]);
    QCOMPARE(m_query->AsDate(u"DATA"_s), QDate(2026, 12, 31));
    QCOMPARE(m_query->value(u"HORA"_s).toTime(), QTime(14, 5, 9));
    QCOMPARE(m_query->value(u"MOMENTO"_s).toDateTime(), QDateTime(QDate(2026, 12, 31), QTime(14, 5, 9)));
    QCOMPARE(m_query->AsInteger(u"ROLO"_s), 7);
    QCOMPARE(m_query->AsFloat(u"QUANT"_s), 2.5);
    QCOMPARE(m_query->AsInteger(u"ROLOS"_s), 1);
}

void TestQuery::aColumnSelectedTwiceIsTheFirst()
{
    insertRolls(1);
    open(u"SELECT A.QTDE, A.QTDE * 2 AS QTDE FROM OF_MALHA_BAIXAS_001 A"_s);
    QCOMPARE(m_query->fields().size(), 2);
    QCOMPARE(m_query->AsFloat(u"QTDE"_s), 3.333);
    QCOMPARE(m_query->cell(0, 1).toDouble(), 6.666);
}

void TestQuery::nullIsNull()
{
    insertRolls(1);
    open(u"SELECT TURNO, FUNCIONARIO, (SELECT SUM(QTDE) FROM OF_MALHA_BAIXAS_001 WHERE NUM_OF = 'x') AS KG "
         "FROM OF_MALHA_BAIXAS_001"_s);
    QVERIFY(m_query->IsNull(u"TURNO"_s));
    QVERIFY(m_query->IsNull(u"KG"_s));
    QCOMPARE(m_query->AsFloat(u"KG"_s), 0.0);
    QCOMPARE(m_query->AsString(u"KG"_s), QString());
}

void TestQuery::kilogramsAddUpExactly()
{
    insertRolls(30);
    open(u"SELECT SUM(QTDE) AS KG FROM OF_MALHA_BAIXAS_001"_s);
    QCOMPARE(m_query->AsString(u"KG"_s), u"99.99"_s);
    open(u"SELECT COUNT(*) AS N FROM OF_MALHA_BAIXAS_001 HAVING SUM(QTDE) = 99.99"_s);
    QCOMPARE(m_query->AsInteger(u"N"_s), 30);
}

void TestQuery::figuresComeAsTheyAreKept()
{
    const QVector<QPair<QString, double>> figures = {{u"CAST(99.99 AS NUMERIC(15,3))"_s, 99.99},
        {u"CAST(-0.001 AS NUMERIC(15,3))"_s, -0.001}, {u"CAST(123456789012.345 AS NUMERIC(15,3))"_s, 123456789012.345},
        {u"CAST(0.123456 AS NUMERIC(15,6))"_s, 0.123456}, {u"CAST(0.1 AS DOUBLE PRECISION)"_s, 0.1},
        {u"CAST(1E-7 AS DOUBLE PRECISION)"_s, 1e-7}, {u"CAST(0 AS NUMERIC(15,3))"_s, 0}};
    insertRolls(1);
    for (const auto &[written, value] : figures) {
        open(u"SELECT "_s + written + u" AS N FROM OF_MALHA_BAIXAS_001"_s);
        QVERIFY2(m_query->AsFloat(u"N"_s) == value, qPrintable(written));
    }
}

void TestQuery::titlesAndMasksAreKept()
{
    insertRolls(1);
    open(u"SELECT NUM_BAIXA, QTDE FROM OF_MALHA_BAIXAS_001"_s);
    m_query->field(u"QTDE"_s).titled(u"Peso"_s).shownAs(u"0.000"_s);
    m_query->field(u"NUM_BAIXA"_s).hidden();
    open(u"SELECT QTDE, NUM_OF, NUM_BAIXA FROM OF_MALHA_BAIXAS_001"_s);
    QCOMPARE(m_query->field(u"QTDE"_s).title, u"Peso"_s);
    QCOMPARE(m_query->field(u"QTDE"_s).mask, u"0.000"_s);
    QVERIFY(!m_query->field(u"NUM_BAIXA"_s).visible);
    QCOMPARE(m_query->field(u"NUM_OF"_s).title, u"NUM_OF"_s);
}

void TestQuery::openingAgainReadsAnew()
{
    insertRolls(2);
    open(u"SELECT NUM_BAIXA FROM OF_MALHA_BAIXAS_001 ORDER BY NUM_BAIXA"_s);
    m_query->Last();
    m_data->run(u"DELETE FROM {OF_MALHA_BAIXAS} WHERE NUM_BAIXA = '001'"_s);
    m_query->Open();
    QCOMPARE(m_query->rowCount(), 1);
    QCOMPARE(m_query->AsString(u"NUM_BAIXA"_s), u"002"_s);
}

void TestQuery::anotherSelectHasItsOwnFields()
{
    insertRolls(1);
    open(u"SELECT NUM_BAIXA FROM OF_MALHA_BAIXAS_001"_s);
    open(u"SELECT QTDE FROM OF_MALHA_BAIXAS_001"_s);
    QVERIFY(!m_query->hasField(u"NUM_BAIXA"_s));
    QCOMPARE(m_query->AsFloat(u"QTDE"_s), 3.333);
}

void TestQuery::aPreparedSelectIsRunAgainAndReadsAnew()
{
    insertRolls(3);
    m_query->SQL.add(u"SELECT NUM_BAIXA FROM OF_MALHA_BAIXAS_001 WHERE NUM_OF = '000001' ORDER BY NUM_BAIXA"_s);
    m_query->Prepare();
    QVERIFY(m_query->Prepared());
    for (int rows = 3; rows < 6; ++rows) {
        m_query->Open();
        QCOMPARE(m_query->rowCount(), rows);
        m_database->run(
            u"INSERT INTO OF_MALHA_BAIXAS_001 (NUM_OF, NUM_BAIXA) VALUES ('000001', '%1')"_s.arg(100 + rows));
    }
    Save save(*m_database);
    m_database->run(u"DELETE FROM OF_MALHA_BAIXAS_001 WHERE NUM_BAIXA = '001'"_s);
    m_query->Open(); // sees what its save has done
    QCOMPARE(m_query->rowCount(), 5);
    m_query->Unprepare();
    QVERIFY(!m_query->Prepared());
}

void TestQuery::aWrongSelectIsRefusedWhenItIsPrepared()
{
    m_query->SQL.add(u"SELECT NADA FROM OF_MALHA_BAIXAS_001"_s);
    QVERIFY_EXCEPTION_THROWN(m_query->Prepare(), EDatabaseError);
    QVERIFY(!m_query->Prepared());
}

void TestQuery::aFailedSelectLeavesTheRowsAsTheyWere()
{
    insertRolls(2);
    open(u"SELECT NUM_BAIXA FROM OF_MALHA_BAIXAS_001"_s);
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, open(u"SELECT NADA FROM OF_MALHA_BAIXAS_001"_s));
    QCOMPARE(m_query->rowCount(), 2);
    QCOMPARE(m_query->AsString(u"NUM_BAIXA"_s), u"001"_s);
}

void TestQuery::aRowThatCannotBeFetchedIsAnError()
{
    insertRolls(3);
    m_data->run(u"UPDATE {OF_MALHA_BAIXAS} SET TURNO = CASE NUM_BAIXA WHEN '003' THEN 'X' ELSE '1' END"_s);
    const QString select = u"SELECT CAST(TURNO AS INTEGER) AS T FROM OF_MALHA_BAIXAS_001 ORDER BY NUM_BAIXA"_s;
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, open(select));
    m_data->run(u"UPDATE {OF_MALHA_BAIXAS} SET TURNO = '1'"_s);
    open(select);
    QCOMPARE(m_query->rowCount(), 3);
}

void TestQuery::aClosedQueryHasNoRows()
{
    insertRolls(TTIQuery::fetchSize + 7);
    open(u"SELECT NUM_BAIXA FROM OF_MALHA_BAIXAS_001"_s);
    m_query->Close();
    QVERIFY(!m_query->Active());
    QVERIFY(m_query->IsEmpty());
    QVERIFY(!m_query->canFetchMore());
    QVERIFY(m_query->IsNull(u"NUM_BAIXA"_s));
    m_query->Open();
    QCOMPARE(m_query->rowCount(), TTIQuery::fetchSize);
}

void TestQuery::aChangeTellsHowManyRowsItMet()
{
    insertRolls(3);
    const auto changed = [&](const QString &statement) {
        m_query->SQL.clear();
        m_query->SQL.add(statement);
        return m_query->ExecSQL();
    };
    QCOMPARE(changed(u"UPDATE OF_MALHA_BAIXAS_001 A SET A.QTDE = A.QTDE + 1 WHERE A.NUM_BAIXA > '001'"_s), 2);
    QCOMPARE(changed(u"DELETE FROM OF_MALHA_BAIXAS_001 WHERE NUM_BAIXA = '009'"_s), 0);
    QCOMPARE(changed(u"INSERT INTO OF_MALHA_BAIXAS_001 (NUM_OF, NUM_BAIXA) VALUES ('000002', '001')"_s), 1);
    QCOMPARE(m_data->rows(u"SELECT QTDE FROM {OF_MALHA_BAIXAS} WHERE NUM_BAIXA = '002'"_s), QStringList(u"4.333"_s));
}

void TestQuery::linesOfAStatementAreJoined()
{
    insertRolls(1);
    m_query->SQL.add(u"SELECT QTDE"_s).add(u"FROM OF_MALHA_BAIXAS_001 -- rolls"_s);
    m_query->SQL.add(u"WHERE NUM_OF = '000001'"_s);
    m_query->Open();
    QCOMPARE(m_query->rowCount(), 1);
}

void TestQuery::datesAreLiteralsWithTheMonthFirst()
{
    insertRolls(1);
    open(u"SELECT DATA FROM OF_MALHA_BAIXAS_001 WHERE DATA BETWEEN '12/01/2026' AND '12/31/2026'"_s);
    QCOMPARE(m_query->rowCount(), 1);
    open(u"SELECT DATA FROM OF_MALHA_BAIXAS_001 WHERE DATA < '12/31/2026'"_s);
    QCOMPARE(m_query->rowCount(), 0);
}

QTEST_MAIN(TestQuery)
#include "tst_query.moc"
