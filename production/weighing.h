// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "production/scalereader.h"

class QLabel;
class TCurrencyEdit;

/// The weight field of a write-off screen, the scale that fills it and the hint beside it.
class Weighing
{
public:
    /// The controls belong to the screen, and the screen owns this.
    Weighing(QWidget *screen, TCurrencyEdit *weight, QLabel *hint);

    /// Puts the weight into the field; 0, and why, when there is none. That the port is missing is said in a box once.
    /// The screen may be gone when this returns.
    void read(const ScaleReader::Reading &reading);
    /// Shows the port's set-up dialog.
    void setUp();
    void showHint(const QString &text, bool warning = false);

private:
    QWidget *m_screen;
    TCurrencyEdit *m_weight;
    QLabel *m_hint;
    ScaleReader m_scale;
    bool m_portFailureShown = false;
};
