// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_ordemfab.h"

#include "production/ordemfab.h"

#include "module/host_services/busy.h"
#include "module/host_services/clientdataset.h"
#include "module/host_services/clock.h"
#include "module/host_services/database.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "module/host_services/table.h"
#include "module/labellist.h"
#include "module/look.h"
#include "module/messages.h"
#include "module/package.h"
#include "production/rollregister.h"

using namespace Funcoes;
using namespace Qt::StringLiterals;

QPointer<TfmMalhaOF> fmMalhaOF;

Unit &Ordemfab::unit()
{
    static Unit unit = Unit::of<TfmMalhaOF>(u"Ordem de Fabricação"_s);
    return unit;
}

namespace {

const QString heldByItsRolls = u"OF possui baixas. Para excluir a OF é necessário estornar as baixas."_s;

/// A stock item that is not switched off; an empty flag is an active one.
QString activeItem(const QString &alias)
{
    return u"(%1.ATIVO = 'S' OR %1.ATIVO IS NULL)"_s.arg(alias);
}

} // namespace

TfmMalhaOF::TfmMalhaOF()
    : m_ui(std::make_unique<Ui::fmMalhaOF>())
    , tbOF_Malha(new TTITable(this))
    , m_consult(new TTIQuery(this))
    , TbSaldo(new TClientDataSet(this))
    , m_yarns(new TClientDataSet(this))
    , m_mode(YarnReservation::modeOf(BuscaParametro(u"MAL"_s, 80)))
{
    fmMalhaOF = this;
}

TfmMalhaOF::~TfmMalhaOF() = default;

void TfmMalhaOF::FormCreate()
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    setEnterAsTab(true);
    AbreTabelas({u"tbMateriais"_s, u"tbEntidade"_s, u"tbMaquina"_s});
    createYarnGrids();
    m_ui->DBGrid1->setDataSet(m_consult);
    m_ui->edtDe->setDate(Clock::today().addMonths(-1));
    m_ui->edtAte->setDate(Clock::today());
    openTable(tbOF_Malha, u"OF_MALHA"_s, u"NUM_OF"_s);
    m_ui->PageControl->setCurrentWidget(m_ui->TabOrdem);
    connect(m_ui->PageControl, &QTabWidget::currentChanged, this, [this] { run([this] { showPage(); }); });
    // The handlers are tied after this; what depends on the record is shown here once.
    edtOFChange();
    edtClienteChange();
    edtMaterialChange();
}

void TfmMalhaOF::showPage()
{
    const QWidget *page = m_ui->PageControl->currentWidget();
    // The bar acts on the order, so only where it is seen; "Consulta" has buttons of its own.
    m_ui->Barras->setEnabled(page != m_ui->TabConsulta);
    if (page == m_ui->TabFios)
        refreshYarn();
}

void TfmMalhaOF::Bar_Confirma(bool editing)
{
    TRecordForm::Bar_Confirma(editing);
    enableTicks(editing);
    if (!editing) {
        m_ui->edtOF->setEnabled(true);
        m_ui->edtMaterial->setEnabled(true);
        m_ui->PqMaterial->setEnabled(true);
    }
    m_ui->PageControl->setTabEnabled(m_ui->PageControl->indexOf(m_ui->TabConsulta), !editing);
    m_ui->PageControl->setCurrentWidget(m_ui->TabOrdem);
}

TRecordForm::LogTexts TfmMalhaOF::logTexts() const
{
    return {u"ORDEM FAB. MAL."_s, u"INCLUSAO DA OF MAL. NR.: "_s, u"ALTERACAO DA OF MAL. NR.: "_s,
        u"EXCLUSAO DA OF MAL. NR.: "_s};
}

QString TfmMalhaOF::recordNumber() const
{
    return tbOF_Malha->AsString(u"NUM_OF"_s);
}

void TfmMalhaOF::newRecord()
{
    m_acceptedMaterial.clear();
    m_fabricBefore.clear();
    m_yarnOf.reset();
    tbOF_Malha->setValue(u"NUM_OF"_s, Proximo(u"OF_MALHA"_s, u"NUM_OF"_s, 6, true));
    tbOF_Malha->setValue(u"DATA"_s, Clock::today());
}

void TfmMalhaOF::startEdit()
{
    m_fabricBefore = tbOF_Malha->AsString(u"MATERIAL"_s);
    m_acceptedMaterial = m_fabricBefore;
    m_ui->edtOF->setEnabled(false);
    const bool inProduction = hasWriteOffs();
    m_ui->edtMaterial->setEnabled(!inProduction);
    m_ui->PqMaterial->setEnabled(!inProduction);
}

QWidget *TfmMalhaOF::firstField(bool inserting) const
{
    return inserting ? static_cast<QWidget *>(m_ui->edtOF) : m_ui->edtData;
}

bool TfmMalhaOF::hasWriteOffs() const
{
    return Existe(u"OF_MALHA_BAIXAS"_s, u"NUM_OF"_s, Aspas(recordNumber()));
}

void TfmMalhaOF::edtOFExit()
{
    if (tbOF_Malha->state() != TTITable::State::Insert)
        return;
    if (Existe(u"OF_MALHA"_s, u"NUM_OF"_s, Aspas(recordNumber())))
        refuse(u"Número já Cadastrado."_s, m_ui->edtOF);
}

void TfmMalhaOF::edtOFChange()
{
    Calcula_Saldo();
}

void TfmMalhaOF::showDerived()
{
    Calcula_Saldo();
    m_yarnOf.reset(); // reservations are read anew when they are looked at, or changed
    if (isEditing() || m_ui->PageControl->currentWidget() == m_ui->TabFios)
        refreshYarn();
}

void TfmMalhaOF::edtKGTotalExit()
{
    if (!isEditing())
        return;
    Calcula_Saldo();
    refreshYarn();
}

void TfmMalhaOF::Calcula_Saldo()
{
    const double produced = BuscaQtdeBaixada();
    m_ui->edtBaixado->setValue(produced);
    m_ui->edtSaldo->setValue(OrderBalance{tbOF_Malha->AsFloat(u"KG_TOTAL"_s), produced}.open());
}

double TfmMalhaOF::BuscaQtdeBaixada() const
{
    return database()
        .value(DBLocal_SQL(
            u"SELECT SUM(OFMBAIXA.QTDE) AS BAIXADO FROM {OF_MALHA_BAIXAS} OFMBAIXA WHERE OFMBAIXA.NUM_OF = "_s,
            Aspas(recordNumber())))
        .toDouble();
}

void TfmMalhaOF::edtClienteChange()
{
    describe(m_ui->PqCliente);
    m_ui->PqMaterial->setSQL(Gera_Sql());
    filterClients();
}

void TfmMalhaOF::edtClienteExit()
{
    if (!isEditing())
        return;
    if (isKnown(m_ui->PqCliente))
        refreshYarn();
    else
        refuse(u"Cliente não Existe."_s, m_ui->edtCliente);
}

/// The fabrics offered by the search: groups 150 and 15, of the chosen client alone when there is one.
QString TfmMalhaOF::Gera_Sql() const
{
    QString statement =
        DBLocal_SQL(u"SELECT CODIGO, DESCRICAO FROM {MATERIAL} MATERIAL WHERE ((GRUPO = '150') OR (GRUPO = '15'))"_s);
    const QString client = m_ui->edtCliente->text().trimmed();
    if (!client.isEmpty())
        statement += u" AND (CODCLI = "_s + Aspas(client) + u')';
    return statement;
}

void TfmMalhaOF::edtMaterialChange()
{
    showMaterial(m_ui->edtMaterial->text().trimmed());
}

void TfmMalhaOF::showMaterial(const QString &material)
{
    TTIQuery found;
    found.SQL.add(DBLocal_SQL(uR"(
        SELECT DESCRICAO, DESCRICAO2, LARGURA, GRAMATURA, MAXIMO, CONCENTRACAO, OBSERVACAO, CODCLI
        FROM {MATERIAL} WHERE CODIGO = )"_s,
        Aspas(material)));
    found.Open();
    showText(m_ui->edtDescMaterial, found.AsString(u"DESCRICAO"_s));
    showText(m_ui->edtDescricao2, found.AsString(u"DESCRICAO2"_s));
    m_ui->edtLargura->setValue(found.AsFloat(u"LARGURA"_s));
    m_ui->edtGramatura->setValue(found.AsFloat(u"GRAMATURA"_s));
    m_ui->edtMaximo->setValue(found.AsFloat(u"MAXIMO"_s));
    m_ui->edtConcentracao->setValue(found.AsFloat(u"CONCENTRACAO"_s));
    m_ui->MemoObsMaterial->setPlainText(found.AsString(u"OBSERVACAO"_s));
    m_fabricOwner = found.AsString(u"CODCLI"_s);
    filterClients();
}

/// A fabric that belongs to a client is knitted for that client, or for the one already typed.
void TfmMalhaOF::filterClients()
{
    m_ui->PqCliente->setFilter(m_fabricOwner.isEmpty() ? QString()
                                                       : u"CODCLI = "_s + Aspas(m_fabricOwner) + u" OR CODCLI = "_s
                + Aspas(m_ui->edtCliente->text().trimmed()) + u" OR CODCLI IS NULL"_s);
}

void TfmMalhaOF::edtMaterialExit()
{
    const QString material = m_ui->edtMaterial->text().trimmed();
    if (!isEditing() || material.isEmpty() || material == m_acceptedMaterial)
        return;
    if (!Existe(u"MATERIAL"_s, u"CODIGO"_s, Aspas(material))) {
        refuse(u"Material não encontrado."_s, m_ui->edtMaterial);
        return;
    }
    if (tbOF_Malha->state() == TTITable::State::Insert)
        fillDefaults(material);
    if (!acceptsActiveColours(material)) {
        m_ui->edtMaterial->setFocus();
        return;
    }
    m_acceptedMaterial = material;
    refreshYarn();
}

/// Roll weight of the fabric, and the flow of its most recent order.
void TfmMalhaOF::fillDefaults(const QString &material)
{
    tbOF_Malha->setValue(
        u"KG_ROLO"_s, Busca_Valor(u"COMP_MATERIAL"_s, u"MATERIAL"_s, u"KG_ROLO"_s, Aspas(material)).toDouble());
    const QString last = BuscaUltimaOFMat(material);
    if (!last.isEmpty())
        tbOF_Malha->setValue(u"FLUXO"_s, Busca_Valor(u"OF_MALHA"_s, u"NUM_OF"_s, u"FLUXO"_s, Aspas(last)));
}

QString TfmMalhaOF::BuscaUltimaOFMat(const QString &material) const
{
    return database()
        .value(DBLocal_SQL(
            u"SELECT MAX(OFM.NUM_OF) AS NUMOF FROM {OF_MALHA} OFM WHERE OFM.MATERIAL = "_s, Aspas(material)))
        .toString();
}

bool TfmMalhaOF::acceptsActiveColours(const QString &material)
{
    const int colours = database()
                            .value(DBLocal_SQL(uR"(
        SELECT COUNT(DISTINCT MAT_ITEN.COR) AS QT
        FROM {COMP_MATERIAL} COMP
        INNER JOIN {MAT_ITEN} MAT_ITEN
                ON (COMP.MATERIAL = MAT_ITEN.CODIGO AND COMP.COR = MAT_ITEN.COR AND )"_s,
                                activeItem(u"MAT_ITEN"_s) + u") WHERE COMP.MATERIAL = "_s + Aspas(material)))
                            .toInt();
    return colours <= 1
        || Messages::ask(this,
            u"Material contém composição com mais de uma cor ativa, podem ocorrer erros no consumo dos fios. "
            "Deseja continuar?"_s);
}

void TfmMalhaOF::edtMaquinaExit()
{
    if (isEditing() && !isKnown(m_ui->PqMaquina))
        refuse(u"Máquina inexistente."_s, m_ui->edtMaquina);
}

void TfmMalhaOF::EdtCodFluxoExit()
{
    if (isEditing() && !isKnown(m_ui->PqFluxo))
        refuse(u"Fluxo Inválido."_s, m_ui->EdtCodFluxo);
}

void TfmMalhaOF::search()
{
    m_ui->PqOF->AbrePesquisa();
}

void TfmMalhaOF::PqOFFechaPesquisa()
{
    const QString chosen = m_ui->PqOF->RetornoPesquisa(u"NUM_OF"_s);
    if (chosen.isEmpty())
        return;
    tbOF_Malha->Locate(u"NUM_OF"_s, {chosen});
    showDerived();
}

bool TfmMalhaOF::Valida_Dados()
{
    const double total = Format::rounded(tbOF_Malha->AsFloat(u"KG_TOTAL"_s), 3);
    const double roll = Format::rounded(tbOF_Malha->AsFloat(u"KG_ROLO"_s), 3);
    struct Check
    {
        bool fails;
        QString message;
        QWidget *field;
    };
    const Check checks[]{
        {roll > total, u"KG Rolo ultrapassa o peso. Impossível Continuar."_s, m_ui->edtKGRolo},
        {roll == 0, u"KG Rolo Zerado. Impossível Continuar."_s, m_ui->edtKGRolo},
        {total == 0, u"KG Total Zerado. Impossível Continuar."_s, m_ui->edtKGTotal},
        {roll < 0, u"KG Rolo Zerado. Impossível Continuar."_s, m_ui->edtKGRolo},
        {m_ui->edtMaquina->text().trimmed().isEmpty(), u"Máquina Inválida. Impossível Continuar."_s, m_ui->edtMaquina},
        {m_ui->edtMaterial->text().trimmed().isEmpty(), u"Material Inválido. Impossível Continuar."_s,
            m_ui->edtMaterial},
        {!m_ui->edtData->date().isValid(), u"Data Inválida. Impossível Continuar."_s, m_ui->edtData},
    };
    for (const Check &check : checks) {
        if (check.fails) {
            refuse(check.message, check.field);
            return false;
        }
    }
    return hasEnoughYarn();
}

void TfmMalhaOF::BitBtn1Click()
{
    if (!isEditing() || !Acessa(className(), u'A', u"1"_s, {}))
        return;
    if (BuscaQtdeBaixada() <= 0) {
        Messages::inform(this, u"OF não possui baixas para zerar o saldo."_s);
        return;
    }
    Calcula_Saldo();
    tbOF_Malha->setValue(
        u"KG_TOTAL"_s, Format::rounded(tbOF_Malha->AsFloat(u"KG_TOTAL"_s) - m_ui->edtSaldo->value(), 3));
    Calcula_Saldo();
    refreshYarn();
}

bool TfmMalhaOF::mayDelete()
{
    if (!hasWriteOffs())
        return true;
    Messages::inform(this, heldByItsRolls);
    return false;
}

void TfmMalhaOF::writeDependents()
{
    // A roll may have been written off since the change began; from the post on none can.
    const QString fabric = tbOF_Malha->AsString(u"MATERIAL"_s);
    if (!m_fabricBefore.isEmpty() && fabric != m_fabricBefore && hasWriteOffs())
        throw EQen(u"A OF já possui baixas, o material não pode mais ser alterado. Impossível Continuar."_s);
    GravaFiosBaixa();
}

void TfmMalhaOF::deleteDependents()
{
    // A roll may have been written off since the question was asked.
    if (!RollRegister(database()).lock(recordNumber()))
        throw EDatabaseError(EDatabaseError::Category::Conflict, {}, u"O registro não existe mais."_s, {});
    if (hasWriteOffs())
        throw EQen(heldByItsRolls);
    database().run(u"DELETE FROM "_s + DBLocal(u"BAIXA_FIO"_s) + u" WHERE NUMERO = "_s + Aspas(recordNumber()));
}

void TfmMalhaOF::print()
{
    TTIQuery composition;
    composition.SQL.add(DBLocal_SQL(uR"(
        SELECT DISTINCT COMP.CODIGO, MATERIAL.DESCRICAO, COMP.ROCA, COMP.ALIMENTADORES, COMP.LFA, MATERIAL.NE,
               COMP.COMP_PONTO, COMP.PERC, MAT_OBS.OBSERVACAO
        FROM {COMP_MATERIAL} COMP
        LEFT JOIN {MATERIAL} MATERIAL ON (COMP.CODIGO = MATERIAL.CODIGO)
        LEFT JOIN {MAT_OBS} MAT_OBS ON (COMP.MATERIAL = MAT_OBS.CODIGO)
        INNER JOIN {MAT_ITEN} MAT_ITEN
                ON (COMP.MATERIAL = MAT_ITEN.CODIGO AND COMP.COR = MAT_ITEN.COR AND )"_s,
        activeItem(u"MAT_ITEN"_s) + u") WHERE COMP.MATERIAL = "_s + Aspas(tbOF_Malha->AsString(u"MATERIAL"_s))));
    composition.Open();
    TClientDataSet tbItens;
    tbItens.CreateDataSet({TField(u"Numero"_s, TField::Type::Text, 8), TField(u"NR"_s, TField::Type::Text, 4)});
    const QVector<LabelList::Label> labels =
        LabelList::of(recordNumber(), tbOF_Malha->AsFloat(u"KG_TOTAL"_s), tbOF_Malha->AsFloat(u"KG_ROLO"_s));
    for (const LabelList::Label &label : labels) {
        tbItens.Append();
        tbItens.setValue(u"Numero"_s, label.of);
        tbItens.setValue(u"NR"_s, label.number);
        tbItens.Post();
    }
    tbItens.First();
    ReportCall call;
    call.name = u"WMalLote"_s;
    call.form = this;
    call.dataSets = {{u"tbOF_Malha"_s, tbOF_Malha}, {u"QryComposicao"_s, &composition}, {u"tbItens"_s, &tbItens}};
    call.parameters = {{u"NOME_CLIENTE"_s, m_ui->edtDescCliente->text()},
        {u"DESC_MATERIAL"_s, m_ui->edtDescMaterial->text()}, {u"DESC_MAQUINA"_s, m_ui->edtDescMaquina->text()},
        {u"DESC_FLUXO"_s, m_ui->EdtDescFluxo->text()}, {u"LARGURA"_s, m_ui->edtLargura->value()},
        {u"GRAMATURA"_s, m_ui->edtGramatura->value()}};
    Chama_Relatorio(call);
}
