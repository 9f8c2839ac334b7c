// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "invoicing/pastedlots.h"

#include "invoicing/lotrules.h"
#include "module/host_services/format.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace PastedLots {

namespace {

constexpr int leastColumns = 4; // material, lot, quantity, price
constexpr int mostColumns = 5; // and the brand
constexpr double mostFigure = 1e12; // what the widest figure column of the tables holds

/// Sizes of the columns that keep them.
constexpr int materialSize = 15;
constexpr int lotSize = 15;
constexpr int brandSize = 30;

struct Line
{
    int number = 0;
    QStringList cells;
};

/// Cuts the text into cells; within quotes neither tab nor line break does.
class CellReader
{
public:
    explicit CellReader(const QString &text)
        : m_text(text)
    {
    }

    QVector<Line> read()
    {
        while (m_at < m_text.size())
            readLine();
        return m_lines;
    }

private:
    void readLine()
    {
        Line line{m_number, {}};
        do {
            line.cells.append(startsQuoted() ? quotedCell() : plainCell());
        } while (m_at < m_text.size() && m_text[m_at++] == u'\t');
        ++m_number;
        m_lines.append(line);
    }

    /// A quote alone, in inches say, begins no quoted cell: such a cell ends with a quote.
    bool startsQuoted() const
    {
        if (m_at >= m_text.size() || m_text[m_at] != u'"')
            return false;
        const qsizetype end = closingQuote();
        return end >= 0 && (end + 1 == m_text.size() || m_text[end + 1] == u'\t' || m_text[end + 1] == u'\n');
    }

    qsizetype closingQuote() const
    {
        for (qsizetype i = m_at + 1; i < m_text.size(); ++i) {
            if (m_text[i] != u'"')
                continue;
            if (i + 1 < m_text.size() && m_text[i + 1] == u'"')
                ++i;
            else
                return i;
        }
        return -1;
    }

    QString quotedCell()
    {
        const qsizetype end = closingQuote();
        QString cell = m_text.mid(m_at + 1, end - m_at - 1);
        m_at = end + 1;
        m_number += int(cell.count(u'\n'));
        return cell.replace(u"\"\""_s, u"\""_s).simplified();
    }

    QString plainCell()
    {
        const qsizetype start = m_at;
        while (m_at < m_text.size() && m_text[m_at] != u'\t' && m_text[m_at] != u'\n')
            ++m_at;
        return m_text.mid(start, m_at - start).trimmed();
    }

    QString m_text;
    qsizetype m_at = 0;
    int m_number = 1;
    QVector<Line> m_lines;
};

bool isBlank(const Line &line)
{
    return std::all_of(line.cells.begin(), line.cells.end(), [](const QString &cell) { return cell.isEmpty(); });
}

QString lengthFault(const QString &what, const QString &text, int size)
{
    // Characters, as the tables count them, and not their parts.
    return text.toUcs4().size() > size ? u"%1 com mais de %2 caracteres."_s.arg(what).arg(size) : QString();
}

/// Reads a figure into `value`, an empty cell as 0; gives what is wrong with it.
QString readFigure(const QString &what, const QString &text, int decimals, double *value)
{
    const std::optional<double> figure = text.isEmpty() ? 0 : Format::parseNumber(text);
    if (!figure || std::abs(*figure) >= mostFigure)
        return what + u": \""_s + text + u"\"."_s;
    *value = Format::rounded(*figure, decimals);
    return {};
}

Row rowOf(const Line &line)
{
    Row row;
    row.line = line.number;
    row.material = line.cells.value(0);
    row.lot = LotRules::lotOf(line.cells.value(1));
    row.brand = line.cells.value(4);
    const bool tooMany = !isBlank({0, line.cells.mid(mostColumns)});
    if (line.cells.size() < leastColumns || tooMany) {
        row.fault = u"A linha deve ter as colunas material, lote, quantidade, preço e marca."_s;
        return row;
    }
    for (const QString &fault : {lengthFault(u"Material"_s, row.material, materialSize),
             lengthFault(u"Lote"_s, row.lot, lotSize), lengthFault(u"Marca"_s, row.brand, brandSize),
             readFigure(u"Quantidade inválida"_s, line.cells[2], 3, &row.quantity),
             readFigure(u"Preço inválido"_s, line.cells[3], 6, &row.price)}) {
        if (row.fault.isEmpty())
            row.fault = fault;
    }
    return row;
}

} // namespace

QVector<Row> parse(const QString &text)
{
    QVector<Row> rows;
    for (const Line &line : CellReader(QString(text).replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n')).read()) {
        if (!isBlank(line))
            rows.append(rowOf(line));
    }
    return rows;
}

} // namespace PastedLots
