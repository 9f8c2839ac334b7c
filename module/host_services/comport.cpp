// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/host_services/comport.h"

#include "module/host_services/comportdialog.h"
#include "module/host_services/scaleframe.h"

#include <QEventLoop>
#include <QPointer>
#include <QRegularExpression>
#include <QScopedValueRollback>
#include <QSettings>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int settleMs = 50;
constexpr int shortestWaitMs = 200;
constexpr int longestWaitMs = 10000;

bool anyPortWaits = false;

QString reasonOf(const QSerialPort &port)
{
    switch (port.error()) {
    case QSerialPort::DeviceNotFoundError:
        return u"a porta não existe neste computador."_s;
    case QSerialPort::PermissionError:
        return u"sem permissão, ou em uso por outro programa."_s;
    case QSerialPort::UnsupportedOperationError:
        return u"a porta não aceita esta configuração."_s;
    case QSerialPort::ResourceError:
        return u"a porta deixou de responder."_s;
    default:
        return u"erro do sistema."_s;
    }
}

/// The numbers of a store that were read, and the first key whose value was none of those allowed.
class NumberReader
{
public:
    explicit NumberReader(const QSettings &store)
        : m_store(store)
    {
    }

    template <typename T> void read(const QString &name, std::initializer_list<T> allowed, T &into)
    {
        read(name, [&](int value) {
            for (const T choice : allowed) {
                if (value == int(choice)) {
                    into = choice;
                    return true;
                }
            }
            return false;
        });
    }

    template <typename Take> void read(const QString &name, const Take &take)
    {
        const QString text = m_store.value(name).toString().trimmed();
        bool isNumber = false;
        const int value = text.toInt(&isNumber);
        if (!text.isEmpty() && (!isNumber || !take(value)))
            refuse(name);
    }

    void refuse(const QString &name)
    {
        if (wrongKey.isEmpty())
            wrongKey = m_store.group() + u'/' + name;
    }

    QString wrongKey;

private:
    const QSettings &m_store;
};

/// Takes positive numbers alone.
auto positive(int &into)
{
    return [&into](int value) {
        if (value > 0)
            into = value;
        return value > 0;
    };
}

QString &playedDevice()
{
    static QString device;
    return device;
}

} // namespace

void ComPortSettings::setSimulatedDevice(const QString &device)
{
    playedDevice() = device;
}

QString ComPortSettings::simulatedDevice()
{
    return playedDevice();
}

QString ComPortSettings::deviceName() const
{
    if (port.compare(simulatedPort, Qt::CaseInsensitive) == 0 && !playedDevice().isEmpty())
        return playedDevice();
#ifdef Q_OS_LINUX
    static const QRegularExpression dosName(u"^COM([1-9][0-9]?)$"_s, QRegularExpression::CaseInsensitiveOption);
    if (const auto match = dosName.match(port); match.hasMatch())
        return u"/dev/ttyS"_s + QString::number(match.captured(1).toInt() - 1);
#endif
    return port;
}

TCustomComPort::TCustomComPort(QObject *parent)
    : QObject(parent)
{
    connect(&m_port, &QSerialPort::readyRead, this, &TCustomComPort::drain);
}

TCustomComPort::~TCustomComPort()
{
    Close();
}

void TCustomComPort::SetSettings(const ComPortSettings &settings)
{
    m_settings = settings;
    m_settings.waitMs = std::clamp(settings.waitMs, shortestWaitMs, longestWaitMs);
    m_wrongSetting.clear();
}

void TCustomComPort::Open()
{
    if (anyPortWaits)
        throw EComPort(u"A balança já está sendo lida."_s);
    Close();
    if (!m_wrongSetting.isEmpty())
        throw EComPort(m_wrongSetting);
    m_port.setPortName(m_settings.deviceName());
    m_port.setBaudRate(m_settings.baudRate);
    m_port.setDataBits(m_settings.dataBits);
    m_port.setParity(m_settings.parity);
    m_port.setStopBits(m_settings.stopBits);
    m_port.setFlowControl(m_settings.flowControl);
    if (!m_port.open(QIODevice::ReadWrite))
        fail();
    // Lines that a pseudo-terminal and some adapters do not have.
    m_port.setDataTerminalReady(false);
    if (m_settings.flowControl != QSerialPort::HardwareControl)
        m_port.setRequestToSend(false);
    m_port.clearError();
    beginListening();
}

void TCustomComPort::Close()
{
    if (m_port.isOpen())
        m_port.close();
    m_received.clear();
}

bool TCustomComPort::Connected() const
{
    return m_port.isOpen();
}

bool TCustomComPort::Waiting()
{
    return anyPortWaits;
}

bool TCustomComPort::WaitForReading()
{
    if (anyPortWaits)
        return false;
    if (!m_port.isOpen())
        throw EComPort(u"A porta %1 da balança não está aberta."_s.arg(m_settings.port));
    const QScopedValueRollback waits(anyPortWaits, true);
    const QPointer<TCustomComPort> self(this);
    QEventLoop loop;
    QTimer::singleShot(m_settings.waitMs, &loop, &QEventLoop::quit);
    QTimer::singleShot(settleMs, &loop, [this, self] {
        if (!self || !m_port.isOpen())
            return;
        drain();
        // A scale that was asked begins its answer with a whole frame.
        const bool isAnswer = !m_settings.request.isEmpty();
        const bool wasSilent = m_received.isEmpty();
        beginListening();
        m_startsAtBoundary = isAnswer || wasSilent;
        if (isAnswer)
            m_port.write(m_settings.request);
    });
    connect(&m_port, &QSerialPort::errorOccurred, &loop, [&loop](QSerialPort::SerialPortError error) {
        if (error == QSerialPort::ResourceError)
            loop.quit();
    });
    connect(&m_port, &QSerialPort::aboutToClose, &loop, &QEventLoop::quit);
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (!self || !m_port.isOpen())
        return false;
    if (m_port.error() == QSerialPort::ResourceError)
        fail();
    return true;
}

QString TCustomComPort::ReadStr(int maxCharacters)
{
    drain();
    return QString::fromLatin1(lastWholeFrames(m_received, maxCharacters, m_startsAtBoundary));
}

QByteArray TCustomComPort::ReceivedBytes()
{
    drain();
    return m_received;
}

void TCustomComPort::LoadSettings(QSettings &store, const QString &key)
{
    ComPortSettings settings;
    store.beginGroup(key);
    if (const QString port = store.value(u"Porta"_s).toString().trimmed(); !port.isEmpty())
        settings.port = port;
    NumberReader numbers(store);
    numbers.read(u"BaudRate"_s, positive(settings.baudRate));
    numbers.read(u"DataBits"_s, {QSerialPort::Data7, QSerialPort::Data8}, settings.dataBits);
    numbers.read(u"Paridade"_s,
        {QSerialPort::NoParity, QSerialPort::EvenParity, QSerialPort::OddParity, QSerialPort::MarkParity,
            QSerialPort::SpaceParity},
        settings.parity);
    numbers.read(u"StopBits"_s, {QSerialPort::OneStop, QSerialPort::TwoStop}, settings.stopBits);
    numbers.read(u"ControleFluxo"_s,
        {QSerialPort::NoFlowControl, QSerialPort::HardwareControl, QSerialPort::SoftwareControl}, settings.flowControl);
    numbers.read(u"Espera"_s, positive(settings.waitMs));
    const QString request = store.value(u"Pedido"_s).toString().remove(u' ');
    settings.request = QByteArray::fromHex(request.toLatin1());
    if (request.compare(QString::fromLatin1(settings.request.toHex()), Qt::CaseInsensitive) != 0) {
        settings.request.clear();
        numbers.refuse(u"Pedido"_s);
    }
    store.endGroup();
    SetSettings(settings);
    if (!numbers.wrongKey.isEmpty()) {
        m_wrongSetting = u"Configuração da balança: no arquivo \"%1\" a chave \"%2\" está errada. F10 configura."_s.arg(
            store.fileName(), numbers.wrongKey);
    }
}

void TCustomComPort::StoreSettings(QSettings &store, const QString &key) const
{
    store.beginGroup(key);
    store.setValue(u"Porta"_s, m_settings.port);
    store.setValue(u"BaudRate"_s, m_settings.baudRate);
    store.setValue(u"DataBits"_s, int(m_settings.dataBits));
    store.setValue(u"Paridade"_s, int(m_settings.parity));
    store.setValue(u"StopBits"_s, int(m_settings.stopBits));
    store.setValue(u"ControleFluxo"_s, int(m_settings.flowControl));
    store.setValue(u"Espera"_s, m_settings.waitMs);
    store.setValue(u"Pedido"_s, QString::fromLatin1(m_settings.request.toHex(' ')));
    store.endGroup();
}

bool TCustomComPort::ShowSetupDialog(QWidget *parent)
{
    Close();
    ComPortDialog dialog(m_settings, parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    SetSettings(dialog.settings());
    return true;
}

void TCustomComPort::drain()
{
    if (!m_port.isOpen())
        return;
    m_received += m_port.readAll();
    if (m_received.size() > maxScaleStream) {
        m_received = m_received.right(maxScaleStream);
        m_startsAtBoundary = false;
    }
}

/// Forgets what came so far.
void TCustomComPort::beginListening()
{
    m_port.clear(QSerialPort::Input);
    m_received.clear();
    m_startsAtBoundary = false;
}

/// Closes the port and says which one it was and why.
void TCustomComPort::fail()
{
    const QString reason = reasonOf(m_port);
    const QString details = m_port.errorString();
    const bool wasOpen = m_port.isOpen();
    Close();
    const QString sentence = wasOpen ? u"Não foi possível ler a porta %1 da balança: %2"_s
                                     : u"Não foi possível abrir a porta %1 da balança: %2"_s;
    throw EComPort(sentence.arg(m_settings.port, reason), details);
}
