// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "invoicing/releaserules.h"

#include "module/host_services/format.h"

namespace ReleaseRules {

bool isAboveBalance(const Line &line)
{
    return line.balance && Format::rounded(line.quantity - *line.balance, 3) > 0;
}

Totals totalsOf(const QVector<Line> &lines)
{
    Totals totals;
    for (const Line &line : lines) {
        totals.released += line.quantity > 0 ? 1 : 0;
        totals.quantity += line.quantity;
        totals.rolls += line.rolls;
        totals.above += isAboveBalance(line) ? 1 : 0;
    }
    totals.quantity = Format::rounded(totals.quantity, 3);
    return totals;
}

} // namespace ReleaseRules
