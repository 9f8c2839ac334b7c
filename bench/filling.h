// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/searchsource.h"

#include <QString>

class TTIDatabase;

/// Years of a mill's life, made by the engine itself out of the demonstration's orders.
class Filling
{
public:
    /// The current company's tables are filled.
    explicit Filling(TTIDatabase &database);

    /// Adds orders until there are that many, each new one with so many rolls.
    void addOrders(int wanted, int rollsPerOrder);
    /// Adds orders in two equal rows, one for the program to write on and one for its floor.
    void addTwins(int count);
    /// One roll that no other is like: its worker's code holds rareText.
    void addRareRoll();
    /// What the server does by itself after a while: PostgreSQL's statistics. Firebird keeps those that an index had
    /// when it was made, in an installation too.
    void settle();

    /// A search over every roll of the current company.
    static SearchSource rollsOfAllOrders();
    /// Numbers of twins: equal but for their numbers.
    static QString programOrder(int index);
    static QString floorOrder(int index);
    static constexpr QLatin1StringView rareText{"RARO"};
    static constexpr int twinRolls = 30;
    static constexpr double rollKg = 20;

private:
    void addRolls(const QString &orders, int rolls);
    /// A select of the orders there are now, with their place R from 0.
    QString patterns() const;

    TTIDatabase &m_database;
};
