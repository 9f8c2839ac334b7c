// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class LoginDialog;
}
class QSettings;
class TTIDatabase;

/// Who works, and in which company. The last user and company of the station stand there already.
class LoginDialog : public QDialog
{
    Q_OBJECT

public:
    /// `hint` is shown below the fields, or nothing when it is empty.
    LoginDialog(TTIDatabase &database, QSettings &settings, const QString &hint, QWidget *parent = nullptr);
    ~LoginDialog() override;

    QString user() const { return m_user; } ///< as registered; empty until accepted
    int company() const; ///< 0: none chosen

    void setUser(const QString &user);
    /// Checks the password; what is wrong is told in the dialog, which then stays.
    void accept() override;

private:
    void listCompanies();
    void logIn();
    void refuse(const QString &text, QWidget *atFault);

    std::unique_ptr<Ui::LoginDialog> m_ui;
    TTIDatabase &m_database;
    QSettings &m_settings;
    QString m_user;
    QString m_listedFor; ///< whose companies the list holds
};
