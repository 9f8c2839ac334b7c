// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "production/weighing.h"

#include "module/controls/currencyedit.h"
#include "module/messages.h"

#include <QLabel>
#include <QPointer>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace {

const QString fromScale = u"Peso lido da balança."_s;

} // namespace

Weighing::Weighing(QWidget *screen, TCurrencyEdit *weight, QLabel *hint)
    : m_screen(screen)
    , m_weight(weight)
    , m_hint(hint)
{
    QObject::connect(m_weight, &TCurrencyEdit::valueEdited, m_hint, [this] {
        if (m_hint->text() == fromScale)
            showHint(u"Peso digitado."_s);
    });
}

void Weighing::read(const ScaleReader::Reading &reading)
{
    showHint(u"Lendo a balança…"_s);
    const QPointer<QWidget> alive(m_screen);
    const ScaleReader::Weight weight = m_scale.read(reading);
    if (!alive || weight.refused)
        return;
    m_weight->setValue(weight.kg);
    showHint(weight.hint.isEmpty() ? fromScale : weight.hint, !weight.hint.isEmpty());
    if (weight.portFailed && !m_portFailureShown) {
        m_portFailureShown = true; // afterwards the hint beside the weight says it
        Messages::inform(m_screen, weight.hint + u"\nO peso pode ser digitado."_s);
    }
}

void Weighing::setUp()
{
    m_scale.setUp(m_screen);
    m_portFailureShown = false;
}

void Weighing::showHint(const QString &text, bool warning)
{
    m_hint->setText(text);
    if (m_hint->property("warning") == QVariant(warning))
        return;
    m_hint->setProperty("warning", warning);
    m_hint->style()->polish(m_hint);
}
