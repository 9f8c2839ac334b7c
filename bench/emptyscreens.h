// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSize>
#include <QString>

/// Screens of the program's two kinds with nothing in them: what the frame, the toolkit and a window of that size cost.
namespace EmptyScreens {

/// Offers them to the host by their class names.
void registerClasses();
void unregisterClasses();
/// Which of them is of the same kind as the screen.
QString classLike(const QObject *screen);
/// The size in which the next ones come up.
void setSize(QSize size);

} // namespace EmptyScreens
