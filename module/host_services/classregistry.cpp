// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/classregistry.h"

#include <algorithm>
#include <list>

namespace {

std::list<ScreenClass> &screens()
{
    static std::list<ScreenClass> list;
    return list;
}

} // namespace

namespace ClassRegistry {

void RegisterClass(const ScreenClass &screen)
{
    UnRegisterClass(screen.name);
    screens().push_back(screen);
}

void UnRegisterClass(const QString &name)
{
    screens().remove_if([&](const ScreenClass &screen) { return screen.name == name; });
}

const ScreenClass *find(const QString &name)
{
    const auto found = std::find_if(
        screens().begin(), screens().end(), [&](const ScreenClass &screen) { return screen.name == name; });
    return found == screens().end() ? nullptr : &*found;
}

QStringList names()
{
    QStringList result;
    for (const ScreenClass &screen : screens())
        result.append(screen.name);
    return result;
}

} // namespace ClassRegistry
