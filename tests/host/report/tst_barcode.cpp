// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/report/barcode.h"
#include "module/host_services/errors.h"

#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using Symbology = Layout::Item::Symbology;

namespace {

constexpr double dotsPerMillimetre = 300 / 25.4; // an office printer

/// Paints the bars on paper and reads them back with a scanner's eyes: "CODE-128:000123".
QString scanned(Symbology symbology, const QString &text, const QRectF &place)
{
    QImage paper(int(place.right() * dotsPerMillimetre) + 60, int(place.bottom() * dotsPerMillimetre) + 60,
        QImage::Format_RGB32);
    paper.fill(Qt::white);
    QPainter painter(&paper);
    painter.scale(dotsPerMillimetre, dotsPerMillimetre);
    for (const QRectF &bar : Barcode::bars(symbology, text, place))
        painter.fillRect(bar, Qt::black);
    painter.end();

    const QTemporaryDir folder;
    const QString file = folder.filePath(u"barcode.png"_s);
    QProcess reader;
    paper.save(file);
    reader.start(u"zbarimg"_s,
        {u"--quiet"_s, u"-Sdisable"_s, u"-Scode128.enable"_s, u"-Si25.enable"_s, u"-Sqrcode.enable"_s, file});
    if (!reader.waitForFinished())
        return u"zbarimg: "_s + reader.errorString();
    return QString::fromUtf8(reader.readAllStandardOutput()).trimmed();
}

} // namespace

class tst_Barcode : public QObject
{
    Q_OBJECT

private slots:
    void barcodesAreReadBack_data();
    void barcodesAreReadBack();
    void barsKeepWithinTheirPlaceAndItsQuietZones();
    void aQrCodeIsSquareInTheMiddleOfItsPlace();
    void whatCannotBeCodedIsRefused();
    void anEmptyTextHasNoBars();
};

void tst_Barcode::barcodesAreReadBack_data()
{
    QTest::addColumn<Symbology>("symbology");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QRectF>("place");
    QTest::addColumn<QString>("read");
    const QRectF label(3.3, 2.7, 60, 12);
    QTest::newRow("order") << Symbology::Code128 << u"000123"_s << label << u"CODE-128:000123"_s;
    QTest::newRow("order and roll") << Symbology::Code128 << u"OF-000123/004"_s << label << u"CODE-128:OF-000123/004"_s;
    QTest::newRow("interleaved") << Symbology::Interleaved2of5 << u"00012345"_s << label << u"I2/5:00012345"_s;
    QTest::newRow("odd digits") << Symbology::Interleaved2of5 << u"1234567"_s << label << u"I2/5:01234567"_s;
    QTest::newRow("qr") << Symbology::Qr << u"OF 000123; rolo 4; 20,5 kg; algodão"_s << QRectF(3, 3, 25, 25)
                        << u"QR-Code:OF 000123; rolo 4; 20,5 kg; algodão"_s;
}

void tst_Barcode::barcodesAreReadBack()
{
    QFETCH(Symbology, symbology);
    QFETCH(QString, text);
    QFETCH(QRectF, place);
    QFETCH(QString, read);
    QCOMPARE(scanned(symbology, text, place), read);
}

void tst_Barcode::barsKeepWithinTheirPlaceAndItsQuietZones()
{
    const QRectF place(10, 20, 50, 12);
    const QVector<QRectF> bars = Barcode::bars(Symbology::Code128, u"000123"_s, place);
    QVERIFY(bars.size() > 10);
    const double module = bars.at(1).left() - bars.at(0).right(); // the start code begins 2 dark, 1 light
    for (const QRectF &bar : bars)
        QVERIFY(place.adjusted(-1e-9, -1e-9, 1e-9, 1e-9).contains(bar));
    QVERIFY(bars.first().left() - place.left() > 9.9 * module);
    QVERIFY(place.right() - bars.last().right() > 9.9 * module);
}

void tst_Barcode::aQrCodeIsSquareInTheMiddleOfItsPlace()
{
    QRectF around;
    for (const QRectF &square : Barcode::bars(Symbology::Qr, u"000123"_s, {0, 0, 40, 20}))
        around |= square;
    QVERIFY(qAbs(around.width() - around.height()) < 1e-6);
    QVERIFY(around.height() < 20);
    QVERIFY(qAbs(around.center().x() - 20) < 1e-6);
}

void tst_Barcode::whatCannotBeCodedIsRefused()
{
    const QRectF place(0, 0, 50, 10);
    try {
        Barcode::bars(Symbology::Interleaved2of5, u"12AB"_s, place);
        QFAIL("letters were accepted");
    } catch (const EQen &error) {
        QCOMPARE(error.sentence(), u"O texto \"12AB\" não cabe em um código de barras deste tipo."_s);
        QVERIFY(!error.details().isEmpty());
    }
    QVERIFY_THROWS_EXCEPTION(EQen, Barcode::bars(Symbology::Code128, u"9"_s.repeated(1000), place));
    QVERIFY_THROWS_EXCEPTION(EQen, Barcode::bars(Symbology::Qr, u"x"_s.repeated(8000), place));
}

void tst_Barcode::anEmptyTextHasNoBars()
{
    QVERIFY(Barcode::bars(Symbology::Code128, QString(), {0, 0, 50, 10}).isEmpty());
}

QTEST_MAIN(tst_Barcode)
#include "tst_barcode.moc"
