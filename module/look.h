// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace Look {

/// Gives every button below the widget the icon that its property "icon_name" names.
void addIcons(QWidget *root);

} // namespace Look
