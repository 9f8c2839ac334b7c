// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/picture.h"

#include <QBuffer>
#include <QImageReader>
#include <QSvgRenderer>

#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr double dotsPerMillimetre = 600 / 25.4;
constexpr int largestSide = 2400; // dots
constexpr int picturesKept = 20;

QSize finest(QSizeF room)
{
    return (room * dotsPerMillimetre).toSize().boundedTo(QSize(largestSide, largestSide));
}

QImage reduced(const QImage &image, QSizeF room)
{
    const QSize size = finest(room);
    const bool isFiner = image.width() > size.width() || image.height() > size.height();
    return isFiner ? image.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation) : image;
}

QImage drawn(QSvgRenderer &drawing, QSizeF room)
{
    QImage image(drawing.defaultSize().scaled(finest(room), Qt::KeepAspectRatio), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    return image;
}

QImage decoded(const QByteArray &bytes, QSizeF room)
{
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    if (reader.format().startsWith("svg") || bytes.left(512).contains("<svg")) {
        QSvgRenderer drawing(bytes);
        return drawing.isValid() ? drawn(drawing, room) : QImage();
    }
    return reduced(reader.read(), room);
}

QImage readFrom(const QString &file, QSizeF room)
{
    QFile source(file);
    return source.open(QIODevice::ReadOnly) ? decoded(source.readAll(), room) : QImage();
}

} // namespace

Pictures::Pictures(const QDir &folder)
    : m_folder(folder)
    , m_cache(picturesKept)
{
}

QImage Pictures::picture(const QVariant &value, QSizeF room)
{
    if (value.typeId() == QMetaType::QByteArray)
        return decoded(value.toByteArray(), room);
    const bool isImage = value.typeId() == QMetaType::QImage;
    const auto given = isImage ? value.value<QImage>() : QImage();
    const QString file = isImage ? QString() : value.toString();
    if (given.isNull() && file.isEmpty())
        return {};
    const QString source = isImage ? QString::number(given.cacheKey()) : m_folder.absoluteFilePath(file);
    const QString key = u"%1|%2|%3"_s.arg(source).arg(room.width()).arg(room.height());
    if (const QImage *known = m_cache.object(key))
        return *known;
    const QImage image = isImage ? reduced(given, room) : readFrom(source, room);
    m_cache.insert(key, new QImage(image));
    return image;
}

QRectF Pictures::fitted(const QImage &picture, const QRectF &place, Qt::Alignment alignment)
{
    const QSizeF size = QSizeF(picture.size()).scaled(place.size(), Qt::KeepAspectRatio);
    QRectF fitted(place.topLeft(), size);
    if (alignment & Qt::AlignRight)
        fitted.moveRight(place.right());
    else if (alignment & Qt::AlignHCenter)
        fitted.moveCenter({place.center().x(), fitted.center().y()});
    if (alignment & Qt::AlignBottom)
        fitted.moveBottom(place.bottom());
    else if (alignment & Qt::AlignVCenter)
        fitted.moveCenter({fitted.center().x(), place.center().y()});
    return fitted;
}
