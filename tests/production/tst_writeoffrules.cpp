// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "production/writeoffrules.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_writeoffrules : public QObject
{
    Q_OBJECT

private slots:
    void numbersHaveAtLeastThreeDigits_data();
    void numbersHaveAtLeastThreeDigits();
    void onlyANightShiftMovesToTheNextDayAndOnlyAfterNoon_data();
    void onlyANightShiftMovesToTheNextDayAndOnlyAfterNoon();
    void weightsAreComparedToTheGram();
    void theDeskToleratesOneHundredth();
    void aNumberHandedOverIsPadded();
    void theLogShowsAWeightWithACommaAndNoIdleZeros();
};

void tst_writeoffrules::numbersHaveAtLeastThreeDigits_data()
{
    QTest::addColumn<QString>("highest");
    QTest::addColumn<QString>("next");
    QTest::newRow("first roll") << QString() << u"001"_s;
    QTest::newRow("second") << u"001"_s << u"002"_s;
    QTest::newRow("ten") << u"009"_s << u"010"_s;
    QTest::newRow("1000th") << u"999"_s << u"1000"_s;
    QTest::newRow("1001st") << u"1000"_s << u"1001"_s;
}

void tst_writeoffrules::numbersHaveAtLeastThreeDigits()
{
    QFETCH(QString, highest);
    QTEST(WriteOffRules::nextNumber(highest), "next");
}

void tst_writeoffrules::onlyANightShiftMovesToTheNextDayAndOnlyAfterNoon_data()
{
    QTest::addColumn<bool>("night");
    QTest::addColumn<QTime>("time");
    QTest::addColumn<QDate>("day");
    const QDate given(2026, 12, 31);
    const QDate next(2027, 1, 1);
    QTest::newRow("night, early") << true << QTime(4, 0) << given;
    QTest::newRow("night, noon") << true << QTime(12, 0, 0) << given;
    QTest::newRow("night, within the second of noon") << true << QTime(12, 0, 0, 900) << given;
    QTest::newRow("night, a second later") << true << QTime(12, 0, 1) << next;
    QTest::newRow("night, evening") << true << QTime(23, 59, 59) << next;
    QTest::newRow("day, a second after noon") << false << QTime(12, 0, 1) << given;
    QTest::newRow("day, evening") << false << QTime(23, 59, 59) << given;
}

void tst_writeoffrules::onlyANightShiftMovesToTheNextDayAndOnlyAfterNoon()
{
    QFETCH(bool, night);
    QFETCH(QTime, time);
    QTEST(WriteOffRules::dayOf(QDate(2026, 12, 31), night, time), "day");
}

void tst_writeoffrules::weightsAreComparedToTheGram()
{
    QVERIFY(!WriteOffRules::exceeds(20, 20));
    QVERIFY(!WriteOffRules::exceeds(0.1 + 0.2, 0.3)); // the same weight, however it was added up
    QVERIFY(WriteOffRules::exceeds(20.001, 20));
    QVERIFY(WriteOffRules::exceeds(20.01, 20));
    QVERIFY(!WriteOffRules::exceeds(19.999, 20));
}

void tst_writeoffrules::theDeskToleratesOneHundredth()
{
    QVERIFY(!WriteOffRules::isOverProduction(20, 20));
    QVERIFY(!WriteOffRules::isOverProduction(20.01, 20));
    QVERIFY(WriteOffRules::isOverProduction(20.011, 20));
    QVERIFY(WriteOffRules::isOverProduction(20.02, 20));
    QVERIFY(!WriteOffRules::isOverProduction(0.31, 0.1 + 0.2)); // the same weight, however it was added up
    QVERIFY(WriteOffRules::isOverProduction(0.32, 0.1 + 0.2));
    QVERIFY(!WriteOffRules::isOverProduction(0.01, 0));
    QVERIFY(WriteOffRules::isOverProduction(0.01, -0.001));
}

void tst_writeoffrules::aNumberHandedOverIsPadded()
{
    QCOMPARE(WriteOffRules::padded(u"7"_s), u"007"_s);
    QCOMPARE(WriteOffRules::padded(u" 012 "_s), u"012"_s);
    QCOMPARE(WriteOffRules::padded(u"1000"_s), u"1000"_s);
}

void tst_writeoffrules::theLogShowsAWeightWithACommaAndNoIdleZeros()
{
    QCOMPARE(WriteOffRules::logged(23.45), u"23,45"_s);
    QCOMPARE(WriteOffRules::logged(20), u"20"_s);
    QCOMPARE(WriteOffRules::logged(3.333), u"3,333"_s);
}

QTEST_APPLESS_MAIN(tst_writeoffrules)
#include "tst_writeoffrules.moc"
