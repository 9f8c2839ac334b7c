// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/recordform.h"

#include <memory>

namespace Ui {
class fmMatTabPreco;
}
class TCurrencyEdit;
class TTIQuery;
class Unit;
struct PriceCopy;

/// The price table: what knitting a fabric costs, per region, product and colour group, in fourteen instalments.
class TfmMatTabPreco : public TRecordForm
{
    Q_OBJECT

public:
    TfmMatTabPreco();
    ~TfmMatTabPreco() override;

    Q_INVOKABLE void SpeedButton1Click(); ///< first row
    Q_INVOKABLE void SpeedButton2Click(); ///< row before
    Q_INVOKABLE void SpeedButton3Click(); ///< next row
    Q_INVOKABLE void SpeedButton4Click(); ///< last row
    Q_INVOKABLE void DBGrid1DblClick();
    Q_INVOKABLE void QryPrecosAfterScroll();
    Q_INVOKABLE void PqTabPrecoFechaPesquisa();
    Q_INVOKABLE void EdtCodArtExit();
    Q_INVOKABLE void EdtCodArtChange();
    Q_INVOKABLE void EdtDesArtExit();

    // The prices of a region for another
    Q_INVOKABLE void BtincluirCarlosClick();
    Q_INVOKABLE void EdtRegiaoDeExit();
    Q_INVOKABLE void EdtRegiaoParaExit();
    Q_INVOKABLE void SbCopiarClick();
    Q_INVOKABLE void SbDesistirCopiaClick();

protected:
    void FormCreate() override;
    void FormClose() override;
    bool FormKeyDown(QKeyEvent *event) override;
    void Bar_Confirma(bool editing) override;
    LogTexts logTexts() const override;
    QString recordNumber() const override;
    void newRecord() override;
    QWidget *firstField(bool inserting) const override;
    bool mayConfirm() override;
    void writeDependents() override;
    bool askDelete() override;
    void showDerived() override;
    void search() override;

private:
    void prepareBar();
    void ListaPrecos();
    void goTo(const QVariantList &key);
    void moveTo(int row);
    void Verifica_Existe();
    void fillDefaults();
    void fillEmpty(const QString &field, const QString &text);
    int countOf(const QVariantList &key) const;
    bool mayTakeOver();
    void takeOver(const QVariantList &key, int count);
    void requireFirst() const;
    QVector<TCurrencyEdit *> instalmentEdits() const;
    void repeatPrice();

    void showCopy(bool on);
    void showCopyCount();
    PriceCopy typedCopy() const;
    bool mayCopy(const PriceCopy &copy);

    std::unique_ptr<Ui::fmMatTabPreco> m_ui;
    TTIQuery *QryPrecos; ///< the rows of the grid; the table stands on the grid's row
    QVector<QVariantList> m_superseded; ///< keys of rows that the one being edited takes the place of
    bool m_repeated = false; ///< and of all others of its own key
    bool m_first = false; ///< nobody had a row of its key when it was confirmed
    QString m_lastRegion; ///< of the row inserted last
    bool m_listing = false;
};

extern QPointer<TfmMatTabPreco> fmMatTabPreco;

namespace Mattabpreco {
Unit &unit();
}
