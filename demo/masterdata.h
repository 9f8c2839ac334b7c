// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "demo/inserter.h"

#include <QString>
#include <QStringList>
#include <QVector>

/// What the mill works with and for. Shares of a composition are in hundred-thousandths of a percent, unit prices of
/// yarn in ten-thousandths of a real per kilogram: whole numbers throughout, so that all sums are exact. A thing that
/// belongs or refers to another names it by its position in the mill's lists.
namespace Demo {

struct MachineKind;
struct FabricKind;
struct YarnKind;

inline constexpr int wholeShare = 100 * 100'000;

struct Client
{
    QString code;
    QString name;
    QString group;
};

struct Machine
{
    QString code;
    const MachineKind *kind = nullptr;
};

struct Worker
{
    QString code;
    QString name;
    int shift = 0; ///< 1 to 4; 0: office
    bool active = true;
    bool inspector = false;
};

struct Yarn
{
    QString code;
    const YarnKind *kind = nullptr;
    int client = 0;
    int loopLengths = 1; ///< the most that one fabric knits it with
    bool active = true;
};

/// One line of a fabric's composition in one of its colours.
struct Component
{
    QString colour; ///< of the fabric
    int yarn = 0;
    QString yarnColour;
    int share = 0;
    int feeders = 0;
    int loop = 0; ///< hundredths of a millimetre per stitch; 0 on generic lines
};

struct Fabric
{
    QString code;
    const FabricKind *kind = nullptr;
    int client = 0;
    QStringList colours;
    QStringList activeColours;
    QVector<Component> composition;
    Cents price = 0; ///< per kilogram, first instalment
};

/// What an order needs of one yarn.
struct Need
{
    int yarn = 0;
    int share = 0;
};

} // namespace Demo
