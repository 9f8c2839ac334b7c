// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

/// A screen class as the host knows it.
struct ScreenClass
{
    QString name; ///< "TfmMalhaOF"
    QString caption; ///< title of the screen and of its menu entry
    std::function<QWidget *()> create; ///< a new screen, ready to be shown; the caller owns it until it closes itself
};

/// The screens that loaded packages offer, by class name.
namespace ClassRegistry {

void RegisterClass(const ScreenClass &screen);
void UnRegisterClass(const QString &name);
const ScreenClass *find(const QString &name); ///< null when no loaded package has it
QStringList names(); ///< in the order in which they were registered

} // namespace ClassRegistry
