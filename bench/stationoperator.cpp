// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/stationoperator.h"

#include "module/host_services/funcoes.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QLineEdit>

using namespace Qt::StringLiterals;

StationOperator::StationOperator(BenchStation &station)
    : m_database(station.database())
    , m_form(station.open(u"TfmMalhaOFBaixaBarra"_s))
    , m_answers(m_clock)
{
    field<QLineEdit>(u"EdtTurno"_s)->setText(u"1"_s);
    m_worker = m_database.value(Funcoes::DBLocal_SQL(u"SELECT MIN(CODIGO) FROM {PESSOAL}"_s)).toString();
    QObject::connect(
        &station.host(), &BenchHost::settingsAsked, &m_answers, [this] { m_untilScale = m_clock.milliseconds(); });
    QObject::connect(&m_answers, &Answers::asked, &m_answers, [this] { m_askedAfter = int(m_statements.size()); });
    m_database.setObserver([this](const QString &statement) { note(statement); });
}

StationOperator::~StationOperator()
{
    m_database.setObserver({});
    BenchStation::close(m_form);
}

void StationOperator::note(const QString &statement)
{
    m_statements.append(statement);
    if (!statement.startsWith(u"INSERT INTO QEN_LOG"_s))
        return;
    m_untilLogged = m_clock.milliseconds();
    m_loggedAfter = int(m_statements.size());
}

double StationOperator::leaveOrder(const QString &order)
{
    activate(); // a box may have taken the keys away
    auto *number = field<QLineEdit>(u"edtOF"_s);
    number->clear();
    field<QLineEdit>(u"EdtCodOper"_s)->setFocus(); // so that the field is left just once
    number->setText(order);
    m_statements.clear();
    m_clock.start();
    QMetaObject::invokeMethod(m_form, "edtOFExit", Qt::DirectConnection);
    m_clock.pause();
    if (m_statements.isEmpty())
        throw EQen(u"The order field was left and nothing was read."_s);
    return m_untilScale;
}

double StationOperator::confirm(double kg)
{
    activate();
    field<QLineEdit>(u"EdtCodOper"_s)->setText(m_worker);
    field<QWidget>(u"EdtPesoRolo"_s)->setProperty("Value", kg);
    auto *button = field<QAbstractButton>(u"btnBaixa"_s);
    button->setFocus(Qt::TabFocusReason);
    m_statements.clear();
    m_loggedAfter = 0;
    m_clock.start();
    button->click();
    m_clock.pause();
    if (m_loggedAfter == 0)
        throw EQen(u"The roll was confirmed and nothing was logged."_s, m_statements.join(u'\n'));
    return m_clock.milliseconds();
}

void StationOperator::activate()
{
    m_form->activateWindow();
    while (!m_form->isActiveWindow())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

template <class Kind> Kind *StationOperator::field(const QString &name) const
{
    auto *found = m_form->findChild<Kind *>(name);
    if (!found)
        throw EQen(u"The screen has no %1."_s.arg(name));
    return found;
}
