// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/dataset.h"

#include "module/host_services/errors.h"
#include "module/host_services/format.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace {

/// Nulls of any type are alike.
bool sameValue(const QVariant &left, const QVariant &right)
{
    return left.isNull() || right.isNull() ? left.isNull() == right.isNull() : left == right;
}

} // namespace

TField::TField(const QString &fieldName, Type fieldType, int textSize)
    : name(fieldName)
    , type(fieldType)
    , size(textSize)
    , title(fieldName)
{
}

TField &TField::titled(const QString &text)
{
    title = text;
    return *this;
}

TField &TField::shownAs(const QString &numberMask)
{
    mask = numberMask;
    return *this;
}

TField &TField::editable()
{
    readOnly = false;
    return *this;
}

TField &TField::hidden()
{
    visible = false;
    return *this;
}

TField &TField::asTick()
{
    tick = true;
    return *this;
}

QString TField::text(const QVariant &value) const
{
    if (value.isNull())
        return {};
    switch (type) {
    case Type::Float:
        return Format::number(value.toDouble(), mask.isEmpty() ? u",0.00"_s : mask);
    case Type::Integer:
        return mask.isEmpty() ? value.toString() : Format::number(value.toDouble(), mask);
    case Type::Date:
        return Format::date(value.toDate());
    case Type::Time:
        return Format::time(value.toTime());
    case Type::DateTime:
        return Format::date(value.toDateTime().date()) + u' ' + Format::time(value.toDateTime().time());
    case Type::Text:
        break;
    }
    return value.toString();
}

TDataSet::TDataSet(QObject *owner)
    : QObject(owner)
{
}

void TDataSet::setFields(const QVector<TField> &fields)
{
    m_fields = fields;
    m_index.clear();
    for (int i = 0; i < m_fields.size(); ++i) {
        // A column selected twice is found at its first place.
        if (!m_index.contains(m_fields[i].name.toUpper()))
            m_index.insert(m_fields[i].name.toUpper(), i);
    }
}

TField &TDataSet::field(const QString &name)
{
    return m_fields[fieldIndex(name)];
}

int TDataSet::fieldIndex(const QString &name) const
{
    const auto found = m_index.constFind(name.toUpper());
    if (found == m_index.constEnd())
        throw EProgramming(u"Campo desconhecido: %1."_s.arg(name));
    return *found;
}

bool TDataSet::hasField(const QString &name) const
{
    return m_index.contains(name.toUpper());
}

void TDataSet::First()
{
    setRow(0);
}

void TDataSet::Next()
{
    if (m_row + 1 >= rowCount() && canFetchMore())
        fetchMore();
    if (m_row + 1 < rowCount())
        moveTo(m_row + 1);
    else
        m_eof = true;
}

void TDataSet::Prior()
{
    if (m_row > 0)
        moveTo(m_row - 1);
}

void TDataSet::Last()
{
    while (canFetchMore())
        fetchMore();
    moveTo(rowCount() - 1);
    m_eof = true;
}

void TDataSet::setRow(int row)
{
    while (row >= rowCount() && canFetchMore())
        fetchMore();
    moveTo(qMin(row, rowCount() - 1));
}

void TDataSet::moveTo(int row, bool tell)
{
    const bool moved = row != m_row;
    m_row = row;
    m_eof = row < 0;
    if (moved && tell)
        emit AfterScroll();
}

bool TDataSet::Locate(const QString &fields, const QVariantList &values)
{
    QVector<int> columns;
    for (const QString &name : fields.split(u';'))
        columns.append(fieldIndex(name.trimmed()));
    for (int row = 0;; ++row) {
        if (row >= rowCount() && canFetchMore())
            fetchMore();
        if (row >= rowCount())
            return false;
        bool matches = true;
        for (int i = 0; i < columns.size() && matches; ++i)
            matches = sameValue(cell(row, columns[i]), values.value(i));
        if (matches) {
            moveTo(row);
            return true;
        }
    }
}

QVariant TDataSet::value(const QString &name) const
{
    const int column = fieldIndex(name);
    return m_row < 0 ? QVariant() : cell(m_row, column);
}

QString TDataSet::AsString(const QString &name) const
{
    const QVariant found = value(name);
    return found.isNull() ? QString() : found.toString(); // a null number is no "0"
}

double TDataSet::AsFloat(const QString &name) const
{
    return value(name).toDouble();
}

int TDataSet::AsInteger(const QString &name) const
{
    return value(name).toInt();
}

QDate TDataSet::AsDate(const QString &name) const
{
    return value(name).toDate();
}

bool TDataSet::IsNull(const QString &name) const
{
    return value(name).isNull();
}
