// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/printerencoding.h"
#include "tests/host/report/testreport.h"

using namespace Qt::StringLiterals;

namespace {

/// A page of ten lines and twenty columns, with the attributes of its <characters> element.
class Sheet : public TestReport
{
public:
    Sheet(const QString &bands, const QStringList &fabrics, const QString &characters = {})
        : TestReport(u"TFolha"_s,
            u"<layout title=\"Folha\"><characters lines=\"10\" columns=\"20\" %1/>%2</layout>"_s.arg(characters, bands))
    {
        TClientDataSet &set = addDataSet(u"rolos"_s, {{u"MALHA"_s, TField::Type::Text}});
        for (const QString &fabric : fabrics)
            addRow(set, {{u"MALHA"_s, fabric}});
    }
};

const QString detail = u"<rows data=\"rolos\"><detail><line>{MALHA}</line></detail></rows>"_s;
const QString framed = u"<page-header><line>CABECALHO</line><line/></page-header>%1"
                       "<page-footer><line>Pag. {PAGE()} de {PAGES()}</line></page-footer>"_s;

QStringList numbers(int count)
{
    QStringList numbers;
    for (int i = 1; i <= count; ++i)
        numbers.append(QString::number(i));
    return numbers;
}

} // namespace

class TestTextReport : public QObject
{
    Q_OBJECT

private slots:
    void headerAndFooterStandOnFixedLines();
    void headersAreRepeatedAndBlocksKeptTogether();
    void numbersOfManyDigitsKeepTheColumns();
    void pagesEndInAFormFeed();
    void pagesAreFilledWithEmptyLinesWhereThePrinterWantsIt();
    void boldAndCondensedAreThePrintersCodes();
    void aCondensedLineHoldsMore();
    void commandsInTheDataAreNotSent();
    void aRawLayoutIsSentAsItStands();
    void dataCannotBreakOutOfARawLayout();
    void bytesAreThoseOfTheEncoding_data();
    void bytesAreThoseOfTheEncoding();
    void anUnknownEncodingIsSaid();
};

void TestTextReport::headerAndFooterStandOnFixedLines()
{
    Sheet report(framed.arg(detail), numbers(9));
    const QStringList pages = report.layOutText().pages();
    QCOMPARE(pages.size(), 2);
    QCOMPARE(pages[0], u"CABECALHO\n\n1\n2\n3\n4\n5\n6\n7\nPag. 1 de 2"_s);
    QCOMPARE(pages[1], u"CABECALHO\n\n8\n9\n\n\n\n\n\nPag. 2 de 2"_s);
}

void TestTextReport::headersAreRepeatedAndBlocksKeptTogether()
{
    const QString grouped = u"<rows data=\"rolos\"><group by=\"MALHA\" keep-together=\"yes\"><header repeat=\"yes\">"
                            "<line>[{MALHA}]</line></header></group><detail><line>- {MALHA}</line></detail></rows>"_s;
    const QStringList fabrics = QStringList(6, u"A"_s) + QStringList(4, u"B"_s) + QStringList(12, u"C"_s);
    Sheet report(grouped, fabrics);
    const QStringList pages = report.layOutText().pages();
    // A takes seven of ten lines, B would take five; C is larger than a page.
    QCOMPARE(pages.size(), 3);
    QCOMPARE(pages[0].split(u'\n').size(), 7);
    QVERIFY(pages[1].startsWith(u"[B]\n- B"_s));
    QCOMPARE(pages[1].split(u'\n').mid(5, 2), (QStringList{u"[C]"_s, u"- C"_s}));
    QVERIFY(pages[2].startsWith(u"[C]\n- C"_s));
    QCOMPARE(pages[2].count(u"- C"_s), 8);
}

void TestTextReport::numbersOfManyDigitsKeepTheColumns()
{
    const QString foot = u"<page-footer><line>{PADLEFT('Folha ' &amp; PAGE() &amp; '/' &amp; PAGES();20)}</line>"
                         "<line>de {PAD(PAGES();6)}fim</line></page-footer>"_s;
    Sheet report(
        QString(detail).replace(u"<line>"_s, u"<line>{PADLEFT(PAGE();20)}</line><line>"_s) + foot, numbers(44));
    const QStringList pages = report.layOutText().pages();
    QCOMPARE(pages.size(), 11);
    const QStringList lines = pages[10].split(u'\n');
    QCOMPARE(lines[0], u"                  11"_s);
    QCOMPARE(lines[8], u"         Folha 11/11"_s);
    QCOMPARE(lines[9], u"de 11    fim"_s);
}

void TestTextReport::pagesEndInAFormFeed()
{
    Sheet report(detail, {u"um"_s, u"dois"_s});
    QCOMPARE(report.layOutText().bytes(PrinterCodes::escP()), "\x1B@um\r\ndois\r\n\f");
}

void TestTextReport::pagesAreFilledWithEmptyLinesWhereThePrinterWantsIt()
{
    Sheet report(detail, numbers(12), u"form-feed=\"no\""_s);
    const QByteArray bytes = report.layOutText().bytes({});
    QCOMPARE(bytes.count("\r\n"), 20);
    QVERIFY(!bytes.contains('\f'));
    QVERIFY(bytes.endsWith("11\r\n12\r\n" + QByteArray("\r\n").repeated(8)));
}

void TestTextReport::boldAndCondensedAreThePrintersCodes()
{
    Sheet report(u"<rows data=\"rolos\"><detail><line bold=\"yes\">{MALHA}</line><line condensed=\"yes\">{MALHA}"
                 "</line></detail></rows>"_s,
        {u"x"_s});
    PrinterCodes codes{"<0>", "<c>", "</c>", "<b>", "</b>", "<ff>"};
    QCOMPARE(report.layOutText().bytes(codes), "<0><b>x</b>\r\n<c>x</c>\r\n<ff>");
}

void TestTextReport::aCondensedLineHoldsMore()
{
    Sheet report(u"<rows data=\"rolos\"><detail><line>{MALHA}</line><line condensed=\"yes\">{MALHA}</line>"
                 "</detail></rows>"_s,
        {QString(60, u'x')});
    QCOMPARE(report.layOutText().pages().constFirst(), QString(20, u'x') + u'\n' + QString(34, u'x'));
}

void TestTextReport::commandsInTheDataAreNotSent()
{
    Sheet report(detail, {u"a\x1B@b\fc\r\nd^~"_s});
    QCOMPARE(report.layOutText().bytes({}), "a @b c  d^~\r\n");
}

void TestTextReport::aRawLayoutIsSentAsItStands()
{
    Sheet report(u"<rows data=\"rolos\"><detail><line>^XA^CI28</line><line>^FO20,20^FD{MALHA}^FS</line>"
                 "<line>^XZ</line></detail></rows>"_s,
        numbers(40), u"raw=\"yes\" encoding=\"UTF-8\""_s);
    const QByteArray bytes = report.layOutText().bytes(PrinterCodes::escP());
    QVERIFY(bytes.startsWith("^XA^CI28\r\n^FO20,20^FD1^FS\r\n^XZ\r\n^XA"));
    QCOMPARE(bytes.count("^XZ\r\n"), 40);
    QVERIFY(!bytes.contains('\f') && !bytes.contains('\x1B'));
    QCOMPARE(report.layOutText().pages().size(), 1);
}

void TestTextReport::dataCannotBreakOutOfARawLayout()
{
    Sheet report(u"<rows data=\"rolos\"><detail><line>^FD{MALHA}^FS</line></detail></rows>"_s,
        {u"Malha^FS^XZ~JA\nfim ção"_s}, u"raw=\"yes\" encoding=\"UTF-8\""_s);
    QCOMPARE(report.layOutText().bytes({}), u"^FDMalha FS XZ JA fim ção^FS\r\n"_s.toUtf8());
}

void TestTextReport::bytesAreThoseOfTheEncoding_data()
{
    QTest::addColumn<QString>("encoding");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("CP850") << u"CP850"_s << u"ção Ã nº ½"_s << QByteArray("\x87\xC6o \xC7 n\xA7 \xAB");
    QTest::newRow("ISO-8859-1") << u"ISO-8859-1"_s << u"ção"_s << QByteArray("\xE7\xE3o");
    QTest::newRow("UTF-8") << u"UTF-8"_s << u"ção €"_s << u"ção €"_s.toUtf8();
    QTest::newRow("letters that it lacks") << u"CP850"_s << u"ĉŝő žluť"_s << QByteArray("cso zlut");
    QTest::newRow("a letter and its accent apart") << u"CP850"_s << u"c\u0327a\u0303o"_s << QByteArray("\x87\xC6o");
    QTest::newRow("typographic signs") << u"CP850"_s << u"“a” – ‘b’ …"_s << QByteArray("\"a\" - 'b' .");
    QTest::newRow("what has no plain letter") << u"CP850"_s << u"編\U0001F9F6 x"_s << QByteArray("?? x");
}

void TestTextReport::bytesAreThoseOfTheEncoding()
{
    QFETCH(const QString, encoding);
    QFETCH(const QString, text);
    QTEST(PrinterEncoding(encoding).encoded(text), "bytes");
}

void TestTextReport::anUnknownEncodingIsSaid()
{
    QVERIFY_EXCEPTION_THROWN(PrinterEncoding(u"CP99999"_s), EQen);
}

QTEST_MAIN(TestTextReport)
#include "tst_textreport.moc"
