// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVector>

/// What a search looks through: columns of a table, or of a select.
struct SearchSource
{
    struct Column
    {
        QString name;
        QString title;
    };

    QString from; ///< physical table name, or a select in parentheses
    QVector<Column> columns; ///< the first one is the key, by which rows are listed first
    QString filter; ///< a condition that always holds, or empty
};
