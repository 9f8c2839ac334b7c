// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QStringList>

class TDBGrid;

/// Widths and order of a grid's columns: fitted to the rows until the user resizes or moves one. What he chose is kept
/// in the station's settings, by the class of the screen and the grid's name.
class GridColumns : public QObject
{
    Q_OBJECT

public:
    explicit GridColumns(TDBGrid *grid);

    /// Fits the widths to the rows at hand; nothing once the user has chosen.
    void fit();
    /// As the screen has them, now and when it is opened again.
    void restore();
    /// Keeps what the user changed since the last time.
    void save();

private:
    /// The grid may show other columns than before: they stand as the user left them, else in their own order and
    /// fitted.
    void columnsFound();
    QString key() const;
    QStringList shownFields() const;
    void inOwnOrder();
    bool applyKept();
    int fittingWidth(int column) const;

    TDBGrid *m_grid;
    QStringList m_fields; ///< of the columns that were found last
    QStringList m_new; ///< of those, what the user's choice knows nothing of
    bool m_arranging = false; ///< by the program
    bool m_chosen = false; ///< by the user
    bool m_changed = false; ///< since it was kept
};
