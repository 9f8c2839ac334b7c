// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/schema/tables.h"

using namespace Qt::StringLiterals;

namespace Schema {

using enum ColumnKind;

namespace {

QVector<Column> priceColumns()
{
    // The defaults that a saved price row receives go to these: collection, three surcharges, origin and date.
    QVector<Column> columns{{u"REGIAO"_s, Code, 3}, {u"CODIGO"_s, Code, 15}, {u"GRUPO_COR"_s, Code, 6},
        {u"DESC_PRODUTO"_s, Name, 30}, {u"COLECAO"_s, Code, 6}, {u"DT_ALTERACAO"_s, Timestamp},
        {u"ACRESCIMO"_s, Code, 6}, {u"DESCONTO"_s, Code, 6}, {u"COMISSAO"_s, Code, 6}, {u"ORIGEM"_s, Code, 1}};
    for (int days = 0; days <= 91; days += 7)
        columns.append({u"PRECO_%1"_s.arg(days, 2, 10, QChar(u'0')), Real});
    columns.append({u"PRECO_MEDIO"_s, Real});
    return columns;
}

/// A registry of codes with their descriptions.
Table registry(const QString &name, int codeLength, int textLength, const QVector<Column> &more = {})
{
    return {name, QVector<Column>{{u"CODIGO"_s, Code, codeLength}, {u"DESCRICAO"_s, Name, textLength}} + more,
        {u"CODIGO"_s}};
}

QVector<Table> materialTables()
{
    return {
        {u"MATERIAL"_s,
            {{u"CODIGO"_s, Code, 15}, {u"DESCRICAO"_s, Name, 100}, {u"DESCRICAO2"_s, Name, 100}, {u"GRUPO"_s, Code, 6},
                {u"CODCLI"_s, Code, 5}, {u"LARGURA"_s, Real}, {u"GRAMATURA"_s, Real}, {u"MAXIMO"_s, Real},
                {u"CONCENTRACAO"_s, Real}, {u"NE"_s, Code, 10}, {u"UNIDADE"_s, Code, 3}, {u"OBSERVACAO"_s, Name, 2000},
                {u"ATIVO"_s, Code, 1}},
            {u"CODIGO"_s},
            {{{u"CODIGO"_s}, true}, {{u"DESCRICAO"_s, u"CODIGO"_s}}, {{u"DESCRICAO"_s, u"CODIGO"_s}, true},
                {{u"GRUPO"_s, u"CODIGO"_s}}, {{u"CODCLI"_s}}}},
        {u"MAT_OBS"_s, {{u"CODIGO"_s, Code, 15}, {u"OBSERVACAO"_s, Name, 4000}}, {u"CODIGO"_s}},
        {u"COMP_MATERIAL"_s,
            {{u"MATERIAL"_s, Code, 15}, {u"COR"_s, Code, 6}, {u"CODIGO"_s, Code, 15}, {u"COR_I"_s, Code, 6},
                {u"ORDEM"_s, Integer}, {u"PERC"_s, Real}, {u"ROCA"_s, Integer}, {u"ALIMENTADORES"_s, Integer},
                {u"LFA"_s, Integer}, {u"COMP_PONTO"_s, Real}, {u"DIAMETRO"_s, Real}, {u"FINURA"_s, Real},
                {u"LARGURA"_s, Real}, {u"GRAMATURA"_s, Real}, {u"KG_ROLO"_s, Kilograms}},
            {}, {{{u"MATERIAL"_s, u"COR"_s, u"ORDEM"_s}}, {{u"CODIGO"_s}}}},
        {u"MAT_ITEN"_s,
            {{u"CODIGO"_s, Code, 15}, {u"COR"_s, Code, 6}, {u"LOTE"_s, Code, 15}, {u"DEPOSITO"_s, Code, 4},
                {u"LOCAL"_s, Code, 6}, {u"QTDE"_s, Kilograms}, {u"PRECO_MED"_s, Real}, {u"ATIVO"_s, Code, 1}},
            {u"CODIGO"_s, u"COR"_s, u"LOTE"_s, u"DEPOSITO"_s}},
        {u"MAT_MOV"_s,
            {{u"CODCRE"_s, Code, 5}, {u"CODIGO"_s, Code, 15}, {u"COR"_s, Code, 6}, {u"NUM_DOCTO"_s, Code, 12},
                {u"OPERACAO"_s, Code, 2}, {u"QTDE"_s, Kilograms}, {u"TIPO"_s, Code, 1}, {u"CUSTO"_s, Real},
                {u"PRECO"_s, Real}, {u"LOTE"_s, Code, 15}, {u"DESCRICAO"_s, Name, 100}, {u"DT_MOVTO"_s, Date},
                {u"DEPOSITO"_s, Code, 4}, {u"USUARIO"_s, Code, 30}},
            {}, {{{u"CODIGO"_s, u"DT_MOVTO"_s}}, {{u"NUM_DOCTO"_s}}}},
        {u"TABPRECO"_s, priceColumns(), {}, {{{u"REGIAO"_s, u"CODIGO"_s, u"GRUPO_COR"_s}}, {{u"CODIGO"_s}}}},
        {u"INVENTARIO"_s,
            {{u"DATA"_s, Date}, {u"EMPRESA"_s, Integer}, {u"CODIGO"_s, Code, 15}, {u"COR"_s, Code, 6},
                {u"TAM"_s, Code, 6}, {u"POSSE"_s, Code, 1}, {u"UNITARIO"_s, Real}, {u"QTDE"_s, Kilograms},
                {u"CODCLI"_s, Code, 5}, {u"UN"_s, Code, 3}, {u"DESCRICAO"_s, Name, 100}, {u"DEPOSITO"_s, Code, 4},
                {u"LOTE"_s, Code, 15}},
            {}, {{{u"DATA"_s, u"EMPRESA"_s}}}},
    };
}

QVector<Table> peopleAndPlacesTables()
{
    return {
        {u"ENTIDADE"_s, {{u"CODCLI"_s, Code, 5}, {u"NOME"_s, Name, 80}, {u"GRUPO"_s, Code, 6}}, {u"CODCLI"_s},
            {{{u"CODCLI"_s}, true}, {{u"NOME"_s, u"CODCLI"_s}}, {{u"NOME"_s, u"CODCLI"_s}, true}}},
        {u"MAQUINA"_s, {{u"MAQUINA"_s, Code, 3}, {u"DESCRICAO"_s, Name, 60}, {u"NOME"_s, Name, 60}}, {u"MAQUINA"_s}},
        {u"PESSOAL"_s, {{u"CODIGO"_s, Code, 6}, {u"NOME"_s, Name, 60}, {u"TURNO"_s, Code, 2}, {u"ATIVO"_s, Code, 1}},
            {u"CODIGO"_s}},
        {u"TURNO"_s, {{u"TURNO"_s, Code, 2}, {u"DESCRICAO"_s, Name, 40}, {u"NOTURNO"_s, Code, 1}}, {u"TURNO"_s}},
        // The shade is what pictures of a fabric are drawn in: "#1b2a49".
        {u"CADCOR"_s, {{u"COR"_s, Code, 6}, {u"DESCRICAO"_s, Name, 80}, {u"TONALIDADE"_s, Code, 7}}, {u"COR"_s}},
        {u"REGIAO"_s, {{u"REGIAO"_s, Code, 3}, {u"DESCRICAO"_s, Name, 60}}, {u"REGIAO"_s}},
        registry(u"FLUXOTIN"_s, 6, 60),
        registry(u"TABQUL"_s, 3, 40),
        registry(u"DEFEITO"_s, 3, 30),
        registry(u"TIPO_APL"_s, 6, 40),
        registry(u"GRUPO_MA"_s, 6, 40),
        registry(u"GRUPO_CLI"_s, 6, 40),
        registry(u"PRODUTO"_s, 15, 100),
        registry(u"COLECAO"_s, 6, 40),
        registry(u"TABPRAZOS"_s, 3, 40),
    };
}

QVector<Table> outboundInvoiceTables()
{
    return {
        {u"NOTA"_s,
            {{u"FATURA"_s, Code, 7}, {u"CODCLI"_s, Code, 5}, {u"DT_EMISSAO"_s, Date}, {u"IMPRESSO"_s, Code, 1},
                {u"NOTA_DEV"_s, Code, 7}},
            {u"FATURA"_s}, {{{u"DT_EMISSAO"_s}}, {{u"NOTA_DEV"_s}}}},
        {u"NOTAITEN"_s,
            {{u"FATURA"_s, Code, 7}, {u"ORDEM"_s, Integer}, {u"CODIGO"_s, Code, 15}, {u"LOTE"_s, Code, 15},
                {u"NOTA_CLIENTE"_s, Code, 7}, {u"QTDE"_s, Kilograms}, {u"PRECO"_s, Real}, {u"VALOR"_s, Money},
                {u"TIPO"_s, Code, 1}, {u"DATA_MVTO"_s, Date}},
            {u"FATURA"_s, u"ORDEM"_s}, {{{u"NOTA_CLIENTE"_s, u"CODIGO"_s, u"LOTE"_s}}, {{u"CODIGO"_s}}}},
    };
}

} // namespace

QVector<Table> businessTables()
{
    return materialTables() + peopleAndPlacesTables() + outboundInvoiceTables();
}

} // namespace Schema
