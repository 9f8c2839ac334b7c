// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

/// What stands on the command line.
struct Options
{
    QString settings; ///< file; empty: the usual one
    QString database; ///< file or address; empty: what the settings name
    QString user; ///< with pictures and demonstrate only
    int company = 0; ///< with pictures and demonstrate only; 0: company 1
    QString pictures; ///< folder, or empty
    QString demonstrate; ///< folder, or empty
    bool exitAtLogin = false; ///< end when the login window stands painted: how long a start takes is measured by it
    bool help = false;
    bool version = false;

    /// Nobody sits before the program: it draws off screen and asks for nothing.
    bool isUnattended() const { return !pictures.isEmpty() || !demonstrate.isEmpty(); }

    /// Throws EQen for what cannot be understood.
    static Options parse(const QStringList &arguments);
    static QString helpText();
};
