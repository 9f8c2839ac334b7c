// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/productionpivot.h"

#include <QTest>

using namespace ProductionPivot;
using namespace Qt::StringLiterals;

namespace {

const QDate second(2026, 3, 2);
const QDate third(2026, 3, 3);

Produced produced(const QString &shift, double kg, QDate date = second, std::optional<double> value = {})
{
    return {.machine = u"001"_s,
        .machineName = u"Circular"_s,
        .material = u"M1"_s,
        .materialName = u"Ribana"_s,
        .client = u"00001"_s,
        .clientName = u"Serra Azul"_s,
        .shift = shift,
        .date = date,
        .kg = kg,
        .value = value};
}

/// "20 - 5 - | 1": the shifts, and what came in others.
QString text(const ByShift &sums)
{
    QStringList texts;
    for (const std::optional<double> &sum : sums)
        texts.append(sum ? QString::number(*sum) : u"-"_s);
    texts.insert(shiftCount, u"|"_s);
    return texts.join(u' ');
}

} // namespace

/// The shifts of a group side by side.
class TestProductionPivot : public QObject
{
    Q_OBJECT

private slots:
    void nothingProducedGivesNoRow();
    void eachShiftHasItsPlace();
    void whatIsAlikeIsOneRow();
    void anyCodeOrNameMakesAnotherRow();
    void datesAreApartOnlyByDate();
    void rowsKeepTheOrderInWhichTheyCome();
    void aShiftThatWasIdleIsEmptyAndOneThatSumsToNothingIsZero();
    void sumsAreToTheGramAndToTheCent();
    void valuesAreRoundedOnce();
    void whatHasNoPriceHasNoValue();
    void machinesAndDaysAddUp();
};

void TestProductionPivot::nothingProducedGivesNoRow()
{
    QVERIFY(rows({}, true).isEmpty());
    QVERIFY(byMachine({}).isEmpty());
    QVERIFY(byDay({}).isEmpty());
    QVERIFY(!total({}));
}

void TestProductionPivot::eachShiftHasItsPlace()
{
    const QList<Row> result =
        rows({produced(u"1"_s, 1), produced(u"2"_s, 2), produced(u"3"_s, 3), produced(u"4"_s, 4), produced(u"5"_s, 5),
                 produced({}, 6), produced(u"0"_s, 7), produced(u"A"_s, 8), produced(u" 2 "_s, 10)},
            false);
    QCOMPARE(result.size(), 1);
    QCOMPARE(text(result[0].kg), u"1 12 3 4 | 26"_s);
    QCOMPARE(total(result[0].kg), 46.0);
}

void TestProductionPivot::whatIsAlikeIsOneRow()
{
    const QList<Row> result = rows({produced(u"1"_s, 20.5), produced(u"1"_s, 19.25)}, true);
    QCOMPARE(result.size(), 1);
    QCOMPARE(result[0].machine + result[0].machineName, u"001Circular"_s);
    QCOMPARE(result[0].material + result[0].materialName, u"M1Ribana"_s);
    QCOMPARE(result[0].client + result[0].clientName, u"00001Serra Azul"_s);
    QCOMPARE(result[0].date, second);
    QCOMPARE(text(result[0].kg), u"39.75 - - - | -"_s);
}

void TestProductionPivot::anyCodeOrNameMakesAnotherRow()
{
    QString Produced::*const parts[]{&Produced::machine, &Produced::machineName, &Produced::material,
        &Produced::materialName, &Produced::client, &Produced::clientName};
    QList<Produced> all{produced(u"1"_s, 1)};
    for (QString Produced::*part : parts) {
        Produced other = produced(u"1"_s, 1);
        other.*part = u"X"_s;
        all.append(other);
    }
    QCOMPARE(rows(all, false).size(), 7);
}

void TestProductionPivot::datesAreApartOnlyByDate()
{
    const QList<Produced> all{produced(u"1"_s, 1, second), produced(u"1"_s, 2, third), produced(u"2"_s, 4, second)};
    const QList<Row> days = rows(all, true);
    QCOMPARE(days.size(), 2);
    QCOMPARE(text(days[0].kg), u"1 4 - - | -"_s);
    QCOMPARE(text(days[1].kg), u"2 - - - | -"_s);
    const QList<Row> together = rows(all, false);
    QCOMPARE(together.size(), 1);
    QVERIFY(!together[0].date.isValid());
    QCOMPARE(text(together[0].kg), u"3 4 - - | -"_s);
}

void TestProductionPivot::rowsKeepTheOrderInWhichTheyCome()
{
    Produced later = produced(u"1"_s, 1);
    later.machine = u"000"_s;
    const QList<Row> result = rows({produced(u"1"_s, 1), later, produced(u"2"_s, 1)}, false);
    QCOMPARE(result.size(), 2);
    QCOMPARE(result[0].machine, u"001"_s);
    QCOMPARE(result[1].machine, u"000"_s);
}

void TestProductionPivot::aShiftThatWasIdleIsEmptyAndOneThatSumsToNothingIsZero()
{
    const QList<Row> result = rows({produced(u"1"_s, 0.3), produced(u"1"_s, -0.1), produced(u"1"_s, -0.2)}, false);
    QVERIFY(result[0].kg[0] == 0.0); // 0.3 - 0.1 - 0.2 is a little less in binary
    QVERIFY(!result[0].kg[1]);
}

void TestProductionPivot::sumsAreToTheGramAndToTheCent()
{
    QList<Produced> all;
    for (int roll = 0; roll < 1000; ++roll)
        all.append(produced(u"1"_s, 0.001, second, 0.01));
    const QList<Row> result = rows(all, false);
    QVERIFY(result[0].kg[0] == 1.0);
    QVERIFY(result[0].value[0] == 10.0);
    QVERIFY(total(result[0].kg) == 1.0);
}

void TestProductionPivot::valuesAreRoundedOnce()
{
    // Each day's value by itself would be 10,00.
    const QList<Row> together = rows({produced(u"1"_s, 1, second, 10.004), produced(u"1"_s, 1, third, 10.004)}, false);
    QVERIFY(together[0].value[0] == 20.01);
    // What is printed adds up: 0,01 and 0,01, although both halves are one cent together.
    const QList<Row> shifts = rows({produced(u"1"_s, 1, second, 0.005), produced(u"2"_s, 1, second, 0.005)}, false);
    QVERIFY(total(shifts[0].value) == 0.02);
}

void TestProductionPivot::whatHasNoPriceHasNoValue()
{
    const QList<Row> result = rows({produced(u"1"_s, 1), produced(u"2"_s, 1, second, 0)}, false);
    QVERIFY(!result[0].value[0]);
    QVERIFY(result[0].value[1] == 0.0);
    QVERIFY(!total(rows({produced(u"1"_s, 1)}, false)[0].value));
}

void TestProductionPivot::machinesAndDaysAddUp()
{
    Produced other = produced(u"3"_s, 8, third);
    other.machine = u"000"_s;
    const QList<Produced> all{produced(u"1"_s, 0.1, second), produced(u"1"_s, 0.2, third), other};
    const QMap<QString, ByShift> machines = byMachine(all);
    QCOMPARE(machines.keys(), (QStringList{u"000"_s, u"001"_s}));
    QCOMPARE(text(machines[u"000"_s]), u"- - 8 - | -"_s);
    QVERIFY(machines[u"001"_s][0] == 0.3);
    const QMap<QDate, double> days = byDay(all);
    QCOMPARE(days.keys(), (QList<QDate>{second, third}));
    QVERIFY(days[third] == 8.2);
}

QTEST_APPLESS_MAIN(TestProductionPivot)
#include "tst_productionpivot.moc"
