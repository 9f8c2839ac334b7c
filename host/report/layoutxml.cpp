// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/report/layoutxml.h"

#include "module/host_services/errors.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

LayoutXml::LayoutXml(QIODevice &device, const QString &file)
    : m_xml(&device)
    , m_file(file)
{
}

void LayoutXml::fail(const QString &mistake) const
{
    failAt(line(), mistake);
}

void LayoutXml::failAt(int line, const QString &mistake) const
{
    throw EQen(u"%1, linha %2: %3."_s.arg(QFileInfo(m_file).fileName()).arg(line).arg(mistake),
        m_xml.hasError() ? m_file + u": "_s + m_xml.errorString() : m_file);
}

void LayoutXml::failMalformed() const
{
    if (m_open.isEmpty())
        fail(u"XML malformado; esperado um documento com o elemento <layout>"_s);
    fail(u"XML malformado; esperado o fim de <%1>, aberto na linha %2"_s.arg(m_open.last().first)
             .arg(m_open.last().second));
}

QXmlStreamReader::TokenType LayoutXml::next()
{
    const QXmlStreamReader::TokenType token = m_xml.readNext();
    if (m_xml.hasError())
        failMalformed();
    if (token == QXmlStreamReader::StartElement) {
        m_open.append({m_xml.name().toString(), line()});
        m_attributes = m_xml.attributes();
    } else if (token == QXmlStreamReader::EndElement) {
        m_open.removeLast();
    }
    return token;
}

void LayoutXml::failOnText() const
{
    if (m_xml.isWhitespace())
        return;
    const QString text = m_xml.text().toString();
    const QString fromText = text.mid(text.indexOf(text.trimmed()));
    failAt(line() - int(fromText.count(u'\n')),
        u"texto \"%1\" fora do lugar; esperado um elemento"_s.arg(fromText.trimmed().left(20)));
}

void LayoutXml::root(const QString &element)
{
    while (next() != QXmlStreamReader::StartElement) { }
    if (m_xml.name() != element)
        fail(u"elemento <%1> desconhecido; esperado <%2>"_s.arg(m_xml.name(), element));
}

void LayoutXml::children(const std::vector<Child> &known)
{
    const QString parent = element();
    QStringList seen;
    for (;;) {
        const QXmlStreamReader::TokenType token = next();
        if (token == QXmlStreamReader::EndElement)
            return;
        if (token == QXmlStreamReader::Characters)
            failOnText();
        if (token != QXmlStreamReader::StartElement)
            continue;
        const QString name = element();
        const auto child =
            std::find_if(known.begin(), known.end(), [&](const Child &each) { return each.element == name; });
        if (child == known.end()) {
            QStringList names;
            for (const Child &each : known)
                names.append(each.element);
            fail(u"elemento <%1> desconhecido em <%2>; esperado %3"_s.arg(
                name, parent, names.isEmpty() ? u"nenhum"_s : names.join(u", "_s)));
        }
        if (child->once && seen.contains(name))
            fail(u"<%1> repetido; esperado um só em <%2>"_s.arg(name, parent));
        seen.append(name);
        child->read();
    }
}

QChar LayoutXml::character(bool isLine)
{
    const QString known = isLine ? u"char"_s : u"br"_s;
    if (element() != known)
        fail(u"elemento <%1> desconhecido dentro de um texto; esperado %2"_s.arg(element(), known));
    QChar result = u'\n';
    LayoutAttributes attributes(*this);
    if (isLine) {
        attributes.needed(u"code"_s);
        result = QChar(char16_t(attributes.whole(u"code"_s, 0, 1, 255)));
    }
    attributes.done();
    noChildren();
    return result;
}

QString LayoutXml::text(bool asItStands)
{
    static const QRegularExpression lineBreak(u"[ \\t]*\\r?\\n[ \\t\\r\\n]*"_s);
    QString result;
    QString piece;
    const auto endPiece = [&] {
        result += asItStands ? piece : piece.replace(lineBreak, u" "_s).trimmed();
        piece.clear();
    };
    for (;;) {
        const QXmlStreamReader::TokenType token = next();
        if (token == QXmlStreamReader::EndElement)
            break;
        if (token == QXmlStreamReader::Characters)
            piece += m_xml.text();
        if (token != QXmlStreamReader::StartElement)
            continue;
        endPiece();
        result += character(asItStands);
    }
    endPiece();
    return result;
}

void LayoutXml::end()
{
    while (!m_xml.atEnd())
        next();
}

LayoutAttributes::LayoutAttributes(const LayoutXml &xml)
    : m_xml(xml)
    , m_attributes(xml.attributes())
{
}

void LayoutAttributes::failExpected(const QString &name, const QString &expected) const
{
    m_xml.fail(
        u"%1=\"%2\" em <%3>; esperado %4"_s.arg(name, m_attributes.value(name).toString(), m_xml.element(), expected));
}

bool LayoutAttributes::has(const QString &name)
{
    if (!m_known.contains(name))
        m_known.append(name);
    return m_attributes.hasAttribute(name);
}

QString LayoutAttributes::text(const QString &name)
{
    return has(name) ? m_attributes.value(name).toString() : QString();
}

QString LayoutAttributes::needed(const QString &name)
{
    const QString found = text(name).trimmed();
    if (found.isEmpty())
        m_xml.fail(u"falta em <%1> o atributo %2"_s.arg(m_xml.element(), name));
    return found;
}

double LayoutAttributes::number(const QString &name, double otherwise, double least)
{
    if (!has(name))
        return otherwise;
    bool ok = false;
    const double value = text(name).toDouble(&ok);
    if (!ok || !std::isfinite(value))
        failExpected(name, u"um número, com ponto decimal"_s);
    if (value < least)
        failExpected(name, u"um número não menor que %1"_s.arg(least));
    return value;
}

double LayoutAttributes::neededNumber(const QString &name)
{
    needed(name);
    return number(name, 0);
}

int LayoutAttributes::whole(const QString &name, int otherwise, int least, int most)
{
    if (!has(name))
        return otherwise;
    bool ok = false;
    const int value = text(name).toInt(&ok);
    if (!ok || value < least || value > most)
        failExpected(name, u"um número inteiro de %1 a %2"_s.arg(least).arg(most));
    return value;
}

bool LayoutAttributes::yes(const QString &name, bool otherwise)
{
    return word(name, {u"no"_s, u"yes"_s}, otherwise ? 1 : 0) == 1;
}

int LayoutAttributes::word(const QString &name, const QStringList &words, int otherwise)
{
    if (!has(name))
        return otherwise;
    const qsizetype found = words.indexOf(text(name));
    if (found < 0)
        failExpected(name, words.join(u", "_s));
    return int(found);
}

void LayoutAttributes::done() const
{
    for (const QXmlStreamAttribute &attribute : m_attributes) {
        if (!m_known.contains(attribute.name().toString())) {
            m_xml.fail(u"atributo %1 desconhecido em <%2>; conhecidos: %3"_s.arg(
                attribute.name(), m_xml.element(), m_known.isEmpty() ? u"nenhum"_s : m_known.join(u", "_s)));
        }
    }
}
