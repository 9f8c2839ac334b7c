// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/measure.h"

#include <QThread>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// Nobody answers a box faster; meanwhile the engine's process has gone to rest.
constexpr int restMs = 20;

constexpr double nanosecondsPerMillisecond = 1e6;

/// Fills the processor's caches with something else.
void coolDown()
{
    constexpr qsizetype size = 64 << 20;
    constexpr qsizetype cacheLine = 64;
    static QByteArray memory(size, '\0');
    char *bytes = memory.data();
    for (qsizetype i = 0; i < size; i += cacheLine)
        ++bytes[i];
}

double medianOf(QVector<double> values)
{
    if (values.isEmpty())
        return 0;
    std::sort(values.begin(), values.end());
    const qsizetype middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

} // namespace

void Clockwork::start()
{
    m_counted = 0;
    resume();
}

void Clockwork::pause()
{
    if (m_running)
        m_counted += m_timer.nsecsElapsed();
    m_running = false;
}

void Clockwork::resume()
{
    QThread::msleep(restMs);
    coolDown();
    m_running = true;
    m_timer.start();
}

double Clockwork::milliseconds() const
{
    const qint64 counted = m_counted + (m_running ? m_timer.nsecsElapsed() : 0);
    return double(counted) / nanosecondsPerMillisecond;
}

double Times::median() const
{
    return medianOf(m_runs);
}

double Times::spread() const
{
    QVector<double> distances;
    for (const double run : m_runs)
        distances.append(std::abs(run - median()));
    return medianOf(distances);
}

void Comparison::add(double floorMs, double programMs)
{
    floor.add(floorMs);
    program.add(programMs);
}

double Comparison::ratio() const
{
    return floor.median() > 0 ? program.median() / floor.median() : std::numeric_limits<double>::infinity();
}
