// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/schema/tables.h"

using namespace Qt::StringLiterals;

namespace Schema {

using enum ColumnKind;

namespace {

Table shared(
    const QString &name, const QVector<Column> &columns, const QStringList &key, const QVector<Index> &indexes = {})
{
    Table table{name, columns, key, indexes};
    table.perCompany = false;
    return table;
}

} // namespace

QVector<Table> systemTables()
{
    return {
        shared(u"QEN_EMPRESA"_s, {{u"NUMERO"_s, Integer}, {u"NOME"_s, Name, 60}, {u"ATIVO"_s, Code, 1}}, {u"NUMERO"_s}),
        shared(u"QEN_USUARIO"_s,
            {{u"USUARIO"_s, Code, 30}, {u"NOME"_s, Name, 60}, {u"SENHA"_s, Code, 128}, {u"ADMINISTRADOR"_s, Code, 1},
                {u"ATIVO"_s, Code, 1}},
            {u"USUARIO"_s}),
        shared(u"QEN_USUARIO_EMPRESA"_s, {{u"USUARIO"_s, Code, 30}, {u"EMPRESA"_s, Integer}},
            {u"USUARIO"_s, u"EMPRESA"_s}),
        shared(u"QEN_DIREITO"_s,
            {{u"USUARIO"_s, Code, 30}, {u"TELA"_s, Code, 40}, {u"LETRA"_s, Code, 1}, {u"NIVEL"_s, Code, 2}},
            {u"USUARIO"_s, u"TELA"_s, u"LETRA"_s, u"NIVEL"_s}),
        shared(u"QEN_PARAMETRO"_s,
            {{u"EMPRESA"_s, Integer}, {u"MODULO"_s, Code, 3}, {u"NUMERO"_s, Integer}, {u"VALOR"_s, Code, 60}},
            {u"EMPRESA"_s, u"MODULO"_s, u"NUMERO"_s}),
        shared(u"QEN_LOG"_s,
            {{u"MOMENTO"_s, Timestamp}, {u"EMPRESA"_s, Integer}, {u"USUARIO"_s, Code, 30}, {u"ROTULO"_s, Code, 30},
                {u"TEXTO"_s, Code, 250}, {u"OPERACAO"_s, Integer}, {u"CHAVE"_s, Code, 60}},
            {}, {{{u"MOMENTO"_s}, true}, {{u"CHAVE"_s}}}),
        shared(u"QEN_ESQUEMA"_s, {{u"VERSAO"_s, Integer}, {u"MOMENTO"_s, Timestamp}}, {u"VERSAO"_s}),
    };
}

QVector<Table> allTables()
{
    return systemTables() + businessTables() + millTables();
}

QVector<Step> upgradeSteps()
{
    // 2: the shades of the colours, which an older database does not know.
    return {{1, {}}, {2, {}}};
}

} // namespace Schema
