// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/recordform.h"

#include <memory>
#include <optional>

namespace PastedLots {
struct Row;
}
namespace Ui {
class fmNFTerceiros;
}
class TClientDataSet;
class TTIQuery;
class Unit;

/// Inbound invoices: the yarn that a client sends, lot by lot.
class TfmNFTerceiros : public TRecordForm
{
    Q_OBJECT

public:
    TfmNFTerceiros();
    ~TfmNFTerceiros() override;

    Q_INVOKABLE void BtincluirClick();
    Q_INVOKABLE void DBCodClienteExit();
    Q_INVOKABLE void DBCodClienteChange();
    Q_INVOKABLE void DBCodClienteEnter();
    Q_INVOKABLE void PqClienteFechaPesquisa();
    Q_INVOKABLE void PqDoctoFechaPesquisa();

    // The lots
    Q_INVOKABLE void BtIIncluirClick();
    Q_INVOKABLE void btIAlterarClick();
    Q_INVOKABLE void btIExcluirClick();
    Q_INVOKABLE void btISalvarClick();
    Q_INVOKABLE void btICancelarClick();
    Q_INVOKABLE void EdtCodMaterialExit();
    Q_INVOKABLE void EdtCodMaterialChange();
    Q_INVOKABLE void EdtLoteExit();
    Q_INVOKABLE void EdtPesoExit();
    Q_INVOKABLE void EdtUnitarioExit();
    Q_INVOKABLE void EdtTotalExit();
    Q_INVOKABLE void PqMaterialFechaPesquisa();
    Q_INVOKABLE void tbNFT_ItenAfterScroll();
    Q_INVOKABLE void DBGItensDblClick();

protected:
    void FormCreate() override;
    void FormClose() override;
    bool FormKeyDown(QKeyEvent *event) override;
    void Bar_Confirma(bool editing) override;
    LogTexts logTexts() const override;
    QString recordNumber() const override;
    void newRecord() override;
    void startEdit() override;
    QWidget *firstField(bool inserting) const override;
    bool mayConfirm() override;
    void writeDependents() override;
    bool mayDelete() override;
    bool askDelete() override;
    void deleteDependents() override;
    void showDerived() override;
    void search() override;

private:
    struct InvoiceKey
    {
        QString docto;
        QString client;
        bool operator==(const InvoiceKey &) const = default;
    };
    /// Material and lot: what no two rows of an invoice share.
    struct LotKey
    {
        QString material;
        QString lot;
        bool operator==(const LotKey &) const = default;
    };
    struct Lot : LotKey
    {
        QString description;
        QString brand;
        double quantity = 0; ///< kg
        double price = 0;
        double total = 0;
    };

    InvoiceKey key() const; ///< as it stands in the header
    void BuscaItens();
    void openItems(TTIQuery &items, const InvoiceKey &of) const;
    bool ExisteNota(const QString &Docto, const QString &Codigo, const QString &Lote) const;
    void filterMaterials();
    void lockInvoice() const;
    void refuseIfOthersChanged() const;
    void deleteItems(const InvoiceKey &of) const;

    void Bar_Itens(bool Editing, QWidget *focus = nullptr);
    void Limpa_Itens();
    bool takesLots() const;
    LotKey currentLot() const;
    int rowOf(const LotKey &lot) const;
    bool holdsLot(const LotKey &lot) const;
    QString materialFault(const LotKey &lot) const;
    void showCurrentLot();
    void showTotals();
    void computeTotal();
    void refuseAndAbort(const QString &message, QWidget *atFault);
    void storeLot(const Lot &lot);
    void pasteLots();
    QString pastedFault(const PastedLots::Row &row) const;

    std::unique_ptr<Ui::fmNFTerceiros> m_ui;
    TClientDataSet *tbNFT_Iten;
    bool m_clientsOwnYarn = false; ///< a client may use its own materials only
    InvoiceKey m_itemsOf; ///< whose items were loaded last
    InvoiceKey m_edited; ///< the invoice that is being altered, as it was read; empty: none
    QStringList m_savedItems; ///< its items then
    bool m_itemOpen = false;
    std::optional<LotKey> m_altered; ///< the row that is being altered, as it was
    std::optional<Lot> m_lastLot; ///< entered since the invoice is being edited
    bool m_loading = false;
};

extern QPointer<TfmNFTerceiros> fmNFTerceiros;

namespace Nfterceiros {
Unit &unit();
}
