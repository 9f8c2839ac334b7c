// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/session.h"

#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/sqltext.h"

#include <sodium.h>

#include <array>

using namespace Qt::StringLiterals;

namespace {

/// Yes unless it says otherwise: a flag that was never set counts as active.
bool isActive(const QVariant &flag)
{
    return flag.isNull() || flag.toString() == u"S"_s;
}

void startSodium()
{
    if (sodium_init() < 0)
        throw EQen(u"A biblioteca de senhas não pôde ser iniciada."_s);
}

} // namespace

QString Company::label() const
{
    return u"%1 - %2"_s.arg(QString::number(number).rightJustified(3, u'0'), name);
}

Session::Session(TTIDatabase &database)
    : m_database(database)
{
}

std::optional<Account> Session::account(const QString &user) const
{
    const QString literal = SqlText::quoted(user.trimmed());
    QSqlQuery query = m_database.run(uR"(SELECT USUARIO, NOME, SENHA, ADMINISTRADOR, ATIVO FROM QEN_USUARIO
            WHERE USUARIO = %1 OR UPPER(USUARIO) = UPPER(%1)
            ORDER BY CASE WHEN USUARIO = %1 THEN 0 ELSE 1 END, USUARIO)"_s.arg(literal));
    if (!m_database.next(query))
        return {};
    return Account{query.value(0).toString(), query.value(1).toString(), query.value(2).toString(),
        query.value(3).toString() == u"S"_s, isActive(query.value(4))};
}

Account Session::authenticate(const QString &user, const QString &password) const
{
    const std::optional<Account> found = account(user);
    // Without a hash to compare with, an unknown user would be told apart by the shorter wait.
    static const QString nobodys = passwordHash(u"?"_s);
    const bool hasPassword = found && !found->passwordHash.isEmpty();
    const bool matches = passwordMatches(hasPassword ? found->passwordHash : nobodys, password);
    if (!hasPassword || !matches)
        throw EQen(u"Usuário ou senha incorretos."_s);
    if (!found->active)
        throw EQen(u"Este usuário está inativo. Procure o administrador."_s);
    return *found;
}

QList<Company> Session::companies(const Account &account) const
{
    QString statement = u"SELECT E.NUMERO, E.NOME FROM QEN_EMPRESA E WHERE (E.ATIVO = 'S' OR E.ATIVO IS NULL)"_s;
    if (!account.administrator) {
        statement +=
            u" AND EXISTS (SELECT 1 FROM QEN_USUARIO_EMPRESA U WHERE U.EMPRESA = E.NUMERO AND U.USUARIO = %1)"_s.arg(
                SqlText::quoted(account.user));
    }
    QList<Company> result;
    QSqlQuery query = m_database.run(statement + u" ORDER BY E.NUMERO"_s);
    while (m_database.next(query))
        result.append({query.value(0).toInt(), query.value(1).toString()});
    return result;
}

bool Session::hasUsers() const
{
    return m_database.value(u"SELECT 1 FROM QEN_USUARIO FETCH FIRST 1 ROWS ONLY"_s).isValid();
}

void Session::createAdministrator(const QString &user, const QString &name, const QString &password)
{
    m_database.run(
        u"INSERT INTO QEN_USUARIO (USUARIO, NOME, SENHA, ADMINISTRADOR, ATIVO) VALUES (%1, %2, %3, 'S', 'S')"_s.arg(
            SqlText::quoted(user.trimmed()), SqlText::quoted(name), SqlText::quoted(passwordHash(password))));
}

QString Session::passwordHash(const QString &password)
{
    startSodium();
    const QByteArray text = password.toUtf8();
    std::array<char, crypto_pwhash_STRBYTES> hash{};
    if (crypto_pwhash_str(hash.data(), text.constData(), static_cast<unsigned long long>(text.size()),
            crypto_pwhash_OPSLIMIT_INTERACTIVE, crypto_pwhash_MEMLIMIT_INTERACTIVE)
        != 0)
        throw EQen(u"Não há memória livre para conferir a senha."_s);
    return QString::fromLatin1(hash.data());
}

bool Session::passwordMatches(const QString &hash, const QString &password)
{
    startSodium();
    const QByteArray text = password.toUtf8();
    return crypto_pwhash_str_verify(
               hash.toLatin1().constData(), text.constData(), static_cast<unsigned long long>(text.size()))
        == 0;
}
