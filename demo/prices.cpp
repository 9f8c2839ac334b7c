// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/catalogue.h"
#include "demo/mill.h"
#include "demo/subjects.h"

#include <array>
#include <numeric>

using namespace Qt::StringLiterals;

namespace Demo {

namespace {

constexpr int instalments = 14;

/// Each instalment costs 1.1 % of the first price more than the one before it.
std::array<Cents, instalments> pricesFrom(Cents first)
{
    std::array<Cents, instalments> prices{};
    for (int i = 0; i < instalments; ++i)
        prices[i] = first + (first * 11 * i + 500) / 1000;
    return prices;
}

void collectPrice(
    const Mill &mill, const Fabric &fabric, QStringView region, QStringView colourGroup, Cents first, Inserter &rows)
{
    const std::array<Cents, instalments> p = pricesFrom(first);
    const Cents sum = std::accumulate(p.begin(), p.end(), Cents(0));
    const auto price = [&](int i) { return Literal::money(p[i]); };
    rows.row({region, fabric.code, colourGroup, fabric.kind->description.left(30), u"00", mill.calendar.date(-20), u"0",
        u"0", u"0", u"M", price(0), price(1), price(2), price(3), price(4), price(5), price(6), price(7), price(8),
        price(9), price(10), price(11), price(12), price(13), Literal::money((sum + instalments / 2) / instalments)});
}

} // namespace

void collectPrices(const Mill &mill, Inserter &rows)
{
    QStringList columns;
    for (int i = 0; i < instalments; ++i)
        columns.append(u"PRECO_"_s + padded(i * 7, 2));
    rows.into(u"TABPRECO"_s,
        u"REGIAO, CODIGO, GRUPO_COR, DESC_PRODUTO, COLECAO, DT_ALTERACAO, ACRESCIMO, DESCONTO, COMISSAO, ORIGEM, %1,"
        " PRECO_MEDIO"_s.arg(columns.join(u", "_s)),
        mill.company);
    for (int i = 0; i < mill.fabrics.size(); ++i) {
        const Fabric &fabric = mill.fabrics[i];
        collectPrice(mill, fabric, u"001", u"00", fabric.price, rows);
        collectPrice(mill, fabric, u"002", u"00", fabric.price * 106 / 100, rows);
        if (i % 5 == 1) {
            collectPrice(mill, fabric, u"001", u"01", fabric.price * 104 / 100, rows);
            collectPrice(mill, fabric, u"001", u"02", fabric.price * 109 / 100, rows);
        }
    }
}

} // namespace Demo
