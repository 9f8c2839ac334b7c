// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMetaType>
#include <QObject>
#include <QString>
#include <QVariant>
#include <QVector>

/// A field describes itself once: for grid, report and spreadsheet alike.
struct TField
{
    enum class Type { Text, Integer, Float, Date, Time, DateTime };

    TField(const QString &fieldName, Type fieldType, int textSize = 0);

    /// Title, mask and edit rights, in the order in which they are usually given.
    TField &titled(const QString &text);
    TField &shownAs(const QString &mask); ///< a number mask of Format::number, such as ",0.00"
    TField &editable();
    TField &hidden();
    /// A text that says yes by "S" and no by all else: grids show it as a check mark.
    TField &asTick();

    /// The value as people read it, in the Brazilian way; empty for null.
    QString text(const QVariant &value) const;
    bool isNumeric() const { return type == Type::Integer || type == Type::Float; }

    QString name;
    Type type;
    int size; ///< characters a text may have; 0 without limit
    QString title;
    QString mask;
    bool readOnly = true;
    bool visible = true;
    bool tick = false;
};

/// Rows with named fields and a cursor. Fields are found by their names in any case.
///
/// Row numbers count from 0; the cursor is -1 while there is no row, and stands on the last row once Eof is true.
class TDataSet : public QObject
{
    Q_OBJECT

public:
    explicit TDataSet(QObject *owner = nullptr);

    const QVector<TField> &fields() const { return m_fields; }
    /// Throws EProgramming when there is no such field.
    TField &field(const QString &name);
    int fieldIndex(const QString &name) const; ///< throws EProgramming
    bool hasField(const QString &name) const;

    virtual int rowCount() const = 0; ///< rows at hand; more may follow while canFetchMore()
    virtual QVariant cell(int row, int fieldIndex) const = 0;
    virtual bool canFetchMore() const { return false; }
    virtual void fetchMore() { }

    bool IsEmpty() const { return rowCount() == 0; }
    int row() const { return m_row; }
    bool Eof() const { return m_eof; }
    bool Bof() const { return m_row <= 0; }
    virtual void First();
    virtual void Next();
    virtual void Prior();
    virtual void Last(); ///< fetches all that is left
    virtual void setRow(int row);
    /// Puts the cursor on the first row whose fields ("A;B") hold the values; the cursor stays when there is none.
    virtual bool Locate(const QString &fields, const QVariantList &values);

    /// Fields of the current row; null when there is no row.
    virtual QVariant value(const QString &name) const;
    QString AsString(const QString &name) const;
    double AsFloat(const QString &name) const; ///< 0 for null
    int AsInteger(const QString &name) const; ///< 0 for null
    QDate AsDate(const QString &name) const;
    bool IsNull(const QString &name) const;

signals:
    void AfterScroll();
    void aboutToReset();
    void wasReset();
    void rowsAboutToBeInserted(int first, int last);
    void rowsInserted();
    void rowsAboutToBeRemoved(int first, int last);
    void rowsRemoved();
    void rowChanged(int row);

protected:
    void setFields(const QVector<TField> &fields);
    /// Moves the cursor without asking whether there is more to fetch; tells AfterScroll when it moved.
    void moveTo(int row, bool tell = true);
    void setEof(bool eof) { m_eof = eof; }

private:
    QVector<TField> m_fields;
    QHash<QString, int> m_index;
    int m_row = -1;
    bool m_eof = true;
};
