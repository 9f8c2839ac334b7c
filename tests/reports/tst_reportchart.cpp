// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/reportchart.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QColor firstColour(0x00, 0x79, 0x6b);
const QColor secondColour(0xf9, 0xa8, 0x25);

int pixelsOf(const QImage &image, const QColor &colour, const QRect &part = {})
{
    const QRect looked = part.isNull() ? image.rect() : part;
    int count = 0;
    for (int y = looked.top(); y <= looked.bottom(); ++y) {
        for (int x = looked.left(); x <= looked.right(); ++x)
            count += image.pixelColor(x, y) == colour ? 1 : 0;
    }
    return count;
}

QStringList machines(int count)
{
    QStringList names;
    for (int machine = 1; machine <= count; ++machine)
        names.append(QString::number(machine));
    return names;
}

} // namespace

/// The picture beside a report's grid.
class TestReportChart : public QObject
{
    Q_OBJECT

private slots:
    void withoutFiguresItIsEmpty();
    void columnsShowTheirSeries();
    void seriesWithoutAnyFigureAreLeftOut();
    void whatIsTooManyIsOneColumn();
    void categoriesMayBearTheSameName();
    void aCategoryWithoutANameKeepsItsPlace();
    void columnsAreAsHighAsTheirFigures();
    void aNegativeFigureStandsBelow();
    void daysBetweenCountAsNothing();
    void aSingleDayIsShown();
    void manyDaysAreShown();
    void theLastFiguresAreShown();
    void paperHoldsTheChartsThatShowSomething();
};

void TestReportChart::withoutFiguresItIsEmpty()
{
    ReportChart chart;
    QVERIFY(chart.isEmpty());
    chart.showColumns(ReportChart::Columns::Stacked, {}, {});
    QVERIFY(chart.isEmpty());
    chart.showColumns(ReportChart::Columns::Stacked, {u"001"_s}, {{u"1º turno"_s, {0}}, {u"2º turno"_s, {0.0004}}});
    QVERIFY(chart.isEmpty());
    chart.showDays({});
    QVERIFY(chart.isEmpty());
    QCOMPARE(pixelsOf(chart.image({520, 260}), firstColour), 0);
}

void TestReportChart::columnsShowTheirSeries()
{
    ReportChart chart;
    chart.setTitulo(u"Produção"_s);
    chart.showColumns(
        ReportChart::Columns::Stacked, {u"001"_s, u"002"_s}, {{u"1º turno"_s, {20, 10}}, {u"2º turno"_s, {5}}});
    QCOMPARE(chart.categories(), (QStringList{u"001"_s, u"002"_s}));
    QCOMPARE(chart.series().size(), 2);
    QCOMPARE(chart.series()[1].values, (QList<double>{5, 0}));
    const QImage image = chart.image({520, 260});
    QVERIFY(pixelsOf(image, firstColour) > 500);
    QVERIFY(pixelsOf(image, secondColour) > 100);
}

void TestReportChart::seriesWithoutAnyFigureAreLeftOut()
{
    ReportChart chart;
    chart.showColumns(
        ReportChart::Columns::SideBySide, {u"A"_s}, {{u"Recebido"_s, {0}}, {u"Livre"_s, {3}}, {u"Devolvido"_s, {}}});
    QCOMPARE(chart.series().size(), 1);
    QCOMPARE(chart.series()[0].name, u"Livre"_s);
}

void TestReportChart::whatIsTooManyIsOneColumn()
{
    ReportChart chart;
    chart.showColumns(ReportChart::Columns::Stacked, machines(5), {{u"kg"_s, {10, 20, 0.1, 0.2, 0.3}}}, 2);
    QCOMPARE(chart.categories(), (QStringList{u"1"_s, u"2"_s, u"Outros"_s}));
    QVERIFY(chart.series()[0].values == (QList<double>{10, 20, 0.6}));
    chart.showColumns(ReportChart::Columns::Stacked, machines(2), {{u"kg"_s, {10, 20}}}, 2);
    QCOMPARE(chart.categories(), (QStringList{u"1"_s, u"2"_s}));
}

void TestReportChart::categoriesMayBearTheSameName()
{
    ReportChart chart;
    chart.showColumns(ReportChart::Columns::SideBySide, {u"Malhas"_s, u"Malhas"_s}, {{u"kg"_s, {10, 10}}});
    const QImage image = chart.image({520, 260});
    const int left = pixelsOf(image, firstColour, QRect(0, 0, 290, 260));
    const int right = pixelsOf(image, firstColour, QRect(290, 0, 230, 260));
    QVERIFY2(left > 500 && right > 500, qPrintable(u"%1 %2"_s.arg(left).arg(right)));
}

void TestReportChart::aCategoryWithoutANameKeepsItsPlace()
{
    ReportChart chart;
    chart.showColumns(ReportChart::Columns::SideBySide, {QString(), u"Malhas"_s}, {{u"kg"_s, {0, 10}}});
    const QImage image = chart.image({520, 260});
    QCOMPARE(pixelsOf(image, firstColour, QRect(0, 0, 290, 260)), 0);
    QVERIFY(pixelsOf(image, firstColour, QRect(290, 0, 230, 260)) > 500);
}

void TestReportChart::columnsAreAsHighAsTheirFigures()
{
    ReportChart chart;
    chart.showColumns(ReportChart::Columns::Stacked, {u"001"_s}, {{u"1º turno"_s, {30}}, {u"2º turno"_s, {10}}});
    const QImage image = chart.image({1040, 520});
    const double first = pixelsOf(image, firstColour, QRect(0, 0, 1040, 400));
    const double second = pixelsOf(image, secondColour, QRect(0, 0, 1040, 400));
    QVERIFY2(qAbs(first / second - 3) < 0.2, qPrintable(QString::number(first / second)));
}

void TestReportChart::aNegativeFigureStandsBelow()
{
    ReportChart chart;
    chart.showColumns(ReportChart::Columns::SideBySide, {u"A"_s}, {{u"Livre"_s, {-10}}, {u"Recebido"_s, {10}}});
    const QImage image = chart.image({520, 260});
    const auto middle = [&](const QColor &colour) {
        double sum = 0;
        int count = 0;
        for (int y = 30; y < 200; ++y) {
            const int pixels = pixelsOf(image, colour, QRect(0, y, 520, 1));
            sum += double(y) * pixels;
            count += pixels;
        }
        return count == 0 ? -1 : sum / count;
    };
    QVERIFY(middle(firstColour) > middle(secondColour));
    QVERIFY(middle(secondColour) > 0);
}

void TestReportChart::daysBetweenCountAsNothing()
{
    ReportChart chart;
    chart.showDays({{QDate(2026, 2, 27), 10}, {QDate(2026, 3, 2), 20.5}});
    QCOMPARE(chart.categories(), (QStringList{u"27/02"_s, u"28/02"_s, u"01/03"_s, u"02/03"_s}));
    QCOMPARE(chart.series()[0].values, (QList<double>{10, 0, 0, 20.5}));
    QVERIFY(pixelsOf(chart.image({1040, 520}), firstColour) > 20);
}

void TestReportChart::aSingleDayIsShown()
{
    ReportChart chart;
    chart.showDays({{QDate(2026, 3, 2), 20}});
    QCOMPARE(chart.categories(), QStringList{u"02/03"_s});
    QVERIFY(pixelsOf(chart.image({1040, 520}), firstColour) > 5);
}

void TestReportChart::manyDaysAreShown()
{
    ReportChart chart;
    QMap<QDate, double> days;
    for (int day = 0; day < 800; ++day)
        days.insert(QDate(2024, 1, 1).addDays(day), 100 + day % 7);
    chart.showDays(days);
    QCOMPARE(chart.categories().size(), 800);
    QVERIFY(pixelsOf(chart.image({1040, 520}), firstColour) > 100);
}

void TestReportChart::theLastFiguresAreShown()
{
    ReportChart chart;
    chart.resize(400, 250);
    chart.show();
    QVERIFY(QTest::qWaitForWindowExposed(&chart));
    chart.showColumns(ReportChart::Columns::Stacked, {u"001"_s}, {{u"1º turno"_s, {20}}});
    QTRY_VERIFY(pixelsOf(chart.grab().toImage(), firstColour) > 500);
    chart.clear();
    QVERIFY(chart.isEmpty());
    QTRY_COMPARE(pixelsOf(chart.grab().toImage(), firstColour), 0);
}

void TestReportChart::paperHoldsTheChartsThatShowSomething()
{
    ReportChart machine;
    ReportChart day;
    QVERIFY(ReportChart::forPaper({&machine, &day}).isNull());
    machine.showColumns(ReportChart::Columns::Stacked, {u"001"_s}, {{u"1º turno"_s, {20}}});
    const QImage one = ReportChart::forPaper({&machine, &day});
    day.showDays({{QDate(2026, 3, 2), 20}, {QDate(2026, 3, 3), 30}});
    const QImage both = ReportChart::forPaper({&machine, &day});
    QCOMPARE(both.size(), QSize(2 * one.width(), one.height()));
    QVERIFY(pixelsOf(both, firstColour, both.rect().adjusted(one.width(), 0, 0, 0)) > 20);
}

QTEST_MAIN(TestReportChart)
#include "tst_reportchart.moc"
