// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/sqltext.h"

#include "module/host_services/errors.h"

#include <QRegularExpression>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

/// The statement cut into quoted literals and what stands between them; literals are passed through unchanged.
QString outsideLiterals(const QString &statement, const std::function<QString(const QString &)> &change)
{
    static const QRegularExpression literal(u"'(?:[^']|'')*'"_s);
    QString result;
    qsizetype from = 0;
    auto matches = literal.globalMatch(statement);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        result += change(statement.mid(from, match.capturedStart() - from));
        result += match.captured();
        from = match.capturedEnd();
    }
    return result + change(statement.mid(from));
}

} // namespace

namespace SqlText {

QString quoted(const QString &value)
{
    return u"'%1'"_s.arg(QString(value).replace(u"'"_s, u"''"_s));
}

QString number(double value)
{
    if (!std::isfinite(value))
        throw EProgramming(u"Número inválido."_s, u"A statement got a number that is not finite."_s);
    return QString::number(value, 'f', QLocale::FloatingPointShortest);
}

bool isLiteral(const QString &text)
{
    static const QRegularExpression pattern(u"\\A'(?:[^']|'')*'\\z"_s);
    return pattern.match(text).hasMatch();
}

bool isName(const QString &text)
{
    static const QRegularExpression pattern(u"\\A[A-Za-z_][A-Za-z0-9_]*\\z"_s);
    return pattern.match(text).hasMatch();
}

QStringList split(const QString &text, QChar separator)
{
    QStringList parts(QString{});
    bool inQuotes = false;
    for (const QChar c : text) {
        if (c == u'\'')
            inQuotes = !inQuotes;
        if (c == separator && !inQuotes)
            parts.append(QString());
        else
            parts.last() += c;
    }
    for (QString &part : parts)
        part = part.trimmed();
    return parts;
}

QString withTables(const QString &statement, const std::function<QString(const QString &)> &physical)
{
    static const QRegularExpression brace(u"\\{([A-Za-z_][A-Za-z0-9_]*)\\}"_s);
    return outsideLiterals(statement, [&](const QString &piece) {
        QString result;
        qsizetype from = 0;
        auto matches = brace.globalMatch(piece);
        while (matches.hasNext()) {
            const QRegularExpressionMatch match = matches.next();
            result += piece.mid(from, match.capturedStart() - from) + physical(match.captured(1));
            from = match.capturedEnd();
        }
        return result + piece.mid(from);
    });
}

QString withoutAliasInSet(const QString &statement)
{
    static const QRegularExpression update(
        u"\\A\\s*UPDATE\\s+\\w+\\s+(?:AS\\s+)?(\\w+)\\s+SET\\s"_s, QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch head = update.match(statement);
    if (!head.hasMatch())
        return statement;
    // The alias is taken away only where a column is set: right after SET or a comma, before "=". What stands in
    // parentheses, a select with its own condition say, is passed over.
    const QRegularExpression token(u"[()]|\\bWHERE\\b|(\\bSET\\s+|,\\s*)%1\\.(?=\\w+\\s*=)"_s.arg(head.captured(1)),
        QRegularExpression::CaseInsensitiveOption);
    int depth = 0;
    bool beforeWhere = true;
    return outsideLiterals(statement, [&](const QString &piece) {
        QString result;
        qsizetype from = 0;
        auto matches = token.globalMatch(piece);
        while (matches.hasNext()) {
            const QRegularExpressionMatch match = matches.next();
            if (match.captured() == u"("_s) {
                ++depth;
            } else if (match.captured() == u")"_s) {
                --depth;
            } else if (depth == 0 && match.captured(1).isEmpty()) {
                beforeWhere = false;
            } else if (depth == 0 && beforeWhere) {
                result += piece.mid(from, match.capturedStart() - from) + match.captured(1);
                from = match.capturedEnd();
            }
        }
        return result + piece.mid(from);
    });
}

} // namespace SqlText
