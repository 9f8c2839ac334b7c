// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/report/layoutreader.h"
#include "module/host_services/errors.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// Puts the lines into a layout file and reads it.
Layout::Document readLines(const QString &name, const QStringList &lines)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(name + u".xml"_s);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("no temporary file");
    file.write(lines.join(u'\n').toUtf8());
    file.close();
    return LayoutReader::read(path);
}

/// The sentence of the mistake, or an empty one.
QString mistakeIn(const QString &name, const QStringList &lines)
{
    try {
        readLines(name, lines);
    } catch (const EQen &error) {
        return error.sentence();
    }
    return {};
}

/// A layout with that in its third line, before its rows.
QStringList around(const QString &third)
{
    return {u"<layout title='OFs pendentes'>"_s, u"<page margins='10'/>"_s, third,
        u"<rows data='qryRelatorio'><detail/></rows>"_s, u"</layout>"_s};
}

QStringList aroundDetail(const QString &third)
{
    return {u"<layout title='OFs pendentes'>"_s, u"<rows data='qryRelatorio'><detail>"_s, third, u"</detail></rows>"_s,
        u"</layout>"_s};
}

} // namespace

class tst_LayoutReader : public QObject
{
    Q_OBJECT

private slots:
    void theMillsOwnFolderComesFirst();
    void aGraphicLayoutIsReadWhole();
    void aTextLayoutIsReadWhole();
    void labelsAreReadAndMeasured();
    void stylesBuildOnOneAnother();
    void textsKeepTheirBlanksOnlyInTextLayouts();
    void aggregatesAreNumberedThroughTheFile();
    void aMistakeNamesFileLineAndWhatWasExpected_data();
    void aMistakeNamesFileLineAndWhatWasExpected();
    void aMistakeInATextLayoutIsTold_data();
    void aMistakeInATextLayoutIsTold();
    void theNameTellsTheKind();
    void theManualsExamplesAreRead();
};

void tst_LayoutReader::theMillsOwnFolderComesFirst()
{
    const QTemporaryDir own;
    const QTemporaryDir program;
    for (const QString &path :
        {own.filePath(u"WMalPend.xml"_s), program.filePath(u"WMalPend.xml"_s), program.filePath(u"WMalOF.xml"_s)}) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    const QStringList folders{own.path(), program.path()};
    QCOMPARE(LayoutReader::find(u"WMalPend"_s, folders), own.filePath(u"WMalPend.xml"_s));
    QCOMPARE(LayoutReader::find(u"WMalOF"_s, folders), program.filePath(u"WMalOF.xml"_s));
    QCOMPARE(LayoutReader::find(u"WMalProd"_s, folders), QString());
    QCOMPARE(LayoutReader::find(u"../"_s + own.path().section(u'/', -1) + u"/WMalPend"_s, folders), QString());
}

void tst_LayoutReader::aGraphicLayoutIsReadWhole()
{
    const Layout::Document layout = readLines(u"WMalPend"_s,
        {u"<?xml version='1.0' encoding='UTF-8'?>"_s, u"<layout title='OFs pendentes'>"_s,
            u"<page paper='A4' orientation='landscape' margins='10 12 14 16'/>"_s,
            u"<style name='head' size='8' bold='yes' align='center'/>"_s,
            u"<page-header height='20'><text style='head' y='2' w='100' h='5'>{TITLE()}</text></page-header>"_s,
            u"<title before-page-header='yes' height='8'/>"_s, u"<rows data='qryRelatorio'>"_s,
            u"<header repeat='yes' height='6'><line y1='5'/></header>"_s, u"<empty><text>Nada</text></empty>"_s,
            u"<group by='MAQUINA' new-page='yes'><header repeat='yes'/><footer><text>{SUM(QTDE):,0.00}</text></footer></group>"_s,
            u"<group by='CLIENTE' keep-together='yes'/>"_s,
            u"<detail if='QTDE &gt; 0'><text x='5' w='30' align='right' valign='bottom' grow='yes'>{QTDE}</text>"_s,
            u"<box x='1' w='10' h='3' thickness='0.5' stretch='yes'/><picture value='FOTO' x='1' w='10' h='2.5'/>"_s,
            u"<barcode kind='itf' value='NUM_OF' show-value='yes' w='40' h='3' if='NOT EMPTY(NUM_OF)'/></detail>"_s,
            u"<rows data='tbItens' match='NUMERO=NUM_OF; COR = COR' keep-together='yes'><detail new-page-after='yes'/></rows>"_s,
            u"<footer/></rows>"_s, u"<summary new-page-before='yes'/>"_s, u"<page-footer/>"_s, u"</layout>"_s});
    QCOMPARE(layout.name, u"WMalPend"_s);
    QCOMPARE(layout.title, u"OFs pendentes"_s);
    QVERIFY(!layout.isText);
    QCOMPARE(layout.page.size, QSizeF(297, 210));
    QCOMPARE(layout.page.margins, QMarginsF(10, 12, 14, 16));
    QVERIFY(layout.titleBeforePageHeader && layout.summary->newPageBefore);
    const Layout::Item &head = layout.pageHeader->items.front();
    QCOMPARE(head.place, QRectF(0, 2, 100, 5));
    QCOMPARE(head.style.alignment, Qt::AlignHCenter | Qt::AlignTop);

    const Layout::Rows &rows = layout.rows.front();
    QCOMPARE(rows.dataSet, u"qryRelatorio"_s);
    QVERIFY(rows.header->repeats && rows.empty && rows.footer);
    QCOMPARE(rows.header->items.front().place, QRectF(0, 5, 297 - 24, 0)); // over the whole width
    QCOMPARE(rows.groups.size(), size_t(2));
    QVERIFY(rows.groups[0].newPage && rows.groups[0].header->repeats && rows.groups[1].keepsTogether);
    QCOMPARE(rows.beneath.front().match,
        (QVector<std::pair<QString, QString>>{{u"NUMERO"_s, u"NUM_OF"_s}, {u"COR"_s, u"COR"_s}}));
    QVERIFY(rows.beneath.front().keepsTogether && rows.beneath.front().details.front().newPageAfter);

    const Layout::Band &detail = rows.details.front();
    QCOMPARE(detail.line, 12);
    QVERIFY(detail.condition);
    QCOMPARE(detail.items.size(), size_t(4));
    QVERIFY(detail.items[0].grows && detail.items[0].wraps && detail.items[1].stretches);
    QCOMPARE(detail.items[0].style.alignment, Qt::AlignRight | Qt::AlignBottom);
    QCOMPARE(detail.items[1].thickness, 0.5);
    QCOMPARE(detail.items[2].kind, Layout::Item::Kind::Picture);
    QCOMPARE(detail.items[3].symbology, Layout::Item::Symbology::Interleaved2of5);
    QVERIFY(detail.items[3].showsValue && detail.items[3].condition);
    QCOMPARE(detail.items[3].line, 14);
    QVERIFY(detail.height > 3.9 && detail.height < 4.0); // of the text of nine points
}

void tst_LayoutReader::aTextLayoutIsReadWhole()
{
    const Layout::Document layout = readLines(u"TMalOF"_s,
        {u"<layout title='Ordem'><characters lines='33' columns='96' encoding='ISO-8859-1' form-feed='no'/>"_s,
            u"<rows data='qryOF'><detail><line condensed='yes' bold='yes' if='NUM_OF'>OF {PAD(NUM_OF;8)}</line>"_s,
            u"<line/></detail></rows></layout>"_s});
    QVERIFY(layout.isText);
    QCOMPARE(layout.characters.lines, 33);
    QCOMPARE(layout.characters.columns, 96);
    QCOMPARE(layout.characters.encoding, u"ISO-8859-1"_s);
    QVERIFY(!layout.characters.formFeed && !layout.characters.raw);
    const std::vector<Layout::TextLine> &lines = layout.rows.front().details.front().lines;
    QCOMPARE(lines.size(), size_t(2));
    QVERIFY(lines[0].condensed && lines[0].bold && lines[0].condition);
    QCOMPARE(lines[0].line, 2);
}

void tst_LayoutReader::labelsAreReadAndMeasured()
{
    const QString labels = u"<labels columns='3' width='60' height='30' column-gap='5' row-gap='2'/>"_s;
    const Layout::Page page = readLines(u"WEtqBarra"_s, around(labels)).page;
    QCOMPARE(page.columns, 3);
    QCOMPARE(page.label, QSizeF(60, 30));
    QCOMPARE(page.columnGap, 5.0);
    QCOMPARE(page.rowGap, 2.0);
    QCOMPARE(mistakeIn(u"WEtqBarra"_s, around(labels + u"<title><text w='61'>x</text></title>"_s)),
        u"WEtqBarra.xml, linha 3: o elemento <text> vai até 61 mm e sai da largura; esperado até 60 mm."_s);
}

void tst_LayoutReader::stylesBuildOnOneAnother()
{
    const Layout::Document layout = readLines(u"WMalPend"_s,
        around(
            u"<style name='small' size='7' colour='#336699'/><style name='strong' style='small' bold='yes'/>"
            "<title><text style='strong' italic='yes' size='8' font='Liberation Serif' background='yellow'>x</text></title>"_s));
    const Layout::TextStyle &style = layout.titleBand->items.front().style;
    QVERIFY(style.bold && style.italic);
    QCOMPARE(style.size, 8.0);
    QCOMPARE(style.family, u"Liberation Serif"_s);
    QCOMPARE(style.colour, QColor(0x33, 0x66, 0x99));
    QCOMPARE(style.background, QColor(Qt::yellow));
}

void tst_LayoutReader::textsKeepTheirBlanksOnlyInTextLayouts()
{
    const auto fixedText = [](const TextTemplate &text) { return text.parts().front().text; };
    const Layout::Document graphic =
        readLines(u"WMalPend"_s, around(u"<title><text>\n   Ordens\n   pendentes<br/>\n  de hoje  </text></title>"_s));
    QCOMPARE(fixedText(graphic.titleBand->items.front().text), u"Ordens pendentes\nde hoje"_s);
    const Layout::Document text =
        readLines(u"TMalOF"_s, {u"<layout title='x'><title><line>  OF  <char code='27'/>E</line></title></layout>"_s});
    QCOMPARE(fixedText(text.titleBand->lines.front().text), u"  OF  \u001bE"_s);
}

void tst_LayoutReader::aggregatesAreNumberedThroughTheFile()
{
    const Layout::Document layout = readLines(u"WMalPend"_s,
        {u"<layout title='x'><rows data='q'><group by='A'><footer><text>{SUM(X)} {COUNT()}</text></footer></group>"_s,
            u"<detail/><footer if='COUNT() &gt; 1'><text>{AVG(X)}</text></footer></rows></layout>"_s});
    QCOMPARE(layout.aggregates, 4);
    const Layout::Rows &rows = layout.rows.front();
    QCOMPARE(rows.groups.front().footer->items.front().text.parts().last().expression->firstAggregate(), 1);
    QCOMPARE(rows.footer->condition->firstAggregate(), 2);
    QCOMPARE(rows.footer->items.front().text.parts().front().expression->firstAggregate(), 3);
}

void tst_LayoutReader::aMistakeNamesFileLineAndWhatWasExpected_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QString>("mistake");
    QTest::newRow("element in the layout")
        << around(u"<pagina/>"_s)
        << u"elemento <pagina> desconhecido em <layout>; esperado page, labels, style, page-header, title, rows, summary, page-footer"_s;
    QTest::newRow("element in a band") << aroundDetail(
        u"<field/>"_s) << u"elemento <field> desconhecido em <detail>; esperado text, line, box, picture, barcode"_s;
    QTest::newRow("attribute")
        << around(u"<labels width='10' height='10' gap='1'/>"_s)
        << u"atributo gap desconhecido em <labels>; conhecidos: columns, width, height, column-gap, row-gap"_s;
    QTest::newRow("missing attribute") << aroundDetail(u"<box x='1' w='2'/>"_s) << u"falta em <box> o atributo h"_s;
    QTest::newRow("number") << aroundDetail(u"<text x='1,5'>a</text>"_s)
                            << u"x=\"1,5\" em <text>; esperado um número, com ponto decimal"_s;
    QTest::newRow("negative") << aroundDetail(u"<text x='-1'>a</text>"_s)
                              << u"x=\"-1\" em <text>; esperado um número não menor que 0"_s;
    QTest::newRow("whole number") << around(u"<labels columns='0' width='10' height='10'/>"_s)
                                  << u"columns=\"0\" em <labels>; esperado um número inteiro de 1 a 100"_s;
    QTest::newRow("yes or no") << aroundDetail(u"<text bold='sim'>a</text>"_s)
                               << u"bold=\"sim\" em <text>; esperado no, yes"_s;
    QTest::newRow("colour") << aroundDetail(u"<text colour='azulado'>a</text>"_s)
                            << u"colour=\"azulado\" em <text>; esperado uma cor como #336699 ou red"_s;
    QTest::newRow("width") << aroundDetail(u"<text x='100' w='91'>a</text>"_s)
                           << u"o elemento <text> vai até 191 mm e sai da largura; esperado até 190 mm"_s;
    QTest::newRow("line's width") << aroundDetail(u"<line x2='190.5'/>"_s)
                                  << u"o elemento <line> vai até 190.5 mm e sai da largura; esperado até 190 mm"_s;
    QTest::newRow("height") << around(u"<title height='10'><box y='5' w='5' h='6'/></title>"_s)
                            << u"o elemento vai até 11 mm e sai da faixa; esperado até 10 mm"_s;
    QTest::newRow("line backwards")
        << aroundDetail(u"<line x1='50' x2='20'/>"_s)
        << u"linha ao contrário; esperado x1 até x2 e y1 até y2, da esquerda para a direita e para baixo"_s;
    QTest::newRow("total in a detail")
        << aroundDetail(u"<text>{SUM(QTDE)}</text>"_s)
        << u"total em \"{SUM(QTDE)}\"; SUM, COUNT, AVG, MIN e MAX são esperados só em footer, summary e page-footer"_s;
    QTest::newRow("total in a header")
        << around(u"<page-header if='COUNT() &gt; 1'/>"_s)
        << u"total em \"COUNT() > 1\"; SUM, COUNT, AVG, MIN e MAX são esperados só em footer, summary e page-footer"_s;
    QTest::newRow("expression") << aroundDetail(u"<text>OF {NUM_OF +}</text>"_s)
                                << u"em \"OF {NUM_OF +}\", posição 13: esperado um valor depois de \"+\""_s;
    QTest::newRow("condition") << aroundDetail(u"<text if='(QTDE'>a</text>"_s)
                               << u"em \"(QTDE\", posição 6: esperado \")\""_s;
    QTest::newRow("style") << around(u"<style name='small'/><title><text style='smal'>a</text></title>"_s)
                           << u"style=\"smal\" em <text>; esperado um dos estilos small"_s;
    QTest::newRow("style twice") << around(u"<style name='small'/><style name='small'/>"_s)
                                 << u"name=\"small\" em <style>; esperado um nome que nenhum outro <style> tem"_s;
    QTest::newRow("barcode") << aroundDetail(u"<barcode kind='ean' value='A' h='5'/>"_s)
                             << u"kind=\"ean\" em <barcode>; esperado code128, itf, qr"_s;
    QTest::newRow("match") << aroundDetail(u"</detail><rows data='a' match='NUM_OF'/><detail>"_s)
                           << u"match=\"NUM_OF\" em <rows>; esperado campos como NUM_OF=NUM_OF;COR=COR"_s;
    QTest::newRow("match without rows above")
        << around(u"<rows data='a' match='A=A'/>"_s)
        << u"atributo match desconhecido em <rows>; conhecidos: data, keep-together"_s;
    QTest::newRow("twice") << around(u"<summary/><summary/>"_s) << u"<summary> repetido; esperado um só em <layout>"_s;
    QTest::newRow("page too late") << around(u"<title/><labels width='9' height='9'/>"_s)
                                   << u"<labels> depois de uma faixa; esperado antes da primeira"_s;
    QTest::newRow("text outside") << aroundDetail(u"OF 123"_s)
                                  << u"texto \"OF 123\" fora do lugar; esperado um elemento"_s;
    QTest::newRow("labels too wide") << around(u"<labels columns='4' width='50' height='20'/>"_s)
                                     << u"as etiquetas ocupam 200 mm e saem da largura; esperado até 190 mm"_s;
    QTest::newRow("element in a text") << aroundDetail(u"<text>a<b/></text>"_s)
                                       << u"elemento <b> desconhecido dentro de um texto; esperado br"_s;
    QTest::newRow("unclosed") << QStringList{u"<layout title='x'>"_s, u"<rows data='q'>"_s, u"<detail>"_s}
                              << u"XML malformado; esperado o fim de <detail>, aberto na linha 3"_s;
    QTest::newRow("closed by another") << aroundDetail(u"<text>a</layout>"_s)
                                       << u"XML malformado; esperado o fim de <text>, aberto na linha 3"_s;
    QTest::newRow("root") << QStringList{u""_s, u""_s, u"<report/>"_s}
                          << u"elemento <report> desconhecido; esperado <layout>"_s;
}

void tst_LayoutReader::aMistakeNamesFileLineAndWhatWasExpected()
{
    QFETCH(QStringList, lines);
    QFETCH(QString, mistake);
    QCOMPARE(mistakeIn(u"WMalPend"_s, lines), u"WMalPend.xml, linha 3: %1."_s.arg(mistake));
}

void tst_LayoutReader::aMistakeInATextLayoutIsTold_data()
{
    QTest::addColumn<QString>("second");
    QTest::addColumn<QString>("mistake");
    QTest::newRow("encoding") << u"<characters encoding='CP1'/>"_s
                              << u"encoding=\"CP1\" em <characters>; esperado CP850, ISO-8859-1, UTF-8"_s;
    QTest::newRow("graphic element") << u"<title><text>a</text></title>"_s
                                     << u"elemento <text> desconhecido em <title>; esperado line"_s;
    QTest::newRow("too wide") << u"<characters columns='5'/><title><line>123456</line></title>"_s
                              << u"a linha tem 6 caracteres e sai da largura; esperado até 5"_s;
    QTest::newRow("page")
        << u"<page/>"_s
        << u"elemento <page> desconhecido em <layout>; esperado characters, page-header, title, rows, summary, page-footer"_s;
    QTest::newRow("code") << u"<title><line><char code='300'/></line></title>"_s
                          << u"code=\"300\" em <char>; esperado um número inteiro de 1 a 255"_s;
}

void tst_LayoutReader::aMistakeInATextLayoutIsTold()
{
    QFETCH(QString, second);
    QFETCH(QString, mistake);
    QCOMPARE(mistakeIn(u"TMalOF"_s, {u"<layout title='x'>"_s, second, u"</layout>"_s}),
        u"TMalOF.xml, linha 2: %1."_s.arg(mistake));
}

void tst_LayoutReader::theNameTellsTheKind()
{
    QCOMPARE(mistakeIn(u"MalPend"_s, {u"<layout title='x'/>"_s}),
        u"MalPend.xml, linha 1: nome do arquivo; esperado um que comece com W (gráfico) ou T (texto)."_s);
}

void tst_LayoutReader::theManualsExamplesAreRead()
{
    QFile manual(QString::fromUtf8(QEN_SOURCE_DIR) + u"/docs/layouts.md"_s);
    QVERIFY(manual.open(QIODevice::ReadOnly));
    static const QRegularExpression example(
        u"```xml\n<!-- (\\w+)\\.xml -->\n(.*?)```"_s, QRegularExpression::DotMatchesEverythingOption);
    auto examples = example.globalMatch(QString::fromUtf8(manual.readAll()));
    QStringList read;
    while (examples.hasNext()) {
        const QRegularExpressionMatch match = examples.next();
        read.append(match.captured(1));
        QCOMPARE(mistakeIn(match.captured(1), match.captured(2).split(u'\n')), QString());
    }
    QCOMPARE(read, QStringList({u"WMalPend"_s, u"TMalOF"_s, u"TEtqBarra"_s}));
}

QTEST_GUILESS_MAIN(tst_LayoutReader)
#include "tst_layoutreader.moc"
