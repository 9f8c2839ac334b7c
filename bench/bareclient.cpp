// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/bareclient.h"

#include <QSqlError>
#include <QSqlRecord>

using namespace Qt::StringLiterals;

namespace {

const QString connectionName = QStringLiteral("bare");

} // namespace

BareClient::BareClient(const ConnectionSettings &settings)
{
    const std::unique_ptr<Dialect> dialect = Dialect::of(settings.engine);
    m_connection = QSqlDatabase::addDatabase(dialect->driver(), connectionName);
    m_connection.setHostName(settings.host);
    if (settings.port > 0)
        m_connection.setPort(settings.port);
    m_connection.setDatabaseName(settings.database);
    m_connection.setUserName(settings.user);
    m_connection.setPassword(settings.password);
    m_connection.setConnectOptions(dialect->connectOptions());
    m_connection.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
    if (!m_connection.open())
        throw EQen(u"The bare client cannot connect."_s, m_connection.lastError().text());
    send(dialect->sessionStatements());
}

BareClient::~BareClient()
{
    m_connection.close();
    m_connection = {};
    QSqlDatabase::removeDatabase(connectionName);
}

int BareClient::send(const QStringList &statements)
{
    int rows = 0;
    for (const QString &statement : statements)
        rows += send(statement);
    return rows;
}

int BareClient::send(const QString &statement)
{
    bool sent = true;
    int rows = 0;
    if (statement == u"BEGIN"_s) {
        sent = m_connection.transaction();
    } else if (statement == u"COMMIT"_s) {
        sent = m_connection.commit();
    } else {
        QSqlQuery query(m_connection);
        sent = query.exec(statement);
        const int columns = query.record().count();
        for (; query.next(); ++rows) {
            for (int i = 0; i < columns; ++i)
                query.value(i);
        }
    }
    if (!sent)
        throw EQen(u"The bare client failed: %1"_s.arg(m_connection.lastError().text()), statement);
    return rows;
}
