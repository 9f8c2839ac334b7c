// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/report.h"

#include "host/report/characterpages.h"
#include "host/report/layoutreader.h"
#include "host/report/paginator.h"
#include "module/host_services/host.h"

using namespace Qt::StringLiterals;

Report::Report(const QString &file, const ReportCall &call, const ReportContext &context)
    : m_call(call)
    , m_layout(LayoutReader::read(file))
    , m_walker(std::make_unique<Walker>(m_layout, m_call))
{
    m_walker->setFunction(u"USER"_s, [user = context.user] { return QVariant(user); });
    m_walker->setFunction(u"COMPANY"_s, [company = context.company] { return QVariant(company); });
    m_walker->setFunction(u"NOW"_s, [now = context.now] { return QVariant(now); });
    m_walker->setFunction(u"DATE"_s, [now = context.now] { return QVariant(now.date()); });
    m_walker->setFunction(u"TIME"_s, [now = context.now] { return QVariant(now.time()); });
    if (m_layout.isText) {
        m_pages = std::make_unique<PageStore>(CharacterPages::paper(m_layout.characters));
        m_text = std::make_unique<TextReport>(m_layout, *m_walker);
    } else {
        m_pages = std::make_unique<PageStore>(m_layout.page.size);
        m_paginator = std::make_unique<Paginator>(m_layout, *m_walker, *m_pages);
    }
}

Report::~Report() = default;

bool Report::step()
{
    if (m_finished)
        return false;
    m_finished = m_text ? !m_text->step() : !m_paginator->nextPage();
    if (m_finished && m_text)
        CharacterPages::append(m_text->pages(), m_layout.characters, *m_pages);
    return !m_finished;
}

int Report::rowsDone() const
{
    return m_walker->rowsDone();
}

QList<std::pair<QString, TDataSet *>> Report::listed() const
{
    QList<std::pair<QString, TDataSet *>> result;
    for (const Layout::Rows &rows : m_layout.rows) {
        for (const auto &entry : m_call.dataSets) {
            if (entry.second && entry.first.compare(rows.dataSet, Qt::CaseInsensitive) == 0 && !result.contains(entry))
                result.append(entry);
        }
    }
    return result;
}
