// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/recordform.h"

#include "module/databinding.h"
#include "module/host_services/busy.h"
#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/table.h"
#include "module/messages.h"
#include "module/recordbar.h"

#include <QKeyEvent>

#include <exception>

using namespace Qt::StringLiterals;

TRecordForm::TRecordForm() = default;

void TRecordForm::openTable(TTITable *table, const QString &logicalName, const QString &key)
{
    m_table = table;
    m_key = key.split(u';');
    m_bars = findChild<RecordBar *>(u"Barras"_s);
    m_panel = findChild<QWidget *>(u"PainelDados"_s);
    m_binding = new DataBinding(table, this);
    table->setTableName(Funcoes::DBLocal(logicalName, true));
    table->setIndexFieldNames(key);
    table->Open();
    table->Last();
    Bar_Confirma(false);
}

bool TRecordForm::isEditing() const
{
    return m_table && m_table->isEditing();
}

void TRecordForm::Bar_Confirma(bool editing)
{
    m_panel->setEnabled(editing);
    m_bars->showConfirmation(editing);
    if (!editing)
        setFocus(); // for the keys that move through the records
}

void TRecordForm::btnincluirClick()
{
    if (isEditing() || !Funcoes::Acessa(className(), u'A', u"0"_s, {}))
        return;
    m_table->Append();
    try {
        newRecord();
    } catch (...) {
        m_table->Cancel(); // without its number it is no record to go on with
        throw;
    }
    Bar_Confirma(true);
    firstField(true)->setFocus();
}

void TRecordForm::BtnAlteraClick()
{
    if (isEditing() || m_table->IsEmpty() || !Funcoes::Acessa(className(), u'A', u"0"_s, {}))
        return;
    readAnew();
    Bar_Confirma(true);
    m_table->Edit();
    startEdit();
    firstField(false)->setFocus();
    showDerived();
}

QVariantList TRecordForm::keyValues() const
{
    QVariantList values;
    for (const QString &column : m_key)
        values.append(m_table->value(column));
    return values;
}

/// What another station has saved since the record was read is not to be overwritten unseen.
void TRecordForm::readAnew()
{
    const QVariantList before = keyValues();
    m_table->Refresh();
    if (keyValues() == before)
        return;
    showDerived();
    throw EDatabaseError(EDatabaseError::Category::Conflict, {}, u"O registro não existe mais."_s, {});
}

void TRecordForm::BtExcluirClick()
{
    if (isEditing() || m_table->IsEmpty() || !Funcoes::Acessa(className(), u'E', u"0"_s, {}))
        return;
    if (!mayDelete() || !askDelete())
        return;
    const QString number = recordNumber();
    const LogTexts texts = logTexts();
    const QVariantList key = keyValues();
    try {
        Save save(database());
        deleteDependents();
        m_table->Delete();
        save.CommitRetaining();
    } catch (...) {
        const std::exception_ptr failure = std::current_exception();
        run([&] { m_table->Locate(m_key.join(u';'), key); }); // it is still there: the screen goes back to it
        std::rethrow_exception(failure);
    }
    run([this] { showDerived(); }); // what is deleted is logged, even if what follows it cannot be shown
    if (!texts.deleted.isEmpty())
        Funcoes::GeraLog(texts.label, texts.deleted + number, olExclusao, number);
}

bool TRecordForm::askDelete()
{
    return Messages::askDelete(this);
}

void TRecordForm::SbConsultaClick()
{
    if (!isEditing())
        search();
}

void TRecordForm::BtnImprimirClick()
{
    if (!isEditing() && !m_table->IsEmpty())
        print();
}

void TRecordForm::BtSaidaClick()
{
    close();
}

void TRecordForm::SbConfirmarClick()
{
    if (!isEditing() || !mayConfirm())
        return;
    const Busy busy(this);
    if (!Valida_Dados())
        return;
    const bool inserting = m_table->state() == TTITable::State::Insert;
    const QString number = recordNumber();
    save();
    // What is saved stays saved, and the screen at rest, even if it cannot be read again or logged.
    Bar_Confirma(false);
    run([this] {
        m_table->Refresh();
        showDerived();
    });
    if (logTexts().afterCommit)
        writeLog(inserting, number);
}

void TRecordForm::save()
{
    try {
        Save save(database());
        if (!logTexts().afterCommit)
            writeLog(m_table->state() == TTITable::State::Insert, recordNumber());
        m_table->Post();
        writeDependents();
        save.CommitRetaining();
    } catch (...) {
        m_table->UndoPost();
        throw;
    }
}

void TRecordForm::writeLog(bool inserting, const QString &number) const
{
    const LogTexts texts = logTexts();
    const QString text = inserting ? texts.inserted : texts.changed;
    if (!text.isEmpty())
        Funcoes::GeraLog(texts.label, text + number, inserting ? texts.insertedAs : olAlteracao, number);
}

void TRecordForm::SbDesistirClick()
{
    if (!isEditing())
        return;
    Bar_Confirma(false);
    m_table->Cancel();
    m_table->Refresh();
    showDerived();
}

void TRecordForm::move(void (TTITable::*step)())
{
    if (isEditing())
        return;
    (m_table->*step)();
    showDerived();
}

void TRecordForm::sbPrimeiroClick()
{
    move(&TTITable::First);
}

void TRecordForm::sbAnteriorClick()
{
    move(&TTITable::Prior);
}

void TRecordForm::sbProximoClick()
{
    move(&TTITable::Next);
}

void TRecordForm::sbUltimoClick()
{
    move(&TTITable::Last);
}

bool TRecordForm::FormKeyDown(QKeyEvent *event)
{
    const bool control = event->modifiers() == Qt::ControlModifier;
    // Where the record is not seen, the keys belong to what is.
    if (isEditing() || !m_panel->isVisible() || (event->modifiers() != Qt::NoModifier && !control))
        return TForm::FormKeyDown(event);
    if (event->key() == Qt::Key_PageUp && !control)
        sbAnteriorClick();
    else if (event->key() == Qt::Key_PageDown && !control)
        sbProximoClick();
    else if (event->key() == Qt::Key_Home && control)
        sbPrimeiroClick();
    else if (event->key() == Qt::Key_End && control)
        sbUltimoClick();
    else if (event->key() == Qt::Key_F4 && !control)
        SbConsultaClick();
    else
        return TForm::FormKeyDown(event);
    return true;
}

bool TRecordForm::mayClose()
{
    return !isEditing() || Messages::ask(this, u"O registro está em edição. Deseja abandonar as alterações?"_s);
}
