// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/pagestore.h"
#include "host/report/walker.h"

#include <memory>

/// Lays a graphic report out, page after page, into a store.
///
/// Gives the walker its functions PAGE() and PAGES(). The height of a page footer is that of its band: nothing in it
/// grows.
class Paginator
{
public:
    /// All three must outlive it.
    Paginator(const Layout::Document &layout, Walker &walker, PageStore &pages);
    ~Paginator();
    Q_DISABLE_COPY_MOVE(Paginator)

    /// Goes on until at least one more page is complete or the report has ended; false when it has ended.
    bool nextPage();
    bool isFinished() const;

private:
    class Private;
    std::unique_ptr<Private> d;
};
