// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/catalogue.h"
#include "demo/mill.h"
#include "demo/subjects.h"

#include <QSet>

#include <algorithm>
#include <numbers>

using namespace Qt::StringLiterals;

namespace Demo {

namespace {

QString code(QStringView group, int client, int number)
{
    return u"%1.%2.%3"_s.arg(group, padded(client + 1, 3), padded(number, 2));
}

int addYarn(Mill &mill, int client, int kind)
{
    const auto ofClient =
        std::count_if(mill.yarns.begin(), mill.yarns.end(), [&](const Yarn &yarn) { return yarn.client == client; });
    const YarnKind &yarnKind = yarnKinds()[kind];
    mill.yarns.append({code(yarnKind.group, client, int(ofClient) + 1), &yarnKind, client});
    return int(mill.yarns.size()) - 1;
}

/// The client's yarn of that kind; every client sends its own.
int yarnOf(Mill &mill, int client, int kind)
{
    for (int i = 0; i < mill.yarns.size(); ++i) {
        if (mill.yarns[i].client == client && mill.yarns[i].kind == &yarnKinds()[kind])
            return i;
    }
    return addYarn(mill, client, kind);
}

void addPlainColour(Mill &mill, Fabric &fabric, const QString &colour)
{
    for (const ComponentKind &kind : fabric.kind->components) {
        if (kind.percent == 0)
            continue;
        const QStringView yarnColour = yarnKinds()[kind.yarn].keepsItsColour ? raw : QStringView(colour);
        fabric.composition.append({colour, yarnOf(mill, fabric.client, kind.yarn), yarnColour.toString(),
            kind.percent * (wholeShare / 100), kind.feeders, kind.loop});
    }
}

/// The first colour has half of the feeders or more.
void addStripes(Mill &mill, Fabric &fabric, const QStringList &colours)
{
    const ComponentKind &kind = fabric.kind->components[0];
    const QVector<int> feeders = colours.size() == 2 ? QVector<int>{64, 32} : QVector<int>{48, 24, 24};
    for (int i = 0; i < colours.size(); ++i) {
        const int share = int((qint64(wholeShare) * feeders[i] + kind.feeders / 2) / kind.feeders);
        fabric.composition.append(
            {colours[0], yarnOf(mill, fabric.client, kind.yarn), colours[i], share, feeders[i], kind.loop});
    }
}

/// The shares without colours, from which those of a new colour are combined. They are not active.
void addGenericLines(Mill &mill, Fabric &fabric)
{
    QVector<Component> lines;
    for (const ComponentKind &kind : fabric.kind->components) {
        if (kind.percent == 0)
            continue;
        const int yarn = yarnOf(mill, fabric.client, kind.yarn);
        if (lines.isEmpty() || lines.last().yarn != yarn)
            lines.append({noColour.toString(), yarn, anyColour.toString()});
        lines.last().share += kind.percent * (wholeShare / 100);
        lines.last().feeders += kind.feeders;
    }
    fabric.colours.append(noColour.toString());
    fabric.composition += lines;
}

/// Colours after the raw one, black and the like; `number` picks them in turn.
QString dyed(int number)
{
    constexpr int first = 2;
    return colourKinds()[first + number % (colourKinds().size() - first)].code.toString();
}

void addFabric(Mill &mill, int client, int kind, int numberOfClient)
{
    const int number = int(mill.fabrics.size());
    Fabric fabric;
    fabric.kind = &fabricKinds()[kind];
    fabric.client = client;
    fabric.code = code(fabric.kind->group, client, numberOfClient);
    fabric.price = fabric.kind->price * mill.random.between(95, 112) / 100;
    if (fabric.kind->striped) {
        fabric.colours = {dyed(number), dyed(number + 5)};
        addStripes(mill, fabric, {fabric.colours[0], u"000020"_s});
        addStripes(mill, fabric, {fabric.colours[1], u"000020"_s, raw.toString()});
    } else {
        fabric.colours = QStringList{raw.toString(), dyed(number), dyed(number + 3)}.mid(0, 1 + number % 3);
        for (const QString &colour : fabric.colours)
            addPlainColour(mill, fabric, colour);
    }
    fabric.activeColours = {fabric.colours[number % fabric.colours.size()]};
    // Somebody forgot to close a colour: orders of these fabrics are asked about.
    if (number % 11 == 4 && fabric.colours.size() > 1)
        fabric.activeColours = fabric.colours.mid(0, 2);
    if (fabric.kind->generic)
        addGenericLines(mill, fabric);
    mill.fabrics.append(fabric);
}

void countLoopLengths(Mill &mill)
{
    for (const Fabric &fabric : mill.fabrics) {
        for (int yarn = 0; yarn < mill.yarns.size(); ++yarn) {
            QSet<int> loops;
            for (const Component &component : fabric.composition) {
                if (component.yarn == yarn && component.loop > 0)
                    loops.insert(component.loop);
            }
            mill.yarns[yarn].loopLengths = std::max(mill.yarns[yarn].loopLengths, int(loops.size()));
        }
    }
}

void collectMaterialRows(const Mill &mill, Inserter &rows)
{
    rows.into(u"MATERIAL"_s,
        u"CODIGO, DESCRICAO, DESCRICAO2, GRUPO, CODCLI, LARGURA, GRAMATURA, MAXIMO, CONCENTRACAO, NE, UNIDADE,"
        " OBSERVACAO, ATIVO"_s,
        mill.company);
    for (int i = 0; i < mill.yarns.size(); ++i) {
        const Yarn &yarn = mill.yarns[i];
        const Literal active = !yarn.active ? Literal(u"N") : i % 4 == 3 ? Literal(nullptr) : Literal(u"S");
        rows.row({yarn.code, yarn.kind->description, nullptr, yarn.kind->group, mill.clients[yarn.client].code, nullptr,
            nullptr, nullptr, nullptr, yarn.kind->count, u"KG", nullptr, active});
    }
    for (int i = 0; i < mill.fabrics.size(); ++i) {
        const Fabric &fabric = mill.fabrics[i];
        const FabricKind &kind = *fabric.kind;
        rows.row({fabric.code, kind.description, u"Ref. %1 do cliente"_s.arg(1100 + i * 17), kind.group,
            mill.clients[fabric.client].code, kind.width / 100.0, kind.grammage, kind.perRoll + 3, 3 + i % 5, nullptr,
            u"KG", kind.observation, u"S"});
    }
    rows.row({u"200.000.01", u"Saco plástico para rolo 40 x 180 cm", nullptr, u"200", nullptr, nullptr, nullptr,
        nullptr, nullptr, nullptr, u"UN", nullptr, u"S"});
    rows.row({u"200.000.02", u"Tubo de papelão 1,80 m", nullptr, u"200", nullptr, nullptr, nullptr, nullptr, nullptr,
        nullptr, u"UN", nullptr, u"S"});
}

void collectFabricTexts(const Mill &mill, Inserter &rows)
{
    rows.into(u"MAT_OBS"_s, u"CODIGO, OBSERVACAO"_s, mill.company);
    for (const Fabric &fabric : mill.fabrics) {
        const FabricKind &kind = *fabric.kind;
        rows.row({fabric.code,
            u"%1\nLargura %2 cm, gramatura %3 g/m², tolerância de 5%. Identificar cada rolo com a etiqueta da OF."_s
                .arg(kind.observation)
                .arg(kind.width)
                .arg(kind.grammage)});
    }
    rows.into(u"PRODUTO"_s, u"CODIGO, DESCRICAO"_s, mill.company);
    for (const Fabric &fabric : mill.fabrics) {
        rows.row({fabric.code,
            u"Serviço de tecelagem: %1 %2 g/m²"_s.arg(fabric.kind->description).arg(fabric.kind->grammage)});
    }
}

void collectCompositions(const Mill &mill, Inserter &rows)
{
    rows.into(u"COMP_MATERIAL"_s,
        u"MATERIAL, COR, CODIGO, COR_I, ORDEM, PERC, ROCA, ALIMENTADORES, LFA, COMP_PONTO, DIAMETRO, FINURA, LARGURA,"
        " GRAMATURA, KG_ROLO"_s,
        mill.company);
    for (const Fabric &fabric : mill.fabrics) {
        const FabricKind &kind = *fabric.kind;
        const MachineKind &machine = machineKinds()[kind.machine];
        int position = 0;
        for (const Component &line : fabric.composition) {
            const double loop = line.loop / 100.0;
            const double needles = std::numbers::pi * machine.diameter * machine.gauge;
            const int centimetresPerTurn = qRound(needles * loop / 10);
            const bool generic = line.loop == 0;
            rows.row({fabric.code, line.colour, mill.yarns[line.yarn].code, line.yarnColour, ++position,
                line.share / 100'000.0, line.feeders, line.feeders,
                generic ? Literal(nullptr) : Literal(centimetresPerTurn), generic ? Literal(nullptr) : Literal(loop),
                machine.diameter, machine.gauge, kind.width / 100.0, kind.grammage, kind.perRoll});
        }
    }
}

void collectStockItems(const Mill &mill, Inserter &rows)
{
    rows.into(u"MAT_ITEN"_s, u"CODIGO, COR, LOTE, DEPOSITO, LOCAL, QTDE, PRECO_MED, ATIVO"_s, mill.company);
    int number = 0;
    const auto add = [&](const QString &material, const QString &colour, double price, bool active) {
        const Literal flag = !active ? Literal(u"N") : ++number % 2 ? Literal(u"S") : Literal(nullptr);
        rows.row({material, colour, u"000000", u"0000", nullptr, 0, price, flag});
    };
    for (const Fabric &fabric : mill.fabrics) {
        for (const QString &colour : fabric.colours)
            add(fabric.code, colour, fabric.price / 100.0, fabric.activeColours.contains(colour));
    }
    for (int yarn = 0; yarn < mill.yarns.size(); ++yarn) {
        QStringList colours{raw.toString()};
        for (const Fabric &fabric : mill.fabrics) {
            for (const Component &line : fabric.composition) {
                if (line.yarn == yarn && line.colour != noColour && !colours.contains(line.yarnColour))
                    colours.append(line.yarnColour);
            }
        }
        for (const QString &colour : colours)
            add(mill.yarns[yarn].code, colour, mill.yarns[yarn].kind->price / 10'000.0, mill.yarns[yarn].active);
    }
}

} // namespace

void addMaterials(Mill &mill)
{
    int turn = 0;
    for (int client = 0; client < mill.clients.size(); ++client) {
        for (int number = 1; number <= 2 + client % 3; ++number)
            addFabric(mill, client, 5 * turn++ % int(fabricKinds().size()), number);
        if (client % 6 == 2)
            mill.yarns[addYarn(mill, client, client % int(yarnKinds().size()))].active = false;
    }
    countLoopLengths(mill);
}

void collectMaterials(const Mill &mill, Inserter &rows)
{
    collectMaterialRows(mill, rows);
    collectFabricTexts(mill, rows);
    collectCompositions(mill, rows);
    collectStockItems(mill, rows);
}

} // namespace Demo
