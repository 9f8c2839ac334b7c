// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// What holds for one lot of an invoice, wherever it is typed or pasted.
namespace LotRules {

/// Quantity (kg) times unit price, to the cent.
double total(double quantity, double price);
/// Price of a kilogram, six decimals; without a quantity the total itself.
double unitPrice(double total, double quantity);
/// The lot as it is stored: "0" when none was given.
QString lotOf(const QString &typed);

// What is wrong with a figure, in the words of the screen; empty when nothing is.

QString quantityFault(double quantity);
QString priceFault(double price);
QString totalFault(double total);

} // namespace LotRules
