// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/clientstock.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// The arithmetic of a client's stock.
class TestClientStock : public QObject
{
    Q_OBJECT

private slots:
    void fabricIsMadeOfItsYarnsByTheirShares();
    void aYarnOfSeveralLinesAddsUp();
    void whatIsInFabricIsNotThereAsYarn_data();
    void whatIsInFabricIsNotThereAsYarn();
    void lessThanHalfAGramIsNothing_data();
    void lessThanHalfAGramIsNothing();
    void receivedIsInFabricReturnedAndFreeTogether();
    void barsBeginWithTheYarnOfWhichMostCame();
    void aYarnOfTwoCompaniesIsOneBar();
    void aYarnWithoutFiguresHasNoBar();
};

void TestClientStock::fabricIsMadeOfItsYarnsByTheirShares()
{
    ClientStock::YarnInFabric yarn;
    ClientStock::addFabric(yarn, 100, {{u"A"_s, 60}, {u"B"_s, 40}});
    ClientStock::addFabric(yarn, 20.5, {{u"A"_s, 60}, {u"B"_s, 40}});
    QCOMPARE(yarn.size(), 2);
    QCOMPARE(yarn.value(u"A"_s), 72.3);
    QCOMPARE(yarn.value(u"B"_s), 48.2);
    ClientStock::addFabric(yarn, 50, {});
    QCOMPARE(yarn.size(), 2);
}

void TestClientStock::aYarnOfSeveralLinesAddsUp()
{
    ClientStock::YarnInFabric yarn;
    ClientStock::addFabric(yarn, 200, {{u"A"_s, 30}, {u"A"_s, 25.5}});
    QCOMPARE(yarn.value(u"A"_s), 111.0);
}

void TestClientStock::whatIsInFabricIsNotThereAsYarn_data()
{
    QTest::addColumn<double>("book");
    QTest::addColumn<double>("inFabric");
    QTest::addColumn<double>("physical");
    QTest::newRow("nothing knitted") << 12.345 << 0.0 << 12.345;
    QTest::newRow("some") << 100.0 << 33.3333 << 66.667;
    QTest::newRow("all of it, in parts that binary cannot hold") << 0.3 << 0.1 + 0.1 + 0.1 << 0.0;
    QTest::newRow("more than came") << 10.0 << 12.5 << -2.5;
}

void TestClientStock::whatIsInFabricIsNotThereAsYarn()
{
    QFETCH(double, book);
    QFETCH(double, inFabric);
    QTEST(ClientStock::physical(book, inFabric), "physical");
    QVERIFY(!std::signbit(ClientStock::physical(0.3, 0.1 + 0.1 + 0.1)));
}

void TestClientStock::lessThanHalfAGramIsNothing_data()
{
    QTest::addColumn<double>("kg");
    QTest::addColumn<bool>("nothing");
    QTest::newRow("zero") << 0.0 << true;
    QTest::newRow("what sums leave") << -5.5e-17 << true;
    QTest::newRow("below half a gram") << 0.00049 << true;
    QTest::newRow("half a gram") << 0.0005 << false;
    QTest::newRow("a gram too little") << -0.001 << false;
}

void TestClientStock::lessThanHalfAGramIsNothing()
{
    QFETCH(double, kg);
    QTEST(ClientStock::isNothing(kg), "nothing");
}

void TestClientStock::receivedIsInFabricReturnedAndFreeTogether()
{
    const ClientStock::Bars bars = ClientStock::bars({{u"A"_s, 705.25, 633.25, 45.25}});
    QCOMPARE(bars.yarns, QStringList{u"A"_s});
    QCOMPARE(bars.received, QList<double>{750.5});
    QCOMPARE(bars.inFabric, QList<double>{72});
    QCOMPARE(bars.returned, QList<double>{45.25});
    QCOMPARE(bars.free, QList<double>{633.25});
}

void TestClientStock::barsBeginWithTheYarnOfWhichMostCame()
{
    const ClientStock::Bars bars =
        ClientStock::bars({{u"A"_s, 10, 10, 0}, {u"B"_s, 1, 1, 30}, {u"C"_s, 10, 2, 0}, {u"D"_s, 20, 0, 0}});
    QCOMPARE(bars.yarns, (QStringList{u"B"_s, u"D"_s, u"A"_s, u"C"_s}));
    QCOMPARE(bars.received, (QList<double>{31, 20, 10, 10}));
    QCOMPARE(bars.free, (QList<double>{1, 0, 10, 2}));
}

void TestClientStock::aYarnOfTwoCompaniesIsOneBar()
{
    const ClientStock::Bars bars = ClientStock::bars({{u"A"_s, 0.1, 0.1, 0}, {u"B"_s, 5, 5, 0}, {u"A"_s, 0.2, 0.1, 7}});
    QCOMPARE(bars.yarns, (QStringList{u"A"_s, u"B"_s}));
    QCOMPARE(bars.received, (QList<double>{7.3, 5}));
    QCOMPARE(bars.inFabric, (QList<double>{0.1, 0}));
    QCOMPARE(bars.returned, (QList<double>{7, 0}));
    QCOMPARE(bars.free, (QList<double>{0.2, 5}));
}

void TestClientStock::aYarnWithoutFiguresHasNoBar()
{
    QCOMPARE(ClientStock::bars({{u"A"_s, 0, 0, 0}, {u"B"_s, 0, -1, 0}}).yarns, QStringList{u"B"_s});
    QCOMPARE(ClientStock::bars({}).yarns, QStringList());
}

QTEST_APPLESS_MAIN(TestClientStock)
#include "tst_clientstock.moc"
