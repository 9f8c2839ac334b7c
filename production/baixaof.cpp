// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_baixaof.h"

#include "production/baixaof.h"

#include "module/host_services/clock.h"
#include "module/host_services/database.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "module/look.h"
#include "module/messages.h"
#include "module/package.h"
#include "production/clientyarn.h"
#include "production/itemstock.h"
#include "production/rollregister.h"
#include "production/weighing.h"
#include "production/writeoffrules.h"

#include <QKeyEvent>

using namespace Funcoes;
using namespace Qt::StringLiterals;

QPointer<TfmBaixaOF> fmBaixaOF;

Unit &Baixaof::unit()
{
    static Unit unit = Unit::of<TfmBaixaOF>(u"Baixa de OF"_s);
    return unit;
}

namespace {

constexpr ScaleReader::Reading scaleReading{.maxCharacters = 40, .terminator = '\n', .times = 2};

} // namespace

TfmBaixaOF::TfmBaixaOF()
    : m_ui(std::make_unique<Ui::fmBaixaOF>())
    , Qry(new TTIQuery(this))
{
    fmBaixaOF = this;
}

TfmBaixaOF::~TfmBaixaOF() = default;

void TfmBaixaOF::FormCreate()
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    setEnterAsTab(true);
    m_weighing = std::make_unique<Weighing>(this, m_ui->edtKGTotal, m_ui->lbBalanca);
    Qry->setObjectName(u"Qry"_s);
    Qry->Describe({TField(u"QTDE"_s, TField::Type::Float).shownAs(u"0.00"_s)});
    m_ui->DBGrid->setDataSet(Qry);
    m_ui->PqFunc->setFilter(u"ATIVO = 'S'"_s);
    m_ui->edtData->setDate(Clock::today());
}

void TfmBaixaOF::FormShow()
{
    m_number = WriteOffRules::padded(m_number);
    showOrder();
    BuscaBaixas();
    m_ui->edtKGTotal->setFocus();
}

void TfmBaixaOF::showOrder()
{
    const auto show = [](QLineEdit *code, QLineEdit *text, const QString &value, const QString &table,
                          const QString &key, const QString &column) {
        showText(code, value);
        showText(text, value.isEmpty() ? QString() : Busca_Valor(table, key, column, Aspas(value)));
    };
    showText(m_ui->edtOF, m_of);
    showText(m_ui->edtBaixa, m_of.isEmpty() ? QString() : m_number);
    show(m_ui->edtCliente, m_ui->edtDescCliente, m_client, u"ENTIDADE"_s, u"CODCLI"_s, u"NOME"_s);
    show(m_ui->edtMaterial, m_ui->edtDescMaterial, m_fabric, u"MATERIAL"_s, u"CODIGO"_s, u"DESCRICAO"_s);
    show(m_ui->edtMaquina, m_ui->edtDescMaq, m_machine, u"MAQUINA"_s, u"MAQUINA"_s, u"DESCRICAO"_s);
    showBalance(m_balance);
}

void TfmBaixaOF::showBalance(double kg)
{
    m_balance = kg;
    m_ui->edtSaldo->setValue(kg);
}

void TfmBaixaOF::BuscaBaixas()
{
    Qry->SQL.clear();
    Qry->SQL.add(DBLocal_SQL(
        u"SELECT NUM_OF, NUM_BAIXA, DATA, TURNO, FUNCIONARIO, QTDE FROM {OF_MALHA_BAIXAS} WHERE NUM_OF = "_s,
        Aspas(m_of) + u" ORDER BY NUM_BAIXA"_s));
    Qry->Open();
    Qry->Last();
    m_ui->EdtTotRolos->setValue(Qry->rowCount());
}

void TfmBaixaOF::EdtCodFunChange()
{
    describe(m_ui->PqFunc);
    const QString worker = m_ui->EdtCodFun->text().trimmed();
    const QString shift =
        worker.isEmpty() ? QString() : Busca_Valor(u"PESSOAL"_s, u"CODIGO"_s, u"TURNO"_s, Aspas(worker));
    if (!shift.isEmpty())
        m_ui->edtTurno->setText(shift);
}

void TfmBaixaOF::EdtCodFunExit()
{
    if (m_ui->edtTurno->text().trimmed().isEmpty()) // one that was typed stays
        EdtCodFunChange();
}

Roll TfmBaixaOF::rollTyped() const
{
    Roll roll;
    roll.of = m_of;
    roll.day = m_ui->edtData->date().isValid() ? m_ui->edtData->date() : Clock::today();
    roll.shift = m_ui->edtTurno->text().trimmed();
    roll.worker = m_ui->EdtCodFun->text().trimmed();
    // The desk records two decimals: what stock and balance grow by is what the register shows.
    roll.kg = Format::rounded(m_ui->edtKGTotal->value(), 2);
    return roll;
}

void TfmBaixaOF::SbConfirmarClick()
{
    if (m_of.isEmpty()) {
        refuse(u"Abra esta tela a partir da baixa de uma OF. Impossível Continuar."_s);
        return;
    }
    Roll roll = rollTyped();
    if (!Valida_Dados(roll))
        return;
    bool agreed = false;
    do { // once more when another station took of the balance while the question stood
        agreed = WriteOffRules::isOverProduction(roll.kg, m_balance);
        if (agreed && !mayOverproduce())
            return;
    } while (!BaixaOF(roll, agreed));
    run(afterWriting(roll, [&] {
        GeraLog(u"BAIXA OF MALHARIA"_s,
            u"BAIXA DA OF "_s + roll.of + u" PESO "_s + WriteOffRules::logged(roll.kg) + u" NUM.BAIXA: "_s
                + roll.number,
            olBaixa, roll.of);
    }));
    close();
}

bool TfmBaixaOF::Valida_Dados(const Roll &roll)
{
    if (Busca_Valor(u"PESSOAL"_s, u"CODIGO"_s, u"ATIVO"_s, Aspas(roll.worker)) != u"S"_s) {
        refuse(u"Funcionário sem permissão. Impossível Continuar."_s, m_ui->EdtCodFun);
        return false;
    }
    if (roll.shift.isEmpty() || !Existe(u"TURNO"_s, u"TURNO"_s, Aspas(roll.shift))) {
        refuse(u"Turno inválido."_s, m_ui->edtTurno);
        return false;
    }
    if (m_ui->edtData->hasInvalidText()) {
        refuse(u"Data Inválida. Impossível Continuar."_s, m_ui->edtData);
        return false;
    }
    if (roll.kg <= 0) {
        m_weighing->showHint(u"Informe o peso do rolo."_s, true);
        m_ui->edtKGTotal->setFocus();
        return false;
    }
    if (!SaldoEstoqueFio(roll)) {
        refuse(u"Estoque de fio Insuficiente. Impossível Continuar."_s, m_ui->edtKGTotal);
        return false;
    }
    return true;
}

/// Whether the client's yarn covers the roll; beside the weight stands what is missing.
bool TfmBaixaOF::SaldoEstoqueFio(const Roll &roll)
{
    const std::optional<YarnStock::Shortage> shortage = ClientYarn(database(), m_client).shortageFor(m_fabric, roll.kg);
    if (!shortage)
        return true;
    m_weighing->showHint(
        u"Fio %1: faltam %2 kg."_s.arg(shortage->yarn, Format::number(shortage->kg, u",0.000"_s)), true);
    return false;
}

bool TfmBaixaOF::mayOverproduce()
{
    return Messages::ask(this, u"OF está sendo baixada com quantidade superior a programada. Deseja continuar?"_s)
        && Acessa(u"TfmMalhaOFBaixa"_s, u'A', u"1"_s, {});
}

/// Numbers the roll and writes it, with a plan that grows where that was agreed to. False, with nothing written, when
/// by now it is more than was agreed to.
bool TfmBaixaOF::BaixaOF(Roll &roll, bool overProductionAgreed)
{
    Save save(database());
    RollRegister rolls(database());
    if (!rolls.lock(roll.of))
        throw EDatabaseError(EDatabaseError::Category::Conflict, {}, u"A OF não existe mais."_s, {});
    const double open = rolls.balance(roll.of).open();
    const bool overProduction = WriteOffRules::isOverProduction(roll.kg, open);
    if (overProduction && !overProductionAgreed) {
        showBalance(open);
        return false;
    }
    if (overProduction)
        rolls.planFor(roll.of, roll.kg);
    roll.number = rolls.numberFor(roll.of, m_number);
    rolls.insert(roll);
    if (m_defectsOpened && roll.number != m_number)
        rolls.moveDefects(roll.of, m_number, roll.number);
    ItemStock(database()).GravaEstoque(roll);
    save.CommitRetaining();
    return true;
}

void TfmBaixaOF::SbDesistirClick()
{
    close();
}

void TfmBaixaOF::BitBtn1Click()
{
    if (m_of.isEmpty())
        return;
    auto *defects = qobject_cast<TForm *>(Carrega_Form(u"qenMalharia"_s, u"TfmCadDefMalha"_s, {}, true, false));
    if (!defects)
        return;
    defects->setProperty("NumeroOF", m_of);
    defects->setProperty("Rolo", m_number.toInt());
    m_defectsOpened = true;
    defects->ShowModal();
}

bool TfmBaixaOF::FormKeyDown(QKeyEvent *event)
{
    if (event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_F5)
        m_weighing->read(scaleReading);
    else if (event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_F10)
        m_weighing->setUp();
    else
        return TForm::FormKeyDown(event);
    return true;
}
