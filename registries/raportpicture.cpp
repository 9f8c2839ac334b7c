// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "registries/raportpicture.h"

#include "module/host_services/format.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QRegularExpression>
#include <QToolTip>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 8; // pixels, as all that follow
constexpr int markerWidth = 5; // of the line that the user is in
constexpr int rowRoom = 4; // between two lines of the legend
constexpr int swatch = 14;
constexpr qreal widthOfRepeat = 0.45;
constexpr qreal heightOfLegend = 0.4; // at most

const QColor unknownShade(0xbd, 0xc1, 0xc4);
const QColor outline(0x78, 0x80, 0x85);
const QColor fault(0xc6, 0x28, 0x28);

void fill(QPainter &painter, const QRect &rect, const QColor &shade)
{
    painter.fillRect(rect, shade.isValid() ? shade : unknownShade);
    if (!shade.isValid())
        painter.fillRect(rect, QBrush(outline, Qt::BDiagPattern));
}

} // namespace

RaportPicture::RaportPicture(QWidget *parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    setAccessibleName(u"Desenho do raport"_s);
}

QColor RaportPicture::shadeOf(const QString &text)
{
    static const QRegularExpression form(u"^#[0-9A-Fa-f]{6}$"_s);
    return form.match(text).hasMatch() ? QColor(text) : QColor();
}

void RaportPicture::setStripes(const QVector<Stripe> &stripes)
{
    m_stripes = stripes;
    setAccessibleDescription(legend().join(u'\n'));
    update();
}

void RaportPicture::setCurrentLine(int line)
{
    if (line == m_current)
        return;
    m_current = line;
    update();
}

int RaportPicture::feeders() const
{
    return std::accumulate(m_stripes.begin(), m_stripes.end(), 0,
        [](int sum, const Stripe &stripe) { return sum + qMax(0, stripe.feeders); });
}

QVector<RaportPicture::Entry> RaportPicture::entries() const
{
    QVector<Entry> found;
    for (const Stripe &stripe : m_stripes) {
        const auto known = std::find_if(found.begin(), found.end(), [&](const Entry &entry) {
            return entry.stripe.yarn == stripe.yarn && entry.stripe.colour == stripe.colour;
        });
        if (known == found.end())
            found.append({stripe, qMax(0, stripe.feeders)});
        else
            known->feeders += qMax(0, stripe.feeders);
    }
    return found;
}

QStringList RaportPicture::legend() const
{
    const int all = qMax(1, feeders());
    QStringList texts;
    for (const Entry &entry : entries()) {
        const QString share = Format::number(entry.feeders * 100.0 / all, u"0.0"_s);
        QStringList parts{entry.stripe.colour, u"%1 (%2%)"_s.arg(entry.feeders).arg(share), entry.stripe.yarn};
        parts.removeAll(QString());
        texts.append(parts.join(u" · "_s));
    }
    return texts;
}

/// As many as fit; where yarns are left out, the last row says so.
int RaportPicture::legendRows() const
{
    const int rowHeight = fontMetrics().height() + rowRoom;
    return qMin(int(entries().size()), qMax(1, int(height() * heightOfLegend) / rowHeight));
}

QRect RaportPicture::repeatRect() const
{
    const int legendHeight = legendRows() * (fontMetrics().height() + rowRoom) + margin;
    const int left = margin + 2 * markerWidth;
    return {left, margin, int(width() * widthOfRepeat) - left, height() - 2 * margin - legendHeight};
}

/// Stripes share the height without gaps, whatever is lost by rounding.
int RaportPicture::top(int line) const
{
    const QRect repeat = repeatRect();
    const int before = std::accumulate(m_stripes.begin(), m_stripes.begin() + line, 0,
        [](int sum, const Stripe &stripe) { return sum + qMax(0, stripe.feeders); });
    return repeat.top() + int(qint64(before) * repeat.height() / qMax(1, feeders()));
}

QRect RaportPicture::stripeRect(int line) const
{
    const QRect repeat = repeatRect();
    const int from = top(line);
    return {repeat.left(), from, repeat.width(), top(line + 1) - from};
}

int RaportPicture::lineAt(const QPoint &point) const
{
    for (int line = 0; line < m_stripes.size(); ++line) {
        const QRect stripe = stripeRect(line);
        if (!stripe.isEmpty() && point.y() >= stripe.top() && point.y() <= stripe.bottom())
            return line;
    }
    return -1;
}

QString RaportPicture::label(int line) const
{
    const Stripe &stripe = m_stripes[line];
    if (stripe.feeders <= 0)
        return u"%1  sem alimentador"_s.arg(line + 1);
    const QString repeats = stripe.repeats > 1 ? u" × %1"_s.arg(stripe.repeats) : QString();
    return u"%1  %2  %3%4"_s.arg(QString::number(line + 1), stripe.colour.isEmpty() ? stripe.yarn : stripe.colour,
        QString::number(stripe.feeders), repeats);
}

/// What must be seen comes last: a line at fault, then the one that the user is in.
void RaportPicture::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    if (m_stripes.isEmpty()) {
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(rect().adjusted(margin, margin, -margin, -margin), Qt::AlignCenter | Qt::TextWordWrap,
            u"As linhas do raport aparecem aqui como listras."_s);
        return;
    }
    for (int line = 0; line < m_stripes.size(); ++line)
        paintStripe(painter, line);
    painter.setPen(outline);
    painter.drawRect(repeatRect());
    for (int line = 0; line < m_stripes.size(); ++line) {
        if (m_stripes[line].feeders > 0)
            continue;
        painter.setPen(QPen(fault, 2));
        painter.drawLine(margin, top(line), repeatRect().right() + markerWidth, top(line));
        paintLabel(painter, line, palette().color(QPalette::Base), fault);
    }
    if (m_current >= 0 && m_current < m_stripes.size()) {
        const QRect stripe = stripeRect(m_current);
        painter.fillRect(margin, stripe.top(), markerWidth, qMax(2, stripe.height()), palette().highlight());
        paintLabel(
            painter, m_current, palette().color(QPalette::Highlight), palette().color(QPalette::HighlightedText));
    }
    paintLegend(painter);
}

void RaportPicture::paintStripe(QPainter &painter, int line) const
{
    const QRect stripe = stripeRect(line);
    if (stripe.isEmpty())
        return;
    fill(painter, stripe, m_stripes[line].shade);
    painter.setPen(outline);
    painter.drawLine(stripe.topLeft(), stripe.topRight()); // two white lines are two
    if (stripe.height() >= fontMetrics().height()) // labels would run into one another in a dense rapport
        paintLabel(painter, line, palette().color(QPalette::Base), palette().color(QPalette::Text));
}

void RaportPicture::paintLabel(QPainter &painter, int line, const QColor &paper, const QColor &ink) const
{
    const QRect stripe = stripeRect(line);
    const int textHeight = fontMetrics().height();
    QRect text(stripe.right() + margin, stripe.center().y() - textHeight / 2, width() - stripe.right() - 2 * margin,
        textHeight);
    text.moveTop(qMin(qMax(margin, text.top()), repeatRect().bottom() - textHeight));
    painter.fillRect(text.adjusted(-2, -1, 2, 1), paper);
    painter.setPen(ink);
    painter.drawText(
        text, Qt::AlignLeft | Qt::AlignVCenter, fontMetrics().elidedText(label(line), Qt::ElideRight, text.width()));
}

void RaportPicture::paintLegend(QPainter &painter) const
{
    const QVector<Entry> yarns = entries();
    const QStringList texts = legend();
    const int rows = legendRows();
    const int rowHeight = fontMetrics().height() + rowRoom;
    QRect row(margin, height() - rows * rowHeight - margin / 2, width() - 2 * margin, rowHeight);
    for (int i = 0; i < rows; ++i, row.translate(0, rowHeight)) {
        QString text = texts[i];
        if (i == rows - 1 && rows < yarns.size()) {
            text = u"e mais %1"_s.arg(yarns.size() - i);
        } else {
            const QRect box(row.left(), row.center().y() - swatch / 2, swatch, swatch);
            fill(painter, box, yarns[i].stripe.shade);
            painter.setPen(outline);
            painter.drawRect(box);
        }
        const QRect space = row.adjusted(swatch + margin, 0, 0, 0);
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(
            space, Qt::AlignLeft | Qt::AlignVCenter, fontMetrics().elidedText(text, Qt::ElideRight, space.width()));
    }
}

QImage RaportPicture::forPaper() const
{
    constexpr QSize size(380, 503);
    constexpr int sharpness = 3;
    RaportPicture paper;
    QPalette inks(Qt::white);
    inks.setColor(QPalette::Window, Qt::white);
    inks.setColor(QPalette::Text, Qt::black);
    paper.setPalette(inks);
    paper.setStripes(m_stripes);
    paper.resize(size);
    QImage image(size * sharpness, QImage::Format_RGB32);
    image.setDevicePixelRatio(sharpness);
    paper.render(&image);
    return image;
}

void RaportPicture::mousePressEvent(QMouseEvent *event)
{
    const int line = lineAt(event->pos());
    if (line >= 0)
        emit lineClicked(line);
}

/// What the labels have no room for.
bool RaportPicture::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    auto *help = static_cast<QHelpEvent *>(event);
    const int line = lineAt(help->pos());
    const QString text = line >= 0 ? u"Linha %1\n%2"_s.arg(label(line), m_stripes[line].yarn) : legend().join(u'\n');
    QToolTip::showText(help->globalPos(), text, this);
    return true;
}
