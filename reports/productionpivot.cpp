// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reports/productionpivot.h"

#include "module/host_services/format.h"

#include <QHash>

namespace {

constexpr int kgDecimals = 3;
constexpr int valueDecimals = 2;

/// From 0; shiftCount for a shift that has no column.
size_t placeOf(const QString &shift)
{
    bool isNumber = false;
    const int number = shift.trimmed().toInt(&isNumber);
    return isNumber && number >= 1 && number <= ProductionPivot::shiftCount ? size_t(number) - 1
                                                                            : size_t(ProductionPivot::shiftCount);
}

QStringList groupOf(const ProductionPivot::Produced &produced, bool byDate)
{
    return {produced.machine, produced.machineName, produced.material, produced.materialName, produced.client,
        produced.clientName, byDate ? produced.date.toString(Qt::ISODate) : QString()};
}

void add(std::optional<double> &sum, double amount)
{
    sum = sum.value_or(0) + amount;
}

void round(ProductionPivot::ByShift &sums, int decimals)
{
    for (std::optional<double> &sum : sums) {
        if (sum)
            sum = Format::rounded(*sum, decimals);
    }
}

} // namespace

std::optional<double> ProductionPivot::total(const ByShift &sums)
{
    std::optional<double> result;
    for (const std::optional<double> &sum : sums) {
        if (sum)
            add(result, *sum);
    }
    return result ? std::optional(Format::rounded(*result, kgDecimals)) : std::nullopt;
}

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
        const size_t shift = placeOf(one.shift);
        add(row.kg[shift], one.kg);
        if (one.value)
            add(row.value[shift], *one.value);
    }
    for (Row &row : result) {
        round(row.kg, kgDecimals);
        round(row.value, valueDecimals);
    }
    return result;
}

QMap<QString, ProductionPivot::ByShift> ProductionPivot::byMachine(const QList<Produced> &produced)
{
    QMap<QString, ByShift> result;
    for (const Produced &one : produced)
        add(result[one.machine][placeOf(one.shift)], one.kg);
    for (ByShift &sums : result)
        round(sums, kgDecimals);
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
