// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/controls/dbgrid.h"

#include <QPointer>

class TClientDataSet;

/// A grid in which a list is typed line by line, without the mouse.
///
/// Enter takes the cell and goes on to the next one that can be typed in, from the last of the list to a new line; so
/// does Down. Insert puts a line before the current one, Ctrl+D copies the lines marked below themselves, Ctrl+Up and
/// Ctrl+Down move them. Keys that the screen handles reach it also from a cell that is being typed in.
class LineGrid : public TDBGrid
{
    Q_OBJECT

public:
    explicit LineGrid(QWidget *parent = nullptr);

    /// The list stays its owner's; it has neither index nor filter. `numberField` counts the lines from 1 on; empty:
    /// they are not numbered.
    void setLines(TClientDataSet *lines, const QString &numberField = {});
    /// Name of the field in the current cell; empty without a line.
    QString currentField() const;
    /// Puts the text into the current line, as if it were typed.
    void typeInto(const QString &field, const QString &text);

    void insertLine();
    void copyLines();
    void moveLines(int step); ///< -1 up, 1 down
    void removeLines();
    /// How many lines are marked; 0 without a line.
    int markedLines() const { return marked().count; }
    /// Ends what is being typed. A line that was begun at the end and in which nothing was typed goes again; true when
    /// the user was in it.
    bool finish();

signals:
    void linesChanged(); ///< their number or order
    void removeWanted(); ///< Ctrl+Delete

protected:
    bool edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    struct Range
    {
        int first = 0;
        int count = 0;
    };
    Range marked() const;
    void mark(const Range &range);
    void takeCell();
    bool useKey(QKeyEvent *event);
    void goOn();
    void begin();
    bool isLineEmpty(int row) const;
    void putLine(int row, const QVector<QVariant> &values);
    QVector<QVariant> line(int row) const;
    void tellChange();

    TClientDataSet *m_lines = nullptr;
    QString m_numberField;
    QPointer<QWidget> m_editor;
    bool m_begun = false; ///< the last line was begun by a key and may still be empty
};
