// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVariant>

/// What the expressions of layouts do with values: the operators and the functions that they know themselves.
namespace ExpressionFunctions {

struct Function
{
    QString form; ///< "ROUND(x;n)"; the name of an operator is its sign
    int least; ///< arguments
    int most;
    QVariant (*apply)(const QVariantList &arguments);

    QString name() const { return form.section(u'(', 0, 0); }
};

/// By its name in upper case or by the operator's sign; null when there is none.
const Function *find(const QString &name);

double number(const QVariant &value); ///< 0 for null and for a text that is no number
QString text(const QVariant &value); ///< as on paper; empty for null
bool isTrue(const QVariant &value); ///< not null, 0, false or an empty text
bool isEmpty(const QVariant &value); ///< null, or a text of blanks
/// Below 0, 0 or above 0. Null is like 0 beside a number and like an empty text beside a text; numbers that differ by
/// less than a millionth are equal.
int compare(const QVariant &left, const QVariant &right);
/// Without what binary fractions leave behind: 100 - 99.95 is 0.05.
double cleaned(double value);

/// Whether it is a mask for numbers or for dates and times.
bool isMask(const QString &mask);
QString shown(const QVariant &value, const QString &mask);

} // namespace ExpressionFunctions
