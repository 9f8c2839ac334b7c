// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

/// Where the program keeps what is the user's own, in the usual places of the platform. Folders are not created here.
namespace Paths {

QString settingsFile(); ///< qen.ini
QString dataFolder();
QString logFile(); ///< qen.log, of the program, not of the mill
QString printsFolder(); ///< what the printer "PDF" prints
/// Where layouts are looked for, in this order: the mill's own folder, then what came with the program.
QStringList layoutFolders();
QString imagesFolder(); ///< pictures of materials, unless the settings name another folder
QString demonstrationDatabase();

} // namespace Paths
