// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/form.h"
#include "module/host_services/host.h"

class DataBinding;
class QAbstractButton;
class RecordBar;
class TTITable;

/// A screen that keeps the records of one table: the bars, their states, rights, log, save and delete.
///
/// Its .ui has a RecordBar "Barras" and a widget "PainelDados", enabled while a record is being edited, whose
/// controls name their fields in the property "DataField".
class TRecordForm : public TForm
{
    Q_OBJECT

public:
    TRecordForm();

    Q_INVOKABLE void btnincluirClick();
    Q_INVOKABLE void BtnAlteraClick();
    Q_INVOKABLE void BtExcluirClick();
    Q_INVOKABLE void SbConsultaClick();
    Q_INVOKABLE void BtnImprimirClick();
    Q_INVOKABLE void BtSaidaClick();
    Q_INVOKABLE void SbConfirmarClick();
    Q_INVOKABLE void SbDesistirClick();
    Q_INVOKABLE void sbPrimeiroClick();
    Q_INVOKABLE void sbAnteriorClick();
    Q_INVOKABLE void sbProximoClick();
    Q_INVOKABLE void sbUltimoClick();

protected:
    /// What the log says of the records; the record's number follows each text. An empty text writes no line.
    struct LogTexts
    {
        QString label;
        QString inserted;
        QString changed;
        QString deleted;
        TOperacaoLog insertedAs = olInclusao;
        bool afterCommit = false; ///< the line of a save follows its commit; otherwise it is part of it
    };

    /// To be called in FormCreate, after setupUi: ties the table, by its logical name, and stands on its last record.
    void openTable(TTITable *table, const QString &logicalName, const QString &key);
    TTITable *table() const { return m_table; }
    virtual void Bar_Confirma(bool editing);
    bool isEditing() const;

    virtual LogTexts logTexts() const = 0;
    virtual QString recordNumber() const = 0;
    virtual void newRecord() { } ///< numbers and fills the record just appended
    virtual void startEdit() { } ///< what cannot be changed any more is disabled here
    virtual QWidget *firstField(bool inserting) const = 0;
    /// Comes before the busy marker. Shows its message and gives false when the record cannot be confirmed.
    virtual bool mayConfirm() { return true; }
    /// Shows its message and gives false when the record cannot be saved.
    virtual bool Valida_Dados() { return true; }
    virtual void writeDependents() { } ///< within the save, after the post
    /// Shows its message and gives false when the record cannot be deleted.
    virtual bool mayDelete() { return true; }
    virtual bool askDelete();
    virtual void deleteDependents() { } ///< within the save, before the record
    virtual void showDerived() { } ///< figures that are computed from what is saved
    virtual void search() = 0;
    virtual void print() { }

    bool FormKeyDown(QKeyEvent *event) override;
    bool mayClose() override;

private:
    QVariantList keyValues() const;
    void readAnew();
    void save();
    void writeLog(bool inserting, const QString &number) const;
    void move(void (TTITable::*step)());

    TTITable *m_table = nullptr;
    QStringList m_key;
    DataBinding *m_binding = nullptr;
    RecordBar *m_bars = nullptr;
    QWidget *m_panel = nullptr;
};
