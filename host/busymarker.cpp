// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/busymarker.h"

#include <QApplication>

BusyMarker::BusyMarker(QObject *parent)
    : QObject(parent)
{
}

BusyMarker::~BusyMarker()
{
    clear();
}

void BusyMarker::set(bool busy, QObject *who)
{
    if (busy) {
        if (++m_callers[who] == 1 && who)
            connect(who, &QObject::destroyed, this, &BusyMarker::forget);
    } else if (m_callers.contains(who) && --m_callers[who] == 0) {
        if (who)
            disconnect(who, &QObject::destroyed, this, &BusyMarker::forget);
        m_callers.remove(who);
    }
    show();
}

void BusyMarker::clear()
{
    for (auto caller = m_callers.keyBegin(); caller != m_callers.keyEnd(); ++caller) {
        if (*caller)
            disconnect(*caller, &QObject::destroyed, this, &BusyMarker::forget);
    }
    m_callers.clear();
    show();
}

void BusyMarker::forget(QObject *who)
{
    m_callers.remove(who);
    show();
}

void BusyMarker::show()
{
    if (m_shown == isBusy())
        return;
    m_shown = isBusy();
    if (m_shown)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
    emit changed(m_shown);
}
