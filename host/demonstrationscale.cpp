// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/demonstrationscale.h"

#include "module/host_services/comport.h"

#include <QSettings>

using namespace Qt::StringLiterals;

namespace {

constexpr int lightestRoll = 18200; // grams
constexpr int heaviestRoll = 21800;
constexpr int scaleStep = 10; // the scale shows full ten grams

} // namespace

DemonstrationScale::DemonstrationScale(QSettings &settings)
    : m_random(std::random_device{}())
{
    ComPortSettings::setSimulatedDevice(m_scale.portName());
    TCustomComPort port;
    port.LoadSettings(settings, scaleSettingsKey);
    if (port.Settings() == ComPortSettings()) {
        ComPortSettings simulated;
        simulated.port = ComPortSettings::simulatedPort;
        port.SetSettings(simulated);
        port.StoreSettings(settings, scaleSettingsKey);
    }
    nextRoll();
    connect(&m_clock, &QTimer::timeout, this, &DemonstrationScale::watch);
    m_clock.start(50);
}

DemonstrationScale::~DemonstrationScale()
{
    ComPortSettings::setSimulatedDevice({});
}

void DemonstrationScale::watch()
{
    const bool reading = m_scale.hasReader();
    if (m_wasRead && !reading)
        nextRoll();
    m_wasRead = reading;
}

void DemonstrationScale::nextRoll()
{
    const int steps = (heaviestRoll - lightestRoll) / scaleStep;
    m_kg = (lightestRoll + scaleStep * int(m_random() % unsigned(steps))) / 1000.0;
    m_scale.setWeight(m_kg);
}
