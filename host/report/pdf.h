// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

class PageStore;

namespace Pdf {

/// Told before each page how many are done; false cancels.
using Progress = std::function<bool(int pagesDone)>;

/// Writes all pages to a file, fonts embedded. False when it was cancelled. A file of that name stays as it was until
/// the new one is complete. Throws EQen when it cannot be written.
bool write(const PageStore &pages, const QString &file, const QString &title, const Progress &progress = {});

} // namespace Pdf
