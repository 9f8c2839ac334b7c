// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_relpend.h"

#include "reports/relpend.h"

#include "module/host_services/clientdataset.h"
#include "module/host_services/query.h"
#include "module/look.h"
#include "module/package.h"
#include "module/reportfilters.h"
#include "reports/paperrows.h"

using namespace Qt::StringLiterals;
using namespace ReportFilters;

QPointer<TfmRelPend> fmRelPend;

Unit &Relpend::unit()
{
    static Unit unit = Unit::of<TfmRelPend>(u"Relatório de OFs Pendentes"_s);
    return unit;
}

TfmRelPend::TfmRelPend()
    : m_ui(std::make_unique<Ui::fmRelPend>())
    , qryRelatorio(new TTIQuery(this))
    , tbImpressao(new TClientDataSet(this))
{
    fmRelPend = this;
}

TfmRelPend::~TfmRelPend() = default;

void TfmRelPend::FormCreate()
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    AbreTabelas({u"tbEntidade"_s, u"tbNFTerceiros"_s, u"tbMaquina"_s});
    qryRelatorio->Describe({kilograms(u"QTDE"_s), kilograms(u"KG_TOTAL"_s)});
    m_ui->DBGrid1->setDataSet(qryRelatorio);
    setLastMonth(m_ui->edtDataIni, m_ui->edtDataFim);
}

void TfmRelPend::edtCodClienteExit()
{
    checkCode(m_ui->PqCliente, u"Cliente inválido."_s);
}

void TfmRelPend::EdtMaqExit()
{
    checkCode(m_ui->PqMaquina, u"Máquina inválida."_s);
}

QString TfmRelPend::Gera_SQL() const
{
    QString statement = uR"(
        SELECT OF_MALHA.CLIENTE, CLIENTE.NOME, OF_MALHA.DATA, OF_MALHA.NUM_OF, OF_MALHA.MATERIAL, MATERIAL.DESCRICAO,
               MAQUINA.MAQUINA, MAQUINA.DESCRICAO AS DESC_MAQ, SUM(OF_BAIXA.QTDE) AS QTDE,
               COUNT(OF_BAIXA.NUM_BAIXA) AS ROLO, OF_MALHA.KG_TOTAL
        FROM {OF_MALHA} OF_MALHA
        LEFT OUTER JOIN {MATERIAL} MATERIAL ON (OF_MALHA.MATERIAL = MATERIAL.CODIGO)
        LEFT OUTER JOIN {ENTIDADE} CLIENTE ON (OF_MALHA.CLIENTE = CLIENTE.CODCLI)
        LEFT OUTER JOIN {OF_MALHA_BAIXAS} OF_BAIXA ON (OF_MALHA.NUM_OF = OF_BAIXA.NUM_OF)
        LEFT OUTER JOIN {MAQUINA} MAQUINA ON (OF_MALHA.MAQUINA = MAQUINA.MAQUINA)
        WHERE )"_s;
    statement += within(u"OF_MALHA.DATA"_s, m_ui->edtDataIni->date(), m_ui->edtDataFim->date())
        + equals(u"OF_MALHA.CLIENTE"_s, m_ui->edtCodCliente->text())
        + equals(u"OF_MALHA.NUM_OF"_s, m_ui->edtNumero->text()) + equals(u"OF_MALHA.MAQUINA"_s, m_ui->EdtMaq->text());
    statement += uR"(
        GROUP BY OF_MALHA.CLIENTE, CLIENTE.NOME, OF_MALHA.DATA, OF_MALHA.NUM_OF, OF_MALHA.MATERIAL,
                 MATERIAL.DESCRICAO, MAQUINA.MAQUINA, MAQUINA.DESCRICAO, OF_MALHA.KG_TOTAL)"_s;
    if (m_ui->rbPendente->isChecked())
        statement += u"\nHAVING (OF_MALHA.KG_TOTAL - SUM(OF_BAIXA.QTDE) > 0) OR SUM(OF_BAIXA.QTDE) IS NULL"_s;
    return statement;
}

void TfmRelPend::BuscaDados()
{
    // By machine and order; by position, so that it also holds over the companies together.
    openQuery(qryRelatorio,
        forCompanies(Gera_SQL(), u"OF_MALHA"_s, m_ui->ckTodasEmpresas->isChecked(), u"ORDER BY 7 NULLS FIRST, 4"_s));
}

const TDataSet &TfmRelPend::result() const
{
    return *qryRelatorio;
}

QString TfmRelPend::filters() const
{
    return Text()
        .add(u"Período"_s, periodText(m_ui->edtDataIni->date(), m_ui->edtDataFim->date()))
        .add(u"Cliente"_s, chosen(m_ui->PqCliente))
        .add(u"Máquina"_s, chosen(m_ui->PqMaquina))
        .add(u"Número"_s, m_ui->edtNumero->text())
        .add(u"Situação"_s, m_ui->rbPendente->isChecked() ? u"Pendente"_s : u"Todos"_s)
        .add(u"Empresas"_s, m_ui->ckTodasEmpresas->isChecked() ? u"todas"_s : QString())
        .text();
}

ReportCall TfmRelPend::report() const
{
    // Two companies may give one code to two machines: each has its own title and total.
    PaperRows::together(*qryRelatorio, {u"MAQUINA"_s, u"DESC_MAQ"_s}, *tbImpressao);
    ReportCall call;
    call.name = u"WMalPend"_s;
    call.dataSets = {{u"qryRelatorio"_s, tbImpressao}};
    return call;
}
