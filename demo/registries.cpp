// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/catalogue.h"
#include "demo/mill.h"
#include "demo/subjects.h"

#include <initializer_list>

using namespace Qt::StringLiterals;

namespace Demo {

namespace {

struct Entry
{
    QStringView code;
    QStringView description;
};

constexpr std::initializer_list<Entry> materialGroups{{u"10", u"Fios sintéticos"},
    {u"100", u"Fios de algodão e mistos"}, {u"15", u"Malhas sintéticas"}, {u"150", u"Malhas de algodão e mistas"},
    {u"200", u"Embalagens"}};
constexpr std::initializer_list<Entry> clientGroups{{u"01", u"Confecções"}, {u"02", u"Atacado de malhas"},
    {u"03", u"Uniformes"}, {u"04", u"Infantil"}, {u"05", u"Esporte e praia"}, {u"90", u"Fornecedores e transporte"}};
constexpr std::initializer_list<Entry> flows{{u"01", u"Entregar cru"}, {u"02", u"Alvejar em peça"},
    {u"03", u"Tingir claro em peça"}, {u"04", u"Tingir escuro em peça"}, {u"05", u"Purgar e estampar"},
    {u"06", u"Tingir e felpar"}, {u"07", u"Fio tinto: lavar e rapar"}, {u"08", u"Termofixar"}};
constexpr std::initializer_list<Entry> grades{
    {u"1", u"Primeira qualidade"}, {u"2", u"Segunda qualidade"}, {u"3", u"Terceira qualidade"}, {u"9", u"Refugo"}};
constexpr std::initializer_list<Entry> defects{{u"001", u"Furo"}, {u"002", u"Fio puxado"}, {u"003", u"Falha de agulha"},
    {u"004", u"Barramento"}, {u"005", u"Mancha de óleo"}, {u"006", u"Elastano cortado"}, {u"007", u"Fio grosso"},
    {u"008", u"Contaminação"}, {u"009", u"Malha caída"}, {u"010", u"Listra fora do raport"}, {u"011", u"Quebradura"},
    {u"012", u"Nó aparente"}};
constexpr std::initializer_list<Entry> applications{{u"FUNDO", u"Fundo"}, {u"LISTRA", u"Listra"},
    {u"LIGA", u"Fio de ligação"}, {u"FELPA", u"Fio de felpa"}, {u"DESENH", u"Desenho do jacquard"}};
constexpr std::initializer_list<Entry> collections{
    {u"00", u"Linha permanente"}, {u"01", u"Verão"}, {u"02", u"Alto verão"}, {u"03", u"Inverno"}};
constexpr std::initializer_list<Entry> regions{{u"001", u"Tabela geral"}, {u"002", u"Clientes de fora do estado"}};

void collect(
    Inserter &rows, const Mill &mill, const QString &table, const QString &key, std::initializer_list<Entry> entries)
{
    rows.into(table, key + u", DESCRICAO"_s, mill.company);
    for (const Entry &entry : entries)
        rows.row({entry.code, entry.description});
}

void collectTerms(const Mill &mill, Inserter &rows)
{
    rows.into(u"TABPRAZOS"_s, u"CODIGO, DESCRICAO"_s, mill.company);
    for (int days = 0; days <= 91; days += 7)
        rows.row({padded(days, 2), days == 0 ? u"À vista"_s : u"%1 dias"_s.arg(days)});
}

} // namespace

void collectRegistries(const Mill &mill, Inserter &rows)
{
    const QString code = u"CODIGO"_s;
    collect(rows, mill, u"GRUPO_MA"_s, code, materialGroups);
    collect(rows, mill, u"GRUPO_CLI"_s, code, clientGroups);
    collect(rows, mill, u"FLUXOTIN"_s, code, flows);
    collect(rows, mill, u"TABQUL"_s, code, grades);
    collect(rows, mill, u"DEFEITO"_s, code, defects);
    collect(rows, mill, u"TIPO_APL"_s, code, applications);
    collect(rows, mill, u"COLECAO"_s, code, collections);
    collect(rows, mill, u"REGIAO"_s, u"REGIAO"_s, regions);
    collectTerms(mill, rows);

    rows.into(u"CADCOR"_s, u"COR, DESCRICAO, TONALIDADE"_s, mill.company);
    rows.row({noColour, u"Sem cor", nullptr});
    rows.row({anyColour, u"Qualquer cor", nullptr});
    for (const ColourKind &colour : colourKinds())
        rows.row({colour.code, colour.description, colour.shade});
}

} // namespace Demo
