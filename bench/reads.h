// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <QVector>

struct Bench;
class TTIDatabase;

/// How many records one step of the work made the engine read.
struct Reads
{
    /// Of one table. More than any register of codes has and than a list shows at first, and fewer than the orders and
    /// the rolls of the second company.
    static constexpr int atMost = 500;

    QString what;
    qint64 byIndex = 0;
    qint64 inSequence = 0; ///< without an index
    QString table; ///< of which most were read; empty for none
    qint64 ofTable = 0;

    /// Whether no table was read whole that may be large.
    bool isGood() const { return ofTable <= atMost; }
};

/// Opening each screen, leaving the order field, confirming a roll and the first page of a search, in the company of
/// many orders. Firebird counts for each table what is read and how; other engines give nothing here.
QVector<Reads> countReads(const Bench &bench);
void printReads(const QVector<Reads> &rows);
