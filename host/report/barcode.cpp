// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/report/barcode.h"

#include "module/host_services/errors.h"

#include <algorithm>
#include <memory>

#include <zint.h>

using namespace Qt::StringLiterals;

namespace {

using Symbology = Layout::Item::Symbology;
using Symbol = std::unique_ptr<zint_symbol, decltype(&ZBarcode_Delete)>;

constexpr int utf8Letters = 26; // of a QR code, by its standard

int zintNumber(Symbology symbology)
{
    switch (symbology) {
    case Symbology::Code128:
        return BARCODE_CODE128;
    case Symbology::Interleaved2of5:
        return BARCODE_C25INTER;
    case Symbology::Qr:
        break;
    }
    return BARCODE_QRCODE;
}

Symbol encoded(Symbology symbology, const QString &text)
{
    Symbol symbol(ZBarcode_Create(), &ZBarcode_Delete);
    if (!symbol)
        throw EQen(u"Não há memória para o código de barras."_s);
    symbol->symbology = zintNumber(symbology);
    symbol->input_mode = UNICODE_MODE;
    const bool plain = std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
    if (symbology == Symbology::Qr && !plain)
        symbol->eci = utf8Letters; // readers would guess at accents
    const QByteArray bytes = text.toUtf8();
    const int result =
        ZBarcode_Encode(symbol.get(), reinterpret_cast<const unsigned char *>(bytes.constData()), int(bytes.size()));
    if (result >= ZINT_ERROR) {
        throw EQen(u"O texto \"%1\" não cabe em um código de barras deste tipo."_s.arg(text),
            QString::fromUtf8(symbol->errtxt));
    }
    return symbol;
}

bool isDark(const zint_symbol &symbol, int row, int column)
{
    return (symbol.encoded_data[row][column >> 3] >> (column & 7)) & 1;
}

} // namespace

QVector<QRectF> Barcode::bars(Symbology symbology, const QString &text, const QRectF &place)
{
    if (text.isEmpty())
        return {};
    const Symbol symbol = encoded(symbology, text);
    const bool square = symbology == Symbology::Qr;
    const int quiet = square ? 4 : 10; // modules that readers want empty on each side
    double width = place.width() / (symbol->width + 2 * quiet);
    double height = place.height() / symbol->rows;
    QPointF corner(place.left() + quiet * width, place.top());
    if (square) {
        const double side = qMin(place.width(), place.height());
        width = height = side / (symbol->width + 2 * quiet);
        corner = place.center() - QPointF(width, height) * (symbol->width / 2.0);
    }

    QVector<QRectF> dark;
    for (int row = 0; row < symbol->rows; ++row) {
        for (int column = 0; column < symbol->width; ++column) {
            if (!isDark(*symbol, row, column))
                continue;
            const int first = column;
            while (column + 1 < symbol->width && isDark(*symbol, row, column + 1))
                ++column;
            dark.append({corner.x() + first * width, corner.y() + row * height, (column + 1 - first) * width, height});
        }
    }
    return dark;
}
