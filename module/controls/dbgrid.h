// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTableView>

#include <functional>

class DataSetModel;
class TDataSet;

/// A grid over a data set: its current row and the data set's cursor are one. The space bar ticks the row, and so does
/// a click on its check mark.
class TDBGrid : public QTableView
{
    Q_OBJECT
    /// "FIELD=Title;FIELD=Title"; empty: all visible fields.
    Q_PROPERTY(QString Colunas READ columns WRITE setColunas)

public:
    explicit TDBGrid(QWidget *parent = nullptr);

    void setDataSet(TDataSet *dataSet);
    TDataSet *dataSet() const;
    QString columns() const { return m_columns; }
    void setColunas(const QString &columns);
    /// Name of the field in the column whose title was clicked last.
    QString titleField() const { return m_titleField; }
    /// The background of a row, by its number; an invalid colour leaves it as it is.
    void setRowColour(const std::function<QColor(int row)> &colour);
    /// The column that shows a field, -1 for none.
    int columnOf(const QString &field) const;

    void doItemsLayout() override;

signals:
    void rowChosen(); ///< double click or Enter
    void titleClicked();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;

private:
    void followDataSet();
    void fitColumns();
    int fittingWidth(int column) const;
    bool tickRow();

    DataSetModel *m_model;
    QString m_columns;
    QString m_titleField;
    bool m_following = false;
    bool m_fitting = false;
    bool m_sizedByUser = false;
    bool m_filled = false; ///< the columns were fitted to the rows that are shown
    int m_fittedColumns = 0;
    bool m_scrollPending = false; ///< the current row has to be brought into sight
};
