// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/reports.h"

#include "bench/reportrows.h"
#include "host/report/layoutreader.h"
#include "host/report/paginator.h"
#include "host/report/paperfont.h"
#include "host/report/pdf.h"
#include "module/host_services/errors.h"
#include "module/host_services/host.h"

#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

const QByteArray layoutText = R"(<layout title="Rolos">
    <page paper="A4" margins="12"/>
    <page-header height="12">
        <text h="7" size="14" bold="yes">Rolos por cliente e ordem</text>
        <text x="140" w="46" h="5" align="right">{DATE():dd/mm/yyyy}</text>
        <line y1="9" x2="186"/>
    </page-header>
    <rows data="rolos">
        <group by="CLIENTE">
            <header height="8"><text y="1" h="6" size="11" bold="yes">{CLIENTE}</text></header>
            <footer height="6">
                <text x="100" w="50" h="5" bold="yes">{COUNT()} rolos do cliente</text>
                <text x="156" w="30" h="5" bold="yes" align="right">{SUM(PESO):,0.000}</text>
            </footer>
        </group>
        <group by="NUM_OF" keep-together="yes">
            <header height="6"><text h="5" bold="yes">OF {NUM_OF}: {MALHA}</text></header>
            <footer height="5">
                <text x="100" w="50" h="5">{COUNT()} rolos</text>
                <text x="156" w="30" h="5" align="right">{SUM(PESO):,0.000}</text>
            </footer>
        </group>
        <detail height="4">
            <text w="20" h="4">{NUM_OF}</text>
            <text x="22" w="12" h="4">{ROLO}</text>
            <text x="36" w="80" h="4">{MALHA}</text>
            <text x="118" w="30" h="4">{DATA:dd/mm/yyyy}</text>
            <text x="156" w="30" h="4" align="right">{PESO:,0.000}</text>
        </detail>
    </rows>
    <summary height="8"><text y="2" h="5" bold="yes">{COUNT()} rolos, {SUM(PESO):,0.000} kg</text></summary>
    <page-footer height="6">
        <text h="5">{SUM(PESO):,0.000} kg nesta página</text>
        <text x="100" w="86" h="5" align="right">Página {PAGE()} de {PAGES()}</text>
    </page-footer>
</layout>)";

/// Reports of made-up rolls, in a folder that goes with it.
class Paper
{
public:
    Paper();
    /// From the rows to the closed PDF.
    void print(int rows) const;
    void layOut(ReportRows &rows, PageStore &pages) const;
    QString file(const QString &name) const { return m_folder.filePath(name); }

private:
    QTemporaryDir m_folder;
    Layout::Document m_layout;
};

Paper::Paper()
{
    QFile layout(file(u"WRolos.xml"_s));
    if (!layout.open(QIODevice::WriteOnly) || layout.write(layoutText) != layoutText.size())
        throw EQen(u"The layout cannot be written."_s, layout.errorString());
    layout.close();
    m_layout = LayoutReader::read(layout.fileName());
}

void Paper::layOut(ReportRows &rows, PageStore &pages) const
{
    ReportCall call;
    call.dataSets.append({u"rolos"_s, &rows});
    Walker walker(m_layout, call);
    Paginator paginator(m_layout, walker, pages);
    while (paginator.nextPage()) { }
}

void Paper::print(int count) const
{
    ReportRows rows(count);
    PageStore pages(m_layout.page.size);
    layOut(rows, pages);
    Pdf::write(pages, file(u"rolos.pdf"_s), m_layout.title);
}

/// A text where the report has it, with nothing left to reckon.
struct BareText
{
    QPointF place;
    QString text;
    QFont font;
};
using BarePage = QVector<BareText>;

QVector<BarePage> bareTexts(const PageStore &store)
{
    QVector<BarePage> pages;
    for (int number = 0; number < store.count(); ++number) {
        BarePage page;
        const QVector<PageItem> items = store.page(number).items;
        for (const PageItem &item : items) {
            if (item.kind != PageItem::Kind::Text)
                continue;
            const PaperFont &font = PaperFont::of(item);
            const QString text = item.shownText(store.count());
            const bool isRight = item.alignment & Qt::AlignRight;
            const double x = isRight ? item.place.right() - font.width(text) : item.place.left();
            page.append(
                {QPointF(x, item.place.top() + font.ascent()) * PaperFont::unitsPerMillimetre, text, font.font()});
        }
        pages.append(page);
    }
    return pages;
}

void paintBare(const QVector<BarePage> &pages, const QString &file)
{
    QPdfWriter writer(file);
    writer.setResolution(int(PaperFont::unitsPerInch));
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins({});
    QPainter painter(&writer);
    for (qsizetype number = 0; number < pages.size(); ++number) {
        if (number > 0)
            writer.newPage();
        for (const BareText &text : pages[number]) {
            if (painter.font() != text.font)
                painter.setFont(text.font);
            painter.drawText(text.place, text.text);
        }
    }
}

double timed(const std::function<void()> &work)
{
    Clockwork clock;
    clock.start();
    work();
    clock.pause();
    return clock.milliseconds();
}

} // namespace

QVector<Comparison> measureReports(const Effort &effort)
{
    const Paper paper;
    ReportRows rows(effort.reportLines);
    PageStore pages(QPageSize::size(QPageSize::A4, QPageSize::Millimeter));
    paper.layOut(rows, pages);
    const QVector<BarePage> texts = bareTexts(pages);
    Comparison result{u"%1 lines on %2 pages to PDF"_s.arg(effort.reportLines).arg(pages.count()), u"-"_s, 2, {}, {}};
    for (int run = -1; run < effort.slowRuns; ++run) {
        const double floor = timed([&] { paintBare(texts, paper.file(u"bare.pdf"_s)); });
        const double program = timed([&] { paper.print(effort.reportLines); });
        if (run >= 0)
            result.add(floor, program);
    }
    return {result};
}

QVector<Memory> measureReportMemory(const Effort &effort)
{
    constexpr int longer = 10;
    const Paper paper;
    paper.print(effort.reportLines); // fonts and libraries are loaded once
    Memory memory{u"report of %1 lines, of %2"_s.arg(longer * effort.reportLines).arg(effort.reportLines)};
    memory.atMost = 2;
    memory.smaller = peakDuring([&] { paper.print(effort.reportLines); });
    memory.larger = peakDuring([&] { paper.print(longer * effort.reportLines); });
    return {memory};
}
