// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/schema/tables.h"

using namespace Qt::StringLiterals;

namespace Schema {

using enum ColumnKind;

namespace {

QVector<Table> productionTables()
{
    return {
        {u"OF_MALHA"_s,
            {{u"NUM_OF"_s, Code, 6}, {u"DATA"_s, Date}, {u"CLIENTE"_s, Code, 5}, {u"MATERIAL"_s, Code, 15},
                {u"MAQUINA"_s, Code, 3}, {u"LOTE"_s, Code, 15}, {u"KG_ROLO"_s, Kilograms}, {u"KG_TOTAL"_s, Kilograms},
                {u"FLUXO"_s, Code, 6}, {u"OBSERVACAO"_s, Name, 4000}},
            {u"NUM_OF"_s},
            {{{u"NUM_OF"_s}, true}, {{u"MATERIAL"_s, u"NUM_OF"_s}, true}, {{u"CLIENTE"_s}}, {{u"DATA"_s}}}},
        {u"OF_MALHA_BAIXAS"_s,
            {{u"NUM_BAIXA"_s, Number, 10}, {u"NUM_OF"_s, Code, 6}, {u"DATA"_s, Date}, {u"HORA"_s, Time},
                {u"TURNO"_s, Code, 2}, {u"FUNCIONARIO"_s, Code, 6}, {u"QTDE"_s, Kilograms}},
            {u"NUM_OF"_s, u"NUM_BAIXA"_s}, {{{u"NUM_OF"_s, u"NUM_BAIXA"_s}, true}, {{u"DATA"_s}}}},
        {u"PA_MALHA"_s,
            {{u"CODIGO"_s, Code, 15}, {u"NUM_OF"_s, Code, 6}, {u"QTDE_TOTAL"_s, Kilograms}, {u"FATURADO"_s, Kilograms}},
            {u"NUM_OF"_s, u"CODIGO"_s}, {{{u"CODIGO"_s}}}},
        {u"BAIXA_FIO"_s,
            {{u"NUMERO"_s, Code, 6}, {u"DOCTO"_s, Code, 7}, {u"CODIGO"_s, Code, 15}, {u"LOTE"_s, Code, 15},
                {u"QTDE"_s, Kilograms}},
            {u"NUMERO"_s, u"DOCTO"_s, u"CODIGO"_s, u"LOTE"_s}, {{{u"DOCTO"_s, u"CODIGO"_s, u"LOTE"_s}}}},
        {u"DEF_MOV"_s,
            {{u"NUMERO"_s, Code, 6}, {u"ROLO"_s, Integer}, {u"CODIGO"_s, Code, 3}, {u"QUANT"_s, Money},
                {u"REVISOR"_s, Code, 6}, {u"QUALIDADE"_s, Code, 3}},
            {u"NUMERO"_s, u"ROLO"_s, u"CODIGO"_s}},
        {u"RAPORT"_s,
            {{u"MATERIAL"_s, Code, 15}, {u"COR"_s, Code, 6}, {u"ORDEM"_s, Integer}, {u"CODIGO"_s, Code, 15},
                {u"COR_I"_s, Code, 6}, {u"MILIMETROS"_s, Integer}, {u"AGRUPADOR"_s, Code, 6}, {u"REPETICAO"_s, Integer},
                {u"DESPERDICIO"_s, Real}, {u"OBSERVACAO"_s, Name, 4000}},
            {u"MATERIAL"_s, u"COR"_s, u"ORDEM"_s}, {{{u"CODIGO"_s}}}},
        {u"CADRAPORT"_s, {{u"CODIGO"_s, Code, 15}, {u"ALIMENTADORES"_s, Integer}, {u"MILIMETROS"_s, Integer}}, {},
            {{{u"CODIGO"_s}}}},
    };
}

QVector<Table> clientGoodsTables()
{
    return {
        {u"NFTERCEIROS"_s, {{u"DOCTO"_s, Code, 7}, {u"CODCLI"_s, Code, 5}, {u"DATA"_s, Date}, {u"OBS"_s, Name, 4000}},
            {u"DOCTO"_s, u"CODCLI"_s}, {{{u"DOCTO"_s, u"CODCLI"_s}, true}, {{u"CODCLI"_s, u"DATA"_s}}, {{u"DATA"_s}}}},
        {u"NFT_ITEN"_s,
            {{u"CODCLI"_s, Code, 5}, {u"CODIGO"_s, Code, 15}, {u"DOCTO"_s, Code, 7}, {u"LOTE"_s, Code, 15},
                {u"MARCA"_s, Name, 30}, {u"VALOR"_s, Money}, {u"UNITARIO"_s, Real}, {u"ESTOQUE_ORIGINAL"_s, Kilograms},
                {u"ESTOQUE_FISICO"_s, Kilograms}, {u"QTDE_BAIXA"_s, Kilograms}, {u"QTDE_DEVOL"_s, Kilograms}},
            {u"DOCTO"_s, u"CODCLI"_s, u"CODIGO"_s, u"LOTE"_s}, {{{u"CODCLI"_s, u"CODIGO"_s}}, {{u"CODIGO"_s}}}},
        {u"PEDIDO3"_s,
            {{u"NUMERO"_s, Code, 5}, {u"CAIXA"_s, Code, 12}, {u"DATA"_s, Date}, {u"CODCLI"_s, Code, 5},
                {u"CODIGO"_s, Code, 15}, {u"QTDE"_s, Kilograms}, {u"NOTAFISCAL"_s, Code, 10}, {u"PESO"_s, Integer},
                {u"OBS"_s, Name, 4000}, {u"LOCAL"_s, Code, 6}},
            {}, {{{u"NUMERO"_s}}, {{u"NUMERO"_s}, true}}},
    };
}

} // namespace

QVector<Table> millTables()
{
    return productionTables() + clientGoodsTables();
}

} // namespace Schema
