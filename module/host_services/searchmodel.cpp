// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/searchmodel.h"

#include "module/host_services/clock.h"
#include "module/host_services/database.h"
#include "module/host_services/dataset.h"
#include "module/host_services/format.h"
#include "module/host_services/sqltext.h"

using namespace Qt::StringLiterals;

namespace {

QString shown(const QVariant &value)
{
    if (value.isNull())
        return {};
    switch (value.typeId()) {
    case QMetaType::QDate:
        return Format::date(value.toDate());
    case QMetaType::Double:
        return Format::number(value.toDouble(), u",0.00"_s);
    default:
        return value.toString();
    }
}

/// What is typed as it is shown, a date or a figure, stands otherwise in the table.
QStringList storedForms(const QString &word)
{
    QStringList forms{word};
    if (const std::optional<QDate> date = Format::parseDate(word, Clock::today()); date && word.contains(u'/'))
        forms.append(date->toString(Qt::ISODate));
    if (word.contains(u',') && Format::parseNumber(word))
        forms.append(QString(word).remove(u'.').replace(u',', u'.')); // with the decimals that were typed
    return forms;
}

} // namespace

SearchModel::SearchModel(TTIDatabase &database, const SearchSource &source, QObject *parent)
    : QAbstractTableModel(parent)
    , m_database(database)
    , m_source(source)
{
    reload();
}

void SearchModel::setText(const QString &text)
{
    if (text.simplified() == m_text)
        return;
    m_text = text.simplified();
    reload();
}

void SearchModel::sort(int column, Qt::SortOrder order)
{
    if (column < 0 || column >= m_source.columns.size() || (column == m_sortColumn && order == m_order))
        return;
    m_sortColumn = column;
    m_order = order;
    reload();
}

void SearchModel::reload()
{
    const QVector<QVector<QVariant>> first = page(0);
    beginResetModel();
    m_rows = first;
    endResetModel();
}

QString SearchModel::statement(qsizetype offset) const
{
    QStringList names;
    for (const SearchSource::Column &column : m_source.columns)
        names.append(column.name);
    QStringList conditions;
    if (!m_source.filter.isEmpty())
        conditions.append(u'(' + m_source.filter + u')');
    for (const QString &word : m_text.split(u' ', Qt::SkipEmptyParts)) {
        QStringList anywhere;
        for (const QString &form : storedForms(word)) {
            for (const QString &name : names)
                anywhere.append(m_database.dialect().contains(name, SqlText::quoted(form)));
        }
        conditions.append(u'(' + anywhere.join(u" OR "_s) + u')');
    }
    const QString direction = m_order == Qt::AscendingOrder ? QString() : u" DESC"_s;
    QString order = names[m_sortColumn] + direction;
    if (m_sortColumn != 0)
        order += u", "_s + names[0] + direction;
    return u"SELECT "_s + names.join(u", "_s) + u" FROM "_s + m_source.from + u" P"_s
        + (conditions.isEmpty() ? QString() : u" WHERE "_s + conditions.join(u" AND "_s)) + u" ORDER BY "_s + order
        + u" OFFSET %1 ROWS FETCH NEXT %2 ROWS ONLY"_s.arg(offset).arg(pageSize);
}

QVector<QVector<QVariant>> SearchModel::page(qsizetype offset)
{
    QVector<QVector<QVariant>> rows;
    QSqlQuery query = m_database.run(statement(offset));
    const int columns = int(m_source.columns.size());
    while (m_database.next(query)) {
        QVector<QVariant> row(columns);
        for (int i = 0; i < columns; ++i)
            row[i] = query.value(i);
        rows.append(row);
    }
    m_more = rows.size() == pageSize;
    return rows;
}

QString SearchModel::value(int row, const QString &column) const
{
    for (qsizetype i = 0; i < m_source.columns.size() && row >= 0 && row < m_rows.size(); ++i) {
        if (m_source.columns[i].name.compare(column, Qt::CaseInsensitive) == 0)
            return m_rows[row][i].isNull() ? QString() : m_rows[row][i].toString();
    }
    return {};
}

int SearchModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int SearchModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_source.columns.size());
}

QVariant SearchModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const QVariant &value = m_rows[index.row()][index.column()];
    if (role == Qt::DisplayRole)
        return shown(value);
    if (role == Qt::TextAlignmentRole && value.typeId() == QMetaType::Double)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

QVariant SearchModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= m_source.columns.size())
        return {};
    if (role == Qt::DisplayRole)
        return m_source.columns[section].title;
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

bool SearchModel::canFetchMore(const QModelIndex &parent) const
{
    return !parent.isValid() && m_more;
}

void SearchModel::fetchMore(const QModelIndex &)
{
    const QVector<QVector<QVariant>> next = page(m_rows.size());
    if (next.isEmpty())
        return;
    beginInsertRows({}, int(m_rows.size()), int(m_rows.size() + next.size()) - 1);
    m_rows += next;
    endInsertRows();
}
