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

struct Opening
{
    double milliseconds = 0;
    QSize size;
    QString emptyClass;
};

Opening open(BenchStation &station, const QString &className)
{
    Clockwork clock;
    clock.start();
    QWidget *form = station.host().loadForm(u"qenMalharia"_s, className, false, true);
    bool painted = false;
    new FirstPaint(form, [&painted] { painted = true; });
    while (!painted)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    clock.pause();
    const Opening opening{clock.milliseconds(), form->size(), EmptyScreens::classLike(form)};
    BenchStation::close(form);
    return opening;
}

Comparison measureScreen(const Bench &bench, const QString &className, const QString &orders)
{
    constexpr double atMost = 3;
    Comparison result{u"opening %1, %2 orders"_s.arg(className, orders), bench.database.engineName(), atMost, {}, {}};
    for (int run = -bench.effort.warmUps; run < bench.effort.runs; ++run) {
        const Opening opening = open(bench.station, className);
        EmptyScreens::setSize(opening.size);
        const Opening empty = open(bench.station, opening.emptyClass);
        if (run >= 0) {
            result.program.add(opening.milliseconds);
            result.floor.add(empty.milliseconds);
        }
    }
    return result;
}

} // namespace

QVector<Comparison> measureScreens(const Bench &bench)
{
    const QStringList screens = ClassRegistry::names();
    EmptyScreens::registerClasses();
    QVector<Comparison> results;
    for (const int company : {BenchStation::firstCompany, BenchStation::secondCompany}) {
        bench.station.enter(company);
        const int orders = company == BenchStation::firstCompany ? bench.effort.fewOrders : bench.effort.manyOrders;
        for (const QString &screen : screens)
            results.append(measureScreen(bench, screen, QString::number(orders)));
    }
    EmptyScreens::unregisterClasses();
    return results;
}
