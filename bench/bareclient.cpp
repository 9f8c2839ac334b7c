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
    : m_dialect(Dialect::of(settings.engine))
{
    m_connection = QSqlDatabase::addDatabase(m_dialect->driver(), connectionName);
    m_connection.setHostName(settings.host);
    if (settings.port > 0)
        m_connection.setPort(settings.port);
    m_connection.setDatabaseName(settings.database);
    m_connection.setUserName(settings.user);
    m_connection.setPassword(settings.password);
    m_connection.setConnectOptions(m_dialect->connectOptions());
    m_connection.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
    if (!m_connection.open())
        throw EQen(u"The bare client cannot connect."_s, m_connection.lastError().text());
    send(m_dialect->sessionStatements());
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
    if (statement == u"BEGIN"_s || statement == u"COMMIT"_s) {
        if (statement == u"BEGIN"_s ? m_connection.transaction() : m_connection.commit())
            return 0;
        throw EQen(u"The bare client failed."_s, m_connection.lastError().text());
    }
    QSqlQuery query(m_connection);
    if (!query.exec(statement))
        throw EQen(u"The bare client failed."_s, query.lastError().text() + u'\n' + statement);
    int rows = 0;
    const int columns = query.isSelect() ? int(m_dialect->shapeOf(query).count()) : 0;
    for (; query.next(); ++rows) {
        for (int i = 0; i < columns; ++i)
            query.value(i);
    }
    return rows;
}
