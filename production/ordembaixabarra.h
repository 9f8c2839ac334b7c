// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/form.h"

#include <QDate>

#include <memory>

namespace Ui {
class fmMalhaOFBaixaBarra;
}
class TTIQuery;
class Unit;
class Weighing;
struct Roll;

/// The shop-floor station: an order is scanned, its roll weighed and written off.
class TfmMalhaOFBaixaBarra : public TForm
{
    Q_OBJECT

public:
    TfmMalhaOFBaixaBarra();
    ~TfmMalhaOFBaixaBarra() override;

    Q_INVOKABLE void edtOFExit();
    Q_INVOKABLE void edtMaterialChange();
    Q_INVOKABLE void DtBaixaEnter();
    Q_INVOKABLE void btnBaixaClick();
    Q_INVOKABLE void BtExcluirClick();
    Q_INVOKABLE void BitBtn1Click(); ///< defects of the roll
    Q_INVOKABLE void BitBtn2Click(); ///< "Ajustar OF"
    Q_INVOKABLE void BtnImprimirClick();
    Q_INVOKABLE void BtSaidaClick();

protected:
    void FormCreate() override;
    bool FormKeyDown(QKeyEvent *event) override;

private:
    QString orderNumber() const;
    bool BuscaOFMalha();
    void BuscaBaixasMalha();
    void BaixaOFMalha(Roll &roll);
    void LimpaTela();
    void showToday();
    void clearOrder();
    void reloadOrder();
    void showPicture();
    void printLabel(const Roll &roll, bool again);
    void logRoll(const Roll &roll);

    std::unique_ptr<Ui::fmMalhaOFBaixaBarra> m_ui;
    TTIQuery *m_order;
    TTIQuery *qryBaixas;
    std::unique_ptr<Weighing> m_weighing;
    QDate m_dayShown; ///< the date that stands in the field unless one is typed
};

extern QPointer<TfmMalhaOFBaixaBarra> fmMalhaOFBaixaBarra;

namespace Ordembaixabarra {
Unit &unit();
}
