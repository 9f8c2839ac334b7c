// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/invoicing/releases.h"
#include "tests/support/paper.h"

using namespace Releases;

namespace {

class PrintingStation : public ReleaseStation
{
public:
    PrintingStation()
        : paper(host)
    {
    }

    QString print(const QString &number)
    {
        openReleases();
        enter(u"EdtNumero"_s, number);
        click(u"BitBtn2"_s);
        return paper.flatText();
    }

    Paper paper;
};

} // namespace

/// The release as the client gets it.
class TestReleasePaper : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void theClientSeesWhichYarnIsInWhichFabric();
    void anOrderWithoutYarnSaysSo();
    void aReleaseOfNothingSaysSo();
    void aLongReleaseKeepsItsOrdersTogether();
    void anOrderOfManyLotsGoesOnWithItsHead();
};

void TestReleasePaper::theClientSeesWhichYarnIsInWhichFabric()
{
    PrintingStation station;
    station.insertReleases();
    station.reserve(u"000010"_s, u"0001203"_s, u"FIO30CO"_s, u"A"_s, 72);
    station.reserve(u"000010"_s, u"0001207"_s, u"FIO150PES"_s, u"B"_s, 48.5);
    station.reserve(u"000012"_s, u"0001209"_s, u"FIO30CO"_s, u"C"_s, 50.2);
    const QString text = station.print(u"00007"_s);
    for (const QString &shown :
        {u"Liberação de faturamento 00007"_s, u"Malharia Serra Azul"_s, u"00001 Confecções Serra Azul Ltda"_s,
            u"28/02/2026 NF-9"_s, u"Cliente retira"_s, u"000010 M0001 Meia-malha PV 60/40 12,500 kg 3\n"_s,
            u"FIO150PES Fio poliéster 150/48 0001207 B 48,500\n"_s,
            u"FIO30CO Fio algodão 30/1 penteado 0001203 A 72,000\n"_s, u"Total do fio da OF 120,500\n"_s,
            u"000012 M0003 Moletom 3 cabos 50,125 kg 2\n"_s, u"FIO30CO Fio algodão 30/1 penteado 0001209 C 50,200\n"_s,
            u"Total do fio da OF 50,200\n"_s,
            // 12.5 + 50.125 kg; the first has two lots and counts once.
            u"Total liberado: 2 lotes 62,625 kg 5\n"_s, u"Página 1 de 1"_s})
        QVERIFY2(text.contains(shown), qUtf8Printable(shown + u'\n' + text));
    QVERIFY(!text.contains(u"000020"_s));
}

void TestReleasePaper::anOrderWithoutYarnSaysSo()
{
    PrintingStation station;
    station.insertReleases();
    const QString text = station.print(u"00008"_s);
    QVERIFY2(text.contains(u"00002 Malhas São Bento S.A."_s), qPrintable(text));
    QVERIFY2(text.contains(u"000020 M0002 Ribana 2x1 30,000 kg 1\n"_s), qPrintable(text));
    QVERIFY2(text.contains(u"Sem fio reservado para esta OF."_s), qPrintable(text));
    QVERIFY2(text.contains(u"Total liberado: 1 lote 30,000 kg 1\n"_s), qPrintable(text));
    QVERIFY(!text.contains(u"Total do fio"_s) && !text.contains(u"Seu fio"_s));
}

void TestReleasePaper::aReleaseOfNothingSaysSo()
{
    PrintingStation station;
    station.insertLine(u"00009"_s, u"000010"_s, u"M0001"_s, 0, 0);
    const QString text = station.print(u"00009"_s);
    QVERIFY2(text.contains(u"Nada foi liberado."_s), qPrintable(text));
    QVERIFY(!text.contains(u"Total liberado"_s));
}

void TestReleasePaper::aLongReleaseKeepsItsOrdersTogether()
{
    PrintingStation station;
    for (int order = 100; order < 120; ++order) {
        const QString of = u"000%1"_s.arg(order);
        station.produce(of, u"M0001"_s, 100, 0);
        station.insertLine(u"00007"_s, of, u"M0001"_s, 10.5, 1);
        station.reserve(of, u"0001203"_s, u"FIO30CO"_s, u"A%1"_s.arg(order), 6);
        station.reserve(of, u"0001203"_s, u"FIO150PES"_s, u"B%1"_s.arg(order), 4);
    }
    station.print(u"00007"_s);
    const int pages = station.paper.pages();
    QCOMPARE(pages, 3); // 7, 7 and 6 orders
    for (int page = 1; page <= pages; ++page) {
        const QString text = station.paper.flatText(page);
        QVERIFY2(text.contains(u"Liberação de faturamento 00007"_s), qPrintable(text));
        QVERIFY2(text.contains(u"Página %1 de %2"_s.arg(page).arg(pages)), qPrintable(text));
        // No order is torn: each that begins on the page has both its lots and its total there.
        const qsizetype orders = text.count(u"Seu fio nesta malha"_s);
        QCOMPARE(text.count(u"Total do fio da OF 10,000"_s), orders);
        QCOMPARE(text.count(u"0001203 A"_s), orders);
    }
    QVERIFY(station.paper.flatText(pages).contains(u"Total liberado: 20 lotes 210,000 kg 20\n"_s));
}

void TestReleasePaper::anOrderOfManyLotsGoesOnWithItsHead()
{
    PrintingStation station;
    station.insertLine(u"00007"_s, u"000010"_s, u"M0001"_s, 12.5, 3);
    for (int lot = 1; lot <= 80; ++lot)
        station.reserve(u"000010"_s, u"0001203"_s, u"FIO30CO"_s, u"L%1"_s.arg(lot), 1.125);
    const QString text = station.print(u"00007"_s);
    QCOMPARE(station.paper.pages(), 2);
    QVERIFY(station.paper.flatText(2).contains(u"000010 M0001 Meia-malha PV 60/40"_s));
    QCOMPARE(text.count(u"FIO30CO"_s), 80);
    QVERIFY2(text.contains(u"Total do fio da OF 90,000\n"_s), qPrintable(text));
}

QTEST_MAIN(TestReleasePaper)
#include "tst_releasepaper.moc"
