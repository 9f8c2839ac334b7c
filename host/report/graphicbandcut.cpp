// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/graphicband.h"
#include "host/report/paperfont.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double tolerance = 1e-6; // millimetres
constexpr qsizetype fewestLines = 2; // of a text on either side of a page break

/// Where a page ends within a band.
class Cut
{
public:
    Cut(const GraphicBand &band, double height, bool must);

    bool isPossible() const { return m_isPossible; }
    std::shared_ptr<GraphicBand> upper() const;
    std::shared_ptr<GraphicBand> lower() const;

private:
    qsizetype linesAbove(const PageItem &item) const;
    bool isCut(const GraphicBand::Piece &piece) const;
    PageItem lines(const PageItem &text, qsizetype from, qsizetype count) const;

    const GraphicBand &m_band;
    double m_height; // of the page
    double m_at; // where the rest begins, a little above when a line of a text does not fit
    bool m_isPossible = true;
};

Cut::Cut(const GraphicBand &band, double height, bool must)
    : m_band(band)
    , m_height(height)
    , m_at(height)
{
    bool cutsText = false;
    for (const GraphicBand::Piece &piece : band.pieces) {
        if (!isCut(piece))
            continue;
        const PageItem &item = piece.item;
        const qsizetype above = linesAbove(item);
        const qsizetype below = item.text.count(u'\n') + 1 - above;
        const bool isTorn = piece.grew ? above < fewestLines || below < fewestLines : true;
        if (isTorn && !must)
            m_isPossible = false;
        cutsText |= piece.grew;
        m_at = qMin(m_at, item.place.top() + (piece.grew ? double(above) * PaperFont::of(item).lineHeight() : 0));
    }
    m_isPossible &= must || cutsText;
}

bool Cut::isCut(const GraphicBand::Piece &piece) const
{
    const QRectF &place = piece.item.place;
    return !piece.stretches && place.top() < m_height && place.bottom() > m_height + tolerance;
}

qsizetype Cut::linesAbove(const PageItem &item) const
{
    return qsizetype(std::floor((m_height - item.place.top()) / PaperFont::of(item).lineHeight() + tolerance));
}

PageItem Cut::lines(const PageItem &text, qsizetype from, qsizetype count) const
{
    const double lineHeight = PaperFont::of(text).lineHeight();
    const QStringList part = text.text.split(u'\n').mid(from, count);
    PageItem item = text;
    item.text = part.join(u'\n');
    item.place.setTop(text.place.top() + double(from) * lineHeight);
    item.place.setHeight(double(part.size()) * lineHeight);
    return item;
}

std::shared_ptr<GraphicBand> Cut::upper() const
{
    auto upper = std::make_shared<GraphicBand>();
    upper->height = m_height;
    for (const GraphicBand::Piece &piece : m_band.pieces) {
        GraphicBand::Piece part = piece;
        if (piece.item.place.top() >= m_height - tolerance)
            continue;
        if (piece.stretches && piece.item.place.bottom() > m_height)
            part.item.place.setBottom(m_height);
        else if (isCut(piece)) {
            const qsizetype above = linesAbove(piece.item);
            if (!piece.grew || above == 0)
                continue;
            part.item = lines(piece.item, 0, above);
        }
        upper->pieces.append(part);
    }
    return upper->pieces.isEmpty() ? nullptr : upper;
}

std::shared_ptr<GraphicBand> Cut::lower() const
{
    auto lower = std::make_shared<GraphicBand>();
    lower->height = m_band.height - m_at;
    lower->gapAfter = m_band.gapAfter;
    for (const GraphicBand::Piece &piece : m_band.pieces) {
        GraphicBand::Piece part = piece;
        if (piece.item.place.bottom() <= m_height + tolerance && piece.item.place.top() < m_height - tolerance)
            continue;
        if (piece.stretches && piece.item.place.top() < m_at)
            part.item.place.setTop(m_at);
        else if (isCut(piece) && piece.grew)
            part.item = lines(piece.item, linesAbove(piece.item), -1);
        part.item.translate({0, -m_at});
        lower->pieces.append(part);
    }
    return lower;
}

} // namespace

std::pair<std::shared_ptr<GraphicBand>, std::shared_ptr<GraphicBand>> GraphicBand::split(double line, bool must) const
{
    const Cut cut(*this, line, must);
    if (!cut.isPossible())
        return {};
    return {cut.upper(), cut.lower()};
}
