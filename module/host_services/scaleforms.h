// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/scaleframe.h"

#include <QByteArray>

#include <optional>

/// One frame cut out of the scale's bytes.
struct ScaleFrame
{
    enum class Check { Absent, Right, Wrong };

    static constexpr char stx = 0x02;
    static constexpr char etx = 0x03;

    QByteArray body; ///< low seven bits, from STX where there is one to ETX where there is one; no CR, LF or checksum
    Check check = Check::Absent; ///< the checksum of a Toledo P03 frame
    bool fixedLength = false; ///< ended by nothing but its length
    qsizetype begin = 0; ///< where it begins in the stream
    qsizetype end = 0; ///< behind its terminator and checksum

    bool beginsWithStx() const { return body.startsWith(stx); }
};

/// Whether a body (STX to the byte before CR) has the length, the status and the digits of a Toledo P03 frame.
bool isToledoP03(QByteArrayView body);

/// Reads a frame by the first form that fits it; empty when none does. `raw` stays empty.
std::optional<ScaleReading> recogniseScaleFrame(const ScaleFrame &frame);
