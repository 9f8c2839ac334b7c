// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/answers.h"

#include "bench/measure.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

Answers::Answers(Clockwork &clock)
    : m_clock(clock)
{
    QCoreApplication::instance()->installEventFilter(this);
}

Answers::~Answers() = default;

bool Answers::eventFilter(QObject *watched, QEvent *event)
{
    // The first event of a window; it is not yet known to be a message box.
    if (event->type() == QEvent::Create && m_clock.isRunning()) {
        const auto *widget = static_cast<QWidget *>(watched);
        if (watched->isWidgetType() && widget->windowType() == Qt::Dialog) {
            m_paused = true;
            m_clock.pause();
        }
    } else if (event->type() == QEvent::Show) {
        answer(watched);
    }
    return false;
}

void Answers::answer(QObject *window)
{
    auto *box = qobject_cast<QMessageBox *>(window);
    if (!box)
        return;
    // Until the last part of it is gone: a box tells its end before it begins to clear up.
    for (QObject *part : box->findChildren<QObject *>()) {
        ++m_parts;
        connect(part, &QObject::destroyed, this, &Answers::partGone);
    }
    // Once it waits for an answer.
    const auto press = [this, box] {
        ++m_given;
        emit asked();
        QAbstractButton *yes = box->button(QMessageBox::Yes);
        (yes ? yes : box->button(QMessageBox::Ok))->click();
    };
    QMetaObject::invokeMethod(box, press, Qt::QueuedConnection);
}

void Answers::partGone()
{
    if (--m_parts > 0 || !m_paused)
        return;
    m_paused = false;
    m_clock.resume();
}
