// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/catalogue.h"
#include "demo/mill.h"
#include "demo/subjects.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Demo {

namespace {

/// Eight feeders knit five millimetres.
int millimetres(int feeders)
{
    return (feeders * 5 + 4) / 8;
}

/// One line of a raport before its yarn is known.
struct Stripe
{
    int component; ///< of the composition in that colour
    int feeders;
};

/// Their feeders add up to those of the composition: 64 and 32, or 48, 24 and 24.
QVector<Stripe> stripes(qsizetype components)
{
    if (components == 2)
        return {{0, 24}, {1, 8}, {0, 24}, {1, 8}, {0, 16}, {1, 16}};
    return {{0, 24}, {1, 8}, {2, 8}, {0, 24}, {1, 16}, {2, 16}};
}

bool hasRaport(const Fabric &fabric)
{
    return fabric.kind->generic;
}

QVector<Component> linesOf(const Fabric &fabric, const QString &colour)
{
    QVector<Component> lines;
    std::copy_if(fabric.composition.begin(), fabric.composition.end(), std::back_inserter(lines),
        [&](const Component &line) { return line.colour == colour; });
    return lines;
}

void collectFeeders(const Mill &mill, Inserter &rows)
{
    rows.into(u"CADRAPORT"_s, u"CODIGO, ALIMENTADORES, MILIMETROS"_s, mill.company);
    for (const Fabric &fabric : mill.fabrics) {
        if (!hasRaport(fabric))
            continue;
        QVector<int> feeders = fabric.kind->striped ? QVector<int>{8, 16} : QVector<int>();
        for (const Component &line : fabric.composition) {
            if (!feeders.contains(line.feeders))
                feeders.append(line.feeders);
        }
        std::sort(feeders.begin(), feeders.end());
        for (const int count : feeders)
            rows.row({fabric.code, count, millimetres(count)});
    }
}

QStringView groupOf(const Fabric &fabric, int component)
{
    if (fabric.kind->machine == Jacquard)
        return component == 0 ? u"FUNDO" : u"DESENH";
    return component == 0 ? u"FUNDO" : u"LISTRA";
}

void collectRaport(const Mill &mill, const Fabric &fabric, const QString &colour, Inserter &rows)
{
    const QVector<Component> lines = linesOf(fabric, colour);
    QVector<Stripe> order;
    if (fabric.kind->striped) {
        order = stripes(lines.size());
    } else {
        for (int i = 0; i < lines.size(); ++i)
            order.append({i, lines[i].feeders});
    }
    const QString note = fabric.kind->striped
        ? u"Repetir da primeira linha ao fim da volta. Conferir a altura das listras no primeiro metro."_s
        : u"Conferir a posição dos alimentadores antes de iniciar."_s;
    int position = 0;
    for (const Stripe &stripe : order) {
        const Component &line = lines[stripe.component];
        rows.row({fabric.code, colour, ++position, mill.yarns[line.yarn].code, line.yarnColour,
            millimetres(stripe.feeders), groupOf(fabric, stripe.component), 1, 1.5, note});
    }
}

} // namespace

void collectRaports(const Mill &mill, Inserter &rows)
{
    collectFeeders(mill, rows);
    rows.into(u"RAPORT"_s,
        u"MATERIAL, COR, ORDEM, CODIGO, COR_I, MILIMETROS, AGRUPADOR, REPETICAO, DESPERDICIO, OBSERVACAO"_s,
        mill.company);
    for (const Fabric &fabric : mill.fabrics) {
        for (const QString &colour : fabric.colours) {
            if (hasRaport(fabric) && colour != noColour)
                collectRaport(mill, fabric, colour, rows);
        }
    }
}

} // namespace Demo
