// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/logfile.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TstLogFile : public QObject
{
    Q_OBJECT

private slots:
    void anEntryHasItsMomentAndItsFurtherLinesIndented();
    void aFullFileIsPutAsideAndOnlyOneOfThem();
};

namespace {

QString textOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

void TstLogFile::anEntryHasItsMomentAndItsFurtherLinesIndented()
{
    const QTemporaryDir folder;
    LogFile log(folder.filePath(u"dados/qen.log"_s));
    log.write(u"O banco recusou.\ndeadlock\n"_s);
    log.write(u"outra"_s);
    const QStringList lines = textOf(log.path()).split(u'\n');
    QCOMPARE(lines.size(), 4); // the last one is empty
    static const QRegularExpression moment(u"^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d O banco recusou\\.$"_s);
    QVERIFY2(moment.match(lines[0]).hasMatch(), qPrintable(lines[0]));
    QCOMPARE(lines[1], u"    deadlock"_s);
    QVERIFY(lines[2].endsWith(u" outra"_s));
}

void TstLogFile::aFullFileIsPutAsideAndOnlyOneOfThem()
{
    const QTemporaryDir folder;
    LogFile log(folder.filePath(u"qen.log"_s));
    for (int round = 1; round <= 2; ++round) {
        log.write(QString(LogFile::fullAt, QChar(u'0' + round)));
        log.write(u"depois"_s);
        QVERIFY(textOf(log.previousPath()).endsWith(u"%1\n"_s.arg(round)));
        QVERIFY(textOf(log.path()).endsWith(u" depois\n"_s));
        QVERIFY(textOf(log.path()).size() < 100);
    }
}

QTEST_GUILESS_MAIN(TstLogFile)
#include "tst_logfile.moc"
