// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/messageanswers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

void fail(const QString &message)
{
    QTest::qFail(qPrintable(message), __FILE__, __LINE__);
}

void closeWindow(QWidget *window)
{
    if (auto *dialog = qobject_cast<QDialog *>(window))
        dialog->reject();
    else
        window->close();
}

MessageAnswers::Shown whatStandsIn(const QWidget *window)
{
    const auto *box = qobject_cast<const QMessageBox *>(window);
    return {window->windowTitle(), box ? box->text() : QString(), box ? box->detailedText() : QString()};
}

} // namespace

MessageAnswers::MessageAnswers()
{
    qApp->installEventFilter(this);
}

MessageAnswers::~MessageAnswers()
{
    for (const Expected &expected : m_expected)
        fail(u"Did not come: \"%1\" %2"_s.arg(expected.title, expected.text));
}

MessageAnswers &MessageAnswers::expect(const QString &text, QMessageBox::StandardButton press, const QString &title)
{
    m_expected.append({title, text, [press](QWidget *window) {
                           auto *box = qobject_cast<QMessageBox *>(window);
                           QAbstractButton *button = box ? box->button(press) : nullptr;
                           if (button)
                               QTest::mouseClick(button, Qt::LeftButton);
                           else
                               fail(u"\"%1\" has no such button"_s.arg(window->windowTitle()));
                       }});
    return *this;
}

MessageAnswers &MessageAnswers::expectAndType(const QString &text, Qt::Key key, const QString &title)
{
    m_expected.append({title, text, [key](QWidget *window) {
                           QWidget *focus = window->focusWidget();
                           QTest::keyClick(focus ? focus : window, key);
                       }});
    return *this;
}

MessageAnswers &MessageAnswers::expectWindow(const std::function<void(QWidget *)> &use, const QString &title)
{
    m_expected.append({title, {}, use});
    return *this;
}

bool MessageAnswers::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        auto *window = static_cast<QWidget *>(watched);
        // When it stands in its own event loop.
        if (window->isWindow() && window->isModal())
            QTimer::singleShot(0, window, [this, alive = QPointer(this), window] {
                if (alive && window->isVisible())
                    answer(window);
            });
    }
    return QObject::eventFilter(watched, event);
}

void MessageAnswers::answer(QWidget *window)
{
    const Shown shown = whatStandsIn(window);
    m_shown.append(shown);
    if (m_expected.isEmpty()) {
        fail(u"Unexpected: \"%1\" %2 %3"_s.arg(shown.title, shown.text, shown.details));
        closeWindow(window);
        return;
    }
    const Expected expected = m_expected.takeFirst();
    compare(expected, shown);
    const QPointer<QWidget> alive(window);
    window->activateWindow();
    // Not qWaitForWindowActive(): for it a box is active when its parent is.
    if (!QTest::qWaitFor([&] { return !alive || QApplication::activeWindow() == window; }))
        fail(u"Does not come up: \"%1\""_s.arg(shown.title));
    if (!alive)
        return;
    expected.use(window);
    if (alive && alive->isVisible()) {
        fail(u"Stayed open: \"%1\" %2"_s.arg(shown.title, shown.text));
        closeWindow(window);
    }
}

void MessageAnswers::compare(const Expected &expected, const Shown &shown)
{
    const bool sameTitle = expected.title.isEmpty() || expected.title == shown.title;
    const bool sameText = expected.text.isEmpty() || expected.text == shown.text;
    if (!sameTitle || !sameText) {
        fail(u"Expected: \"%1\" %2\nShown: \"%3\" %4 %5"_s.arg(
            expected.title, expected.text, shown.title, shown.text, shown.details));
    }
}
