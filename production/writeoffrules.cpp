// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "production/writeoffrules.h"

#include "module/host_services/format.h"

using namespace Qt::StringLiterals;

namespace WriteOffRules {

QString nextNumber(const QString &highest)
{
    return padded(QString::number(highest.trimmed().toLongLong() + 1));
}

QString padded(const QString &number)
{
    return number.trimmed().rightJustified(3, u'0');
}

QDate dayOf(const QDate &given, bool nightShift, const QTime &now)
{
    // To the second, as the time of the write-off is kept.
    const bool afterNoon = QTime(now.hour(), now.minute(), now.second()) > QTime(12, 0, 0);
    return nightShift && afterNoon ? given.addDays(1) : given;
}

bool exceeds(double roll, double balance)
{
    return Format::rounded(roll, 3) > Format::rounded(balance, 3);
}

bool isOverProduction(double roll, double balance)
{
    return exceeds(roll, balance + overProductionTolerance);
}

QString logged(double kg)
{
    return Format::number(kg, u"0.###"_s);
}

} // namespace WriteOffRules
