// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "reports/reportchart.h"
#include "tests/invoicing/invoices.h"
#include "tests/reports/outbound.h"
#include "tests/reports/reportstation.h"

/// The stock of a client, with a mill whose figures were worked out by hand.
class StockStation : public ReportStation
{
public:
    explicit StockStation(const QString &user = QStringLiteral("ADMIN"))
        : ReportStation(QStringLiteral("TfmRelEstoqueMat"), user)
    {
    }

    /// Materials belong to clients, or not.
    void setOwnedMaterials(bool owned)
    {
        database.run(QStringLiteral("UPDATE QEN_PARAMETRO SET VALOR = '%1' WHERE MODULO = 'MAT' AND NUMERO = 120")
                         .arg(QLatin1String(owned ? "S" : "N")));
    }
    void insertYarn(const QString &code, const QString &name, const QString &group = QStringLiteral("10"))
    {
        database.run(QStringLiteral("INSERT INTO {MATERIAL} (CODIGO, DESCRICAO, GRUPO, CODCLI, UNIDADE) VALUES "
                                    "('%1', '%2', '%3', '00001', 'KG')")
                         .arg(code, name, group));
    }
    /// Fabric of an order that was produced and, in part, invoiced.
    void insertFabric(const QString &order, double kg, double invoicedKg = 0,
        const QString &fabric = QStringLiteral("M0001"), const QString &company = QStringLiteral("_001"))
    {
        database.run(QStringLiteral("INSERT INTO PA_MALHA%1 (CODIGO, NUM_OF, QTDE_TOTAL, FATURADO) VALUES "
                                    "('%2', '%3', %4, %5)")
                         .arg(company, fabric, order, SqlText::number(kg), SqlText::number(invoicedKg)));
    }
    void reserve(const QString &order, const QString &document, const QString &yarn, const QString &lot, double kg)
    {
        database.run(QStringLiteral("INSERT INTO {BAIXA_FIO} (NUMERO, DOCTO, CODIGO, LOTE, QTDE) VALUES "
                                    "('%1', '%2', '%3', '%4', %5)")
                         .arg(order, document, yarn, lot, SqlText::number(kg)));
    }

    /// Client 00001. Cotton: 500 + 250.5 kg, of which 40 + 5.25 left; polyester: 300 kg. Fabric of 60 % cotton and
    /// 40 % polyester: 100 + 20 kg, so that 72 and 48 kg lie in it. Prices: cotton (20 + 24 + 99 + 30) / 4 = 43.25 of
    /// all lots there are, polyester 10, so that the fabric costs 25.95 + 4 = 29.95.
    void insertMill()
    {
        using namespace Qt::StringLiterals;
        setOwnedMaterials(true);
        insertYarn(u"FIOPARADO"_s, u"Fio parado"_s);
        insertYarn(u"FIOTINTO"_s, u"Fio tinto parado"_s, u"101"_s);
        Invoices::insert(database, u"0000100"_s, u"00001"_s,
            {{.lot = u"L1"_s, .quantity = 500, .price = 20},
                {.material = u"FIO150PES"_s, .lot = u"L2"_s, .quantity = 300, .price = 10}});
        Invoices::insert(database, u"0000101"_s, u"00001"_s,
            {{.lot = u"L3"_s, .quantity = 250.5, .price = 24},
                {.lot = u"L4"_s, .quantity = 100, .price = 99, .returned = 100}});
        Invoices::insert(database, u"0000200"_s, u"00002"_s, {{.lot = u"L5"_s, .quantity = 70, .price = 30}});
        const auto yarn = [](double kg) {
            return Outbound::Item{.material = u"FIO30CO"_s, .kg = kg, .lot = u"L1"_s, .document = u"0000100"_s};
        };
        Outbound::insert(database, {.number = u"0000901"_s}, {yarn(40)});
        Outbound::insert(database, {.number = u"0000902"_s, .printed = {}}, {yarn(5.25)});
        Outbound::insert(database, {.number = u"0000903"_s, .printed = u"C"_s}, {yarn(60)});
        for (const QString &order : {u"000012"_s, u"000013"_s, u"000014"_s})
            Orders::insert(database, {.number = order});
        database.run(u"UPDATE {OF_MALHA} SET LOTE = 'A1' WHERE NUM_OF = '000012'"_s);
        insertFabric(u"000012"_s, 150, 50);
        insertFabric(u"000013"_s, 20.5, 0.5);
        insertFabric(u"000014"_s, 30, 30);
        insertFabric(u"000015"_s, 7.5, 0, u"M0002"_s); // another client's
        reserve(u"000012"_s, u"0000100"_s, u"FIO30CO"_s, u"L1"_s, 120);
        reserve(u"000013"_s, u"0000100"_s, u"FIO30CO"_s, u"L1"_s, 30);
        reserve(u"000012"_s, u"0000100"_s, u"FIO150PES"_s, u"L2"_s, 80);
    }

    void openFor(const QString &client)
    {
        openReport();
        enter(QStringLiteral("EdtCodCli"), client);
    }
    QStringList yarns() { return consult(QStringLiteral("CODIGO")); }
    QString yarn(const QString &code, const QString &field) const
    {
        return column(field).value(column(QStringLiteral("CODIGO")).indexOf(code), QStringLiteral("no such yarn"));
    }
    QStringList fabrics() const { return rows(QStringLiteral("DBGrid2")); }
    /// "FIO30CO FIO150PES", then a line for each colour: "Em malha 72 48".
    QStringList chart() const
    {
        const ReportChart &shown = *static_cast<ReportChart *>(child(QStringLiteral("Grafico")));
        QStringList lines;
        if (!shown.isEmpty())
            lines.append(shown.categories().join(QLatin1Char(' ')));
        for (const ReportChart::Series &series : shown.series()) {
            lines.append(series.name);
            for (const double kg : series.values)
                lines.last() += QLatin1Char(' ') + SqlText::number(kg);
        }
        return lines;
    }
};
