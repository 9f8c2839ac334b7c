// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

#include <optional>

class TTIDatabase;

/// A user as he is registered.
struct Account
{
    QString user;
    QString name;
    QString passwordHash; ///< empty: he has no password yet and cannot log in
    bool administrator = false;
    bool active = true;
};

struct Company
{
    int number = 0;
    QString name;

    QString label() const; ///< "001 - Malharia Serra Azul"
};

/// Who may come in, and into which companies. It keeps nothing: each question is asked of the database.
class Session
{
public:
    explicit Session(TTIDatabase &database);

    /// Names of users are found in any case. Empty when there is none of that name.
    std::optional<Account> account(const QString &user) const;
    /// Throws EQen; an unknown user and a wrong password are told by the same words and after the same time.
    Account authenticate(const QString &user, const QString &password) const;
    /// The active companies that the user may see, by their numbers; all of them for an administrator.
    QList<Company> companies(const Account &account) const;

    bool hasUsers() const;
    /// Throws EDatabaseError when there is a user of that name.
    void createAdministrator(const QString &user, const QString &name, const QString &password);

    /// Argon2id with its salt and cost, ready to be stored. Throws EQen when the memory does not suffice.
    static QString passwordHash(const QString &password);
    static bool passwordMatches(const QString &hash, const QString &password);

private:
    TTIDatabase &m_database;
};
