// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/measure.h"

/// Writes lines of cells in columns to the output; the first two columns are texts, the others figures.
void printLines(const QVector<QStringList> &lines);
/// Writes the one table of all comparisons to the output.
void printTable(const QVector<Comparison> &rows);
