// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QFont>
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
    QVector<QRectF> bars; ///< of a barcode, within the page
};

struct Page
{
    QVector<PageItem> items;
};

QDataStream &operator<<(QDataStream &stream, const Page &page);
QDataStream &operator>>(QDataStream &stream, Page &page);

namespace PagePainter {

/// Paints onto the device of the painter, whose resolution is taken from it; the origin is the corner of the paper.
void paint(QPainter &painter, const Page &page, int pageCount);

} // namespace PagePainter
