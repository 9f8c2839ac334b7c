// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>

/// A picture from a file, scaled into the space that it has.
class TImage : public QLabel
{
    Q_OBJECT

public:
    explicit TImage(QWidget *parent = nullptr);

    /// An empty path, or a file that is no picture, shows nothing.
    void setFile(const QString &path);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void showScaled();

    QPixmap m_picture;
    QString m_path;
};
