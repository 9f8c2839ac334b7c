// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/sections.h"

#include "bench/bareclient.h"
#include "bench/filling.h"
#include "bench/station.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/searchmodel.h"

using namespace Qt::StringLiterals;

namespace {

SearchSource rollsOfAllOrders()
{
    return {Funcoes::DBLocal(u"OF_MALHA_BAIXAS"_s),
        {{u"NUM_OF"_s, u"Número"_s}, {u"NUM_BAIXA"_s, u"Baixa"_s}, {u"DATA"_s, u"Data"_s},
            {u"FUNCIONARIO"_s, u"Operador"_s}},
        {}};
}

} // namespace

QVector<Comparison> measureSearch(const Bench &bench)
{
    const QString engine = bench.database.engineName();
    bench.station.enter(BenchStation::secondCompany);
    TTIDatabase &database = bench.station.database();
    const QString rows = database.value(Funcoes::DBLocal_SQL(u"SELECT COUNT(*) FROM {OF_MALHA_BAIXAS}"_s)).toString();
    Comparison first{u"search, first of %1 rows"_s.arg(rows), engine, 1.5, {}, {}};
    Comparison rare{u"search, one row of %1 by a text"_s.arg(rows), engine, 1.5, {}, {}};
    QStringList statements;
    database.setObserver([&](const QString &statement) { statements.append(statement); });
    BareClient bare(bench.database.settings());
    Clockwork clock;
    const auto replay = [&] {
        clock.start();
        bare.send(statements);
        clock.pause();
        return clock.milliseconds();
    };
    for (int run = -bench.effort.warmUps; run < bench.effort.runs; ++run) {
        statements.clear();
        clock.start();
        SearchModel model(database, rollsOfAllOrders());
        clock.pause();
        const double program = clock.milliseconds();
        const double floor = replay();
        if (run >= 0) {
            first.program.add(program);
            first.floor.add(floor);
        }
    }
    for (int run = -1; run < bench.effort.processes; ++run) {
        SearchModel model(database, rollsOfAllOrders());
        statements.clear();
        clock.start();
        model.setText(Filling::rareText);
        clock.pause();
        const double program = clock.milliseconds();
        const double floor = replay();
        if (model.rowCount() != 1)
            throw EQen(u"The search finds %1 rows."_s.arg(model.rowCount()));
        if (run >= 0) {
            rare.program.add(program);
            rare.floor.add(floor);
        }
    }
    database.setObserver({});
    return {first, rare};
}
