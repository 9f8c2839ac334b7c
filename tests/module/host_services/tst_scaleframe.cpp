// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/host_services/scaleframe.h"

#include <QRandomGenerator>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(ScaleReading::Stability)

namespace {

using enum ScaleReading::Stability;

const QString unstableReason = u"Peso instável na balança."_s;
const QString negativeReason = u"Peso negativo na balança."_s;
const QString overReason = u"Peso acima da capacidade da balança."_s;
const QString underReason = u"Balança abaixo do zero."_s;
const QString emptyReason = u"Balança sem peso."_s;
const QString unitReason = u"Unidade de peso da balança desconhecida."_s;
const QString countingReason = u"A balança está contando peças."_s;
const QString notReadyReason = u"A balança não está pronta."_s;
const QString checksumReason = u"Leitura da balança com erro de transmissão."_s;
const QString unknownReason = u"Leitura da balança não reconhecida."_s;
const QString unfinishedReason = u"Leitura incompleta da balança."_s;
const QString silentReason = u"A balança não enviou leitura."_s;

QByteArray hex(const char *bytes)
{
    return QByteArray::fromHex(bytes);
}

char checksumOf(const QByteArray &frame)
{
    int sum = 0;
    for (const char byte : frame)
        sum += byte & 0x7F;
    return char((128 - sum % 128) % 128);
}

/// A stable gross weight in hundredths of a kilogram, long form, without checksum.
QByteArray p03(int hundredths)
{
    return hex("022C3020") + QByteArray::number(hundredths).rightJustified(6, '0') + "000120\r";
}

QByteArray p03WithChecksum(int hundredths)
{
    const QByteArray frame = p03(hundredths);
    return frame + checksumOf(frame);
}

/// The first weight from `hundredths` on whose checksum is this byte.
int weightWithChecksum(char checksum, int hundredths)
{
    while (checksumOf(p03(hundredths)) != checksum)
        ++hundredths;
    return hundredths;
}

} // namespace

class TestScaleFrame : public QObject
{
    Q_OBJECT

private slots:
    void weightsAreRead_data();
    void weightsAreRead();
    void framesThatAreNoWeightSayWhy_data();
    void framesThatAreNoWeightSayWhy();
    void netAndGrossAreTold_data();
    void netAndGrossAreTold();
    void aFrameThatIsCutIsNoWeight_data();
    void aFrameThatIsCutIsNoWeight();
    void aChecksumMayLookLikeStxOrAnEnd_data();
    void aChecksumMayLookLikeStxOrAnEnd();
    void everyWrongChecksumIsRefused();
    void oneDamagedByteNeverChangesTheWeight();
    void aStreamWithoutChecksumIsRead();
    void noiseBeforeTheFirstFrameIsDropped_data();
    void noiseBeforeTheFirstFrameIsDropped();
    void aPieceOfAContinuousStreamIsItsWeightOrNothing();
    void theLastOfSeveralFramesCounts_data();
    void theLastOfSeveralFramesCounts();
    void aTerminatorOfItsOwnEndsAFrame();
    void theLatestFramesFitWhatIsRead_data();
    void theLatestFramesFitWhatIsRead();
    void aFirstLineOfUnknownBeginningIsDropped();
    void onlyTheLatestBytesOfALongStreamCount();
    void randomBytesNeverMakeAWeightOutOfNothing();
};

void TestScaleFrame::weightsAreRead_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<double>("kg");
    QTest::addColumn<ScaleReading::Stability>("stability");
    const auto row = [](const char *name, const QByteArray &bytes, double kg, ScaleReading::Stability stability) {
        QTest::newRow(name) << bytes << kg << stability;
    };
    row("P03 net", hex("022C3120303032333435303030313230 0D"), 23.45, Yes);
    row("P03 net, checksum", hex("022C3120303032333435303030313230 0D 23"), 23.45, Yes);
    row("P03 gross, increment 5", hex("023D3020303233343530303030303030 0D"), 23.45, Yes);
    row("P03 gross, increment 5, checksum", hex("023D3020303233343530303030303030 0D 16"), 23.45, Yes);
    row("P03 gross, increment 2", hex("02333020303030313836303030303030 0D"), 18.6, Yes);
    row("P03 gross, increment 2, checksum", hex("02333020303030313836303030303030 0D 1F"), 18.6, Yes);
    row("P03 short", hex("022C3020303032333435 0D"), 23.45, Yes);
    row("P03 short, checksum", hex("022C3020303032333435 0D 47"), 23.45, Yes);
    row("P03 seven bits read as eight", hex("82ACB1A03030B233B435303030B1B2308D"), 23.45, Yes);
    row("P03 blanks for leading zeros", hex("022C3120") + "  2345     0\r", 23.45, Yes);
    row("P03 no decimals", hex("022A3020") + "000023000000\r", 23, Yes);
    row("P03 tens", hex("02293020") + "000023000000\r", 230, Yes);
    row("P03 hundreds", hex("02283020") + "000023000000\r", 2300, Yes);
    row("P03 four decimals", hex("022E3020") + "234500000000\r", 23.45, Yes);
    row("P03 five decimals", hex("022F3020") + "234500000000\r", 2.345, Yes);
    row("P03 status like XON", hex("022C1120") + "002345000120\r", 23.45, Yes);
    row("Prt1", hex("02303233343503"), 2.345, Yes);
    row("Urano", hex("02302C30343503"), 0.045, Unknown);
    row("Filizola in STX and ETX",
        "\x02"
        "12345"
        "\x03",
        12.345, Yes);
    row("Filizola bare", "02345", 2.345, Yes);
    row("Filizola @", hex("403030322E3434380D"), 2.448, Unknown);
    row("eight bytes, D", hex("443030302E3331380D"), 0.318, Unknown);
    row("eight bytes, E", "E1234.5\r", 1234.5, Unknown);
    row("2090",
        "\x02"
        "000025\r\n",
        25, Unknown);
    row("2180",
        "\x02"
        "\x20"
        "000025\r\n",
        25, Yes);
    row("8217 net", hex("02202032332E34354E0D"), 23.45, Yes);
    row("8217", hex("02202032332E34350D"), 23.45, Yes);
    row("ST,GS", "ST,GS,+011.120kg\r\n", 11.12, Yes);
    row("ST,GS, CR alone", "ST,GS,+011.120kg\r", 11.12, Yes);
    row("ST without kind", "ST,+00123.45 kg\r\n", 123.45, Yes);
    row("ST,NT", "ST,NT,+0012.34kg\r\n", 12.34, Yes);
    row("ST with address", "01ST,GS,    12.5,kg\r\n", 12.5, Yes);
    row("ST in grams", "ST,GS,+011120 g\r\n", 11.12, Yes);
    row("SICS", "S S     100.00 g\r\n", 0.1, Yes);
    row("SICS in kg", "S S      23.450 kg\r\n", 23.45, Yes);
    row("CR leads", hex("0D 313033323230 454C5F200A"), 103220, Yes);
    row("g and E", "g0052140E\r", 52.14, Yes);
    row("plain, comma", "  25,30\r", 25.3, Unknown);
    row("plain, kg", "25.300kg\r\n", 25.3, Unknown);
    row("plain, sign before blanks", "+  25.30\r", 25.3, Unknown);
    row("plain, sign behind blanks", "  +25.30\r", 25.3, Unknown);
    row("plain, grams", "  25300g\r", 25.3, Unknown);
    row("plain, tonnes", "0.0253 t\r", 25.3, Unknown);
    row("plain, capitals", "25.3 KG\r", 25.3, Unknown);
    row("plain, LF", "25.3\n", 25.3, Unknown);
}

void TestScaleFrame::weightsAreRead()
{
    QFETCH(QByteArray, bytes);
    QFETCH(double, kg);
    QFETCH(ScaleReading::Stability, stability);
    for (const char terminator : {'\r', '\n'}) {
        const ScaleReading reading = readScaleText(bytes, terminator);
        QCOMPARE(reading.reason, QString());
        QVERIFY(reading.isWeight());
        QCOMPARE(reading.kg, kg);
        QCOMPARE(reading.stability, stability);
        QVERIFY(bytes.endsWith(reading.raw));
    }
}

void TestScaleFrame::framesThatAreNoWeightSayWhy_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char *name, const QByteArray &bytes, const QString &reason) {
        QTest::newRow(name) << bytes << reason;
    };
    row("P03 in motion", hex("022C3920303032333435303030313230 0D"), unstableReason);
    row("P03 in motion, checksum", hex("022C3920303032333435303030313230 0D 1B"), unstableReason);
    row("P03 negative", hex("022C3320303030303135303030313230 0D"), negativeReason);
    row("P03 negative, checksum", hex("022C3320303030303135303030313230 0D 29"), negativeReason);
    row("P03 over", hex("022C3420303030303030303030303030 0D"), overReason);
    row("P03 over, checksum", hex("022C3420303030303030303030303030 0D 31"), overReason);
    row("P03 wrong checksum", hex("022C3120303032333435303030313230 0D 24"), checksumReason);
    row("P03 pounds", hex("022C2120303032333435303030313230 0D"), unitReason);
    row("P03 blank", hex("022C3020") + "            \r", u"A balança não enviou dígitos."_s);
    row("P03 zero", hex("022C3020") + "000000000000\r", emptyReason);
    row("P03 without increment", hex("02243020") + "002345000000\r", unknownReason);
    row("Prt1 unstable",
        "\x02"
        "IIIII"
        "\x03",
        unstableReason);
    row("Prt1 negative",
        "\x02"
        "NNNNN"
        "\x03",
        negativeReason);
    row("Prt1 over",
        "\x02"
        "SSSSS"
        "\x03",
        overReason);
    row("Prt1 zero",
        "\x02"
        "00000"
        "\x03",
        emptyReason);
    row("Prt1 one digit lost",
        "\x02"
        "0234"
        "\x03",
        unknownReason);
    row("Filizola unstable", "I2345", unstableReason);
    row("Filizola negative", "NNNNN", negativeReason);
    row("Filizola over", "SSSSS", overReason);
    row("eight bytes, digits lost", hex("2002022E3331380D"), unknownReason);
    row("eight bytes, one digit lost", hex("4402302E3331380D"), unknownReason);
    row("eight bytes, first digit lost", hex("440230302E3331380D"), unknownReason);
    row("2180 in motion",
        "\x02"
        "\x21"
        "000025\r\n",
        unstableReason);
    row("8217 in motion", hex("023F210D"), unstableReason);
    row("8217 over", hex("023F220D"), overReason);
    row("8217 under", hex("023F240D"), underReason);
    row("8217 over, bare bit", hex("023F020D"), overReason);
    row("8217 no reason", hex("023F200D"), notReadyReason);
    row("US", "US,GS,+011.120kg\r\n", unstableReason);
    row("OL", "OL,GS,+999999kg\r\n", overReason);
    row("UL", "UL,GS,-000.120kg\r\n", underReason);
    row("QT", "QT,GS,+00025 PC\r\n", countingReason);
    row("ST blanks", "ST,GS,        kg\r\n", overReason);
    row("ST zero", "01ST,GS,     0.0,kg\r\n", emptyReason);
    row("ST negative", "ST,NT,-0012.34kg\r\n", negativeReason);
    row("ST pounds", "ST,GS,+011.120lb\r\n", unitReason);
    row("ST no unit", "ST,GS,+011.120\r\n", unitReason);
    row("SICS dynamic", "S D      99.12 g\r\n", unstableReason);
    row("SICS not ready", "S I\r\n", notReadyReason);
    row("SICS over", "S +\r\n", overReason);
    row("SICS under", "S -\r\n", underReason);
    row("SICS negative", "S S     -100.00 g\r\n", negativeReason);
    row("SICS ounces", "S S     100.00 oz\r\n", unitReason);
    row("CR leads, oscillating", hex("0D 313033323230 4F4C5F200A"), unstableReason);
    row("g and I", "g0052140I\r", unstableReason);
    row("g and O", "g0052140O\r", unstableReason);
    row("plain negative", "- 25.30\r", negativeReason);
    row("plain negative behind blanks", "  -25.30\r", negativeReason);
    row("plain zero", "  00.00\r", emptyReason);
    row("plain, less than a gram", "0.0004\r", emptyReason);
    row("plain pounds", "25.30lb\r", unitReason);
    row("plain pieces", "25 pcs\r", unitReason);
    row("two points", "1.234,50\r", unknownReason);
    row("two signs", "+-25.30\r", unknownReason);
    row("no digits", "kg\r", unknownReason);
    row("no digit before the point", ".318\r", unknownReason);
    row("too many digits", "002345000120\r", unknownReason);
    row("exponent", "25E5\r", unknownReason);
    row("blanks alone", "     \r", unknownReason);
    row("unfinished", "  25,30", unfinishedReason);
    row("tail with ETX", "02345\x03", unfinishedReason);
    row("ends alone", "\r\n\r\n", unfinishedReason);
    row("nothing", "", silentReason);
    row("endless line", QByteArray(60, '1') + ".5\r", unfinishedReason);
}

void TestScaleFrame::framesThatAreNoWeightSayWhy()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    const ScaleReading reading = readScaleText(bytes, '\r');
    QCOMPARE(reading.reason, reason);
    QVERIFY(!reading.isWeight());
    QCOMPARE(reading.kg, 0.0);
    QCOMPARE(reading.negative, reason == negativeReason);
    QCOMPARE(reading.overRange, reason == overReason);
    QCOMPARE(reading.underRange, reason == underReason);
    QCOMPARE(reading.stability == No, reason == unstableReason);
}

void TestScaleFrame::netAndGrossAreTold_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("net");
    QTest::newRow("P03 net") << hex("022C31203030323334353030303132300D") << 1;
    QTest::newRow("P03 gross") << hex("022C30203030323334350D") << 0;
    QTest::newRow("8217 net") << hex("02202032332E34354E0D") << 1;
    QTest::newRow("8217 gross") << hex("02202032332E34350D") << 0;
    QTest::newRow("NT") << QByteArray("ST,NT,+0012.34kg\r\n") << 1;
    QTest::newRow("GS") << QByteArray("ST,GS,+0012.34kg\r\n") << 0;
    QTest::newRow("ST") << QByteArray("ST,+0012.34kg\r\n") << -1;
    QTest::newRow("plain") << QByteArray("12.34\r") << -1;
}

void TestScaleFrame::netAndGrossAreTold()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, net);
    const std::optional<bool> told = readScaleText(bytes, '\r').net;
    QCOMPARE(told.has_value() ? int(*told) : -1, net);
}

void TestScaleFrame::aFrameThatIsCutIsNoWeight_data()
{
    weightsAreRead_data();
}

void TestScaleFrame::aFrameThatIsCutIsNoWeight()
{
    QFETCH(QByteArray, bytes);
    QFETCH(double, kg);
    for (qsizetype size = 0; size < bytes.size(); ++size) {
        const ScaleReading reading = readScaleText(bytes.left(size), '\r');
        // The checksum and the LF behind CR may be missing.
        const bool isWhole = size == bytes.size() - 1 && (bytes[size] == '\n' || bytes.left(size).endsWith('\r'));
        if (isWhole && reading.isWeight())
            QCOMPARE(reading.kg, kg);
        else
            QVERIFY2(!reading.isWeight(), bytes.left(size).toHex(' ').constData());
    }
}

void TestScaleFrame::aChecksumMayLookLikeStxOrAnEnd_data()
{
    QTest::addColumn<int>("checksum");
    QTest::newRow("STX") << 0x02;
    QTest::newRow("ETX") << 0x03;
    QTest::newRow("LF") << 0x0A;
    QTest::newRow("CR") << 0x0D;
}

void TestScaleFrame::aChecksumMayLookLikeStxOrAnEnd()
{
    QFETCH(int, checksum);
    const int first = weightWithChecksum(char(checksum), 2345);
    const int second = weightWithChecksum(char(checksum), first + 1);
    const QByteArray one = p03WithChecksum(first);
    const QByteArray two = p03WithChecksum(second);
    QCOMPARE(readScaleText(one, '\r').kg, first / 100.0);
    QCOMPARE(readScaleText(one, '\r').raw, one);
    QCOMPARE(readScaleText(one + two, '\n').kg, second / 100.0);
    QCOMPARE(readScaleText(one + two, '\n').raw, two);
    QCOMPARE(readScaleText(one + two + one.left(9), '\r').kg, second / 100.0);
    QCOMPARE(lastWholeFrames(one + two + one.left(9), 18), two);
    QCOMPARE(lastWholeFrames(one + two + one.left(9), 36), one + two);
}

void TestScaleFrame::everyWrongChecksumIsRefused()
{
    const QByteArray frame = p03(2345);
    for (int checksum = 0; checksum < 128; ++checksum) {
        const ScaleReading reading = readScaleText(frame + char(checksum), '\r');
        // An STX at the very end may as well begin the next frame.
        const bool mayBeRight = char(checksum) == checksumOf(frame) || checksum == 0x02;
        QCOMPARE(reading.isWeight(), mayBeRight);
        QCOMPARE(reading.reason, mayBeRight ? QString() : checksumReason);
    }
    QCOMPARE(readScaleText(frame + "\x02\x02", '\r').reason, checksumReason);
}

void TestScaleFrame::oneDamagedByteNeverChangesTheWeight()
{
    const QByteArray frame = p03WithChecksum(2345);
    for (qsizetype at = 0; at < frame.size(); ++at) {
        for (int bit = 0; bit < 7; ++bit) {
            QByteArray damaged = frame;
            damaged[at] = char(damaged[at] ^ (1 << bit));
            const ScaleReading reading = readScaleText(damaged, '\r');
            QVERIFY2(!reading.isWeight(), damaged.toHex(' ').constData());
            QCOMPARE(readScaleText(damaged + p03WithChecksum(1860), '\r').kg, 18.6);
        }
    }
}

void TestScaleFrame::aStreamWithoutChecksumIsRead()
{
    // The STX of the next frame would be the right checksum of the first one.
    const int first = weightWithChecksum('\x02', 2345);
    const QByteArray stream = p03(first) + p03(1860) + p03(2001);
    QCOMPARE(readScaleText(stream, '\r').kg, 20.01);
    QCOMPARE(readScaleText(p03(first) + p03(1860).left(12), '\r').kg, first / 100.0);
    QCOMPARE(lastWholeFrames(stream, 34), p03(1860) + p03(2001));
}

void TestScaleFrame::noiseBeforeTheFirstFrameIsDropped_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<double>("kg");
    const QByteArray noise = hex("00FF1180");
    const QByteArray tail = "45000120\r";
    QTest::newRow("P03") << noise + p03(2345) << 23.45;
    QTest::newRow("P03, noise with STX") << hex("41024102") + p03WithChecksum(2345) << 23.45;
    QTest::newRow("P03 behind a tail") << tail + p03WithChecksum(2345) << 23.45;
    QTest::newRow("Prt1") << noise
            + "\x02"
              "02345\x03" << 2.345;
    QTest::newRow("Prt1 behind a tail") << QByteArray("345\x03\x02"
                                                      "02345\x03")
                                        << 2.345;
    QTest::newRow("8217") << "xy" + hex("02202032332E34350D") << 23.45;
    QTest::newRow("ST,GS") << noise + "ST,GS,+011.120kg\r\n" << 11.12;
    QTest::newRow("ST,GS behind its own beginning") << QByteArray("ST,GS,+01ST,GS,+011.120kg\r\n") << 11.12;
    QTest::newRow("plain, controls") << hex("001180") + "  25,30\r" << 25.3;
    QTest::newRow("plain, a line") << noise + "#\r  25,30\r" << 25.3;
    QTest::newRow("plain, STX in the line") << hex("024141") + "\r  25,30\r" << 25.3;
}

void TestScaleFrame::noiseBeforeTheFirstFrameIsDropped()
{
    QFETCH(QByteArray, bytes);
    QFETCH(double, kg);
    QCOMPARE(readScaleText(bytes, '\r').kg, kg);
}

// Wherever thirty characters are cut out, tare digits and checksums are never taken for a weight.
void TestScaleFrame::aPieceOfAContinuousStreamIsItsWeightOrNothing()
{
    for (const QByteArray &frame : {p03WithChecksum(2345), p03(2345), hex("022C3020303032333435 0D47")}) {
        const QByteArray stream = frame.repeated(6);
        for (qsizetype size = 1; size <= 40; ++size) {
            for (qsizetype at = 0; at < frame.size(); ++at) {
                const ScaleReading reading = readScaleText(stream.mid(at, size), '\r');
                // A tail alone, without the STX that follows it, cannot be told from a plain figure.
                if (stream.mid(at, size).contains('\x02'))
                    QVERIFY2(reading.kg == 23.45 || !reading.isWeight(), stream.mid(at, size).toHex(' ').constData());
                if (size >= 2 * frame.size())
                    QCOMPARE(reading.kg, 23.45);
            }
        }
    }
}

void TestScaleFrame::theLastOfSeveralFramesCounts_data()
{
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("last");
    QTest::addColumn<double>("kg");
    QTest::newRow("P03 short") << hex("022C30203030323334350D47") << hex("022B30203030303230310D") << 20.1;
    QTest::newRow("Prt1") << QByteArray("\x02"
                                        "02345\x03")
                          << QByteArray("\x02"
                                        "03456\x03")
                          << 3.456;
    QTest::newRow("Prt1, then moving") << QByteArray("\x02"
                                                     "02345\x03")
                                       << QByteArray("\x02IIIII\x03") << 0.0;
    QTest::newRow("ST") << QByteArray("US,+1.12kg\r\n") << QByteArray("ST,+1.13kg\r\n") << 1.13;
    QTest::newRow("ST, then moving") << QByteArray("ST,+1.120kg\r\n") << QByteArray("US,+1.12kg\r\n") << 0.0;
    QTest::newRow("plain") << QByteArray("  25,30\r") << QByteArray("  25,40\r") << 25.4;
    QTest::newRow("plain, then none") << QByteArray("  25,30\r") << QByteArray("   0,00\r") << 0.0;
    QTest::newRow("plain, then rubbish") << QByteArray("  25,30\r") << QByteArray("  2#,30\r") << 0.0;
    QTest::newRow("P03, then its tail") << p03WithChecksum(2345) << QByteArray("0120\r") << 23.45;
}

void TestScaleFrame::theLastOfSeveralFramesCounts()
{
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, last);
    QFETCH(double, kg);
    QVERIFY(first.size() + last.size() <= 30);
    QCOMPARE(readScaleText(first + last, '\r').kg, kg);
    QCOMPARE(readScaleText(first + last, '\n').kg, kg);
}

void TestScaleFrame::aTerminatorOfItsOwnEndsAFrame()
{
    QCOMPARE(readScaleText("25,30;25,40;", ';').kg, 25.4);
    QCOMPARE(readScaleText("25,30;25,40;", '\r').kg, 0.0);
    QCOMPARE(readScaleText(p03WithChecksum(2345), ';').kg, 23.45);
}

void TestScaleFrame::theLatestFramesFitWhatIsRead_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("in30");
    QTest::addColumn<int>("in40");
    QTest::newRow("P03") << p03WithChecksum(2345) << 1 << 2;
    QTest::newRow("P03 short") << hex("022C30203030323334350D47") << 2 << 3;
    QTest::newRow("Prt1") << QByteArray("\x02"
                                        "02345\x03")
                          << 4 << 5;
    QTest::newRow("ST") << QByteArray("ST,GS,+011.120kg\r\n") << 1 << 2;
    QTest::newRow("plain") << QByteArray("  25,30\r") << 3 << 5;
}

void TestScaleFrame::theLatestFramesFitWhatIsRead()
{
    QFETCH(QByteArray, frame);
    QFETCH(int, in30);
    QFETCH(int, in40);
    const double kg = readScaleText(frame, '\r').kg;
    QVERIFY(kg > 0);
    for (qsizetype head = 0; head < frame.size(); ++head) {
        for (qsizetype tail = 0; tail < frame.size() - 2; ++tail) {
            const QByteArray buffer = frame.right(head) + frame.repeated(9) + frame.left(tail);
            QCOMPARE(lastWholeFrames(buffer, 30, head == 0), frame.repeated(in30));
            QCOMPARE(lastWholeFrames(buffer, 40, head == 0), frame.repeated(in40));
        }
    }
    QCOMPARE(lastWholeFrames(frame, frame.size() - 1), QByteArray());
    QCOMPARE(lastWholeFrames(frame.left(5), 30), QByteArray());
}

void TestScaleFrame::aFirstLineOfUnknownBeginningIsDropped()
{
    QCOMPARE(lastWholeFrames("5,30\r", 30, true), QByteArray("5,30\r"));
    QCOMPARE(lastWholeFrames("5,30\r", 30, false), QByteArray());
    QCOMPARE(lastWholeFrames("5,30\r  25,30\r", 30, false), QByteArray("  25,30\r"));
    QCOMPARE(lastWholeFrames("02345", 30, false), QByteArray());
    QCOMPARE(lastWholeFrames(p03(2345), 30, false), p03(2345));
}

void TestScaleFrame::onlyTheLatestBytesOfALongStreamCount()
{
    const QByteArray stream = QByteArray("  25,30\r").repeated(2000);
    QCOMPARE(lastWholeFrames(stream, 30), QByteArray("  25,30\r").repeated(3));
    QCOMPARE(readScaleText(stream, '\r').kg, 25.3);
    QCOMPARE(readScaleText("  25,30\r" + QByteArray(maxScaleStream, 'x'), '\r').kg, 0.0);
}

void TestScaleFrame::randomBytesNeverMakeAWeightOutOfNothing()
{
    const QByteArray alphabet = QByteArray("0123456789., +-STUSGLNQOEIDkgtlb?@\r\n;") + hex("02020303050D0A2C303120");
    QRandomGenerator random(20250311);
    int weights = 0;
    for (int round = 0; round < 20000; ++round) {
        QByteArray bytes(random.bounded(60), '\0');
        for (char &byte : bytes)
            byte = round % 2 ? alphabet[random.bounded(int(alphabet.size()))] : char(random.bounded(256));
        const ScaleReading reading = readScaleText(bytes, '\r');
        const QByteArray latest = lastWholeFrames(bytes, 40);
        QVERIFY(latest.size() <= 40 && bytes.contains(latest));
        if (!latest.isEmpty())
            QCOMPARE(readScaleText(latest, '\r').kg, reading.kg);
        QCOMPARE(reading.reason.isEmpty(), reading.kg > 0);
        if (!reading.isWeight())
            continue;
        ++weights;
        QVERIFY(std::isfinite(reading.kg) && reading.kg < 1e11);
        QVERIFY(reading.stability != No && !reading.negative && !reading.overRange && !reading.underRange);
        // It has an end, a digit, and its sign is not a minus.
        QVERIFY(bytes.contains(reading.raw) && !reading.raw.contains('-'));
        QVERIFY(
            std::any_of(reading.raw.begin(), reading.raw.end(), [](char byte) { return std::isdigit(byte & 0x7F); }));
        const char end = char(reading.raw.back() & 0x7F);
        QVERIFY(end == '\r' || end == '\n' || end == '\x03' || reading.raw == bytes || (reading.raw[0] & 0x7F) == 0x02);
    }
    QVERIFY(weights > 100); // or the rest says nothing
}

QTEST_GUILESS_MAIN(TestScaleFrame)
#include "tst_scaleframe.moc"
