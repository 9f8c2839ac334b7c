// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// What one frame of the scale says. A frame that is no weight has kg 0 and a reason to show.
struct ScaleReading
{
    enum class Stability { Yes, No, Unknown };

    double value = 0; ///< the figure as sent, with its sign, in the unit of the frame
    QString unit; ///< "kg", "g" or "t"; anything else is refused
    double kg = 0; ///< kilograms, three decimals; 0 unless the frame is a weight
    std::optional<bool> net; ///< net (true) or gross (false); empty when the frame does not tell
    Stability stability = Stability::Unknown;
    bool negative = false;
    bool overRange = false;
    bool underRange = false;
    QByteArray raw; ///< the bytes of the frame as they came, with terminator and checksum
    QString reason; ///< why it is no weight, one sentence in Portuguese; empty when it is one

    /// A positive, in-range figure that is not known to be unstable.
    bool isWeight() const { return reason.isEmpty() && kg > 0; }
};

/// More of a scale's bytes than this is never looked at: only the latest count.
constexpr qsizetype maxScaleStream = 4096;

/// Reads the last whole frame of a text that begins where a frame begins. A frame ends at CR, LF, CR LF, ETX, the
/// terminator given or its fixed length. The reading of a text without a whole frame is kg 0 with its reason.
ScaleReading readScaleText(const QByteArray &bytes, char terminator);

/// The most recent bytes of a buffer that start at a frame boundary, end with a whole frame and are at most `maxBytes`
/// long. `startsAtBoundary` says whether the buffer's first byte is known to begin a frame; where it is not, a first
/// line is dropped, because it may be the tail of a longer one. Empty when there is no such frame.
QByteArray lastWholeFrames(const QByteArray &buffer, qsizetype maxBytes, bool startsAtBoundary = true);
