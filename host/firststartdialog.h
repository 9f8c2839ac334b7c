// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class FirstStartDialog;
}
class TTIDatabase;

/// What an empty database needs before anybody can log in: the company's name and the administrator.
class FirstStartDialog : public QDialog
{
    Q_OBJECT

public:
    explicit FirstStartDialog(TTIDatabase &database, QWidget *parent = nullptr);
    ~FirstStartDialog() override;

    QString user() const; ///< the administrator

    /// Registers what was typed; what is wrong is told in the dialog, which then stays.
    void accept() override;

    static constexpr int shortestPassword = 8; ///< characters

private:
    void refuse(const QString &text, QWidget *atFault);

    std::unique_ptr<Ui::FirstStartDialog> m_ui;
    TTIDatabase &m_database;
};
