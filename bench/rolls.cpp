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
#include <QKeyEvent>
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
        field<QLineEdit>(u"EdtTurno"_s)->setText(u"1"_s);
        m_worker = m_database.value(Funcoes::DBLocal_SQL(u"SELECT MIN(CODIGO) FROM {PESSOAL}"_s)).toString();
        m_database.setObserver([this](const QString &statement) {
            m_statements.append(statement);
            if (statement.startsWith(logged)) {
                m_untilLogged = m_clock.milliseconds();
                m_statementsUntilLogged = int(m_statements.size());
            }
        });
    }

    ~Operator()
    {
        m_database.setObserver({});
        BenchStation::close(m_form);
    }
    Q_DISABLE_COPY_MOVE(Operator)

    /// Scans an order's number and leaves the field.
    double leaveOrder(const QString &order)
    {
        activate(); // a box may have taken the keys away
        auto *number = field<QLineEdit>(u"edtOF"_s);
        number->setFocus(Qt::TabFocusReason);
        number->setText(order);
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        m_statements.clear();
        m_clock.start();
        QCoreApplication::sendEvent(number, &tab);
        m_clock.pause();
        if (m_statements.isEmpty())
            throw EQen(u"The order field was left and nothing was read."_s);
        return m_clock.milliseconds();
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
        m_statementsUntilLogged = 0;
        m_clock.start();
        button->click();
        m_clock.pause();
        if (m_statementsUntilLogged == 0)
            throw EQen(u"The roll was confirmed and nothing was logged."_s, m_statements.join(u'\n'));
        return m_clock.milliseconds();
    }

    double untilLogged() const { return m_untilLogged; }
    /// What the last of the two sent.
    const QStringList &statements() const { return m_statements; }
    QStringList statementsUntilLogged() const { return m_statements.first(m_statementsUntilLogged); }

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
    int m_statementsUntilLogged = 0;
    double m_untilLogged = 0;
};

double timed(BareClient &client, QStringList statements, const QString &from, const QString &to)
{
    statements.replaceInStrings(from, to);
    Clockwork clock;
    clock.start();
    client.send(statements);
    clock.pause();
    return clock.milliseconds();
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
    for (int run = -bench.effort.warmUps; run < bench.effort.runs; ++run) {
        const int index = run + bench.effort.warmUps;
        const QString order = Filling::programOrder(index);
        const QString twin = Filling::floorOrder(index);
        const double left = person.leaveOrder(order);
        const double leftBare = timed(bare, person.statements(), order, twin);
        const double ready = person.confirm(Filling::rollKg);
        const double done = person.untilLogged();
        const double doneBare = timed(bare, person.statementsUntilLogged(), order, twin);
        const double readyBare =
            doneBare + timed(bare, person.statements().mid(person.statementsUntilLogged().size()), order, twin);
        if (run < 0)
            continue;
        leaving.program.add(left);
        leaving.floor.add(leftBare);
        confirming.program.add(done);
        confirming.floor.add(doneBare);
        next.program.add(ready);
        next.floor.add(readyBare);
    }
    return {confirming, next, leaving};
}
