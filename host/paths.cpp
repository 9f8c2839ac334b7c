// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/paths.h"

#include <QCoreApplication>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace Paths {

QString settingsFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + u"/qen.ini"_s;
}

QString dataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

QString logFile()
{
    return dataFolder() + u"/qen.log"_s;
}

QString printsFolder()
{
    return dataFolder() + u"/impressos"_s;
}

QStringList layoutFolders()
{
    const QString program = QCoreApplication::applicationDirPath();
    return {dataFolder() + u"/leiautes"_s, program + u"/../layouts"_s, program + u"/../share/qen/layouts"_s};
}

QString imagesFolder()
{
    return dataFolder() + u"/imagens"_s;
}

QString demonstrationDatabase()
{
    return dataFolder() + u"/demonstracao.fdb"_s;
}

} // namespace Paths
