// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/testdatabase.h"

#include "module/host_services/firebirdroot.h"
#include "module/host_services/sqltext.h"
#include "module/schema/schema.h"
#include "tests/support/engines.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QSqlRecord>
#include <QTemporaryDir>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

bool isPostgres(const QString &engine)
{
    return engine == u"postgres"_s;
}

/// The files of this process: its engine's root and its databases.
QString processFolder()
{
    static const QTemporaryDir folder;
    return folder.path();
}

/// What the processes of one user share: the copies' originals.
QString sharedFolder()
{
    const QString folder = QDir::temp().filePath(u"qen-tests-%1"_s.arg(getuid()));
    QDir().mkpath(folder);
    return folder;
}

/// Not met again in the cluster, where a test that crashed left its database behind.
QString uniqueName()
{
    static int number = 0;
    static const QString start = QString::number(QDateTime::currentMSecsSinceEpoch(), 36);
    return u"qen_test_%1_%2_%3"_s.arg(start).arg(getpid()).arg(++number);
}

/// Another one for every change in what creates the schema.
QString templateName()
{
    static const QString name = [] {
        QFile library(QString::fromUtf8(QEN_SCHEMA_LIBRARY));
        QCryptographicHash hash(QCryptographicHash::Sha1);
        if (!library.open(QIODevice::ReadOnly) || !hash.addData(&library))
            throw EQen(u"The schema library cannot be read."_s, library.fileName());
        for (const Engine engine : {Engine::FirebirdEmbedded, Engine::PostgreSQL}) {
            const std::unique_ptr<Dialect> dialect = Dialect::of(engine);
            hash.addData(dialect->databaseStatements().join(u'\n').toUtf8());
            for (int kind = 0; kind <= int(ColumnKind::Timestamp); ++kind)
                hash.addData(dialect->columnType(ColumnKind(kind), 1).toUtf8());
        }
        return u"qen_schema_"_s + QString::fromLatin1(hash.result().toHex().left(16));
    }();
    return name;
}

ConnectionSettings settingsFor(const QString &engine, const QString &name)
{
    ConnectionSettings settings;
    if (isPostgres(engine)) {
        const QStringList parts = Engines::environment("QEN_TEST_POSTGRES");
        return {Engine::PostgreSQL, parts[0], parts[1].toInt(), name, parts[2], {}};
    }
    settings.database = processFolder() + u'/' + name + u".fdb"_s;
    settings.user = u"SYSDBA"_s;
    if (engine == u"firebird-server"_s) {
        const QStringList parts = Engines::environment("QEN_TEST_FIREBIRD");
        settings.engine = Engine::FirebirdServer;
        settings.host = parts[0].section(u'/', 0, 0);
        settings.port = parts[0].section(u'/', 1).toInt();
        settings.user = parts[1];
        settings.password = parts[2];
    }
    return settings;
}

/// For what is said to the PostgreSQL cluster and not to one database.
QVariant onCluster(const QString &statement)
{
    TTIDatabase cluster;
    cluster.open(settingsFor(u"postgres"_s, u"postgres"_s));
    return cluster.value(statement);
}

void createEmpty(const ConnectionSettings &settings)
{
    if (settings.engine == Engine::PostgreSQL)
        onCluster(u"CREATE DATABASE %1 TEMPLATE template0"_s.arg(settings.database));
    else
        FirebirdRoot::createDatabase(settings.database);
}

void createSchema(const ConnectionSettings &settings)
{
    TTIDatabase database;
    database.open(settings);
    Schema::Builder builder(database);
    builder.upgrade();
    builder.createCompany(1, u"Malharia Serra Azul"_s);
    builder.createCompany(2, u"Serra Azul Beneficiamento"_s);
}

/// The finished template gets its name last: what was cut short is never taken for one.
void makePostgresTemplate()
{
    if (onCluster(u"SELECT 1 FROM pg_database WHERE datname = '%1'"_s.arg(templateName())).isValid())
        return;
    const ConnectionSettings settings = settingsFor(u"postgres"_s, uniqueName());
    createEmpty(settings);
    createSchema(settings);
    onCluster(u"ALTER DATABASE %1 RENAME TO %2"_s.arg(settings.database, templateName()));
}

void makeFirebirdTemplate(const QString &file)
{
    if (QFile::exists(file))
        return;
    const ConnectionSettings settings = settingsFor(u"firebird"_s, uniqueName());
    createEmpty(settings);
    createSchema(settings);
    const QString finished = file + u".new"_s;
    QFile::remove(finished);
    if (!QFile::copy(settings.database, finished) || !QFile::rename(finished, file))
        throw EQen(u"The template database cannot be written."_s, file);
    QFile::remove(settings.database);
    const QDateTime yesterday = QDateTime::currentDateTime().addDays(-1);
    for (const QFileInfo &old : QFileInfo(file).dir().entryInfoList({u"qen_schema_*.fdb"_s}, QDir::Files)) {
        if (old.lastModified() < yesterday)
            QFile::remove(old.filePath());
    }
}

void copyTemplate(const ConnectionSettings &settings)
{
    const bool postgres = settings.engine == Engine::PostgreSQL;
    const QString folder = sharedFolder();
    const QString file = folder + u'/' + templateName() + u".fdb"_s;
    {
        QLockFile lock(folder + (postgres ? u"/postgres.lock"_s : u"/firebird.lock"_s));
        lock.setStaleLockTime(0); // its owner may need minutes under a sanitizer; a dead owner is noticed all the same
        lock.lock();
        postgres ? makePostgresTemplate() : makeFirebirdTemplate(file);
    }
    if (postgres)
        onCluster(u"CREATE DATABASE %1 TEMPLATE %2 STRATEGY FILE_COPY"_s.arg(settings.database, templateName()));
    else if (!QFile::copy(file, settings.database))
        throw EQen(u"The template database cannot be copied."_s, settings.database);
}

QString withTables(const QString &statement)
{
    return SqlText::withTables(statement, [](const QString &name) { return name + u"_001"_s; });
}

} // namespace

TestDatabase::TestDatabase(const QString &engine, Content content)
    : m_engine(engine)
{
    const QString reason = Engines::missing(engine);
    if (!reason.isEmpty()) {
        qWarning("%s", qPrintable(reason));
        throw EQen(reason);
    }
    FirebirdRoot::prepare(processFolder());
    m_settings = settingsFor(engine, uniqueName());
    content == Content::Schema ? copyTemplate(m_settings) : createEmpty(m_settings);
}

TestDatabase::~TestDatabase()
{
    m_connection.reset();
    if (isPostgres(m_engine))
        onCluster(u"DROP DATABASE IF EXISTS %1 WITH (FORCE)"_s.arg(m_settings.database));
    else
        QFile::remove(m_settings.database);
}

TTIDatabase &TestDatabase::connection()
{
    if (!m_connection) {
        m_connection = std::make_unique<TTIDatabase>();
        m_connection->open(m_settings);
    }
    return *m_connection;
}

void TestDatabase::run(const QString &statement)
{
    connection().run(withTables(statement));
}

QVariant TestDatabase::value(const QString &statement)
{
    return connection().value(withTables(statement));
}

int TestDatabase::count(const QString &table, const QString &condition)
{
    const QString where = condition.isEmpty() ? QString() : u" WHERE "_s + condition;
    return value(u"SELECT COUNT(*) FROM {%1}"_s.arg(table) + where).toInt();
}

QStringList TestDatabase::rows(const QString &statement)
{
    QStringList result;
    QSqlQuery query = connection().run(withTables(statement));
    const int count = query.record().count(); // asking again for each row would take longer than the rows
    while (query.next()) {
        QStringList columns;
        for (int i = 0; i < count; ++i)
            columns.append(query.isNull(i) ? QString() : connection().dialect().exact(query.value(i)).toString());
        result.append(columns.join(u'|'));
    }
    return result;
}
