// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSettings>
#include <QString>

/// The form of the settings file: "[Grupo]" and "chave=valor" in UTF-8, a value being all that follows the sign, so
/// that a password may hold any character. The explanation of the keys stands on top, also after the program has
/// written to the file, for the people who edit it.
namespace SettingsFormat {

QSettings::Format format();
/// A file with the explanation and no values.
QByteArray emptyFile();
/// The number of the first line that is neither a group nor a value nor a comment; 0 when all are.
int firstBadLine(const QString &file);

} // namespace SettingsFormat
