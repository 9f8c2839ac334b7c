// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>
#include <QTemporaryDir>

/// A print service of the test's own, on a socket in a folder of its own; its printers keep what reaches them.
///
/// The program's libraries ask it from start() on: nothing may ask for a printer before.
class PrintService
{
public:
    enum class State { Usual, Ready, Refusing, Stopped };

    ~PrintService();

    /// Throws EQen when it does not start.
    void start(const QList<std::pair<QString, State>> &printers);
    /// What the printer got since forget(), waited for; empty when nothing comes.
    QByteArray received(const QString &printer) const;
    /// How many jobs reached a printer, or wait for one, since forget().
    int jobs() const;
    void forget();

private:
    void write(const QString &name, const QByteArray &content) const;

    QTemporaryDir m_folder;
    QProcess m_service;
    int m_forgotten = 0;
};
