// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTableView>

#include <functional>

class DataSetModel;
class GridColumns;
class GridTotals;
class TDataSet;

/// A grid over a data set: its current row and the data set's cursor are one. The space bar ticks the row, and so does
/// a click on its check mark.
///
/// A click on a title sorts, unless the screen has a TitleClick of its own for the grid. Columns can be resized and
/// moved, which the station remembers. Several rows can be selected for copying; once the grid is left only the
/// current one is, because that is what screens work on.
class TDBGrid : public QTableView
{
    Q_OBJECT
    /// "FIELD=Title;FIELD=Title"; empty: all visible fields.
    Q_PROPERTY(QString Colunas READ columns WRITE setColunas)
    /// "FIELD;FIELD": the fields that a line beneath the grid sums up; empty: no such line.
    Q_PROPERTY(QString Totais READ totals WRITE setTotais)

public:
    explicit TDBGrid(QWidget *parent = nullptr);

    void setDataSet(TDataSet *dataSet);
    TDataSet *dataSet() const;
    DataSetModel *rows() const { return m_model; }
    QString columns() const { return m_columns; }
    void setColunas(const QString &columns);
    QString totals() const { return m_totals; }
    void setTotais(const QString &fields);
    /// Name of the field in the column whose title was clicked last.
    QString titleField() const { return m_titleField; }
    /// What a click on the title of a column does.
    void chooseTitle(int column);
    /// Sorts by the column that shows the field, the other way round when it is sorted by it already. The data set
    /// keeps its own order; what it has not fetched yet is fetched first.
    void sortBy(const QString &field);
    /// Puts the columns back to the order and widths that the screen gives them.
    void restoreColumns();
    /// The background of a row, by its number in the data set; an invalid colour leaves it as it is.
    void setRowColour(const std::function<QColor(int row)> &colour);
    /// The column that shows a field, -1 for none.
    int columnOf(const QString &field) const;
    /// The cell of a field in a row of the data set, wherever it is shown; an invalid index for none.
    QModelIndex cellOf(int dataSetRow, const QString &field) const;

    void doItemsLayout() override;

signals:
    void rowChosen(); ///< double click or Enter
    void titleClicked();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void updateGeometries() override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;

private:
    void followDataSet();
    void showSorting();
    void makeRoomForTotals();
    bool tickRow();

    DataSetModel *m_model;
    GridColumns *m_gridColumns;
    GridTotals *m_totalsLine = nullptr;
    QString m_columns;
    QString m_totals;
    QString m_titleField;
    bool m_following = false;
    bool m_filled = false; ///< the columns were fitted to the rows that are shown
    bool m_arranging = false; ///< viewport and totals line are being given their places
    bool m_scrollPending = false; ///< the current row has to be brought into sight
};
