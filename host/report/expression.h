// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVariant>
#include <QVector>

#include <memory>

/// What an expression is evaluated against.
class ExpressionScope
{
public:
    virtual ~ExpressionScope() = default;
    /// A field of the current row ("QTDE", "qryOF.NUM_OF") or a parameter; names in any case. Throws EQen when there is
    /// no such name.
    virtual QVariant value(const QString &name) const = 0;
    /// A function that the expressions themselves do not know, by its name in upper case. Throws EQen when nobody does.
    virtual QVariant call(const QString &function, const QVariantList &arguments) const = 0;
    /// The aggregate with that number, which is counted through the whole layout, see Expression::numberAggregates.
    virtual QVariant aggregate(int number) const = 0;
};

/// A mistake in an expression: where it is, counted from 0, and what was expected there.
struct ExpressionError
{
    qsizetype position;
    QString expected; ///< "um valor depois de \"+\""
};

/// An expression of a layout: parsed once, evaluated per row.
///
/// Numbers (1234.5), texts ('a' with '' for a quote), fields, parameters, + - * / & (joins texts), = <> < <= > >=,
/// AND OR NOT, parentheses, the functions of expressionfunctions.cpp, IF(c;a;b), and the aggregates SUM(x), COUNT(),
/// AVG(x), MIN(x), MAX(x). Arguments are separated by semicolons. Null counts as 0 in sums and as an empty text in
/// joins; a division by 0 gives null.
class Expression
{
public:
    /// Is null wherever it is asked.
    Expression() = default;

    struct Aggregate
    {
        enum class Kind { Sum, Count, Average, Minimum, Maximum };
        Kind kind;
        std::shared_ptr<const Expression> of; ///< null for COUNT(), which counts rows; COUNT(x) those with a value
    };

    /// Throws ExpressionError.
    static Expression parse(const QString &text);
    /// The same; its value is always true or false. Null, 0 and an empty text are false.
    static Expression parseCondition(const QString &text);

    QVariant evaluate(const ExpressionScope &scope) const;
    /// In the order of their numbers; empty for most.
    const QVector<Aggregate> &aggregates() const { return m_aggregates; }
    /// The number of the first of them: `evaluate` asks the scope for this one and those after it. 0 after parsing.
    int firstAggregate() const { return m_firstAggregate; }
    /// Gives the aggregates their numbers within the layout, from `first` on; gives the number after the last.
    int numberAggregates(int first);
    /// Names of fields and parameters that it reads, those of its aggregates included.
    QStringList names() const;
    /// Functions that it calls and does not know itself, in upper case ("PAGES", "ZEROE").
    QStringList foreignFunctions() const;

private:
    struct Node;
    friend class ExpressionParser;
    explicit Expression(std::shared_ptr<const Node> root);
    std::shared_ptr<const Node> m_root;
    QVector<Aggregate> m_aggregates;
    int m_firstAggregate = 0;
};

/// A text with expressions in braces: "OF {NUM_OF}: {SUM(QTDE):,0.00} kg". "{{" stands for a brace. After the first
/// colon outside of quotes stands a mask of Format::number, or dd/mm/yyyy, hh:mm and the like for dates and times.
class TextTemplate
{
public:
    struct Part
    {
        QString text; ///< when there is no expression
        std::shared_ptr<const Expression> expression;
        QString mask;
    };

    /// Throws ExpressionError, counted within the whole text.
    static TextTemplate parse(const QString &text);
    QString evaluate(const ExpressionScope &scope) const;
    const QVector<Part> &parts() const { return m_parts; }
    /// Like Expression::numberAggregates, for all its expressions.
    int numberAggregates(int first);
    /// A value as the paper shows it: by its mask, else Brazilian dates and numbers without superfluous decimals.
    static QString shown(const QVariant &value, const QString &mask);

private:
    QVector<Part> m_parts;
};
