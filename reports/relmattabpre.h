// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/reportform.h"

#include <memory>

namespace Ui {
class fmRelMatTabPre;
}
class Unit;

/// The prices of a region with their fourteen instalments, of all materials or of those of a client.
class TfmRelMatTabPre : public TReportForm
{
    Q_OBJECT

public:
    TfmRelMatTabPre();
    ~TfmRelMatTabPre() override;

    Q_INVOKABLE void ComfirmaRepresenClick();
    Q_INVOKABLE void ImprimiRepresenClick();
    Q_INVOKABLE void BitBtn1Click();
    Q_INVOKABLE void edtTabPre_CodRegExit();
    Q_INVOKABLE void EdtCodCliExit();

protected:
    void FormCreate() override;
    void BuscaDados() override;
    const TDataSet &result() const override;
    QString filters() const override;
    ReportCall report() const override;

private:
    void ExecutaSQLKelta();

    std::unique_ptr<Ui::fmRelMatTabPre> m_ui;
    TTIQuery *qryRelatorio;
    TClientDataSet *tbImpressao; ///< the rows as they are printed, by material group
};

extern QPointer<TfmRelMatTabPre> fmRelMatTabPre;

namespace Relmattabpre {
Unit &unit();
}
