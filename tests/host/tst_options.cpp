// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/options.h"
#include "module/host_services/errors.h"

#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;

class TstOptions : public QObject
{
    Q_OBJECT

private slots:
    void everyOptionIsRead();
    void whatCannotBeUnderstoodIsRefused_data();
    void whatCannotBeUnderstoodIsRefused();
    void helpAndVersionNeedNoDisplay_data();
    void helpAndVersionNeedNoDisplay();
    void withoutADisplayThereIsASentenceInsteadOfACrash();
    void aWrongSettingIsToldWithoutACrash();
};

namespace {

struct Run
{
    int code = -1;
    bool crashed = true;
    QString output;
    QString errors;
};

/// The program itself, without a display unless one is given.
Run run(const QStringList &arguments, const QString &platform = {})
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &name : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s})
        environment.remove(name);
    if (!platform.isEmpty())
        environment.insert(u"QT_QPA_PLATFORM"_s, platform);
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QCoreApplication::applicationDirPath() + u"/qen"_s, arguments);
    if (!program.waitForFinished())
        program.kill();
    return {program.exitCode(), program.exitStatus() != QProcess::NormalExit,
        QString::fromUtf8(program.readAllStandardOutput()), QString::fromUtf8(program.readAllStandardError())};
}

Options parsed(const QStringList &arguments)
{
    return Options::parse(QStringList(u"qen"_s) + arguments);
}

} // namespace

void TstOptions::everyOptionIsRead()
{
    const Options options = parsed({u"--settings"_s, u"/a.ini"_s, u"--database=/b.fdb"_s, u"--pictures"_s, u"/c"_s,
        u"--demonstrate"_s, u"/d"_s, u"--user"_s, u"ana"_s, u"--company"_s, u"2"_s});
    QCOMPARE(options.settings, u"/a.ini"_s);
    QCOMPARE(options.database, u"/b.fdb"_s);
    QCOMPARE(options.pictures, u"/c"_s);
    QCOMPARE(options.demonstrate, u"/d"_s);
    QCOMPARE(options.user, u"ana"_s);
    QCOMPARE(options.company, 2);
    QVERIFY(options.isUnattended());
    QVERIFY(!parsed({u"--database"_s, u"/b.fdb"_s}).isUnattended());
}

void TstOptions::whatCannotBeUnderstoodIsRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("unknown option") << QStringList{u"--telas"_s};
    QTest::newRow("missing value") << QStringList{u"--database"_s};
    QTest::newRow("argument without an option") << QStringList{u"malha.fdb"_s};
    QTest::newRow("company that is none") << QStringList{u"--pictures"_s, u"/c"_s, u"--company"_s, u"1000"_s};
    QTest::newRow("user with a window") << QStringList{u"--user"_s, u"ana"_s};
}

void TstOptions::whatCannotBeUnderstoodIsRefused()
{
    QFETCH(const QStringList, arguments);
    QVERIFY_EXCEPTION_THROWN(parsed(arguments), EQen);
    QCOMPARE(run(arguments).code, 2);
}

void TstOptions::helpAndVersionNeedNoDisplay_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("words");
    QTest::newRow("help") << u"--help"_s << u"Usa este arquivo de configuração."_s;
    QTest::newRow("version") << u"--version"_s << u"qen 0."_s;
}

void TstOptions::helpAndVersionNeedNoDisplay()
{
    QFETCH(const QString, option);
    QFETCH(const QString, words);
    const Run program = run({option});
    QCOMPARE(program.code, 0);
    QVERIFY2(program.output.contains(words), qPrintable(program.output));
    QVERIFY2(!program.output.contains(u"Options"_s), qPrintable(program.output));
}

void TstOptions::withoutADisplayThereIsASentenceInsteadOfACrash()
{
    const Run program = run({});
    QVERIFY(!program.crashed);
    QCOMPARE(program.code, 1);
    QVERIFY2(program.errors.contains(u"Não há tela"_s), qPrintable(program.errors));
}

void TstOptions::aWrongSettingIsToldWithoutACrash()
{
    QTemporaryDir folder;
    QFile file(folder.filePath(u"qen.ini"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[Banco]\nmotor=oracle\n");
    file.close();
    const Run program = run({u"--settings"_s, file.fileName(), u"--pictures"_s, folder.path()});
    QVERIFY(!program.crashed);
    QCOMPARE(program.code, 1);
    QVERIFY2(program.errors.contains(file.fileName()), qPrintable(program.errors));
    QVERIFY2(program.errors.contains(u"\"motor\""_s), qPrintable(program.errors));
}

QTEST_GUILESS_MAIN(TstOptions)
#include "tst_options.moc"
