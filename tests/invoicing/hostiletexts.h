// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTest>

/// Texts that a careless statement would trip over, as rows of a test.
namespace HostileTexts {

using namespace Qt::StringLiterals;

/// For fields that hold any text; the column is "text".
inline void addTexts()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("quotes") << u"D'Água \"x\"''"_s;
    QTest::newRow("statement") << u"'); DROP TABLE X;--"_s;
    QTest::newRow("per cent") << u"%1 %s 100%%"_s;
    QTest::newRow("braces") << u"{NFT_ITEN} {x"_s;
    QTest::newRow("commas") << u"a,b;c,'d',"_s;
    QTest::newRow("backslash") << u"\\' \\n \\\\"_s;
    QTest::newRow("emoji") << QString::fromUtf8("🧶 Fio azul");
}

/// For fields of codes, up to five characters; the column is "code".
inline void addCodes()
{
    QTest::addColumn<QString>("code");
    QTest::newRow("quote") << u"a'b"_s;
    QTest::newRow("always true") << u"'OR'1"_s;
    QTest::newRow("wildcard") << u"%"_s;
    QTest::newRow("comma") << u"1,'2"_s;
    QTest::newRow("semicolon") << u";--"_s;
    QTest::newRow("braces") << u"{NOTA"_s;
    QTest::newRow("backslash") << u"\\'"_s;
    QTest::newRow("emoji") << QString::fromUtf8("🧶");
}

} // namespace HostileTexts
