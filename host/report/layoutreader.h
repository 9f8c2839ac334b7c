// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/layout.h"

class QIODevice;

/// Reads stored layouts: XML files, described in docs/layouts.md, checked whole when they are read.
namespace LayoutReader {

/// The file of a layout, by its name: the mill's own folder first, then the program's. Empty when there is none.
QString find(const QString &name, const QStringList &folders);
/// Throws EQen naming the file, the line and what was expected there.
Layout::Document read(const QString &file);

} // namespace LayoutReader
