// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVector>

/// The roll labels, or lines of a roll sheet, that are printed with an order.
namespace LabelList {

struct Label
{
    QString of;
    QString number; ///< "001", empty on a spare label
};

/// One label for every whole roll (kg) of the order's weight (kg), and three spare ones.
/// Throws EQen when that would be more than `mostLabels`.
QVector<Label> of(const QString &orderNumber, double totalKg, double rollKg);

constexpr int spareLabels = 3;
constexpr int mostLabels = 9999;

} // namespace LabelList
