// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/reportrows.h"

#include <QDate>

using namespace Qt::StringLiterals;

namespace {

constexpr int rollsPerOrder = 10;
constexpr int ordersPerClient = 20;

enum Column { Client, Order, Roll, Fabric, Day, Kilograms };

} // namespace

ReportRows::ReportRows(int rows)
    : m_rows(rows)
{
    setFields({{u"CLIENTE"_s, TField::Type::Text}, {u"NUM_OF"_s, TField::Type::Text}, {u"ROLO"_s, TField::Type::Text},
        {u"MALHA"_s, TField::Type::Text}, {u"DATA"_s, TField::Type::Date}, {u"PESO"_s, TField::Type::Float}});
    moveTo(0);
    setEof(false);
}

QVariant ReportRows::cell(int row, int fieldIndex) const
{
    const int order = row / rollsPerOrder;
    switch (fieldIndex) {
    case Client:
        return u"Confecções Água Verde %1 Ltda."_s.arg(order / ordersPerClient);
    case Order:
        return u"%1"_s.arg(order, 6, 10, QChar(u'0'));
    case Roll:
        return u"%1"_s.arg(row % rollsPerOrder + 1, 3, 10, QChar(u'0'));
    case Fabric:
        return u"Meia-malha penteada 30/1 nº %1"_s.arg(order % 90);
    case Day:
        return QDate(2026, 1, 5).addDays(order / 4);
    default:
        return 18 + (row * 7919 % 4000) / 1000.0;
    }
}
