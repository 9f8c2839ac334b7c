// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/controls/datasetmodel.h"

#include "module/controls/roworder.h"
#include "module/host_services/clientdataset.h"
#include "module/host_services/query.h"

using namespace Qt::StringLiterals;

namespace {

struct Title
{
    QString field;
    QString text;
};

QVector<Title> titlesIn(const QString &columns)
{
    QVector<Title> titles;
    for (const QString &part : columns.split(u';', Qt::SkipEmptyParts))
        titles.append({part.section(u'=', 0, 0).trimmed(), part.section(u'=', 1).trimmed()});
    return titles;
}

/// A select that was not run yet has no fields, but the titles of its list stand there all the same.
void describe(TTIQuery &query, const QVector<Title> &titles)
{
    QVector<TField> fields = query.fields();
    for (const Title &title : titles) {
        if (!query.hasField(title.field))
            fields.append(TField(title.field, TField::Type::Text));
    }
    query.Describe(fields);
}

} // namespace

DataSetModel::DataSetModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

void DataSetModel::setDataSet(TDataSet *dataSet)
{
    beginResetModel();
    if (m_dataSet)
        m_dataSet->disconnect(this);
    // One that is taken away leaves its titles, and with them the widths that the user gave the columns.
    const bool takenAway = m_dataSet && !dataSet;
    m_dataSet = dataSet;
    if (!takenAway)
        findColumns();
    sortRows();
    endResetModel();
    if (!dataSet)
        return;
    follow(dataSet);
    emit columnsFound();
}

void DataSetModel::follow(TDataSet *dataSet)
{
    connect(dataSet, &TDataSet::aboutToReset, this, [this] { beginResetModel(); });
    connect(dataSet, &TDataSet::wasReset, this, &DataSetModel::afterReset);
    connect(dataSet, &QObject::destroyed, this, [this] { setDataSet(nullptr); });
    connect(dataSet, &TDataSet::rowChanged, this, [this](int row) {
        const int shown = modelRow(row);
        if (!m_columns.isEmpty())
            emit dataChanged(index(shown, 0), index(shown, columnCount() - 1));
    });
    followRows(dataSet);
}

void DataSetModel::followRows(TDataSet *dataSet)
{
    connect(dataSet, &TDataSet::rowsAboutToBeInserted, this, [this](int first, int last) {
        int shown = modelRow(first);
        if (shown < 0) // after the data set's last row
            shown = int(m_rows.size());
        beginInsertRows({}, shown, shown + last - first);
        if (m_sortField.isEmpty())
            return;
        const int count = last - first + 1;
        for (int &row : m_rows)
            row += row >= first ? count : 0;
        for (int i = 0; i < count; ++i)
            m_rows.insert(shown + i, first + i);
    });
    connect(dataSet, &TDataSet::rowsInserted, this, [this] { endInsertRows(); });
    connect(dataSet, &TDataSet::rowsAboutToBeRemoved, this, [this](int first, int last) {
        if (last > first) // may stand anywhere
            sort(-1);
        const int shown = modelRow(first);
        beginRemoveRows({}, shown, shown + last - first);
        if (m_sortField.isEmpty())
            return;
        m_rows.remove(shown);
        for (int &row : m_rows)
            row -= row > first ? 1 : 0;
    });
    connect(dataSet, &TDataSet::rowsRemoved, this, [this] { endRemoveRows(); });
}

void DataSetModel::afterReset()
{
    // Most often the same select again. The copy shares its data with the fields until somebody changes those.
    const bool sameFields = m_dataSet->fields().constData() == m_fields.constData();
    if (!sameFields)
        findColumns();
    sortRows();
    endResetModel();
    if (!sameFields)
        emit columnsFound();
    // An emptied list is being filled anew, row by row.
    if (!m_sortField.isEmpty() && m_dataSet->IsEmpty())
        QMetaObject::invokeMethod(this, &DataSetModel::rearrange, Qt::QueuedConnection);
}

int DataSetModel::sortColumn() const
{
    for (int column = 0; column < m_columns.size() && !m_sortField.isEmpty(); ++column) {
        if (fieldName(column) == m_sortField)
            return column;
    }
    return -1;
}

void DataSetModel::sort(int column, Qt::SortOrder order)
{
    m_sortField = fieldName(column);
    m_sortOrder = order;
    rearrange();
}

/// Shows the same rows in the order that is wanted now.
void DataSetModel::rearrange()
{
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    QVector<int> dataSetRows;
    for (const QModelIndex &kept : before)
        dataSetRows.append(dataSetRow(kept.row()));
    sortRows();
    QModelIndexList after;
    for (int i = 0; i < before.size(); ++i)
        after.append(index(modelRow(dataSetRows[i]), before[i].column()));
    changePersistentIndexList(before, after);
    emit layoutChanged({}, VerticalSortHint);
}

void DataSetModel::sortRows()
{
    m_rows.clear();
    if (m_sortField.isEmpty() || !m_dataSet)
        return;
    if (m_dataSet->hasField(m_sortField) && !m_dataSet->canFetchMore())
        m_rows = sortedRows(*m_dataSet, m_dataSet->fieldIndex(m_sortField), m_sortOrder);
    else
        m_sortField.clear();
}

void DataSetModel::setColumns(const QString &columns)
{
    beginResetModel();
    m_wanted = columns;
    findColumns();
    endResetModel();
    emit columnsFound();
}

void DataSetModel::findColumns()
{
    m_columns.clear();
    if (!m_dataSet)
        return;
    const QVector<Title> titles = titlesIn(m_wanted);
    if (auto *query = qobject_cast<TTIQuery *>(m_dataSet.data()); query && !query->Active())
        describe(*query, titles);
    m_fields = m_dataSet->fields();
    if (titles.isEmpty()) {
        for (int i = 0; i < m_fields.size(); ++i) {
            if (m_fields.at(i).visible)
                m_columns.append({i, m_fields.at(i).title});
        }
        return;
    }
    for (const Title &title : titles) {
        if (m_dataSet->hasField(title.field))
            m_columns.append({m_dataSet->fieldIndex(title.field), title.text});
    }
}

QString DataSetModel::fieldName(int column) const
{
    return m_dataSet && column >= 0 && column < m_columns.size() ? m_dataSet->fields()[m_columns[column].field].name
                                                                 : QString();
}

int DataSetModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() || !m_dataSet ? 0 : m_dataSet->rowCount();
}

int DataSetModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_columns.size());
}

QVariant DataSetModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || !m_dataSet)
        return {};
    const int row = dataSetRow(index.row());
    const int column = m_columns[index.column()].field;
    const TField &field = m_dataSet->fields()[column];
    switch (role) {
    case Qt::DisplayRole:
        return field.tick ? QString() : field.text(m_dataSet->cell(row, column));
    case Qt::CheckStateRole:
        if (!field.tick)
            return {};
        return m_dataSet->cell(row, column).toString() == u"S" ? Qt::Checked : Qt::Unchecked;
    case Qt::BackgroundRole: {
        const QColor colour = m_rowColour ? m_rowColour(row) : QColor();
        return colour.isValid() ? QVariant(QBrush(colour)) : QVariant();
    }
    case Qt::EditRole:
        return m_dataSet->cell(row, column);
    case Qt::TextAlignmentRole:
        return QVariant(Qt::Alignment(field.isNumeric() ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    default:
        return {};
    }
}

bool DataSetModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role == Qt::EditRole && flags(index) & Qt::ItemIsEditable)
        return store(index, value);
    if (role == Qt::CheckStateRole && flags(index) & Qt::ItemIsUserCheckable)
        return store(index, value.toInt() == Qt::Checked ? u"S"_s : u"N"_s);
    return false;
}

bool DataSetModel::store(const QModelIndex &index, const QVariant &value)
{
    auto *inMemory = qobject_cast<TClientDataSet *>(m_dataSet.data());
    inMemory->setRow(dataSetRow(index.row()));
    inMemory->Edit();
    inMemory->setValue(fieldName(index.column()), value);
    inMemory->Post();
    return true;
}

Qt::ItemFlags DataSetModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (!index.isValid() || !qobject_cast<TClientDataSet *>(m_dataSet.data()))
        return flags;
    const TField &field = m_dataSet->fields()[m_columns[index.column()].field];
    if (field.readOnly)
        return flags;
    return flags | (field.tick ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
}

QVariant DataSetModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= m_columns.size())
        return {};
    if (role == Qt::DisplayRole)
        return m_columns[section].title;
    if (role == Qt::TextAlignmentRole && m_dataSet) {
        const bool numeric = m_dataSet->fields()[m_columns[section].field].isNumeric();
        return QVariant(Qt::Alignment(numeric ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    return {};
}

bool DataSetModel::canFetchMore(const QModelIndex &parent) const
{
    return !parent.isValid() && m_dataSet && m_dataSet->canFetchMore();
}

void DataSetModel::fetchMore(const QModelIndex &)
{
    if (m_dataSet && m_dataSet->canFetchMore())
        m_dataSet->fetchMore();
}
