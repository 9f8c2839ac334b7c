// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_reldocto.h"

#include "reports/reldocto.h"

#include "module/host_services/clientdataset.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/ttransfere.h"
#include "module/look.h"
#include "module/package.h"
#include "module/reportfilters.h"
#include "reports/paperrows.h"

using namespace Funcoes;
using namespace Qt::StringLiterals;
using namespace ReportFilters;

QPointer<TfmRelDocto> fmRelDocto;

Unit &Reldocto::unit()
{
    static Unit unit = Unit::of<TfmRelDocto>(u"Relatório de Notas Fiscais de Entrada"_s);
    return unit;
}

namespace {

TField money(const QString &name)
{
    return TField(name, TField::Type::Float).shownAs(u",0.00"_s);
}

/// The columns of the query, the company last, then what came in with a lot, once per lot.
QVector<TField> reportFields()
{
    using enum TField::Type;
    return {{u"DOCTO"_s, Text, 7}, {u"CODCLI"_s, Text, 5}, {u"NOME"_s, Text, 80}, {u"DATA"_s, Date},
        {u"CODIGO"_s, Text, 15}, {u"DESCRICAO"_s, Text, 100}, TField(u"QTDE_ENTRADA"_s, Float).shownAs(u",0.000"_s),
        {u"OBS"_s, Text, 4000}, {u"MARCA"_s, Text, 30}, {u"LOTE"_s, Text, 15},
        TField(u"UNITARIO"_s, Float).shownAs(u",0.00##"_s), money(u"VALOR"_s), {u"FATURA"_s, Text, 7},
        {u"IMPRESSO"_s, Text, 1}, {u"DT_EMISSAO"_s, Date}, {u"ORDEM"_s, Integer}, money(u"QTDE"_s),
        money(u"VALOR_NF"_s), TField(u"ESTOQUE_ORIGINAL"_s, Float).shownAs(u",0.000"_s), {u"DEVOLVIDA"_s, Text, 1},
        {u"EMPRESA"_s, Integer}, {u"PRIMEIRA"_s, Text, 1}, TField(u"ENTRADA"_s, Float).shownAs(u",0.000"_s),
        money(u"VALOR_ENTRADA"_s)};
}

} // namespace

TfmRelDocto::TfmRelDocto()
    : m_ui(std::make_unique<Ui::fmRelDocto>())
    , tbRelatorio(new TClientDataSet(this))
    , tbImpressao(new TClientDataSet(this))
{
    fmRelDocto = this;
}

TfmRelDocto::~TfmRelDocto() = default;

void TfmRelDocto::FormCreate()
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    tbRelatorio->setObjectName(u"tbRelatorio"_s);
    tbRelatorio->CreateDataSet(reportFields());
    m_ui->DBGrid1->setDataSet(tbRelatorio);
    setLastMonth(m_ui->dteEmiIni02, m_ui->dteEmiFim02);
    m_ui->DtMov->setDate(m_ui->dteEmiFim02->date());
}

void TfmRelDocto::edtClienteCodExit()
{
    checkCode(m_ui->PqCliente, u"Cliente inválido."_s);
}

void TfmRelDocto::edtMatCodExit()
{
    checkCode(m_ui->PqMaterial, u"Material inválido."_s);
}

void TfmRelDocto::EdtGrupoCliExit()
{
    checkCode(m_ui->PqGrupoCli, u"Grupo de clientes inválido."_s);
}

QString TfmRelDocto::Gera_SQL() const
{
    const QDate lastOutput = m_ui->DtMov->date();
    const QString until =
        lastOutput.isValid() ? u" AND NOTAITEN.DATA_MVTO <= "_s + Aspas(Format::sqlDate(lastOutput)) : QString();
    QString statement = uR"(
        SELECT DISTINCT NFTERCEIROS.DOCTO, NFTERCEIROS.CODCLI, CLIENTE.NOME, NFTERCEIROS.DATA, NFT_ITEN.CODIGO,
               MATERIAL.DESCRICAO, NFT_ITEN.ESTOQUE_FISICO AS QTDE_ENTRADA, NFTERCEIROS.OBS, NFT_ITEN.MARCA,
               NFT_ITEN.LOTE, NFT_ITEN.UNITARIO, NFT_ITEN.VALOR, NOTAITEN.FATURA, 'S' AS IMPRESSO,
               NOTAITEN.DATA_MVTO AS DT_EMISSAO, NOTAITEN.ORDEM, CAST(NOTAITEN.QTDE AS NUMERIC(9,2)) AS QTDE,
               NOTAITEN.VALOR AS VALOR_NF, NFT_ITEN.ESTOQUE_ORIGINAL,
               COALESCE((SELECT DISTINCT 'S' FROM {NOTA} NOTA
                         WHERE NOTA.NOTA_DEV = NOTAITEN.FATURA AND NOTA.IMPRESSO <> 'C'), 'N') AS DEVOLVIDA,
               {EMPRESA} AS EMPRESA
        FROM {NFTERCEIROS} NFTERCEIROS
        INNER JOIN {NFT_ITEN} NFT_ITEN ON (NFTERCEIROS.DOCTO = NFT_ITEN.DOCTO AND NFT_ITEN.CODCLI = NFTERCEIROS.CODCLI)
        INNER JOIN {ENTIDADE} CLIENTE ON (NFTERCEIROS.CODCLI = CLIENTE.CODCLI)
        INNER JOIN {MATERIAL} MATERIAL ON (NFT_ITEN.CODIGO = MATERIAL.CODIGO)
        LEFT OUTER JOIN {NOTAITEN} NOTAITEN ON (NFTERCEIROS.DOCTO = NOTAITEN.NOTA_CLIENTE
            AND NFT_ITEN.CODIGO = NOTAITEN.CODIGO AND NFT_ITEN.LOTE = NOTAITEN.LOTE)"_s
        + until + uR"(
            AND NOTAITEN.FATURA IN (SELECT NOTA.FATURA FROM {NOTA} NOTA WHERE NOTA.IMPRESSO <> 'C'))
        WHERE ()"_s;
    statement += within(u"NFTERCEIROS.DATA"_s, m_ui->dteEmiIni02->date(), m_ui->dteEmiFim02->date()) + u')'
        + equals(u"NFTERCEIROS.CODCLI"_s, m_ui->edtClienteCod->text())
        + equals(u"NFTERCEIROS.DOCTO"_s, m_ui->EdtDocumento->text())
        + equals(u"NFT_ITEN.CODIGO"_s, m_ui->edtMatCod->text()) + equals(u"CLIENTE.GRUPO"_s, m_ui->EdtGrupoCli->text());
    if (m_ui->rbPendente->isChecked())
        statement += u" AND NFT_ITEN.ESTOQUE_FISICO > NFT_ITEN.QTDE_DEVOL"_s;
    return statement;
}

void TfmRelDocto::BuscaDados()
{
    const bool byMaterial = m_ui->rbMaterial->isChecked();
    // Client, invoice, lot or client, material, invoice; what follows keeps the rows of a lot together.
    const QString order = byMaterial ? u"ORDER BY 2, 5, 1, 10, 13, 16"_s : u"ORDER BY 2, 1, 10, 5, 13, 16"_s;
    const QString index = byMaterial ? u"CODCLI;CODIGO;DOCTO"_s : u"CODCLI;DATA;DOCTO;CODIGO;LOTE;FATURA"_s;
    TClientDataSet sorted;
    sorted.CreateDataSet(tbRelatorio->fields());
    fill(&sorted, forCompanies(Gera_SQL(), u"NFTERCEIROS"_s, m_ui->ckTodasEmpresas->isChecked(), order));
    sorted.setIndexFieldNames(index);
    m_byMaterial = byMaterial;
    m_lots.clear();
    tbRelatorio->EmptyDataSet();
    tbRelatorio->setIndexFieldNames({});
    Ttransfere::TTransDataSet transfer;
    transfer.SetTabelaOrigem(&sorted);
    transfer.SetTabelaDestino(tbRelatorio);
    transfer.TransfereDados();
    tbRelatorio->setIndexFieldNames(index);
    tbRelatorio->First();
}

void TfmRelDocto::tbRelatorioBeforePost()
{
    QStringList lot;
    for (const QString &field : {u"EMPRESA"_s, u"DOCTO"_s, u"CODCLI"_s, u"CODIGO"_s, u"LOTE"_s})
        lot.append(tbRelatorio->AsString(field));
    const QString key = lot.join(u'\n');
    if (m_lots.contains(key))
        return;
    m_lots.insert(key);
    tbRelatorio->setValue(u"PRIMEIRA"_s, u"S"_s);
    tbRelatorio->setValue(u"ENTRADA"_s, tbRelatorio->value(u"QTDE_ENTRADA"_s));
    tbRelatorio->setValue(u"VALOR_ENTRADA"_s, tbRelatorio->value(u"VALOR"_s));
}

const TDataSet &TfmRelDocto::result() const
{
    return *tbRelatorio;
}

QString TfmRelDocto::filters() const
{
    return ReportFilters::Text()
        .add(u"Período de entrada"_s, periodText(m_ui->dteEmiIni02->date(), m_ui->dteEmiFim02->date()))
        .add(u"Saídas até"_s, Format::date(m_ui->DtMov->date()))
        .add(u"Cliente"_s, chosen(m_ui->PqCliente))
        .add(u"Código"_s, chosen(m_ui->PqMaterial))
        .add(u"Documento"_s, m_ui->EdtDocumento->text())
        .add(u"Grupo Cliente"_s, chosen(m_ui->PqGrupoCli))
        .add(u"Situação"_s, m_ui->rbPendente->isChecked() ? u"Pendente"_s : u"Total"_s)
        .add(u"Empresas"_s, m_ui->ckTodasEmpresas->isChecked() ? u"todas"_s : QString())
        .text();
}

ReportCall TfmRelDocto::report() const
{
    // Two companies may give one code to two clients: each has its own title and total.
    PaperRows::together(*tbRelatorio, {u"CODCLI"_s, u"NOME"_s}, *tbImpressao);
    ReportCall call;
    call.name = m_ui->ckSaidas->isChecked() ? u"WMalNF1"_s : u"WMalNF2"_s;
    call.dataSets = {{u"tbRelatorio"_s, tbImpressao}};
    call.parameters.insert(u"ordem"_s, m_byMaterial ? u"material"_s : u"nota"_s);
    return call;
}
