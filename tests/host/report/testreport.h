// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/layoutreader.h"
#include "host/report/paginator.h"
#include "host/report/textreport.h"
#include "module/host_services/clientdataset.h"
#include "module/host_services/errors.h"
#include "module/host_services/host.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

/// A layout as text and rows in memory, laid out whole.
class TestReport
{
public:
    using Values = std::initializer_list<std::pair<QString, QVariant>>;

    /// The name of a graphic layout begins with W, that of a text layout with T.
    TestReport(const QString &name, const QString &xml)
        : m_name(name)
        , m_xml(xml)
    {
    }

    TClientDataSet &addDataSet(const QString &name, const QVector<TField> &fields)
    {
        m_sets.push_back(std::make_unique<TClientDataSet>());
        m_sets.back()->CreateDataSet(fields);
        m_call.dataSets.append({name, m_sets.back().get()});
        return *m_sets.back();
    }

    static void addRow(TClientDataSet &set, const Values &values)
    {
        set.Append();
        for (const auto &[name, value] : values)
            set.setValue(name, value);
        set.Post();
    }

    QString folder() const { return m_folder.path(); }
    ReportCall &call() { return m_call; }
    Walker &walker() { return *m_walker; }
    Paginator &paginator() { return *m_paginator; }
    PageStore &pages() { return *m_pages; }

    /// Ready for the first page.
    void begin()
    {
        read();
        m_pages = std::make_unique<PageStore>(m_layout.page.size);
        m_paginator = std::make_unique<Paginator>(m_layout, *m_walker, *m_pages);
    }

    /// The number of pages.
    int layOut()
    {
        begin();
        while (m_paginator->nextPage()) { }
        return m_pages->count();
    }

    TextReport &layOutText()
    {
        read();
        m_text = std::make_unique<TextReport>(m_layout, *m_walker);
        while (m_text->step()) { }
        return *m_text;
    }

    /// What a page says, in the order in which it was put there.
    QStringList texts(int page) const
    {
        QStringList texts;
        for (const PageItem &item : m_pages->page(page).items) {
            if (item.kind == PageItem::Kind::Text)
                texts.append(item.shownText(m_pages->count()));
        }
        return texts;
    }

    /// The item of that text; a failure when there is none.
    PageItem item(int page, const QString &text) const
    {
        for (const PageItem &item : m_pages->page(page).items) {
            if (item.kind == PageItem::Kind::Text && item.shownText(m_pages->count()) == text)
                return item;
        }
        QTest::qFail(qPrintable(QStringLiteral("no text ") + text), __FILE__, __LINE__);
        return {};
    }

    QVector<PageItem> items(int page, PageItem::Kind kind) const
    {
        QVector<PageItem> found;
        for (const PageItem &item : m_pages->page(page).items) {
            if (item.kind == kind)
                found.append(item);
        }
        return found;
    }

private:
    void read()
    {
        QFile file(m_folder.filePath(m_name + QStringLiteral(".xml")));
        if (!file.open(QIODevice::WriteOnly) || file.write(m_xml.toUtf8()) < 0)
            qFatal("the layout cannot be written");
        file.close();
        m_layout = LayoutReader::read(file.fileName());
        m_call.name = m_name;
        m_walker = std::make_unique<Walker>(m_layout, m_call);
    }

    QString m_name;
    QString m_xml;
    QTemporaryDir m_folder;
    std::vector<std::unique_ptr<TClientDataSet>> m_sets;
    ReportCall m_call;
    Layout::Document m_layout;
    std::unique_ptr<Walker> m_walker;
    std::unique_ptr<PageStore> m_pages;
    std::unique_ptr<Paginator> m_paginator;
    std::unique_ptr<TextReport> m_text;
};
