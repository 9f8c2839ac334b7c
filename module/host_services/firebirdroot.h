// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The embedded Firebird engine, set up for the user who runs the program.
namespace FirebirdRoot {

/// Prepares this process for the database files of `folder`, which is created where it is missing; call it before the
/// first connection. The engine reads its root once: the first call that succeeds counts, later ones do nothing.
///
/// The engine's locks stand in the folder as well. Processes that open one file must have prepared the same folder:
/// with locks in two places they would not see each other and damage the file.
///
/// Throws EQen naming the path when the engine is not installed or the folder cannot be written.
void prepare(const QString &folder);

/// Creates an empty database (UTF-8, pages of 16 KB): a file of the embedded engine by its absolute path, or one of a
/// server as "host/port:path". Embedded Firebird asks for no password; as SYSDBA every user of the machine who may
/// write the file has all rights on its tables, so connect as SYSDBA too.
///
/// Throws EQen with the engine's words, and when the database exists already.
void createDatabase(
    const QString &address, const QString &user = QStringLiteral("SYSDBA"), const QString &password = {});

} // namespace FirebirdRoot
