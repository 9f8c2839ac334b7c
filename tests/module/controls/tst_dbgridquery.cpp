// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/controls/datasetmodel.h"
#include "module/controls/dbgrid.h"
#include "module/controls/gridtotals.h"
#include "module/host_services/database.h"
#include "module/host_services/query.h"
#include "tests/support/engines.h"
#include "tests/support/recordinghost.h"
#include "tests/support/testdatabase.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QTest>

using namespace Qt::StringLiterals;

/// A grid over a query, which fetches its rows as they are asked for.
class TestDBGridQuery : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }
    void init();
    void cleanup();

    void aQueryFetchedInPartIsSortedWhole();
    void aQueryOpenedAnewStaysSorted();
    void aLargeQueryOpenedAnewIsInItsOwnOrder();
    void figuresAndDatesOfTheEngineAreSortedByValue();
    void totalsWaitForTheLastRow();
    void titlesStandThereBeforeTheFirstRows();

private:
    void insertRolls(int count);
    void open();
    QString shown(int row, int column = 0) const { return m_grid->rows()->index(row, column).data().toString(); }

    std::unique_ptr<RecordingHost> m_host;
    std::unique_ptr<TestDatabase> m_data;
    std::unique_ptr<TTIDatabase> m_database;
    std::unique_ptr<TTIQuery> m_query;
    std::unique_ptr<TDBGrid> m_grid;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

void TestDBGridQuery::init()
{
    m_host = std::make_unique<RecordingHost>();
    m_data = std::make_unique<TestDatabase>(Engines::current());
    m_database = std::make_unique<TTIDatabase>();
    m_database->open(m_data->settings());
    m_query = std::make_unique<TTIQuery>();
    m_query->SetDatabase(m_database.get());
    m_query->Describe({TField(u"QTDE"_s, TField::Type::Float).shownAs(u",0.000"_s)});
    m_query->SQL.add(u"SELECT NUM_BAIXA, QTDE, DATA FROM OF_MALHA_BAIXAS_001 ORDER BY NUM_BAIXA"_s);
    m_grid = std::make_unique<TDBGrid>();
    m_grid->setTotais(u"QTDE"_s);
    m_grid->setDataSet(m_query.get());
    m_tester = std::make_unique<QAbstractItemModelTester>(
        m_grid->rows(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    m_tester->setUseFetchMore(false);
    m_grid->resize(500, 300);
    m_grid->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_grid.get()));
}

void TestDBGridQuery::cleanup()
{
    m_tester.reset();
    m_grid.reset();
    m_query.reset();
    m_database.reset();
    m_data.reset();
    m_host.reset();
}

/// Each is a kilogram lighter than the one before it, and was made a day earlier.
void TestDBGridQuery::insertRolls(int count)
{
    const QDate last(2026, 12, 31);
    Save save(*m_database);
    for (int i = 1; i <= count; ++i) {
        m_database->run(u"INSERT INTO OF_MALHA_BAIXAS_001 (NUM_OF, NUM_BAIXA, DATA, QTDE) VALUES "
                        "('000001', '%1', '%2', %3)"_s.arg(QString::number(i).rightJustified(3, u'0'),
                            last.addDays(-i).toString(u"MM/dd/yyyy"_s), QString::number(1000 - i)));
    }
    save.CommitRetaining();
}

void TestDBGridQuery::open()
{
    m_query->Open();
    QCoreApplication::processEvents();
}

void TestDBGridQuery::aQueryFetchedInPartIsSortedWhole()
{
    insertRolls(450);
    open();
    QVERIFY(m_query->canFetchMore());
    m_query->setRow(3);
    m_grid->sortBy(u"QTDE"_s);
    QCOMPARE(m_query->rowCount(), 450);
    QCOMPARE(shown(0), u"450"_s);
    QCOMPARE(shown(449), u"001"_s);
    QCOMPARE(m_query->AsString(u"NUM_BAIXA"_s), u"004"_s);
    QCOMPARE(m_grid->currentIndex().row(), 446);
    QCOMPARE(m_host->busyCalls, 2);
    QCOMPARE(m_host->busy, 0);
}

void TestDBGridQuery::aQueryOpenedAnewStaysSorted()
{
    insertRolls(3);
    open();
    m_grid->sortBy(u"QTDE"_s);
    m_data->run(u"DELETE FROM {OF_MALHA_BAIXAS} WHERE NUM_BAIXA = '002'"_s);
    open();
    QCOMPARE(shown(0), u"003"_s);
    QCOMPARE(shown(1), u"001"_s);
    QVERIFY(m_grid->horizontalHeader()->isSortIndicatorShown());
    QCOMPARE(m_query->row(), 0); // the query's own first row
    QCOMPARE(m_grid->currentIndex().row(), 1);
}

void TestDBGridQuery::aLargeQueryOpenedAnewIsInItsOwnOrder()
{
    insertRolls(450);
    open();
    m_grid->sortBy(u"QTDE"_s);
    open();
    QVERIFY(m_query->canFetchMore());
    QCOMPARE(shown(0), u"001"_s);
    QVERIFY(!m_grid->horizontalHeader()->isSortIndicatorShown());
    m_query->FetchAll();
    QCOMPARE(shown(449), u"450"_s);
}

void TestDBGridQuery::figuresAndDatesOfTheEngineAreSortedByValue()
{
    insertRolls(40); // over the turn of a month
    open();
    m_grid->sortBy(u"DATA"_s);
    for (int row = 0; row < 40; ++row)
        QCOMPARE(shown(row), QString::number(40 - row).rightJustified(3, u'0'));
    m_grid->sortBy(u"NUM_BAIXA"_s);
    QCOMPARE(shown(0), u"001"_s);
    QCOMPARE(shown(0, 1), u"999,000"_s);
}

void TestDBGridQuery::totalsWaitForTheLastRow()
{
    insertRolls(450);
    open();
    const auto *line = m_grid->findChild<GridTotals *>();
    QCOMPARE(line->count(), u"Mais de 200 registros"_s);
    QCOMPARE(line->text(u"QTDE"_s), QString());
    m_query->FetchAll();
    QCOMPARE(line->count(), u"450 registros"_s);
    QCOMPARE(line->text(u"QTDE"_s), u"348.525,000"_s);
}

void TestDBGridQuery::titlesStandThereBeforeTheFirstRows()
{
    const auto titles = [this] {
        QStringList found;
        for (int column = 0; column < m_grid->rows()->columnCount(); ++column)
            found.append(m_grid->rows()->headerData(column, Qt::Horizontal).toString());
        return found;
    };
    m_grid->setColunas(u"NUM_BAIXA=Num. Baixa;QTDE=Peso;DATA=Data"_s);
    const QStringList wanted = {u"Num. Baixa"_s, u"Peso"_s, u"Data"_s};
    QCOMPARE(titles(), wanted);
    QCOMPARE(m_grid->rows()->rowCount(), 0);
    insertRolls(2);
    open();
    QCOMPARE(titles(), wanted);
    QCOMPARE(shown(1, 0), u"002"_s);
    QCOMPARE(shown(1, 1), u"998,000"_s);
    QCOMPARE(shown(1, 2), u"29/12/2026"_s);
    QVERIFY(m_query->fields()[m_query->fieldIndex(u"DATA"_s)].type == TField::Type::Date);
}

QTEST_MAIN(TestDBGridQuery)
#include "tst_dbgridquery.moc"
