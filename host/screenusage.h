// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

/// Hands over to a screen that another one opens what that one would: a roll that was inspected, or the next roll of an
/// order in production.
void handOver(QWidget &screen);

/// Brings a screen that was just opened into the state in which people see it all day, for its picture. Nothing is
/// written. False for a screen that is in use as soon as it is open.
bool bringIntoUse(QWidget &screen);
