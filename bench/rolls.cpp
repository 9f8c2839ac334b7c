// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/sections.h"

#include "bench/answers.h"
#include "bench/bareclient.h"
#include "bench/filling.h"
#include "bench/station.h"
#include "module/host_services/funcoes.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace {

const QString logged = QStringLiteral("INSERT INTO QEN_LOG");

/// The operator at the barcode screen, and what the screen said to the database meanwhile.
class Operator
{
public:
    explicit Operator(BenchStation &station)
        : m_database(station.database())
        , m_form(station.open(u"TfmMalhaOFBaixaBarra"_s))
        , m_answers(m_clock)
    {
        QObject::connect(
            &station.host(), &BenchHost::settingsAsked, &m_answers, [this] { m_untilScale = m_clock.milliseconds(); });
        field<QLineEdit>(u"EdtTurno"_s)->setText(u"1"_s);
        QObject::connect(&m_answers, &Answers::asked, &m_answers, [this] { m_askedAfter = int(m_statements.size()); });
        m_worker = m_database.value(Funcoes::DBLocal_SQL(u"SELECT MIN(CODIGO) FROM {PESSOAL}"_s)).toString();
        m_database.setObserver([this](const QString &statement) {
            m_statements.append(statement);
            if (statement.startsWith(logged)) {
                m_untilLogged = m_clock.milliseconds();
                m_loggedAfter = int(m_statements.size());
            }
        });
    }

    ~Operator()
    {
        m_database.setObserver({});
        BenchStation::close(m_form);
    }
    Q_DISABLE_COPY_MOVE(Operator)

    /// Scans an order's number; the field's exit is timed up to where the scale is about to be read: order and rolls
    /// are shown by then, and all that follows is the scale's.
    double leaveOrder(const QString &order)
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

    /// Confirms a roll of the order that is shown.
    double confirm(double kg)
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

    double untilLogged() const { return m_untilLogged; }
    /// What the last of the two sent.
    const QStringList &statements() const { return m_statements; }
    /// How many of them came before the question, and up to the line of the log.
    int askedAfter() const { return m_askedAfter; }
    int loggedAfter() const { return m_loggedAfter; }

private:
    void activate()
    {
        m_form->activateWindow();
        while (!m_form->isActiveWindow())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    template <class Kind> Kind *field(const QString &name) const
    {
        auto *found = m_form->findChild<Kind *>(name);
        if (!found)
            throw EQen(u"The screen has no %1."_s.arg(name));
        return found;
    }

    TTIDatabase &m_database;
    QWidget *m_form;
    Clockwork m_clock;
    Answers m_answers;
    QString m_worker;
    QStringList m_statements;
    int m_askedAfter = 0;
    int m_loggedAfter = 0;
    double m_untilLogged = 0;
    double m_untilScale = 0;
};

/// What the program sent for a roll of an order.
struct Sent
{
    QString order;
    QStringList leaving;
    QStringList untilAsked; ///< until the question whether to write the roll off
    QStringList untilLogged;
    QStringList afterwards;
};

/// How long one roll took, step by step, in milliseconds.
struct RollTimes
{
    double left;
    double logged;
    double ready;
};

RollTimes byProgram(Operator &person, const QString &order, Sent &sent)
{
    sent.order = order;
    RollTimes times{};
    times.left = person.leaveOrder(order);
    sent.leaving = person.statements();
    times.ready = person.confirm(Filling::rollKg);
    times.logged = person.untilLogged();
    const QStringList all = person.statements();
    sent.untilAsked = all.first(person.askedAfter());
    sent.untilLogged = all.sliced(person.askedAfter(), person.loggedAfter() - person.askedAfter());
    sent.afterwards = all.sliced(person.loggedAfter());
    return times;
}

/// The same for an order that differs by nothing but its number. The clock stands where the program's stood.
RollTimes byBareClient(BareClient &client, Sent sent, const QString &order)
{
    for (QStringList *statements : {&sent.leaving, &sent.untilAsked, &sent.untilLogged, &sent.afterwards})
        statements->replaceInStrings(sent.order, order);
    RollTimes times{};
    Clockwork clock;
    clock.start();
    client.send(sent.leaving);
    clock.pause();
    times.left = clock.milliseconds();
    clock.start();
    client.send(sent.untilAsked);
    clock.pause();
    clock.resume();
    client.send(sent.untilLogged);
    times.logged = clock.milliseconds();
    client.send(sent.afterwards);
    times.ready = clock.milliseconds();
    return times;
}

} // namespace

QVector<Comparison> measureRolls(const Bench &bench)
{
    const QString engine = bench.database.engineName();
    Comparison leaving{u"order field left, until its rolls are shown"_s, engine, 1.5, {}, {}};
    Comparison confirming{u"roll confirmed, until logged"_s, engine, 1.3, {}, {}};
    Comparison next{u"roll confirmed, until the next can be scanned"_s, engine, 1.5, {}, {}};
    bench.station.enter(BenchStation::secondCompany);
    Operator person(bench.station);
    BareClient bare(bench.database.settings());
    Sent sent;
    for (int index = 0; index < bench.effort.warmUps + bench.effort.runs; ++index) {
        // In turns, because whoever comes second finds pages that the first has changed.
        RollTimes floor{};
        const bool bareFirst = index % 2 == 1;
        if (bareFirst)
            floor = byBareClient(bare, sent, Filling::floorOrder(index));
        const RollTimes program = byProgram(person, Filling::programOrder(index), sent);
        if (!bareFirst)
            floor = byBareClient(bare, sent, Filling::floorOrder(index));
        if (index < bench.effort.warmUps)
            continue;
        leaving.program.add(program.left);
        leaving.floor.add(floor.left);
        confirming.program.add(program.logged);
        confirming.floor.add(floor.logged);
        next.program.add(program.ready);
        next.floor.add(floor.ready);
    }
    return {confirming, next, leaving};
}
