// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/dataset.h"

#include <QSqlQuery>
#include <QStringList>

class TTIDatabase;
class QSqlRecord;

/// Fields for the columns of a result.
QVector<TField> fieldsOf(const QSqlRecord &record);

/// The lines of a statement, put together piece by piece.
class TSQLText
{
public:
    void clear() { m_lines.clear(); }
    TSQLText &add(const QString &line);
    QString text() const { return m_lines.join(u'\n'); }

private:
    QStringList m_lines;
};

/// A statement and, for a select, its rows; they are fetched as they are asked for.
///
/// Rows that were opened within a save are fetched whole, because its commit ends their cursor. Rows that are fetched
/// later are those of the opening, or, where the driver cannot keep them, all rows are those of now.
class TTIQuery : public TDataSet
{
    Q_OBJECT

public:
    explicit TTIQuery(QObject *owner = nullptr);

    void SetDatabase(TTIDatabase *database) { m_database = database; }
    TSQLText SQL;

    /// Titles and masks for columns of the select to come.
    void Describe(const QVector<TField> &columns) { setFields(columns); }
    /// Runs a select and stands on its first row. Throws EDatabaseError. Titles and masks that fields of the same
    /// names had before are kept.
    void Open();
    void Close();
    bool Active() const { return m_active; }
    /// For a statement that is run again and again: the engine checks it, and what is wrong with it is known before
    /// anything runs. Throws EDatabaseError. Each run is planned anew: a plan that Firebird keeps also keeps the rows
    /// of its own moment.
    void Prepare();
    void Unprepare() { m_prepared = false; }
    bool Prepared() const { return m_prepared; }
    /// Runs a change and gives the number of rows that it met. Throws EDatabaseError.
    int ExecSQL();
    void FetchAll();

    int rowCount() const override { return int(m_rows.size()); }
    QVariant cell(int row, int fieldIndex) const override { return m_rows[row][fieldIndex]; }
    bool canFetchMore() const override { return m_more; }
    void fetchMore() override { fetch(fetchSize); }

    static constexpr int fetchSize = 200;

private:
    using Rows = QVector<QVector<QVariant>>;

    Rows read(QSqlQuery &query, int columns, int atMost) const;
    void take(QSqlQuery query, bool more);
    void fetch(int atMost);
    void describe(QVector<TField> &found);
    void openWhole();

    TTIDatabase *m_database;
    QSqlQuery m_query;
    Rows m_rows;
    bool m_prepared = false;
    bool m_active = false;
    bool m_more = false;
    QString m_whole; ///< the statement when it was asked for its first rows alone
};
