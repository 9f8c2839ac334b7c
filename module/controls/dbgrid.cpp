// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/controls/dbgrid.h"

#include "module/controls/currencyedit.h"
#include "module/controls/datasetmodel.h"
#include "module/host_services/dataset.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyledItemDelegate>

using namespace Qt::StringLiterals;

namespace {

constexpr int columnRoom = 14; // pixels beside the text of a column
constexpr int rowsLookedAt = 20; // for the width of a column

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
        const TField &field = model->dataSet()->field(model->fieldName(index.column()));
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

} // namespace

TDBGrid::TDBGrid(QWidget *parent)
    : QTableView(parent)
    , m_model(new DataSetModel(this))
{
    setModel(m_model);
    setItemDelegate(new FieldDelegate(this));
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    verticalHeader()->hide();
    horizontalHeader()->setHighlightSections(false);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] { m_sizedByUser |= !m_fitting; });
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int section) {
        m_titleField = m_model->fieldName(section);
        emit titleClicked();
    });
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
    connect(dataSet, &TDataSet::wasReset, this, [this] {
        m_filled = false;
        // Rows are fitted when they are there: a reset comes before them.
        if (m_fittedColumns != m_model->columnCount())
            fitColumns();
    });
    followDataSet();
    fitColumns();
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

void TDBGrid::followDataSet()
{
    if (m_following || !dataSet())
        return;
    m_following = true;
    const int row = dataSet()->row();
    const int column = qMax(0, currentIndex().column());
    if (row >= 0 && row < m_model->rowCount())
        setCurrentIndex(m_model->index(row, column));
    m_following = false;
}

void TDBGrid::fitColumns()
{
    if (m_sizedByUser || m_model->columnCount() == 0)
        return;
    m_fitting = true;
    m_fittedColumns = m_model->columnCount();
    int widest = 0;
    int total = 0;
    for (int column = 0; column < m_model->columnCount(); ++column) {
        setColumnWidth(column, fittingWidth(column));
        total += columnWidth(column);
        const TField &field = dataSet()->field(m_model->fieldName(column));
        if (field.type == TField::Type::Text && columnWidth(column) >= columnWidth(widest))
            widest = column;
    }
    // What is left goes to the longest text.
    if (total < viewport()->width())
        setColumnWidth(widest, columnWidth(widest) + viewport()->width() - total);
    m_fitting = false;
}

/// For the title and the texts of the first rows. The view's own size hints, cell by cell, would take longer than
/// reading the rows.
int TDBGrid::fittingWidth(int column) const
{
    const int cellMargins = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1);
    int width = horizontalHeader()->sectionSizeHint(column);
    QString before;
    for (int row = 0; row < qMin(rowsLookedAt, m_model->rowCount()); ++row) {
        const QString text = m_model->index(row, column).data().toString();
        if (text != before)
            width = qMax(width, fontMetrics().horizontalAdvance(text) + cellMargins);
        before = text;
    }
    return width + columnRoom;
}

void TDBGrid::doItemsLayout()
{
    if (!m_filled && m_model->rowCount() > 0) {
        m_filled = true;
        fitColumns();
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
        fitColumns();
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
    if (m_following || !current.isValid() || !dataSet() || current.row() == dataSet()->row())
        return;
    m_following = true;
    dataSet()->setRow(current.row());
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
