// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reports/productionpivot.h"

#include "module/host_services/format.h"

#include <QHash>

namespace {

constexpr int kgDecimals = 3;
constexpr int valueDecimals = 2;

/// From 0; shiftCount for a shift that has no column.
int placeOf(const QString &shift)
{
    bool isNumber = false;
    const int number = shift.trimmed().toInt(&isNumber);
    return isNumber && number >= 1 && number <= ProductionPivot::shiftCount ? number - 1 : ProductionPivot::shiftCount;
}

QStringList groupOf(const ProductionPivot::Produced &produced, bool byDate)
{
    return {produced.machine, produced.machineName, produced.material, produced.materialName, produced.client,
        produced.clientName, byDate ? produced.date.toString(Qt::ISODate) : QString()};
}

void add(std::optional<double> &sum, double amount, int decimals)
{
    sum = Format::rounded(sum.value_or(0) + amount, decimals);
}

} // namespace

QList<ProductionPivot::Row> ProductionPivot::rows(const QList<Produced> &produced, bool byDate)
{
    QList<Row> result;
    QHash<QStringList, qsizetype> places;
    for (const Produced &one : produced) {
        const QStringList group = groupOf(one, byDate);
        if (!places.contains(group)) {
            places.insert(group, result.size());
            result.append({.machine = one.machine,
                .machineName = one.machineName,
                .material = one.material,
                .materialName = one.materialName,
                .client = one.client,
                .clientName = one.clientName,
                .date = byDate ? one.date : QDate()});
        }
        Row &row = result[places.value(group)];
        const int shift = placeOf(one.shift);
        row.totalKg = Format::rounded(row.totalKg + one.kg, kgDecimals);
        if (shift < shiftCount)
            add(row.kg[size_t(shift)], one.kg, kgDecimals);
        if (!one.value)
            continue;
        add(row.totalValue, *one.value, valueDecimals);
        if (shift < shiftCount)
            add(row.value[size_t(shift)], *one.value, valueDecimals);
    }
    return result;
}

QMap<QString, ProductionPivot::ByShift> ProductionPivot::byMachine(const QList<Produced> &produced)
{
    QMap<QString, ByShift> result;
    for (const Produced &one : produced) {
        double &sum = result[one.machine][size_t(placeOf(one.shift))];
        sum = Format::rounded(sum + one.kg, kgDecimals);
    }
    return result;
}

QMap<QDate, double> ProductionPivot::byDay(const QList<Produced> &produced)
{
    QMap<QDate, double> result;
    for (const Produced &one : produced) {
        double &sum = result[one.date];
        sum = Format::rounded(sum + one.kg, kgDecimals);
    }
    return result;
}
