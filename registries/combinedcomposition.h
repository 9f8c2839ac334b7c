// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVector>

/// The shares of a fabric's yarns, turned into shares of yarn and colour by the stitch lengths of its rapport.
namespace CombinedComposition {

/// A yarn's share of the fabric whatever its colour.
struct Share
{
    QString yarn;
    double percent = 0;
};

/// What a line of the rapport says of its yarn.
struct RaportLine
{
    QString yarn;
    QString colour;
    double millimetres = 0; ///< stitch length
};

struct Line
{
    QString yarn;
    QString colour;
    int order = 0; ///< with gaps where lines of one yarn and colour were brought together
    double percent = 0; ///< of the fabric, five decimals
};

/// The composition's new lines, numbered from `highestOrder` plus one. The share of a yarn goes to its lines of the
/// rapport by their stitch lengths, each part rounded to five decimals before those of one colour are added up. A yarn
/// without lines, or whose lines are without stitch length, contributes none.
QVector<Line> combine(const QVector<Share> &source, const QVector<RaportLine> &raport, int highestOrder);

} // namespace CombinedComposition
