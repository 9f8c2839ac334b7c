// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/sqltext.h"
#include "tests/support/testdatabase.h"

/// Orders and rolls for the tests of the screens that work on them.
namespace Orders {

/// An order of company 1; an empty text is null.
struct Order
{
    QString number = QStringLiteral("000012");
    QString date = QStringLiteral("03/02/2026"); ///< month, day, year
    QString client = QStringLiteral("00001");
    QString material = QStringLiteral("M0001");
    QString machine = QStringLiteral("001");
    QString flow = QStringLiteral("01");
    double rollKg = 20;
    double totalKg = 100;
    QString observation = {};
};

inline void insert(TestDatabase &database, const Order &order)
{
    const auto text = [](const QString &value) {
        return value.isEmpty() ? QStringLiteral("NULL") : SqlText::quoted(value);
    };
    database.run(QStringLiteral("INSERT INTO {OF_MALHA} (NUM_OF, DATA, CLIENTE, MATERIAL, MAQUINA, FLUXO, KG_ROLO, "
                                "KG_TOTAL, OBSERVACAO) VALUES (")
        + QStringList{text(order.number), text(order.date), text(order.client), text(order.material),
            text(order.machine), text(order.flow), SqlText::number(order.rollKg), SqlText::number(order.totalKg),
            text(order.observation)}
              .join(QLatin1String(", "))
        + QLatin1Char(')'));
}

/// Rolls of these weights (kg), numbered from 001.
inline void writeOff(TestDatabase &database, const QString &order, const QList<double> &rolls)
{
    int number = 0;
    for (const double kg : rolls) {
        database.run(
            QStringLiteral("INSERT INTO {OF_MALHA_BAIXAS} (NUM_BAIXA, NUM_OF, DATA, HORA, TURNO, FUNCIONARIO, "
                           "QTDE) VALUES ('%1', '%2', '03/05/2026', '08:00:00', '1', '000101', %3)")
                .arg(QString::number(++number).rightJustified(3, QLatin1Char('0')), order, SqlText::number(kg)));
    }
}

/// "label|text|kind|key|user" of every log line.
inline QStringList log(TestDatabase &database)
{
    return database.rows(
        QStringLiteral("SELECT ROTULO, TEXTO, OPERACAO, CHAVE, USUARIO FROM QEN_LOG ORDER BY CHAVE, OPERACAO"));
}

} // namespace Orders
