// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/package.h"

Unit::Unit(const ScreenClass &screen)
    : m_screen(screen)
{
}

void Unit::initialize()
{
    if (m_starts++ == 0)
        ClassRegistry::RegisterClass(m_screen);
}

void Unit::finalize()
{
    if (m_starts > 0 && --m_starts == 0)
        ClassRegistry::UnRegisterClass(m_screen.name);
}

Package::Package(const QVector<Unit *> &units)
    : m_units(units)
{
}

void Package::initialize()
{
    for (Unit *unit : m_units)
        unit->initialize();
}

void Package::finalize()
{
    for (qsizetype i = m_units.size() - 1; i >= 0; --i)
        m_units[i]->finalize();
}
