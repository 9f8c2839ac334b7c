// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QStringList>

#include <array>

struct PageItem;

/// A font as it is on paper. Texts are measured at one fine resolution whatever they are painted on, so that preview,
/// printer and PDF break lines at the same places. For the thread of the windows alone.
class PaperFont
{
public:
    /// The unit in which fonts are measured and painted.
    static constexpr double unitsPerInch = 1440;
    static constexpr double unitsPerMillimetre = unitsPerInch / 25.4;

    /// Lives as long as the program. An empty family is Liberation Sans; characters that a family lacks come from
    /// DejaVu Sans. Size in points.
    static const PaperFont &of(const QString &family, double size, bool bold, bool italic);
    static const PaperFont &of(const PageItem &item);

    const QFont &font() const { return m_font; } ///< for a painter of unitsPerInch
    double lineHeight() const { return m_lineHeight; } ///< millimetres, as all that follow
    double ascent() const { return m_ascent; }
    /// Of one line. The mark of the page count has the room of three digits.
    double width(QStringView line) const;
    /// The text broken into lines of at most that width, at blanks where there are any; its own line ends are kept.
    QStringList broken(const QString &text, double width) const;
    /// The line, its end given up for an ellipsis when it is wider.
    QString elided(const QString &line, double width) const;

private:
    PaperFont(const QString &family, double size, bool bold, bool italic);
    double advance(QChar character) const; // units
    qsizetype fitting(QStringView line, double width) const;
    void breakLine(QStringView line, double width, QStringList &lines) const;

    QFont m_font;
    QFontMetricsF m_metrics;
    double m_lineHeight;
    double m_ascent;
    mutable std::array<float, 0x300> m_advances; // negative: not asked for yet
    mutable QHash<QChar, double> m_otherAdvances;
};
