// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/schema/tables.h"

#include <QList>

class TTIDatabase;

namespace Schema {

/// Creates and upgrades the tables of a database. What is there already stays, columns that others added included.
class Builder
{
public:
    explicit Builder(TTIDatabase &database);
    /// With tables and steps of another version than this program's.
    Builder(TTIDatabase &database, const QVector<Table> &tables, const QVector<Step> &steps);

    int currentVersion() const { return m_steps.last().version; }
    /// 0: the database holds no tables of the program yet.
    int version() const;
    /// Brings the database to the current version: shared tables, and those of every company it knows.
    /// Throws EQen when the database is newer than the program, and EDatabaseError.
    void upgrade();
    /// Registers the company (1 to 999) and creates its tables. A company that exists keeps its name.
    void createCompany(int number, const QString &name);
    QList<int> companies() const;

private:
    void createDatabaseObjects();
    /// Company 0: the tables that all companies share.
    void createTables(int company);
    void runStep(const Step &step, int company);
    void createTable(const Table &table, const QString &physical);
    void addMissingColumns(const Table &table, const QString &physical, const QStringList &present);
    void createMissingIndexes(const Table &table, const QString &physical);
    QStringList names(const QString &statement) const;

    TTIDatabase &m_database;
    QVector<Table> m_tables;
    QVector<Step> m_steps;
};

} // namespace Schema
