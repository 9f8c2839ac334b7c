// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/printerencoding.h"

#include "module/host_services/errors.h"

#include <QtEndian>

#include <cerrno>
#include <iconv.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostBytesPerCharacter = 4;

/// The letter without its accent, and typographic signs as a typewriter has them.
QChar plain(QChar character)
{
    switch (character.unicode()) {
    case 0x2018:
    case 0x2019:
        return u'\'';
    case 0x201C:
    case 0x201D:
        return u'"';
    case 0x2010:
    case 0x2011:
    case 0x2013:
    case 0x2014:
    case 0x2212:
        return u'-';
    case 0x2022:
        return u'*';
    default:
        break;
    }
    const QString parts = QString(character).normalized(QString::NormalizationForm_KD);
    const QChar first = parts.isEmpty() ? character : parts.front();
    return first.unicode() >= u' ' && first.unicode() < 0x7F ? first : u'?';
}

} // namespace

PrinterEncoding::PrinterEncoding(const QString &name)
    : m_converter(iconv_open(name.isEmpty() ? "CP850" : name.toLatin1().constData(),
        Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? "UTF-16LE" : "UTF-16BE"))
{
    if (m_converter == iconv_t(-1))
        throw EQen(u"A codificação \"%1\" não é conhecida."_s.arg(name), qt_error_string(errno));
}

PrinterEncoding::~PrinterEncoding()
{
    iconv_close(m_converter);
}

bool PrinterEncoding::convert(QStringView text, QByteArray &bytes) const
{
    iconv(m_converter, nullptr, nullptr, nullptr, nullptr);
    QByteArray converted(text.size() * mostBytesPerCharacter, Qt::Uninitialized);
    char *from = const_cast<char *>(reinterpret_cast<const char *>(text.utf16())); // only read
    size_t fromLeft = size_t(text.size()) * sizeof(char16_t);
    char *to = converted.data();
    size_t toLeft = size_t(converted.size());
    if (iconv(m_converter, &from, &fromLeft, &to, &toLeft) != 0)
        return false;
    bytes.append(converted.constData(), converted.size() - qsizetype(toLeft));
    return true;
}

QByteArray PrinterEncoding::encoded(const QString &text) const
{
    // A letter and its accent may come as two characters, which no printer has.
    const QString whole = text.normalized(QString::NormalizationForm_C);
    QByteArray bytes;
    if (convert(whole, bytes))
        return bytes;
    bytes.clear();
    for (qsizetype i = 0; i < whole.size(); ++i) {
        const bool isPair = whole[i].isHighSurrogate() && i + 1 < whole.size();
        if (!convert(QStringView(whole).sliced(i, isPair ? 2 : 1), bytes))
            bytes.append(isPair ? '?' : plain(whole[i]).toLatin1());
        i += isPair ? 1 : 0;
    }
    return bytes;
}
