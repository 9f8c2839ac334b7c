// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "production/yarnstock.h"

class TTIDatabase;

/// Reads what a client's yarn is by now, and whether it is enough.
class ClientYarn
{
public:
    ClientYarn(TTIDatabase &database, const QString &client);

    /// What the client lacks for so many kilograms of the fabric. A fabric of a mill that knits for itself, without a
    /// client, lacks nothing here: nobody sent its yarn.
    std::optional<YarnStock::Shortage> shortageFor(const QString &fabric, double kg);
    /// Price per kilogram of the fabric by the prices on the client's invoices.
    double valueOf(const QString &fabric);

private:
    QHash<QString, double> byYarn(const QString &value, const QVector<YarnStock::Share> &shares, const QString &more);
    QVector<YarnStock::Knitted> notInvoiced();

    TTIDatabase &m_database;
    QString m_client;
};
