// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPoint>

#include <functional>

class QKeyEvent;
class QWidget;
class TDBGrid;

/// What a grid offers in its menu and by its keys.
namespace GridActions {

/// The screen that the grid stands in; null outside of one.
QWidget *screenOf(const TDBGrid &grid);

/// Runs what the user asked of the grid: what it lets escape is reported as a screen's failure is.
void run(TDBGrid &grid, const std::function<void()> &action);

/// Fetches what a query has left. False, after a message, when that is more than anybody sorts or copies by hand.
bool fetchAll(TDBGrid &grid);

/// The selected cells, or whole rows, as lines with tabs between the cells, as they are read on screen.
void copySelection(const TDBGrid &grid);
/// All rows, with the titles as first line.
void copyAll(TDBGrid &grid);

enum class FileKind { Xlsx, Csv };
/// Asks for a file and writes the rows there, in the columns and in the order that are shown.
void exportRows(TDBGrid &grid, FileKind kind);

/// The actions of the screen for its grid, then the grid's own.
void showMenu(TDBGrid &grid, const QPoint &globalPlace);
/// True when the key was one of the grid's: Ctrl+C, Ctrl+1 to Ctrl+9 (sort), the menu key and Shift+F10.
bool keyPressed(TDBGrid &grid, const QKeyEvent &key);

} // namespace GridActions
