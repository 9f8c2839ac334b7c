// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/dataset.h"

#include <QStringList>

class TTIDatabase;

/// One table, one record at a time, found by its key: opening it and moving in it read single records, however
/// many there are. A record that is being edited must be posted or given up before the table moves: EProgramming.
class TTITable : public TDataSet
{
    Q_OBJECT

public:
    enum class State { Inactive, Browse, Insert, Edit };

    explicit TTITable(QObject *owner = nullptr);

    void SetDatabase(TTIDatabase *database) { m_database = database; }
    /// Physical name, from Funcoes::DBLocal.
    void setTableName(const QString &physical) { m_table = physical; }
    const QString &tableName() const { return m_table; }
    /// The columns of the key, "A;B": records are in their order.
    void setIndexFieldNames(const QString &fields);

    void Open(); ///< stands on the first record
    void Close();
    State state() const { return m_state; }
    bool Active() const { return m_state != State::Inactive; }

    void First() override;
    void Next() override;
    void Prior() override;
    void Last() override;
    bool Locate(const QString &fields, const QVariantList &values) override;
    /// Reads the current record anew. When it is gone, stands on its neighbour.
    void Refresh();

    void Append();
    void Edit();
    void Cancel();
    /// Writes the changed columns only. Throws EDatabaseError; the record is then still being edited.
    void Post();
    /// The save that the last Post belonged to was rolled back: its values are being edited again.
    void UndoPost();
    /// Deletes the current record and stands on its neighbour.
    void Delete();
    /// Only while inserting or editing, else EProgramming. An empty text is kept as null.
    void setValue(const QString &name, const QVariant &value);
    bool isEditing() const { return m_state == State::Insert || m_state == State::Edit; }

    int rowCount() const override { return m_record.isEmpty() ? 0 : 1; }
    QVariant cell(int row, int fieldIndex) const override;
    QVariant value(const QString &name) const override;

signals:
    void stateChanged();
    void fieldChanged(const QString &name);

private:
    enum class Direction { Forward, Backward };
    /// The first record beyond the key in that direction; without a key, from the end.
    bool read(Direction direction, const QVariantList &beyond);
    void standNowhere();
    void requireAtRest() const;
    bool readWhere(const QString &condition, const QString &order);
    QVariantList key() const;
    QString literal(int fieldIndex, const QVariant &value) const;
    QString equals(const QStringList &names, const QVariantList &values) const;
    QString beyondCondition(const QVariantList &key, QChar comparison) const;
    void insertRecord();
    void updateRecord();
    void setState(State state);

    TTIDatabase *m_database;
    QString m_table;
    QStringList m_key;
    QVector<QVariant> m_record; ///< as it stands in the table; empty: none
    QVector<QVariant> m_buffer; ///< as it is being edited
    State m_state = State::Inactive;
    QVector<QVariant> m_recordBeforePost;
    State m_stateBeforePost = State::Browse;
};
