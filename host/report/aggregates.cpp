// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/report/aggregates.h"

namespace {

const Layout::Band *pointer(const std::optional<Layout::Band> &band)
{
    return band ? &*band : nullptr;
}

} // namespace

ReportAggregates::ReportAggregates(const Layout::Document &layout)
    : m_accumulators(size_t(layout.aggregates))
{
    collect(layout.summary);
    collect(layout.pageFooter);
    for (const Layout::Rows &rows : layout.rows)
        collect(rows);
}

void ReportAggregates::collect(const Layout::Rows &rows)
{
    for (const Layout::Group &group : rows.groups)
        collect(group.footer);
    collect(rows.footer);
    for (const Layout::Rows &inner : rows.beneath)
        collect(inner);
}

void ReportAggregates::collect(const std::optional<Layout::Band> &band)
{
    if (!band)
        return;
    QVector<Use> uses;
    Layout::forEachExpression(*band, [&](const Expression &expression, int) { collect(expression, uses); });
    if (!uses.isEmpty())
        m_uses.insert(&*band, uses);
}

void ReportAggregates::collect(const Expression &expression, QVector<Use> &uses)
{
    int number = expression.firstAggregate();
    for (const Expression::Aggregate &aggregate : expression.aggregates()) {
        m_accumulators[size_t(number)] = Accumulator(aggregate.kind);
        uses.append({number++, aggregate.of});
    }
}

bool ReportAggregates::has(const std::optional<Layout::Band> &band) const
{
    return m_uses.contains(pointer(band));
}

void ReportAggregates::clear(const std::optional<Layout::Band> &band)
{
    for (const Use &use : m_uses.value(pointer(band)))
        m_accumulators[size_t(use.number)].clear();
}

QVariantList ReportAggregates::values(const std::optional<Layout::Band> &band, const ExpressionScope &row) const
{
    QVariantList result;
    for (const Use &use : m_uses.value(pointer(band)))
        result.append(use.of ? use.of->evaluate(row) : QVariant(1)); // COUNT() counts every row
    return result;
}

void ReportAggregates::addValues(const std::optional<Layout::Band> &band, const QVariantList &values)
{
    const QVector<Use> uses = m_uses.value(pointer(band));
    for (qsizetype i = 0; i < uses.size(); ++i)
        m_accumulators[size_t(uses[i].number)].add(values[i]);
}

void ReportAggregates::add(const std::optional<Layout::Band> &band, const ExpressionScope &row)
{
    if (has(band))
        addValues(band, values(band, row));
}

QVariant ReportAggregates::result(int number) const
{
    return m_accumulators.at(size_t(number)).result();
}
