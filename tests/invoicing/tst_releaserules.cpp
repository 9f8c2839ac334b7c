// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "invoicing/releaserules.h"

#include <QTest>

using namespace ReleaseRules;

class TestReleaseRules : public QObject
{
    Q_OBJECT

private slots:
    void whatIsAboveTheBalance_data();
    void whatIsAboveTheBalance();
    void nothingAddsUpToNothing();
    void quantitiesAndRollsAddUpToTheGram();
    void linesWithoutAQuantityAreNotReleased();
};

void TestReleaseRules::whatIsAboveTheBalance_data()
{
    QTest::addColumn<Line>("line");
    QTest::addColumn<bool>("above");
    QTest::newRow("less") << Line{19.999, 1, 20} << false;
    QTest::newRow("all of it") << Line{20, 1, 20} << false;
    QTest::newRow("a gram more") << Line{20.001, 1, 20} << true;
    QTest::newRow("as sums of binary fractions are") << Line{0.1 + 0.2, 1, 0.3} << false;
    QTest::newRow("less than half a gram more") << Line{20.0004, 1, 20} << false;
    QTest::newRow("nothing") << Line{0, 0, 20} << false;
    QTest::newRow("nothing of nothing") << Line{0, 0, 0} << false;
    QTest::newRow("something of nothing") << Line{0.001, 0, 0} << true;
    QTest::newRow("balance not known") << Line{1000, 1, {}} << false;
}

void TestReleaseRules::whatIsAboveTheBalance()
{
    QFETCH(Line, line);
    QFETCH(bool, above);
    QCOMPARE(isAboveBalance(line), above);
}

void TestReleaseRules::nothingAddsUpToNothing()
{
    const Totals totals = totalsOf({});
    QCOMPARE(totals.released, 0);
    QCOMPARE(totals.quantity, 0.0);
    QCOMPARE(totals.rolls, 0);
    QCOMPARE(totals.above, 0);
}

void TestReleaseRules::quantitiesAndRollsAddUpToTheGram()
{
    const Totals totals = totalsOf({{0.1, 2, 5}, {0.2, 0, 0.1}, {1234.567, 60, {}}});
    QCOMPARE(totals.released, 3);
    QVERIFY(totals.quantity == 1234.867);
    QCOMPARE(totals.rolls, 62);
    QCOMPARE(totals.above, 1);
}

void TestReleaseRules::linesWithoutAQuantityAreNotReleased()
{
    const Totals totals = totalsOf({{0, 3, 20}, {-5, 1, 20}, {7.5, 1, 20}});
    QCOMPARE(totals.released, 1);
    QCOMPARE(totals.quantity, 2.5);
    QCOMPARE(totals.rolls, 5);
}

QTEST_APPLESS_MAIN(TestReleaseRules)
#include "tst_releaserules.moc"
