// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/labellist.h"

#include "module/host_services/errors.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QStringList numbers(double totalKg, double rollKg)
{
    QStringList result;
    for (const LabelList::Label &label : LabelList::of(u"000012"_s, totalKg, rollKg))
        result.append(label.number);
    return result;
}

} // namespace

class TestLabelList : public QObject
{
    Q_OBJECT

private slots:
    void everyWholeRollGetsALabelAndThreeAreSpare();
    void everyLabelBearsTheOrderSpareOnesToo();
    void wholeRollsAreCountedToTheGram_data();
    void wholeRollsAreCountedToTheGram();
    void numbersGrowBeyondThreeDigits();
    void withoutARollWeightOnlySpareLabelsRemain_data();
    void withoutARollWeightOnlySpareLabelsRemain();
    void anAbsurdNumberOfLabelsIsRefused();
};

void TestLabelList::everyWholeRollGetsALabelAndThreeAreSpare()
{
    QCOMPARE(numbers(100, 30), (QStringList{u"001"_s, u"002"_s, u"003"_s, {}, {}, {}}));
}

void TestLabelList::everyLabelBearsTheOrderSpareOnesToo()
{
    const QVector<LabelList::Label> labels = LabelList::of(u"000012"_s, 50, 25);
    QCOMPARE(labels.size(), 5);
    for (const LabelList::Label &label : labels)
        QCOMPARE(label.of, u"000012"_s);
}

void TestLabelList::wholeRollsAreCountedToTheGram_data()
{
    QTest::addColumn<double>("total");
    QTest::addColumn<double>("roll");
    QTest::addColumn<int>("rolls");
    QTest::newRow("equal weights") << 25.0 << 25.0 << 1;
    QTest::newRow("a gram short of the second") << 49.999 << 25.0 << 1;
    QTest::newRow("a gram over") << 50.001 << 25.0 << 2;
    QTest::newRow("0,1 has no exact binary form") << 0.3 << 0.1 << 3;
    QTest::newRow("a third in grams") << 100.0 << 33.333 << 3;
    QTest::newRow("a third rounded up") << 100.0 << 33.334 << 2;
    QTest::newRow("twenty-nine of 1,1") << 31.9 << 1.1 << 29;
    QTest::newRow("less than a roll") << 10.0 << 25.0 << 0;
    QTest::newRow("no weight") << 0.0 << 25.0 << 0;
}

void TestLabelList::wholeRollsAreCountedToTheGram()
{
    QFETCH(double, total);
    QFETCH(double, roll);
    QFETCH(int, rolls);
    const QStringList found = numbers(total, roll);
    QCOMPARE(found.size(), rolls + LabelList::spareLabels);
    QCOMPARE(found.count(QString()), LabelList::spareLabels);
    QCOMPARE(found.mid(rolls), (QStringList{{}, {}, {}}));
}

void TestLabelList::numbersGrowBeyondThreeDigits()
{
    const QStringList found = numbers(1001, 1);
    QCOMPARE(found[8], u"009"_s);
    QCOMPARE(found[98], u"099"_s);
    QCOMPARE(found[998], u"999"_s);
    QCOMPARE(found[999], u"1000"_s);
    QCOMPARE(found[1000], u"1001"_s);
    QCOMPARE(found[1001], QString());
}

void TestLabelList::withoutARollWeightOnlySpareLabelsRemain_data()
{
    QTest::addColumn<double>("total");
    QTest::addColumn<double>("roll");
    QTest::newRow("zero") << 100.0 << 0.0;
    QTest::newRow("less than half a gram") << 100.0 << 0.0004;
    QTest::newRow("negative roll") << 100.0 << -5.0;
    QTest::newRow("negative weight") << -100.0 << 5.0;
}

void TestLabelList::withoutARollWeightOnlySpareLabelsRemain()
{
    QFETCH(double, total);
    QFETCH(double, roll);
    QCOMPARE(numbers(total, roll), (QStringList{{}, {}, {}}));
}

void TestLabelList::anAbsurdNumberOfLabelsIsRefused()
{
    QCOMPARE(numbers(LabelList::mostLabels, 1).size(), LabelList::mostLabels + LabelList::spareLabels);
    try {
        numbers(LabelList::mostLabels + 1, 1);
        QFAIL("Nothing was thrown");
    } catch (const EQen &error) {
        QCOMPARE(error.sentence(), u"A OF 000012 daria 10000 etiquetas. Verifique o peso e o KG Rolo."_s);
    }
    QVERIFY_EXCEPTION_THROWN(numbers(999999999, 0.001), EQen);
}

QTEST_GUILESS_MAIN(TestLabelList)
#include "tst_labellist.moc"
