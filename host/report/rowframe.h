// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/layout.h"

#include <QHash>

#include <functional>

class TDataSet;
struct ReportCall;

/// What the frames of a report have in common.
class ReportValues
{
public:
    virtual ~ReportValues() = default;
    virtual QVariant call(const QString &function, const QVariantList &arguments) const = 0;
    virtual QVariant aggregate(int number) const = 0;
    virtual const ReportCall &reportCall() const = 0;
    /// The frame of a data set that is walked through; null when it is not.
    virtual const class RowFrame *frameOf(const TDataSet *dataSet) const = 0;
};

/// The place in a report's data where a data set is walked through: its current row there, and the names that the
/// layout may use there: its own fields, those of the data sets above, parameters, and fields with their data set's
/// name. The data set's own cursor is left alone.
class RowFrame : public ExpressionScope
{
public:
    /// Without rows: the scope of a report that prints parameters alone. Throws EQen when the data set is missing.
    RowFrame(const ReportValues &report, const Layout::Rows *rows, const RowFrame *above);

    const Layout::Rows *rows() const { return m_rows; }
    const TDataSet *dataSet() const { return m_dataSet; }
    std::vector<std::unique_ptr<RowFrame>> &beneath() { return m_beneath; }
    const std::vector<std::unique_ptr<RowFrame>> &beneath() const { return m_beneath; }

    int row() const { return m_row; }
    void setRow(int row) { m_row = row; } ///< -1: none, all its fields are null
    int number() const { return m_number; } ///< of the row, from 1, among those beneath the row above
    void setNumber(int number) { m_number = number; }
    /// The row exists; fetches what is needed to know that.
    bool hasRow(int row);
    /// The rows that belong to the current row above, by the fields that match.
    QVector<int> matchingRows();

    /// Where the name leads is found out once. False when it leads nowhere.
    bool knows(const QString &name) const;
    QVariant value(const QString &name) const override;
    QVariant call(const QString &function, const QVariantList &arguments) const override;
    QVariant aggregate(int number) const override { return m_report.aggregate(number); }

private:
    struct Source
    {
        const RowFrame *frame = nullptr; ///< null: the data set's own cursor
        TDataSet *dataSet = nullptr; ///< null: a parameter
        int field = -1;
        QVariant parameter;
    };

    std::optional<Source> find(const QString &name) const;
    std::optional<Source> findQualified(const QString &dataSet, const QString &field) const;
    void buildIndex();
    TDataSet *findDataSet(const QString &name) const;

    const ReportValues &m_report;
    const Layout::Rows *m_rows;
    const RowFrame *m_above;
    TDataSet *m_dataSet = nullptr;
    std::vector<std::unique_ptr<RowFrame>> m_beneath;
    int m_row = -1;
    int m_number = 0;
    mutable QHash<QString, Source> m_sources;
    bool m_isIndexed = false;
    QHash<QString, QVector<int>> m_index; ///< rows by what must match
};
