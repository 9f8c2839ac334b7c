// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <QTime>

#include <cstddef>
#include <functional>
#include <initializer_list>

class TTIDatabase;

namespace Demo {

using Grams = qint64;
using Cents = qint64;

/// A value as it stands in a statement; nullptr is NULL.
class Literal
{
public:
    Literal(const QString &text);
    Literal(QStringView text);
    Literal(const char16_t *text);
    Literal(int number);
    Literal(double number);
    Literal(QDate date);
    Literal(QTime time);
    Literal(std::nullptr_t);
    static Literal kilograms(Grams grams);
    static Literal money(Cents cents);

    const QString &text() const { return m_text; }

private:
    Literal() = default;
    QString m_text;
};

/// Collects rows and writes them all at once.
class Inserter
{
public:
    /// The rows that follow go into a table of a company; 0 means a table that all companies share.
    void into(const QString &table, const QString &columns, int company);
    void row(std::initializer_list<Literal> values);

    /// Within the caller's save, in the order of collection. `progress` is told how many of the rows are written.
    void run(TTIDatabase &database, const std::function<void(qsizetype done, qsizetype all)> &progress) const;

private:
    QString m_head;
    QStringList m_statements;
};

} // namespace Demo
