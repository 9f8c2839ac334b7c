// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include <exception>
#include <functional>
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
    /// `hint` is shown below the fields, or nothing when it is empty. The database may still be closed.
    LoginDialog(TTIDatabase &database, QSettings &settings, const QString &hint, QWidget *parent = nullptr);
    ~LoginDialog() override;

    /// Opens the database when the dialog stands on the screen already: nobody waits for a window. False ends the
    /// dialog, and so does an exception, which failure() then holds.
    void openOnceShown(const std::function<bool()> &open);
    std::exception_ptr failure() const { return m_failure; }

    QString user() const { return m_user; } ///< as registered; empty until accepted
    int company() const; ///< 0: none chosen

    /// Checks the password; what is wrong is told in the dialog, which then stays.
    void accept() override;
    /// Does nothing while the database is being opened, which may show dialogs of its own.
    void reject() override;

private:
    void opened(const std::function<bool()> &open);
    void listCompanies();
    void logIn();
    void refuse(const QString &text, QWidget *atFault);

    std::unique_ptr<Ui::LoginDialog> m_ui;
    TTIDatabase &m_database;
    QSettings &m_settings;
    QString m_hint;
    QString m_user;
    std::exception_ptr m_failure;
    bool m_opening = false;
    QString m_listedFor; ///< whose companies the list holds
};
