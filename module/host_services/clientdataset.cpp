// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/clientdataset.h"

#include "module/host_services/errors.h"

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

TClientDataSet::TClientDataSet(QObject *owner)
    : TDataSet(owner)
{
}

void TClientDataSet::CreateDataSet(const QVector<TField> &fields)
{
    emit aboutToReset();
    setFields(fields);
    m_sort.clear();
    m_filter = {}; // it knew the fields that were before
    endEmpty();
}

void TClientDataSet::EmptyDataSet()
{
    emit aboutToReset();
    endEmpty();
}

void TClientDataSet::endEmpty()
{
    const bool moved = row() >= 0;
    const bool wasEditing = m_state != State::Browse;
    m_rows.clear();
    m_view.clear();
    m_state = State::Browse;
    moveTo(-1, false);
    emit wasReset();
    if (wasEditing)
        emit stateChanged();
    if (moved)
        emit AfterScroll();
}

QVariant TClientDataSet::cell(int row, int fieldIndex) const
{
    return m_rows[m_view[row]][fieldIndex];
}

QVariant TClientDataSet::value(const QString &name) const
{
    return m_state == State::Browse ? TDataSet::value(name) : m_buffer[fieldIndex(name)];
}

void TClientDataSet::Next()
{
    Post();
    TDataSet::Next();
}

void TClientDataSet::Prior()
{
    Post();
    TDataSet::Prior();
}

void TClientDataSet::Last()
{
    Post();
    TDataSet::Last();
}

void TClientDataSet::setRow(int row)
{
    Post();
    TDataSet::setRow(row);
}

bool TClientDataSet::Locate(const QString &names, const QVariantList &values)
{
    Post();
    return TDataSet::Locate(names, values);
}

void TClientDataSet::startInsert(int viewRow)
{
    Post();
    m_buffer = QVector<QVariant>(fields().size());
    m_insertAt = viewRow;
    setState(State::Insert);
}

void TClientDataSet::Append()
{
    startInsert(-1);
}

void TClientDataSet::Insert()
{
    Post();
    startInsert(qMax(0, row()));
}

void TClientDataSet::Edit()
{
    if (m_state != State::Browse)
        return;
    if (row() < 0) {
        Append();
        return;
    }
    m_buffer = m_rows[m_view[row()]];
    setState(State::Edit);
}

void TClientDataSet::setValue(const QString &name, const QVariant &value)
{
    if (m_state == State::Browse)
        throw EProgramming(u"O registro não está em edição."_s, name);
    const int column = fieldIndex(name);
    const TField &described = fields()[column];
    QVariant kept = value;
    if (described.type == TField::Type::Text && !value.isNull()) {
        const QString text = value.toString();
        kept = described.size > 0 ? text.left(described.size) : text;
    }
    if (m_buffer[column] == kept && m_buffer[column].isNull() == kept.isNull())
        return;
    m_buffer[column] = kept;
    emit fieldChanged(described.name);
}

void TClientDataSet::Post()
{
    if (m_state == State::Browse)
        return;
    emit BeforePost();
    if (m_state == State::Edit) {
        const int index = m_view[row()];
        m_rows[index] = m_buffer;
        setState(State::Browse);
        emit rowChanged(row());
        if (!m_sort.isEmpty() || m_filter) {
            emit aboutToReset();
            rebuildView();
            emit wasReset();
            moveTo(m_view.isEmpty() ? -1 : qMax(0, int(m_view.indexOf(index))), false);
        }
    } else {
        const bool atEnd = m_insertAt < 0 || m_insertAt >= m_view.size();
        const int index = atEnd ? int(m_rows.size()) : m_view[m_insertAt];
        const bool plain = m_sort.isEmpty() && !m_filter;
        const int viewRow = atEnd ? int(m_view.size()) : m_insertAt;
        plain ? emit rowsAboutToBeInserted(viewRow, viewRow) : emit aboutToReset();
        m_rows.insert(index, m_buffer);
        if (plain && atEnd)
            m_view.append(index); // work tables are filled this way
        else
            rebuildView();
        setState(State::Browse);
        plain ? emit rowsInserted() : emit wasReset();
        moveTo(plain ? viewRow : qMax(int(m_view.indexOf(index)), m_view.isEmpty() ? -1 : 0), false);
    }
    emit AfterPost();
    emit AfterScroll();
}

void TClientDataSet::Cancel()
{
    setState(State::Browse);
}

void TClientDataSet::Delete()
{
    if (m_state != State::Browse) {
        const bool inserting = m_state == State::Insert;
        Cancel();
        if (inserting)
            return;
    }
    if (row() < 0)
        return;
    const int at = row();
    emit rowsAboutToBeRemoved(at, at);
    m_rows.remove(m_view[at]);
    rebuildView();
    emit rowsRemoved();
    moveTo(qMin(at, int(m_view.size()) - 1), false);
    emit AfterScroll();
}

void TClientDataSet::setIndexFieldNames(const QString &names)
{
    Post();
    QVector<int> sort;
    for (const QString &name : names.split(u';', Qt::SkipEmptyParts))
        sort.append(fieldIndex(name.trimmed()));
    const int current = row() < 0 ? -1 : m_view[row()];
    emit aboutToReset();
    m_sort = sort;
    rebuildView();
    emit wasReset();
    moveTo(current < 0 ? qMin(0, rowCount() - 1) : int(m_view.indexOf(current)));
}

void TClientDataSet::setFilter(const Filter &filter)
{
    Post();
    const int current = row() < 0 ? -1 : m_view[row()];
    emit aboutToReset();
    m_filter = filter;
    rebuildView();
    emit wasReset();
    const int place = int(m_view.indexOf(current));
    moveTo(place >= 0 ? place : qMin(0, rowCount() - 1));
}

double TClientDataSet::sum(const QString &name) const
{
    const int column = fieldIndex(name);
    return std::accumulate(m_view.begin(), m_view.end(), 0.0,
        [&](double total, int index) { return total + m_rows[index][column].toDouble(); });
}

void TClientDataSet::rebuildView()
{
    m_view.clear();
    for (int i = 0; i < m_rows.size(); ++i) {
        if (seen(i))
            m_view.append(i);
    }
    if (!m_sort.isEmpty())
        std::stable_sort(m_view.begin(), m_view.end(), [this](int left, int right) { return before(left, right); });
}

bool TClientDataSet::seen(int index) const
{
    return !m_filter || m_filter(m_rows[index]);
}

bool TClientDataSet::before(int left, int right) const
{
    for (const int column : m_sort) {
        const QVariant &a = m_rows[left][column];
        const QVariant &b = m_rows[right][column];
        if (a.isNull() != b.isNull())
            return a.isNull();
        const QPartialOrdering order = QVariant::compare(a, b);
        if (order != QPartialOrdering::Equivalent)
            return order == QPartialOrdering::Less;
    }
    return false;
}

void TClientDataSet::setState(State state)
{
    if (m_state == state)
        return;
    m_state = state;
    emit stateChanged();
}
