// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QString;
class QWidget;

namespace Keys {

/// Presses the keys of a text, accented letters too.
void type(QWidget *widget, const QString &text);

} // namespace Keys
