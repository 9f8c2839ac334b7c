// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/calendar.h"

#include "module/host_services/workingdays.h"

namespace Demo {

namespace {

/// Yarn came in for up to this many days before the first roll.
constexpr int daysBefore = 60;

} // namespace

Calendar::Calendar(QDate today)
    : m_today(today)
{
    for (QDate day = today.addDays(-1); m_backwards.size() < productionDays + daysBefore; day = day.addDays(-1)) {
        if (day.dayOfWeek() != Qt::Sunday && !WorkingDays::isHoliday(day))
            m_backwards.append(day);
    }
}

QDate Calendar::date(int day) const
{
    return day >= productionDays ? m_today : m_backwards.at(productionDays - 1 - day);
}

} // namespace Demo
