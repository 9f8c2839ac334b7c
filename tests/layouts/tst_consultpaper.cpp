// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/production/orderstation.h"
#include "tests/support/paper.h"

using namespace Qt::StringLiterals;

namespace {

class ConsultStation : public OrderStation
{
public:
    ConsultStation()
        : paper(host)
    {
    }

    void openConsult()
    {
        openOrders();
        showPage(u"TabConsulta"_s);
        enter(u"edtDe"_s, {});
        enter(u"edtAte"_s, {});
    }

    Paper paper;
};

} // namespace

/// The list that the order screen's consultation prints.
class TestConsultPaper : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void rowsShowWhatTheCodesStandFor();
    void thePaperBearsWhatWasAskedFor();
    void titlesAndCountsStandOnEachPage();
};

void TestConsultPaper::rowsShowWhatTheCodesStandFor()
{
    ConsultStation station;
    station.insertOrder();
    station.insertOrder({.number = u"000013"_s, .material = u"M0002"_s, .machine = u"002"_s, .flow = u"02"_s});
    station.openConsult();
    station.click(u"BitBtn4"_s);
    const QString text = station.paper.flatText();
    QVERIFY2(text.contains(u"Ordens de fabricação Malharia Serra Azul"_s), qPrintable(text));
    QVERIFY2(text.contains(u"000012 02/03/2026 00001 Confecções Serra Azul Ltda M0001 Meia-malha PV 60/40 "
                           "001 Circular 30\" 28 agulhas 01 Tecer"_s),
        qPrintable(text));
    QVERIFY2(text.contains(u"M0002 Ribana 2x1 002 Circular 34\" 24 agulhas 02 Tecer e revisar"_s), qPrintable(text));
    QVERIFY2(text.contains(u"\n 2 OFs\n"_s) || text.contains(u"\n2 OFs\n"_s), qPrintable(text));
    QVERIFY2(text.contains(u"Página 1 de 1"_s), qPrintable(text));
}

void TestConsultPaper::thePaperBearsWhatWasAskedFor()
{
    ConsultStation station;
    station.insertOrder();
    station.insertOrder({.number = u"000013"_s, .client = u"00002"_s});
    station.openConsult();
    station.enter(u"edtDe"_s, u"01/03/2026"_s);
    station.enter(u"edtFCliente"_s, u"00001"_s);
    station.click(u"BitBtn3"_s);
    // What is typed after the rows were read is not what they were asked for.
    station.enter(u"edtFMaquina"_s, u"002"_s);
    station.click(u"BitBtn4"_s);
    const QString text = station.paper.flatText();
    QVERIFY2(text.contains(u"Período: a partir de 01/03/2026 · Cliente: 00001 Confecções Serra Azul Ltda\n"_s),
        qPrintable(text));
    QVERIFY(text.contains(u"000012"_s) && !text.contains(u"000013"_s));
}

void TestConsultPaper::titlesAndCountsStandOnEachPage()
{
    ConsultStation station;
    for (int order = 1; order <= 70; ++order)
        station.insertOrder({.number = QString::number(order).rightJustified(6, u'0')});
    station.openConsult();
    station.click(u"BitBtn4"_s);
    QCOMPARE(station.paper.pages(), 3);
    int orders = 0;
    for (int page = 1; page <= 3; ++page) {
        const QString text = station.paper.flatText(page);
        QVERIFY2(text.contains(u"OF Data Cliente Malha Máquina Fluxo"_s), qPrintable(text));
        QVERIFY2(text.contains(u"Página %1 de 3"_s.arg(page)), qPrintable(text));
        const int here = int(text.count(u"02/03/2026"_s));
        QVERIFY2(text.contains(u"Nesta página: %1 OF"_s.arg(here)), qPrintable(text));
        orders += here;
    }
    QCOMPARE(orders, 70);
    QVERIFY(station.paper.flatText(3).contains(u"70 OFs"_s));
}

QTEST_MAIN(TestConsultPaper)
#include "tst_consultpaper.moc"
