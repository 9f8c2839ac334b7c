// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "registries/pricerules.h"

#include "module/host_services/format.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int cents = 2;
constexpr int fractionsOfCents = 4;
/// What a price of four decimals times a percentage of four, divided by a hundred, can have. To that many the binary
/// result is what it is on paper: only then a half is seen as one.
constexpr int exactDecimals = 10;

int decimalsOf(double price)
{
    return Format::rounded(price, cents) == price ? cents : fractionsOfCents;
}

} // namespace

namespace PriceRules {

const QStringList &instalments()
{
    static const QStringList columns = [] {
        QStringList names;
        for (int days = 0; days <= 91; days += 7)
            names.append(u"PRECO_%1"_s.arg(days, 2, 10, QChar(u'0')));
        return names;
    }();
    return columns;
}

double raised(double price, double percent)
{
    return Format::rounded(Format::rounded(price + price * percent / 100, exactDecimals), decimalsOf(price));
}

double average(const QVector<double> &prices)
{
    double sum = 0;
    int count = 0;
    int decimals = cents;
    for (const double price : prices) {
        sum += price;
        count += price == 0 ? 0 : 1;
        decimals = std::max(decimals, decimalsOf(price));
    }
    return count == 0 ? 0 : Format::rounded(Format::rounded(sum / count, exactDecimals), decimals);
}

} // namespace PriceRules
