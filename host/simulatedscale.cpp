// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/simulatedscale.h"

#include <array>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr int tickMs = 20;
constexpr int ticksPerFrame = 5;
constexpr char stx = 0x02;
constexpr char etx = 0x03;
constexpr char enq = 0x05;
constexpr int maxGrams = 999999;

[[noreturn]] void throwSystemError(int master)
{
    const int code = errno;
    if (master >= 0)
        close(master);
    throw std::system_error(code, std::generic_category(), "pseudo-terminal of the simulated scale");
}

/// Opens the other side once and closes it: from then on the system tells whether someone has it open. Raw, because an
/// echo would bring every frame back.
bool prepare(const char *portName)
{
    const int port = open(portName, O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (port < 0)
        return false;
    termios attributes{};
    bool isRaw = tcgetattr(port, &attributes) == 0;
    if (isRaw) {
        cfmakeraw(&attributes);
        isRaw = tcsetattr(port, TCSANOW, &attributes) == 0;
    }
    close(port);
    return isRaw;
}

QByteArray paddedDigits(int number, int width)
{
    return QByteArray::number(number).rightJustified(width, '0');
}

} // namespace

SimulatedScale::SimulatedScale(QObject *parent)
    : QObject(parent)
{
    m_master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    std::array<char, 128> name{};
    if (m_master < 0 || grantpt(m_master) != 0 || unlockpt(m_master) != 0
        || ptsname_r(m_master, name.data(), name.size()) != 0 || !prepare(name.data()))
        throwSystemError(m_master);
    m_portName = QString::fromLocal8Bit(name.data());
    connect(&m_clock, &QTimer::timeout, this, &SimulatedScale::tick);
    m_clock.start(tickMs);
}

SimulatedScale::~SimulatedScale()
{
    close(m_master);
}

void SimulatedScale::setWeight(double kg, bool stable)
{
    m_kg = kg;
    m_stable = stable;
}

bool SimulatedScale::hasReader() const
{
    pollfd state{m_master, 0, 0};
    return poll(&state, 1, 0) >= 0 && (state.revents & POLLHUP) == 0;
}

void SimulatedScale::sendRaw(const QByteArray &bytes)
{
    // A reader that does not read loses frames, as with a real scale.
    if (hasReader() && write(m_master, bytes.constData(), size_t(bytes.size())) < 0 && errno != EAGAIN && errno != EIO)
        qWarning("simulated scale: %s", std::generic_category().message(errno).c_str());
}

void SimulatedScale::tick()
{
    if (!hasReader())
        return;
    std::array<char, 64> request{};
    const ssize_t received = read(m_master, request.data(), request.size());
    for (ssize_t i = 0; i < received; ++i)
        if (request[size_t(i)] == enq)
            sendRaw(frame());
    m_ticks = (m_ticks + 1) % ticksPerFrame;
    if (m_ticks == 0 && m_streams && m_format != Format::ToledoPrt1)
        sendRaw(frame());
}

QByteArray SimulatedScale::frame() const
{
    switch (m_format) {
    case Format::ToledoPrt1:
        return toledoPrt1();
    case Format::PlainCr:
        return plainCr();
    case Format::ToledoP03:
        break;
    }
    return toledoP03();
}

QByteArray SimulatedScale::toledoP03() const
{
    const long grams = std::lround(std::abs(m_kg) * 1000);
    const bool isOver = grams > maxGrams;
    QByteArray frame{1, stx};
    frame += char(0x20 | 0x08 | 0x05); // increment 1, three decimals
    frame += char(0x30 | (m_kg < 0 ? 0x02 : 0) | (isOver ? 0x04 : 0) | (m_stable ? 0 : 0x08)); // kg, gross
    frame += ' ';
    frame += paddedDigits(isOver ? 0 : int(grams), 6);
    frame += paddedDigits(0, 6);
    frame += '\r';
    int sum = 0;
    for (const char byte : frame)
        sum += byte;
    frame += char((128 - sum % 128) % 128);
    return frame;
}

QByteArray SimulatedScale::toledoPrt1() const
{
    const long grams = std::lround(m_kg * 1000);
    QByteArray digits;
    if (!m_stable)
        digits = "IIIII";
    else if (grams < 0)
        digits = "NNNNN";
    else if (grams > 99999)
        digits = "SSSSS";
    else
        digits = paddedDigits(int(grams), 5);
    return stx + digits + etx;
}

QByteArray SimulatedScale::plainCr() const
{
    if (!m_stable)
        return {};
    return QByteArray::number(m_kg, 'f', 3).rightJustified(8, ' ') + '\r';
}
