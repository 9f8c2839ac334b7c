// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

/// What a mill holds of a client's yarn, and where it lies.
namespace ClientStock {

/// A line of a fabric's composition.
struct Share
{
    QString yarn;
    double percent = 0;
};

/// Yarn that was knitted into fabric which is still in the mill, kg by yarn; not rounded.
using YarnInFabric = QHash<QString, double>;
void addFabric(YarnInFabric &yarn, double fabricKg, const QList<Share> &composition);

/// What lies there as yarn, to the gram. Below zero where more was knitted than the client's invoices brought.
double physical(double bookKg, double inFabricKg);
/// To the gram.
bool isNothing(double kg);

/// A yarn's figures, kg.
struct Yarn
{
    QString code;
    double book = 0; ///< the client's until it leaves on an invoice
    double physical = 0; ///< as yarn
    double gone = 0; ///< on invoices, as yarn or in fabric
};

/// Bars of each yarn: what was received is what lies in fabric, what was returned and what is free together.
struct Bars
{
    QStringList yarns;
    QList<double> received, inFabric, returned, free;
};
/// The yarns of which most was received first. A yarn that stands there twice, as with two companies, is one; one
/// without any figure is left out.
Bars bars(const QList<Yarn> &yarns);

} // namespace ClientStock
