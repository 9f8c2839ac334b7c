// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/controls/roworder.h"

#include "module/host_services/dataset.h"

#include <QCollator>
#include <QDateTime>

#include <algorithm>
#include <numeric>
#include <optional>
#include <vector>

namespace {

/// Days and times are numbers to sort by.
double figure(TField::Type type, const QVariant &value)
{
    switch (type) {
    case TField::Type::Date:
        return double(value.toDate().toJulianDay());
    case TField::Type::Time:
        return value.toTime().msecsSinceStartOfDay();
    case TField::Type::DateTime:
        return double(value.toDateTime().toMSecsSinceEpoch());
    default:
        return value.toDouble();
    }
}

template <class Key, class KeyOf>
QVector<int> sortedBy(const TDataSet &dataSet, int field, Qt::SortOrder order, const KeyOf &keyOf)
{
    std::vector<std::optional<Key>> keys; // an empty one is the least
    keys.reserve(size_t(dataSet.rowCount()));
    for (int row = 0; row < dataSet.rowCount(); ++row) {
        const QVariant value = dataSet.cell(row, field);
        keys.push_back(value.isNull() ? std::nullopt : std::optional<Key>(keyOf(value)));
    }
    QVector<int> rows(dataSet.rowCount());
    std::iota(rows.begin(), rows.end(), 0);
    std::stable_sort(rows.begin(), rows.end(), [&](int left, int right) {
        const auto &a = keys[size_t(left)];
        const auto &b = keys[size_t(right)];
        return order == Qt::AscendingOrder ? a < b : b < a;
    });
    return rows;
}

} // namespace

QVector<int> sortedRows(const TDataSet &dataSet, int field, Qt::SortOrder order)
{
    const TField::Type type = dataSet.fields()[field].type;
    if (type != TField::Type::Text)
        return sortedBy<double>(dataSet, field, order, [type](const QVariant &value) { return figure(type, value); });
    QCollator collator(QLocale(QLocale::Portuguese, QLocale::Brazil));
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return sortedBy<QCollatorSortKey>(
        dataSet, field, order, [&](const QVariant &value) { return collator.sortKey(value.toString()); });
}
