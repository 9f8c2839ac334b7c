// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/recordform.h"
#include "production/yarnlots.h"

#include <memory>
#include <optional>

namespace Ui {
class fmMalhaOF;
}
class TClientDataSet;
class TTIQuery;
class Unit;

/// Production orders: which fabric is knitted for whom, on which machine, how many kilograms, of which lots of yarn.
class TfmMalhaOF : public TRecordForm
{
    Q_OBJECT

public:
    TfmMalhaOF();
    ~TfmMalhaOF() override;

    Q_INVOKABLE void edtOFExit();
    Q_INVOKABLE void edtOFChange();
    Q_INVOKABLE void edtClienteExit();
    Q_INVOKABLE void edtClienteChange();
    Q_INVOKABLE void edtMaterialExit();
    Q_INVOKABLE void edtMaterialChange();
    Q_INVOKABLE void edtMaquinaExit();
    Q_INVOKABLE void EdtCodFluxoExit();
    Q_INVOKABLE void PqOFFechaPesquisa();
    Q_INVOKABLE void edtKGTotalExit();
    Q_INVOKABLE void BitBtn1Click(); ///< "&Zerar Saldo"
    Q_INVOKABLE void BitBtn2Click(); ///< "&Buscar Saldo"

    // Page "Selecione os Fios"
    Q_INVOKABLE void TbSaldoBeforePost();
    Q_INVOKABLE void TbSaldoAfterPost();

    // Page "Consulta"
    Q_INVOKABLE void BitBtn3Click();
    Q_INVOKABLE void BitBtn4Click();
    Q_INVOKABLE void BitBtn5Click();
    Q_INVOKABLE void DBGrid1DblClick();

protected:
    void FormCreate() override;
    void Bar_Confirma(bool editing) override;
    LogTexts logTexts() const override;
    QString recordNumber() const override;
    void newRecord() override;
    void startEdit() override;
    QWidget *firstField(bool inserting) const override;
    bool Valida_Dados() override;
    void writeDependents() override;
    bool mayDelete() override;
    void deleteDependents() override;
    void showDerived() override;
    void search() override;
    void print() override;

private:
    void Calcula_Saldo();
    double BuscaQtdeBaixada() const;
    QString BuscaUltimaOFMat(const QString &material) const;
    QString Gera_Sql() const;
    void fillDefaults(const QString &material);
    bool acceptsActiveColours(const QString &material);
    void showMaterial(const QString &material);
    void filterClients();
    bool hasWriteOffs() const;
    void refuseUnreadableDates();
    QString consultStatement() const;
    QString consultFilters() const;

    void showPage();
    void createYarnGrids();
    void enableTicks(bool on);
    /// Builds the grid anew from the database; while the same fabric and client are being edited the ticks are kept.
    void FiosPendentes();
    void refreshYarn();
    void fillLots(const QVector<YarnReservation::Lot> &lots);
    QVector<YarnReservation::Lot> lotsInGrid() const;
    YarnOrder yarnOrder() const;
    void showCoverage();
    void warn(bool lacking);
    void showYarnHint();
    bool hasEnoughYarn();
    double CalculaSaldoPeso();
    void GravaFiosBaixa();

    std::unique_ptr<Ui::fmMalhaOF> m_ui;
    TTITable *tbOF_Malha;
    TTIQuery *m_consult;
    QString m_consultFilters; ///< what m_consult was asked for
    TClientDataSet *TbSaldo;
    TClientDataSet *m_yarns; ///< need, reserved and missing of each yarn
    QString m_fabricOwner; ///< client whose fabric it is; empty: anybody's
    QString m_acceptedMaterial; ///< the last one whose exit went through
    QString m_fabricBefore; ///< of the order when its change began; empty: it is a new one
    YarnReservation::Mode m_mode;
    QVector<YarnReservation::Share> m_shares; ///< of the grid's fabric
    std::optional<YarnOrder> m_yarnOf; ///< what the grid was built for
    bool m_lotsTaken = false; ///< another order has reserved of the lots since they were read
    bool m_loadingYarn = false;
    QString m_superfluous; ///< yarn of the lot whose tick was just taken back
};

extern QPointer<TfmMalhaOF> fmMalhaOF;

namespace Ordemfab {
Unit &unit();
}
