// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QStringView>

/// The program's own icons, drawn from vectors at the size and density asked for.
namespace Icons {

/// The icon of resources/<name>.svg ("insert", "scale", "app"). A disabled icon is drawn paler.
/// A name without a drawing gives a null icon and a warning.
QIcon get(QStringView name);

} // namespace Icons
