// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QenHost;

/// Does the mill's main job through the real screens, tells each step on the output and leaves pictures in the folder.
/// 0 when all of it went well.
int runDemonstration(QenHost &host, const QString &folder);
