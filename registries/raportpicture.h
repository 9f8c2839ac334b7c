// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QImage>
#include <QVector>
#include <QWidget>

/// The repeat of a rapport as it is knitted: a stripe for each line, in the colour of its yarn and as high as it has
/// feeders, with a legend of the yarns. A line without feeders has no height; it is marked in red where it stands.
class RaportPicture : public QWidget
{
    Q_OBJECT

public:
    struct Stripe
    {
        QString yarn; ///< as people call it
        QString colour; ///< the same
        QColor shade; ///< invalid: not known; a hatched grey is drawn
        int feeders = 0;
        int repeats = 0;
    };

    explicit RaportPicture(QWidget *parent = nullptr);

    void setStripes(const QVector<Stripe> &stripes);
    /// The line that the user is in, counted from 0; -1: none.
    void setCurrentLine(int line);

    /// Where a line's stripe is drawn; empty for one without feeders.
    QRect stripeRect(int line) const;
    /// "Preto · 64 (66,7%) · Fio 30/1": a yarn in a colour, with its feeders and their share, for each in turn.
    QStringList legend() const;
    /// "#1b2a49"; invalid for anything else, the empty text included.
    static QColor shadeOf(const QString &text);

    /// The same for paper: sharper, and without the mark of the line that the user is in.
    QImage forPaper() const;

    QSize sizeHint() const override { return {240, 340}; }
    QSize minimumSizeHint() const override { return {220, 200}; }

signals:
    void lineClicked(int line);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    bool event(QEvent *event) override;

private:
    struct Entry
    {
        Stripe stripe;
        int feeders = 0;
    };
    QVector<Entry> entries() const;
    int feeders() const;
    int legendRows() const;
    QRect repeatRect() const;
    int lineAt(const QPoint &point) const;
    int top(int line) const;
    QString label(int line) const;
    void paintStripe(QPainter &painter, int line) const;
    void paintLabel(QPainter &painter, int line, const QColor &paper, const QColor &ink) const;
    void paintLegend(QPainter &painter) const;

    QVector<Stripe> m_stripes;
    int m_current = -1;
};
