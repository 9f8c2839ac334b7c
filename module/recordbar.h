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

public:
    explicit RecordBar(QWidget *parent = nullptr);
    ~RecordBar() override;

    void showConfirmation(bool editing);
    QString hiddenButtons() const { return m_hidden; }
    void setSemBotoes(const QString &names);

private:
    std::unique_ptr<Ui::RecordBar> m_ui;
    QString m_hidden;
};
