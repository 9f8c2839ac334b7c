// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QString;
class TClientDataSet;
class TDataSet;

/// Rows for a paper that groups them by a field by which the screen does not sort.
namespace PaperRows {

/// All rows of `from`, fetched to the last: those that are alike in `field` stand together, by that field as in a
/// dictionary, and among themselves in the order of `from`. They replace the fields and rows of `to`.
void together(TDataSet &from, const QString &field, TClientDataSet &to);

} // namespace PaperRows
