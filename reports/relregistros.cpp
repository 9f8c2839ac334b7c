// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_relregistros.h"

#include "reports/relregistros.h"

#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "module/look.h"
#include "module/package.h"
#include "module/reportfilters.h"

using namespace Funcoes;
using namespace Qt::StringLiterals;
using namespace ReportFilters;

QPointer<TfmRelRegistros> fmRelRegistros;

Unit &Relregistros::unit()
{
    static Unit unit = Unit::of<TfmRelRegistros>(u".:Relatório de Registro Quantitativo:."_s);
    return unit;
}

namespace {

QString rangeText(const QLineEdit *from, const QLineEdit *to)
{
    const QString first = from->text().trimmed();
    const QString last = to->text().trimmed();
    if (first.isEmpty())
        return last.isEmpty() ? QString() : u"até "_s + last;
    return last.isEmpty() ? u"a partir de "_s + first : first + u" a "_s + last;
}

/// Like ReportFilters::equals, for the other comparisons.
QString compared(const QString &column, const QString &comparison, const QString &value)
{
    const QString text = value.trimmed();
    return text.isEmpty() ? QString() : u" AND %1 %2 "_s.arg(column, comparison) + Aspas(text);
}

} // namespace

TfmRelRegistros::TfmRelRegistros()
    : m_ui(std::make_unique<Ui::fmRelRegistros>())
    , qryRelatorio(new TTIQuery(this))
{
    fmRelRegistros = this;
}

TfmRelRegistros::~TfmRelRegistros() = default;

void TfmRelRegistros::FormCreate()
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    qryRelatorio->Describe({kilograms(u"QTDE"_s)});
    m_ui->DBGrid1->setDataSet(qryRelatorio);
    setLastMonth(m_ui->edtDataIni, m_ui->edtDataFim);
}

void TfmRelRegistros::edtOfFimEnter()
{
    m_ui->edtOfFim->setText(m_ui->edtOfIni->text());
    m_ui->edtOfFim->selectAll();
}

void TfmRelRegistros::checkFilters()
{
    if (!m_ui->edtOfIni->text().trimmed().isEmpty())
        return;
    refuse(u"Digite uma OF."_s, m_ui->edtOfIni);
    throw EAbort();
}

QString TfmRelRegistros::conditions() const
{
    const QString lot = m_ui->edtLote->text().trimmed();
    // The range always stands: without a last order it ends before the first one and finds nothing.
    return u"OF_MALHA_BAIXAS.NUM_OF >= %1 AND OF_MALHA_BAIXAS.NUM_OF <= %2 AND "_s.arg(
               Aspas(m_ui->edtOfIni->text().trimmed()), Aspas(m_ui->edtOfFim->text().trimmed()))
        + within(u"OF_MALHA_BAIXAS.DATA"_s, m_ui->edtDataIni->date(), m_ui->edtDataFim->date())
        + equals(u"OF_MALHA.CLIENTE"_s, m_ui->edtClienteCod->text())
        + equals(u"OF_MALHA.MATERIAL"_s, m_ui->edtMatCod->text())
        + compared(u"OF_MALHA_BAIXAS.NUM_BAIXA"_s, u"<="_s, m_ui->edtBaixaFim->text())
        + compared(u"OF_MALHA_BAIXAS.NUM_BAIXA"_s, u">="_s, m_ui->edtBaixaIni->text())
        + compared(u"OF_MALHA.LOTE"_s, u"LIKE"_s, lot.isEmpty() ? QString() : u'%' + lot + u'%')
        + equals(u"OF_MALHA_BAIXAS.FUNCIONARIO"_s, m_ui->edtFuncCod->text())
        + equals(u"OF_MALHA.MAQUINA"_s, m_ui->edtCodMaq->text());
}

QString TfmRelRegistros::order() const
{
    if (m_ui->rbOF->isChecked())
        return u"ORDER BY OF_MALHA.NUM_OF, OF_MALHA_BAIXAS.NUM_BAIXA"_s;
    // The order's date, not the roll's.
    return m_ui->rbData->isChecked()
        ? u"ORDER BY OF_MALHA.DATA NULLS FIRST, OF_MALHA.NUM_OF, OF_MALHA_BAIXAS.NUM_BAIXA"_s
        : u"ORDER BY OF_MALHA.CLIENTE NULLS FIRST, OF_MALHA.NUM_OF, OF_MALHA_BAIXAS.NUM_BAIXA"_s;
}

void TfmRelRegistros::BuscaDados()
{
    const QString select = uR"(
        SELECT OF_MALHA.CLIENTE, CLIENTE.NOME, OF_MALHA_BAIXAS.*, OF_MALHA.MATERIAL, MATERIAL.DESCRICAO, OF_MALHA.LOTE
        FROM {OF_MALHA} OF_MALHA
        INNER JOIN {OF_MALHA_BAIXAS} OF_MALHA_BAIXAS ON OF_MALHA.NUM_OF = OF_MALHA_BAIXAS.NUM_OF
        LEFT OUTER JOIN {MATERIAL} MATERIAL ON (OF_MALHA.MATERIAL = MATERIAL.CODIGO)
        LEFT OUTER JOIN {ENTIDADE} CLIENTE ON (OF_MALHA.CLIENTE = CLIENTE.CODCLI)
        WHERE )"_s;
    openQuery(qryRelatorio, DBLocal_SQL(select, conditions() + u'\n' + order()));
    m_order = m_ui->rbOF->isChecked() ? m_ui->rbOF->text()
        : m_ui->rbData->isChecked()   ? m_ui->rbData->text()
                                      : m_ui->rbClienteOF->text();
    m_order.remove(u'&');
}

const TDataSet &TfmRelRegistros::result() const
{
    return *qryRelatorio;
}

QString TfmRelRegistros::filters() const
{
    return Text()
        .add(u"OF"_s, rangeText(m_ui->edtOfIni, m_ui->edtOfFim))
        .add(u"Período"_s, periodText(m_ui->edtDataIni->date(), m_ui->edtDataFim->date()))
        .add(u"Cliente"_s, chosen(m_ui->PqCliente))
        .add(u"Malha"_s, chosen(m_ui->PqMaterial))
        .add(u"Baixa"_s, rangeText(m_ui->edtBaixaIni, m_ui->edtBaixaFim))
        .add(u"Lote"_s, m_ui->edtLote->text())
        .add(u"Funcionário"_s, chosen(m_ui->PqFuncionario))
        .add(u"Máquina"_s, chosen(m_ui->PqMaquina))
        .add(u"Ordem"_s, m_order)
        .text();
}

ReportCall TfmRelRegistros::report() const
{
    ReportCall call;
    call.name = u"WMalRegi"_s;
    call.dataSets = {{u"qryRelatorio"_s, qryRelatorio}};
    call.parameters = {{u"ordem"_s, m_order}};
    return call;
}
