// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "production/yarnreservation.h"

class TTIDatabase;

/// What an order's yarn depends on.
struct YarnOrder
{
    QString number;
    QString fabric;
    QString client;
    double kg = 0;

    bool operator==(const YarnOrder &) const = default;
};

/// Reads compositions and lots for an order, and keeps its reservations.
class YarnLots
{
public:
    explicit YarnLots(TTIDatabase &database);

    /// The yarns of the fabric's active colours with what they share of its weight, by their codes.
    QVector<YarnReservation::Share> sharesOf(const QString &fabric);
    /// The same, each different line of the composition by itself.
    QVector<YarnReservation::Share> linesOf(const QString &fabric);
    /// The client's lots of the fabric's yarns, by yarn and then by the date of their invoices, with the ticks that the
    /// order's recorded reservations give. Lots that are not offered are left out.
    QVector<YarnReservation::Lot> lotsOf(const YarnOrder &order, YarnReservation::Mode mode);

    // Within a save:

    /// Keeps other stations from reserving of the lots that are ticked until the save ends.
    void lock(const YarnOrder &order, const QVector<YarnReservation::Lot> &grid);
    /// The lots ticked take the place of all that the order had reserved.
    void replace(const QString &order, const QVector<YarnReservation::Lot> &grid);

private:
    QVector<YarnReservation::Share> composition(const QString &columns, const QString &fabric, const QString &ending);

    TTIDatabase &m_database;
};
