// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Demo {

class Inserter;
struct Mill;

/// First the mill is thought out, one thing after the other as each builds on those before it…
void addPeople(Mill &mill); ///< clients, staff, machines
void addMaterials(Mill &mill); ///< yarns, fabrics and their compositions
void addOrders(Mill &mill); ///< with their rolls
void addYarnLots(Mill &mill); ///< and what the orders reserve of them
void addOutboundInvoices(Mill &mill); ///< and the releases before them

/// …then its rows are collected.
void collectRegistries(const Mill &mill, Inserter &rows);
void collectPeople(const Mill &mill, Inserter &rows);
void collectMaterials(const Mill &mill, Inserter &rows);
void collectRaports(const Mill &mill, Inserter &rows);
void collectPrices(const Mill &mill, Inserter &rows);
void collectOrders(const Mill &mill, Inserter &rows);
void collectRolls(const Mill &mill, Inserter &rows);
void collectYarnLots(const Mill &mill, Inserter &rows);
void collectOutboundInvoices(const Mill &mill, Inserter &rows);

/// Users, their rights and the parameters of the companies.
void collectSystem(Inserter &rows);

} // namespace Demo
