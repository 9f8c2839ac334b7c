// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/dataset.h"

#include <functional>

/// An in-memory data set for edited lists and work tables: no widget, no statement.
///
/// Rows are seen through the index and the filter. While a row is being inserted or edited its values stand in a
/// buffer that Post writes and Cancel drops; moving away, another index and another filter post.
class TClientDataSet : public TDataSet
{
    Q_OBJECT

public:
    enum class State { Browse, Insert, Edit };

    explicit TClientDataSet(QObject *owner = nullptr);

    /// Defines the fields and empties the set; it has no index and no filter then.
    void CreateDataSet(const QVector<TField> &fields);
    void EmptyDataSet();

    int rowCount() const override { return int(m_view.size()); }
    QVariant cell(int row, int fieldIndex) const override;
    QVariant value(const QString &name) const override;
    void Next() override;
    void Prior() override;
    void Last() override;
    void setRow(int row) override;
    bool Locate(const QString &fields, const QVariantList &values) override;

    State state() const { return m_state; }
    void Append(); ///< a new row after the last
    void Insert(); ///< a new row before the current one
    void Edit();
    /// Tells BeforePost while the values can still be changed, writes the row, then tells AfterPost.
    void Post();
    void Cancel();
    void Delete();
    /// Only while inserting or editing, else EProgramming. Texts are cut to the field's size.
    void setValue(const QString &name, const QVariant &value);

    /// Fields to sort by, "A;B"; empty: the order in which rows were put in.
    void setIndexFieldNames(const QString &fields);
    using Filter = std::function<bool(const QVector<QVariant> &row)>;
    void setFilter(const Filter &filter); ///< an empty function shows all rows

    /// All rows, seen or not, in the order in which they were put in.
    const QVector<QVector<QVariant>> &allRows() const { return m_rows; }
    /// The sum of a numeric field over the rows seen; null counts as 0.
    double sum(const QString &name) const;

signals:
    void BeforePost();
    void AfterPost();
    void fieldChanged(const QString &name);
    void stateChanged();

private:
    void endEmpty();
    void rebuildView();
    bool seen(int index) const;
    bool before(int left, int right) const;
    void setState(State state);
    void startInsert(int viewRow);

    QVector<QVector<QVariant>> m_rows;
    QVector<int> m_view;
    QVector<QVariant> m_buffer;
    QVector<int> m_sort;
    Filter m_filter;
    State m_state = State::Browse;
    int m_insertAt = -1;
};
