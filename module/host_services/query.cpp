// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/query.h"

#include "module/host_services/database.h"
#include "module/host_services/tabelas.h"

#include <QSqlField>
#include <QSqlRecord>

using namespace Qt::StringLiterals;

namespace {

TField::Type typeOf(const QMetaType &type)
{
    switch (type.id()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Short:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
        return TField::Type::Integer;
    case QMetaType::Double:
    case QMetaType::Float:
        return TField::Type::Float;
    case QMetaType::QDate:
        return TField::Type::Date;
    case QMetaType::QTime:
        return TField::Type::Time;
    case QMetaType::QDateTime:
        return TField::Type::DateTime;
    default:
        return TField::Type::Text;
    }
}

} // namespace

QVector<TField> fieldsOf(const QSqlRecord &record)
{
    QVector<TField> fields;
    for (int i = 0; i < record.count(); ++i) {
        const QSqlField column = record.field(i);
        fields.append(TField(column.name().toUpper(), typeOf(column.metaType())));
    }
    return fields;
}

TSQLText &TSQLText::add(const QString &line)
{
    m_lines.append(line);
    return *this;
}

TTIQuery::TTIQuery(QObject *owner)
    : TDataSet(owner)
    , m_database(Tabela ? Tabela->IBDatabase : nullptr)
{
}

void TTIQuery::Open()
{
    // What may fail comes first: it then leaves the rows as they were.
    const QString statement = SQL.text();
    const QString probe =
        m_database->inTransaction() ? QString() : m_database->dialect().firstRows(statement, fetchSize);
    QSqlQuery opened = m_database->run(probe.isEmpty() ? statement : probe);
    QVector<TField> found = fieldsOf(m_database->dialect().shapeOf(opened));
    const Rows first = read(opened, int(found.size()), fetchSize);
    // The same select again: its fields are described already.
    const bool sameShape = std::equal(found.begin(), found.end(), fields().begin(), fields().end(),
        [](const TField &left, const TField &right) { return left.type == right.type && left.name == right.name; });
    if (!sameShape)
        describe(found);
    emit aboutToReset();
    if (!sameShape)
        setFields(found);
    m_active = true;
    take(std::move(opened), first.size() == fetchSize);
    m_whole = m_more && !probe.isEmpty() ? statement : QString();
    m_rows = first;
    moveTo(-1, false);
    emit wasReset();
    if (m_database->inTransaction())
        FetchAll();
    moveTo(m_rows.isEmpty() ? -1 : 0, false);
    emit AfterScroll();
}

/// Titles and masks of fields that have the same names now.
void TTIQuery::describe(QVector<TField> &found)
{
    for (TField &described : found) {
        if (hasField(described.name)) {
            const TField &before = field(described.name);
            described.title = before.title;
            described.mask = before.mask;
            described.visible = before.visible;
        }
    }
}

void TTIQuery::Prepare()
{
    m_prepared = false;
    m_database->check(SQL.text());
    m_prepared = true;
}

void TTIQuery::Close()
{
    emit aboutToReset();
    m_query = QSqlQuery();
    m_rows.clear();
    m_active = false;
    m_more = false;
    m_whole.clear();
    moveTo(-1, false);
    emit wasReset();
}

int TTIQuery::ExecSQL()
{
    return m_database->run(SQL.text()).numRowsAffected();
}

void TTIQuery::FetchAll()
{
    while (m_more)
        fetch(10 * fetchSize);
}

TTIQuery::Rows TTIQuery::read(QSqlQuery &query, int columns, int atMost) const
{
    Rows rows;
    while (rows.size() < atMost && m_database->next(query)) {
        QVector<QVariant> row(columns);
        for (int i = 0; i < columns; ++i)
            row[i] = m_database->dialect().exact(query.value(i));
        rows.append(row);
    }
    return rows;
}

/// Where the next rows come from; what has no more of them ends its own transaction.
void TTIQuery::take(QSqlQuery query, bool more)
{
    m_query = more ? std::move(query) : QSqlQuery();
    m_more = more;
}

/// The whole statement after its first rows. Rows that are others by now are shown anew: none stands there twice.
void TTIQuery::openWhole()
{
    QSqlQuery whole = m_database->run(m_whole);
    m_whole.clear();
    const Rows first = read(whole, int(fields().size()), int(m_rows.size()));
    const bool same = first == m_rows;
    take(std::move(whole), first.size() == m_rows.size());
    if (same)
        return;
    const int current = row();
    emit aboutToReset();
    m_rows = first;
    moveTo(-1, false);
    emit wasReset();
    moveTo(qMin(current, int(m_rows.size()) - 1));
}

void TTIQuery::fetch(int atMost)
{
    if (!m_whole.isEmpty())
        openWhole();
    if (!m_more)
        return;
    const Rows fetched = read(m_query, int(fields().size()), atMost);
    if (fetched.size() < atMost)
        take(QSqlQuery(), false);
    if (fetched.isEmpty())
        return;
    const int first = int(m_rows.size());
    emit rowsAboutToBeInserted(first, first + int(fetched.size()) - 1);
    m_rows += fetched;
    emit rowsInserted();
}
