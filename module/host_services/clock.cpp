// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/clock.h"

namespace {

QDateTime &pinned()
{
    static QDateTime moment;
    return moment;
}

} // namespace

namespace Clock {

QDateTime now()
{
    return pinned().isValid() ? pinned() : QDateTime::currentDateTime();
}

QDate today()
{
    return now().date();
}

void pin(const QDateTime &moment)
{
    pinned() = moment;
}

} // namespace Clock
