// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/controls/currencyedit.h"

#include "module/host_services/format.h"

#include <QEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QValidator>

#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostIntegerDigits = 12; // what the widest figure column of the tables holds

QString editMask(int decimals)
{
    return u"0."_s + QString(decimals, u'#');
}

/// Lets through what can become a number, and brings a pasted "1.234,50" or "12,5 " into the plain form.
class NumberValidator : public QValidator
{
public:
    NumberValidator(int decimals, QObject *parent)
        : QValidator(parent)
        , m_decimals(decimals)
        , m_pattern(u"^-?[0-9]{0,%1}%2$"_s.arg(mostIntegerDigits)
                        .arg(decimals > 0 ? u"(,[0-9]{0,%1})?"_s.arg(decimals) : QString()))
    {
    }

    State validate(QString &text, int &cursor) const override
    {
        if (m_pattern.match(text).hasMatch())
            return Acceptable;
        if (!text.contains(u'.') && text == text.trimmed())
            return Invalid;
        const std::optional<double> pasted = Format::parseNumber(text);
        if (!pasted)
            return Invalid;
        const QString plain = Format::number(*pasted, editMask(m_decimals));
        if (!m_pattern.match(plain).hasMatch())
            return Invalid;
        text = plain;
        cursor = int(plain.size());
        return Acceptable;
    }

private:
    int m_decimals;
    QRegularExpression m_pattern;
};

bool isPassing(const QFocusEvent *event)
{
    return event->reason() == Qt::PopupFocusReason;
}

} // namespace

TCurrencyEdit::TCurrencyEdit(QWidget *parent)
    : QLineEdit(parent)
    , m_displayFormat(u",0.00"_s)
{
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    connect(this, &QLineEdit::textChanged, this, &TCurrencyEdit::takeText);
    connect(this, &QLineEdit::textEdited, this, [this] { // comes before textChanged
        takeText();
        emit valueEdited(m_value);
    });
    showValue();
}

void TCurrencyEdit::setDisplayFormat(const QString &mask)
{
    m_displayFormat = mask;
    showValue();
}

void TCurrencyEdit::setEditDecimals(int decimals)
{
    m_editDecimals = qMax(0, decimals);
    showValue();
}

void TCurrencyEdit::setValue(double value)
{
    if (!std::isfinite(value))
        value = 0;
    if (value == m_value)
        return;
    m_value = value;
    showValue();
    emit valueChanged(m_value);
}

/// The validator serves the plain form only; the form at rest has grouping points and needs none.
void TCurrencyEdit::showValue()
{
    const bool typing = hasFocus() && !isReadOnly();
    m_shown = Format::number(m_value, typing ? editMask(m_editDecimals) : m_displayFormat);
    m_shownValue = m_value;
    delete validator();
    if (text() != m_shown)
        setText(m_shown);
    if (typing) {
        setValidator(new NumberValidator(m_editDecimals, this));
        selectAll();
    }
}

/// Text that shows the value in fewer decimals stands for the whole value, until it is changed.
void TCurrencyEdit::takeText()
{
    const double value = text() == m_shown ? m_shownValue : Format::parseNumber(text()).value_or(0);
    if (value == m_value)
        return;
    m_value = value;
    emit valueChanged(m_value);
}

void TCurrencyEdit::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    if (isPassing(event))
        return;
    showValue();
    m_selectOnPress = event->reason() == Qt::MouseFocusReason;
}

void TCurrencyEdit::focusOutEvent(QFocusEvent *event)
{
    if (!isPassing(event))
        showValue();
    QLineEdit::focusOutEvent(event);
}

void TCurrencyEdit::mousePressEvent(QMouseEvent *event)
{
    QLineEdit::mousePressEvent(event);
    if (std::exchange(m_selectOnPress, false))
        selectAll();
}

void TCurrencyEdit::keyPressEvent(QKeyEvent *event)
{
    if (event->text() != u"."_s) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    QKeyEvent comma(QEvent::KeyPress, Qt::Key_Comma, event->modifiers(), u","_s, event->isAutoRepeat());
    QLineEdit::keyPressEvent(&comma);
}

void TCurrencyEdit::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::ReadOnlyChange)
        showValue();
}
