// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/errors.h"
#include "module/host_services/sqltext.h"

#include <QLocale>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

class TestSqlText : public QObject
{
    Q_OBJECT

private slots:
    void aTextIsQuotedAndItsQuotesDoubled_data();
    void aTextIsQuotedAndItsQuotesDoubled();
    void aNumberHasAPointUnderEveryLocale();
    void aNumberReadsBackAsItself_data();
    void aNumberReadsBackAsItself();
    void whatIsNoNumberIsRefused();
    void onlyWholeLiteralsAreLiterals_data();
    void onlyWholeLiteralsAreLiterals();
    void onlyPlainNamesAreNames_data();
    void onlyPlainNamesAreNames();
    void quotedSeparatorsDoNotSplit_data();
    void quotedSeparatorsDoNotSplit();
    void bracedNamesBecomeTables_data();
    void bracedNamesBecomeTables();
    void theAliasGoesWhereColumnsAreSet_data();
    void theAliasGoesWhereColumnsAreSet();
    void otherStatementsStayAsTheyAre_data();
    void otherStatementsStayAsTheyAre();
};

void TestSqlText::aTextIsQuotedAndItsQuotesDoubled_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("literal");
    QTest::newRow("plain") << u"M0001"_s << u"'M0001'"_s;
    QTest::newRow("empty") << QString() << u"''"_s;
    QTest::newRow("one quote") << u"D'Ávila"_s << u"'D''Ávila'"_s;
    QTest::newRow("only a quote") << u"'"_s << u"''''"_s;
    QTest::newRow("two quotes") << u"''"_s << u"''''''"_s;
    QTest::newRow("an attack") << u"x'; DROP TABLE MATERIAL_001; --"_s << u"'x''; DROP TABLE MATERIAL_001; --'"_s;
    QTest::newRow("backslash and percent") << u"50% \\ 1"_s << u"'50% \\ 1'"_s;
    QTest::newRow("place holders of the program") << u"%1 {NOTA} ?"_s << u"'%1 {NOTA} ?'"_s;
    // What no engine can hold is left out: NUL, and halves of characters.
    const QString yarn = QString::fromUtf8("🧶");
    QTest::newRow("NUL") << u"a"_s + QChar(0) + u"'b"_s << u"'a''b'"_s;
    QTest::newRow("whole character") << yarn + u"a"_s << u"'"_s + yarn + u"a'"_s;
    QTest::newRow("cut at its end") << yarn + yarn.left(1) << u"'"_s + yarn + u"'"_s;
    QTest::newRow("cut at its beginning") << yarn.right(1) + u"a"_s << u"'a'"_s;
    QTest::newRow("the wrong way round") << yarn.right(1) + yarn.left(1) << u"''"_s;
}

void TestSqlText::aTextIsQuotedAndItsQuotesDoubled()
{
    QFETCH(QString, value);
    QTEST(SqlText::quoted(value), "literal");
    QVERIFY(SqlText::isLiteral(SqlText::quoted(value)));
}

void TestSqlText::aNumberHasAPointUnderEveryLocale()
{
    QLocale::setDefault(QLocale(QLocale::Portuguese, QLocale::Brazil));
    QCOMPARE(SqlText::number(1234.5), u"1234.5"_s);
    QCOMPARE(SqlText::number(-0.001), u"-0.001"_s);
    QLocale::setDefault(QLocale::c());
}

void TestSqlText::aNumberReadsBackAsItself_data()
{
    QTest::addColumn<double>("value");
    QTest::newRow("zero") << 0.0;
    QTest::newRow("whole") << 20.0;
    QTest::newRow("three decimals") << 3.333;
    QTest::newRow("a sum that is not exact") << 0.1 + 0.2;
    QTest::newRow("a third") << 1.0 / 3.0;
    QTest::newRow("large") << 123456789012.345;
    QTest::newRow("very small") << 0.0000001;
}

void TestSqlText::aNumberReadsBackAsItself()
{
    QFETCH(double, value);
    const QString text = SqlText::number(value);
    QCOMPARE(text.toDouble(), value);
    QVERIFY2(!text.contains(u'e'), qPrintable(text));
}

void TestSqlText::whatIsNoNumberIsRefused()
{
    QVERIFY_THROWS_EXCEPTION(EProgramming, SqlText::number(std::numeric_limits<double>::infinity()));
    QVERIFY_THROWS_EXCEPTION(EProgramming, SqlText::number(std::numeric_limits<double>::quiet_NaN()));
}

void TestSqlText::onlyWholeLiteralsAreLiterals_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("literal");
    QTest::newRow("quoted") << u"'a'"_s << true;
    QTest::newRow("quoted quote") << u"'it''s'"_s << true;
    QTest::newRow("empty literal") << u"''"_s << true;
    QTest::newRow("unquoted text") << u"a"_s << false;
    QTest::newRow("open quote") << u"'a"_s << false;
    QTest::newRow("single quote inside") << u"'it's'"_s << false;
    QTest::newRow("two literals") << u"'a' 'b'"_s << false;
    QTest::newRow("a condition behind it") << u"'a' OR 1=1"_s << false;
    QTest::newRow("a line behind it") << u"'a'\n"_s << false;
    QTest::newRow("nothing") << QString() << false;
}

void TestSqlText::onlyWholeLiteralsAreLiterals()
{
    QFETCH(QString, text);
    QTEST(SqlText::isLiteral(text), "literal");
}

void TestSqlText::onlyPlainNamesAreNames_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("name");
    QTest::newRow("upper case") << u"OF_MALHA"_s << true;
    QTest::newRow("lower case") << u"codcli"_s << true;
    QTest::newRow("with digits") << u"PEDIDO3"_s << true;
    QTest::newRow("digit first") << u"3PEDIDO"_s << false;
    QTest::newRow("blank") << u"OF MALHA"_s << false;
    QTest::newRow("quote") << u"A'B"_s << false;
    QTest::newRow("statement") << u"A; DROP"_s << false;
    QTest::newRow("accent") << u"AÇÃO"_s << false;
    QTest::newRow("line end") << u"A\n"_s << false;
    QTest::newRow("empty") << QString() << false;
}

void TestSqlText::onlyPlainNamesAreNames()
{
    QFETCH(QString, text);
    QTEST(SqlText::isName(text), "name");
}

void TestSqlText::quotedSeparatorsDoNotSplit_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("parts");
    QTest::newRow("two") << u"'a';'b'"_s << QStringList{u"'a'"_s, u"'b'"_s};
    QTest::newRow("blanks around") << u" CODIGO ; MILIMETROS "_s << QStringList{u"CODIGO"_s, u"MILIMETROS"_s};
    QTest::newRow("separator inside") << u"'a;b';'c'"_s << QStringList{u"'a;b'"_s, u"'c'"_s};
    QTest::newRow("quote and separator inside") << u"'it''s;';'c'"_s << QStringList{u"'it''s;'"_s, u"'c'"_s};
    QTest::newRow("blanks inside stay") << u"' a '; ' b'"_s << QStringList{u"' a '"_s, u"' b'"_s};
    QTest::newRow("empty part") << u"'a';;'b'"_s << QStringList{u"'a'"_s, QString(), u"'b'"_s};
    QTest::newRow("nothing") << QString() << QStringList{QString()};
}

void TestSqlText::quotedSeparatorsDoNotSplit()
{
    QFETCH(QString, text);
    QTEST(SqlText::split(text, u';'), "parts");
}

void TestSqlText::bracedNamesBecomeTables_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("expected");
    QTest::newRow("with alias") << u"FROM {NOTA} NOTA"_s << u"FROM NOTA_001 NOTA"_s;
    QTest::newRow("lower case") << u"FROM {nota}"_s << u"FROM nota_001"_s;
    QTest::newRow("several") << u"{A},{B} WHERE {A}.X = 1"_s << u"A_001,B_001 WHERE A_001.X = 1"_s;
    QTest::newRow("a value in braces") << u"SELECT '{NOTA}' FROM {NOTA}"_s << u"SELECT '{NOTA}' FROM NOTA_001"_s;
    QTest::newRow("quote and braces in a value") << u"'it''s {X}' {X}"_s << u"'it''s {X}' X_001"_s;
    QTest::newRow("between two values") << u"'{A}'{B}'{C}'"_s << u"'{A}'B_001'{C}'"_s;
    QTest::newRow("no name in braces") << u"{} { A } {A-B} {1A}"_s << u"{} { A } {A-B} {1A}"_s;
    QTest::newRow("open brace") << u"{A FROM {B}"_s << u"{A FROM B_001"_s;
}

void TestSqlText::bracedNamesBecomeTables()
{
    QFETCH(QString, statement);
    QTEST(SqlText::withTables(statement, [](const QString &name) { return name + u"_001"_s; }), "expected");
}

void TestSqlText::theAliasGoesWhereColumnsAreSet_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("expected");
    QTest::newRow("one column") << u"UPDATE NOTAITEN_001 NOTAITEN SET NOTAITEN.TIPO = 'S' WHERE NOTAITEN.FATURA = '1'"_s
                                << u"UPDATE NOTAITEN_001 NOTAITEN SET TIPO = 'S' WHERE NOTAITEN.FATURA = '1'"_s;
    QTest::newRow("several columns, any case") << u"update T A set a.B = 1, A.C = a.C + 1,A.D = 'x' where A.B = 2"_s
                                               << u"update T A set B = 1, C = a.C + 1,D = 'x' where A.B = 2"_s;
    QTest::newRow("over lines") << u"UPDATE T A\nSET\n  A.B = 1,\n  A.C = 2\nWHERE\n  A.B = 3"_s
                                << u"UPDATE T A\nSET\n  B = 1,\n  C = 2\nWHERE\n  A.B = 3"_s;
    QTest::newRow("without condition") << u"UPDATE T A SET A.B = A.B * 2"_s << u"UPDATE T A SET B = A.B * 2"_s;
    QTest::newRow("column named like the alias") << u"UPDATE MAQUINA_001 MAQUINA SET MAQUINA.MAQUINA = '1'"_s
                                                 << u"UPDATE MAQUINA_001 MAQUINA SET MAQUINA = '1'"_s;
    QTest::newRow("the same words in a value")
        << u"UPDATE T A SET A.B = 'SET A.B = 1, A.C = 2 WHERE A.D', A.C = 1 WHERE A.B = ', A.C = 3'"_s
        << u"UPDATE T A SET B = 'SET A.B = 1, A.C = 2 WHERE A.D', C = 1 WHERE A.B = ', A.C = 3'"_s;
    QTest::newRow("AS before the alias") << u"UPDATE T AS A SET A.B = 1"_s << u"UPDATE T AS A SET B = 1"_s;
    QTest::newRow("a select inside") << u"UPDATE T A SET A.B = (SELECT MAX(X) FROM U WHERE U.C = A.C), A.D = 1"_s
                                     << u"UPDATE T A SET B = (SELECT MAX(X) FROM U WHERE U.C = A.C), D = 1"_s;
}

void TestSqlText::theAliasGoesWhereColumnsAreSet()
{
    QFETCH(QString, statement);
    QTEST(SqlText::withoutAliasInSet(statement), "expected");
}

void TestSqlText::otherStatementsStayAsTheyAre_data()
{
    QTest::addColumn<QString>("statement");
    QTest::newRow("no alias") << u"UPDATE T SET B = 1, C = 2 WHERE B = 3"_s;
    QTest::newRow("select") << u"SELECT A.B FROM T A WHERE A.C = 1, A.D = 2"_s;
    QTest::newRow("insert") << u"INSERT INTO T (B) VALUES ('UPDATE T A SET A.B = 1')"_s;
    QTest::newRow("condition") << u"UPDATE T A SET B = 1 WHERE A.C IN (1, 2) AND A.D = 1"_s;
}

void TestSqlText::otherStatementsStayAsTheyAre()
{
    QFETCH(QString, statement);
    QCOMPARE(SqlText::withoutAliasInSet(statement), statement);
}

QTEST_APPLESS_MAIN(TestSqlText)
#include "tst_sqltext.moc"
