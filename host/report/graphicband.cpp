// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/graphicband.h"

#include "host/report/barcode.h"
#include "host/report/expressionfunctions.h"
#include "host/report/paperfont.h"
#include "module/host_services/errors.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr double tolerance = 1e-6; // millimetres
constexpr double cutOfALine = 0.25; // of a line's height: what a place may lack for its last line

/// Line ends as one character, and nothing else that does not print.
QString printable(QString text)
{
    const auto isControl = [](QChar character) { return character.unicode() < u' '; };
    if (std::none_of(text.cbegin(), text.cend(), isControl))
        return text;
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n').replace(u'\t', u' ');
    text.removeIf([&](QChar character) { return isControl(character) && character != u'\n'; });
    return text;
}

PageItem styled(const Layout::TextStyle &style, const QRectF &place)
{
    PageItem item;
    item.place = place;
    item.family = style.family;
    item.size = style.size;
    item.bold = style.bold;
    item.italic = style.italic;
    item.alignment = style.alignment;
    item.colour = style.colour;
    item.background = style.background;
    return item;
}

qsizetype linesWithin(const PageItem &item)
{
    const double lines = item.place.height() / PaperFont::of(item).lineHeight() + cutOfALine;
    return qMax<qsizetype>(1, qsizetype(std::floor(lines)));
}

/// What the place can show; an ellipsis says where something is missing.
QString confined(const PageItem &item, const QString &text, bool wraps)
{
    const PaperFont &font = PaperFont::of(item);
    const double width = item.place.width();
    QStringList lines = wraps ? font.broken(text, width) : text.split(u'\n');
    const qsizetype visible = linesWithin(item);
    if (lines.size() > visible) {
        lines[visible - 1] = lines.mid(visible - 1).join(u' ');
        lines.resize(visible);
    }
    for (QString &line : lines)
        line = font.elided(line, width);
    return lines.join(u'\n');
}

bool isHorizontalLine(const PageItem &item)
{
    return item.kind == PageItem::Kind::Line && item.place.height() == 0;
}

void stretch(PageItem &item, double growth)
{
    if (isHorizontalLine(item))
        item.place.translate(0, growth);
    else
        item.place.setBottom(item.place.bottom() + growth);
}

/// How far a text that grew pushes down what was drawn beneath it.
struct Growth
{
    double bottom; // as it was drawn
    double growth;
};

double pushedDown(double top, const QVector<Growth> &growths)
{
    double down = 0;
    for (const Growth &growth : growths) {
        if (growth.bottom <= top + tolerance)
            down = qMax(down, growth.growth);
    }
    return down;
}

/// Lets texts have the height that they need, moves what stands beneath them and stretches lines and boxes.
void grow(GraphicBand &band)
{
    QVector<GraphicBand::Piece *> texts;
    for (GraphicBand::Piece &piece : band.pieces) {
        if (piece.grew)
            texts.append(&piece);
    }
    if (texts.isEmpty())
        return;
    std::sort(texts.begin(), texts.end(), [](const GraphicBand::Piece *left, const GraphicBand::Piece *right) {
        return left->item.place.top() < right->item.place.top();
    });
    QVector<Growth> growths;
    QHash<const GraphicBand::Piece *, double> heights;
    for (const GraphicBand::Piece *text : texts) {
        const PageItem &item = text->item;
        heights[text] = PaperFont::of(item).lineHeight() * double(item.text.count(u'\n') + 1);
        const double growth = heights[text] - item.place.height();
        growths.append({item.place.bottom(), pushedDown(item.place.top(), growths) + growth});
    }
    double height = band.height;
    for (GraphicBand::Piece &piece : band.pieces) {
        if (piece.stretches)
            continue;
        piece.item.translate({0, pushedDown(piece.item.place.top(), growths)});
        if (piece.grew)
            piece.item.place.setHeight(heights[&piece]);
        height = qMax(height, piece.item.place.bottom());
    }
    for (GraphicBand::Piece &piece : band.pieces) {
        if (piece.stretches)
            stretch(piece.item, height - band.height);
    }
    band.height = height;
}

} // namespace

GraphicBands::GraphicBands(const Layout::Document &layout)
    : m_layout(layout)
    , m_pictures(QFileInfo(layout.file).dir())
{
}

std::shared_ptr<GraphicBand> GraphicBands::compose(const Layout::Band &band, const ExpressionScope &scope, bool grows)
{
    auto composed = std::make_shared<GraphicBand>();
    composed->height = band.height;
    composed->pieces.reserve(qsizetype(band.items.size()));
    for (const Layout::Item &item : band.items) {
        if (!item.condition || ExpressionFunctions::isTrue(item.condition->evaluate(scope)))
            addItem(*composed, item, scope, grows);
    }
    grow(*composed);
    return composed;
}

void GraphicBands::addItem(GraphicBand &band, const Layout::Item &item, const ExpressionScope &scope, bool grows)
{
    switch (item.kind) {
    case Layout::Item::Kind::Text:
        return addText(band, item, scope, grows);
    case Layout::Item::Kind::Picture:
        return addPicture(band, item, scope);
    case Layout::Item::Kind::Barcode:
        return addBarcode(band, item, scope);
    case Layout::Item::Kind::Line:
    case Layout::Item::Kind::Box:
        break;
    }
    PageItem shape = styled(item.style, item.place);
    shape.kind = item.kind == Layout::Item::Kind::Line ? PageItem::Kind::Line : PageItem::Kind::Box;
    shape.thickness = item.thickness;
    band.pieces.append({shape, item.stretches, false});
}

void GraphicBands::addText(GraphicBand &band, const Layout::Item &item, const ExpressionScope &scope, bool grows)
{
    PageItem text = styled(item.style, item.place);
    const QString whole = printable(item.text.evaluate(scope));
    if (whole.isEmpty() && !text.background.isValid())
        return;
    const bool mayGrow = grows && item.grows;
    text.text = mayGrow ? PaperFont::of(text).broken(whole, text.place.width()).join(u'\n')
                        : confined(text, whole, item.wraps || item.grows);
    const bool grew = mayGrow && text.text.count(u'\n') + 1 > linesWithin(text);
    band.pieces.append({text, false, grew});
}

void GraphicBands::addPicture(GraphicBand &band, const Layout::Item &item, const ExpressionScope &scope)
{
    PageItem picture = styled(item.style, item.place);
    picture.kind = PageItem::Kind::Picture;
    picture.image = m_pictures.picture(item.value->evaluate(scope), item.place.size());
    if (picture.image.isNull())
        return;
    picture.place = Pictures::fitted(picture.image, item.place, item.style.alignment);
    band.pieces.append({picture, item.stretches, false});
}

void GraphicBands::addBarcode(GraphicBand &band, const Layout::Item &item, const ExpressionScope &scope)
{
    PageItem bars = styled(item.style, item.place);
    bars.kind = PageItem::Kind::Bars;
    const QString value = TextTemplate::shown(item.value->evaluate(scope), {});
    if (value.isEmpty())
        return;
    if (item.showsValue) {
        PageItem text = bars;
        text.kind = PageItem::Kind::Text;
        text.alignment = Qt::AlignHCenter | Qt::AlignBottom;
        text.place.setTop(text.place.bottom() - PaperFont::of(text).lineHeight());
        bars.place.setBottom(text.place.top());
        text.text = PaperFont::of(text).elided(value, text.place.width());
        band.pieces.append({text, false, false});
    }
    try {
        bars.bars = Barcode::bars(item.symbology, value, bars.place);
    } catch (const EQen &error) {
        throw EQen(error.sentence(), u"%1, linha %2. %3"_s.arg(m_layout.file).arg(item.line).arg(error.details()));
    }
    band.pieces.append({bars, false, false});
}
