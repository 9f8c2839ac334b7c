// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/report/layoutcheck.h"

#include "module/host_services/errors.h"
#include "module/host_services/host.h"

using namespace Qt::StringLiterals;

namespace {

class Checker
{
public:
    explicit Checker(const ReportCall &call)
        : m_call(call)
    {
    }

    void expression(const Expression &expression, const RowFrame &frame, int line) const
    {
        for (const QString &name : expression.names()) {
            if (!frame.knows(name))
                throw EQen(
                    u"linha %1: o campo ou parâmetro %2 não existe nos dados do relatório"_s.arg(line).arg(name));
        }
        for (const QString &function : expression.foreignFunctions()) {
            // The screen's own functions are known when they answer.
            if (!LayoutCheck::knownFunctions().contains(function) && !m_call.unknownFunction)
                throw EQen(u"linha %1: função %2 desconhecida"_s.arg(line).arg(function));
        }
    }

    void band(const Layout::Band &band, const RowFrame &frame) const
    {
        Layout::forEachExpression(band, [&](const Expression &each, int line) { expression(each, frame, line); });
    }

    void band(const std::optional<Layout::Band> &optional, const RowFrame &frame) const
    {
        if (optional)
            band(*optional, frame);
    }

    void rows(const RowFrame &frame) const
    {
        const Layout::Rows &rows = *frame.rows();
        for (const Layout::Group &group : rows.groups) {
            expression(group.by, frame, group.line);
            band(group.header, frame);
            band(group.footer, frame);
        }
        for (const Layout::Band &detail : rows.details)
            band(detail, frame);
        band(rows.header, frame);
        band(rows.empty, frame);
        band(rows.footer, frame);
        for (const auto &inner : frame.beneath())
            this->rows(*inner);
    }

private:
    const ReportCall &m_call;
};

} // namespace

const QStringList &LayoutCheck::knownFunctions()
{
    static const QStringList names{u"PARAM"_s, u"ROW"_s, u"TITLE"_s, u"DATE"_s, u"TIME"_s, u"NOW"_s, u"USER"_s,
        u"COMPANY"_s, u"PAGE"_s, u"PAGES"_s};
    return names;
}

void LayoutCheck::check(const Layout::Document &layout, const ReportCall &call, const RowFrame &first,
    const std::vector<std::unique_ptr<RowFrame>> &frames)
{
    const Checker checker(call);
    checker.band(layout.pageHeader, first);
    checker.band(layout.titleBand, first);
    checker.band(layout.summary, first);
    checker.band(layout.pageFooter, first);
    for (const auto &frame : frames)
        checker.rows(*frame);
}
