// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/host_services/workingdays.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestWorkingDays : public QObject
{
    Q_OBJECT

private slots:
    void easterFallsOnTheKnownSundays_data();
    void easterFallsOnTheKnownSundays();
    void easterIsASundayOfMarchOrAprilInEveryYear();
    void holidaysHaveTheirNames_data();
    void holidaysHaveTheirNames();
    void theBlackAwarenessDayIsAHolidayFrom2024();
    void weekendsAndHolidaysAreNoWorkingDays();
    void addingSkipsWeekendsAndHolidays_data();
    void addingSkipsWeekendsAndHolidays();
    void countingIncludesBothEnds();
    void countingAndAddingAgree();
    void invalidDatesAreHarmless();
};

void TestWorkingDays::easterFallsOnTheKnownSundays_data()
{
    QTest::addColumn<QDate>("easter");
    const QList<QDate> known{QDate(1818, 3, 22), QDate(1943, 4, 25), QDate(1954, 4, 18), QDate(1981, 4, 19),
        QDate(2000, 4, 23), QDate(2008, 3, 23), QDate(2011, 4, 24), QDate(2019, 4, 21), QDate(2024, 3, 31),
        QDate(2025, 4, 20), QDate(2026, 4, 5), QDate(2027, 3, 28), QDate(2038, 4, 25), QDate(2049, 4, 18)};
    for (const QDate date : known)
        QTest::addRow("%d", date.year()) << date;
}

void TestWorkingDays::easterFallsOnTheKnownSundays()
{
    QFETCH(QDate, easter);
    QCOMPARE(WorkingDays::easter(easter.year()), easter);
}

void TestWorkingDays::easterIsASundayOfMarchOrAprilInEveryYear()
{
    for (int year = 1900; year <= 2199; ++year) {
        const QDate date = WorkingDays::easter(year);
        QCOMPARE(date.dayOfWeek(), int(Qt::Sunday));
        QVERIFY(date >= QDate(year, 3, 22) && date <= QDate(year, 4, 25));
    }
}

void TestWorkingDays::holidaysHaveTheirNames_data()
{
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QString>("name");
    QTest::newRow("new year") << QDate(2026, 1, 1) << u"Confraternização Universal"_s;
    QTest::newRow("Carnival Monday 2026") << QDate(2026, 2, 16) << u"Carnaval"_s;
    QTest::newRow("Carnival Tuesday 2026") << QDate(2026, 2, 17) << u"Carnaval"_s;
    QTest::newRow("Ash Wednesday 2026") << QDate(2026, 2, 18) << QString();
    QTest::newRow("Good Friday 2026") << QDate(2026, 4, 3) << u"Sexta-feira Santa"_s;
    QTest::newRow("Corpus Christi 2026") << QDate(2026, 6, 4) << u"Corpus Christi"_s;
    QTest::newRow("Carnival Tuesday 2024") << QDate(2024, 2, 13) << u"Carnaval"_s;
    QTest::newRow("Good Friday 2024") << QDate(2024, 3, 29) << u"Sexta-feira Santa"_s;
    QTest::newRow("Corpus Christi 2024") << QDate(2024, 5, 30) << u"Corpus Christi"_s;
    QTest::newRow("Carnival Tuesday 2025") << QDate(2025, 3, 4) << u"Carnaval"_s;
    QTest::newRow("Corpus Christi 2025") << QDate(2025, 6, 19) << u"Corpus Christi"_s;
    QTest::newRow("Tiradentes") << QDate(2025, 4, 21) << u"Tiradentes"_s;
    QTest::newRow("labour") << QDate(2025, 5, 1) << u"Dia do Trabalho"_s;
    QTest::newRow("independence") << QDate(2026, 9, 7) << u"Independência do Brasil"_s;
    QTest::newRow("Aparecida") << QDate(2026, 10, 12) << u"Nossa Senhora Aparecida"_s;
    QTest::newRow("all souls") << QDate(2026, 11, 2) << u"Finados"_s;
    QTest::newRow("republic") << QDate(2024, 11, 15) << u"Proclamação da República"_s;
    QTest::newRow("Christmas") << QDate(2026, 12, 25) << u"Natal"_s;
    QTest::newRow("no holiday") << QDate(2026, 12, 24) << QString();
}

void TestWorkingDays::holidaysHaveTheirNames()
{
    QFETCH(QDate, date);
    QFETCH(QString, name);
    QCOMPARE(WorkingDays::holidayName(date), name);
    QCOMPARE(WorkingDays::isHoliday(date), !name.isEmpty());
}

void TestWorkingDays::theBlackAwarenessDayIsAHolidayFrom2024()
{
    QVERIFY(!WorkingDays::isHoliday(QDate(2023, 11, 20)));
    QVERIFY(WorkingDays::isWorkingDay(QDate(2023, 11, 20)));
    QVERIFY(WorkingDays::isHoliday(QDate(2024, 11, 20)));
    QVERIFY(!WorkingDays::isWorkingDay(QDate(2024, 11, 20)));
}

void TestWorkingDays::weekendsAndHolidaysAreNoWorkingDays()
{
    QVERIFY(WorkingDays::isWorkingDay(QDate(2026, 4, 2)));
    QVERIFY(!WorkingDays::isWorkingDay(QDate(2026, 4, 3)));
    QVERIFY(!WorkingDays::isWorkingDay(QDate(2026, 4, 4)));
    QVERIFY(!WorkingDays::isWorkingDay(QDate(2026, 4, 5)));
    QVERIFY(WorkingDays::isWorkingDay(QDate(2026, 4, 6)));
}

void TestWorkingDays::addingSkipsWeekendsAndHolidays_data()
{
    QTest::addColumn<QDate>("from");
    QTest::addColumn<int>("n");
    QTest::addColumn<QDate>("result");
    QTest::newRow("zero on a working day") << QDate(2026, 4, 2) << 0 << QDate(2026, 4, 2);
    QTest::newRow("zero on Good Friday") << QDate(2026, 4, 3) << 0 << QDate(2026, 4, 6);
    QTest::newRow("one over Easter") << QDate(2026, 4, 2) << 1 << QDate(2026, 4, 6);
    QTest::newRow("one from a Saturday") << QDate(2026, 4, 4) << 1 << QDate(2026, 4, 6);
    QTest::newRow("minus one over Easter") << QDate(2026, 4, 6) << -1 << QDate(2026, 4, 2);
    QTest::newRow("minus one from a Sunday") << QDate(2026, 4, 5) << -1 << QDate(2026, 4, 2);
    QTest::newRow("five in a plain week") << QDate(2026, 3, 2) << 5 << QDate(2026, 3, 9);
    QTest::newRow("five over Carnival") << QDate(2026, 2, 13) << 5 << QDate(2026, 2, 24);
    QTest::newRow("over the turn of the year") << QDate(2025, 12, 31) << 1 << QDate(2026, 1, 2);
}

void TestWorkingDays::addingSkipsWeekendsAndHolidays()
{
    QFETCH(QDate, from);
    QFETCH(int, n);
    QTEST(WorkingDays::addWorkingDays(from, n), "result");
}

void TestWorkingDays::countingIncludesBothEnds()
{
    using WorkingDays::countWorkingDays;
    QCOMPARE(countWorkingDays(QDate(2026, 3, 2), QDate(2026, 3, 2)), 1);
    QCOMPARE(countWorkingDays(QDate(2026, 3, 2), QDate(2026, 3, 6)), 5);
    QCOMPARE(countWorkingDays(QDate(2026, 4, 3), QDate(2026, 4, 5)), 0);
    QCOMPARE(countWorkingDays(QDate(2026, 2, 1), QDate(2026, 2, 28)), 18);
    QCOMPARE(countWorkingDays(QDate(2026, 3, 6), QDate(2026, 3, 2)), 0);
    // 2024: 262 weekdays, and nine of the thirteen holidays fell on one.
    // weekends).
    QCOMPARE(countWorkingDays(QDate(2024, 1, 1), QDate(2024, 12, 31)), 253);
}

void TestWorkingDays::countingAndAddingAgree()
{
    const QDate start(2025, 12, 1);
    for (int n = 1; n <= 300; ++n) {
        const QDate end = WorkingDays::addWorkingDays(start, n);
        QCOMPARE(WorkingDays::countWorkingDays(start.addDays(1), end), n);
        QVERIFY(WorkingDays::isWorkingDay(end));
    }
}

void TestWorkingDays::invalidDatesAreHarmless()
{
    QVERIFY(!WorkingDays::isWorkingDay(QDate()));
    QVERIFY(!WorkingDays::isHoliday(QDate()));
    QVERIFY(!WorkingDays::addWorkingDays(QDate(), 3).isValid());
    QCOMPARE(WorkingDays::countWorkingDays(QDate(), QDate(2026, 1, 1)), 0);
}

QTEST_APPLESS_MAIN(TestWorkingDays)
#include "tst_workingdays.moc"
