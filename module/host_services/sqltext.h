// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// Work on the text of statements. All functions leave quoted literals as they are, whatever stands in them.
namespace SqlText {

/// The value as a literal: quoted, embedded quotes doubled.
QString quoted(const QString &value);

/// The number as a literal with a point, in the shortest form that reads back as the same number.
/// Throws EProgramming for infinity and not-a-number.
QString number(double value);

/// True for one whole quoted literal.
bool isLiteral(const QString &text);

/// True for the plain name of a table or column; what is no name never gets into a statement.
bool isName(const QString &text);

/// Splits at the separator where it stands outside of quotes; parts are trimmed.
QStringList split(const QString &text, QChar separator);

/// Replaces each {NAME} by what the function makes of NAME.
QString withTables(const QString &statement, const std::function<QString(const QString &)> &physical);

/// `UPDATE T A SET A.C = …` without the alias before the columns that are set, for engines that refuse it there.
QString withoutAliasInSet(const QString &statement);

} // namespace SqlText
