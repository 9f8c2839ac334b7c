// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/host/report/testreport.h"

using namespace Qt::StringLiterals;

namespace {

/// Paper of 100 mm by 100 mm with margins of 10 mm: 80 mm for bands.
QString layout(const QString &bands, const QString &page = {})
{
    return u"<layout title=\"OFs\"><page width=\"100\" height=\"100\" margins=\"10\"/>%1%2</layout>"_s.arg(page, bands);
}

const QString pageBands =
    u"<page-header height=\"10\"><text h=\"5\">Cabeçalho</text></page-header>%1"
    "<page-footer height=\"10\"><text h=\"5\">Página {PAGE()} de {PAGES()}</text></page-footer>"_s;
const QString detail = u"<detail height=\"10\"><text h=\"5\">{OF}</text></detail>"_s;

/// Orders "1", "2", ... with the client that the name of the group gives: {3, 2} is three of A and two of B.
class Orders : public TestReport
{
public:
    explicit Orders(const QString &xml, const QVector<int> &groups)
        : TestReport(u"WOrdens"_s, xml)
    {
        TClientDataSet &set = addDataSet(u"ordens"_s,
            {{u"OF"_s, TField::Type::Text, 6}, {u"CLIENTE"_s, TField::Type::Text, 10}, {u"KG"_s, TField::Type::Float}});
        int number = 0;
        for (qsizetype group = 0; group < groups.size(); ++group) {
            for (int i = 0; i < groups[group]; ++i) {
                ++number;
                addRow(set,
                    {{u"OF"_s, QString::number(number)}, {u"CLIENTE"_s, QString(QChar(char16_t(u'A' + group)))},
                        {u"KG"_s, number * 1.5}});
            }
        }
    }
};

QString rows(const QString &content)
{
    return u"<rows data=\"ordens\">%1</rows>"_s.arg(content);
}

/// Groups by client; the attributes are those of the group and of its header.
QString groupedRows(const QString &group, const QString &header, const QString &footer = {})
{
    return rows(u"<group by=\"CLIENTE\" %1><header height=\"10\" %2><text h=\"5\">Cliente {CLIENTE}</text></header>%3"
                "</group>"_s.arg(group, header, footer)
        + detail);
}

} // namespace

class TestPaginator : public QObject
{
    Q_OBJECT

private slots:
    void bandsFillThePageFromTopToBottom();
    void headerAndFooterStandOnEachPage();
    void theTitleStandsOnTheFirstPageAlone();
    void aTitleMayStandAboveThePageHeader();
    void aReportWithoutRowsIsAPage();
    void aGroupThatFitsAWholePageIsNotTorn();
    void aGroupLargerThanAPageFlows();
    void aGroupWithinOneThatFlowsIsKeptTogether();
    void aHeaderIsNeverTheLastOnItsPage();
    void aRepeatedHeaderComesAgainUntilItsGroupEnds();
    void aRepeatedHeaderReadsItsOwnRows();
    void eachGroupBeginsAPage();
    void aPageBreakAfterTheLastBandAddsNoPage();
    void labelsStandFromLeftToRightAndThenDown();
    void labelsOfTheLastRowStayOnTheirPlaces();
    void sumsOfThePagesAddUpToTheSummary_data();
    void sumsOfThePagesAddUpToTheSummary();
    void theFirstPageIsThereBeforeTheRestIsRead();
    void aBandHigherThanAPageDoesNotHang();
};

void TestPaginator::bandsFillThePageFromTopToBottom()
{
    Orders report(layout(rows(detail)), {17});
    QCOMPARE(report.layOut(), 3);
    QCOMPARE(report.texts(0), (QStringList{u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s, u"7"_s, u"8"_s}));
    QCOMPARE(report.texts(2), QStringList{u"17"_s});
    QCOMPARE(report.item(0, u"1"_s).place.topLeft(), QPointF(10, 10));
    QCOMPARE(report.item(0, u"8"_s).place.top(), 80.0);
    QCOMPARE(report.item(1, u"9"_s).place.top(), 10.0);
}

void TestPaginator::headerAndFooterStandOnEachPage()
{
    Orders report(layout(pageBands.arg(rows(detail))), {13});
    QCOMPARE(report.layOut(), 3);
    for (int page = 0; page < 3; ++page) {
        QCOMPARE(report.texts(page).first(), u"Cabeçalho"_s);
        const QString foot = u"Página %1 de 3"_s.arg(page + 1);
        QCOMPARE(report.texts(page).last(), foot);
        QCOMPARE(report.item(page, foot).place.top(), 80.0);
    }
    QCOMPARE(report.item(0, u"1"_s).place.top(), 20.0);
    QCOMPARE(report.item(0, u"6"_s).place.top(), 70.0);
    QCOMPARE(report.item(1, u"7"_s).place.top(), 20.0);
}

void TestPaginator::theTitleStandsOnTheFirstPageAlone()
{
    const QString title = u"<title height=\"20\"><text h=\"5\">Ordens</text></title>"_s;
    Orders report(layout(pageBands.arg(title + rows(detail))), {6});
    QCOMPARE(report.layOut(), 2);
    QCOMPARE(report.texts(0).mid(0, 3), (QStringList{u"Cabeçalho"_s, u"Ordens"_s, u"1"_s}));
    QCOMPARE(report.item(0, u"1"_s).place.top(), 40.0);
    QVERIFY(!report.texts(1).contains(u"Ordens"_s));
}

void TestPaginator::aTitleMayStandAboveThePageHeader()
{
    const QString title = u"<title height=\"20\" before-page-header=\"yes\"><text h=\"5\">Ordens</text></title>"_s;
    Orders report(layout(pageBands.arg(title + rows(detail))), {6});
    QCOMPARE(report.layOut(), 2);
    QCOMPARE(report.item(0, u"Ordens"_s).place.top(), 10.0);
    QCOMPARE(report.item(0, u"Cabeçalho"_s).place.top(), 30.0);
    QCOMPARE(report.item(0, u"1"_s).place.top(), 40.0);
    QCOMPARE(report.item(1, u"Cabeçalho"_s).place.top(), 10.0);
}

void TestPaginator::aReportWithoutRowsIsAPage()
{
    Orders report(layout(pageBands.arg(rows(detail))), {});
    QCOMPARE(report.layOut(), 1);
    QCOMPARE(report.texts(0), (QStringList{u"Cabeçalho"_s, u"Página 1 de 1"_s}));
}

void TestPaginator::aGroupThatFitsAWholePageIsNotTorn()
{
    // Eight places: A takes four, B would take five.
    Orders report(layout(groupedRows(u"keep-together=\"yes\""_s, {})), {3, 4, 2});
    QCOMPARE(report.layOut(), 2);
    QCOMPARE(report.texts(0), (QStringList{u"Cliente A"_s, u"1"_s, u"2"_s, u"3"_s}));
    QCOMPARE(report.texts(1).first(), u"Cliente B"_s);
    QCOMPARE(report.texts(1).last(), u"9"_s);
}

void TestPaginator::aGroupLargerThanAPageFlows()
{
    Orders report(layout(groupedRows(u"keep-together=\"yes\""_s, {})), {3, 10});
    QCOMPARE(report.layOut(), 2);
    QCOMPARE(report.texts(0).size(), 8);
    QCOMPARE(report.texts(0).mid(4, 2), (QStringList{u"Cliente B"_s, u"4"_s}));
    QCOMPARE(report.texts(1).size(), 7);
}

void TestPaginator::aGroupWithinOneThatFlowsIsKeptTogether()
{
    // All orders are one group of the outer kind; it has two of the inner kind, of six places each.
    const QString outer = u"<group by=\"''\" keep-together=\"yes\"><header height=\"10\"><text h=\"5\">Todos</text>"
                          "</header></group>"_s;
    const QString inner = u"<group by=\"CLIENTE\" keep-together=\"yes\"><header height=\"10\"><text h=\"5\">"
                          "Cliente {CLIENTE}</text></header></group>"_s;
    Orders report(layout(rows(outer + inner + detail)), {5, 5});
    QCOMPARE(report.layOut(), 2);
    QCOMPARE(report.texts(0).mid(0, 2), (QStringList{u"Todos"_s, u"Cliente A"_s}));
    QCOMPARE(report.texts(0).last(), u"5"_s);
    QCOMPARE(report.texts(1).first(), u"Cliente B"_s);
}

void TestPaginator::aHeaderIsNeverTheLastOnItsPage()
{
    // A takes seven of eight places, the header of B would be the eighth.
    Orders kept(layout(groupedRows({}, u"keep-with-next=\"yes\""_s)), {6, 2});
    QCOMPARE(kept.layOut(), 2);
    QCOMPARE(kept.texts(0).last(), u"6"_s);
    QCOMPARE(kept.texts(1), (QStringList{u"Cliente B"_s, u"7"_s, u"8"_s}));

    Orders alone(layout(groupedRows({}, u"keep-with-next=\"no\""_s)), {6, 2});
    QCOMPARE(alone.layOut(), 2);
    QCOMPARE(alone.texts(0).last(), u"Cliente B"_s);
}

void TestPaginator::aRepeatedHeaderComesAgainUntilItsGroupEnds()
{
    Orders report(layout(groupedRows({}, u"repeat=\"yes\""_s)), {14, 3});
    QCOMPARE(report.layOut(), 3);
    for (int page = 0; page < 2; ++page) {
        QCOMPARE(report.texts(page).first(), u"Cliente A"_s);
        QCOMPARE(report.texts(page).size(), 8);
    }
    QCOMPARE(report.texts(1).last(), u"14"_s);
    QCOMPARE(report.texts(2).first(), u"Cliente B"_s);
    QVERIFY(!report.texts(2).contains(u"Cliente A"_s));
    QCOMPARE(report.item(1, u"8"_s).place.top(), 20.0);
}

void TestPaginator::aRepeatedHeaderReadsItsOwnRows()
{
    // The rows of another data set than the first, which has no such field.
    const QString second = u"<rows data=\"qryFios\"><header height=\"10\" repeat=\"yes\" if=\"EMPTY(LOTE) = 0\">"
                           "<text h=\"5\">Lotes</text></header>"
                           "<detail height=\"10\"><text h=\"5\">{LOTE}</text></detail></rows>"_s;
    Orders report(layout(rows(detail) + second), {1});
    TClientDataSet &yarns = report.addDataSet(u"qryFios"_s, {{u"LOTE"_s, TField::Type::Text, 10}});
    for (int lot = 1; lot <= 9; ++lot)
        TestReport::addRow(yarns, {{u"LOTE"_s, u"L%1"_s.arg(lot)}});
    QCOMPARE(report.layOut(), 2);
    QCOMPARE(report.texts(0).last(), u"L6"_s);
    QCOMPARE(report.texts(1), (QStringList{u"Lotes"_s, u"L7"_s, u"L8"_s, u"L9"_s}));
}

void TestPaginator::eachGroupBeginsAPage()
{
    Orders report(layout(groupedRows(u"new-page=\"yes\""_s, {})), {2, 1, 9});
    QCOMPARE(report.layOut(), 4);
    QCOMPARE(report.texts(0), (QStringList{u"Cliente A"_s, u"1"_s, u"2"_s}));
    QCOMPARE(report.texts(1), (QStringList{u"Cliente B"_s, u"3"_s}));
    QCOMPARE(report.texts(3), (QStringList{u"11"_s, u"12"_s}));
}

void TestPaginator::aPageBreakAfterTheLastBandAddsNoPage()
{
    const QString sheet = u"<detail height=\"10\" new-page-after=\"yes\"><text h=\"5\">{OF}</text></detail>"_s;
    Orders after(layout(rows(sheet)), {3});
    QCOMPARE(after.layOut(), 3);
    Orders before(layout(rows(QString(sheet).replace(u"after"_s, u"before"_s))), {3});
    QCOMPARE(before.layOut(), 3);
    QCOMPARE(before.texts(0), QStringList{u"1"_s});
}

void TestPaginator::labelsStandFromLeftToRightAndThenDown()
{
    // Two beside one another, five beneath one another.
    const QString labels = u"<labels columns=\"2\" width=\"38\" height=\"14.4\" column-gap=\"4\" row-gap=\"2\"/>"_s;
    Orders report(layout(rows(u"<detail height=\"14.4\"><text h=\"5\">{OF}</text></detail>"_s), labels), {23});
    QCOMPARE(report.layOut(), 3);
    QCOMPARE(report.texts(0).size(), 10);
    QCOMPARE(report.texts(2), (QStringList{u"21"_s, u"22"_s, u"23"_s}));
    QCOMPARE(report.item(0, u"1"_s).place, QRectF(10, 10, 38, 5));
    QCOMPARE(report.item(0, u"2"_s).place.topLeft(), QPointF(52, 10));
    QCOMPARE(report.item(0, u"3"_s).place.topLeft(), QPointF(10, 26.4));
    QCOMPARE(report.item(0, u"10"_s).place.topLeft(), QPointF(52, 75.6));
    QCOMPARE(report.item(1, u"11"_s).place.topLeft(), QPointF(10, 10));
}

void TestPaginator::labelsOfTheLastRowStayOnTheirPlaces()
{
    const QString labels = u"<labels columns=\"3\" width=\"20\" height=\"20\"/>"_s;
    const QString summary = u"<summary height=\"5\"><text h=\"5\">{COUNT()} etiquetas</text></summary>"_s;
    Orders report(layout(rows(detail) + summary, labels), {4});
    QCOMPARE(report.layOut(), 1);
    QCOMPARE(report.item(0, u"4"_s).place.topLeft(), QPointF(10, 30));
    QCOMPARE(report.item(0, u"4 etiquetas"_s).place.topLeft(), QPointF(10, 50));
}

void TestPaginator::sumsOfThePagesAddUpToTheSummary_data()
{
    QTest::addColumn<QString>("group");
    QTest::newRow("flowing") << QString();
    QTest::newRow("blocks that move to the next page whole") << u"keep-together=\"yes\""_s;
}

void TestPaginator::sumsOfThePagesAddUpToTheSummary()
{
    QFETCH(const QString, group);
    const QString totals = u"<summary height=\"10\"><text h=\"5\">Total {SUM(KG):0.00}</text></summary>"
                           "<page-footer height=\"5\"><text h=\"5\">Soma {SUM(KG):0.00}</text></page-footer>"_s;
    Orders report(layout(groupedRows(group, {}) + totals), {3, 5, 4, 12, 2, 6});
    const int count = report.layOut();
    QVERIFY(count > 4);
    double total = 0;
    for (int page = 0; page < count; ++page) {
        double placed = 0;
        for (const QString &text : report.texts(page))
            placed += text.toInt() * 1.5; // the orders' numbers; other texts are no numbers
        QCOMPARE(report.texts(page).last(), u"Soma %1"_s.arg(placed, 0, 'f', 2).replace(u'.', u','));
        total += placed;
    }
    QCOMPARE(total, 32 * 33 / 2 * 1.5);
    QVERIFY(report.texts(count - 1).contains(u"Total 792,00"_s));
}

void TestPaginator::theFirstPageIsThereBeforeTheRestIsRead()
{
    Orders report(layout(rows(detail)), {400});
    report.begin();
    QVERIFY(report.paginator().nextPage());
    QCOMPARE(report.pages().count(), 1);
    QVERIFY(report.walker().rowsDone() < 20);
    QVERIFY(!report.paginator().isFinished());
}

void TestPaginator::aBandHigherThanAPageDoesNotHang()
{
    const QString tall = u"<detail height=\"200\" keep-with-next=\"yes\"><box y=\"10\" w=\"20\" h=\"150\"/></detail>"_s;
    Orders report(layout(pageBands.arg(rows(tall))), {2});
    QVERIFY(report.layOut() >= 2);
}

QTEST_MAIN(TestPaginator)
#include "tst_paginator.moc"
