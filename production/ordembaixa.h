// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/form.h"

#include <memory>

namespace Ui {
class fmMalhaOFBaixa;
}
class TTIQuery;
class Unit;

/// The desk's write-off: an order with its rolls, each of which is written off in a dialog of its own.
class TfmMalhaOFBaixa : public TForm
{
    Q_OBJECT

public:
    TfmMalhaOFBaixa();
    ~TfmMalhaOFBaixa() override;

    Q_INVOKABLE void edtOFExit();
    Q_INVOKABLE void PqOFFechaPesquisa();
    Q_INVOKABLE void btnBaixaClick();
    Q_INVOKABLE void BtExcluirClick();
    Q_INVOKABLE void BtSaidaClick();
    Q_INVOKABLE void Imprimir1Click();
    Q_INVOKABLE void DBGridTitleClick();

protected:
    void FormCreate() override;

private:
    QString orderNumber() const;
    void setUpSearch();
    bool BuscaOF();
    void BuscaBaixas();
    void showOrder();
    void clearOrder();
    void showHint(const QString &text);
    QString proxima_baixa() const;

    std::unique_ptr<Ui::fmMalhaOFBaixa> m_ui;
    TTIQuery *m_order;
    TTIQuery *qryBaixas;
};

extern QPointer<TfmMalhaOFBaixa> fmMalhaOFBaixa;

namespace Ordembaixa {
Unit &unit();
}
