// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/host_services/errors.h"
#include "module/host_services/firebirdroot.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <grp.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr uid_t nobody = 65534;
constexpr int patience = 20'000;

/// A connection that is closed and forgotten with its object. A failure to open shows in the first statement.
class Connection
{
public:
    explicit Connection(const QString &file, const QString &host = {}, int port = 0, const QString &password = {})
        : m_name(QString::number(quintptr(this)))
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QIBASE"_s, m_name);
        database.setHostName(host);
        if (port > 0)
            database.setPort(port);
        database.setDatabaseName(file);
        database.setUserName(u"SYSDBA"_s);
        database.setPassword(password);
        if (!database.open())
            m_error = database.lastError();
    }
    ~Connection()
    {
        QSqlDatabase::database(m_name, false).close();
        QSqlDatabase::removeDatabase(m_name);
    }
    Q_DISABLE_COPY_MOVE(Connection)

    /// "ok" or the engine's words.
    QString run(const QString &statement) { return fetch(statement, true); }
    /// The first value, or the engine's words.
    QString value(const QString &statement) { return fetch(statement, false); }
    QSqlDatabase database() const { return QSqlDatabase::database(m_name, false); }

private:
    QString fetch(const QString &statement, bool isChange)
    {
        if (m_error.isValid())
            return m_error.text();
        QSqlQuery query(database());
        if (!query.exec(statement))
            return query.lastError().text();
        if (isChange)
            return u"ok"_s;
        return query.next() ? query.value(0).toString() : u"no row"_s;
    }

    QString m_name;
    QSqlError m_error;
};

QString messageOf(const std::function<void()> &action)
{
    try {
        action();
    } catch (const EQen &error) {
        return error.sentence() + u'\n' + error.details();
    }
    return {};
}

/// The test program once more, as another station on the same file.
class Station
{
public:
    explicit Station(const QString &task, const QString &folder, const QString &user = u"same"_s)
    {
        m_process.start(QCoreApplication::applicationFilePath(), {u"--station"_s, task, folder, user});
    }

    /// What the station says next, without the end of line.
    QString says()
    {
        if (!m_process.canReadLine() && !m_process.waitForReadyRead(patience))
            return u"nothing: "_s + QString::fromUtf8(m_process.readAllStandardError());
        return QString::fromUtf8(m_process.readLine()).trimmed();
    }
    void goOn() { m_process.write("\n"); }
    bool finish() { return m_process.waitForFinished(patience) && m_process.exitCode() == 0; }
    QProcess &process() { return m_process; }

private:
    QProcess m_process;
};

void say(const QString &text)
{
    fputs(qPrintable(text + u'\n'), stdout);
    fflush(stdout);
}

/// What the other station does; what it finds it says on its standard output.
int station(const QString &task, const QString &folder, const QString &user)
{
    // Only now: the folder of this program may be closed to the other user.
    if (user == u"nobody"_s && (setgroups(0, nullptr) != 0 || setgid(nobody) != 0 || setuid(nobody) != 0))
        return 1;
    const QString file = folder + u"/mill.fdb"_s;
    const QString failure = messageOf([&] { FirebirdRoot::prepare(folder); });
    if (!failure.isEmpty()) {
        say(failure);
        return 1;
    }
    if (task == u"prepare"_s)
        return 0;
    if (task == u"create"_s) {
        const QString message = messageOf([&] { FirebirdRoot::createDatabase(file); });
        say(message.isEmpty() ? u"created"_s : message);
        return 0;
    }
    Connection connection(file);
    say(connection.value(u"SELECT MAX(WEIGHT) FROM ROLL"_s));
    getchar();
    if (task == u"write"_s)
        say(connection.run(u"INSERT INTO ROLL VALUES ('002', 21.5)"_s));
    else if (task == u"read"_s)
        say(connection.value(u"SELECT MAX(WEIGHT) FROM ROLL"_s));
    else
        pause();
    return 0;
}

} // namespace

class TestFirebirdRoot : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void aSecondPreparationChangesNothing();
    void aNewDatabaseTakesAccentsAndEmoji();
    void aFolderWithAccentsIsFine();
    void anExistingFileIsNotTouched();
    void aFolderThatCannotBeWrittenIsNamed();
    void aMissingFolderOfTheDatabaseIsTheEnginesError();
    void twoProcessesShareTheFile();
    void whatAnotherProcessCommitsIsSeen();
    void whoLosesTheRaceForTheFirstStartLearnsIt();
    void anOrdinaryUserWorksWhereRootRanFirst();
    void aProgramWithAnOpenDatabaseEndsWhenItIsAskedTo_data();
    void aProgramWithAnOpenDatabaseEndsWhenItIsAskedTo();
    void aServersDatabaseIsCreatedOnce();
    void aWrongPasswordIsRefusedByTheServer();

private:
    QString createRolls();

    QTemporaryDir m_folder;
    QString m_file;
};

void TestFirebirdRoot::initTestCase()
{
    QVERIFY(m_folder.isValid());
    FirebirdRoot::prepare(m_folder.path());
}

void TestFirebirdRoot::init()
{
    m_file = m_folder.filePath(u"mill.fdb"_s);
    QFile::remove(m_file);
}

QString TestFirebirdRoot::createRolls()
{
    FirebirdRoot::createDatabase(m_file);
    Connection connection(m_file);
    const QString created =
        connection.run(u"CREATE TABLE ROLL (NUMBER VARCHAR(5) NOT NULL PRIMARY KEY, WEIGHT NUMERIC(15,3))"_s);
    return created == u"ok"_s ? connection.run(u"INSERT INTO ROLL VALUES ('001', 20.25)"_s) : created;
}

void TestFirebirdRoot::aSecondPreparationChangesNothing()
{
    const QByteArray root = qgetenv("FIREBIRD");
    QCOMPARE(QString::fromLocal8Bit(root), m_folder.filePath(u"firebird"_s));
    QTemporaryDir other;
    FirebirdRoot::prepare(other.path());
    QCOMPARE(qgetenv("FIREBIRD"), root);
    QVERIFY(QDir(other.path()).isEmpty());
}

void TestFirebirdRoot::aNewDatabaseTakesAccentsAndEmoji()
{
    FirebirdRoot::createDatabase(m_file);
    Connection connection(m_file);
    QCOMPARE(connection.run(u"CREATE TABLE CLIENT (NAME VARCHAR(12))"_s), u"ok"_s);
    QCOMPARE(connection.run(u"INSERT INTO CLIENT VALUES ('Confecção 🧶')"_s), u"ok"_s);
    QCOMPARE(connection.value(u"SELECT NAME FROM CLIENT"_s), u"Confecção 🧶"_s);
    QCOMPARE(connection.value(u"SELECT UPPER(NAME) FROM CLIENT"_s), u"CONFECÇÃO 🧶"_s);
    QCOMPARE(connection.value(u"SELECT MON$PAGE_SIZE FROM MON$DATABASE"_s), u"16384"_s);
}

void TestFirebirdRoot::aFolderWithAccentsIsFine()
{
    const QString folder = m_folder.filePath(u"São João"_s);
    QVERIFY(QDir().mkpath(folder));
    FirebirdRoot::createDatabase(folder + u"/malhação.fdb"_s);
    QVERIFY(QFile::exists(folder + u"/malhação.fdb"_s));
    Connection connection(folder + u"/malhação.fdb"_s);
    QCOMPARE(connection.value(u"SELECT 1 FROM RDB$DATABASE"_s), u"1"_s);
}

void TestFirebirdRoot::anExistingFileIsNotTouched()
{
    QFile file(m_file);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("precious");
    file.close();
    const QString message = messageOf([this] { FirebirdRoot::createDatabase(m_file); });
    QVERIFY2(message.contains(m_file) && message.contains(u"já existe"_s), qPrintable(message));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("precious"));
}

void TestFirebirdRoot::aFolderThatCannotBeWrittenIsNamed()
{
    QVERIFY(QFile(m_file).open(QIODevice::WriteOnly));
    Station other(u"prepare"_s, m_file);
    const QString message = other.says();
    QVERIFY2(message.contains(m_file), qPrintable(message));
    QVERIFY(!other.finish());
}

void TestFirebirdRoot::aMissingFolderOfTheDatabaseIsTheEnginesError()
{
    const QString file = m_folder.filePath(u"nowhere/mill.fdb"_s);
    const QString message = messageOf([&] { FirebirdRoot::createDatabase(file); });
    QVERIFY2(message.startsWith(u"Não foi possível criar"_s), qPrintable(message));
    QVERIFY2(message.contains(u"No such file or directory"_s), qPrintable(message));
}

void TestFirebirdRoot::twoProcessesShareTheFile()
{
    QCOMPARE(createRolls(), u"ok"_s);
    Connection here(m_file);
    Station there(u"write"_s, m_folder.path());
    QCOMPARE(there.says(), u"20.25"_s);
    QCOMPARE(here.run(u"INSERT INTO ROLL VALUES ('003', 22)"_s), u"ok"_s);
    there.goOn();
    QCOMPARE(there.says(), u"ok"_s);
    QVERIFY(there.finish());
    QCOMPARE(here.value(u"SELECT SUM(WEIGHT) FROM ROLL"_s), u"63.75"_s);
}

void TestFirebirdRoot::whatAnotherProcessCommitsIsSeen()
{
    QCOMPARE(createRolls(), u"ok"_s);
    Connection here(m_file);
    Station there(u"read"_s, m_folder.path());
    QCOMPARE(there.says(), u"20.25"_s);
    QVERIFY(here.database().transaction());
    QCOMPARE(here.run(u"INSERT INTO ROLL VALUES ('002', 30)"_s), u"ok"_s);
    Station early(u"read"_s, m_folder.path());
    QCOMPARE(early.says(), u"20.25"_s);
    QVERIFY(here.database().commit());
    for (Station *station : {&there, &early}) {
        station->goOn();
        QCOMPARE(station->says(), u"30"_s);
        QVERIFY(station->finish());
    }
}

void TestFirebirdRoot::whoLosesTheRaceForTheFirstStartLearnsIt()
{
    QTemporaryDir fresh;
    std::vector<std::unique_ptr<Station>> stations;
    for (int i = 0; i < 6; ++i)
        stations.push_back(std::make_unique<Station>(u"create"_s, fresh.path()));
    int created = 0;
    for (const auto &station : stations) {
        const QString word = station->says();
        created += word == u"created"_s;
        QVERIFY2(word == u"created"_s || word.contains(fresh.filePath(u"mill.fdb"_s)), qPrintable(word));
        QVERIFY(station->finish());
    }
    QCOMPARE(created, 1);
    const QStringList parts = QDir(fresh.filePath(u"firebird"_s)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    QCOMPARE(parts,
        (QStringList{u"firebird.conf"_s, u"firebird.msg"_s, u"intl"_s, u"lock"_s, u"plugins"_s, u"plugins.conf"_s}));
}

void TestFirebirdRoot::anOrdinaryUserWorksWhereRootRanFirst()
{
    if (geteuid() != 0)
        QSKIP("Only root can try another user's part");
    QCOMPARE(createRolls(), u"ok"_s);
    QTemporaryDir home;
    QVERIFY(chown(qPrintable(home.path()), nobody, nobody) == 0);
    Station create(u"create"_s, home.path(), u"nobody"_s);
    QCOMPARE(create.says(), u"created"_s);
    QVERIFY(create.finish());
    Station work(u"write"_s, home.path(), u"nobody"_s);
    QVERIFY2(work.says().contains(u"Table unknown"_s), "a connection that works, to a database without tables");
    work.goOn();
    QVERIFY(work.finish());
}

void TestFirebirdRoot::aProgramWithAnOpenDatabaseEndsWhenItIsAskedTo_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("Ctrl+C") << SIGINT;
    QTest::newRow("end of the session") << SIGTERM;
}

void TestFirebirdRoot::aProgramWithAnOpenDatabaseEndsWhenItIsAskedTo()
{
    QFETCH(int, signal);
    QCOMPARE(createRolls(), u"ok"_s);
    Station there(u"wait"_s, m_folder.path());
    QCOMPARE(there.says(), u"20.25"_s);
    QCOMPARE(kill(static_cast<pid_t>(there.process().processId()), signal), 0);
    QVERIFY(there.process().waitForFinished(patience));
    Connection here(m_file);
    QCOMPARE(here.run(u"INSERT INTO ROLL VALUES ('002', 30)"_s), u"ok"_s);
}

void TestFirebirdRoot::aServersDatabaseIsCreatedOnce()
{
    const QStringList server = qEnvironmentVariable("QEN_TEST_FIREBIRD").split(u';');
    QVERIFY2(server.size() == 3, "QEN_TEST_FIREBIRD is not set: start the engines with packaging/test-engines");
    const QString address = server[0] + u':' + m_file;
    FirebirdRoot::createDatabase(address, server[1], server[2]);
    const auto onServer = [&](const QString &statement) {
        Connection connection(m_file, server[0].section(u'/', 0, 0), server[0].section(u'/', 1).toInt(), server[2]);
        return connection.value(statement);
    };
    QCOMPARE(onServer(u"CREATE TABLE CLIENT (NAME VARCHAR(12))"_s), u"no row"_s);
    const QString message = messageOf([&] { FirebirdRoot::createDatabase(address, server[1], server[2]); });
    QVERIFY2(message.contains(u"exists"_s), qPrintable(message));
    QCOMPARE(onServer(u"SELECT COUNT(*) FROM CLIENT"_s), u"0"_s);
}

void TestFirebirdRoot::aWrongPasswordIsRefusedByTheServer()
{
    const QStringList server = qEnvironmentVariable("QEN_TEST_FIREBIRD").split(u';');
    QVERIFY2(server.size() == 3, "QEN_TEST_FIREBIRD is not set: start the engines with packaging/test-engines");
    const QString message =
        messageOf([&] { FirebirdRoot::createDatabase(server[0] + u':' + m_file, server[1], u"errada"_s); });
    QVERIFY2(message.contains(u"user name and password"_s), qPrintable(message));
    QVERIFY(!QFile::exists(m_file));
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() == 5 && arguments[1] == u"--station"_s)
        return station(arguments[2], arguments[3], arguments[4]);
    TestFirebirdRoot test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_firebirdroot.moc"
