// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVector>

#include <functional>

/// What one piece of work takes at its peak, beside a smaller one of the same kind.
struct Memory
{
    QString what;
    double smaller = 0; ///< megabytes
    double larger = 0; ///< megabytes
    double atMost = 0; ///< the ratio that is still good

    double ratio() const; ///< infinite when the smaller work took nothing: then nothing was measured
    bool isGood() const { return ratio() <= atMost; }
};

/// Megabytes by which the process grows at most while it works, as the kernel counts its resident pages.
double peakDuring(const std::function<void()> &work);
void printMemory(const QVector<Memory> &rows);
