// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/demo.h"

#include "demo/inserter.h"
#include "demo/mill.h"
#include "demo/subjects.h"
#include "module/host_services/clock.h"
#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/schema/schema.h"

using namespace Qt::StringLiterals;

namespace Demo {

namespace {

void createTables(TTIDatabase &database)
{
    Schema::Builder builder(database);
    builder.upgrade();
    if (database.run(u"SELECT USUARIO FROM QEN_USUARIO"_s).next()) {
        throw EQen(u"O banco de dados já está em uso. Os dados de demonstração só entram em um banco novo."_s,
            database.settings().database);
    }
    builder.createCompany(1, u"Malharia Serra Azul Ltda"_s);
    builder.createCompany(2, u"Malharia Vale do Tear Ltda"_s);
}

Mill newMill(int company, QDate today)
{
    Mill mill(company, today);
    addPeople(mill);
    addMaterials(mill);
    addOrders(mill);
    addYarnLots(mill);
    addOutboundInvoices(mill);
    return mill;
}

void collect(const Mill &mill, Inserter &rows)
{
    collectRegistries(mill, rows);
    collectPeople(mill, rows);
    collectMaterials(mill, rows);
    collectRaports(mill, rows);
    collectPrices(mill, rows);
    collectOrders(mill, rows);
    collectRolls(mill, rows);
    collectYarnLots(mill, rows);
    collectOutboundInvoices(mill, rows);
}

} // namespace

void create(TTIDatabase &database, const std::function<void(int)> &progress)
{
    constexpr int tablesPercent = 10;
    const auto tell = [&](int percent) {
        if (progress)
            progress(percent);
    };
    tell(0);
    createTables(database);
    tell(tablesPercent);

    Inserter rows;
    for (const int company : {1, 2})
        collect(newMill(company, Clock::today()), rows);
    collectSystem(rows);

    Save save(database);
    rows.run(database,
        [&](qsizetype done, qsizetype all) { tell(tablesPercent + int((100 - tablesPercent) * done / all)); });
    save.CommitRetaining();
    tell(100);
}

} // namespace Demo
