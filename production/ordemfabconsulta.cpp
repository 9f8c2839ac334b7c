// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// The order screen's page "Consulta".

#include "ui_ordemfab.h"

#include "production/ordemfab.h"

#include "module/host_services/busy.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "module/host_services/table.h"
#include "module/reportfilters.h"

using namespace Funcoes;
using namespace Qt::StringLiterals;

QString TfmMalhaOF::consultStatement() const
{
    QString statement = DBLocal_SQL(uR"(
        SELECT OF_MALHA.NUM_OF AS NUMERO, OF_MALHA.DATA, OF_MALHA.CLIENTE, ENTIDADE.NOME AS NOME_CLI,
               OF_MALHA.MATERIAL, MATERIAL.DESCRICAO AS DESC_MATERIAL, OF_MALHA.MAQUINA,
               MAQUINA.DESCRICAO AS DESC_MAQUINA, OF_MALHA.FLUXO,
               (SELECT MAX(FLUXOTIN.DESCRICAO) FROM {FLUXOTIN} FLUXOTIN
                WHERE OF_MALHA.FLUXO = FLUXOTIN.CODIGO) AS DESC_FLUXO
        FROM {OF_MALHA} OF_MALHA
        LEFT JOIN {ENTIDADE} ENTIDADE ON (OF_MALHA.CLIENTE = ENTIDADE.CODCLI)
        LEFT JOIN {MATERIAL} MATERIAL ON (OF_MALHA.MATERIAL = MATERIAL.CODIGO)
        LEFT JOIN {MAQUINA} MAQUINA ON (OF_MALHA.MAQUINA = MAQUINA.MAQUINA)
        WHERE 1 = 1 )"_s);
    if (m_ui->edtDe->date().isValid())
        statement += u"AND OF_MALHA.DATA >= "_s + Aspas(Format::sqlDate(m_ui->edtDe->date())) + u' ';
    if (m_ui->edtAte->date().isValid())
        statement += u"AND OF_MALHA.DATA <= "_s + Aspas(Format::sqlDate(m_ui->edtAte->date())) + u' ';
    const std::pair<QString, QLineEdit *> filters[]{{u"CLIENTE"_s, m_ui->edtFCliente},
        {u"MATERIAL"_s, m_ui->edtFMaterial}, {u"MAQUINA"_s, m_ui->edtFMaquina}, {u"FLUXO"_s, m_ui->edtFFluxo},
        {u"NUM_OF"_s, m_ui->edtFNumero}};
    for (const auto &[column, field] : filters) {
        if (!field->text().trimmed().isEmpty())
            statement += u"AND OF_MALHA."_s + column + u" = "_s + Aspas(field->text().trimmed()) + u' ';
    }
    return statement + u"ORDER BY OF_MALHA.NUM_OF, OF_MALHA.CLIENTE"_s;
}

QString TfmMalhaOF::consultFilters() const
{
    const auto chosen = [](const QLineEdit *code, const QLineEdit *description) {
        return (code->text().trimmed() + u' ' + description->text()).trimmed();
    };
    return ReportFilters::Text()
        .add(u"Período"_s, ReportFilters::periodText(m_ui->edtDe->date(), m_ui->edtAte->date()))
        .add(u"Cliente"_s, chosen(m_ui->edtFCliente, m_ui->edtFDescCliente))
        .add(u"Material"_s, chosen(m_ui->edtFMaterial, m_ui->edtFDescMaterial))
        .add(u"Máquina"_s, chosen(m_ui->edtFMaquina, m_ui->edtFDescMaquina))
        .add(u"Fluxo"_s, chosen(m_ui->edtFFluxo, m_ui->edtFDescFluxo))
        .add(u"Número"_s, m_ui->edtFNumero->text())
        .text();
}

void TfmMalhaOF::refuseUnreadableDates()
{
    for (TDateEdit *date : {m_ui->edtDe, m_ui->edtAte}) {
        if (date->hasInvalidText()) {
            refuse(u"Data Inválida. Impossível Continuar."_s, date);
            throw EAbort();
        }
    }
}

void TfmMalhaOF::BitBtn3Click()
{
    refuseUnreadableDates();
    const Busy busy(this);
    m_consult->SQL.clear();
    m_consult->SQL.add(consultStatement());
    m_consult->Open();
    m_consultFilters = consultFilters();
}

void TfmMalhaOF::BitBtn4Click()
{
    if (!m_consult->Active())
        BitBtn3Click();
    if (m_consult->IsEmpty()) {
        refuse(u"Nenhum registro para imprimir."_s);
        return;
    }
    ReportCall call;
    call.name = u"WRelMalOF"_s;
    call.form = this;
    call.dataSets = {{u"qryConsulta"_s, m_consult}};
    call.parameters = {{u"filtros"_s, m_consultFilters}};
    Chama_Relatorio(call);
}

void TfmMalhaOF::BitBtn5Click()
{
    close();
}

void TfmMalhaOF::DBGrid1DblClick()
{
    if (m_consult->IsEmpty())
        return;
    if (!tbOF_Malha->Locate(u"NUM_OF"_s, {m_consult->AsString(u"NUMERO"_s)})) {
        refuse(u"A OF não existe mais."_s, m_ui->DBGrid1);
        return;
    }
    m_ui->PageControl->setCurrentWidget(m_ui->TabOrdem);
    showDerived();
}
