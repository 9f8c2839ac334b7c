// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/layout.h"

/// Barcodes as bars to paint.
namespace Barcode {

/// The dark bars (of a QR code its dark squares) within the place, quiet zones included. Throws EQen when the text
/// cannot be coded: an odd number of digits gets a leading zero for Interleaved 2 of 5, letters are refused. None for
/// an empty text. A QR code stands in the middle of the place.
QVector<QRectF> bars(Layout::Item::Symbology symbology, const QString &text, const QRectF &place);

} // namespace Barcode
