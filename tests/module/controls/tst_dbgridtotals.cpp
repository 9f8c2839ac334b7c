// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/controls/gridtotals.h"
#include "tests/module/controls/rollgrid.h"

#include <QScrollBar>

using namespace Qt::StringLiterals;

/// The line of sums beneath a grid.
class TestDBGridTotals : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m.reset(); }

    void sumsStandByTheMasksOfTheirFields();
    void recordsAreCounted();
    void nullCountsAsNothing();
    void textsAndUnknownFieldsHaveNoSum();
    void withoutFieldsThereIsNoLine();
    void editsRowsAndFiltersAreFollowed();
    void aRowThatIsBeingEditedCountsAsItWasPosted();
    void sortingChangesNothing();
    void rowsInStepsAreSummedUpOnceTheyAreAllThere();
    void theLineStandsBeneathTheRows();
    void theLastRowIsReachedAboveTheLine();
    void theScrolledPlaceStays();
    void theGridComesToRest();
    void sumsStandBeneathTheirColumns();
    void columnsAreWideEnoughForTheirSums();

private:
    GridTotals *line() const { return m->grid->findChild<GridTotals *>(); }
    /// Where something is painted in the line, from left to right.
    QVector<bool> painted() const;
    bool isPainted(int from, int to) const;
    void addMany(int count);

    std::unique_ptr<RollGrid> m;
};

void TestDBGridTotals::init()
{
    m = std::make_unique<RollGrid>();
    m->grid->setTotais(u"qtde;TURNO"_s);
    m->add(u"001"_s, 20.5, {2026, 3, 9}, 1);
    m->add(u"002"_s, 1234.255, {2026, 3, 9}, 2);
    m->show();
}

void TestDBGridTotals::addMany(int count)
{
    for (int i = 0; i < count; ++i)
        m->add(QString::number(i), 1);
    QCoreApplication::processEvents();
}

void TestDBGridTotals::sumsStandByTheMasksOfTheirFields()
{
    QCOMPARE(line()->text(u"QTDE"_s), u"1.254,755"_s);
    QCOMPARE(line()->text(u"Turno"_s), u"3"_s);
    QVERIFY(line()->isVisible());
}

void TestDBGridTotals::recordsAreCounted()
{
    QCOMPARE(line()->count(), u"2 registros"_s);
    m->rolls.Delete();
    QCOMPARE(line()->count(), u"1 registro"_s);
    m->rolls.Delete();
    QCOMPARE(line()->count(), u"0 registros"_s);
    QCOMPARE(line()->text(u"QTDE"_s), u"0,000"_s);
    addMany(1000);
    QCOMPARE(line()->count(), u"1.000 registros"_s);
}

void TestDBGridTotals::nullCountsAsNothing()
{
    m->add(u"003"_s, QVariant());
    QCOMPARE(line()->text(u"QTDE"_s), u"1.254,755"_s);
}

void TestDBGridTotals::textsAndUnknownFieldsHaveNoSum()
{
    m->grid->setTotais(u"NUM_BAIXA; LOTE ;DATA; QTDE "_s);
    QCOMPARE(line()->text(u"NUM_BAIXA"_s), QString());
    QCOMPARE(line()->text(u"LOTE"_s), QString());
    QCOMPARE(line()->text(u"DATA"_s), QString());
    QCOMPARE(line()->text(u"QTDE"_s), u"1.254,755"_s);
    QCOMPARE(line()->text(u"TURNO"_s), QString());
}

void TestDBGridTotals::withoutFieldsThereIsNoLine()
{
    const int with = m->grid->viewport()->height();
    m->grid->setTotais({});
    QVERIFY(!line()->isVisible());
    QVERIFY(m->grid->viewport()->height() > with);
    RollGrid plain;
    QVERIFY(!plain.grid->findChild<GridTotals *>());
}

void TestDBGridTotals::editsRowsAndFiltersAreFollowed()
{
    m->grid->rows()->setData(m->grid->cellOf(0, u"QTDE"_s), 30.0);
    QCOMPARE(line()->text(u"QTDE"_s), u"1.264,255"_s);
    m->rolls.setFilter([](const QVector<QVariant> &row) { return row[1].toDouble() < 100; });
    QCOMPARE(line()->text(u"QTDE"_s), u"30,000"_s);
    QCOMPARE(line()->count(), u"1 registro"_s);
    m->rolls.setFilter({});
    m->add(u"003"_s, 1);
    QCOMPARE(line()->text(u"QTDE"_s), u"1.265,255"_s);
    m->rolls.EmptyDataSet();
    QCOMPARE(line()->text(u"QTDE"_s), u"0,000"_s);
    m->grid->setDataSet(nullptr);
    QCOMPARE(line()->text(u"QTDE"_s), QString());
}

void TestDBGridTotals::aRowThatIsBeingEditedCountsAsItWasPosted()
{
    m->rolls.First();
    m->rolls.Edit();
    m->rolls.setValue(u"QTDE"_s, 500);
    QCOMPARE(line()->text(u"QTDE"_s), u"1.254,755"_s);
    m->rolls.Post();
    QCOMPARE(line()->text(u"QTDE"_s), u"1.734,255"_s);
}

void TestDBGridTotals::sortingChangesNothing()
{
    m->clickTitle(1);
    QCOMPARE(line()->text(u"QTDE"_s), u"1.254,755"_s);
    QCOMPARE(line()->count(), u"2 registros"_s);
}

void TestDBGridTotals::rowsInStepsAreSummedUpOnceTheyAreAllThere()
{
    NumbersInSteps numbers(500, 200);
    m->grid->setDataSet(&numbers);
    m->grid->setTotais(u"NUMERO"_s);
    QCOMPARE(line()->count(), u"Mais de 200 registros"_s);
    QCOMPARE(line()->text(u"NUMERO"_s), QString());
    numbers.Last();
    QCOMPARE(line()->count(), u"500 registros"_s);
    QCOMPARE(line()->text(u"NUMERO"_s), u"125250"_s);
    m->grid->setDataSet(nullptr);
}

void TestDBGridTotals::theLineStandsBeneathTheRows()
{
    const QRect rows = m->grid->viewport()->geometry();
    QCOMPARE(line()->geometry().top(), rows.bottom() + 1);
    QCOMPARE(line()->width(), rows.width());
    QVERIFY(m->grid->rect().contains(line()->geometry()));
    m->grid->resize(500, 200);
    QCoreApplication::processEvents();
    QCOMPARE(line()->geometry().top(), m->grid->viewport()->geometry().bottom() + 1);
    QCOMPARE(m->header()->width(), m->grid->viewport()->width());
}

void TestDBGridTotals::theLastRowIsReachedAboveTheLine()
{
    for (int rows = 2; rows < 15; ++rows) { // from all in sight to many below
        QTest::keyClick(m->grid, Qt::Key_Home, Qt::ControlModifier);
        QTest::keyClick(m->grid, Qt::Key_End, Qt::ControlModifier);
        QCoreApplication::processEvents();
        const QRect last = m->grid->visualRect(m->grid->rows()->index(rows - 1, 0));
        QVERIFY2(m->grid->viewport()->rect().contains(last.center()), qPrintable(QString::number(rows)));
        QVERIFY2(last.bottom() <= m->grid->viewport()->height(), qPrintable(QString::number(rows)));
        QCOMPARE(m->header()->width(), m->grid->viewport()->width());
        addMany(1);
    }
}

void TestDBGridTotals::theScrolledPlaceStays()
{
    addMany(50);
    QScrollBar *bar = m->grid->verticalScrollBar();
    QCOMPARE(bar->maximum(), 52 - bar->pageStep());
    bar->setValue(bar->maximum());
    m->header()->resizeSection(0, 150);
    QCoreApplication::processEvents();
    QCOMPARE(bar->value(), bar->maximum());
    bar->setValue(7);
    m->rolls.setRow(9);
    m->grid->rows()->setData(m->grid->cellOf(9, u"QTDE"_s), 2.0);
    QCoreApplication::processEvents();
    QCOMPARE(bar->value(), 7);
}

void TestDBGridTotals::theGridComesToRest()
{
    struct Resizes : QObject
    {
        bool eventFilter(QObject *, QEvent *event) override
        {
            seen += event->type() == QEvent::Resize ? 1 : 0;
            return false;
        }
        int seen = 0;
    };
    Resizes resizes;
    for (int rows = 2; rows < 12; ++rows) { // where the last one fits in but for the line, too
        addMany(1);
        QTRY_COMPARE(m->header()->width(), m->grid->viewport()->width());
        m->grid->viewport()->installEventFilter(&resizes);
        resizes.seen = 0;
        for (int i = 0; i < 20; ++i)
            QCoreApplication::processEvents();
        m->grid->viewport()->removeEventFilter(&resizes);
        QCOMPARE(resizes.seen, 0);
    }
}

QVector<bool> TestDBGridTotals::painted() const
{
    const QImage image = line()->grab().toImage();
    const QRgb ground = image.pixel(1, 2);
    QVector<bool> columns(image.width());
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 2; y < image.height(); ++y)
            columns[x] |= image.pixel(x, y) != ground;
    }
    return columns;
}

bool TestDBGridTotals::isPainted(int from, int to) const
{
    return painted().mid(from, to - from).contains(true);
}

void TestDBGridTotals::sumsStandBeneathTheirColumns()
{
    const auto place = [this](int column) { return m->header()->sectionViewportPosition(column); };
    const auto end = [&](int column) { return place(column) + m->header()->sectionSize(column); };
    QVERIFY(isPainted(place(1), end(1)));
    QVERIFY(isPainted(end(1) - 20, end(1))); // on the right, as the figures are
    QVERIFY(!isPainted(place(2), end(2)));
    QVERIFY(isPainted(place(0), end(0))); // the number of records
    m->header()->resizeSection(0, 100);
    QVERIFY(isPainted(end(1) - 20, end(1)));
    QVERIFY(!isPainted(place(2), end(2)));
    m->header()->moveSection(1, 2);
    QVERIFY(isPainted(end(1) - 20, end(1)));
    QVERIFY(!isPainted(place(2) + 10, end(2))); // of no sum now, and the number of records stands before it
    m->header()->resizeSection(0, 1000);
    QCoreApplication::processEvents();
    m->grid->horizontalScrollBar()->setValue(m->grid->horizontalScrollBar()->maximum());
    QVERIFY(isPainted(qMax(0, end(1) - 20), end(1)));
}

void TestDBGridTotals::columnsAreWideEnoughForTheirSums()
{
    m->rolls.EmptyDataSet();
    for (int i = 0; i < 9; ++i)
        m->add(QString::number(i), 999'999.999);
    QTRY_VERIFY(m->header()->sectionSize(1) > line()->widthOf(u"QTDE"_s));
    QCOMPARE(line()->text(u"QTDE"_s), u"8.999.999,991"_s);
}

QTEST_MAIN(TestDBGridTotals)
#include "tst_dbgridtotals.moc"
