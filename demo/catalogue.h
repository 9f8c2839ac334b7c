// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringView>

#include <array>
#include <span>

namespace Demo {

struct MachineKind
{
    QStringView description;
    QStringView maker;
    int diameter; ///< inches
    int gauge; ///< needles per inch
    int feeders;
};

enum MachineKinds { Fine, Coarse, Double, Jacquard };

struct YarnKind
{
    QStringView description;
    QStringView count;
    QStringView group;
    int price; ///< ten-thousandths of a real per kilogram
    bool keepsItsColour; ///< knitted raw whatever the fabric's colour
};

struct ComponentKind
{
    int yarn; ///< in yarnKinds()
    int percent;
    int feeders;
    int loop; ///< hundredths of a millimetre per stitch
};

struct FabricKind
{
    QStringView description;
    QStringView group;
    MachineKinds machine;
    int grammage; ///< g/m²
    int width; ///< centimetres
    int perRoll; ///< kilograms
    int price; ///< cents per kilogram, first instalment
    bool generic; ///< its composition is also kept without colours
    bool striped; ///< one yarn in several colours
    QStringView observation;
    std::array<ComponentKind, 3> components; ///< those with no share are none
};

struct ColourKind
{
    QStringView code;
    QStringView description;
    QStringView shade; ///< "#rrggbb", as the yarn looks on the cone
};

inline constexpr QStringView raw = u"000010";
inline constexpr QStringView noColour = u"0"; ///< fabric colour of generic composition lines
inline constexpr QStringView anyColour = u"*****"; ///< and their yarn colour

std::span<const MachineKind> machineKinds();
std::span<const YarnKind> yarnKinds();
std::span<const FabricKind> fabricKinds();
/// Those that fabrics are dyed or knitted in come after the raw one.
std::span<const ColourKind> colourKinds();

} // namespace Demo
