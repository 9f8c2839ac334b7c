// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/report/expressionfunctions.h"

#include "module/host_services/format.h"

#include <QDateTime>
#include <QHash>
#include <QRegularExpression>

#include <cmath>

using namespace Qt::StringLiterals;

namespace ExpressionFunctions {

namespace {

bool isNumber(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Bool:
        return true;
    default:
        return false;
    }
}

bool isMoment(const QVariant &value)
{
    return value.typeId() == QMetaType::QDate || value.typeId() == QMetaType::QDateTime;
}

std::optional<double> parsed(const QVariant &value)
{
    if (value.isNull())
        return 0.0;
    if (isNumber(value))
        return value.toDouble();
    return Format::parseNumber(value.toString());
}

std::optional<QDateTime> moment(const QVariant &value)
{
    if (value.typeId() == QMetaType::QString) {
        const std::optional<QDate> date = Format::parseDate(value.toString(), QDate(2000, 1, 1));
        return date ? std::optional(date->startOfDay()) : std::nullopt;
    }
    return value.isNull() ? QDateTime() : value.toDateTime();
}

int sign(double difference)
{
    return difference < 0 ? -1 : difference > 0 ? 1 : 0;
}

/// "mm" are minutes after hours and months elsewhere.
QString qtMask(const QString &mask)
{
    QString result = mask;
    bool afterHours = false;
    for (QChar &letter : result) {
        if (letter == u'm' && !afterHours)
            letter = u'M';
        else if (letter.isLetter())
            afterHours = letter == u'h' || (letter == u'm' && afterHours);
    }
    return result;
}

bool isMomentMask(const QString &mask)
{
    static const QRegularExpression pattern(u"^(?=.*[a-z])(d{2,4}|m{2,4}|y{2}|y{4}|h{2}|s{2}|[ /:.,-])+$"_s);
    return pattern.match(mask).hasMatch();
}

bool isNumberMask(const QString &mask)
{
    static const QRegularExpression pattern(u"^,?0*(\\.0*#*)?$"_s);
    return !mask.isEmpty() && pattern.match(mask).hasMatch();
}

QString padded(const QVariantList &arguments, Qt::Alignment side)
{
    const QString value = text(arguments[0]);
    const qsizetype width = qMax(0, int(number(arguments[1])));
    const QString filling = arguments.size() > 2 ? text(arguments[2]) : QString();
    const QChar fill = filling.isEmpty() ? u' ' : filling.front();
    if (side == Qt::AlignLeft)
        return value.leftJustified(width, fill, true);
    if (side == Qt::AlignRight) {
        // A number that lost its first digits would be believed.
        return value.size() > width ? QString(width, u'*') : value.rightJustified(width, fill);
    }
    const qsizetype left = qMax(qsizetype(0), (width - value.size()) / 2);
    return (QString(left, fill) + value).leftJustified(width, fill, true);
}

QVariant minus(const QVariantList &a)
{
    if (isMoment(a[0]) && isMoment(a[1]) && !a[0].isNull() && !a[1].isNull())
        return a[1].toDate().daysTo(a[0].toDate());
    return cleaned(number(a[0]) - number(a[1]));
}

QVariant divided(const QVariantList &a)
{
    const double divisor = number(a[1]);
    return divisor == 0 ? QVariant() : QVariant(number(a[0]) / divisor);
}

QVariant truncated(const QVariantList &a)
{
    return a[0].isNull() ? QVariant() : QVariant(std::trunc(cleaned(number(a[0]))));
}

QVariant rounded(const QVariantList &a)
{
    const int decimals = a.size() > 1 ? qBound(0, int(number(a[1])), 9) : 0;
    return a[0].isNull() ? QVariant() : QVariant(Format::rounded(cleaned(number(a[0])), decimals));
}

qsizetype length(const QVariant &value)
{
    return qBound(0, int(number(value)), 10000);
}

const QVector<Function> &functions()
{
    using A = const QVariantList &;
    static const QVector<Function> all{
        {u"+"_s, 2, 2, [](A a) { return QVariant(cleaned(number(a[0]) + number(a[1]))); }},
        {u"-"_s, 2, 2, minus},
        {u"*"_s, 2, 2, [](A a) { return QVariant(cleaned(number(a[0]) * number(a[1]))); }},
        {u"/"_s, 2, 2, divided},
        {u"&"_s, 2, 2, [](A a) { return QVariant(text(a[0]) + text(a[1])); }},
        {u"="_s, 2, 2, [](A a) { return QVariant(compare(a[0], a[1]) == 0); }},
        {u"<>"_s, 2, 2, [](A a) { return QVariant(compare(a[0], a[1]) != 0); }},
        {u"<"_s, 2, 2, [](A a) { return QVariant(compare(a[0], a[1]) < 0); }},
        {u"<="_s, 2, 2, [](A a) { return QVariant(compare(a[0], a[1]) <= 0); }},
        {u">"_s, 2, 2, [](A a) { return QVariant(compare(a[0], a[1]) > 0); }},
        {u">="_s, 2, 2, [](A a) { return QVariant(compare(a[0], a[1]) >= 0); }},
        {u"NOT"_s, 1, 1, [](A a) { return QVariant(!isTrue(a[0])); }},
        {u"ABS(x)"_s, 1, 1, [](A a) { return a[0].isNull() ? QVariant() : QVariant(std::abs(number(a[0]))); }},
        {u"ROUND(x;n)"_s, 1, 2, rounded},
        {u"TRUNC(x)"_s, 1, 1, truncated},
        {u"TRIM(t)"_s, 1, 1, [](A a) { return QVariant(text(a[0]).trimmed()); }},
        {u"UPPER(t)"_s, 1, 1, [](A a) { return QVariant(text(a[0]).toUpper()); }},
        {u"LOWER(t)"_s, 1, 1, [](A a) { return QVariant(text(a[0]).toLower()); }},
        {u"LEFT(t;n)"_s, 2, 2, [](A a) { return QVariant(text(a[0]).left(length(a[1]))); }},
        {u"RIGHT(t;n)"_s, 2, 2, [](A a) { return QVariant(text(a[0]).right(length(a[1]))); }},
        {u"MID(t;from;n)"_s, 3, 3,
            [](A a) { return QVariant(text(a[0]).mid(qMax(qsizetype(0), length(a[1]) - 1), length(a[2]))); }},
        {u"LEN(t)"_s, 1, 1, [](A a) { return QVariant(int(text(a[0]).size())); }},
        {u"REPEAT(t;n)"_s, 2, 2, [](A a) { return QVariant(text(a[0]).repeated(length(a[1]))); }},
        {u"REPLACE(t;old;new)"_s, 3, 3,
            [](A a) {
                const QString old = text(a[1]);
                return QVariant(old.isEmpty() ? text(a[0]) : text(a[0]).replace(old, text(a[2])));
            }},
        {u"PAD(t;n;c)"_s, 2, 3, [](A a) { return QVariant(padded(a, Qt::AlignLeft)); }},
        {u"PADLEFT(t;n;c)"_s, 2, 3, [](A a) { return QVariant(padded(a, Qt::AlignRight)); }},
        {u"CENTER(t;n;c)"_s, 2, 3, [](A a) { return QVariant(padded(a, Qt::AlignHCenter)); }},
        {u"FORMAT(v;mask)"_s, 2, 2, [](A a) { return QVariant(shown(a[0], text(a[1]))); }},
        {u"EMPTY(v)"_s, 1, 1, [](A a) { return QVariant(isEmpty(a[0])); }},
    };
    return all;
}

} // namespace

const Function *find(const QString &name)
{
    static const QHash<QString, const Function *> byName = [] {
        QHash<QString, const Function *> result;
        for (const Function &function : functions())
            result.insert(function.name(), &function);
        return result;
    }();
    return byName.value(name);
}

double number(const QVariant &value)
{
    return parsed(value).value_or(0);
}

QString text(const QVariant &value)
{
    return shown(value, {});
}

bool isTrue(const QVariant &value)
{
    if (value.isNull())
        return false;
    return isNumber(value) ? value.toDouble() != 0 : !isEmpty(value);
}

bool isEmpty(const QVariant &value)
{
    return value.isNull() || (value.typeId() == QMetaType::QString && value.toString().trimmed().isEmpty());
}

int compare(const QVariant &left, const QVariant &right)
{
    if (isNumber(left) || isNumber(right)) {
        const std::optional<double> a = parsed(left);
        const std::optional<double> b = parsed(right);
        if (a && b)
            return std::abs(*a - *b) < 1e-6 ? 0 : sign(*a - *b);
    }
    if (isMoment(left) || isMoment(right)) {
        const std::optional<QDateTime> a = moment(left);
        const std::optional<QDateTime> b = moment(right);
        if (a && b)
            return *a == *b ? 0 : *a < *b ? -1 : 1;
    }
    return text(left).compare(text(right));
}

double cleaned(double value)
{
    const double magnitude = std::abs(value);
    const double scale = magnitude < 1e6 ? 1e9 : 1e6; // what a double holds exactly
    return magnitude < 1e9 ? std::round(value * scale) / scale : value;
}

bool isMask(const QString &mask)
{
    return isNumberMask(mask) || isMomentMask(mask);
}

QString shown(const QVariant &value, const QString &mask)
{
    if (value.isNull())
        return {};
    const auto forMoments = [&] { return isMomentMask(mask); };
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? u"Sim"_s : u"Não"_s;
    case QMetaType::QDate:
        return forMoments() ? value.toDate().startOfDay().toString(qtMask(mask)) : Format::date(value.toDate());
    case QMetaType::QTime:
        return forMoments() ? value.toTime().toString(qtMask(mask)) : Format::time(value.toTime());
    case QMetaType::QDateTime: {
        const QDateTime at = value.toDateTime();
        if (forMoments())
            return at.toString(qtMask(mask));
        const QString date = Format::date(at.date());
        return at.time() == QTime(0, 0) ? date : date + u' ' + Format::time(at.time());
    }
    default:
        break;
    }
    if (isNumber(value)) {
        // A floating point number has its last decimals from the sums before it.
        return Format::number(value.toDouble(), isNumberMask(mask) ? mask : u"0.######"_s);
    }
    const QString plain = value.toString();
    if (!isNumberMask(mask))
        return plain;
    const std::optional<double> typed = Format::parseNumber(plain);
    return typed ? Format::number(*typed, mask) : plain;
}

} // namespace ExpressionFunctions
