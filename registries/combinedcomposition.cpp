// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "registries/combinedcomposition.h"

#include "module/host_services/format.h"

#include <algorithm>
#include <numeric>

namespace CombinedComposition {

namespace {

constexpr int decimals = 5;
/// To that many the binary result is what it is on paper: only then a half of the fifth is seen as one.
constexpr int exactDecimals = 10;

/// The line's part of the share of its yarn, whose lines are so long together.
double partOf(const RaportLine &line, double total, double percent)
{
    return Format::rounded(Format::rounded(line.millimetres * 100 / total * percent / 100, exactDecimals), decimals);
}

void add(QVector<Line> &lines, const RaportLine &from, int order, double percent)
{
    const auto known = std::find_if(lines.begin(), lines.end(),
        [&](const Line &line) { return line.yarn == from.yarn && line.colour == from.colour; });
    if (known == lines.end())
        lines.append({from.yarn, from.colour, order, percent});
    else
        known->percent = Format::rounded(known->percent + percent, decimals);
}

} // namespace

QVector<Line> combine(const QVector<Share> &source, const QVector<RaportLine> &raport, int highestOrder)
{
    QVector<Line> lines;
    int order = highestOrder;
    for (const Share &share : source) {
        QVector<RaportLine> ofYarn;
        std::copy_if(raport.begin(), raport.end(), std::back_inserter(ofYarn),
            [&](const RaportLine &line) { return line.yarn == share.yarn; });
        const double total = std::accumulate(ofYarn.begin(), ofYarn.end(), 0.0,
            [](double sum, const RaportLine &line) { return sum + line.millimetres; });
        if (total == 0)
            continue;
        for (const RaportLine &line : ofYarn)
            add(lines, line, ++order, partOf(line, total, share.percent));
    }
    return lines;
}

} // namespace CombinedComposition
