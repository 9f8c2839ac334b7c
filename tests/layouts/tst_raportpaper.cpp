// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/registries/raportstation.h"
#include "tests/support/paper.h"

using namespace Qt::StringLiterals;

namespace {

class PrintingStation : public RaportStation
{
public:
    PrintingStation()
        : paper(host)
    {
    }

    QString print(const QString &fabric, const QString &colour)
    {
        open(u"TfmCadRaport"_s);
        enter(u"EdtMaterial"_s, fabric);
        enter(u"EdtCor"_s, colour);
        click(u"BitBtn5"_s);
        return paper.flatText();
    }

    Paper paper;
};

} // namespace

/// The paper by which the feeders are set up.
class TestRaportPaper : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void linesAndTheirSumsAreThoseOfTheScreen();
    void technicalDataIsThatOfTheScreen();
    void anEmptyRaportIsPrinted();
    void titlesStandOnEachPage();
};

void TestRaportPaper::linesAndTheirSumsAreThoseOfTheScreen()
{
    PrintingStation station;
    station.threeLines();
    const QString text = station.print(u"M0001"_s, u"000001"_s);
    for (const QString &shown : {u"Raport M0001 na cor 000001"_s, u"Malharia Serra Azul"_s,
             u"M0001 Meia-malha PV 60/40"_s, u"000001 Cru"_s, u"1,20 m"_s, u"165 g/m²"_s, u"20,00 kg"_s, u"Nota"_s,
             // 16 + 8 + 24 feeders, not those of the first line
             u"20,00 kg 48"_s, u"1 FIO30CO Fio algodão 30/1 penteado 000001 Cru 10 16 2 FUNDO 1,5"_s,
             u"2 FIO30CO Fio algodão 30/1 penteado 000002 Azul-marinho 5 8 2 FUNDO 1,5"_s,
             u"3 FIO30CO Fio algodão 30/1 penteado 000001 Cru 15 24 2 FUNDO 1,5"_s, u"3 linhas 30 48"_s,
             u"Página 1 de 1"_s})
        QVERIFY2(text.contains(shown), qUtf8Printable(shown + u'\n' + text));
}

void TestRaportPaper::technicalDataIsThatOfTheScreen()
{
    PrintingStation station;
    station.threeLines();
    // A line that was just combined has none.
    station.database.run(u"INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, ORDEM, PERC) "
                         "VALUES ('M0001', '000001', 'FIO30CO', '000002', 3, 10)"_s);
    const QString text = station.print(u"M0001"_s, u"000001"_s);
    for (const QString &shown : {u"30 28 1,20 m 165 g/m²"_s, u"20,00 kg"_s})
        QVERIFY2(text.contains(shown), qUtf8Printable(shown + u'\n' + text));
    station.enter(u"EdtFinura"_s, u"24,5"_s);
    station.enter(u"EdtGramatura"_s, u"0"_s);
    station.click(u"BitBtn5"_s);
    const QString typed = station.paper.flatText();
    QVERIFY2(typed.contains(u"30 24,5 1,20 m\n"_s), qUtf8Printable(typed));
}

void TestRaportPaper::anEmptyRaportIsPrinted()
{
    PrintingStation station;
    const QString text = station.print(u"M0001"_s, u"000003"_s);
    QVERIFY2(text.contains(u"O raport não tem linhas."_s), qPrintable(text));
    QVERIFY2(text.contains(u"000003 Preto"_s), qPrintable(text));
}

void TestRaportPaper::titlesStandOnEachPage()
{
    PrintingStation station;
    for (int line = 1; line <= 60; ++line)
        station.line(u"M0001 000001 %1 FIO30CO 000002 10"_s.arg(line));
    const QString text = station.print(u"M0001"_s, u"000001"_s);
    // 32 lines stand beneath the picture.
    QCOMPARE(station.paper.pages(), 2);
    for (int page = 1; page <= 2; ++page) {
        const QString one = station.paper.flatText(page);
        QVERIFY2(one.contains(u"Linha Fio Cor mm Alim. Repetição Agrupador Desperd."_s), qPrintable(one));
        QVERIFY2(one.contains(u"Página %1 de 2"_s.arg(page)), qPrintable(one));
    }
    QVERIFY2(text.contains(u"60 linhas 600 960"_s), qPrintable(text));
}

QTEST_MAIN(TestRaportPaper)
#include "tst_raportpaper.moc"
