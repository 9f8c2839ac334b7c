// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractScrollArea>
#include <QCache>
#include <QImage>

class PageStore;

/// Pages of paper, one beneath the other, as they will be printed.
class PageView : public QAbstractScrollArea
{
    Q_OBJECT

public:
    explicit PageView(QWidget *parent = nullptr);

    /// They must outlive the view.
    void setPages(const PageStore *pages);
    /// More pages stand there now.
    void pagesAdded();
    /// What bears the number of pages is painted anew.
    void numberOfPagesKnown();

    double zoom() const { return m_zoom; } ///< 1: as large as on paper
    void setZoom(double zoom); ///< what is in the middle stays there
    void fitWidth();
    void fitPage();

    int currentPage() const; ///< from 0, the page in the middle; -1 without pages
    void showPage(int page);

    /// Goes to the next place after the one found last, from the beginning after the last. False when the text stands
    /// nowhere. Upper and lower case are alike.
    bool find(const QString &text);

signals:
    void currentPageChanged(int page);
    void zoomChanged(double zoom);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    enum class Fit { None, Width, Page };

    QSizeF pageSize() const; ///< pixels
    QRectF placeOf(int page) const; ///< in the viewport
    QImage image(int page) const;
    void applyFit();
    void setZoomTo(double zoom);
    void updateScrollBars();
    bool findOnPage(const QString &text, int page, int afterItem);

    const PageStore *m_pages = nullptr;
    double m_zoom = 1;
    Fit m_fit = Fit::Width;
    int m_foundPage = -1;
    int m_foundItem = -1;
    QRectF m_found; ///< millimetres, on its page
    QString m_sought;
    int m_toldPage = -1;
    mutable QCache<int, QImage> m_images;
};
