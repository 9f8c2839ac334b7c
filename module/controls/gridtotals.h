// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QStringList>
#include <QWidget>

class TDBGrid;

/// The line beneath a grid: the sums of some of its columns over all rows shown, each beneath its column, and the
/// number of records. While a query has more rows to fetch there are no sums.
class GridTotals : public QWidget
{
    Q_OBJECT

public:
    explicit GridTotals(TDBGrid *grid);

    /// "FIELD;FIELD"; fields that the grid does not show count for nothing.
    void setFields(const QString &fields);
    /// The sum as it stands beneath the field's column; empty where there is none.
    QString text(const QString &field) const;
    int widthOf(const QString &field) const; ///< of that text, in pixels
    /// "12 registros"
    QString count() const;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void stale();
    void sumUp() const;
    QFont sumFont() const;
    QRect countPlace() const;
    QRect columnPlace(int column) const;

    TDBGrid *m_grid;
    QStringList m_fields;
    mutable QHash<QString, QString> m_sums;
    mutable bool m_stale = true;
};
