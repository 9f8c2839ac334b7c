// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/walker.h"

#include <QByteArray>
#include <QHash>

/// What a printer of characters understands, set in the settings by printer; the defaults are ESC/P.
struct PrinterCodes
{
    QByteArray reset, condensedOn, condensedOff, boldOn, boldOff, formFeed;
    static PrinterCodes escP();
};

/// Lays a text report out, and gives what is sent to the printer, byte by byte.
class TextReport : private BandSink
{
public:
    TextReport(const Layout::Document &layout, Walker &walker);
    ~TextReport() override;

    /// A step: false when the report has ended.
    bool step();
    /// The pages as people read them, without codes: for the preview.
    QStringList pages() const;
    /// What goes to the printer. Characters that its encoding lacks become their plain letter, else "?".
    QByteArray bytes(const PrinterCodes &codes) const;

private:
    void print(const Layout::Band &band, const ExpressionScope &scope) override;
    void beginBlock(bool keepTogether) override;
    void endBlock() override;
    void pushRepeated(const Layout::Band &header) override;
    void popRepeated() override;
    void newPage() override;

    class Private;
    std::unique_ptr<Private> d;
};
