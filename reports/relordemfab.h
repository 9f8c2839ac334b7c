// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/reportform.h"

#include <memory>

namespace Ui {
class fmRelOrdFab;
}
class Unit;

/// The sheets that go to the machine with an order: header, composition, reserved yarn, and a line for every roll.
class TfmRelOrdFab : public TReportForm
{
    Q_OBJECT

public:
    TfmRelOrdFab();
    ~TfmRelOrdFab() override;

    Q_INVOKABLE void edtCliCodExit();

protected:
    void FormCreate() override;
    void BuscaDados() override;
    const TDataSet &result() const override;
    QString filters() const override;
    ReportCall report() const override;

private:
    /// The conditions of the filters that are filled.
    QString conditions() const;
    void Gera_SQL_Cabecalho();
    void Gera_SQL_Materiais();
    /// A sheet for every order of the header.
    void Gera_Extrura_Itens();
    void Gera_Itens(const QString &order, double totalKg, double rollKg);
    /// The yarn that the order of the filter "Número" holds; none without a number.
    void BuscaFiosSelecionados();

    std::unique_ptr<Ui::fmRelOrdFab> m_ui;
    TTIQuery *qryCabecalho;
    TTIQuery *qryMateriais;
    TTIQuery *qryFios;
    TClientDataSet *tbItens;
    QString m_number; ///< whose reserved yarn was read
};

extern QPointer<TfmRelOrdFab> fmRelOrdFab;

namespace Relordemfab {
Unit &unit();
}
