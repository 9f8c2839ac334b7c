// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>
#include <QDialog>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

/// Answers whatever box or window comes up while it lives, with Yes or OK or by closing it, and keeps what was said.
/// For tests that ask only what the boxes say, not which of them come.
class AnyAnswers : public QObject
{
public:
    struct Said
    {
        QString text; ///< empty for a window that is no box, a search say
        QString details;
    };

    AnyAnswers() { qApp->installEventFilter(this); }
    /// What was said since it was asked last.
    QList<Said> take() { return std::exchange(m_said, {}); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show && watched->isWidgetType()) {
            auto *window = static_cast<QWidget *>(watched);
            // When it stands in its own event loop.
            if (window->isWindow() && window->isModal() && qobject_cast<QDialog *>(window))
                QTimer::singleShot(0, window, [this, alive = QPointer(this), window] {
                    if (alive && window->isVisible())
                        answer(static_cast<QDialog *>(window));
                });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void answer(QDialog *window)
    {
        auto *box = qobject_cast<QMessageBox *>(window);
        m_said.append({box ? box->text() : QString(), box ? box->detailedText() : QString()});
        QAbstractButton *button = box ? box->button(QMessageBox::Yes) : nullptr;
        if (box && !button)
            button = box->button(QMessageBox::Ok);
        button ? button->click() : window->reject();
    }

    QList<Said> m_said;
};
