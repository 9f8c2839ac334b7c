// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>
#include <QVector>

#include <optional>

/// Which lots of its client's yarn an order consumes, and how much of each. All weights are kilograms, read to the gram
/// at every step.
namespace YarnReservation {

/// How the mill keeps reservations, by its parameter "MAL" 80.
enum class Mode {
    Checked, ///< a lot that is not needed cannot be ticked, and every yarn must be covered
    AsRecorded ///< nothing is checked, and what was recorded stays
};
/// "N" is AsRecorded, all else Checked.
Mode modeOf(const QString &parameter);

/// A lot as one order sees it.
struct Lot
{
    QString yarn;
    QString description; ///< of the yarn
    QString document; ///< the invoice that it came with
    QString brand;
    QString lot; ///< empty: the client gave no number
    QDate date; ///< of the invoice
    double need = 0; ///< what the order needs of the yarn, of all its lots together
    double balance = 0; ///< what is still free; what this order holds is not. Negative: more is reserved than there is
    double reserved = 0; ///< by this order, as it is being edited
    double price = 0; ///< per kilogram, on the invoice
    bool ticked = false;
    int turn = 0; ///< its place among the ticks, from 1; 0 unless ticked
    double held = 0; ///< by this order, as it is recorded
    double notReturned = 0; ///< of what came, without what went back to the client

    bool isSameAs(const Lot &other) const;
};

/// What a fabric takes of a yarn.
struct Share
{
    QString yarn;
    QString description;
    double percent = 0;
};

/// A yarn of the fabric and how far the lots ticked cover it.
struct Coverage
{
    QString yarn;
    QString description;
    double need = 0;
    double reserved = 0;
    double missing = 0; ///< 0 when covered, also when more than the need is reserved
};

double needOf(double percent, double orderKg);
/// What is free of a lot whose yarn the fabric knits with several loop lengths: its part for one of them. Less than one
/// loop length counts as one.
double balanceOf(double stock, int loopLengths, double reservations);
/// Lots whose yarn all went back to the client are not offered, except those that the order has ticked.
bool isOffered(const Lot &lot);

/// The lot as it is to be stored in the grid, which still holds it as it was: unticked it gives nothing; ticked it
/// gives what its yarn lacks, but no more than its balance. One that its yarn does not need is unticked in Checked
/// mode.
Lot posted(const Lot &lot, const QVector<Lot> &grid, Mode mode);

/// The ticks of an earlier grid in a new one of the same fabric and client, in their turns. In Checked mode what each
/// lot gives is computed anew, from what the order holds of it and what is free besides.
void keepTicks(QVector<Lot> &grid, const QVector<Lot> &before, Mode mode);

QVector<Coverage> coverageOf(const QVector<Share> &shares, double orderKg, const QVector<Lot> &grid);
/// The first yarn because of which the order cannot be saved; nothing as long as no lot is ticked, and in the mode that
/// checks nothing.
std::optional<QString> insufficientYarn(const QVector<Coverage> &coverage, const QVector<Lot> &grid, Mode mode);
/// The yarn of the first lot of which `grid` takes more than `now`, read at this moment, has free.
std::optional<QString> overdrawnYarn(const QVector<Lot> &grid, const QVector<Lot> &now);

/// The weight figure that the free stock of the grid's lots gives for a fabric of these composition lines, in their
/// order: a hundred times the weight that the scarcest yarn allows. 0 when a yarn has no stock.
double largestWeight(const QVector<Share> &lines, const QVector<Lot> &grid);

} // namespace YarnReservation
