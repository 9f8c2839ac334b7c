// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "invoicing/pastedlots.h"

#include <QTest>

using namespace Qt::StringLiterals;
using PastedLots::Row;

class TestPastedLots : public QObject
{
    Q_OBJECT

private slots:
    void aLineIsALot();
    void everyLineEndingIsUnderstood_data();
    void everyLineEndingIsUnderstood();
    void figuresAreReadTheBrazilianWay_data();
    void figuresAreReadTheBrazilianWay();
    void emptyCellsAreWhatEmptyFieldsAre();
    void linesWithoutTextArePassedOverAndCounted();
    void quotedCellsMayHoldWhatDividesCells();
    void aQuoteWithinACellIsAQuote();
    void aLineWithTooFewOrTooManyCellsIsRefused_data();
    void aLineWithTooFewOrTooManyCellsIsRefused();
    void emptyCellsBehindTheBrandDoNotMatter();
    void whatNoColumnHoldsIsRefused_data();
    void whatNoColumnHoldsIsRefused();
    void aTextThatIsNoTableIsRefused();
    void tenThousandLinesAreReadAtOnce();
};

void TestPastedLots::aLineIsALot()
{
    const QVector<Row> rows = PastedLots::parse(u" FIO30CO \tL-1\t1.234,567\t24,35\tAlgodoeira Ção\n"_s);
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows[0].line, 1);
    QCOMPARE(rows[0].material, u"FIO30CO"_s);
    QCOMPARE(rows[0].lot, u"L-1"_s);
    QCOMPARE(rows[0].quantity, 1234.567);
    QCOMPARE(rows[0].price, 24.35);
    QCOMPARE(rows[0].brand, u"Algodoeira Ção"_s);
    QCOMPARE(rows[0].fault, QString());
}

void TestPastedLots::everyLineEndingIsUnderstood_data()
{
    QTest::addColumn<QString>("ending");
    QTest::newRow("LF") << u"\n"_s;
    QTest::newRow("CR LF") << u"\r\n"_s;
    QTest::newRow("CR") << u"\r"_s;
}

void TestPastedLots::everyLineEndingIsUnderstood()
{
    QFETCH(QString, ending);
    const QString text = u"A\t1\t2\t3\tX"_s + ending + u"B\t1\t2\t3\tY"_s;
    for (const QString &whole : {text, text + ending}) {
        const QVector<Row> rows = PastedLots::parse(whole);
        QCOMPARE(rows.size(), 2);
        QCOMPARE(rows[0].brand, u"X"_s);
        QCOMPARE(rows[1].material, u"B"_s);
        QCOMPARE(rows[1].brand, u"Y"_s);
        QCOMPARE(rows[1].line, 2);
    }
}

void TestPastedLots::figuresAreReadTheBrazilianWay_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("figure");
    QTest::newRow("grouped") << u"1.234,5"_s << 1234.5;
    QTest::newRow("a thousand") << u"1.000"_s << 1000.0;
    QTest::newRow("comma") << u"0,25"_s << 0.25;
    QTest::newRow("decimal point") << u"12.5"_s << 12.5;
    QTest::newRow("more than three decimals") << u"0,0005"_s << 0.001;
    QTest::newRow("negative") << u"-3"_s << -3.0;
}

void TestPastedLots::figuresAreReadTheBrazilianWay()
{
    QFETCH(QString, text);
    QTEST(PastedLots::parse(u"A\tL\t%1\t1"_s.arg(text)).value(0).quantity, "figure");
}

void TestPastedLots::emptyCellsAreWhatEmptyFieldsAre()
{
    const Row row = PastedLots::parse(u"\t\t\t\tMarca"_s).value(0);
    QCOMPARE(row.material, QString());
    QCOMPARE(row.lot, u"0"_s);
    QCOMPARE(row.quantity, 0.0);
    QCOMPARE(row.price, 0.0);
    QCOMPARE(row.fault, QString());
}

void TestPastedLots::linesWithoutTextArePassedOverAndCounted()
{
    const QVector<Row> rows = PastedLots::parse(u"\n\t\t\t\n  \nA\t1\t2\t3\n\n"_s);
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows[0].line, 4);
    QVERIFY(PastedLots::parse({}).isEmpty());
}

void TestPastedLots::quotedCellsMayHoldWhatDividesCells()
{
    const QVector<Row> rows = PastedLots::parse(u"A\t1\t2\t3\t\"Fios\n\"\"Sul\"\"\te Cia\"\nB\t\"2\"\t3\t4"_s);
    QCOMPARE(rows.size(), 2);
    QCOMPARE(rows[0].brand, u"Fios \"Sul\" e Cia"_s);
    QCOMPARE(rows[1].material, u"B"_s);
    QCOMPARE(rows[1].lot, u"2"_s);
    QCOMPARE(rows[1].line, 3);
}

void TestPastedLots::aQuoteWithinACellIsAQuote()
{
    const QVector<Row> rows = PastedLots::parse(u"A\t\"x\t2\t3\t30\" fio\nB\t\"y\" z\t2\t3"_s);
    QCOMPARE(rows.size(), 2);
    QCOMPARE(rows[0].lot, u"\"x"_s);
    QCOMPARE(rows[0].brand, u"30\" fio"_s);
    QCOMPARE(rows[1].lot, u"\"y\" z"_s);
}

void TestPastedLots::aLineWithTooFewOrTooManyCellsIsRefused_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("one") << u"FIO30CO"_s;
    QTest::newRow("three") << u"FIO30CO\tL1\t50"_s;
    QTest::newRow("six") << u"FIO30CO\tL1\t50\t20\tMarca\tmais"_s;
}

void TestPastedLots::aLineWithTooFewOrTooManyCellsIsRefused()
{
    QFETCH(QString, text);
    const QVector<Row> rows = PastedLots::parse(text);
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows[0].material, u"FIO30CO"_s);
    QCOMPARE(rows[0].fault, u"A linha deve ter as colunas material, lote, quantidade, preço e marca."_s);
}

void TestPastedLots::emptyCellsBehindTheBrandDoNotMatter()
{
    QCOMPARE(PastedLots::parse(u"A\tL1\t50\t20\tMarca\t\t \t"_s).value(0).fault, QString());
}

void TestPastedLots::whatNoColumnHoldsIsRefused_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("fault");
    const QString emoji = QString::fromUtf8("🧶");
    QTest::newRow("material") << QString(16, u'A') + u"\tL\t1\t1"_s << u"Material com mais de 15 caracteres."_s;
    QTest::newRow("lot") << u"A\t"_s + QString(16, u'L') + u"\t1\t1"_s << u"Lote com mais de 15 caracteres."_s;
    QTest::newRow("brand") << u"A\tL\t1\t1\t"_s + QString(31, u'M') << u"Marca com mais de 30 caracteres."_s;
    QTest::newRow("longest") << QString(15, u'A') + u'\t' + QString(15, u'L') + u"\t1\t1\t"_s + QString(30, u'M')
                             << QString();
    QTest::newRow("fifteen emoji") << u"A\t"_s + emoji.repeated(15) + u"\t1\t1"_s << QString();
    QTest::newRow("no quantity") << u"A\tL\tdez\t1"_s << u"Quantidade inválida: \"dez\"."_s;
    QTest::newRow("no price") << u"A\tL\t1\tR$ x"_s << u"Preço inválido: \"R$ x\"."_s;
    QTest::newRow("beyond measure") << u"A\tL\t1000000000000\t1"_s << u"Quantidade inválida: \"1000000000000\"."_s;
}

void TestPastedLots::whatNoColumnHoldsIsRefused()
{
    QFETCH(QString, text);
    QTEST(PastedLots::parse(text).value(0).fault, "fault");
}

void TestPastedLots::aTextThatIsNoTableIsRefused()
{
    const QVector<Row> rows = PastedLots::parse(u"\"\"\"\t'; DROP TABLE X --\n%s%1\t\"\n"_s);
    QCOMPARE(rows.size(), 1);
    QVERIFY(!rows[0].fault.isEmpty());
}

void TestPastedLots::tenThousandLinesAreReadAtOnce()
{
    QString text;
    for (int i = 0; i < 10'000; ++i)
        text += u"FIO30CO\t\"L%1\t50\t20\tMarca\n"_s.arg(i);
    const QVector<Row> rows = PastedLots::parse(text);
    QCOMPARE(rows.size(), 10'000);
    QCOMPARE(rows.last().lot, u"\"L9999"_s);
}

QTEST_APPLESS_MAIN(TestPastedLots)
#include "tst_pastedlots.moc"
