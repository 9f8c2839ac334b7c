// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/layout.h"
#include "host/report/textreport.h"

#include <QDateTime>

#include <memory>

class PageStore;
class Paginator;
class TDataSet;
class Walker;
struct ReportCall;

/// What paper says of who printed it, and where.
struct ReportContext
{
    QString user;
    QString company;
    QDateTime now;
};

/// A report on its way from data to pages, a step at a time. Its data sets must not change meanwhile.
class Report
{
public:
    /// The layout's file, read and checked; the call must outlive the report. Throws EQen.
    Report(const QString &file, const ReportCall &call, const ReportContext &context);
    ~Report();
    Q_DISABLE_COPY_MOVE(Report)

    QString name() const { return m_layout.name; }
    QString title() const { return m_layout.title; }
    bool isText() const { return m_layout.isText; }
    bool isRaw() const { return m_layout.isText && m_layout.characters.raw; }

    /// At least one more page, or some rows of a text report. False: it has ended.
    bool step();
    bool isFinished() const { return m_finished; }
    int rowsDone() const; ///< of the first data set

    /// The pages that stand already; those of a text report when it has ended.
    const PageStore &pages() const { return *m_pages; }
    /// Of a text report that has ended: what goes to the printer.
    QByteArray bytes(const PrinterCodes &codes) const { return m_text->bytes(codes); }
    /// The data sets that the report lists one after the other, for a spreadsheet.
    QList<std::pair<QString, TDataSet *>> listed() const;

private:
    const ReportCall &m_call;
    Layout::Document m_layout;
    std::unique_ptr<Walker> m_walker;
    std::unique_ptr<PageStore> m_pages;
    std::unique_ptr<Paginator> m_paginator; // of a graphic report
    std::unique_ptr<TextReport> m_text;
    bool m_finished = false;
};
