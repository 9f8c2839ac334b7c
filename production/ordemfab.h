// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/recordform.h"

#include <memory>

namespace Ui {
class fmMalhaOF;
}
class TTIQuery;
class Unit;

/// Production orders: which fabric is knitted for whom, on which machine, how many kilograms.
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
    Q_INVOKABLE void BitBtn1Click(); ///< "&Zerar Saldo"

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
    QString consultStatement() const;

    std::unique_ptr<Ui::fmMalhaOF> m_ui;
    TTITable *tbOF_Malha;
    TTIQuery *m_consult;
    QString m_fabricOwner; ///< client whose fabric it is; empty: anybody's
    QString m_acceptedMaterial; ///< the last one whose exit went through
};

extern QPointer<TfmMalhaOF> fmMalhaOF;

namespace Ordemfab {
Unit &unit();
}
