// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/bandflow.h"

#include "host/report/expressionfunctions.h"
#include "host/report/page.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr double tolerance = 1e-6;

template <typename Bands> bool isBand(const Bands &band, const Layout::Band &other)
{
    return band && &*band == &other;
}

/// Before anything is evaluated.
double drawnHeight(const Layout::Band &band)
{
    return qMax(band.height, double(band.lines.size()));
}

} // namespace

BandFlow::BandFlow(const Layout::Document &layout, Walker &walker, double height)
    : m_layout(layout)
    , m_walker(walker)
    , m_height(height)
    , m_footerHeight(layout.pageFooter ? drawnHeight(*layout.pageFooter) : 0)
{
    walker.setFunction(
        u"PAGE"_s, [this] { return m_composesPageBand ? QVariant(pageNumber()) : QVariant(QString(pageMark)); });
    walker.setFunction(u"PAGES"_s, [] { return QVariant(QString(pageCountMark)); });
}

bool BandFlow::step()
{
    if (m_finished)
        return false;
    const bool goesOn = m_walker.step(*this);
    completeRow();
    if (!goesOn)
        finish();
    return goesOn;
}

void BandFlow::finish()
{
    placeAll();
    if (!m_gathered.empty())
        placeGathered();
    const bool hasLabels = !m_layout.page.label.isEmpty();
    if (m_pagesDone == 0 && !hasLabels)
        openPage();
    if (m_pageIsOpen)
        closePage();
    m_finished = true;
}

void BandFlow::print(const Layout::Band &band, const ExpressionScope &scope)
{
    const Content content = compose(band, scope);
    if (const qint64 row = m_walker.pageRow(); row >= 0)
        content->rows.append(row);
    m_lastPrinted = {Entry::Kind::Band, &band, content};
    take(band, content);
}

void BandFlow::take(const Layout::Band &band, const Content &content)
{
    place(band, content);
}

void BandFlow::place(const Layout::Band &band, const Content &content)
{
    handle({Entry::Kind::Band, &band, content});
}

void BandFlow::beginBlock(bool keepTogether)
{
    handle({Entry::Kind::BeginBlock, nullptr, {}, keepTogether});
}

void BandFlow::endBlock()
{
    handle({Entry::Kind::EndBlock});
}

void BandFlow::pushRepeated(const Layout::Band &header, const ExpressionScope &scope)
{
    const bool wasPrinted = m_lastPrinted.band == &header;
    handle({Entry::Kind::PushRepeated, &header, wasPrinted ? m_lastPrinted.content : nullptr, false, &scope});
}

void BandFlow::popRepeated()
{
    handle({Entry::Kind::PopRepeated});
}

void BandFlow::newPage()
{
    placeAll();
    handle({Entry::Kind::NewPage});
}

void BandFlow::handle(Entry entry)
{
    const bool begins = (entry.kind == Entry::Kind::Band && entry.band->keepsWithNext)
        || (entry.kind == Entry::Kind::BeginBlock && entry.keepsTogether);
    if (!isEndless() && (begins || !m_gathered.empty()))
        gather(std::move(entry));
    else
        apply(entry);
}

void BandFlow::gather(Entry entry)
{
    switch (entry.kind) {
    case Entry::Kind::Band:
        m_gatheredHeight += entry.content->height + entry.content->gapAfter;
        m_gatheringWaits = entry.band->keepsWithNext;
        break;
    case Entry::Kind::BeginBlock:
        if (m_gatheredDepth > 0 || entry.keepsTogether)
            ++m_gatheredDepth;
        break;
    case Entry::Kind::EndBlock:
        m_gatheredDepth = qMax(0, m_gatheredDepth - 1);
        if (m_gatheredDepth == 0)
            m_gatheringWaits = false;
        break;
    default:
        break;
    }
    const bool isBreak = entry.kind == Entry::Kind::NewPage;
    m_gathered.push_back(std::move(entry));
    openPage();
    if (isBreak || m_gatheredHeight > wholeRoom() + tolerance)
        giveGatheringUp();
    else if (m_gatheredDepth == 0 && !m_gatheringWaits)
        placeGathered();
}

/// All on this page, or all on the next one.
void BandFlow::placeGathered()
{
    const std::vector<Entry> entries = std::exchange(m_gathered, {});
    const double height = std::exchange(m_gatheredHeight, 0);
    m_gatheredDepth = 0;
    m_gatheringWaits = false;
    openPage();
    if (height > room() + tolerance && !m_pageIsEmpty)
        closePage();
    for (const Entry &entry : entries)
        apply(entry);
}

/// No page holds it: the outermost block flows, blocks within it may still be kept together.
void BandFlow::giveGatheringUp()
{
    std::vector<Entry> entries = std::exchange(m_gathered, {});
    m_gatheredHeight = 0;
    m_gatheredDepth = 0;
    m_gatheringWaits = false;
    const auto block = std::find_if(entries.begin(), entries.end(),
        [](const Entry &entry) { return entry.kind == Entry::Kind::BeginBlock && entry.keepsTogether; });
    const bool hadBlock = block != entries.end();
    if (hadBlock)
        block->keepsTogether = false;
    for (Entry &entry : entries) {
        if (hadBlock)
            handle(std::move(entry));
        else
            apply(entry);
    }
}

void BandFlow::apply(const Entry &entry)
{
    switch (entry.kind) {
    case Entry::Kind::Band:
        openPage();
        if (m_headerIsDue && !isBand(m_layout.titleBand, *entry.band))
            printPageHeader();
        flow(entry.content);
        if (m_headerIsDue)
            printPageHeader();
        break;
    case Entry::Kind::PushRepeated:
        m_repeated.push_back(entry);
        break;
    case Entry::Kind::PopRepeated:
        m_repeated.pop_back();
        break;
    case Entry::Kind::NewPage:
        if (m_pageIsOpen && !m_pageIsEmpty)
            closePage();
        break;
    case Entry::Kind::BeginBlock:
    case Entry::Kind::EndBlock:
        break;
    }
}

void BandFlow::flow(Content content)
{
    while (content->height > room() + tolerance) {
        const Halves halves = split(*content, room(), m_pageIsEmpty);
        const bool shrinks = halves.stays && halves.goesOn->height < content->height - tolerance;
        if (m_pageIsEmpty && !shrinks)
            break; // it cannot be cut, and no page has more room
        if (shrinks) {
            halves.stays->rows = std::exchange(content->rows, {});
            append(*halves.stays);
            content = halves.goesOn;
        }
        closePage();
        openPage();
    }
    append(*content);
}

void BandFlow::append(const BandContent &content)
{
    for (const qint64 row : content.rows)
        m_walker.countOnPage(row);
    put(content, m_top);
    m_top += content.height + content.gapAfter;
    m_pageIsEmpty = false;
}

void BandFlow::openPage()
{
    if (m_pageIsOpen)
        return;
    m_pageIsOpen = true;
    m_pageIsEmpty = true;
    m_top = 0;
    m_walker.startPage();
    m_headerIsDue = m_layout.pageHeader && !isEndless();
    const bool titleIsFirst = m_pagesDone == 0 && m_layout.titleBand && m_layout.titleBeforePageHeader;
    if (m_headerIsDue && !titleIsFirst)
        printPageHeader();
    printRepeatedHeaders();
}

void BandFlow::printPageHeader()
{
    m_headerIsDue = false;
    const Content content = composePageBand(*m_layout.pageHeader);
    m_headerHeight = content ? content->height : 0;
    if (!content)
        return;
    put(*content, m_top);
    m_top += content->height;
}

void BandFlow::printRepeatedHeaders()
{
    for (const Entry &entry : m_repeated) {
        const auto &condition = entry.band->condition;
        if (condition && !ExpressionFunctions::isTrue(condition->evaluate(*entry.scope)))
            continue;
        // As it was printed: its rows may be past by now.
        const Content content = entry.content ? entry.content : compose(*entry.band, *entry.scope);
        put(*content, m_top);
        m_top += content->height;
    }
}

void BandFlow::closePage()
{
    if (m_headerIsDue)
        printPageHeader();
    if (m_layout.pageFooter && !isEndless()) {
        if (const Content content = composePageBand(*m_layout.pageFooter))
            put(*content, m_height - m_footerHeight);
    }
    pageDone();
    ++m_pagesDone;
    m_pageIsOpen = false;
}

BandFlow::Content BandFlow::composePageBand(const Layout::Band &band)
{
    const QScopedValueRollback<bool> marker(m_composesPageBand, true);
    const ExpressionScope &scope = m_walker.pageScope();
    if (band.condition && !ExpressionFunctions::isTrue(band.condition->evaluate(scope)))
        return {};
    return compose(band, scope);
}

double BandFlow::room() const
{
    return isEndless() ? std::numeric_limits<double>::infinity() : m_height - m_footerHeight - m_top;
}

/// Of a page that has nothing but its headers.
double BandFlow::wholeRoom() const
{
    double height = m_height - m_footerHeight - m_headerHeight;
    for (const Entry &entry : m_repeated)
        height -= entry.content ? entry.content->height : drawnHeight(*entry.band);
    return height;
}
