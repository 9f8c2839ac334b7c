// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/errors.h"

#include <QStringList>
#include <QVariant>

#include <memory>

class QSqlQuery;
class QSqlRecord;

enum class Engine { FirebirdEmbedded, FirebirdServer, PostgreSQL };

/// What a column holds; each engine has its own type for it.
enum class ColumnKind {
    Code, ///< text compared and sorted by its characters
    Name, ///< text for people, sorted as Portuguese readers expect
    Number, ///< text of digits sorted as a number: after "999" comes "1000"
    Kilograms, ///< exact, three decimals
    Money, ///< exact, two decimals
    Real, ///< unit prices and percentages
    Integer,
    Date,
    Time,
    Timestamp
};

/// Each difference between the engines is one function here. The statements of the program are Firebird's.
class Dialect
{
public:
    virtual ~Dialect() = default;
    static std::unique_ptr<Dialect> of(Engine engine);

    virtual QString driver() const = 0;
    virtual QString connectOptions() const = 0;
    /// Run once after connecting.
    virtual QStringList sessionStatements() const = 0;
    /// Run in a new database before its tables: collations and functions that the statements rely on. They may be run
    /// again where some are there already.
    virtual QStringList databaseStatements() const = 0;
    /// The statement in the form that the engine takes.
    virtual QString adapted(const QString &statement) const = 0;
    /// The select again for its first rows alone, where the driver would read them all at once; empty where it reads
    /// as rows are asked for.
    virtual QString firstRows(const QString &select, int count) const = 0;
    /// A value as it stands in the table, where the driver gives it otherwise.
    virtual QVariant exact(const QVariant &value) const = 0;
    /// Names and types of the columns of a select that has run.
    virtual QSqlRecord shapeOf(const QSqlQuery &query) const = 0;
    virtual EDatabaseError::Category category(const QSqlError &error) const = 0;

    QString columnType(ColumnKind kind, int length) const;
    /// How texts of that kind are sorted and compared, to stand behind their type.
    virtual QString collate(ColumnKind kind) const = 0;
    /// A statement that lists the columns (COLUNA) of one table, none when there is no such table.
    virtual QString columnsOf(const QString &table) const = 0;
    /// A statement that lists the indexes (INDICE) of one table.
    virtual QString indexesOf(const QString &table) const = 0;
    virtual QString addColumn(const QString &table, const QString &column, const QString &type) const = 0;
    virtual QString createIndex(
        const QString &index, const QString &table, const QStringList &columns, bool descending) const = 0;
    /// A condition: the column, of any type, contains the literal as text, upper or lower case alike.
    virtual QString contains(const QString &column, const QString &literal) const = 0;
};
