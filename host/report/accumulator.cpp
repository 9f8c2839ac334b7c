// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/report/accumulator.h"

#include "host/report/expressionfunctions.h"

#include <cmath>

using Kind = Expression::Aggregate::Kind;

Accumulator::Accumulator(Kind kind)
    : m_kind(kind)
{
}

void Accumulator::clear()
{
    *this = Accumulator(m_kind);
}

void Accumulator::add(const QVariant &value)
{
    if (ExpressionFunctions::isEmpty(value))
        return;
    ++m_count;
    switch (m_kind) {
    case Kind::Count:
        break;
    case Kind::Sum:
    case Kind::Average: {
        // Neumaier's way: ten thousand rolls must not cost a gram.
        const double number = ExpressionFunctions::number(value);
        const double next = m_sum + number;
        m_lost += std::abs(m_sum) >= std::abs(number) ? (m_sum - next) + number : (number - next) + m_sum;
        m_sum = next;
        break;
    }
    case Kind::Minimum:
        if (m_count == 1 || ExpressionFunctions::compare(value, m_extreme) < 0)
            m_extreme = value;
        break;
    case Kind::Maximum:
        if (m_count == 1 || ExpressionFunctions::compare(value, m_extreme) > 0)
            m_extreme = value;
        break;
    }
}

double Accumulator::sum() const
{
    return ExpressionFunctions::cleaned(m_sum + m_lost);
}

QVariant Accumulator::result() const
{
    switch (m_kind) {
    case Kind::Sum:
        return sum();
    case Kind::Count:
        return m_count;
    case Kind::Average:
        return m_count == 0 ? QVariant() : QVariant(sum() / double(m_count));
    case Kind::Minimum:
    case Kind::Maximum:
        break;
    }
    return m_extreme;
}
