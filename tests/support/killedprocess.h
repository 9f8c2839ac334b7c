// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/engines.h"
#include "tests/support/teststation.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <cstdio>

/// A process of the test program's own that is killed in the middle of a save, and what remains of it.
///
/// The test starts itself again: main() asks isThisProcess(), works at a station on engine(), and calls arm() before
/// the save.
class KilledProcess
{
public:
    static bool isThisProcess() { return qEnvironmentVariableIsSet(statementVariable); }
    static QString engine() { return qEnvironmentVariable(engineVariable); }
    /// From here on the process does not survive the statement that the test named.
    static void arm(TestStation &station)
    {
        for (const QByteArray &place :
            {station.database.settings().database.toUtf8(), qgetenv("XDG_DATA_HOME"), qgetenv("FIREBIRD")})
            std::puts(place.constData());
        std::fflush(stdout);
        station.tabela.IBDatabase->setObserver([](const QString &statement) {
            if (statement.startsWith(qEnvironmentVariable(statementVariable)))
                std::raise(SIGKILL);
        });
    }

    /// Starts this program again, on the engine of the test that is running, and waits for its death after the first
    /// statement that begins like this.
    explicit KilledProcess(const QString &statement)
        : m_own(Engines::current())
        , m_settings(m_own.settings())
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QString::fromLatin1(statementVariable), statement);
        environment.insert(QString::fromLatin1(engineVariable), Engines::current());
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(), {});
        m_killed = process.waitForFinished(120'000) && process.exitStatus() == QProcess::CrashExit
            && process.exitCode() == SIGKILL;
        m_places = QString::fromUtf8(process.readAllStandardOutput()).split(QLatin1Char('\n'));
        m_said = m_places.join(QLatin1Char('\n')) + QString::fromUtf8(process.readAllStandardError());
        m_settings.database = m_places.value(0);
    }
    ~KilledProcess()
    {
        m_left.close();
        if (m_settings.engine == Engine::PostgreSQL && m_killed)
            m_own.run(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(m_settings.database));
        // What the process could not remove: folders within those of its own.
        for (const QString &place : m_places.mid(1, 2)) {
            if (m_killed)
                QDir(QFileInfo(place).path()).removeRecursively();
        }
    }
    Q_DISABLE_COPY_MOVE(KilledProcess)

    bool wasKilled() const { return m_killed; }
    const QString &said() const { return m_said; }
    /// The columns of all rows of the database that the process left, joined by a blank.
    QStringList rows(const QString &statement)
    {
        if (!m_left.isOpen())
            m_left.open(m_settings);
        QStringList result;
        QSqlQuery query = m_left.run(statement);
        while (m_left.next(query)) {
            QStringList columns;
            for (int i = 0; i < query.record().count(); ++i)
                columns.append(m_left.dialect().exact(query.value(i)).toString());
            result.append(columns.join(QLatin1Char(' ')));
        }
        return result;
    }

private:
    static constexpr char statementVariable[] = "QEN_TEST_KILLED_AT";
    static constexpr char engineVariable[] = "QEN_TEST_KILLED_ON";

    TestDatabase m_own;
    ConnectionSettings m_settings;
    TTIDatabase m_left;
    QStringList m_places;
    QString m_said;
    bool m_killed = false;
};
