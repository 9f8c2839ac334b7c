// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>
#include <QTime>

#include <optional>

/// Numbers, dates and times as the mill writes and types them: 1.234,50 and 31/12/2026.
/// Nothing here depends on the locale of the machine.
namespace Format {

/// `value` by a mask: zeros before the point are the least number of integer digits, a comma there asks for grouping,
/// zeros after it are decimals always shown, "#" after them decimals shown when not zero. ",0.00" gives 1.234,50.
/// The mask is written with a point, the result has the Brazilian separators. Empty when `value` is not finite.
QString number(double value, const QString &mask);

/// `value` with at most `decimals` decimals. A half goes away from zero, and a half is what is one on paper: 2.675
/// becomes 2.68 although its binary form lies a little below. Not finite: returned as it is.
double rounded(double value, int decimals);

/// What a person typed: "1.234,5", "1234,5", ",5", "-3", with blanks around it. With a comma, points are grouping and
/// must stand in groups of three. Without one, a text of whole groups is grouped ("1.234" is one thousand two hundred
/// and thirty-four, as on every paper in the mill) and any other single point is the decimal point ("1234.5", "0.250").
/// Null for all else, empty included.
std::optional<double> parseNumber(const QString &typed);

/// "31/12/2026"; empty for an invalid date.
QString date(QDate date);

/// What a person typed: "31/12/2026", "31/12/26", "31/12" (the year of `today`), "31" (its month as well), with / - or
/// . between, or the digits alone: "31122026", "311226", "3112". A year of two digits lies within fifty years of
/// `today`. Null when empty, unreadable, no day of the calendar, or before 1900.
std::optional<QDate> parseDate(const QString &typed, QDate today);

/// "12/31/2026", the order of date literals in statements, without quotes; empty for an invalid date.
QString sqlDate(QDate date);

/// "14:05:09"; empty for an invalid time.
QString time(QTime time);

} // namespace Format
