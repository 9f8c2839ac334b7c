// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/sections.h"

#include "bench/bareclient.h"
#include "bench/filling.h"
#include "bench/station.h"
#include "bench/stationoperator.h"

using namespace Qt::StringLiterals;

namespace {

/// What the program sent for a roll of an order.
struct Sent
{
    QString order;
    QStringList leaving;
    QStringList untilAsked; ///< until the question whether to write the roll off
    QStringList untilLogged;
    QStringList afterwards;
};

/// How long one roll took, step by step, in milliseconds.
struct RollTimes
{
    double left;
    double logged;
    double ready;
};

RollTimes byProgram(StationOperator &person, const QString &order, Sent &sent)
{
    sent.order = order;
    RollTimes times{};
    times.left = person.leaveOrder(order);
    sent.leaving = person.statements();
    times.ready = person.confirm(Filling::rollKg);
    times.logged = person.untilLogged();
    const QStringList all = person.statements();
    sent.untilAsked = all.first(person.askedAfter());
    sent.untilLogged = all.sliced(person.askedAfter(), person.loggedAfter() - person.askedAfter());
    sent.afterwards = all.sliced(person.loggedAfter());
    return times;
}

/// The same for an order that differs by nothing but its number. The clock stands where the program's stood.
RollTimes byBareClient(BareClient &client, Sent sent, const QString &order)
{
    for (QStringList *statements : {&sent.leaving, &sent.untilAsked, &sent.untilLogged, &sent.afterwards})
        statements->replaceInStrings(sent.order, order);
    RollTimes times{};
    Clockwork clock;
    clock.start();
    client.send(sent.leaving);
    clock.pause();
    times.left = clock.milliseconds();
    clock.start();
    client.send(sent.untilAsked);
    clock.pause();
    clock.resume();
    client.send(sent.untilLogged);
    times.logged = clock.milliseconds();
    client.send(sent.afterwards);
    times.ready = clock.milliseconds();
    return times;
}

} // namespace

QVector<Comparison> measureRolls(const Bench &bench)
{
    const QString engine = bench.database.engineName();
    Comparison leaving{u"order field left, until its rolls are shown"_s, engine, 1.5, {}, {}};
    Comparison confirming{u"roll confirmed, until logged"_s, engine, 1.3, {}, {}};
    Comparison next{u"roll confirmed, until the next can be scanned"_s, engine, 1.5, {}, {}};
    bench.station.enter(BenchStation::secondCompany);
    StationOperator person(bench.station);
    BareClient bare(bench.database.settings());
    Sent sent;
    for (int index = 0; index < bench.effort.warmUps + bench.effort.runs; ++index) {
        // In turns, because whoever comes second finds pages that the first has changed.
        RollTimes floor{};
        const bool bareFirst = index % 2 == 1;
        if (bareFirst)
            floor = byBareClient(bare, sent, Filling::floorOrder(index));
        const RollTimes program = byProgram(person, Filling::programOrder(index), sent);
        if (!bareFirst)
            floor = byBareClient(bare, sent, Filling::floorOrder(index));
        if (index < bench.effort.warmUps)
            continue;
        leaving.add(floor.left, program.left);
        confirming.add(floor.logged, program.logged);
        next.add(floor.ready, program.ready);
    }
    return {confirming, next, leaving};
}
