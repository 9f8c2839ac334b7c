// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

class TClientDataSet;
class TDataSet;

/// Rows for a paper that groups them by fields by which the screen does not sort.
namespace PaperRows {

/// All rows of `from`, fetched to the last: those that are alike in `fields` stand together, by these fields as in a
/// dictionary, the first one first, and among themselves in the order of `from`. They replace the fields and rows of
/// `to`.
void together(TDataSet &from, const QStringList &fields, TClientDataSet &to);

} // namespace PaperRows
