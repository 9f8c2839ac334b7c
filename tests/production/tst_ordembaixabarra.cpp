// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/form.h"
#include "module/host_services/clock.h"
#include "module/host_services/format.h"
#include "tests/production/writeoffstation.h"
#include "tests/support/engines.h"

#include <QTableView>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_ordembaixabarra : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void aScannedOrderShowsItselfItsRollsAndTheWeight();
    void anEmptyOrUnknownOrderShowsNothing();
    void aConfirmedRollIsWrittenStockedAndLogged();
    void theScreenIsReadyForTheNextRoll();
    void theNextRollOfAnOrderAddsToItsStock();
    void answeringNoWritesNothing();
    void withoutTheRightNothingHappens();
    void noWeightNoOrderOrUnknownOrderIsRefusedInSilence();
    void aMissingShiftOrOperatorStopsTheConfirmationWhole();
    void aRollEqualToTheBalanceIsAccepted();
    void aRollAboveTheBalanceIsRefused();
    void thirtyRollsThatAddUpToThePlanCloseTheOrder();
    void anotherStationMayHaveTakenTheBalance();
    void twoStationsNeverGiveOneNumberTwice();
    void theThousandthRollIsFollowedByTheNext();
    void aNightShiftCountsForTheNextDayAfterNoon_data();
    void aNightShiftCountsForTheNextDayAfterNoon();
    void withoutFinishedFabricStockNoneIsTouched();
    void aStatementThatFailsLeavesNothingBehind_data();
    void aStatementThatFailsLeavesNothingBehind();
    void enteringTheDateSetsToday();
    void theDateGoesOnOverMidnightUnlessItWasTyped();
    void anOrderDeletedMeanwhileTakesNoRoll();
};

void tst_ordembaixabarra::aScannedOrderShowsItselfItsRollsAndTheWeight()
{
    WriteOffStation station(Engines::current());
    station.addRoll(u"000012"_s, u"001"_s, 20.125);
    station.scale.setWeight(23.45);
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    QCOMPARE(station.form()->windowTitle(), u"Baixa Ordem de Fabricação"_s);
    station.enter(u"edtOF"_s, u"000012"_s);
    QCOMPARE(station.text(u"edtData"_s), u"02/03/2026"_s);
    QCOMPARE(station.text(u"edtCliente"_s), u"00001"_s);
    QCOMPARE(station.text(u"edtDescCliente"_s), u"Confecções Serra Azul Ltda"_s);
    QCOMPARE(station.text(u"edtMaterial"_s), u"M0001"_s);
    QCOMPARE(station.text(u"edtDescMaterial"_s), u"Meia-malha PV 60/40"_s);
    QCOMPARE(station.text(u"EdtCodMaq"_s), u"001"_s);
    QCOMPARE(station.text(u"EdtKGRolo"_s), u"20,00"_s);
    QCOMPARE(station.text(u"edtKGTotal"_s), u"100,00"_s);
    QCOMPARE(station.text(u"EdtPesoBai"_s), u"20,13"_s);
    QCOMPARE(station.text(u"EdtSaldo"_s), u"79,88"_s);
    QCOMPARE(station.text(u"EdtPesoRolo"_s), u"23,45"_s);
    const auto *grid = station.child<QTableView>(u"DBGrid"_s);
    QCOMPARE(grid->model()->rowCount(), 1);
    QStringList titles;
    for (int column = 0; column < 8; ++column)
        titles.append(grid->model()->headerData(column, Qt::Horizontal).toString());
    QCOMPARE(titles,
        QStringList({u"Numero OF"_s, u"Nr. Baixa"_s, u"Material"_s, u"Descrição"_s, u"Data"_s, u"Turno"_s,
            u"Funcionario"_s, u"HORA"_s}));
    QCOMPARE(grid->model()->index(0, 1).data().toString(), u"001"_s);
    QCOMPARE(grid->model()->index(0, 7).data().toString(), u"08:15:00"_s);
}

void tst_ordembaixabarra::anEmptyOrUnknownOrderShowsNothing()
{
    WriteOffStation station(Engines::current());
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    station.enter(u"edtOF"_s, u"000012"_s);
    QCOMPARE(station.text(u"edtCliente"_s), u"00001"_s);
    station.enter(u"edtOF"_s, u"999999"_s);
    QCOMPARE(station.text(u"edtCliente"_s), QString());
    QCOMPARE(station.text(u"edtKGTotal"_s), u"0,00"_s);
    QCOMPARE(station.text(u"lbBalanca"_s), u"OF não encontrada."_s);
    station.enter(u"edtOF"_s, u"000012"_s);
    station.enter(u"edtOF"_s, QString());
    QCOMPARE(station.text(u"edtCliente"_s), QString());
}

void tst_ordembaixabarra::aConfirmedRollIsWrittenStockedAndLogged()
{
    WriteOffStation station(Engines::current());
    station.prepareRoll(u"23,456"_s);
    station.confirmRoll(u"23,46"_s);
    QCOMPARE(station.rolls(), QStringList({u"001|2026-03-10|10:30:00.000|1|000101|23.456"_s}));
    QCOMPARE(station.stock(), QStringList({u"M0001|000012|23.456|0"_s}));
    QCOMPARE(station.log(),
        QStringList({u"BAIXA OF BARRA|BAIXA OF MALHARIA NR.: 000012 QTDE.: 23,456 NUM.BAIXA: 001|3|ADMIN"_s}));
    QVERIFY(station.host.recordedReports().isEmpty()); // parameter "MAL" 50 is not "S"
}

void tst_ordembaixabarra::theScreenIsReadyForTheNextRoll()
{
    WriteOffStation station(Engines::current());
    station.prepareRoll(u"20"_s);
    station.confirmRoll(u"20,00"_s);
    for (const QString &field : {u"edtCliente"_s, u"edtDescCliente"_s, u"edtMaterial"_s, u"edtDescMaterial"_s,
             u"EdtCodMaq"_s, u"EdtDescMaq"_s, u"edtData"_s, u"EdtCodOper"_s, u"EdtNomOper"_s})
        QCOMPARE(station.text(field), QString());
    for (const QString &number : {u"EdtPesoRolo"_s, u"EdtKGRolo"_s, u"edtKGTotal"_s, u"EdtPesoBai"_s, u"EdtSaldo"_s})
        QCOMPARE(station.text(number), u"0,00"_s);
    QCOMPARE(station.text(u"EdtTurno"_s), u"1"_s); // the shift goes on
    QCOMPARE(station.focus(), u"edtOF"_s);
    QCOMPARE(station.child<QLineEdit>(u"edtOF"_s)->selectedText(), u"000012"_s); // a scan replaces it
    QCOMPARE(station.child<QTableView>(u"DBGrid"_s)->model()->rowCount(), 1); // the roll just made is listed
}

void tst_ordembaixabarra::theNextRollOfAnOrderAddsToItsStock()
{
    WriteOffStation station(Engines::current());
    station.prepareRoll(u"20,5"_s);
    station.confirmRoll(u"20,50"_s);
    station.prepareRoll(u"19,25"_s);
    QCOMPARE(station.text(u"EdtSaldo"_s), u"79,50"_s);
    station.confirmRoll(u"19,25"_s);
    QCOMPARE(station.stock(), QStringList({u"M0001|000012|39.75|0"_s}));
    QCOMPARE(station.rolls().size(), 2);
    QVERIFY(station.rolls().last().startsWith(u"002|"_s));
}

void tst_ordembaixabarra::answeringNoWritesNothing()
{
    WriteOffStation station(Engines::current());
    station.prepareRoll(u"20"_s);
    {
        MessageAnswers answers;
        answers.expect(u"Peso da Baixa 20,00?"_s, QMessageBox::No, u"Baixa Ordem de Fabricação"_s);
        station.click(u"btnBaixa"_s);
    }
    {
        MessageAnswers answers;
        answers.expectAndType(u"Peso da Baixa 20,00?"_s, Qt::Key_Escape);
        station.click(u"btnBaixa"_s);
    }
    QVERIFY(station.rolls().isEmpty());
    QVERIFY(station.log().isEmpty());
    QCOMPARE(station.text(u"EdtPesoRolo"_s), u"20,00"_s); // nothing is cleared
    QCOMPARE(station.text(u"edtCliente"_s), u"00001"_s);
}

void tst_ordembaixabarra::withoutTheRightNothingHappens()
{
    WriteOffStation station(Engines::current(), u"SEMDIREITO"_s);
    station.addRoll(u"000012"_s, u"001"_s, 20);
    station.prepareRoll(u"20"_s);
    const MessageAnswers nobodyAsks;
    station.click(u"btnBaixa"_s);
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.rolls().size(), 1);
    QVERIFY(station.log().isEmpty());
}

void tst_ordembaixabarra::noWeightNoOrderOrUnknownOrderIsRefusedInSilence()
{
    WriteOffStation station(Engines::current());
    station.prepareRoll(u"0"_s);
    const MessageAnswers nobodyAsks;
    station.click(u"btnBaixa"_s);
    station.enter(u"EdtPesoRolo"_s, u"-3"_s);
    station.click(u"btnBaixa"_s);
    station.enter(u"edtOF"_s, u"555555"_s);
    station.enter(u"EdtPesoRolo"_s, u"20"_s);
    station.click(u"btnBaixa"_s);
    station.enter(u"edtOF"_s, u"  "_s);
    station.click(u"btnBaixa"_s);
    QVERIFY(station.rolls().isEmpty());
    QVERIFY(station.log().isEmpty());
}

void tst_ordembaixabarra::aMissingShiftOrOperatorStopsTheConfirmationWhole()
{
    WriteOffStation station(Engines::current());
    station.setParameter(50, u"S"_s);
    station.scale.setWeight(20); // it is read again whenever the order field is left
    station.prepareRoll(u"20"_s, QString());
    {
        MessageAnswers answers;
        answers.expect(u"Peso da Baixa 20,00?"_s, QMessageBox::Yes).expect(u"Especifique um Turno."_s);
        station.click(u"btnBaixa"_s);
    }
    QCOMPARE(station.focus(), u"EdtTurno"_s);
    station.enter(u"EdtTurno"_s, u"1"_s);
    station.enter(u"EdtCodOper"_s, QString());
    {
        MessageAnswers answers;
        answers.expect(u"Peso da Baixa 20,00?"_s, QMessageBox::Yes).expect(u"Especifique um Operador."_s);
        station.click(u"btnBaixa"_s);
    }
    QCOMPARE(station.focus(), u"EdtCodOper"_s);
    QVERIFY(station.rolls().isEmpty());
    QVERIFY(station.stock().isEmpty());
    QVERIFY(station.log().isEmpty());
    QVERIFY(station.host.recordedReports().isEmpty());
    QCOMPARE(station.text(u"edtCliente"_s), u"00001"_s); // not cleared
    QCOMPARE(station.text(u"EdtPesoRolo"_s), u"20,00"_s);
}

void tst_ordembaixabarra::aRollEqualToTheBalanceIsAccepted()
{
    WriteOffStation station(Engines::current());
    station.addRoll(u"000012"_s, u"001"_s, 80.1);
    station.prepareRoll(u"19,9"_s);
    station.confirmRoll(u"19,90"_s);
    QCOMPARE(station.rolls().size(), 2);
}

void tst_ordembaixabarra::aRollAboveTheBalanceIsRefused()
{
    WriteOffStation station(Engines::current());
    station.addRoll(u"000012"_s, u"001"_s, 80.1);
    station.prepareRoll(u"19,91"_s);
    MessageAnswers answers;
    answers.expect(u"Quantidade maior que o Saldo."_s, QMessageBox::Ok, u"Baixa Ordem de Fabricação"_s);
    station.click(u"btnBaixa"_s);
    QCOMPARE(station.rolls().size(), 1);
    QVERIFY(station.log().isEmpty());
}

void tst_ordembaixabarra::thirtyRollsThatAddUpToThePlanCloseTheOrder()
{
    WriteOffStation station(Engines::current());
    station.database.run(u"UPDATE {OF_MALHA} SET KG_TOTAL = 99.99 WHERE NUM_OF = '000012'"_s);
    for (int roll = 1; roll < 30; ++roll)
        station.addRoll(u"000012"_s, QString::number(roll).rightJustified(3, u'0'), 3.333);
    station.prepareRoll(u"3,333"_s);
    station.confirmRoll(u"3,33"_s);
    QCOMPARE(station.rolls().size(), 30);
    QCOMPARE(station.value(u"SELECT SUM(QTDE) FROM {OF_MALHA_BAIXAS}"_s).toDouble(), 99.99);
    station.enter(u"edtOF"_s, u"000012"_s);
    QCOMPARE(station.text(u"EdtSaldo"_s), u"0,00"_s);
}

void tst_ordembaixabarra::anotherStationMayHaveTakenTheBalance()
{
    WriteOffStation station(Engines::current());
    station.prepareRoll(u"30"_s);
    station.addRoll(u"000012"_s, u"001"_s, 75); // written by another station after the screen was filled
    {
        MessageAnswers answers;
        answers.expect(u"Peso da Baixa 30,00?"_s, QMessageBox::Yes).expect(u"Quantidade maior que o Saldo."_s);
        station.click(u"btnBaixa"_s);
    }
    QCOMPARE(station.rolls().size(), 1);
    QVERIFY(station.stock().isEmpty());
    QVERIFY(station.log().isEmpty());
    QCOMPARE(station.text(u"EdtSaldo"_s), u"25,00"_s); // what is left by now
    QCOMPARE(station.text(u"EdtPesoRolo"_s), u"30"_s); // to be corrected
}

void tst_ordembaixabarra::twoStationsNeverGiveOneNumberTwice()
{
    WriteOffStation station(Engines::current());
    station.prepareRoll(u"20"_s);
    station.addRoll(u"000012"_s, u"001"_s, 20); // the other station was faster by a moment
    station.confirmRoll(u"20,00"_s);
    QCOMPARE(station.rolls().size(), 2);
    QVERIFY(station.rolls().last().startsWith(u"002|"_s));
}

void tst_ordembaixabarra::theThousandthRollIsFollowedByTheNext()
{
    WriteOffStation station(Engines::current());
    station.database.run(u"UPDATE {OF_MALHA} SET KG_TOTAL = 50000 WHERE NUM_OF = '000012'"_s);
    station.addRoll(u"000012"_s, u"998"_s, 20);
    station.addRoll(u"000012"_s, u"999"_s, 20);
    for (const QString &number : {u"1000"_s, u"1001"_s}) {
        station.prepareRoll(u"20"_s);
        station.confirmRoll(u"20,00"_s);
        QVERIFY2(station.rolls().last().startsWith(number + u'|'), qPrintable(station.rolls().last()));
    }
    const auto *grid = station.child<QTableView>(u"DBGrid"_s);
    QCOMPARE(grid->model()->index(3, 1).data().toString(), u"1001"_s);
}

void tst_ordembaixabarra::aNightShiftCountsForTheNextDayAfterNoon_data()
{
    QTest::addColumn<QString>("shift");
    QTest::addColumn<QTime>("time");
    QTest::addColumn<QString>("day");
    QTest::newRow("night 12:00:00") << u"4"_s << QTime(12, 0, 0) << u"2026-03-10"_s;
    QTest::newRow("night 12:00:01") << u"4"_s << QTime(12, 0, 1) << u"2026-03-11"_s;
    QTest::newRow("night, small hours") << u"4"_s << QTime(3, 30, 0) << u"2026-03-10"_s;
    QTest::newRow("day 12:00:01") << u"1"_s << QTime(12, 0, 1) << u"2026-03-10"_s;
    QTest::newRow("day, evening") << u"2"_s << QTime(21, 59, 59) << u"2026-03-10"_s;
}

void tst_ordembaixabarra::aNightShiftCountsForTheNextDayAfterNoon()
{
    QFETCH(QString, shift);
    QFETCH(QTime, time);
    QFETCH(QString, day);
    WriteOffStation station(Engines::current());
    Clock::pin(QDateTime(QDate(2026, 3, 10), time));
    station.prepareRoll(u"20"_s, shift);
    station.confirmRoll(u"20,00"_s);
    QCOMPARE(
        station.rolls(), QStringList({u"001|%1|%2.000|%3|000101|20"_s.arg(day, time.toString(u"HH:mm:ss"_s), shift)}));
}

void tst_ordembaixabarra::withoutFinishedFabricStockNoneIsTouched()
{
    WriteOffStation station(Engines::current());
    station.setParameter(10, u"N"_s);
    station.database.run(
        u"INSERT INTO {PA_MALHA} (CODIGO, NUM_OF, QTDE_TOTAL, FATURADO) VALUES ('M0001', '000012', 7, 1)"_s);
    station.prepareRoll(u"20"_s);
    station.confirmRoll(u"20,00"_s);
    QCOMPARE(station.stock(), QStringList({u"M0001|000012|7|1"_s}));
    MessageAnswers answers;
    answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    station.click(u"BtExcluir"_s);
    QVERIFY(station.rolls().isEmpty());
    QCOMPARE(station.stock(), QStringList({u"M0001|000012|7|1"_s}));
}

void tst_ordembaixabarra::aStatementThatFailsLeavesNothingBehind_data()
{
    QTest::addColumn<QString>("broken");
    QTest::newRow("register") << u"ALTER TABLE {OF_MALHA_BAIXAS} DROP HORA"_s;
    QTest::newRow("stock") << u"ALTER TABLE {PA_MALHA} DROP FATURADO"_s;
}

void tst_ordembaixabarra::aStatementThatFailsLeavesNothingBehind()
{
    QFETCH(QString, broken);
    WriteOffStation station(Engines::current());
    station.prepareRoll(u"20"_s);
    station.database.run(broken);
    {
        MessageAnswers answers;
        answers.expect(u"Peso da Baixa 20,00?"_s, QMessageBox::Yes);
        answers.expect(u"O banco de dados recusou a operação. Nada foi gravado."_s);
        station.click(u"btnBaixa"_s);
    }
    QCOMPARE(station.database.count(u"OF_MALHA_BAIXAS"_s), 0);
    QCOMPARE(station.database.count(u"PA_MALHA"_s), 0);
    QVERIFY(station.log().isEmpty());
    QCOMPARE(station.text(u"EdtPesoRolo"_s), u"20,00"_s); // the operator can try again
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
}

void tst_ordembaixabarra::enteringTheDateSetsToday()
{
    WriteOffStation station(Engines::current());
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    station.enter(u"DtBaixa"_s, u"01/03/2026"_s);
    QCOMPARE(station.text(u"DtBaixa"_s), u"01/03/2026"_s);
    station.child(u"EdtTurno"_s)->setFocus();
    station.child(u"DtBaixa"_s)->setFocus();
    QCOMPARE(station.text(u"DtBaixa"_s), u"10/03/2026"_s);
}

void tst_ordembaixabarra::theDateGoesOnOverMidnightUnlessItWasTyped()
{
    WriteOffStation station(Engines::current());
    Clock::pin(QDateTime(QDate(2026, 3, 10), QTime(23, 50)));
    station.prepareRoll(u"20"_s, u"4"_s);
    station.confirmRoll(u"20,00"_s);
    Clock::pin(QDateTime(QDate(2026, 3, 11), QTime(0, 20)));
    station.prepareRoll(u"20"_s, u"4"_s);
    QCOMPARE(station.text(u"DtBaixa"_s), u"11/03/2026"_s);
    station.confirmRoll(u"20,00"_s);
    station.enter(u"DtBaixa"_s, u"10/03/2026"_s);
    station.prepareRoll(u"20"_s, u"4"_s);
    station.confirmRoll(u"20,00"_s);
    QCOMPARE(station.rolls(),
        QStringList({u"001|2026-03-11|23:50:00.000|4|000101|20"_s, u"002|2026-03-11|00:20:00.000|4|000101|20"_s,
            u"003|2026-03-10|00:20:00.000|4|000101|20"_s}));
}

void tst_ordembaixabarra::anOrderDeletedMeanwhileTakesNoRoll()
{
    WriteOffStation station(Engines::current());
    station.prepareRoll(u"20"_s);
    MessageAnswers answers;
    answers.expectWindow([&](QWidget *question) {
        station.database.run(u"DELETE FROM {OF_MALHA}"_s);
        qobject_cast<QMessageBox *>(question)->button(QMessageBox::Yes)->click();
    });
    station.click(u"btnBaixa"_s);
    QVERIFY(answers.allCame());
    QVERIFY(station.rolls().isEmpty());
    QVERIFY(station.log().isEmpty());
    QCOMPARE(station.text(u"lbBalanca"_s), u"OF não encontrada."_s);
    QCOMPARE(station.text(u"edtCliente"_s), QString());
}

QTEST_MAIN(tst_ordembaixabarra)
#include "tst_ordembaixabarra.moc"
