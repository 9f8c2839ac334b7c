// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QVector>

class TDataSet;

/// The numbers of the rows at hand, sorted by the values of a field: figures by size, dates and times by their course,
/// texts as a Brazilian dictionary has them, with the numbers in them by size ("9" before "10"). What is null comes
/// first. Rows that are alike keep their order, in both directions.
QVector<int> sortedRows(const TDataSet &dataSet, int field, Qt::SortOrder order);
