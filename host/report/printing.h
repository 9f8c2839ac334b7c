// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

class PageStore;
class QPrinter;

/// Pages and characters on their way to a printer of the system.
namespace Printing {

/// Told before each page how many are done; false cancels.
using Progress = std::function<bool(int pagesDone)>;

/// Whether the name is that of a device or file: "arquivo:/dev/usb/lp0".
bool isDevice(const QString &printer);
/// The system's printer of that name, its usual one for an empty name. Throws EQen when there is none.
QString existing(const QString &printer);
/// The printer with which a choice begins: that one, else the usual one, else any. Throws EQen when there is none.
QString offered(const QString &printer);
/// Whether it keeps what it gets until somebody starts it again.
bool isStopped(const QString &printer);
/// The pages that the printer's range asks for, in its order and as often as its copies say. False when it was
/// cancelled; the pages that were done then are printed all the same, which the toolkit cannot hinder. Throws EQen.
bool print(const PageStore &pages, QPrinter &printer, const Progress &progress = {});
/// Bytes for a printer of characters, as they stand: to a device, or to the system's printer of that name. Throws EQen
/// when it does not take them.
void send(const QByteArray &bytes, const QString &printer, const QString &title);

} // namespace Printing
