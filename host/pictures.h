// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

class QWidget;
class QenHost;

namespace Pictures {

/// Throws EQen when the file cannot be written.
void save(QWidget &widget, const QString &file);

/// Opens every registered screen, one after the other, and saves <class>-empty.png as it opens, and <class>-in-use.png
/// as people see it all day; what the screens print stands there as <layout>.pdf, its first page as <layout>-1.png.
/// The settings are made to read a scale that the program plays. Gives the files. Throws EQen.
QStringList ofAllScreens(QenHost &host, const QString &folder);

/// The windows of the program itself: login, first start, main window empty and with screens, a failure. Somebody must
/// be logged in. Gives the files. Throws EQen.
QStringList ofTheProgram(QenHost &host, const QString &engineName, const QString &folder);

} // namespace Pictures
