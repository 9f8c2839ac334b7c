// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>

/// A scale without a scale: a pseudo-terminal that the serial port reads like any other port. It sends a frame every
/// 100 ms while someone has its port open, and one more for every ENQ (05 hex) that comes.
class SimulatedScale : public QObject
{
    Q_OBJECT

public:
    enum class Format {
        ToledoP03, ///< with tare and checksum
        ToledoPrt1, ///< answers only when asked
        PlainCr, ///< "  25.300" CR; silent while the weight moves
    };

    /// Throws std::system_error when the system gives no pseudo-terminal.
    explicit SimulatedScale(QObject *parent = nullptr);
    ~SimulatedScale() override;

    /// The name to set as port, such as "/dev/pts/3".
    QString portName() const { return m_portName; }

    void setFormat(Format format) { m_format = format; }
    /// `kg` may be negative; above 999.999 the scale says that it is over its capacity.
    void setWeight(double kg, bool stable = true);

    /// Stops and restarts the frames that nobody asked for; ENQ is answered all the same.
    void pause() { m_streams = false; }
    void resume() { m_streams = true; }

    /// Whether someone has the port open.
    bool hasReader() const;
    /// Sends these bytes at once. Without a reader they are lost.
    void sendRaw(const QByteArray &bytes);
    /// The frame for the weight on the scale; empty while the format has nothing to say.
    QByteArray frame() const;

private:
    void tick();
    QByteArray toledoP03() const;
    QByteArray toledoPrt1() const;
    QByteArray plainCr() const;

    int m_master = -1;
    QString m_portName;
    QTimer m_clock;
    int m_ticks = 0;
    bool m_streams = true;
    Format m_format = Format::ToledoP03;
    double m_kg = 0;
    bool m_stable = true;
};
