// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "production/yarnreservation.h"

#include <QHash>
#include <QString>
#include <QVector>

#include <optional>

/// Whether a client's yarn is enough for a roll, and what fabric of that yarn is worth. All weights are kilograms, read
/// to the gram at every step.
namespace YarnStock {

using YarnReservation::Share;

/// So much of a fabric that is knitted of these yarns.
struct Knitted
{
    double kg = 0;
    QVector<Share> shares; ///< a yarn may have several
};

/// A yarn that lacks so many kilograms.
struct Shortage
{
    QString yarn;
    double kg = 0;
};

/// What the fabric holds of a yarn.
double yarnIn(const Knitted &fabric, const QString &yarn);

/// What is left of a yarn: what the client sent, less what went out, less what stands in fabric that is not invoiced
/// yet. Negative when more went than came.
double remaining(const QString &yarn, double receivedLessOutbound, const QVector<Knitted> &notInvoiced);

/// The roll's first yarn of which less is left than it takes. A yarn that never came counts as 0.
std::optional<Shortage> shortageFor(
    const Knitted &roll, const QHash<QString, double> &receivedLessOutbound, const QVector<Knitted> &notInvoiced);

/// Price per kilogram of fabric: its yarns' unit prices by their shares, to four decimals. A yarn without a price adds
/// nothing.
double valueOf(const QVector<Share> &shares, const QHash<QString, double> &unitPrices);

} // namespace YarnStock
