// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QObject>

/// Who is busy, and the wait cursor for as long as somebody is. A caller that dies is no longer busy.
class BusyMarker : public QObject
{
    Q_OBJECT

public:
    explicit BusyMarker(QObject *parent = nullptr);
    ~BusyMarker() override;

    /// Counted per caller; null is a caller like any other. An end without a beginning does nothing.
    void set(bool busy, QObject *who);
    void clear();
    bool isBusy() const { return !m_callers.isEmpty(); }

signals:
    void changed(bool busy);

private:
    void forget(QObject *who);
    void show();

    QHash<QObject *, int> m_callers;
    bool m_shown = false;
};
