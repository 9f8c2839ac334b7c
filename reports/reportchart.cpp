// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reports/reportchart.h"

#include "module/host_services/format.h"

#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QCategoryAxis>
#include <QChart>
#include <QChartView>
#include <QCursor>
#include <QLineSeries>
#include <QPainter>
#include <QStackedBarSeries>
#include <QToolTip>
#include <QVBoxLayout>
#include <QValueAxis>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int drawnWidth = 520; // pixels in which a picture is laid out; larger ones are scaled
constexpr int paperHeight = 760; // pixels of the picture on paper, 1500 wide for one chart
constexpr int paperWidth = 1500;
constexpr int labelledDays = 4; // more would run into each other
constexpr int uprightCategories = 8; // the labels of more are turned
constexpr double barWidth = 0.7; // of the room of a category

/// Apart from each other also where a printer makes greys of them.
constexpr std::array colours{0xff00796bU, 0xfff9a825U, 0xff283593U, 0xffef9a9aU, 0xff90a4aeU};

QColor colourOf(qsizetype series)
{
    return QColor::fromRgb(colours[size_t(series) % colours.size()]);
}

void explain(bool entered, const QString &what, double kg)
{
    if (entered)
        QToolTip::showText(QCursor::pos(), u"%1: %2 kg"_s.arg(what, Format::number(kg, u",0.000"_s)));
    else
        QToolTip::hideText();
}

/// An axis takes each label once, and none that is null.
QStringList distinct(const QStringList &labels)
{
    QStringList result;
    for (QString label : labels) {
        while (label.isEmpty() || result.contains(label))
            label += QChar::Nbsp;
        result.append(label);
    }
    return result;
}

QValueAxis *kilogramAxis(double lowest, double highest)
{
    auto *axis = new QValueAxis;
    axis->setRange(qMin(0.0, lowest), highest > 0 ? highest : 1);
    axis->applyNiceNumbers();
    axis->setLabelFormat(axis->max() - axis->min() < axis->tickCount() ? u"%.1f"_s : u"%.0f"_s);
    axis->setTitleText(u"kg"_s);
    return axis;
}

/// Lowest and highest end of a column.
std::pair<double, double> columnEnds(const QList<ReportChart::Series> &series, qsizetype categories, bool stacked)
{
    double lowest = 0;
    double highest = 0;
    for (qsizetype category = 0; category < categories; ++category) {
        double below = 0;
        double above = 0;
        for (const ReportChart::Series &one : series) {
            const double kg = one.values.value(category);
            below = stacked ? below + qMin(0.0, kg) : qMin(below, kg);
            above = stacked ? above + qMax(0.0, kg) : qMax(above, kg);
        }
        lowest = qMin(lowest, below);
        highest = qMax(highest, above);
    }
    return {lowest, highest};
}

/// Small ones, that labels are whole beside a grid too.
void setLetters(QChart *chart, const QString &family)
{
    QFont font(family, 8);
    chart->legend()->setFont(font);
    for (QAbstractAxis *axis : chart->axes()) {
        axis->setLabelsFont(font);
        axis->setTitleFont(font);
    }
    font.setBold(true);
    chart->setTitleFont(font);
}

} // namespace

ReportChart::ReportChart(QWidget *parent)
    : QWidget(parent)
    , m_view(new QChartView(this))
{
    auto *room = new QVBoxLayout(this);
    room->setContentsMargins(0, 0, 0, 0);
    room->addWidget(m_view);
    m_view->setRenderHint(QPainter::Antialiasing);
    m_view->setFocusPolicy(Qt::NoFocus);
    showDrawn();
}

ReportChart::~ReportChart() = default;

void ReportChart::showColumns(Columns kind, const QStringList &categories, const QList<Series> &series, int atMost)
{
    m_kind = kind;
    m_firstDay = {};
    m_categories = categories;
    m_series.clear();
    const bool tooMany = categories.size() > atMost;
    if (tooMany)
        m_categories = categories.first(atMost) + QStringList{u"Outros"_s};
    for (const Series &one : series) {
        Series shown{one.name, {}};
        for (qsizetype category = 0; category < categories.size(); ++category) {
            if (category <= atMost)
                shown.values.append(0);
            shown.values.last() = Format::rounded(shown.values.last() + one.values.value(category), 3);
        }
        if (std::any_of(shown.values.cbegin(), shown.values.cend(), [](double kg) { return kg != 0; }))
            m_series.append(shown);
    }
    showDrawn();
}

void ReportChart::showDays(const QMap<QDate, double> &kilograms)
{
    m_categories.clear();
    m_series.clear();
    m_firstDay = kilograms.isEmpty() ? QDate() : kilograms.firstKey();
    if (m_firstDay.isValid()) {
        Series line{m_title, {}};
        for (QDate day = m_firstDay; day <= kilograms.lastKey(); day = day.addDays(1)) {
            m_categories.append(Format::date(day).left(5));
            line.values.append(kilograms.value(day));
        }
        m_series.append(line);
    }
    showDrawn();
}

void ReportChart::clear()
{
    showDays({});
}

std::unique_ptr<QChart> ReportChart::draw() const
{
    auto chart = std::make_unique<QChart>();
    chart->setTitle(m_title);
    chart->setLocale(QLocale(QLocale::Portuguese, QLocale::Brazil));
    chart->setLocalizeNumbers(true);
    chart->setBackgroundRoundness(0);
    chart->setMargins(QMargins(4, 2, 4, 2));
    chart->legend()->setAlignment(Qt::AlignBottom);
    chart->legend()->setVisible(m_series.size() > 1);
    if (!isEmpty())
        m_firstDay.isValid() ? drawDays(chart.get()) : drawColumns(chart.get());
    setLetters(chart.get(), font().family());
    return chart;
}

void ReportChart::drawColumns(QChart *chart) const
{
    const bool stacked = m_kind == Columns::Stacked;
    QAbstractBarSeries *bars = stacked ? static_cast<QAbstractBarSeries *>(new QStackedBarSeries) : new QBarSeries;
    bars->setBarWidth(barWidth);
    // Turned labels at the very ends would be left out by the axis, for the room that they take lying.
    const bool turned = m_categories.size() > uprightCategories;
    const int before = turned ? 1 : 0;
    QStringList labels = m_categories;
    if (turned)
        labels = QStringList{QString()} + labels + QStringList{QString()};
    for (const Series &one : m_series) {
        auto *set = new QBarSet(one.name);
        set->setColor(colourOf(bars->count()));
        set->setBorderColor(Qt::white);
        for (qsizetype place = 0; place < labels.size(); ++place)
            set->append(one.values.value(place - before));
        connect(set, &QBarSet::hovered, this, [this, one, before](bool entered, int place) {
            const int category = place - before;
            explain(entered, m_categories.value(category) + u" · "_s + one.name, one.values.value(category));
        });
        bars->append(set);
    }
    chart->addSeries(bars);
    auto *across = new QBarCategoryAxis;
    across->append(distinct(labels));
    across->setTruncateLabels(false); // codes that begin alike would read alike
    across->setGridLineVisible(false);
    across->setLabelsAngle(turned ? -90 : 0);
    const auto [lowest, highest] = columnEnds(m_series, m_categories.size(), stacked);
    chart->addAxis(across, Qt::AlignBottom);
    chart->addAxis(kilogramAxis(lowest, highest), Qt::AlignLeft);
    for (QAbstractAxis *axis : chart->axes())
        bars->attachAxis(axis);
}

void ReportChart::drawDays(QChart *chart) const
{
    const QList<double> &values = m_series.constFirst().values;
    auto *line = new QLineSeries;
    line->setPen(QPen(colourOf(0), 2));
    line->setPointsVisible(values.size() <= 62);
    for (qsizetype day = 0; day < values.size(); ++day)
        line->append(double(day), values[day]);
    connect(line, &QLineSeries::hovered, this, [this](const QPointF &point, bool entered) {
        const int day = qRound(point.x());
        explain(entered, m_categories.value(day), m_series.value(0).values.value(day));
    });
    chart->addSeries(line);
    auto *across = new QCategoryAxis;
    across->setLabelsPosition(QCategoryAxis::AxisLabelsPositionOnValue);
    const int last = int(values.size()) - 1;
    across->setRange(-0.5, last + 0.5); // room for the first label and the last
    const bool longer = m_firstDay.daysTo(m_firstDay.addYears(1)) <= last;
    for (int day = 0; day <= last; day += 1 + last / labelledDays) {
        const QDate date = m_firstDay.addDays(day);
        across->append(longer ? date.toString(u"MM/yyyy"_s) : m_categories[day], day);
    }
    const auto [lowest, highest] = std::minmax_element(values.cbegin(), values.cend());
    chart->addAxis(across, Qt::AlignBottom);
    chart->addAxis(kilogramAxis(*lowest, *highest), Qt::AlignLeft);
    for (QAbstractAxis *axis : chart->axes())
        line->attachAxis(axis);
}

void ReportChart::showDrawn()
{
    const std::unique_ptr<QChart> before(m_view->chart());
    m_view->setChart(draw().release());
}

QImage ReportChart::image(const QSize &size) const
{
    QChartView page(draw().release());
    setLetters(page.chart(), u"Liberation Sans"_s); // that of the reports' paper
    page.setFrameShape(QFrame::NoFrame);
    page.resize(drawnWidth, drawnWidth * size.height() / qMax(1, size.width()));
    page.grab(); // which lays it out
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    page.render(&painter);
    return image;
}

QImage ReportChart::forPaper(const QList<const ReportChart *> &charts)
{
    QList<QImage> images;
    for (const ReportChart *chart : charts) {
        if (!chart->isEmpty())
            images.append(chart->image(QSize(paperWidth, paperHeight)));
    }
    if (images.isEmpty())
        return {};
    QImage page(paperWidth * int(images.size()), paperHeight, QImage::Format_RGB32);
    QPainter painter(&page);
    for (qsizetype place = 0; place < images.size(); ++place)
        painter.drawImage(paperWidth * int(place), 0, images[place]);
    return page;
}
