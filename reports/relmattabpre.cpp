// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_relmattabpre.h"

#include "reports/relmattabpre.h"

#include "module/host_services/clientdataset.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "module/look.h"
#include "module/package.h"
#include "module/reportfilters.h"
#include "reports/paperrows.h"

using namespace Funcoes;
using namespace Qt::StringLiterals;
using namespace ReportFilters;

QPointer<TfmRelMatTabPre> fmRelMatTabPre;

Unit &Relmattabpre::unit()
{
    static Unit unit = Unit::of<TfmRelMatTabPre>(u"Relatório de Tabela de Preços"_s);
    return unit;
}

TfmRelMatTabPre::TfmRelMatTabPre()
    : m_ui(std::make_unique<Ui::fmRelMatTabPre>())
    , qryRelatorio(new TTIQuery(this))
    , tbImpressao(new TClientDataSet(this))
{
    fmRelMatTabPre = this;
}

TfmRelMatTabPre::~TfmRelMatTabPre() = default;

void TfmRelMatTabPre::FormCreate()
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    AbreTabelas({u"tbEntidade"_s, u"TBRegiao"_s, u"TbProduto"_s, u"Tbcolecao"_s, u"tbGrupo"_s});
    QVector<TField> prices{TField(u"PRECO_MEDIO"_s, TField::Type::Float).shownAs(u",0.00##"_s)};
    for (int days = 0; days <= 91; days += 7) {
        const QString name = u"PRECO_%1"_s.arg(days, 2, 10, QChar(u'0'));
        prices.append(TField(name, TField::Type::Float).shownAs(u",0.00##"_s));
    }
    qryRelatorio->Describe(prices);
    m_ui->DBGrid1->setDataSet(qryRelatorio);
    m_ui->edtTabPre_CodReg->setText(u"001"_s);
}

void TfmRelMatTabPre::ComfirmaRepresenClick()
{
    consult();
}

void TfmRelMatTabPre::ImprimiRepresenClick()
{
    print();
}

void TfmRelMatTabPre::BitBtn1Click()
{
    close();
}

void TfmRelMatTabPre::edtTabPre_CodRegExit()
{
    checkCode(m_ui->PqRegiao, u"Tabela inválida."_s);
}

void TfmRelMatTabPre::EdtCodCliExit()
{
    checkCode(m_ui->PqCliente, u"Cliente inválido."_s);
}

void TfmRelMatTabPre::ExecutaSQLKelta()
{
    const QString select = uR"(
        SELECT REGIAO.DESCRICAO AS LOCAL, MATERIAL.CODIGO, MATERIAL.DESCRICAO, MATERIAL.GRUPO,
               TABPRECO.PRECO_00, TABPRECO.PRECO_07, CAST('N' AS VARCHAR(1)) AS OPCOES, GRUPO_MA.DESCRICAO AS DESGRUPO,
               TABPRECO.PRECO_14, TABPRECO.PRECO_21, TABPRECO.PRECO_28, TABPRECO.PRECO_35, TABPRECO.PRECO_42,
               TABPRECO.PRECO_49, TABPRECO.PRECO_56, TABPRECO.PRECO_63, TABPRECO.PRECO_70, TABPRECO.PRECO_77,
               TABPRECO.PRECO_84, TABPRECO.PRECO_84, TABPRECO.PRECO_91, TABPRECO.PRECO_MEDIO, REGIAO.REGIAO
        FROM {MATERIAL} MATERIAL
        LEFT OUTER JOIN {TABPRECO} TABPRECO ON (MATERIAL.CODIGO = TABPRECO.CODIGO)
        LEFT OUTER JOIN {REGIAO} REGIAO ON (TABPRECO.REGIAO = REGIAO.REGIAO)
        LEFT OUTER JOIN {GRUPO_MA} GRUPO_MA ON (MATERIAL.GRUPO = GRUPO_MA.CODIGO)
        WHERE REGIAO.REGIAO = )"_s;
    const QString conditions =
        Aspas(m_ui->edtTabPre_CodReg->text().trimmed()) + equals(u"MATERIAL.CODCLI"_s, m_ui->EdtCodCli->text());
    // The choice "Código" lists by description and "Descrição" by code: the mill reads its list that way. The rest
    // of the order puts the colour groups of a material one after the other.
    const QString order =
        m_ui->rbCodigo->isChecked() ? u"MATERIAL.DESCRICAO NULLS FIRST, MATERIAL.CODIGO"_s : u"MATERIAL.CODIGO"_s;
    openQuery(qryRelatorio,
        DBLocal_SQL(select, conditions + u"\nORDER BY "_s + order + u", TABPRECO.GRUPO_COR NULLS FIRST"_s));
}

void TfmRelMatTabPre::BuscaDados()
{
    ExecutaSQLKelta();
}

const TDataSet &TfmRelMatTabPre::result() const
{
    return *qryRelatorio;
}

QString TfmRelMatTabPre::filters() const
{
    return Text().add(u"Tabela"_s, chosen(m_ui->PqRegiao)).add(u"Cliente"_s, chosen(m_ui->PqCliente)).text();
}

ReportCall TfmRelMatTabPre::report() const
{
    PaperRows::together(*qryRelatorio, {u"GRUPO"_s}, *tbImpressao);
    ReportCall call;
    call.name = u"WVenPreCol"_s;
    call.dataSets = {{u"qryRelatorio"_s, tbImpressao}};
    return call;
}
