// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class RecordBar;
}

/// The two bars of a record screen: the main one and, while a record is being edited, the confirmation one.
class RecordBar : public QWidget
{
    Q_OBJECT
    /// Names of main buttons that the screen has no action for, separated by blanks.
    Q_PROPERTY(QString semBotoes READ hiddenButtons WRITE setSemBotoes)
    /// Name of the button "&Incluir", "btnincluir" unless the screen names it otherwise.
    Q_PROPERTY(QString botaoIncluir READ insertButton WRITE setBotaoIncluir)
    /// Caption of the button that abandons, "&Cancelar" unless the screen words it otherwise.
    Q_PROPERTY(QString textoDesistir READ abandonText WRITE setTextoDesistir)

public:
    explicit RecordBar(QWidget *parent = nullptr);
    ~RecordBar() override;

    void showConfirmation(bool editing);
    QString hiddenButtons() const { return m_hidden; }
    void setSemBotoes(const QString &names);
    QString insertButton() const;
    void setBotaoIncluir(const QString &name);
    QString abandonText() const;
    void setTextoDesistir(const QString &text);

private:
    std::unique_ptr<Ui::RecordBar> m_ui;
    QString m_hidden;
};
