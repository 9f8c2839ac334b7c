// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/reportfilters.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QDate first(2026, 3, 1);
const QDate last(2026, 3, 31);

} // namespace

/// What a report was asked for, in its statement and on its paper.
class TestReportFilters : public QObject
{
    Q_OBJECT

private slots:
    void aPeriodBoundsBothSides_data();
    void aPeriodBoundsBothSides();
    void aPeriodReadsAsPeopleSayIt_data();
    void aPeriodReadsAsPeopleSayIt();
    void aFilledFilterIsACondition_data();
    void aFilledFilterIsACondition();
    void onlyWhatWasAskedForIsMentioned();
};

void TestReportFilters::aPeriodBoundsBothSides_data()
{
    QTest::addColumn<QDate>("from");
    QTest::addColumn<QDate>("to");
    QTest::addColumn<QString>("condition");
    QTest::newRow("both") << first << last << u"D >= '03/01/2026' AND D <= '03/31/2026'"_s;
    QTest::newRow("from") << first << QDate() << u"D >= '03/01/2026' AND D <= '12/31/9999'"_s;
    QTest::newRow("to") << QDate() << last << u"D >= '01/01/1900' AND D <= '03/31/2026'"_s;
    QTest::newRow("neither") << QDate() << QDate() << u"D >= '01/01/1900' AND D <= '12/31/9999'"_s;
}

void TestReportFilters::aPeriodBoundsBothSides()
{
    QFETCH(QDate, from);
    QFETCH(QDate, to);
    QTEST(ReportFilters::within(u"D"_s, from, to), "condition");
}

void TestReportFilters::aPeriodReadsAsPeopleSayIt_data()
{
    QTest::addColumn<QDate>("from");
    QTest::addColumn<QDate>("to");
    QTest::addColumn<QString>("text");
    QTest::newRow("both") << first << last << u"01/03/2026 a 31/03/2026"_s;
    QTest::newRow("one day") << first << first << u"01/03/2026 a 01/03/2026"_s;
    QTest::newRow("from") << first << QDate() << u"a partir de 01/03/2026"_s;
    QTest::newRow("to") << QDate() << last << u"até 31/03/2026"_s;
    QTest::newRow("neither") << QDate() << QDate() << QString();
}

void TestReportFilters::aPeriodReadsAsPeopleSayIt()
{
    QFETCH(QDate, from);
    QFETCH(QDate, to);
    QTEST(ReportFilters::periodText(from, to), "text");
}

void TestReportFilters::aFilledFilterIsACondition_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("condition");
    QTest::newRow("code") << u"00001"_s << u" AND C = '00001'"_s;
    QTest::newRow("blanks around it") << u" 00001 "_s << u" AND C = '00001'"_s;
    QTest::newRow("a quote") << u"D'Ávila"_s << u" AND C = 'D''Ávila'"_s;
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("blanks") << u"   "_s << QString();
}

void TestReportFilters::aFilledFilterIsACondition()
{
    QFETCH(QString, typed);
    QTEST(ReportFilters::equals(u"C"_s, typed), "condition");
}

void TestReportFilters::onlyWhatWasAskedForIsMentioned()
{
    ReportFilters::Text text;
    QCOMPARE(text.text(), QString());
    text.add(u"Período"_s, ReportFilters::periodText(first, last)).add(u"Máquina"_s, u" "_s);
    QCOMPARE(text.text(), u"Período: 01/03/2026 a 31/03/2026"_s);
    text.add(u"Cliente"_s, u"00001 Confecções Serra Azul Ltda"_s);
    QCOMPARE(text.text(), u"Período: 01/03/2026 a 31/03/2026 · Cliente: 00001 Confecções Serra Azul Ltda"_s);
}

QTEST_APPLESS_MAIN(TestReportFilters)
#include "tst_reportfilters.moc"
