// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/sqltext.h"
#include "tests/support/testdatabase.h"

/// Outbound invoices for the tests of the reports that list their items.
namespace Outbound {

/// Of company 1, unless the tables of another one are named ("_002"). An empty text is null.
struct Invoice
{
    QString number;
    QString client = QStringLiteral("00001");
    QString date = QStringLiteral("03/05/2026"); ///< month, day, year
    QString printed = QStringLiteral("S");
    QString takesBack = {}; ///< number of the invoice whose goods came back
};

struct Item
{
    int order = 1;
    QString material = QStringLiteral("M0001");
    double kg = 10;
    double price = 2.5;
    double value = 25;
    QString lot = {};
    QString document = {}; ///< the inbound invoice out of which it goes
};

inline QString text(const QString &value)
{
    return value.isEmpty() ? QStringLiteral("NULL") : SqlText::quoted(value);
}

/// The items move on the day of the invoice.
inline void insert(
    TestDatabase &database, const Invoice &invoice, const QList<Item> &items, const QString &company = QString())
{
    using SqlText::number;
    const auto table = [&](const QString &name) {
        return company.isEmpty() ? QLatin1Char('{') + name + QLatin1Char('}') : name + company;
    };
    const QString comma = QStringLiteral(", ");
    database.run(QStringLiteral("INSERT INTO %1 (FATURA, CODCLI, DT_EMISSAO, IMPRESSO, NOTA_DEV) VALUES (%2)")
                     .arg(table(QStringLiteral("NOTA")),
                         QStringList{text(invoice.number), text(invoice.client), text(invoice.date),
                             text(invoice.printed), text(invoice.takesBack)}
                             .join(comma)));
    for (const Item &item : items) {
        database.run(QStringLiteral("INSERT INTO %1 (FATURA, ORDEM, CODIGO, LOTE, NOTA_CLIENTE, QTDE, PRECO, VALOR, "
                                    "DATA_MVTO) VALUES (%2)")
                         .arg(table(QStringLiteral("NOTAITEN")),
                             QStringList{text(invoice.number), QString::number(item.order), text(item.material),
                                 text(item.lot), text(item.document), number(item.kg), number(item.price),
                                 number(item.value), text(invoice.date)}
                                 .join(comma)));
    }
}

} // namespace Outbound
