// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/application.h"
#include "host/logfile.h"
#include "host/paths.h"
#include "host/qenhost.h"
#include "module/form.h"
#include "module/host_services/busy.h"
#include "module/host_services/errors.h"
#include "module/host_services/tabelas.h"
#include "tests/support/engines.h"
#include "tests/support/messageanswers.h"
#include "tests/support/testdatabase.h"

#include <QAbstractButton>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString generalSentence = QStringLiteral("Ocorreu um erro inesperado. A operação foi interrompida.");

} // namespace

/// A screen whose button fails in the way that the test asks for.
class TfmFalha : public TForm
{
    Q_OBJECT

public:
    TfmFalha()
    {
        setWindowTitle(u"Tela que falha"_s);
        auto *button = new QPushButton(this);
        button->setObjectName(u"btFalha"_s);
    }

    Q_INVOKABLE void btFalhaClick() { work(); }

    std::function<void()> work;
};

/// A widget that is no screen: what it lets escape goes through the event loop.
class StrayWidget : public QWidget
{
protected:
    void customEvent(QEvent *) override { throw EQen(u"Escapou."_s, u"de um evento"_s); }
};

class TstExceptions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data();
    void init();
    void cleanup();

    void aRefusedStatementIsToldInOneSentenceWithTheEnginesWordsBehindDetails();
    void whatWasDoneBeforeIsUndone();
    void whatIsStillOpenWhenAFailureIsToldIsUndone();
    void aSaveThatAFailureUndidIsNotFinished();
    void theBusyMarkerGoesAndTheScreenStays();
    void aStrangeExceptionIsToldInAGeneralSentence();
    void theDetailsButtonIsPortugueseBeforeAndAfterItIsPressed();
    void aScreenThatGoesWhileTheBoxIsOpenTakesItAlong();
    void whatEscapesFromAnEventIsToldAndTheProgramGoesOn();
    void anExceptionWithoutAnyHostIsToldToo();

private:
    void fail(const std::function<void()> &work);
    QString logText() const;

    QTemporaryDir m_home;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<TestDatabase> m_database;
    std::unique_ptr<TTabela> m_tables;
    std::unique_ptr<QenHost> m_host;
    QPointer<TfmFalha> m_form;
};

void TstExceptions::initTestCase_data()
{
    Engines::addEngineRows();
}

void TstExceptions::init()
{
    qputenv("XDG_DATA_HOME", m_home.path().toUtf8());
    QFile::remove(Paths::logFile());
    m_settings = std::make_unique<QSettings>(m_home.filePath(u"qen.ini"_s), QSettings::IniFormat);
    m_database = std::make_unique<TestDatabase>(Engines::current());
    m_database->addCommonData();
    m_tables = std::make_unique<TTabela>();
    m_tables->IBDatabase->open(m_database->settings());
    m_host = std::make_unique<QenHost>(*m_settings);
    m_host->login(u"ADMIN"_s, 1);
    m_form = new TfmFalha;
    m_form->Create();
    m_form->show();
    QVERIFY(QTest::qWaitForWindowActive(m_form));
}

void TstExceptions::cleanup()
{
    delete m_form;
    m_host.reset();
    m_tables.reset();
    m_database.reset();
}

void TstExceptions::fail(const std::function<void()> &work)
{
    m_form->work = work;
    // A box that was open before has taken the focus along.
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form));
    m_form->findChild<QPushButton *>(u"btFalha"_s)->click();
}

QString TstExceptions::logText() const
{
    QFile file(Paths::logFile());
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void TstExceptions::aRefusedStatementIsToldInOneSentenceWithTheEnginesWordsBehindDetails()
{
    MessageAnswers answers;
    answers.expect(u"O banco de dados recusou a operação. Nada foi gravado."_s, QMessageBox::Ok, u"Tela que falha"_s);
    fail([this] { m_tables->IBDatabase->run(u"SELECT NADA FROM NENHUMA"_s); });
    const QString details = answers.shown().first().details;
    QVERIFY2(details.contains(u"NENHUMA"_s, Qt::CaseInsensitive), qPrintable(details));
    const QString log = logText();
    QVERIFY2(log.contains(u"TfmFalha: O banco de dados recusou a operação."_s), qPrintable(log));
    QVERIFY2(log.contains(u"SELECT NADA FROM NENHUMA"_s), qPrintable(log));
}

void TstExceptions::whatWasDoneBeforeIsUndone()
{
    MessageAnswers answers;
    answers.expect(u"Já existe um registro com esta chave. Nada foi gravado."_s);
    fail([this] {
        Save save(*m_tables->IBDatabase);
        m_tables->IBDatabase->run(u"INSERT INTO CADCOR_001 (COR, DESCRICAO) VALUES ('000009', 'Verde')"_s);
        m_tables->IBDatabase->run(u"INSERT INTO CADCOR_001 (COR, DESCRICAO) VALUES ('000001', 'Cru')"_s);
        save.CommitRetaining();
    });
    QVERIFY(!m_tables->IBDatabase->inTransaction());
    QCOMPARE(m_database->count(u"CADCOR"_s, u"COR = '000009'"_s), 0);
    // And the connection can be worked with.
    m_tables->IBDatabase->run(u"INSERT INTO CADCOR_001 (COR, DESCRICAO) VALUES ('000009', 'Verde')"_s);
    QCOMPARE(m_database->count(u"CADCOR"_s, u"COR = '000009'"_s), 1);
}

void TstExceptions::whatIsStillOpenWhenAFailureIsToldIsUndone()
{
    MessageAnswers answers;
    answers.expect(u"Sem papel."_s);
    Save save(*m_tables->IBDatabase);
    m_tables->IBDatabase->run(u"INSERT INTO CADCOR_001 (COR, DESCRICAO) VALUES ('000009', 'Verde')"_s);
    m_host->showException(m_form, std::make_exception_ptr(EQen(u"Sem papel."_s)));
    QVERIFY(!m_tables->IBDatabase->inTransaction());
    QCOMPARE(m_database->count(u"CADCOR"_s, u"COR = '000009'"_s), 0);
}

/// A handler of the screen's own fails while it saves, is told and returns: what follows is not kept without what was.
void TstExceptions::aSaveThatAFailureUndidIsNotFinished()
{
    TTIDatabase &database = *m_tables->IBDatabase;
    const QString insert = u"INSERT INTO CADCOR_001 (COR, DESCRICAO) VALUES ('%1', 'Verde')"_s;
    MessageAnswers answers;
    answers.expect(u"Sem papel."_s);
    {
        Save save(database);
        database.run(insert.arg(u"000008"_s));
        m_host->showException(m_form, std::make_exception_ptr(EQen(u"Sem papel."_s)));
        database.run(insert.arg(u"000009"_s));
        QVERIFY_EXCEPTION_THROWN(save.CommitRetaining(), EDatabaseError);
    }
    QCOMPARE(m_database->count(u"CADCOR"_s, u"COR IN ('000008', '000009')"_s), 0);
    Save next(database);
    database.run(insert.arg(u"000009"_s));
    next.CommitRetaining();
    QCOMPARE(m_database->count(u"CADCOR"_s, u"COR = '000009'"_s), 1);
}

void TstExceptions::theBusyMarkerGoesAndTheScreenStays()
{
    MessageAnswers answers;
    answers.expect(u"Sem papel."_s);
    fail([this] {
        Funcoes::Ocupado(true, m_form);
        throw EQen(u"Sem papel."_s);
    });
    QVERIFY(!m_host->busyMarker().isBusy());
    QVERIFY(!QApplication::overrideCursor());
    QVERIFY(m_form && m_form->isVisible());
    bool again = false;
    fail([&] { again = true; });
    QVERIFY(again);
}

void TstExceptions::aStrangeExceptionIsToldInAGeneralSentence()
{
    MessageAnswers answers;
    answers.expect(generalSentence).expect(generalSentence);
    fail([] { throw std::out_of_range("row 17"); });
    QCOMPARE(answers.shown()[0].details, u"row 17"_s);
    fail([] { throw 42; });
    QCOMPARE(answers.shown()[1].details, QString());
    QVERIFY(logText().contains(u"row 17"_s));
}

void TstExceptions::theDetailsButtonIsPortugueseBeforeAndAfterItIsPressed()
{
    MessageAnswers answers;
    QStringList names;
    answers.expectWindow([&](QWidget *window) {
        auto *box = qobject_cast<QMessageBox *>(window);
        for (QAbstractButton *button : box->buttons()) {
            if (box->buttonRole(button) != QMessageBox::ActionRole)
                continue;
            names.append(button->text());
            button->click();
            QCoreApplication::processEvents();
            names.append(button->text());
        }
        box->button(QMessageBox::Ok)->click();
    });
    fail([] { throw EQen(u"Sem papel."_s, u"printer says no"_s); });
    QCOMPARE(names, (QStringList{u"Detalhes..."_s, u"Detalhes..."_s}));
}

void TstExceptions::aScreenThatGoesWhileTheBoxIsOpenTakesItAlong()
{
    MessageAnswers answers;
    answers.expectWindow([this](QWidget *) { delete m_form; });
    m_host->showException(m_form, std::make_exception_ptr(EQen(u"Sem papel."_s)));
    QVERIFY(!m_form);
}

void TstExceptions::whatEscapesFromAnEventIsToldAndTheProgramGoesOn()
{
    StrayWidget stray;
    stray.setWindowTitle(u"Avulsa"_s);
    stray.show();
    QVERIFY(QTest::qWaitForWindowExposed(&stray));
    MessageAnswers answers;
    answers.expect(u"Escapou."_s, QMessageBox::Ok, u"Avulsa"_s);
    QEvent event(QEvent::User);
    QCoreApplication::sendEvent(&stray, &event);
    QCOMPARE(answers.shown().first().details, u"de um evento"_s);
    QVERIFY(logText().contains(u"Escapou."_s));
}

void TstExceptions::anExceptionWithoutAnyHostIsToldToo()
{
    delete m_form;
    m_host.reset();
    StrayWidget stray;
    stray.show();
    QVERIFY(QTest::qWaitForWindowExposed(&stray));
    MessageAnswers answers;
    answers.expect(u"Escapou."_s);
    QEvent event(QEvent::User);
    QCoreApplication::sendEvent(&stray, &event);
}

int main(int argc, char **argv)
{
    Application application(argc, argv);
    TstExceptions tests;
    return QTest::qExec(&tests, argc, argv);
}
#include "tst_exceptions.moc"
