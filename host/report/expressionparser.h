// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/expressionnode.h"

/// Reads an expression from left to right. From what binds least to what binds most: OR, AND, NOT, comparisons, &,
/// + and -, * and /, a sign.
class ExpressionParser
{
public:
    explicit ExpressionParser(const QString &text);
    /// Throws ExpressionError.
    Expression parse();

private:
    using Node = Expression::Node;
    using NodePointer = std::shared_ptr<const Node>;

    struct Token
    {
        enum class Kind { Number, Text, Name, Sign, End };
        Kind kind = Kind::End;
        QString text; ///< of a name in upper case
        qsizetype position = 0;
    };

    [[noreturn]] void fail(const QString &expected) const;
    void advance();
    void readText();
    void readNumber();
    void readSign();
    bool isSign(QStringView sign) const;
    bool isWord(QStringView word) const;
    void take(QStringView sign, const QString &expected);

    NodePointer alternatives();
    NodePointer conjunctions();
    NodePointer negation();
    /// A chain of operators that bind alike; the weakest level is 0.
    NodePointer operators(int level);
    NodePointer signedValue();
    NodePointer value();
    NodePointer call(const Token &name);
    NodePointer aggregate(const Token &name);
    std::vector<NodePointer> arguments();

    QString m_text;
    qsizetype m_next = 0; ///< after the token
    Token m_token;
    QString m_before; ///< the token before, for messages
    int m_depth = 0;
    bool m_withinAggregate = false;
    QVector<Expression::Aggregate> m_aggregates;
};
