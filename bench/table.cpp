// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/table.h"

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

QString withSpread(const Times &times)
{
    return u"%1 ±%2"_s.arg(times.median(), 0, 'f', 2).arg(times.spread(), 0, 'f', 2);
}

QStringList cells(const Comparison &row)
{
    return {row.what, row.engine, withSpread(row.floor), withSpread(row.program), QString::number(row.ratio(), 'f', 2),
        QString::number(row.atMost, 'f', 1), row.isGood() ? u"yes"_s : u"NO"_s};
}

} // namespace

void printLines(const QVector<QStringList> &lines)
{
    QVector<qsizetype> widths(lines.first().size(), 0);
    for (const QStringList &line : lines) {
        for (qsizetype i = 0; i < line.size(); ++i)
            widths[i] = qMax(widths[i], line[i].size());
    }
    for (const QStringList &line : lines) {
        QStringList shown;
        for (qsizetype i = 0; i < line.size(); ++i) {
            const bool isText = i < 2;
            shown.append(isText ? line[i].leftJustified(widths[i]) : line[i].rightJustified(widths[i]));
        }
        std::puts(qUtf8Printable(shown.join(u"  "_s)));
    }
}

void printTable(const QVector<Comparison> &rows)
{
    QVector<QStringList> lines{
        {u"what"_s, u"engine"_s, u"floor (ms)"_s, u"program (ms)"_s, u"ratio"_s, u"at most"_s, u"ok"_s}};
    for (const Comparison &row : rows)
        lines.append(cells(row));
    printLines(lines);
}
