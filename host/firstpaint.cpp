// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/firstpaint.h"

#include <QEvent>
#include <QWidget>

FirstPaint::FirstPaint(QWidget *window, const std::function<void()> &painted)
    : QObject(window)
    , m_painted(painted)
{
    window->installEventFilter(this);
}

bool FirstPaint::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint) {
        watched->removeEventFilter(this);
        // The window is painted before what stands in it: told from the event loop, all of it is there.
        QMetaObject::invokeMethod(this, m_painted, Qt::QueuedConnection);
    }
    return false;
}
