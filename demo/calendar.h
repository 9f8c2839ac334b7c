// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QVector>

namespace Demo {

/// How many days of production the data tell of: three months.
inline constexpr int productionDays = 76;

/// The mill's days, counted without Sundays and holidays: production runs from day 0 to the last one before today,
/// earlier days have negative numbers, and `productionDays` is today. Counted like this the mill's life is the same
/// whatever the day of creation, and only its dates move.
class Calendar
{
public:
    explicit Calendar(QDate today);

    QDate date(int day) const;
    /// Whether the mill also ran on the calendar day before: only then does the night shift begin before midnight.
    bool runsOnEveOf(int day) const { return date(day - 1).addDays(1) == date(day); }

private:
    QDate m_today;
    QVector<QDate> m_backwards; ///< from the last day of production
};

} // namespace Demo
