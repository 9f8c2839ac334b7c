// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/controls/datasetmodel.h"
#include "module/controls/dbgrid.h"
#include "module/host_services/clientdataset.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/// The rolls of an order: number, kilograms (typed), date, and a column that nobody sees.
class TestDataSetModel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void visibleFieldsAreShownByTheirTitles();
    void chosenColumnsAreShownByTheirOwnTitles();
    void figuresStandOnTheRight();
    void onlyEditableFieldsCanBeTyped();
    void typingInACellPostsTheRow();
    void theModelFollowsEveryChange();
    void theModelFollowsIndexAndFilter();
    void aSetDefinedAnewShowsItsOwnColumns();
    void aDeadDataSetLeavesAnEmptyModel();

    void theGridsRowIsTheCursor();
    void theCursorMovesTheGrid();
    void aDeletedRowLeavesGridAndCursorTogether();
    void enterInAReadOnlyCellChoosesTheRow();
    void aTypedFigureReachesTheDataSet();
    void aClickedTitleNamesItsField();

private:
    void add(const QString &number, double kg);
    QString shown(int row, int column) const { return m_model->index(row, column).data().toString(); }
    void showGrid();

    std::unique_ptr<TClientDataSet> m_set;
    std::unique_ptr<DataSetModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
    std::unique_ptr<TDBGrid> m_grid;
};

void TestDataSetModel::init()
{
    m_set = std::make_unique<TClientDataSet>();
    m_model = std::make_unique<DataSetModel>();
    m_tester = std::make_unique<QAbstractItemModelTester>(
        m_model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    m_model->setDataSet(m_set.get());
    m_set->CreateDataSet({TField(u"NUM_BAIXA"_s, TField::Type::Text, 10).titled(u"Rolo"_s),
        TField(u"QTDE"_s, TField::Type::Float).titled(u"Peso"_s).shownAs(u",0.000"_s).editable(),
        TField(u"DATA"_s, TField::Type::Date).titled(u"Data"_s), TField(u"CHAVE"_s, TField::Type::Integer).hidden()});
    add(u"001"_s, 20.5);
    add(u"002"_s, 1234.5);
    add(u"003"_s, 19);
}

void TestDataSetModel::cleanup()
{
    m_grid.reset();
    m_tester.reset();
    m_model.reset();
    m_set.reset();
}

void TestDataSetModel::add(const QString &number, double kg)
{
    m_set->Append();
    m_set->setValue(u"NUM_BAIXA"_s, number);
    m_set->setValue(u"QTDE"_s, kg);
    m_set->setValue(u"DATA"_s, QDate(2026, 3, 9));
    m_set->Post();
}

void TestDataSetModel::visibleFieldsAreShownByTheirTitles()
{
    QCOMPARE(m_model->columnCount(), 3);
    QCOMPARE(m_model->headerData(0, Qt::Horizontal).toString(), u"Rolo"_s);
    QCOMPARE(m_model->headerData(1, Qt::Horizontal).toString(), u"Peso"_s);
    QVERIFY(!m_model->headerData(3, Qt::Horizontal).isValid());
    QCOMPARE(shown(1, 1), u"1.234,500"_s);
    QCOMPARE(shown(1, 2), u"09/03/2026"_s);
    QCOMPARE(m_model->index(1, 1).data(Qt::EditRole).toDouble(), 1234.5);
}

void TestDataSetModel::chosenColumnsAreShownByTheirOwnTitles()
{
    m_model->setColumns(u"chave=Chave; QTDE = Peso kg ;NADA=Nada"_s);
    QCOMPARE(m_model->columnCount(), 2);
    QCOMPARE(m_model->headerData(1, Qt::Horizontal).toString(), u"Peso kg"_s);
    QCOMPARE(m_model->fieldName(0), u"CHAVE"_s);
    QCOMPARE(shown(0, 0), QString());
    m_model->setColumns({});
    QCOMPARE(m_model->columnCount(), 3);
}

void TestDataSetModel::figuresStandOnTheRight()
{
    const auto alignment = [&](int column) {
        return m_model->index(0, column).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
    };
    QVERIFY(alignment(1) & Qt::AlignRight);
    QVERIFY(alignment(0) & Qt::AlignLeft);
    QVERIFY(m_model->headerData(1, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>() & Qt::AlignRight);
}

void TestDataSetModel::onlyEditableFieldsCanBeTyped()
{
    QVERIFY(!(m_model->flags(m_model->index(0, 0)) & Qt::ItemIsEditable));
    QVERIFY(m_model->flags(m_model->index(0, 1)) & Qt::ItemIsEditable);
    QVERIFY(!m_model->setData(m_model->index(0, 0), u"009"_s));
    QCOMPARE(shown(0, 0), u"001"_s);
}

void TestDataSetModel::typingInACellPostsTheRow()
{
    QSignalSpy posted(m_set.get(), &TClientDataSet::AfterPost);
    QVERIFY(m_model->setData(m_model->index(1, 1), 18.25));
    QCOMPARE(posted.size(), 1);
    QCOMPARE(m_set->row(), 1);
    QCOMPARE(m_set->AsFloat(u"QTDE"_s), 18.25);
    QCOMPARE(m_set->state(), TClientDataSet::State::Browse);
}

void TestDataSetModel::theModelFollowsEveryChange()
{
    QSignalSpy inserted(m_model.get(), &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(m_model.get(), &QAbstractItemModel::rowsRemoved);
    QSignalSpy changed(m_model.get(), &QAbstractItemModel::dataChanged);
    add(u"004"_s, 1);
    QCOMPARE(inserted.size(), 1);
    QCOMPARE(inserted[0][1].toInt(), 3);
    m_set->setRow(1);
    m_set->Insert();
    m_set->Post();
    QCOMPARE(inserted[1][1].toInt(), 1);
    m_set->Edit();
    m_set->setValue(u"NUM_BAIXA"_s, u"1.5"_s);
    m_set->Post();
    QCOMPARE(changed.size(), 1);
    QCOMPARE(shown(1, 0), u"1.5"_s);
    m_set->Delete();
    QCOMPARE(removed[0][1].toInt(), 1);
    QCOMPARE(m_model->rowCount(), 4);
    m_set->Append();
    m_set->Cancel();
    QCOMPARE(m_model->rowCount(), 4);
    m_set->EmptyDataSet();
    QCOMPARE(m_model->rowCount(), 0);
}

void TestDataSetModel::theModelFollowsIndexAndFilter()
{
    m_set->setIndexFieldNames(u"QTDE"_s);
    QCOMPARE(shown(0, 0), u"003"_s);
    m_set->setFilter([](const QVector<QVariant> &row) { return row[1].toDouble() < 1000; });
    QCOMPARE(m_model->rowCount(), 2);
    add(u"004"_s, 19.5);
    QCOMPARE(shown(1, 0), u"004"_s);
    QVERIFY(m_model->setData(m_model->index(0, 1), 99.0));
    QCOMPARE(shown(2, 0), u"003"_s);
    QVERIFY(m_model->setData(m_model->index(0, 1), 2000.0));
    QCOMPARE(m_model->rowCount(), 2);
    m_set->Delete();
    QCOMPARE(m_model->rowCount(), 1);
    m_set->setFilter({});
    m_set->setIndexFieldNames({});
    QCOMPARE(m_model->rowCount(), 3);
}

void TestDataSetModel::aSetDefinedAnewShowsItsOwnColumns()
{
    m_set->CreateDataSet({{u"CODIGO"_s, TField::Type::Text, 3}});
    QCOMPARE(m_model->columnCount(), 1);
    QCOMPARE(m_model->rowCount(), 0);
    m_set->Append();
    m_set->setValue(u"CODIGO"_s, u"001"_s);
    m_set->Post();
    QCOMPARE(shown(0, 0), u"001"_s);
}

void TestDataSetModel::aDeadDataSetLeavesAnEmptyModel()
{
    m_set.reset();
    QCOMPARE(m_model->rowCount(), 0);
    QCOMPARE(m_model->columnCount(), 0);
}

void TestDataSetModel::showGrid()
{
    m_grid = std::make_unique<TDBGrid>();
    m_grid->setDataSet(m_set.get());
    m_grid->show();
    m_grid->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_grid.get()));
    m_grid->setFocus();
}

void TestDataSetModel::theGridsRowIsTheCursor()
{
    showGrid();
    m_set->First();
    QSignalSpy scrolled(m_set.get(), &TDataSet::AfterScroll);
    QTest::keyClick(m_grid.get(), Qt::Key_Down);
    QCOMPARE(m_set->row(), 1);
    QTest::keyClick(m_grid.get(), Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(m_set->row(), 2);
    QCOMPARE(scrolled.size(), 2);
}

void TestDataSetModel::theCursorMovesTheGrid()
{
    showGrid();
    m_set->First();
    QCOMPARE(m_grid->currentIndex().row(), 0);
    m_set->Last();
    QCOMPARE(m_grid->currentIndex().row(), 2);
    m_set->setIndexFieldNames(u"QTDE"_s);
    QCOMPARE(m_grid->currentIndex().row(), m_set->row());
    QCOMPARE(m_set->AsString(u"NUM_BAIXA"_s), u"003"_s);
}

void TestDataSetModel::aDeletedRowLeavesGridAndCursorTogether()
{
    showGrid();
    m_set->setRow(1);
    m_set->Delete();
    QCOMPARE(m_set->AsString(u"NUM_BAIXA"_s), u"003"_s);
    QCOMPARE(m_grid->currentIndex().row(), 1);
    m_set->Delete();
    QCOMPARE(m_set->AsString(u"NUM_BAIXA"_s), u"001"_s);
    QCOMPARE(m_grid->currentIndex().row(), 0);
    m_set->Delete();
    QVERIFY(m_set->IsEmpty());
    QVERIFY(!m_grid->currentIndex().isValid());
    add(u"007"_s, 7);
    QCOMPARE(m_grid->currentIndex().row(), 0);
}

void TestDataSetModel::enterInAReadOnlyCellChoosesTheRow()
{
    showGrid();
    m_set->First();
    m_grid->setCurrentIndex(m_grid->model()->index(0, 0));
    QSignalSpy chosen(m_grid.get(), &TDBGrid::rowChosen);
    QTest::keyClick(m_grid.get(), Qt::Key_Return);
    QCOMPARE(chosen.size(), 1);
    const QPoint cell = m_grid->visualRect(m_grid->model()->index(2, 0)).center();
    QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, {}, cell);
    QTest::mouseDClick(m_grid->viewport(), Qt::LeftButton, {}, cell);
    QCOMPARE(chosen.size(), 2);
    QCOMPARE(m_set->row(), 2);
}

void TestDataSetModel::aTypedFigureReachesTheDataSet()
{
    showGrid();
    m_grid->setCurrentIndex(m_grid->model()->index(1, m_grid->columnOf(u"qtde"_s)));
    QTest::keyClick(m_grid.get(), Qt::Key_Return);
    QWidget *editor = QApplication::focusWidget();
    QVERIFY(editor != m_grid.get());
    QTest::keyClicks(editor, u"18,25"_s);
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(m_set->allRows()[1][1].toDouble(), 18.25);
    QCOMPARE(m_set->row(), 1);
}

void TestDataSetModel::aClickedTitleNamesItsField()
{
    showGrid();
    QCOMPARE(m_grid->columnOf(u"CHAVE"_s), -1);
    QSignalSpy clicked(m_grid.get(), &TDBGrid::titleClicked);
    QHeaderView *header = m_grid->horizontalHeader();
    QTest::mouseClick(
        header->viewport(), Qt::LeftButton, {}, QPoint(header->sectionViewportPosition(1) + 10, header->height() / 2));
    QCOMPARE(clicked.size(), 1);
    QCOMPARE(m_grid->titleField(), u"QTDE"_s);
}

QTEST_MAIN(TestDataSetModel)
#include "tst_datasetmodel.moc"
