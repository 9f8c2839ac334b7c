// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>

/// What the write-off of a roll computes, without screen and database.
namespace WriteOffRules {

/// The number after the order's highest one, with at least three digits; an empty text counts as 0.
QString nextNumber(const QString &highest);

/// The day a roll counts for: a night shift's rolls weighed after 12:00:00 count for the day after the one given.
QDate dayOf(const QDate &given, bool nightShift, const QTime &now);

/// Whether the roll (kg) is more than what the order still takes (kg), both read to the gram.
bool exceeds(double roll, double balance);

/// How a weight in kg stands in the log: "23,45".
QString logged(double kg);

} // namespace WriteOffRules
