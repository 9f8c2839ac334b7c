// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/invoicing/releases.h"

#include "module/host_services/query.h"

using namespace Releases;

namespace {

/// The rows of the data set that was printed last, the columns joined by "|".
QStringList printed(const ReleaseStation &station, const QStringList &columns)
{
    auto *rows = station.form()->findChild<TTIQuery *>(u"QryImpressao"_s);
    QStringList result;
    for (rows->First(); !rows->Eof(); rows->Next()) {
        QStringList texts;
        for (const QString &column : columns)
            texts.append(rows->field(column).text(rows->value(column)));
        result.append(texts.join(u'|'));
    }
    return result;
}

void printRelease(ReleaseStation &station, const QString &number)
{
    station.enter(u"EdtNumero"_s, number);
    station.click(u"BitBtn2"_s);
}

} // namespace

/// The printed release: each order with its fabric, and the client's yarn that went into it.
class TestMalLibFatPrint : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void thePrintoutTellsTheYarnOfEachOrder();
    void twoLotsThatWeighTheSameAreTwo();
    void linesWithoutQuantityAreNotPrinted();
    void whatWasNotSavedIsNotPrinted();
};

void TestMalLibFatPrint::thePrintoutTellsTheYarnOfEachOrder()
{
    ReleaseStation station;
    station.insertReleases();
    station.reserve(u"000010"_s, u"0001203"_s, u"FIO30CO"_s, u"A"_s, 72);
    station.reserve(u"000010"_s, u"0001207"_s, u"FIO150PES"_s, u"B"_s, 48.5);
    station.reserve(u"000020"_s, u"0001300"_s, u"FIO30CO"_s, u"A"_s, 30);
    station.openReleases();
    printRelease(station, u"00007"_s);
    const QList<RecordedReport> &reports = station.host.recordedReports();
    QCOMPARE(reports.size(), 1);
    QCOMPARE(reports[0].name, u"WRelMalLibFat"_s);
    QCOMPARE(reports[0].kind, ReportCall::Kind::Graphic);
    QCOMPARE(reports[0].dataSets, QStringList{u"QryImpressao"_s});
    QCOMPARE(reports[0].rowCounts, QList<int>{3});
    // Each order with its fabric, and below it its yarns; an order without any stands there too.
    const QStringList lines = printed(station,
        {u"LOTE"_s, u"CODIGO"_s, u"DESCRICAO"_s, u"QTDE"_s, u"ROLOS"_s, u"FIO"_s, u"DESC_FIO"_s, u"LOTE_FIO"_s,
            u"DOCTO"_s, u"QTDE_FIO"_s});
    QCOMPARE(lines,
        (QStringList{u"000010|M0001|Meia-malha PV 60/40|12,500|3|FIO150PES|Fio poliéster 150/48|B|0001207|48,500"_s,
            u"000010|M0001|Meia-malha PV 60/40|12,500|3|FIO30CO|Fio algodão 30/1 penteado|A|0001203|72,000"_s,
            u"000012|M0003|Moletom 3 cabos|50,125|2|||||"_s}));
    const QStringList heads = printed(station,
        {u"NUMERO"_s, u"CODCLI"_s, u"NOME"_s, u"DATA"_s, u"NOTAFISCAL"_s, u"OBS"_s, u"MAQUINA"_s, u"DESC_MAQUINA"_s});
    QCOMPARE(heads.last(),
        u"00007|00001|Confecções Serra Azul Ltda|28/02/2026|NF-9|Cliente retira|002|Circular 34\" 24 agulhas"_s);
}

void TestMalLibFatPrint::twoLotsThatWeighTheSameAreTwo()
{
    ReleaseStation station;
    station.insertReleases();
    station.reserve(u"000010"_s, u"0001203"_s, u"FIO30CO"_s, u"A"_s, 36);
    station.reserve(u"000010"_s, u"0001203"_s, u"FIO30CO"_s, u"B"_s, 36);
    station.openReleases();
    printRelease(station, u"00007"_s);
    const QStringList lines = printed(station, {u"LOTE"_s, u"QTDE"_s, u"LOTE_FIO"_s, u"QTDE_FIO"_s});
    QCOMPARE(lines, (QStringList{u"000010|12,500|A|36,000"_s, u"000010|12,500|B|36,000"_s, u"000012|50,125||"_s}));
}

void TestMalLibFatPrint::linesWithoutQuantityAreNotPrinted()
{
    ReleaseStation station;
    station.openReleases();
    station.startRelease();
    station.standOn(0, u"Faturar"_s);
    station.enterCell(u"5"_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored().size(), 3);
    printRelease(station, u"00001"_s);
    const QStringList lines = printed(station, {u"LOTE"_s, u"QTDE"_s});
    QCOMPARE(lines, QStringList{u"000010|5,000"_s});
}

void TestMalLibFatPrint::whatWasNotSavedIsNotPrinted()
{
    ReleaseStation station;
    station.insertReleases();
    station.openReleases();
    station.enter(u"EdtNumero"_s, u"00007"_s);
    station.standOn(0, u"Faturar"_s);
    station.enterCell(u"1"_s);
    station.click(u"BitBtn2"_s);
    const QStringList lines = printed(station, {u"LOTE"_s, u"QTDE"_s});
    QCOMPARE(lines, (QStringList{u"000010|12,500"_s, u"000012|50,125"_s}));
    // The quantity is still there to be saved.
    QCOMPARE(station.cell(0, u"Faturar"_s), u"1,000"_s);
}

QTEST_MAIN(TestMalLibFatPrint)
#include "tst_mallibfatprint.moc"
