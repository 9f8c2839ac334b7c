// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/databinding.h"

#include "module/controls/currencyedit.h"
#include "module/controls/dateedit.h"
#include "module/host_services/table.h"

#include <QLineEdit>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;

DataBinding::DataBinding(TTITable *table, QWidget *root)
    : QObject(root)
    , m_table(table)
{
    for (QWidget *child : root->findChildren<QWidget *>()) {
        const QString field = child->property("DataField").toString();
        if (!field.isEmpty())
            tie(child, field);
    }
    connect(table, &TTITable::AfterScroll, this, &DataBinding::showAll);
    connect(table, &TTITable::stateChanged, this, &DataBinding::showAll);
    connect(table, &TTITable::fieldChanged, this, [this](const QString &name) {
        for (const Tied &tied : m_tied) {
            if (!m_showing && tied.field.compare(name, Qt::CaseInsensitive) == 0)
                show(tied.control, tied.field);
        }
    });
}

QWidget *DataBinding::control(const QString &field) const
{
    for (const Tied &tied : m_tied) {
        if (tied.field.compare(field, Qt::CaseInsensitive) == 0)
            return tied.control;
    }
    return nullptr;
}

void DataBinding::tie(QWidget *control, const QString &field)
{
    m_tied.append({control, field});
    const auto storeIt = [this, control, field] { store(control, field); };
    if (auto *number = qobject_cast<TCurrencyEdit *>(control))
        connect(number, &TCurrencyEdit::valueChanged, this, storeIt);
    else if (auto *date = qobject_cast<TDateEdit *>(control))
        connect(date, &TDateEdit::dateChanged, this, storeIt);
    else if (auto *line = qobject_cast<QLineEdit *>(control))
        connect(line, &QLineEdit::textChanged, this, storeIt);
    else if (auto *text = qobject_cast<QPlainTextEdit *>(control))
        connect(text, &QPlainTextEdit::textChanged, this, storeIt);
}

void DataBinding::showAll()
{
    if (!m_table->Active())
        return;
    for (const Tied &tied : m_tied)
        show(tied.control, tied.field);
}

void DataBinding::show(QWidget *control, const QString &field)
{
    const QVariant value = m_table->value(field);
    const QString asText = m_table->AsString(field);
    m_showing = true;
    if (auto *number = qobject_cast<TCurrencyEdit *>(control))
        number->setValue(value.toDouble());
    else if (auto *date = qobject_cast<TDateEdit *>(control))
        date->setDate(value.toDate());
    else if (auto *line = qobject_cast<QLineEdit *>(control); line && line->text() != asText)
        line->setText(asText);
    else if (auto *text = qobject_cast<QPlainTextEdit *>(control); text && text->toPlainText() != asText)
        text->setPlainText(asText);
    m_showing = false;
}

void DataBinding::store(QWidget *control, const QString &field)
{
    if (m_showing || !m_table->isEditing())
        return;
    m_showing = true;
    if (auto *number = qobject_cast<TCurrencyEdit *>(control))
        m_table->setValue(field, number->value());
    else if (auto *date = qobject_cast<TDateEdit *>(control))
        m_table->setValue(field, date->date().isValid() ? QVariant(date->date()) : QVariant());
    else if (auto *line = qobject_cast<QLineEdit *>(control))
        m_table->setValue(field, line->text().trimmed()); // blanks come with a code that was pasted
    else if (auto *text = qobject_cast<QPlainTextEdit *>(control))
        m_table->setValue(field, text->toPlainText());
    m_showing = false;
}
