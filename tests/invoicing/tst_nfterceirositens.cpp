// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/invoicing/invoices.h"

#include <QLineEdit>
#include <QWindow>

using namespace Invoices;

namespace {

const QString inListAlready = QStringLiteral("Material e Lote já cadastrado para esta Nota Fiscal.");
const QString savedAlready = QStringLiteral("Material com o Lote já existente nesta Nota Fiscal.");
const QString clientRefused = QStringLiteral("Cliente inválido.");

} // namespace

/// The lots of an inbound invoice: entering, altering, taking out and pasting them.
class TestNFTerceirosItens : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void theMaterialSearchListsYarnsOnly();
    void theMaterialSearchListsTheClientsOwn();
    void anotherClientsMaterialIsRefused();
    void anUnknownMaterialIsRefusedAndLookedUp();
    void anEmptyMaterialIsLookedUpWithoutAMessage();
    void aSavedPairIsRefusedOnTheMaterialExit();
    void theSavedPairIsLookedForInAllClients();
    void figuresMustBeMoreThanZero_data();
    void figuresMustBeMoreThanZero();
    void theTotalIsComputedAndNotTyped();
    void anEmptyLotIsZero();
    void recordingChecksInTheScreensOrder();
    void aTotalOfNothingIsRefusedAtRecording();
    void onePairTwiceInTheListIsRefused();
    void twoLotsOfOneMaterialAreTwoRows();
    void recordingWithoutDescriptionChecksTheMaterial();
    void manyLotsGoInWithoutTheMouse();
    void theNextLotKeepsMaterialBrandAndPrice();
    void cancellingALotChangesNothing_data();
    void cancellingALotChangesNothing();
    void theFieldsShowTheRowOfTheList();
    void theListIsNotLeftWhileALotIsOpen();

    void anAlteredRowIsReplaced();
    void anAlteredRowMayKeepItsPair();
    void anAlteredRowMayNotTakeAnothersPair();
    void whatLeftKeepsItsMaterialAndLot();
    void takingALotOutAsks();
    void aLotThatLeftIsNotTakenOut_data();
    void aLotThatLeftIsNotTakenOut();
    void takingTheLastLotOutEmptiesTheFields();

    void pastedRowsBecomeLots();
    void refusedRowsAreListedAndLoseNothing();
    void pastedRowsMeetTheClientsRule();
    void pastingBeforeTheClientIsRefused();
    void pastingWhileReadingDoesNothing();
    void manyRefusedRowsAreCounted();
    void aPasteThatFailsLeavesNoEmptyRow();
};

void TestNFTerceirosItens::theMaterialSearchListsYarnsOnly()
{
    Screen screen;
    screen.database().run(u"UPDATE {MATERIAL} SET GRUPO = '100' WHERE CODIGO = 'FIO20ELA'"_s);
    screen.open();
    screen.startInvoice();
    screen.station.click(u"BtIIncluir"_s);
    QStringList listed;
    ScreenChecks::expectSearchAndLeave(screen.answers, &listed, u"Materiais"_s);
    screen.station.key(Qt::Key_F4);
    QCOMPARE(listed, (QStringList{u"FIO150PES"_s, u"FIO20ELA"_s, u"FIO30CO"_s}));
}

void TestNFTerceirosItens::theMaterialSearchListsTheClientsOwn()
{
    Screen screen;
    screen.letMaterialsBelongToClients();
    insert(screen.database(), u"0000123"_s, u"00002"_s, {{}});
    screen.open();
    const auto search = [&] {
        QStringList listed;
        screen.station.click(u"BtIIncluir"_s);
        ScreenChecks::expectSearchAndLeave(screen.answers, &listed);
        screen.station.key(Qt::Key_F4);
        screen.station.click(u"SbDesistir"_s);
        return listed;
    };
    screen.startInvoice(u"0000124"_s);
    QCOMPARE(search(), QStringList{u"FIO30CO"_s});
    screen.station.click(u"BtnAltera"_s);
    QCOMPARE(search(), QStringList{u"FIO150PES"_s});
}

void TestNFTerceirosItens::anotherClientsMaterialIsRefused()
{
    Screen screen;
    screen.letMaterialsBelongToClients();
    screen.open();
    screen.startInvoice();
    screen.station.click(u"BtIIncluir"_s);
    for (const QString &material : {u"FIO150PES"_s, u"FIO20ELA"_s, u"NENHUM"_s, QString()}) {
        screen.expect(u"Material inválido para este cliente."_s);
        screen.station.enter(u"EdtCodMaterial"_s, material);
        QTRY_COMPARE(screen.station.focus(), u"EdtCodMaterial"_s);
    }
    screen.station.enter(u"EdtCodMaterial"_s, u"FIO30CO"_s);
    QCOMPARE(screen.station.focus(), u"EdtMarca"_s);
}

void TestNFTerceirosItens::anUnknownMaterialIsRefusedAndLookedUp()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.station.click(u"BtIIncluir"_s);
    screen.expect(u"Material Inválido."_s);
    ScreenChecks::expectSearchAndTake(screen.answers, u"150/48"_s, u"Materiais"_s);
    screen.station.enter(u"EdtCodMaterial"_s, u"NENHUM"_s);
    QTRY_COMPARE(screen.station.focus(), u"EdtCodMaterial"_s);
    QCOMPARE(screen.station.text(u"EdtCodMaterial"_s), u"FIO150PES"_s);
    QCOMPARE(screen.station.text(u"EdtDescMaterial"_s), u"Fio poliéster 150/48"_s);
}

void TestNFTerceirosItens::anEmptyMaterialIsLookedUpWithoutAMessage()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.station.click(u"BtIIncluir"_s);
    QStringList listed;
    ScreenChecks::expectSearchAndLeave(screen.answers, &listed, u"Materiais"_s);
    screen.station.enter(u"EdtCodMaterial"_s, {});
    QCOMPARE(listed.size(), 3);
    QCOMPARE(screen.answers.shown().size(), 1);
    QTRY_COMPARE(screen.station.focus(), u"EdtCodMaterial"_s);
}

void TestNFTerceirosItens::aSavedPairIsRefusedOnTheMaterialExit()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, {{.lot = u"L1"_s}, {.lot = u"L2"_s}});
    screen.open();
    screen.station.click(u"BtnAltera"_s);
    screen.station.click(u"BtIIncluir"_s);
    screen.station.enter(u"EdtCodMaterial"_s, u"FIO150PES"_s);
    screen.station.type(u"EdtLote"_s, u"L1"_s);
    screen.expect(savedAlready);
    screen.station.enter(u"EdtCodMaterial"_s, u"FIO30CO"_s);
    QTRY_COMPARE(screen.station.focus(), u"EdtCodMaterial"_s);
    screen.station.enter(u"EdtCodMaterial"_s, u"FIO20ELA"_s);
    QCOMPARE(screen.station.text(u"EdtDescMaterial"_s), u"Elastano 20 dtex"_s);
}

void TestNFTerceirosItens::theSavedPairIsLookedForInAllClients()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00002"_s, {{.lot = u"L1"_s}});
    screen.open();
    screen.startInvoice();
    screen.station.click(u"BtIIncluir"_s);
    screen.station.enter(u"EdtCodMaterial"_s, u"FIO150PES"_s);
    screen.station.type(u"EdtLote"_s, u"L1"_s);
    screen.expect(savedAlready);
    screen.station.enter(u"EdtCodMaterial"_s, u"FIO30CO"_s);
    QTRY_COMPARE(screen.station.focus(), u"EdtCodMaterial"_s);
}

void TestNFTerceirosItens::figuresMustBeMoreThanZero_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("figure");
    QTest::addColumn<QString>("message");
    const QString quantity = u"Quantidade não pode ser menor ou igual a zero."_s;
    const QString price = u"Preço não pode ser menor ou igual a zero."_s;
    QTest::newRow("no quantity") << u"EdtPeso"_s << u"0"_s << quantity;
    QTest::newRow("negative quantity") << u"EdtPeso"_s << u"-1"_s << quantity;
    QTest::newRow("no price") << u"EdtUnitario"_s << u"0"_s << price;
    QTest::newRow("negative price") << u"EdtUnitario"_s << u"-0,5"_s << price;
}

void TestNFTerceirosItens::figuresMustBeMoreThanZero()
{
    QFETCH(QString, field);
    QFETCH(QString, figure);
    QFETCH(QString, message);
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.station.click(u"BtIIncluir"_s);
    screen.station.enter(u"EdtCodMaterial"_s, u"FIO30CO"_s);
    screen.expect(message);
    screen.station.enter(field, figure);
    QTRY_COMPARE(screen.station.focus(), field);
    screen.station.enter(field, u"2"_s);
    QVERIFY(screen.station.focus() != field);
}

void TestNFTerceirosItens::theTotalIsComputedAndNotTyped()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.station.click(u"BtIIncluir"_s);
    QVERIFY(!screen.station.child(u"EdtTotal"_s)->isEnabled());
    screen.fillLot(u"FIO30CO"_s, u"A"_s, u"1,5"_s, u"0,03"_s);
    QCOMPARE(screen.station.text(u"EdtTotal"_s), u"0,05"_s);
    screen.station.enter(u"EdtPeso"_s, u"1234,567"_s);
    screen.station.key(Qt::Key_Tab);
    QCOMPARE(screen.station.text(u"EdtPeso"_s), u"1234,57"_s);
    QCOMPARE(screen.station.text(u"EdtUnitario"_s), u"0,030000"_s);
    QCOMPARE(screen.station.text(u"EdtTotal"_s), u"37,04"_s);
}

void TestNFTerceirosItens::anEmptyLotIsZero()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    // The field is never entered.
    screen.station.click(u"BtIIncluir"_s);
    screen.station.enter(u"EdtCodMaterial"_s, u"FIO150PES"_s);
    screen.station.enter(u"EdtPeso"_s, u"1"_s);
    screen.station.enter(u"EdtUnitario"_s, u"1"_s);
    screen.station.click(u"btISalvar"_s);
    QCOMPARE(screen.station.text(u"EdtLote"_s), u"0"_s);
    screen.enterLot(u"FIO30CO"_s, u"   "_s);
    QCOMPARE(screen.station.text(u"EdtLote"_s), u"0"_s);
    screen.station.click(u"SbConfirmar"_s);
    QCOMPARE(screen.database().rows(u"SELECT CODIGO, LOTE FROM {NFT_ITEN} ORDER BY CODIGO"_s),
        (QStringList{u"FIO150PES|0"_s, u"FIO30CO|0"_s}));
}

void TestNFTerceirosItens::recordingChecksInTheScreensOrder()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.enterLot(u"FIO30CO"_s, u"A"_s);
    screen.station.click(u"BtIIncluir"_s);
    screen.station.type(u"EdtLote"_s, u"A"_s);
    screen.expect(inListAlready);
    screen.station.click(u"btISalvar"_s);
    QTRY_COMPARE(screen.station.focus(), u"EdtLote"_s);
    screen.station.type(u"EdtLote"_s, u"B"_s);
    screen.expect(u"Quantidade não pode ser menor ou igual a zero."_s);
    screen.station.click(u"btISalvar"_s);
    QTRY_COMPARE(screen.station.focus(), u"EdtPeso"_s);
    QCOMPARE(screen.shownLots().size(), 1);
    QVERIFY(screen.isLotOpen());
}

void TestNFTerceirosItens::aTotalOfNothingIsRefusedAtRecording()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.station.click(u"BtIIncluir"_s);
    screen.fillLot(u"FIO30CO"_s, u"A"_s, u"0,001"_s, u"0,001"_s);
    screen.expect(u"Total não pode ser menor ou igual a zero."_s);
    screen.station.click(u"btISalvar"_s);
    QVERIFY(screen.isLotOpen());
    QCOMPARE(screen.shownLots(), QStringList());
}

void TestNFTerceirosItens::onePairTwiceInTheListIsRefused()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.enterLot(u"FIO30CO"_s, u"A"_s);
    screen.expect(inListAlready);
    screen.enterLot(u"FIO30CO"_s, u" A "_s, u"7"_s, u"3"_s);
    QTRY_COMPARE(screen.station.focus(), u"EdtLote"_s);
    QCOMPARE(screen.shownLots().size(), 1);
    // What was typed is still there.
    QCOMPARE(screen.station.text(u"EdtPeso"_s), u"7,00"_s);
    screen.station.enter(u"EdtLote"_s, u"B"_s);
    screen.station.click(u"btISalvar"_s);
    QCOMPARE(screen.shownLots().size(), 2);
}

void TestNFTerceirosItens::twoLotsOfOneMaterialAreTwoRows()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.enterLot(u"FIO30CO"_s, u"A"_s);
    screen.enterLot(u"FIO30CO"_s, u"a"_s);
    screen.enterLot(u"FIO150PES"_s, u"A"_s, u"0,5"_s);
    QCOMPARE(screen.shownLots(),
        (QStringList{u"FIO30CO|A|50,00|20,000000|1.000,00|"_s, u"FIO30CO|a|50,00|20,000000|1.000,00|"_s,
            u"FIO150PES|A|0,50|20,000000|10,00|"_s}));
    QCOMPARE(screen.station.text(u"lbSoma"_s), u"3 lotes     Quantidade: 100,50     Valor: 2.010,00"_s);
    screen.station.click(u"SbConfirmar"_s);
    QCOMPARE(lots(screen.database()).size(), 3);
}

void TestNFTerceirosItens::recordingWithoutDescriptionChecksTheMaterial()
{
    Screen screen;
    screen.database().run(u"INSERT INTO {MATERIAL} (CODIGO, GRUPO) VALUES ('SEMNOME', '10')"_s);
    screen.open();
    screen.startInvoice();
    screen.station.click(u"BtIIncluir"_s);
    screen.fillLot(u"SEMNOME"_s, u"A"_s, u"1"_s, u"1"_s);
    screen.database().run(u"DELETE FROM {MATERIAL} WHERE CODIGO = 'SEMNOME'"_s);
    screen.expect(u"Material Inválido."_s);
    QStringList listed;
    ScreenChecks::expectSearchAndLeave(screen.answers, &listed);
    screen.station.click(u"btISalvar"_s);
    QTRY_COMPARE(screen.station.focus(), u"EdtCodMaterial"_s);
    QCOMPARE(screen.shownLots(), QStringList());
}

void TestNFTerceirosItens::manyLotsGoInWithoutTheMouse()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.enterLot(u"FIO30CO"_s, u"1"_s);
    for (int lot = 2; lot <= 20; ++lot) {
        QCOMPARE(screen.station.focus(), u"BtIIncluir"_s);
        screen.station.key(Qt::Key_Return);
        QCOMPARE(screen.station.focus(), u"EdtLote"_s);
        Keys::type(QApplication::focusWidget(), QString::number(lot));
        screen.station.key(Qt::Key_Return);
        Keys::type(QApplication::focusWidget(), u"2,5"_s);
        screen.station.key(Qt::Key_Return);
        screen.station.key(Qt::Key_Return);
        QCOMPARE(screen.station.focus(), u"btISalvar"_s);
        screen.station.key(Qt::Key_Return);
    }
    screen.station.key(Qt::Key_C, Qt::AltModifier);
    QTRY_VERIFY(!screen.isEditing());
    QCOMPARE(screen.database().count(u"NFT_ITEN"_s, u"CODIGO = 'FIO30CO' AND UNITARIO = 20"_s), 20);
    QCOMPARE(screen.database().value(u"SELECT SUM(ESTOQUE_FISICO) FROM {NFT_ITEN}"_s).toDouble(), 97.5);
}

void TestNFTerceirosItens::theNextLotKeepsMaterialBrandAndPrice()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.station.click(u"BtIIncluir"_s);
    QCOMPARE(screen.station.focus(), u"EdtCodMaterial"_s);
    screen.station.enter(u"EdtCodMaterial"_s, u"FIO30CO"_s);
    screen.station.enter(u"EdtMarca"_s, u"Algodoeira"_s);
    screen.fillLot(u"FIO30CO"_s, u"A"_s, u"50"_s, u"20,5"_s);
    screen.station.click(u"btISalvar"_s);
    screen.enterLot(u"FIO150PES"_s, u"B"_s);
    screen.station.child(u"DBGItens"_s)->setFocus();
    screen.station.key(Qt::Key_Home, Qt::ControlModifier);
    screen.station.key(Qt::Key_I, Qt::AltModifier);
    QTRY_COMPARE(screen.station.focus(), u"EdtLote"_s);
    QCOMPARE(screen.station.text(u"EdtCodMaterial"_s), u"FIO150PES"_s);
    QCOMPARE(screen.station.text(u"EdtDescMaterial"_s), u"Fio poliéster 150/48"_s);
    QCOMPARE(screen.station.text(u"EdtMarca"_s), u"Algodoeira"_s);
    QCOMPARE(screen.station.text(u"EdtUnitario"_s), u"20,000000"_s);
    for (const QString &field : {u"EdtPeso"_s, u"EdtTotal"_s})
        QCOMPARE(screen.station.text(field), u"0,00"_s);
    QCOMPARE(screen.station.text(u"EdtLote"_s), QString());
    // Another client starts anew,
    screen.station.key(Qt::Key_Escape);
    screen.station.enter(u"DBCodCliente"_s, u"00003"_s);
    screen.station.click(u"BtIIncluir"_s);
    QCOMPARE(screen.station.focus(), u"EdtCodMaterial"_s);
    // and so does the next invoice.
    screen.station.click(u"SbDesistir"_s);
    screen.startInvoice();
    screen.station.click(u"BtIIncluir"_s);
    QCOMPARE(screen.station.focus(), u"EdtCodMaterial"_s);
    QCOMPARE(screen.station.text(u"EdtCodMaterial"_s), QString());
}

void TestNFTerceirosItens::cancellingALotChangesNothing_data()
{
    QTest::addColumn<bool>("altering");
    QTest::addColumn<bool>("byEsc");
    QTest::newRow("new, Esc") << false << true;
    QTest::newRow("new, click") << false << false;
    QTest::newRow("altered, Esc") << true << true;
    QTest::newRow("altered, click") << true << false;
}

void TestNFTerceirosItens::cancellingALotChangesNothing()
{
    QFETCH(bool, altering);
    QFETCH(bool, byEsc);
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.enterLot(u"FIO30CO"_s, u"A"_s);
    const QStringList before = screen.shownLots();
    screen.station.click(altering ? u"btIAlterar"_s : u"BtIIncluir"_s);
    screen.station.enter(u"EdtMarca"_s, u"Outra"_s);
    screen.station.type(u"EdtPeso"_s, u"0"_s);
    if (byEsc)
        screen.station.key(Qt::Key_Escape);
    else
        screen.station.click(u"btICancelar"_s);
    QVERIFY(!screen.isLotOpen());
    QVERIFY(screen.isEditing());
    QCOMPARE(screen.station.focus(), u"BtIIncluir"_s);
    QCOMPARE(screen.shownLots(), before);
    QCOMPARE(screen.station.text(u"EdtPeso"_s), u"50,00"_s);
    QCOMPARE(screen.station.text(u"EdtMarca"_s), QString());
    screen.station.key(Qt::Key_Escape);
    QVERIFY(!screen.isEditing());
}

void TestNFTerceirosItens::theFieldsShowTheRowOfTheList()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.enterLot(u"FIO30CO"_s, u"A"_s, u"1"_s);
    screen.enterLot(u"FIO150PES"_s, u"B"_s, u"2"_s);
    screen.station.child(u"DBGItens"_s)->setFocus();
    screen.station.key(Qt::Key_Up);
    QCOMPARE(screen.station.text(u"EdtLote"_s), u"A"_s);
    QCOMPARE(screen.station.text(u"EdtDescMaterial"_s), u"Fio algodão 30/1 penteado"_s);
    screen.station.key(Qt::Key_Down);
    QCOMPARE(screen.station.text(u"EdtLote"_s), u"B"_s);
    QCOMPARE(screen.station.text(u"EdtPeso"_s), u"2,00"_s);
    QCOMPARE(screen.station.text(u"EdtTotal"_s), u"40,00"_s);
}

void TestNFTerceirosItens::theListIsNotLeftWhileALotIsOpen()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.enterLot(u"FIO30CO"_s, u"A"_s);
    screen.enterLot(u"FIO30CO"_s, u"B"_s);
    auto *grid = screen.station.child<QTableView>(u"DBGItens"_s);
    const auto clickFirstRow = [grid] {
        const QPoint place =
            grid->viewport()->mapTo(grid->window(), grid->visualRect(grid->model()->index(0, 0)).center());
        QTest::mouseClick(grid->window()->windowHandle(), Qt::LeftButton, {}, place);
    };
    screen.station.click(u"btIAlterar"_s);
    screen.station.type(u"EdtLote"_s, u"C"_s);
    clickFirstRow();
    QCOMPARE(grid->currentIndex().row(), 1);
    QCOMPARE(screen.station.focus(), u"EdtLote"_s);
    screen.station.click(u"btISalvar"_s);
    QCOMPARE(screen.shownLots().last(), u"FIO30CO|C|50,00|20,000000|1.000,00|"_s);
    clickFirstRow();
    QCOMPARE(screen.station.text(u"EdtLote"_s), u"A"_s);
}

void TestNFTerceirosItens::anAlteredRowIsReplaced()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s,
        {{.lot = u"L1"_s, .quantity = 50, .stock = 47.5, .writtenOff = 10.25, .returned = 3}});
    screen.open();
    screen.station.click(u"BtnAltera"_s);
    screen.station.key(Qt::Key_Return); // in the list
    QVERIFY(screen.isLotOpen());
    screen.station.enter(u"EdtCodMaterial"_s, u"FIO150PES"_s);
    screen.station.enter(u"EdtLote"_s, u"L9"_s);
    screen.station.enter(u"EdtUnitario"_s, u"21"_s);
    screen.station.click(u"btISalvar"_s);
    QCOMPARE(screen.station.focus(), u"BtIIncluir"_s);
    QCOMPARE(screen.shownLots(), QStringList{u"FIO150PES|L9|50,00|21,000000|1.050,00|Marca"_s});
    screen.station.click(u"SbConfirmar"_s);
    QCOMPARE(lots(screen.database()), QStringList{u"0000123|00001|FIO150PES|L9|50|47.5|10.25|3|21|1050"_s});
    // A corrected quantity is what came, and what is there.
    screen.station.click(u"BtnAltera"_s);
    screen.station.click(u"btIAlterar"_s);
    screen.station.enter(u"EdtPeso"_s, u"60"_s);
    screen.station.click(u"btISalvar"_s);
    screen.station.click(u"SbConfirmar"_s);
    QCOMPARE(lots(screen.database()), QStringList{u"0000123|00001|FIO150PES|L9|60|60|10.25|3|21|1260"_s});
}

void TestNFTerceirosItens::anAlteredRowMayKeepItsPair()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, {{.lot = u"L1"_s}, {.lot = u"L2"_s}});
    screen.open();
    screen.station.click(u"BtnAltera"_s);
    screen.station.click(u"btIAlterar"_s);
    const QString lot = screen.station.text(u"EdtLote"_s);
    screen.station.enter(u"EdtCodMaterial"_s, u"FIO30CO"_s);
    screen.station.enter(u"EdtMarca"_s, u"Nova"_s);
    screen.station.click(u"btISalvar"_s);
    QCOMPARE(screen.shownLots().filter(u"Nova"_s), QStringList{u"FIO30CO|%1|50,00|20,000000|1.000,00|Nova"_s.arg(lot)});
    QCOMPARE(screen.shownLots().size(), 2);
}

void TestNFTerceirosItens::anAlteredRowMayNotTakeAnothersPair()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.enterLot(u"FIO30CO"_s, u"L1"_s);
    screen.enterLot(u"FIO30CO"_s, u"L2"_s);
    screen.station.click(u"btIAlterar"_s);
    screen.station.enter(u"EdtLote"_s, u"L1"_s);
    screen.expect(inListAlready);
    screen.station.click(u"btISalvar"_s);
    QTRY_COMPARE(screen.station.focus(), u"EdtLote"_s);
    QVERIFY(screen.isLotOpen());
    QCOMPARE(screen.station.text(u"EdtLote"_s), u"L1"_s);
    screen.station.enter(u"EdtLote"_s, u"L3"_s);
    screen.station.click(u"btISalvar"_s);
    QCOMPARE(screen.shownLots(),
        (QStringList{u"FIO30CO|L1|50,00|20,000000|1.000,00|"_s, u"FIO30CO|L3|50,00|20,000000|1.000,00|"_s}));
}

void TestNFTerceirosItens::whatLeftKeepsItsMaterialAndLot()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, {{.lot = u"L1"_s}});
    quote(screen.database(), u"0000123"_s, u"FIO30CO"_s, u"L1"_s);
    screen.open();
    screen.station.click(u"BtnAltera"_s);
    for (const QString &field : {u"DBDocto"_s, u"DBCodCliente"_s})
        QVERIFY(screen.station.child<QLineEdit>(field)->isReadOnly());
    screen.station.click(u"btIAlterar"_s);
    QCOMPARE(screen.station.focus(), u"EdtPeso"_s);
    for (const QString &field : {u"EdtCodMaterial"_s, u"EdtLote"_s})
        QVERIFY(screen.station.child<QLineEdit>(field)->isReadOnly());
    screen.station.click(u"btICancelar"_s);
    screen.station.click(u"BtIIncluir"_s);
    for (const QString &field : {u"EdtCodMaterial"_s, u"EdtLote"_s})
        QVERIFY(!screen.station.child<QLineEdit>(field)->isReadOnly());
    screen.station.click(u"SbDesistir"_s);
    screen.station.click(u"Btincluir"_s);
    QVERIFY(!screen.station.child<QLineEdit>(u"DBDocto"_s)->isReadOnly());
}

void TestNFTerceirosItens::takingALotOutAsks()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.enterLot(u"FIO30CO"_s, u"A"_s);
    screen.enterLot(u"FIO30CO"_s, u"B"_s);
    screen.answers.expectAndType(u"Deseja eliminar este Material?"_s, Qt::Key_Return, caption);
    screen.station.click(u"btIExcluir"_s);
    QCOMPARE(screen.shownLots().size(), 2);
    screen.answers.expect(u"Deseja eliminar este Material?"_s, QMessageBox::Yes, caption);
    screen.station.click(u"btIExcluir"_s);
    QCOMPARE(screen.shownLots(), QStringList{u"FIO30CO|A|50,00|20,000000|1.000,00|"_s});
    QCOMPARE(screen.station.text(u"EdtLote"_s), u"A"_s);
}

void TestNFTerceirosItens::aLotThatLeftIsNotTakenOut_data()
{
    QTest::addColumn<QString>("docto");
    QTest::addColumn<QString>("material");
    QTest::addColumn<QString>("lot");
    QTest::addColumn<QString>("client");
    QTest::addColumn<QString>("printed");
    QTest::addColumn<bool>("kept");
    const QString docto = u"0000123"_s, yarn = u"FIO30CO"_s, lot = u"L1"_s, client = u"00001"_s;
    QTest::newRow("printed") << docto << yarn << lot << client << u"'S'"_s << true;
    QTest::newRow("not printed") << docto << yarn << lot << client << u"'N'"_s << true;
    QTest::newRow("of another client") << docto << yarn << lot << u"00003"_s << u"'S'"_s << true;
    QTest::newRow("cancelled") << docto << yarn << lot << client << u"'C'"_s << false;
    QTest::newRow("undecided") << docto << yarn << lot << client << u"NULL"_s << false;
    QTest::newRow("another lot") << docto << yarn << u"L2"_s << client << u"'S'"_s << false;
    QTest::newRow("another material") << docto << u"FIO150PES"_s << lot << client << u"'S'"_s << false;
    QTest::newRow("another invoice") << u"0000124"_s << yarn << lot << client << u"'S'"_s << false;
}

void TestNFTerceirosItens::aLotThatLeftIsNotTakenOut()
{
    QFETCH(QString, docto);
    QFETCH(QString, material);
    QFETCH(QString, lot);
    QFETCH(QString, client);
    QFETCH(QString, printed);
    QFETCH(bool, kept);
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, {{.lot = u"L1"_s}});
    quote(screen.database(), docto, material, lot, client, printed);
    screen.open();
    screen.station.click(u"BtnAltera"_s);
    if (kept)
        screen.expect(u"Material com Saída. Impossível Excluir."_s);
    else
        screen.answers.expect(u"Deseja eliminar este Material?"_s, QMessageBox::Yes);
    screen.station.click(u"btIExcluir"_s);
    QCOMPARE(screen.shownLots().size(), kept ? 1 : 0);
    QCOMPARE(lots(screen.database()).size(), 1);
}

void TestNFTerceirosItens::takingTheLastLotOutEmptiesTheFields()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.enterLot();
    screen.answers.expect(u"Deseja eliminar este Material?"_s, QMessageBox::Yes);
    screen.station.click(u"btIExcluir"_s);
    for (const QString &field : {u"EdtCodMaterial"_s, u"EdtDescMaterial"_s, u"EdtMarca"_s, u"EdtLote"_s})
        QCOMPARE(screen.station.text(field), QString());
    for (const QString &field : {u"EdtPeso"_s, u"EdtTotal"_s})
        QCOMPARE(screen.station.text(field), u"0,00"_s);
    QCOMPARE(screen.station.text(u"lbSoma"_s), u"0 lotes     Quantidade: 0,00     Valor: 0,00"_s);
    screen.station.click(u"btIExcluir"_s);
    screen.station.click(u"btIAlterar"_s);
    QVERIFY(!screen.isLotOpen());
}

void TestNFTerceirosItens::pastedRowsBecomeLots()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.enterLot();
    screen.paste(u"FIO30CO\tA\t1.234,5\t24,35\tAlgodoeira\r\nFIO150PES\t\t0,001\t10\t\r\n"_s);
    QCOMPARE(screen.shownLots(),
        (QStringList{u"FIO30CO|L1|50,00|20,000000|1.000,00|"_s, u"FIO30CO|A|1.234,50|24,350000|30.060,08|Algodoeira"_s,
            u"FIO150PES|0|0,00|10,000000|0,01|"_s}));
    QCOMPARE(screen.station.text(u"EdtDescMaterial"_s), u"Fio poliéster 150/48"_s);
    screen.station.click(u"SbConfirmar"_s);
    QCOMPARE(lots(screen.database()),
        (QStringList{u"0000123|00001|FIO150PES|0|0.001|0.001|0|0|10|0.01"_s,
            u"0000123|00001|FIO30CO|A|1234.5|1234.5|0|0|24.35|30060.08"_s,
            u"0000123|00001|FIO30CO|L1|50|50|0|0|20|1000"_s}));
}

void TestNFTerceirosItens::refusedRowsAreListedAndLoseNothing()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00002"_s, {{.lot = u"SAVED"_s}});
    screen.open();
    screen.startInvoice();
    screen.enterLot(u"FIO30CO"_s, u"L1"_s);
    const QString text = u"Material\tLote\tQtde\tPreço\n"
                         "FIO30CO\tL1\t1\t1\n"
                         "FIO30CO\tL2\t1\t1\n"
                         "FIO30CO\tL2\t2\t1\n"
                         "FIO30CO\tSAVED\t1\t1\n"
                         "FIO99\tL3\t1\t1\n"
                         "FIO30CO\tL4\t0\t1\n"
                         "FIO30CO\tL5\t1\t-1\n"
                         "FIO30CO\tL6\t0,001\t0,001\n"
                         "FIO30CO\tL7\n"
                         "FIO150PES\tL8\t5\t2"_s;
    screen.expect(u"Lotes incluídos: 2. Linhas recusadas:\n\n"
                  "Linha 1 (Material, lote Lote): Quantidade inválida: \"Qtde\".\n"
                  "Linha 2 (FIO30CO, lote L1): Material e Lote já cadastrado para esta Nota Fiscal.\n"
                  "Linha 4 (FIO30CO, lote L2): Material e Lote já cadastrado para esta Nota Fiscal.\n"
                  "Linha 5 (FIO30CO, lote SAVED): Material com o Lote já existente nesta Nota Fiscal.\n"
                  "Linha 6 (FIO99, lote L3): Material Inválido.\n"
                  "Linha 7 (FIO30CO, lote L4): Quantidade não pode ser menor ou igual a zero.\n"
                  "Linha 8 (FIO30CO, lote L5): Preço não pode ser menor ou igual a zero.\n"
                  "Linha 9 (FIO30CO, lote L6): Total não pode ser menor ou igual a zero.\n"
                  "Linha 10 (FIO30CO, lote L7): A linha deve ter as colunas material, lote, quantidade, preço e "
                  "marca."_s);
    screen.paste(text);
    QCOMPARE(screen.shownLots(),
        (QStringList{u"FIO30CO|L1|50,00|20,000000|1.000,00|"_s, u"FIO30CO|L2|1,00|1,000000|1,00|"_s,
            u"FIO150PES|L8|5,00|2,000000|10,00|"_s}));
    QCOMPARE(QApplication::clipboard()->text(), text);
    QVERIFY(!screen.station.host.busyMarker().isBusy());
}

void TestNFTerceirosItens::pastedRowsMeetTheClientsRule()
{
    Screen screen;
    screen.letMaterialsBelongToClients();
    screen.open();
    screen.startInvoice();
    screen.expect(u"Lotes incluídos: 1. Linhas recusadas:\n\n"
                  "Linha 1 (FIO150PES, lote A): Material inválido para este cliente."_s);
    screen.paste(u"FIO150PES\tA\t1\t1\nFIO30CO\tA\t1\t1"_s);
    QCOMPARE(screen.shownLots(), QStringList{u"FIO30CO|A|1,00|1,000000|1,00|"_s});
}

void TestNFTerceirosItens::pastingBeforeTheClientIsRefused()
{
    Screen screen;
    screen.open();
    screen.station.click(u"Btincluir"_s);
    screen.expect(clientRefused);
    screen.paste(u"FIO30CO\tA\t1\t1"_s);
    QTRY_COMPARE(screen.station.focus(), u"DBCodCliente"_s);
    QCOMPARE(screen.shownLots(), QStringList());
}

void TestNFTerceirosItens::pastingWhileReadingDoesNothing()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, {{}});
    screen.open();
    screen.paste(u"FIO30CO\tA\t1\t1"_s);
    QCOMPARE(screen.shownLots().size(), 1);
    screen.station.key(Qt::Key_Return);
    QVERIFY(!screen.isLotOpen());
}

void TestNFTerceirosItens::manyRefusedRowsAreCounted()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    QString text;
    for (int i = 0; i < 27; ++i)
        text += u"FIO99\t%1\t1\t1\n"_s.arg(i);
    screen.answers.expect({}, QMessageBox::Ok, caption);
    screen.paste(text);
    const QStringList lines = screen.answers.shown().value(0).text.split(u'\n');
    QCOMPARE(lines.size(), 23);
    QCOMPARE(lines.last(), u"… e mais 7."_s);
}

void TestNFTerceirosItens::aPasteThatFailsLeavesNoEmptyRow()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.station.tabela.IBDatabase->setObserver([](const QString &statement) {
        if (statement.startsWith(u"SELECT DESCRICAO FROM MATERIAL"_s))
            throw EDatabaseError(EDatabaseError::Category::Connection, {}, {}, statement);
    });
    screen.expectFailure(u"A conexão com o banco de dados falhou."_s);
    screen.paste(u"FIO30CO\tA\t1\t1"_s);
    screen.station.tabela.IBDatabase->setObserver({});
    QVERIFY(!screen.station.host.busyMarker().isBusy());
    screen.enterLot();
    QCOMPARE(screen.shownLots(), QStringList{u"FIO30CO|L1|50,00|20,000000|1.000,00|"_s});
}

QTEST_MAIN(TestNFTerceirosItens)
#include "tst_nfterceirositens.moc"
