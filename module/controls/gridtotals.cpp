// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/controls/gridtotals.h"

#include "module/controls/datasetmodel.h"
#include "module/controls/dbgrid.h"
#include "module/host_services/format.h"

#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace {

constexpr int room = 8; // pixels above and below the text, together

double sumOf(const TDataSet &dataSet, int field)
{
    double sum = 0;
    for (int row = 0; row < dataSet.rowCount(); ++row)
        sum += dataSet.cell(row, field).toDouble();
    return sum;
}

} // namespace

GridTotals::GridTotals(TDBGrid *grid)
    : QWidget(grid)
    , m_grid(grid)
{
    const DataSetModel *model = grid->rows();
    connect(model, &DataSetModel::modelReset, this, &GridTotals::stale);
    connect(model, &DataSetModel::rowsInserted, this, &GridTotals::stale);
    connect(model, &DataSetModel::rowsRemoved, this, &GridTotals::stale);
    connect(model, &DataSetModel::dataChanged, this, &GridTotals::stale);
    const auto paintAnew = [this] { update(); };
    connect(grid->horizontalHeader(), &QHeaderView::sectionResized, this, paintAnew);
    connect(grid->horizontalHeader(), &QHeaderView::sectionMoved, this, paintAnew);
    connect(grid->horizontalScrollBar(), &QScrollBar::valueChanged, this, paintAnew);
}

void GridTotals::setFields(const QString &fields)
{
    m_fields.clear();
    for (const QString &field : fields.toUpper().split(u';', Qt::SkipEmptyParts))
        m_fields.append(field.trimmed());
    stale();
}

/// Summed up when they are painted: a list may be filled row by row.
void GridTotals::stale()
{
    m_stale = true;
    update();
}

void GridTotals::sumUp() const
{
    m_stale = false;
    m_sums.clear();
    const TDataSet *dataSet = m_grid->dataSet();
    if (!dataSet || dataSet->canFetchMore())
        return;
    for (const QString &name : m_fields) {
        if (!dataSet->hasField(name))
            continue;
        const int column = dataSet->fieldIndex(name);
        const TField &field = dataSet->fields()[column];
        if (!field.isNumeric())
            continue;
        const double sum = sumOf(*dataSet, column);
        const bool whole = field.type == TField::Type::Integer;
        m_sums.insert(name, field.text(whole ? QVariant(qRound64(sum)) : QVariant(sum)));
    }
}

QString GridTotals::text(const QString &field) const
{
    if (m_stale)
        sumUp();
    return m_sums.value(field.toUpper());
}

QString GridTotals::count() const
{
    const TDataSet *dataSet = m_grid->dataSet();
    const int rows = dataSet ? dataSet->rowCount() : 0;
    const QString number = Format::number(rows, u",0"_s);
    if (dataSet && dataSet->canFetchMore())
        return u"Mais de %1 registros"_s.arg(number);
    return rows == 1 ? u"1 registro"_s : u"%1 registros"_s.arg(number);
}

QFont GridTotals::sumFont() const
{
    QFont bold = font();
    bold.setBold(true);
    return bold;
}

int GridTotals::widthOf(const QString &field) const
{
    return QFontMetrics(sumFont()).horizontalAdvance(text(field));
}

QSize GridTotals::sizeHint() const
{
    return {0, fontMetrics().height() + room};
}

QRect GridTotals::columnPlace(int column) const
{
    return {m_grid->columnViewportPosition(column), 0, m_grid->columnWidth(column), height()};
}

/// From the first column that has no sum to the next one that has.
QRect GridTotals::countPlace() const
{
    const QHeaderView *header = m_grid->horizontalHeader();
    QRect place;
    for (int visual = 0; visual < header->count(); ++visual) {
        const int column = header->logicalIndex(visual);
        const bool summed = m_fields.contains(m_grid->rows()->fieldName(column).toUpper());
        if (!summed)
            place |= columnPlace(column);
        else if (!place.isEmpty())
            break;
    }
    return place;
}

void GridTotals::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Button));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(rect().topLeft(), rect().topRight());
    painter.setPen(palette().color(QPalette::Text));
    const int margin = style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1;
    const auto draw = [&](const QRect &place, Qt::Alignment side, const QString &text) {
        const QRect inside = place.adjusted(margin, 0, -margin, 0);
        // A figure that does not fit shows that it is cut.
        painter.drawText(
            inside, side | Qt::AlignVCenter, painter.fontMetrics().elidedText(text, Qt::ElideRight, inside.width()));
    };
    draw(countPlace(), Qt::AlignLeft, count());
    painter.setFont(sumFont());
    for (int column = 0; column < m_grid->rows()->columnCount(); ++column)
        draw(columnPlace(column), Qt::AlignRight, text(m_grid->rows()->fieldName(column)));
}
