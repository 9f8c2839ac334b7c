// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/report/expressionparser.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int deepest = 100; // of parentheses within parentheses

bool isNameCharacter(QChar c)
{
    return c.isLetterOrNumber() || c == u'_' || c == u'.';
}

std::optional<Expression::Aggregate::Kind> aggregateKind(const QString &name)
{
    using Kind = Expression::Aggregate::Kind;
    if (name == "SUM"_L1)
        return Kind::Sum;
    if (name == "COUNT"_L1)
        return Kind::Count;
    if (name == "AVG"_L1)
        return Kind::Average;
    if (name == "MIN"_L1)
        return Kind::Minimum;
    if (name == "MAX"_L1)
        return Kind::Maximum;
    return std::nullopt;
}

} // namespace

ExpressionParser::ExpressionParser(const QString &text)
    : m_text(text)
{
    advance();
}

Expression ExpressionParser::parse()
{
    Expression result(alternatives());
    if (m_token.kind != Token::Kind::End)
        fail(u"um operador ou o fim da expressão"_s);
    result.m_aggregates = m_aggregates;
    return result;
}

void ExpressionParser::fail(const QString &expected) const
{
    throw ExpressionError{m_token.position, expected};
}

void ExpressionParser::advance()
{
    m_before = m_token.text;
    while (m_next < m_text.size() && m_text.at(m_next).isSpace())
        ++m_next;
    m_token = {Token::Kind::End, {}, m_next};
    if (m_next == m_text.size())
        return;
    const QChar c = m_text.at(m_next);
    if (c == u'\'')
        readText();
    else if (c.isDigit())
        readNumber();
    else if (isNameCharacter(c)) {
        while (m_next < m_text.size() && isNameCharacter(m_text.at(m_next)))
            ++m_next;
        m_token.kind = Token::Kind::Name;
        m_token.text = m_text.mid(m_token.position, m_next - m_token.position).toUpper();
    } else
        readSign();
}

void ExpressionParser::readText()
{
    m_token.kind = Token::Kind::Text;
    for (++m_next; m_next < m_text.size(); ++m_next) {
        if (m_text.at(m_next) == u'\'') {
            ++m_next;
            if (m_next == m_text.size() || m_text.at(m_next) != u'\'')
                return;
        }
        m_token.text += m_text.at(m_next);
    }
    fail(u"a aspa que fecha o texto"_s);
}

void ExpressionParser::readNumber()
{
    m_token.kind = Token::Kind::Number;
    while (m_next < m_text.size() && isNameCharacter(m_text.at(m_next)))
        ++m_next;
    m_token.text = m_text.mid(m_token.position, m_next - m_token.position);
    bool ok = false;
    m_token.text.toDouble(&ok);
    if (!ok)
        fail(u"um número como 1234.5"_s);
}

void ExpressionParser::readSign()
{
    m_token.kind = Token::Kind::Sign;
    static const QStringList signs{u"<>"_s, u"<="_s, u">="_s, u"<"_s, u">"_s, u"="_s, u"+"_s, u"-"_s, u"*"_s, u"/"_s,
        u"&"_s, u"("_s, u")"_s, u";"_s};
    for (const QString &sign : signs) {
        if (QStringView(m_text).mid(m_next).startsWith(sign)) {
            m_token.text = sign;
            m_next += sign.size();
            return;
        }
    }
    fail(u"um campo, um número, um texto entre aspas simples ou um operador"_s);
}

bool ExpressionParser::isSign(QStringView sign) const
{
    return m_token.kind == Token::Kind::Sign && m_token.text == sign;
}

bool ExpressionParser::isWord(QStringView word) const
{
    return m_token.kind == Token::Kind::Name && m_token.text == word;
}

void ExpressionParser::take(QStringView sign, const QString &expected)
{
    if (!isSign(sign))
        fail(expected);
    advance();
}

ExpressionParser::NodePointer ExpressionParser::alternatives()
{
    if (++m_depth > deepest)
        fail(u"no máximo %1 parênteses uns dentro dos outros"_s.arg(deepest));
    NodePointer left = conjunctions();
    while (isWord(u"OR")) {
        advance();
        left = std::make_shared<Node>(Node{Node::Kind::Or, {}, {}, nullptr, 0, {left, conjunctions()}});
    }
    --m_depth;
    return left;
}

ExpressionParser::NodePointer ExpressionParser::conjunctions()
{
    NodePointer left = negation();
    while (isWord(u"AND")) {
        advance();
        left = std::make_shared<Node>(Node{Node::Kind::And, {}, {}, nullptr, 0, {left, negation()}});
    }
    return left;
}

ExpressionParser::NodePointer ExpressionParser::negation()
{
    bool negated = false;
    for (; isWord(u"NOT"); advance())
        negated = !negated;
    const NodePointer of = operators(0);
    if (!negated)
        return of;
    return std::make_shared<Node>(Node{Node::Kind::Function, {}, {}, ExpressionFunctions::find(u"NOT"_s), 0, {of}});
}

ExpressionParser::NodePointer ExpressionParser::operators(int level)
{
    static const QVector<QStringList> levels{
        {u"="_s, u"<>"_s, u"<"_s, u"<="_s, u">"_s, u">="_s}, {u"&"_s}, {u"+"_s, u"-"_s}, {u"*"_s, u"/"_s}};
    if (level == levels.size())
        return signedValue();
    NodePointer left = operators(level + 1);
    while (m_token.kind == Token::Kind::Sign && levels[level].contains(m_token.text)) {
        const auto *function = ExpressionFunctions::find(m_token.text);
        advance();
        left = std::make_shared<Node>(Node{Node::Kind::Function, {}, {}, function, 0, {left, operators(level + 1)}});
    }
    return left;
}

ExpressionParser::NodePointer ExpressionParser::signedValue()
{
    bool negative = false;
    for (; isSign(u"-"); advance())
        negative = !negative;
    const NodePointer of = value();
    if (!negative)
        return of;
    const auto zero = std::make_shared<Node>(Node{Node::Kind::Constant, 0, {}, nullptr, 0, {}});
    return std::make_shared<Node>(Node{Node::Kind::Function, {}, {}, ExpressionFunctions::find(u"-"_s), 0, {zero, of}});
}

ExpressionParser::NodePointer ExpressionParser::value()
{
    const Token token = m_token;
    switch (token.kind) {
    case Token::Kind::Number:
        advance();
        return std::make_shared<Node>(Node{Node::Kind::Constant, token.text.toDouble(), {}, nullptr, 0, {}});
    case Token::Kind::Text:
        advance();
        return std::make_shared<Node>(Node{Node::Kind::Constant, token.text, {}, nullptr, 0, {}});
    case Token::Kind::Name:
        if (isWord(u"AND") || isWord(u"OR") || isWord(u"NOT"))
            break;
        advance();
        if (isSign(u"("))
            return call(token);
        return std::make_shared<Node>(Node{Node::Kind::Name, {}, token.text, nullptr, 0, {}});
    case Token::Kind::Sign:
        if (token.text == u"("_s) {
            advance();
            const NodePointer inner = alternatives();
            take(u")", u"\")\""_s);
            return inner;
        }
        break;
    case Token::Kind::End:
        break;
    }
    fail(m_before.isEmpty() ? u"um valor"_s : u"um valor depois de \"%1\""_s.arg(m_before));
}

std::vector<ExpressionParser::NodePointer> ExpressionParser::arguments()
{
    std::vector<NodePointer> result;
    take(u"(", u"\"(\""_s);
    while (!isSign(u")")) {
        if (!result.empty())
            take(u";", u"\";\" ou \")\""_s);
        result.push_back(alternatives());
    }
    advance();
    return result;
}

ExpressionParser::NodePointer ExpressionParser::call(const Token &name)
{
    if (aggregateKind(name.text))
        return aggregate(name);
    Node node{Node::Kind::ForeignFunction, {}, name.text, nullptr, 0, arguments()};
    const auto *function = ExpressionFunctions::find(name.text);
    const int count = int(node.operands.size());
    if (name.text == "IF"_L1) {
        if (count < 2 || count > 3)
            throw ExpressionError{name.position, u"IF(condição;valor;senão)"_s};
        node.kind = Node::Kind::If;
    } else if (function) {
        if (count < function->least || count > function->most)
            throw ExpressionError{name.position, function->form};
        node.kind = Node::Kind::Function;
        node.function = function;
        const bool fixedMask = name.text == "FORMAT"_L1 && node.operands[1]->kind == Node::Kind::Constant;
        if (fixedMask && !ExpressionFunctions::isMask(node.operands[1]->constant.toString()))
            throw ExpressionError{name.position, u"uma máscara como ,0.00 ou dd/mm/yyyy"_s};
    }
    return std::make_shared<Node>(std::move(node));
}

ExpressionParser::NodePointer ExpressionParser::aggregate(const Token &name)
{
    if (m_withinAggregate)
        throw ExpressionError{name.position, u"um valor por linha, sem %1 dentro de outro total"_s.arg(name.text)};
    m_withinAggregate = true;
    const std::vector<NodePointer> of = arguments();
    m_withinAggregate = false;
    const Expression::Aggregate::Kind kind = *aggregateKind(name.text);
    const bool counts = kind == Expression::Aggregate::Kind::Count;
    if (of.size() > 1 || (of.empty() && !counts))
        throw ExpressionError{name.position, counts ? u"COUNT()"_s : u"%1(x)"_s.arg(name.text)};
    const std::shared_ptr<const Expression> operand =
        of.empty() ? nullptr : std::shared_ptr<const Expression>(new Expression(of.front()));
    m_aggregates.append({kind, operand});
    return std::make_shared<Node>(Node{Node::Kind::Aggregate, {}, {}, nullptr, int(m_aggregates.size()) - 1, {}});
}
