// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/paperfont.h"

#include "host/report/page.h"

#include <QTextBoundaryFinder>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr double pointsPerInch = 72;
constexpr int pageCountDigits = 3;
constexpr QChar ellipsis(0x2026);
constexpr double tolerance = 1e-6; // millimetres

struct Key
{
    QString family;
    double size;
    bool bold;
    bool italic;
    bool operator==(const Key &) const = default;
};

size_t qHash(const Key &key, size_t seed = 0)
{
    return qHashMulti(seed, key.family, key.size, key.bold, key.italic);
}

QFont fontOf(const QString &family, double size, bool bold, bool italic)
{
    QStringList families{u"Liberation Sans"_s, u"DejaVu Sans"_s};
    if (!family.isEmpty())
        families.prepend(family);
    QFont font;
    font.setFamilies(families);
    font.setPixelSize(qMax(1, qRound(size / pointsPerInch * PaperFont::unitsPerInch)));
    font.setBold(bold);
    font.setItalic(italic);
    font.setHintingPreference(QFont::PreferNoHinting);
    // Without kerning a line is as wide as its characters together, which makes measuring cheap.
    font.setKerning(false);
    return font;
}

/// Whether the character stands by itself, neither shaped by its neighbours nor put upon them.
bool standsAlone(QChar character)
{
    const char16_t code = character.unicode();
    return code < 0x300 || (code >= 0x2010 && code < 0x20D0) || character == pageCountMark;
}

} // namespace

const PaperFont &PaperFont::of(const QString &family, double size, bool bold, bool italic)
{
    static QHash<Key, std::shared_ptr<const PaperFont>> fonts;
    std::shared_ptr<const PaperFont> &font = fonts[{family, size, bold, italic}];
    if (!font)
        font.reset(new PaperFont(family, size, bold, italic));
    return *font;
}

const PaperFont &PaperFont::of(const PageItem &item)
{
    return of(item.family, item.size, item.bold, item.italic);
}

PaperFont::PaperFont(const QString &family, double size, bool bold, bool italic)
    : m_font(fontOf(family, size, bold, italic))
    , m_metrics(m_font)
    , m_lineHeight(m_metrics.lineSpacing() / unitsPerMillimetre)
    , m_ascent(m_metrics.ascent() / unitsPerMillimetre)
{
    m_advances.fill(-1);
}

double PaperFont::advance(QChar character) const
{
    if (character == pageCountMark)
        return pageCountDigits * advance(u'0');
    if (character.unicode() < m_advances.size()) {
        float &known = m_advances[character.unicode()];
        if (known < 0)
            known = float(m_metrics.horizontalAdvance(character));
        return known;
    }
    const auto known = m_otherAdvances.constFind(character);
    if (known != m_otherAdvances.cend())
        return *known;
    return *m_otherAdvances.insert(character, m_metrics.horizontalAdvance(character));
}

double PaperFont::width(QStringView line) const
{
    double units = 0;
    for (const QChar character : line) {
        if (!standsAlone(character))
            return m_metrics.horizontalAdvance(line.toString()) / unitsPerMillimetre;
        units += advance(character);
    }
    return units / unitsPerMillimetre;
}

qsizetype PaperFont::fitting(QStringView line, double width) const
{
    qsizetype length = line.size();
    while (length > 0 && this->width(line.first(length)) > width + tolerance)
        --length;
    if (length > 0 && length < line.size() && line[length].isLowSurrogate())
        --length;
    return length;
}

void PaperFont::breakLine(QStringView line, double width, QStringList &lines) const
{
    QTextBoundaryFinder boundaries(QTextBoundaryFinder::Line, line.data(), line.size());
    qsizetype start = 0;
    qsizetype good = 0; // the last place after start where a line that fits may end
    const auto add = [&](qsizetype end) {
        lines.append(line.sliced(start, end - start).trimmed().toString());
        start = end;
    };
    for (qsizetype next = boundaries.toNextBoundary(); next > 0; next = boundaries.toNextBoundary()) {
        const auto fits = [&] { return this->width(line.sliced(start, next - start).trimmed()) <= width + tolerance; };
        if (!fits() && good > start)
            add(good);
        // A word wider than the place.
        while (!fits())
            add(start + qMax<qsizetype>(1, fitting(line.sliced(start, next - start), width)));
        good = next;
    }
    if (start < line.size() || line.isEmpty())
        add(line.size());
}

QStringList PaperFont::broken(const QString &text, double width) const
{
    QStringList lines;
    for (const QStringView line : QStringView(text).split(u'\n')) {
        if (this->width(line) <= width + tolerance)
            lines.append(line.toString());
        else
            breakLine(line, width, lines);
    }
    return lines;
}

QString PaperFont::elided(const QString &line, double width) const
{
    if (this->width(line) <= width + tolerance)
        return line;
    const double room = width - this->width(QStringView(&ellipsis, 1));
    return line.first(fitting(line, room)).trimmed() + ellipsis;
}
