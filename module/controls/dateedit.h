// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QLineEdit>

/// A field for a date that may be empty, typed in the short forms of Format::parseDate() and written out on leaving or
/// Enter. Up and Down, and + and - before anything is typed, move by a day; the icon and Alt+Down open a calendar. What
/// cannot be read stays in the field, marked by the property `invalid`, and the date is then invalid.
class TDateEdit : public QLineEdit
{
    Q_OBJECT
    /// Invalid when the field is empty or unreadable.
    Q_PROPERTY(QDate Date READ date WRITE setDate NOTIFY dateChanged USER true)
    /// For style sheets: the field was left with a text that is no date.
    Q_PROPERTY(bool invalid READ isMarked STORED false)

public:
    explicit TDateEdit(QWidget *parent = nullptr);

    /// The date of the text as it stands, also while it is being typed.
    QDate date() const;
    /// An invalid date empties the field.
    void setDate(QDate date);

    /// True when the field holds a text that is no date.
    bool hasInvalidText() const;
    bool isMarked() const { return m_marked; }

public slots:
    /// Opens the calendar below the field; nothing when it is read-only.
    void openCalendar();

signals:
    /// The date became another one: on leaving, Enter, a step, a choice in the calendar, or by the program.
    void dateChanged(QDate date);

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    bool isTyped() const { return text() != m_shown; }
    void commit();
    void put(QDate date, const QString &text);
    void step(int days);
    void choose(QDate date);

    QAction *m_calendarAction;
    QDate m_date; ///< as last shown
    QString m_shown; ///< the text that stands for m_date; unreadable text when marked
    bool m_marked = false;
    bool m_selectOnPress = false; ///< the click that brings the user in selects all
};
