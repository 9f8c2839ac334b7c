// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/walker.h"

#include <QByteArray>
#include <QStringList>

#include <memory>

/// What a printer of characters understands, set in the settings by printer; the defaults are ESC/P.
struct PrinterCodes
{
    QByteArray reset, condensedOn, condensedOff, boldOn, boldOff, formFeed;
    static PrinterCodes escP();
};

/// Lays a text report out, and gives what is sent to the printer, byte by byte.
///
/// Gives the walker its functions PAGE() and PAGES(). What comes from the data cannot command the printer: control
/// characters become blanks, in raw layouts ^ and ~ as well; commands stand in the layout, outside of braces.
class TextReport
{
public:
    /// How many characters a condensed line holds where a plain one holds ten.
    static constexpr int condensedPerTen = 17;

    /// Both must outlive it.
    TextReport(const Layout::Document &layout, Walker &walker);
    ~TextReport();
    Q_DISABLE_COPY_MOVE(TextReport)

    /// A step: false when the report has ended.
    bool step();
    /// The pages as people read them, without codes: for the preview.
    QStringList pages() const;
    /// What goes to the printer. Characters that its encoding lacks become their plain letter, else "?". Throws EQen
    /// when the layout names an unknown encoding.
    QByteArray bytes(const PrinterCodes &codes) const;

private:
    class Private;
    std::unique_ptr<Private> d;
};
