// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "invoicing/lotrules.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestLotRules : public QObject
{
    Q_OBJECT

private slots:
    void theTotalIsRoundedToTheCent_data();
    void theTotalIsRoundedToTheCent();
    void thePriceIsTheTotalByTheQuantity_data();
    void thePriceIsTheTotalByTheQuantity();
    void aLotThatWasNotGivenIsZero();
    void onlyWhatIsMoreThanZeroIsAFigure();
};

void TestLotRules::theTotalIsRoundedToTheCent_data()
{
    QTest::addColumn<double>("quantity");
    QTest::addColumn<double>("price");
    QTest::addColumn<double>("total");
    QTest::newRow("whole") << 50.0 << 20.0 << 1000.0;
    QTest::newRow("half a cent up") << 1.5 << 0.03 << 0.05;
    QTest::newRow("below half a cent") << 0.001 << 4.0 << 0.0;
    QTest::newRow("all decimals") << 338.305 << 26.880001 << 9093.64;
}

void TestLotRules::theTotalIsRoundedToTheCent()
{
    QFETCH(double, quantity);
    QFETCH(double, price);
    QTEST(LotRules::total(quantity, price), "total");
}

void TestLotRules::thePriceIsTheTotalByTheQuantity_data()
{
    QTest::addColumn<double>("total");
    QTest::addColumn<double>("quantity");
    QTest::addColumn<double>("price");
    QTest::newRow("a third") << 100.0 << 3.0 << 33.333333;
    QTest::newRow("two thirds") << 200.0 << 3.0 << 66.666667;
    QTest::newRow("no quantity") << 100.0 << 0.0 << 100.0;
    QTest::newRow("less than nothing") << 100.0 << -2.0 << 100.0;
}

void TestLotRules::thePriceIsTheTotalByTheQuantity()
{
    QFETCH(double, total);
    QFETCH(double, quantity);
    QTEST(LotRules::unitPrice(total, quantity), "price");
}

void TestLotRules::aLotThatWasNotGivenIsZero()
{
    QCOMPARE(LotRules::lotOf({}), u"0"_s);
    QCOMPARE(LotRules::lotOf(u"   "_s), u"0"_s);
    QCOMPARE(LotRules::lotOf(u" A 1 "_s), u"A 1"_s);
}

void TestLotRules::onlyWhatIsMoreThanZeroIsAFigure()
{
    for (const double wrong : {0.0, -0.001}) {
        QCOMPARE(LotRules::quantityFault(wrong), u"Quantidade não pode ser menor ou igual a zero."_s);
        QCOMPARE(LotRules::priceFault(wrong), u"Preço não pode ser menor ou igual a zero."_s);
        QCOMPARE(LotRules::totalFault(wrong), u"Total não pode ser menor ou igual a zero."_s);
    }
    QCOMPARE(LotRules::quantityFault(0.001), QString());
    QCOMPARE(LotRules::priceFault(0.000001), QString());
    QCOMPARE(LotRules::totalFault(0.01), QString());
}

QTEST_APPLESS_MAIN(TestLotRules)
#include "tst_lotrules.moc"
