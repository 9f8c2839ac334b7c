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

constexpr Grams boxStep = 100;

/// What orders may still take of a lot. A yarn under several loop lengths offers each of them its part only.
Grams usable(const Mill &mill, const Lot &lot)
{
    return (lot.received - lot.consumed - lot.sentBack) / mill.yarns[lot.yarn].loopLengths - lot.reserved;
}

Grams usableOf(const Mill &mill, int yarn)
{
    Grams sum = 0;
    for (const Lot &lot : mill.lots)
        sum += lot.yarn == yarn ? usable(mill, lot) : 0;
    return sum;
}

/// The invoices with which the clients send their yarn.
class Deliveries
{
public:
    explicit Deliveries(Mill &mill)
        : m_mill(mill)
        , m_random(mill.random)
    {
        // The fourth and the fifth client came to the same number by chance.
        for (int client = 0; client < mill.clients.size(); ++client)
            m_lastNumbers.append(1203 + (client == 4 ? 3 : client) * 1377 % 8000);
    }

    /// Brings what the order lacks.
    void supply(const Order &order)
    {
        const Fabric &fabric = m_mill.fabrics[order.fabric];
        int document = -1;
        for (const Need &need : m_mill.needsOf(fabric)) {
            const Grams missing = part(order.plan, need.share) - usableOf(m_mill, need.yarn);
            if (missing <= 0)
                continue;
            if (document < 0)
                document = open(fabric.client, dayFor(fabric.client, order.day));
            constexpr Grams oneTruckPlace = 700'000;
            if (missing > oneTruckPlace)
                addLot(document, need.yarn, missing / 2, false);
            addLot(document, need.yarn, missing > oneTruckPlace ? missing - missing / 2 : missing,
                missing <= oneTruckPlace && m_mill.lots.size() % 37 == 20);
        }
        if (document >= 0)
            addCompanions(document);
    }

    /// Yarn of an earlier season that the client had sent back.
    void addReturned(int client)
    {
        const int document = open(client, -m_random.between(46, 50));
        for (int yarn = 0; yarn < m_mill.yarns.size(); ++yarn) {
            if (m_mill.yarns[yarn].client == client && m_random.oneIn(2))
                addReturnedLot(document, yarn);
        }
        if (m_mill.lots.isEmpty() || m_mill.lots.last().document != document)
            addReturnedLot(document, yarnOf(client));
    }

private:
    int yarnOf(int client) const
    {
        const auto found = std::find_if(
            m_mill.yarns.begin(), m_mill.yarns.end(), [&](const Yarn &yarn) { return yarn.client == client; });
        return int(found - m_mill.yarns.begin());
    }

    int dayFor(int client, int orderDay)
    {
        const auto previous = std::find_if(m_mill.documents.rbegin(), m_mill.documents.rend(),
            [&](const Document &document) { return document.client == client; });
        if (previous == m_mill.documents.rend() || previous->day < -longestWait)
            return orderDay - m_random.between(15, longestWait);
        return std::max(previous->day, orderDay - m_random.between(2, 8));
    }

    int open(int client, int day)
    {
        constexpr std::array notes{QStringView(u"Fio para o pedido de inverno."),
            QStringView(u"Conferir a cor dos cones antes de tecer."),
            QStringView(u"Faltou uma caixa; o cliente envia na próxima nota.")};
        const int number = m_lastNumbers[client];
        m_lastNumbers[client] += m_random.between(4, 70);
        const int index = int(m_mill.documents.size());
        const QString note = index % 6 == 2 ? notes[index / 6 % notes.size()].toString() : QString();
        m_mill.documents.append({padded(number, 7), client, day, note});
        return index;
    }

    Lot &addLot(int document, int yarn, Grams least, bool unnamed)
    {
        const Yarn &owned = m_mill.yarns[yarn];
        Lot lot;
        lot.document = document;
        lot.yarn = yarn;
        lot.price = owned.kind->price / 100 * m_random.between(94, 107);
        lot.received = least * owned.loopLengths * m_random.between(110, 220) / 100;
        if (m_random.oneIn(6)) {
            lot.consumed = lot.received * m_random.between(3, 12) / 100 / boxStep * boxStep;
            lot.received += lot.consumed;
        }
        lot.received = (lot.received + boxStep) / boxStep * boxStep;
        nameLot(lot, unnamed);
        m_mill.lots.append(lot);
        return m_mill.lots.last();
    }

    void nameLot(Lot &lot, bool unnamed)
    {
        m_lotNumber += m_random.between(1, 9);
        const QString number = QString::number(m_lotNumber);
        if (m_mill.yarns[lot.yarn].kind->group == u"10") {
            lot.brand = u"Filamentos Boca da Serra";
            lot.name = u"FBS"_s + number;
        } else if (m_random.oneIn(2)) {
            lot.brand = u"Fiação Pedra Redonda";
            lot.name = u"PR-"_s + number;
        } else {
            lot.brand = u"Algodoeira Campo Fundo";
            lot.name = u"%1/%2"_s.arg(number).arg(m_random.between(1, 4));
        }
        if (unnamed)
            lot.name = u"0"_s;
    }

    /// With the yarn that is lacking the client often sends some of what it will need next.
    void addCompanions(int document)
    {
        for (int yarn = 0; yarn < m_mill.yarns.size(); ++yarn) {
            const Yarn &owned = m_mill.yarns[yarn];
            if (owned.client != m_mill.documents[document].client || !owned.active || !m_random.oneIn(3))
                continue;
            addLot(document, yarn, Grams(m_random.between(40, 200)) * 1000, false);
        }
    }

    void addReturnedLot(int document, int yarn)
    {
        Lot &lot = addLot(document, yarn, Grams(m_random.between(60, 240)) * 1000, false);
        lot.consumed = 0;
        lot.sentBack = lot.received;
    }

    static constexpr int longestWait = 40;
    Mill &m_mill;
    Random &m_random;
    QVector<int> m_lastNumbers;
    int m_lotNumber = 21'000;
};

/// Takes the yarn from the oldest lots first, as at the screen: each is drained before the next is touched.
void reserve(Mill &mill, Order &order)
{
    for (const Need &need : mill.needsOf(mill.fabrics[order.fabric])) {
        Grams left = part(order.plan, need.share);
        for (int i = 0; i < mill.lots.size() && left > 0; ++i) {
            Lot &lot = mill.lots[i];
            const Grams taken = lot.yarn == need.yarn ? std::min(left, usable(mill, lot)) : 0;
            if (taken <= 0)
                continue;
            lot.reserved += taken;
            left -= taken;
            order.reservations.append({i, taken, 0});
        }
    }
}

/// A fabric with several active colours would count its yarns twice; such orders are knitted without reservation.
bool isReserved(const Mill &mill, int order)
{
    return order % 12 != 7 && mill.fabrics[mill.orders[order].fabric].activeColours.size() == 1;
}

/// Some clients have a part of what no order wants sent back.
void sendRestsBack(Mill &mill)
{
    constexpr Grams worthTheWay = 60'000;
    constexpr int longAgo = 45;
    for (int i = 0; i < mill.lots.size(); ++i) {
        Lot &lot = mill.lots[i];
        const Grams rest = usable(mill, lot);
        if (i % 9 == 4 && lot.sentBack == 0 && rest > worthTheWay && mill.documents[lot.document].day < longAgo)
            lot.sentBack = rest / 2 / boxStep * boxStep;
    }
}

} // namespace

void addYarnLots(Mill &mill)
{
    Deliveries deliveries(mill);
    for (int client = 0; client < mill.clients.size(); client += 3)
        deliveries.addReturned(client);
    for (int i = 0; i < mill.orders.size(); ++i) {
        if (!isReserved(mill, i))
            continue;
        deliveries.supply(mill.orders[i]);
        reserve(mill, mill.orders[i]);
    }
    sendRestsBack(mill);
}

void collectYarnLots(const Mill &mill, Inserter &rows)
{
    rows.into(u"NFTERCEIROS"_s, u"DOCTO, CODCLI, DATA, OBS"_s, mill.company);
    for (const Document &document : mill.documents) {
        rows.row({document.number, mill.clients[document.client].code, mill.calendar.date(document.day),
            document.note.isEmpty() ? Literal(nullptr) : Literal(document.note)});
    }
    rows.into(u"NFT_ITEN"_s,
        u"CODCLI, CODIGO, VALOR, ESTOQUE_FISICO, ESTOQUE_ORIGINAL, QTDE_BAIXA, QTDE_DEVOL, MARCA, LOTE, DOCTO,"
        " UNITARIO"_s,
        mill.company);
    for (const Lot &lot : mill.lots) {
        const Document &document = mill.documents[lot.document];
        rows.row({mill.clients[document.client].code, mill.yarns[lot.yarn].code,
            Literal::money(value(lot.received, lot.price)), Literal::kilograms(lot.received),
            Literal::kilograms(lot.received), Literal::kilograms(lot.consumed),
            Literal::kilograms(lot.sentBack + lot.sentInFabric), lot.brand, lot.name, document.number,
            lot.price / 10'000.0});
    }
    rows.into(u"BAIXA_FIO"_s, u"NUMERO, DOCTO, CODIGO, LOTE, QTDE"_s, mill.company);
    for (const Order &order : mill.orders) {
        for (const Reservation &reservation : order.reservations) {
            const Lot &lot = mill.lots[reservation.lot];
            rows.row({order.number, mill.documents[lot.document].number, mill.yarns[lot.yarn].code, lot.name,
                Literal::kilograms(reservation.weight)});
        }
    }
}

} // namespace Demo
