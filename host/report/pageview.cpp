// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/pageview.h"

#include "host/report/pagestore.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

namespace {

constexpr double gap = 12; // pixels around pages
constexpr double smallest = 0.2;
constexpr double largest = 5;
constexpr double step = 1.2; ///< of one turn of the wheel
constexpr double millimetresPerInch = 25.4;
constexpr int imagesInMemory = 400; ///< megabytes: pages in sight and some beside them, also when they are large
const QColor foundColour(255, 210, 0, 110);

} // namespace

PageView::PageView(QWidget *parent)
    : QAbstractScrollArea(parent)
    , m_images(imagesInMemory)
{
    viewport()->setBackgroundRole(QPalette::Dark);
    viewport()->setAutoFillBackground(true);
    setFocusPolicy(Qt::StrongFocus);
}

void PageView::setPages(const PageStore *pages)
{
    m_pages = pages;
    m_images.clear();
    applyFit();
    pagesAdded();
}

void PageView::pagesAdded()
{
    updateScrollBars();
    viewport()->update();
    scrollContentsBy(0, 0);
}

void PageView::numberOfPagesKnown()
{
    m_images.clear();
    viewport()->update();
}

QSizeF PageView::pageSize() const
{
    const double pixels = m_zoom * logicalDpiX() / millimetresPerInch;
    return m_pages->paper() * pixels;
}

QRectF PageView::placeOf(int page) const
{
    const QSizeF size = pageSize();
    const double left = qMax(gap, (viewport()->width() - size.width()) / 2) - horizontalScrollBar()->value();
    const double top = gap + page * (size.height() + gap) - verticalScrollBar()->value();
    return QRectF(QPointF(left, top), size);
}

QImage PageView::image(int page) const
{
    if (QImage *kept = m_images.object(page))
        return *kept;
    auto *made = new QImage(PagePainter::image(
        m_pages->page(page), m_pages->paper(), m_pages->count(), m_zoom * logicalDpiX() * devicePixelRatioF()));
    made->setDevicePixelRatio(devicePixelRatioF());
    const QImage result = *made;
    m_images.insert(page, made, 1 + int(made->sizeInBytes() / (1024 * 1024)));
    return result;
}

void PageView::paintEvent(QPaintEvent *)
{
    if (!m_pages)
        return;
    QPainter painter(viewport());
    const double height = pageSize().height() + gap;
    const int first = qMax(0, int((verticalScrollBar()->value() - gap) / height));
    for (int page = first; page < m_pages->count(); ++page) {
        const QRectF place = placeOf(page);
        if (place.top() > viewport()->height())
            break;
        painter.fillRect(place.translated(2, 2), QColor(0, 0, 0, 60));
        painter.drawImage(place.topLeft(), image(page));
        if (page == m_foundPage) {
            const double scale = place.width() / m_pages->paper().width();
            const QRectF found(m_found.topLeft() * scale, m_found.size() * scale);
            painter.fillRect(found.translated(place.topLeft()), foundColour);
        }
    }
}

void PageView::updateScrollBars()
{
    if (!m_pages)
        return;
    const QSizeF size = pageSize();
    const double height = gap + m_pages->count() * (size.height() + gap);
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(40);
    verticalScrollBar()->setRange(0, qMax(0, qRound(height) - viewport()->height()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setSingleStep(40);
    horizontalScrollBar()->setRange(0, qMax(0, qRound(size.width() + 2 * gap) - viewport()->width()));
}

void PageView::setZoom(double zoom)
{
    m_fit = Fit::None;
    setZoomTo(zoom);
}

void PageView::setZoomTo(double zoom)
{
    zoom = qBound(smallest, zoom, largest);
    if (!m_pages || qFuzzyCompare(zoom, m_zoom))
        return;
    const double middle = verticalScrollBar()->value() + viewport()->height() / 2.0;
    const double grown = zoom / m_zoom;
    m_zoom = zoom;
    m_images.clear();
    updateScrollBars();
    verticalScrollBar()->setValue(qRound(middle * grown - viewport()->height() / 2.0));
    viewport()->update();
    emit zoomChanged(m_zoom);
}

void PageView::fitWidth()
{
    m_fit = Fit::Width;
    applyFit();
}

void PageView::fitPage()
{
    m_fit = Fit::Page;
    applyFit();
}

void PageView::applyFit()
{
    if (!m_pages || m_fit == Fit::None)
        return;
    const double pixels = logicalDpiX() / millimetresPerInch;
    const double byWidth = (viewport()->width() - 2 * gap) / (m_pages->paper().width() * pixels);
    const double byHeight = (viewport()->height() - 2 * gap) / (m_pages->paper().height() * pixels);
    // A label is not blown up to the width of the window.
    setZoomTo(qMin(2.0, m_fit == Fit::Width ? byWidth : qMin(byWidth, byHeight)));
}

int PageView::currentPage() const
{
    if (!m_pages || m_pages->count() == 0)
        return -1;
    const double middle = verticalScrollBar()->value() + viewport()->height() / 2.0;
    return qBound(0, int((middle - gap) / (pageSize().height() + gap)), m_pages->count() - 1);
}

void PageView::showPage(int page)
{
    if (m_pages)
        verticalScrollBar()->setValue(qRound(page * (pageSize().height() + gap)));
}

bool PageView::findOnPage(const QString &text, int page, int afterItem)
{
    const Page found = m_pages->page(page);
    for (int i = afterItem + 1; i < found.items.size(); ++i) {
        const PageItem &item = found.items[i];
        if (item.kind != PageItem::Kind::Text || !item.shownText(m_pages->count()).contains(text, Qt::CaseInsensitive))
            continue;
        m_foundPage = page;
        m_foundItem = i;
        m_found = item.place;
        const double scale = pageSize().width() / m_pages->paper().width();
        const double top = gap + page * (pageSize().height() + gap) + item.place.center().y() * scale;
        verticalScrollBar()->setValue(qRound(top - viewport()->height() / 2.0));
        const double left = item.place.center().x() * scale;
        horizontalScrollBar()->setValue(qRound(left - viewport()->width() / 2.0));
        viewport()->update();
        return true;
    }
    return false;
}

bool PageView::find(const QString &text)
{
    if (!m_pages || m_pages->count() == 0 || text.isEmpty())
        return false;
    if (m_sought != text) {
        m_sought = text;
        m_foundPage = qMax(0, currentPage());
        m_foundItem = -1;
    }
    const int start = qMax(0, m_foundPage);
    const int after = m_foundItem;
    for (int i = 0; i <= m_pages->count(); ++i) {
        if (findOnPage(text, (start + i) % m_pages->count(), i == 0 ? after : -1))
            return true;
    }
    m_foundPage = -1;
    m_foundItem = -1;
    viewport()->update();
    return false;
}

void PageView::resizeEvent(QResizeEvent *)
{
    applyFit();
    updateScrollBars();
}

void PageView::wheelEvent(QWheelEvent *event)
{
    if (!(event->modifiers() & Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    setZoom(event->angleDelta().y() > 0 ? m_zoom * step : m_zoom / step);
    event->accept();
}

void PageView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_PageDown:
        showPage(qMin(currentPage() + 1, m_pages ? m_pages->count() - 1 : 0));
        break;
    case Qt::Key_PageUp:
        showPage(qMax(0, currentPage() - 1));
        break;
    case Qt::Key_Home:
        verticalScrollBar()->setValue(0);
        break;
    case Qt::Key_End:
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
        break;
    default:
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void PageView::scrollContentsBy(int, int)
{
    viewport()->update();
    if (const int page = currentPage(); page != m_toldPage) {
        m_toldPage = page;
        emit currentPageChanged(page);
    }
}
