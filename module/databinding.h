// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QVector>

class QWidget;
class TTITable;

/// Ties the controls below a widget to the fields of a table: a control whose property "DataField" names a field shows
/// it, and what is typed while the record is being edited goes into it.
class DataBinding : public QObject
{
    Q_OBJECT

public:
    DataBinding(TTITable *table, QWidget *root);

    /// The control of a field, null when none is tied to it.
    QWidget *control(const QString &field) const;

private:
    void tie(QWidget *control, const QString &field);
    void showAll();
    void show(QWidget *control, const QString &field);
    void store(QWidget *control, const QString &field);

    struct Tied
    {
        QWidget *control;
        QString field;
    };
    TTITable *m_table;
    QVector<Tied> m_tied;
    bool m_showing = false;
};
