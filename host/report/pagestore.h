// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/page.h"

#include <QTemporaryFile>

#include <vector>

/// The pages of a report, kept in a temporary file: memory holds one page, however long the report is.
class PageStore
{
public:
    /// Throws EQen when no temporary file can be written.
    explicit PageStore(QSizeF paper);

    QSizeF paper() const { return m_paper; } ///< millimetres
    int count() const { return int(m_offsets.size()); }
    void append(const Page &page); ///< throws EQen when the disk is full
    Page page(int number) const; ///< from 0

private:
    QSizeF m_paper;
    mutable QTemporaryFile m_file;
    std::vector<qint64> m_offsets;
};
