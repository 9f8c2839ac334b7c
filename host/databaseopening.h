// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class TTIDatabase;
struct ConnectionSettings;

/// From the settings of a connection to a database that the program can work with.
namespace DatabaseOpening {

/// Connects, and brings the tables to the program's version. A local file that is missing is created first; databases
/// of a server are made there. Throws EQen whose sentence names the database; the connection is closed then.
void open(TTIDatabase &database, ConnectionSettings settings);

/// Whether nobody can log in yet.
bool isFirstStart(TTIDatabase &database);
/// Registers company 1, unless there are companies, and the administrator. Throws EQen.
void firstStart(TTIDatabase &database, const QString &companyName, const QString &user, const QString &password);

} // namespace DatabaseOpening
