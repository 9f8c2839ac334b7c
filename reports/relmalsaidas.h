// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/reportform.h"

#include <memory>

namespace Ui {
class fmRelMalSaidas;
}
class Unit;

/// Items of outbound invoices whose material belongs to a client, whoever the invoice is addressed to.
class TfmRelMalSaidas : public TReportForm
{
    Q_OBJECT

public:
    TfmRelMalSaidas();
    ~TfmRelMalSaidas() override;

    Q_INVOKABLE void edtClienteCodExit();
    Q_INVOKABLE void edtMatCodExit();
    /// F4 opens the search, which a field that nobody types in has not by itself.
    Q_INVOKABLE void edtGrupoMatKeyDown(QKeyEvent *event);
    Q_INVOKABLE void PqGrupoMatFechaPesquisa();
    Q_INVOKABLE void spbGrupoClearClick();

protected:
    void FormCreate() override;
    void BuscaDados() override;
    const TDataSet &result() const override;
    QString filters() const override;
    ReportCall report() const override;

private:
    QString Gera_SQL() const;

    std::unique_ptr<Ui::fmRelMalSaidas> m_ui;
    TClientDataSet *tbRelatorio;
    TClientDataSet *tbImpressao; ///< the rows as they are printed, by client
};

extern QPointer<TfmRelMalSaidas> fmRelMalSaidas;

namespace Relmalsaidas {
Unit &unit();
}
