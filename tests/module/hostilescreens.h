// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/teststation.h"

#include <functional>

/// How a screen is brought into the state in which people type in it. A screen without a table entry is attacked as it
/// opens and, when it keeps records, in a new one.
struct HostileScreen
{
    QString name; ///< class
    QString mode; ///< tells the entries of one screen apart
    std::function<void(TestDatabase &)> rows = {}; ///< what its tables hold before
    std::function<void(TestStation &)> open = {}; ///< none: as the menu does
    std::function<void(TestStation &)> edit = {}; ///< none: it can be typed in as it opens
    std::function<void(TestStation &)> finish = {}; ///< what is typed once more after the field, before the save
    QString confirm = {}; ///< the button that saves or consults; empty: leaving the fields is all
    QStringList saved = {}; ///< logical names of the tables that it writes; emptied before `rows`
    bool addsAnywhere = false; ///< which tables it writes is not known; it takes no row away
    QString key = {}; ///< a column's value in each row that a save replaces; empty: it replaces none
    /// Fields whose text is to be found in the tables, besides those that name their column.
    QStringList stored = {};
};

namespace HostileScreens {

/// The entries of a screen, none when it needs none.
QList<HostileScreen> entriesOf(const QString &name);

} // namespace HostileScreens
