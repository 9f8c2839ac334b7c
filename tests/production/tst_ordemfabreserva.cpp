// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/production/yarnstation.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

namespace {

/// Lets every reservation of the lot B fail.
void refuseLotB(YarnStation &station)
{
    if (Engines::current() == u"postgres"_s)
        station.database.run(u"ALTER TABLE {BAIXA_FIO} ADD CONSTRAINT refuse CHECK (LOTE <> 'B') NOT VALID"_s);
    else
        station.database.run(u"ALTER TABLE {BAIXA_FIO} ADD CONSTRAINT REFUSE CHECK (LOTE <> 'B')"_s);
    // The table is known anew to those who come after it.
    station.tabela.IBDatabase->open(station.database.settings());
}

} // namespace

/// Saving an order's yarn: what is reserved, what is refused, and what remains when that fails.
class TestOrdemFabReserva : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void whatIsTickedIsReserved();
    void whatAnOrderHoldsIsNotFreeForTheNext();
    void aYarnThatLacksStopsTheSave();
    void theOrdersOwnChecksComeFirst();
    void aYarnWithoutLotsStopsTheSaveToo();
    void exactlyEnoughIsEnough();
    void withoutAnyTickNothingIsCheckedOrReserved();
    void withoutChecksNothingStopsTheSave();
    void savingAgainKeepsWhatTheOrderHolds();
    void untickingReleasesTheLot();
    void anotherFabricReleasesTheOldYarn();
    void anOrderInProductionKeepsItsYarnWhenClosed();
    void deletingTheOrderReleasesItsYarn();
    void lotsWithoutNumberAndHostileOnesAreReserved();

    void aLotTakenMeanwhileIsNotTakenTwice();
    void whatAnOrderHoldsAlreadyItKeepsInAnyCase();
    void aReservationThatFailsLeavesTheOldOnes();
};

void TestOrdemFabReserva::whatIsTickedIsReserved()
{
    YarnStation station;
    station.insertLots();
    station.openOrders();
    station.startOrder();
    station.enter(u"edtCliente"_s, u"00001"_s);
    station.showYarn();
    for (const QString &lot : {u"A"_s, u"B"_s, u"D"_s})
        station.tick(lot);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.page(), u"TabOrdem"_s);
    QCOMPARE(station.database.rows(
                 u"SELECT NUMERO, DOCTO, CODIGO, LOTE, QTDE FROM {BAIXA_FIO} ORDER BY CODIGO DESC, LOTE"_s),
        (QStringList{
            u"000001|0001203|FIO30CO|A|50"_s, u"000001|0001203|FIO30CO|B|10"_s, u"000001|0001203|FIO150PES|D|40"_s}));
    QCOMPARE(station.log(), QStringList{u"ORDEM FAB. MAL.|INCLUSAO DA OF MAL. NR.: 000001|0|000001|ADMIN"_s});
    // The grid has been built anew.
    station.showYarn();
    QCOMPARE(station.balance(u"A"_s), u"0,000"_s);
    QCOMPARE(station.balance(u"B"_s), u"20,000"_s);
    QCOMPARE(station.taken(u"B"_s), u"10,000"_s);
}

void TestOrdemFabReserva::whatAnOrderHoldsIsNotFreeForTheNext()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder({.number = u"000001"_s});
    station.insertOrder({.number = u"000002"_s, .totalKg = 40});
    station.reserve(u"000001"_s, {.lot = u"A"_s}, 45.5);
    station.editYarn();
    QCOMPARE(station.balance(u"A"_s), u"4,500"_s);
    station.tick(u"A"_s);
    QCOMPARE(station.taken(u"A"_s), u"4,500"_s);
    station.tick(u"B"_s);
    QCOMPARE(station.taken(u"B"_s), u"19,500"_s);
    station.tick(u"D"_s);
    station.click(u"SbConfirmar"_s);
    QCOMPARE(station.reservations(),
        (QStringList{u"000001 A 45.5"_s, u"000002 A 4.5"_s, u"000002 B 19.5"_s, u"000002 D 16"_s}));
}

void TestOrdemFabReserva::aYarnThatLacksStopsTheSave()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.reserve(u"000012"_s, {.lot = u"C"_s}, 3);
    station.editYarn();
    station.tick(u"C"_s);
    station.tick(u"A"_s);
    station.tick(u"D"_s);
    station.showOrder();
    expectInformation(station.answers, station.caption, station.insufficient(station.cotton));
    station.click(u"SbConfirmar"_s);
    QVERIFY(station.answers.allCame());
    QVERIFY(station.isEditing());
    QVERIFY(!station.host.busyMarker().isBusy());
    // The user stands before the yarn that lacks, the grid as it was.
    QCOMPARE(station.page(), u"TabFios"_s);
    QTRY_COMPARE(station.focus(), u"DBGrid2"_s);
    QCOMPARE(station.taken(u"A"_s), u"50,000"_s);
    QCOMPARE(station.taken(u"D"_s), u"40,000"_s);
    QCOMPARE(station.reservations(), QStringList{u"000012 C 3"_s});
    QCOMPARE(station.log(), QStringList());
    station.tick(u"B"_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.reservations(), (QStringList{u"000012 A 50"_s, u"000012 B 10"_s, u"000012 D 40"_s}));
}

void TestOrdemFabReserva::theOrdersOwnChecksComeFirst()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.editYarn();
    station.tick(u"A"_s);
    station.showOrder();
    station.enter(u"edtData"_s, {});
    expectInformation(station.answers, station.caption, u"Data Inválida. Impossível Continuar."_s);
    station.click(u"SbConfirmar"_s);
    QTRY_COMPARE(station.focus(), u"edtData"_s);
}

void TestOrdemFabReserva::aYarnWithoutLotsStopsTheSaveToo()
{
    YarnStation station;
    station.insertLot({.lot = u"A"_s, .kg = 500});
    station.insertOrder();
    station.editYarn();
    station.tick(u"A"_s);
    expectInformation(station.answers, station.caption, station.insufficient(station.polyester));
    station.click(u"SbConfirmar"_s);
    QVERIFY(station.isEditing());
    QCOMPARE(station.reservations(), QStringList());
}

void TestOrdemFabReserva::exactlyEnoughIsEnough()
{
    YarnStation station;
    station.insertLot({.lot = u"A"_s, .kg = 20.001});
    station.insertLot({.lot = u"B"_s, .kg = 0.002});
    station.insertLot({.lot = u"D"_s, .kg = 13.336, .yarn = station.polyester});
    station.insertOrder({.totalKg = 33.339}); // 20.0034 and 13.3356 kg
    station.editYarn();
    station.tick(u"A"_s);
    station.tick(u"D"_s);
    QCOMPARE(station.yarn(station.cotton), u"20,003 20,001 0,002 Falta fio"_s);
    station.tick(u"B"_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.reservations(), (QStringList{u"000012 A 20.001"_s, u"000012 B 0.002"_s, u"000012 D 13.336"_s}));
}

void TestOrdemFabReserva::withoutAnyTickNothingIsCheckedOrReserved()
{
    YarnStation station;
    station.insertLot({.lot = u"A"_s, .kg = 1});
    station.insertOrder();
    station.reserve(u"000012"_s, {.lot = u"A"_s}, 1);
    station.editYarn();
    station.tick(u"A"_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.reservations(), QStringList());
}

void TestOrdemFabReserva::withoutChecksNothingStopsTheSave()
{
    YarnStation station;
    station.setMode(u"N"_s);
    station.insertLots();
    station.insertOrder();
    station.reserve(u"000012"_s, {.lot = u"B"_s}, 99);
    station.editYarn();
    station.tick(u"A"_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    // What was recorded stays; the yarn was covered already.
    QCOMPARE(station.reservations(), (QStringList{u"000012 A 0"_s, u"000012 B 99"_s}));
    station.showYarn();
    QCOMPARE(station.taken(u"A"_s), u"0,000"_s);
}

void TestOrdemFabReserva::savingAgainKeepsWhatTheOrderHolds()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.reserve(u"000012"_s, {.lot = u"A"_s}, 50);
    station.reserve(u"000012"_s, {.lot = u"B"_s}, 10);
    station.reserve(u"000012"_s, {.lot = u"D"_s, .yarn = station.polyester}, 40);
    const QStringList held = station.reservations();
    station.openOrders();
    for (const QString &machine : {u"002"_s, u"001"_s}) {
        station.click(u"BtnAltera"_s);
        station.enter(u"edtMaquina"_s, machine);
        station.click(u"SbConfirmar"_s);
        QVERIFY(!station.isEditing());
        QCOMPARE(station.reservations(), held);
    }
}

void TestOrdemFabReserva::untickingReleasesTheLot()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.reserve(u"000012"_s, {.lot = u"A"_s}, 50);
    station.reserve(u"000012"_s, {.lot = u"B"_s}, 10);
    station.reserve(u"000012"_s, {.lot = u"D"_s, .yarn = station.polyester}, 40);
    station.editYarn();
    station.tick(u"A"_s);
    station.tick(u"C"_s);
    station.click(u"SbConfirmar"_s);
    QCOMPARE(station.reservations(), (QStringList{u"000012 B 10"_s, u"000012 C 50"_s, u"000012 D 40"_s}));
    station.showYarn();
    QCOMPARE(station.balance(u"A"_s), u"50,000"_s);
}

void TestOrdemFabReserva::anotherFabricReleasesTheOldYarn()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.reserve(u"000012"_s, {.lot = u"A"_s}, 60);
    station.reserve(u"000012"_s, {.lot = u"D"_s, .yarn = station.polyester}, 40);
    station.openOrders();
    station.click(u"BtnAltera"_s);
    station.enter(u"edtMaterial"_s, u"M0002"_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.reservations(), QStringList());
}

void TestOrdemFabReserva::anOrderInProductionKeepsItsYarnWhenClosed()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.reserve(u"000012"_s, {.lot = u"C"_s}, 60);
    station.reserve(u"000012"_s, {.lot = u"D"_s, .yarn = station.polyester}, 40);
    station.writeOff(u"000012"_s, {20, 30});
    // Its yarn is used up meanwhile.
    station.database.run(u"UPDATE {NFT_ITEN} SET QTDE_BAIXA = ESTOQUE_FISICO, QTDE_DEVOL = ESTOQUE_FISICO"_s);
    station.openOrders();
    station.click(u"BtnAltera"_s);
    station.click(u"BitBtn1"_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.value(u"SELECT KG_TOTAL FROM {OF_MALHA}"_s).toDouble(), 50.0);
}

void TestOrdemFabReserva::deletingTheOrderReleasesItsYarn()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder({.number = u"000001"_s});
    station.insertOrder({.number = u"000002"_s});
    station.reserve(u"000001"_s, {.lot = u"A"_s}, 20);
    station.reserve(u"000002"_s, {.lot = u"A"_s}, 30);
    station.reserve(u"000002"_s, {.lot = u"D"_s, .yarn = station.polyester}, 40);
    station.openOrders();
    station.answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.reservations(), QStringList{u"000001 A 20"_s});
    station.showYarn();
    QCOMPARE(station.balance(u"A"_s), u"30,000"_s);
    QCOMPARE(station.taken(u"A"_s), u"20,000"_s);
    QCOMPARE(station.balance(u"D"_s), u"40,000"_s);
}

void TestOrdemFabReserva::lotsWithoutNumberAndHostileOnesAreReserved()
{
    YarnStation station;
    const QString hostile = u"L'1; -- {X} %_\\"_s;
    station.insertLot({.lot = {}, .kg = 10});
    station.insertLot({.lot = hostile, .kg = 90});
    station.insertLot({.lot = {}, .kg = 90, .yarn = station.polyester});
    station.insertOrder();
    station.editYarn();
    // By yarn: polyester, cotton without number, the other cotton.
    for (const int row : {0, 1}) {
        station.lots()->setCurrentIndex(station.lots()->model()->index(row, 0));
        QTest::keyClick(station.lots(), Qt::Key_Space);
    }
    station.tick(hostile);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.database.rows(u"SELECT CODIGO, LOTE, QTDE FROM {BAIXA_FIO} ORDER BY CODIGO, LOTE"_s),
        (QStringList{u"FIO150PES||40"_s, u"FIO30CO||10"_s, u"FIO30CO|"_s + hostile + u"|50"_s}));
    station.showYarn();
    QCOMPARE(station.taken(hostile), u"50,000"_s);
}

void TestOrdemFabReserva::aLotTakenMeanwhileIsNotTakenTwice()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.reserve(u"000012"_s, {.lot = u"B"_s}, 1);
    station.editYarn();
    for (const QString &lot : {u"B"_s, u"A"_s, u"C"_s, u"D"_s})
        station.tick(lot);
    QCOMPARE(station.taken(u"A"_s), u"50,000"_s);
    QCOMPARE(station.taken(u"C"_s), u"10,000"_s);
    // Another order was quicker.
    station.reserve(u"000099"_s, {.lot = u"A"_s}, 12);
    expectFailure(station.answers, station.caption, station.insufficient(station.cotton));
    station.click(u"SbConfirmar"_s);
    QVERIFY(station.isEditing());
    QCOMPARE(station.reservations(), (QStringList{u"000012 B 1"_s, u"000099 A 12"_s}));
    QCOMPARE(station.log(), QStringList());
    // What is free now is seen at once, with the ticks as they were.
    QTRY_COMPARE(station.taken(u"A"_s), u"38,000"_s);
    QCOMPARE(station.balance(u"A"_s), u"38,000"_s);
    QCOMPARE(station.taken(u"C"_s), u"22,000"_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(
        station.reservations(), (QStringList{u"000012 A 38"_s, u"000012 C 22"_s, u"000012 D 40"_s, u"000099 A 12"_s}));
}

void TestOrdemFabReserva::whatAnOrderHoldsAlreadyItKeepsInAnyCase()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.reserve(u"000012"_s, {.lot = u"A"_s}, 50);
    station.reserve(u"000012"_s, {.lot = u"C"_s}, 10);
    station.reserve(u"000012"_s, {.lot = u"D"_s, .yarn = station.polyester}, 40);
    station.editYarn();
    station.reserve(u"000099"_s, {.lot = u"A"_s}, 500); // reserved without checks
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(
        station.reservations(), (QStringList{u"000012 A 50"_s, u"000012 C 10"_s, u"000012 D 40"_s, u"000099 A 500"_s}));
}

void TestOrdemFabReserva::aReservationThatFailsLeavesTheOldOnes()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.reserve(u"000012"_s, {.lot = u"C"_s}, 60);
    station.reserve(u"000012"_s, {.lot = u"D"_s, .yarn = station.polyester}, 40);
    const QStringList held = station.reservations();
    refuseLotB(station);
    station.editYarn();
    station.tick(u"C"_s);
    station.tick(u"A"_s);
    station.tick(u"B"_s);
    station.showOrder();
    station.enter(u"edtMaquina"_s, u"002"_s);
    expectFailure(station.answers, station.caption, station.refusedByTable);
    station.click(u"SbConfirmar"_s);
    QVERIFY(station.isEditing());
    QVERIFY(!station.host.busyMarker().isBusy());
    QCOMPARE(station.reservations(), held);
    QCOMPARE(station.value(u"SELECT MAQUINA FROM {OF_MALHA}"_s).toString(), u"001"_s);
    QCOMPARE(station.log(), QStringList());
    // Without that lot the same edit is saved.
    station.showYarn();
    station.tick(u"B"_s);
    station.tick(u"C"_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.reservations(), (QStringList{u"000012 A 50"_s, u"000012 C 10"_s, u"000012 D 40"_s}));
}

QTEST_MAIN(TestOrdemFabReserva)
#include "tst_ordemfabreserva.moc"
