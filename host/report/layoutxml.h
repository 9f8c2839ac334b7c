// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QStringList>
#include <QXmlStreamReader>

#include <functional>
#include <vector>

class QIODevice;

/// The XML of a layout, element by element. All mistakes are told by file and line.
class LayoutXml
{
public:
    struct Child
    {
        QString element;
        std::function<void()> read; ///< reads the element to its end
        bool once = false;
    };

    LayoutXml(QIODevice &device, const QString &file);

    /// Throws EQen.
    [[noreturn]] void fail(const QString &mistake) const;
    [[noreturn]] void failAt(int line, const QString &mistake) const;
    int line() const { return int(m_xml.lineNumber()); }
    QString element() const { return m_open.isEmpty() ? QString() : m_open.last().first; }
    const QXmlStreamAttributes &attributes() const { return m_attributes; }

    /// The outermost element must be that one.
    void root(const QString &element);
    /// Reads what is left of the current element: those children and nothing else.
    void children(const std::vector<Child> &known);
    void noChildren() { children({}); }
    /// Reads the rest of the current element as text. As it stands, for printers of characters: <char code="27"/> gives
    /// what XML cannot hold. Else line breaks of the file and the blanks around them become one blank, and <br/>
    /// stands for a line break.
    QString text(bool asItStands);
    /// After the root: nothing may follow.
    void end();

private:
    QXmlStreamReader::TokenType next();
    QChar character(bool isLine);
    [[noreturn]] void failMalformed() const;
    void failOnText() const;

    QXmlStreamReader m_xml;
    QXmlStreamAttributes m_attributes; ///< of the current element
    QString m_file;
    QVector<std::pair<QString, int>> m_open; ///< elements and their lines
};

/// The attributes of the current element. All that an element may have are asked for; then done() refuses the others.
class LayoutAttributes
{
public:
    explicit LayoutAttributes(const LayoutXml &xml);

    bool has(const QString &name);
    QString text(const QString &name); ///< empty when it is missing
    QString needed(const QString &name);
    double number(const QString &name, double otherwise, double least = 0);
    double neededNumber(const QString &name);
    int whole(const QString &name, int otherwise, int least, int most);
    bool yes(const QString &name, bool otherwise = false);
    /// One of the words; its number, or `otherwise` when the attribute is missing.
    int word(const QString &name, const QStringList &words, int otherwise);
    void done() const;

    [[noreturn]] void failExpected(const QString &name, const QString &expected) const;

private:
    const LayoutXml &m_xml;
    QXmlStreamAttributes m_attributes;
    QStringList m_known;
};
