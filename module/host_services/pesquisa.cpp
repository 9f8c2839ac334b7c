// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/pesquisa.h"

#include "module/host_services/funcoes.h"
#include "module/host_services/icons.h"
#include "module/host_services/searchdialog.h"
#include "module/host_services/tabelas.h"

#include <QKeyEvent>
#include <QLineEdit>

using namespace Qt::StringLiterals;

TPesquisa::TPesquisa(QWidget *parent)
    : QToolButton(parent)
{
    setFocusPolicy(Qt::NoFocus); // asking for a code is no leaving of its field
    setIcon(Icons::get(u"search"_s));
    setToolTip(u"Pesquisar (F4)"_s);
    setAutoRaise(true);
    connect(this, &QToolButton::clicked, this, &TPesquisa::AbrePesquisa);
}

void TPesquisa::showEvent(QShowEvent *event)
{
    QToolButton::showEvent(event);
    // The nearest one: other screens in the window may have a field of that name too.
    QWidget *field = nullptr;
    for (QWidget *around = parentWidget(); around && !field && !m_fieldName.isEmpty(); around = around->parentWidget())
        field = around->findChild<QWidget *>(m_fieldName);
    if (field)
        field->installEventFilter(this); // installing it again changes nothing
}

bool TPesquisa::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && isEnabled()) {
        auto *key = static_cast<QKeyEvent *>(event);
        const auto *line = qobject_cast<QLineEdit *>(watched);
        if (key->key() == Qt::Key_F4 && key->modifiers() == Qt::NoModifier && line && !line->isReadOnly()) {
            AbrePesquisa();
            return true;
        }
    }
    return QToolButton::eventFilter(watched, event);
}

SearchSource TPesquisa::source() const
{
    SearchSource result;
    result.from = m_select.isEmpty() ? Funcoes::DBLocal(m_table) : u'(' + m_select + u')';
    result.filter = m_filter;
    for (const QString &part : m_columns.split(u';', Qt::SkipEmptyParts))
        result.columns.append({part.section(u'=', 0, 0).trimmed(), part.section(u'=', 1).trimmed()});
    return result;
}

void TPesquisa::AbrePesquisa()
{
    m_chosen.clear();
    try {
        const SearchSource searched = source();
        SearchDialog dialog(*Tabela->IBDatabase, searched, m_title.isEmpty() ? u"Pesquisa"_s : m_title, window());
        if (dialog.exec() == QDialog::Accepted) {
            for (const SearchSource::Column &column : searched.columns)
                m_chosen.insert(column.name.toUpper(), dialog.chosen(column.name));
        }
    } catch (...) {
        Host::current().showException(window(), std::current_exception());
    }
    emit FechaPesquisa();
}

QString TPesquisa::RetornoPesquisa(const QString &Campo) const
{
    return m_chosen.value(Campo.toUpper());
}
