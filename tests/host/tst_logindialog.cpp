// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/logindialog.h"
#include "module/host_services/errors.h"
#include "tests/support/engines.h"
#include "tests/support/testdatabase.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TstLoginDialog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data();
    void init();
    void cleanup();

    void theCompaniesAreThoseOfTheUserWhoWasTyped();
    void aWrongPasswordStaysAndClearsIt();
    void theRightPasswordLetsInAndIsRememberedWithTheCompany();
    void enterGoesOnToWhatIsMissing();
    void aUserWithoutACompanyIsTold();
    void escapeGivesUp();
    void theHintIsShownOnlyWhenThereIsOne();
    void theDatabaseIsOpenedWhenTheDialogStandsOnTheScreen();
    void whoGivesUpTheOpeningGivesUpTheLogin();
    void aDatabaseThatCannotBeOpenedEndsTheDialogWithItsReason();

private:
    void show(const QString &hint = {});
    template <class Kind> Kind *child(const char *name) { return m_dialog->findChild<Kind *>(QLatin1StringView(name)); }
    void type(const char *field, const QString &text);

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<TestDatabase> m_database;
    std::unique_ptr<LoginDialog> m_dialog;
};

void TstLoginDialog::initTestCase_data()
{
    Engines::addEngineRows();
}

void TstLoginDialog::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_settings = std::make_unique<QSettings>(m_folder->filePath(u"qen.ini"_s), QSettings::IniFormat);
    m_database = std::make_unique<TestDatabase>(Engines::current());
    m_database->addCommonData();
}

void TstLoginDialog::cleanup()
{
    m_dialog.reset();
    m_database.reset();
}

void TstLoginDialog::show(const QString &hint)
{
    m_dialog = std::make_unique<LoginDialog>(m_database->connection(), *m_settings, hint);
    m_dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
}

void TstLoginDialog::type(const char *field, const QString &text)
{
    child<QLineEdit>(field)->setFocus();
    child<QLineEdit>(field)->selectAll();
    QTest::keyClicks(child<QLineEdit>(field), text);
}

void TstLoginDialog::theCompaniesAreThoseOfTheUserWhoWasTyped()
{
    show();
    auto *companies = child<QComboBox>("company");
    QCOMPARE(companies->count(), 0);
    type("user", u"admin"_s);
    QTest::keyClick(child<QLineEdit>("user"), Qt::Key_Tab);
    QVERIFY(child<QLineEdit>("password")->hasFocus());
    QCOMPARE(companies->count(), 2);
    QCOMPARE(companies->itemText(1), u"002 - Serra Azul Beneficiamento"_s);
    type("user", u"semdireito"_s);
    QTest::keyClick(child<QLineEdit>("user"), Qt::Key_Tab);
    QCOMPARE(companies->count(), 1);
    type("user", u"ninguem"_s);
    QTest::keyClick(child<QLineEdit>("user"), Qt::Key_Tab);
    QCOMPARE(companies->count(), 0);
}

void TstLoginDialog::aWrongPasswordStaysAndClearsIt()
{
    show();
    QVERIFY(!child<QLabel>("problem")->isVisible());
    type("user", u"ADMIN"_s);
    type("password", u"errada"_s);
    QTest::keyClick(child<QLineEdit>("password"), Qt::Key_Return);
    QVERIFY(m_dialog->isVisible());
    QVERIFY(child<QLabel>("problem")->isVisible());
    QCOMPARE(child<QLabel>("problem")->text(), u"Usuário ou senha incorretos."_s);
    QCOMPARE(child<QLineEdit>("password")->text(), QString());
    QVERIFY(child<QLineEdit>("password")->hasFocus());
    QCOMPARE(m_dialog->user(), QString());
    QVERIFY(!m_settings->contains(u"Entrada/usuario"_s));
}

void TstLoginDialog::theRightPasswordLetsInAndIsRememberedWithTheCompany()
{
    show();
    type("user", u"admin"_s);
    type("password", u"malha"_s);
    child<QComboBox>("company")->setCurrentIndex(1);
    QTest::keyClick(child<QLineEdit>("password"), Qt::Key_Return);
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
    QCOMPARE(m_dialog->user(), u"ADMIN"_s);
    QCOMPARE(m_dialog->company(), 2);
    show();
    QCOMPARE(child<QLineEdit>("user")->text(), u"ADMIN"_s);
    QCOMPARE(m_dialog->company(), 2);
    QVERIFY(child<QLineEdit>("password")->hasFocus());
}

void TstLoginDialog::enterGoesOnToWhatIsMissing()
{
    show();
    QTest::keyClick(m_dialog.get(), Qt::Key_Return);
    QVERIFY(child<QLineEdit>("user")->hasFocus());
    type("user", u"admin"_s);
    QTest::keyClick(child<QLineEdit>("user"), Qt::Key_Return);
    QVERIFY(child<QLineEdit>("password")->hasFocus());
    QVERIFY(!child<QLabel>("problem")->isVisible());
}

void TstLoginDialog::aUserWithoutACompanyIsTold()
{
    m_database->run(u"DELETE FROM QEN_USUARIO_EMPRESA"_s);
    show();
    type("user", u"semdireito"_s);
    type("password", u"malha"_s);
    QTest::keyClick(child<QLineEdit>("password"), Qt::Key_Return);
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(
        child<QLabel>("problem")->text(), u"Este usuário não tem acesso a nenhuma empresa. Procure o administrador."_s);
}

void TstLoginDialog::escapeGivesUp()
{
    show();
    QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
}

void TstLoginDialog::theHintIsShownOnlyWhenThereIsOne()
{
    show();
    QVERIFY(!child<QLabel>("hint")->isVisible());
    show(u"Dados de demonstração"_s);
    QCOMPARE(child<QLabel>("hint")->text(), u"Dados de demonstração"_s);
    QVERIFY(child<QLabel>("hint")->isVisible());
}

void TstLoginDialog::theDatabaseIsOpenedWhenTheDialogStandsOnTheScreen()
{
    m_settings->setValue(u"Entrada/usuario"_s, u"admin"_s);
    TTIDatabase closed;
    LoginDialog dialog(closed, *m_settings, u"Dados de demonstração"_s);
    bool wasVisible = false;
    dialog.openOnceShown([&] {
        wasVisible = dialog.isVisible();
        closed.open(m_database->settings());
        dialog.findChild<QLineEdit *>(u"password"_s)->setText(u"malha"_s);
        dialog.accept(); // still too early
        dialog.reject();
        return true;
    });
    QCOMPARE(dialog.findChild<QLabel *>(u"hint"_s)->text(), u"Abrindo o banco de dados..."_s);
    dialog.accept(); // too early
    dialog.show();
    QTRY_VERIFY(closed.isOpen());
    QVERIFY(wasVisible);
    QCOMPARE(dialog.findChild<QComboBox *>(u"company"_s)->count(), 2);
    QCOMPARE(dialog.findChild<QLabel *>(u"hint"_s)->text(), u"Dados de demonstração"_s);
    QVERIFY(dialog.isVisible());
    QVERIFY(!dialog.findChild<QLabel *>(u"problem"_s)->isVisible());
}

void TstLoginDialog::whoGivesUpTheOpeningGivesUpTheLogin()
{
    TTIDatabase closed;
    LoginDialog dialog(closed, *m_settings, {});
    dialog.openOnceShown([] { return false; });
    QCOMPARE(dialog.exec(), int(QDialog::Rejected));
    QVERIFY(!dialog.failure());
}

void TstLoginDialog::aDatabaseThatCannotBeOpenedEndsTheDialogWithItsReason()
{
    TTIDatabase closed;
    LoginDialog dialog(closed, *m_settings, {});
    dialog.openOnceShown([]() -> bool { throw EQen(u"O banco de dados não pôde ser aberto."_s); });
    QCOMPARE(dialog.exec(), int(QDialog::Rejected));
    QVERIFY_EXCEPTION_THROWN(std::rethrow_exception(dialog.failure()), EQen);
}

QTEST_MAIN(TstLoginDialog)
#include "tst_logindialog.moc"
