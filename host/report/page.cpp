// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/page.h"

#include "host/report/paperfont.h"

#include <QDataStream>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double millimetresPerInch = 25.4;

QDataStream &operator<<(QDataStream &stream, const PageItem &item)
{
    return stream << quint8(item.kind) << item.place << item.text << item.family << item.size << item.bold
                  << item.italic << qint32(item.alignment.toInt()) << item.colour.rgba() << item.background.isValid()
                  << item.background.rgba() << item.thickness << qint32(item.imageNumber) << item.bars;
}

QDataStream &operator>>(QDataStream &stream, PageItem &item)
{
    quint8 kind = 0;
    qint32 alignment = 0;
    qint32 imageNumber = 0;
    QRgb colour = 0;
    QRgb background = 0;
    bool hasBackground = false;
    stream >> kind >> item.place >> item.text >> item.family >> item.size >> item.bold >> item.italic >> alignment
        >> colour >> hasBackground >> background >> item.thickness >> imageNumber >> item.bars;
    item.kind = PageItem::Kind(kind);
    item.alignment = Qt::Alignment::fromInt(alignment);
    item.imageNumber = imageNumber;
    item.colour = QColor::fromRgba(colour);
    item.background = hasBackground ? QColor::fromRgba(background) : QColor();
    return stream;
}

QRectF inUnits(const QRectF &place)
{
    constexpr double factor = PaperFont::unitsPerMillimetre;
    return {place.topLeft() * factor, place.size() * factor};
}

double top(const PageItem &item, double height)
{
    if (item.alignment & Qt::AlignBottom)
        return item.place.bottom() - height;
    if (item.alignment & Qt::AlignVCenter)
        return item.place.center().y() - height / 2;
    return item.place.top();
}

double left(const PageItem &item, double width)
{
    if (item.alignment & Qt::AlignRight)
        return item.place.right() - width;
    if (item.alignment & Qt::AlignHCenter)
        return item.place.center().x() - width / 2;
    return item.place.left();
}

/// A line that nearly fills its place is spread to the end of it; a short one ends a paragraph.
void paintJustified(QPainter &painter, QPointF start, const QString &line, const PaperFont &font, double width)
{
    constexpr double nearly = 0.75;
    const double natural = font.width(line);
    const qsizetype blanks = line.count(u' ');
    if (blanks == 0 || natural < nearly * width)
        return painter.drawText(start, line);
    QFont spread = font.font();
    spread.setWordSpacing((width - natural) * PaperFont::unitsPerMillimetre / double(blanks));
    painter.setFont(spread);
    painter.drawText(start, line);
    painter.setFont(font.font());
}

void paintText(QPainter &painter, const PageItem &item, int pageCount)
{
    const PaperFont &font = PaperFont::of(item);
    const QStringList lines = item.shownText(pageCount).split(u'\n');
    if (painter.font() != font.font())
        painter.setFont(font.font());
    if (painter.pen().color() != item.colour)
        painter.setPen(item.colour);
    double baseline = top(item, font.lineHeight() * double(lines.size())) + font.ascent();
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString &line = lines[i];
        const bool isLeft = !(item.alignment & (Qt::AlignRight | Qt::AlignHCenter));
        const double x = isLeft ? item.place.left() : left(item, font.width(line));
        const QPointF start = QPointF(x, baseline) * PaperFont::unitsPerMillimetre;
        if (item.alignment & Qt::AlignJustify && i + 1 < lines.size())
            paintJustified(painter, start, line, font, item.place.width());
        else if (!line.isEmpty())
            painter.drawText(start, line);
        baseline += font.lineHeight();
    }
}

/// Straight lines are painted as surfaces: a pen of a fraction of a dot would vanish on some devices.
void paintLine(QPainter &painter, const PageItem &item)
{
    const QRectF &place = item.place;
    const double half = item.thickness / 2;
    if (place.height() == 0)
        painter.fillRect(inUnits(place.adjusted(0, -half, 0, half)), item.colour);
    else if (place.width() == 0)
        painter.fillRect(inUnits(place.adjusted(-half, 0, half, 0)), item.colour);
    else {
        const QRectF units = inUnits(place);
        painter.setPen(QPen(item.colour, item.thickness * PaperFont::unitsPerMillimetre));
        painter.drawLine(units.topLeft(), units.bottomRight());
    }
}

void paintBox(QPainter &painter, const PageItem &item)
{
    if (item.thickness <= 0)
        return;
    painter.setPen(
        QPen(item.colour, item.thickness * PaperFont::unitsPerMillimetre, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(inUnits(item.place));
}

/// All bars as one surface: no seams between those that touch.
void paintBars(QPainter &painter, const PageItem &item)
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    for (const QRectF &bar : item.bars)
        path.addRect(inUnits(bar));
    painter.fillPath(path, item.colour);
}

/// To whole dots: half covered ones would be a seam between neighbours.
void paintBackground(QPainter &painter, const PageItem &item)
{
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(inUnits(item.place), item.background);
    painter.setRenderHint(QPainter::Antialiasing);
}

void paintItem(QPainter &painter, const PageItem &item, int pageCount)
{
    if (item.background.isValid())
        paintBackground(painter, item);
    switch (item.kind) {
    case PageItem::Kind::Text:
        return paintText(painter, item, pageCount);
    case PageItem::Kind::Line:
        return paintLine(painter, item);
    case PageItem::Kind::Box:
        return paintBox(painter, item);
    case PageItem::Kind::Picture:
        return painter.drawImage(inUnits(item.place), item.image);
    case PageItem::Kind::Bars:
        return paintBars(painter, item);
    }
}

} // namespace

QString PageItem::shownText(int pageCount) const
{
    if (!text.contains(pageCountMark))
        return text;
    QString shown = text;
    return shown.replace(pageCountMark, QString::number(pageCount));
}

void PageItem::translate(QPointF by)
{
    place.translate(by);
    for (QRectF &bar : bars)
        bar.translate(by);
}

QDataStream &operator<<(QDataStream &stream, const Page &page)
{
    stream << qint32(page.items.size());
    for (const PageItem &item : page.items)
        stream << item;
    return stream;
}

QDataStream &operator>>(QDataStream &stream, Page &page)
{
    qint32 count = 0;
    stream >> count;
    page.items.clear();
    page.items.reserve(count);
    for (qint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        PageItem item;
        stream >> item;
        page.items.append(item);
    }
    return stream;
}

void PagePainter::paint(QPainter &painter, const Page &page, int pageCount)
{
    painter.save();
    const QPaintDevice &device = *painter.device();
    painter.scale(device.logicalDpiX() / PaperFont::unitsPerInch, device.logicalDpiY() / PaperFont::unitsPerInch);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    for (const PageItem &item : page.items)
        paintItem(painter, item, pageCount);
    painter.restore();
}

QImage PagePainter::image(const Page &page, QSizeF paper, int pageCount, double resolution)
{
    const QSizeF dots = paper / millimetresPerInch * resolution;
    QImage image(qCeil(dots.width()), qCeil(dots.height()), QImage::Format_RGB32);
    image.setDotsPerMeterX(qRound(resolution / millimetresPerInch * 1000));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    image.fill(Qt::white);
    QPainter painter(&image);
    paint(painter, page, pageCount);
    return image;
}
