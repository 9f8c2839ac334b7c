// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/layout.h"

class PageStore;

/// Pages of characters as pages of paper, for the preview, for PDF and for printers of dots.
namespace CharacterPages {

/// Millimetres: A4, across when the lines are long.
QSizeF paper(const Layout::CharacterPage &page);
/// One page of paper for each text; lines keep their places, in letters of one width.
void append(const QStringList &texts, const Layout::CharacterPage &page, PageStore &store);

} // namespace CharacterPages
