// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/application.h"
#include "host/databaseopening.h"
#include "host/firststartdialog.h"
#include "host/logindialog.h"
#include "host/mainwindow.h"
#include "host/paths.h"
#include "host/session.h"
#include "host/startup.h"
#include "module/host_services/comport.h"
#include "module/host_services/errors.h"
#include "tests/support/engines.h"
#include "tests/support/testdatabase.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

/// Sits before the program: does something with each window when it comes up, and only once.
class Operator : public QObject
{
public:
    Operator()
    {
        connect(&m_eyes, &QTimer::timeout, this, &Operator::look);
        m_eyes.start(10);
    }

    std::function<void(LoginDialog &)> login;
    std::function<void(FirstStartDialog &)> firstStart;
    std::function<void(MainWindow &)> work;
    QStringList seen; ///< class names, in their order

private:
    void look()
    {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (!window->isVisible() || m_done.contains(window))
                continue;
            if (auto *dialog = qobject_cast<LoginDialog *>(window)) {
                if (isReady(*dialog))
                    meet(dialog, login);
            } else if (auto *first = qobject_cast<FirstStartDialog *>(window)) {
                meet(first, firstStart);
            } else if (auto *main = qobject_cast<MainWindow *>(window)) {
                meet(main, work);
            } else if (!seen.contains(QLatin1StringView(window->metaObject()->className()))) {
                seen.append(QLatin1StringView(window->metaObject()->className()));
            }
        }
    }

    /// The database is open.
    static bool isReady(const LoginDialog &dialog)
    {
        return !dialog.findChild<QLabel *>(u"hint"_s)->text().startsWith(u"Abrindo"_s);
    }

    template <class Window> void meet(Window *window, const std::function<void(Window &)> &act)
    {
        seen.append(QLatin1StringView(window->metaObject()->className()));
        m_done.append(window);
        if (act)
            act(*window);
        else
            window->close();
    }

    QTimer m_eyes;
    QList<QPointer<QWidget>> m_done;
};

void type(QWidget &window, const QString &field, const QString &text)
{
    auto *edit = window.findChild<QLineEdit *>(field);
    edit->clear();
    QTest::keyClicks(edit, text);
}

} // namespace

class TstStartup : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data();
    void init();
    void cleanup();

    void withoutSettingsTheDemonstrationIsCreatedOnceAndItsUserLogsIn();
    void anEmptyDatabaseAsksForItsAdministratorBeforeAnybodyLogsIn();
    void whoGivesUpTheFirstStartOrTheLoginEndsTheProgram();
    void aDatabaseThatCannotBeOpenedEndsTheProgramWithItsReason();
    void aWrongSettingEndsTheProgramBeforeAnyWindow();

private:
    Options options() const;
    void writeSettings(const QByteArray &text);

    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<TestDatabase> m_database;
};

void TstStartup::initTestCase_data()
{
    Engines::addEngineRows();
}

void TstStartup::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    qputenv("XDG_DATA_HOME", m_home->filePath(u"data"_s).toUtf8());
    qputenv("XDG_CONFIG_HOME", m_home->filePath(u"config"_s).toUtf8());
    m_database = std::make_unique<TestDatabase>(Engines::current(), TestDatabase::Content::Nothing);
}

void TstStartup::cleanup()
{
    m_database.reset();
}

void TstStartup::writeSettings(const QByteArray &text)
{
    QDir().mkpath(QFileInfo(Paths::settingsFile()).absolutePath());
    QFile file(Paths::settingsFile());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
}

/// The test's database by its address.
Options TstStartup::options() const
{
    const ConnectionSettings &settings = m_database->settings();
    Options options;
    options.database = settings.engine == Engine::PostgreSQL ? u"postgresql://%1@/%2?host=%3&port=%4"_s.arg(
                           settings.user, settings.database, settings.host, QString::number(settings.port))
                                                             : settings.database;
    return options;
}

void TstStartup::withoutSettingsTheDemonstrationIsCreatedOnceAndItsUserLogsIn()
{
    for (const bool first : {true, false}) {
        Operator someone;
        someone.login = [first](LoginDialog &dialog) {
            if (first)
                type(dialog, u"user"_s, u"demo"_s);
            type(dialog, u"password"_s, u"demonstracao"_s);
            dialog.accept();
        };
        int screens = 0;
        QString device;
        someone.work = [&](MainWindow &window) {
            window.openScreen(u"TfmMalhaOF"_s);
            ComPortSettings scale;
            scale.port = ComPortSettings::simulatedPort;
            device = scale.deviceName();
            screens = window.findChild<QTabWidget *>(u"screens"_s)->count();
            QTimer::singleShot(0, &window, &QWidget::close);
        };
        QCOMPARE(runProgram({}), 0);
        QCOMPARE(screens, 1);
        QVERIFY2(device.startsWith(u"/dev/"_s), qPrintable(device)); // a scale to try with
        QCOMPARE(someone.seen.contains(u"QProgressDialog"_s), first);
        QCOMPARE(someone.seen.last(), u"MainWindow"_s);
    }
    QVERIFY(QFile::exists(Paths::demonstrationDatabase()));
    QVERIFY(QFile::exists(Paths::settingsFile()));
}

void TstStartup::anEmptyDatabaseAsksForItsAdministratorBeforeAnybodyLogsIn()
{
    Operator someone;
    someone.firstStart = [](FirstStartDialog &dialog) {
        type(dialog, u"company"_s, u"Malharia Horizonte"_s);
        type(dialog, u"user"_s, u"chefe"_s);
        type(dialog, u"password"_s, u"teares circulares"_s);
        type(dialog, u"again"_s, u"teares circulares"_s);
        dialog.accept();
    };
    QString companies;
    someone.login = [&](LoginDialog &dialog) {
        type(dialog, u"user"_s, u"chefe"_s);
        type(dialog, u"password"_s, u"teares circulares"_s);
        dialog.accept();
        companies = dialog.findChild<QComboBox *>(u"company"_s)->currentText();
    };
    QCOMPARE(runProgram(options()), 0);
    QCOMPARE(companies, u"001 - Malharia Horizonte"_s);
    QCOMPARE(someone.seen, (QStringList{u"FirstStartDialog"_s, u"LoginDialog"_s, u"MainWindow"_s}));
}

void TstStartup::whoGivesUpTheFirstStartOrTheLoginEndsTheProgram()
{
    {
        Operator someone;
        QCOMPARE(runProgram(options()), 0);
        QCOMPARE(someone.seen, QStringList{u"FirstStartDialog"_s});
    }
    DatabaseOpening::firstStart(m_database->connection(), u"Malharia"_s, u"chefe"_s, u"teares circulares"_s);
    Operator someone;
    QCOMPARE(runProgram(options()), 0);
    QCOMPARE(someone.seen, QStringList{u"LoginDialog"_s});
}

void TstStartup::aDatabaseThatCannotBeOpenedEndsTheProgramWithItsReason()
{
    Options options;
    options.database = u"postgresql://ana@/nenhum?host=/no/such/folder"_s;
    QVERIFY_EXCEPTION_THROWN(runProgram(options), EQen);
}

void TstStartup::aWrongSettingEndsTheProgramBeforeAnyWindow()
{
    writeSettings("[Banco]\nmotor=postgresql\n");
    Operator someone;
    try {
        runProgram({});
        QFAIL("There is no database to open");
    } catch (const EQen &error) {
        QVERIFY2(error.sentence().contains(Paths::settingsFile()), qPrintable(error.sentence()));
        QVERIFY2(error.sentence().contains(u"\"banco\""_s), qPrintable(error.sentence()));
    }
    QVERIFY(someone.seen.isEmpty());
}

int main(int argc, char **argv)
{
    Application application(argc, argv);
    TstStartup tests;
    return QTest::qExec(&tests, argc, argv);
}
#include "tst_startup.moc"
