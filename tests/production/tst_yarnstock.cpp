// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "production/yarnstock.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace YarnStock;

class tst_yarnstock : public QObject
{
    Q_OBJECT

private slots:
    void aFabricHoldsItsYarnsByTheirShares();
    void aYarnOnSeveralLinesCountsWithAllOfThem();
    void aRollThatTakesAllThatIsLeftIsCovered_data();
    void aRollThatTakesAllThatIsLeftIsCovered();
    void fabricThatIsNotInvoicedHoldsYarnBack();
    void fabricOfOtherYarnsHoldsNothingBack();
    void fabricThatWasInvoicedTwiceGivesYarnBack();
    void aYarnThatNeverCameIsShort();
    void theFirstShortYarnOfTheCompositionIsNamed();
    void aFabricWithoutCompositionTakesNoYarn();
    void manySmallStocksAddUpToTheGram();
    void theValueOfAFabricIsThatOfItsYarns();
};

namespace {

const QVector<Share> sixtyForty{{u"A"_s, {}, 60}, {u"B"_s, {}, 40}};

QString shortYarn(double kg, double a, double b, const QVector<Knitted> &notInvoiced = {})
{
    const auto shortage = shortageFor({kg, sixtyForty}, {{u"A"_s, a}, {u"B"_s, b}}, notInvoiced);
    return shortage ? u"%1 %2"_s.arg(shortage->yarn).arg(shortage->kg) : QString();
}

} // namespace

void tst_yarnstock::aFabricHoldsItsYarnsByTheirShares()
{
    QCOMPARE(yarnIn({20, sixtyForty}, u"A"_s), 12.0);
    QCOMPARE(yarnIn({20, sixtyForty}, u"B"_s), 8.0);
    QCOMPARE(yarnIn({20, sixtyForty}, u"C"_s), 0.0);
    QCOMPARE(yarnIn({19.99, {{u"A"_s, {}, 33.33}}}, u"A"_s), 6.663); // 6.662667
}

void tst_yarnstock::aYarnOnSeveralLinesCountsWithAllOfThem()
{
    QCOMPARE(yarnIn({10, {{u"A"_s, {}, 30}, {u"B"_s, {}, 50}, {u"A"_s, {}, 20}}}, u"A"_s), 5.0);
}

void tst_yarnstock::aRollThatTakesAllThatIsLeftIsCovered_data()
{
    QTest::addColumn<double>("kg");
    QTest::addColumn<double>("cotton");
    QTest::addColumn<double>("polyester");
    QTest::addColumn<QString>("shortage");
    QTest::newRow("plenty") << 20.0 << 100.0 << 100.0 << QString();
    QTest::newRow("exactly") << 20.0 << 12.0 << 8.0 << QString();
    QTest::newRow("a gram less of the first") << 20.0 << 11.999 << 8.0 << u"A 0.001"_s;
    QTest::newRow("a gram less of the second") << 20.0 << 12.0 << 7.999 << u"B 0.001"_s;
    QTest::newRow("less than a gram is none") << 20.0 << 11.9996 << 8.0 << QString();
    QTest::newRow("not round in binary") << 0.3 << 0.18 << 0.1 + 0.02 << QString();
    QTest::newRow("nothing") << 20.0 << 0.0 << 0.0 << u"A 12"_s;
    QTest::newRow("more went than came") << 20.0 << -5.0 << 8.0 << u"A 17"_s;
}

void tst_yarnstock::aRollThatTakesAllThatIsLeftIsCovered()
{
    QFETCH(double, kg);
    QFETCH(double, cotton);
    QFETCH(double, polyester);
    QTEST(shortYarn(kg, cotton, polyester), "shortage");
}

void tst_yarnstock::fabricThatIsNotInvoicedHoldsYarnBack()
{
    const QVector<Knitted> finished{{80, sixtyForty}, {50, {{u"A"_s, {}, 100}}}}; // 98 of A, 32 of B
    QCOMPARE(shortYarn(20, 110, 40, finished), QString());
    QCOMPARE(shortYarn(20, 109.999, 40, finished), u"A 0.001"_s);
    QCOMPARE(shortYarn(20, 110, 39.5, finished), u"B 0.5"_s);
    QCOMPARE(remaining(u"A"_s, 110, finished), 12.0);
}

void tst_yarnstock::fabricOfOtherYarnsHoldsNothingBack()
{
    QCOMPARE(shortYarn(20, 12, 8, {{1000, {{u"C"_s, {}, 100}}}}), QString());
}

void tst_yarnstock::fabricThatWasInvoicedTwiceGivesYarnBack()
{
    QCOMPARE(remaining(u"A"_s, 10, {{-5, sixtyForty}}), 13.0);
}

void tst_yarnstock::aYarnThatNeverCameIsShort()
{
    const auto shortage = shortageFor({10, sixtyForty}, {{u"A"_s, 100}}, {});
    QVERIFY(shortage);
    QCOMPARE(shortage->yarn, u"B"_s);
    QCOMPARE(shortage->kg, 4.0);
}

void tst_yarnstock::theFirstShortYarnOfTheCompositionIsNamed()
{
    const auto shortage = shortageFor({10, {{u"B"_s, {}, 40}, {u"A"_s, {}, 60}}}, {}, {});
    QVERIFY(shortage);
    QCOMPARE(shortage->yarn, u"B"_s);
}

void tst_yarnstock::aFabricWithoutCompositionTakesNoYarn()
{
    QVERIFY(!shortageFor({1000, {}}, {}, {}));
}

void tst_yarnstock::manySmallStocksAddUpToTheGram()
{
    // Thirty times 3.333 kg leave exactly nothing of 99.990, which no sum of doubles says.
    const QVector<Knitted> finished(30, {3.333, {{u"A"_s, {}, 100}}});
    QCOMPARE(remaining(u"A"_s, 99.99, finished), 0.0);
}

void tst_yarnstock::theValueOfAFabricIsThatOfItsYarns()
{
    QCOMPARE(valueOf(sixtyForty, {{u"A"_s, 21.5}, {u"B"_s, 14.25}}), 18.6);
    QCOMPARE(valueOf(sixtyForty, {{u"A"_s, 21.5}}), 12.9);
    QCOMPARE(valueOf({{u"A"_s, {}, 33.33333}}, {{u"A"_s, 10}}), 3.3333);
    QCOMPARE(valueOf({}, {}), 0.0);
}

QTEST_APPLESS_MAIN(tst_yarnstock)
#include "tst_yarnstock.moc"
