// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Where the program keeps what is the user's own, in the usual places of the platform. Folders are not created here.
namespace Paths {

QString settingsFile(); ///< qen.ini
QString dataFolder();
QString logFile(); ///< qen.log, of the program, not of the mill
QString imagesFolder(); ///< pictures of materials, unless the settings name another folder
QString demonstrationDatabase();

} // namespace Paths
