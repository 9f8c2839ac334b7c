// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/comport.h"

#include <QString>

class QWidget;

/// The scale of a write-off station. Its port is open only while a weight is read.
class ScaleReader
{
public:
    /// How a screen reads its scale.
    struct Reading
    {
        int maxCharacters;
        char terminator; ///< ends one frame
        int times = 1; ///< the last one counts
    };

    struct Weight
    {
        double kg = 0;
        QString hint; ///< why there is no weight, for the user; empty with a weight
        bool portFailed = false;
        bool refused = false; ///< another reading was under way; nothing was read
    };

    /// Waits as long as the port's settings say, then reads.
    Weight read(const Reading &reading);
    /// Shows the set-up dialog and stores its settings; every screen of the station uses them.
    void setUp(QWidget *parent);

private:
    TCustomComPort m_port;
};
