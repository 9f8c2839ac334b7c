// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_malfatnf.h"

#include "invoicing/malfatnf.h"

#include "module/host_services/database.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "module/look.h"
#include "module/package.h"

#include <QValidator>

using namespace Funcoes;
using namespace Qt::StringLiterals;

QPointer<TfmMalFatNF> fmMalFatNF;

Unit &Malfatnf::unit()
{
    static Unit unit = Unit::of<TfmMalFatNF>(u"Atualização de Notas Fiscais de Cobrança"_s);
    return unit;
}

namespace {

/// S, N or nothing; small letters become capital.
class MarkValidator : public QValidator
{
public:
    using QValidator::QValidator;

    State validate(QString &text, int &) const override
    {
        text = text.toUpper();
        return text.isEmpty() || text == u"S" || text == u"N" ? Acceptable : Invalid;
    }
};

} // namespace

TfmMalFatNF::TfmMalFatNF()
    : m_ui(std::make_unique<Ui::fmMalFatNF>())
    , QryItens(new TTIQuery(this))
{
    fmMalFatNF = this;
}

TfmMalFatNF::~TfmMalFatNF() = default;

void TfmMalFatNF::FormCreate()
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    setEnterAsTab(true);
    m_ui->EdtFat->setValidator(new MarkValidator(this));
    QryItens->Describe({TField(u"QTDE"_s, TField::Type::Float).shownAs(u",0.000"_s)});
    m_ui->DBGrid1->setDataSet(QryItens);
    ListaItens();
}

void TfmMalFatNF::FormShow()
{
    m_ui->EdtNota->setFocus();
}

QString TfmMalFatNF::invoice() const
{
    return m_ui->EdtNota->text().trimmed();
}

/// The mark, when any item of the invoice bears it.
QString TfmMalFatNF::markedAs(const QString &mark) const
{
    return Busca_Valor(u"NOTAITEN"_s, u"FATURA;TIPO"_s, u"TIPO"_s, Aspas(invoice()) + u';' + Aspas(mark));
}

void TfmMalFatNF::EdtNotaExit()
{
    const QString billed = markedAs(u"S"_s);
    m_ui->EdtFat->setText(billed.isEmpty() ? markedAs(u"N"_s) : billed);
    m_ui->lbResultado->clear();
    ListaItens();
}

void TfmMalFatNF::ListaItens()
{
    QryItens->SQL.clear();
    QryItens->SQL.add(DBLocal_SQL(uR"(
        SELECT NOTAITEN.ORDEM, NOTAITEN.CODIGO, MATERIAL.DESCRICAO, MATERIAL.GRUPO, NOTAITEN.QTDE, NOTAITEN.VALOR,
               NOTAITEN.TIPO
        FROM {NOTAITEN} NOTAITEN
        LEFT OUTER JOIN {MATERIAL} MATERIAL ON (NOTAITEN.CODIGO = MATERIAL.CODIGO)
        WHERE NOTAITEN.FATURA = )"_s,
        Aspas(invoice()) + u" ORDER BY NOTAITEN.ORDEM"_s));
    QryItens->Open();
}

void TfmMalFatNF::BitBtn2Click()
{
    if (!Acessa(className(), u'A', u"0"_s, {}))
        return;
    const int marked = updateMark(m_ui->EdtFat->text());
    ListaItens();
    m_ui->lbResultado->setText(
        marked == 0 ? u"Nenhum item de malha nesta nota."_s : u"Itens de malha atualizados: %1."_s.arg(marked));
    m_ui->EdtNota->setFocus();
    m_ui->EdtNota->selectAll();
}

/// Of the fabric, that is of the groups 150 and 15, alone; the number of items.
int TfmMalFatNF::updateMark(const QString &mark)
{
    const QString group = u"(SELECT GRUPO FROM "_s + DBLocal(u"MATERIAL"_s) + u" WHERE CODIGO = NOTAITEN.CODIGO) = "_s;
    Save save(database());
    TTIQuery update;
    update.SetDatabase(&database());
    update.SQL.add(u"UPDATE "_s + DBLocal(u"NOTAITEN"_s) + u" NOTAITEN"_s);
    update.SQL.add(u"SET NOTAITEN.TIPO = "_s + Aspas(mark));
    update.SQL.add(u"WHERE NOTAITEN.FATURA = "_s + Aspas(invoice()));
    update.SQL.add(u"AND ( "_s + group + Aspas(u"150"_s) + u" OR "_s + group + Aspas(u"15"_s) + u" )"_s);
    const int marked = update.ExecSQL();
    save.CommitRetaining();
    return marked;
}

void TfmMalFatNF::BitBtn1Click()
{
    close();
}
