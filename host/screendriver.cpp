// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/screendriver.h"

#include "module/host_services/errors.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPixmap>
#include <QTimer>

using namespace Qt::StringLiterals;

ScreenDriver::ScreenDriver(QWidget *screen)
    : m_screen(screen)
{
    if (!screen)
        throw EProgramming(u"A tela não foi aberta."_s);
    screen->show();
    screen->window()->activateWindow();
    QApplication::processEvents();
}

QWidget *ScreenDriver::control(const QString &name) const
{
    auto *found = m_screen ? m_screen->findChild<QWidget *>(name) : nullptr;
    if (!found)
        throw EProgramming(u"A tela não tem o campo %1."_s.arg(name));
    return found;
}

void ScreenDriver::send(QWidget *to, Qt::Key key, const QString &text, Qt::KeyboardModifiers modifiers)
{
    const QPointer<QWidget> alive(to);
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(to, &press);
    if (!alive)
        return;
    QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
    QApplication::sendEvent(to, &release);
}

void ScreenDriver::type(const QString &field, const QString &text)
{
    m_screen->window()->activateWindow();
    QApplication::processEvents();
    QWidget *to = control(field);
    if (!to->hasFocus())
        to->setFocus(Qt::TabFocusReason);
    send(to, Qt::Key_A, {}, Qt::ControlModifier);
    send(to, Qt::Key_Delete, {});
    for (const QChar character : text)
        send(to, Qt::Key_unknown, character);
}

void ScreenDriver::enter(const QString &field, const QString &text)
{
    type(field, text);
    send(control(field), Qt::Key_Return, u"\r"_s);
    QApplication::processEvents();
}

void ScreenDriver::press(const QString &button)
{
    auto *found = qobject_cast<QAbstractButton *>(control(button));
    if (!found || !found->isVisible() || !found->isEnabled())
        throw EProgramming(u"O botão %1 não está disponível."_s.arg(button));
    found->click();
    QApplication::processEvents();
}

void ScreenDriver::key(Qt::Key key)
{
    QWidget *focus = m_screen->focusWidget();
    send(focus ? focus : m_screen.data(), key, {});
    QApplication::processEvents();
}

QString ScreenDriver::text(const QString &field) const
{
    const auto *line = qobject_cast<const QLineEdit *>(control(field));
    return line ? line->text() : QString();
}

void ScreenDriver::save(const QString &file)
{
    QApplication::processEvents();
    if (!m_screen->grab().save(file))
        throw EQen(u"A imagem \"%1\" não pôde ser gravada."_s.arg(file));
}

BoxAnswers::BoxAnswers()
{
    qApp->installEventFilter(this);
}

bool BoxAnswers::eventFilter(QObject *watched, QEvent *event)
{
    auto *dialog = event->type() == QEvent::Show ? qobject_cast<QDialog *>(watched) : nullptr;
    if (auto *box = qobject_cast<QMessageBox *>(dialog)) {
        m_texts.append(box->text());
        // When it stands in its own event loop.
        QTimer::singleShot(0, box, [box] {
            QAbstractButton *button = box->button(QMessageBox::Yes);
            button = button ? button : box->button(QMessageBox::Ok);
            button ? button->click() : box->accept();
        });
    } else if (dialog && dialog->isModal()) {
        QTimer::singleShot(0, dialog, &QDialog::reject);
    }
    return QObject::eventFilter(watched, event);
}
