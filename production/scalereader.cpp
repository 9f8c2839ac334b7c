// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "production/scalereader.h"

#include "module/host_services/funcoes.h"
#include "module/host_services/scaleframe.h"

#include <QSettings>

using namespace Qt::StringLiterals;

ScaleReader::Weight ScaleReader::read(const Reading &reading)
{
    if (TCustomComPort::Waiting())
        return {0, {}, false, true};
    QString text;
    bool heard = false;
    try {
        m_port.LoadSettings(Host::current().settings(), scaleSettingsKey);
        m_port.Close();
        m_port.Open();
        if (!m_port.WaitForReading())
            return {0, {}, false, true};
        for (int time = 0; time < reading.times; ++time)
            text = m_port.ReadStr(reading.maxCharacters);
        heard = !m_port.ReceivedBytes().isEmpty();
    } catch (const EComPort &error) {
        m_port.Close();
        return {0, error.sentence(), true, false};
    }
    m_port.Close();
    Weight weight;
    weight.kg = Funcoes::PegaPesoBalanca(text, QChar::fromLatin1(reading.terminator));
    if (text.isEmpty() && heard) // a wrong speed, most often
        weight.hint = u"A balança enviou dados que não formam uma leitura. F10 configura."_s;
    else if (weight.kg <= 0)
        weight.hint = readScaleText(text.toLatin1(), reading.terminator).reason;
    return weight;
}

void ScaleReader::setUp(QWidget *parent)
{
    QSettings &settings = Host::current().settings();
    m_port.LoadSettings(settings, scaleSettingsKey);
    if (m_port.ShowSetupDialog(parent))
        m_port.StoreSettings(settings, scaleSettingsKey);
}
