// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/dataset.h"

#include <QAbstractTableModel>
#include <QColor>
#include <QPointer>

#include <functional>

/// The rows of a data set as a table model. The data set stays its owner's.
class DataSetModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit DataSetModel(QObject *parent = nullptr);

    void setDataSet(TDataSet *dataSet);
    TDataSet *dataSet() const { return m_dataSet; }
    /// "FIELD=Title;FIELD=Title"; empty: all visible fields with their own titles.
    void setColumns(const QString &columns);
    /// The background of a row, by its number; an invalid colour leaves it as it is. Asked when the row is painted.
    using RowColour = std::function<QColor(int row)>;
    void setRowColour(const RowColour &colour) { m_rowColour = colour; }
    /// Name of the field in a column.
    QString fieldName(int column) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    bool canFetchMore(const QModelIndex &parent) const override;
    void fetchMore(const QModelIndex &parent) override;

private:
    struct Column
    {
        int field;
        QString title;
    };
    void findColumns();
    bool store(const QModelIndex &index, const QVariant &value);

    QPointer<TDataSet> m_dataSet;
    QString m_wanted;
    QVector<Column> m_columns;
    RowColour m_rowColour;
};
