// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QColor;
class QWidget;

namespace Look {

/// Gives every button below the widget the icon that its property "icon_name" names.
void addIcons(QWidget *root);

/// The background of a row in which something is amiss.
QColor amiss();

} // namespace Look
