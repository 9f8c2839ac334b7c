// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/expression.h"

/// Adds the rows of an aggregate up. Sums are exact to the millionth, however many rows they have.
class Accumulator
{
public:
    explicit Accumulator(Expression::Aggregate::Kind kind = Expression::Aggregate::Kind::Sum);

    void clear();
    /// The value of a row. Null counts as 0 in a sum, and not at all for all others but COUNT().
    void add(const QVariant &value);
    /// Of no rows: 0 for sums and counts, null for the others.
    QVariant result() const;

private:
    double sum() const;

    Expression::Aggregate::Kind m_kind;
    double m_sum = 0;
    double m_lost = 0; ///< what the sum was too small to hold
    qint64 m_count = 0;
    QVariant m_extreme;
};
