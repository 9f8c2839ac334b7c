// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_acertomalha.h"

#include "production/acertomalha.h"

#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "module/look.h"
#include "module/package.h"

using namespace Funcoes;
using namespace Qt::StringLiterals;

QPointer<TfmAcertoMalharia> fmAcertoMalharia;

Unit &Acertomalha::unit()
{
    static Unit unit = Unit::of<TfmAcertoMalharia>(u"Atualização de Saldo de OF"_s);
    return unit;
}

TfmAcertoMalharia::TfmAcertoMalharia()
    : m_ui(std::make_unique<Ui::fmAcertoMalharia>())
    , QryPa(new TTIQuery(this))
{
    fmAcertoMalharia = this;
}

TfmAcertoMalharia::~TfmAcertoMalharia() = default;

void TfmAcertoMalharia::FormCreate()
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    setEnterAsTab(true);
    const auto kg = [](const QString &name) { return TField(name, TField::Type::Float).shownAs(u",0.000"_s); };
    QryPa->setObjectName(u"QryPa"_s);
    QryPa->Describe({kg(u"QTDE_TOTAL"_s), kg(u"FATURADO"_s)});
    m_ui->DBGrid1->setDataSet(QryPa);
    ConsultaOF();
    QryPaAfterScroll(); // the handlers are tied after this
}

void TfmAcertoMalharia::FormShow()
{
    m_ui->EdtCodigo->setFocus();
}

void TfmAcertoMalharia::ConsultaOF()
{
    QString statement = DBLocal_SQL(uR"(
        SELECT PA_MALHA.NUM_OF, PA_MALHA.CODIGO, MATERIAL.DESCRICAO, PA_MALHA.QTDE_TOTAL, PA_MALHA.FATURADO
        FROM {PA_MALHA} PA_MALHA
        LEFT OUTER JOIN {MATERIAL} MATERIAL ON (PA_MALHA.CODIGO = MATERIAL.CODIGO)
        WHERE 1=1 )"_s);
    const QString code = m_ui->EdtCodigo->text().trimmed();
    const QString of = m_ui->edtOF->text().trimmed();
    if (!code.isEmpty())
        statement += u"AND PA_MALHA.CODIGO = "_s + Aspas(code) + u' ';
    if (!of.isEmpty())
        statement += u"AND PA_MALHA.NUM_OF = "_s + Aspas(of) + u' ';
    QryPa->SQL.clear();
    QryPa->SQL.add(statement + u"ORDER BY PA_MALHA.NUM_OF, PA_MALHA.CODIGO"_s);
    QryPa->Open();
}

void TfmAcertoMalharia::EdtCodigoChange()
{
    describe(m_ui->PqMat);
}

void TfmAcertoMalharia::EdtCodigoExit()
{
    ConsultaOF();
}

void TfmAcertoMalharia::edtOFExit()
{
    ConsultaOF();
}

void TfmAcertoMalharia::PqMatFechaPesquisa()
{
    takeChosen(m_ui->PqMat);
    ConsultaOF();
}

void TfmAcertoMalharia::PqOFFechaPesquisa()
{
    takeChosen(m_ui->PqOF);
    ConsultaOF();
}

void TfmAcertoMalharia::QryPaAfterScroll()
{
    const auto currency = [this](const QString &field) { return Format::rounded(QryPa->AsFloat(field), 4); };
    m_ui->EdtQtde->setValue(Format::rounded(currency(u"QTDE_TOTAL"_s) - currency(u"FATURADO"_s), 4));
}

void TfmAcertoMalharia::DBGrid1DblClick()
{
    m_ui->EdtQtde->setFocus();
}

void TfmAcertoMalharia::EdtQtdeExit()
{
    m_ui->SbConfirmar->setFocus();
}

void TfmAcertoMalharia::SbConfirmarClick()
{
    if (!Acessa(className(), u'A', u"0"_s, {}))
        return;
    const QString code = QryPa->AsString(u"CODIGO"_s);
    const QString of = QryPa->AsString(u"NUM_OF"_s);
    if (QryPa->IsEmpty() || !Existe(u"PA_MALHA"_s, u"CODIGO"_s, Aspas(code))) {
        ConsultaOF();
        refuse(u"Não há saldo para gravar."_s, m_ui->EdtCodigo);
        return;
    }
    save(code, of);
    ConsultaOF();
    QryPa->Locate(u"NUM_OF;CODIGO"_s, {of, code});
    m_ui->DBGrid1->setFocus();
}

void TfmAcertoMalharia::save(const QString &code, const QString &of)
{
    const QString statement = u"UPDATE "_s + DBLocal(u"PA_MALHA"_s) + u" SET QTDE_TOTAL = COALESCE(FATURADO, 0) + "_s
        + PermanecePonto(m_ui->EdtQtde->value()) + u" WHERE CODIGO = "_s + Aspas(code) + u" AND NUM_OF = "_s
        + Aspas(of);
    Save save(database());
    if (database().run(statement).numRowsAffected() == 0)
        throw EDatabaseError(EDatabaseError::Category::Conflict, {}, u"O saldo não existe mais."_s, statement);
    save.CommitRetaining();
}

void TfmAcertoMalharia::SbDesistirClick()
{
    close();
}
