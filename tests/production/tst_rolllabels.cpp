// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// The labels of rolls as they come out of the printer.

#include "host/reportdesk.h"
#include "module/host_services/errors.h"
#include "production/rolllabel.h"
#include "tests/production/writeoffstation.h"
#include "tests/support/engines.h"
#include "tests/support/paper.h"

#include <QTableView>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// A printer that is out of labels.
struct EmptyPrinter : ReportDesk
{
    void deliver(Report &, const ReportCall &) override { throw EQen(u"Não há etiquetas."_s); }
};

} // namespace

class tst_rolllabels : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void theLabelShowsOrderRollWeightAndLots();
    void theStationReadsTheBarcodeOfALabel();
    void anOrderNumberIsNeverTakenApart();
    void aRollOnTheScaleHasALabelWithoutANumber();
    void withNothingOnTheScaleTheMarkedRollGetsASecondLabel();
    void aLabelSaysWhenThereAreMoreLots_data();
    void aLabelSaysWhenThereAreMoreLots();
    void theLabelPrinterGetsItsOwnLanguage();
    void dataCannotCommandTheLabelPrinter();
    void aLabelThatFailsLeavesTheRollWrittenAndSaysSo();
    void aLogThatFailsLeavesTheRollWrittenAndSaysSo();
    void zerosAreFilledInFromTheLeft();

private:
    static void reserve(WriteOffStation &station, const QString &lot);
};

void tst_rolllabels::reserve(WriteOffStation &station, const QString &lot)
{
    station.database.run(u"INSERT INTO {BAIXA_FIO} (NUMERO, DOCTO, CODIGO, LOTE, QTDE)"
                         " VALUES ('000012', '0000077', 'FIO30CO', '%1', 60)"_s.arg(lot));
}

void tst_rolllabels::theLabelShowsOrderRollWeightAndLots()
{
    WriteOffStation station(Engines::current());
    const Paper paper(station.host);
    reserve(station, u"LX-4711"_s);
    station.setParameter(50, u"S"_s);
    station.prepareRoll(u"20,355"_s);
    station.confirmRoll(u"20,36"_s);
    QCOMPARE(paper.count(), 1);
    QCOMPARE(paper.pages(), 1);
    const QString label = paper.flatText();
    const QString fabric = station.value(u"SELECT DESCRICAO FROM {MATERIAL} WHERE CODIGO = 'M0001'"_s).toString();
    const QString client = station.value(u"SELECT NOME FROM {ENTIDADE} WHERE CODCLI = '00001'"_s).toString();
    for (const QString &shown : {u"000012"_s, u"001"_s, u"20,355 kg"_s, u"M0001 "_s + fabric, u"00001 "_s + client,
             u"LX-4711"_s, u"0000077"_s, u"FIO30CO"_s, u"10/03/2026 10:30"_s})
        QVERIFY2(label.contains(shown), qUtf8Printable(shown + u'\n' + label));
    QCOMPARE(paper.barcodes(), QStringList(u"CODE-128:000012"_s));
    QVERIFY(!label.contains(u"VIA"_s));
}

void tst_rolllabels::theStationReadsTheBarcodeOfALabel()
{
    WriteOffStation station(Engines::current());
    const Paper paper(station.host);
    station.prepareRoll(u"20"_s);
    station.click(u"BtnImprimir"_s);
    const QString code = paper.barcodes().value(0).section(u':', 1);
    station.enter(u"edtOF"_s, QString());
    station.enter(u"edtOF"_s, code);
    QCOMPARE(station.text(u"edtOF"_s), u"000012"_s);
    QCOMPARE(station.text(u"EdtSaldo"_s), u"100,00"_s);
}

void tst_rolllabels::anOrderNumberIsNeverTakenApart()
{
    WriteOffStation station(Engines::current());
    station.database.run(u"UPDATE {OF_MALHA} SET NUM_OF = '12-345' WHERE NUM_OF = '000012'"_s);
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    station.enter(u"edtOF"_s, u"12-345"_s);
    QCOMPARE(station.text(u"edtOF"_s), u"12-345"_s);
    QCOMPARE(station.text(u"EdtSaldo"_s), u"100,00"_s);
    station.enter(u"edtOF"_s, u"12-345-001"_s); // no more than six characters are taken
    QCOMPARE(station.text(u"edtOF"_s), u"12-345"_s);
}

void tst_rolllabels::aRollOnTheScaleHasALabelWithoutANumber()
{
    WriteOffStation station(Engines::current());
    const Paper paper(station.host);
    station.addRoll(u"000012"_s, u"001"_s, 20);
    station.prepareRoll(u"18,4"_s);
    station.click(u"BtnImprimir"_s);
    QVERIFY2(paper.flatText().contains(u"000012 – 18,400 kg"_s), qPrintable(paper.text()));
    QVERIFY(!paper.text().contains(u"VIA"_s));
    QCOMPARE(paper.barcodes(), QStringList(u"CODE-128:000012"_s));
}

void tst_rolllabels::withNothingOnTheScaleTheMarkedRollGetsASecondLabel()
{
    WriteOffStation station(Engines::current());
    const Paper paper(station.host);
    station.addRoll(u"000012"_s, u"001"_s, 20.125);
    station.addRoll(u"000012"_s, u"002"_s, 21);
    station.prepareRoll(u"0"_s);
    station.child<QTableView>(u"DBGrid"_s)->selectRow(0);
    station.click(u"BtnImprimir"_s);
    QVERIFY2(paper.flatText().contains(u"000012 001 20,125 kg"_s), qPrintable(paper.text()));
    QVERIFY(paper.text().contains(u"2ª VIA"_s));
    QCOMPARE(paper.barcodes(), QStringList(u"CODE-128:000012"_s));
}

void tst_rolllabels::aLabelSaysWhenThereAreMoreLots_data()
{
    QTest::addColumn<QString>("printer");
    QTest::addColumn<int>("lots");
    QTest::addColumn<QString>("more");
    for (const QString &printer : {u"RgGrafico"_s, u"RgTexto"_s}) {
        QTest::addRow("%s, all have room", qPrintable(printer)) << printer << 8 << QString();
        QTest::addRow("%s, one more", qPrintable(printer)) << printer << 9 << u"e mais 1 lote"_s;
        QTest::addRow("%s, several more", qPrintable(printer)) << printer << 12 << u"e mais 4 lotes"_s;
    }
}

void tst_rolllabels::aLabelSaysWhenThereAreMoreLots()
{
    QFETCH(QString, printer);
    QFETCH(int, lots);
    QFETCH(QString, more);
    WriteOffStation station(Engines::current());
    const Paper paper(station.host);
    for (int lot = 1; lot <= lots; ++lot)
        reserve(station, u"LX-%1"_s.arg(lot, 2, 10, QChar(u'0')));
    station.prepareRoll(u"20"_s);
    station.click(printer);
    station.click(u"BtnImprimir"_s);
    QCOMPARE(paper.pages(), 1);
    const QString label = paper.text();
    QCOMPARE(label.count(u"LX-"_s), 8);
    QVERIFY2(label.contains(u"LX-08"_s), qPrintable(label));
    QCOMPARE(label.contains(u"e mais"_s), !more.isEmpty());
    QVERIFY2(label.contains(more), qPrintable(label));
}

void tst_rolllabels::theLabelPrinterGetsItsOwnLanguage()
{
    WriteOffStation station(Engines::current());
    const Paper paper(station.host);
    reserve(station, u"LX"_s);
    reserve(station, u"LY"_s);
    station.setParameter(50, u"S"_s);
    station.prepareRoll(u"20"_s);
    station.click(u"RgTexto"_s);
    station.confirmRoll(u"20,00"_s);
    const QString sent = QString::fromUtf8(paper.bytes());
    QVERIFY(sent.startsWith(u"^XA"_s));
    QVERIFY(sent.trimmed().endsWith(u"^XZ"_s));
    QCOMPARE(sent.count(u"^XA"_s), 1);
    QVERIFY(sent.contains(u"^FD000012^FS"_s));
    QVERIFY(sent.contains(u"^FD20,000 kg^FS"_s));
    QVERIFY(sent.contains(u"^FO24,378^"_s) && sent.contains(u"^FO24,406^"_s)); // a row of dots for each lot
    QVERIFY(sent.contains(u"0000077  LX^FS"_s) && sent.contains(u"0000077  LY^FS"_s));
}

void tst_rolllabels::dataCannotCommandTheLabelPrinter()
{
    WriteOffStation station(Engines::current());
    const Paper paper(station.host);
    reserve(station, u"^XZ~JA"_s);
    station.prepareRoll(u"20"_s);
    station.click(u"RgTexto"_s);
    station.click(u"BtnImprimir"_s);
    QCOMPARE(paper.bytes().count("^XZ"), 1);
    QVERIFY(!paper.bytes().contains('~'));
}

void tst_rolllabels::aLabelThatFailsLeavesTheRollWrittenAndSaysSo()
{
    WriteOffStation station(Engines::current());
    EmptyPrinter printer;
    station.host.setReportDesk(&printer);
    station.setParameter(50, u"S"_s);
    station.prepareRoll(u"20"_s);
    MessageAnswers answers;
    answers.expect(u"Peso da Baixa 20,00?"_s, QMessageBox::Yes);
    answers.expect(u"O rolo 001 da OF 000012 está gravado. Não há etiquetas."_s, QMessageBox::Ok);
    station.click(u"btnBaixa"_s);
    QCOMPARE(station.rolls().size(), 1);
    QCOMPARE(station.text(u"EdtPesoRolo"_s), u"0,00"_s); // nobody confirms it again
    QCOMPARE(station.text(u"EdtCodOper"_s), QString());
    station.host.setReportDesk(nullptr);
}

void tst_rolllabels::aLogThatFailsLeavesTheRollWrittenAndSaysSo()
{
    WriteOffStation station(Engines::current());
    station.prepareRoll(u"20"_s);
    station.database.run(u"ALTER TABLE QEN_LOG DROP TEXTO"_s);
    MessageAnswers answers;
    answers.expect(u"Peso da Baixa 20,00?"_s, QMessageBox::Yes);
    answers.expectWindow([](QWidget *window) {
        auto *box = qobject_cast<QMessageBox *>(window);
        QVERIFY(box && box->text().startsWith(u"O rolo 001 da OF 000012 está gravado."_s));
        box->accept();
    });
    station.click(u"btnBaixa"_s);
    QCOMPARE(station.rolls().size(), 1);
    QCOMPARE(station.text(u"EdtPesoRolo"_s), u"0,00"_s);
}

void tst_rolllabels::zerosAreFilledInFromTheLeft()
{
    QCOMPARE(RollLabelYarn::answer(u"ZEROE"_s, {u"7"_s, 3}), QVariant(u"007"_s));
    QCOMPARE(RollLabelYarn::answer(u"ZEROE"_s, {12, 2}), QVariant(u"12"_s));
    QCOMPARE(RollLabelYarn::answer(u"ZEROE"_s, {u"1234"_s, 3}), QVariant(u"1234"_s));
    QVERIFY(!RollLabelYarn::answer(u"OUTRA"_s, {u"7"_s, 3}).isValid());
}

QTEST_MAIN(tst_rolllabels)
#include "tst_rolllabels.moc"
