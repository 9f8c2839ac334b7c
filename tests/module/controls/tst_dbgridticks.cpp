// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/controls/datasetmodel.h"
#include "module/controls/dbgrid.h"
#include "module/host_services/clientdataset.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/// A grid of lots that are ticked, and whose rows have colours.
class TestDBGridTicks : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aTickIsAMarkAndNoLetter();
    void onlySTicks_data();
    void onlySTicks();
    void aTickThatIsReadOnlyCannotBeChanged();
    void theSpaceBarTicksTheRowFromAnyColumn();
    void aClickAnywhereInTheCellTicks();
    void anotherButtonOrCellTicksNothing();
    void whatThePostSaysIsShown();
    void rowsHaveTheirColours();

private:
    Qt::CheckState state(int row) const { return Qt::CheckState(index(row, 0).data(Qt::CheckStateRole).toInt()); }
    QModelIndex index(int row, int column) const { return m_grid->model()->index(row, column); }
    void click(int row, int column, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(m_grid->viewport(), button, {}, m_grid->visualRect(index(row, column)).center());
    }

    std::unique_ptr<TClientDataSet> m_set;
    std::unique_ptr<TDBGrid> m_grid;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

void TestDBGridTicks::init()
{
    m_set = std::make_unique<TClientDataSet>();
    m_set->CreateDataSet({TField(u"BAIXA"_s, TField::Type::Text, 1).asTick().editable(),
        TField(u"LOTE"_s, TField::Type::Text, 15), TField(u"QTDE"_s, TField::Type::Float)});
    for (const QString &lot : {u"A"_s, u"B"_s, u"C"_s}) {
        m_set->Append();
        m_set->setValue(u"BAIXA"_s, u"N"_s);
        m_set->setValue(u"LOTE"_s, lot);
        m_set->Post();
    }
    m_set->First();
    m_grid = std::make_unique<TDBGrid>();
    m_grid->setDataSet(m_set.get());
    m_tester = std::make_unique<QAbstractItemModelTester>(
        m_grid->model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    m_grid->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_grid.get()));
}

void TestDBGridTicks::cleanup()
{
    m_tester.reset();
    m_grid.reset();
    m_set.reset();
}

void TestDBGridTicks::aTickIsAMarkAndNoLetter()
{
    QCOMPARE(index(0, 0).data().toString(), QString());
    QCOMPARE(state(0), Qt::Unchecked);
    QVERIFY(!index(0, 1).data(Qt::CheckStateRole).isValid());
    QVERIFY(!(m_grid->model()->flags(index(0, 0)) & Qt::ItemIsEditable));
}

void TestDBGridTicks::onlySTicks_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("ticked");
    QTest::newRow("S") << QVariant(u"S"_s) << true;
    QTest::newRow("N") << QVariant(u"N"_s) << false;
    QTest::newRow("null") << QVariant() << false;
    QTest::newRow("small letter") << QVariant(u"s"_s) << false;
}

void TestDBGridTicks::onlySTicks()
{
    QFETCH(QVariant, value);
    QFETCH(bool, ticked);
    m_set->Edit();
    m_set->setValue(u"BAIXA"_s, value);
    m_set->Post();
    QCOMPARE(state(0) == Qt::Checked, ticked);
}

void TestDBGridTicks::aTickThatIsReadOnlyCannotBeChanged()
{
    m_set->field(u"BAIXA"_s).readOnly = true;
    click(1, 0);
    QTest::keyClick(m_grid.get(), Qt::Key_Space);
    QVERIFY(!m_grid->model()->setData(index(1, 0), Qt::Checked, Qt::CheckStateRole));
    QCOMPARE(state(1), Qt::Unchecked);
    QCOMPARE(m_set->row(), 1);
}

void TestDBGridTicks::theSpaceBarTicksTheRowFromAnyColumn()
{
    QSignalSpy posted(m_set.get(), &TClientDataSet::AfterPost);
    m_grid->setCurrentIndex(index(1, 1));
    QTest::keyClick(m_grid.get(), Qt::Key_Space);
    QCOMPARE(state(1), Qt::Checked);
    QCOMPARE(m_set->AsString(u"BAIXA"_s), u"S"_s);
    QTest::keyClick(m_grid.get(), Qt::Key_Space);
    QCOMPARE(m_set->AsString(u"BAIXA"_s), u"N"_s);
    QCOMPARE(posted.size(), 2);
    QCOMPARE(m_grid->currentIndex(), index(1, 1));
}

void TestDBGridTicks::aClickAnywhereInTheCellTicks()
{
    const QRect cell = m_grid->visualRect(index(2, 0));
    for (const QPoint &place : {cell.center(), cell.topLeft() + QPoint(2, 2), cell.bottomRight() - QPoint(2, 2)}) {
        const Qt::CheckState before = state(2);
        QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, {}, place);
        QVERIFY(state(2) != before);
    }
    QCOMPARE(m_set->row(), 2);
}

void TestDBGridTicks::anotherButtonOrCellTicksNothing()
{
    click(0, 0, Qt::RightButton);
    click(0, 1);
    QCOMPARE(state(0), Qt::Unchecked);
    m_set->EmptyDataSet();
    QTest::keyClick(m_grid.get(), Qt::Key_Space);
    QVERIFY(m_set->IsEmpty());
}

void TestDBGridTicks::whatThePostSaysIsShown()
{
    // A lot that nobody needs is unticked as it is posted.
    connect(m_set.get(), &TClientDataSet::BeforePost, this, [this] { m_set->setValue(u"BAIXA"_s, u"N"_s); });
    click(1, 0);
    QCOMPARE(state(1), Qt::Unchecked);
    QCOMPARE(m_set->state(), TClientDataSet::State::Browse);
}

void TestDBGridTicks::rowsHaveTheirColours()
{
    QVERIFY(!index(1, 1).data(Qt::BackgroundRole).isValid());
    m_grid->setRowColour([](int row) { return row == 1 ? QColor(Qt::red) : QColor(); });
    QCOMPARE(index(1, 1).data(Qt::BackgroundRole).value<QBrush>().color(), QColor(Qt::red));
    QCOMPARE(index(1, 0).data(Qt::BackgroundRole), index(1, 1).data(Qt::BackgroundRole));
    QVERIFY(!index(0, 1).data(Qt::BackgroundRole).isValid());
    m_grid->setRowColour({});
    QVERIFY(!index(1, 1).data(Qt::BackgroundRole).isValid());
}

QTEST_MAIN(TestDBGridTicks)
#include "tst_dbgridticks.moc"
