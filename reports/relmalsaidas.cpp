// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_relmalsaidas.h"

#include "reports/relmalsaidas.h"

#include "module/host_services/clientdataset.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/sqltext.h"
#include "module/look.h"
#include "module/package.h"
#include "module/reportfilters.h"
#include "reports/paperrows.h"

#include <QKeyEvent>

using namespace Funcoes;
using namespace Qt::StringLiterals;
using namespace ReportFilters;

QPointer<TfmRelMalSaidas> fmRelMalSaidas;

Unit &Relmalsaidas::unit()
{
    static Unit unit = Unit::of<TfmRelMalSaidas>(u"Relatório de saídas por cliente."_s);
    return unit;
}

TfmRelMalSaidas::TfmRelMalSaidas()
    : m_ui(std::make_unique<Ui::fmRelMalSaidas>())
    , tbRelatorio(new TClientDataSet(this))
    , tbImpressao(new TClientDataSet(this))
{
    fmRelMalSaidas = this;
}

TfmRelMalSaidas::~TfmRelMalSaidas() = default;

void TfmRelMalSaidas::FormCreate()
{
    using enum TField::Type;
    m_ui->setupUi(this);
    Look::addIcons(this);
    tbRelatorio->CreateDataSet({{u"NOME"_s, Text, 80}, {u"CODCLI"_s, Text, 5}, {u"DT_EMISSAO"_s, Date},
        {u"CODIGO"_s, Text, 15}, {u"DESCRICAO"_s, Text, 100}, {u"FATURA"_s, Text, 7}, {u"IMPRESSO"_s, Text, 1},
        {u"ORDEM"_s, Integer}, kilograms(u"QTDE"_s), TField(u"PRECO"_s, Float).shownAs(u",0.00##"_s),
        TField(u"VALOR"_s, Float).shownAs(u",0.00"_s)});
    m_ui->DBGrid1->setDataSet(tbRelatorio);
    setLastMonth(m_ui->dteEmiIni02, m_ui->dteEmiFim02);
}

void TfmRelMalSaidas::edtClienteCodExit()
{
    checkCode(m_ui->PqCliente, u"Cliente inválido."_s);
}

void TfmRelMalSaidas::edtMatCodExit()
{
    checkCode(m_ui->PqMaterial, u"Material inválido."_s);
}

void TfmRelMalSaidas::edtGrupoMatKeyDown(QKeyEvent *event)
{
    if (event->key() != Qt::Key_F4)
        return;
    event->accept();
    m_ui->PqGrupoMat->AbrePesquisa();
}

void TfmRelMalSaidas::PqGrupoMatFechaPesquisa()
{
    const QString group = m_ui->PqGrupoMat->RetornoPesquisa(u"CODIGO"_s);
    const QString list = m_ui->edtGrupoMat->text();
    if (group.isEmpty() || SqlText::split(list, u',').contains(Aspas(group)))
        return;
    m_ui->edtGrupoMat->setText(list.isEmpty() ? Aspas(group) : list + u',' + Aspas(group));
}

void TfmRelMalSaidas::spbGrupoClearClick()
{
    m_ui->edtGrupoMat->clear();
}

QString TfmRelMalSaidas::Gera_SQL() const
{
    QString statement = uR"(
        SELECT DISTINCT CLIENTE.NOME, NOTA.CODCLI, NOTA.DT_EMISSAO, NOTAITEN.CODIGO, MATERIAL.DESCRICAO, NOTA.FATURA,
               NOTA.IMPRESSO, NOTAITEN.ORDEM, NOTAITEN.QTDE, NOTAITEN.PRECO, NOTAITEN.VALOR
        FROM {NOTA} NOTA
        INNER JOIN {NOTAITEN} NOTAITEN ON (NOTA.FATURA = NOTAITEN.FATURA)
        INNER JOIN {MATERIAL} MATERIAL ON (NOTAITEN.CODIGO = MATERIAL.CODIGO)
        INNER JOIN {ENTIDADE} CLIENTE ON (MATERIAL.CODCLI = CLIENTE.CODCLI)
        WHERE ()"_s;
    statement += within(u"NOTA.DT_EMISSAO"_s, m_ui->dteEmiIni02->date(), m_ui->dteEmiFim02->date()) + u')'
        + equals(u"MATERIAL.CODCLI"_s, m_ui->edtClienteCod->text())
        + equals(u"NOTAITEN.CODIGO"_s, m_ui->edtMatCod->text());
    // The list is made of quoted codes that the search gave; nobody types in it.
    if (const QString groups = m_ui->edtGrupoMat->text(); !groups.isEmpty())
        statement += u" AND MATERIAL.GRUPO IN ("_s + groups + u')';
    return statement;
}

void TfmRelMalSaidas::BuscaDados()
{
    fill(tbRelatorio, forCompanies(Gera_SQL(), u"NOTA"_s, m_ui->ckTodasEmpresas->isChecked(), u"ORDER BY 6, 8"_s));
    tbRelatorio->setIndexFieldNames(u"CODCLI;FATURA;ORDEM"_s);
    tbRelatorio->First();
}

const TDataSet &TfmRelMalSaidas::result() const
{
    return *tbRelatorio;
}

QString TfmRelMalSaidas::filters() const
{
    return ReportFilters::Text()
        .add(u"Cliente"_s, chosen(m_ui->PqCliente))
        .add(u"Código"_s, chosen(m_ui->PqMaterial))
        .add(u"Grupo"_s, m_ui->edtGrupoMat->text().remove(u'\'').replace(u","_s, u", "_s))
        .add(u"Período"_s, periodText(m_ui->dteEmiIni02->date(), m_ui->dteEmiFim02->date()))
        .add(u"Empresas"_s, m_ui->ckTodasEmpresas->isChecked() ? u"todas"_s : QString())
        .text();
}

ReportCall TfmRelMalSaidas::report() const
{
    PaperRows::together(*tbRelatorio, {u"NOME"_s}, *tbImpressao);
    ReportCall call;
    call.name = u"WMalSaida"_s;
    call.dataSets = {{u"tbRelatorio"_s, tbImpressao}};
    return call;
}
