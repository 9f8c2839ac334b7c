// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/tabelas.h"

#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/table.h"

using namespace Qt::StringLiterals;

TTabela *Tabela = nullptr;

namespace {

struct Component
{
    QString table;
    QString key;
};

/// Component names of the data module, in lower case.
const QHash<QString, Component> &components()
{
    static const QHash<QString, Component> known{
        {u"tbmateriais"_s, {u"MATERIAL"_s, u"CODIGO"_s}},
        {u"tbentidade"_s, {u"ENTIDADE"_s, u"CODCLI"_s}},
        {u"tbnfterceiros"_s, {u"NFTERCEIROS"_s, u"DOCTO;CODCLI"_s}},
        {u"tbmaquina"_s, {u"MAQUINA"_s, u"MAQUINA"_s}},
        {u"tbregiao"_s, {u"REGIAO"_s, u"REGIAO"_s}},
        {u"tbtabpreco"_s, {u"TABPRECO"_s, u"REGIAO;CODIGO;GRUPO_COR"_s}},
        {u"tbgrupo"_s, {u"GRUPO_MA"_s, u"CODIGO"_s}},
        {u"tbcolecao"_s, {u"COLECAO"_s, u"CODIGO"_s}},
        {u"tbtabqul"_s, {u"TABQUL"_s, u"CODIGO"_s}},
        {u"tbproduto"_s, {u"PRODUTO"_s, u"CODIGO"_s}},
        {u"tbcompmaterial"_s, {u"COMP_MATERIAL"_s, u"MATERIAL;COR;CODIGO;COR_I"_s}},
        {u"tbtabprazos"_s, {u"TABPRAZOS"_s, u"CODIGO"_s}},
    };
    return known;
}

} // namespace

TTabela::TTabela(QObject *parent)
    : QObject(parent)
    , IBDatabase(new TTIDatabase(this))
{
    Tabela = this;
}

TTabela::~TTabela()
{
    if (Tabela == this)
        Tabela = nullptr;
}

TTITable *TTabela::AbreTabela(const QString &Nome, bool Flag)
{
    const QString name = Nome.toLower();
    const auto component = components().constFind(name);
    if (component == components().constEnd())
        throw EProgramming(u"Tabela desconhecida: %1."_s.arg(Nome));
    if (TTITable *open = tabela(name)) {
        if (Flag)
            open->Refresh();
        ++m_shared[name].users;
        return open;
    }
    auto table = std::make_unique<TTITable>();
    table->SetDatabase(IBDatabase);
    table->setTableName(Funcoes::DBLocal(component->table));
    table->setIndexFieldNames(component->key);
    table->Open();
    table->setParent(this);
    m_shared.insert(name, {table.get(), 1});
    return table.release();
}

void TTabela::FechaTabela(const QString &Nome)
{
    const auto shared = m_shared.find(Nome.toLower());
    if (shared == m_shared.end() || --shared->users > 0)
        return;
    delete shared->table;
    m_shared.erase(shared);
}

TTITable *TTabela::tabela(const QString &Nome) const
{
    return m_shared.value(Nome.toLower()).table;
}
