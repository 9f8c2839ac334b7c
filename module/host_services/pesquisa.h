// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/searchsource.h"

#include <QHash>
#include <QToolButton>

class QLineEdit;

/// A search: the small button beside a code field. F4 in the field opens it too.
class TPesquisa : public QToolButton
{
    Q_OBJECT
    Q_PROPERTY(QString Tabela READ table WRITE setTabela) ///< logical name of the table
    /// "CODCLI=Código;NOME=Nome": the columns shown; the first is the key.
    Q_PROPERTY(QString Colunas READ columns WRITE setColunas)
    Q_PROPERTY(QString Titulo READ title WRITE setTitulo)
    Q_PROPERTY(QString Campo READ fieldName WRITE setCampo) ///< name of the code field beside it
    /// Name of the field that shows what the code stands for: the second column. Empty: nothing does.
    Q_PROPERTY(QString Descricao READ textName WRITE setDescricao)

public:
    explicit TPesquisa(QWidget *parent = nullptr);

    QString table() const { return m_table; }
    void setTabela(const QString &table) { m_table = table; }
    QString columns() const { return m_columns; }
    void setColunas(const QString &columns) { m_columns = columns; }
    QString title() const { return m_title; }
    void setTitulo(const QString &title) { m_title = title; }
    QString fieldName() const { return m_fieldName; }
    void setCampo(const QString &name) { m_fieldName = name; }
    QString textName() const { return m_textName; }
    void setDescricao(const QString &name) { m_textName = name; }
    QString keyColumn() const { return m_columns.section(u';', 0, 0).section(u'=', 0, 0).trimmed(); }
    QString textColumn() const { return m_columns.section(u';', 1, 1).section(u'=', 0, 0).trimmed(); }

    /// A condition that all rows listed meet, on top of what the user types; empty: none.
    void setFilter(const QString &condition) { m_filter = condition; }
    /// A select, physical names resolved, that takes the table's place; empty: the table again.
    void setSQL(const QString &select) { m_select = select; }

    void AbrePesquisa();
    /// Value of a column of the row chosen last; empty when the user cancelled.
    QString RetornoPesquisa(const QString &Campo) const;

signals:
    void FechaPesquisa(); ///< the search closed, with a choice or without

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    SearchSource source() const;

    QString m_table;
    QString m_columns;
    QString m_title;
    QString m_fieldName;
    QString m_textName;
    QString m_filter;
    QString m_select;
    QHash<QString, QString> m_chosen;
};
