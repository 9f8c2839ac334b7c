// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class TTIDatabase;

/// The prices of one region for another, row by row of product and colour group.
struct PriceCopy
{
    QString from; ///< region
    QString to; ///< region
    double percent = 0; ///< by which the copies are dearer
    bool replace = false; ///< what the other region has already; otherwise it stays as it is
};

struct PriceCount
{
    int added = 0; ///< rows that the other region has not yet, or had not
    int present = 0; ///< rows that it has already
};

/// Until the save that is open ends, others who store prices in the region this way wait, or get a Conflict. False when
/// there is no such region; nothing is locked then.
bool lockRegion(TTIDatabase &database, const QString &region);

/// What a copy would meet.
PriceCount countPrices(TTIDatabase &database, const PriceCopy &copy);

/// Copies in one save. Rows of the other region that the first one has not are left alone. Throws EDatabaseError: a
/// Conflict when another station copies to the region at this moment, or has removed it.
PriceCount copyPrices(TTIDatabase &database, const PriceCopy &copy);
