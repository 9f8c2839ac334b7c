// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/packageloader.h"
#include "host/qenhost.h"
#include "module/host_services/database.h"
#include "module/host_services/tabelas.h"

#include <QSettings>
#include <QString>

/// A database of the benchmark's own with the demonstration's two companies; it goes with the object.
class BenchDatabase
{
public:
    /// Local files are kept in the folder. A durable one waits for the disk at each commit, as an installed server
    /// does; the tests' cluster does not by itself. Throws EQen.
    BenchDatabase(Engine engine, const QString &folder, bool durable);
    ~BenchDatabase();
    Q_DISABLE_COPY_MOVE(BenchDatabase)

    const ConnectionSettings &settings() const { return m_settings; }
    QString engineName() const;

    /// Whether a PostgreSQL cluster was named to us: QEN_TEST_POSTGRES, as packaging/test-engines exports it.
    static bool hasPostgres();

private:
    ConnectionSettings m_settings;
    bool m_durable;
};

/// The host, which tells when somebody asks for the station's settings: the scale does, before it is read.
class BenchHost : public QenHost
{
    Q_OBJECT

public:
    using QenHost::QenHost;
    QSettings &settings() override;

signals:
    void settingsAsked();
};

/// A station of the mill without main window and login dialog: connection, host, package of screens. Its scale is a
/// port that does not exist, so that no time is spent waiting for a weight.
class BenchStation
{
public:
    BenchStation(const ConnectionSettings &connection, const QString &folder);
    ~BenchStation();
    Q_DISABLE_COPY_MOVE(BenchStation)

    TTIDatabase &database() { return *m_tables.IBDatabase; }
    BenchHost &host() { return m_host; }
    /// Goes on in that company as the demonstration's user, who may do everything.
    void enter(int company);

    /// Opens a screen as the menu does; it is ready for keys. Throws EQen when there is no such screen.
    QWidget *open(const QString &className);
    /// Closes it and waits until it has freed itself.
    static void close(QWidget *form);

    static constexpr int firstCompany = 1;
    static constexpr int secondCompany = 2;

private:
    QSettings m_settings;
    TTabela m_tables;
    BenchHost m_host;
    PackageLoader m_package;
};
