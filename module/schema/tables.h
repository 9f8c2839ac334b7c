// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/dialect.h"

#include <QString>
#include <QStringList>
#include <QVector>

/// Every table of the program, declared once.
namespace Schema {

struct Column
{
    QString name;
    ColumnKind kind;
    int length = 0; ///< characters, for texts
};

struct Index
{
    QStringList columns;
    bool descending = false;
};

struct Table
{
    QString name; ///< logical name
    QVector<Column> columns;
    QStringList key; ///< empty: the table stores what is typed, repeated rows included
    QVector<Index> indexes = {};
    bool perCompany = true; ///< false: one table for all companies
};

/// Orders, write-offs, yarn and technical registries of the knitting mill.
QVector<Table> millTables();
/// Materials, clients, staff and the other registries of the business that the mill works with.
QVector<Table> businessTables();
/// Companies, users, rights, parameters, log.
QVector<Table> systemTables();

QVector<Table> allTables();

/// What an upgrade does besides adding the tables and columns that are new.
struct Step
{
    int version; ///< the version that it leads to
    QStringList statements; ///< run for every company, with {NAME} for its tables
};

/// In ascending order; the last one's version is that of allTables().
QVector<Step> upgradeSteps();

} // namespace Schema
