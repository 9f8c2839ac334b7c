// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QVector>

/// A clock that can be stopped for what does not belong to the measured time.
///
/// It goes on with the engine at rest and the processor's caches cold: rolls come once a minute, and a floor that
/// repeats its statements in a row would otherwise find them warm from the time before.
class Clockwork
{
public:
    void start();
    void pause();
    void resume();
    bool isRunning() const { return m_running; }
    double milliseconds() const; ///< without the pauses

private:
    QElapsedTimer m_timer;
    qint64 m_counted = 0; // nanoseconds
    bool m_running = false;
};

/// Milliseconds of the repeated runs of one thing.
class Times
{
public:
    void add(double milliseconds) { m_runs.append(milliseconds); }
    bool isEmpty() const { return m_runs.isEmpty(); }
    double median() const; ///< 0 without runs
    double spread() const; ///< the median distance from the median

private:
    QVector<double> m_runs;
};

/// One thing that the program does, beside what it cannot do without.
struct Comparison
{
    QString what;
    QString engine;
    double atMost = 0; ///< the ratio that is still good
    Times floor;
    Times program;

    void add(double floorMs, double programMs);
    double ratio() const;
    bool isGood() const { return ratio() <= atMost; }
};

/// How much is measured.
struct Effort
{
    int warmUps; ///< runs before the first that counts
    int runs;
    int slowRuns; ///< of what takes seconds
    int processes; ///< starts of the whole program
    int fewOrders; ///< of the first company
    int manyOrders; ///< of the second one
    int rollsPerOrder; ///< of the second one
    int reportLines;

    static Effort whole() { return {10, 60, 3, 15, 500, 50'000, 20, 10'000}; }
    /// Shows that everything runs; its times say nothing.
    static Effort smoke() { return {1, 2, 1, 1, 400, 800, 3, 500}; }
};
