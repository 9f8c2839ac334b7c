// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/session.h"
#include "module/host_services/errors.h"
#include "tests/support/engines.h"
#include "tests/support/testdatabase.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TstSession : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data();
    void init();
    void cleanup();

    void aPasswordIsKeptAsArgon2idWithASaltOfItsOwn();
    void theRightPasswordLetsIn();
    void theUsersNameCountsInAnyCase();
    void ofTwoUsersWhoseNamesDifferByCaseTheTypedOneComesIn();
    void aWrongPasswordAndAnUnknownUserAreToldByTheSameWords();
    void aUserWithoutAPasswordStaysOut();
    void anInactiveUserStaysOut();
    void aUserWhoseActiveFlagIsNullIsActive();
    void anAdministratorSeesEveryActiveCompany();
    void anotherUserSeesTheActiveCompaniesThatAreHis();
    void aQuoteInANameOrPasswordIsOrdinaryText();
    void theFirstAdministratorCanLogIn();

private:
    Session session() { return Session(m_database->connection()); }
    QString refusal(const QString &user, const QString &password);

    std::unique_ptr<TestDatabase> m_database;
};

void TstSession::initTestCase_data()
{
    Engines::addEngineRows();
}

void TstSession::init()
{
    m_database = std::make_unique<TestDatabase>(Engines::current());
    m_database->addCommonData();
}

void TstSession::cleanup()
{
    m_database.reset();
}

QString TstSession::refusal(const QString &user, const QString &password)
{
    try {
        session().authenticate(user, password);
    } catch (const EQen &error) {
        return error.sentence();
    }
    return {};
}

void TstSession::aPasswordIsKeptAsArgon2idWithASaltOfItsOwn()
{
    const QString first = Session::passwordHash(u"segredo da malha"_s);
    const QString second = Session::passwordHash(u"segredo da malha"_s);
    QVERIFY(first.startsWith(u"$argon2id$"_s));
    QVERIFY(first != second);
    QVERIFY(first.size() <= 128); // its column
    QVERIFY(Session::passwordMatches(first, u"segredo da malha"_s));
    QVERIFY(!Session::passwordMatches(first, u"segredo da malhA"_s));
    QVERIFY(!Session::passwordMatches(u"segredo da malha"_s, u"segredo da malha"_s));
}

void TstSession::theRightPasswordLetsIn()
{
    const Account account = session().authenticate(u"ADMIN"_s, u"malha"_s);
    QCOMPARE(account.user, u"ADMIN"_s);
    QCOMPARE(account.name, u"Administrador"_s);
    QVERIFY(account.administrator);
}

void TstSession::theUsersNameCountsInAnyCase()
{
    QCOMPARE(session().authenticate(u" admin "_s, u"malha"_s).user, u"ADMIN"_s);
}

void TstSession::ofTwoUsersWhoseNamesDifferByCaseTheTypedOneComesIn()
{
    m_database->run(u"INSERT INTO QEN_USUARIO (USUARIO, NOME, ATIVO) VALUES ('admin', 'Outra pessoa', 'S')"_s);
    m_database->run(u"INSERT INTO QEN_USUARIO (USUARIO, NOME, ATIVO) VALUES ('Admin', 'Mais uma', 'S')"_s);
    for (const QString &user : {u"ADMIN"_s, u"Admin"_s, u"admin"_s})
        QCOMPARE(session().account(user)->user, user);
}

void TstSession::aWrongPasswordAndAnUnknownUserAreToldByTheSameWords()
{
    const QString wrong = refusal(u"ADMIN"_s, u"Malha"_s);
    QCOMPARE(wrong, u"Usuário ou senha incorretos."_s);
    QCOMPARE(refusal(u"NINGUEM"_s, u"malha"_s), wrong);
}

void TstSession::aUserWithoutAPasswordStaysOut()
{
    m_database->run(u"UPDATE QEN_USUARIO SET SENHA = NULL WHERE USUARIO = 'ADMIN'"_s);
    QCOMPARE(refusal(u"ADMIN"_s, {}), u"Usuário ou senha incorretos."_s);
}

void TstSession::anInactiveUserStaysOut()
{
    m_database->run(u"UPDATE QEN_USUARIO SET ATIVO = 'N' WHERE USUARIO = 'SEMDIREITO'"_s);
    QCOMPARE(refusal(u"SEMDIREITO"_s, u"malha"_s), u"Este usuário está inativo. Procure o administrador."_s);
    // Whoever does not know the password does not learn it.
    QCOMPARE(refusal(u"SEMDIREITO"_s, u"outra"_s), u"Usuário ou senha incorretos."_s);
}

void TstSession::aUserWhoseActiveFlagIsNullIsActive()
{
    m_database->run(u"UPDATE QEN_USUARIO SET ATIVO = NULL WHERE USUARIO = 'SEMDIREITO'"_s);
    QCOMPARE(refusal(u"SEMDIREITO"_s, u"malha"_s), QString());
}

void TstSession::anAdministratorSeesEveryActiveCompany()
{
    m_database->run(u"INSERT INTO QEN_EMPRESA (NUMERO, NOME, ATIVO) VALUES (7, 'Nova', NULL)"_s);
    m_database->run(u"UPDATE QEN_EMPRESA SET ATIVO = 'N' WHERE NUMERO = 2"_s);
    const QList<Company> companies = session().companies(*session().account(u"ADMIN"_s));
    QCOMPARE(companies.size(), 2);
    QCOMPARE(companies[0].label(), u"001 - Malharia Serra Azul"_s);
    QCOMPARE(companies[1].label(), u"007 - Nova"_s);
}

void TstSession::anotherUserSeesTheActiveCompaniesThatAreHis()
{
    const Account account = *session().account(u"SEMDIREITO"_s);
    QCOMPARE(session().companies(account).size(), 1);
    QCOMPARE(session().companies(account).first().number, 1);
    m_database->run(u"UPDATE QEN_EMPRESA SET ATIVO = 'N' WHERE NUMERO = 1"_s);
    QVERIFY(session().companies(account).isEmpty());
}

void TstSession::aQuoteInANameOrPasswordIsOrdinaryText()
{
    QCOMPARE(refusal(u"' OR 1=1 --"_s, u"' OR 1=1 --"_s), u"Usuário ou senha incorretos."_s);
    session().createAdministrator(u"D'Ávila"_s, u"D'Ávila"_s, u"água 'de' coco"_s);
    QCOMPARE(session().authenticate(u"D'Ávila"_s, u"água 'de' coco"_s).user, u"D'Ávila"_s);
}

void TstSession::theFirstAdministratorCanLogIn()
{
    m_database->run(u"DELETE FROM QEN_USUARIO"_s);
    QVERIFY(!session().hasUsers());
    session().createAdministrator(u"chefe"_s, u"Chefe da malharia"_s, u"teares circulares"_s);
    QVERIFY(session().hasUsers());
    QVERIFY(session().authenticate(u"chefe"_s, u"teares circulares"_s).administrator);
}

QTEST_MAIN(TstSession)
#include "tst_session.moc"
