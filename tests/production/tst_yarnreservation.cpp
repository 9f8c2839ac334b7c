// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "production/yarnreservation.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace YarnReservation;

namespace {

const QString cotton = QStringLiteral("FIO30CO");
const QString polyester = QStringLiteral("FIO150PES");

Lot lotOf(const QString &yarn, const QString &name, double need, double balance)
{
    Lot lot;
    lot.yarn = yarn;
    lot.document = u"0001203"_s;
    lot.lot = name;
    lot.need = need;
    lot.balance = balance;
    lot.notReturned = 1;
    return lot;
}

/// Three lots of cotton and one of polyester for 100 kg of a fabric of 60 % and 40 %.
QVector<Lot> lotsForAHundred()
{
    return {lotOf(cotton, u"A"_s, 60, 50), lotOf(cotton, u"B"_s, 60, 30), lotOf(cotton, u"C"_s, 60, 500),
        lotOf(polyester, u"D"_s, 40, 40)};
}

const QVector<Share> sixtyForty{{cotton, {}, 60}, {polyester, {}, 40}};

void tick(QVector<Lot> &grid, int row, Mode mode = Mode::Checked, bool on = true)
{
    Lot lot = grid[row];
    lot.ticked = on;
    grid[row] = posted(lot, grid, mode);
}

void untick(QVector<Lot> &grid, int row)
{
    tick(grid, row, Mode::Checked, false);
}

std::optional<QString> insufficient(const QVector<Lot> &grid, double kg, Mode mode = Mode::Checked)
{
    return insufficientYarn(coverageOf(sixtyForty, kg, grid), grid, mode);
}

} // namespace

class TestYarnReservation : public QObject
{
    Q_OBJECT

private slots:
    void onlyNLeavesReservationsUnchecked();
    void needsAndBalancesAreReadToTheGram();
    void severalLoopLengthsDivideALot();
    void theFirstLotsAreDrainedAndTheLastGivesTheRest();
    void aLotThatIsNotNeededIsUntickedAgain();
    void withoutChecksASuperfluousTickStaysAndReservesNothing();
    void lotsAreConsumedInTheOrderOfTheirTicks();
    void untickingGivesTheLotBack();
    void aLotThatCoversExactlyIsEnough();
    void sumsOfGramsStayExact();
    void anEmptyLotGivesNothingButStaysTicked();
    void anOverdrawnLotGivesNothing();
    void aLotOfItsOwnOrderGivesNoMoreThanIsFreeBesides();
    void returnedLotsAreOfferedOnlyWhereTicked();
    void coverageTellsWhatIsMissing();
    void sufficiencyIsCheckedFromTheFirstTickOn();
    void sufficiencyIsReadToTheGram();
    void ticksSurviveAnotherWeight();
    void ticksThatAreNoLongerNeededGoFirst();
    void anOrdersOwnLotsGrowWithItsWeight();
    void withoutChecksAnotherWeightChangesNoReservation();
    void ticksOfLotsThatAreGoneAreForgotten();
    void whatAnotherOrderTookMeanwhileIsNotTakenTwice();
    void theLargestWeightIsThatOfTheScarcestYarnTimesAHundred();
    void theLargestWeightCountsLotsTickedOrNot();
    void withoutStockOfOneYarnThereIsNoWeight();
    void linesOfOneYarnAreLookedAtOneByOne();
};

void TestYarnReservation::onlyNLeavesReservationsUnchecked()
{
    QCOMPARE(modeOf(u"N"_s), Mode::AsRecorded);
    for (const QString &other : {u"S"_s, QString(), u"n"_s, u"X"_s})
        QCOMPARE(modeOf(other), Mode::Checked);
}

void TestYarnReservation::needsAndBalancesAreReadToTheGram()
{
    QCOMPARE(needOf(60, 100), 60.0);
    QCOMPARE(needOf(33.33333, 100), 33.333);
    QCOMPARE(needOf(33.33335, 10), 3.333);
    QCOMPARE(needOf(50, 0.001), 0.001);
    QCOMPARE(needOf(1.4, 11.75), 0.165); // 0.1645, which no binary fraction says
    QCOMPARE(needOf(40, 0), 0.0);
    QCOMPARE(balanceOf(100, 3, 0), 33.333);
    QCOMPARE(balanceOf(200, 3, 0), 66.667);
    QCOMPARE(balanceOf(0.3, 1, 0.1), 0.2);
}

void TestYarnReservation::severalLoopLengthsDivideALot()
{
    QCOMPARE(balanceOf(90, 2, 0), 45.0);
    QCOMPARE(balanceOf(90, 2, 10), 35.0);
    QCOMPARE(balanceOf(90, 1, 0), 90.0);
    QCOMPARE(balanceOf(90, 0, 0), 90.0);
    QCOMPARE(balanceOf(90, 2, 60), -15.0);
}

void TestYarnReservation::theFirstLotsAreDrainedAndTheLastGivesTheRest()
{
    QVector<Lot> grid = lotsForAHundred();
    tick(grid, 0);
    QVERIFY(grid[0].ticked);
    QCOMPARE(grid[0].reserved, 50.0);
    tick(grid, 1);
    QVERIFY(grid[1].ticked);
    QCOMPARE(grid[1].reserved, 10.0);
    QCOMPARE(grid[0].turn, 1);
    QCOMPARE(grid[1].turn, 2);
    QCOMPARE(grid[3].reserved, 0.0);
}

void TestYarnReservation::aLotThatIsNotNeededIsUntickedAgain()
{
    QVector<Lot> grid = lotsForAHundred();
    for (const int row : {0, 1, 2})
        tick(grid, row);
    QVERIFY(!grid[2].ticked);
    QCOMPARE(grid[2].reserved, 0.0);
    QCOMPARE(grid[2].turn, 0);
    QCOMPARE(grid[0].reserved + grid[1].reserved, 60.0);
}

void TestYarnReservation::withoutChecksASuperfluousTickStaysAndReservesNothing()
{
    QVector<Lot> grid = lotsForAHundred();
    for (const int row : {0, 1, 2})
        tick(grid, row, Mode::AsRecorded);
    QCOMPARE(grid[0].reserved, 50.0);
    QCOMPARE(grid[1].reserved, 10.0);
    QVERIFY(grid[2].ticked);
    QCOMPARE(grid[2].reserved, 0.0);
}

void TestYarnReservation::lotsAreConsumedInTheOrderOfTheirTicks()
{
    QVector<Lot> grid = lotsForAHundred();
    tick(grid, 1);
    tick(grid, 0);
    QCOMPARE(grid[1].reserved, 30.0);
    QCOMPARE(grid[0].reserved, 30.0);
}

void TestYarnReservation::untickingGivesTheLotBack()
{
    QVector<Lot> grid = lotsForAHundred();
    tick(grid, 0);
    tick(grid, 1);
    untick(grid, 0);
    QCOMPARE(grid[0].reserved, 0.0);
    QCOMPARE(grid[0].turn, 0);
    // The others keep what they gave until they are ticked anew.
    QCOMPARE(grid[1].reserved, 10.0);
    tick(grid, 2);
    QCOMPARE(grid[2].reserved, 50.0);
    QCOMPARE(grid[2].turn, 3);
}

void TestYarnReservation::aLotThatCoversExactlyIsEnough()
{
    QVector<Lot> grid{lotOf(cotton, u"A"_s, 60, 60), lotOf(cotton, u"B"_s, 60, 1)};
    tick(grid, 0);
    QCOMPARE(grid[0].reserved, 60.0);
    tick(grid, 1);
    QVERIFY(!grid[1].ticked);
}

void TestYarnReservation::sumsOfGramsStayExact()
{
    // A hundred lots of 0,1 kg make 10 kg, although 0,1 has no exact binary form.
    QVector<Lot> grid;
    for (int i = 0; i < 101; ++i)
        grid.append(lotOf(cotton, QString::number(i), 10, 0.1));
    for (int i = 0; i < grid.size(); ++i)
        tick(grid, i);
    QVERIFY(grid[99].ticked);
    QCOMPARE(grid[99].reserved, 0.1);
    QVERIFY(!grid[100].ticked);
    QCOMPARE(coverageOf({{cotton, {}, 100}}, 10, grid)[0].reserved, 10.0);
}

void TestYarnReservation::anEmptyLotGivesNothingButStaysTicked()
{
    QVector<Lot> grid{lotOf(cotton, u"A"_s, 60, 0)};
    tick(grid, 0);
    QVERIFY(grid[0].ticked);
    QCOMPARE(grid[0].reserved, 0.0);
}

void TestYarnReservation::anOverdrawnLotGivesNothing()
{
    QVector<Lot> grid{lotOf(cotton, u"A"_s, 60, -15), lotOf(cotton, u"B"_s, 60, 60)};
    tick(grid, 0);
    QCOMPARE(grid[0].reserved, 0.0);
    tick(grid, 1);
    QCOMPARE(grid[1].reserved, 60.0);
}

void TestYarnReservation::aLotOfItsOwnOrderGivesNoMoreThanIsFreeBesides()
{
    QVector<Lot> grid{lotOf(cotton, u"A"_s, 60, 20)};
    grid[0].held = 60;
    grid[0].reserved = 60;
    grid[0].ticked = true;
    grid[0].turn = 1;
    untick(grid, 0);
    tick(grid, 0);
    QCOMPARE(grid[0].reserved, 20.0);
}

void TestYarnReservation::returnedLotsAreOfferedOnlyWhereTicked()
{
    Lot lot = lotOf(cotton, u"A"_s, 60, 0);
    lot.notReturned = 0;
    QVERIFY(!isOffered(lot));
    lot.ticked = true;
    QVERIFY(isOffered(lot));
    lot.ticked = false;
    lot.notReturned = 0.001;
    QVERIFY(isOffered(lot));
    lot.notReturned = -5;
    QVERIFY(!isOffered(lot));
}

void TestYarnReservation::coverageTellsWhatIsMissing()
{
    QVector<Lot> grid = lotsForAHundred();
    tick(grid, 0);
    tick(grid, 3);
    const QVector<Coverage> coverage = coverageOf(sixtyForty, 100, grid);
    QCOMPARE(coverage.size(), 2);
    QCOMPARE(coverage[0].need, 60.0);
    QCOMPARE(coverage[0].reserved, 50.0);
    QCOMPARE(coverage[0].missing, 10.0);
    QCOMPARE(coverage[1].missing, 0.0);
    // More than the need is no more than covered.
    QCOMPARE(coverageOf(sixtyForty, 50, grid)[0].missing, 0.0);
}

void TestYarnReservation::sufficiencyIsCheckedFromTheFirstTickOn()
{
    QVector<Lot> grid = lotsForAHundred();
    QVERIFY(!insufficient(grid, 100));
    tick(grid, 0);
    QCOMPARE(insufficient(grid, 100), cotton);
    QVERIFY(!insufficient(grid, 100, Mode::AsRecorded));
    tick(grid, 1);
    QCOMPARE(insufficient(grid, 100), polyester);
    tick(grid, 3);
    QVERIFY(!insufficient(grid, 100));
    QCOMPARE(insufficient(grid, 101), cotton);
}

void TestYarnReservation::sufficiencyIsReadToTheGram()
{
    QVector<Lot> grid{lotOf(cotton, u"A"_s, 60, 100), lotOf(polyester, u"B"_s, 40, 100)};
    tick(grid, 0);
    tick(grid, 1);
    QVERIFY(!insufficient(grid, 100.0004)); // 60.00024 and 40.00016 are 60 and 40 kg
    QCOMPARE(insufficient(grid, 100.001), cotton); // 60.0006 are 60.001
}

void TestYarnReservation::ticksSurviveAnotherWeight()
{
    QVector<Lot> before = lotsForAHundred();
    tick(before, 1);
    tick(before, 0);
    QVector<Lot> grid = lotsForAHundred();
    for (Lot &lot : grid)
        lot.need = lot.yarn == cotton ? 75 : 50;
    keepTicks(grid, before, Mode::Checked);
    QCOMPARE(grid[1].reserved, 30.0);
    QCOMPARE(grid[0].reserved, 45.0);
    QCOMPARE(grid[1].turn, 1);
    QCOMPARE(grid[0].turn, 2);
    QVERIFY(!grid[2].ticked);
}

void TestYarnReservation::ticksThatAreNoLongerNeededGoFirst()
{
    QVector<Lot> before = lotsForAHundred();
    tick(before, 0);
    tick(before, 1);
    QVector<Lot> grid = lotsForAHundred();
    for (Lot &lot : grid)
        lot.need = 45;
    keepTicks(grid, before, Mode::Checked);
    QCOMPARE(grid[0].reserved, 45.0);
    QVERIFY(!grid[1].ticked);
}

void TestYarnReservation::anOrdersOwnLotsGrowWithItsWeight()
{
    Lot held = lotOf(cotton, u"A"_s, 60, 40);
    held.held = 60;
    held.reserved = 60;
    held.ticked = true;
    held.turn = 1;
    const QVector<Lot> before{held};
    QVector<Lot> grid = before;
    grid[0].need = 90;
    keepTicks(grid, before, Mode::Checked);
    QCOMPARE(grid[0].reserved, 90.0);
    QCOMPARE(grid[0].balance, 40.0);
    grid[0].need = 120;
    keepTicks(grid, before, Mode::Checked);
    QCOMPARE(grid[0].reserved, 100.0);
    grid[0].need = 30;
    keepTicks(grid, before, Mode::Checked);
    QCOMPARE(grid[0].reserved, 30.0);
    // What it holds it keeps, even of a lot that is overdrawn.
    grid[0].balance = -500;
    grid[0].need = 90;
    keepTicks(grid, before, Mode::Checked);
    QCOMPARE(grid[0].reserved, 60.0);
}

void TestYarnReservation::withoutChecksAnotherWeightChangesNoReservation()
{
    QVector<Lot> before = lotsForAHundred();
    for (const int row : {0, 1, 2})
        tick(before, row, Mode::AsRecorded);
    QVector<Lot> grid = lotsForAHundred();
    for (Lot &lot : grid)
        lot.need = 10;
    keepTicks(grid, before, Mode::AsRecorded);
    QCOMPARE(grid[0].reserved, 50.0);
    QCOMPARE(grid[1].reserved, 10.0);
    QVERIFY(grid[2].ticked);
    QCOMPARE(grid[2].reserved, 0.0);
}

void TestYarnReservation::ticksOfLotsThatAreGoneAreForgotten()
{
    QVector<Lot> before = lotsForAHundred();
    tick(before, 0);
    QVector<Lot> grid = lotsForAHundred();
    grid.removeFirst();
    grid.append(grid.first());
    grid.last().document = u"0009999"_s;
    grid.last().lot = u"A"_s;
    keepTicks(grid, before, Mode::Checked);
    for (const Lot &lot : grid)
        QVERIFY(!lot.ticked);
}

void TestYarnReservation::whatAnotherOrderTookMeanwhileIsNotTakenTwice()
{
    QVector<Lot> grid = lotsForAHundred();
    tick(grid, 0);
    QVector<Lot> now = lotsForAHundred();
    QVERIFY(!overdrawnYarn(grid, now));
    now[0].balance = 49.999;
    QCOMPARE(overdrawnYarn(grid, now), cotton);
    // What the order holds already it does not take once more.
    now[0].balance = -20;
    now[0].held = 50;
    QVERIFY(!overdrawnYarn(grid, now));
    now[0].held = 49;
    QCOMPARE(overdrawnYarn(grid, now), cotton);
    now.removeFirst();
    QCOMPARE(overdrawnYarn(grid, now), cotton);
    grid[0].reserved = 0;
    QVERIFY(!overdrawnYarn(grid, now));
}

void TestYarnReservation::theLargestWeightIsThatOfTheScarcestYarnTimesAHundred()
{
    const QVector<Share> halves{{cotton, {}, 50}, {polyester, {}, 50}};
    const QVector<Lot> grid{lotOf(cotton, u"A"_s, 0, 50), lotOf(polyester, u"B"_s, 0, 80)};
    QCOMPARE(largestWeight(halves, grid), 10000.0);
    QCOMPARE(largestWeight({{polyester, {}, 50}}, grid), 16000.0);
    QCOMPARE(largestWeight({{cotton, {}, 100}}, grid), 5000.0);
    // The order of the lines does not matter.
    QCOMPARE(largestWeight({halves[1], halves[0]}, grid), 10000.0);
}

void TestYarnReservation::theLargestWeightCountsLotsTickedOrNot()
{
    QVector<Lot> grid = lotsForAHundred(); // 580 kg for 60 %, 40 kg for 40 %
    tick(grid, 3);
    QCOMPARE(largestWeight(sixtyForty, grid), 10000.0);
    grid.append(lotOf(polyester, u"E"_s, 40, 400));
    QCOMPARE(qRound(largestWeight(sixtyForty, grid) * 1000), 96666667);
}

void TestYarnReservation::withoutStockOfOneYarnThereIsNoWeight()
{
    QCOMPARE(largestWeight(sixtyForty, {lotOf(cotton, u"A"_s, 0, 50)}), 0.0);
    QCOMPARE(largestWeight(sixtyForty, {lotOf(cotton, u"A"_s, 0, 50), lotOf(polyester, u"B"_s, 0, 0)}), 0.0);
    QCOMPARE(largestWeight(sixtyForty,
                 {lotOf(cotton, u"A"_s, 0, 50), lotOf(polyester, u"B"_s, 0, 0.3), lotOf(polyester, u"C"_s, 0, -0.3)}),
        0.0);
    QCOMPARE(largestWeight(sixtyForty, {lotOf(cotton, u"A"_s, 0, 50), lotOf(polyester, u"B"_s, 0, -3)}), 0.0);
    QCOMPARE(largestWeight({}, lotsForAHundred()), 0.0);
    QCOMPARE(largestWeight({{cotton, {}, 60}, {polyester, {}, 0}}, lotsForAHundred()), 0.0);
}

void TestYarnReservation::linesOfOneYarnAreLookedAtOneByOne()
{
    // Each line counts with its own share and with all of the yarn's stock.
    const QVector<Share> lines{{cotton, {}, 20}, {cotton, {}, 40}};
    QCOMPARE(largestWeight(lines, {lotOf(cotton, u"A"_s, 0, 60)}), 15000.0);
}

QTEST_GUILESS_MAIN(TestYarnReservation)
#include "tst_yarnreservation.moc"
