// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/database.h"
#include "tests/support/engines.h"
#include "tests/support/testdatabase.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Category = EDatabaseError::Category;

/// The error that the action throws; the test fails when it throws none.
std::optional<EDatabaseError> errorOf(const std::function<void()> &action)
{
    try {
        action();
    } catch (const EDatabaseError &error) {
        return error;
    }
    QTest::qFail("No error", __FILE__, __LINE__);
    return {};
}

} // namespace

/// One station writes clients, another one looks on.
class TestDatabaseConnection : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data();
    void init();
    void cleanup();

    void aChangeOutsideOfASaveIsCommittedAtOnce();
    void aSaveIsSeenByOthersWhenItCommits();
    void aSaveThatEndsWithoutCommitLeavesNothing();
    void anExceptionRollsTheSaveBack();
    void onlyTheOuterSaveEndsTheTransaction();
    void anInnerSaveWithoutCommitLetsNothingRemain();
    void whatFollowsTheCommitIsNoPartOfTheSave();
    void aSaveSeesItsOwnChanges();
    void aReadOutsideOfASaveSeesWhatOthersCommitted();
    void aSaveBeginsWithItsFirstStatement();
    void openRowsOutliveACommit();
    void aFailedStatementLeavesTheConnectionUsable();
    void closingInTheMiddleOfASaveLeavesNothing();
    void theFirstValueOfNoRowIsInvalid();

    void aSecondRowOfTheSameKeyIsUnique();
    void twoStationsOnOneRowConflict();
    void aWrongStatementIsRefused();
    void aTextThatIsTooLongIsRefused();
    void aRowThatCannotBeFetchedIsNoEnd();
    void aMissingDatabaseIsAConnectionError();
    void aLostConnectionFailsOnceAndIsMadeAnew();
    void aCommitThatIsCutOffAsksToLookFirst();
    void aConnectionMadeAnewForASaveReadsDatesAsBefore();
    void anErrorTellsTheEnginesWordsAndTheStatement();

private:
    void loseConnection();
    void insert(const QString &code) { m_station->run(insertStatement(code)); }
    static QString insertStatement(const QString &code)
    {
        return u"INSERT INTO ENTIDADE_001 (CODCLI, NOME) VALUES ('%1', 'Malhas')"_s.arg(code);
    }
    int seen() { return m_data->count(u"ENTIDADE"_s); }

    std::unique_ptr<TestDatabase> m_data;
    std::unique_ptr<TTIDatabase> m_station;
};

void TestDatabaseConnection::initTestCase_data()
{
    Engines::addEngineRows();
    Engines::addServerRow();
}

void TestDatabaseConnection::init()
{
    m_data = std::make_unique<TestDatabase>(Engines::current());
    m_station = std::make_unique<TTIDatabase>();
    m_station->open(m_data->settings());
}

void TestDatabaseConnection::cleanup()
{
    m_station.reset();
    m_data.reset();
}

void TestDatabaseConnection::aChangeOutsideOfASaveIsCommittedAtOnce()
{
    insert(u"00001"_s);
    QVERIFY(!m_station->inTransaction());
    QCOMPARE(seen(), 1);
}

void TestDatabaseConnection::aSaveIsSeenByOthersWhenItCommits()
{
    Save save(*m_station);
    insert(u"00001"_s);
    insert(u"00002"_s);
    QVERIFY(m_station->inTransaction());
    QCOMPARE(seen(), 0);
    save.CommitRetaining();
    QVERIFY(!m_station->inTransaction());
    QCOMPARE(seen(), 2);
}

void TestDatabaseConnection::aSaveThatEndsWithoutCommitLeavesNothing()
{
    {
        Save save(*m_station);
        insert(u"00001"_s);
    }
    QVERIFY(!m_station->inSave());
    QVERIFY(!m_station->inTransaction());
    QCOMPARE(seen(), 0);
    insert(u"00001"_s);
    QCOMPARE(seen(), 1);
}

void TestDatabaseConnection::anExceptionRollsTheSaveBack()
{
    const auto save = [&] {
        Save whole(*m_station);
        insert(u"00001"_s);
        insert(u"00001"_s);
        whole.CommitRetaining();
    };
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, save());
    QVERIFY(!m_station->inTransaction());
    QCOMPARE(seen(), 0);
}

void TestDatabaseConnection::onlyTheOuterSaveEndsTheTransaction()
{
    {
        Save outer(*m_station);
        insert(u"00001"_s);
        {
            Save inner(*m_station);
            insert(u"00002"_s);
            inner.CommitRetaining();
            QCOMPARE(seen(), 0);
        }
        insert(u"00003"_s);
        QCOMPARE(seen(), 0);
        outer.CommitRetaining();
        QCOMPARE(seen(), 3);
    }
    QCOMPARE(seen(), 3);
    {
        Save outer(*m_station);
        Save inner(*m_station);
        insert(u"00004"_s);
        inner.CommitRetaining();
    }
    QCOMPARE(seen(), 3);
}

void TestDatabaseConnection::anInnerSaveWithoutCommitLetsNothingRemain()
{
    {
        Save outer(*m_station);
        insert(u"00001"_s);
        {
            Save inner(*m_station);
            insert(u"00002"_s);
        }
        insert(u"00003"_s);
        QVERIFY_THROWS_EXCEPTION(EDatabaseError, outer.CommitRetaining());
    }
    QCOMPARE(seen(), 0);
    Save next(*m_station);
    insert(u"00004"_s);
    next.CommitRetaining();
    QCOMPARE(seen(), 1);
}

void TestDatabaseConnection::whatFollowsTheCommitIsNoPartOfTheSave()
{
    Save save(*m_station);
    insert(u"00001"_s);
    save.CommitRetaining();
    insert(u"00002"_s);
    QVERIFY(!m_station->inTransaction());
    QCOMPARE(seen(), 2);
}

void TestDatabaseConnection::aSaveSeesItsOwnChanges()
{
    Save save(*m_station);
    insert(u"00001"_s);
    QCOMPARE(m_station->value(u"SELECT COUNT(*) FROM ENTIDADE_001"_s).toInt(), 1);
}

void TestDatabaseConnection::aReadOutsideOfASaveSeesWhatOthersCommitted()
{
    QCOMPARE(m_station->value(u"SELECT COUNT(*) FROM ENTIDADE_001"_s).toInt(), 0);
    m_data->run(insertStatement(u"00001"_s));
    QCOMPARE(m_station->value(u"SELECT COUNT(*) FROM ENTIDADE_001"_s).toInt(), 1);
}

void TestDatabaseConnection::aSaveBeginsWithItsFirstStatement()
{
    Save save(*m_station);
    QVERIFY(m_station->inSave());
    QVERIFY(!m_station->inTransaction());
    m_data->run(insertStatement(u"00001"_s));
    QCOMPARE(m_station->value(u"SELECT COUNT(*) FROM ENTIDADE_001"_s).toInt(), 1);
    QVERIFY(m_station->inTransaction());
}

void TestDatabaseConnection::openRowsOutliveACommit()
{
    for (int i = 1; i <= 3; ++i)
        insert(u"0000%1"_s.arg(i));
    QSqlQuery open = m_station->run(u"SELECT CODCLI FROM ENTIDADE_001 ORDER BY CODCLI"_s);
    QVERIFY(open.next());
    Save save(*m_station);
    insert(u"00009"_s);
    save.CommitRetaining();
    QVERIFY(open.next());
    QCOMPARE(open.value(0).toString(), u"00002"_s);
    QVERIFY(open.next());
    QVERIFY(!open.next());
}

void TestDatabaseConnection::aFailedStatementLeavesTheConnectionUsable()
{
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, m_station->run(u"SELECT NADA FROM ENTIDADE_001"_s));
    insert(u"00001"_s);
    QCOMPARE(seen(), 1);
}

void TestDatabaseConnection::closingInTheMiddleOfASaveLeavesNothing()
{
    {
        Save save(*m_station);
        insert(u"00001"_s);
        m_station->close();
        QVERIFY(!m_station->isOpen());
    }
    QCOMPARE(seen(), 0);
    m_station->open(m_data->settings());
    QVERIFY(m_station->isOpen());
    insert(u"00001"_s);
    QCOMPARE(seen(), 1);
}

void TestDatabaseConnection::theFirstValueOfNoRowIsInvalid()
{
    QVERIFY(!m_station->value(u"SELECT CODCLI FROM ENTIDADE_001"_s).isValid());
    QVERIFY(m_station->value(u"SELECT MAX(CODCLI) FROM ENTIDADE_001"_s).isNull());
}

void TestDatabaseConnection::aSecondRowOfTheSameKeyIsUnique()
{
    insert(u"00001"_s);
    const auto error = errorOf([&] { insert(u"00001"_s); });
    QCOMPARE(error->category(), Category::Unique);
    QCOMPARE(error->sentence(), u"Já existe um registro com esta chave. Nada foi gravado."_s);
}

/// Firebird refuses the change of a row that another station changed since the save began; PostgreSQL lets the second
/// one wait for the first, here not longer than a moment.
void TestDatabaseConnection::twoStationsOnOneRowConflict()
{
    insert(u"00001"_s);
    const QString change = u"UPDATE ENTIDADE_001 SET NOME = 'Outra' WHERE CODCLI = '00001'"_s;
    const bool postgres = Engines::current() == u"postgres"_s;
    if (postgres) {
        QCOMPARE(m_station->value(u"SHOW lock_timeout"_s).toString(), u"30s"_s);
        m_station->run(u"SET lock_timeout = '50ms'"_s);
    }
    Save save(*m_station);
    m_station->value(u"SELECT COUNT(*) FROM ENTIDADE_001"_s);
    Save other(m_data->connection());
    m_data->run(change);
    if (!postgres)
        other.CommitRetaining();
    const auto error = errorOf([&] { m_station->run(change); });
    QCOMPARE(error->category(), Category::Conflict);
    QCOMPARE(
        error->sentence(), u"Outra estação alterou estes dados ao mesmo tempo. Nada foi gravado; tente novamente."_s);
}

void TestDatabaseConnection::aWrongStatementIsRefused()
{
    for (const QString &wrong : {u"SELEC 1"_s, u"SELECT * FROM NADA_001"_s, u"UPDATE ENTIDADE_001 SET PESO = 1"_s}) {
        const auto error = errorOf([&] { m_station->run(wrong); });
        QCOMPARE(error->category(), Category::Statement);
        QCOMPARE(error->sentence(), u"O banco de dados recusou a operação. Nada foi gravado."_s);
    }
}

void TestDatabaseConnection::aTextThatIsTooLongIsRefused()
{
    const auto error = errorOf([&] { insert(u"0000001"_s); });
    QCOMPARE(error->category(), Category::Statement);
    QCOMPARE(seen(), 0);
}

void TestDatabaseConnection::aRowThatCannotBeFetchedIsNoEnd()
{
    insert(u"00001"_s);
    const auto error = errorOf([&] { m_station->value(u"SELECT CAST(NOME AS INTEGER) FROM ENTIDADE_001"_s); });
    QCOMPARE(error->category(), Category::Statement);
}

void TestDatabaseConnection::aMissingDatabaseIsAConnectionError()
{
    ConnectionSettings settings = m_data->settings();
    settings.database += u"_missing"_s;
    TTIDatabase other;
    const auto error = errorOf([&] { other.open(settings); });
    QCOMPARE(error->category(), Category::Connection);
    QCOMPARE(error->sentence(), u"A conexão com o banco de dados falhou."_s);
    QVERIFY(!error->details().isEmpty());
    QVERIFY(!other.isOpen());
}

/// The station's; it finds out with its next statement.
void TestDatabaseConnection::loseConnection()
{
    if (Engines::current() == u"postgres"_s) {
        m_data->value(u"SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE datname = current_database() "
                      "AND pid <> pg_backend_pid()"_s);
    } else {
        m_data->run(u"DELETE FROM MON$ATTACHMENTS WHERE MON$ATTACHMENT_ID <> CURRENT_CONNECTION "
                    "AND MON$SYSTEM_FLAG = 0"_s);
    }
}

void TestDatabaseConnection::aLostConnectionFailsOnceAndIsMadeAnew()
{
    loseConnection();
    const auto error = errorOf([&] { insert(u"00001"_s); });
    QCOMPARE(error->category(), Category::Connection);
    QCOMPARE(seen(), 0);
    insert(u"00001"_s); // the next statement connects anew
    QCOMPARE(seen(), 1);
}

void TestDatabaseConnection::aCommitThatIsCutOffAsksToLookFirst()
{
    QString sentence;
    {
        Save save(*m_station);
        insert(u"00001"_s);
        loseConnection();
        try {
            save.CommitRetaining();
        } catch (const EQen &error) {
            sentence = error.sentence();
        }
    }
    QCOMPARE(sentence, u"A conexão com o banco de dados caiu ao gravar. Confira o que foi gravado antes de repetir."_s);
    QCOMPARE(seen(), 0);
    insert(u"00001"_s); // and the station goes on
    QCOMPARE(seen(), 1);
}

/// A save that is rolled back takes nothing of the new connection along, on a server that would write the day first.
void TestDatabaseConnection::aConnectionMadeAnewForASaveReadsDatesAsBefore()
{
    if (Engines::current() == u"postgres"_s)
        m_data->run(u"ALTER DATABASE %1 SET datestyle = 'ISO, DMY'"_s.arg(m_data->settings().database));
    loseConnection();
    QCOMPARE(
        errorOf([&] { m_station->value(u"SELECT COUNT(*) FROM ENTIDADE_001"_s); })->category(), Category::Connection);
    {
        Save save(*m_station);
        insert(u"00001"_s);
    }
    QCOMPARE(seen(), 0);
    m_station->run(u"INSERT INTO OF_MALHA_001 (NUM_OF, DATA) VALUES ('000001', '02/03/2026')"_s);
    QCOMPARE(m_station->value(u"SELECT DATA FROM OF_MALHA_001"_s).toDate(), QDate(2026, 2, 3));
}

void TestDatabaseConnection::anErrorTellsTheEnginesWordsAndTheStatement()
{
    const auto error = errorOf([&] { m_station->run(u"SELECT NADA FROM ENTIDADE_001"_s); });
    QVERIFY2(error->details().contains(u"NADA"_s, Qt::CaseInsensitive), qPrintable(error->details()));
    QVERIFY(error->details().endsWith(u"SELECT NADA FROM ENTIDADE_001"_s));
    QVERIFY(!error->nativeCode().isEmpty());
}

QTEST_MAIN(TestDatabaseConnection)
#include "tst_database.moc"
