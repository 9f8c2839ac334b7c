// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/dialect.h"

#include <QObject>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <functional>

/// Where the database is and how to get in.
struct ConnectionSettings
{
    Engine engine = Engine::FirebirdEmbedded;
    QString host; ///< empty with embedded Firebird, and for a local socket with PostgreSQL
    int port = 0; ///< 0: the engine's usual port
    QString database; ///< file, alias or name
    QString user;
    QString password;
};

/// The connection that all screens share.
///
/// A statement outside of a Save stands by itself: a select sees what is committed at that moment, a change is
/// committed at once. Within a Save the first statement begins a transaction.
///
/// A connection that was lost fails the statement that finds out, and what was open then; the next one connects anew.
class TTIDatabase : public QObject
{
    Q_OBJECT

public:
    explicit TTIDatabase(QObject *parent = nullptr);
    ~TTIDatabase() override;

    /// Throws EDatabaseError (Connection). An open connection is closed first.
    void open(const ConnectionSettings &settings);
    void close();
    bool isOpen() const;

    const ConnectionSettings &settings() const { return m_settings; }
    const Dialect &dialect() const { return *m_dialect; }
    QSqlDatabase connection() const { return QSqlDatabase::database(m_name, false); }

    /// Runs one statement; the query stands before its first row. Throws EDatabaseError.
    QSqlQuery run(const QString &statement);
    /// Has the engine check the statement without running it. Throws EDatabaseError.
    void check(const QString &statement);
    /// Moves to the next row. Throws EDatabaseError: an engine may fail while it fetches, which is not the end.
    bool next(QSqlQuery &query) const;
    /// The first column of the first row; an invalid value when there is no row.
    QVariant value(const QString &statement);

    /// Commits and keeps what is open; outside of a transaction nothing happens.
    void CommitRetaining();
    void Rollback();
    bool inTransaction() const { return m_inTransaction; }
    bool inSave() const { return m_saves > 0; }

    /// Is told each statement that ran, as it was sent, and "BEGIN", "COMMIT" and "ROLLBACK". Empty: nobody listens.
    using Observer = std::function<void(const QString &statement)>;
    void setObserver(const Observer &observer) { m_observer = observer; }

private:
    friend class Save;
    void reconnectIfLost();
    void beginIfSaving();
    void tell(const QString &statement) const;
    EDatabaseError failure(const QSqlError &error, const QString &statement) const;

    QString m_name;
    ConnectionSettings m_settings;
    std::unique_ptr<Dialect> m_dialect;
    int m_saves = 0;
    bool m_partFailed = false; ///< an inner save ended without its commit
    bool m_inTransaction = false;
    mutable bool m_lost = false; ///< a statement found no connection any more
    Observer m_observer;
};

/// A save: what runs from its making to its CommitRetaining belongs together, and unless that was reached nothing of it
/// remains. What runs afterwards is no part of it, even while the object still lives. Saves may be nested; only the
/// outermost one ends the transaction, and when an inner one did not reach its commit it cannot commit either.
class Save
{
public:
    explicit Save(TTIDatabase &database);
    ~Save();
    Q_DISABLE_COPY_MOVE(Save)

    /// Throws EDatabaseError; what was done is then rolled back.
    void CommitRetaining();

private:
    TTIDatabase &m_database;
    bool m_open = true;
};
