// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/sqltext.h"

#include "module/host_services/errors.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

/// The statement cut into quoted literals and what stands between them; literals are passed through unchanged.
/// A doubled quote ends one literal and begins the next, which cuts the same.
QString outsideLiterals(const QString &statement, const std::function<QString(const QString &)> &change)
{
    QString result;
    qsizetype from = 0;
    for (;;) {
        const qsizetype begin = statement.indexOf(u'\'', from);
        const qsizetype end = begin < 0 ? -1 : statement.indexOf(u'\'', begin + 1);
        if (end < 0)
            return result + change(statement.mid(from));
        result += change(statement.mid(from, begin - from)) + statement.mid(begin, end + 1 - begin);
        from = end + 1;
    }
}

bool isLetter(QChar c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || c == u'_';
}

/// Without what no engine can hold: NUL, at which statements end, and halves of characters, as a field that is full
/// leaves them.
QString holdable(const QString &value)
{
    if (std::none_of(value.begin(), value.end(), [](QChar c) { return c.isNull() || c.isSurrogate(); }))
        return value;
    QString result;
    for (qsizetype i = 0; i < value.size(); ++i) {
        const QChar c = value[i];
        if (c.isHighSurrogate() && i + 1 < value.size() && value[i + 1].isLowSurrogate())
            result += value.sliced(i++, 2);
        else if (!c.isNull() && !c.isSurrogate())
            result += c;
    }
    return result;
}

} // namespace

namespace SqlText {

QString quoted(const QString &value)
{
    return u"'%1'"_s.arg(holdable(value).replace(u"'"_s, u"''"_s));
}

QString number(double value)
{
    if (!std::isfinite(value))
        throw EProgramming(u"Número inválido."_s, u"A statement got a number that is not finite."_s);
    return QString::number(value, 'f', QLocale::FloatingPointShortest);
}

bool isLiteral(const QString &text)
{
    if (text.size() < 2 || !text.startsWith(u'\'') || !text.endsWith(u'\''))
        return false;
    return !text.sliced(1, text.size() - 2).remove(u"''"_s).contains(u'\'');
}

bool isName(const QString &text)
{
    const auto mayFollow = [](QChar c) { return isLetter(c) || (c >= u'0' && c <= u'9'); };
    return !text.isEmpty() && isLetter(text.front()) && std::all_of(text.begin(), text.end(), mayFollow);
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
    return outsideLiterals(statement, [&](const QString &piece) {
        QString result;
        qsizetype from = 0;
        for (qsizetype brace = piece.indexOf(u'{'); brace >= 0; brace = piece.indexOf(u'{', brace + 1)) {
            const qsizetype end = piece.indexOf(u'}', brace);
            const QString name = piece.sliced(brace + 1, qMax(end, brace + 1) - brace - 1);
            if (!isName(name))
                continue;
            result += piece.sliced(from, brace - from) + physical(name);
            from = end + 1;
        }
        return result + piece.mid(from);
    });
}

QString withoutAliasInSet(const QString &statement)
{
    static const QRegularExpression update(
        u"\\A\\s*UPDATE\\s+\\w+\\s+(?:AS\\s+)?(\\w+)\\s+SET\\s"_s, QRegularExpression::CaseInsensitiveOption);
    if (!QStringView(statement).trimmed().startsWith(u"UPDATE", Qt::CaseInsensitive))
        return statement;
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
