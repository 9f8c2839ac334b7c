// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/dataset.h"

#include <QAbstractTableModel>
#include <QColor>
#include <QPointer>

#include <functional>

/// The rows of a data set as a table model, in the data set's order or sorted by a column. The data set stays its
/// owner's, and so does its order.
///
/// While sorted, an edited row stays where it is until it is sorted anew; new rows come where they were put in, and
/// rows that replace all others are sorted as those were.
class DataSetModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit DataSetModel(QObject *parent = nullptr);

    void setDataSet(TDataSet *dataSet);
    TDataSet *dataSet() const { return m_dataSet; }
    /// "FIELD=Title;FIELD=Title"; empty: all visible fields with their own titles.
    void setColumns(const QString &columns);
    /// The background of a row, by its number in the data set; an invalid colour leaves it as it is. Asked when the row
    /// is painted.
    using RowColour = std::function<QColor(int row)>;
    void setRowColour(const RowColour &colour) { m_rowColour = colour; }
    /// Name of the field in a column.
    QString fieldName(int column) const;
    /// Index of a column's field in the data set.
    int fieldIndex(int column) const { return m_columns[column].field; }

    /// Sorts the rows at hand by the values of a column; -1: as the data set has them. A query that has more to fetch
    /// is not sorted.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;
    int sortColumn() const; ///< -1: in the data set's order
    Qt::SortOrder sortOrder() const { return m_sortOrder; }
    /// From the rows of this model to those of the data set, and back.
    int dataSetRow(int row) const { return m_rows.value(row, row); }
    int modelRow(int dataSetRow) const { return m_rows.isEmpty() ? dataSetRow : int(m_rows.indexOf(dataSetRow)); }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    bool canFetchMore(const QModelIndex &parent) const override;
    void fetchMore(const QModelIndex &parent) override;

signals:
    void columnsFound(); ///< the columns may be others than before

private:
    struct Column
    {
        int field;
        QString title;
    };
    void findColumns();
    void follow(TDataSet *dataSet);
    void followRows(TDataSet *dataSet);
    void afterReset();
    void sortRows();
    void rearrange();
    bool store(const QModelIndex &index, const QVariant &value);

    QPointer<TDataSet> m_dataSet;
    QString m_wanted;
    QVector<TField> m_fields; ///< of the data set, when the columns were found
    QVector<Column> m_columns;
    RowColour m_rowColour;
    QString m_sortField; ///< empty: not sorted
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    QVector<int> m_rows; ///< while sorted: the data set's row numbers as they are shown
};
