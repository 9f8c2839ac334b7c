// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/form.h"

#include <memory>

namespace Ui {
class fmBaixaOF;
}
class TTIQuery;
class Unit;
class Weighing;
struct Roll;

/// The dialog of the desk that writes one roll off against its order.
class TfmBaixaOF : public TForm
{
    Q_OBJECT
    // What the desk hands over before the dialog is shown.
    Q_PROPERTY(QString NumeroOF MEMBER m_of)
    Q_PROPERTY(double Saldo MEMBER m_balance) ///< what the order still takes, kg
    Q_PROPERTY(QString ProximaBaixa MEMBER m_number) ///< the number that the roll gets
    Q_PROPERTY(QString Cliente MEMBER m_client)
    Q_PROPERTY(QString Material MEMBER m_fabric)
    Q_PROPERTY(QString Maquina MEMBER m_machine)

public:
    TfmBaixaOF();
    ~TfmBaixaOF() override;

    Q_INVOKABLE void EdtCodFunChange();
    Q_INVOKABLE void EdtCodFunExit();
    Q_INVOKABLE void SbConfirmarClick();
    Q_INVOKABLE void SbDesistirClick();
    Q_INVOKABLE void BitBtn1Click(); ///< defects of the roll

protected:
    void FormCreate() override;
    void FormShow() override;
    bool FormKeyDown(QKeyEvent *event) override;

private:
    void showOrder();
    void BuscaBaixas();
    void showBalance(double kg);
    Roll rollTyped() const;
    bool Valida_Dados(const Roll &roll);
    bool SaldoEstoqueFio(const Roll &roll);
    bool mayOverproduce();
    bool BaixaOF(Roll &roll, bool overProductionAgreed);

    std::unique_ptr<Ui::fmBaixaOF> m_ui;
    TTIQuery *Qry;
    std::unique_ptr<Weighing> m_weighing;
    QString m_of;
    double m_balance = 0;
    QString m_number;
    QString m_client;
    QString m_fabric;
    QString m_machine;
    bool m_defectsOpened = false; ///< under the number handed over
};

extern QPointer<TfmBaixaOF> fmBaixaOF;

namespace Baixaof {
Unit &unit();
}
