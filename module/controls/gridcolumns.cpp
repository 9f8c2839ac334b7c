// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/controls/gridcolumns.h"

#include "module/controls/datasetmodel.h"
#include "module/controls/dbgrid.h"
#include "module/controls/gridactions.h"
#include "module/controls/gridtotals.h"
#include "module/host_services/host.h"

#include <QHeaderView>
#include <QScopedValueRollback>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {

constexpr int columnRoom = 14; // pixels beside the text of a column
constexpr int rowsLookedAt = 20; // for the width of a column
constexpr int narrowest = 12; // pixels; what is narrower could not be caught again
constexpr int widest = 2000;

} // namespace

GridColumns::GridColumns(TDBGrid *grid)
    : QObject(grid)
    , m_grid(grid)
{
    const auto changed = [this] {
        if (m_arranging)
            return;
        m_chosen = m_changed = true;
        m_new.clear();
    };
    connect(grid->horizontalHeader(), &QHeaderView::sectionResized, this, changed);
    connect(grid->horizontalHeader(), &QHeaderView::sectionMoved, this, changed);
    connect(grid->rows(), &DataSetModel::modelAboutToBeReset, this, &GridColumns::save);
    connect(grid->rows(), &DataSetModel::columnsFound, this, &GridColumns::columnsFound);
}

/// Empty for a grid that stands in no screen or has no name: nothing is kept of it.
QString GridColumns::key() const
{
    const QWidget *screen = GridActions::screenOf(*m_grid);
    if (!screen || m_grid->objectName().isEmpty())
        return {};
    return u"Grades/%1.%2"_s.arg(QString::fromLatin1(screen->metaObject()->className()), m_grid->objectName());
}

QStringList GridColumns::shownFields() const
{
    QStringList fields;
    for (int column = 0; column < m_grid->rows()->columnCount(); ++column)
        fields.append(m_grid->rows()->fieldName(column));
    return fields;
}

void GridColumns::columnsFound()
{
    if (!m_grid->dataSet() || shownFields() == m_fields)
        return;
    m_fields = shownFields();
    inOwnOrder();
    m_chosen = applyKept();
    if (m_grid->rows()->rowCount() == 0) // else when the rows are laid out
        fit();
}

void GridColumns::inOwnOrder()
{
    const QScopedValueRollback arranging(m_arranging, true);
    QHeaderView *header = m_grid->horizontalHeader();
    for (int column = 0; column < header->count(); ++column)
        header->moveSection(header->visualIndex(column), column);
}

/// "FIELD:width;FIELD:width", from the left; what the grid does not show is passed over, and a column that is not
/// named follows the others. False when nothing was kept.
bool GridColumns::applyKept()
{
    if (key().isEmpty())
        return false;
    const QScopedValueRollback arranging(m_arranging, true);
    QHeaderView *header = m_grid->horizontalHeader();
    m_new = m_fields;
    int place = 0;
    for (const QString &part : Host::current().settings().value(key()).toString().split(u';', Qt::SkipEmptyParts)) {
        const QString field = part.section(u':', 0, 0);
        if (!m_new.removeOne(field))
            continue;
        const int column = int(m_fields.indexOf(field));
        header->moveSection(header->visualIndex(column), place++);
        header->resizeSection(column, qBound(narrowest, part.section(u':', 1).toInt(), widest));
    }
    return place > 0;
}

void GridColumns::save()
{
    const QHeaderView *header = m_grid->horizontalHeader();
    if (!m_changed || key().isEmpty() || header->count() != m_fields.size())
        return;
    QStringList parts;
    for (int place = 0; place < header->count(); ++place) {
        const int column = header->logicalIndex(place);
        parts.append(u"%1:%2"_s.arg(m_fields[column], QString::number(header->sectionSize(column))));
    }
    Host::current().settings().setValue(key(), parts.join(u';'));
    m_changed = false;
}

void GridColumns::restore()
{
    if (!key().isEmpty())
        Host::current().settings().remove(key());
    m_chosen = m_changed = false;
    inOwnOrder();
    fit();
}

void GridColumns::fit()
{
    const int columns = m_grid->rows()->columnCount();
    if (!m_grid->dataSet() || columns == 0)
        return;
    const QScopedValueRollback arranging(m_arranging, true);
    if (m_chosen) {
        for (const QString &field : m_new)
            m_grid->setColumnWidth(int(m_fields.indexOf(field)), fittingWidth(int(m_fields.indexOf(field))));
        return;
    }
    int longest = 0;
    int total = 0;
    for (int column = 0; column < columns; ++column) {
        m_grid->setColumnWidth(column, fittingWidth(column));
        total += m_grid->columnWidth(column);
        const TField &field = m_grid->dataSet()->fields()[m_grid->rows()->fieldIndex(column)];
        if (field.type == TField::Type::Text && m_grid->columnWidth(column) >= m_grid->columnWidth(longest))
            longest = column;
    }
    // What is left goes to the longest text.
    const int left = m_grid->viewport()->width() - total;
    if (left > 0)
        m_grid->setColumnWidth(longest, m_grid->columnWidth(longest) + left);
}

/// For the title and the texts of the first rows. The view's own size hints, cell by cell, would take longer than
/// reading the rows.
int GridColumns::fittingWidth(int column) const
{
    const int cellMargins = 2 * (m_grid->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, m_grid) + 1);
    int width = m_grid->horizontalHeader()->sectionSizeHint(column);
    QString before;
    for (int row = 0; row < qMin(rowsLookedAt, m_grid->rows()->rowCount()); ++row) {
        const QString text = m_grid->rows()->index(row, column).data().toString();
        if (text != before)
            width = qMax(width, m_grid->fontMetrics().horizontalAdvance(text) + cellMargins);
        before = text;
    }
    if (const auto *totals = m_grid->findChild<GridTotals *>())
        width = qMax(width, totals->widthOf(m_grid->rows()->fieldName(column)) + cellMargins);
    return width + columnRoom;
}
