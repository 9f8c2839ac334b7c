// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

/// Produced fabric by machine, fabric and client, its shifts side by side.
namespace ProductionPivot {

constexpr int shiftCount = 4; ///< shifts "1" to "4"

/// What a shift produced on a day, of a fabric for a client on a machine. A name stands with its code because two
/// companies may give one code to two machines.
struct Produced
{
    QString machine, machineName;
    QString material, materialName;
    QString client, clientName;
    QString shift;
    QDate date; ///< of the write-off
    double kg = 0;
    std::optional<double> value = {}; ///< without a price: none
};

/// Sums by shift; the last place is that of all shifts that are not "1" to "4". Where nothing came there is none.
using ByShift = std::array<std::optional<double>, shiftCount + 1>;
/// Of all shifts; none where no shift has any.
std::optional<double> total(const ByShift &sums);

struct Row
{
    QString machine, machineName;
    QString material, materialName;
    QString client, clientName;
    QDate date = {}; ///< invalid unless the rows are by date
    ByShift kg = {}; ///< to the gram
    ByShift value = {}; ///< to the cent, so that what is printed adds up
};

/// A row per machine, fabric and client, and per date when `byDate`, in the order in which they first come.
QList<Row> rows(const QList<Produced> &produced, bool byDate);

/// Kilograms by the machine's code.
QMap<QString, ByShift> byMachine(const QList<Produced> &produced);
/// Kilograms of each day on which something was produced.
QMap<QDate, double> byDay(const QList<Produced> &produced);

} // namespace ProductionPivot
