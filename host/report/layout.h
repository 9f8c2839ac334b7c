// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/expression.h"

#include <QColor>
#include <QMarginsF>
#include <QRectF>
#include <QSizeF>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

/// What a stored layout says, as it was read and checked. All lengths are millimetres, sizes of letters are points.
namespace Layout {

struct TextStyle
{
    QString family; ///< empty: the engine's own
    double size = 9; ///< points
    bool bold = false;
    bool italic = false;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignTop;
    QColor colour = Qt::black;
    QColor background; ///< invalid: none
};

/// Something in a graphic band.
struct Item
{
    enum class Kind { Text, Line, Box, Picture, Barcode };
    enum class Symbology { Code128, Interleaved2of5, Qr };

    Kind kind = Kind::Text;
    QRectF place; ///< within the band; of a line: from the top left to the bottom right
    std::optional<Expression> condition; ///< missing: always
    int line = 0; ///< in the file, for messages

    TextTemplate text; ///< of a text
    TextStyle style;
    bool wraps = false;
    bool grows = false; ///< the band grows with the text
    double thickness = 0.2; ///< of lines and boxes
    bool stretches = false; ///< a line or box reaches down to the end of a band that grew
    std::optional<Expression> value; ///< of a picture (file name or QImage) and of a barcode
    Symbology symbology = Symbology::Code128;
    bool showsValue = false; ///< of a barcode: its text beneath
};

/// A line of a text layout; of a raw one, too, and its line feed is sent with it.
struct TextLine
{
    TextTemplate text;
    std::optional<Expression> condition;
    bool condensed = false;
    bool bold = false;
    int line = 0; ///< in the file
};

struct Band
{
    double height = 0; ///< at least
    std::optional<Expression> condition;
    bool newPageBefore = false;
    bool newPageAfter = false;
    bool repeats = false; ///< a header comes again on each page that its rows go on to
    bool keepsWithNext = false; ///< never the last on its page when something of the same rows follows
    std::vector<Item> items; ///< of a graphic layout
    std::vector<TextLine> lines; ///< of a text layout
    int line = 0; ///< in the file
};

/// All expressions of the band, with their lines in the file.
void forEachExpression(const Band &band, const std::function<void(const Expression &expression, int line)> &visit);

struct Group
{
    Expression by;
    bool newPage = false; ///< each but the first begins a page
    bool keepsTogether =
        false; ///< begins a page when it does not fit on what is left of this one, but would on a whole one
    std::optional<Band> header;
    std::optional<Band> footer;
    int line = 0; ///< in the file
};

/// The rows of a data set with all that is printed for them.
struct Rows
{
    QString dataSet;
    /// Rows beneath a row of the data set above: fields of this one that equal fields of that one. Empty: all rows.
    QVector<std::pair<QString, QString>> match;
    std::optional<Band> header; ///< before the first row; not printed when there is none
    std::optional<Band> empty; ///< instead of the rows when there is none
    std::vector<Group> groups; ///< from the outermost
    std::vector<Band> details;
    std::vector<Rows> beneath; ///< after each row
    bool keepsTogether = false; ///< each row with what is beneath it, like a group's
    std::optional<Band> footer; ///< after the last row
    int line = 0;
};

struct Page
{
    QSizeF size{210, 297};
    QMarginsF margins{10, 10, 10, 10};
    // Labels: each row of the data is one, left to right and then down.
    int columns = 1;
    QSizeF label; ///< empty: no labels, bands stand one beneath the other
    double columnGap = 0;
    double rowGap = 0;
};

/// The character page of a text layout; a raw one has no pages: what its bands say is sent as it stands.
struct CharacterPage
{
    int lines = 66;
    int columns = 80;
    bool raw = false;
    bool formFeed = true; ///< pages are ended by a form feed, else filled with empty lines
    QString encoding; ///< "CP850", "ISO-8859-1", "UTF-8"
};

struct Document
{
    QString name; ///< "WMalPend"
    QString title; ///< for the window and the file names: "OFs pendentes"
    QString file;
    bool isText = false;
    Page page;
    CharacterPage characters;
    std::optional<Band> pageHeader, titleBand, summary, pageFooter;
    bool titleBeforePageHeader = false;
    std::vector<Rows> rows; ///< one after the other
    int aggregates = 0; ///< how many there are, numbered from 0
};

} // namespace Layout
