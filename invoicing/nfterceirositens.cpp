// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// The lots of the inbound invoice that is on the screen: they are entered, altered, pasted and taken out in a work
// table and reach the database when the invoice is confirmed.

#include "ui_nfterceiros.h"

#include "invoicing/nfterceiros.h"

#include "invoicing/lotrules.h"
#include "invoicing/pastedlots.h"
#include "module/host_services/busy.h"
#include "module/host_services/clientdataset.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/table.h"
#include "module/messages.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QSignalBlocker>

using namespace Funcoes;
using namespace Qt::StringLiterals;

namespace {

const QString unknownMaterial = QStringLiteral("Material Inválido.");
const QString lotThereAlready = QStringLiteral("Material e Lote já cadastrado para esta Nota Fiscal.");
constexpr qsizetype faultsShown = 20; // as many lines as a box holds on a small screen

} // namespace

/// Opens the entry panel or closes it; the focus moves on before what had it goes.
void TfmNFTerceiros::Bar_Itens(bool Editing, QWidget *focus)
{
    m_itemOpen = Editing;
    m_ui->PainelItem->setEnabled(Editing);
    // The list stays where it is, and readable.
    m_ui->DBGItens->setFocusPolicy(Editing ? Qt::NoFocus : Qt::WheelFocus);
    m_ui->DBGItens->viewport()->setAttribute(Qt::WA_TransparentForMouseEvents, Editing);
    if (!Editing) {
        m_altered.reset();
        m_ui->EdtCodMaterial->setReadOnly(false);
        m_ui->EdtLote->setReadOnly(false);
        m_ui->PqMaterial->setEnabled(true);
    }
    (Editing ? m_ui->BarraItem : m_ui->BarraItens)->show();
    if (focus)
        focus->setFocus();
    (Editing ? m_ui->BarraItens : m_ui->BarraItem)->hide();
}

void TfmNFTerceiros::Limpa_Itens()
{
    for (QLineEdit *field : {m_ui->EdtCodMaterial, m_ui->EdtDescMaterial, m_ui->EdtMarca, m_ui->EdtLote})
        field->clear();
    for (TCurrencyEdit *field : {m_ui->EdtPeso, m_ui->EdtUnitario, m_ui->EdtTotal})
        field->setValue(0);
}

void TfmNFTerceiros::tbNFT_ItenAfterScroll()
{
    if (m_loading || m_itemOpen)
        return;
    tbNFT_Iten->IsEmpty() ? Limpa_Itens() : showCurrentLot();
    showTotals();
}

void TfmNFTerceiros::showCurrentLot()
{
    {
        const QSignalBlocker described(m_ui->EdtCodMaterial); // by the row itself
        showText(m_ui->EdtCodMaterial, tbNFT_Iten->AsString(u"CODIGO"_s));
    }
    showText(m_ui->EdtDescMaterial, tbNFT_Iten->AsString(u"DESCRICAO"_s));
    showText(m_ui->EdtMarca, tbNFT_Iten->AsString(u"MARCA"_s));
    showText(m_ui->EdtLote, tbNFT_Iten->AsString(u"LOTE"_s));
    m_ui->EdtPeso->setValue(tbNFT_Iten->AsFloat(u"ESTOQUE_ORIGINAL"_s));
    m_ui->EdtUnitario->setValue(tbNFT_Iten->AsFloat(u"UNITARIO"_s));
    m_ui->EdtTotal->setValue(tbNFT_Iten->AsFloat(u"VALOR"_s));
}

/// To be compared with what is printed below the client's invoice.
void TfmNFTerceiros::showTotals()
{
    const int lots = tbNFT_Iten->rowCount();
    m_ui->lbSoma->setText(
        u"%1     Quantidade: %2     Valor: %3"_s.arg(lots == 1 ? u"1 lote"_s : u"%1 lotes"_s.arg(lots),
            Format::number(tbNFT_Iten->sum(u"ESTOQUE_ORIGINAL"_s), u",0.00"_s),
            Format::number(tbNFT_Iten->sum(u"VALOR"_s), u",0.00"_s)));
}

bool TfmNFTerceiros::takesLots() const
{
    return isEditing() && m_ui->PainelItens->isEnabled() && !m_itemOpen;
}

TfmNFTerceiros::LotKey TfmNFTerceiros::currentLot() const
{
    return {tbNFT_Iten->AsString(u"CODIGO"_s), tbNFT_Iten->AsString(u"LOTE"_s)};
}

void TfmNFTerceiros::BtIIncluirClick()
{
    if (!takesLots())
        return;
    Limpa_Itens();
    if (m_lastLot) {
        m_ui->EdtCodMaterial->setText(m_lastLot->material);
        showText(m_ui->EdtMarca, m_lastLot->brand);
        m_ui->EdtUnitario->setValue(m_lastLot->price);
    }
    Bar_Itens(true, m_lastLot ? m_ui->EdtLote : m_ui->EdtCodMaterial);
}

void TfmNFTerceiros::btIAlterarClick()
{
    if (!takesLots() || tbNFT_Iten->IsEmpty())
        return;
    showCurrentLot();
    const LotKey lot = currentLot();
    // Outbound invoices quote the material and the lot.
    const bool quoted = ExisteNota(key().docto, lot.material, lot.lot);
    m_ui->EdtCodMaterial->setReadOnly(quoted);
    m_ui->EdtLote->setReadOnly(quoted);
    m_ui->PqMaterial->setEnabled(!quoted);
    tbNFT_Iten->Edit();
    m_altered = lot;
    Bar_Itens(true, quoted ? static_cast<QWidget *>(m_ui->EdtPeso) : m_ui->EdtCodMaterial);
}

void TfmNFTerceiros::DBGItensDblClick()
{
    btIAlterarClick();
}

void TfmNFTerceiros::btICancelarClick()
{
    tbNFT_Iten->Cancel();
    Bar_Itens(false, m_ui->BtIIncluir);
    tbNFT_ItenAfterScroll();
}

void TfmNFTerceiros::btIExcluirClick()
{
    if (!takesLots() || tbNFT_Iten->IsEmpty())
        return;
    const LotKey lot = currentLot();
    if (ExisteNota(key().docto, lot.material, lot.lot)) {
        Messages::inform(this, u"Material com Saída. Impossível Excluir."_s);
        return;
    }
    if (!Messages::ask(this, u"Deseja eliminar este Material?"_s))
        return;
    tbNFT_Iten->Delete();
    if (tbNFT_Iten->IsEmpty())
        Limpa_Itens();
}

void TfmNFTerceiros::refuseAndAbort(const QString &message, QWidget *atFault)
{
    refuse(message, atFault);
    throw EAbort();
}

void TfmNFTerceiros::EdtCodMaterialChange()
{
    describe(m_ui->PqMaterial);
}

/// Empty when the material may be entered with this lot. The row that is being altered is no duplicate of itself.
QString TfmNFTerceiros::materialFault(const LotKey &lot) const
{
    const auto [docto, client] = key();
    if (m_clientsOwnYarn
        && Busca_Valor(u"MATERIAL"_s, u"CODIGO"_s, u"CODCLI"_s, Aspas(lot.material), true, true) != client)
        return u"Material inválido para este cliente."_s;
    if (!Existe(u"MATERIAL"_s, u"CODIGO"_s, Aspas(lot.material)))
        return unknownMaterial;
    if (lot != m_altered
        && Existe(u"NFT_ITEN"_s, u"DOCTO,CODIGO,LOTE"_s,
            QStringList{Aspas(docto), Aspas(lot.material), Aspas(lot.lot)}.join(u',')))
        return u"Material com o Lote já existente nesta Nota Fiscal."_s;
    return {};
}

void TfmNFTerceiros::EdtCodMaterialExit()
{
    if (!m_itemOpen)
        return;
    const LotKey lot{m_ui->EdtCodMaterial->text().trimmed(), m_ui->EdtLote->text().trimmed()};
    const QString fault = materialFault(lot);
    if (fault == unknownMaterial) {
        if (!lot.material.isEmpty())
            Messages::inform(this, fault);
        m_ui->EdtCodMaterial->setFocus();
        m_ui->PqMaterial->AbrePesquisa();
        throw EAbort();
    }
    if (!fault.isEmpty())
        refuseAndAbort(fault, m_ui->EdtCodMaterial);
    describe(m_ui->PqMaterial);
}

void TfmNFTerceiros::PqMaterialFechaPesquisa()
{
    takeChosen(m_ui->PqMaterial);
}

void TfmNFTerceiros::EdtLoteExit()
{
    if (m_itemOpen)
        m_ui->EdtLote->setText(LotRules::lotOf(m_ui->EdtLote->text()));
}

void TfmNFTerceiros::computeTotal()
{
    m_ui->EdtTotal->setValue(LotRules::total(m_ui->EdtPeso->value(), m_ui->EdtUnitario->value()));
}

void TfmNFTerceiros::EdtPesoExit()
{
    if (const QString fault = LotRules::quantityFault(m_ui->EdtPeso->value()); !fault.isEmpty())
        refuseAndAbort(fault, m_ui->EdtPeso);
    computeTotal();
}

void TfmNFTerceiros::EdtUnitarioExit()
{
    if (const QString fault = LotRules::priceFault(m_ui->EdtUnitario->value()); !fault.isEmpty())
        refuseAndAbort(fault, m_ui->EdtUnitario);
    computeTotal();
}

void TfmNFTerceiros::EdtTotalExit()
{
    const double total = m_ui->EdtTotal->value();
    if (const QString fault = LotRules::totalFault(total); !fault.isEmpty())
        refuseAndAbort(fault, m_ui->EdtTotal);
    if (m_ui->EdtUnitario->value() == 0)
        m_ui->EdtUnitario->setValue(LotRules::unitPrice(total, m_ui->EdtPeso->value()));
    m_ui->btISalvar->setFocus();
}

/// The row of the work table that holds the lot, -1 for none.
int TfmNFTerceiros::rowOf(const LotKey &lot) const
{
    const int material = tbNFT_Iten->fieldIndex(u"CODIGO"_s);
    const int number = tbNFT_Iten->fieldIndex(u"LOTE"_s);
    for (int row = 0; row < tbNFT_Iten->rowCount(); ++row) {
        if (lot == LotKey{tbNFT_Iten->cell(row, material).toString(), tbNFT_Iten->cell(row, number).toString()})
            return row;
    }
    return -1;
}

/// Whether the work table has the lot in a row other than the one that is being altered.
bool TfmNFTerceiros::holdsLot(const LotKey &lot) const
{
    const int row = rowOf(lot);
    return row >= 0 && !(m_altered && row == tbNFT_Iten->row());
}

void TfmNFTerceiros::btISalvarClick()
{
    if (!m_itemOpen)
        return;
    EdtLoteExit();
    if (holdsLot({m_ui->EdtCodMaterial->text().trimmed(), m_ui->EdtLote->text()}))
        refuseAndAbort(lotThereAlready, m_ui->EdtLote);
    if (m_ui->EdtDescMaterial->text().isEmpty())
        EdtCodMaterialExit();
    EdtPesoExit();
    EdtUnitarioExit();
    EdtTotalExit();
    const Lot lot{{m_ui->EdtCodMaterial->text().trimmed(), m_ui->EdtLote->text()}, m_ui->EdtDescMaterial->text(),
        m_ui->EdtMarca->text().trimmed(), m_ui->EdtPeso->value(), m_ui->EdtUnitario->value(), m_ui->EdtTotal->value()};
    const bool altered = m_altered.has_value();
    Bar_Itens(false, m_ui->BtIIncluir);
    if (!altered) {
        m_lastLot = lot;
        tbNFT_Iten->Append();
    }
    storeLot(lot);
}

/// Into the row that is being entered or altered, which ends with it. What has happened to an altered lot since it came
/// stays; its physical quantity too, unless the quantity received is corrected.
void TfmNFTerceiros::storeLot(const Lot &lot)
{
    const auto [docto, client] = key();
    const bool corrected = tbNFT_Iten->IsNull(u"ESTOQUE_ORIGINAL"_s)
        || Format::rounded(tbNFT_Iten->AsFloat(u"ESTOQUE_ORIGINAL"_s) - lot.quantity, 3) != 0;
    for (const QString &name : {u"QTDE_DEVOL"_s, u"QTDE_BAIXA"_s}) {
        if (tbNFT_Iten->IsNull(name))
            tbNFT_Iten->setValue(name, 0.0);
    }
    tbNFT_Iten->setValue(u"CODCLI"_s, client);
    tbNFT_Iten->setValue(u"DOCTO"_s, docto);
    tbNFT_Iten->setValue(u"CODIGO"_s, lot.material);
    tbNFT_Iten->setValue(u"DESCRICAO"_s, lot.description);
    tbNFT_Iten->setValue(u"MARCA"_s, lot.brand);
    tbNFT_Iten->setValue(u"LOTE"_s, lot.lot);
    if (corrected) {
        tbNFT_Iten->setValue(u"ESTOQUE_FISICO"_s, lot.quantity);
        tbNFT_Iten->setValue(u"ESTOQUE_ORIGINAL"_s, lot.quantity);
    }
    tbNFT_Iten->setValue(u"UNITARIO"_s, lot.price);
    tbNFT_Iten->setValue(u"VALOR"_s, lot.total);
    tbNFT_Iten->Post();
}

bool TfmNFTerceiros::FormKeyDown(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Paste) && m_ui->DBGItens->hasFocus() && isEditing()) {
        pasteLots();
        return true;
    }
    // Esc gives up the lot first, and only then the invoice.
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier && m_itemOpen) {
        btICancelarClick();
        return true;
    }
    return TRecordForm::FormKeyDown(event);
}

/// By the rules that a typed lot meets.
QString TfmNFTerceiros::pastedFault(const PastedLots::Row &row) const
{
    if (!row.fault.isEmpty())
        return row.fault;
    const LotKey lot{row.material, row.lot};
    const QString material = materialFault(lot);
    if (!material.isEmpty())
        return material;
    if (holdsLot(lot))
        return lotThereAlready;
    for (const QString &fault : {LotRules::quantityFault(row.quantity), LotRules::priceFault(row.price),
             LotRules::totalFault(LotRules::total(row.quantity, row.price))}) {
        if (!fault.isEmpty())
            return fault;
    }
    return {};
}

void TfmNFTerceiros::pasteLots()
{
    if (!takesLots()) {
        refuse(u"Cliente inválido."_s, m_ui->DBCodCliente);
        return;
    }
    QStringList refused;
    int taken = 0;
    {
        const Busy busy(this);
        for (const PastedLots::Row &row : PastedLots::parse(QGuiApplication::clipboard()->text())) {
            if (const QString fault = pastedFault(row); !fault.isEmpty()) {
                refused.append(u"Linha %1 (%2, lote %3): %4"_s.arg(
                    QString::number(row.line), row.material.left(20), row.lot.left(20), fault));
                continue;
            }
            const Lot lot{{row.material, row.lot},
                Busca_Valor(u"MATERIAL"_s, u"CODIGO"_s, u"DESCRICAO"_s, Aspas(row.material)), row.brand, row.quantity,
                row.price, LotRules::total(row.quantity, row.price)};
            tbNFT_Iten->Append();
            storeLot(lot);
            ++taken;
        }
    }
    if (refused.isEmpty())
        return;
    const qsizetype more = refused.size() - faultsShown;
    if (more > 0)
        refused = refused.first(faultsShown) << u"… e mais %1."_s.arg(more);
    Messages::inform(this, u"Lotes incluídos: %1. Linhas recusadas:"_s.arg(taken) + u"\n\n"_s + refused.join(u'\n'));
}
