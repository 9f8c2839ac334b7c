// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_caddefmalha.h"

#include "registries/caddefmalha.h"

#include "module/host_services/clientdataset.h"
#include "module/host_services/database.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "module/look.h"
#include "module/package.h"

using namespace Funcoes;
using namespace Qt::StringLiterals;

QPointer<TfmCadDefMalha> fmCadDefMalha;

Unit &Caddefmalha::unit()
{
    static Unit unit = Unit::of<TfmCadDefMalha>(u"Cadastro de Defeitos da Malha"_s);
    return unit;
}

TfmCadDefMalha::TfmCadDefMalha()
    : m_ui(std::make_unique<Ui::fmCadDefMalha>())
    , TbDefeitos(new TClientDataSet(this))
{
    fmCadDefMalha = this;
}

TfmCadDefMalha::~TfmCadDefMalha() = default;

void TfmCadDefMalha::FormCreate()
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    setEnterAsTab(true);
    TbDefeitos->setObjectName(u"TbDefeitos"_s);
    TbDefeitos->CreateDataSet({TField(u"Setor"_s, TField::Type::Text, 3).titled(u"Código"_s),
        TField(u"Descricao"_s, TField::Type::Text, 30).titled(u"Descrição"_s),
        TField(u"Qtde"_s, TField::Type::Float).titled(u"Quantidade"_s).shownAs(u"0.00"_s).editable()});
    m_ui->DBGrid1->setDataSet(TbDefeitos);
}

void TfmCadDefMalha::FormShow()
{
    m_ui->edtOF->setText(m_of);
    m_ui->edtRolo->setText(m_roll > 0 ? QString::number(m_roll) : QString());
    loadRoll();
    TTIQuery catalogue;
    catalogue.SQL.add(DBLocal_SQL(u"SELECT * FROM {DEFEITO} DEFEITO ORDER BY DEFEITO.CODIGO"_s));
    TbDefeitos->EmptyDataSet();
    for (catalogue.Open(); !catalogue.Eof(); catalogue.Next()) {
        const QString code = catalogue.AsString(u"codigo"_s);
        TbDefeitos->Append();
        TbDefeitos->setValue(u"Setor"_s, code);
        TbDefeitos->setValue(u"Descricao"_s, catalogue.AsString(u"descricao"_s));
        TbDefeitos->setValue(u"Qtde"_s, QtdeDefeito(code));
        TbDefeitos->Post();
    }
    m_loaded = true;
    TbDefeitos->First();
    // Who comes into the grid types quantities at once.
    m_ui->DBGrid1->setCurrentIndex(m_ui->DBGrid1->model()->index(0, m_ui->DBGrid1->columnOf(u"Qtde"_s)));
    m_ui->EdtCodRev->setFocus();
}

/// What is recorded of the roll: inspector, grade, and how often each defect was counted.
void TfmCadDefMalha::loadRoll()
{
    TTIQuery recorded;
    recorded.SQL.add(u"SELECT CODIGO, QUANT, REVISOR, QUALIDADE FROM "_s + DBLocal(u"DEF_MOV"_s) + u" WHERE NUMERO = "_s
        + Aspas(m_of) + u" AND ROLO = "_s + QString::number(m_roll) + u" ORDER BY CODIGO"_s);
    recorded.Open();
    m_ui->EdtCodRev->setText(recorded.AsString(u"REVISOR"_s));
    m_ui->EdtCodQul->setText(recorded.AsString(u"QUALIDADE"_s));
    m_counted.clear();
    for (; !recorded.Eof(); recorded.Next())
        m_counted.insert(recorded.AsString(u"CODIGO"_s), recorded.AsFloat(u"QUANT"_s));
}

double TfmCadDefMalha::QtdeDefeito(const QString &code) const
{
    return m_counted.value(code);
}

void TfmCadDefMalha::EdtCodRevExit()
{
    if (!Existe(u"PESSOAL"_s, u"CODIGO"_s, Aspas(m_ui->EdtCodRev->text())))
        m_ui->PqRevisor->AbrePesquisa();
}

void TfmCadDefMalha::EdtCodQulExit()
{
    if (!Existe(u"TABQUL"_s, u"CODIGO"_s, Aspas(m_ui->EdtCodQul->text())))
        m_ui->PqQualidade->AbrePesquisa();
}

void TfmCadDefMalha::TbDefeitosAfterPost()
{
    m_ui->lbTotal->setText(u"Total de defeitos: %1"_s.arg(Format::number(TbDefeitos->sum(u"Qtde"_s), u"0.00"_s)));
}

void TfmCadDefMalha::BitBtn1Click()
{
    if (!Acessa(className(), u'A', u"0"_s, {}))
        return;
    if (m_of.isEmpty()) {
        refuse(u"Abra esta tela a partir da baixa de um rolo. Impossível Continuar."_s);
        return;
    }
    if (!m_loaded) { // what is missing would be taken away from the roll
        refuse(u"Os defeitos do rolo não foram lidos por inteiro. Abra a tela de novo. Impossível Continuar."_s);
        return;
    }
    save();
    close();
}

void TfmCadDefMalha::save()
{
    const QString table = DBLocal(u"DEF_MOV"_s);
    const QString roll = QString::number(m_roll);
    Save save(database());
    database().run(u"DELETE FROM "_s + table + u" WHERE NUMERO = "_s + Aspas(m_of) + u" AND ROLO = "_s + roll);
    for (TbDefeitos->First(); !TbDefeitos->Eof(); TbDefeitos->Next()) {
        database().run(u"INSERT INTO "_s + table + u" (CODIGO, QUANT, NUMERO, REVISOR, QUALIDADE, ROLO) VALUES ("_s
            + Aspas(TbDefeitos->AsString(u"Setor"_s)) + u", "_s + PermanecePonto(TbDefeitos->AsFloat(u"Qtde"_s))
            + u", "_s + Aspas(m_of) + u", "_s + Aspas(m_ui->EdtCodRev->text()) + u", "_s
            + Aspas(m_ui->EdtCodQul->text()) + u", "_s + roll + u')');
    }
    save.CommitRetaining();
}

void TfmCadDefMalha::BitBtn2Click()
{
    close();
}
