// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/firebirdcolumns.h"

#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QSqlResult>

#include <ibase.h>

#include <cstddef>
#include <vector>

namespace {

/// The engine's description of a statement's columns. Their number is known only once it was asked.
class Description
{
public:
    explicit Description(isc_stmt_handle statement)
    {
        describe(statement, 1);
        if (m_isGiven && area()->sqld > area()->sqln)
            describe(statement, area()->sqld);
    }

    bool isGiven() const { return m_isGiven; }
    int count() const { return area()->sqld; }
    const XSQLVAR &column(int index) const { return area()->sqlvar[index]; }

private:
    void describe(isc_stmt_handle statement, short columns)
    {
        m_buffer.assign(XSQLDA_LENGTH(columns), std::byte{});
        area()->version = SQLDA_VERSION1;
        area()->sqln = columns;
        ISC_STATUS_ARRAY status{};
        m_isGiven = isc_dsql_describe(status, &statement, SQLDA_VERSION1, area()) == 0;
    }

    XSQLDA *area() { return reinterpret_cast<XSQLDA *>(m_buffer.data()); }
    const XSQLDA *area() const { return reinterpret_cast<const XSQLDA *>(m_buffer.data()); }

    std::vector<std::byte> m_buffer;
    bool m_isGiven = false;
};

/// The type in which the driver gives the column's values.
QMetaType::Type typeOf(const XSQLVAR &column)
{
    const bool decimal = column.sqlscale < 0;
    switch (column.sqltype & ~1) { // its lowest bit tells whether it may be null
    case SQL_SHORT:
    case SQL_LONG:
        return decimal ? QMetaType::Double : QMetaType::Int;
    case SQL_INT64:
        return decimal ? QMetaType::Double : QMetaType::LongLong;
    case SQL_FLOAT:
    case SQL_DOUBLE:
    case SQL_D_FLOAT:
        return QMetaType::Double;
    case SQL_TYPE_DATE:
        return QMetaType::QDate;
    case SQL_TYPE_TIME:
        return QMetaType::QTime;
    case SQL_TIMESTAMP:
        return QMetaType::QDateTime;
    case SQL_BLOB:
        return QMetaType::QByteArray;
    case SQL_BOOLEAN:
        return QMetaType::Bool;
    default:
        return QMetaType::QString;
    }
}

} // namespace

QSqlRecord FirebirdColumns::of(const QSqlQuery &query)
{
    const Description description(query.result()->handle().toUInt());
    if (!description.isGiven())
        return query.record();
    QSqlRecord record;
    for (int i = 0; i < description.count(); ++i) {
        const XSQLVAR &column = description.column(i);
        const QString name = QString::fromLatin1(column.aliasname, column.aliasname_length);
        record.append(QSqlField(name.simplified(), QMetaType(typeOf(column))));
    }
    return record;
}
