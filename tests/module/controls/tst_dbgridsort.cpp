// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/controls/roworder.h"
#include "tests/module/controls/rollgrid.h"
#include "tests/support/messageanswers.h"
#include "tests/support/recordinghost.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

/// Rows sorted by a click on a title.
class TestDBGridSort : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void figuresAreSortedBySizeAndDatesByTheCalendar();
    void textsAreSortedAsInADictionary();
    void rowsThatAreAlikeKeepTheirOrder();
    void aSecondClickTurnsTheOrder();
    void theArrowShowsTheOrder();
    void theDataSetKeepsItsOwnOrder();
    void cursorAndRowStayTied();
    void coloursFollowTheirRows();
    void anEditedRowStaysUntilItIsSortedAgain();
    void anEditThroughTheGridMeetsTheRowThatIsShown();
    void aDeletedRowGoesFromItsPlace();
    void aNewRowStandsAtTheEnd();
    void aRowInsertedBeforeAnotherIsShownBeforeIt();
    void aListFilledAnewIsSortedAgain();
    void aFilterKeepsTheOrder();
    void otherColumnsEndTheSorting();
    void ctrlAndADigitSortByThatColumn();
    void aScreensOwnTitleClickDecides();
    void rowsInStepsAreFetchedFirst();
    void tooManyRowsAreNotSorted();
    void aFailureWhileFetchingIsReported();

private:
    std::unique_ptr<RecordingHost> m_host;
    std::unique_ptr<RollGrid> m;
};

void TestDBGridSort::init()
{
    m_host = std::make_unique<RecordingHost>();
    m = std::make_unique<RollGrid>();
    m->add(u"1"_s, 20.5, {2026, 3, 9}, 2);
    m->add(u"10"_s, 1234.5, {2025, 12, 31}, 1);
    m->add(u"9"_s, 3.25, {2026, 2, 10}, 2);
    m->add(u"2"_s, QVariant(), {2026, 3, 10}, 1);
    m->rolls.First();
    m->show();
}

void TestDBGridSort::cleanup()
{
    m.reset();
    m_host.reset();
}

void TestDBGridSort::figuresAreSortedBySizeAndDatesByTheCalendar()
{
    m->clickTitle(1);
    QCOMPARE(m->shown(1), (QStringList{u""_s, u"3,250"_s, u"20,500"_s, u"1.234,500"_s}));
    m->clickTitle(2);
    QCOMPARE(m->shown(2), (QStringList{u"31/12/2025"_s, u"10/02/2026"_s, u"09/03/2026"_s, u"10/03/2026"_s}));
}

void TestDBGridSort::textsAreSortedAsInADictionary()
{
    for (const QString &number : {u"água"_s, u"Zebra"_s, u"Ana"_s, u"abacaxi"_s, u"item 10"_s, u"item 9"_s})
        m->add(number, 1);
    m->clickTitle(0);
    QCOMPARE(m->shown(0),
        (QStringList{u"1"_s, u"2"_s, u"9"_s, u"10"_s, u"abacaxi"_s, u"água"_s, u"Ana"_s, u"item 9"_s, u"item 10"_s,
            u"Zebra"_s}));
}

void TestDBGridSort::rowsThatAreAlikeKeepTheirOrder()
{
    const int shift = m->rolls.fieldIndex(u"TURNO"_s);
    QCOMPARE(sortedRows(m->rolls, shift, Qt::AscendingOrder), (QVector<int>{1, 3, 0, 2}));
    QCOMPARE(sortedRows(m->rolls, shift, Qt::DescendingOrder), (QVector<int>{0, 2, 1, 3}));
}

void TestDBGridSort::aSecondClickTurnsTheOrder()
{
    m->clickTitle(0);
    QCOMPARE(m->shown(0), (QStringList{u"1"_s, u"2"_s, u"9"_s, u"10"_s}));
    m->clickTitle(0);
    QCOMPARE(m->shown(0), (QStringList{u"10"_s, u"9"_s, u"2"_s, u"1"_s}));
    m->clickTitle(0);
    QCOMPARE(m->shown(0), (QStringList{u"1"_s, u"2"_s, u"9"_s, u"10"_s}));
    m->clickTitle(2);
    QCOMPARE(m->shown(0).first(), u"10"_s);
}

void TestDBGridSort::theArrowShowsTheOrder()
{
    QVERIFY(!m->header()->isSortIndicatorShown());
    m->clickTitle(1);
    QVERIFY(m->header()->isSortIndicatorShown());
    QCOMPARE(m->header()->sortIndicatorSection(), 1);
    QCOMPARE(m->header()->sortIndicatorOrder(), Qt::AscendingOrder);
    m->clickTitle(1);
    QCOMPARE(m->header()->sortIndicatorOrder(), Qt::DescendingOrder);
    m->clickTitle(0);
    QCOMPARE(m->header()->sortIndicatorSection(), 0);
    QCOMPARE(m->header()->sortIndicatorOrder(), Qt::AscendingOrder);
}

void TestDBGridSort::theDataSetKeepsItsOwnOrder()
{
    m->clickTitle(1);
    QStringList numbers;
    for (m->rolls.First(); !m->rolls.Eof(); m->rolls.Next())
        numbers.append(m->current());
    QCOMPARE(numbers, (QStringList{u"1"_s, u"10"_s, u"9"_s, u"2"_s}));
}

void TestDBGridSort::cursorAndRowStayTied()
{
    QSignalSpy scrolled(&m->rolls, &TDataSet::AfterScroll);
    m->clickTitle(1);
    QCOMPARE(m->current(), u"1"_s);
    QCOMPARE(m->currentShown(), u"1"_s);
    QCOMPARE(m->grid->currentIndex().row(), 2);
    QCOMPARE(scrolled.size(), 0);
    QTest::keyClick(m->grid, Qt::Key_Down);
    QCOMPARE(m->current(), u"10"_s);
    QTest::keyClick(m->grid, Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(m->current(), u"2"_s);
    m->rolls.setRow(2);
    QCOMPARE(m->currentShown(), u"9"_s);
    QVERIFY(m->rolls.Locate(u"NUM_BAIXA"_s, {u"10"_s}));
    QCOMPARE(m->grid->currentIndex().row(), 3);
    QCOMPARE(m->grid->cellOf(0, u"QTDE"_s).data().toString(), u"20,500"_s);
}

void TestDBGridSort::coloursFollowTheirRows()
{
    m->grid->setRowColour([](int row) { return row == 1 ? QColor(Qt::red) : QColor(); });
    m->clickTitle(1);
    QVERIFY(m->grid->rows()->index(3, 0).data(Qt::BackgroundRole).isValid());
    QVERIFY(!m->grid->rows()->index(1, 0).data(Qt::BackgroundRole).isValid());
}

void TestDBGridSort::anEditedRowStaysUntilItIsSortedAgain()
{
    m->clickTitle(1);
    m->rolls.setRow(0);
    m->rolls.Edit();
    m->rolls.setValue(u"QTDE"_s, 5000);
    m->rolls.Post();
    QCOMPARE(m->shown(0), (QStringList{u"2"_s, u"9"_s, u"1"_s, u"10"_s}));
    QCOMPARE(m->currentShown(), u"1"_s);
    m->clickTitle(1);
    m->clickTitle(1);
    QCOMPARE(m->shown(0), (QStringList{u"2"_s, u"9"_s, u"10"_s, u"1"_s}));
}

void TestDBGridSort::anEditThroughTheGridMeetsTheRowThatIsShown()
{
    m->clickTitle(1);
    m->grid->setCurrentIndex(m->grid->rows()->index(1, 1));
    QTest::keyClick(m->grid, Qt::Key_Return);
    QWidget *editor = QApplication::focusWidget();
    QVERIFY(editor != m->grid);
    QTest::keyClicks(editor, u"18,25"_s);
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(m->rolls.allRows()[2][1].toDouble(), 18.25);
    QCOMPARE(m->shown(0), (QStringList{u"2"_s, u"9"_s, u"1"_s, u"10"_s}));
}

void TestDBGridSort::aDeletedRowGoesFromItsPlace()
{
    m->clickTitle(1);
    m->rolls.setRow(0);
    m->rolls.Delete();
    QCOMPARE(m->shown(0), (QStringList{u"2"_s, u"9"_s, u"10"_s}));
    QCOMPARE(m->current(), m->currentShown());
    while (!m->rolls.IsEmpty())
        m->rolls.Delete();
    QCOMPARE(m->grid->rows()->rowCount(), 0);
    m->add(u"7"_s, 7);
    QCOMPARE(m->shown(0), QStringList{u"7"_s});
}

void TestDBGridSort::aNewRowStandsAtTheEnd()
{
    m->clickTitle(1);
    m->add(u"7"_s, 4);
    QCOMPARE(m->shown(0), (QStringList{u"2"_s, u"9"_s, u"1"_s, u"10"_s, u"7"_s}));
    QCOMPARE(m->currentShown(), u"7"_s);
}

void TestDBGridSort::aRowInsertedBeforeAnotherIsShownBeforeIt()
{
    m->clickTitle(1);
    m->rolls.setRow(0);
    m->rolls.Insert();
    m->rolls.setValue(u"NUM_BAIXA"_s, u"7"_s);
    m->rolls.Post();
    QCOMPARE(m->shown(0), (QStringList{u"2"_s, u"9"_s, u"7"_s, u"1"_s, u"10"_s}));
    QCOMPARE(m->currentShown(), u"7"_s);
}

void TestDBGridSort::aListFilledAnewIsSortedAgain()
{
    m->clickTitle(1);
    m->clickTitle(1);
    m->rolls.EmptyDataSet();
    m->add(u"A"_s, 1);
    m->add(u"B"_s, 3);
    m->add(u"C"_s, 2);
    QTRY_COMPARE(m->shown(0), (QStringList{u"B"_s, u"C"_s, u"A"_s}));
    QCOMPARE(m->header()->sortIndicatorOrder(), Qt::DescendingOrder);
    QCOMPARE(m->current(), m->currentShown());
}

void TestDBGridSort::aFilterKeepsTheOrder()
{
    m->clickTitle(1);
    m->rolls.setFilter([](const QVector<QVariant> &row) { return row[1].toDouble() > 0; });
    QCOMPARE(m->shown(0), (QStringList{u"9"_s, u"1"_s, u"10"_s}));
    m->rolls.setFilter({});
    QCOMPARE(m->shown(0), (QStringList{u"2"_s, u"9"_s, u"1"_s, u"10"_s}));
}

void TestDBGridSort::otherColumnsEndTheSorting()
{
    m->clickTitle(1);
    m->rolls.CreateDataSet({{u"LOTE"_s, TField::Type::Text, 10}});
    QCOMPARE(m->grid->rows()->sortColumn(), -1);
    QVERIFY(!m->header()->isSortIndicatorShown());
}

void TestDBGridSort::ctrlAndADigitSortByThatColumn()
{
    QTest::keyClick(m->grid, Qt::Key_2, Qt::ControlModifier);
    QCOMPARE(m->shown(0), (QStringList{u"2"_s, u"9"_s, u"1"_s, u"10"_s}));
    QTest::keyClick(m->grid, Qt::Key_2, Qt::ControlModifier);
    QCOMPARE(m->shown(0), (QStringList{u"10"_s, u"1"_s, u"9"_s, u"2"_s}));
    m->header()->moveSection(m->header()->visualIndex(0), 1); // counted as they are seen
    QTest::keyClick(m->grid, Qt::Key_2, Qt::ControlModifier);
    QCOMPARE(m->shown(0), (QStringList{u"1"_s, u"2"_s, u"9"_s, u"10"_s}));
    QTest::keyClick(m->grid, Qt::Key_9, Qt::ControlModifier); // there is none
    QCOMPARE(m->grid->rows()->sortColumn(), 0);
}

void TestDBGridSort::aScreensOwnTitleClickDecides()
{
    connect(m->grid, &TDBGrid::titleClicked, m->grid, [this] { m->rolls.setIndexFieldNames(m->grid->titleField()); });
    m->clickTitle(1);
    QCOMPARE(m->shown(0), (QStringList{u"2"_s, u"9"_s, u"1"_s, u"10"_s}));
    QCOMPARE(m->rolls.cell(0, 0).toString(), u"2"_s); // the screen sorted, not the grid
    QVERIFY(!m->header()->isSortIndicatorShown());
    m->grid->sortBy(u"data"_s); // what a screen can call too
    QCOMPARE(m->shown(0).first(), u"10"_s);
}

void TestDBGridSort::rowsInStepsAreFetchedFirst()
{
    NumbersInSteps numbers(1000, 200);
    m->grid->setDataSet(&numbers);
    m->clickTitle(0);
    QCOMPARE(numbers.rowCount(), 1000);
    QCOMPARE(m->shown(0).first(), u"1"_s);
    QCOMPARE(m->shown(0).last(), u"1000"_s);
    QCOMPARE(m_host->busyCalls, 2); // shown, and gone again
    QCOMPARE(m_host->busy, 0);
    QCOMPARE(m->grid->currentIndex().row(), 999); // still on the roll 1000, and in sight
    QVERIFY(m->grid->viewport()->rect().intersects(m->grid->visualRect(m->grid->currentIndex())));
    m->grid->setDataSet(nullptr);
}

void TestDBGridSort::tooManyRowsAreNotSorted()
{
    NumbersInSteps numbers(300'000, 20'000);
    m->grid->setDataSet(&numbers);
    MessageAnswers answers;
    answers.expect(u"A lista tem mais de 100.000 registros. Restrinja a consulta."_s);
    m->clickTitle(0);
    QVERIFY(answers.allCame());
    QCOMPARE(m->grid->rows()->sortColumn(), -1);
    QVERIFY(numbers.rowCount() <= 120'000);
    m->grid->setDataSet(nullptr);
}

void TestDBGridSort::aFailureWhileFetchingIsReported()
{
    NumbersInSteps numbers(1000, 200);
    m->grid->setDataSet(&numbers);
    numbers.failing = true;
    m->clickTitle(0);
    QCOMPARE(m_host->failures, QStringList{u"the server is gone"_s});
    QCOMPARE(m_host->busy, 0);
    QVERIFY(!m->header()->isSortIndicatorShown());
    numbers.failing = false;
    m->grid->setDataSet(nullptr);
}

QTEST_MAIN(TestDBGridSort)
#include "tst_dbgridsort.moc"
