// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_relordemfab.h"

#include "reports/relordemfab.h"

#include "module/host_services/clientdataset.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "module/labellist.h"
#include "module/look.h"
#include "module/package.h"
#include "module/reportfilters.h"

using namespace Funcoes;
using namespace Qt::StringLiterals;
using namespace ReportFilters;

QPointer<TfmRelOrdFab> fmRelOrdFab;

Unit &Relordemfab::unit()
{
    static Unit unit = Unit::of<TfmRelOrdFab>(u"Relatorio de OFs"_s);
    return unit;
}

namespace {

/// The roll sheet; what is measured on a roll is written in by hand.
QVector<TField> sheetFields()
{
    const std::pair<QString, int> texts[]{{u"Numero"_s, 8}, {u"NR"_s, 4}, {u"F_Tecido"_s, 10}, {u"Furo_Fio"_s, 15},
        {u"Corte"_s, 15}, {u"F_Corr"_s, 15}, {u"Pe_Gal"_s, 15}, {u"Total_Def"_s, 15}, {u"Peso"_s, 30}, {u"Data"_s, 30},
        {u"Observacao"_s, 30}};
    QVector<TField> fields;
    for (const auto &[name, size] : texts)
        fields.append(TField(name, TField::Type::Text, size));
    return fields;
}

} // namespace

TfmRelOrdFab::TfmRelOrdFab()
    : m_ui(std::make_unique<Ui::fmRelOrdFab>())
    , qryCabecalho(new TTIQuery(this))
    , qryMateriais(new TTIQuery(this))
    , qryFios(new TTIQuery(this))
    , tbItens(new TClientDataSet(this))
{
    fmRelOrdFab = this;
}

TfmRelOrdFab::~TfmRelOrdFab() = default;

void TfmRelOrdFab::FormCreate()
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    qryCabecalho->Describe({kilograms(u"KG_ROLO"_s), kilograms(u"KG_TOTAL"_s)});
    qryFios->Describe({kilograms(u"QTDE"_s)});
    tbItens->setObjectName(u"tbItens"_s);
    tbItens->CreateDataSet(sheetFields());
    m_ui->gdOrdens->setDataSet(qryCabecalho);
    m_ui->gdComposicao->setDataSet(qryMateriais);
    m_ui->gdFios->setDataSet(qryFios);
}

void TfmRelOrdFab::edtCliCodExit()
{
    checkCode(m_ui->PqCliente, u"Cliente inválido."_s);
}

QString TfmRelOrdFab::conditions() const
{
    const QDate from = m_ui->edtDataIni->date();
    const QDate to = m_ui->edtDataFim->date();
    const bool period = from.isValid() || to.isValid();
    return u" WHERE 1=1"_s + (period ? u" AND "_s + within(u"OF_MALHA.DATA"_s, from, to) : QString())
        + equals(u"OF_MALHA.NUM_OF"_s, m_ui->edtNumero->text())
        + equals(u"OF_MALHA.CLIENTE"_s, m_ui->edtCliCod->text());
}

void TfmRelOrdFab::Gera_SQL_Cabecalho()
{
    const QString select = uR"(
        SELECT OF_MALHA.CLIENTE, CLIENTE.NOME, OF_MALHA.DATA, OF_MALHA.KG_ROLO, OF_MALHA.KG_TOTAL,
               OF_MALHA.MATERIAL AS MATCOMPCOD, OF_MALHA.NUM_OF, MATERIALCOMP.DESCRICAO AS MATCOMPDESC,
               MATERIALCOMP.DESCRICAO2 AS MATDESC2, OF_MALHA.MAQUINA, MAQUINA.DESCRICAO AS MAQUINA_DESC,
               MAQUINA.NOME AS MAQUINA_NOME, OF_MALHA.OBSERVACAO
        FROM {OF_MALHA} OF_MALHA
        LEFT JOIN {MATERIAL} MATERIALCOMP ON (OF_MALHA.MATERIAL = MATERIALCOMP.CODIGO)
        LEFT JOIN {ENTIDADE} CLIENTE ON (OF_MALHA.CLIENTE = CLIENTE.CODCLI)
        LEFT JOIN {MAQUINA} MAQUINA ON (OF_MALHA.MAQUINA = MAQUINA.MAQUINA))"_s;
    openQuery(qryCabecalho, DBLocal_SQL(select, conditions() + u" ORDER BY OF_MALHA.NUM_OF"_s));
}

void TfmRelOrdFab::Gera_SQL_Materiais()
{
    const QString select = uR"(
        SELECT OF_MALHA.NUM_OF, COMP.CODIGO, COMP.LFA, COMP.ROCA, MATERIAL.NE, MATERIAL.DESCRICAO, MATERIAL.DESCRICAO2
        FROM {OF_MALHA} OF_MALHA
        LEFT JOIN {COMP_MATERIAL} COMP ON (OF_MALHA.MATERIAL = COMP.MATERIAL)
        LEFT JOIN {MATERIAL} MATERIAL ON (COMP.CODIGO = MATERIAL.CODIGO))"_s;
    openQuery(qryMateriais,
        DBLocal_SQL(select, conditions() + u" ORDER BY OF_MALHA.NUM_OF, COMP.CODIGO, COMP.LFA, COMP.ROCA"_s));
}

void TfmRelOrdFab::Gera_Extrura_Itens()
{
    tbItens->EmptyDataSet();
    qryCabecalho->FetchAll();
    const int number = qryCabecalho->fieldIndex(u"NUM_OF"_s);
    const int total = qryCabecalho->fieldIndex(u"KG_TOTAL"_s);
    const int roll = qryCabecalho->fieldIndex(u"KG_ROLO"_s);
    for (int row = 0; row < qryCabecalho->rowCount(); ++row) {
        Gera_Itens(qryCabecalho->cell(row, number).toString(), qryCabecalho->cell(row, total).toDouble(),
            qryCabecalho->cell(row, roll).toDouble());
    }
    tbItens->First();
}

void TfmRelOrdFab::Gera_Itens(const QString &order, double totalKg, double rollKg)
{
    for (const LabelList::Label &line : LabelList::of(order, totalKg, rollKg)) {
        tbItens->Append();
        tbItens->setValue(u"Numero"_s, line.of);
        tbItens->setValue(u"NR"_s, line.number);
        tbItens->Post();
    }
}

void TfmRelOrdFab::BuscaFiosSelecionados()
{
    const QString select = uR"(
        SELECT BAIXA_FIO.DOCTO, BAIXA_FIO.CODIGO, MATERIAL.DESCRICAO, MATERIAL.UNIDADE, BAIXA_FIO.LOTE, BAIXA_FIO.QTDE
        FROM {BAIXA_FIO} BAIXA_FIO
        LEFT JOIN {MATERIAL} MATERIAL ON (BAIXA_FIO.CODIGO = MATERIAL.CODIGO)
        WHERE BAIXA_FIO.NUMERO = )"_s;
    m_number = m_ui->edtNumero->text().trimmed();
    openQuery(qryFios,
        DBLocal_SQL(select, Aspas(m_number) + u" ORDER BY BAIXA_FIO.CODIGO, BAIXA_FIO.DOCTO, BAIXA_FIO.LOTE"_s));
}

void TfmRelOrdFab::BuscaDados()
{
    Gera_SQL_Cabecalho();
    Gera_SQL_Materiais();
    Gera_Extrura_Itens();
    BuscaFiosSelecionados();
}

const TDataSet &TfmRelOrdFab::result() const
{
    return *qryCabecalho;
}

QString TfmRelOrdFab::filters() const
{
    return Text()
        .add(u"Período"_s, periodText(m_ui->edtDataIni->date(), m_ui->edtDataFim->date()))
        .add(u"Número"_s, m_ui->edtNumero->text())
        .add(u"Cliente"_s, chosen(m_ui->PqCliente))
        .text();
}

ReportCall TfmRelOrdFab::report() const
{
    const bool matrix = m_ui->rbMatricial->isChecked();
    ReportCall call;
    call.name = matrix ? u"TMalOF"_s : u"WMalOF"_s;
    call.kind = matrix ? ReportCall::Kind::Text : ReportCall::Kind::Graphic;
    call.dataSets = {{u"qryCabecalho"_s, qryCabecalho}, {u"qryMateriais"_s, qryMateriais}, {u"qryFios"_s, qryFios},
        {u"tbItens"_s, tbItens}};
    call.parameters = {{u"NUMERO"_s, m_number}};
    return call;
}
