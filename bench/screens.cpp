// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/sections.h"

#include "bench/emptyscreens.h"
#include "bench/station.h"
#include "host/firstpaint.h"
#include "module/host_services/classregistry.h"

#include <QCoreApplication>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

/// From the menu's call until the screen stands painted, in milliseconds.
double open(BenchStation &station, const QString &className)
{
    Clockwork clock;
    clock.start();
    QWidget *form = station.host().loadForm(u"qenMalharia"_s, className, false, true);
    bool painted = false;
    new FirstPaint(form, [&painted] { painted = true; });
    while (!painted)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    clock.pause();
    BenchStation::close(form);
    return clock.milliseconds();
}

Comparison measureScreen(const Bench &bench, const QString &screen, int orders)
{
    constexpr double atMost = 3;
    const QString empty = EmptyScreens::classLike(screen);
    if (empty.isEmpty())
        throw EQen(u"There is no form for %1."_s.arg(screen));
    Comparison result{u"opening %1, %2 orders"_s.arg(screen).arg(orders), bench.database.engineName(), atMost, {}, {}};
    for (int run = -bench.effort.warmUps; run < bench.effort.runs; ++run) {
        const double program = open(bench.station, screen);
        const double floor = open(bench.station, empty);
        if (run >= 0)
            result.add(floor, program);
    }
    return result;
}

} // namespace

QVector<Comparison> measureScreens(const Bench &bench)
{
    const QStringList screens = ClassRegistry::names();
    const EmptyScreens::Registration empty;
    QVector<Comparison> results;
    for (const int company : {BenchStation::firstCompany, BenchStation::secondCompany}) {
        bench.station.enter(company);
        const bool few = company == BenchStation::firstCompany;
        for (const QString &screen : screens)
            results.append(measureScreen(bench, screen, few ? bench.effort.fewOrders : bench.effort.manyOrders));
    }
    return results;
}
