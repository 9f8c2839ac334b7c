// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QVector>

/// Arithmetic of the price table.
namespace PriceRules {

/// Columns of the fourteen instalment prices, from the first to the last.
const QStringList &instalments();

/// The price raised by so many per cent, or lowered by a negative figure, to the cent; a half goes away from zero. A
/// price that has fractions of a cent itself keeps four decimals.
double raised(double price, double percent);

/// Mean of the prices that are not zero, with the decimals of raised(); 0 without any.
double average(const QVector<double> &prices);

} // namespace PriceRules
