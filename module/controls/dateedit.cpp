// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/controls/dateedit.h"

#include "module/host_services/clock.h"
#include "module/host_services/format.h"
#include "module/host_services/icons.h"

#include <QAction>
#include <QCalendarWidget>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLocale>
#include <QRegularExpressionValidator>
#include <QScreen>
#include <QStyle>
#include <QToolButton>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

bool isPassing(const QFocusEvent *event)
{
    return event->reason() == Qt::PopupFocusReason;
}

/// Below the field, above it where the screen ends.
QPoint popupPosition(const QWidget *field, const QSize &size)
{
    const QRect room = field->screen()->availableGeometry();
    QPoint position = field->mapToGlobal(field->rect().bottomLeft() + QPoint(0, 1));
    if (position.y() + size.height() > room.bottom())
        position.setY(field->mapToGlobal(QPoint(0, 0)).y() - size.height() - 1);
    position.setX(qBound(room.left(), position.x(), qMax(room.left(), room.right() - size.width())));
    return position;
}

} // namespace

TDateEdit::TDateEdit(QWidget *parent)
    : QLineEdit(parent)
    , m_calendarAction(addAction(Icons::get(u"calendar"), QLineEdit::TrailingPosition))
{
    m_calendarAction->setToolTip(u"Abrir o calendário (Alt+Seta para baixo)"_s);
    connect(m_calendarAction, &QAction::triggered, this, &TDateEdit::openCalendar);
    setMaxLength(12);
    setValidator(new QRegularExpressionValidator(QRegularExpression(u"[0-9/. -]*"_s), this));
    connect(this, &QLineEdit::textChanged, this, [this] {
        if (!hasFocus() && isTyped())
            commit();
    });
}

QDate TDateEdit::date() const
{
    return isTyped() ? Format::parseDate(text(), Clock::today()).value_or(QDate()) : m_date;
}

void TDateEdit::setDate(QDate date)
{
    put(date, Format::date(date));
}

bool TDateEdit::hasInvalidText() const
{
    return !text().trimmed().isEmpty() && !date().isValid();
}

void TDateEdit::openCalendar()
{
    if (isReadOnly() || !isEnabled())
        return;
    commit();
    auto *calendar = new QCalendarWidget(this);
    calendar->setWindowFlag(Qt::Popup);
    calendar->setAttribute(Qt::WA_DeleteOnClose);
    calendar->setLocale(QLocale(QLocale::Portuguese, QLocale::Brazil));
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar->findChild<QToolButton *>(u"qt_calendar_prevmonth"_s)->setIcon(Icons::get(u"previous"));
    calendar->findChild<QToolButton *>(u"qt_calendar_nextmonth"_s)->setIcon(Icons::get(u"next"));
    calendar->setSelectedDate(m_date.isValid() ? m_date : Clock::today());
    const auto take = [this, calendar](QDate date) {
        calendar->close();
        choose(date);
    };
    connect(calendar, &QCalendarWidget::clicked, this, take);
    connect(calendar, &QCalendarWidget::activated, this, take);
    calendar->adjustSize();
    calendar->move(popupPosition(this, calendar->size()));
    calendar->show();
    calendar->setFocus(Qt::PopupFocusReason);
}

/// Takes the text as it stands.
void TDateEdit::commit()
{
    if (!isTyped())
        return;
    const QDate read = date();
    put(read, hasInvalidText() ? text() : Format::date(read));
}

void TDateEdit::put(QDate date, const QString &text)
{
    const bool changed = date != m_date;
    m_date = date;
    m_shown = text;
    if (QLineEdit::text() != text)
        setText(text);
    if (const bool marked = hasInvalidText(); marked != m_marked) {
        m_marked = marked;
        style()->unpolish(this);
        style()->polish(this);
    }
    if (changed)
        emit dateChanged(m_date);
}

void TDateEdit::step(int days)
{
    commit();
    choose(m_date.isValid() ? m_date.addDays(days) : Clock::today());
}

void TDateEdit::choose(QDate date)
{
    setDate(date);
    setFocus();
    selectAll();
}

void TDateEdit::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    if (isPassing(event))
        return;
    selectAll();
    m_selectOnPress = event->reason() == Qt::MouseFocusReason;
}

void TDateEdit::focusOutEvent(QFocusEvent *event)
{
    if (!isPassing(event))
        commit();
    QLineEdit::focusOutEvent(event);
}

void TDateEdit::mousePressEvent(QMouseEvent *event)
{
    QLineEdit::mousePressEvent(event);
    if (std::exchange(m_selectOnPress, false))
        selectAll();
}

void TDateEdit::keyPressEvent(QKeyEvent *event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool fresh = !isTyped(); // afterwards "-" stands between day and month
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        commit();
    if (isReadOnly())
        QLineEdit::keyPressEvent(event);
    else if (event->key() == Qt::Key_Down && modifiers == Qt::AltModifier)
        openCalendar();
    else if ((event->key() == Qt::Key_Up && modifiers == Qt::NoModifier) || (fresh && event->text() == u"+"_s))
        step(1);
    else if ((event->key() == Qt::Key_Down && modifiers == Qt::NoModifier) || (fresh && event->text() == u"-"_s))
        step(-1);
    else
        QLineEdit::keyPressEvent(event);
}

void TDateEdit::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    if (event->type() != QEvent::ReadOnlyChange)
        return;
    m_calendarAction->setVisible(!isReadOnly());
    // Where nobody types there is nothing to check, and a check takes longer than the text.
    setValidator(isReadOnly() ? nullptr : findChild<QRegularExpressionValidator *>());
}
