// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/measure.h"

/// Writes the one table of all comparisons to the output.
void printTable(const QVector<Comparison> &rows);
