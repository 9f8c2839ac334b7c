// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class ReportBar;
}
class QPushButton;

/// The buttons of a report screen, consult, print and close, and beside them what the consultation found.
class ReportBar : public QWidget
{
    Q_OBJECT
    /// Captions, "&Confirmar", "Imprimir" and "&Fechar" unless the screen words them otherwise.
    Q_PROPERTY(QString textoConsultar READ consultText WRITE setTextoConsultar)
    Q_PROPERTY(QString textoImprimir READ printText WRITE setTextoImprimir)
    Q_PROPERTY(QString textoFechar READ closeText WRITE setTextoFechar)
    /// Object names of the three, separated by blanks: "BtnExecutaSQL BtnImprimir BitBtn5" unless named otherwise.
    Q_PROPERTY(QString botoes READ buttonNames WRITE setBotoes)

public:
    explicit ReportBar(QWidget *parent = nullptr);
    ~ReportBar() override;

    QString consultText() const;
    void setTextoConsultar(const QString &text);
    QString printText() const;
    void setTextoImprimir(const QString &text);
    QString closeText() const;
    void setTextoFechar(const QString &text);
    QString buttonNames() const;
    void setBotoes(const QString &names);

    QPushButton *consultButton() const;
    /// "128 registros"; an empty text before the first consultation and after one that failed.
    void tell(const QString &outcome);

private:
    std::unique_ptr<Ui::ReportBar> m_ui;
};
