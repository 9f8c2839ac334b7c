// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/simulatedscale.h"
#include "module/host_services/comport.h"
#include "module/host_services/comportdialog.h"
#include "module/host_services/scaleframe.h"

#include <QApplication>
#include <QCursor>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int waitMs = 500;
constexpr int inTheMiddleMs = 200;

ComPortSettings settingsFor(const SimulatedScale &scale)
{
    ComPortSettings settings;
    settings.port = scale.portName();
    settings.waitMs = waitMs;
    return settings;
}

/// One reading as the barcode station does it.
ScaleReading weigh(TCustomComPort &port)
{
    port.Open();
    if (!port.WaitForReading())
        return {};
    const QString text = port.ReadStr(30);
    port.Close();
    return readScaleText(text.toLatin1(), '\r');
}

QString sentenceOf(const std::function<void()> &action)
{
    try {
        action();
    } catch (const EComPort &error) {
        return error.sentence();
    }
    return {};
}

/// A window that notes what reaches it while the scale is read, and afterwards.
class Witness : public QWidget
{
public:
    Witness() { setMouseTracking(true); }

    int paintedMeanwhile = 0;
    int movedMeanwhile = 0;
    int movedAfterwards = 0;

protected:
    void paintEvent(QPaintEvent *) override { paintedMeanwhile += TCustomComPort::Waiting() ? 1 : 0; }
    void mouseMoveEvent(QMouseEvent *) override { ++(TCustomComPort::Waiting() ? movedMeanwhile : movedAfterwards); }
};

} // namespace

class TestComPort : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aStableWeightIsRead_data();
    void aStableWeightIsRead();
    void theDialogsSecondReadingIsTheWeightToo();
    void anUnstableWeightIsZeroWithAReason();
    void aSilentScaleIsZeroWithAReason();
    void theLatestWeightOfTheWaitCounts();
    void aFrameInPiecesIsPutTogether();
    void aScaleThatIsAskedAnswers();
    void anAbsentPortIsNamed();
    void namesOfPortsAreTheSystemsOwn();
    void whatCameBeforeOpeningNeverComesBack();
    void oldBytesDoNotSpoilTheFirstLine();
    void theWeightOfTheRollBeforeNeverComesBack();
    void aTailHeardAtOpeningIsNoWeight();
    void thePortIsOpenOnlyBetweenOpenAndClose();
    void aSecondReadingMeanwhileIsRefused();
    void aPortClosedMeanwhileGivesNothing();
    void aPortDestroyedMeanwhileGivesNothing();
    void anUnpluggedScaleIsNamed();
    void theWindowRepaintsMeanwhile();
    void inputMeanwhileComesAfterwards();
    void aFloodIsBounded();
    void settingsSurviveARoundTrip();
    void nonsenseInTheStoreIsSaidWithFileAndKey();
    void aRequestThatIsNoneIsSaid_data();
    void aRequestThatIsNoneIsSaid();
    void theSetUpDialogIsFilledWithKeys();
    void escapeKeepsTheSettings();
    void aWrongRequestIsNotAccepted();
    void theTestButtonShowsTheReading_data();
    void theTestButtonShowsTheReading();
    void theTestButtonNamesAnAbsentPort();
    void scalesAndPortsLeaveNoFileOpen();

private:
    std::unique_ptr<SimulatedScale> m_scale;
    std::unique_ptr<TCustomComPort> m_port;
};

void TestComPort::init()
{
    m_port = std::make_unique<TCustomComPort>();
    m_scale = std::make_unique<SimulatedScale>();
    m_port->SetSettings(settingsFor(*m_scale));
}

void TestComPort::aStableWeightIsRead_data()
{
    QTest::addColumn<SimulatedScale::Format>("format");
    QTest::addColumn<double>("kg");
    QTest::newRow("P03") << SimulatedScale::Format::ToledoP03 << 20.125;
    QTest::newRow("P03, a gram") << SimulatedScale::Format::ToledoP03 << 0.001;
    QTest::newRow("P03, nearly too much") << SimulatedScale::Format::ToledoP03 << 999.999;
    QTest::newRow("plain") << SimulatedScale::Format::PlainCr << 20.125;
}

void TestComPort::aStableWeightIsRead()
{
    QFETCH(SimulatedScale::Format, format);
    QFETCH(double, kg);
    m_scale->setFormat(format);
    m_scale->setWeight(kg);
    const ScaleReading reading = weigh(*m_port);
    QCOMPARE(reading.reason, QString());
    QCOMPARE(reading.kg, kg);
    QVERIFY(m_scale->frame().startsWith(reading.raw));
}

void TestComPort::theDialogsSecondReadingIsTheWeightToo()
{
    m_scale->setWeight(20.125);
    m_port->Open();
    QVERIFY(m_port->WaitForReading());
    m_port->ReadStr(40);
    const QString second = m_port->ReadStr(40);
    QVERIFY(second.size() <= 40);
    QCOMPARE(readScaleText(second.toLatin1(), '\n').kg, 20.125);
}

void TestComPort::anUnstableWeightIsZeroWithAReason()
{
    m_scale->setWeight(20.125, false);
    const ScaleReading reading = weigh(*m_port);
    QCOMPARE(reading.kg, 0.0);
    QCOMPARE(reading.reason, u"Peso instável na balança."_s);
    m_scale->setWeight(-0.15);
    QCOMPARE(weigh(*m_port).reason, u"Peso negativo na balança."_s);
    m_scale->setWeight(1000);
    QCOMPARE(weigh(*m_port).reason, u"Peso acima da capacidade da balança."_s);
}

void TestComPort::aSilentScaleIsZeroWithAReason()
{
    m_scale->pause();
    m_scale->setWeight(20.125);
    const ScaleReading reading = weigh(*m_port);
    QCOMPARE(reading.kg, 0.0);
    QCOMPARE(reading.reason, u"A balança não enviou leitura."_s);
}

void TestComPort::theLatestWeightOfTheWaitCounts()
{
    m_scale->setWeight(20.125);
    QTimer::singleShot(inTheMiddleMs, m_scale.get(), [this] { m_scale->setWeight(18.6); });
    QCOMPARE(weigh(*m_port).kg, 18.6);
    QTimer::singleShot(inTheMiddleMs, m_scale.get(), [this] { m_scale->setWeight(20.125, false); });
    QCOMPARE(weigh(*m_port).kg, 0.0);
}

void TestComPort::aFrameInPiecesIsPutTogether()
{
    m_scale->pause();
    m_scale->setWeight(20.125);
    const QByteArray frame = m_scale->frame();
    QTimer::singleShot(150, m_scale.get(), [this, frame] { m_scale->sendRaw(frame.left(1)); });
    QTimer::singleShot(200, m_scale.get(), [this, frame] { m_scale->sendRaw(frame.mid(1, 9)); });
    QTimer::singleShot(250, m_scale.get(), [this, frame] { m_scale->sendRaw(frame.mid(10)); });
    QCOMPARE(weigh(*m_port).kg, 20.125);
}

void TestComPort::aScaleThatIsAskedAnswers()
{
    m_scale->setFormat(SimulatedScale::Format::ToledoPrt1);
    m_scale->setWeight(20.125);
    QCOMPARE(weigh(*m_port).kg, 0.0);
    ComPortSettings settings = settingsFor(*m_scale);
    settings.request = "\x05";
    m_port->SetSettings(settings);
    QCOMPARE(weigh(*m_port).kg, 20.125);
    m_scale->setWeight(20.125, false);
    QCOMPARE(weigh(*m_port).reason, u"Peso instável na balança."_s);
}

void TestComPort::anAbsentPortIsNamed()
{
    ComPortSettings settings;
    settings.port = u"/dev/balanca-que-nao-existe"_s;
    m_port->SetSettings(settings);
    QCOMPARE(sentenceOf([this] { m_port->Open(); }),
        u"Não foi possível abrir a porta /dev/balanca-que-nao-existe da balança: a porta não existe neste computador."_s);
    QVERIFY(!m_port->Connected());
    QCOMPARE(sentenceOf([this] { m_port->WaitForReading(); }),
        u"A porta /dev/balanca-que-nao-existe da balança não está aberta."_s);

    settings.port = u"COM99"_s;
    m_port->SetSettings(settings);
    QVERIFY(sentenceOf([this] { m_port->Open(); }).contains(u"a porta COM99 da balança"_s));
    QVERIFY(!TCustomComPort::Waiting());
}

void TestComPort::namesOfPortsAreTheSystemsOwn()
{
    ComPortSettings settings;
    QCOMPARE(settings.deviceName(), u"/dev/ttyS0"_s);
    settings.port = u"com12"_s;
    QCOMPARE(settings.deviceName(), u"/dev/ttyS11"_s);
    settings.port = u"/dev/ttyUSB0"_s;
    QCOMPARE(settings.deviceName(), u"/dev/ttyUSB0"_s);
    settings.port = u"COM0"_s;
    QCOMPARE(settings.deviceName(), u"COM0"_s);
}

void TestComPort::whatCameBeforeOpeningNeverComesBack()
{
    m_scale->pause();
    m_scale->setWeight(20.125);
    m_port->Open();
    m_scale->sendRaw(m_scale->frame());
    QTRY_COMPARE(m_port->ReceivedBytes(), m_scale->frame());
    m_scale->sendRaw(m_scale->frame().repeated(3)); // may still be in the system's buffer when the port is opened again
    m_port->Open();
    m_scale->sendRaw(m_scale->frame()); // and this may still be in the adapter's
    QVERIFY(m_port->WaitForReading());
    QCOMPARE(m_port->ReceivedBytes(), QByteArray());
    QCOMPARE(m_port->ReadStr(30), QString());
}

void TestComPort::oldBytesDoNotSpoilTheFirstLine()
{
    m_scale->pause();
    m_port->Open();
    m_scale->sendRaw("  20.10\r  2"); // in the system's buffer when the port is opened again
    QTimer::singleShot(inTheMiddleMs, m_scale.get(), [this] { m_scale->sendRaw("  25,30\r"); });
    QCOMPARE(weigh(*m_port).kg, 25.3);
}

void TestComPort::theWeightOfTheRollBeforeNeverComesBack()
{
    m_scale->setWeight(20.125);
    QCOMPARE(weigh(*m_port).kg, 20.125);
    QCOMPARE(m_port->ReadStr(30), QString());
    m_scale->setWeight(25.3, false);
    QCOMPARE(weigh(*m_port).kg, 0.0);
    m_scale->setWeight(25.3);
    QCOMPARE(weigh(*m_port).kg, 25.3);
    m_scale->pause();
    QCOMPARE(weigh(*m_port).kg, 0.0);
}

void TestComPort::aTailHeardAtOpeningIsNoWeight()
{
    m_scale->pause();
    m_port->Open();
    m_scale->sendRaw("  12"); // of "  125.30", heard while the port settles
    QTimer::singleShot(inTheMiddleMs, m_scale.get(), [this] { m_scale->sendRaw("5.30\r"); });
    QVERIFY(m_port->WaitForReading());
    QCOMPARE(m_port->ReceivedBytes(), QByteArray("5.30\r"));
    QCOMPARE(m_port->ReadStr(30), QString());
    m_scale->sendRaw("  125.30\r");
    QTRY_COMPARE(m_port->ReadStr(30), u"  125.30\r"_s);
}

void TestComPort::thePortIsOpenOnlyBetweenOpenAndClose()
{
    QVERIFY(!m_port->Connected());
    m_port->Open();
    QVERIFY(m_port->Connected());
    QVERIFY(m_scale->hasReader());
    m_port->Open();
    QVERIFY(m_port->Connected());
    m_port->Close();
    m_port->Close();
    QVERIFY(!m_port->Connected());
    QVERIFY(!m_scale->hasReader());
}

void TestComPort::aSecondReadingMeanwhileIsRefused()
{
    m_scale->setWeight(20.125);
    TCustomComPort second;
    second.SetSettings(settingsFor(*m_scale));
    bool isRefused = false;
    QString sentence;
    QTimer::singleShot(inTheMiddleMs, this, [&] {
        isRefused = TCustomComPort::Waiting() && !m_port->WaitForReading() && !second.WaitForReading();
        sentence = sentenceOf([&second] { second.Open(); });
    });
    QCOMPARE(weigh(*m_port).kg, 20.125);
    QVERIFY(isRefused);
    QCOMPARE(sentence, u"A balança já está sendo lida."_s);
    QVERIFY(!TCustomComPort::Waiting());
    QCOMPARE(weigh(second).kg, 20.125);
}

void TestComPort::aPortClosedMeanwhileGivesNothing()
{
    m_port->Open();
    QTimer::singleShot(inTheMiddleMs, m_port.get(), &TCustomComPort::Close);
    QVERIFY(!m_port->WaitForReading());
    QVERIFY(!TCustomComPort::Waiting());
}

void TestComPort::aPortDestroyedMeanwhileGivesNothing()
{
    m_port->Open();
    QTimer::singleShot(10, this, [this] { m_port.reset(); });
    TCustomComPort *const port = m_port.get();
    QVERIFY(!port->WaitForReading());
    QVERIFY(!TCustomComPort::Waiting());
}

void TestComPort::anUnpluggedScaleIsNamed()
{
    const QString name = m_scale->portName();
    m_port->Open();
    QTimer::singleShot(inTheMiddleMs, this, [this] { m_scale.reset(); });
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(sentenceOf([this] { m_port->WaitForReading(); }),
        u"Não foi possível ler a porta %1 da balança: a porta deixou de responder."_s.arg(name));
    QVERIFY(clock.elapsed() < waitMs);
    QVERIFY(!m_port->Connected());
    QVERIFY(!TCustomComPort::Waiting());
}

void TestComPort::theWindowRepaintsMeanwhile()
{
    Witness window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTimer::singleShot(inTheMiddleMs, &window, [&window] { window.update(); });
    weigh(*m_port);
    QVERIFY(window.paintedMeanwhile > 0);
}

// The pointer goes the way of the platform's own input; a test's keys would be delivered at once.
void TestComPort::inputMeanwhileComesAfterwards()
{
    Witness window;
    window.setGeometry(100, 100, 200, 200);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTimer::singleShot(inTheMiddleMs, &window, [&window] { QCursor::setPos(window.geometry().center()); });
    m_scale->setWeight(20.125);
    QCOMPARE(weigh(*m_port).kg, 20.125);
    QCOMPARE(window.movedMeanwhile, 0);
    QCOMPARE(window.movedAfterwards, 0);
    QTRY_VERIFY(window.movedAfterwards > 0);
}

void TestComPort::aFloodIsBounded()
{
    m_scale->pause();
    QTimer flood;
    connect(
        &flood, &QTimer::timeout, m_scale.get(), [this] { m_scale->sendRaw(QByteArray("  25,30\r").repeated(100)); });
    flood.start(5);
    const ScaleReading reading = weigh(*m_port);
    QCOMPARE(reading.kg, 25.3);
    m_port->Open();
    QTRY_COMPARE(m_port->ReceivedBytes().size(), maxScaleStream);
}

void TestComPort::settingsSurviveARoundTrip()
{
    const QTemporaryDir folder;
    QSettings store(folder.filePath(u"qen.ini"_s), QSettings::IniFormat);
    const QString key = scaleSettingsKey;
    m_port->LoadSettings(store, key);
    QCOMPARE(m_port->Settings(), ComPortSettings());

    ComPortSettings settings{u"/dev/ttyUSB1"_s, 4800, QSerialPort::Data7, QSerialPort::EvenParity, QSerialPort::TwoStop,
        QSerialPort::SoftwareControl, 700, QByteArray("\x05\x0D")};
    m_port->SetSettings(settings);
    m_port->StoreSettings(store, key);
    QCOMPARE(store.value(u"Kelta/Parametros/Porta"_s).toString(), u"/dev/ttyUSB1"_s);
    QCOMPARE(store.group(), QString());
    store.sync();

    QSettings sameFile(folder.filePath(u"qen.ini"_s), QSettings::IniFormat);
    TCustomComPort other;
    other.LoadSettings(sameFile, key);
    QCOMPARE(other.Settings(), settings);
    other.LoadSettings(sameFile, u"Outra"_s);
    QCOMPARE(other.Settings(), ComPortSettings());
}

void TestComPort::nonsenseInTheStoreIsSaidWithFileAndKey()
{
    const QTemporaryDir folder;
    QSettings store(folder.filePath(u"qen.ini"_s), QSettings::IniFormat);
    store.beginGroup(scaleSettingsKey);
    store.setValue(u"Porta"_s, u"  "_s);
    store.setValue(u"BaudRate"_s, u"muito"_s);
    store.setValue(u"DataBits"_s, 12);
    store.setValue(u"Paridade"_s, u"par"_s);
    store.setValue(u"StopBits"_s, 3);
    store.setValue(u"ControleFluxo"_s, -1);
    store.setValue(u"Espera"_s, -5);
    store.setValue(u"Pedido"_s, u"xyz"_s);
    store.endGroup();
    m_port->LoadSettings(store, scaleSettingsKey);
    QCOMPARE(m_port->Settings(), ComPortSettings());
    try {
        m_port->Open();
        QFAIL("a port was opened with settings that nobody chose");
    } catch (const EComPort &error) {
        QVERIFY(error.sentence().contains(store.fileName()));
        QVERIFY(error.sentence().contains(u"Kelta/Parametros/BaudRate"_s));
    }
    store.setValue(u"Kelta/Parametros/Espera"_s, 99999);
    m_port->LoadSettings(store, scaleSettingsKey);
    QCOMPARE(m_port->Settings().waitMs, 10000);
}

void TestComPort::aRequestThatIsNoneIsSaid_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("isRequest");
    QTest::newRow("none") << QString() << true;
    QTest::newRow("ENQ") << u"05"_s << true;
    QTest::newRow("two bytes") << u"05 0d"_s << true;
    QTest::newRow("capitals without a blank") << u"050D"_s << true;
    QTest::newRow("half a byte") << u"5"_s << false;
    QTest::newRow("a name") << u"ENQ"_s << false;
}

void TestComPort::aRequestThatIsNoneIsSaid()
{
    QFETCH(QString, stored);
    QFETCH(bool, isRequest);
    const QTemporaryDir folder;
    QSettings store(folder.filePath(u"qen.ini"_s), QSettings::IniFormat);
    store.setValue(u"Kelta/Parametros/Porta"_s, m_scale->portName());
    store.setValue(u"Kelta/Parametros/Pedido"_s, stored);
    m_port->LoadSettings(store, scaleSettingsKey);
    const QString sentence = sentenceOf([this] { m_port->Open(); });
    QCOMPARE(m_port->Connected(), isRequest);
    QCOMPARE(m_port->Settings().request.isEmpty(), !isRequest || stored.isEmpty());
    QCOMPARE(sentence.contains(u"Kelta/Parametros/Pedido"_s), !isRequest);
}

void TestComPort::theSetUpDialogIsFilledWithKeys()
{
    m_port->SetSettings({});
    QTimer::singleShot(0, this, [] {
        QWidget *const dialog = QApplication::activeModalWidget();
        QVERIFY(dialog && QTest::qWaitForWindowActive(dialog));
        const auto type = [dialog](const QString &keys) {
            QTest::keyClicks(dialog->focusWidget(), keys);
            QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab);
        };
        QTest::keyClick(dialog->focusWidget(), Qt::Key_A, Qt::ControlModifier);
        type(u"/dev/ttyUSB7"_s);
        type(u"4"_s); // 4800
        type(u"7"_s);
        type(u"Par"_s);
        type(u"2"_s);
        type(u"X"_s); // XON/XOFF
        QTest::keyClick(dialog->focusWidget(), Qt::Key_A, Qt::ControlModifier);
        type(u"1500"_s);
        type(u"05"_s);
        QCOMPARE(dialog->focusWidget()->objectName(), u"btnTestar"_s);
        QTest::keyClick(dialog, Qt::Key_O, Qt::AltModifier); // back to "Pedido"
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
    });
    QVERIFY(m_port->ShowSetupDialog(nullptr));
    const ComPortSettings expected{u"/dev/ttyUSB7"_s, 4800, QSerialPort::Data7, QSerialPort::EvenParity,
        QSerialPort::TwoStop, QSerialPort::SoftwareControl, 1500, QByteArray("\x05")};
    QCOMPARE(m_port->Settings(), expected);
}

void TestComPort::escapeKeepsTheSettings()
{
    const ComPortSettings before = m_port->Settings();
    QTimer::singleShot(0, this, [] {
        QWidget *const dialog = QApplication::activeModalWidget();
        QVERIFY(dialog);
        QCOMPARE(dialog->windowTitle(), u"Configuração da Balança"_s);
        QTest::keyClicks(dialog->focusWidget(), u"outra"_s);
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    QVERIFY(!m_port->ShowSetupDialog(nullptr));
    QCOMPARE(m_port->Settings(), before);
}

void TestComPort::aWrongRequestIsNotAccepted()
{
    ComPortDialog dialog(m_port->Settings());
    dialog.show();
    auto *const request = dialog.findChild<QLineEdit *>(u"edtPedido"_s);
    auto *const message = dialog.findChild<QLabel *>(u"lbMensagem"_s);
    QTest::keyClicks(request, u"0zx5 0"_s);
    QCOMPARE(request->text(), u"05 0"_s);
    dialog.accept();
    QVERIFY(dialog.isVisible());
    QVERIFY(message->text().contains(u"hexadecimais"_s));
    QTest::keyClicks(request, u"d"_s);
    dialog.accept();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.settings().request, QByteArray("\x05\x0D"));
}

void TestComPort::theTestButtonShowsTheReading_data()
{
    QTest::addColumn<QByteArray>("raw");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("weight");
    QTest::addColumn<QString>("message");
    QTest::newRow("a weight") << QByteArray("  25,30\r") << u"  25,30<CR>"_s << u"25,300 kg"_s << u"Leitura correta."_s;
    QTest::newRow("unstable") << QByteArray("\x02IIIII\x03") << u"<STX>IIIII<ETX>"_s << u"0,000 kg"_s
                              << u"Peso instável na balança."_s;
    QTest::newRow("nothing") << QByteArray() << QString() << u"0,000 kg"_s << u"A balança não enviou leitura."_s;
    QTest::newRow("wrong speed") << QByteArray("\x80\xFE\x1F") << u"<80><FE><1F>"_s << u"0,000 kg"_s
                                 << u"A balança enviou dados que não formam uma leitura. "
                                    u"Verifique a velocidade, os bits e a paridade."_s;
}

void TestComPort::theTestButtonShowsTheReading()
{
    QFETCH(QByteArray, raw);
    m_scale->pause();
    ComPortDialog dialog(m_port->Settings());
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    // The button shows itself pressed for a moment before it reads.
    QTimer::singleShot(2 * inTheMiddleMs, m_scale.get(), [this, raw] { m_scale->sendRaw(raw); });
    QTimer::singleShot(2 * inTheMiddleMs, &dialog, &QDialog::reject); // refused while the scale is read
    QTest::keyClick(&dialog, Qt::Key_T, Qt::AltModifier);
    const auto *const weight = dialog.findChild<QLineEdit *>(u"edtPeso"_s);
    QTRY_VERIFY(!weight->text().isEmpty());
    QVERIFY(dialog.isVisible());
    QTEST(weight->text(), "weight");
    QTEST(dialog.findChild<QLineEdit *>(u"edtTexto"_s)->text(), "text");
    QTEST(dialog.findChild<QLabel *>(u"lbMensagem"_s)->text(), "message");
    QTRY_VERIFY(!m_scale->hasReader());
}

void TestComPort::theTestButtonNamesAnAbsentPort()
{
    ComPortSettings settings;
    settings.port = u"COM99"_s;
    ComPortDialog dialog(settings);
    dialog.findChild<QPushButton *>(u"btnTestar"_s)->click();
    QVERIFY(dialog.findChild<QLabel *>(u"lbMensagem"_s)->text().contains(u"a porta COM99 da balança"_s));
}

void TestComPort::scalesAndPortsLeaveNoFileOpen()
{
    const auto openFiles = [] {
        return QDir(u"/proc/self/fd"_s).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System).size();
    };
    const auto before = openFiles();
    for (int round = 0; round < 100; ++round) {
        SimulatedScale scale;
        TCustomComPort port;
        port.SetSettings(settingsFor(scale));
        port.Open();
        QVERIFY(openFiles() > before);
    }
    QCOMPARE(openFiles(), before);
}

QTEST_MAIN(TestComPort)
#include "tst_comport.moc"
