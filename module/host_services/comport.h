// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/errors.h"

#include <QByteArray>
#include <QObject>
#include <QSerialPort>
#include <QString>

class QSettings;
class QWidget;

/// Where every screen of a station finds the settings of its scale.
inline constexpr QLatin1StringView scaleSettingsKey("Kelta/Parametros");

/// A port that cannot be opened or stopped answering.
class EComPort : public EQen
{
public:
    using EQen::EQen;
};

struct ComPortSettings
{
    QString port = QStringLiteral("COM1"); ///< "COM1" or the system's own name for it
    qint32 baudRate = QSerialPort::Baud9600;
    QSerialPort::DataBits dataBits = QSerialPort::Data8;
    QSerialPort::Parity parity = QSerialPort::NoParity;
    QSerialPort::StopBits stopBits = QSerialPort::OneStop;
    QSerialPort::FlowControl flowControl = QSerialPort::NoFlowControl;
    int waitMs = 1000; ///< how long a reading gathers bytes, 200 to 10000 ms
    QByteArray request; ///< sent at the start of a reading, for scales that answer only then; empty sends nothing

    bool operator==(const ComPortSettings &) const = default;

    /// The port of a scale that the program itself plays, while it does.
    static inline const QString simulatedPort = QStringLiteral("SIMULADA");
    static void setSimulatedDevice(const QString &device); ///< empty: there is none
    static QString simulatedDevice();

    /// The system's name of the port: "COM1" is "/dev/ttyS0" on Linux, "SIMULADA" the device of the simulated scale,
    /// anything else is as typed.
    QString deviceName() const;
};

/// The serial port of the scale. It is open only while a weight is read:
/// LoadSettings, Open, WaitForReading, ReadStr, Close.
class TCustomComPort : public QObject
{
    Q_OBJECT

public:
    explicit TCustomComPort(QObject *parent = nullptr);
    ~TCustomComPort() override;

    const ComPortSettings &Settings() const { return m_settings; }
    /// Counts from the next Open.
    void SetSettings(const ComPortSettings &settings);

    /// Opens raw, with DTR and RTS off, and drops whatever came before: a weight of the roll before never comes back.
    /// Throws EComPort, also while any port of the program waits for a reading.
    void Open();
    void Close();
    bool Connected() const;

    /// Gathers bytes for the configured time. Windows repaint meanwhile; what the user types is kept and delivered
    /// afterwards. The first 50 ms are only listened to: they may bring the rest of what the scale sent earlier, and
    /// their silence shows that the next byte begins a frame. Then the request goes out. False when another reading is
    /// under way or the port was closed meanwhile. Throws EComPort when the port is not open or fails.
    bool WaitForReading();
    /// Whether any port of the program waits for a reading.
    static bool Waiting();

    /// The latest whole frames that came since Open, at most `maxCharacters` of them, starting where a frame starts, as
    /// Latin-1 text. Empty when there is no whole frame. Reading takes nothing away.
    QString ReadStr(int maxCharacters);
    /// Everything that came since Open, bounded, for the set-up dialog.
    QByteArray ReceivedBytes();

    /// What is missing in the store is the default. What makes no sense is the default for the set-up dialog, and
    /// Open() refuses to work with it: its message names file and key.
    void LoadSettings(QSettings &store, const QString &key);
    void StoreSettings(QSettings &store, const QString &key) const;
    /// Lets the user change the settings; closes the port before. False when the user gave up.
    bool ShowSetupDialog(QWidget *parent);

private:
    void drain();
    void beginListening();
    [[noreturn]] void fail();

    ComPortSettings m_settings;
    QSerialPort m_port;
    QByteArray m_received;
    bool m_startsAtBoundary = false;
    QString m_wrongSetting; ///< the sentence that says which one; empty: none
};
