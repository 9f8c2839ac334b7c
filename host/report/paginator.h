// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/pagestore.h"
#include "host/report/walker.h"

/// Lays a graphic report out, page after page, into a store.
class Paginator : private BandSink
{
public:
    /// All three must outlive it.
    Paginator(const Layout::Document &layout, Walker &walker, PageStore &pages);
    ~Paginator() override;

    /// Goes on until at least one more page is complete or the report has ended; false when it has ended.
    bool nextPage();
    bool isFinished() const;

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
