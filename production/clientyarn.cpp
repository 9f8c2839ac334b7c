// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "production/clientyarn.h"

#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "production/yarnlots.h"

using namespace Funcoes;
using namespace Qt::StringLiterals;
using namespace YarnStock;

ClientYarn::ClientYarn(TTIDatabase &database, const QString &client)
    : m_database(database)
    , m_client(client)
{
}

std::optional<Shortage> ClientYarn::shortageFor(const QString &fabric, double kg)
{
    const Knitted roll{kg, YarnLots(m_database).linesOf(fabric)};
    if (m_client.isEmpty() || roll.shares.isEmpty())
        return {};
    // Outbound invoices count unless they were cancelled, those that nobody printed yet too.
    const QHash<QString, double> received = byYarn(DBLocal_SQL(uR"(SUM(NFT_ITEN.ESTOQUE_FISICO - UDF_NVL((
                   SELECT SUM(NOTAITEN.QTDE) FROM {NOTAITEN} NOTAITEN
                   INNER JOIN {NOTA} NOTA ON (NOTA.FATURA = NOTAITEN.FATURA)
                   WHERE NOTAITEN.NOTA_CLIENTE = NFT_ITEN.DOCTO AND NOTAITEN.CODIGO = NFT_ITEN.CODIGO
                     AND NOTAITEN.LOTE = NFT_ITEN.LOTE AND (NOTA.IMPRESSO <> 'C' OR NOTA.IMPRESSO IS NULL)))))"_s),
        roll.shares, u" AND NFT_ITEN.ESTOQUE_FISICO > UDF_NVL(NFT_ITEN.QTDE_DEVOL)"_s);
    return YarnStock::shortageFor(roll, received, notInvoiced());
}

double ClientYarn::valueOf(const QString &fabric)
{
    const QVector<Share> shares = YarnLots(m_database).linesOf(fabric);
    return YarnStock::valueOf(shares, byYarn(u"AVG(NFT_ITEN.UNITARIO)"_s, shares, {}));
}

/// A figure of the client's lots for each of these yarns that has any.
QHash<QString, double> ClientYarn::byYarn(const QString &value, const QVector<Share> &shares, const QString &more)
{
    if (shares.isEmpty())
        return {};
    QStringList yarns;
    for (const Share &share : shares)
        yarns.append(Aspas(share.yarn));
    TTIQuery lots;
    lots.SetDatabase(&m_database);
    lots.SQL.add(u"SELECT NFT_ITEN.CODIGO, "_s + value + u" AS VALOR"_s
        + DBLocal_SQL(uR"(
        FROM {NFTERCEIROS} NFTERCEIROS
        INNER JOIN {NFT_ITEN} NFT_ITEN
                ON (NFTERCEIROS.DOCTO = NFT_ITEN.DOCTO AND NFTERCEIROS.CODCLI = NFT_ITEN.CODCLI)
        WHERE NFT_ITEN.CODCLI = )"_s,
            Aspas(m_client))
        + u" AND NFT_ITEN.CODIGO IN ("_s + yarns.join(u", "_s) + u')' + more + u" GROUP BY NFT_ITEN.CODIGO"_s);
    QHash<QString, double> result;
    for (lots.Open(); !lots.Eof(); lots.Next())
        result.insert(lots.AsString(u"CODIGO"_s), lots.AsFloat(u"VALOR"_s));
    return result;
}

QVector<Knitted> ClientYarn::notInvoiced()
{
    TTIQuery fabrics;
    fabrics.SetDatabase(&m_database);
    fabrics.SQL.add(DBLocal_SQL(uR"(
        SELECT PA_MALHA.CODIGO, SUM(PA_MALHA.QTDE_TOTAL - UDF_NVL(PA_MALHA.FATURADO)) AS QTDE
        FROM {OF_MALHA} OF_MALHA
        INNER JOIN {PA_MALHA} PA_MALHA ON (PA_MALHA.NUM_OF = OF_MALHA.NUM_OF)
        INNER JOIN {MATERIAL} MATERIAL ON (MATERIAL.CODIGO = PA_MALHA.CODIGO)
        WHERE MATERIAL.GRUPO LIKE '15%' AND OF_MALHA.CLIENTE = )"_s,
        Aspas(m_client) + u" GROUP BY PA_MALHA.CODIGO ORDER BY PA_MALHA.CODIGO"_s));
    QVector<Knitted> result;
    for (fabrics.Open(); !fabrics.Eof(); fabrics.Next()) {
        if (const double kg = fabrics.AsFloat(u"QTDE"_s); kg != 0)
            result.append({kg, YarnLots(m_database).linesOf(fabrics.AsString(u"CODIGO"_s))});
    }
    return result;
}
