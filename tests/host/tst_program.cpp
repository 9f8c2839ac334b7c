// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// The program as it is run: its own process, its exit code, its files.

#include "tests/support/engines.h"
#include "tests/support/testdatabase.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct Run
{
    int code = -1;
    bool crashed = true;
    QString output;
    QString errors;
};

} // namespace

class TstProgram : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void helpAndVersionNeedNoDisplay_data();
    void helpAndVersionNeedNoDisplay();
    void anUnknownOptionIsToldInPortuguese();
    void withoutADisplayThereIsASentenceInsteadOfACrash();
    void aWrongSettingIsToldWithoutACrash();
    void aDatabaseThatIsNoneIsToldWithoutACrash();
    void everyScreenIsPicturedAndNothingOfTheUserTouched();
    void aDatabaseOfPostgresIsPicturedByItsAddress();
    void theDemonstrationLeavesTheLabelOfItsRoll();

private:
    Run run(const QStringList &arguments, const QString &platform = {}) const;

    std::unique_ptr<QTemporaryDir> m_home;
};

void TstProgram::init()
{
    m_home = std::make_unique<QTemporaryDir>();
}

/// As a user whose home is an empty folder; without a display unless one is given.
Run TstProgram::run(const QStringList &arguments, const QString &platform) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &name :
        {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s, u"XDG_DATA_HOME"_s, u"XDG_CONFIG_HOME"_s})
        environment.remove(name);
    environment.insert(u"HOME"_s, m_home->path());
    if (!platform.isEmpty())
        environment.insert(u"QT_QPA_PLATFORM"_s, platform);
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QCoreApplication::applicationDirPath() + u"/qen"_s, arguments);
    if (!program.waitForFinished(300000))
        program.kill();
    return {program.exitCode(), program.exitStatus() != QProcess::NormalExit,
        QString::fromUtf8(program.readAllStandardOutput()), QString::fromUtf8(program.readAllStandardError())};
}

void TstProgram::helpAndVersionNeedNoDisplay_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("words");
    QTest::newRow("help") << u"--help"_s << u"Usa este arquivo de configuração."_s;
    QTest::newRow("version") << u"--version"_s << u"qen 0."_s;
}

void TstProgram::helpAndVersionNeedNoDisplay()
{
    QFETCH(const QString, option);
    QFETCH(const QString, words);
    const Run program = run({option});
    QCOMPARE(program.code, 0);
    QVERIFY2(program.output.contains(words), qPrintable(program.output));
    QVERIFY2(!program.output.contains(u"Options"_s), qPrintable(program.output));
}

void TstProgram::anUnknownOptionIsToldInPortuguese()
{
    const Run program = run({u"--telas"_s});
    QCOMPARE(program.code, 2);
    QVERIFY2(program.errors.contains(u"qen --help"_s), qPrintable(program.errors));
    QVERIFY2(!program.errors.contains(u"Unknown"_s), qPrintable(program.errors));
}

void TstProgram::withoutADisplayThereIsASentenceInsteadOfACrash()
{
    const Run program = run({});
    QVERIFY(!program.crashed);
    QCOMPARE(program.code, 1);
    QVERIFY2(program.errors.contains(u"Não há tela"_s), qPrintable(program.errors));
}

void TstProgram::aWrongSettingIsToldWithoutACrash()
{
    QFile file(m_home->filePath(u"qen.ini"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[Banco]\nmotor=oracle\n");
    file.close();
    const Run program = run({u"--settings"_s, file.fileName(), u"--pictures"_s, m_home->path()});
    QVERIFY(!program.crashed);
    QCOMPARE(program.code, 1);
    QVERIFY2(program.errors.contains(file.fileName()), qPrintable(program.errors));
    QVERIFY2(program.errors.contains(u"\"motor\""_s), qPrintable(program.errors));
}

void TstProgram::aDatabaseThatIsNoneIsToldWithoutACrash()
{
    const Run program = run({u"--database"_s, u"oracle://mill/qen"_s, u"--pictures"_s, m_home->path()});
    QVERIFY(!program.crashed);
    QCOMPARE(program.code, 1);
    QVERIFY2(program.errors.contains(u"--database"_s), qPrintable(program.errors));
}

void TstProgram::everyScreenIsPicturedAndNothingOfTheUserTouched()
{
    const QString folder = m_home->filePath(u"imagens"_s);
    const Run program = run({u"--pictures"_s, folder});
    QVERIFY2(program.code == 0, qPrintable(program.errors));
    const QStringList files = program.output.split(u'\n', Qt::SkipEmptyParts);
    for (const QString &name : {u"login"_s, u"main-window"_s, u"TfmMalhaOF-empty"_s, u"TfmMalhaOFBaixaBarra-empty"_s})
        QVERIFY2(files.contains(u"%1/%2.png"_s.arg(folder, name)), qPrintable(name));
    for (const QString &layout : {u"WMalPend"_s, u"WMalOF"_s, u"TMalOF"_s, u"WMalLote"_s, u"WRelMalOF"_s,
             u"WEtqBarra"_s, u"TEtqBarra"_s, u"WEtqBaiMal"_s, u"WRelMalLibFat"_s, u"WMalRaport"_s}) {
        QVERIFY2(files.contains(u"%1/%2-1.png"_s.arg(folder, layout)), qPrintable(layout));
        QVERIFY2(QFileInfo(u"%1/%2.pdf"_s.arg(folder, layout)).size() > 1000, qPrintable(layout));
    }
    for (const QString &file : files)
        QVERIFY2(file.endsWith(u".pdf"_s) || QImage(file).width() > 300, qPrintable(file));
    // No demonstration for later, no settings: only the log may have been written.
    QDirIterator others(m_home->path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (others.hasNext()) {
        const QString file = others.next();
        QVERIFY2(file.startsWith(folder) || file.endsWith(u"/qen.log"_s), qPrintable(file));
    }
}

void TstProgram::aDatabaseOfPostgresIsPicturedByItsAddress()
{
    QCOMPARE(Engines::missing(u"postgres"_s), QString());
    TestDatabase database(u"postgres"_s);
    database.addCommonData();
    const ConnectionSettings settings = database.settings();
    const QString address = u"postgresql://%1@/%2?host=%3&port=%4"_s.arg(
        settings.user, settings.database, settings.host, QString::number(settings.port));
    const Run program = run({u"--database"_s, address, u"--user"_s, u"SEMDIREITO"_s, u"--company"_s, u"1"_s,
        u"--pictures"_s, m_home->path()});
    QVERIFY2(program.code == 0, qPrintable(program.errors));
    QVERIFY(QFile::exists(m_home->filePath(u"TfmMalhaOF-empty.png"_s)));
    const Run stranger = run({u"--database"_s, address, u"--user"_s, u"SEMDIREITO"_s, u"--company"_s, u"2"_s,
        u"--pictures"_s, m_home->path()});
    QCOMPARE(stranger.code, 1);
    QVERIFY2(stranger.errors.contains(u"não tem acesso à empresa 2"_s), qPrintable(stranger.errors));
}

void TstProgram::theDemonstrationLeavesTheLabelOfItsRoll()
{
    const QString folder = m_home->filePath(u"demonstracao"_s);
    const Run program = run({u"--demonstrate"_s, folder});
    QVERIFY2(program.code == 0, qPrintable(program.errors + program.output));
    QVERIFY2(program.output.contains(u"impresso: %1/WEtqBarra.pdf"_s.arg(folder)), qPrintable(program.output));
    QVERIFY(QFileInfo(folder + u"/WEtqBarra.pdf"_s).size() > 1000);
    QVERIFY(QImage(folder + u"/WEtqBarra-1.png"_s).width() > 300);
}

QTEST_MAIN(TstProgram)
#include "tst_program.moc"
