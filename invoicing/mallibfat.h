// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "invoicing/releaserules.h"
#include "module/form.h"

#include <memory>

namespace Ui {
class fmMalLibFat;
}
class TClientDataSet;
class TTIQuery;
class Unit;

/// Releases a client's fabric for invoicing: how much of each order's open production, and how many rolls.
class TfmMalLibFat : public TForm
{
    Q_OBJECT

public:
    TfmMalLibFat();
    ~TfmMalLibFat() override;

    Q_INVOKABLE void EdtNumeroExit();
    Q_INVOKABLE void edtClienteExit();
    Q_INVOKABLE void edtClienteChange();
    Q_INVOKABLE void PqClienteFechaPesquisa();
    Q_INVOKABLE void TbOFAfterPost();
    Q_INVOKABLE void BitBtn1Click();
    Q_INVOKABLE void BitBtn2Click();
    Q_INVOKABLE void BitBtn3Click();

protected:
    void FormCreate() override;
    void FormShow() override;
    bool FormKeyDown(QKeyEvent *event) override;
    bool mayClose() override;

private:
    void createGrid();
    void LimpaTela();
    void BuscaOF(); ///< the lines of a release that was saved; none when the number is new
    void BuscaMalhas(); ///< the open production of the client
    /// Fills the work table, one line for each row of the select.
    void fill(TTIQuery &rows, const QStringList &columns);

    ReleaseRules::Line lineOf(int row) const;
    void showTotals();
    void moveTo(int row, const QString &field);
    void moveOn();
    void takeBalance();

    QString save();
    void insertLines(const QString &number);
    /// The rows of a release as they are stored, in an order of their own.
    QStringList stored(const QString &number) const;
    QVariantMap printedTotals(const QString &number) const;

    std::unique_ptr<Ui::fmMalLibFat> m_ui;
    TClientDataSet *TbOF;
    TTIQuery *QryImpressao;
    QString m_number; ///< the release on the screen; empty: none
    bool m_numberGiven = false; ///< by the program
    QStringList m_stored; ///< the release when it came on the screen
    QString m_productionOf; ///< the client whose open production is listed
    QString m_saved; ///< the release that was saved last
    bool m_filling = false;
    bool m_changed = false; ///< quantities were typed and not saved
};

extern QPointer<TfmMalLibFat> fmMalLibFat;

namespace Mallibfat {
Unit &unit();
}
