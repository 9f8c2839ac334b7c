// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reports/clientstock.h"

#include "module/host_services/format.h"

#include <algorithm>

namespace {

constexpr int kgDecimals = 3;

double toTheGram(double kg)
{
    return Format::rounded(kg, kgDecimals) + 0.0; // no "-0,000"
}

double received(const ClientStock::Yarn &yarn)
{
    return toTheGram(yarn.book + yarn.gone);
}

/// A yarn once, in the order in which they first come.
QList<ClientStock::Yarn> together(const QList<ClientStock::Yarn> &yarns)
{
    QList<ClientStock::Yarn> result;
    QHash<QString, qsizetype> places;
    for (const ClientStock::Yarn &yarn : yarns) {
        if (!places.contains(yarn.code)) {
            places.insert(yarn.code, result.size());
            result.append({yarn.code});
        }
        ClientStock::Yarn &sum = result[places.value(yarn.code)];
        sum.book += yarn.book;
        sum.physical += yarn.physical;
        sum.gone += yarn.gone;
    }
    return result;
}

} // namespace

void ClientStock::addFabric(YarnInFabric &yarn, double fabricKg, const QList<Share> &composition)
{
    for (const Share &share : composition)
        yarn[share.yarn] += share.percent * fabricKg / 100;
}

double ClientStock::physical(double bookKg, double inFabricKg)
{
    return toTheGram(bookKg - inFabricKg);
}

bool ClientStock::isNothing(double kg)
{
    return Format::rounded(kg, kgDecimals) == 0;
}

ClientStock::Bars ClientStock::bars(const QList<Yarn> &yarns)
{
    QList<Yarn> shown = together(yarns);
    shown.removeIf(
        [](const Yarn &yarn) { return isNothing(yarn.book) && isNothing(yarn.physical) && isNothing(yarn.gone); });
    std::stable_sort(shown.begin(), shown.end(),
        [](const Yarn &left, const Yarn &right) { return received(left) > received(right); });
    Bars result;
    for (const Yarn &yarn : shown) {
        result.yarns.append(yarn.code);
        result.received.append(received(yarn));
        result.inFabric.append(toTheGram(yarn.book - yarn.physical));
        result.returned.append(toTheGram(yarn.gone));
        result.free.append(toTheGram(yarn.physical));
    }
    return result;
}
