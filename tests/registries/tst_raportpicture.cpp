// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "registries/raportpicture.h"

#include <QHelpEvent>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

const QColor red(0xb7, 0x1c, 0x2b);
const QColor blue(0x22, 0x44, 0xa8);
const QColor white(0xff, 0xff, 0xff);

RaportPicture::Stripe stripe(const QString &yarn, const QString &colour, const QColor &shade, int feeders)
{
    return {yarn, colour, shade, feeders, 1};
}

/// 24 red, 8 blue, 16 red feeders of one yarn.
QVector<RaportPicture::Stripe> threeStripes()
{
    return {stripe(u"Fio 30/1"_s, u"Vermelho"_s, red, 24), stripe(u"Fio 30/1"_s, u"Azul"_s, blue, 8),
        stripe(u"Fio 30/1"_s, u"Vermelho"_s, red, 16)};
}

/// How many different shades a part of the picture shows.
QSet<QRgb> shadesIn(const QImage &image, const QRect &rect)
{
    QSet<QRgb> found;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x)
            found.insert(image.pixel(x, y));
    }
    return found;
}

} // namespace

/// The picture of a rapport.
class TestRaportPicture : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_picture.reset(); }

    void aStripeIsAsHighAsItHasFeeders();
    void stripesFollowOneAnotherWithoutGaps();
    void aStripeIsPaintedInItsShade();
    void anUnknownShadeIsAHatchedGrey();
    void twoWhiteLinesAreToldApart();
    void aLineWithoutFeedersIsMarkedInRed();
    void linesWithoutAnyFeedersHaveNoHeight();
    void theLegendAddsUpYarnsAndColours();
    void aLongLegendLeavesRoomForTheStripes();
    void theUsersLineIsMarked();
    void aClickChoosesTheLine();
    void theToolTipTellsTheWholeLine();
    void aRapportOfManyLinesIsDrawn();
    void anEmptyRapportSaysSo();
    void onlyShadesInSixDigitsAreShades();
    void onPaperNoLineIsMarked();

private:
    QImage image() { return m_picture->grab().toImage(); }
    std::unique_ptr<RaportPicture> m_picture;
};

void TestRaportPicture::init()
{
    m_picture = std::make_unique<RaportPicture>();
    m_picture->resize(300, 400);
}

void TestRaportPicture::aStripeIsAsHighAsItHasFeeders()
{
    m_picture->setStripes(threeStripes());
    const int whole = m_picture->stripeRect(2).bottom() + 1 - m_picture->stripeRect(0).top();
    const int feeders[] = {24, 8, 16};
    for (int line = 0; line < 3; ++line)
        QVERIFY(qAbs(m_picture->stripeRect(line).height() - whole * feeders[line] / 48.0) <= 1);
    QVERIFY(whole > 200);
}

void TestRaportPicture::stripesFollowOneAnotherWithoutGaps()
{
    QVector<RaportPicture::Stripe> stripes;
    for (int i = 0; i < 29; ++i)
        stripes.append(stripe(u"Fio"_s, u"Cor"_s, red, 1 + i % 7));
    m_picture->setStripes(stripes);
    for (int line = 1; line < stripes.size(); ++line)
        QCOMPARE(m_picture->stripeRect(line).top(), m_picture->stripeRect(line - 1).bottom() + 1);
}

void TestRaportPicture::aStripeIsPaintedInItsShade()
{
    m_picture->setStripes(threeStripes());
    const QImage picture = image();
    QCOMPARE(picture.pixelColor(m_picture->stripeRect(0).center()), red);
    QCOMPARE(picture.pixelColor(m_picture->stripeRect(1).center()), blue);
    QCOMPARE(picture.pixelColor(m_picture->stripeRect(2).center()), red);
    QVector<RaportPicture::Stripe> changed = threeStripes();
    changed[2].shade = blue;
    m_picture->setStripes(changed);
    QCOMPARE(image().pixelColor(m_picture->stripeRect(2).center()), blue);
}

void TestRaportPicture::anUnknownShadeIsAHatchedGrey()
{
    m_picture->setStripes({stripe(u"Fio"_s, u"Sem tom"_s, QColor(), 8), stripe(u"Fio"_s, u"Azul"_s, blue, 8)});
    const QRect inside = m_picture->stripeRect(0).adjusted(2, 2, -2, -2);
    const QSet<QRgb> shades = shadesIn(image(), inside);
    QVERIFY(shades.size() >= 2);
    for (const QRgb shade : shades)
        QVERIFY(QColor(shade).saturation() < 30);
}

void TestRaportPicture::twoWhiteLinesAreToldApart()
{
    m_picture->setStripes({stripe(u"A"_s, u"Branco"_s, white, 8), stripe(u"B"_s, u"Branco"_s, white, 8)});
    const QImage picture = image();
    const QRect second = m_picture->stripeRect(1);
    QVERIFY(picture.pixelColor(second.center().x(), second.top()) != white);
    QCOMPARE(picture.pixelColor(second.center()), white);
}

void TestRaportPicture::aLineWithoutFeedersIsMarkedInRed()
{
    m_picture->setStripes({stripe(u"A"_s, u"Azul"_s, blue, 8), stripe(u"B"_s, u"Branco"_s, white, 0),
        stripe(u"A"_s, u"Azul"_s, blue, 8)});
    QVERIFY(m_picture->stripeRect(1).isEmpty());
    QVERIFY(
        shadesIn(image(), QRect(150, m_picture->stripeRect(2).top() - 6, 140, 12)).contains(qRgb(0xc6, 0x28, 0x28)));
    const QColor mark = image().pixelColor(m_picture->stripeRect(2).center().x(), m_picture->stripeRect(2).top());
    QVERIFY(mark.red() > 150 && mark.green() < 90 && mark.blue() < 90);
}

void TestRaportPicture::linesWithoutAnyFeedersHaveNoHeight()
{
    m_picture->setStripes({stripe(u"A"_s, u"Azul"_s, blue, 0), stripe(u"A"_s, u"Azul"_s, blue, -3)});
    QVERIFY(m_picture->stripeRect(0).isEmpty() && m_picture->stripeRect(1).isEmpty());
    QVERIFY(!image().isNull());
    QCOMPARE(m_picture->legend(), QStringList{u"Azul · 0 (0,0%) · A"_s});
}

void TestRaportPicture::theLegendAddsUpYarnsAndColours()
{
    QVector<RaportPicture::Stripe> stripes = threeStripes();
    stripes.append(stripe(u"Elastano"_s, QString(), QColor(), 48));
    m_picture->setStripes(stripes);
    QCOMPARE(m_picture->legend(),
        (QStringList{
            u"Vermelho · 40 (41,7%) · Fio 30/1"_s, u"Azul · 8 (8,3%) · Fio 30/1"_s, u"48 (50,0%) · Elastano"_s}));
    QCOMPARE(m_picture->accessibleDescription().split(u'\n'), m_picture->legend());
}

void TestRaportPicture::aLongLegendLeavesRoomForTheStripes()
{
    QVector<RaportPicture::Stripe> stripes;
    for (int i = 0; i < 60; ++i)
        stripes.append(stripe(u"Fio %1"_s.arg(i), u"Cor"_s, red, 1));
    m_picture->setStripes(stripes);
    QVERIFY(m_picture->stripeRect(59).bottom() > m_picture->height() / 2);
    QVERIFY(m_picture->stripeRect(59).bottom() < m_picture->height() * 3 / 4);
    QVERIFY(!image().isNull());
}

void TestRaportPicture::theUsersLineIsMarked()
{
    m_picture->setStripes(threeStripes());
    const QImage before = image();
    m_picture->setCurrentLine(1);
    const QImage after = image();
    const QRect line = m_picture->stripeRect(1);
    const QRect beside(0, line.top(), line.left(), line.height());
    QVERIFY(shadesIn(after, beside) != shadesIn(before, beside));
    QVERIFY(shadesIn(after, beside).contains(m_picture->palette().color(QPalette::Highlight).rgb()));
    QCOMPARE(after.pixelColor(line.center()), blue);
}

void TestRaportPicture::aClickChoosesTheLine()
{
    m_picture->setStripes(threeStripes());
    QSignalSpy clicked(m_picture.get(), &RaportPicture::lineClicked);
    for (const int line : {2, 0, 1})
        QTest::mouseClick(m_picture.get(), Qt::LeftButton, {}, m_picture->stripeRect(line).center());
    QTest::mouseClick(m_picture.get(), Qt::LeftButton, {}, QPoint(10, m_picture->height() - 3)); // the legend
    QCOMPARE(clicked, (QList<QVariantList>{{2}, {0}, {1}}));
}

void TestRaportPicture::theToolTipTellsTheWholeLine()
{
    QVector<RaportPicture::Stripe> stripes = threeStripes();
    stripes[1].repeats = 3;
    m_picture->setStripes(stripes);
    m_picture->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_picture.get()));
    const QPoint place = m_picture->stripeRect(1).center();
    QHelpEvent help(QEvent::ToolTip, place, m_picture->mapToGlobal(place));
    QCoreApplication::sendEvent(m_picture.get(), &help);
    QCOMPARE(QToolTip::text(), u"Linha 2  Azul  8 × 3\nFio 30/1"_s);
}

void TestRaportPicture::aRapportOfManyLinesIsDrawn()
{
    QVector<RaportPicture::Stripe> stripes;
    for (int i = 0; i < 400; ++i)
        stripes.append(stripe(u"Fio"_s, i % 2 ? u"A"_s : u"B"_s, i % 2 ? red : blue, 2));
    m_picture->setStripes(stripes);
    m_picture->setCurrentLine(399);
    QCOMPARE(image().size(), m_picture->size() * m_picture->devicePixelRatio());
    QVERIFY(m_picture->stripeRect(399).bottom() < m_picture->height());
}

void TestRaportPicture::anEmptyRapportSaysSo()
{
    const QImage empty = image();
    QVERIFY(shadesIn(empty, empty.rect()).size() > 1); // the sentence
    QCOMPARE(m_picture->legend(), QStringList());
    QTest::mouseClick(m_picture.get(), Qt::LeftButton, {}, QPoint(100, 100));
}

void TestRaportPicture::onlyShadesInSixDigitsAreShades()
{
    QCOMPARE(RaportPicture::shadeOf(u"#1b2a49"_s), QColor(0x1b, 0x2a, 0x49));
    QCOMPARE(RaportPicture::shadeOf(u"#1B2A49"_s), QColor(0x1b, 0x2a, 0x49));
    for (const QString &wrong : {QString(), u"#fff"_s, u"red"_s, u"1b2a49"_s, u"#1b2a4g"_s, u"'; DROP"_s})
        QVERIFY2(!RaportPicture::shadeOf(wrong).isValid(), qPrintable(wrong));
}

void TestRaportPicture::onPaperNoLineIsMarked()
{
    m_picture->setStripes(threeStripes());
    m_picture->setCurrentLine(-1);
    const QImage unmarked = m_picture->forPaper();
    m_picture->setCurrentLine(1);
    QCOMPARE(m_picture->forPaper(), unmarked);
    QCOMPARE(unmarked.pixelColor(0, 0), QColor(Qt::white));
    const QSet<QRgb> shades = shadesIn(unmarked, unmarked.rect());
    QVERIFY(shades.contains(red.rgb()) && shades.contains(blue.rgb()));
}

QTEST_MAIN(TestRaportPicture)
#include "tst_raportpicture.moc"
