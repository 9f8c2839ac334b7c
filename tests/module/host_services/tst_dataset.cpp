// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/dataset.h"
#include "module/host_services/errors.h"

#include <QDateTime>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// Rows that come in pages of two.
class Paged : public TDataSet
{
public:
    explicit Paged(const QVector<QVector<QVariant>> &rows)
        : m_all(rows)
    {
        setFields({{u"NUM_OF"_s, TField::Type::Text}, {u"KG"_s, TField::Type::Float}, {u"DATA"_s, TField::Type::Date},
            {u"ROLO"_s, TField::Type::Integer}});
        moveTo(-1, false);
        fetchMore();
        moveTo(m_fetched > 0 ? 0 : -1, false);
    }

    int rowCount() const override { return m_fetched; }
    QVariant cell(int row, int fieldIndex) const override { return m_all[row][fieldIndex]; }
    bool canFetchMore() const override { return m_fetched < m_all.size(); }
    void fetchMore() override { m_fetched = qMin(m_fetched + 2, int(m_all.size())); }

private:
    QVector<QVector<QVariant>> m_all;
    int m_fetched = 0;
};

QVector<QVector<QVariant>> fiveRows()
{
    QVector<QVector<QVariant>> rows;
    for (int i = 1; i <= 5; ++i)
        rows.append({u"00000%1"_s.arg(i), i * 1.5, QDate(2026, 3, i), i});
    rows[3][1] = QVariant(QMetaType(QMetaType::Double));
    return rows;
}

} // namespace

class TestDataSet : public QObject
{
    Q_OBJECT

private slots:
    void anEmptySetStandsNowhere();
    void aSetIsRunThroughFromFirstToLast();
    void priorStopsAtTheFirstRow();
    void lastFetchesAll();
    void aRowBeyondTheEndIsTheLast();
    void everyMoveIsToldOnce();
    void fieldsAreFoundInAnyCase();
    void anUnknownFieldIsAProgrammingError();
    void nullReadsAsNothing();
    void locateFindsByOneField();
    void locateFindsByTwoFieldsBeyondTheFirstPage();
    void locateLeavesTheCursorWhenNothingFits();
    void locateFindsNull();
    void valuesReadTheBrazilianWay_data();
    void valuesReadTheBrazilianWay();
    void aFieldDescribesItself();
};

void TestDataSet::anEmptySetStandsNowhere()
{
    Paged set({});
    QVERIFY(set.IsEmpty());
    QVERIFY(set.Eof());
    QVERIFY(set.Bof());
    QCOMPARE(set.row(), -1);
    QVERIFY(set.value(u"NUM_OF"_s).isNull());
    set.First();
    set.Next();
    set.Prior();
    set.Last();
    QCOMPARE(set.row(), -1);
    QVERIFY(set.Eof());
}

void TestDataSet::aSetIsRunThroughFromFirstToLast()
{
    Paged set(fiveRows());
    QStringList seen;
    for (set.First(); !set.Eof(); set.Next())
        seen.append(set.AsString(u"NUM_OF"_s));
    QCOMPARE(seen, QStringList({u"000001"_s, u"000002"_s, u"000003"_s, u"000004"_s, u"000005"_s}));
    QCOMPARE(set.AsString(u"NUM_OF"_s), u"000005"_s);
    set.First();
    QVERIFY(!set.Eof());
    QVERIFY(set.Bof());
}

void TestDataSet::priorStopsAtTheFirstRow()
{
    Paged set(fiveRows());
    set.Next();
    set.Prior();
    QCOMPARE(set.row(), 0);
    set.Prior();
    QCOMPARE(set.row(), 0);
    QVERIFY(!set.Eof());
}

void TestDataSet::lastFetchesAll()
{
    Paged set(fiveRows());
    QCOMPARE(set.rowCount(), 2);
    set.Last();
    QCOMPARE(set.rowCount(), 5);
    QCOMPARE(set.AsInteger(u"ROLO"_s), 5);
    QVERIFY(set.Eof());
    set.Prior();
    QVERIFY(!set.Eof());
}

void TestDataSet::aRowBeyondTheEndIsTheLast()
{
    Paged set(fiveRows());
    set.setRow(3);
    QCOMPARE(set.row(), 3);
    set.setRow(99);
    QCOMPARE(set.row(), 4);
}

void TestDataSet::everyMoveIsToldOnce()
{
    Paged set(fiveRows());
    QSignalSpy scrolled(&set, &TDataSet::AfterScroll);
    set.Next();
    QCOMPARE(scrolled.size(), 1);
    set.setRow(1);
    QCOMPARE(scrolled.size(), 1);
    set.Last();
    QCOMPARE(scrolled.size(), 2);
    set.Next();
    QCOMPARE(scrolled.size(), 2);
    QVERIFY(set.Locate(u"ROLO"_s, {1}));
    QCOMPARE(scrolled.size(), 3);
}

void TestDataSet::fieldsAreFoundInAnyCase()
{
    Paged set(fiveRows());
    QCOMPARE(set.AsString(u"num_of"_s), u"000001"_s);
    QCOMPARE(set.AsFloat(u"Kg"_s), 1.5);
    QCOMPARE(set.AsDate(u"data"_s), QDate(2026, 3, 1));
    QCOMPARE(set.fieldIndex(u"rolo"_s), 3);
    QVERIFY(set.hasField(u"rOLO"_s));
    QVERIFY(!set.hasField(u"ROLOS"_s));
}

void TestDataSet::anUnknownFieldIsAProgrammingError()
{
    Paged set(fiveRows());
    QVERIFY_THROWS_EXCEPTION(EProgramming, set.value(u"PESO"_s));
    QVERIFY_THROWS_EXCEPTION(EProgramming, set.field(u"PESO"_s));
    QVERIFY_THROWS_EXCEPTION(EProgramming, set.Locate(u"NUM_OF;PESO"_s, {u"000001"_s, 1}));
    Paged empty({});
    QVERIFY_THROWS_EXCEPTION(EProgramming, empty.value(u"PESO"_s));
}

void TestDataSet::nullReadsAsNothing()
{
    Paged set(fiveRows());
    set.setRow(3);
    QVERIFY(set.IsNull(u"KG"_s));
    QCOMPARE(set.AsFloat(u"KG"_s), 0.0);
    QCOMPARE(set.AsInteger(u"KG"_s), 0);
    QCOMPARE(set.AsString(u"KG"_s), QString());
}

void TestDataSet::locateFindsByOneField()
{
    Paged set(fiveRows());
    QVERIFY(set.Locate(u"num_of"_s, {u"000002"_s}));
    QCOMPARE(set.row(), 1);
}

void TestDataSet::locateFindsByTwoFieldsBeyondTheFirstPage()
{
    Paged set(fiveRows());
    QVERIFY(set.Locate(u"NUM_OF; ROLO"_s, {u"000005"_s, 5}));
    QCOMPARE(set.row(), 4);
    QVERIFY(!set.Locate(u"NUM_OF;ROLO"_s, {u"000004"_s, 5}));
}

void TestDataSet::locateLeavesTheCursorWhenNothingFits()
{
    Paged set(fiveRows());
    set.Next();
    QVERIFY(!set.Locate(u"NUM_OF"_s, {u"999999"_s}));
    QCOMPARE(set.row(), 1);
}

void TestDataSet::locateFindsNull()
{
    Paged set(fiveRows());
    QVERIFY(set.Locate(u"KG"_s, {QVariant()}));
    QCOMPARE(set.row(), 3);
    QVERIFY(!set.Locate(u"KG"_s, {0.0}));
}

void TestDataSet::valuesReadTheBrazilianWay_data()
{
    QTest::addColumn<TField::Type>("type");
    QTest::addColumn<QString>("mask");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");
    using Type = TField::Type;
    QTest::newRow("text") << Type::Text << QString() << QVariant(u"Ç1"_s) << u"Ç1"_s;
    QTest::newRow("float") << Type::Float << QString() << QVariant(1234.5) << u"1.234,50"_s;
    QTest::newRow("float by mask") << Type::Float << u"0.000"_s << QVariant(1234.5) << u"1234,500"_s;
    QTest::newRow("integer") << Type::Integer << QString() << QVariant(1001) << u"1001"_s;
    QTest::newRow("integer by mask") << Type::Integer << u",0"_s << QVariant(1001) << u"1.001"_s;
    QTest::newRow("date") << Type::Date << QString() << QVariant(QDate(2026, 12, 31)) << u"31/12/2026"_s;
    QTest::newRow("time") << Type::Time << QString() << QVariant(QTime(0, 0, 1)) << u"00:00:01"_s;
    QTest::newRow("moment") << Type::DateTime << QString() << QVariant(QDateTime(QDate(2026, 3, 1), QTime(14, 5, 9)))
                            << u"01/03/2026 14:05:09"_s;
    QTest::newRow("null") << Type::Float << u"0.000"_s << QVariant(QMetaType(QMetaType::Double)) << QString();
    QTest::newRow("nothing") << Type::Date << QString() << QVariant() << QString();
}

void TestDataSet::valuesReadTheBrazilianWay()
{
    QFETCH(TField::Type, type);
    QFETCH(QString, mask);
    QFETCH(QVariant, value);
    QTEST(TField(u"X"_s, type).shownAs(mask).text(value), "text");
}

void TestDataSet::aFieldDescribesItself()
{
    const TField plain(u"QTDE"_s, TField::Type::Float);
    QCOMPARE(plain.title, u"QTDE"_s);
    QVERIFY(plain.readOnly);
    QVERIFY(plain.visible);
    QVERIFY(plain.isNumeric());
    const TField described = TField(u"LOTE"_s, TField::Type::Text, 15).titled(u"Lote"_s).editable().hidden();
    QCOMPARE(described.title, u"Lote"_s);
    QCOMPARE(described.size, 15);
    QVERIFY(!described.readOnly);
    QVERIFY(!described.visible);
    QVERIFY(!described.isNumeric());
}

QTEST_APPLESS_MAIN(TestDataSet)
#include "tst_dataset.moc"
