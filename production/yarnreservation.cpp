// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "production/yarnreservation.h"

#include "module/host_services/format.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace YarnReservation {

namespace {

double grams(double kg)
{
    return Format::rounded(kg, 3);
}

double reservedOf(const QString &yarn, const QVector<Lot> &grid)
{
    double sum = 0;
    for (const Lot &lot : grid) {
        if (lot.yarn == yarn && lot.ticked)
            sum = grams(sum + lot.reserved);
    }
    return sum;
}

template <class Lots> auto find(Lots &lots, const Lot &wanted)
{
    return std::find_if(lots.begin(), lots.end(), [&](const Lot &lot) { return lot.isSameAs(wanted); });
}

int lastTurn(const QVector<Lot> &grid)
{
    int last = 0;
    for (const Lot &lot : grid)
        last = std::max(last, lot.turn);
    return last;
}

} // namespace

Mode modeOf(const QString &parameter)
{
    return parameter == u"N" ? Mode::AsRecorded : Mode::Checked;
}

bool Lot::isSameAs(const Lot &other) const
{
    return document == other.document && yarn == other.yarn && lot == other.lot;
}

double needOf(double percent, double orderKg)
{
    // To ten decimals the binary product is what it is on paper: only then half a gram is seen as one.
    return grams(Format::rounded(percent / 100 * orderKg, 10));
}

double balanceOf(double stock, int loopLengths, double reservations)
{
    return grams(stock / std::max(1, loopLengths) - reservations);
}

bool isOffered(const Lot &lot)
{
    return grams(lot.notReturned) > 0 || lot.ticked;
}

Lot posted(const Lot &lot, const QVector<Lot> &grid, Mode mode)
{
    Lot result = lot;
    result.reserved = 0;
    if (lot.ticked) {
        const double lacking = grams(grams(lot.need) - reservedOf(lot.yarn, grid));
        if (lacking > 0)
            result.reserved = std::max(0.0, std::min(lacking, grams(lot.balance)));
        else if (mode == Mode::Checked)
            result.ticked = false;
    }
    if (!result.ticked)
        result.turn = 0;
    else if (result.turn == 0)
        result.turn = lastTurn(grid) + 1;
    return result;
}

void keepTicks(QVector<Lot> &grid, const QVector<Lot> &before, Mode mode)
{
    for (Lot &lot : grid) {
        lot.ticked = false;
        lot.reserved = 0;
        lot.turn = 0;
    }
    QVector<Lot> ticks;
    std::copy_if(before.begin(), before.end(), std::back_inserter(ticks), [](const Lot &lot) { return lot.ticked; });
    std::stable_sort(ticks.begin(), ticks.end(), [](const Lot &a, const Lot &b) { return a.turn < b.turn; });
    for (const Lot &tick : ticks) {
        const auto lot = find(grid, tick);
        if (lot == grid.end())
            continue;
        Lot given = *lot;
        given.ticked = true;
        given.balance = lot->held + std::max(0.0, lot->balance);
        given = posted(given, grid, mode);
        lot->ticked = given.ticked;
        lot->turn = given.turn;
        lot->reserved = mode == Mode::AsRecorded ? tick.reserved : given.reserved;
    }
}

QVector<Coverage> coverageOf(const QVector<Share> &shares, double orderKg, const QVector<Lot> &grid)
{
    QVector<Coverage> result;
    for (const Share &share : shares) {
        Coverage yarn{share.yarn, share.description, needOf(share.percent, orderKg), reservedOf(share.yarn, grid)};
        yarn.missing = std::max(0.0, grams(yarn.need - yarn.reserved));
        result.append(yarn);
    }
    return result;
}

std::optional<QString> insufficientYarn(const QVector<Coverage> &coverage, const QVector<Lot> &grid, Mode mode)
{
    const bool anyTick = std::any_of(grid.begin(), grid.end(), [](const Lot &lot) { return lot.ticked; });
    if (!anyTick || mode == Mode::AsRecorded)
        return {};
    const auto lacking =
        std::find_if(coverage.begin(), coverage.end(), [](const Coverage &yarn) { return yarn.missing > 0; });
    return lacking == coverage.end() ? std::optional<QString>() : lacking->yarn;
}

std::optional<QString> overdrawnYarn(const QVector<Lot> &grid, const QVector<Lot> &now)
{
    for (const Lot &lot : grid) {
        if (!lot.ticked)
            continue;
        const auto found = find(now, lot);
        const Lot stored = found == now.end() ? Lot() : *found;
        const double more = grams(lot.reserved - stored.held);
        if (more > 0 && more > grams(stored.balance))
            return lot.yarn;
    }
    return {};
}

double largestWeight(const QVector<Share> &lines, const QVector<Lot> &grid)
{
    double smallest = 99'999'999;
    double smallestShare = 0;
    for (const Share &line : lines) {
        double available = 0;
        for (const Lot &lot : grid)
            available = grams(available + (lot.yarn == line.yarn ? lot.balance : 0));
        if (available == 0)
            return 0;
        const double share = line.percent / 100;
        const double weight = share > 0 ? available / share : 0;
        if (weight < smallest) {
            smallest = weight;
            smallestShare = share;
        }
    }
    return smallest > 0 && smallestShare > 0 ? smallest * smallestShare * 100 / smallestShare : 0;
}

} // namespace YarnReservation
