// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCache>
#include <QDir>
#include <QImage>
#include <QRectF>
#include <QVariant>

/// The pictures of a report, read once, and no finer than paper shows them.
class Pictures
{
public:
    /// Names of files without a folder are looked for there.
    explicit Pictures(const QDir &folder);

    /// Of a file name (SVG too), a QImage, or a picture file's bytes. Null when there is none or it cannot be read:
    /// most fabrics have no photo. The room is in millimetres.
    QImage picture(const QVariant &value, QSizeF room);
    /// Where a picture stands within its place: its proportions are kept.
    static QRectF fitted(const QImage &picture, const QRectF &place, Qt::Alignment alignment);

private:
    QDir m_folder;
    QCache<QString, QImage> m_cache; // by what it is read from and its size
};
