// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/host_services/format.h"

#include <QLocale>
#include <QRegularExpression>
#include <QStringList>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

/// A number written out: digits before and after the point, and its sign.
struct Decimal
{
    bool negative = false;
    QString integer;
    QString fraction;
};

/// Adds one to the last digit of a text of digits; "999" becomes "1000".
QString incremented(QString digits)
{
    for (qsizetype i = digits.size() - 1; i >= 0; --i) {
        if (digits.at(i) != u'9') {
            digits[i] = QChar(digits.at(i).unicode() + 1);
            return digits;
        }
        digits[i] = u'0';
    }
    return u'1' + digits;
}

/// Rounds the shortest decimal text that stands for `value`, which is the number that a person reads.
Decimal roundedDecimal(double value, int decimals)
{
    const QStringList parts = QString::number(std::abs(value), 'f', QLocale::FloatingPointShortest).split(u'.');
    QString integer = parts.first();
    QString fraction = parts.value(1);
    if (fraction.size() > decimals) {
        const bool up = fraction.at(decimals) >= u'5';
        fraction.truncate(decimals);
        if (up) {
            const QString digits = incremented(integer + fraction);
            integer = digits.left(digits.size() - decimals);
            fraction = digits.right(decimals);
        }
    }
    const auto allZero = [](const QString &digits) { return digits.count(u'0') == digits.size(); };
    return {value < 0 && !(allZero(integer) && allZero(fraction)), integer, fraction};
}

QString grouped(QString integer)
{
    for (qsizetype at = integer.size() - 3; at > 0; at -= 3)
        integer.insert(at, u'.');
    return integer;
}

std::optional<int> yearOf(const QString &digits, QDate today)
{
    const int year = digits.toInt();
    if (digits.size() == 4)
        return year >= 1900 ? std::optional(year) : std::nullopt;
    const int earliest = today.year() - 50;
    return earliest + ((year - earliest) % 100 + 100) % 100;
}

} // namespace

QString Format::number(double value, const QString &mask)
{
    if (!std::isfinite(value))
        return {};
    const QString integerMask = mask.section(u'.', 0, 0);
    const QString fractionMask = mask.section(u'.', 1);
    const qsizetype always = fractionMask.count(u'0');
    const qsizetype most = always + fractionMask.count(u'#');

    auto [negative, integer, fraction] = roundedDecimal(value, int(most));
    integer = integer.rightJustified(integerMask.count(u'0'), u'0');
    fraction = fraction.leftJustified(always, u'0');
    while (fraction.size() > always && fraction.endsWith(u'0'))
        fraction.chop(1);

    QString text = negative ? u"-"_s : QString();
    text += integerMask.contains(u',') ? grouped(integer) : integer;
    if (!fraction.isEmpty())
        text += u',' + fraction;
    return text;
}

double Format::rounded(double value, int decimals)
{
    if (!std::isfinite(value))
        return value;
    const auto [negative, integer, fraction] = roundedDecimal(value, decimals);
    const double magnitude = (integer + u'.' + fraction).toDouble();
    return negative ? -magnitude : magnitude;
}

std::optional<double> Format::parseNumber(const QString &typed)
{
    static const QRegularExpression withComma(u"^[+-]?([0-9]*|[0-9]{1,3}(\\.[0-9]{3})+),[0-9]*$"_s);
    static const QRegularExpression inGroups(u"^[+-]?[1-9][0-9]{0,2}(\\.[0-9]{3})+$"_s);
    static const QRegularExpression withPoint(u"^[+-]?[0-9]*\\.?[0-9]*$"_s);
    static const QRegularExpression digit(u"[0-9]"_s);

    QString text = typed.trimmed();
    if (!text.contains(digit))
        return std::nullopt;
    if (withComma.match(text).hasMatch())
        text.remove(u'.').replace(u',', u'.');
    else if (inGroups.match(text).hasMatch())
        text.remove(u'.');
    else if (!withPoint.match(text).hasMatch())
        return std::nullopt;

    bool ok = false;
    const double value = text.toDouble(&ok);
    return ok && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

QString Format::date(QDate date)
{
    return date.toString(u"dd/MM/yyyy"_s);
}

std::optional<QDate> Format::parseDate(const QString &typed, QDate today)
{
    static const QRegularExpression separated(u"^([0-9]{1,2})(?:[/.-]([0-9]{1,2})(?:[/.-]([0-9]{4}|[0-9]{2}))?)?$"_s);
    static const QRegularExpression digitsOnly(u"^([0-9]{2})([0-9]{2})([0-9]{4}|[0-9]{2})?$"_s);

    const QString text = typed.trimmed();
    QRegularExpressionMatch match = separated.match(text);
    if (!match.hasMatch())
        match = digitsOnly.match(text);
    if (!match.hasMatch())
        return std::nullopt;

    const QString month = match.captured(2);
    const QString yearDigits = match.captured(3);
    const std::optional<int> year = yearDigits.isEmpty() ? today.year() : yearOf(yearDigits, today);
    if (!year)
        return std::nullopt;
    const QDate date(*year, month.isEmpty() ? today.month() : month.toInt(), match.captured(1).toInt());
    return date.isValid() ? std::optional(date) : std::nullopt;
}

QString Format::sqlDate(QDate date)
{
    return date.toString(u"MM/dd/yyyy"_s);
}

QString Format::time(QTime time)
{
    return time.toString(u"HH:mm:ss"_s);
}
