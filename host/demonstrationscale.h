// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/simulatedscale.h"

#include <QObject>
#include <QTimer>

#include <random>

class QSettings;

/// The scale of a mill that is only shown: another roll lies on it each time it was read.
class DemonstrationScale : public QObject
{
    Q_OBJECT

public:
    /// Offers itself as the port "SIMULADA", and is the port of a station that has none set yet.
    explicit DemonstrationScale(QSettings &settings);
    ~DemonstrationScale() override;

    double kg() const { return m_kg; }

private:
    void nextRoll();
    void watch();

    SimulatedScale m_scale;
    QTimer m_clock;
    std::mt19937 m_random;
    double m_kg = 0;
    bool m_wasRead = false;
};
