// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/reportform.h"

#include <QSet>

#include <memory>

namespace Ui {
class fmRelDocto;
}
class Unit;

/// Inbound invoices lot by lot, each with the items of outbound invoices that took goods out of it.
class TfmRelDocto : public TReportForm
{
    Q_OBJECT

public:
    TfmRelDocto();
    ~TfmRelDocto() override;

    Q_INVOKABLE void edtClienteCodExit();
    Q_INVOKABLE void edtMatCodExit();
    Q_INVOKABLE void EdtGrupoCliExit();
    /// Marks the first row of a lot, which alone counts what came in with it.
    Q_INVOKABLE void tbRelatorioBeforePost();

protected:
    void FormCreate() override;
    void BuscaDados() override;
    const TDataSet &result() const override;
    QString filters() const override;
    ReportCall report() const override;

private:
    QString Gera_SQL() const;

    std::unique_ptr<Ui::fmRelDocto> m_ui;
    TClientDataSet *tbRelatorio;
    TClientDataSet *tbImpressao; ///< the rows as they are printed, by client
    QSet<QString> m_lots; ///< those that had their first row
    bool m_byMaterial = false; ///< the order in which the rows were read
};

extern QPointer<TfmRelDocto> fmRelDocto;

namespace Reldocto {
Unit &unit();
}
