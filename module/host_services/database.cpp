// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/database.h"

#include <QAtomicInt>
#include <QSqlError>

using namespace Qt::StringLiterals;

TTIDatabase::TTIDatabase(QObject *parent)
    : QObject(parent)
    , m_dialect(Dialect::of(Engine::FirebirdEmbedded))
{
    static QAtomicInt number;
    m_name = u"qen%1"_s.arg(number.fetchAndAddOrdered(1));
}

TTIDatabase::~TTIDatabase()
{
    close();
}

void TTIDatabase::open(const ConnectionSettings &settings)
{
    close();
    m_settings = settings;
    m_dialect = Dialect::of(settings.engine);
    QSqlDatabase connection = QSqlDatabase::addDatabase(m_dialect->driver(), m_name);
    connection.setHostName(settings.host);
    if (settings.port > 0)
        connection.setPort(settings.port);
    connection.setDatabaseName(settings.database);
    connection.setUserName(settings.user);
    connection.setPassword(settings.password);
    connection.setConnectOptions(m_dialect->connectOptions());
    connection.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
    if (!connection.open()) {
        const QSqlError error = connection.lastError();
        throw EDatabaseError(EDatabaseError::Category::Connection, error.nativeErrorCode(), error.text(), {});
    }
    m_lost = false;
    // Not by run(): a save that connects anew would begin with them, and take them along when it is rolled back.
    for (const QString &statement : m_dialect->sessionStatements()) {
        QSqlQuery query(connection);
        if (!query.exec(statement))
            throw failure(query.lastError(), statement);
    }
}

void TTIDatabase::close()
{
    if (!QSqlDatabase::contains(m_name))
        return;
    {
        QSqlDatabase connection = QSqlDatabase::database(m_name, false);
        if (m_inTransaction)
            connection.rollback();
        connection.close();
    }
    m_inTransaction = false;
    QSqlDatabase::removeDatabase(m_name);
}

bool TTIDatabase::isOpen() const
{
    return QSqlDatabase::contains(m_name) && connection().isOpen();
}

void TTIDatabase::reconnectIfLost()
{
    if (!m_lost || m_inTransaction)
        return;
    const ConnectionSettings settings = m_settings;
    open(settings);
}

QSqlQuery TTIDatabase::run(const QString &statement)
{
    reconnectIfLost();
    beginIfSaving();
    QSqlQuery query(connection());
    const QString adapted = m_dialect->adapted(statement);
    if (!query.exec(adapted))
        throw failure(query.lastError(), adapted);
    tell(adapted);
    return query;
}

void TTIDatabase::check(const QString &statement)
{
    reconnectIfLost();
    QSqlQuery query(connection());
    const QString adapted = m_dialect->adapted(statement);
    if (!query.prepare(adapted))
        throw failure(query.lastError(), adapted);
}

bool TTIDatabase::next(QSqlQuery &query) const
{
    if (query.next())
        return true;
    if (query.lastError().isValid())
        throw failure(query.lastError(), query.lastQuery());
    return false;
}

QVariant TTIDatabase::value(const QString &statement)
{
    QSqlQuery query = run(statement);
    return next(query) ? m_dialect->exact(query.value(0)) : QVariant();
}

void TTIDatabase::beginIfSaving()
{
    if (m_saves == 0 || m_inTransaction)
        return;
    QSqlDatabase database = connection();
    if (!database.transaction())
        throw failure(database.lastError(), u"BEGIN"_s);
    m_inTransaction = true;
    tell(u"BEGIN"_s);
}

void TTIDatabase::CommitRetaining()
{
    if (!m_inTransaction)
        return;
    QSqlDatabase database = connection();
    if (!database.commit()) {
        const EDatabaseError error = failure(database.lastError(), u"COMMIT"_s);
        Rollback();
        if (error.category() == EDatabaseError::Category::Connection) // it may have arrived all the same
            throw EQen(u"A conexão com o banco de dados caiu ao gravar. Confira o que foi gravado antes de repetir."_s,
                error.details());
        throw error;
    }
    m_inTransaction = false;
    tell(u"COMMIT"_s);
}

void TTIDatabase::Rollback()
{
    // A save that goes on, because a handler's failure was told and is over, must not keep what follows alone.
    m_partFailed = m_saves > 0;
    if (!m_inTransaction)
        return;
    connection().rollback();
    m_inTransaction = false;
    tell(u"ROLLBACK"_s);
}

void TTIDatabase::tell(const QString &statement) const
{
    if (m_observer)
        m_observer(statement);
}

EDatabaseError TTIDatabase::failure(const QSqlError &error, const QString &statement) const
{
    QString text = error.databaseText().trimmed();
    if (text.isEmpty())
        text = error.driverText().trimmed();
    const EDatabaseError::Category category = m_dialect->category(error);
    m_lost = m_lost || category == EDatabaseError::Category::Connection;
    return {category, error.nativeErrorCode(), text, statement};
}

Save::Save(TTIDatabase &database)
    : m_database(database)
{
    ++m_database.m_saves;
}

Save::~Save()
{
    if (!m_open)
        return;
    if (--m_database.m_saves > 0) {
        m_database.m_partFailed = true;
        return;
    }
    m_database.Rollback();
}

void Save::CommitRetaining()
{
    if (!m_open)
        return;
    if (m_database.m_saves == 1) {
        if (m_database.m_partFailed)
            throw EDatabaseError(EDatabaseError::Category::Statement, {}, u"Uma parte da gravação falhou."_s, {});
        m_database.CommitRetaining();
    }
    m_open = false;
    --m_database.m_saves;
}
