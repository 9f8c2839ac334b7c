// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "registries/linegrid.h"

#include "module/host_services/clientdataset.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QSignalBlocker>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isEnter(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

/// Keys that mean the line, or the list, and not the text of the cell.
bool leavesTheCell(const QKeyEvent &event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Insert:
    case Qt::Key_F4:
        return true;
    case Qt::Key_D:
        return event.modifiers() == Qt::ControlModifier;
    default:
        return false;
    }
}

} // namespace

LineGrid::LineGrid(QWidget *parent)
    : TDBGrid(parent)
{
    setSelectionMode(QAbstractItemView::ContiguousSelection);
    horizontalHeader()->setSectionsClickable(false); // the lines have an order of their own: titles do not sort
}

void LineGrid::setLines(TClientDataSet *lines, const QString &numberField)
{
    m_lines = lines;
    m_numberField = numberField;
    setDataSet(lines);
}

QString LineGrid::currentField() const
{
    if (!currentIndex().isValid())
        return {};
    for (const TField &field : m_lines->fields()) {
        if (columnOf(field.name) == currentIndex().column())
            return field.name;
    }
    return {};
}

void LineGrid::typeInto(const QString &field, const QString &text)
{
    if (m_lines->IsEmpty())
        begin();
    m_lines->Edit();
    m_lines->setValue(field, text);
    m_lines->Post();
}

LineGrid::Range LineGrid::marked() const
{
    const QModelIndexList rows = selectionModel()->selectedRows();
    if (rows.isEmpty())
        return {m_lines->row(), m_lines->row() < 0 ? 0 : 1};
    const auto [first, last] = std::minmax_element(
        rows.begin(), rows.end(), [](const QModelIndex &a, const QModelIndex &b) { return a.row() < b.row(); });
    return {first->row(), last->row() - first->row() + 1};
}

/// The cursor stands on the first of the lines, in the column in which it was.
void LineGrid::mark(const Range &range)
{
    const int column = qMax(0, currentIndex().column());
    m_lines->setRow(range.first);
    const QItemSelection lines(
        model()->index(range.first, 0), model()->index(range.first + range.count - 1, model()->columnCount() - 1));
    selectionModel()->setCurrentIndex(model()->index(range.first, column), QItemSelectionModel::NoUpdate);
    selectionModel()->select(lines, QItemSelectionModel::ClearAndSelect);
}

QVector<QVariant> LineGrid::line(int row) const
{
    QVector<QVariant> values;
    for (int field = 0; field < m_lines->fields().size(); ++field)
        values.append(m_lines->cell(row, field));
    return values;
}

/// A new line before that row; past the end, after the last.
void LineGrid::putLine(int row, const QVector<QVariant> &values)
{
    if (row < m_lines->rowCount()) {
        m_lines->setRow(row);
        m_lines->Insert();
    } else {
        m_lines->Append();
    }
    {
        // What belongs together was copied together: nothing is looked up again.
        const QSignalBlocker silent(m_lines);
        for (int field = 0; field < values.size(); ++field)
            m_lines->setValue(m_lines->fields()[field].name, values[field]);
    }
    m_lines->Post();
}

void LineGrid::tellChange()
{
    if (!m_numberField.isEmpty()) {
        const QSignalBlocker silent(m_lines); // figures alone: no line comes or goes
        const int current = m_lines->row();
        for (int row = 0; row < m_lines->rowCount(); ++row) {
            m_lines->setRow(row);
            m_lines->Edit();
            m_lines->setValue(m_numberField, row + 1);
            m_lines->Post();
        }
        if (current >= 0)
            m_lines->setRow(current);
        viewport()->update();
    }
    emit linesChanged();
}

void LineGrid::insertLine()
{
    if (finish() || m_lines->IsEmpty()) {
        begin();
        return;
    }
    const int row = m_lines->row();
    putLine(row, {});
    tellChange();
    mark({row, 1});
}

void LineGrid::copyLines()
{
    if (finish() || m_lines->IsEmpty())
        return;
    const Range range = marked();
    for (int i = 0; i < range.count; ++i)
        putLine(range.first + range.count + i, line(range.first + i));
    tellChange();
    mark({range.first + range.count, range.count});
}

/// Instead of the lines marked, the one that they pass goes to their other side.
void LineGrid::moveLines(int step)
{
    if (finish() || m_lines->IsEmpty())
        return;
    const Range range = marked();
    const int passed = step < 0 ? range.first - 1 : range.first + range.count;
    if (passed < 0 || passed >= m_lines->rowCount())
        return;
    const QVector<QVariant> values = line(passed);
    m_lines->setRow(passed);
    m_lines->Delete();
    putLine(step < 0 ? passed + range.count : range.first, values);
    tellChange();
    mark({range.first + step, range.count});
}

void LineGrid::removeLines()
{
    finish();
    const Range range = marked();
    for (int i = 0; i < range.count; ++i) {
        m_lines->setRow(range.first);
        m_lines->Delete();
    }
    tellChange();
    if (m_lines->rowCount() > 0)
        mark({qMin(range.first, m_lines->rowCount() - 1), 1});
}

bool LineGrid::finish()
{
    takeCell();
    const int last = m_lines->rowCount() - 1;
    if (!std::exchange(m_begun, false) || last < 0 || !isLineEmpty(last))
        return false;
    const int row = m_lines->row();
    m_lines->setRow(last);
    m_lines->Delete();
    if (row < last)
        m_lines->setRow(row);
    tellChange();
    return row == last;
}

bool LineGrid::isLineEmpty(int row) const
{
    for (int field = 0; field < m_lines->fields().size(); ++field) {
        const QVariant value = m_lines->cell(row, field);
        if (!m_lines->fields()[field].readOnly && !value.isNull() && !value.toString().isEmpty())
            return false;
    }
    return true;
}

/// A new line at the end, ready to be typed in.
void LineGrid::begin()
{
    putLine(m_lines->rowCount(), {});
    tellChange();
    mark({m_lines->rowCount() - 1, 1});
    for (int column = 0; column < model()->columnCount(); ++column) {
        if (model()->flags(model()->index(0, column)) & Qt::ItemIsEditable) {
            setCurrentIndex(model()->index(m_lines->row(), column));
            break;
        }
    }
    m_begun = true;
}

/// To the next cell that can be typed in.
void LineGrid::goOn()
{
    const int columns = model()->columnCount();
    if (!currentIndex().isValid()) {
        begin();
        return;
    }
    const int from = currentIndex().row() * columns + currentIndex().column() + 1;
    for (int cell = from; cell < model()->rowCount() * columns; ++cell) {
        const QModelIndex next = model()->index(cell / columns, cell % columns);
        if (model()->flags(next) & Qt::ItemIsEditable) {
            setCurrentIndex(next);
            return;
        }
    }
    if (!isLineEmpty(m_lines->rowCount() - 1)) // an empty line is filled before the next begins
        begin();
}

void LineGrid::takeCell()
{
    // One that has closed already lives until the event loop comes round.
    if (m_editor && state() == EditingState) {
        commitData(m_editor);
        closeEditor(m_editor, QAbstractItemDelegate::NoHint);
    }
    m_editor.clear();
}

bool LineGrid::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event)
{
    const bool opened = TDBGrid::edit(index, trigger, event);
    QWidget *editor = opened ? indexWidget(index) : nullptr;
    if (editor && editor != m_editor) {
        m_editor = editor;
        m_editor->installEventFilter(this);
    }
    return opened;
}

bool LineGrid::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_editor || event->type() != QEvent::KeyPress)
        return TDBGrid::eventFilter(watched, event);
    auto *key = static_cast<QKeyEvent *>(event);
    if (!leavesTheCell(*key))
        return false;
    takeCell();
    const bool tab = key->key() == Qt::Key_Tab; // within the list, where the cell is open
    QKeyEvent again(QEvent::KeyPress, tab ? int(Qt::Key_Return) : key->key(), key->modifiers());
    QCoreApplication::sendEvent(this, &again);
    return true;
}

void LineGrid::keyPressEvent(QKeyEvent *event)
{
    if (!m_lines || state() == EditingState || !useKey(event))
        TDBGrid::keyPressEvent(event);
}

bool LineGrid::useKey(QKeyEvent *event)
{
    const bool control = event->modifiers() == Qt::ControlModifier;
    const bool plain = !(event->modifiers() & ~Qt::KeypadModifier);
    const bool last = m_lines->row() == m_lines->rowCount() - 1;
    const bool up = event->key() == Qt::Key_Up;
    const bool down = event->key() == Qt::Key_Down;
    if (plain && isEnter(*event)) {
        goOn();
    } else if (plain && down && last) {
        if (m_lines->IsEmpty() || !isLineEmpty(m_lines->row()))
            begin();
    } else if (plain && up && last && m_begun && isLineEmpty(m_lines->row())) {
        finish();
    } else if (plain && event->key() == Qt::Key_Insert) {
        insertLine();
    } else if (control && event->key() == Qt::Key_D) {
        copyLines();
    } else if (control && (up || down)) {
        moveLines(up ? -1 : 1);
    } else if (control && event->key() == Qt::Key_Delete) {
        emit removeWanted();
    } else {
        return false;
    }
    return true;
}
