// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/page.h"

#include <QCache>
#include <QHash>
#include <QTemporaryFile>

#include <vector>

/// The pages of a report, kept in a temporary file: memory holds one page, however long the report is. A picture that
/// stands on many pages is kept once.
class PageStore
{
public:
    /// Throws EQen when no temporary file can be written.
    explicit PageStore(QSizeF paper);

    QSizeF paper() const { return m_paper; } ///< millimetres
    int count() const { return int(m_places.size()); }
    void append(const Page &page); ///< throws EQen when the disk is full
    Page page(int number) const; ///< from 0

private:
    /// In the file.
    struct Place
    {
        qint64 offset;
        qint64 size;
    };

    template <typename Content> Place write(const Content &content);
    template <typename Content> Content read(const Place &place) const;
    int numberOf(const QImage &image);
    QImage image(int number) const;

    QSizeF m_paper;
    mutable QTemporaryFile m_file;
    std::vector<Place> m_places;
    std::vector<Place> m_imagePlaces;
    QHash<qint64, int> m_imageNumbers; // by the images' keys
    mutable QCache<int, QImage> m_images; // costs are kilobytes
};
