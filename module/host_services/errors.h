// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSqlError>
#include <QString>

#include <stdexcept>

/// An error with a sentence for the user, in Portuguese, and the engine's or system's own words for "Detalhes".
class EQen : public std::runtime_error
{
public:
    explicit EQen(const QString &sentence, const QString &details = {});

    const QString &sentence() const { return m_sentence; }
    const QString &details() const { return m_details; }

private:
    QString m_sentence;
    QString m_details;
};

/// A statement or a connection that failed.
class EDatabaseError : public EQen
{
public:
    /// What the program can react to; the engines' own codes are mapped to it in the dialect.
    enum class Category { Connection, Unique, Conflict, Statement };

    EDatabaseError(Category category, const QString &nativeCode, const QString &engineText, const QString &statement);

    Category category() const { return m_category; }
    const QString &nativeCode() const { return m_nativeCode; }

private:
    Category m_category;
    QString m_nativeCode;
};

/// A mistake of the program's own: an unknown field, a table name that is none. Never caused by what a user types.
class EProgramming : public EQen
{
public:
    using EQen::EQen;
};
