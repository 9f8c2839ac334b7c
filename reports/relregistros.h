// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/reportform.h"

#include <memory>

namespace Ui {
class fmRelRegistros;
}
class Unit;

/// The rolls of a range of orders, one line each, with their orders' client, fabric and lot.
class TfmRelRegistros : public TReportForm
{
    Q_OBJECT

public:
    TfmRelRegistros();
    ~TfmRelRegistros() override;

    Q_INVOKABLE void edtOfFimEnter();

protected:
    void FormCreate() override;
    void checkFilters() override;
    void BuscaDados() override;
    const TDataSet &result() const override;
    QString filters() const override;
    ReportCall report() const override;

private:
    QString conditions() const;
    QString order() const;

    std::unique_ptr<Ui::fmRelRegistros> m_ui;
    TTIQuery *qryRelatorio;
    QString m_order; ///< what the rows that are shown are ordered by
};

extern QPointer<TfmRelRegistros> fmRelRegistros;

namespace Relregistros {
Unit &unit();
}
