// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/reports/figures.h"
#include "tests/reports/outbound.h"

/// An inbound invoice of a client, without its lots.
struct InboundInvoice
{
    QString number;
    QString client = QStringLiteral("00001");
    QString date = QStringLiteral("03/02/2026"); ///< month, day, year
    QString observation = {};
};

/// Kilograms received, as they were and as they are held, and what went back of them.
struct InboundLot
{
    QString material = QStringLiteral("FIO30CO");
    QString lot = QStringLiteral("L1");
    double received = 50;
    double physical = 50;
    double returned = 0;
    double price = 20;
    double value = 1000;
    QString brand = {};
};

/// A station at which the report of inbound invoices is open.
class InboundStation : public ReportStation
{
public:
    explicit InboundStation(const QString &user = QStringLiteral("ADMIN"))
        : ReportStation(QStringLiteral("TfmRelDocto"), user)
    {
    }

    /// Into company 1, unless the tables of another one are named ("_002").
    void receive(const InboundInvoice &invoice, const QList<InboundLot> &lots, const QString &company = QString())
    {
        using Outbound::text, SqlText::number;
        const auto table = [&](const QString &name) {
            return company.isEmpty() ? QLatin1Char('{') + name + QLatin1Char('}') : name + company;
        };
        const QString key = text(invoice.number) + QStringLiteral(", ") + text(invoice.client);
        database.run(
            QStringLiteral("INSERT INTO %1 (DOCTO, CODCLI, DATA, OBS) VALUES (%2, %3, %4)")
                .arg(table(QStringLiteral("NFTERCEIROS")), key, text(invoice.date), text(invoice.observation)));
        for (const InboundLot &lot : lots) {
            const QStringList values{key, text(lot.material), text(lot.lot), text(lot.brand), number(lot.received),
                number(lot.physical), number(lot.returned), number(lot.price), number(lot.value)};
            database.run(QStringLiteral("INSERT INTO %1 (DOCTO, CODCLI, CODIGO, LOTE, MARCA, ESTOQUE_ORIGINAL, "
                                        "ESTOQUE_FISICO, QTDE_DEVOL, UNITARIO, VALOR, QTDE_BAIXA) VALUES (%2, 0)")
                             .arg(table(QStringLiteral("NFT_ITEN")), values.join(QStringLiteral(", "))));
        }
    }
    /// Items without a document of their own go out of the lot L1 of cotton of the document 0001001.
    void send(const Outbound::Invoice &invoice, QList<Outbound::Item> items)
    {
        for (Outbound::Item &item : items) {
            if (item.material == QStringLiteral("M0001"))
                item.material = QStringLiteral("FIO30CO");
            if (item.lot.isEmpty())
                item.lot = QStringLiteral("L1");
            if (item.document.isEmpty())
                item.document = QStringLiteral("0001001");
        }
        Outbound::insert(database, invoice, items);
    }
    /// Three invoices with five lots. Out of one lot two outputs count; of its others one is cancelled and one of
    /// tomorrow. Of the last lot, of which 4.5 kg were lost, an output came back by an invoice that was cancelled.
    void insertInvoices()
    {
        using namespace Qt::StringLiterals;
        receive({.number = u"0001001"_s, .observation = u"Entrega parcial"_s},
            {{.received = 100, .physical = 100, .value = 2000},
                {.material = u"FIO150PES"_s, .received = 50.125, .physical = 50.125, .price = 12.5, .value = 626.56}});
        receive({.number = u"0001002"_s, .date = u"03/05/2026"_s},
            {{.lot = u"L2"_s, .received = 30, .physical = 30, .returned = 30, .value = 600},
                {.material = u"FIO150PES"_s, .lot = u"L3"_s, .received = 5, .physical = 5, .price = 12, .value = 60}});
        receive({.number = u"0001003"_s, .client = u"00002"_s, .date = u"03/06/2026"_s, .observation = u"Frete pago"_s},
            {{.material = u"FIO150PES"_s,
                .lot = u"L9"_s,
                .received = 80,
                .physical = 75.5,
                .price = 10,
                .value = 755,
                .brand = u"Cataguases"_s}});
        send({.number = u"S000001"_s, .date = u"03/08/2026"_s}, {{.kg = 40.125, .value = 802.5}});
        send({.number = u"S000002"_s, .date = u"03/09/2026"_s}, {{.kg = 10, .value = 200}});
        send({.number = u"S000003"_s, .printed = u"C"_s}, {{.kg = 5, .value = 100}});
        send({.number = u"S000004"_s, .date = u"03/11/2026"_s}, {{.kg = 7, .value = 140}});
        send({.number = u"S000006"_s, .client = u"00002"_s, .date = u"03/09/2026"_s, .printed = u"N"_s},
            {{.material = u"FIO150PES"_s, .kg = 20, .value = 200, .lot = u"L9"_s, .document = u"0001003"_s}});
        send({.number = u"R000001"_s, .date = u"03/10/2026"_s, .takesBack = u"S000002"_s}, {});
        send({.number = u"R000002"_s, .printed = u"C"_s, .takesBack = u"S000006"_s}, {});
    }
    /// "document|material|lot|output" of the rows found.
    QStringList found()
    {
        click(QStringLiteral("BtnExecutaSQL"));
        return shown(*this,
            {QStringLiteral("DOCTO"), QStringLiteral("CODIGO"), QStringLiteral("LOTE"), QStringLiteral("FATURA")});
    }
};
