// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/characterpages.h"

#include "host/report/pagestore.h"

using namespace Qt::StringLiterals;

namespace {

constexpr double margin = 8; // mm
constexpr double millimetresPerPoint = 25.4 / 72;
constexpr double widthOfLetter = 0.602; ///< of the size, in Liberation Mono
constexpr double heightOfLine = 1.2; ///< of the size
constexpr double largest = 11; // points: ten letters to the inch look like paper from a matrix printer
constexpr int longLine = 100;
constexpr int rawLines = 70; ///< on a page that shows what is sent to a printer

/// The longest line and the number of lines that have to fit.
struct Extent
{
    int columns;
    int lines;
};

Extent extentOf(const QStringList &lines, const Layout::CharacterPage &page)
{
    Extent extent{page.raw ? 1 : page.columns, page.raw ? rawLines : page.lines};
    for (const QString &line : lines)
        extent.columns = qMax(extent.columns, int(line.size()));
    extent.lines = qMax(extent.lines, int(lines.size()));
    return extent;
}

} // namespace

QSizeF CharacterPages::paper(const Layout::CharacterPage &page)
{
    return page.columns > longLine && !page.raw ? QSizeF(297, 210) : QSizeF(210, 297);
}

void CharacterPages::append(const QStringList &texts, const Layout::CharacterPage &page, PageStore &store)
{
    const QSizeF room = store.paper() - QSizeF(2 * margin, 2 * margin);
    for (const QString &text : texts) {
        const QStringList lines = text.split(u'\n');
        const Extent extent = extentOf(lines, page);
        const double byWidth = room.width() / (extent.columns * widthOfLetter * millimetresPerPoint);
        const double byHeight = room.height() / (extent.lines * heightOfLine * millimetresPerPoint);
        const double size = qMin(largest, qMin(byWidth, byHeight));
        const double step = size * heightOfLine * millimetresPerPoint;
        Page paper;
        for (int i = 0; i < lines.size(); ++i) {
            if (lines[i].trimmed().isEmpty())
                continue;
            PageItem item;
            item.place = QRectF(margin, margin + i * step, room.width(), step);
            item.text = lines[i];
            item.family = u"Liberation Mono"_s;
            item.size = size;
            item.alignment = Qt::AlignLeft | Qt::AlignTop;
            paper.items.append(item);
        }
        store.append(paper);
    }
}
