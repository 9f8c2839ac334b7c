// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/accumulator.h"
#include "host/report/layout.h"

#include <QHash>

/// The aggregates of a report by the bands that print them.
class ReportAggregates
{
public:
    explicit ReportAggregates(const Layout::Document &layout);

    void clear(const std::optional<Layout::Band> &band);
    /// Counts the current row for the band that will print the totals.
    void add(const std::optional<Layout::Band> &band, const ExpressionScope &row);
    QVariant result(int number) const;

    bool has(const std::optional<Layout::Band> &band) const;
    /// The row's values for the band's totals, to be added later.
    QVariantList values(const std::optional<Layout::Band> &band, const ExpressionScope &row) const;
    void addValues(const std::optional<Layout::Band> &band, const QVariantList &values);

private:
    struct Use
    {
        int number;
        std::shared_ptr<const Expression> of;
    };

    void collect(const Expression &expression, QVector<Use> &uses);
    void collect(const std::optional<Layout::Band> &band);
    void collect(const Layout::Rows &rows);

    std::vector<Accumulator> m_accumulators;
    QHash<const Layout::Band *, QVector<Use>> m_uses;
};
