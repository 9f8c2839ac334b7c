// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>

/// The time of day that the program goes by. It can be pinned, so that a night shift is repeatable.
namespace Clock {

QDateTime now();
QDate today();
/// An invalid date and time lets the clock run again.
void pin(const QDateTime &moment);

} // namespace Clock
