// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/report/accumulator.h"
#include "host/report/expression.h"
#include "module/host_services/errors.h"

#include <QDateTime>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// A row of the write-off list.
class Row : public ExpressionScope
{
public:
    QVariant value(const QString &name) const override
    {
        if (!values.contains(name))
            throw EQen(u"sem "_s + name);
        ++reads;
        return values.value(name);
    }
    QVariant call(const QString &function, const QVariantList &arguments) const override
    {
        return function + QString::number(arguments.size());
    }
    QVariant aggregate(int number) const override { return number * 100.0; }

    QVariantMap values{{u"QTDE"_s, 99.95}, {u"KG_TOTAL"_s, 100}, {u"NOME"_s, u"Malharia Açucena"_s},
        {u"QRYOF.NUM_OF"_s, u"000123"_s}, {u"DATA"_s, QDate(2026, 3, 9)}, {u"ENTREGA"_s, QDate(2026, 3, 19)},
        {u"VAZIO"_s, QVariant()}, {u"HORA"_s, QTime(14, 5, 9)}};
    mutable int reads = 0;
};

QString evaluated(const QString &text)
{
    return TextTemplate::parse(text).evaluate(Row());
}

} // namespace

class tst_Expression : public QObject
{
    Q_OBJECT

private slots:
    void valuesAreWorkedOut_data();
    void valuesAreWorkedOut();
    void textsShowValuesTheBrazilianWay_data();
    void textsShowValuesTheBrazilianWay();
    void mistakesTellTheirPlace_data();
    void mistakesTellTheirPlace();
    void mistakesInATextAreCountedWithinTheWholeText();
    void aConditionIsTrueOrFalse();
    void theOtherBranchIsNotEvaluated();
    void namesAndForeignFunctionsAreTold();
    void aggregatesAreNumberedThroughTheLayout();
    void tenThousandRollsAddUpToTheGram();
    void aggregatesLeaveNullOut();
};

void tst_Expression::valuesAreWorkedOut_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("binds") << u"2 + 3 * 4 - 6 / 2"_s << QVariant(11.0);
    QTest::newRow("parentheses") << u"(2 + 3) * 4"_s << QVariant(20.0);
    QTest::newRow("left to right") << u"10 - 3 - 2"_s << QVariant(5.0);
    QTest::newRow("sign") << u"-QTDE + 100"_s << QVariant(0.05);
    QTest::newRow("no binary rest") << u"KG_TOTAL - QTDE"_s << QVariant(0.05);
    QTest::newRow("a difference is comparable") << u"KG_TOTAL - QTDE = 0.05"_s << QVariant(true);
    QTest::newRow("null in a sum") << u"VAZIO + 5"_s << QVariant(5.0);
    QTest::newRow("null in a join") << u"'a' & VAZIO & 'b'"_s << QVariant(u"ab"_s);
    QTest::newRow("division by 0") << u"1 / 0"_s << QVariant();
    QTest::newRow("division by null") << u"1 / VAZIO"_s << QVariant();
    QTest::newRow("quote") << u"'d''água'"_s << QVariant(u"d'água"_s);
    QTest::newRow("names in any case") << u"kg_total"_s << QVariant(100);
    QTest::newRow("and before or") << u"1 = 1 OR 1 = 2 AND 1 = 3"_s << QVariant(true);
    QTest::newRow("not") << u"not (1 = 2)"_s << QVariant(true);
    QTest::newRow("joined, then compared") << u"'a' & 1 = 'a1'"_s << QVariant(true);
    QTest::newRow("text number beside number") << u"'012' = 12"_s << QVariant(true);
    QTest::newRow("texts") << u"'012' = '12'"_s << QVariant(false);
    QTest::newRow("date beside text") << u"DATA = '09/03/2026'"_s << QVariant(true);
    QTest::newRow("dates") << u"DATA < ENTREGA"_s << QVariant(true);
    QTest::newRow("days between") << u"ENTREGA - DATA"_s << QVariant(10);
    QTest::newRow("empty null") << u"EMPTY(VAZIO)"_s << QVariant(true);
    QTest::newRow("empty blanks") << u"EMPTY('  ')"_s << QVariant(true);
    QTest::newRow("zero is not empty") << u"EMPTY(0)"_s << QVariant(false);
    QTest::newRow("round half") << u"ROUND(2.675; 2)"_s << QVariant(2.68);
    QTest::newRow("round null") << u"ROUND(VAZIO; 2)"_s << QVariant();
    QTest::newRow("trunc") << u"TRUNC(-2.9)"_s << QVariant(-2.0);
    QTest::newRow("abs") << u"ABS(-2.5)"_s << QVariant(2.5);
    QTest::newRow("left") << u"LEFT('abcdef'; 3)"_s << QVariant(u"abc"_s);
    QTest::newRow("right") << u"RIGHT('abcdef'; 2)"_s << QVariant(u"ef"_s);
    QTest::newRow("mid") << u"MID('abcdef'; 2; 3)"_s << QVariant(u"bcd"_s);
    QTest::newRow("upper") << u"UPPER('fio açaí')"_s << QVariant(u"FIO AÇAÍ"_s);
    QTest::newRow("pad") << u"PAD('ab'; 4) & '|'"_s << QVariant(u"ab  |"_s);
    QTest::newRow("pad cuts") << u"PAD('abcdef'; 4)"_s << QVariant(u"abcd"_s);
    QTest::newRow("padleft") << u"PADLEFT(12; 5; '0')"_s << QVariant(u"00012"_s);
    QTest::newRow("padleft never cuts a number") << u"PADLEFT(123456; 4)"_s << QVariant(u"****"_s);
    QTest::newRow("center") << u"CENTER('ab'; 6; '-')"_s << QVariant(u"--ab--"_s);
    QTest::newRow("repeat") << u"REPEAT('-='; 3)"_s << QVariant(u"-=-=-="_s);
    QTest::newRow("replace") << u"REPLACE('a/b/c'; '/'; '-')"_s << QVariant(u"a-b-c"_s);
    QTest::newRow("len") << u"LEN('maçã')"_s << QVariant(4);
    QTest::newRow("format") << u"FORMAT(1234.5; ',0.00')"_s << QVariant(u"1.234,50"_s);
    QTest::newRow("if without else") << u"IF(1 = 2; 'a')"_s << QVariant();
    QTest::newRow("foreign") << u"ZeroE(1; 'x')"_s << QVariant(u"ZEROE2"_s);
}

void tst_Expression::valuesAreWorkedOut()
{
    QFETCH(QString, expression);
    QFETCH(QVariant, value);
    QCOMPARE(Expression::parse(expression).evaluate(Row()), value);
}

void tst_Expression::textsShowValuesTheBrazilianWay_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::newRow("plain") << u"Ordem de fabricação"_s << u"Ordem de fabricação"_s;
    QTest::newRow("field") << u"OF {qryOF.NUM_OF} de {NOME}"_s << u"OF 000123 de Malharia Açucena"_s;
    QTest::newRow("mask") << u"{QTDE * 20:,0.00} kg"_s << u"1.999,00 kg"_s;
    QTest::newRow("number without mask") << u"{QTDE}"_s << u"99,95"_s;
    QTest::newRow("integer") << u"{KG_TOTAL}"_s << u"100"_s;
    QTest::newRow("date") << u"{DATA}"_s << u"09/03/2026"_s;
    QTest::newRow("date mask") << u"{DATA:dd/mm/yy}"_s << u"09/03/26"_s;
    QTest::newRow("time") << u"{HORA}"_s << u"14:05:09"_s;
    QTest::newRow("minutes, not months") << u"{HORA:hh:mm}"_s << u"14:05"_s;
    QTest::newRow("null") << u"[{VAZIO:,0.00}]"_s << u"[]"_s;
    QTest::newRow("brace") << u"{{x} {KG_TOTAL}"_s << u"{x} 100"_s;
    QTest::newRow("brace and colon in quotes") << u"{'a}b:c'}"_s << u"a}b:c"_s;
    QTest::newRow("yes and no") << u"{QTDE < 100}/{QTDE > 100}"_s << u"Sim/Não"_s;
    QTest::newRow("text with a number mask") << u"{'1234,5':,0.00}"_s << u"1.234,50"_s;
    QTest::newRow("no number") << u"{NOME:,0.00}"_s << u"Malharia Açucena"_s;
}

void tst_Expression::textsShowValuesTheBrazilianWay()
{
    QFETCH(QString, text);
    QFETCH(QString, shown);
    QCOMPARE(evaluated(text), shown);
}

void tst_Expression::mistakesTellTheirPlace_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("expected");
    QTest::newRow("nothing") << u""_s << 0 << u"um valor"_s;
    QTest::newRow("after plus") << u"QTDE +"_s << 6 << u"um valor depois de \"+\""_s;
    QTest::newRow("parenthesis") << u"(QTDE + 1"_s << 9 << u"\")\""_s;
    QTest::newRow("two values") << u"QTDE ROLO"_s << 5 << u"um operador ou o fim da expressão"_s;
    QTest::newRow("quote") << u"QTDE & 'abc"_s << 7 << u"a aspa que fecha o texto"_s;
    QTest::newRow("number") << u"12kg"_s << 0 << u"um número como 1234.5"_s;
    QTest::newRow("sign") << u"QTDE ? 1"_s << 5
                          << u"um campo, um número, um texto entre aspas simples ou um operador"_s;
    QTest::newRow("arguments") << u"1 + ROUND()"_s << 4 << u"ROUND(x;n)"_s;
    QTest::newRow("separator") << u"LEFT(NOME, 3)"_s << 9
                               << u"um campo, um número, um texto entre aspas simples ou um operador"_s;
    QTest::newRow("if") << u"IF(1)"_s << 0 << u"IF(condição;valor;senão)"_s;
    QTest::newRow("sum of sum") << u"SUM(SUM(QTDE))"_s << 4 << u"um valor por linha, sem SUM dentro de outro total"_s;
    QTest::newRow("sum of nothing") << u"SUM()"_s << 0 << u"SUM(x)"_s;
    QTest::newRow("mask") << u"FORMAT(QTDE; 'kg')"_s << 0 << u"uma máscara como ,0.00 ou dd/mm/yyyy"_s;
    QTest::newRow("depth") << u"("_s.repeated(150) << 100 << u"no máximo 100 parênteses uns dentro dos outros"_s;
}

void tst_Expression::mistakesTellTheirPlace()
{
    QFETCH(QString, expression);
    QFETCH(int, position);
    QFETCH(QString, expected);
    try {
        Expression::parse(expression);
        QFAIL("it was accepted");
    } catch (const ExpressionError &error) {
        QCOMPARE(error.position, position);
        QCOMPARE(error.expected, expected);
    }
}

void tst_Expression::mistakesInATextAreCountedWithinTheWholeText()
{
    const QVector<std::pair<QString, qsizetype>> mistakes{
        {u"OF {NUM_OF +}"_s, 12}, {u"OF {NUM_OF"_s, 3}, {u"{QTDE:kg}"_s, 6}, {u"kg {}"_s, 4}};
    for (const auto &[text, position] : mistakes) {
        try {
            TextTemplate::parse(text);
            QFAIL(qPrintable(text));
        } catch (const ExpressionError &error) {
            QCOMPARE(error.position, position);
        }
    }
}

void tst_Expression::aConditionIsTrueOrFalse()
{
    const auto holds = [](const QString &text) { return Expression::parseCondition(text).evaluate(Row()); };
    QCOMPARE(holds(u"NOME"_s), QVariant(true));
    QCOMPARE(holds(u"VAZIO"_s), QVariant(false));
    QCOMPARE(holds(u"' '"_s), QVariant(false));
    QCOMPARE(holds(u"KG_TOTAL - 100"_s), QVariant(false));
    QCOMPARE(holds(u"QTDE > 99"_s), QVariant(true));
}

void tst_Expression::theOtherBranchIsNotEvaluated()
{
    const Row row;
    QCOMPARE(Expression::parse(u"IF(1 = 1; 'sim'; QTDE)"_s).evaluate(row), QVariant(u"sim"_s));
    QCOMPARE(Expression::parse(u"1 = 2 AND QTDE > 1"_s).evaluate(row), QVariant(false));
    QCOMPARE(Expression::parse(u"1 = 1 OR QTDE > 1"_s).evaluate(row), QVariant(true));
    QCOMPARE(row.reads, 0);
}

void tst_Expression::namesAndForeignFunctionsAreTold()
{
    const Expression expression = Expression::parse(u"SUM(qtde * PRECO) + zeroe(ROLO) + ROUND(qtde; 2) + PAGE()"_s);
    QStringList names = expression.names();
    names.sort();
    QCOMPARE(names, QStringList({u"PRECO"_s, u"QTDE"_s, u"ROLO"_s}));
    QCOMPARE(expression.foreignFunctions(), QStringList({u"ZEROE"_s, u"PAGE"_s}));
}

void tst_Expression::aggregatesAreNumberedThroughTheLayout()
{
    TextTemplate text = TextTemplate::parse(u"{SUM(QTDE)} {COUNT()} {MAX(QTDE) - MIN(QTDE)}"_s);
    QCOMPARE(text.numberAggregates(3), 7);
    QCOMPARE(text.evaluate(Row()), u"300 400 -100"_s);
}

void tst_Expression::tenThousandRollsAddUpToTheGram()
{
    Accumulator sum(Expression::Aggregate::Kind::Sum);
    for (int i = 0; i < 10000; ++i)
        sum.add(i % 2 == 0 ? 20.1 : 0.001);
    QCOMPARE(sum.result().toDouble(), 100505.0);
    Accumulator mixed(Expression::Aggregate::Kind::Sum);
    for (const double kilograms : {1e9, 0.001, -1e9, 0.002})
        mixed.add(kilograms);
    QCOMPARE(mixed.result().toDouble(), 0.003);
}

void tst_Expression::aggregatesLeaveNullOut()
{
    using Kind = Expression::Aggregate::Kind;
    const QVector<std::pair<Kind, QVariant>> expected{
        {Kind::Sum, 6.0}, {Kind::Count, qint64(2)}, {Kind::Average, 3.0}, {Kind::Minimum, 2.0}, {Kind::Maximum, 4.0}};
    for (const auto &[kind, result] : expected) {
        Accumulator accumulator(kind);
        accumulator.add(2.0);
        accumulator.add(QVariant());
        accumulator.add(4.0);
        QCOMPARE(accumulator.result(), result);
    }
    QCOMPARE(Accumulator(Kind::Sum).result(), QVariant(0.0));
    QVERIFY(Accumulator(Kind::Average).result().isNull());
    Accumulator latest(Kind::Maximum);
    latest.add(QDate(2026, 1, 31));
    latest.add(QDate(2026, 2, 1));
    QCOMPARE(latest.result(), QVariant(QDate(2026, 2, 1)));
}

QTEST_GUILESS_MAIN(tst_Expression)
#include "tst_expression.moc"
