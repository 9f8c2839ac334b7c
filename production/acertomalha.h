// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/form.h"

#include <memory>

namespace Ui {
class fmAcertoMalharia;
}
class TTIQuery;
class Unit;

/// Corrects the open balance of finished fabric, per order and product, where stock and records disagree.
class TfmAcertoMalharia : public TForm
{
    Q_OBJECT

public:
    TfmAcertoMalharia();
    ~TfmAcertoMalharia() override;

    Q_INVOKABLE void EdtCodigoChange();
    Q_INVOKABLE void EdtCodigoExit();
    Q_INVOKABLE void edtOFExit();
    Q_INVOKABLE void PqMatFechaPesquisa();
    Q_INVOKABLE void PqOFFechaPesquisa();
    Q_INVOKABLE void QryPaAfterScroll();
    Q_INVOKABLE void DBGrid1DblClick();
    Q_INVOKABLE void EdtQtdeExit();
    Q_INVOKABLE void SbConfirmarClick();
    Q_INVOKABLE void SbDesistirClick();

protected:
    void FormCreate() override;
    void FormShow() override;

private:
    /// Lists the rows of the code and the order number given; all rows without both.
    void ConsultaOF();
    void save(const QString &code, const QString &of);

    std::unique_ptr<Ui::fmAcertoMalharia> m_ui;
    TTIQuery *QryPa;
};

extern QPointer<TfmAcertoMalharia> fmAcertoMalharia;

namespace Acertomalha {
Unit &unit();
}
