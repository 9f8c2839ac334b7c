// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/mill.h"
#include "demo/subjects.h"

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace Demo {

namespace {

/// Of the releases, this part waits for invoices yet.
constexpr int waitingPart = 12;
/// The invoices made out last: nobody has said yet whether the very last are to be printed, those before will be.
constexpr int undecided = 2;
constexpr int notPrinted = 8;

/// What was produced for the client before the day and not released yet; a few rolls of an order that goes on wait.
Release newRelease(Mill &mill, int client, int day)
{
    constexpr qsizetype fewRolls = 4;
    Release release{client, day};
    for (int i = 0; i < mill.orders.size(); ++i) {
        Order &order = mill.orders[i];
        if (mill.fabrics[order.fabric].client != client)
            continue;
        const auto ready =
            std::count_if(order.rolls.begin(), order.rolls.end(), [&](const Roll &roll) { return roll.day < day; });
        const bool complete = order.finished && ready == order.rolls.size();
        if (ready == order.releasedRolls || (!complete && ready - order.releasedRolls < fewRolls))
            continue;
        Grams weight = 0;
        for (const Roll &roll : order.rolls.mid(order.releasedRolls, ready - order.releasedRolls))
            weight += roll.weight;
        release.lines.append({i, weight, int(ready - order.releasedRolls)});
        order.releasedRolls = ready;
    }
    return release;
}

InvoiceItem yarnItem(const Mill &mill, const Lot &lot, Grams weight)
{
    return {mill.yarns[lot.yarn].code, lot.name, mill.documents[lot.document].number, weight, lot.price, false};
}

/// The yarn that went into the fabric invoiced so far, less what was invoiced before: so rounding never adds up.
void addYarnItems(Mill &mill, Order &order, Invoice &invoice)
{
    for (const Need &need : mill.needsOf(mill.fabrics[order.fabric])) {
        Grams due = part(order.invoiced, need.share);
        for (Reservation &reservation : order.reservations) {
            Lot &lot = mill.lots[reservation.lot];
            if (lot.yarn != need.yarn)
                continue;
            const Grams total = std::min(due, reservation.weight);
            const Grams now = total - reservation.sent;
            due -= total;
            if (now <= 0)
                continue;
            reservation.sent = total;
            lot.sentInFabric += now;
            invoice.items.append(yarnItem(mill, lot, now));
        }
    }
}

/// The fabric with its knitting price and, as the tax office wants it, the client's yarn that goes back in it.
Invoice invoiceOf(Mill &mill, const Release &release)
{
    Invoice invoice{release.client, release.day};
    for (const ReleaseLine &line : release.lines) {
        Order &order = mill.orders[line.order];
        const Fabric &fabric = mill.fabrics[order.fabric];
        const bool billed = release.day < 50 || mill.random.between(1, 10) > 4;
        order.invoiced += line.weight;
        invoice.items.append({fabric.code, order.lot(), {}, line.weight, int(fabric.price) * 100, billed});
        addYarnItems(mill, order, invoice);
    }
    return invoice;
}

/// The fabric came back to the mill; the yarn stays written off.
Invoice takenBack(const Invoice &returned, int index, int day)
{
    Invoice invoice{returned.client, day, Invoice::State::Valid, index};
    std::copy_if(returned.items.begin(), returned.items.end(), std::back_inserter(invoice.items),
        [](const InvoiceItem &item) { return item.document.isEmpty(); });
    for (InvoiceItem &item : invoice.items)
        item.billed = false;
    return invoice;
}

void addReleases(Mill &mill)
{
    for (int client = 0; client < mill.clients.size(); ++client) {
        for (int day = mill.random.between(4, 10); day <= productionDays; day += mill.random.between(5, 9)) {
            const Release release = newRelease(mill, client, day);
            if (!release.lines.isEmpty())
                mill.releases.append(release);
        }
    }
    std::stable_sort(mill.releases.begin(), mill.releases.end(),
        [](const Release &left, const Release &right) { return left.day < right.day; });
}

void invoiceReleases(Mill &mill)
{
    const qsizetype invoiced = mill.releases.size() - mill.releases.size() / waitingPart;
    for (int i = 0; i < invoiced; ++i) {
        const Invoice invoice = invoiceOf(mill, mill.releases[i]);
        if (i % 19 == 7) {
            // Made out wrongly, cancelled and made out again.
            mill.invoices.append(invoice);
            mill.invoices.last().state = Invoice::State::Cancelled;
        }
        mill.releases[i].invoice = int(mill.invoices.size());
        mill.invoices.append(invoice);
        if (i % 23 == 11) {
            const int day = std::min(invoice.day + mill.random.between(2, 6), productionDays - 1);
            mill.invoices.append(takenBack(invoice, mill.releases[i].invoice, day));
        }
    }
}

void invoiceYarnSentBack(Mill &mill)
{
    for (const Lot &lot : mill.lots) {
        const Document &document = mill.documents[lot.document];
        if (lot.sentBack == 0)
            continue;
        const int day = document.day + mill.random.between(15, 25);
        Invoice invoice{document.client, day};
        invoice.items.append(yarnItem(mill, lot, lot.sentBack));
        mill.invoices.append(invoice);
    }
}

int firstNumber(const Mill &mill)
{
    return mill.company * 12'000 + 1;
}

void numberInvoices(Mill &mill)
{
    QVector<int> byDay(mill.invoices.size());
    std::iota(byDay.begin(), byDay.end(), 0);
    std::stable_sort(byDay.begin(), byDay.end(),
        [&](int left, int right) { return mill.invoices[left].day < mill.invoices[right].day; });
    int number = firstNumber(mill);
    for (const int index : byDay)
        mill.invoices[index].number = padded(number++, 7);
}

Literal printed(const Mill &mill, const Invoice &invoice)
{
    if (invoice.state == Invoice::State::Cancelled)
        return u"C";
    const int fromTheLast = firstNumber(mill) + int(mill.invoices.size()) - 1 - invoice.number.toInt();
    if (fromTheLast < undecided)
        return nullptr;
    return fromTheLast < notPrinted ? u"N" : u"S";
}

void collectInvoices(const Mill &mill, Inserter &rows)
{
    rows.into(u"NOTA"_s, u"FATURA, CODCLI, DT_EMISSAO, IMPRESSO, NOTA_DEV"_s, mill.company);
    for (const Invoice &invoice : mill.invoices) {
        rows.row(
            {invoice.number, mill.clients[invoice.client].code, mill.calendar.date(invoice.day), printed(mill, invoice),
                invoice.takesBack < 0 ? Literal(nullptr) : Literal(mill.invoices[invoice.takesBack].number)});
    }
    rows.into(u"NOTAITEN"_s, u"FATURA, ORDEM, CODIGO, LOTE, NOTA_CLIENTE, QTDE, PRECO, VALOR, TIPO, DATA_MVTO"_s,
        mill.company);
    for (const Invoice &invoice : mill.invoices) {
        for (int i = 0; i < invoice.items.size(); ++i) {
            const InvoiceItem &item = invoice.items[i];
            rows.row({invoice.number, i + 1, item.code, item.lot,
                item.document.isEmpty() ? Literal(nullptr) : Literal(item.document), Literal::kilograms(item.weight),
                item.price / 10'000.0, Literal::money(value(item.weight, item.price)), item.billed ? u"S" : u"N",
                mill.calendar.date(invoice.day)});
        }
    }
}

void collectReleases(const Mill &mill, Inserter &rows)
{
    rows.into(u"PEDIDO3"_s, u"NUMERO, CAIXA, DATA, CODCLI, CODIGO, QTDE, NOTAFISCAL, PESO, OBS, LOCAL"_s, mill.company);
    for (int i = 0; i < mill.releases.size(); ++i) {
        const Release &release = mill.releases[i];
        const QString number = release.invoice < 0 ? QString() : mill.invoices[release.invoice].number;
        for (const ReleaseLine &line : release.lines) {
            const Order &order = mill.orders[line.order];
            rows.row({padded(i + 1, 5), order.number, mill.calendar.date(release.day),
                mill.clients[release.client].code, mill.fabrics[order.fabric].code, Literal::kilograms(line.weight),
                number, line.rolls, i % 7 == 3 ? u"Cliente retira." : u"",
                u"%1-%2"_s.arg(QChar(u'A' + line.order % 4)).arg(padded(line.order % 12 + 1, 2))});
        }
    }
}

} // namespace

void addOutboundInvoices(Mill &mill)
{
    addReleases(mill);
    invoiceReleases(mill);
    invoiceYarnSentBack(mill);
    numberInvoices(mill);
}

void collectOutboundInvoices(const Mill &mill, Inserter &rows)
{
    collectReleases(mill, rows);
    collectInvoices(mill, rows);
}

} // namespace Demo
