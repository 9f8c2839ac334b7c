// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

#include <functional>

class QWidget;

/// Calls back once, when the window stands painted on the screen for the first time.
class FirstPaint : public QObject
{
    Q_OBJECT

public:
    /// The object goes with the window.
    FirstPaint(QWidget *window, const std::function<void()> &painted);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    std::function<void()> m_painted;
};
