// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/pagestore.h"

#include "module/host_services/errors.h"

#include <QDataStream>
#include <QDir>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype imagesInMemory = 32 * 1024; // kilobytes

qsizetype kilobytes(const QImage &image)
{
    return 1 + image.sizeInBytes() / 1024;
}

} // namespace

PageStore::PageStore(QSizeF paper)
    : m_paper(paper)
    , m_file(QDir::tempPath() + u"/qen-XXXXXX.paginas"_s)
    , m_images(imagesInMemory)
{
    if (!m_file.open())
        throw EQen(u"Não há onde guardar as páginas do relatório."_s, m_file.errorString());
}

template <typename Content> PageStore::Place PageStore::write(const Content &content)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << content;
    const Place place{m_file.size(), bytes.size()};
    m_file.seek(place.offset);
    if (m_file.write(bytes) != place.size || !m_file.flush())
        throw EQen(u"As páginas do relatório não cabem no disco."_s, m_file.errorString());
    return place;
}

template <typename Content> Content PageStore::read(const Place &place) const
{
    m_file.seek(place.offset);
    const QByteArray bytes = m_file.read(place.size);
    QDataStream stream(bytes);
    Content content;
    stream >> content;
    if (stream.status() != QDataStream::Ok)
        throw EQen(u"Uma página do relatório não pode ser lida."_s, m_file.errorString());
    return content;
}

void PageStore::append(const Page &page)
{
    Page numbered = page;
    for (PageItem &item : numbered.items) {
        if (item.kind == PageItem::Kind::Picture)
            item.imageNumber = numberOf(item.image);
    }
    m_places.push_back(write(numbered));
}

Page PageStore::page(int number) const
{
    Page page = read<Page>(m_places.at(size_t(number)));
    for (PageItem &item : page.items) {
        if (item.imageNumber >= 0)
            item.image = image(item.imageNumber);
    }
    return page;
}

int PageStore::numberOf(const QImage &image)
{
    const auto known = m_imageNumbers.constFind(image.cacheKey());
    if (known != m_imageNumbers.cend())
        return *known;
    const int number = int(m_imagePlaces.size());
    m_imagePlaces.push_back(write(image));
    m_imageNumbers.insert(image.cacheKey(), number);
    return number;
}

QImage PageStore::image(int number) const
{
    if (const QImage *kept = m_images.object(number))
        return *kept;
    const auto image = read<QImage>(m_imagePlaces.at(size_t(number)));
    m_images.insert(number, new QImage(image), kilobytes(image));
    return image;
}
