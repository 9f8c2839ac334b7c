// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>

/// What the write-off of a roll computes, without screen and database.
namespace WriteOffRules {

/// The number after the order's highest one, with at least three digits; an empty text counts as 0.
QString nextNumber(const QString &highest);

/// The number with at least three digits.
QString padded(const QString &number);

/// The day a roll counts for: a night shift's rolls weighed after 12:00:00 count for the day after the one given.
QDate dayOf(const QDate &given, bool nightShift, const QTime &now);

/// Whether the roll (kg) is more than what the order still takes (kg), both read to the gram.
bool exceeds(double roll, double balance);

/// The desk lets a roll be so much heavier (kg) than what the order still takes, without a question.
constexpr double overProductionTolerance = 0.01;
/// Whether the roll (kg) is more than the balance (kg) with its tolerance, read to the gram.
bool isOverProduction(double roll, double balance);

/// How a weight in kg stands in the log: "23,45".
QString logged(double kg);

} // namespace WriteOffRules
