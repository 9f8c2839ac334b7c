// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// The road of one roll: from the bytes that the scale sends to the register, the stock and the log.

#include "tests/production/writeoffstation.h"
#include "tests/support/engines.h"

#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

/// Sends the bytes down the line once the station listens, past the moment in which it drops what came before.
class OneFrame : public QObject
{
public:
    OneFrame(SimulatedScale &scale, const QByteArray &frame)
    {
        scale.pause();
        connect(&m_clock, &QTimer::timeout, this, [this, &scale, frame] {
            m_ticks = scale.hasReader() ? m_ticks + 1 : 0;
            if (m_ticks == 12) // 120 ms after the port was opened
                scale.sendRaw(frame);
        });
        m_clock.start(10);
    }

private:
    QTimer m_clock;
    int m_ticks = 0;
};

} // namespace

class tst_rollroad : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data()
    {
        Engines::addEngineRows();
        Engines::addServerRow();
    }

    void aFrameOfTheScaleBecomesARollInRegisterStockAndLog_data();
    void aFrameOfTheScaleBecomesARollInRegisterStockAndLog();
    void aFrameInMotionBecomesNoRoll();
    void bytesThatAreNoReadingAreNotTakenForSilence();
};

void tst_rollroad::aFrameOfTheScaleBecomesARollInRegisterStockAndLog_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<double>("kg");
    QTest::newRow("continuous, net 23.45")
        << QByteArray::fromHex("022C31203030323334353030303132300D23") << u"23,45"_s << 23.45;
    QTest::newRow("continuous, gross 23.450")
        << QByteArray::fromHex("023D30203032333435303030303030300D16") << u"23,45"_s << 23.45;
    QTest::newRow("ST,GS with three decimals") << QByteArray("ST,GS,+011.125kg\r\n") << u"11,13"_s << 11.125;
    QTest::newRow("plain") << QByteArray("  25,30\r") << u"25,30"_s << 25.3;
}

void tst_rollroad::aFrameOfTheScaleBecomesARollInRegisterStockAndLog()
{
    QFETCH(QByteArray, frame);
    QFETCH(QString, shown);
    QFETCH(double, kg);
    WriteOffStation station(Engines::current());
    const OneFrame once(station.scale, frame);
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    station.child(u"EdtTurno"_s)->setFocus();
    // Everything by the keyboard, as the scanner and the operator do.
    const auto typeAndEnter = [&](const QString &text) {
        QTest::keyClicks(QApplication::focusWidget(), text);
        station.key(Qt::Key_Return);
    };
    typeAndEnter(u"1"_s);
    typeAndEnter(u"000012"_s);
    QCOMPARE(station.text(u"EdtPesoRolo"_s), shown);
    QCOMPARE(station.focus(), u"EdtCodOper"_s);
    typeAndEnter(u"000101"_s);
    station.key(Qt::Key_Return); // the weight as it came from the scale
    QCOMPARE(station.focus(), u"btnBaixa"_s);
    MessageAnswers answers;
    answers.expectAndType(u"Peso da Baixa %1?"_s.arg(shown), Qt::Key_Return);
    station.key(Qt::Key_Return);
    QVERIFY(answers.allCame());
    QCOMPARE(station.value(u"SELECT QTDE FROM {OF_MALHA_BAIXAS}"_s).toDouble(), kg);
    QCOMPARE(station.value(u"SELECT NUM_BAIXA FROM {OF_MALHA_BAIXAS}"_s).toString(), u"001"_s);
    QCOMPARE(station.value(u"SELECT QTDE_TOTAL FROM {PA_MALHA}"_s).toDouble(), kg);
    QCOMPARE(station.log().size(), 1);
    QVERIFY(station.log().first().startsWith(u"BAIXA OF BARRA|BAIXA OF MALHARIA NR.: 000012 QTDE.: "_s));
}

void tst_rollroad::aFrameInMotionBecomesNoRoll()
{
    WriteOffStation station(Engines::current());
    const OneFrame once(station.scale, QByteArray::fromHex("022C39203030323334353030303132300D1B"));
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    station.enter(u"EdtTurno"_s, u"1"_s);
    station.enter(u"edtOF"_s, u"000012"_s);
    station.enter(u"EdtCodOper"_s, u"000101"_s);
    QCOMPARE(station.text(u"EdtPesoRolo"_s), u"0"_s);
    QVERIFY(station.child(u"lbBalanca"_s)->property("warning").toBool());
    const MessageAnswers nobodyAsks;
    station.click(u"btnBaixa"_s);
    QVERIFY(station.rolls().isEmpty());
    QVERIFY(station.log().isEmpty());
}

void tst_rollroad::bytesThatAreNoReadingAreNotTakenForSilence()
{
    WriteOffStation station(Engines::current());
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    {
        const OneFrame once(station.scale, QByteArray::fromHex("80FE1F")); // as a wrong speed makes them
        station.enter(u"edtOF"_s, u"000012"_s);
    }
    QCOMPARE(station.text(u"lbBalanca"_s), u"A balança enviou dados que não formam uma leitura. F10 configura."_s);
    QCOMPARE(station.text(u"EdtPesoRolo"_s), u"0,00"_s);
    station.enter(u"edtOF"_s, u"000012"_s); // nothing came this time
    QCOMPARE(station.text(u"lbBalanca"_s), u"A balança não enviou leitura."_s);
}

QTEST_MAIN(tst_rollroad)
#include "tst_rollroad.moc"
