// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/paperfont.h"
#include "tests/host/report/testreport.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

/// Paper of 100 mm by 100 mm with margins of 10 mm; one row whose field OBS is the text.
class Note : public TestReport
{
public:
    Note(const QString &bands, const QVariantList &values)
        : TestReport(u"WNota"_s,
            u"<layout title=\"Nota\"><page width=\"100\" height=\"100\" margins=\"10\"/>"
            "<rows data=\"notas\">%1</rows></layout>"_s.arg(bands))
    {
        TClientDataSet &set = addDataSet(u"notas"_s, {{u"OBS"_s, TField::Type::Text}});
        for (const QVariant &value : values)
            addRow(set, {{u"OBS"_s, value}});
    }
};

QString words(int count)
{
    QStringList words;
    for (int i = 1; i <= count; ++i)
        words.append(u"palavra%1"_s.arg(i));
    return words.join(u' ');
}

const PaperFont &usualFont()
{
    return PaperFont::of({}, 9, false, false);
}

} // namespace

class TestGraphicBand : public QObject
{
    Q_OBJECT

private slots:
    void aGrowingTextMakesItsBandHigher();
    void whatStandsBeneathAGrowingTextMovesDown();
    void boxesAndLinesStretchToTheEndOfTheBand();
    void linesAreNoWiderThanTheirPlace_data();
    void linesAreNoWiderThanTheirPlace();
    void noWordIsLostInBreaking();
    void ownLineEndsAreKept();
    void textThatDoesNotGrowEndsInAnEllipsis();
    void wrappedTextShowsAsManyLinesAsItsPlaceHolds();
    void aShortGrownTextMovesToTheNextPageWhole();
    void aLongGrownTextGoesOnOnTheNextPage();
    void aTextOfManyPagesLosesNothing();
    void anItemStandsOnlyWhenItsConditionHolds();
    void aPictureKeepsItsProportions();
    void aDrawingIsAPictureToo();
    void aMissingPictureLeavesItsPlaceEmpty();
    void barsStandWithinTheirPlaceAboveTheirText();
    void aBarcodeThatCannotBeSaysWhereItStands();
    void theRoomForThePageCountIsReckoned();
};

void TestGraphicBand::aGrowingTextMakesItsBandHigher()
{
    const QString bands = u"<detail height=\"5\"><text w=\"40\" h=\"5\" grow=\"yes\">{OBS}</text></detail>"_s;
    Note report(bands, {words(12), u"depois"_s});
    QCOMPARE(report.layOut(), 1);
    const QString grown = report.texts(0).first();
    const auto lines = grown.count(u'\n') + 1;
    QVERIFY(lines > 3);
    const double height = double(lines) * usualFont().lineHeight();
    QCOMPARE(report.item(0, grown).place.height(), height);
    QCOMPARE(report.item(0, u"depois"_s).place.top(), 10 + height);
}

void TestGraphicBand::whatStandsBeneathAGrowingTextMovesDown()
{
    const QString bands = u"<detail height=\"10\"><text w=\"40\" h=\"5\" grow=\"yes\">{OBS}</text>"
                          "<text x=\"50\" w=\"20\" h=\"5\">ao lado</text>"
                          "<text y=\"5\" w=\"40\" h=\"5\">abaixo</text></detail>"_s;
    Note report(bands, {words(12)});
    report.layOut();
    const PageItem grown = report.item(0, report.texts(0).first());
    QCOMPARE(report.item(0, u"ao lado"_s).place.top(), 10.0);
    QCOMPARE(report.item(0, u"abaixo"_s).place.top(), grown.place.bottom());
}

void TestGraphicBand::boxesAndLinesStretchToTheEndOfTheBand()
{
    const QString bands = u"<detail height=\"6\"><box w=\"80\" h=\"6\" stretch=\"yes\"/>"
                          "<line x1=\"40\" y1=\"0\" x2=\"40\" y2=\"6\" stretch=\"yes\"/><box w=\"3\" h=\"3\"/>"
                          "<text x=\"1\" w=\"38\" h=\"6\" grow=\"yes\">{OBS}</text></detail>"_s;
    Note report(bands, {words(20)});
    report.layOut();
    const double bottom = report.item(0, report.texts(0).first()).place.bottom();
    QVERIFY(bottom > 20);
    const QVector<PageItem> boxes = report.items(0, PageItem::Kind::Box);
    QCOMPARE(boxes[0].place.bottom(), bottom);
    QCOMPARE(boxes[1].place.bottom(), 13.0);
    QCOMPARE(report.items(0, PageItem::Kind::Line).constFirst().place.bottom(), bottom);
}

void TestGraphicBand::linesAreNoWiderThanTheirPlace_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("words") << words(40);
    QTest::newRow("a word without blanks") << QString(300, u'W');
    QTest::newRow("a long word between short ones") << u"de "_s + QString(80, u'm') + u" para"_s;
    QTest::newRow("letters of other scripts") << u"Ακρυλικό νήμα, трикотажное полотно, 編み物の機械 "_s.repeated(5);
    QTest::newRow("signs of two units") << u"\U0001F9F6"_s.repeated(90);
}

void TestGraphicBand::linesAreNoWiderThanTheirPlace()
{
    QFETCH(const QString, text);
    for (const double width : {7.0, 20.0, 33.3}) {
        const QStringList lines = usualFont().broken(text, width);
        QVERIFY(lines.size() > 1);
        for (const QString &line : lines) {
            QVERIFY2(QFontMetricsF(usualFont().font()).horizontalAdvance(line) / PaperFont::unitsPerMillimetre
                    < width + 0.01,
                qPrintable(line));
        }
        QCOMPARE(QString(lines.join(QString())).remove(u' '), QString(text).remove(u' '));
    }
}

void TestGraphicBand::noWordIsLostInBreaking()
{
    const QString text = words(60);
    QCOMPARE(usualFont().broken(text, 45).join(u' '), text);
}

void TestGraphicBand::ownLineEndsAreKept()
{
    QCOMPARE(usualFont().broken(u"um\n\ndois"_s, 45), (QStringList{u"um"_s, {}, u"dois"_s}));
    Note report(u"<detail height=\"5\"><text h=\"5\" grow=\"yes\">{OBS}</text></detail>"_s, {u"um\r\ndois\ttrês"_s});
    report.layOut();
    QCOMPARE(report.texts(0), QStringList{u"um\ndois três"_s});
}

void TestGraphicBand::textThatDoesNotGrowEndsInAnEllipsis()
{
    Note report(u"<detail height=\"5\"><text w=\"30\" h=\"5\">{OBS}</text></detail>"_s, {words(9), u"curto"_s});
    report.layOut();
    const QString shown = report.texts(0).first();
    QVERIFY(shown.endsWith(u'…'));
    QVERIFY(words(9).startsWith(shown.chopped(1)));
    QVERIFY(shown.size() > 10);
    QVERIFY(usualFont().width(shown) <= 30);
    QCOMPARE(report.texts(0).last(), u"curto"_s);
}

void TestGraphicBand::wrappedTextShowsAsManyLinesAsItsPlaceHolds()
{
    Note report(u"<detail height=\"12\"><text w=\"40\" h=\"12\" wrap=\"yes\">{OBS}</text></detail>"_s, {words(40)});
    report.layOut();
    const QString shown = report.texts(0).constFirst();
    QCOMPARE(shown.count(u'\n') + 1, 3);
    QVERIFY(shown.endsWith(u'…'));
    QVERIFY(double(3) * usualFont().lineHeight() <= 12);
}

void TestGraphicBand::aShortGrownTextMovesToTheNextPageWhole()
{
    // The second band has room for one of its three lines.
    const QString bands = u"<detail height=\"75\" if=\"OBS = 'antes'\"><text h=\"5\">{OBS}</text></detail>"
                          "<detail height=\"5\" if=\"OBS &lt;&gt; 'antes'\"><text w=\"40\" h=\"5\" grow=\"yes\">"
                          "{OBS}</text></detail>"_s;
    Note report(bands, {u"antes"_s, words(8)});
    QCOMPARE(report.layOut(), 2);
    QCOMPARE(report.texts(0), QStringList{u"antes"_s});
    QCOMPARE(report.texts(1).constFirst().count(u'\n') + 1, 3);
}

void TestGraphicBand::aLongGrownTextGoesOnOnTheNextPage()
{
    const QString bands = u"<detail height=\"70\" if=\"OBS = 'antes'\"><text h=\"5\">{OBS}</text></detail>"
                          "<detail height=\"5\" if=\"OBS &lt;&gt; 'antes'\"><text w=\"40\" h=\"5\" grow=\"yes\">{OBS}"
                          "</text><box w=\"80\" h=\"5\" stretch=\"yes\"/></detail>"_s;
    Note report(bands, {u"antes"_s, words(40), u"fim"_s});
    QCOMPARE(report.layOut(), 2);
    const QString above = report.texts(0).last();
    const QString below = report.texts(1).constFirst();
    QCOMPARE(QString(above + u'\n' + below).replace(u'\n', u' '), words(40));
    QCOMPARE(above.count(u'\n') + 1, 2);
    QVERIFY(report.item(0, above).place.bottom() <= 90);
    QCOMPARE(report.item(1, below).place.top(), 10.0);
    QCOMPARE(report.items(0, PageItem::Kind::Box).constFirst().place.bottom(), 90.0);
    QCOMPARE(report.items(1, PageItem::Kind::Box).constFirst().place.top(), 10.0);
    QCOMPARE(report.item(1, u"fim"_s).place.top(), report.item(1, below).place.bottom());
}

void TestGraphicBand::aTextOfManyPagesLosesNothing()
{
    const QString bands = u"<detail height=\"5\"><text w=\"40\" h=\"5\" grow=\"yes\">{OBS}</text></detail>"_s;
    Note report(bands, {words(400)});
    const int count = report.layOut();
    QVERIFY(count >= 5);
    QStringList parts;
    for (int page = 0; page < count; ++page) {
        parts += report.texts(page);
        QVERIFY(report.item(page, report.texts(page).constLast()).place.bottom() <= 90.001);
    }
    QCOMPARE(parts.join(u' ').replace(u'\n', u' '), words(400));
}

void TestGraphicBand::anItemStandsOnlyWhenItsConditionHolds()
{
    const QString bands = u"<detail height=\"5\"><text h=\"5\" if=\"OBS = 'sim'\">visível</text></detail>"_s;
    Note report(bands, {u"sim"_s, u"não"_s, QVariant()});
    report.layOut();
    QCOMPARE(report.texts(0), QStringList{u"visível"_s});
}

void TestGraphicBand::aPictureKeepsItsProportions()
{
    const QString bands = u"<detail height=\"40\"><picture w=\"40\" h=\"40\" value=\"OBS\"/></detail>"_s;
    Note report(bands, {u"foto.png"_s});
    QImage photo(5000, 2500, QImage::Format_RGB32);
    photo.fill(Qt::blue);
    QVERIFY(photo.save(report.folder() + u"/foto.png"_s));
    report.layOut();
    const PageItem picture = report.items(0, PageItem::Kind::Picture).constFirst();
    QCOMPARE(picture.place.width(), 40.0);
    QVERIFY(qAbs(picture.place.height() - 20) < 0.1);
    // No finer than paper shows it.
    QCOMPARE(picture.image.width(), 945);
}

void TestGraphicBand::aDrawingIsAPictureToo()
{
    const QString bands = u"<detail height=\"20\"><picture w=\"60\" h=\"20\" value=\"OBS\"/></detail>"_s;
    Note report(bands, {u"logo.svg"_s});
    QFile file(report.folder() + u"/logo.svg"_s);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"10\" height=\"10\">"
               "<rect width=\"10\" height=\"10\" fill=\"#ff0000\"/></svg>");
    file.close();
    report.layOut();
    const PageItem picture = report.items(0, PageItem::Kind::Picture).constFirst();
    QCOMPARE(picture.place.size(), QSizeF(20, 20));
    QCOMPARE(picture.image.pixelColor(100, 100), QColor(Qt::red));
}

void TestGraphicBand::aMissingPictureLeavesItsPlaceEmpty()
{
    const QString bands = u"<detail height=\"20\"><picture w=\"20\" h=\"20\" value=\"OBS\"/></detail>"_s;
    Note report(bands, {u"nenhuma.png"_s, QVariant()});
    QCOMPARE(report.layOut(), 1);
    QVERIFY(report.items(0, PageItem::Kind::Picture).isEmpty());
}

void TestGraphicBand::barsStandWithinTheirPlaceAboveTheirText()
{
    const QString bands = u"<detail height=\"20\"><barcode kind=\"code128\" x=\"5\" w=\"50\" h=\"20\" value=\"OBS\""
                          " show-value=\"yes\"/></detail>"_s;
    Note report(bands, {u"001234"_s});
    report.layOut();
    const PageItem text = report.item(0, u"001234"_s);
    QCOMPARE(text.place.bottom(), 30.0);
    const QVector<QRectF> bars = report.items(0, PageItem::Kind::Bars).constFirst().bars;
    QVERIFY(bars.size() > 10);
    for (const QRectF &bar : bars)
        QVERIFY(QRectF(15, 10, 50, text.place.top() - 10).adjusted(-0.01, -0.01, 0.01, 0.01).contains(bar));
}

void TestGraphicBand::aBarcodeThatCannotBeSaysWhereItStands()
{
    const QString bands = u"<detail height=\"20\"><barcode kind=\"itf\" w=\"50\" h=\"20\" value=\"OBS\"/></detail>"_s;
    Note report(bands, {u"ABC"_s});
    report.begin();
    try {
        while (report.paginator().nextPage()) { }
        QFAIL("the bars of letters");
    } catch (const EQen &error) {
        QVERIFY(error.sentence().contains(u"ABC"_s));
        QVERIFY(error.details().contains(u"WNota.xml, linha 1"_s));
    }
}

void TestGraphicBand::theRoomForThePageCountIsReckoned()
{
    QCOMPARE(usualFont().width(QString(pageCountMark)), usualFont().width(u"000"));
    Note report(u"<detail height=\"5\"><text w=\"30\" h=\"5\">Folha 1 de {PAGES()}</text></detail>"_s, {u"x"_s});
    report.layOut();
    QCOMPARE(report.texts(0), QStringList{u"Folha 1 de 1"_s});
}

QTEST_MAIN(TestGraphicBand)
#include "tst_graphicband.moc"
