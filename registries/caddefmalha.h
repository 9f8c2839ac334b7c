// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/form.h"

#include <QHash>

#include <memory>

namespace Ui {
class fmCadDefMalha;
}
class TClientDataSet;
class Unit;

/// The defects counted on one roll: a row for every defect of the catalogue.
class TfmCadDefMalha : public TForm
{
    Q_OBJECT
    /// The roll, handed over before the screen is shown: its order, and its number within the order.
    Q_PROPERTY(QString NumeroOF MEMBER m_of)
    Q_PROPERTY(int Rolo MEMBER m_roll)

public:
    TfmCadDefMalha();
    ~TfmCadDefMalha() override;

    Q_INVOKABLE void EdtCodRevExit();
    Q_INVOKABLE void EdtCodQulExit();
    Q_INVOKABLE void TbDefeitosAfterPost();
    Q_INVOKABLE void BitBtn1Click();
    Q_INVOKABLE void BitBtn2Click();

protected:
    void FormCreate() override;
    void FormShow() override;

private:
    double QtdeDefeito(const QString &code) const; ///< 0 when it was not recorded
    void loadRoll();
    void save();

    std::unique_ptr<Ui::fmCadDefMalha> m_ui;
    TClientDataSet *TbDefeitos;
    QString m_of;
    int m_roll = 0;
    bool m_loaded = false; ///< what is recorded of it
    QHash<QString, double> m_counted; ///< by defect
};

extern QPointer<TfmCadDefMalha> fmCadDefMalha;

namespace Caddefmalha {
Unit &unit();
}
