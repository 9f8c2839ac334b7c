// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/reads.h"

#include "bench/filling.h"
#include "bench/sections.h"
#include "bench/station.h"
#include "bench/stationoperator.h"
#include "bench/table.h"
#include "module/host_services/classregistry.h"
#include "module/host_services/searchmodel.h"

#include <functional>

using namespace Qt::StringLiterals;

namespace {

struct Counters
{
    qint64 inSequence = 0;
    qint64 byIndex = 0;
};

/// What this connection has read so far, by table.
QHash<QString, Counters> counters(TTIDatabase &database)
{
    QSqlQuery query = database.run(uR"(
        SELECT TRIM(T.MON$TABLE_NAME), R.MON$RECORD_SEQ_READS, R.MON$RECORD_IDX_READS
        FROM MON$ATTACHMENTS A
        INNER JOIN MON$TABLE_STATS T ON (T.MON$STAT_ID = A.MON$STAT_ID)
        INNER JOIN MON$RECORD_STATS R ON (R.MON$STAT_ID = T.MON$RECORD_STAT_ID)
        WHERE A.MON$ATTACHMENT_ID = CURRENT_CONNECTION
          AND T.MON$TABLE_NAME NOT LIKE 'RDB$%' AND T.MON$TABLE_NAME NOT LIKE 'MON$%')"_s);
    QHash<QString, Counters> result;
    while (query.next())
        result.insert(query.value(0).toString(), {query.value(1).toLongLong(), query.value(2).toLongLong()});
    return result;
}

Reads during(TTIDatabase &database, const QString &what, const std::function<void()> &step)
{
    const QHash<QString, Counters> before = counters(database);
    step();
    const QHash<QString, Counters> after = counters(database);
    Reads reads{what, 0, 0, {}, 0};
    for (auto table = after.cbegin(); table != after.cend(); ++table) {
        const qint64 inSequence = table->inSequence - before.value(table.key()).inSequence;
        const qint64 byIndex = table->byIndex - before.value(table.key()).byIndex;
        reads.inSequence += inSequence;
        reads.byIndex += byIndex;
        if (inSequence + byIndex > reads.ofTable) {
            reads.ofTable = inSequence + byIndex;
            reads.table = table.key();
        }
    }
    return reads;
}

} // namespace

QVector<Reads> countReads(const Bench &bench)
{
    TTIDatabase &database = bench.station.database();
    if (database.settings().engine == Engine::PostgreSQL)
        return {};
    bench.station.enter(BenchStation::secondCompany);
    QVector<Reads> rows;
    const QStringList screens = ClassRegistry::names();
    for (const QString &screen : screens) {
        rows.append(during(database, u"opening "_s + screen, [&] { BenchStation::close(bench.station.open(screen)); }));
    }
    StationOperator person(bench.station);
    rows.append(during(database, u"order field left"_s, [&] { person.leaveOrder(Filling::programOrder(0)); }));
    rows.append(during(database, u"roll confirmed"_s, [&] { person.confirm(Filling::rollKg); }));
    rows.append(during(
        database, u"search, first rows"_s, [&] { const SearchModel first(database, Filling::rollsOfAllOrders()); }));
    return rows;
}

void printReads(const QVector<Reads> &rows)
{
    if (rows.isEmpty())
        return;
    QVector<QStringList> lines{{u"records read (Firebird)"_s, u"most of"_s, u"of it"_s, u"at most"_s, u"all by index"_s,
        u"all in sequence"_s, u"ok"_s}};
    for (const Reads &row : rows) {
        lines.append({row.what, row.table, QString::number(row.ofTable), QString::number(Reads::atMost),
            QString::number(row.byIndex), QString::number(row.inSequence), row.isGood() ? u"yes"_s : u"NO"_s});
    }
    printLines(lines);
}
