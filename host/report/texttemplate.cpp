// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/report/expression.h"
#include "host/report/expressionfunctions.h"

using namespace Qt::StringLiterals;

namespace {

/// The first of the characters at or after `from` that stands outside of quotes; the text's size when there is none.
qsizetype unquoted(const QString &text, QChar wanted, qsizetype from)
{
    bool quoted = false;
    for (qsizetype i = from; i < text.size(); ++i) {
        if (text.at(i) == u'\'')
            quoted = !quoted;
        else if (!quoted && text.at(i) == wanted)
            return i;
    }
    return text.size();
}

/// The part within the braces; `position` is where it stands in the whole text.
TextTemplate::Part expressionPart(const QString &inner, qsizetype position)
{
    const qsizetype colon = unquoted(inner, u':', 0);
    TextTemplate::Part part;
    part.mask = inner.mid(colon + 1).trimmed();
    if (colon < inner.size() && !ExpressionFunctions::isMask(part.mask))
        throw ExpressionError{position + colon + 1, u"uma máscara como ,0.00 ou dd/mm/yyyy"_s};
    try {
        part.expression = std::make_shared<Expression>(Expression::parse(inner.left(colon)));
    } catch (ExpressionError &error) {
        error.position += position;
        throw;
    }
    return part;
}

} // namespace

TextTemplate TextTemplate::parse(const QString &text)
{
    TextTemplate result;
    QString plain;
    const auto endPlain = [&] {
        if (!plain.isEmpty())
            result.m_parts.append(Part{plain, nullptr, {}});
        plain.clear();
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) != u'{') {
            plain += text.at(i);
        } else if (i + 1 < text.size() && text.at(i + 1) == u'{') {
            plain += u'{';
            ++i;
        } else {
            const qsizetype end = unquoted(text, u'}', i);
            if (end == text.size())
                throw ExpressionError{i, u"\"}\" que fecha a expressão; uma chave que se imprime escreve-se {{"_s};
            endPlain();
            result.m_parts.append(expressionPart(text.mid(i + 1, end - i - 1), i + 1));
            i = end;
        }
    }
    endPlain();
    return result;
}

QString TextTemplate::evaluate(const ExpressionScope &scope) const
{
    QString result;
    for (const Part &part : m_parts)
        result += part.expression ? shown(part.expression->evaluate(scope), part.mask) : part.text;
    return result;
}

int TextTemplate::numberAggregates(int first)
{
    for (Part &part : m_parts) {
        if (!part.expression)
            continue;
        Expression numbered = *part.expression;
        first = numbered.numberAggregates(first);
        part.expression = std::make_shared<Expression>(numbered);
    }
    return first;
}

QString TextTemplate::shown(const QVariant &value, const QString &mask)
{
    return ExpressionFunctions::shown(value, mask);
}
