// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "production/yarnstock.h"

#include "module/host_services/format.h"

namespace YarnStock {

double yarnIn(const Knitted &fabric, const QString &yarn)
{
    double percent = 0;
    for (const Share &share : fabric.shares) {
        if (share.yarn == yarn)
            percent += share.percent;
    }
    return YarnReservation::needOf(percent, fabric.kg);
}

double remaining(const QString &yarn, double receivedLessOutbound, const QVector<Knitted> &notInvoiced)
{
    double left = Format::rounded(receivedLessOutbound, 3);
    for (const Knitted &fabric : notInvoiced)
        left = Format::rounded(left - yarnIn(fabric, yarn), 3);
    return left;
}

std::optional<Shortage> shortageFor(
    const Knitted &roll, const QHash<QString, double> &receivedLessOutbound, const QVector<Knitted> &notInvoiced)
{
    for (const Share &share : roll.shares) {
        const double left = remaining(share.yarn, receivedLessOutbound.value(share.yarn), notInvoiced);
        const double missing = Format::rounded(yarnIn(roll, share.yarn) - left, 3);
        if (missing > 0)
            return Shortage{share.yarn, missing};
    }
    return {};
}

double valueOf(const QVector<Share> &shares, const QHash<QString, double> &unitPrices)
{
    double value = 0;
    for (const Share &share : shares)
        value += share.percent / 100 * unitPrices.value(share.yarn);
    return Format::rounded(value, 4);
}

} // namespace YarnStock
