// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "registries/combinedcomposition.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace CombinedComposition;

namespace {

/// "yarn colour order percent", five decimals.
QStringList shown(const QVector<Line> &lines)
{
    QStringList texts;
    for (const Line &line : lines) {
        texts.append(u"%1 %2 %3 %4"_s.arg(
            line.yarn, line.colour, QString::number(line.order), QString::number(line.percent, 'f', 5)));
    }
    return texts;
}

} // namespace

/// The composition in colours, by numbers worked out by hand.
class TestCombinedComposition : public QObject
{
    Q_OBJECT

private slots:
    void aYarnsShareGoesToItsLinesByStitchLength();
    void twoLinesOfOneYarnAndColourBecomeOne();
    void linesBroughtTogetherLeaveGapsInTheOrder();
    void aYarnWithoutLinesContributesNone();
    void aLineOfAnotherYarnContributesNone();
    void aHalfOfTheFifthDecimalGoesUp();
    void partsAreRoundedBeforeTheyAreAdded();
    void aLineWithoutStitchLengthHasNoShare();
    void linesWithoutAnyStitchLengthContributeNone();
    void aYarnThatStandsTwiceInTheSourceIsAddedUp();
    void codesAreTakenAsTheyStand();
    void nothingComesOfNothing();
};

void TestCombinedComposition::aYarnsShareGoesToItsLinesByStitchLength()
{
    // Of 60 %: 5 of 15 mm are 20, 10 of 15 mm are 40.
    QCOMPARE(shown(combine(
                 {{u"A"_s, 60}, {u"B"_s, 40}}, {{u"A"_s, u"1"_s, 5}, {u"B"_s, u"1"_s, 7}, {u"A"_s, u"2"_s, 10}}, 0)),
        (QStringList{u"A 1 1 20.00000"_s, u"A 2 2 40.00000"_s, u"B 1 3 40.00000"_s}));
}

void TestCombinedComposition::twoLinesOfOneYarnAndColourBecomeOne()
{
    // 5, 10 and 15 of 30 mm of 60 %: 10, 20 and 30; the first and the last are one colour.
    QCOMPARE(shown(combine({{u"A"_s, 60}}, {{u"A"_s, u"1"_s, 5}, {u"A"_s, u"2"_s, 10}, {u"A"_s, u"1"_s, 15}}, 0)),
        (QStringList{u"A 1 1 40.00000"_s, u"A 2 2 20.00000"_s}));
}

void TestCombinedComposition::linesBroughtTogetherLeaveGapsInTheOrder()
{
    // The composition had 7 lines; the third of the rapport counts although it is added to the first.
    QCOMPARE(shown(combine({{u"A"_s, 60}, {u"B"_s, 40}},
                 {{u"A"_s, u"1"_s, 5}, {u"A"_s, u"2"_s, 10}, {u"A"_s, u"1"_s, 15}, {u"B"_s, u"1"_s, 3}}, 7)),
        (QStringList{u"A 1 8 40.00000"_s, u"A 2 9 20.00000"_s, u"B 1 11 40.00000"_s}));
}

void TestCombinedComposition::aYarnWithoutLinesContributesNone()
{
    QCOMPARE(shown(combine({{u"B"_s, 40}, {u"A"_s, 60}}, {{u"A"_s, u"1"_s, 5}}, 0)), QStringList{u"A 1 1 60.00000"_s});
}

void TestCombinedComposition::aLineOfAnotherYarnContributesNone()
{
    QCOMPARE(shown(combine({{u"A"_s, 100}}, {{u"C"_s, u"1"_s, 5}, {u"A"_s, u"1"_s, 5}}, 0)),
        QStringList{u"A 1 1 100.00000"_s});
}

void TestCombinedComposition::aHalfOfTheFifthDecimalGoesUp()
{
    // A third of 100 % is 33.33333|3, two thirds are 66.66666|6.
    QCOMPARE(shown(combine({{u"A"_s, 100}}, {{u"A"_s, u"1"_s, 1}, {u"A"_s, u"2"_s, 2}}, 0)),
        (QStringList{u"A 1 1 33.33333"_s, u"A 2 2 66.66667"_s}));
    // Half of 33.33333 % is 16.66666|5.
    QCOMPARE(shown(combine({{u"A"_s, 33.33333}}, {{u"A"_s, u"1"_s, 4}, {u"A"_s, u"2"_s, 4}}, 0)),
        (QStringList{u"A 1 1 16.66667"_s, u"A 2 2 16.66667"_s}));
    // 3/16 of 10.37 % are 1.94437|5 and 13/16 are 8.42562|5, which no binary fraction says.
    QCOMPARE(shown(combine({{u"A"_s, 10.37}}, {{u"A"_s, u"1"_s, 3}, {u"A"_s, u"2"_s, 13}}, 0)),
        (QStringList{u"A 1 1 1.94438"_s, u"A 2 2 8.42563"_s}));
}

void TestCombinedComposition::partsAreRoundedBeforeTheyAreAdded()
{
    // Three times 33.33333.
    QCOMPARE(shown(combine({{u"A"_s, 100}}, {{u"A"_s, u"1"_s, 8}, {u"A"_s, u"1"_s, 8}, {u"A"_s, u"1"_s, 8}}, 0)),
        QStringList{u"A 1 1 99.99999"_s});
    QCOMPARE(combine({{u"A"_s, 100}}, {{u"A"_s, u"1"_s, 8}, {u"A"_s, u"1"_s, 8}, {u"A"_s, u"1"_s, 8}}, 0)[0].percent,
        99.99999);
}

void TestCombinedComposition::aLineWithoutStitchLengthHasNoShare()
{
    QCOMPARE(shown(combine({{u"A"_s, 60}}, {{u"A"_s, u"1"_s, 0}, {u"A"_s, u"2"_s, 10}}, 0)),
        (QStringList{u"A 1 1 0.00000"_s, u"A 2 2 60.00000"_s}));
}

void TestCombinedComposition::linesWithoutAnyStitchLengthContributeNone()
{
    QCOMPARE(shown(combine(
                 {{u"A"_s, 60}, {u"B"_s, 40}}, {{u"A"_s, u"1"_s, 0}, {u"A"_s, u"2"_s, 0}, {u"B"_s, u"1"_s, 1}}, 0)),
        QStringList{u"B 1 1 40.00000"_s});
}

void TestCombinedComposition::aYarnThatStandsTwiceInTheSourceIsAddedUp()
{
    // 58 % and 42 % of the same yarn: 29 + 21 in each colour.
    QCOMPARE(shown(combine({{u"A"_s, 58}, {u"A"_s, 42}}, {{u"A"_s, u"1"_s, 6}, {u"A"_s, u"2"_s, 6}}, 0)),
        (QStringList{u"A 1 1 50.00000"_s, u"A 2 2 50.00000"_s}));
}

void TestCombinedComposition::codesAreTakenAsTheyStand()
{
    QCOMPARE(shown(combine({{u"a"_s, 60}}, {{u"A"_s, u"1"_s, 5}}, 0)), QStringList());
    QCOMPARE(shown(combine({{u"A"_s, 60}}, {{u"A"_s, QString(), 5}}, 0)), QStringList{u"A  1 60.00000"_s});
}

void TestCombinedComposition::nothingComesOfNothing()
{
    QCOMPARE(shown(combine({}, {{u"A"_s, u"1"_s, 5}}, 3)), QStringList());
    QCOMPARE(shown(combine({{u"A"_s, 100}}, {}, 3)), QStringList());
}

QTEST_APPLESS_MAIN(TestCombinedComposition)
#include "tst_combinedcomposition.moc"
