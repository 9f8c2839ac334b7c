// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_ordembaixa.h"

#include "production/ordembaixa.h"

#include "module/host_services/database.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "module/look.h"
#include "module/messages.h"
#include "module/package.h"
#include "production/rolllabel.h"
#include "production/rollregister.h"

using namespace Funcoes;
using namespace Qt::StringLiterals;

QPointer<TfmMalhaOFBaixa> fmMalhaOFBaixa;

Unit &Ordembaixa::unit()
{
    static Unit unit = Unit::of<TfmMalhaOFBaixa>(u"Baixa Ordem de Fabricação"_s);
    return unit;
}

namespace {

/// The order's rolls with what their labels say; `more` narrows or orders them.
QString writeOffsStatement(const QString &of, const QString &more)
{
    return DBLocal_SQL(uR"(
        SELECT OF_MALHA_BAIXAS.NUM_OF, OF_MALHA_BAIXAS.DATA, OF_MALHA_BAIXAS.NUM_BAIXA, OF_MALHA_BAIXAS.QTDE,
               OF_MALHA_BAIXAS.TURNO, OF_MALHA_BAIXAS.FUNCIONARIO, ENTIDADE.CODCLI, ENTIDADE.NOME AS NOME_CLI,
               MATERIAL.CODIGO, MATERIAL.DESCRICAO AS DESC_MAT, MAQUINA.MAQUINA, MAQUINA.DESCRICAO AS DESC_MAQUINA,
               OF_MALHA.LOTE
        FROM {OF_MALHA_BAIXAS} OF_MALHA_BAIXAS
        LEFT JOIN {OF_MALHA} OF_MALHA ON (OF_MALHA.NUM_OF = OF_MALHA_BAIXAS.NUM_OF)
        LEFT JOIN {ENTIDADE} ENTIDADE ON (ENTIDADE.CODCLI = OF_MALHA.CLIENTE)
        LEFT JOIN {MATERIAL} MATERIAL ON (MATERIAL.CODIGO = OF_MALHA.MATERIAL)
        LEFT JOIN {MAQUINA} MAQUINA ON (MAQUINA.MAQUINA = OF_MALHA.MAQUINA)
        WHERE OF_MALHA_BAIXAS.NUM_OF = )"_s,
        Aspas(of) + more);
}

} // namespace

TfmMalhaOFBaixa::TfmMalhaOFBaixa()
    : m_ui(std::make_unique<Ui::fmMalhaOFBaixa>())
    , m_order(new TTIQuery(this))
    , qryBaixas(new TTIQuery(this))
{
    fmMalhaOFBaixa = this;
}

TfmMalhaOFBaixa::~TfmMalhaOFBaixa() = default;

void TfmMalhaOFBaixa::FormCreate()
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    setEnterAsTab(true);
    setUpSearch();
    qryBaixas->setObjectName(u"qryBaixas"_s);
    qryBaixas->Describe({TField(u"QTDE"_s, TField::Type::Float).shownAs(u"0.00"_s)});
    m_ui->DBGrid->setDataSet(qryBaixas);
    BuscaBaixas(); // none yet, under their titles
    m_ui->edtOF->setFocus();
}

/// Only orders that still take rolls are offered; one without rolls takes its whole weight.
void TfmMalhaOFBaixa::setUpSearch()
{
    m_ui->PqOF->setSQL(DBLocal_SQL(uR"(
        SELECT OF_MALHA.NUM_OF, OF_MALHA.DATA, ENTIDADE.NOME, MATERIAL.DESCRICAO, OF_MALHA.KG_TOTAL,
               (KG_TOTAL - COALESCE((SELECT SUM(OFMB.QTDE)
                                     FROM {OF_MALHA_BAIXAS} OFMB
                                     WHERE OF_MALHA.NUM_OF = OFMB.NUM_OF),0)) AS SALDO
        FROM {OF_MALHA} OF_MALHA
        LEFT JOIN {ENTIDADE} ENTIDADE ON (ENTIDADE.CODCLI = OF_MALHA.CLIENTE)
        LEFT JOIN {MATERIAL} MATERIAL ON (MATERIAL.CODIGO = OF_MALHA.MATERIAL))"_s));
    m_ui->PqOF->setFilter(u"SALDO > 0"_s);
}

QString TfmMalhaOFBaixa::orderNumber() const
{
    return m_ui->edtOF->text().trimmed();
}

void TfmMalhaOFBaixa::edtOFExit()
{
    BuscaOF();
}

void TfmMalhaOFBaixa::PqOFFechaPesquisa()
{
    takeChosen(m_ui->PqOF);
    if (!m_ui->PqOF->RetornoPesquisa(u"NUM_OF"_s).isEmpty())
        BuscaOF();
}

/// Shows the order and its rolls; false when there is none of that number.
bool TfmMalhaOFBaixa::BuscaOF()
{
    const QString of = orderNumber();
    const bool found = !of.isEmpty() && Existe(u"OF_MALHA"_s, u"NUM_OF"_s, Aspas(of), nullptr);
    if (found) {
        m_order->SQL.clear();
        m_order->SQL.add(DBLocal_SQL(uR"(
            SELECT OF_MALHA.NUM_OF, OF_MALHA.DATA, OF_MALHA.CLIENTE, OF_MALHA.MATERIAL, OF_MALHA.MAQUINA,
                   OF_MALHA.KG_TOTAL, OF_MALHA.KG_ROLO, CLIENTE.NOME, MATERIAL.DESCRICAO,
                   (SELECT SUM(QTDE) FROM {OF_MALHA_BAIXAS} OF_MALHA_BAIXAS
                    WHERE OF_MALHA_BAIXAS.NUM_OF = OF_MALHA.NUM_OF) AS SALDO
            FROM {OF_MALHA} OF_MALHA
            LEFT JOIN {ENTIDADE} CLIENTE ON (OF_MALHA.CLIENTE = CLIENTE.CODCLI)
            LEFT JOIN {MATERIAL} MATERIAL ON (OF_MALHA.MATERIAL = MATERIAL.CODIGO)
            WHERE NUM_OF = )"_s,
            Aspas(of)));
        m_order->Open();
        showOrder();
    } else {
        clearOrder();
        showHint(of.isEmpty() ? QString() : u"OF não encontrada."_s);
    }
    BuscaBaixas();
    return found;
}

void TfmMalhaOFBaixa::showOrder()
{
    // The column SALDO holds what was written off.
    const OrderBalance balance{m_order->AsFloat(u"KG_TOTAL"_s), m_order->AsFloat(u"SALDO"_s)};
    const QString machine = m_order->AsString(u"MAQUINA"_s);
    m_ui->edtData->setDate(m_order->AsDate(u"DATA"_s));
    showText(m_ui->edtCliente, m_order->AsString(u"CLIENTE"_s));
    showText(m_ui->edtDescCliente, m_order->AsString(u"NOME"_s));
    showText(m_ui->edtMaterial, m_order->AsString(u"MATERIAL"_s));
    showText(m_ui->edtDescMaterial, m_order->AsString(u"DESCRICAO"_s));
    showText(m_ui->edtMaquina, machine);
    showText(m_ui->edtDescMaq, Busca_Valor(u"MAQUINA"_s, u"MAQUINA"_s, u"DESCRICAO"_s, Aspas(machine)));
    m_ui->edtKGTotal->setValue(balance.planned);
    m_ui->edtKGRolo->setValue(m_order->AsFloat(u"KG_ROLO"_s));
    m_ui->edtSaldo->setValue(balance.open());
    showHint(balance.open() > 0 ? QString() : u"A OF não tem saldo a baixar."_s);
}

void TfmMalhaOFBaixa::clearOrder()
{
    for (QLineEdit *text : {m_ui->edtCliente, m_ui->edtDescCliente, m_ui->edtMaterial, m_ui->edtDescMaterial,
             m_ui->edtMaquina, m_ui->edtDescMaq})
        text->clear();
    m_ui->edtData->setDate({});
    for (TCurrencyEdit *number : {m_ui->edtKGTotal, m_ui->edtKGRolo, m_ui->edtSaldo})
        number->setValue(0);
}

void TfmMalhaOFBaixa::showHint(const QString &text)
{
    m_ui->lbAviso->setText(text);
}

void TfmMalhaOFBaixa::BuscaBaixas()
{
    qryBaixas->SQL.clear();
    qryBaixas->SQL.add(writeOffsStatement(orderNumber(), u" ORDER BY OF_MALHA_BAIXAS.NUM_BAIXA"_s));
    qryBaixas->Open();
    qryBaixas->Last(); // the roll just made
    double sum = 0;
    const int weight = qryBaixas->fieldIndex(u"QTDE"_s);
    for (int row = 0; row < qryBaixas->rowCount(); ++row)
        sum = Format::rounded(sum + qryBaixas->cell(row, weight).toDouble(), 3);
    m_ui->EdtTotBaixado->setValue(sum);
}

void TfmMalhaOFBaixa::DBGridTitleClick()
{
    m_ui->DBGrid->sortBy(m_ui->DBGrid->titleField());
}

void TfmMalhaOFBaixa::btnBaixaClick()
{
    if (!Acessa(className(), u'A', u"0"_s, {}) || !BuscaOF() || m_ui->edtSaldo->value() <= 0)
        return;
    auto *dialog = qobject_cast<TForm *>(Carrega_Form(u"qenMalharia"_s, u"TfmBaixaOF"_s, {}, true, false));
    if (!dialog)
        return;
    dialog->setProperty("NumeroOF", orderNumber());
    dialog->setProperty("Saldo", m_ui->edtSaldo->value());
    dialog->setProperty("ProximaBaixa", proxima_baixa());
    dialog->setProperty("Cliente", m_ui->edtCliente->text());
    dialog->setProperty("Material", m_ui->edtMaterial->text());
    dialog->setProperty("Maquina", m_ui->edtMaquina->text());
    dialog->ShowModal();
    BuscaOF();
}

QString TfmMalhaOFBaixa::proxima_baixa() const
{
    return RollRegister(database()).Proxima_baixa(orderNumber());
}

void TfmMalhaOFBaixa::BtExcluirClick()
{
    if (!Acessa(className(), u'E', u"0"_s, {}) || qryBaixas->IsEmpty() || !Messages::askDelete(this))
        return;
    run([this] { RollRegister(database()).Estorna_baixa(Roll::in(*qryBaixas), u"BAIXA OF"_s); });
    BuscaOF(); // also what another station did meanwhile
}

void TfmMalhaOFBaixa::Imprimir1Click()
{
    if (qryBaixas->IsEmpty())
        return;
    const Roll marked = Roll::in(*qryBaixas);
    TTIQuery roll;
    roll.SQL.add(writeOffsStatement(marked.of, u" AND OF_MALHA_BAIXAS.NUM_BAIXA = "_s + Aspas(marked.number)));
    roll.Open();
    RollLabelYarn yarn(marked.of, roll.AsString(u"CODIGO"_s));
    ReportCall call;
    call.name = u"WEtqBaiMal"_s;
    call.form = this;
    call.dataSets = {{u"qryBaixas"_s, &roll}};
    yarn.addTo(call);
    call.parameters = {
        {u"OPERADOR"_s, Busca_Valor(u"PESSOAL"_s, u"CODIGO"_s, u"NOME"_s, Aspas(roll.AsString(u"FUNCIONARIO"_s)))}};
    call.preview = false; // a label is printed at once
    Chama_Relatorio(call);
}

void TfmMalhaOFBaixa::BtSaidaClick()
{
    close();
}
