// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/host_services/scaleforms.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;
using Stability = ScaleReading::Stability;
using Recognised = std::optional<ScaleReading>;

namespace {

// Digits on both sides of a single point or comma; a figure that lost its first digit is no figure.
const QString number = u"[0-9]{1,8}(?:[.,][0-9]{1,6})?"_s;
const QString numberWithPoint = u"[0-9]{1,7}[.,][0-9]{1,6}"_s;

QRegularExpression whole(const QString &pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern));
}

double figure(QString digits)
{
    return digits.replace(u',', u'.').toDouble();
}

ScaleReading weight(double value, const QString &unit, Stability stability)
{
    ScaleReading reading;
    reading.value = value;
    reading.unit = unit.toLower();
    reading.stability = stability;
    reading.negative = value < 0;
    return reading;
}

ScaleReading unstable()
{
    return weight(0, u"kg"_s, Stability::No);
}

ScaleReading overRange()
{
    ScaleReading reading;
    reading.overRange = true;
    return reading;
}

ScaleReading underRange()
{
    ScaleReading reading;
    reading.underRange = true;
    return reading;
}

ScaleReading refused(const QString &reason)
{
    ScaleReading reading;
    reading.reason = reason;
    return reading;
}

/// Leading blanks, then digits to the end of the field.
bool isDigitField(QByteArrayView field)
{
    const auto digits = std::find_if(field.begin(), field.end(), [](char byte) { return byte != ' '; });
    return std::all_of(digits, field.end(), [](char byte) { return byte >= '0' && byte <= '9'; });
}

// STX, three status bytes, six digits of weight, in the long form six of tare.
Recognised toledoP03(const ScaleFrame &frame)
{
    if (!isToledoP03(frame.body))
        return {};
    const int point = 2 - (frame.body[1] & 0x07);
    const int status = frame.body[2];
    const QByteArray digits = frame.body.mid(4, 6).trimmed();
    const double scale = std::pow(10.0, std::abs(point));
    const double value = point < 0 ? digits.toDouble() / scale : digits.toDouble() * scale;

    const bool negative = status & 0x02;
    ScaleReading reading = weight(negative ? -value : value, (status & 0x10) ? u"kg"_s : QString(),
        (status & 0x08) ? Stability::No : Stability::Yes);
    reading.negative = negative;
    reading.overRange = status & 0x04;
    reading.net = (status & 0x01) != 0;
    if (digits.isEmpty())
        reading.reason = u"A balança não enviou dígitos."_s;
    if (frame.check == ScaleFrame::Check::Wrong)
        return refused(u"Leitura da balança com erro de transmissão."_s);
    return reading;
}

// Five characters whose first says unstable, negative or over.
Recognised stateLetter(const QString &text)
{
    static const QRegularExpression form = whole(u"([INS])[INS0-9 ]{4}"_s);
    const auto match = form.match(text);
    if (!match.hasMatch())
        return {};
    if (match.captured(1) == u"I")
        return unstable();
    if (match.captured(1) == u"S")
        return overRange();
    ScaleReading reading = weight(0, u"kg"_s, Stability::Unknown);
    reading.negative = true;
    return reading;
}

// Five digits are grams; the frame says so by its length alone.
Recognised fiveDigits(const QString &text)
{
    static const QRegularExpression form = whole(u"[0-9]{5}"_s);
    if (!form.match(text).hasMatch())
        return {};
    return weight(text.toDouble() / 1000, u"kg"_s, Stability::Yes);
}

Recognised stxToEtx(const ScaleFrame &frame)
{
    if (!frame.beginsWithStx() || !frame.body.endsWith(ScaleFrame::etx))
        return {};
    const QString text = QString::fromLatin1(frame.body.mid(1, frame.body.size() - 2));
    if (const Recognised digits = fiveDigits(text))
        return digits;
    static const QRegularExpression form = whole(u" *"_s + numberWithPoint);
    if (form.match(text).hasMatch())
        return weight(figure(text.trimmed()), u"kg"_s, Stability::Unknown);
    return stateLetter(text);
}

// "?" and a status byte in place of the weight.
Recognised stxStatus(const ScaleFrame &frame)
{
    if (frame.body.size() != 3 || !frame.beginsWithStx() || frame.body[1] != '?')
        return {};
    const int status = frame.body[2];
    if (status & 0x02)
        return overRange();
    if (status & 0x04)
        return underRange();
    if (status & 0x01)
        return unstable();
    return refused(u"A balança não está pronta."_s);
}

// Seven places with a point. Fewer are a frame of another scale that lost a digit.
Recognised stxWeight(const ScaleFrame &frame)
{
    static const QRegularExpression form = whole(u"\\x02(?=.{7}N?$)( *%1)(N?)"_s.arg(numberWithPoint));
    const auto match = form.match(QString::fromLatin1(frame.body));
    if (!match.hasMatch())
        return {};
    ScaleReading reading = weight(figure(match.captured(1).trimmed()), u"kg"_s, Stability::Yes);
    reading.net = !match.captured(2).isEmpty();
    return reading;
}

// Six digits, with or without a status byte before them; whole kilograms.
Recognised stxDigits(const ScaleFrame &frame)
{
    if (!frame.beginsWithStx() || (frame.body.size() != 7 && frame.body.size() != 8))
        return {};
    const QByteArray digits = frame.body.right(6);
    if (!isDigitField(digits) || digits.trimmed().isEmpty())
        return {};
    Stability stability = Stability::Unknown;
    if (frame.body.size() == 8)
        stability = (frame.body[1] & 0x01) ? Stability::No : Stability::Yes;
    return weight(digits.trimmed().toDouble(), u"kg"_s, stability);
}

// "ST,GS,+011.120kg". The head is looked for, so that noise before it does no harm.
Recognised commaHeads(const ScaleFrame &frame)
{
    static const QRegularExpression form = whole(u".*(ST|US|OL|UL|QT),(.*)"_s);
    const auto head = form.match(QString::fromLatin1(frame.body));
    if (!head.hasMatch())
        return {};
    const QString state = head.captured(1);
    if (state == u"US")
        return unstable();
    if (state == u"OL")
        return overRange();
    if (state == u"UL")
        return underRange();
    if (state == u"QT")
        return refused(u"A balança está contando peças."_s);

    static const QRegularExpression rest = whole(u"(?:(GS|NT),)? *([+-]?) *(%1)?[ ,]*([A-Za-z%]*) *"_s.arg(number));
    const auto match = rest.match(head.captured(2));
    if (!match.hasMatch())
        return {};
    // Blanks in place of the digits: more than the scale can show.
    if (match.captured(3).isEmpty())
        return overRange();
    const double value = figure(match.captured(3));
    ScaleReading reading = weight(match.captured(2) == u"-" ? -value : value, match.captured(4), Stability::Yes);
    if (!match.captured(1).isEmpty())
        reading.net = match.captured(1) == u"NT";
    return reading;
}

// "S S     100.00 g" and its states.
Recognised wordHeads(const ScaleFrame &frame)
{
    static const QRegularExpression form = whole(u"S ([SDI+-])(?: +(-?) *(%1) *([A-Za-z%]*))? *"_s.arg(number));
    const auto match = form.match(QString::fromLatin1(frame.body));
    if (!match.hasMatch())
        return {};
    switch (match.captured(1).at(0).toLatin1()) {
    case 'I':
        return refused(u"A balança não está pronta."_s);
    case '+':
        return overRange();
    case '-':
        return underRange();
    case 'D':
        return unstable();
    default:
        break;
    }
    if (match.captured(3).isEmpty())
        return {};
    const double value = figure(match.captured(3));
    return weight(match.captured(2) == u"-" ? -value : value, match.captured(4), Stability::Yes);
}

// A letter behind the value: E stable, I and O not. A unit may lead.
Recognised letterBehind(const ScaleFrame &frame)
{
    static const QRegularExpression form = whole(u"(kg|g|t)? *(%1)([EIO])[A-Za-z_ ]{0,3}"_s.arg(number));
    const auto match = form.match(QString::fromLatin1(frame.body));
    if (!match.hasMatch())
        return {};
    return weight(figure(match.captured(2)), match.captured(1).isEmpty() ? u"kg"_s : match.captured(1),
        match.captured(3) == u"E" ? Stability::Yes : Stability::No);
}

// A bit field, "@" among its values, then six or seven places with a point. The letters that mean unstable, negative or
// over on other scales are left out: what this one would mean by them is not known.
Recognised bitFieldBefore(const ScaleFrame &frame)
{
    static const QRegularExpression form = whole(u"[@-HJ-MP-RT-_](?=.{6,7}$)(%1)"_s.arg(numberWithPoint));
    const auto match = form.match(QString::fromLatin1(frame.body));
    if (!match.hasMatch())
        return {};
    return weight(figure(match.captured(1)), u"kg"_s, Stability::Unknown);
}

Recognised fiveBare(const ScaleFrame &frame)
{
    const QString text = QString::fromLatin1(frame.body);
    if (frame.fixedLength)
        if (const Recognised digits = fiveDigits(text))
            return digits;
    return stateLetter(text);
}

Recognised plainNumber(const ScaleFrame &frame)
{
    static const QRegularExpression form = whole(u" *([+-]?) *(%1) *([A-Za-z%]*) *"_s.arg(number));
    const auto match = form.match(QString::fromLatin1(frame.body));
    if (!match.hasMatch())
        return {};
    const double value = figure(match.captured(2));
    return weight(match.captured(1) == u"-" ? -value : value, match.captured(3).isEmpty() ? u"kg"_s : match.captured(3),
        Stability::Unknown);
}

// The order matters: from the forms that say most about themselves to the one that fits any number.
constexpr std::array recognisers{toledoP03, stxToEtx, stxStatus, stxWeight, stxDigits, commaHeads, wordHeads,
    letterBehind, bitFieldBefore, fiveBare, plainNumber};

double kilogramsPer(const QString &unit)
{
    if (unit == u"kg")
        return 1;
    if (unit == u"g")
        return 0.001;
    return unit == u"t" ? 1000 : 0;
}

/// Gives the kilograms of a weight, or the reason why it is none.
void judge(ScaleReading &reading)
{
    const double factor = kilogramsPer(reading.unit);
    const double kg = std::round(reading.value * factor * 1000) / 1000;
    if (reading.overRange)
        reading.reason = u"Peso acima da capacidade da balança."_s;
    else if (reading.underRange)
        reading.reason = u"Balança abaixo do zero."_s;
    else if (reading.negative)
        reading.reason = u"Peso negativo na balança."_s;
    else if (reading.stability == Stability::No)
        reading.reason = u"Peso instável na balança."_s;
    else if (reading.reason.isEmpty() && factor == 0)
        reading.reason = u"Unidade de peso da balança desconhecida."_s;
    else if (reading.reason.isEmpty() && kg <= 0)
        reading.reason = u"Balança sem peso."_s;
    reading.kg = reading.reason.isEmpty() ? kg : 0;
}

} // namespace

bool isToledoP03(QByteArrayView body)
{
    if ((body.size() != 10 && body.size() != 16) || body[0] != ScaleFrame::stx)
        return false;
    // The increment is 1, 2 or 5, never none.
    return (body[1] & 0x18) != 0 && isDigitField(body.sliced(4, 6)) && isDigitField(body.sliced(10));
}

std::optional<ScaleReading> recogniseScaleFrame(const ScaleFrame &frame)
{
    for (const auto recognise : recognisers) {
        // What has no end may be the beginning of a longer figure; only this form is told by its length.
        if (frame.fixedLength && recognise != fiveBare)
            continue;
        if (Recognised reading = recognise(frame)) {
            judge(*reading);
            return reading;
        }
    }
    return {};
}
