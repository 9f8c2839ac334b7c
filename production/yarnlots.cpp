// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "production/yarnlots.h"

#include "module/host_services/database.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"

using namespace Funcoes;
using namespace YarnReservation;
using namespace Qt::StringLiterals;

namespace {

/// A condition: the composition line COMP is of the fabric, in a colour that is not switched off.
QString activeLines(const QString &fabric)
{
    return uR"(COMP.MATERIAL = )"_s + Aspas(fabric) + uR"(
        AND EXISTS (SELECT DISTINCT MAT_ITEN.COR FROM {MAT_ITEN} MAT_ITEN
                    WHERE MAT_ITEN.CODIGO = COMP.MATERIAL AND MAT_ITEN.COR = COMP.COR
                      AND (MAT_ITEN.ATIVO = 'S' OR MAT_ITEN.ATIVO IS NULL)))"_s;
}

QString sameLot(const QString &alias)
{
    return u"%1.DOCTO = NFT_ITEN.DOCTO AND %1.CODIGO = NFT_ITEN.CODIGO AND %1.LOTE = NFT_ITEN.LOTE"_s.arg(alias);
}

/// The composition is summed up before the lots are joined to it: a lot counts once, however many lines its yarn has.
QString lotsStatement(const YarnOrder &order)
{
    return uR"(
        SELECT COMP.CODIGO, MATERIAL.DESCRICAO, COMP.PERC, NFT_ITEN.DOCTO, NFTERCEIROS.DATA, NFT_ITEN.MARCA,
               NFT_ITEN.LOTE,
               COALESCE(NFT_ITEN.ESTOQUE_FISICO, 0) - COALESCE(NFT_ITEN.QTDE_BAIXA, 0) AS QTDE,
               COALESCE(NFT_ITEN.ESTOQUE_FISICO, 0) - COALESCE(NFT_ITEN.QTDE_DEVOL, 0) AS SALDO_DEV,
               (SELECT COUNT(DISTINCT COMP_MAT.LFA) FROM {COMP_MATERIAL} COMP_MAT
                WHERE COMP_MAT.CODIGO = COMP.CODIGO AND COMP_MAT.MATERIAL = )"_s
        + Aspas(order.fabric) + uR"() AS DIVISOR,
               NFT_ITEN.UNITARIO AS PRECO,
               (SELECT SUM(BF1.QTDE) FROM {BAIXA_FIO} BF1 WHERE )"_s
        + sameLot(u"BF1"_s) + uR"() AS SALDO_BAIXA_FIO,
               (SELECT MAX(BF2.QTDE) FROM {BAIXA_FIO} BF2 WHERE BF2.NUMERO = )"_s
        + Aspas(order.number) + u" AND "_s + sameLot(u"BF2"_s) + uR"() AS QTDE_RESERVA,
               (SELECT COUNT(*) FROM {BAIXA_FIO} BF3 WHERE BF3.NUMERO = )"_s
        + Aspas(order.number) + uR"( AND BF3.DOCTO = NFT_ITEN.DOCTO AND BF3.CODIGO = NFT_ITEN.CODIGO
                   AND (NFT_ITEN.LOTE = '' OR BF3.LOTE = NFT_ITEN.LOTE)) AS RESERVAS
        FROM (SELECT COMP.CODIGO, SUM(COMP.PERC) AS PERC FROM {COMP_MATERIAL} COMP
              WHERE )"_s
        + activeLines(order.fabric) + uR"( GROUP BY COMP.CODIGO) COMP
        INNER JOIN {MATERIAL} MATERIAL ON (COMP.CODIGO = MATERIAL.CODIGO)
        INNER JOIN {NFT_ITEN} NFT_ITEN ON (COMP.CODIGO = NFT_ITEN.CODIGO AND NFT_ITEN.CODCLI = )"_s
        + Aspas(order.client) + uR"()
        INNER JOIN {NFTERCEIROS} NFTERCEIROS
                ON (NFT_ITEN.DOCTO = NFTERCEIROS.DOCTO AND NFT_ITEN.CODCLI = NFTERCEIROS.CODCLI)
        ORDER BY COMP.CODIGO, NFTERCEIROS.DATA, NFT_ITEN.DOCTO, NFT_ITEN.LOTE)"_s;
}

Lot lotIn(const TTIQuery &row, double orderKg, Mode mode)
{
    Lot lot;
    lot.yarn = row.AsString(u"CODIGO"_s);
    lot.description = row.AsString(u"DESCRICAO"_s);
    lot.document = row.AsString(u"DOCTO"_s);
    lot.brand = row.AsString(u"MARCA"_s);
    lot.lot = row.AsString(u"LOTE"_s);
    lot.date = row.AsDate(u"DATA"_s);
    lot.price = row.AsFloat(u"PRECO"_s);
    lot.need = needOf(row.AsFloat(u"PERC"_s), orderKg);
    lot.balance = balanceOf(row.AsFloat(u"QTDE"_s), row.AsInteger(u"DIVISOR"_s), row.AsFloat(u"SALDO_BAIXA_FIO"_s));
    lot.held = row.AsFloat(u"QTDE_RESERVA"_s);
    lot.reserved = lot.held;
    lot.ticked = mode == Mode::AsRecorded ? row.AsInteger(u"RESERVAS"_s) > 0 : lot.held > 0;
    lot.notReturned = row.AsFloat(u"SALDO_DEV"_s);
    return lot;
}

} // namespace

YarnLots::YarnLots(TTIDatabase &database)
    : m_database(database)
{
}

QVector<Share> YarnLots::composition(const QString &columns, const QString &fabric, const QString &ending)
{
    TTIQuery lines;
    lines.SetDatabase(&m_database);
    lines.SQL.add(DBLocal_SQL(u"SELECT "_s + columns + uR"( FROM {COMP_MATERIAL} COMP
        INNER JOIN {MATERIAL} MATERIAL ON (COMP.CODIGO = MATERIAL.CODIGO)
        WHERE )"_s
        + activeLines(fabric) + ending));
    QVector<Share> result;
    for (lines.Open(); !lines.Eof(); lines.Next())
        result.append({lines.AsString(u"CODIGO"_s), lines.AsString(u"DESCRICAO"_s), lines.AsFloat(u"PERC"_s)});
    return result;
}

QVector<Share> YarnLots::sharesOf(const QString &fabric)
{
    return composition(u"COMP.CODIGO, MATERIAL.DESCRICAO, SUM(COMP.PERC) AS PERC"_s, fabric,
        u" GROUP BY COMP.CODIGO, MATERIAL.DESCRICAO ORDER BY COMP.CODIGO"_s);
}

QVector<Share> YarnLots::linesOf(const QString &fabric)
{
    return composition(
        u"DISTINCT COMP.CODIGO, MATERIAL.DESCRICAO, COMP.PERC"_s, fabric, u" ORDER BY COMP.CODIGO, COMP.PERC"_s);
}

QVector<Lot> YarnLots::lotsOf(const YarnOrder &order, Mode mode)
{
    TTIQuery rows;
    rows.SetDatabase(&m_database);
    rows.SQL.add(DBLocal_SQL(lotsStatement(order)));
    QVector<Lot> result;
    int turn = 0;
    for (rows.Open(); !rows.Eof(); rows.Next()) {
        Lot lot = lotIn(rows, order.kg, mode);
        if (!isOffered(lot))
            continue;
        lot.turn = lot.ticked ? ++turn : 0;
        result.append(lot);
    }
    return result;
}

void YarnLots::lock(const YarnOrder &order, const QVector<Lot> &grid)
{
    for (const Lot &lot : grid) {
        if (!lot.ticked)
            continue;
        m_database.run(u"UPDATE "_s + DBLocal(u"NFT_ITEN"_s) + u" SET LOTE = LOTE WHERE DOCTO = "_s
            + Aspas(lot.document) + u" AND CODCLI = "_s + Aspas(order.client) + u" AND CODIGO = "_s + Aspas(lot.yarn)
            + u" AND LOTE = "_s + Aspas(lot.lot));
    }
}

void YarnLots::replace(const QString &order, const QVector<Lot> &grid)
{
    const QString table = DBLocal(u"BAIXA_FIO"_s);
    m_database.run(u"DELETE FROM "_s + table + u" WHERE NUMERO = "_s + Aspas(order));
    for (const Lot &lot : grid) {
        if (!lot.ticked)
            continue;
        m_database.run(u"INSERT INTO "_s + table + u" (NUMERO,DOCTO,CODIGO,LOTE,QTDE) VALUES ("_s + Aspas(order) + u','
            + Aspas(lot.document) + u',' + Aspas(lot.yarn) + u',' + Aspas(lot.lot) + u',' + PermanecePonto(lot.reserved)
            + u')');
    }
}
