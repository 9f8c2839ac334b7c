// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QSqlQuery;
class QSqlRecord;

namespace FirebirdColumns {

/// Names and types of the columns of a select that has run. QSqlQuery::record() tells the same, but its driver asks the
/// system tables anew for every decimal column, which takes longer than most selects themselves.
QSqlRecord of(const QSqlQuery &query);

} // namespace FirebirdColumns
