// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "registries/pricerules.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// The arithmetic of the price table.
class TestPriceRules : public QObject
{
    Q_OBJECT

private slots:
    void thereAreFourteenInstalmentsAWeekApart();
    void aPriceIsRaisedToTheCent_data();
    void aPriceIsRaisedToTheCent();
    void theAverageLeavesOutWhatHasNoPrice_data();
    void theAverageLeavesOutWhatHasNoPrice();
};

void TestPriceRules::thereAreFourteenInstalmentsAWeekApart()
{
    QCOMPARE(PriceRules::instalments(),
        (QStringList{u"PRECO_00"_s, u"PRECO_07"_s, u"PRECO_14"_s, u"PRECO_21"_s, u"PRECO_28"_s, u"PRECO_35"_s,
            u"PRECO_42"_s, u"PRECO_49"_s, u"PRECO_56"_s, u"PRECO_63"_s, u"PRECO_70"_s, u"PRECO_77"_s, u"PRECO_84"_s,
            u"PRECO_91"_s}));
}

void TestPriceRules::aPriceIsRaisedToTheCent_data()
{
    QTest::addColumn<double>("price");
    QTest::addColumn<double>("percent");
    QTest::addColumn<double>("raised");
    QTest::newRow("nothing") << 3.45 << 0.0 << 3.45;
    QTest::newRow("a tenth") << 10.0 << 10.0 << 11.0;
    QTest::newRow("down") << 3.44 << 5.0 << 3.61; // 3.612
    QTest::newRow("up") << 3.46 << 5.0 << 3.63; // 3.633
    QTest::newRow("a half goes up") << 1.5 << 7.0 << 1.61; // 1.605
    QTest::newRow("a half that binary figures miss") << 2.5 << 7.0 << 2.68; // 2.675
    QTest::newRow("another") << 1.1 << 0.5 << 1.11; // 1.1055
    QTest::newRow("lowered") << 4.0 << -12.5 << 3.5;
    QTest::newRow("lowered to a half") << 0.05 << -50.0 << 0.03; // 0.025
    QTest::newRow("a negative price's half goes down") << -1.5 << 7.0 << -1.61;
    QTest::newRow("a small percentage") << 100.0 << 0.0049 << 100.0;
    QTest::newRow("and a little more") << 100.0 << 0.005 << 100.01;
    QTest::newRow("given away") << 3.45 << -100.0 << 0.0;
    QTest::newRow("no price") << 0.0 << 10.0 << 0.0;
    QTest::newRow("fractions of a cent are kept") << 3.4525 << 5.0 << 3.6251; // 3.625125
    QTest::newRow("also without a change") << 0.0125 << 0.0 << 0.0125;
    QTest::newRow("a large price") << 123456.78 << 3.5 << 127777.77; // 127777.7673
    QTest::newRow("doubled") << 2.99 << 100.0 << 5.98;
}

void TestPriceRules::aPriceIsRaisedToTheCent()
{
    QFETCH(double, price);
    QFETCH(double, percent);
    QTEST(PriceRules::raised(price, percent), "raised");
}

void TestPriceRules::theAverageLeavesOutWhatHasNoPrice_data()
{
    QTest::addColumn<QVector<double>>("prices");
    QTest::addColumn<double>("average");
    QTest::newRow("none") << QVector<double>{} << 0.0;
    QTest::newRow("all zero") << QVector<double>{0, 0, 0} << 0.0;
    QTest::newRow("one") << QVector<double>{0, 3.45, 0} << 3.45;
    QTest::newRow("two") << QVector<double>{3, 4.01} << 3.51; // 3.505
    QTest::newRow("three") << QVector<double>{1, 1, 2, 0} << 1.33;
    QTest::newRow("with fractions of a cent") << QVector<double>{1, 1.0001} << 1.0001; // 1.00005
    QTest::newRow("that cancel out") << QVector<double>{-2, 2} << 0.0;
}

void TestPriceRules::theAverageLeavesOutWhatHasNoPrice()
{
    QFETCH(QVector<double>, prices);
    QTEST(PriceRules::average(prices), "average");
}

QTEST_MAIN(TestPriceRules)
#include "tst_pricerules.moc"
