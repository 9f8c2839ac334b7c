// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "production/scalereader.h"

#include "module/host_services/funcoes.h"
#include "module/host_services/scaleframe.h"

#include <QSettings>

using namespace Qt::StringLiterals;

ScaleReader::Weight ScaleReader::read(int maxCharacters, char terminator)
{
    if (TCustomComPort::Waiting())
        return {0, {}, false, true};
    QString text;
    try {
        m_port.LoadSettings(Host::current().settings(), scaleSettingsKey);
        m_port.Close();
        m_port.Open();
        if (!m_port.WaitForReading())
            return {0, {}, false, true};
        text = m_port.ReadStr(maxCharacters);
    } catch (const EComPort &error) {
        m_port.Close();
        return {0, error.sentence(), true, false};
    }
    m_port.Close();
    Weight weight;
    weight.kg = Funcoes::PegaPesoBalanca(text, QChar::fromLatin1(terminator));
    if (weight.kg <= 0)
        weight.hint = readScaleText(text.toLatin1(), terminator).reason;
    return weight;
}

void ScaleReader::setUp(QWidget *parent)
{
    QSettings &settings = Host::current().settings();
    m_port.LoadSettings(settings, scaleSettingsKey);
    if (m_port.ShowSetupDialog(parent))
        m_port.StoreSettings(settings, scaleSettingsKey);
}
