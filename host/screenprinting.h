// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

/// Prints what a screen that was brought into use has to print, through its own buttons. Nothing where nothing is
/// printed, or the user has no right to. Somebody must answer the boxes.
void printInUse(QWidget &screen);
