// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/expression.h"
#include "host/report/expressionfunctions.h"

/// A step of an expression, with its operands beneath it.
struct Expression::Node
{
    enum class Kind { Constant, Name, Function, ForeignFunction, Aggregate, If, And, Or };

    Kind kind = Kind::Constant;
    QVariant constant;
    QString name; ///< of a field, parameter or foreign function, in upper case
    const ExpressionFunctions::Function *function = nullptr;
    int aggregate = 0; ///< within the expression
    std::vector<std::shared_ptr<const Node>> operands;

    QVariant evaluate(const ExpressionScope &scope, int firstAggregate) const;
    /// Adds the names of all nodes of that kind, each once.
    void collect(Kind wanted, QStringList &found) const;
};
