// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/report/expression.h"

#include "host/report/expressionnode.h"
#include "host/report/expressionparser.h"

using namespace Qt::StringLiterals;

QVariant Expression::Node::evaluate(const ExpressionScope &scope, int firstAggregate) const
{
    const auto operand = [&](size_t number) { return operands[number]->evaluate(scope, firstAggregate); };
    switch (kind) {
    case Kind::Constant:
        return constant;
    case Kind::Name:
        return scope.value(name);
    case Kind::Aggregate:
        return scope.aggregate(firstAggregate + aggregate);
    case Kind::If:
        if (ExpressionFunctions::isTrue(operand(0)))
            return operand(1);
        return operands.size() > 2 ? operand(2) : QVariant();
    case Kind::And:
        return ExpressionFunctions::isTrue(operand(0)) && ExpressionFunctions::isTrue(operand(1));
    case Kind::Or:
        return ExpressionFunctions::isTrue(operand(0)) || ExpressionFunctions::isTrue(operand(1));
    case Kind::Function:
    case Kind::ForeignFunction:
        break;
    }
    QVariantList arguments;
    arguments.reserve(qsizetype(operands.size()));
    for (size_t i = 0; i < operands.size(); ++i)
        arguments.append(operand(i));
    return kind == Kind::Function ? function->apply(arguments) : scope.call(name, arguments);
}

void Expression::Node::collect(Kind wanted, QStringList &found) const
{
    if (kind == wanted && !found.contains(name))
        found.append(name);
    for (const auto &operand : operands)
        operand->collect(wanted, found);
}

Expression::Expression(std::shared_ptr<const Node> root)
    : m_root(std::move(root))
{
}

Expression Expression::parse(const QString &text)
{
    return ExpressionParser(text).parse();
}

Expression Expression::parseCondition(const QString &text)
{
    Expression condition = parse(text);
    const auto always = std::make_shared<Node>(Node{Node::Kind::Constant, true, {}, nullptr, 0, {}});
    condition.m_root = std::make_shared<Node>(Node{Node::Kind::And, {}, {}, nullptr, 0, {condition.m_root, always}});
    return condition;
}

QVariant Expression::evaluate(const ExpressionScope &scope) const
{
    return m_root ? m_root->evaluate(scope, m_firstAggregate) : QVariant();
}

int Expression::numberAggregates(int first)
{
    m_firstAggregate = first;
    return first + int(m_aggregates.size());
}

QStringList Expression::names() const
{
    QStringList found;
    if (m_root)
        m_root->collect(Node::Kind::Name, found);
    for (const Aggregate &aggregate : m_aggregates) {
        if (aggregate.of)
            aggregate.of->m_root->collect(Node::Kind::Name, found);
    }
    return found;
}

QStringList Expression::foreignFunctions() const
{
    QStringList found;
    if (m_root)
        m_root->collect(Node::Kind::ForeignFunction, found);
    for (const Aggregate &aggregate : m_aggregates) {
        if (aggregate.of)
            aggregate.of->m_root->collect(Node::Kind::ForeignFunction, found);
    }
    return found;
}
