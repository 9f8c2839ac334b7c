// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QWidget>

/// Works a screen by the names of its controls, with key events such as a user's: what the program shows of itself
/// without anybody at the keyboard is what it does for people.
class ScreenDriver
{
public:
    /// Throws EProgramming for a null screen.
    explicit ScreenDriver(QWidget *screen);

    /// Types over what stands in the field, without leaving it.
    void type(const QString &field, const QString &text);
    /// Types, then Enter.
    void enter(const QString &field, const QString &text);
    void press(const QString &button);
    void key(Qt::Key key);
    QString text(const QString &field) const;
    QWidget *screen() const { return m_screen; }
    /// A picture of the screen as it stands. Throws EQen when the file cannot be written.
    void save(const QString &file);

private:
    QWidget *control(const QString &name) const;
    static void send(QWidget *to, Qt::Key key, const QString &text, Qt::KeyboardModifiers modifiers = {});

    QPointer<QWidget> m_screen;
};

/// Answers the boxes that come up while it lives with Yes or OK, and keeps their texts. Searches are left as by Esc.
class BoxAnswers : public QObject
{
public:
    BoxAnswers();
    const QStringList &texts() const { return m_texts; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QStringList m_texts;
};
