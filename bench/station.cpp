// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/station.h"

#include "demo/demo.h"
#include "host/databaseopening.h"

#include <QApplication>
#include <QSqlError>
#include <QSqlQuery>
#include <QWidget>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// Folder of the socket, port, user.
QStringList postgresAddress()
{
    return qEnvironmentVariable("QEN_TEST_POSTGRES").split(u';');
}

ConnectionSettings postgres(const QString &database)
{
    const QStringList parts = postgresAddress();
    return {Engine::PostgreSQL, parts[0], parts[1].toInt(), database, parts[2], {}};
}

void onCluster(const QString &statement)
{
    TTIDatabase cluster;
    cluster.open(postgres(u"postgres"_s));
    cluster.run(statement);
}

void beDurable(bool durable)
{
    for (const QString &name : {u"fsync"_s, u"synchronous_commit"_s, u"full_page_writes"_s})
        onCluster(durable ? u"ALTER SYSTEM SET %1 = on"_s.arg(name) : u"ALTER SYSTEM RESET "_s + name);
    onCluster(u"SELECT pg_reload_conf()"_s);
}

} // namespace

BenchDatabase::BenchDatabase(Engine engine, const QString &folder, bool durable)
    : m_durable(durable)
{
    if (engine == Engine::PostgreSQL) {
        m_settings = postgres(u"qen_bench_%1"_s.arg(getpid()));
        if (m_durable)
            beDurable(true);
        onCluster(u"CREATE DATABASE "_s + m_settings.database);
        return;
    }
    m_settings.database = folder + u"/bench.fdb"_s;
    m_settings.user = u"SYSDBA"_s;
}

BenchDatabase::~BenchDatabase()
{
    if (m_settings.engine != Engine::PostgreSQL) {
        QFile::remove(m_settings.database);
        return;
    }
    try {
        onCluster(u"DROP DATABASE IF EXISTS %1 WITH (FORCE)"_s.arg(m_settings.database));
        if (m_durable)
            beDurable(false);
    } catch (const EQen &error) {
        qWarning("%s", qPrintable(error.details()));
    }
}

QString BenchDatabase::engineName() const
{
    return m_settings.engine == Engine::PostgreSQL ? u"PostgreSQL"_s : u"Firebird"_s;
}

bool BenchDatabase::hasPostgres()
{
    return postgresAddress().size() == 3;
}

QSettings &BenchHost::settings()
{
    emit settingsAsked();
    return QenHost::settings();
}

BenchStation::BenchStation(const ConnectionSettings &connection, const QString &folder)
    : m_settings(folder + u"/station.ini"_s, QSettings::IniFormat)
    , m_host(m_settings)
    , m_package(u"qenMalharia"_s)
{
    m_settings.setValue(u"Kelta/Parametros/Porta"_s, folder + u"/no-scale"_s);
    DatabaseOpening::open(database(), connection);
    if (DatabaseOpening::isFirstStart(database()))
        Demo::create(database());
    m_package.load();
    enter(firstCompany);
}

BenchStation::~BenchStation()
{
    // A screen lives no longer than the tables that it has open.
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->testAttribute(Qt::WA_DeleteOnClose))
            delete window;
    }
}

void BenchStation::enter(int company)
{
    m_host.login(Demo::user, company);
}

QWidget *BenchStation::open(const QString &className)
{
    QWidget *form = m_host.loadForm(u"qenMalharia"_s, className, false, true);
    if (!form)
        throw EQen(u"There is no screen %1."_s.arg(className));
    while (!form->isActiveWindow())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return form;
}

void BenchStation::close(QWidget *form)
{
    form->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}
