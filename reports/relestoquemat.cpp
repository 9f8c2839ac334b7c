// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_relestoquemat.h"

#include "reports/relestoquemat.h"

#include "module/host_services/clientdataset.h"
#include "module/host_services/clock.h"
#include "module/host_services/database.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "module/host_services/sqltext.h"
#include "module/look.h"
#include "module/package.h"
#include "module/reportfilters.h"

#include <QSet>

using namespace Funcoes;
using namespace Qt::StringLiterals;
using namespace ReportFilters;

QPointer<TfmRelEstoqueMat> fmRelEstoqueMat;

Unit &Relestoquemat::unit()
{
    static Unit unit = Unit::of<TfmRelEstoqueMat>(u"Relatório de Estoque por Cliente"_s);
    return unit;
}

namespace {

constexpr int mostYarns = 6; // four bars each; the names of more would not be read

TField text(const QString &name, int size)
{
    return TField(name, TField::Type::Text, size);
}

TField unitPrice()
{
    return TField(u"UNITARIO"_s, TField::Type::Float).shownAs(u"0.0000"_s);
}

/// Where the inventory puts what belongs to others.
QVector<TField> inventoryFields()
{
    return {unitPrice(), text(u"UN"_s, 3), text(u"DEPOSITO"_s, 4), text(u"LOTE"_s, 15), text(u"COR"_s, 6),
        text(u"TAM"_s, 6), text(u"POSSE"_s, 1), TField(u"EMPRESA"_s, TField::Type::Integer)};
}

void setInventoryPlace(TClientDataSet *table)
{
    table->setValue(u"DEPOSITO"_s, u"0000"_s);
    table->setValue(u"LOTE"_s, u"000000"_s);
    table->setValue(u"COR"_s, u"0"_s);
    table->setValue(u"TAM"_s, u"0"_s);
    table->setValue(u"POSSE"_s, u"2"_s);
}

} // namespace

TfmRelEstoqueMat::TfmRelEstoqueMat()
    : m_ui(std::make_unique<Ui::fmRelEstoqueMat>())
    , tbRelMaterial(new TClientDataSet(this))
    , tbRelMalha(new TClientDataSet(this))
{
    fmRelEstoqueMat = this;
}

TfmRelEstoqueMat::~TfmRelEstoqueMat() = default;

void TfmRelEstoqueMat::FormCreate()
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    AbreTabelas({u"tbEntidade"_s, u"tbMateriais"_s});
    tbRelMaterial->setObjectName(u"tbRelMaterial"_s);
    tbRelMaterial->CreateDataSet(QVector<TField>{text(u"CODIGO"_s, 15), text(u"DESCRICAO"_s, 100),
                                     kilograms(u"CONTABIL"_s), kilograms(u"FISICO"_s), kilograms(u"SAIDAS"_s),
                                     text(u"CLIENTE"_s, 80), text(u"CODCLI"_s, 5), kilograms(u"QTDE_RESERVADA"_s)}
        + inventoryFields());
    tbRelMalha->setObjectName(u"tbRelMalha"_s);
    tbRelMalha->CreateDataSet(
        QVector<TField>{text(u"CODIGO"_s, 15), text(u"NUM_OF"_s, 6), text(u"DESCRICAO"_s, 100), kilograms(u"QTDE"_s),
            text(u"CODCLI"_s, 5), text(u"LOTE_CLI"_s, 15), TField(u"DATA"_s, TField::Type::Date)}
        + inventoryFields());
    m_ui->DBGrid1->setDataSet(tbRelMaterial);
    m_ui->DBGrid2->setDataSet(tbRelMalha);
}

void TfmRelEstoqueMat::EdtCodCliExit()
{
    checkCode(m_ui->PqCliente, u"Cliente inválido."_s);
}

/// An inventory is one company's.
void TfmRelEstoqueMat::CbInvClick()
{
    const bool inventory = m_ui->CbInv->isChecked();
    if (inventory)
        m_ui->cbRelEmpresa->setChecked(false);
    m_ui->cbRelEmpresa->setEnabled(!inventory);
}

void TfmRelEstoqueMat::tbRelMaterialBeforePost()
{
    setInventoryPlace(tbRelMaterial);
    tbRelMaterial->setValue(u"CLIENTE"_s, u" "_s);
}

void TfmRelEstoqueMat::tbRelMalhaBeforePost()
{
    setInventoryPlace(tbRelMalha);
}

QString TfmRelEstoqueMat::client() const
{
    return m_ui->EdtCodCli->text().trimmed();
}

bool TfmRelEstoqueMat::onlyClientsFabric() const
{
    return !client().isEmpty() && BuscaParametro(u"MAT"_s, 120) == u"S";
}

void TfmRelEstoqueMat::BuscaDados()
{
    Gera_SQL_Malha();
    Gera_SQL_Materiais();
    if (!m_ui->ckbZerados->isChecked())
        DeletaZerados();
    showChart();
    if (m_ui->CbInv->isChecked())
        writeInventory();
}

/// The price is the sum over the fabric's yarns, those with the same share included.
void TfmRelEstoqueMat::Gera_SQL_Malha()
{
    QString statement = uR"(
        SELECT PA_MALHA.CODIGO, PA_MALHA.NUM_OF, MATERIAL.DESCRICAO, MATERIAL.CODCLI,
               (PA_MALHA.QTDE_TOTAL - (0+PA_MALHA.FATURADO)) AS QTDE, SUM(VAL_UN.UNITARIO) AS UNITARIO,
               MATERIAL.UNIDADE AS UN, OF_MALHA.LOTE AS LOTE_CLI, OF_MALHA.DATA, {EMPRESA} AS EMPRESA
        FROM {PA_MALHA} PA_MALHA
        LEFT JOIN {MATERIAL} MATERIAL ON (PA_MALHA.CODIGO = MATERIAL.CODIGO)
        LEFT JOIN (SELECT CMAT.MATERIAL, (AVG(NFTI.UNITARIO)/100)*CMAT.PERC AS UNITARIO
                   FROM {COMP_MATERIAL} CMAT
                   LEFT JOIN {NFT_ITEN} NFTI ON (CMAT.CODIGO = NFTI.CODIGO)
                   GROUP BY CMAT.MATERIAL, CMAT.CODIGO, CMAT.PERC) VAL_UN ON (PA_MALHA.CODIGO = VAL_UN.MATERIAL)
        LEFT JOIN {OF_MALHA} OF_MALHA ON (OF_MALHA.NUM_OF = PA_MALHA.NUM_OF)
        WHERE MATERIAL.GRUPO LIKE '15%')"_s;
    if (onlyClientsFabric())
        statement += u" AND MATERIAL.CODCLI = "_s + Aspas(client());
    statement += uR"(
          AND (PA_MALHA.QTDE_TOTAL - PA_MALHA.FATURADO > 0)
        GROUP BY PA_MALHA.CODIGO, PA_MALHA.NUM_OF, MATERIAL.DESCRICAO, PA_MALHA.QTDE_TOTAL, PA_MALHA.FATURADO,
                 MATERIAL.CODCLI, MATERIAL.UNIDADE, OF_MALHA.LOTE, OF_MALHA.DATA)"_s;
    fill(tbRelMalha, forCompanies(statement, u"OF_MALHA"_s, m_ui->cbRelEmpresa->isChecked(), u"ORDER BY 1"_s));
    tbRelMalha->setIndexFieldNames(u"CODIGO;NUM_OF;EMPRESA"_s);
}

void TfmRelEstoqueMat::Gera_SQL_Materiais()
{
    const QString statement = uR"(
        SELECT DISTINCT NFT_ITEN.CODIGO, MATERIAL.DESCRICAO,
               SUM(NFT_ITEN.ESTOQUE_FISICO - UDF_NVL(SAIDAS.QTDE)) AS CONTABIL,
               AVG(NFT_ITEN.UNITARIO) AS UNITARIO, SUM(NFT_ITEN.VALOR) AS VALOR, SUM(SAIDAS.QTDE) AS SAIDAS,
               NFTERCEIROS.CODCLI, MATERIAL.UNIDADE AS UN, COALESCE(SUM(BAIXAFIO.QTDE),0) AS QTDE_RESERVADA,
               {EMPRESA} AS EMPRESA
        FROM {NFTERCEIROS} NFTERCEIROS
        INNER JOIN {NFT_ITEN} NFT_ITEN ON (NFTERCEIROS.DOCTO = NFT_ITEN.DOCTO AND NFTERCEIROS.CODCLI = NFT_ITEN.CODCLI)
        INNER JOIN {ENTIDADE} CLIENTE ON (NFTERCEIROS.CODCLI = CLIENTE.CODCLI)
        INNER JOIN {MATERIAL} MATERIAL ON (NFT_ITEN.CODIGO = MATERIAL.CODIGO)
        LEFT JOIN (SELECT NOTAITEN.NOTA_CLIENTE, NOTAITEN.CODIGO, NOTAITEN.LOTE, SUM(NOTAITEN.QTDE) AS QTDE
                   FROM {NOTAITEN} NOTAITEN
                   INNER JOIN {NOTA} NOTA ON (NOTAITEN.FATURA = NOTA.FATURA)
                   WHERE (NOTA.IMPRESSO <> 'C' OR NOTA.IMPRESSO IS NULL)
                   GROUP BY NOTAITEN.NOTA_CLIENTE, NOTAITEN.CODIGO, NOTAITEN.LOTE) SAIDAS
               ON (NFTERCEIROS.DOCTO = SAIDAS.NOTA_CLIENTE AND NFT_ITEN.CODIGO = SAIDAS.CODIGO
                   AND NFT_ITEN.LOTE = SAIDAS.LOTE)
        LEFT JOIN (SELECT BAIXA_FIO.CODIGO, BAIXA_FIO.DOCTO, BAIXA_FIO.LOTE, SUM(BAIXA_FIO.QTDE) AS QTDE
                   FROM {BAIXA_FIO} BAIXA_FIO
                   GROUP BY BAIXA_FIO.CODIGO, BAIXA_FIO.DOCTO, BAIXA_FIO.LOTE) BAIXAFIO
               ON (NFT_ITEN.CODIGO = BAIXAFIO.CODIGO AND NFT_ITEN.DOCTO = BAIXAFIO.DOCTO
                   AND NFT_ITEN.LOTE = BAIXAFIO.LOTE)
        WHERE 1=1 AND NFTERCEIROS.CODCLI = )"_s
        + Aspas(client()) + uR"( AND NFT_ITEN.ESTOQUE_FISICO > NFT_ITEN.QTDE_DEVOL
        GROUP BY NFT_ITEN.CODIGO, MATERIAL.DESCRICAO, NFTERCEIROS.CODCLI, MATERIAL.UNIDADE)"_s;
    fill(tbRelMaterial, forCompanies(statement, u"NFTERCEIROS"_s, m_ui->cbRelEmpresa->isChecked(), u"ORDER BY 1"_s));
    Composicao();
    if (m_ui->ckbZerados->isChecked())
        IncluirMateriaisZerados();
    tbRelMaterial->setIndexFieldNames(u"CODIGO;EMPRESA"_s);
}

void TfmRelEstoqueMat::Composicao()
{
    QHash<int, ClientStock::YarnInFabric> inFabric; // by company
    QHash<std::pair<QString, int>, QList<ClientStock::Share>> compositions;
    for (tbRelMalha->First(); !tbRelMalha->Eof(); tbRelMalha->Next()) {
        const std::pair fabric{tbRelMalha->AsString(u"CODIGO"_s), tbRelMalha->AsInteger(u"EMPRESA"_s)};
        if (!compositions.contains(fabric))
            compositions.insert(fabric, compositionOf(fabric.first, fabric.second));
        ClientStock::addFabric(inFabric[fabric.second], tbRelMalha->AsFloat(u"QTDE"_s), compositions.value(fabric));
    }
    tbRelMalha->First();
    for (tbRelMaterial->First(); !tbRelMaterial->Eof(); tbRelMaterial->Next()) {
        const double kg = inFabric[tbRelMaterial->AsInteger(u"EMPRESA"_s)].value(tbRelMaterial->AsString(u"CODIGO"_s));
        tbRelMaterial->Edit();
        tbRelMaterial->setValue(u"FISICO"_s, ClientStock::physical(tbRelMaterial->AsFloat(u"CONTABIL"_s), kg));
        tbRelMaterial->Post();
    }
    tbRelMaterial->First();
}

QList<ClientStock::Share> TfmRelEstoqueMat::compositionOf(const QString &fabric, int company) const
{
    const QString statement = uR"(
        SELECT DISTINCT COMP.CODIGO, COMP.MATERIAL, COMP.PERC
        FROM {COMP_MATERIAL} COMP
        INNER JOIN {MAT_ITEN} MAT_ITEN ON (COMP.MATERIAL = MAT_ITEN.CODIGO AND COMP.COR = MAT_ITEN.COR
                                           AND (MAT_ITEN.ATIVO = 'S' OR MAT_ITEN.ATIVO IS NULL))
        WHERE COMP.MATERIAL = )"_s
        + Aspas(fabric) + u"\nORDER BY COMP.CODIGO"_s;
    TTIQuery rows;
    openQuery(
        &rows, SqlText::withTables(statement, [=](const QString &name) { return DBLocalEmpresa(name, company); }));
    rows.FetchAll();
    QList<ClientStock::Share> shares;
    for (rows.First(); !rows.Eof(); rows.Next())
        shares.append({rows.AsString(u"CODIGO"_s), rows.AsFloat(u"PERC"_s)});
    return shares;
}

/// The client's yarns of which nothing is there.
void TfmRelEstoqueMat::IncluirMateriaisZerados()
{
    QSet<std::pair<QString, int>> listed;
    for (tbRelMaterial->First(); !tbRelMaterial->Eof(); tbRelMaterial->Next())
        listed.insert({tbRelMaterial->AsString(u"CODIGO"_s), tbRelMaterial->AsInteger(u"EMPRESA"_s)});
    const QString statement =
        u"SELECT CODIGO, DESCRICAO, {EMPRESA} AS EMPRESA FROM {MATERIAL} WHERE GRUPO LIKE '10%' AND CODCLI = "_s
        + Aspas(client());
    TTIQuery rows;
    openQuery(&rows, forCompanies(statement, u"MATERIAL"_s, m_ui->cbRelEmpresa->isChecked(), u"ORDER BY 1"_s));
    rows.FetchAll();
    for (rows.First(); !rows.Eof(); rows.Next()) {
        if (listed.contains({rows.AsString(u"CODIGO"_s), rows.AsInteger(u"EMPRESA"_s)}))
            continue;
        tbRelMaterial->Append();
        for (const QString &name : {u"CODIGO"_s, u"DESCRICAO"_s, u"EMPRESA"_s})
            tbRelMaterial->setValue(name, rows.value(name));
        tbRelMaterial->setValue(u"CODCLI"_s, client());
        tbRelMaterial->setValue(u"CONTABIL"_s, 0.0);
        tbRelMaterial->setValue(u"FISICO"_s, 0.0);
        tbRelMaterial->Post();
    }
}

void TfmRelEstoqueMat::DeletaZerados()
{
    for (int row = tbRelMaterial->rowCount() - 1; row >= 0; --row) {
        tbRelMaterial->setRow(row);
        if (ClientStock::isNothing(tbRelMaterial->AsFloat(u"FISICO"_s)))
            tbRelMaterial->Delete();
    }
    tbRelMaterial->First();
}

/// In place of what the day's inventory held of the same lists: yarn and fabric that have left would else stay in it.
void TfmRelEstoqueMat::writeInventory()
{
    if (!Acessa(className(), u'A', u"0"_s, {}))
        return;
    QString listed = u"CODCLI = "_s + Aspas(client());
    if (!onlyClientsFabric())
        listed += u" OR CODIGO IN (SELECT CODIGO FROM {MATERIAL} WHERE GRUPO LIKE '15%')"_s;
    Save save(database());
    database().run(DBLocal_SQL(u"DELETE FROM {INVENTARIO} WHERE DATA = "_s + Aspas(Format::sqlDate(Clock::today()))
        + u" AND EMPRESA = {EMPRESA} AND ("_s + listed + u')'));
    exportInventory({{tbRelMaterial, u"FISICO"_s}, {tbRelMalha, u"QTDE"_s}});
    save.CommitRetaining();
}

void TfmRelEstoqueMat::showChart()
{
    QList<ClientStock::Yarn> yarns;
    for (tbRelMaterial->First(); !tbRelMaterial->Eof(); tbRelMaterial->Next()) {
        yarns.append({tbRelMaterial->AsString(u"CODIGO"_s), tbRelMaterial->AsFloat(u"CONTABIL"_s),
            tbRelMaterial->AsFloat(u"FISICO"_s), tbRelMaterial->AsFloat(u"SAIDAS"_s)});
    }
    tbRelMaterial->First();
    const ClientStock::Bars bars = ClientStock::bars(yarns);
    m_ui->Grafico->showColumns(ReportChart::Columns::SideBySide, bars.yarns,
        {{u"Recebido"_s, bars.received}, {u"Em malha"_s, bars.inFabric}, {u"Devolvido"_s, bars.returned},
            {u"Livre"_s, bars.free}},
        mostYarns);
}

const TDataSet &TfmRelEstoqueMat::result() const
{
    return tbRelMaterial->IsEmpty() ? *tbRelMalha : *tbRelMaterial;
}

QString TfmRelEstoqueMat::filters() const
{
    return Text()
        .add(u"Cliente"_s, chosen(m_ui->PqCliente))
        .add(u"Fios zerados"_s, m_ui->ckbZerados->isChecked() ? u"incluídos"_s : u"não incluídos"_s)
        .add(u"Malhas"_s, onlyClientsFabric() ? QString() : u"de todos os clientes"_s)
        .add(u"Empresas"_s, m_ui->cbRelEmpresa->isChecked() ? u"todas"_s : QString())
        .text();
}

ReportCall TfmRelEstoqueMat::report() const
{
    ReportCall call;
    call.name = u"WMalEstMat"_s;
    call.dataSets = {{u"tbRelMaterial"_s, tbRelMaterial}, {u"tbRelMalha"_s, tbRelMalha}};
    if (m_ui->ckGrafico->isChecked() && !m_ui->Grafico->isEmpty())
        call.parameters.insert(u"grafico"_s, ReportChart::forPaper({m_ui->Grafico}));
    return call;
}
