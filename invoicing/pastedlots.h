// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVector>

/// Lots copied from a spreadsheet: one per line, its columns material, lot, quantity, price and brand divided by tabs.
namespace PastedLots {

struct Row
{
    int line = 0; ///< of the text, from 1
    QString material;
    QString lot; ///< "0" when the cell is empty
    double quantity = 0; ///< kg, three decimals
    double price = 0; ///< of a kilogram, six decimals
    QString brand;
    QString fault; ///< why the line cannot be read, in Portuguese; empty when it can
};

/// Lines without any text are passed over. Cells in quotes may hold tabs, line breaks and doubled quotes, as
/// spreadsheets write them. Figures are read in the Brazilian way. The brand may be missing, further columns not.
QVector<Row> parse(const QString &text);

} // namespace PastedLots
