// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/options.h"

/// From the command line to the main window, and the runs that nobody attends. The application object exists already.
/// Gives the program's exit code. Throws EQen for what keeps it from starting.
int runProgram(const Options &options);
int runUnattended(const Options &options);
