// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/options.h"
#include "module/host_services/errors.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TstOptions : public QObject
{
    Q_OBJECT

private slots:
    void everyOptionIsRead();
    void whatCannotBeUnderstoodIsRefused_data();
    void whatCannotBeUnderstoodIsRefused();
    void theHelpTellsWhatPeopleCanUse();
};

namespace {

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
}

void TstOptions::theHelpTellsWhatPeopleCanUse()
{
    const QString help = Options::helpText();
    for (const QString &option :
        {u"--settings"_s, u"--database"_s, u"--pictures"_s, u"--demonstrate"_s, u"--version"_s})
        QVERIFY2(help.contains(option), qPrintable(option));
    QVERIFY(!help.contains(u"exit-at-login"_s));
}

QTEST_GUILESS_MAIN(TstOptions)
#include "tst_options.moc"
