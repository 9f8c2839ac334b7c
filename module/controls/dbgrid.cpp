// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/controls/dbgrid.h"

#include "module/controls/currencyedit.h"
#include "module/controls/datasetmodel.h"
#include "module/controls/gridactions.h"
#include "module/controls/gridcolumns.h"
#include "module/controls/gridtotals.h"
#include "module/host_services/dataset.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>

using namespace Qt::StringLiterals;

namespace {

/// Figures are typed in a cell as they are in a field.
class FieldDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const auto *model = qobject_cast<const DataSetModel *>(index.model());
        if (!model || !model->dataSet())
            return nullptr;
        const TField &field = model->dataSet()->fields()[model->fieldIndex(index.column())];
        if (!field.isNumeric())
            return QStyledItemDelegate::createEditor(parent, option, index);
        auto *editor = new TCurrencyEdit(parent);
        editor->setDisplayFormat(field.mask.isEmpty() ? u",0.00"_s : field.mask);
        editor->setEditDecimals(field.type == TField::Type::Integer ? 0 : int(field.mask.section(u'.', 1).size()));
        return editor;
    }

    void setEditorData(QWidget *editor, const QModelIndex &index) const override
    {
        if (auto *number = qobject_cast<TCurrencyEdit *>(editor))
            number->setValue(index.data(Qt::EditRole).toDouble());
        else
            QStyledItemDelegate::setEditorData(editor, index);
    }

    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override
    {
        if (auto *number = qobject_cast<TCurrencyEdit *>(editor))
            model->setData(index, number->value(), Qt::EditRole);
        else
            QStyledItemDelegate::setModelData(editor, model, index);
    }

    /// A check mark is met anywhere in its cell.
    bool editorEvent(
        QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option, const QModelIndex &index) override
    {
        if (!(model->flags(index) & Qt::ItemIsUserCheckable))
            return QStyledItemDelegate::editorEvent(event, model, option, index);
        if (event->type() != QEvent::MouseButtonRelease
            || static_cast<QMouseEvent *>(event)->button() != Qt::LeftButton)
            return false;
        return toggle(*model, index);
    }

    static bool toggle(QAbstractItemModel &model, const QModelIndex &index)
    {
        const bool ticked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        return model.setData(index, ticked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    }
};

constexpr auto rowAlone = QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;

} // namespace

TDBGrid::TDBGrid(QWidget *parent)
    : QTableView(parent)
    , m_model(new DataSetModel(this))
{
    setModel(m_model);
    m_gridColumns = new GridColumns(this);
    setItemDelegate(new FieldDelegate(this));
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    verticalHeader()->hide();
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsMovable(true);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this,
        [this](int column) { GridActions::run(*this, [&] { chooseTitle(column); }); });
    connect(m_model, &QAbstractItemModel::modelReset, this, &TDBGrid::showSorting);
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] { m_filled = false; });
    connect(m_model, &QAbstractItemModel::layoutChanged, this, &TDBGrid::showSorting);
    connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex &index) {
        if (!(m_model->flags(index) & Qt::ItemIsEditable))
            emit rowChosen();
    });
}

void TDBGrid::setDataSet(TDataSet *dataSet)
{
    if (TDataSet *before = m_model->dataSet())
        before->disconnect(this);
    m_model->setDataSet(dataSet);
    if (!dataSet)
        return;
    connect(dataSet, &TDataSet::AfterScroll, this, &TDBGrid::followDataSet);
    connect(dataSet, &TDataSet::wasReset, this, &TDBGrid::followDataSet);
    followDataSet();
}

TDataSet *TDBGrid::dataSet() const
{
    return m_model->dataSet();
}

void TDBGrid::setColunas(const QString &columns)
{
    m_columns = columns;
    m_model->setColumns(columns);
}

void TDBGrid::setTotais(const QString &fields)
{
    m_totals = fields;
    if (!m_totalsLine)
        m_totalsLine = new GridTotals(this);
    m_totalsLine->setFields(fields);
    m_totalsLine->setVisible(!fields.isEmpty());
    updateGeometries();
}

void TDBGrid::chooseTitle(int column)
{
    m_titleField = m_model->fieldName(column);
    showSorting(); // the header has turned its arrow by itself
    if (isSignalConnected(QMetaMethod::fromSignal(&TDBGrid::titleClicked)))
        emit titleClicked();
    else
        sortBy(m_titleField);
}

void TDBGrid::sortBy(const QString &field)
{
    const int column = columnOf(field);
    if (column < 0 || !GridActions::fetchAll(*this))
        return;
    const bool again = column == m_model->sortColumn() && m_model->sortOrder() == Qt::AscendingOrder;
    m_model->sort(column, again ? Qt::DescendingOrder : Qt::AscendingOrder);
    if (currentIndex().isValid())
        scrollTo(currentIndex());
}

void TDBGrid::showSorting()
{
    const int column = m_model->sortColumn();
    horizontalHeader()->setSortIndicatorShown(column >= 0);
    if (column >= 0)
        horizontalHeader()->setSortIndicator(column, m_model->sortOrder());
}

void TDBGrid::restoreColumns()
{
    m_gridColumns->restore();
}

void TDBGrid::setRowColour(const std::function<QColor(int row)> &colour)
{
    m_model->setRowColour(colour);
    viewport()->update();
}

int TDBGrid::columnOf(const QString &field) const
{
    for (int column = 0; column < m_model->columnCount(); ++column) {
        if (m_model->fieldName(column).compare(field, Qt::CaseInsensitive) == 0)
            return column;
    }
    return -1;
}

QModelIndex TDBGrid::cellOf(int dataSetRow, const QString &field) const
{
    return m_model->index(m_model->modelRow(dataSetRow), columnOf(field));
}

void TDBGrid::followDataSet()
{
    if (m_following || !dataSet())
        return;
    m_following = true;
    const int row = dataSet()->row();
    const int column = qMax(0, currentIndex().column());
    if (row >= 0 && row < m_model->rowCount()) {
        const QModelIndex index = m_model->index(m_model->modelRow(row), column);
        // Whatever keys are held down: the row that the program goes to is no part of what the user selects.
        if (selectionMode() == ExtendedSelection)
            selectionModel()->setCurrentIndex(index, rowAlone);
        else
            setCurrentIndex(index);
    }
    m_following = false;
}

void TDBGrid::doItemsLayout()
{
    if (!m_filled && m_model->rowCount() > 0) {
        m_filled = true;
        m_gridColumns->fit(); // to the rows: the columns were found before them
    }
    QTableView::doItemsLayout();
    if (m_scrollPending && currentIndex().isValid())
        scrollTo(currentIndex());
    m_scrollPending = false;
}

void TDBGrid::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    if (event->size().width() != event->oldSize().width())
        m_gridColumns->fit();
}

void TDBGrid::updateGeometries()
{
    if (m_arranging)
        return;
    if (m_totals.isEmpty()) {
        QTableView::updateGeometries();
        return;
    }
    m_arranging = true;
    makeRoomForTotals();
    m_arranging = false;
}

/// The table view knows of no line beneath it and takes its place back each time.
void TDBGrid::makeRoomForTotals()
{
    const int line = m_totalsLine->sizeHint().height();
    const int scrolled = verticalScrollBar()->value();
    QTableView::updateGeometries();
    // The range first: a scroll bar that is not needed goes as soon as the margins are set.
    const int rows = m_model->rowCount();
    const int room = viewport()->height() - line;
    const int seen = rows > 0 ? qBound(1, room / qMax(1, rowHeight(0)), rows) : 0;
    verticalScrollBar()->setRange(0, rows - seen);
    verticalScrollBar()->setPageStep(seen);
    QMargins margins = viewportMargins();
    margins.setBottom(line);
    setViewportMargins(margins);
    // The header scrolls to the last row by its own height, also while it is hidden.
    verticalHeader()->resize(verticalHeader()->width(), viewport()->height());
    QMetaObject::invokeMethod(verticalHeader(), "updateGeometries");
    verticalScrollBar()->setValue(scrolled);
    const QRect place = viewport()->geometry();
    m_totalsLine->setGeometry(place.left(), place.bottom() + 1, place.width(), line);
}

void TDBGrid::contextMenuEvent(QContextMenuEvent *event)
{
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    GridActions::showMenu(
        *this, byKey ? viewport()->mapToGlobal(visualRect(currentIndex()).center()) : event->globalPos());
}

void TDBGrid::focusOutEvent(QFocusEvent *event)
{
    QTableView::focusOutEvent(event);
    const bool left = event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason;
    if (left && selectionMode() == ExtendedSelection && selectionModel()->selectedRows().size() > 1)
        selectionModel()->select(currentIndex(), rowAlone);
}

void TDBGrid::hideEvent(QHideEvent *event)
{
    QTableView::hideEvent(event);
    m_gridColumns->save();
}

void TDBGrid::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    if (m_following && state() != EditingState) {
        // The data set may still be on its way: the view shows where it came to rest, when it is laid out next.
        m_scrollPending = true;
        scheduleDelayedItemsLayout();
        return;
    }
    QTableView::currentChanged(current, previous);
    if (m_following || !current.isValid() || !dataSet())
        return;
    const int row = m_model->dataSetRow(current.row());
    if (row == dataSet()->row())
        return;
    m_following = true;
    dataSet()->setRow(row);
    m_following = false;
}

/// False when the grid's rows cannot be ticked.
bool TDBGrid::tickRow()
{
    for (int column = 0; column < m_model->columnCount(); ++column) {
        const QModelIndex index = m_model->index(currentIndex().row(), column);
        if (m_model->flags(index) & Qt::ItemIsUserCheckable)
            return FieldDelegate::toggle(*m_model, index);
    }
    return false;
}

void TDBGrid::keyPressEvent(QKeyEvent *event)
{
    if (state() != EditingState && GridActions::keyPressed(*this, *event))
        return;
    if (event->key() == Qt::Key_Space && state() != EditingState && tickRow())
        return;
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && currentIndex().isValid() && state() != EditingState) {
        if (m_model->flags(currentIndex()) & Qt::ItemIsEditable)
            edit(currentIndex());
        else
            emit rowChosen();
        return;
    }
    QTableView::keyPressEvent(event);
}
