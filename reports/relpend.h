// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/reportform.h"

#include <memory>

namespace Ui {
class fmRelPend;
}
class Unit;

/// Orders with what was written off against each, by default those that are not fully produced yet.
class TfmRelPend : public TReportForm
{
    Q_OBJECT

public:
    TfmRelPend();
    ~TfmRelPend() override;

    Q_INVOKABLE void edtCodClienteExit();
    Q_INVOKABLE void EdtMaqExit();

protected:
    void FormCreate() override;
    void BuscaDados() override;
    const TDataSet &result() const override;
    QString filters() const override;
    ReportCall report() const override;

private:
    QString Gera_SQL() const;

    std::unique_ptr<Ui::fmRelPend> m_ui;
    TTIQuery *qryRelatorio;
    TClientDataSet *tbImpressao; ///< the rows as they are printed, by machine
};

extern QPointer<TfmRelPend> fmRelPend;

namespace Relpend {
Unit &unit();
}
