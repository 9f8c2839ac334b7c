// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/searchsource.h"

#include <QAbstractTableModel>

class TTIDatabase;

/// The rows of a search, read page by page as the user scrolls: the first ones are there at once, however large the
/// table is.
class SearchModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    SearchModel(TTIDatabase &database, const SearchSource &source, QObject *parent = nullptr);

    /// Rows that hold every word of the text, each in any column, upper or lower case alike. Dates and figures are
    /// found as they are shown.
    void setText(const QString &text);
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;
    int sortColumn() const { return m_sortColumn; }
    QString value(int row, const QString &column) const; ///< empty for an unknown column

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    bool canFetchMore(const QModelIndex &parent) const override;
    void fetchMore(const QModelIndex &parent) override;

    static constexpr int pageSize = 100;

private:
    void reload();
    QString statement(qsizetype offset) const;
    QVector<QVector<QVariant>> page(qsizetype offset);

    TTIDatabase &m_database;
    SearchSource m_source;
    QString m_text;
    int m_sortColumn = 0;
    Qt::SortOrder m_order = Qt::AscendingOrder;
    QVector<QVector<QVariant>> m_rows;
    bool m_more = false;
};
