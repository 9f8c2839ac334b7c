// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/catalogue.h"
#include "demo/mill.h"
#include "demo/subjects.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace Demo {

namespace {

constexpr int shiftSeconds = 6 * 60 * 60;

/// When a machine gives a roll.
struct Slot
{
    int day;
    int shift;
    int second;
};

/// The production day begins with the night shift, at 23:00 of its eve.
QVector<Slot> slotsOfMachine(Random &random)
{
    QVector<Slot> result;
    for (int day = 0; day < productionDays; ++day) {
        for (const int shift : {4, 1, 2, 3}) {
            const int draw = random.between(1, 100);
            if (draw > 60) {
                result.append({day, shift, random.between(300, shiftSeconds / 2 - 300)});
                result.append({day, shift, random.between(shiftSeconds / 2 + 300, shiftSeconds - 300)});
            } else if (draw > 4) {
                result.append({day, shift, random.between(300, shiftSeconds - 300)});
            }
        }
    }
    return result;
}

int fabricFor(Mill &mill, int machine)
{
    const MachineKind *kind = mill.machines[machine].kind;
    QVector<int> suitable;
    for (int i = 0; i < mill.fabrics.size(); ++i) {
        if (&machineKinds()[mill.fabrics[i].kind->machine] == kind)
            suitable.append(i);
    }
    return suitable[mill.random.between(0, int(suitable.size()) - 1)];
}

/// The plan is a round figure: nobody orders 873 kg.
Order newOrder(Mill &mill, int machine, int rolls)
{
    constexpr Grams step = 10'000;
    Order order;
    order.machine = machine;
    order.fabric = fabricFor(mill, machine);
    order.perRoll = Grams(mill.fabrics[order.fabric].kind->perRoll) * 1000;
    order.plan = (order.perRoll * rolls + step / 2) / step * step;
    order.plannedRolls = rolls;
    return order;
}

int knitter(Mill &mill, const Slot &slot, int machine)
{
    // Who has left was there in the first weeks.
    constexpr int lastWeeksFrom = 18;
    QVector<int> present;
    for (int i = 0; i < mill.workers.size(); ++i) {
        const Worker &worker = mill.workers[i];
        if (worker.shift == slot.shift && !worker.inspector && (worker.active || slot.day < lastWeeksFrom))
            present.append(i);
    }
    return present[machine / 3 % present.size()];
}

/// One job after the other until the days are used up; the last one is still on the machine.
void addJobs(Mill &mill, int machine)
{
    const QVector<Slot> slotsLeft = slotsOfMachine(mill.random);
    for (int first = mill.random.between(0, 3); first < slotsLeft.size();) {
        const int rolls = mill.random.between(25, 54);
        Order order = newOrder(mill, machine, rolls);
        order.day = slotsLeft[first].day - mill.random.between(1, 4);
        const int made = std::min(rolls, int(slotsLeft.size()) - first);
        for (const Slot &slot : slotsLeft.mid(first, made))
            order.rolls.append({slot.day, slot.shift, slot.second, 0, knitter(mill, slot, machine)});
        order.finished = made == rolls;
        mill.orders.append(order);
        first += made + mill.random.between(0, 2);
    }
}

void addWaitingOrder(Mill &mill, int machine)
{
    Order order = newOrder(mill, machine, mill.random.between(10, 54));
    order.day = productionDays - machine % 5;
    mill.orders.append(order);
}

/// What the rolls of a finished order come to. Most orders end with the plan, some a few kilograms before it, and some
/// went beyond it.
Grams made(Mill &mill, const Order &order, int number)
{
    switch (number % 20) {
    case 5:
    case 11:
    case 16:
        return order.plan - mill.random.between(400, 6'000);
    case 3:
    case 13:
        return order.plan + mill.random.between(2'000, 15'000);
    default:
        return order.plan;
    }
}

/// Every roll is near to what is left for each, so that the last one is no odd piece.
void weighRolls(Mill &mill, Order &order, Grams total)
{
    int rollsLeft = order.plannedRolls;
    for (Roll &roll : order.rolls) {
        const int mean = int(total / rollsLeft);
        roll.weight = rollsLeft == 1 ? total : mean + mill.random.between(-mean / 40, mean / 40);
        total -= roll.weight;
        --rollsLeft;
    }
}

QStringView remark(int number)
{
    constexpr std::array remarks{QStringView(u"Urgente: cliente retira na sexta-feira."),
        QStringView(u"Separar um rolo piloto para aprovação do cliente."),
        QStringView(u"Não misturar lotes de fio no mesmo rolo."),
        QStringView(u"Embalar em plástico duplo; a malha segue para tinturaria.")};
    return remarks[number / 4 % remarks.size()];
}

} // namespace

void addOrders(Mill &mill)
{
    for (int machine = 0; machine < mill.machines.size(); ++machine)
        addJobs(mill, machine);
    for (int machine = 0; machine < mill.machines.size(); ++machine) {
        if (machine % 3 != 1)
            addWaitingOrder(mill, machine);
    }
    std::stable_sort(mill.orders.begin(), mill.orders.end(),
        [](const Order &left, const Order &right) { return left.day < right.day; });
    for (int i = 0; i < mill.orders.size(); ++i) {
        Order &order = mill.orders[i];
        order.number = padded(i + 1, 6);
        weighRolls(mill, order, order.finished ? made(mill, order, i) : order.plan);
    }
}

void collectOrders(const Mill &mill, Inserter &rows)
{
    rows.into(u"OF_MALHA"_s, u"NUM_OF, DATA, CLIENTE, MATERIAL, MAQUINA, LOTE, KG_ROLO, KG_TOTAL, FLUXO, OBSERVACAO"_s,
        mill.company);
    for (int i = 0; i < mill.orders.size(); ++i) {
        const Order &order = mill.orders[i];
        const Fabric &fabric = mill.fabrics[order.fabric];
        rows.row({order.number, mill.calendar.date(order.day), mill.clients[fabric.client].code, fabric.code,
            mill.machines[order.machine].code, order.lot(), Literal::kilograms(order.perRoll),
            Literal::kilograms(order.plan), padded(1 + (i + fabric.client) % 8, 2),
            i % 4 == 0 ? Literal(remark(i)) : Literal(nullptr)});
    }
}

} // namespace Demo
