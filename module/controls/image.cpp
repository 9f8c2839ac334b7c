// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/controls/image.h"

#include <QResizeEvent>

TImage::TImage(QWidget *parent)
    : QLabel(parent)
{
    setForegroundRole(QPalette::PlaceholderText);
    showScaled();
}

void TImage::setFile(const QString &path)
{
    if (path == m_path)
        return;
    m_path = path;
    m_picture = path.isEmpty() ? QPixmap() : QPixmap(path);
    showScaled();
}

void TImage::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    showScaled();
}

void TImage::showScaled()
{
    if (m_picture.isNull()) {
        setText(QStringLiteral("Sem imagem"));
        return;
    }
    const qreal ratio = devicePixelRatioF();
    QPixmap scaled = m_picture.scaled(contentsRect().size() * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    scaled.setDevicePixelRatio(ratio);
    setPixmap(scaled);
}
