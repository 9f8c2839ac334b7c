// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVector>

#include <functional>

class TDataSet;

/// Rows of a data set as a file for spreadsheet programs.
///
/// All rows are written: what was not fetched yet is fetched. The cursor stays where it is, and a row that is being
/// edited is written as it was posted last. A file of that name is replaced only when the new one is complete.
/// EQen: the file could not be written.
namespace Spreadsheet {

struct Column
{
    int field; ///< index in the data set
    QString title;
};

/// Asked now and then, with the number of rows that were written; false gives up.
using Progress = std::function<bool(int rowsWritten)>;

/// Typed numbers, dates and times, numbers by the masks of their fields; a bold title row that stays in sight and
/// filters. Texts are never taken for formulas.
///
/// `rows` are the data set's row numbers in the order wanted; empty: all, in the data set's own order.
/// False: given up by `progress`, no file was written.
bool writeXlsx(TDataSet &dataSet, const QVector<Column> &columns, const QString &sheetTitle, const QString &file,
    const Progress &progress = {}, const QVector<int> &rows = {});

/// UTF-8 with its mark, semicolons, numbers with decimal comma and ungrouped, in full and with at least the decimals
/// of their masks. A text that a spreadsheet program would take for a formula gets an apostrophe before it.
bool writeCsv(TDataSet &dataSet, const QVector<Column> &columns, const QString &file, const Progress &progress = {},
    const QVector<int> &rows = {});

} // namespace Spreadsheet
