// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>

/// Working days of a mill in Brazil: Monday to Friday, without the national holidays, the two days of Carnival and
/// Corpus Christi, on which mills and banks stand still. State and town holidays are not known here.
namespace WorkingDays {

/// Easter Sunday of a year of the Gregorian calendar.
QDate easter(int year);

/// The holiday's name in Portuguese; empty when `date` is none or invalid.
QString holidayName(QDate date);

bool isHoliday(QDate date);

/// False for Saturdays, Sundays, holidays and invalid dates.
bool isWorkingDay(QDate date);

/// The `n`th working day after `date`, before it when `n` is negative; `date` itself is never counted. With 0: `date`
/// if it is a working day, else the next one. Invalid for an invalid date.
QDate addWorkingDays(QDate date, int n);

/// How many working days lie from `from` to `to`, both included; 0 when `to` lies before `from` or one is invalid.
int countWorkingDays(QDate from, QDate to);

} // namespace WorkingDays
