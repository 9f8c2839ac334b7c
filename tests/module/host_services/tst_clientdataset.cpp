// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/clientdataset.h"
#include "module/host_services/errors.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/// The lots of an invoice: LOTE of five characters, QTDE in kilograms.
class TestClientDataSet : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void aNewSetIsEmpty();
    void anAppendedRowStandsLast();
    void anInsertedRowStandsBeforeTheCurrentOne();
    void insertingIntoAnEmptySetMakesTheFirstRow();
    void cancelDropsWhatWasTyped();
    void cancelledInsertionLeavesNoRow();
    void editingAnEmptySetInserts();
    void aValueIsReadFromTheBufferWhileEditing();
    void aValueOutsideOfEditingIsRefused();
    void textsAreCutToTheirSize();
    void onlyRealChangesAreTold();
    void movingAwayPosts_data();
    void movingAwayPosts();
    void appendingAgainPostsTheRowBefore();
    void anotherIndexOrFilterPosts();
    void deletingMovesToTheNextRow();
    void deletingTheLastRowMovesToTheOneBefore();
    void deletingWhileInsertingOnlyCancels();
    void deletingWhileEditingDeletesTheRow();
    void deletingFromAnEmptySetDoesNothing();
    void valuesMayStillBeChangedBeforeThePost();
    void eventsComeInTheirOrder();
    void theIndexSortsByValues();
    void theIndexSortsByTwoFieldsNullsFirst();
    void equalRowsKeepTheirOrder();
    void theIndexKeepsTheCurrentRow();
    void aPostedRowGoesToItsPlaceInTheIndex();
    void theFilterHidesRows();
    void theFilterKeepsTheCurrentRow();
    void aRowPostedOutOfTheFilterIsKeptUnseen();
    void deletingUnderFilterAndIndexTakesTheRightRow();
    void theSumCountsWhatIsSeen();
    void emptyingWhileEditingEndsTheEditing();
    void definingAnewForgetsIndexAndFilter();
    void statesAreTold();

private:
    void add(const QString &lot, const QVariant &kg);
    QStringList lots() const;

    std::unique_ptr<TClientDataSet> m_set;
};

void TestClientDataSet::init()
{
    m_set = std::make_unique<TClientDataSet>();
    m_set->CreateDataSet({{u"LOTE"_s, TField::Type::Text, 5}, {u"QTDE"_s, TField::Type::Float}});
}

void TestClientDataSet::add(const QString &lot, const QVariant &kg)
{
    m_set->Append();
    m_set->setValue(u"LOTE"_s, lot);
    m_set->setValue(u"QTDE"_s, kg);
    m_set->Post();
}

/// As they are seen.
QStringList TestClientDataSet::lots() const
{
    QStringList result;
    for (int row = 0; row < m_set->rowCount(); ++row)
        result.append(m_set->cell(row, 0).toString());
    return result;
}

void TestClientDataSet::aNewSetIsEmpty()
{
    QVERIFY(m_set->IsEmpty());
    QCOMPARE(m_set->state(), TClientDataSet::State::Browse);
    QVERIFY(m_set->value(u"LOTE"_s).isNull());
    QCOMPARE(m_set->sum(u"QTDE"_s), 0.0);
}

void TestClientDataSet::anAppendedRowStandsLast()
{
    add(u"A"_s, 1);
    add(u"B"_s, 2);
    m_set->First();
    add(u"C"_s, 3);
    QCOMPARE(lots(), QStringList({u"A"_s, u"B"_s, u"C"_s}));
    QCOMPARE(m_set->AsString(u"LOTE"_s), u"C"_s);
    QCOMPARE(m_set->row(), 2);
}

void TestClientDataSet::anInsertedRowStandsBeforeTheCurrentOne()
{
    add(u"A"_s, 1);
    add(u"C"_s, 3);
    m_set->Insert();
    m_set->setValue(u"LOTE"_s, u"B"_s);
    m_set->Post();
    QCOMPARE(lots(), QStringList({u"A"_s, u"B"_s, u"C"_s}));
    QCOMPARE(m_set->AsString(u"LOTE"_s), u"B"_s);
}

void TestClientDataSet::insertingIntoAnEmptySetMakesTheFirstRow()
{
    m_set->Insert();
    m_set->setValue(u"LOTE"_s, u"A"_s);
    m_set->Post();
    QCOMPARE(lots(), QStringList(u"A"_s));
    QCOMPARE(m_set->row(), 0);
    QVERIFY(m_set->IsNull(u"QTDE"_s));
}

void TestClientDataSet::cancelDropsWhatWasTyped()
{
    add(u"A"_s, 1);
    m_set->Edit();
    m_set->setValue(u"LOTE"_s, u"Z"_s);
    m_set->Cancel();
    QCOMPARE(m_set->AsString(u"LOTE"_s), u"A"_s);
    QCOMPARE(m_set->state(), TClientDataSet::State::Browse);
}

void TestClientDataSet::cancelledInsertionLeavesNoRow()
{
    add(u"A"_s, 1);
    m_set->Append();
    m_set->setValue(u"LOTE"_s, u"Z"_s);
    QCOMPARE(m_set->rowCount(), 1);
    m_set->Cancel();
    QCOMPARE(lots(), QStringList(u"A"_s));
    QCOMPARE(m_set->AsString(u"LOTE"_s), u"A"_s);
}

void TestClientDataSet::editingAnEmptySetInserts()
{
    m_set->Edit();
    QCOMPARE(m_set->state(), TClientDataSet::State::Insert);
}

void TestClientDataSet::aValueIsReadFromTheBufferWhileEditing()
{
    add(u"A"_s, 1);
    m_set->Edit();
    m_set->setValue(u"lote"_s, u"B"_s);
    QCOMPARE(m_set->AsString(u"LOTE"_s), u"B"_s);
    QCOMPARE(m_set->cell(0, 0).toString(), u"A"_s);
    m_set->Post();
    QCOMPARE(m_set->cell(0, 0).toString(), u"B"_s);
}

void TestClientDataSet::aValueOutsideOfEditingIsRefused()
{
    add(u"A"_s, 1);
    QVERIFY_THROWS_EXCEPTION(EProgramming, m_set->setValue(u"LOTE"_s, u"B"_s));
    m_set->Edit();
    QVERIFY_THROWS_EXCEPTION(EProgramming, m_set->setValue(u"PESO"_s, 1));
}

void TestClientDataSet::textsAreCutToTheirSize()
{
    add(u"ÁÉÍÓÚXYZ"_s, 1);
    QCOMPARE(m_set->AsString(u"LOTE"_s), u"ÁÉÍÓÚ"_s);
}

void TestClientDataSet::onlyRealChangesAreTold()
{
    QSignalSpy changed(m_set.get(), &TClientDataSet::fieldChanged);
    m_set->Append();
    m_set->setValue(u"qtde"_s, 0.0);
    m_set->setValue(u"QTDE"_s, 0.0);
    m_set->setValue(u"LOTE"_s, u"A"_s);
    m_set->setValue(u"LOTE"_s, u"A"_s);
    m_set->setValue(u"LOTE"_s, QVariant());
    QCOMPARE(changed.size(), 3);
    QCOMPARE(changed[0][0].toString(), u"QTDE"_s);
    QCOMPARE(changed[1][0].toString(), u"LOTE"_s);
}

void TestClientDataSet::movingAwayPosts_data()
{
    QTest::addColumn<std::function<void(TClientDataSet &)>>("move");
    using Move = std::function<void(TClientDataSet &)>;
    QTest::newRow("Next") << Move([](TClientDataSet &set) { set.Next(); });
    QTest::newRow("Prior") << Move([](TClientDataSet &set) { set.Prior(); });
    QTest::newRow("First") << Move([](TClientDataSet &set) { set.First(); });
    QTest::newRow("Last") << Move([](TClientDataSet &set) { set.Last(); });
    QTest::newRow("setRow") << Move([](TClientDataSet &set) { set.setRow(2); });
    QTest::newRow("Locate") << Move([](TClientDataSet &set) { set.Locate(u"LOTE"_s, {u"C"_s}); });
}

void TestClientDataSet::movingAwayPosts()
{
    add(u"A"_s, 1);
    add(u"B"_s, 2);
    add(u"C"_s, 3);
    m_set->setRow(1);
    m_set->Edit();
    m_set->setValue(u"QTDE"_s, 20.0);
    QFETCH(std::function<void(TClientDataSet &)>, move);
    move(*m_set);
    QCOMPARE(m_set->state(), TClientDataSet::State::Browse);
    QVERIFY(m_set->row() != 1);
    QCOMPARE(lots(), QStringList({u"A"_s, u"B"_s, u"C"_s}));
    QCOMPARE(m_set->cell(1, 1).toDouble(), 20.0);
}

void TestClientDataSet::appendingAgainPostsTheRowBefore()
{
    m_set->Append();
    m_set->setValue(u"LOTE"_s, u"A"_s);
    m_set->Append();
    m_set->setValue(u"LOTE"_s, u"B"_s);
    m_set->Insert();
    m_set->setValue(u"LOTE"_s, u"C"_s);
    m_set->Post();
    QCOMPARE(lots(), QStringList({u"A"_s, u"C"_s, u"B"_s}));
}

void TestClientDataSet::anotherIndexOrFilterPosts()
{
    add(u"A"_s, 1);
    m_set->Append();
    m_set->setValue(u"LOTE"_s, u"B"_s);
    m_set->setIndexFieldNames(u"LOTE"_s);
    QCOMPARE(m_set->state(), TClientDataSet::State::Browse);
    QCOMPARE(m_set->AsString(u"LOTE"_s), u"B"_s);
    m_set->Edit();
    m_set->setValue(u"QTDE"_s, 9.0);
    m_set->setFilter([](const QVector<QVariant> &row) { return row[1].toDouble() > 5; });
    QCOMPARE(lots(), QStringList(u"B"_s));
}

void TestClientDataSet::deletingMovesToTheNextRow()
{
    add(u"A"_s, 1);
    add(u"B"_s, 2);
    add(u"C"_s, 3);
    m_set->setRow(1);
    QSignalSpy scrolled(m_set.get(), &TDataSet::AfterScroll);
    m_set->Delete();
    QCOMPARE(lots(), QStringList({u"A"_s, u"C"_s}));
    QCOMPARE(m_set->AsString(u"LOTE"_s), u"C"_s);
    QCOMPARE(scrolled.size(), 1);
}

void TestClientDataSet::deletingTheLastRowMovesToTheOneBefore()
{
    add(u"A"_s, 1);
    add(u"B"_s, 2);
    m_set->Delete();
    QCOMPARE(m_set->AsString(u"LOTE"_s), u"A"_s);
    m_set->Delete();
    QVERIFY(m_set->IsEmpty());
    QCOMPARE(m_set->row(), -1);
    QVERIFY(m_set->Eof());
}

void TestClientDataSet::deletingWhileInsertingOnlyCancels()
{
    add(u"A"_s, 1);
    m_set->Append();
    m_set->Delete();
    QCOMPARE(lots(), QStringList(u"A"_s));
    QCOMPARE(m_set->state(), TClientDataSet::State::Browse);
}

void TestClientDataSet::deletingWhileEditingDeletesTheRow()
{
    add(u"A"_s, 1);
    m_set->Edit();
    m_set->Delete();
    QVERIFY(m_set->IsEmpty());
    QCOMPARE(m_set->state(), TClientDataSet::State::Browse);
}

void TestClientDataSet::deletingFromAnEmptySetDoesNothing()
{
    m_set->Delete();
    QVERIFY(m_set->IsEmpty());
}

void TestClientDataSet::valuesMayStillBeChangedBeforeThePost()
{
    connect(m_set.get(), &TClientDataSet::BeforePost, this, [this] { m_set->setValue(u"QTDE"_s, 7.0); });
    m_set->Append();
    m_set->Post();
    QCOMPARE(m_set->AsFloat(u"QTDE"_s), 7.0);
}

void TestClientDataSet::eventsComeInTheirOrder()
{
    QStringList events;
    connect(m_set.get(), &TClientDataSet::BeforePost, this, [&] { events.append(u"before"_s); });
    connect(m_set.get(), &TClientDataSet::AfterPost, this, [&] {
        QCOMPARE(m_set->state(), TClientDataSet::State::Browse);
        QCOMPARE(m_set->AsString(u"LOTE"_s), u"A"_s);
        events.append(u"after"_s);
    });
    connect(m_set.get(), &TDataSet::AfterScroll, this, [&] { events.append(u"scroll"_s); });
    add(u"A"_s, 1);
    QCOMPARE(events, QStringList({u"before"_s, u"after"_s, u"scroll"_s}));
    m_set->Post();
    QCOMPARE(events.size(), 3);
}

void TestClientDataSet::theIndexSortsByValues()
{
    add(u"9"_s, 9.0);
    add(u"10"_s, 10.0);
    add(u"1"_s, 1.0);
    m_set->setIndexFieldNames(u"QTDE"_s);
    QCOMPARE(lots(), QStringList({u"1"_s, u"9"_s, u"10"_s}));
    m_set->setIndexFieldNames(u"LOTE"_s);
    QCOMPARE(lots(), QStringList({u"1"_s, u"10"_s, u"9"_s}));
    m_set->setIndexFieldNames({});
    QCOMPARE(lots(), QStringList({u"9"_s, u"10"_s, u"1"_s}));
    QVERIFY_THROWS_EXCEPTION(EProgramming, m_set->setIndexFieldNames(u"LOTE;PESO"_s));
}

void TestClientDataSet::theIndexSortsByTwoFieldsNullsFirst()
{
    add(u"B"_s, 1.0);
    add(u"A"_s, 2.0);
    add(u"A"_s, QVariant());
    add(u"A"_s, 1.0);
    m_set->setIndexFieldNames(u"lote; qtde"_s);
    QCOMPARE(lots(), QStringList({u"A"_s, u"A"_s, u"A"_s, u"B"_s}));
    QVERIFY(m_set->cell(0, 1).isNull());
    QCOMPARE(m_set->cell(1, 1).toDouble(), 1.0);
}

void TestClientDataSet::equalRowsKeepTheirOrder()
{
    for (const QString &lot : {u"X"_s, u"B"_s, u"A"_s, u"C"_s})
        add(lot, 1.0);
    m_set->setIndexFieldNames(u"QTDE"_s);
    QCOMPARE(lots(), QStringList({u"X"_s, u"B"_s, u"A"_s, u"C"_s}));
}

void TestClientDataSet::theIndexKeepsTheCurrentRow()
{
    add(u"C"_s, 1);
    add(u"A"_s, 1);
    add(u"B"_s, 1);
    m_set->First();
    m_set->setIndexFieldNames(u"LOTE"_s);
    QCOMPARE(m_set->AsString(u"LOTE"_s), u"C"_s);
    QCOMPARE(m_set->row(), 2);
}

void TestClientDataSet::aPostedRowGoesToItsPlaceInTheIndex()
{
    m_set->setIndexFieldNames(u"LOTE"_s);
    add(u"C"_s, 1);
    add(u"A"_s, 1);
    QCOMPARE(m_set->row(), 0);
    m_set->Edit();
    m_set->setValue(u"LOTE"_s, u"D"_s);
    m_set->Post();
    QCOMPARE(lots(), QStringList({u"C"_s, u"D"_s}));
    QCOMPARE(m_set->AsString(u"LOTE"_s), u"D"_s);
}

void TestClientDataSet::theFilterHidesRows()
{
    for (int i = 1; i <= 4; ++i)
        add(QString::number(i), double(i));
    m_set->setFilter([](const QVector<QVariant> &row) { return int(row[1].toDouble()) % 2 == 0; });
    QCOMPARE(lots(), QStringList({u"2"_s, u"4"_s}));
    QCOMPARE(m_set->allRows().size(), 4);
    m_set->setFilter([](const QVector<QVariant> &) { return false; });
    QVERIFY(m_set->IsEmpty());
    QVERIFY(m_set->value(u"LOTE"_s).isNull());
    m_set->setFilter({});
    QCOMPARE(m_set->rowCount(), 4);
    QCOMPARE(m_set->row(), 0);
}

void TestClientDataSet::theFilterKeepsTheCurrentRow()
{
    for (int i = 1; i <= 4; ++i)
        add(QString::number(i), double(i));
    m_set->setRow(2);
    m_set->setFilter([](const QVector<QVariant> &row) { return row[1].toDouble() > 1; });
    QCOMPARE(m_set->AsString(u"LOTE"_s), u"3"_s);
    m_set->setFilter([](const QVector<QVariant> &row) { return row[1].toDouble() > 3; });
    QCOMPARE(m_set->AsString(u"LOTE"_s), u"4"_s);
}

void TestClientDataSet::aRowPostedOutOfTheFilterIsKeptUnseen()
{
    m_set->setFilter([](const QVector<QVariant> &row) { return row[1].toDouble() < 5; });
    add(u"A"_s, 1.0);
    add(u"B"_s, 9.0);
    QCOMPARE(lots(), QStringList(u"A"_s));
    QCOMPARE(m_set->allRows().size(), 2);
    QCOMPARE(m_set->AsString(u"LOTE"_s), u"A"_s);
    m_set->Edit();
    m_set->setValue(u"QTDE"_s, 8.0);
    m_set->Post();
    QVERIFY(m_set->IsEmpty());
    QCOMPARE(m_set->row(), -1);
}

void TestClientDataSet::deletingUnderFilterAndIndexTakesTheRightRow()
{
    for (const auto &[lot, kg] : {std::pair(u"C"_s, 1.0), {u"A"_s, 9.0}, {u"B"_s, 1.0}, {u"D"_s, 9.0}})
        add(lot, kg);
    m_set->setIndexFieldNames(u"LOTE"_s);
    m_set->setFilter([](const QVector<QVariant> &row) { return row[1].toDouble() > 5; });
    QVERIFY(m_set->Locate(u"LOTE"_s, {u"A"_s}));
    m_set->Delete();
    QCOMPARE(lots(), QStringList(u"D"_s));
    m_set->setFilter({});
    QCOMPARE(lots(), QStringList({u"B"_s, u"C"_s, u"D"_s}));
}

void TestClientDataSet::theSumCountsWhatIsSeen()
{
    add(u"A"_s, 1.25);
    add(u"B"_s, QVariant());
    add(u"C"_s, 2.5);
    QCOMPARE(m_set->sum(u"qtde"_s), 3.75);
    m_set->setFilter([](const QVector<QVariant> &row) { return row[0] == QVariant(u"C"_s); });
    QCOMPARE(m_set->sum(u"QTDE"_s), 2.5);
}

void TestClientDataSet::emptyingWhileEditingEndsTheEditing()
{
    add(u"A"_s, 1);
    m_set->Edit();
    QSignalSpy states(m_set.get(), &TClientDataSet::stateChanged);
    m_set->EmptyDataSet();
    QCOMPARE(m_set->state(), TClientDataSet::State::Browse);
    QCOMPARE(states.size(), 1);
    QVERIFY(m_set->IsEmpty());
    QCOMPARE(m_set->fields().size(), 2);
    m_set->Post();
    QVERIFY(m_set->IsEmpty());
}

void TestClientDataSet::definingAnewForgetsIndexAndFilter()
{
    add(u"A"_s, 1);
    m_set->setIndexFieldNames(u"QTDE"_s);
    m_set->setFilter([](const QVector<QVariant> &row) { return row[1].toDouble() > 5; });
    m_set->CreateDataSet({{u"CODIGO"_s, TField::Type::Text, 3}});
    for (const QString &code : {u"002"_s, u"001"_s}) {
        m_set->Append();
        m_set->setValue(u"CODIGO"_s, code);
        m_set->Post();
    }
    QCOMPARE(lots(), QStringList({u"002"_s, u"001"_s}));
}

void TestClientDataSet::statesAreTold()
{
    QSignalSpy states(m_set.get(), &TClientDataSet::stateChanged);
    m_set->Append();
    m_set->Post();
    m_set->Edit();
    m_set->Edit();
    m_set->Cancel();
    m_set->Cancel();
    QCOMPARE(states.size(), 4);
}

QTEST_APPLESS_MAIN(TestClientDataSet)
#include "tst_clientdataset.moc"
