// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/host_services/icons.h"

#include <QDebug>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace {

constexpr qreal disabledOpacity = 0.35;

/// Renders when something is painted, not when the icon is made: a screen that opens pays only for what is seen first.
class SvgIconEngine : public QIconEngine
{
public:
    explicit SvgIconEngine(const QString &file)
        : m_file(file)
    {
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        const qreal ratio = painter->device()->devicePixelRatio();
        QPixmap drawn = pixmap(rect.size() * ratio, mode, state);
        drawn.setDevicePixelRatio(ratio);
        painter->drawPixmap(rect, drawn);
    }

    /// `size` is in pixels of the device.
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State) override
    {
        const bool pale = mode == QIcon::Disabled;
        const QString key = u"%1 %2x%3 %4"_s.arg(m_file).arg(size.width()).arg(size.height()).arg(pale);
        QPixmap pixmap;
        if (QPixmapCache::find(key, &pixmap))
            return pixmap;
        pixmap = QPixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setOpacity(pale ? disabledOpacity : 1.0);
        const int side = qMin(size.width(), size.height());
        QSvgRenderer(m_file).render(
            &painter, QRectF((size.width() - side) / 2.0, (size.height() - side) / 2.0, side, side));
        painter.end();
        QPixmapCache::insert(key, pixmap);
        return pixmap;
    }

    QIconEngine *clone() const override { return new SvgIconEngine(*this); }

private:
    QString m_file;
};

} // namespace

QIcon Icons::get(QStringView name)
{
    const QString file = u":/qen/icons/%1.svg"_s.arg(name);
    if (!QFile::exists(file)) {
        qWarning() << "No icon named" << name;
        return {};
    }
    return QIcon(new SvgIconEngine(file));
}
