// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// The road of one roll: from the bytes that the scale sends to the register, the stock and the log, also while another
// station is on it.

#include "tests/production/deskstation.h"
#include "tests/support/engines.h"

#include <QSemaphore>
#include <QTest>
#include <QTimer>

#include <future>

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

/// Another station that has locked the order and run these statements, and commits as soon as a save of the station
/// begins, which then waits for it.
class OtherStation
{
public:
    OtherStation(WriteOffStation &station, const QStringList &statements)
        : m_watched(*station.tabela.IBDatabase)
        , m_work(std::async(std::launch::async, [this, statements, settings = station.database.settings()] {
            TTIDatabase database;
            database.open(settings);
            Save save(database);
            database.run(u"UPDATE OF_MALHA_001 SET NUM_OF = NUM_OF WHERE NUM_OF = '000012'"_s);
            for (const QString &statement : statements)
                database.run(statement);
            m_ready.release();
            m_told.acquire();
            save.CommitRetaining();
        }))
    {
        if (!m_ready.tryAcquire(1, 30'000))
            m_work.get(); // throws what went wrong
        m_watched.setObserver([this](const QString &ran) {
            if (ran == u"BEGIN")
                m_told.release();
        });
    }
    ~OtherStation()
    {
        m_watched.setObserver({});
        m_told.release();
    }
    Q_DISABLE_COPY_MOVE(OtherStation)

private:
    TTIDatabase &m_watched;
    QSemaphore m_ready;
    QSemaphore m_told;
    std::future<void> m_work;
};

const QString otherRoll = u"INSERT INTO OF_MALHA_BAIXAS_001 (NUM_BAIXA, NUM_OF, DATA, TURNO, FUNCIONARIO, QTDE)"
                          " VALUES ('001', '000012', '03/10/2026', '1', '000102', 20)"_s;
const QString conflict = u"Outra estação alterou estes dados ao mesmo tempo. Nada foi gravado; tente novamente."_s;

/// Firebird's transactions see what stood when they began, so that the later station is told to try again.
bool isToldToTryAgain()
{
    return Engines::current() != u"postgres"_s;
}

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
    void twoStationsAtOneInstantMakeTwoRolls();
    void twoStationsAtOneInstantShareTheBalance();
    void theDeskAndAStationAtOneInstantMakeTwoRolls();
    void aRollIsTakenBackOnceByTwoStationsAtOneInstant();
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

void tst_rollroad::twoStationsAtOneInstantMakeTwoRolls()
{
    WriteOffStation station(Engines::current());
    station.prepareRoll(u"20"_s);
    {
        const OtherStation other(station, {otherRoll});
        MessageAnswers answers;
        answers.expect(u"Peso da Baixa 20,00?"_s, QMessageBox::Yes);
        if (isToldToTryAgain())
            answers.expect(conflict, QMessageBox::Ok);
        station.click(u"btnBaixa"_s);
        QVERIFY(answers.allCame());
    }
    if (isToldToTryAgain()) {
        QCOMPARE(station.rolls().size(), 1);
        QVERIFY(station.stock().isEmpty());
        QVERIFY(station.log().isEmpty());
        QCOMPARE(station.text(u"EdtPesoRolo"_s), u"20,00"_s); // nothing is to be typed again
        station.confirmRoll(u"20,00"_s);
    }
    QCOMPARE(
        station.rolls(), QStringList({u"001|2026-03-10||1|000102|20"_s, u"002|2026-03-10|10:30:00.000|1|000101|20"_s}));
    QCOMPARE(station.stock(), QStringList{u"M0001|000012|20|0"_s});
    QCOMPARE(
        station.log(), QStringList{u"BAIXA OF BARRA|BAIXA OF MALHARIA NR.: 000012 QTDE.: 20 NUM.BAIXA: 002|3|ADMIN"_s});
}

void tst_rollroad::twoStationsAtOneInstantShareTheBalance()
{
    WriteOffStation station(Engines::current());
    station.database.run(u"UPDATE {OF_MALHA} SET KG_TOTAL = 39.999"_s);
    station.prepareRoll(u"20"_s);
    {
        const OtherStation other(station, {otherRoll});
        MessageAnswers answers;
        answers.expect(u"Peso da Baixa 20,00?"_s, QMessageBox::Yes);
        answers.expect(isToldToTryAgain() ? conflict : u"Quantidade maior que o Saldo."_s, QMessageBox::Ok);
        station.click(u"btnBaixa"_s);
        QVERIFY(answers.allCame());
    }
    if (isToldToTryAgain()) {
        MessageAnswers answers;
        answers.expect(u"Peso da Baixa 20,00?"_s, QMessageBox::Yes);
        answers.expect(u"Quantidade maior que o Saldo."_s, QMessageBox::Ok);
        station.click(u"btnBaixa"_s);
        QVERIFY(answers.allCame());
    }
    QCOMPARE(station.rolls().size(), 1);
    QVERIFY(station.stock().isEmpty());
    QVERIFY(station.log().isEmpty());
}

void tst_rollroad::theDeskAndAStationAtOneInstantMakeTwoRolls()
{
    DeskStation station;
    station.atDialog([&] {
        station.fillRoll(u"20"_s);
        QCOMPARE(station.text(u"edtBaixa"_s), u"001"_s);
        {
            const OtherStation other(station, {otherRoll});
            if (isToldToTryAgain())
                station.expect(conflict);
            station.confirm();
        }
        if (isToldToTryAgain())
            station.confirm();
    });
    QCOMPARE(station.rolls(), QStringList({u"001|2026-03-10||1|000102|20"_s, u"002|2026-03-10||1|000101|20"_s}));
    QCOMPARE(station.stock(), QStringList{u"M0001|000012|20|0"_s});
    QCOMPARE(station.log(), QStringList{u"BAIXA OF MALHARIA|BAIXA DA OF 000012 PESO 20 NUM.BAIXA: 002|3|ADMIN"_s});
}

void tst_rollroad::aRollIsTakenBackOnceByTwoStationsAtOneInstant()
{
    WriteOffStation station(Engines::current());
    station.prepareRoll(u"20"_s);
    station.confirmRoll(u"20,00"_s);
    station.database.run(u"DELETE FROM QEN_LOG"_s);
    const OtherStation other(
        station, {u"DELETE FROM OF_MALHA_BAIXAS_001"_s, u"UPDATE PA_MALHA_001 SET QTDE_TOTAL = QTDE_TOTAL - 20"_s});
    MessageAnswers answers;
    answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    answers.expect(conflict, QMessageBox::Ok);
    station.click(u"BtExcluir"_s);
    QVERIFY(answers.allCame());
    QVERIFY(station.rolls().isEmpty());
    QCOMPARE(station.stock(), QStringList{u"M0001|000012|0|0"_s});
    QVERIFY(station.log().isEmpty());
}

QTEST_MAIN(tst_rollroad)
#include "tst_rollroad.moc"
