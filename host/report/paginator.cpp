// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/paginator.h"

#include "host/report/graphicband.h"

using namespace Qt::StringLiterals;

namespace {

double heightBetweenMargins(const Layout::Page &page)
{
    return page.size.height() - page.margins.top() - page.margins.bottom();
}

} // namespace

class Paginator::Private : public BandFlow
{
public:
    Private(const Layout::Document &document, Walker &walker, PageStore &store)
        : BandFlow(document, walker, heightBetweenMargins(document.page))
        , layout(document)
        , bands(document)
        , pages(store)
    {
    }

private:
    Content compose(const Layout::Band &band, const ExpressionScope &scope) override;
    Halves split(const BandContent &content, double room, bool must) const override;
    void put(const BandContent &content, double top) override;
    void pageDone() override;
    void take(const Layout::Band &band, const Content &content) override;
    void completeRow() override;
    void placeAll() override;

    bool hasLabels() const { return !layout.page.label.isEmpty(); }
    bool isOfTheWholeReport(const Layout::Band &band) const;
    void placeLabels();

    const Layout::Document &layout;
    GraphicBands bands;
    PageStore &pages;
    Page page;

    const Layout::Band labelBand;
    std::shared_ptr<GraphicBand> label; // of the current row of the data
    std::shared_ptr<GraphicBand> labels; // beside one another
    int labelsBeside = 0;
};

BandFlow::Content Paginator::Private::compose(const Layout::Band &band, const ExpressionScope &scope)
{
    const bool grows = !hasLabels() && !(layout.pageFooter && &*layout.pageFooter == &band);
    return bands.compose(band, scope, grows);
}

BandFlow::Halves Paginator::Private::split(const BandContent &content, double room, bool must) const
{
    const auto [upper, lower] = static_cast<const GraphicBand &>(content).split(room, must);
    return {upper, lower};
}

void Paginator::Private::put(const BandContent &content, double top)
{
    const QPointF corner(layout.page.margins.left(), layout.page.margins.top() + top);
    for (const GraphicBand::Piece &piece : static_cast<const GraphicBand &>(content).pieces) {
        PageItem item = piece.item;
        item.translate(corner);
        if (item.text.contains(pageMark))
            item.text.replace(pageMark, QString::number(pageNumber()));
        page.items.append(item);
    }
}

void Paginator::Private::pageDone()
{
    pages.append(page);
    page.items.clear();
}

bool Paginator::Private::isOfTheWholeReport(const Layout::Band &band) const
{
    return (layout.titleBand && &*layout.titleBand == &band) || (layout.summary && &*layout.summary == &band);
}

void Paginator::Private::take(const Layout::Band &band, const Content &content)
{
    if (!hasLabels())
        return place(band, content);
    if (isOfTheWholeReport(band)) {
        placeAll();
        return place(band, content);
    }
    if (!label)
        label = std::make_shared<GraphicBand>();
    for (GraphicBand::Piece piece : static_cast<const GraphicBand &>(*content).pieces) {
        piece.item.translate({0, label->height});
        label->pieces.append(piece);
    }
    label->height += content->height;
    label->rows += content->rows;
}

void Paginator::Private::completeRow()
{
    if (!label)
        return;
    const Layout::Page &paper = layout.page;
    if (!labels) {
        labels = std::make_shared<GraphicBand>();
        labels->height = paper.label.height();
        labels->gapAfter = paper.rowGap;
    }
    const QPointF corner(labelsBeside * (paper.label.width() + paper.columnGap), 0);
    for (GraphicBand::Piece &piece : label->pieces) {
        piece.item.translate(corner);
        labels->pieces.append(piece);
    }
    labels->rows += label->rows;
    label.reset();
    if (++labelsBeside == paper.columns)
        placeLabels();
}

void Paginator::Private::placeAll()
{
    completeRow();
    if (labels)
        placeLabels();
}

void Paginator::Private::placeLabels()
{
    labelsBeside = 0;
    place(labelBand, std::exchange(labels, nullptr));
}

Paginator::Paginator(const Layout::Document &layout, Walker &walker, PageStore &pages)
    : d(std::make_unique<Private>(layout, walker, pages))
{
}

Paginator::~Paginator() = default;

bool Paginator::nextPage()
{
    const int before = d->pagesDone();
    while (d->pagesDone() == before && d->step()) { }
    return !d->isFinished();
}

bool Paginator::isFinished() const
{
    return d->isFinished();
}
