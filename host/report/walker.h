// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/layout.h"

#include <QHash>

#include <functional>

class TDataSet;
struct ReportCall;

/// Takes the bands of a report as the data call for them, and lays them out.
///
/// Conditions of bands that are handed to print() have been looked at already; those of items and lines have not, and
/// neither have those of the page's header and footer and of repeated headers, which the sink prints on its own.
/// Page breaks of bands and groups come as newPage().
class BandSink
{
public:
    virtual ~BandSink() = default;
    /// Prints the band, evaluated against the scope now; the scope's rows are others after the call.
    virtual void print(const Layout::Band &band, const ExpressionScope &scope) = 0;
    /// The rows that follow until endBlock belong together; they are nested like the groups.
    virtual void beginBlock(bool keepTogether) = 0;
    virtual void endBlock() = 0;
    /// The header, just printed, comes again at the top of each page until it is dropped; the scope is that of its
    /// rows.
    virtual void pushRepeated(const Layout::Band &header, const ExpressionScope &scope) = 0;
    virtual void popRepeated() = 0;
    /// What follows begins a page. Nothing happens while the page holds nothing but its header. The row before is still
    /// the current one: the page's footer belongs to it, the next page's header to the row that follows.
    virtual void newPage() = 0;
};

/// Walks through a report's data once: rows, groups to any depth, data sets beneath rows, and keeps the aggregates.
///
/// An aggregate counts the rows of the place where it stands: in a group's footer those of the group, in the footer of
/// rows those rows, in the summary all rows of the first data set, in the page footer those printed on the page.
/// Data sets are read forward, rows are fetched as they are needed, and the cursors stand where they stood at the end.
class Walker
{
public:
    /// The layout and the call must outlive it. Throws EQen when the layout needs a data set, field, parameter or
    /// function that the call does not offer; the message names layout, line and name.
    Walker(const Layout::Document &layout, const ReportCall &call);
    ~Walker();
    Q_DISABLE_COPY_MOVE(Walker)

    /// What the layout's functions DATE(), TIME(), USER(), COMPANY(), PAGE(), PAGES() and others answer, by their
    /// names.
    void setFunction(const QString &name, const std::function<QVariant()> &answer);

    /// One step after the other: a row with all that belongs to it. False when the report has ended, with its summary.
    bool step(BandSink &sink);
    /// Rows of the first data set that were walked through, for the progress.
    int rowsDone() const;

    /// For page headers and footers: the current row, and aggregates over what was counted since the last startPage.
    const ExpressionScope &pageScope() const;
    void startPage();
    /// Within print(): the row that the band prints, for countOnPage once it is known on which page the band stands;
    /// -1 for bands that count nothing. A row has it for its first detail band alone.
    qint64 pageRow() const;
    /// Counts that row on the page; of a band over several pages, on the one where it begins. -1 and a row that was
    /// counted already do nothing.
    void countOnPage(qint64 pageRow);

private:
    class Private;
    std::unique_ptr<Private> d;
};
