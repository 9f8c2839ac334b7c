// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/production/orderstation.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

namespace {

const QString deleteQuestion = QStringLiteral("Deseja eliminar este Registro?");
const QString deleteTitle = QStringLiteral("Eliminação de Registro");

} // namespace

/// Changing, closing and deleting orders that exist, with and without rolls.
class TestOrdemFabChange : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void changingAnOrderLogsAnAlteration();
    void changingStartsAtTheDateWithTheNumberFixed();
    void theFabricOfAnOrderInProductionIsFixedButItsWeightsAreNot();
    void theFabricOfAnOrderWithoutRollsCanChange();
    void aRollWrittenOffMeanwhileFixesTheFabric();
    void theBalanceFollowsTheTypedWeight();
    void changingShowsWhatAnotherStationSaved();
    void anOrderThatVanishedCannotBeChanged();
    void anOrderNumberIsATextLikeAnyOther();

    void anOrderWithRollsCannotBeDeleted();
    void deletingAsksAndNoIsTheDefault();
    void deletingTakesTheReservedYarnAlong();
    void deletingTheOnlyOrderLeavesAnEmptyScreen();
    void aRollWrittenOffWhileAskingKeepsTheOrder();
    void anOrderDeletedElsewhereIsNotDeletedTwice();
    void nothingRemainsOfADeletionThatFails();

    void zeroingTheBalanceMakesThePlanWhatWasProduced_data();
    void zeroingTheBalanceMakesThePlanWhatWasProduced();
    void withoutRollsThereIsNoBalanceToZero();
    void zeroingTheBalanceNeedsTheHigherRight();
};

void TestOrdemFabChange::changingAnOrderLogsAnAlteration()
{
    OrderStation station;
    station.insertOrder({.number = u"000011"_s});
    station.insertOrder({.number = u"000012"_s, .observation = u"Antes"_s});
    station.openOrders();
    station.click(u"sbAnterior"_s);
    station.click(u"BtnAltera"_s);
    station.enter(u"edtData"_s, u"15/04/2026"_s);
    station.enter(u"edtKGTotal"_s, u"250,5"_s);
    station.enter(u"edtMaquina"_s, u"002"_s);
    station.enter(u"EdtCodFluxo"_s, QString());
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.text(u"edtOF"_s), u"000011"_s);
    QCOMPARE(station.text(u"edtSaldo"_s), u"250,50"_s);
    QCOMPARE(
        station.database.rows(u"SELECT NUM_OF, DATA, CLIENTE, MATERIAL, MAQUINA, FLUXO, KG_TOTAL, KG_ROLO, OBSERVACAO "
                              "FROM {OF_MALHA} ORDER BY NUM_OF"_s),
        (QStringList{u"000011|2026-04-15|00001|M0001|002||250.5|20|"_s,
            u"000012|2026-03-02|00001|M0001|001|01|100|20|Antes"_s}));
    QCOMPARE(station.log(), QStringList{u"ORDEM FAB. MAL.|ALTERACAO DA OF MAL. NR.: 000011|1|000011|ADMIN"_s});
}

void TestOrdemFabChange::changingStartsAtTheDateWithTheNumberFixed()
{
    OrderStation station;
    station.insertOrder();
    station.openOrders();
    QVERIFY(!station.isEditing());
    station.click(u"BtnAltera"_s);
    QVERIFY(station.isEditing());
    QCOMPARE(station.focus(), u"edtData"_s);
    QVERIFY(!station.child(u"edtOF"_s)->isEnabled());
    QVERIFY(!station.child(u"PainelBarra"_s)->isVisible());
    QVERIFY(station.child(u"PainelConfirma"_s)->isVisible());
    QVERIFY(!station.isPageEnabled(u"TabConsulta"_s));
    station.click(u"SbDesistir"_s);
    QVERIFY(station.child(u"edtOF"_s)->isEnabledTo(station.child(u"PainelDados"_s)));
}

void TestOrdemFabChange::theFabricOfAnOrderInProductionIsFixedButItsWeightsAreNot()
{
    OrderStation station;
    station.insertOrder();
    station.writeOff(u"000012"_s, {20.5});
    station.openOrders();
    const QWidget *panel = station.child(u"PainelDados"_s);
    const auto fabricIsFree = [&] {
        const bool field = station.child(u"edtMaterial"_s)->isEnabledTo(panel);
        const bool search = station.child(u"PqMaterial"_s)->isEnabledTo(panel);
        return field == search && field;
    };
    station.click(u"BtnAltera"_s);
    QVERIFY(!station.child(u"edtMaterial"_s)->isEnabled());
    QVERIFY(!station.child(u"PqMaterial"_s)->isEnabled());
    for (const QString &name : {u"edtData"_s, u"edtCliente"_s, u"PqCliente"_s, u"edtMaquina"_s, u"EdtCodFluxo"_s,
             u"edtKGTotal"_s, u"edtKGRolo"_s, u"MemoObs"_s})
        QVERIFY2(station.child(name)->isEnabled(), qPrintable(name));
    QCOMPARE(station.text(u"edtSaldo"_s), u"79,50"_s);
    station.click(u"SbDesistir"_s);
    QVERIFY(fabricIsFree());
    station.click(u"BtnAltera"_s);
    station.enter(u"edtKGTotal"_s, u"60"_s);
    station.enter(u"edtKGRolo"_s, u"30"_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(fabricIsFree());
    QCOMPARE(
        station.database.rows(u"SELECT MATERIAL, KG_TOTAL, KG_ROLO FROM {OF_MALHA}"_s), QStringList{u"M0001|60|30"_s});
    QCOMPARE(station.text(u"edtSaldo"_s), u"39,50"_s);
}

void TestOrdemFabChange::theFabricOfAnOrderWithoutRollsCanChange()
{
    OrderStation station;
    station.insertOrder();
    station.insertOrder({.number = u"000011"_s});
    station.writeOff(u"000011"_s, {20});
    station.openOrders();
    station.click(u"BtnAltera"_s);
    QVERIFY(station.child(u"edtMaterial"_s)->isEnabled());
    QVERIFY(station.child(u"PqMaterial"_s)->isEnabled());
    station.enter(u"edtMaterial"_s, u"M0002"_s);
    station.click(u"SbConfirmar"_s);
    QCOMPARE(station.database.rows(u"SELECT NUM_OF, MATERIAL FROM {OF_MALHA} ORDER BY NUM_OF"_s),
        (QStringList{u"000011|M0001"_s, u"000012|M0002"_s}));
}

void TestOrdemFabChange::aRollWrittenOffMeanwhileFixesTheFabric()
{
    OrderStation station;
    station.insertOrder();
    station.openOrders();
    station.click(u"BtnAltera"_s);
    station.enter(u"edtMaterial"_s, u"M0002"_s);
    station.writeOff(u"000012"_s, {20});
    expectFailure(station.answers, station.caption,
        u"A OF já possui baixas, o material não pode mais ser alterado. Impossível Continuar."_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(station.isEditing());
    QCOMPARE(station.value(u"SELECT MATERIAL FROM {OF_MALHA}"_s).toString(), u"M0001"_s);
    QCOMPARE(station.log(), QStringList());
    // With its own fabric the order is saved, its weights changed.
    station.enter(u"edtMaterial"_s, u"M0001"_s);
    station.enter(u"edtKGTotal"_s, u"60"_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.database.rows(u"SELECT MATERIAL, KG_TOTAL FROM {OF_MALHA}"_s), QStringList{u"M0001|60"_s});
}

void TestOrdemFabChange::theBalanceFollowsTheTypedWeight()
{
    OrderStation station;
    station.insertOrder();
    station.writeOff(u"000012"_s, {20});
    station.openOrders();
    station.click(u"BtnAltera"_s);
    station.enter(u"edtKGTotal"_s, u"250,5"_s);
    QCOMPARE(station.text(u"edtSaldo"_s), u"230,50"_s);
    station.click(u"SbDesistir"_s);
    QCOMPARE(station.text(u"edtSaldo"_s), u"80,00"_s);
}

void TestOrdemFabChange::changingShowsWhatAnotherStationSaved()
{
    OrderStation station;
    station.insertOrder();
    station.openOrders();
    station.database.run(u"UPDATE {OF_MALHA} SET KG_TOTAL = 40, MAQUINA = '002'"_s);
    station.writeOff(u"000012"_s, {15});
    station.click(u"BtnAltera"_s);
    QCOMPARE(station.text(u"edtKGTotal"_s), u"40,00"_s);
    QCOMPARE(station.text(u"edtMaquina"_s), u"002"_s);
    QCOMPARE(station.text(u"edtBaixado"_s), u"15,00"_s);
    QCOMPARE(station.text(u"edtSaldo"_s), u"25,00"_s);
    QVERIFY(!station.child(u"edtMaterial"_s)->isEnabled());
}

void TestOrdemFabChange::anOrderThatVanishedCannotBeChanged()
{
    OrderStation station;
    station.insertOrder({.number = u"000011"_s, .totalKg = 11});
    station.insertOrder();
    station.openOrders();
    station.database.run(u"DELETE FROM {OF_MALHA} WHERE NUM_OF = '000012'"_s);
    expectFailure(station.answers, station.caption, station.refusedByConflict);
    station.click(u"BtnAltera"_s);
    QVERIFY(!station.isEditing());
    QVERIFY(station.child(u"PainelBarra"_s)->isVisible());
    QCOMPARE(station.text(u"edtOF"_s), u"000011"_s);
    QCOMPARE(station.text(u"edtSaldo"_s), u"11,00"_s);
}

void TestOrdemFabChange::anOrderNumberIsATextLikeAnyOther()
{
    OrderStation station;
    station.insertOrder();
    station.openOrders();
    station.startOrder();
    station.enter(u"edtOF"_s, u"%'\"_{"_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.text(u"edtOF"_s), u"%'\"_{"_s);
    station.click(u"BtnAltera"_s);
    station.enter(u"edtKGTotal"_s, u"70"_s);
    station.click(u"SbConfirmar"_s);
    QCOMPARE(station.text(u"edtSaldo"_s), u"70,00"_s);
    station.answers.expect(deleteQuestion, QMessageBox::Yes, deleteTitle);
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.text(u"edtOF"_s), u"000012"_s);
    QCOMPARE(station.database.count(u"OF_MALHA"_s), 1);
    QCOMPARE(station.log(),
        (QStringList{u"ORDEM FAB. MAL.|INCLUSAO DA OF MAL. NR.: %'\"_{|0|%'\"_{|ADMIN"_s,
            u"ORDEM FAB. MAL.|ALTERACAO DA OF MAL. NR.: %'\"_{|1|%'\"_{|ADMIN"_s,
            u"ORDEM FAB. MAL.|EXCLUSAO DA OF MAL. NR.: %'\"_{|2|%'\"_{|ADMIN"_s}));
}

void TestOrdemFabChange::anOrderWithRollsCannotBeDeleted()
{
    OrderStation station;
    station.insertOrder();
    station.writeOff(u"000012"_s, {20});
    station.openOrders();
    expectInformation(
        station.answers, station.caption, u"OF possui baixas. Para excluir a OF é necessário estornar as baixas."_s);
    station.click(u"BtExcluir"_s);
    QVERIFY(station.answers.allCame());
    QCOMPARE(station.database.count(u"OF_MALHA"_s), 1);
    QCOMPARE(station.log(), QStringList());
    // Without the right there is not even the message.
    station.goOnWithRights({u"A0"_s});
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.answers.shown().size(), 1);
}

void TestOrdemFabChange::deletingAsksAndNoIsTheDefault()
{
    OrderStation station;
    station.insertOrder();
    station.openOrders();
    for (const Qt::Key refuses : {Qt::Key_Return, Qt::Key_Escape}) {
        station.answers.expectAndType(deleteQuestion, refuses, deleteTitle);
        station.click(u"BtExcluir"_s);
        QCOMPARE(station.database.count(u"OF_MALHA"_s), 1);
    }
    station.answers.expect(deleteQuestion, QMessageBox::No, deleteTitle);
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.database.count(u"OF_MALHA"_s), 1);
    QCOMPARE(station.log(), QStringList());
    QCOMPARE(station.text(u"edtOF"_s), u"000012"_s);
}

void TestOrdemFabChange::deletingTakesTheReservedYarnAlong()
{
    OrderStation station;
    station.insertOrder({.number = u"000011"_s, .totalKg = 11});
    station.insertOrder();
    for (const QString &row : {u"'000012', '1', 'FIO30CO', 'A'"_s, u"'000012', '2', 'FIO30CO', 'A'"_s,
             u"'000011', '1', 'FIO30CO', 'A'"_s, u"'12', '1', 'FIO30CO', 'A'"_s})
        station.database.run(u"INSERT INTO {BAIXA_FIO} (NUMERO, DOCTO, CODIGO, LOTE, QTDE) VALUES (%1, 5)"_s.arg(row));
    station.openOrders();
    station.answers.expect(deleteQuestion, QMessageBox::Yes, deleteTitle);
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.database.rows(u"SELECT NUM_OF FROM {OF_MALHA}"_s), QStringList{u"000011"_s});
    QCOMPARE(station.database.rows(u"SELECT NUMERO FROM {BAIXA_FIO} ORDER BY NUMERO"_s),
        (QStringList{u"000011"_s, u"12"_s}));
    QCOMPARE(station.log(), QStringList{u"ORDEM FAB. MAL.|EXCLUSAO DA OF MAL. NR.: 000012|2|000012|ADMIN"_s});
    QVERIFY(!station.isEditing());
    QCOMPARE(station.text(u"edtOF"_s), u"000011"_s);
    QCOMPARE(station.text(u"edtSaldo"_s), u"11,00"_s);
}

void TestOrdemFabChange::deletingTheOnlyOrderLeavesAnEmptyScreen()
{
    OrderStation station;
    station.insertOrder();
    station.openOrders();
    station.answers.expect(deleteQuestion, QMessageBox::Yes, deleteTitle);
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.database.count(u"OF_MALHA"_s), 0);
    for (const QString &name : {u"edtOF"_s, u"edtData"_s, u"edtCliente"_s, u"edtDescCliente"_s, u"edtMaterial"_s,
             u"edtDescMaterial"_s, u"edtMaquina"_s, u"EdtCodFluxo"_s, u"MemoObs"_s})
        QCOMPARE(station.text(name), QString());
    QCOMPARE(station.text(u"edtKGTotal"_s), u"0,00"_s);
    QCOMPARE(station.text(u"edtSaldo"_s), u"0,00"_s);
    station.click(u"BtExcluir"_s);
    station.click(u"BtnAltera"_s);
    QVERIFY(!station.isEditing());
}

void TestOrdemFabChange::aRollWrittenOffWhileAskingKeepsTheOrder()
{
    OrderStation station;
    station.insertOrder();
    station.database.run(u"INSERT INTO {BAIXA_FIO} VALUES ('000012', '1', 'FIO30CO', 'A', 5)"_s);
    station.openOrders();
    station.answers.expectWindow(
        [&](QWidget *window) {
            station.writeOff(u"000012"_s, {20});
            QTest::mouseClick(qobject_cast<QMessageBox *>(window)->button(QMessageBox::Yes), Qt::LeftButton);
        },
        deleteTitle);
    expectFailure(
        station.answers, station.caption, u"OF possui baixas. Para excluir a OF é necessário estornar as baixas."_s);
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.database.count(u"OF_MALHA"_s), 1);
    QCOMPARE(station.database.count(u"BAIXA_FIO"_s), 1);
    QCOMPARE(station.log(), QStringList());
}

void TestOrdemFabChange::anOrderDeletedElsewhereIsNotDeletedTwice()
{
    OrderStation station;
    station.insertOrder();
    station.openOrders();
    station.database.run(u"DELETE FROM {OF_MALHA}"_s);
    station.answers.expect(deleteQuestion, QMessageBox::Yes, deleteTitle);
    expectFailure(station.answers, station.caption, station.refusedByConflict);
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.log(), QStringList());
}

void TestOrdemFabChange::nothingRemainsOfADeletionThatFails()
{
    OrderStation station;
    station.insertOrder();
    station.database.run(u"INSERT INTO {BAIXA_FIO} VALUES ('000012', '1', 'FIO30CO', 'A', 5)"_s);
    // The host keeps something of the order that must not lose it.
    station.database.run(u"CREATE TABLE NOTE (NUM_OF VARCHAR(6) REFERENCES {OF_MALHA} (NUM_OF))"_s);
    station.database.run(u"INSERT INTO NOTE VALUES ('000012')"_s);
    station.openOrders();
    station.answers.expect(deleteQuestion, QMessageBox::Yes, deleteTitle);
    expectFailure(station.answers, station.caption, station.refusedByTable);
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.database.count(u"OF_MALHA"_s), 1);
    QCOMPARE(station.database.count(u"BAIXA_FIO"_s), 1);
    QCOMPARE(station.log(), QStringList());
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
    QCOMPARE(station.text(u"edtOF"_s), u"000012"_s);
}

void TestOrdemFabChange::zeroingTheBalanceMakesThePlanWhatWasProduced_data()
{
    QTest::addColumn<QList<double>>("rolls");
    QTest::addColumn<double>("produced");
    QTest::newRow("less than planned") << QList<double>{20.123, 30.456} << 50.579;
    QTest::newRow("more than planned") << QList<double>{60, 60.001} << 120.001;
}

void TestOrdemFabChange::zeroingTheBalanceMakesThePlanWhatWasProduced()
{
    OrderStation station;
    QFETCH(QList<double>, rolls);
    QFETCH(double, produced);
    station.insertOrder();
    station.writeOff(u"000012"_s, rolls);
    station.openOrders();
    station.click(u"BtnAltera"_s);
    station.type(u"edtKGTotal"_s, u"90"_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.text(u"edtSaldo"_s), u"0,00"_s);
    QCOMPARE(station.value(u"SELECT KG_TOTAL FROM {OF_MALHA}"_s).toDouble(), 100.0);
    station.click(u"SbDesistir"_s);
    QCOMPARE(station.text(u"edtKGTotal"_s), u"100,00"_s);
    station.click(u"BtnAltera"_s);
    station.click(u"BitBtn1"_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.value(u"SELECT KG_TOTAL FROM {OF_MALHA}"_s).toDouble(), produced);
    QCOMPARE(station.text(u"edtSaldo"_s), u"0,00"_s);
    QCOMPARE(station.log().size(), 1);
}

void TestOrdemFabChange::withoutRollsThereIsNoBalanceToZero()
{
    OrderStation station;
    station.insertOrder();
    station.openOrders();
    QVERIFY(!station.child(u"BitBtn1"_s)->isEnabled());
    station.click(u"BtnAltera"_s);
    expectInformation(station.answers, station.caption, u"OF não possui baixas para zerar o saldo."_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.text(u"edtKGTotal"_s), u"100,00"_s);
    QVERIFY(station.isEditing());
}

void TestOrdemFabChange::zeroingTheBalanceNeedsTheHigherRight()
{
    OrderStation station;
    station.insertOrder();
    station.writeOff(u"000012"_s, {30});
    station.goOnWithRights({u"A0"_s});
    station.openOrders();
    station.click(u"BtnAltera"_s);
    QVERIFY(station.isEditing());
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.text(u"edtKGTotal"_s), u"100,00"_s);
    station.goOnWithRights({u"A0"_s, u"A1"_s});
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.text(u"edtKGTotal"_s), u"30,00"_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.log(), QStringList{u"ORDEM FAB. MAL.|ALTERACAO DA OF MAL. NR.: 000012|1|000012|SEMDIREITO"_s});
}

QTEST_MAIN(TestOrdemFabChange)
#include "tst_ordemfabchange.moc"
