// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/mill.h"
#include "demo/subjects.h"

#include <algorithm>
#include <array>
#include <numeric>

using namespace Qt::StringLiterals;

namespace Demo {

namespace {

/// When each shift begins; the fourth begins on the eve of the day that its rolls count for.
QTime startOf(int shift)
{
    constexpr std::array hours{5, 11, 17, 23};
    return QTime(hours[shift - 1], 0);
}

/// After a Sunday or a holiday the night shift begins at midnight.
QTime weighedAt(const Calendar &calendar, const Roll &roll)
{
    constexpr int hour = 60 * 60;
    const bool shortNight = roll.shift == 4 && !calendar.runsOnEveOf(roll.day);
    const int second = shortNight ? hour + roll.second * 5 / 6 : roll.second;
    return startOf(roll.shift).addSecs(second);
}

/// Written off at the desk: the dialog keeps no time.
bool withoutTime(const Order &order, int roll)
{
    return (order.machine * 7 + roll) % 61 == 17;
}

void collectWriteOffs(const Mill &mill, Inserter &rows)
{
    rows.into(u"OF_MALHA_BAIXAS"_s, u"NUM_BAIXA, NUM_OF, DATA, HORA, TURNO, FUNCIONARIO, QTDE"_s, mill.company);
    for (const Order &order : mill.orders) {
        for (int i = 0; i < order.rolls.size(); ++i) {
            const Roll &roll = order.rolls[i];
            rows.row({padded(i + 1, 3), order.number, mill.calendar.date(roll.day),
                withoutTime(order, i) ? Literal(nullptr) : Literal(weighedAt(mill.calendar, roll)),
                QString::number(roll.shift), mill.workers[roll.worker].code, Literal::kilograms(roll.weight)});
        }
    }
}

void collectFinishedFabric(const Mill &mill, Inserter &rows)
{
    rows.into(u"PA_MALHA"_s, u"CODIGO, NUM_OF, QTDE_TOTAL, FATURADO"_s, mill.company);
    for (const Order &order : mill.orders) {
        if (!order.rolls.isEmpty()) {
            rows.row({mill.fabrics[order.fabric].code, order.number, Literal::kilograms(order.made()),
                Literal::kilograms(order.invoiced)});
        }
    }
}

QString inspectorOf(const Mill &mill, int shift)
{
    const auto found = std::find_if(mill.workers.begin(), mill.workers.end(),
        [&](const Worker &worker) { return worker.inspector && worker.shift == shift; });
    return found->code;
}

/// How often each defect of the catalogue was found on a roll; most are not.
QVector<int> defectsOf(Random &random)
{
    constexpr int catalogue = 12;
    QVector<int> counts(catalogue, 0);
    for (int found = random.between(0, 4); found > 0; --found)
        counts[random.between(0, catalogue - 1)] += random.between(1, 2);
    return counts;
}

QStringView grade(int defects)
{
    return defects < 6 ? u"1" : defects < 8 ? u"2" : u"3";
}

/// Every eleventh roll is inspected. As at the screen each defect of the catalogue gets a row, those not found too.
void collectDefects(const Mill &mill, Inserter &rows)
{
    rows.into(u"DEF_MOV"_s, u"NUMERO, ROLO, CODIGO, QUANT, REVISOR, QUALIDADE"_s, mill.company);
    Random random(mill.company);
    for (const Order &order : mill.orders) {
        for (int i = order.machine % 11; i < order.rolls.size(); i += 11) {
            const QVector<int> counts = defectsOf(random);
            const int sum = std::accumulate(counts.begin(), counts.end(), 0);
            const QString inspector = inspectorOf(mill, order.rolls[i].shift);
            for (int defect = 0; defect < counts.size(); ++defect)
                rows.row({order.number, i + 1, padded(defect + 1, 3), counts[defect], inspector, grade(sum)});
        }
    }
}

} // namespace

void collectRolls(const Mill &mill, Inserter &rows)
{
    collectWriteOffs(mill, rows);
    collectFinishedFabric(mill, rows);
    collectDefects(mill, rows);
}

} // namespace Demo
