// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/report/rowframe.h"

#include "host/report/expressionfunctions.h"
#include "module/host_services/dataset.h"
#include "module/host_services/errors.h"
#include "module/host_services/host.h"

#include <numeric>

using namespace Qt::StringLiterals;

namespace {

/// Appends a value so that equal ones of a text and a number field are alike; false for null, which matches nothing.
bool appendKey(QString &key, const QVariant &value)
{
    if (value.isNull())
        return false;
    key += ExpressionFunctions::text(value).trimmed() + u'\x1f';
    return true;
}

} // namespace

RowFrame::RowFrame(const ReportValues &report, const Layout::Rows *rows, const RowFrame *above)
    : m_report(report)
    , m_rows(rows)
    , m_above(above)
{
    if (!rows)
        return;
    m_dataSet = findDataSet(rows->dataSet);
    if (!m_dataSet)
        throw EQen(u"linha %1: o relatório não recebeu os dados %2"_s.arg(rows->line).arg(rows->dataSet));
    for (const Layout::Rows &inner : rows->beneath)
        m_beneath.push_back(std::make_unique<RowFrame>(report, &inner, this));
    for (const auto &[own, upper] : rows->match) {
        if (!m_dataSet->hasField(own))
            throw EQen(u"linha %1: os dados %2 não têm o campo %3"_s.arg(rows->line).arg(rows->dataSet, own));
        if (above && !above->knows(upper))
            throw EQen(u"linha %1: o campo %2 não existe nos dados acima"_s.arg(rows->line).arg(upper));
    }
}

TDataSet *RowFrame::findDataSet(const QString &name) const
{
    for (const auto &[known, dataSet] : m_report.reportCall().dataSets) {
        if (known.compare(name, Qt::CaseInsensitive) == 0)
            return dataSet;
    }
    return nullptr;
}

bool RowFrame::hasRow(int row)
{
    while (row >= m_dataSet->rowCount() && m_dataSet->canFetchMore())
        m_dataSet->fetchMore();
    return row < m_dataSet->rowCount();
}

void RowFrame::buildIndex()
{
    QVector<int> fields;
    for (const auto &pair : m_rows->match)
        fields.append(m_dataSet->fieldIndex(pair.first));
    for (int row = 0; hasRow(row); ++row) {
        QString key;
        bool complete = true;
        for (const int field : fields)
            complete = complete && appendKey(key, m_dataSet->cell(row, field));
        if (complete)
            m_index[key].append(row);
    }
    m_isIndexed = true;
}

QVector<int> RowFrame::matchingRows()
{
    if (m_rows->match.isEmpty()) {
        while (m_dataSet->canFetchMore())
            m_dataSet->fetchMore();
        QVector<int> all(m_dataSet->rowCount());
        std::iota(all.begin(), all.end(), 0);
        return all;
    }
    if (!m_isIndexed)
        buildIndex();
    QString key;
    for (const auto &pair : m_rows->match) {
        if (!appendKey(key, m_above->value(pair.second)))
            return {};
    }
    return m_index.value(key);
}

std::optional<RowFrame::Source> RowFrame::findQualified(const QString &name, const QString &field) const
{
    TDataSet *dataSet = findDataSet(name);
    if (!dataSet || !dataSet->hasField(field))
        return std::nullopt;
    const int index = dataSet->fieldIndex(field);
    for (const RowFrame *frame = this; frame; frame = frame->m_above) {
        if (frame->m_dataSet == dataSet)
            return Source{frame, dataSet, index, {}};
    }
    return Source{m_report.frameOf(dataSet), dataSet, index, {}};
}

std::optional<RowFrame::Source> RowFrame::find(const QString &name) const
{
    for (const RowFrame *frame = this; frame; frame = frame->m_above) {
        if (frame->m_dataSet && frame->m_dataSet->hasField(name))
            return Source{frame, frame->m_dataSet, frame->m_dataSet->fieldIndex(name), {}};
    }
    const QVariantMap &parameters = m_report.reportCall().parameters;
    for (auto parameter = parameters.begin(); parameter != parameters.end(); ++parameter) {
        if (parameter.key().compare(name, Qt::CaseInsensitive) == 0)
            return Source{nullptr, nullptr, -1, parameter.value()};
    }
    const qsizetype point = name.lastIndexOf(u'.');
    return point < 0 ? std::nullopt : findQualified(name.left(point), name.mid(point + 1));
}

bool RowFrame::knows(const QString &name) const
{
    if (m_sources.contains(name))
        return true;
    const std::optional<Source> found = find(name);
    if (found)
        m_sources.insert(name, *found);
    return found.has_value();
}

QVariant RowFrame::value(const QString &name) const
{
    if (!knows(name))
        throw EQen(u"O campo ou parâmetro %1 não existe neste relatório."_s.arg(name));
    const auto source = m_sources.constFind(name);
    if (!source->dataSet)
        return source->parameter;
    const int row = source->frame ? source->frame->m_row : source->dataSet->row();
    // The screen may have emptied the data meanwhile.
    if (row < 0 || row >= source->dataSet->rowCount())
        return {};
    return source->dataSet->cell(row, source->field);
}

QVariant RowFrame::call(const QString &function, const QVariantList &arguments) const
{
    if (function == "ROW"_L1)
        return m_number;
    return m_report.call(function, arguments);
}
