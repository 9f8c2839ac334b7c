// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/production/yarnstation.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

/// The order screen's page "Selecione os Fios": which lots it shows, and what ticking them does.
class TestOrdemFabFios : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void lotsOfTheClientStandByYarnAndDate();
    void otherClientsAndOtherYarnsAreNotShown();
    void everyColumnShowsItsFigure();
    void theBalanceIsWhatNobodyUsedOrReserved();
    void aLotUnderTwoLoopLengthsShowsHalf();
    void aLotCountsOnceHoweverManyLinesItsYarnHas();
    void linesOfColoursSwitchedOffDoNotCount();
    void aLotWhollyReturnedIsShownOnlyToItsOrder();
    void anOrderShowsWhatItHolds();

    void theYarnFollowsTheOrderThatWasSearched();
    void lotsAreTickedOnlyWhileEditing();
    void ticksDrainTheirLotsInTurn();
    void theSpaceBarTicksTheRow();
    void untickingReservesNothing();
    void aYarnThatLacksIsMarkedBeforeTheSave();
    void withoutChecksTicksAreNotTakenBack();
    void withoutChecksTheRecordedRowsAreTheTicks();
    void withoutChecksALotWithoutNumberIsTickedByItsInvoice();

    void needsFollowTheWeightAndTicksStay();
    void aHeavierOrderTakesMoreOfItsOwnLots();
    void anotherClientOrFabricStartsAnew();
    void cancellingForgetsTheTicks();
    void closingTheOrderRefreshesItsNeeds();
    void theWeightIsFetchedFromTheScarcestYarn();
    void withoutAYarnsStockTheFetchedWeightIsZero();
    void aFieldIsLeftBeforeThePageTurns_data();
    void aFieldIsLeftBeforeThePageTurns();
};

void TestOrdemFabFios::lotsOfTheClientStandByYarnAndDate()
{
    YarnStation station;
    station.insertOrder();
    station.insertLot({.lot = u"new"_s, .kg = 10, .document = u"0000001"_s, .date = u"03/01/2026"_s});
    station.insertLot({.lot = u"old"_s, .kg = 10, .document = u"0000002"_s, .date = u"12/15/2025"_s});
    station.insertLot({.lot = u"middle"_s, .kg = 10, .document = u"0000003"_s, .date = u"01/31/2026"_s});
    station.insertLot(
        {.lot = u"poly"_s, .kg = 10, .yarn = station.polyester, .document = u"0000001"_s, .date = u"03/01/2026"_s});
    station.openOrders();
    station.showYarn();
    QStringList shown;
    for (int row = 0; row < station.lots()->model()->rowCount(); ++row)
        shown.append(station.lots()->model()->index(row, station.lots()->columnOf(u"Lote"_s)).data().toString());
    QCOMPARE(shown, (QStringList{u"poly"_s, u"old"_s, u"middle"_s, u"new"_s}));
}

void TestOrdemFabFios::otherClientsAndOtherYarnsAreNotShown()
{
    YarnStation station;
    station.insertOrder();
    station.insertLot({.lot = u"mine"_s, .kg = 10});
    station.insertLot({.lot = u"theirs"_s, .kg = 10, .client = u"00002"_s});
    station.insertLot({.lot = u"elastane"_s, .kg = 10, .yarn = u"FIO20ELA"_s});
    station.openOrders();
    station.showYarn();
    QVERIFY(station.isShown(u"mine"_s));
    QCOMPARE(station.lots()->model()->rowCount(), 1);
    // The yarns of the fabric are listed all the same.
    QCOMPARE(station.yarn(station.cotton), u"60,000 0,000 60,000 Sem reserva"_s);
    QCOMPARE(station.yarn(station.polyester), u"40,000 0,000 40,000 Sem reserva"_s);
}

void TestOrdemFabFios::everyColumnShowsItsFigure()
{
    YarnStation station;
    station.insertOrder();
    station.insertLot({.lot = u"A'1"_s, .kg = 1234.5678});
    station.openOrders();
    QCOMPARE(station.pages()->tabText(1).remove(u'&'), u"Selecione os Fios"_s);
    station.showYarn();
    QStringList titles;
    QStringList values;
    const QAbstractItemModel *model = station.lots()->model();
    for (int column = 0; column < model->columnCount(); ++column) {
        titles.append(model->headerData(column, Qt::Horizontal).toString());
        values.append(model->index(0, column).data().toString());
    }
    QCOMPARE(titles,
        (QStringList{{}, u"Fio"_s, u"Data"_s, u"Nota"_s, u"Marca"_s, u"Lote"_s, u"Saldo"_s, u"Reserva"_s, u"Preço"_s}));
    QCOMPARE(values,
        (QStringList{{}, u"FIO30CO"_s, u"01/02/2026"_s, u"0001203"_s, u"Fiação Pedra Redonda"_s, u"A'1"_s,
            u"1.234,568"_s, u"0,000"_s, u"21,50"_s}));
}

void TestOrdemFabFios::theBalanceIsWhatNobodyUsedOrReserved()
{
    YarnStation station;
    station.insertOrder();
    station.insertLot({.lot = u"A"_s, .kg = 100, .writtenOff = 12.5});
    station.insertLot({.lot = u"B"_s, .kg = 100});
    station.insertLot({.lot = u"C"_s, .kg = 10});
    station.reserve(u"000001"_s, {.lot = u"B"_s}, 20);
    station.reserve(u"000002"_s, {.lot = u"B"_s}, 0.125);
    station.reserve(u"000001"_s, {.lot = u"C"_s}, 15);
    station.reserve(u"000001"_s, {.lot = u"A"_s, .document = u"0009999"_s}, 50); // of another invoice
    station.database.run(u"UPDATE {NFT_ITEN} SET QTDE_BAIXA = NULL WHERE LOTE = 'C'"_s);
    station.openOrders();
    station.showYarn();
    QCOMPARE(station.balance(u"A"_s), u"87,500"_s);
    QCOMPARE(station.balance(u"B"_s), u"79,875"_s);
    QCOMPARE(station.balance(u"C"_s), u"-5,000"_s);
}

void TestOrdemFabFios::aLotUnderTwoLoopLengthsShowsHalf()
{
    YarnStation station;
    station.database.run(u"UPDATE {COMP_MATERIAL} SET PERC = 20 WHERE MATERIAL = 'M0001' AND CODIGO = 'FIO30CO'"_s);
    station.database.run(u"INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, ORDEM, PERC, LFA) "
                         "VALUES ('M0001', '000001', 'FIO30CO', '000001', 3, 40, 310)"_s);
    station.insertOrder();
    station.insertLot({.lot = u"A"_s, .kg = 90});
    station.insertLot({.lot = u"D"_s, .kg = 90, .yarn = station.polyester});
    station.editYarn();
    QCOMPARE(station.balance(u"A"_s), u"45,000"_s);
    QCOMPARE(station.balance(u"D"_s), u"90,000"_s);
    QCOMPARE(station.yarn(station.cotton), u"60,000 0,000 60,000 Sem reserva"_s);
    station.tick(u"A"_s);
    QCOMPARE(station.taken(u"A"_s), u"45,000"_s);
}

void TestOrdemFabFios::aLotCountsOnceHoweverManyLinesItsYarnHas()
{
    YarnStation station;
    station.database.run(u"UPDATE {COMP_MATERIAL} SET PERC = 20, LFA = NULL WHERE CODIGO = 'FIO30CO'"_s);
    for (const QString &loop : {u"NULL"_s, u"NULL"_s}) {
        station.database.run(u"INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, ORDEM, PERC, LFA) "
                             "VALUES ('M0001', '000001', 'FIO30CO', '000002', 3, 20, %1)"_s.arg(loop));
    }
    station.insertOrder();
    station.insertLot({.lot = u"A"_s, .kg = 90});
    station.openOrders();
    station.showYarn();
    // Without any loop length the lot is not divided either.
    QCOMPARE(station.balance(u"A"_s), u"90,000"_s);
    QCOMPARE(station.yarn(station.cotton), u"60,000 0,000 60,000 Sem reserva"_s);
    QCOMPARE(station.lots()->model()->rowCount(), 1);
}

void TestOrdemFabFios::linesOfColoursSwitchedOffDoNotCount()
{
    YarnStation station;
    // Colour 000002 has no flag and is active, 000003 is switched off, 000009 is no stock item.
    const QList<std::pair<QString, QString>> lines{
        {u"000002"_s, u"FIO20ELA"_s}, {u"000003"_s, station.cotton}, {u"000009"_s, station.polyester}};
    for (const auto &[colour, yarn] : lines) {
        station.database.run(u"INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, ORDEM, PERC, LFA) "
                             "VALUES ('M0001', '%1', '%2', '%1', 9, 7, 290)"_s.arg(colour, yarn));
    }
    station.insertOrder();
    for (const QString &yarn : {station.cotton, station.polyester, u"FIO20ELA"_s})
        station.insertLot({.lot = yarn, .kg = 90, .yarn = yarn});
    station.editYarn();
    QCOMPARE(station.yarn(station.cotton), u"60,000 0,000 60,000 Sem reserva"_s);
    QCOMPARE(station.yarn(station.polyester), u"40,000 0,000 40,000 Sem reserva"_s);
    QCOMPARE(station.yarn(u"FIO20ELA"_s), u"7,000 0,000 7,000 Sem reserva"_s);
    station.tick(station.cotton);
    station.tick(station.polyester);
    expectInformation(station.answers, station.caption, station.insufficient(u"FIO20ELA"_s));
    station.click(u"SbConfirmar"_s);
    station.tick(u"FIO20ELA"_s);
    station.click(u"SbConfirmar"_s);
    QCOMPARE(station.reservations(),
        (QStringList{u"000012 FIO150PES 40"_s, u"000012 FIO20ELA 7"_s, u"000012 FIO30CO 60"_s}));
}

void TestOrdemFabFios::aLotWhollyReturnedIsShownOnlyToItsOrder()
{
    YarnStation station;
    station.insertLot({.lot = u"returned"_s, .kg = 90, .returned = 90});
    station.insertLot({.lot = u"over"_s, .kg = 90, .returned = 91});
    station.insertLot({.lot = u"a gram left"_s, .kg = 90, .returned = 89.999});
    station.insertLot({.lot = u"used up"_s, .kg = 90, .writtenOff = 90});
    station.insertOrder({.number = u"000001"_s});
    station.reserve(u"000001"_s, {.lot = u"returned"_s}, 30);
    station.insertOrder({.number = u"000002"_s});
    station.openOrders();
    station.showYarn();
    QVERIFY(!station.isShown(u"returned"_s));
    QVERIFY(!station.isShown(u"over"_s));
    QVERIFY(station.isShown(u"a gram left"_s));
    QVERIFY(station.isShown(u"used up"_s));
    QCOMPARE(station.balance(u"used up"_s), u"0,000"_s);
    station.showOrder();
    station.click(u"sbAnterior"_s);
    station.showYarn();
    QCOMPARE(station.taken(u"returned"_s), u"30,000"_s);
    QVERIFY(!station.isShown(u"over"_s));
}

void TestOrdemFabFios::anOrderShowsWhatItHolds()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.reserve(u"000012"_s, {.lot = u"A"_s}, 50);
    station.reserve(u"000012"_s, {.lot = u"C"_s}, 10);
    station.reserve(u"000012"_s, {.lot = u"B"_s}, 0); // holds nothing
    station.reserve(u"000011"_s, {.lot = u"B"_s}, 5);
    station.openOrders();
    station.showYarn();
    // What the order holds is no longer free, not for itself either.
    QCOMPARE(station.balance(u"A"_s), u"0,000"_s);
    QCOMPARE(station.balance(u"C"_s), u"490,000"_s);
    QCOMPARE(station.taken(u"A"_s), u"50,000"_s);
    QCOMPARE(station.taken(u"C"_s), u"10,000"_s);
    QCOMPARE(station.taken(u"B"_s), u"-"_s);
    QCOMPARE(station.yarn(station.cotton), u"60,000 60,000 0,000 Coberto"_s);
}

void TestOrdemFabFios::theYarnFollowsTheOrderThatWasSearched()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder({.number = u"000011"_s, .totalKg = 50});
    station.insertOrder();
    station.reserve(u"000012"_s, {.lot = u"A"_s}, 50);
    station.openOrders();
    station.showYarn();
    QCOMPARE(station.taken(u"A"_s), u"50,000"_s);
    expectSearchAndTake(station.answers, u"000011"_s);
    station.click(u"SbConsulta"_s);
    QCOMPARE(station.text(u"edtOF"_s), u"000011"_s);
    QCOMPARE(station.taken(u"A"_s), u"-"_s);
    QCOMPARE(station.yarn(station.cotton), u"30,000 0,000 30,000 Sem reserva"_s);
}

void TestOrdemFabFios::lotsAreTickedOnlyWhileEditing()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.openOrders();
    station.showYarn();
    station.tick(u"A"_s);
    station.lots()->setFocus();
    station.key(Qt::Key_Space);
    QCOMPARE(station.taken(u"A"_s), u"-"_s);
    QCOMPARE(station.text(u"lbFios"_s), u"Para marcar lotes, use Incluir ou Alterar."_s);
    station.click(u"BtnAltera"_s);
    QCOMPARE(station.page(), u"TabOrdem"_s);
    station.showYarn();
    station.tick(u"A"_s);
    QCOMPARE(station.taken(u"A"_s), u"50,000"_s);
    // A check mark, not the letter.
    QCOMPARE(station.cell(u"A"_s, u"Baixa"_s).data().toString(), QString());
    station.click(u"SbDesistir"_s);
    station.showYarn();
    station.tick(u"A"_s);
    QCOMPARE(station.taken(u"A"_s), u"-"_s);
}

void TestOrdemFabFios::ticksDrainTheirLotsInTurn()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.editYarn();
    station.tick(u"A"_s);
    QCOMPARE(station.taken(u"A"_s), u"50,000"_s);
    QCOMPARE(station.yarn(station.cotton), u"60,000 50,000 10,000 Falta fio"_s);
    station.tick(u"B"_s);
    QCOMPARE(station.taken(u"B"_s), u"10,000"_s);
    QCOMPARE(station.yarn(station.cotton), u"60,000 60,000 0,000 Coberto"_s);
    station.tick(u"C"_s);
    QCOMPARE(station.taken(u"C"_s), u"-"_s);
    QCOMPARE(station.text(u"lbFios"_s), u"O fio FIO30CO já está coberto: o lote não é necessário."_s);
    station.tick(u"D"_s);
    QCOMPARE(station.taken(u"D"_s), u"40,000"_s);
    QCOMPARE(station.yarn(station.polyester), u"40,000 40,000 0,000 Coberto"_s);
    QCOMPARE(station.balance(u"A"_s), u"50,000"_s);
}

void TestOrdemFabFios::theSpaceBarTicksTheRow()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.openOrders();
    station.click(u"BtnAltera"_s);
    // All by the keyboard: the page's letter, on to its rows, down to the third one.
    station.key(Qt::Key_S, Qt::AltModifier);
    QCOMPARE(station.page(), u"TabFios"_s);
    station.key(Qt::Key_Tab);
    QCOMPARE(station.focus(), u"DBGrid2"_s);
    station.key(Qt::Key_Down);
    station.key(Qt::Key_Down);
    station.key(Qt::Key_Space);
    QCOMPARE(station.taken(u"B"_s), u"30,000"_s);
    station.key(Qt::Key_Up);
    station.key(Qt::Key_Space);
    QCOMPARE(station.taken(u"A"_s), u"30,000"_s);
    station.key(Qt::Key_Space);
    QCOMPARE(station.taken(u"A"_s), u"-"_s);
    QCOMPARE(station.lots()->currentIndex().row(), station.cell(u"A"_s, u"Baixa"_s).row());
}

void TestOrdemFabFios::untickingReservesNothing()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.editYarn();
    station.tick(u"C"_s);
    QCOMPARE(station.taken(u"C"_s), u"60,000"_s);
    station.tick(u"C"_s);
    QCOMPARE(station.taken(u"C"_s), u"-"_s);
    QCOMPARE(station.cell(u"C"_s, u"QtdeRes"_s).data().toString(), u"0,000"_s);
    QCOMPARE(station.yarn(station.cotton), u"60,000 0,000 60,000 Sem reserva"_s);
    // Its need is open again.
    station.tick(u"B"_s);
    QCOMPARE(station.taken(u"B"_s), u"30,000"_s);
}

void TestOrdemFabFios::aYarnThatLacksIsMarkedBeforeTheSave()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.editYarn();
    const auto mark = [&](const QString &lot) { return station.cell(lot, u"Lote"_s).data(Qt::BackgroundRole); };
    const auto warned = [&] { return !station.pages()->tabIcon(1).isNull(); };
    const QVariant plain = mark(u"A"_s);
    QVERIFY(!warned());
    station.tick(u"D"_s);
    QVERIFY(warned());
    QVERIFY(mark(u"A"_s) != plain);
    QVERIFY(mark(u"A"_s) == mark(u"C"_s));
    QVERIFY(mark(u"D"_s) != mark(u"A"_s));
    station.tick(u"C"_s);
    QVERIFY(!warned());
    QVERIFY(mark(u"A"_s) == plain);
    // Seen on the first page too, while the weight is typed.
    station.showOrder();
    station.enter(u"edtKGTotal"_s, u"101"_s);
    QVERIFY(warned());
    station.click(u"SbDesistir"_s);
    QVERIFY(!warned());
}

void TestOrdemFabFios::withoutChecksTicksAreNotTakenBack()
{
    YarnStation station;
    station.setMode(u"N"_s);
    station.insertLots();
    station.insertOrder();
    station.editYarn();
    for (const QString &lot : {u"C"_s, u"A"_s})
        station.tick(lot);
    QCOMPARE(station.taken(u"C"_s), u"60,000"_s);
    QCOMPARE(station.taken(u"A"_s), u"0,000"_s);
    QVERIFY(station.pages()->tabIcon(1).isNull());
    QCOMPARE(station.yarn(station.polyester), u"40,000 0,000 40,000 Sem reserva"_s);
}

void TestOrdemFabFios::withoutChecksTheRecordedRowsAreTheTicks()
{
    YarnStation station;
    station.setMode(u"N"_s);
    station.insertLots();
    station.insertOrder();
    station.reserve(u"000012"_s, {.lot = u"A"_s}, 0);
    station.reserve(u"000012"_s, {.lot = u"B"_s}, 99);
    station.reserve(u"000011"_s, {.lot = u"C"_s}, 5);
    station.editYarn();
    QCOMPARE(station.taken(u"A"_s), u"0,000"_s);
    QCOMPARE(station.taken(u"B"_s), u"99,000"_s);
    QCOMPARE(station.taken(u"C"_s), u"-"_s);
    // Another weight leaves what was recorded.
    station.showOrder();
    station.enter(u"edtKGTotal"_s, u"50"_s);
    station.showYarn();
    QCOMPARE(station.taken(u"B"_s), u"99,000"_s);
    QCOMPARE(station.yarn(station.cotton), u"30,000 99,000 0,000 Coberto"_s);
}

void TestOrdemFabFios::withoutChecksALotWithoutNumberIsTickedByItsInvoice()
{
    YarnStation station;
    station.setMode(u"N"_s);
    station.insertLot({.lot = {}, .kg = 50});
    station.insertLot({.lot = u"A"_s, .kg = 50});
    station.insertLot({.lot = u"D"_s, .kg = 50, .yarn = station.polyester});
    station.insertOrder();
    station.reserve(u"000012"_s, {.lot = u"A"_s}, 7);
    station.openOrders();
    station.showYarn();
    QCOMPARE(station.taken({}), u"0,000"_s);
    QCOMPARE(station.taken(u"A"_s), u"7,000"_s);
    QCOMPARE(station.taken(u"D"_s), u"-"_s);
}

void TestOrdemFabFios::needsFollowTheWeightAndTicksStay()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.editYarn();
    for (const QString &lot : {u"B"_s, u"A"_s, u"D"_s})
        station.tick(lot);
    QCOMPARE(station.taken(u"A"_s), u"30,000"_s);
    station.showOrder();
    station.enter(u"edtKGTotal"_s, u"120,5"_s);
    station.showYarn();
    QCOMPARE(station.taken(u"B"_s), u"30,000"_s);
    QCOMPARE(station.taken(u"A"_s), u"42,300"_s);
    QCOMPARE(station.yarn(station.cotton), u"72,300 72,300 0,000 Coberto"_s);
    QCOMPARE(station.yarn(station.polyester), u"48,200 40,000 8,200 Falta fio"_s);
    // A lighter order gives back what was ticked last.
    station.showOrder();
    station.enter(u"edtKGTotal"_s, u"45"_s);
    station.showYarn();
    QCOMPARE(station.taken(u"B"_s), u"27,000"_s);
    QCOMPARE(station.taken(u"A"_s), u"-"_s);
    QCOMPARE(station.taken(u"D"_s), u"18,000"_s);
}

void TestOrdemFabFios::aHeavierOrderTakesMoreOfItsOwnLots()
{
    YarnStation station;
    station.insertLot({.lot = u"A"_s, .kg = 80});
    station.insertLot({.lot = u"D"_s, .kg = 40, .yarn = station.polyester});
    station.insertOrder();
    station.reserve(u"000012"_s, {.lot = u"A"_s}, 60);
    station.reserve(u"000012"_s, {.lot = u"D"_s, .yarn = station.polyester}, 40);
    station.openOrders();
    station.click(u"BtnAltera"_s);
    station.enter(u"edtKGTotal"_s, u"120"_s);
    station.showYarn();
    QCOMPARE(station.taken(u"A"_s), u"72,000"_s);
    QCOMPARE(station.balance(u"A"_s), u"20,000"_s);
    QCOMPARE(station.taken(u"D"_s), u"40,000"_s);
    QCOMPARE(station.yarn(station.polyester), u"48,000 40,000 8,000 Falta fio"_s);
    station.showOrder();
    station.enter(u"edtKGTotal"_s, u"150"_s);
    station.showYarn();
    QCOMPARE(station.taken(u"A"_s), u"80,000"_s);
}

void TestOrdemFabFios::anotherClientOrFabricStartsAnew()
{
    YarnStation station;
    station.insertLots();
    station.insertLot({.lot = u"X"_s, .kg = 500, .client = u"00002"_s});
    station.database.run(
        u"INSERT INTO {MAT_ITEN} (CODIGO, COR, LOTE, DEPOSITO) VALUES ('M0002', '000001', 'L', '01')"_s);
    station.insertOrder();
    station.editYarn();
    station.tick(u"A"_s);
    station.showOrder();
    station.enter(u"edtCliente"_s, u"00002"_s);
    station.showYarn();
    QVERIFY(!station.isShown(u"A"_s));
    QCOMPARE(station.taken(u"X"_s), u"-"_s);
    station.showOrder();
    station.enter(u"edtCliente"_s, u"00001"_s);
    station.enter(u"edtMaterial"_s, u"M0002"_s);
    station.showYarn();
    QCOMPARE(station.taken(u"A"_s), u"-"_s);
    QVERIFY(!station.isShown(u"D"_s));
    QCOMPARE(station.yarn(station.cotton), u"100,000 0,000 100,000 Sem reserva"_s);
    QCOMPARE(station.yarn(station.polyester), QString());
}

void TestOrdemFabFios::cancellingForgetsTheTicks()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.reserve(u"000012"_s, {.lot = u"A"_s}, 50);
    station.editYarn();
    station.tick(u"A"_s);
    station.tick(u"C"_s);
    station.click(u"SbDesistir"_s);
    QCOMPARE(station.reservations(), QStringList{u"000012 A 50"_s});
    station.showYarn();
    QCOMPARE(station.taken(u"A"_s), u"50,000"_s);
    QCOMPARE(station.taken(u"C"_s), u"-"_s);
    // A new order starts without them.
    station.showOrder();
    station.startOrder();
    station.enter(u"edtCliente"_s, u"00001"_s);
    station.showYarn();
    for (const QString &lot : {u"A"_s, u"B"_s, u"C"_s, u"D"_s})
        QCOMPARE(station.taken(lot), u"-"_s);
}

void TestOrdemFabFios::closingTheOrderRefreshesItsNeeds()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.writeOff(u"000012"_s, {20, 10});
    station.openOrders();
    station.click(u"BtnAltera"_s);
    station.showYarn();
    station.tick(u"C"_s);
    station.showOrder();
    station.click(u"BitBtn1"_s);
    station.showYarn();
    QCOMPARE(station.taken(u"C"_s), u"18,000"_s);
    QCOMPARE(station.yarn(station.cotton), u"18,000 18,000 0,000 Coberto"_s);
}

void TestOrdemFabFios::theWeightIsFetchedFromTheScarcestYarn()
{
    YarnStation station;
    station.database.run(u"UPDATE {COMP_MATERIAL} SET PERC = 50 WHERE MATERIAL = 'M0001'"_s);
    station.insertLot({.lot = u"A"_s, .kg = 50});
    station.insertLot({.lot = u"D"_s, .kg = 70, .yarn = station.polyester});
    station.insertLot({.lot = u"E"_s, .kg = 30, .yarn = station.polyester, .document = u"0001204"_s});
    station.insertOrder();
    station.writeOff(u"000012"_s, {20});
    station.openOrders();
    QVERIFY(!station.child(u"BitBtn2"_s)->isEnabled());
    station.click(u"BtnAltera"_s);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.text(u"edtKGTotal"_s), u"10000,00"_s);
    QCOMPARE(station.text(u"edtSaldo"_s), u"9980,00"_s);
    station.showYarn();
    QCOMPARE(station.yarn(station.cotton), u"5.000,000 0,000 5.000,000 Sem reserva"_s);
    // With more of the scarce yarn the other one is the limit.
    station.insertLot({.lot = u"B"_s, .kg = 500, .document = u"0001204"_s});
    station.showOrder();
    station.click(u"SbDesistir"_s);
    station.click(u"BtnAltera"_s);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.text(u"edtKGTotal"_s), u"20000,00"_s);
}

void TestOrdemFabFios::withoutAYarnsStockTheFetchedWeightIsZero()
{
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.reserve(u"000011"_s, {.lot = u"D"_s, .yarn = station.polyester}, 40);
    station.openOrders();
    station.click(u"BtnAltera"_s);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.text(u"edtKGTotal"_s), u"0,00"_s);
    station.enter(u"edtKGTotal"_s, u"100"_s);
    station.enter(u"edtCliente"_s, u"00003"_s);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.text(u"edtKGTotal"_s), u"0,00"_s);
}

void TestOrdemFabFios::aFieldIsLeftBeforeThePageTurns_data()
{
    QTest::addColumn<bool>("byMouse");
    QTest::newRow("mouse") << true;
    QTest::newRow("Alt+S") << false;
}

void TestOrdemFabFios::aFieldIsLeftBeforeThePageTurns()
{
    QFETCH(bool, byMouse);
    YarnStation station;
    station.insertLots();
    station.insertOrder();
    station.openOrders();
    station.click(u"BtnAltera"_s);
    station.type(u"edtCliente"_s, u"99999"_s);
    expectInformation(station.answers, station.caption, u"Cliente não Existe."_s);
    byMouse ? station.showYarn() : station.key(Qt::Key_S, Qt::AltModifier);
    QTRY_COMPARE(station.focus(), u"edtCliente"_s);
    QCOMPARE(station.page(), u"TabOrdem"_s);
    station.type(u"edtCliente"_s, u"00001"_s);
    byMouse ? station.showYarn() : station.key(Qt::Key_S, Qt::AltModifier);
    QCOMPARE(station.page(), u"TabFios"_s);
    QVERIFY(station.isShown(u"A"_s));
}

QTEST_MAIN(TestOrdemFabFios)
#include "tst_ordemfabfios.moc"
