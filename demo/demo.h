// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLatin1StringView>

#include <functional>

class TTIDatabase;

/// The demonstration: a knitting mill in two companies, with half a year of its life up to yesterday.
namespace Demo {

/// Who logs in to try everything. The users "supervisor", "operador" and "consulta" have the same password.
inline constexpr QLatin1StringView user{"demo"};
inline constexpr QLatin1StringView password{"demonstracao"};

/// Fills a database that has no users yet; its tables and companies are created where they are missing. The data are
/// the same at every creation, only the dates follow the clock. All of it is one save: a creation that was cut short
/// leaves no rows and can be repeated. `progress` is told the percentage done, now and then.
///
/// Throws EQen when the database has users, and EDatabaseError.
void create(TTIDatabase &database, const std::function<void(int percent)> &progress = {});

} // namespace Demo
