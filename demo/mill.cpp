// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/mill.h"

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace Demo {

Mill::Mill(int companyNumber, QDate today)
    : company(companyNumber)
    , random(1947u + quint32(companyNumber))
    , calendar(today)
{
}

QString Order::lot() const
{
    return u"M%1/%2"_s.arg(number.right(4)).arg(machine + 1);
}

Grams Order::made() const
{
    return std::accumulate(
        rolls.begin(), rolls.end(), Grams(0), [](Grams sum, const Roll &roll) { return sum + roll.weight; });
}

QVector<Need> Mill::needsOf(const Fabric &fabric) const
{
    QVector<Need> needs;
    for (const Component &component : fabric.composition) {
        if (!fabric.activeColours.contains(component.colour))
            continue;
        const auto known =
            std::find_if(needs.begin(), needs.end(), [&](const Need &need) { return need.yarn == component.yarn; });
        if (known == needs.end())
            needs.append({component.yarn, component.share});
        else
            known->share += component.share;
    }
    return needs;
}

Grams part(Grams weight, int share)
{
    return (weight * share + wholeShare / 2) / wholeShare;
}

Cents value(Grams weight, int price)
{
    constexpr qint64 perCent = 100'000; // 1000 grams in a kilogram times 100 price steps in a cent
    return (weight * price + perCent / 2) / perCent;
}

QString padded(int number, int width)
{
    return QString::number(number).rightJustified(width, u'0');
}

} // namespace Demo
