// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/answers.h"
#include "bench/measure.h"
#include "bench/station.h"

#include <QStringList>

/// The operator at the barcode screen, and what the screen says to the database meanwhile. Times are in milliseconds.
class StationOperator
{
public:
    /// Opens the screen and takes the turn. Throws EQen.
    explicit StationOperator(BenchStation &station);
    ~StationOperator();
    Q_DISABLE_COPY_MOVE(StationOperator)

    /// Scans an order's number; the field's exit is timed up to where the scale is about to be read: order and rolls
    /// are shown by then, and all that follows is the scale's.
    double leaveOrder(const QString &order);
    /// Confirms a roll of the order that is shown, until the next one can be scanned.
    double confirm(double kg);
    /// The part of the last confirmation that ends with its line in the log.
    double untilLogged() const { return m_untilLogged; }

    /// What the last of the two sent, and how many of it came before the question, and up to the line of the log.
    const QStringList &statements() const { return m_statements; }
    int askedAfter() const { return m_askedAfter; }
    int loggedAfter() const { return m_loggedAfter; }

private:
    void note(const QString &statement);
    void activate();
    template <class Kind> Kind *field(const QString &name) const;

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
