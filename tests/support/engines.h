// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The database engines that tests run on: "firebird" (embedded), "postgres" and "firebird-server".
namespace Engines {

/// For initTestCase_data(): every test function then runs once on embedded Firebird and once on PostgreSQL. A missing
/// engine fails the whole test program with a sentence that says how to start it.
void addEngineRows();
/// For the few tests that a Firebird server has to pass too.
void addServerRow();

/// The engine of the row that is running.
QString current();

/// What is missing before tests can run on the engine, empty when nothing is.
QString missing(const QString &engine);

/// The parts of an engine's environment variable, as packaging/test-engines exports it.
QStringList environment(const char *variable);

} // namespace Engines
