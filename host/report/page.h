// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QImage>
#include <QPageLayout>
#include <QRectF>
#include <QString>
#include <QVector>

class QDataStream;
class QPainter;

/// A page as it was laid out: nothing in it depends on the data any more. Lengths are millimetres from the page's edge.
struct PageItem
{
    enum class Kind { Text, Line, Box, Picture, Bars };

    Kind kind = Kind::Text;
    QRectF place;
    QString text; ///< lines are broken already; U+E000 stands for the number of pages, known at the end
    QString family;
    double size = 9; ///< points
    bool bold = false;
    bool italic = false;
    Qt::Alignment alignment;
    QColor colour = Qt::black;
    QColor background;
    double thickness = 0.2;
    QImage image;
    int imageNumber = -1; ///< in the store that keeps the image apart; -1: none
    QVector<QRectF> bars; ///< of a barcode, within the page

    /// The text as people read it.
    QString shownText(int pageCount) const;
    void translate(QPointF by);
};

struct Page
{
    QVector<PageItem> items;
};

/// The place of the number of pages within texts, which is known when the last page is laid out.
inline constexpr QChar pageCountMark{0xE000};

/// Images are not written, only their numbers: the store keeps each once.
QDataStream &operator<<(QDataStream &stream, const Page &page);
QDataStream &operator>>(QDataStream &stream, Page &page);

namespace PagePainter {

/// Paints onto the device of the painter, whose resolution is taken from it; the origin is the corner of the paper.
void paint(QPainter &painter, const Page &page, int pageCount);
/// The page on white paper of that size in millimetres, for previews. Dots per inch.
QImage image(const Page &page, QSizeF paper, int pageCount, double resolution);

} // namespace PagePainter
