// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/pdf.h"

#include "host/report/pagestore.h"
#include "host/report/paperfont.h"
#include "module/host_services/errors.h"

#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace {

void prepare(QPdfWriter &writer, QSizeF paper, const QString &title)
{
    writer.setTitle(title);
    writer.setCreator(u"qen"_s);
    writer.setResolution(int(PaperFont::unitsPerInch));
    // Landscape paper is a page wider than high, not one that is turned.
    writer.setPageSize(QPageSize(paper, QPageSize::Millimeter, QString(), QPageSize::ExactMatch));
    writer.setPageMargins({});
}

EQen failure(const QSaveFile &output)
{
    return EQen(u"O arquivo %1 não pode ser gravado."_s.arg(output.fileName()), output.errorString());
}

/// False when it was cancelled.
bool paintAll(const PageStore &pages, QPdfWriter &writer, const QSaveFile &output, const Pdf::Progress &progress)
{
    QPainter painter;
    for (int number = 0; number < pages.count(); ++number) {
        if (progress && !progress(number))
            return false;
        if (!(number == 0 ? painter.begin(&writer) : writer.newPage()) || output.error() != QFileDevice::NoError)
            throw failure(output);
        PagePainter::paint(painter, pages.page(number), pages.count());
    }
    return true;
}

} // namespace

bool Pdf::write(const PageStore &pages, const QString &file, const QString &title, const Progress &progress)
{
    QSaveFile output(file);
    if (!output.open(QIODevice::WriteOnly))
        throw failure(output);
    {
        QPdfWriter writer(&output);
        prepare(writer, pages.paper(), title);
        if (!paintAll(pages, writer, output, progress))
            return false; // what was not committed is removed
    }
    if (!output.commit())
        throw failure(output);
    return true;
}
