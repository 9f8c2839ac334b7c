// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/controls/datasetmodel.h"

#include "module/host_services/clientdataset.h"

using namespace Qt::StringLiterals;

DataSetModel::DataSetModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

void DataSetModel::setDataSet(TDataSet *dataSet)
{
    beginResetModel();
    if (m_dataSet)
        m_dataSet->disconnect(this);
    m_dataSet = dataSet;
    findColumns();
    endResetModel();
    if (!dataSet)
        return;
    connect(dataSet, &TDataSet::aboutToReset, this, [this] { beginResetModel(); });
    connect(dataSet, &TDataSet::wasReset, this, [this] {
        findColumns();
        endResetModel();
    });
    connect(dataSet, &QObject::destroyed, this, [this] { setDataSet(nullptr); });
    connect(dataSet, &TDataSet::rowsAboutToBeInserted, this,
        [this](int first, int last) { beginInsertRows({}, first, last); });
    connect(dataSet, &TDataSet::rowsInserted, this, [this] { endInsertRows(); });
    connect(dataSet, &TDataSet::rowsAboutToBeRemoved, this,
        [this](int first, int last) { beginRemoveRows({}, first, last); });
    connect(dataSet, &TDataSet::rowsRemoved, this, [this] { endRemoveRows(); });
    connect(dataSet, &TDataSet::rowChanged, this, [this](int row) {
        if (!m_columns.isEmpty())
            emit dataChanged(index(row, 0), index(row, columnCount() - 1));
    });
}

void DataSetModel::setColumns(const QString &columns)
{
    beginResetModel();
    m_wanted = columns;
    findColumns();
    endResetModel();
}

void DataSetModel::findColumns()
{
    m_columns.clear();
    if (!m_dataSet)
        return;
    if (m_wanted.isEmpty()) {
        const QVector<TField> &fields = m_dataSet->fields();
        for (int i = 0; i < fields.size(); ++i) {
            if (fields[i].visible)
                m_columns.append({i, fields[i].title});
        }
        return;
    }
    for (const QString &part : m_wanted.split(u';', Qt::SkipEmptyParts)) {
        const QString name = part.section(u'=', 0, 0).trimmed();
        if (m_dataSet->hasField(name))
            m_columns.append({m_dataSet->fieldIndex(name), part.section(u'=', 1).trimmed()});
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
    const int column = m_columns[index.column()].field;
    const TField &field = m_dataSet->fields()[column];
    switch (role) {
    case Qt::DisplayRole:
        return field.tick ? QString() : field.text(m_dataSet->cell(index.row(), column));
    case Qt::CheckStateRole:
        if (!field.tick)
            return {};
        return m_dataSet->cell(index.row(), column).toString() == u"S" ? Qt::Checked : Qt::Unchecked;
    case Qt::BackgroundRole: {
        const QColor colour = m_rowColour ? m_rowColour(index.row()) : QColor();
        return colour.isValid() ? QVariant(QBrush(colour)) : QVariant();
    }
    case Qt::EditRole:
        return m_dataSet->cell(index.row(), column);
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
    inMemory->setRow(index.row());
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
