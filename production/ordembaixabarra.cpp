// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_ordembaixabarra.h"

#include "production/ordembaixabarra.h"

#include "module/host_services/clock.h"
#include "module/host_services/database.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "module/look.h"
#include "module/messages.h"
#include "module/package.h"
#include "production/rolllabel.h"
#include "production/rollregister.h"
#include "production/weighing.h"
#include "production/writeoffrules.h"

#include <QKeyEvent>

using namespace Funcoes;
using namespace Qt::StringLiterals;

QPointer<TfmMalhaOFBaixaBarra> fmMalhaOFBaixaBarra;

Unit &Ordembaixabarra::unit()
{
    static Unit unit = Unit::of<TfmMalhaOFBaixaBarra>(u"Baixa Ordem de Fabricação"_s);
    return unit;
}

namespace {

const QString unknownOrder = u"OF não encontrada."_s;

constexpr ScaleReader::Reading scaleReading{.maxCharacters = 30, .terminator = '\r'};

/// The order with its client, fabric and machine; `columns` are added to those of the header.
QString orderStatement(const QString &columns, const QString &of)
{
    return DBLocal_SQL(uR"(
        SELECT OF_MALHA.NUM_OF, OF_MALHA.DATA, OF_MALHA.CLIENTE, OF_MALHA.MATERIAL, OF_MALHA.MAQUINA,
               CLIENTE.NOME, MATERIAL.DESCRICAO, MAQUINA.DESCRICAO AS DESC_MAQ, )"_s)
        + columns
        + DBLocal_SQL(uR"(
        FROM {OF_MALHA} OF_MALHA
        LEFT JOIN {ENTIDADE} CLIENTE ON (OF_MALHA.CLIENTE = CLIENTE.CODCLI)
        LEFT JOIN {MATERIAL} MATERIAL ON (OF_MALHA.MATERIAL = MATERIAL.CODIGO)
        LEFT JOIN {MAQUINA} MAQUINA ON (OF_MALHA.MAQUINA = MAQUINA.MAQUINA)
        WHERE OF_MALHA.NUM_OF = )"_s,
            Aspas(of));
}

} // namespace

TfmMalhaOFBaixaBarra::TfmMalhaOFBaixaBarra()
    : m_ui(std::make_unique<Ui::fmMalhaOFBaixaBarra>())
    , m_order(new TTIQuery(this))
    , qryBaixas(new TTIQuery(this))
{
    fmMalhaOFBaixaBarra = this;
}

TfmMalhaOFBaixaBarra::~TfmMalhaOFBaixaBarra() = default;

void TfmMalhaOFBaixaBarra::FormCreate()
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    setEnterAsTab(true);
    m_weighing = std::make_unique<Weighing>(this, m_ui->EdtPesoRolo, m_ui->lbBalanca);
    qryBaixas->setObjectName(u"qryBaixas"_s);
    qryBaixas->Describe({TField(u"QTDE"_s, TField::Type::Float).shownAs(u",0.000"_s)});
    m_ui->DBGrid->setDataSet(qryBaixas);
    LimpaTela();
    m_ui->EdtTurno->setFocus();
}

QString TfmMalhaOFBaixaBarra::orderNumber() const
{
    return m_ui->edtOF->text().trimmed();
}

void TfmMalhaOFBaixaBarra::DtBaixaEnter()
{
    showToday();
}

void TfmMalhaOFBaixaBarra::showToday()
{
    m_dayShown = Clock::today();
    m_ui->DtBaixa->setDate(m_dayShown);
}

void TfmMalhaOFBaixaBarra::edtOFExit()
{
    if (m_ui->DtBaixa->date() == m_dayShown) // not typed: the shift may have gone on over midnight
        showToday();
    if (orderNumber().isEmpty()) {
        clearOrder();
        return;
    }
    const bool found = BuscaOFMalha();
    BuscaBaixasMalha();
    const QPointer<TfmMalhaOFBaixaBarra> alive(this);
    m_weighing->read(scaleReading);
    if (alive && !found)
        m_weighing->showHint(unknownOrder, true);
}

bool TfmMalhaOFBaixaBarra::BuscaOFMalha()
{
    m_order->SQL.clear();
    m_order->SQL.add(orderStatement(DBLocal_SQL(uR"(OF_MALHA.KG_TOTAL, OF_MALHA.KG_ROLO,
               (SELECT SUM(QTDE) AS QTDE FROM {OF_MALHA_BAIXAS} OF_MALHA_BAIXAS
                WHERE OF_MALHA_BAIXAS.NUM_OF = OF_MALHA.NUM_OF) AS BAIXAS)"_s),
        orderNumber()));
    m_order->Open();
    if (m_order->IsEmpty()) {
        clearOrder();
        return false;
    }
    const OrderBalance balance{m_order->AsFloat(u"KG_TOTAL"_s), m_order->AsFloat(u"BAIXAS"_s)};
    m_ui->edtData->setDate(m_order->AsDate(u"DATA"_s));
    showText(m_ui->edtCliente, m_order->AsString(u"CLIENTE"_s));
    showText(m_ui->edtDescCliente, m_order->AsString(u"NOME"_s));
    showText(m_ui->edtMaterial, m_order->AsString(u"MATERIAL"_s));
    showText(m_ui->edtDescMaterial, m_order->AsString(u"DESCRICAO"_s));
    showText(m_ui->EdtCodMaq, m_order->AsString(u"MAQUINA"_s));
    showText(m_ui->EdtDescMaq, m_order->AsString(u"DESC_MAQ"_s));
    m_ui->edtKGTotal->setValue(balance.planned);
    m_ui->EdtPesoBai->setValue(balance.produced);
    m_ui->EdtSaldo->setValue(balance.open());
    m_ui->EdtKGRolo->setValue(m_order->AsFloat(u"KG_ROLO"_s));
    return true;
}

void TfmMalhaOFBaixaBarra::BuscaBaixasMalha()
{
    qryBaixas->SQL.clear();
    qryBaixas->SQL.add(DBLocal_SQL(uR"(
        SELECT OFMALHAB.NUM_OF, OFMALHA.MATERIAL, MATERIAL.DESCRICAO, OFMALHAB.DATA, OFMALHAB.HORA, OFMALHAB.QTDE,
               OFMALHAB.TURNO, OFMALHAB.FUNCIONARIO, OFMALHAB.NUM_BAIXA, OFMALHA.LOTE, MATERIAL.MAXIMO,
               MATERIAL.LARGURA, MATERIAL.GRAMATURA, MATERIAL.CONCENTRACAO
        FROM {OF_MALHA_BAIXAS} OFMALHAB
        INNER JOIN {OF_MALHA} OFMALHA ON (OFMALHA.NUM_OF = OFMALHAB.NUM_OF)
        INNER JOIN {MATERIAL} MATERIAL ON (MATERIAL.CODIGO = OFMALHA.MATERIAL)
        WHERE OFMALHAB.NUM_OF = )"_s,
        Aspas(orderNumber()) + u" ORDER BY OFMALHAB.NUM_BAIXA"_s));
    qryBaixas->Open();
    qryBaixas->Last(); // the roll just made is the one that gets defects, or is taken back
}

/// The picture comes when order and rolls are shown: its folder is searched while the scale is waited for.
void TfmMalhaOFBaixaBarra::edtMaterialChange()
{
    QMetaObject::invokeMethod(this, &TfmMalhaOFBaixaBarra::showPicture, Qt::QueuedConnection);
}

void TfmMalhaOFBaixaBarra::showPicture()
{
    const QString material = m_ui->edtMaterial->text();
    const QString file = material.isEmpty() ? QString() : BuscaArquivo(material, {}, tpImagemMaterial);
    m_ui->Image->setFile(file);
}

void TfmMalhaOFBaixaBarra::btnBaixaClick()
{
    if (!Acessa(className(), u'A', u"0"_s, {}))
        return;
    const QString of = orderNumber();
    if (of.isEmpty() || !Existe(u"OF_MALHA"_s, u"NUM_OF"_s, Aspas(of)))
        return;
    Roll roll;
    roll.of = of;
    roll.kg = Format::rounded(m_ui->EdtPesoRolo->value(), 3);
    if (roll.kg <= 0)
        return;
    if (WriteOffRules::exceeds(roll.kg, m_ui->EdtSaldo->value())) {
        refuse(u"Quantidade maior que o Saldo."_s, m_ui->EdtPesoRolo);
        return;
    }
    if (!Messages::ask(this, u"Peso da Baixa "_s + Format::number(roll.kg, u"0.00"_s) + u'?', {}, true))
        return;
    BaixaOFMalha(roll);
    run(afterWriting(roll, [&] { logRoll(roll); }));
    run(afterWriting(roll, [&] {
        BuscaBaixasMalha();
        if (BuscaParametro(u"MAL"_s, 50) == u"S"_s)
            printLabel(roll, false);
    }));
    LimpaTela();
    m_ui->edtOF->setFocus();
    m_ui->edtOF->selectAll();
}

void TfmMalhaOFBaixaBarra::logRoll(const Roll &roll)
{
    GeraLog(u"BAIXA OF BARRA"_s,
        u"BAIXA OF MALHARIA NR.: "_s + roll.of + u" QTDE.: "_s + WriteOffRules::logged(roll.kg) + u" NUM.BAIXA: "_s
            + roll.number,
        olBaixa, roll.of);
}

/// Numbers the roll and writes it; ends the confirmation when a value is missing or the order has no room for it.
void TfmMalhaOFBaixaBarra::BaixaOFMalha(Roll &roll)
{
    roll.shift = m_ui->EdtTurno->text().trimmed();
    roll.worker = m_ui->EdtCodOper->text().trimmed();
    if (roll.shift.isEmpty()) {
        refuse(u"Especifique um Turno."_s, m_ui->EdtTurno);
        throw EAbort();
    }
    if (roll.worker.isEmpty()) {
        refuse(u"Especifique um Operador."_s, m_ui->EdtCodOper);
        throw EAbort();
    }
    if (m_ui->DtBaixa->hasInvalidText()) {
        refuse(u"Data Inválida. Impossível Continuar."_s, m_ui->DtBaixa);
        throw EAbort();
    }
    const QDateTime now = Clock::now();
    const QDate given = m_ui->DtBaixa->date().isValid() ? m_ui->DtBaixa->date() : now.date();
    const bool night = Busca_Valor(u"TURNO"_s, u"TURNO"_s, u"NOTURNO"_s, Aspas(roll.shift)) == u"S"_s;
    roll.day = WriteOffRules::dayOf(given, night, now.time());
    roll.time = now.time();
    bool known = false;
    {
        Save save(database());
        RollRegister rolls(database());
        // What the screen shows may be old: another station writes off on the same order, or has deleted it.
        known = rolls.lock(roll.of);
        if (known && !WriteOffRules::exceeds(roll.kg, rolls.balance(roll.of).open())) {
            roll.number = rolls.Proxima_baixa(roll.of);
            rolls.insert(roll);
            save.CommitRetaining();
            return;
        }
    }
    reloadOrder();
    if (!known) {
        m_weighing->showHint(unknownOrder, true);
        throw EAbort();
    }
    refuse(u"Quantidade maior que o Saldo."_s, m_ui->EdtPesoRolo);
    throw EAbort();
}

void TfmMalhaOFBaixaBarra::reloadOrder()
{
    BuscaOFMalha();
    BuscaBaixasMalha();
}

void TfmMalhaOFBaixaBarra::LimpaTela()
{
    clearOrder();
    m_ui->EdtPesoRolo->setValue(0);
    m_ui->EdtCodOper->clear();
    showToday();
    m_weighing->showHint({});
}

void TfmMalhaOFBaixaBarra::clearOrder()
{
    for (QLineEdit *text : {m_ui->edtCliente, m_ui->edtDescCliente, m_ui->edtMaterial, m_ui->edtDescMaterial,
             m_ui->EdtCodMaq, m_ui->EdtDescMaq})
        text->clear();
    m_ui->edtData->setDate({});
    for (TCurrencyEdit *number : {m_ui->edtKGTotal, m_ui->EdtKGRolo, m_ui->EdtPesoBai, m_ui->EdtSaldo})
        number->setValue(0);
}

void TfmMalhaOFBaixaBarra::BtExcluirClick()
{
    if (!Acessa(className(), u'E', u"0"_s, {}) || qryBaixas->IsEmpty() || !Messages::askDelete(this))
        return;
    run([this] { RollRegister(database()).Estorna_baixa(Roll::in(*qryBaixas), u"BAIXA OF BARRA"_s); });
    reloadOrder(); // also what another station did meanwhile
}

void TfmMalhaOFBaixaBarra::BitBtn2Click()
{
    if (!Messages::ask(this, u"Deseja alterar o peso da OF para zerar o saldo restante?"_s))
        return;
    if (!Acessa(u"TfmMalhaOFBaixaBarra"_s, u'A', u"1"_s, {}))
        return;
    const QString of = orderNumber();
    double produced = 0;
    bool found = false;
    if (!of.isEmpty()) {
        Save save(database());
        RollRegister rolls(database());
        found = rolls.lock(of);
        if (found) {
            rolls.closeAtProduced(of);
            produced = rolls.balance(of).produced;
            save.CommitRetaining();
        }
    }
    if (!found) {
        Messages::inform(this, u"Sem dados para fazer acerto."_s);
        return;
    }
    run(following(u"O peso da OF %1 está acertado."_s.arg(of), [&] {
        GeraLog(u"BAIXA_MALHARIA"_s, u"ALTERADO PESO DA OF "_s + of + u" PARA "_s + WriteOffRules::logged(produced),
            olAlteracao, of);
    }));
    Messages::inform(this, u"Acerto do peso da OF efetuado."_s);
    reloadOrder();
}

void TfmMalhaOFBaixaBarra::BitBtn1Click()
{
    if (qryBaixas->IsEmpty())
        return;
    auto *defects = qobject_cast<TForm *>(Carrega_Form(u"qenMalharia"_s, u"TfmCadDefMalha"_s, {}, true, false));
    if (!defects)
        return;
    defects->setProperty("NumeroOF", qryBaixas->AsString(u"NUM_OF"_s));
    defects->setProperty("Rolo", qryBaixas->AsString(u"NUM_BAIXA"_s).toInt());
    defects->ShowModal();
}

void TfmMalhaOFBaixaBarra::BtnImprimirClick()
{
    if (m_ui->edtMaterial->text().isEmpty())
        return;
    Roll weighed;
    weighed.of = orderNumber();
    weighed.kg = m_ui->EdtPesoRolo->value();
    // Nothing on the scale: the label of a roll that has one already.
    const bool again = weighed.kg <= 0 && !qryBaixas->IsEmpty();
    printLabel(again ? Roll::in(*qryBaixas) : weighed, again);
}

/// A roll that is not written off yet has a label without a number.
void TfmMalhaOFBaixaBarra::printLabel(const Roll &roll, bool again)
{
    TTIQuery header;
    header.SQL.add(orderStatement(PermanecePonto(roll.kg) + u" AS PESO_BALANCA"_s, roll.of));
    header.Open();
    RollLabelYarn yarn(roll.of, header.AsString(u"MATERIAL"_s));
    const bool graphic = m_ui->RgGrafico->isChecked();
    ReportCall call;
    call.name = graphic ? u"WEtqBarra"_s : u"TEtqBarra"_s;
    call.kind = graphic ? ReportCall::Kind::Graphic : ReportCall::Kind::Text;
    call.form = this;
    call.dataSets = {{u"QryOF"_s, &header}};
    yarn.addTo(call);
    call.parameters = {{u"NUM_BAIXA"_s, roll.number}, {u"VIA"_s, again ? u"2ª VIA"_s : QString()}};
    call.unknownFunction = RollLabelYarn::answer;
    call.preview = false; // a label is printed at once
    Chama_Relatorio(call);
}

void TfmMalhaOFBaixaBarra::BtSaidaClick()
{
    close();
}

bool TfmMalhaOFBaixaBarra::FormKeyDown(QKeyEvent *event)
{
    if (event->key() != Qt::Key_F10 || event->modifiers() != Qt::NoModifier)
        return TForm::FormKeyDown(event);
    m_weighing->setUp();
    return true;
}
