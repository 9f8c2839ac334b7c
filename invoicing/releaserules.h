// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QVector>

#include <optional>

/// What a release of fabric adds up to.
namespace ReleaseRules {

/// What is released of one order.
struct Line
{
    double quantity = 0; ///< kg
    qint64 rolls = 0;
    std::optional<double> balance = {}; ///< kg produced and not invoiced; none: it is not known
};

struct Totals
{
    int released = 0; ///< lines with a quantity: those that are printed
    double quantity = 0; ///< kg
    qint64 rolls = 0;
    int above = 0; ///< lines with more than their balance
};

/// Whether more is released than there is, to the gram.
bool isAboveBalance(const Line &line);
Totals totalsOf(const QVector<Line> &lines);

} // namespace ReleaseRules
