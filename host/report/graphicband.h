// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/bandflow.h"
#include "host/report/page.h"
#include "host/report/picture.h"

#include <utility>

/// A graphic band as it was evaluated: its items stand within the band.
struct GraphicBand : BandContent
{
    struct Piece
    {
        PageItem item;
        bool stretches = false;
        bool grew = false; ///< a text that may be continued on the next page
    };
    QVector<Piece> pieces;

    /// What stands above that line, and what goes on beneath it; the first is null when nothing can stay. A text
    /// leaves at least two lines on either side unless it `must` be cut.
    std::pair<std::shared_ptr<GraphicBand>, std::shared_ptr<GraphicBand>> split(double line, bool must) const;
};

/// Evaluates graphic bands.
class GraphicBands
{
public:
    /// Must outlive it.
    explicit GraphicBands(const Layout::Document &layout);

    /// `grows`: whether texts may make the band higher than it was drawn.
    std::shared_ptr<GraphicBand> compose(const Layout::Band &band, const ExpressionScope &scope, bool grows);

private:
    void addItem(GraphicBand &band, const Layout::Item &item, const ExpressionScope &scope, bool grows);
    void addText(GraphicBand &band, const Layout::Item &item, const ExpressionScope &scope, bool grows);
    void addPicture(GraphicBand &band, const Layout::Item &item, const ExpressionScope &scope);
    void addBarcode(GraphicBand &band, const Layout::Item &item, const ExpressionScope &scope);

    const Layout::Document &m_layout;
    Pictures m_pictures;
};
