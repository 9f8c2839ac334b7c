// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "production/itemstock.h"

#include "module/host_services/classessis.h"
#include "module/host_services/database.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "production/clientyarn.h"
#include "production/rollregister.h"

using namespace Funcoes;
using namespace Qt::StringLiterals;

namespace {

// The stock of produced fabric knows no lots and one store.
const QString noLot = u"000000"_s;
const QString onlyStore = u"0000"_s;
/// Where a fabric without a colour, or without a place, stands.
const QString unnamed = u"000000"_s;
/// The yarn is the client's: the fabric costs the mill nothing.
const QString noCost = u"0"_s;

} // namespace

/// The stock item of an order's fabric.
struct ItemStock::Item
{
    QString client;
    QString fabric;
    QString colour;
    QString place;
    double price = 0; ///< per kilogram
};

ItemStock::ItemStock(TTIDatabase &database)
    : m_database(database)
{
}

void ItemStock::GravaEstoque(const Roll &roll)
{
    if (BuscaParametro(u"MAL"_s, 20) != u"S"_s)
        return;
    const Item item = itemOf(roll);
    add(item, roll.kg);
    journal(item, roll);
}

ItemStock::Item ItemStock::itemOf(const Roll &roll)
{
    Item item;
    item.client = Busca_Valor(u"OF_MALHA"_s, u"NUM_OF"_s, u"CLIENTE"_s, Aspas(roll.of));
    item.fabric = Busca_Valor(u"OF_MALHA"_s, u"NUM_OF"_s, u"MATERIAL"_s, Aspas(roll.of));
    item.price = ClientYarn(m_database, item.client).valueOf(item.fabric);
    TTIQuery active;
    active.SetDatabase(&m_database);
    active.SQL.add(DBLocal_SQL(uR"(
        SELECT MAT_ITEN.COR, MAX(MAT_ITEN.LOCAL) AS LOCAL FROM {MAT_ITEN} MAT_ITEN
        INNER JOIN {COMP_MATERIAL} COMP ON (COMP.MATERIAL = MAT_ITEN.CODIGO AND COMP.COR = MAT_ITEN.COR)
        WHERE (MAT_ITEN.ATIVO = 'S' OR MAT_ITEN.ATIVO IS NULL) AND MAT_ITEN.CODIGO = )"_s,
        Aspas(item.fabric) + u" GROUP BY MAT_ITEN.COR ORDER BY MAT_ITEN.COR DESC FETCH FIRST 1 ROWS ONLY"_s));
    active.Open();
    const auto known = [&](const QString &column) {
        const QString value = active.AsString(column).trimmed();
        return value.isEmpty() ? unnamed : value;
    };
    item.colour = known(u"COR"_s);
    item.place = known(u"LOCAL"_s);
    return item;
}

void ItemStock::add(const Item &item, double kg)
{
    const QString table = DBLocal(u"MAT_ITEN"_s);
    const QStringList key{Aspas(item.fabric), Aspas(item.colour), Aspas(noLot), Aspas(onlyStore)};
    if (Existe(u"MAT_ITEN"_s, u"CODIGO,COR,LOTE,DEPOSITO"_s, key.join(u','))) {
        m_database.run(u"UPDATE %1 SET QTDE = COALESCE(QTDE, 0) + "_s.arg(table) + PermanecePonto(kg)
            + u" WHERE CODIGO = "_s + key[0] + u" AND COR = "_s + key[1] + u" AND LOTE = "_s + key[2]
            + u" AND DEPOSITO = "_s + key[3]);
        return;
    }
    m_database.run(u"INSERT INTO %1 (QTDE, CODIGO, COR, LOTE, LOCAL, PRECO_MED, DEPOSITO) VALUES ("_s.arg(table)
        + QStringList{PermanecePonto(kg), key[0], key[1], key[2], Aspas(item.place), PermanecePonto(item.price), key[3]}
              .join(u", "_s)
        + u')');
}

void ItemStock::journal(const Item &item, const Roll &roll)
{
    const QStringList values{Aspas(item.client), Aspas(item.fabric), Aspas(item.colour), Aspas(roll.of),
        Aspas(Classessis::TEstoque::CodigoTipoMovEstoque(tmProducao)), PermanecePonto(roll.kg), Aspas(u"E"_s), noCost,
        PermanecePonto(item.price), Aspas(noLot), Aspas(u"PRODUCAO DA OF %1 ROLO %2"_s.arg(roll.of, roll.number)),
        Aspas(Format::sqlDate(roll.day)), Aspas(onlyStore), Aspas(vUsuario())};
    m_database.run(u"INSERT INTO "_s + DBLocal(u"MAT_MOV"_s)
        + u" (CODCRE, CODIGO, COR, NUM_DOCTO, OPERACAO, QTDE, TIPO, CUSTO, PRECO, LOTE, DESCRICAO, DT_MOVTO, DEPOSITO,"
          u" USUARIO) VALUES ("_s
        + values.join(u", "_s) + u')');
}
