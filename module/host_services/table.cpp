// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/table.h"

#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/format.h"
#include "module/host_services/query.h"
#include "module/host_services/sqltext.h"
#include "module/host_services/tabelas.h"

#include <QSqlRecord>

using namespace Qt::StringLiterals;

TTITable::TTITable(QObject *owner)
    : TDataSet(owner)
    , m_database(Tabela ? Tabela->IBDatabase : nullptr)
{
}

void TTITable::setIndexFieldNames(const QString &names)
{
    m_key = names.split(u';', Qt::SkipEmptyParts);
    for (QString &name : m_key)
        name = name.trimmed();
}

void TTITable::Open()
{
    m_state = State::Browse;
    First();
    emit stateChanged();
}

void TTITable::Close()
{
    m_record.clear();
    moveTo(-1, false);
    setState(State::Inactive);
}

void TTITable::First()
{
    requireAtRest();
    read(Direction::Forward, {});
}

void TTITable::Last()
{
    requireAtRest();
    read(Direction::Backward, {});
}

void TTITable::Next()
{
    requireAtRest();
    if (!m_record.isEmpty())
        setEof(!read(Direction::Forward, key()));
}

void TTITable::Prior()
{
    requireAtRest();
    if (!m_record.isEmpty())
        read(Direction::Backward, key());
}

bool TTITable::read(Direction direction, const QVariantList &beyond)
{
    const bool forward = direction == Direction::Forward;
    QStringList order;
    for (const QString &name : m_key)
        order.append(forward ? name : name + u" DESC"_s);
    const QString condition = beyond.isEmpty() ? QString() : beyondCondition(beyond, forward ? u'>' : u'<');
    const bool found = readWhere(condition, order.join(u", "_s));
    if (!found && beyond.isEmpty() && !m_record.isEmpty())
        standNowhere();
    return found;
}

void TTITable::standNowhere()
{
    m_record.clear();
    moveTo(-1, false);
    emit AfterScroll();
}

void TTITable::requireAtRest() const
{
    if (isEditing())
        throw EProgramming(u"O registro ainda está em edição."_s, m_table);
}

bool TTITable::readWhere(const QString &condition, const QString &order)
{
    QString statement = u"SELECT * FROM %1"_s.arg(m_table);
    if (!condition.isEmpty())
        statement += u" WHERE "_s + condition;
    if (!order.isEmpty())
        statement += u" ORDER BY "_s + order;
    QSqlQuery query = m_database->run(statement + u" FETCH FIRST 1 ROWS ONLY"_s);
    if (fields().isEmpty())
        setFields(fieldsOf(m_database->dialect().shapeOf(query)));
    if (!m_database->next(query))
        return false;
    m_record.resize(fields().size());
    for (int i = 0; i < m_record.size(); ++i)
        m_record[i] = m_database->dialect().exact(query.value(i));
    moveTo(0, false);
    emit AfterScroll();
    return true;
}

/// (A > a) OR (A = a AND B > b) …
QString TTITable::beyondCondition(const QVariantList &from, QChar comparison) const
{
    QStringList alternatives;
    for (qsizetype i = 0; i < m_key.size(); ++i) {
        QStringList terms;
        if (i > 0)
            terms.append(equals(m_key.mid(0, i), from.mid(0, i)));
        terms.append(u"%1 %2 %3"_s.arg(m_key[i], QString(comparison), literal(fieldIndex(m_key[i]), from[i])));
        alternatives.append(u'(' + terms.join(u" AND "_s) + u')');
    }
    return alternatives.join(u" OR "_s);
}

bool TTITable::Locate(const QString &names, const QVariantList &values)
{
    requireAtRest();
    QStringList wanted = names.split(u';');
    for (QString &name : wanted)
        name = name.trimmed();
    return readWhere(equals(wanted, values), {});
}

void TTITable::Refresh()
{
    if (m_record.isEmpty() || isEditing())
        return;
    const QVariantList at = key();
    if (readWhere(equals(m_key, at), {}) || read(Direction::Forward, at) || read(Direction::Backward, at))
        return;
    standNowhere();
}

void TTITable::Append()
{
    requireAtRest();
    m_buffer = QVector<QVariant>(fields().size());
    setState(State::Insert);
    emit AfterScroll();
}

void TTITable::Edit()
{
    if (m_record.isEmpty() || isEditing())
        return;
    m_buffer = m_record;
    setState(State::Edit);
}

void TTITable::Cancel()
{
    if (!isEditing())
        return;
    setState(State::Browse);
    emit AfterScroll();
}

void TTITable::Post()
{
    if (!isEditing())
        return;
    m_state == State::Insert ? insertRecord() : updateRecord();
    m_recordBeforePost = m_record;
    m_stateBeforePost = m_state;
    m_record = m_buffer;
    moveTo(0, false);
    setState(State::Browse);
}

void TTITable::UndoPost()
{
    if (m_state != State::Browse || m_stateBeforePost == State::Browse)
        return;
    m_record = m_recordBeforePost;
    moveTo(rowCount() - 1, false);
    setState(m_stateBeforePost);
    m_stateBeforePost = State::Browse;
}

void TTITable::insertRecord()
{
    QStringList names;
    QStringList values;
    for (int i = 0; i < m_buffer.size(); ++i) {
        if (m_buffer[i].isNull())
            continue;
        names.append(fields()[i].name);
        values.append(literal(i, m_buffer[i]));
    }
    m_database->run(u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(m_table, names.join(u", "_s), values.join(u", "_s)));
}

void TTITable::updateRecord()
{
    QStringList changes;
    for (int i = 0; i < m_buffer.size(); ++i) {
        if (m_buffer[i] != m_record[i] || m_buffer[i].isNull() != m_record[i].isNull())
            changes.append(u"%1 = %2"_s.arg(fields()[i].name, literal(i, m_buffer[i])));
    }
    if (changes.isEmpty())
        return;
    const QString statement =
        u"UPDATE %1 SET "_s.arg(m_table) + changes.join(u", "_s) + u" WHERE "_s + equals(m_key, key());
    if (m_database->run(statement).numRowsAffected() != 1)
        throw EDatabaseError(EDatabaseError::Category::Conflict, {}, u"O registro não existe mais."_s, statement);
}

void TTITable::Delete()
{
    if (m_record.isEmpty())
        return;
    m_database->run(u"DELETE FROM %1 WHERE "_s.arg(m_table) + equals(m_key, key()));
    setState(State::Browse);
    Refresh();
}

void TTITable::setValue(const QString &name, const QVariant &value)
{
    if (!isEditing())
        throw EProgramming(u"O registro não está em edição."_s, name);
    const int column = fieldIndex(name);
    const bool empty = value.isNull() || (value.typeId() == QMetaType::QString && value.toString().isEmpty());
    const QVariant kept = empty ? QVariant() : value;
    if (m_buffer[column] == kept && m_buffer[column].isNull() == kept.isNull())
        return;
    m_buffer[column] = kept;
    emit fieldChanged(fields()[column].name);
}

QVariant TTITable::cell(int, int fieldIndex) const
{
    return m_record[fieldIndex];
}

QVariant TTITable::value(const QString &name) const
{
    return isEditing() ? m_buffer[fieldIndex(name)] : TDataSet::value(name);
}

QVariantList TTITable::key() const
{
    QVariantList values;
    for (const QString &name : m_key)
        values.append(m_record[fieldIndex(name)]);
    return values;
}

QString TTITable::equals(const QStringList &names, const QVariantList &values) const
{
    QStringList terms;
    for (qsizetype i = 0; i < names.size(); ++i) {
        const QVariant value = values.value(i);
        terms.append(value.isNull() ? names[i] + u" IS NULL"_s
                                    : u"%1 = %2"_s.arg(names[i], literal(fieldIndex(names[i]), value)));
    }
    return terms.join(u" AND "_s);
}

QString TTITable::literal(int fieldIndex, const QVariant &value) const
{
    if (value.isNull())
        return u"NULL"_s;
    switch (fields()[fieldIndex].type) {
    case TField::Type::Integer:
        return QString::number(value.toLongLong());
    case TField::Type::Float:
        return SqlText::number(value.toDouble());
    case TField::Type::Date:
        return SqlText::quoted(Format::sqlDate(value.toDate()));
    case TField::Type::Time:
        return SqlText::quoted(Format::time(value.toTime()));
    case TField::Type::DateTime:
        return SqlText::quoted(
            Format::sqlDate(value.toDateTime().date()) + u' ' + Format::time(value.toDateTime().time()));
    case TField::Type::Text:
        break;
    }
    return SqlText::quoted(value.toString());
}

void TTITable::setState(State state)
{
    if (m_state == state)
        return;
    m_state = state;
    emit stateChanged();
}
