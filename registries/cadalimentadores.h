// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/form.h"

#include <memory>

namespace Ui {
class fmCadAlimentador;
}
class TClientDataSet;
class Unit;

/// How many feeders the machine uses for a fabric at each stitch length.
class TfmCadAlimentador : public TForm
{
    Q_OBJECT
    /// The fabric, when another screen opens this one for it; rows that are not saved yet stay before it.
    Q_PROPERTY(QString Material READ material WRITE openMaterial)

public:
    TfmCadAlimentador();
    ~TfmCadAlimentador() override;

    QString material() const;
    void openMaterial(const QString &code);

    Q_INVOKABLE void EdtCodMatExit();
    Q_INVOKABLE void BtLinhaInserirClick();
    Q_INVOKABLE void BtLinhaExcluirClick();
    Q_INVOKABLE void BitBtn2Click();
    Q_INVOKABLE void BitBtn4Click();

protected:
    void FormCreate() override;
    void FormShow() override;
    bool mayClose() override;

private:
    void LimpaTela();
    /// A stitch length and its feeders.
    using Setting = std::pair<QVariant, QVariant>;

    QVector<Setting> stored() const;
    void BuscaDados();
    bool mayReplace();
    void lockSettings();
    void ExcluiDados();
    void GravaDados();
    bool hasUnsavedRows() const;

    std::unique_ptr<Ui::fmCadAlimentador> m_ui;
    TClientDataSet *TbDados;
    QString m_loadedMaterial;
    QVector<QVector<QVariant>> m_loadedRows; ///< of the grid, as they were read
    QVector<Setting> m_stored; ///< as the table held them then
};

extern QPointer<TfmCadAlimentador> fmCadAlimentador;

namespace Cadalimentadores {
Unit &unit();
}
