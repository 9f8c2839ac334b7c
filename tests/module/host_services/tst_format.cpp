// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/host_services/format.h"

#include <QLocale>
#include <QTest>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

class TestFormat : public QObject
{
    Q_OBJECT

private slots:
    void numbersFollowTheMask_data();
    void numbersFollowTheMask();
    void whatIsNoNumberIsShownEmpty();
    void halvesAreRoundedAsOnPaper_data();
    void halvesAreRoundedAsOnPaper();
    void thirtyRolledUpRollsEqualThePlan();
    void typedNumbersAreRead_data();
    void typedNumbersAreRead();
    void rubbishIsNoNumber_data();
    void rubbishIsNoNumber();
    void whatIsShownIsReadBack();
    void datesAndTimesAreWrittenTheBrazilianWay();
    void typedDatesAreRead_data();
    void typedDatesAreRead();
    void rubbishIsNoDate_data();
    void rubbishIsNoDate();
    void shortYearsLieWithinFiftyYears();
    void theLocaleOfTheMachineChangesNothing_data();
    void theLocaleOfTheMachineChangesNothing();
};

void TestFormat::numbersFollowTheMask_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("mask");
    QTest::addColumn<QString>("text");
    QTest::newRow("grouped") << 1234.5 << u",0.00"_s << u"1.234,50"_s;
    QTest::newRow("not grouped") << 1234.5 << u"0.00"_s << u"1234,50"_s;
    QTest::newRow("millions") << 1234567.125 << u",0.000"_s << u"1.234.567,125"_s;
    QTest::newRow("hundreds") << 999.0 << u",0.00"_s << u"999,00"_s;
    QTest::newRow("negative hundreds") << -999.0 << u",0.00"_s << u"-999,00"_s;
    QTest::newRow("negative") << -1234.5 << u",0.00"_s << u"-1.234,50"_s;
    QTest::newRow("zero") << 0.0 << u"0.00"_s << u"0,00"_s;
    QTest::newRow("four decimals") << 0.12345 << u"0.0000"_s << u"0,1235"_s;
    QTest::newRow("five decimals") << 12.5 << u"0.00000"_s << u"12,50000"_s;
    QTest::newRow("six decimals") << 1.0 / 3.0 << u"0.000000"_s << u"0,333333"_s;
    QTest::newRow("whole") << 1234.5 << u",0"_s << u"1.235"_s;
    QTest::newRow("integer digits") << 7.0 << u"000"_s << u"007"_s;
    QTest::newRow("optional decimals, none") << 12.0 << u"0.###"_s << u"12"_s;
    QTest::newRow("optional decimals, one") << 12.5 << u"0.###"_s << u"12,5"_s;
    QTest::newRow("optional after fixed") << 12.0 << u"0.00##"_s << u"12,00"_s;
    QTest::newRow("rounding carries") << 999.995 << u",0.00"_s << u"1.000,00"_s;
    QTest::newRow("no minus zero") << -0.004 << u"0.00"_s << u"0,00"_s;
    QTest::newRow("small") << 1e-7 << u"0.000000"_s << u"0,000000"_s;
    QTest::newRow("large") << 1e15 << u",0.00"_s << u"1.000.000.000.000.000,00"_s;
}

void TestFormat::numbersFollowTheMask()
{
    QFETCH(double, value);
    QFETCH(QString, mask);
    QTEST(Format::number(value, mask), "text");
}

void TestFormat::whatIsNoNumberIsShownEmpty()
{
    QCOMPARE(Format::number(std::numeric_limits<double>::quiet_NaN(), u"0.00"_s), QString());
    QCOMPARE(Format::number(-std::numeric_limits<double>::infinity(), u"0.00"_s), QString());
    QVERIFY(std::isinf(Format::rounded(std::numeric_limits<double>::infinity(), 2)));
}

void TestFormat::halvesAreRoundedAsOnPaper_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<double>("result");
    QTest::newRow("binary below the half") << 2.675 << 2 << 2.68;
    QTest::newRow("negative half") << -2.675 << 2 << -2.68;
    QTest::newRow("one cent") << 1.005 << 2 << 1.01;
    QTest::newRow("just below") << 2.6749 << 2 << 2.67;
    QTest::newRow("exact half") << 0.5 << 0 << 1.0;
    QTest::newRow("exact half, even neighbour") << 2.5 << 0 << 3.0;
    QTest::newRow("grams") << 19.9995 << 3 << 20.0;
    QTest::newRow("nothing to do") << 3.25 << 3 << 3.25;
    QTest::newRow("sum with dust") << 0.1 + 0.2 << 3 << 0.3;
}

void TestFormat::halvesAreRoundedAsOnPaper()
{
    QFETCH(double, value);
    QFETCH(int, decimals);
    QFETCH(double, result);
    QVERIFY(Format::rounded(value, decimals) == result);
}

void TestFormat::thirtyRolledUpRollsEqualThePlan()
{
    double sum = 0;
    for (int roll = 0; roll < 30; ++roll)
        sum += 3.333;
    QVERIFY(sum != 99.99);
    QVERIFY(Format::rounded(sum, 3) == 99.99);
    QVERIFY(!std::signbit(Format::rounded(99.99 - sum, 3)));
}

void TestFormat::typedNumbersAreRead_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<double>("value");
    QTest::newRow("grouped") << u"1.234,5"_s << 1234.5;
    QTest::newRow("comma") << u"1234,5"_s << 1234.5;
    QTest::newRow("point") << u"1234.5"_s << 1234.5;
    QTest::newRow("short point") << u"1.5"_s << 1.5;
    QTest::newRow("one group is thousands") << u"1.234"_s << 1234.0;
    QTest::newRow("two groups") << u"1.234.567"_s << 1234567.0;
    QTest::newRow("nothing before the point, so no group") << u"0.250"_s << 0.25;
    QTest::newRow("four digits before the point, so no group") << u"1234.567"_s << 1234.567;
    QTest::newRow("leading comma") << u",5"_s << 0.5;
    QTest::newRow("trailing comma") << u"5,"_s << 5.0;
    QTest::newRow("negative") << u"-3"_s << -3.0;
    QTest::newRow("plus") << u"+3,25"_s << 3.25;
    QTest::newRow("blanks") << u"  12,345 "_s << 12.345;
    QTest::newRow("negative group") << u"-1.234,00"_s << -1234.0;
}

void TestFormat::typedNumbersAreRead()
{
    QFETCH(QString, typed);
    QTEST(Format::parseNumber(typed).value_or(-1e9), "value");
}

void TestFormat::rubbishIsNoNumber_data()
{
    QTest::addColumn<QString>("typed");
    const QStringList rubbish{u""_s, u"   "_s, u"abc"_s, u"1a"_s, u"inf"_s, u"nan"_s, u"-"_s, u","_s, u"."_s,
        u"1,2,3"_s, u"1.2.3"_s, u"1,234.5"_s, u"1.23,4"_s, u"1 2"_s, u"1e5"_s, u"0x10"_s, u"--1"_s, u"1-"_s, u"٣"_s,
        QString(400, u'9')};
    for (const QString &typed : rubbish)
        QTest::newRow(qPrintable(typed.left(20) + u"|"_s)) << typed;
}

void TestFormat::rubbishIsNoNumber()
{
    QFETCH(QString, typed);
    QVERIFY(!Format::parseNumber(typed).has_value());
}

void TestFormat::whatIsShownIsReadBack()
{
    for (const double value : {0.0, 0.001, 1.0, -1.0, 12.345, 999.999, 1000.0, 1234.0, -1234.567, 123456789.125}) {
        for (const QString &mask : {u"0.000"_s, u",0.000"_s, u"0.###"_s})
            QCOMPARE(Format::parseNumber(Format::number(value, mask)).value_or(-1e9), value);
    }
}

void TestFormat::datesAndTimesAreWrittenTheBrazilianWay()
{
    QCOMPARE(Format::date(QDate(2026, 2, 1)), u"01/02/2026"_s);
    QCOMPARE(Format::sqlDate(QDate(2026, 12, 31)), u"12/31/2026"_s);
    QCOMPARE(Format::time(QTime(14, 5, 9)), u"14:05:09"_s);
    QCOMPARE(Format::time(QTime(0, 0)), u"00:00:00"_s);
    QCOMPARE(Format::date(QDate()), QString());
    QCOMPARE(Format::sqlDate(QDate()), QString());
    QCOMPARE(Format::time(QTime()), QString());
}

void TestFormat::typedDatesAreRead_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QDate>("date");
    const QDate lastDay(2026, 12, 31);
    for (const QString &typed : {u"31/12/2026"_s, u"31-12-2026"_s, u"31.12.2026"_s, u"31122026"_s, u"311226"_s,
             u"31/12/26"_s, u"31/12"_s, u"3112"_s, u" 31/12 "_s})
        QTest::newRow(qPrintable(typed)) << typed << lastDay;
    QTest::newRow("day alone") << u"31"_s << QDate(2026, 3, 31);
    QTest::newRow("one digit") << u"5"_s << QDate(2026, 3, 5);
    QTest::newRow("one digit each") << u"1/2/2026"_s << QDate(2026, 2, 1);
    QTest::newRow("leap day") << u"29/02/2028"_s << QDate(2028, 2, 29);
}

void TestFormat::typedDatesAreRead()
{
    QFETCH(QString, typed);
    QTEST(Format::parseDate(typed, QDate(2026, 3, 10)).value_or(QDate()), "date");
}

void TestFormat::rubbishIsNoDate_data()
{
    QTest::addColumn<QString>("typed");
    for (const QString &typed : {u""_s, u"  "_s, u"abc"_s, u"32"_s, u"0"_s, u"31/02/2026"_s, u"29/02/2026"_s,
             u"31/13"_s, u"31/"_s, u"31/12/202"_s, u"31/12/02026"_s, u"31/12/0202"_s, u"123"_s, u"12345"_s,
             u"1234567"_s, u"2026-12-31"_s, u"1/2/3/4"_s, u"31//12"_s, u"-31"_s})
        QTest::newRow(qPrintable(typed + u"|"_s)) << typed;
}

void TestFormat::rubbishIsNoDate()
{
    QFETCH(QString, typed);
    QVERIFY(!Format::parseDate(typed, QDate(2026, 3, 10)).has_value());
}

void TestFormat::shortYearsLieWithinFiftyYears()
{
    const auto yearOf = [](const QString &typed, int now) {
        return Format::parseDate(typed, QDate(now, 1, 1)).value().year();
    };
    QCOMPARE(yearOf(u"01/01/26"_s, 2026), 2026);
    QCOMPARE(yearOf(u"01/01/75"_s, 2026), 2075);
    QCOMPARE(yearOf(u"01/01/76"_s, 2026), 1976);
    QCOMPARE(yearOf(u"01/01/99"_s, 2026), 1999);
    QCOMPARE(yearOf(u"01/01/03"_s, 2099), 2103);
    QVERIFY(!Format::parseDate(u"31"_s, QDate(2026, 2, 10)).has_value());
}

void TestFormat::theLocaleOfTheMachineChangesNothing_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::newRow("Brazil") << QLocale(QLocale::Portuguese, QLocale::Brazil);
    QTest::newRow("Germany") << QLocale(QLocale::German, QLocale::Germany);
    QTest::newRow("United States") << QLocale(QLocale::English, QLocale::UnitedStates);
    QTest::newRow("Egypt, own digits") << QLocale(QLocale::Arabic, QLocale::Egypt);
}

void TestFormat::theLocaleOfTheMachineChangesNothing()
{
    QFETCH(QLocale, locale);
    const QLocale before;
    QLocale::setDefault(locale);
    const auto restore = qScopeGuard([&before] { QLocale::setDefault(before); });
    QCOMPARE(Format::number(1234.5, u",0.00"_s), u"1.234,50"_s);
    QCOMPARE(Format::rounded(2.675, 2), 2.68);
    QCOMPARE(Format::parseNumber(u"1.234,5"_s), std::optional(1234.5));
    QCOMPARE(Format::parseNumber(u"1234.5"_s), std::optional(1234.5));
    QCOMPARE(Format::date(QDate(2026, 12, 31)), u"31/12/2026"_s);
    QCOMPARE(Format::parseDate(u"31/12"_s, QDate(2026, 1, 1)), std::optional(QDate(2026, 12, 31)));
    QCOMPARE(Format::sqlDate(QDate(2026, 12, 31)), u"12/31/2026"_s);
    QCOMPARE(Format::time(QTime(14, 5, 9)), u"14:05:09"_s);
}

QTEST_APPLESS_MAIN(TestFormat)
#include "tst_format.moc"
