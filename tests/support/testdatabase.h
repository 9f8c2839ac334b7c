// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/database.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

/// A fresh database of its own, with the whole schema and the companies 1 and 2; it goes with the object.
///
/// The schema is created once per build and engine and copied from there.
class TestDatabase
{
public:
    enum class Content { Schema, Nothing };

    /// `engine` as in Engines. Throws EQen, with a warning that says how to start the engine, when it is missing.
    explicit TestDatabase(const QString &engine, Content content = Content::Schema);
    ~TestDatabase();
    Q_DISABLE_COPY_MOVE(TestDatabase)

    const ConnectionSettings &settings() const { return m_settings; }

    /// A small mill in the company: clients, fabrics and yarns, machines, shifts, staff, colours, stock items, quality
    /// grades, defects, parameters; and once the users ADMIN (all rights) and SEMDIREITO (none), password "malha".
    void addCommonData(int company = 1);

    /// A connection of the test's own: it sees what the others see, and changes are committed at once.
    TTIDatabase &connection();
    /// Runs a statement on that connection; {NAME} is the table of company 1.
    void run(const QString &statement);
    /// The first column of the first row; {NAME} is the table of company 1.
    QVariant value(const QString &statement);
    int count(const QString &table, const QString &condition = {}); ///< rows of a table of company 1
    /// All rows, their columns joined by "|"; null is empty.
    QStringList rows(const QString &statement);

private:
    QString m_engine;
    ConnectionSettings m_settings;
    std::unique_ptr<TTIDatabase> m_connection;
};
