// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/host_services/workingdays.h"

#include <array>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

struct FixedHoliday
{
    int day;
    int month;
    int since; ///< first year in which it is a national holiday; 0 where no data of a mill is older
    QStringView name;
};

constexpr std::array fixedHolidays{
    FixedHoliday{1, 1, 0, u"Confraternização Universal"},
    FixedHoliday{21, 4, 0, u"Tiradentes"},
    FixedHoliday{1, 5, 0, u"Dia do Trabalho"},
    FixedHoliday{7, 9, 0, u"Independência do Brasil"},
    FixedHoliday{12, 10, 0, u"Nossa Senhora Aparecida"},
    FixedHoliday{2, 11, 0, u"Finados"},
    FixedHoliday{15, 11, 0, u"Proclamação da República"},
    FixedHoliday{20, 11, 2024, u"Dia da Consciência Negra"}, // Lei 14.759/2023
    FixedHoliday{25, 12, 0, u"Natal"},
};

struct MovableHoliday
{
    int daysFromEaster;
    QStringView name;
};

constexpr std::array movableHolidays{
    MovableHoliday{-48, u"Carnaval"},
    MovableHoliday{-47, u"Carnaval"},
    MovableHoliday{-2, u"Sexta-feira Santa"},
    MovableHoliday{60, u"Corpus Christi"},
};

} // namespace

// The anonymous rule printed in Nature of 20 April 1876, as given by J. Meeus, Astronomical Algorithms, chapter 8.
QDate WorkingDays::easter(int year)
{
    const int a = year % 19;
    const int b = year / 100;
    const int c = year % 100;
    const int f = (b + 8) / 25;
    const int g = (b - f + 1) / 3;
    const int h = (19 * a + b - b / 4 - g + 15) % 30;
    const int l = (32 + 2 * (b % 4) + 2 * (c / 4) - h - c % 4) % 7;
    const int m = (a + 11 * h + 22 * l) / 451;
    const int n = h + l - 7 * m + 114;
    return QDate(year, n / 31, n % 31 + 1);
}

QString WorkingDays::holidayName(QDate date)
{
    if (!date.isValid())
        return {};
    for (const FixedHoliday &holiday : fixedHolidays) {
        if (date.day() == holiday.day && date.month() == holiday.month && date.year() >= holiday.since)
            return holiday.name.toString();
    }
    const qint64 fromEaster = easter(date.year()).daysTo(date);
    for (const MovableHoliday &holiday : movableHolidays) {
        if (fromEaster == holiday.daysFromEaster)
            return holiday.name.toString();
    }
    return {};
}

bool WorkingDays::isHoliday(QDate date)
{
    return !holidayName(date).isEmpty();
}

bool WorkingDays::isWorkingDay(QDate date)
{
    return date.isValid() && date.dayOfWeek() < Qt::Saturday && !isHoliday(date);
}

QDate WorkingDays::addWorkingDays(QDate date, int n)
{
    if (!date.isValid())
        return {};
    if (n == 0)
        return isWorkingDay(date) ? date : addWorkingDays(date, 1);
    const int step = n > 0 ? 1 : -1;
    for (int left = std::abs(n); left > 0;) {
        date = date.addDays(step);
        if (isWorkingDay(date))
            --left;
    }
    return date;
}

int WorkingDays::countWorkingDays(QDate from, QDate to)
{
    if (!from.isValid() || !to.isValid())
        return 0;
    int count = 0;
    for (QDate date = from; date <= to; date = date.addDays(1))
        count += isWorkingDay(date) ? 1 : 0;
    return count;
}
