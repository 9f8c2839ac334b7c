// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/layout.h"
#include "host/report/layoutxml.h"

/// Reads the bands of a layout with what stands in them, for LayoutReader.
class BandReader
{
public:
    enum class Place { PageHeader, Title, Header, Empty, Detail, Footer, Summary, PageFooter };

    explicit BandReader(LayoutXml &xml);

    /// What the bands must fit into: millimetres, or the characters of a line; 0 for no limit.
    void setWidth(double width, bool isText);
    /// Reads the current element <style>.
    void readStyle();
    /// Reads the current element, whatever its name is; `further` reads attributes that it alone has.
    Layout::Band readBand(Place place, const std::function<void(LayoutAttributes &)> &further = {});
    /// An expression without aggregates, from an attribute.
    Expression readExpression(const QString &text);

    int aggregates() const { return m_aggregates; } ///< met so far
    bool hasBands() const { return m_hasBands; }

private:
    /// What the parser makes of the text, with the aggregates numbered.
    template <typename Parsed> Parsed parsed(const QString &text, Parsed (*parse)(const QString &));
    std::optional<Expression> condition(LayoutAttributes &attributes);
    Layout::TextStyle readTextStyle(LayoutAttributes &attributes);
    Qt::Alignment readAlignment(LayoutAttributes &attributes, Qt::Alignment otherwise);
    QColor readColour(LayoutAttributes &attributes, const QString &name, const QColor &otherwise);

    Layout::TextLine readTextLine();
    Layout::Item readText();
    Layout::Item readLine();
    Layout::Item readBox();
    Layout::Item readPicture();
    Layout::Item readBarcode();
    QRectF readPlace(LayoutAttributes &attributes, double usualHeight);
    void checkWidth(double right) const;
    void checkHeight(Layout::Band &band) const;

    LayoutXml &m_xml;
    double m_width = 0;
    bool m_isText = false;
    bool m_hasBands = false;
    bool m_takesAggregates = false; ///< the current band does
    int m_aggregates = 0;
    QHash<QString, Layout::TextStyle> m_styles;
};
