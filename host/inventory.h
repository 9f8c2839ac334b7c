// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/host.h"

class TTIDatabase;

/// The stock position of a day.
namespace Inventory {

/// Writes the rows into the current company's inventory of today, in one save, and gives their number. Rows without a
/// code are passed over; a column without a name is written as null.
///
/// What the day's inventory already had of the same client and code goes: a list that is made again replaces itself,
/// while yarn and fabric, or two clients, which come one after the other, stay beside each other.
///
/// Throws EProgramming when the data set lacks a column, and EDatabaseError; nothing is written then.
int create(TTIDatabase &database, int company, const InventoryColumns &columns, TDataSet &rows);

} // namespace Inventory
