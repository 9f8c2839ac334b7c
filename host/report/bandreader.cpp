// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/report/bandreader.h"

using namespace Qt::StringLiterals;

namespace {

constexpr double tolerance = 0.01; // mm
constexpr double millimetresPerPoint = 25.4 / 72;

bool takesAggregates(BandReader::Place place)
{
    return place == BandReader::Place::Footer || place == BandReader::Place::Summary
        || place == BandReader::Place::PageFooter;
}

int aggregatesOf(const Expression &expression)
{
    return int(expression.aggregates().size());
}

int aggregatesOf(const TextTemplate &text)
{
    int count = 0;
    for (const TextTemplate::Part &part : text.parts())
        count += part.expression ? int(part.expression->aggregates().size()) : 0;
    return count;
}

} // namespace

BandReader::BandReader(LayoutXml &xml)
    : m_xml(xml)
{
}

void BandReader::setWidth(double width, bool isText)
{
    m_width = width;
    m_isText = isText;
}

template <typename Parsed> Parsed BandReader::parsed(const QString &text, Parsed (*parse)(const QString &))
{
    Parsed result;
    try {
        result = parse(text);
    } catch (const ExpressionError &error) {
        m_xml.fail(
            u"em \"%1\", posição %2: esperado %3"_s.arg(text.trimmed()).arg(error.position + 1).arg(error.expected));
    }
    if (!m_takesAggregates && aggregatesOf(result) > 0)
        m_xml.fail(
            u"total em \"%1\"; SUM, COUNT, AVG, MIN e MAX são esperados só em footer, summary e page-footer"_s.arg(
                text.trimmed()));
    m_aggregates = result.numberAggregates(m_aggregates);
    return result;
}

Expression BandReader::readExpression(const QString &text)
{
    return parsed(text, &Expression::parse);
}

std::optional<Expression> BandReader::condition(LayoutAttributes &attributes)
{
    if (!attributes.has(u"if"_s))
        return std::nullopt;
    return parsed(attributes.needed(u"if"_s), &Expression::parseCondition);
}

QColor BandReader::readColour(LayoutAttributes &attributes, const QString &name, const QColor &otherwise)
{
    if (!attributes.has(name))
        return otherwise;
    const QColor colour(attributes.text(name));
    if (!colour.isValid())
        attributes.failExpected(name, u"uma cor como #336699 ou red"_s);
    return colour;
}

Qt::Alignment BandReader::readAlignment(LayoutAttributes &attributes, Qt::Alignment otherwise)
{
    static const Qt::Alignment horizontal[]{Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight, Qt::AlignJustify};
    static const Qt::Alignment vertical[]{Qt::AlignTop, Qt::AlignVCenter, Qt::AlignBottom};
    const int across = attributes.word(u"align"_s, {u"left"_s, u"center"_s, u"right"_s, u"justify"_s}, -1);
    const int down = attributes.word(u"valign"_s, {u"top"_s, u"center"_s, u"bottom"_s}, -1);
    return (across < 0 ? otherwise & Qt::AlignHorizontal_Mask : horizontal[across])
        | (down < 0 ? otherwise & Qt::AlignVertical_Mask : vertical[down]);
}

Layout::TextStyle BandReader::readTextStyle(LayoutAttributes &attributes)
{
    Layout::TextStyle style;
    if (attributes.has(u"style"_s)) {
        const QString name = attributes.text(u"style"_s);
        if (!m_styles.contains(name)) {
            QStringList known = m_styles.keys();
            known.sort();
            attributes.failExpected(u"style"_s,
                known.isEmpty() ? u"um <style> definido antes"_s : u"um dos estilos "_s + known.join(u", "_s));
        }
        style = m_styles.value(name);
    }
    if (attributes.has(u"font"_s))
        style.family = attributes.text(u"font"_s);
    style.size = attributes.number(u"size"_s, style.size, 1);
    style.bold = attributes.yes(u"bold"_s, style.bold);
    style.italic = attributes.yes(u"italic"_s, style.italic);
    style.colour = readColour(attributes, u"colour"_s, style.colour);
    style.background = readColour(attributes, u"background"_s, style.background);
    style.alignment = readAlignment(attributes, style.alignment);
    return style;
}

void BandReader::readStyle()
{
    LayoutAttributes attributes(m_xml);
    const QString name = attributes.needed(u"name"_s);
    if (m_styles.contains(name))
        attributes.failExpected(u"name"_s, u"um nome que nenhum outro <style> tem"_s);
    const Layout::TextStyle style = readTextStyle(attributes);
    attributes.done();
    m_xml.noChildren();
    m_styles.insert(name, style);
}

Layout::Band BandReader::readBand(Place place, const std::function<void(LayoutAttributes &)> &further)
{
    m_hasBands = true;
    m_takesAggregates = takesAggregates(place);
    LayoutAttributes attributes(m_xml);
    Layout::Band band;
    band.line = m_xml.line();
    if (!m_isText)
        band.height = attributes.number(u"height"_s, 0);
    band.condition = condition(attributes);
    if (place != Place::PageHeader && place != Place::PageFooter) {
        band.newPageBefore = attributes.yes(u"new-page-before"_s);
        band.newPageAfter = attributes.yes(u"new-page-after"_s);
        band.keepsWithNext = attributes.yes(u"keep-with-next"_s, place == Place::Header);
    }
    if (place == Place::Header)
        band.repeats = attributes.yes(u"repeat"_s);
    if (further)
        further(attributes);
    attributes.done();

    const auto item = [&](Layout::Item (BandReader::*read)()) {
        return [this, &band, read] { band.items.push_back((this->*read)()); };
    };
    if (m_isText) {
        m_xml.children({{u"line"_s, [&] { band.lines.push_back(readTextLine()); }}});
    } else {
        m_xml.children({{u"text"_s, item(&BandReader::readText)}, {u"line"_s, item(&BandReader::readLine)},
            {u"box"_s, item(&BandReader::readBox)}, {u"picture"_s, item(&BandReader::readPicture)},
            {u"barcode"_s, item(&BandReader::readBarcode)}});
        checkHeight(band);
    }
    m_takesAggregates = false;
    return band;
}

void BandReader::checkHeight(Layout::Band &band) const
{
    double lowest = 0;
    for (const Layout::Item &item : band.items) {
        const double bottom = item.place.bottom();
        if (band.height > 0 && bottom > band.height + tolerance) {
            m_xml.failAt(item.line,
                u"o elemento vai até %1 mm e sai da faixa; esperado até %2 mm"_s.arg(bottom).arg(band.height));
        }
        lowest = qMax(lowest, bottom);
    }
    if (band.height <= 0)
        band.height = lowest;
}

void BandReader::checkWidth(double right) const
{
    if (m_width > 0 && right > m_width + tolerance) {
        m_xml.fail(u"o elemento <%1> vai até %2 mm e sai da largura; esperado até %3 mm"_s.arg(m_xml.element())
                       .arg(right)
                       .arg(m_width));
    }
}

Layout::TextLine BandReader::readTextLine()
{
    LayoutAttributes attributes(m_xml);
    Layout::TextLine line;
    line.line = m_xml.line();
    line.condition = condition(attributes);
    line.condensed = attributes.yes(u"condensed"_s);
    line.bold = attributes.yes(u"bold"_s);
    attributes.done();
    const QString text = m_xml.text(true);
    if (m_width > 0 && text.contains(u'\n'))
        m_xml.failAt(line.line, u"<line> com mais de uma linha; esperado um <line> para cada uma"_s);
    line.text = parsed(text, &TextTemplate::parse);
    const bool fixed = aggregatesOf(line.text) == 0 && !text.contains(u'{');
    if (fixed && !line.condensed && m_width > 0 && text.size() > m_width) {
        m_xml.fail(u"a linha tem %1 caracteres e sai da largura; esperado até %2"_s.arg(text.size()).arg(m_width));
    }
    return line;
}

QRectF BandReader::readPlace(LayoutAttributes &attributes, double usualHeight)
{
    const double x = attributes.number(u"x"_s, 0);
    const double y = attributes.number(u"y"_s, 0);
    const double width = attributes.number(u"w"_s, qMax(0.0, m_width - x));
    const double height = usualHeight > 0 ? attributes.number(u"h"_s, usualHeight) : attributes.neededNumber(u"h"_s);
    checkWidth(x + width);
    return {x, y, width, height};
}

Layout::Item BandReader::readText()
{
    LayoutAttributes attributes(m_xml);
    Layout::Item item;
    item.line = m_xml.line();
    item.style = readTextStyle(attributes);
    item.place = readPlace(attributes, item.style.size * millimetresPerPoint * 1.25);
    item.grows = attributes.yes(u"grow"_s);
    item.wraps = attributes.yes(u"wrap"_s, item.grows);
    item.condition = condition(attributes);
    attributes.done();
    item.text = parsed(m_xml.text(false), &TextTemplate::parse);
    return item;
}

Layout::Item BandReader::readLine()
{
    LayoutAttributes attributes(m_xml);
    Layout::Item item;
    item.kind = Layout::Item::Kind::Line;
    item.line = m_xml.line();
    const double x1 = attributes.number(u"x1"_s, 0);
    const double y1 = attributes.number(u"y1"_s, 0);
    const double x2 = attributes.number(u"x2"_s, m_width);
    const double y2 = attributes.number(u"y2"_s, y1);
    if (x2 < x1 || y2 < y1)
        m_xml.fail(u"linha ao contrário; esperado x1 até x2 e y1 até y2, da esquerda para a direita e para baixo"_s);
    checkWidth(x2);
    item.place = QRectF(QPointF(x1, y1), QPointF(x2, y2));
    item.thickness = attributes.number(u"thickness"_s, item.thickness);
    item.stretches = attributes.yes(u"stretch"_s);
    item.style.colour = readColour(attributes, u"colour"_s, item.style.colour);
    item.condition = condition(attributes);
    attributes.done();
    m_xml.noChildren();
    return item;
}

Layout::Item BandReader::readBox()
{
    LayoutAttributes attributes(m_xml);
    Layout::Item item;
    item.kind = Layout::Item::Kind::Box;
    item.line = m_xml.line();
    item.place = readPlace(attributes, 0);
    item.thickness = attributes.number(u"thickness"_s, item.thickness);
    item.stretches = attributes.yes(u"stretch"_s);
    item.style.colour = readColour(attributes, u"colour"_s, item.style.colour);
    item.style.background = readColour(attributes, u"background"_s, {});
    item.condition = condition(attributes);
    attributes.done();
    m_xml.noChildren();
    return item;
}

Layout::Item BandReader::readPicture()
{
    LayoutAttributes attributes(m_xml);
    Layout::Item item;
    item.kind = Layout::Item::Kind::Picture;
    item.line = m_xml.line();
    item.place = readPlace(attributes, 0);
    item.value = readExpression(attributes.needed(u"value"_s));
    item.style.alignment = readAlignment(attributes, item.style.alignment);
    item.condition = condition(attributes);
    attributes.done();
    m_xml.noChildren();
    return item;
}

Layout::Item BandReader::readBarcode()
{
    using Symbology = Layout::Item::Symbology;
    static const Symbology symbologies[]{Symbology::Code128, Symbology::Interleaved2of5, Symbology::Qr};
    LayoutAttributes attributes(m_xml);
    Layout::Item item;
    item.kind = Layout::Item::Kind::Barcode;
    item.line = m_xml.line();
    attributes.needed(u"kind"_s);
    item.symbology = symbologies[attributes.word(u"kind"_s, {u"code128"_s, u"itf"_s, u"qr"_s}, 0)];
    item.style = readTextStyle(attributes);
    item.place = readPlace(attributes, 0);
    item.value = readExpression(attributes.needed(u"value"_s));
    item.showsValue = attributes.yes(u"show-value"_s);
    item.condition = condition(attributes);
    attributes.done();
    m_xml.noChildren();
    return item;
}
