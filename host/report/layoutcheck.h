// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/rowframe.h"

/// Whether what a screen hands over is what the layout prints.
namespace LayoutCheck {

/// Functions that every report knows beside those of the expressions: PARAM('name'), ROW(), TITLE() and those that
/// Walker::setFunction answers.
const QStringList &knownFunctions();

/// Throws EQen by line for the first name or function that nobody answers. `first` is where page bands, title and
/// summary look for names; the frames are those of the document's rows.
void check(const Layout::Document &layout, const ReportCall &call, const RowFrame &first,
    const std::vector<std::unique_ptr<RowFrame>> &frames);

} // namespace LayoutCheck
