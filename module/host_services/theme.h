// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QApplication;

/// The look of the program on every platform.
namespace Theme {

/// Style, colours, font (10 points or more) and style sheet. To be called once, before the first window.
/// A field whose property `invalid` is true has a red border; who changes it polishes the field anew.
void apply(QApplication &application);

} // namespace Theme
