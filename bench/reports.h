// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/measure.h"
#include "bench/memory.h"

/// A report of two group levels to a PDF, beside its texts painted bare. Asks no database.
QVector<Comparison> measureReports(const Effort &effort);
/// A long report beside one of a tenth of its pages.
QVector<Memory> measureReportMemory(const Effort &effort);
