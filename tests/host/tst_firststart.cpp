// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/databaseopening.h"
#include "host/firststartdialog.h"
#include "host/session.h"
#include "module/host_services/errors.h"
#include "tests/support/engines.h"
#include "tests/support/testdatabase.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TstFirstStart : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data();
    void init();
    void cleanup();

    void anEmptyDatabaseGetsItsTables();
    void aLocalFileThatIsMissingIsCreated();
    void aFileIsOpenedByItsOnePathWhateverLinkLeadsToIt();
    void aFileThatIsNoDatabaseIsNamed();
    void aServerThatIsNotThereIsNamed();
    void aDatabaseOfANewerVersionIsRefused();
    void theDialogAsksUntilAllIsRight();
    void theFirstStartMakesTheCompanyAndItsAdministrator();
    void companiesThatAreThereStay();
    void theAdministratorWhoGaveUpIsAskedAgain();

private:
    void type(FirstStartDialog &dialog, const QString &field, const QString &text);
    QString problem(FirstStartDialog &dialog);

    std::unique_ptr<TestDatabase> m_server;
    std::unique_ptr<TTIDatabase> m_database;
};

void TstFirstStart::initTestCase_data()
{
    Engines::addEngineRows();
}

void TstFirstStart::init()
{
    m_server = std::make_unique<TestDatabase>(Engines::current(), TestDatabase::Content::Nothing);
    m_database = std::make_unique<TTIDatabase>();
}

void TstFirstStart::cleanup()
{
    m_database.reset();
    m_server.reset();
}

void TstFirstStart::type(FirstStartDialog &dialog, const QString &field, const QString &text)
{
    auto *edit = dialog.findChild<QLineEdit *>(field);
    edit->clear();
    QTest::keyClicks(edit, text);
}

QString TstFirstStart::problem(FirstStartDialog &dialog)
{
    dialog.accept();
    return dialog.findChild<QLabel *>(u"problem"_s)->text();
}

void TstFirstStart::anEmptyDatabaseGetsItsTables()
{
    DatabaseOpening::open(*m_database, m_server->settings());
    QVERIFY(DatabaseOpening::isFirstStart(*m_database));
    // And a second time, when they are there.
    DatabaseOpening::open(*m_database, m_server->settings());
    QVERIFY(DatabaseOpening::isFirstStart(*m_database));
}

void TstFirstStart::aLocalFileThatIsMissingIsCreated()
{
    if (Engines::current() != u"firebird"_s)
        return;
    const QTemporaryDir folder;
    ConnectionSettings settings = m_server->settings();
    settings.database = folder.filePath(u"ano/novo/malha.fdb"_s);
    DatabaseOpening::open(*m_database, settings);
    QVERIFY(QFile::exists(settings.database));
    QVERIFY(DatabaseOpening::isFirstStart(*m_database));
    m_database->close();
}

void TstFirstStart::aFileIsOpenedByItsOnePathWhateverLinkLeadsToIt()
{
    if (Engines::current() != u"firebird"_s)
        return;
    const QTemporaryDir folder;
    ConnectionSettings settings = m_server->settings();
    const QString real = settings.database;
    settings.database = folder.filePath(u"atalho.fdb"_s);
    QVERIFY(QFile::link(real, settings.database));
    DatabaseOpening::open(*m_database, settings);
    QCOMPARE(m_database->settings().database, QFileInfo(real).canonicalFilePath());
}

void TstFirstStart::aFileThatIsNoDatabaseIsNamed()
{
    if (Engines::current() != u"firebird"_s)
        return;
    const QTemporaryDir folder;
    ConnectionSettings settings = m_server->settings();
    settings.database = folder.filePath(u"carta.fdb"_s);
    QFile letter(settings.database);
    QVERIFY(letter.open(QIODevice::WriteOnly));
    letter.write(QByteArray(20000, 'x'));
    letter.close();
    try {
        DatabaseOpening::open(*m_database, settings);
        QFAIL("A letter was opened as a database");
    } catch (const EQen &error) {
        QCOMPARE(error.sentence(), u"O banco de dados \"%1\" não pôde ser aberto."_s.arg(settings.database));
        QVERIFY(!error.details().isEmpty());
    }
    QVERIFY(!m_database->isOpen());
}

void TstFirstStart::aServerThatIsNotThereIsNamed()
{
    ConnectionSettings settings = m_server->settings();
    if (settings.engine == Engine::FirebirdEmbedded)
        settings.engine = Engine::FirebirdServer;
    settings.host = u"127.0.0.1"_s;
    settings.port = 1;
    settings.database = u"qen"_s;
    try {
        DatabaseOpening::open(*m_database, settings);
        QFAIL("Nobody listens at that port");
    } catch (const EQen &error) {
        QCOMPARE(error.sentence(), u"O banco de dados \"qen (127.0.0.1)\" não pôde ser aberto."_s);
        QVERIFY(!error.details().isEmpty());
    }
}

void TstFirstStart::aDatabaseOfANewerVersionIsRefused()
{
    DatabaseOpening::open(*m_database, m_server->settings());
    m_server->run(u"INSERT INTO QEN_ESQUEMA (VERSAO) VALUES (999)"_s);
    try {
        DatabaseOpening::open(*m_database, m_server->settings());
        QFAIL("A newer database was opened");
    } catch (const EQen &error) {
        QCOMPARE(
            error.sentence(), u"Este banco de dados é de uma versão mais nova do programa. Atualize o programa."_s);
    }
    QVERIFY(!m_database->isOpen());
}

void TstFirstStart::theDialogAsksUntilAllIsRight()
{
    DatabaseOpening::open(*m_database, m_server->settings());
    FirstStartDialog dialog(*m_database);
    QCOMPARE(problem(dialog), u"Informe o nome da empresa."_s);
    type(dialog, u"company"_s, u"Malharia Horizonte"_s);
    type(dialog, u"user"_s, u" "_s);
    QCOMPARE(problem(dialog), u"Informe o nome do administrador."_s);
    type(dialog, u"user"_s, u"chefe"_s);
    type(dialog, u"password"_s, u"teares7"_s);
    type(dialog, u"again"_s, u"teares7"_s);
    QCOMPARE(problem(dialog), u"A senha deve ter pelo menos 8 caracteres."_s);
    type(dialog, u"password"_s, u"teares 8"_s);
    QCOMPARE(problem(dialog), u"As duas senhas são diferentes. Digite de novo."_s);
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QVERIFY(DatabaseOpening::isFirstStart(*m_database));
    type(dialog, u"again"_s, u"teares 8"_s);
    dialog.accept();
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(dialog.user(), u"chefe"_s);
    QVERIFY(!DatabaseOpening::isFirstStart(*m_database));
}

void TstFirstStart::theFirstStartMakesTheCompanyAndItsAdministrator()
{
    DatabaseOpening::open(*m_database, m_server->settings());
    DatabaseOpening::firstStart(*m_database, u"Malharia d'Oeste"_s, u"chefe"_s, u"teares circulares"_s);
    const Session session(*m_database);
    const Account account = session.authenticate(u"chefe"_s, u"teares circulares"_s);
    QVERIFY(account.administrator);
    QCOMPARE(session.companies(account).size(), 1);
    QCOMPARE(session.companies(account).first().label(), u"001 - Malharia d'Oeste"_s);
    QCOMPARE(m_server->count(u"OF_MALHA"_s), 0);
}

void TstFirstStart::companiesThatAreThereStay()
{
    m_server = std::make_unique<TestDatabase>(Engines::current());
    DatabaseOpening::open(*m_database, m_server->settings());
    DatabaseOpening::firstStart(*m_database, u"Outra"_s, u"chefe"_s, u"teares circulares"_s);
    QCOMPARE(m_server->rows(u"SELECT NOME FROM QEN_EMPRESA ORDER BY NUMERO"_s),
        (QStringList{u"Malharia Serra Azul"_s, u"Serra Azul Beneficiamento"_s}));
    m_database->close();
}

void TstFirstStart::theAdministratorWhoGaveUpIsAskedAgain()
{
    DatabaseOpening::open(*m_database, m_server->settings());
    FirstStartDialog(*m_database).reject();
    DatabaseOpening::open(*m_database, m_server->settings());
    QVERIFY(DatabaseOpening::isFirstStart(*m_database));
}

QTEST_MAIN(TstFirstStart)
#include "tst_firststart.moc"
