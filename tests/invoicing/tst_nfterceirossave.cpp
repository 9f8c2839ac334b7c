// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/invoicing/hostiletexts.h"
#include "tests/invoicing/invoices.h"
#include "tests/support/killedprocess.h"

#include <QPlainTextEdit>
#include <QSignalSpy>

using namespace Invoices;

namespace {

const QString refusedByTable = QStringLiteral("O banco de dados recusou a operação. Nada foi gravado.");
const QString refusedByConflict =
    QStringLiteral("Outra estação alterou estes dados ao mesmo tempo. Nada foi gravado; tente novamente.");
const QString deleteQuestion = QStringLiteral("Deseja eliminar esta Nota Fiscal?");
const QString logLine = QStringLiteral("MALHARIA|INCLUSAO/ALTERACAO NOTA NR.: 0000123|1|0000123|ADMIN");

QList<Lot> threeLots()
{
    return {{.lot = u"L1"_s, .quantity = 50, .stock = 48.5, .writtenOff = 12.345, .returned = 1.5},
        {.lot = u"L2"_s, .quantity = 30}, {.material = u"FIO150PES"_s, .lot = u"L1"_s, .quantity = 20, .price = 9.5}};
}

/// An invoice is altered, and the process is killed while it saves.
int alterAndBeKilled()
{
    TestStation station(KilledProcess::engine());
    insert(station.database, u"0000123"_s, u"00001"_s, threeLots());
    station.open(u"TfmNFTerceiros"_s);
    station.click(u"BtnAltera"_s);
    MessageAnswers answers;
    answers.expect(u"Deseja eliminar este Material?"_s, QMessageBox::Yes);
    station.click(u"btIExcluir"_s);
    station.enter(u"DBObs"_s, u"Nunca gravada"_s);
    KilledProcess::arm(station);
    station.click(u"SbConfirmar"_s);
    return 0;
}

} // namespace

/// The inbound invoice screen: what is saved and deleted, and what remains when that fails.
class TestNFTerceirosSave : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void whatIsMissingIsToldInItsOrder();
    void aDateThatIsNoneIsRefused();
    void aNewInvoiceIsStoredAndLogged();
    void theLogLineFollowsTheCommit();
    void aLogThatFailsLeavesTheInvoiceSaved();
    void confirmingAgainKeepsWhatHappenedToTheLots();
    void alteringReplacesTheLots();
    void aLotThatIsStillOpenIsSavedToo();
    void anOpenLotWithoutQuantityIsDropped();
    void aCorrectedNumberTakesItsLotsAlong();

    void nothingRemainsOfASaveThatFails_data();
    void nothingRemainsOfASaveThatFails();
    void aProcessKilledWhileSavingLosesNoLot_data();
    void aProcessKilledWhileSavingLosesNoLot();
    void aNumberTakenMeanwhileIsRefused();
    void whatLeftMeanwhileIsNotOverwritten();
    void whatIsQuotedMeanwhileIsNotTakenAway_data();
    void whatIsQuotedMeanwhileIsNotTakenAway();
    void anInvoiceDeletedMeanwhileIsNotSaved();
    void theInvoiceOfTheOtherClientIsNotTakenForADeletedOne();

    void deletingAsksAndNoIsTheDefault();
    void deletingTakesTheLotsAlong();
    void anInvoiceWithOutboundItemsIsNotDeleted_data();
    void anInvoiceWithOutboundItemsIsNotDeleted();
    void goodsThatLeaveWhileAskingKeepTheInvoice();
    void nothingRemainsOfADeletionThatFails();

    void textsAreStoredAsTyped_data();
    void textsAreStoredAsTyped();
    void codesMadeToDoHarmAreCodesLikeOthers_data();
    void codesMadeToDoHarmAreCodesLikeOthers();
    void aRemarkThatIsTooLongIsRefused();
};

void TestNFTerceirosSave::whatIsMissingIsToldInItsOrder()
{
    Screen screen;
    screen.open();
    QSignalSpy busy(&screen.station.host.busyMarker(), &BusyMarker::changed);
    const auto refused = [&](const QString &message, const QString &field) {
        screen.expect(message);
        screen.station.click(u"SbConfirmar"_s);
        QTRY_COMPARE(screen.station.focus(), field);
        QVERIFY(screen.isEditing());
    };
    screen.station.click(u"Btincluir"_s);
    refused(u"Nota Fiscal inválida."_s, u"DBDocto"_s);
    screen.station.enter(u"DBDocto"_s, u"0000123"_s);
    refused(u"Cliente inválido."_s, u"DBCodCliente"_s);
    screen.station.enter(u"DBCodCliente"_s, u"00001"_s);
    refused(u"Nota Fiscal sem itens."_s, u"DBCodCliente"_s);
    QCOMPARE(busy.size(), 0);
    QCOMPARE(headers(screen.database()), QStringList());
    QCOMPARE(log(screen.database()), QStringList());
}

void TestNFTerceirosSave::aDateThatIsNoneIsRefused()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.enterLot();
    screen.station.enter(u"DBData"_s, u"31/02/2026"_s);
    screen.expect(u"Data Inválida. Impossível Continuar."_s);
    screen.station.click(u"SbConfirmar"_s);
    QTRY_COMPARE(screen.station.focus(), u"DBData"_s);
    QCOMPARE(headers(screen.database()), QStringList());
}

void TestNFTerceirosSave::aNewInvoiceIsStoredAndLogged()
{
    Screen screen;
    insert(screen.database(), u"0000999"_s, u"00002"_s, {{.lot = u"OUTRO"_s}});
    screen.open();
    screen.startInvoice();
    screen.station.enter(u"DBData"_s, u"07/03/2026"_s);
    screen.station.enter(u"DBObs"_s, u"Entregue por São João"_s);
    screen.station.click(u"BtIIncluir"_s);
    screen.station.enter(u"EdtCodMaterial"_s, u"FIO30CO"_s);
    screen.station.enter(u"EdtMarca"_s, u"Algodoeira"_s);
    screen.fillLot(u"FIO30CO"_s, u"A-1"_s, u"1234,567"_s, u"24,123456"_s);
    screen.station.click(u"btISalvar"_s);
    screen.enterLot(u"FIO150PES"_s, {}, u"2"_s, u"0,5"_s);
    QSignalSpy busy(&screen.station.host.busyMarker(), &BusyMarker::changed);
    screen.station.click(u"SbConfirmar"_s);
    QVERIFY(!screen.isEditing());
    QCOMPARE(busy, (QList<QVariantList>{{true}, {false}}));
    QCOMPARE(screen.database().rows(u"SELECT DOCTO, CODCLI, DATA, OBS FROM {NFTERCEIROS} WHERE DOCTO < '0000999'"_s),
        QStringList{u"0000123|00001|2026-03-07|Entregue por São João"_s});
    QCOMPARE(lots(screen.database()),
        (QStringList{u"0000123|00001|FIO150PES|0|2|2|0|0|0.5|1"_s,
            u"0000123|00001|FIO30CO|A-1|1234.567|1234.567|0|0|24.123456|29782.02"_s,
            u"0000999|00002|FIO30CO|OUTRO|50|50|0|0|20|1000"_s}));
    QCOMPARE(screen.database().value(u"SELECT MARCA FROM {NFT_ITEN} WHERE LOTE = 'A-1'"_s).toString(), u"Algodoeira"_s);
    QCOMPARE(log(screen.database()), QStringList{logLine});
    QCOMPARE(screen.station.text(u"DBDocto"_s), u"0000123"_s);
    QCOMPARE(screen.shownLots().size(), 2);
    QVERIFY(screen.station.child(u"PainelBarra"_s)->isVisible());
}

void TestNFTerceirosSave::theLogLineFollowsTheCommit()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, {{}});
    screen.open();
    screen.station.click(u"BtnAltera"_s);
    screen.station.enter(u"DBObs"_s, u"Nova"_s);
    QStringList steps;
    screen.station.tabela.IBDatabase->setObserver([&](const QString &statement) {
        const QString step = statement.section(u' ', 0, 2);
        if (!step.startsWith(u"SELECT"_s))
            steps.append(step.section(u'_', 0, step.startsWith(u"INSERT INTO NFT"_s) ? 1 : 0));
    });
    screen.station.click(u"SbConfirmar"_s);
    QVERIFY(!screen.isEditing());
    QCOMPARE(steps.first(), u"BEGIN"_s);
    QCOMPARE(steps.count(u"COMMIT"_s), 1);
    const qsizetype deleted = steps.indexOf(u"DELETE FROM NFT"_s);
    const qsizetype inserted = steps.indexOf(u"INSERT INTO NFT_ITEN"_s);
    const qsizetype committed = steps.indexOf(u"COMMIT"_s);
    const qsizetype logged = steps.indexOf(u"INSERT INTO QEN"_s);
    QVERIFY(steps.indexOf(u"UPDATE NFTERCEIROS"_s) < deleted);
    QVERIFY(deleted >= 0 && deleted < inserted && inserted < committed && committed < logged);
    QCOMPARE(log(screen.database()), QStringList{logLine});
}

void TestNFTerceirosSave::aLogThatFailsLeavesTheInvoiceSaved()
{
    Screen screen;
    screen.database().run(u"ALTER TABLE QEN_LOG DROP OPERACAO"_s);
    screen.open();
    screen.startInvoice();
    screen.enterLot();
    screen.expectFailure(refusedByTable);
    screen.station.click(u"SbConfirmar"_s);
    QVERIFY(!screen.isEditing());
    QVERIFY(!screen.station.host.busyMarker().isBusy());
    QCOMPARE(lots(screen.database()).size(), 1);
}

void TestNFTerceirosSave::confirmingAgainKeepsWhatHappenedToTheLots()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, threeLots());
    insert(screen.database(), u"0000123"_s, u"00002"_s, {{.lot = u"OUTRO"_s}});
    const QStringList before = lots(screen.database());
    screen.open();
    screen.station.click(u"sbAnterior"_s);
    screen.station.click(u"BtnAltera"_s);
    screen.station.click(u"SbConfirmar"_s);
    QVERIFY(!screen.isEditing());
    QCOMPARE(lots(screen.database()), before);
    QCOMPARE(log(screen.database()), QStringList{logLine});
}

void TestNFTerceirosSave::alteringReplacesTheLots()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, {{.lot = u"L1"_s, .stock = 44.444, .writtenOff = 3}});
    screen.open();
    screen.station.click(u"BtnAltera"_s);
    screen.enterLot(u"FIO30CO"_s, u"L2"_s);
    screen.enterLot(u"FIO30CO"_s, u"L3"_s);
    screen.answers.expect(u"Deseja eliminar este Material?"_s, QMessageBox::Yes);
    screen.station.child(u"DBGItens"_s)->setFocus();
    screen.station.key(Qt::Key_Up);
    screen.station.click(u"btIExcluir"_s);
    QCOMPARE(lots(screen.database()).size(), 1);
    screen.station.click(u"SbConfirmar"_s);
    QCOMPARE(lots(screen.database()),
        (QStringList{
            u"0000123|00001|FIO30CO|L1|50|44.444|3|0|20|1000"_s, u"0000123|00001|FIO30CO|L3|50|50|0|0|20|1000"_s}));
}

void TestNFTerceirosSave::aLotThatIsStillOpenIsSavedToo()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.station.click(u"BtIIncluir"_s);
    screen.fillLot(u"FIO30CO"_s, u"A"_s, u"5"_s, u"2"_s);
    screen.station.click(u"SbConfirmar"_s);
    QVERIFY(!screen.isEditing());
    QCOMPARE(lots(screen.database()), QStringList{u"0000123|00001|FIO30CO|A|5|5|0|0|2|10"_s});
}

void TestNFTerceirosSave::anOpenLotWithoutQuantityIsDropped()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.enterLot();
    screen.station.key(Qt::Key_Return);
    QVERIFY(screen.isLotOpen());
    screen.station.click(u"SbConfirmar"_s);
    QVERIFY(!screen.isEditing());
    QVERIFY(!screen.isLotOpen());
    QCOMPARE(lots(screen.database()).size(), 1);
}

void TestNFTerceirosSave::aCorrectedNumberTakesItsLotsAlong()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, threeLots());
    screen.open();
    screen.station.click(u"BtnAltera"_s);
    screen.station.enter(u"DBDocto"_s, u"0000321"_s);
    screen.station.enter(u"DBCodCliente"_s, u"00001"_s);
    QCOMPARE(screen.shownLots().size(), 3);
    screen.station.click(u"SbConfirmar"_s);
    QVERIFY(!screen.isEditing());
    QCOMPARE(headers(screen.database()), QStringList{u"0000321|00001"_s});
    QCOMPARE(lots(screen.database()),
        (QStringList{u"0000321|00001|FIO150PES|L1|20|20|0|0|9.5|190"_s,
            u"0000321|00001|FIO30CO|L1|50|48.5|12.345|1.5|20|1000"_s, u"0000321|00001|FIO30CO|L2|30|30|0|0|20|600"_s}));
}

void TestNFTerceirosSave::nothingRemainsOfASaveThatFails_data()
{
    QTest::addColumn<bool>("inserting");
    QTest::newRow("new") << true;
    QTest::newRow("altered") << false;
}

void TestNFTerceirosSave::nothingRemainsOfASaveThatFails()
{
    QFETCH(bool, inserting);
    Screen screen;
    insert(screen.database(), u"0000120"_s, u"00001"_s, threeLots());
    const QStringList before = lots(screen.database());
    // The second of the lots to come is refused.
    screen.database().run(u"ALTER TABLE {NFT_ITEN} ADD CONSTRAINT NO_SEVEN CHECK (ESTOQUE_FISICO <> 7)"_s);
    screen.open();
    if (inserting)
        screen.startInvoice();
    else
        screen.station.click(u"BtnAltera"_s);
    screen.enterLot(u"FIO30CO"_s, u"X"_s);
    screen.enterLot(u"FIO30CO"_s, u"Y"_s, u"7"_s);
    screen.station.enter(u"DBObs"_s, u"Nunca gravada"_s);
    screen.expectFailure(refusedByTable);
    screen.station.click(u"SbConfirmar"_s);
    QVERIFY(screen.isEditing());
    QVERIFY(!screen.station.tabela.IBDatabase->inTransaction());
    QVERIFY(!screen.station.host.busyMarker().isBusy());
    QCOMPARE(lots(screen.database()), before);
    QCOMPARE(headers(screen.database()), QStringList{u"0000120|00001"_s});
    QCOMPARE(screen.database().count(u"NFTERCEIROS"_s, u"OBS = 'Nunca gravada'"_s), 0);
    QCOMPARE(log(screen.database()), QStringList());
    // Nothing that was typed is lost, and it can be corrected.
    QCOMPARE(screen.shownLots().size(), inserting ? 2 : 5);
    screen.station.click(u"btIAlterar"_s);
    screen.station.enter(u"EdtPeso"_s, u"8"_s);
    screen.station.click(u"btISalvar"_s);
    screen.station.click(u"SbConfirmar"_s);
    QVERIFY(!screen.isEditing());
    QCOMPARE(lots(screen.database()).size(), 5);
    QCOMPARE(log(screen.database()).size(), 1);
}

void TestNFTerceirosSave::aProcessKilledWhileSavingLosesNoLot_data()
{
    QTest::addColumn<QString>("statement");
    QTest::newRow("after the header") << u"UPDATE NFTERCEIROS"_s;
    QTest::newRow("after the deletion") << u"DELETE FROM NFT_ITEN"_s;
    QTest::newRow("after the first lot") << u"INSERT INTO NFT_ITEN"_s;
}

void TestNFTerceirosSave::aProcessKilledWhileSavingLosesNoLot()
{
    QFETCH(QString, statement);
    KilledProcess process(statement);
    QVERIFY2(process.wasKilled(), qPrintable(process.said()));
    const QStringList lots = process.rows(u"SELECT CODIGO, LOTE, ESTOQUE_FISICO, QTDE_BAIXA FROM NFT_ITEN_001 "
                                          "WHERE DOCTO = '0000123' ORDER BY CODIGO, LOTE"_s);
    QCOMPARE(lots, (QStringList{u"FIO150PES L1 20 0"_s, u"FIO30CO L1 48.5 12.345"_s, u"FIO30CO L2 30 0"_s}));
    QCOMPARE(process.rows(u"SELECT OBS FROM NFTERCEIROS_001"_s), QStringList{u"Obs"_s});
    QCOMPARE(process.rows(u"SELECT TEXTO FROM QEN_LOG"_s), QStringList());
}

void TestNFTerceirosSave::aNumberTakenMeanwhileIsRefused()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.enterLot();
    insert(screen.database(), u"0000123"_s, u"00001"_s, {{.lot = u"DELES"_s}});
    screen.expectFailure(u"Já existe um registro com esta chave. Nada foi gravado."_s);
    screen.station.click(u"SbConfirmar"_s);
    QVERIFY(screen.isEditing());
    QCOMPARE(lots(screen.database()), QStringList{u"0000123|00001|FIO30CO|DELES|50|50|0|0|20|1000"_s});
    screen.station.enter(u"DBDocto"_s, u"0000124"_s);
    screen.station.click(u"SbConfirmar"_s);
    QVERIFY(!screen.isEditing());
    QCOMPARE(lots(screen.database()).size(), 2);
}

void TestNFTerceirosSave::whatLeftMeanwhileIsNotOverwritten()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, {{}});
    screen.open();
    screen.station.click(u"BtnAltera"_s);
    screen.enterLot(u"FIO30CO"_s, u"L2"_s);
    screen.database().run(u"UPDATE {NFT_ITEN} SET QTDE_BAIXA = 12"_s);
    screen.expectFailure(refusedByConflict);
    screen.station.click(u"SbConfirmar"_s);
    QVERIFY(screen.isEditing());
    QCOMPARE(lots(screen.database()), QStringList{u"0000123|00001|FIO30CO|L1|50|50|12|0|20|1000"_s});
    QCOMPARE(log(screen.database()), QStringList());
}

void TestNFTerceirosSave::whatIsQuotedMeanwhileIsNotTakenAway_data()
{
    QTest::addColumn<QString>("quotedLot");
    QTest::addColumn<bool>("numberCorrected");
    QTest::addColumn<bool>("saved");
    QTest::newRow("the lot taken out") << u"L2"_s << false << false;
    QTest::newRow("another lot") << u"L1"_s << false << true;
    QTest::newRow("the number") << u"L1"_s << true << false;
}

void TestNFTerceirosSave::whatIsQuotedMeanwhileIsNotTakenAway()
{
    QFETCH(QString, quotedLot);
    QFETCH(bool, numberCorrected);
    QFETCH(bool, saved);
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, {{.lot = u"L1"_s}, {.lot = u"L2"_s}});
    const QStringList before = lots(screen.database());
    screen.open();
    screen.station.click(u"BtnAltera"_s);
    if (numberCorrected) {
        screen.station.enter(u"DBDocto"_s, u"0000321"_s);
    } else {
        screen.station.child(u"DBGItens"_s)->setFocus();
        screen.station.key(Qt::Key_Down);
        QCOMPARE(screen.station.text(u"EdtLote"_s), u"L2"_s);
        screen.answers.expect(u"Deseja eliminar este Material?"_s, QMessageBox::Yes);
        screen.station.click(u"btIExcluir"_s);
    }
    quote(screen.database(), u"0000123"_s, u"FIO30CO"_s, quotedLot);
    if (!saved)
        screen.expectFailure(refusedByConflict);
    screen.station.click(u"SbConfirmar"_s);
    QCOMPARE(screen.isEditing(), !saved);
    QCOMPARE(lots(screen.database()), saved ? before.first(1) : before);
    QCOMPARE(headers(screen.database()), QStringList{u"0000123|00001"_s});
}

void TestNFTerceirosSave::anInvoiceDeletedMeanwhileIsNotSaved()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, {{}});
    screen.open();
    screen.station.click(u"BtnAltera"_s);
    screen.database().run(u"DELETE FROM {NFT_ITEN}"_s);
    screen.database().run(u"DELETE FROM {NFTERCEIROS}"_s);
    screen.expectFailure(refusedByConflict);
    screen.station.click(u"SbConfirmar"_s);
    QVERIFY(screen.isEditing());
    QCOMPARE(lots(screen.database()), QStringList());
    screen.station.click(u"SbDesistir"_s);
    QCOMPARE(screen.station.text(u"DBDocto"_s), QString());
    QCOMPARE(screen.shownLots(), QStringList());
}

void TestNFTerceirosSave::theInvoiceOfTheOtherClientIsNotTakenForADeletedOne()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, {{.lot = u"A"_s}});
    insert(screen.database(), u"0000123"_s, u"00002"_s, {{.lot = u"B"_s}});
    screen.open();
    screen.database().run(u"DELETE FROM {NFTERCEIROS} WHERE CODCLI = '00002'"_s);
    screen.expectFailure(refusedByConflict);
    screen.station.click(u"BtnAltera"_s);
    QVERIFY(!screen.isEditing());
    QCOMPARE(screen.station.text(u"DBCodCliente"_s), u"00001"_s);
    QCOMPARE(screen.station.text(u"EdtLote"_s), u"A"_s);
}

void TestNFTerceirosSave::deletingAsksAndNoIsTheDefault()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, {{}});
    screen.open();
    for (const Qt::Key refuses : {Qt::Key_Return, Qt::Key_Escape}) {
        screen.answers.expectAndType(deleteQuestion, refuses, caption);
        screen.station.click(u"BtExcluir"_s);
        QCOMPARE(lots(screen.database()).size(), 1);
        QCOMPARE(headers(screen.database()).size(), 1);
    }
}

void TestNFTerceirosSave::deletingTakesTheLotsAlong()
{
    Screen screen;
    insert(screen.database(), u"0000122"_s, u"00002"_s, {{.lot = u"ANTES"_s}});
    insert(screen.database(), u"0000123"_s, u"00001"_s, {{.lot = u"FICA"_s}});
    insert(screen.database(), u"0000123"_s, u"00002"_s, threeLots());
    screen.open();
    screen.answers.expect(deleteQuestion, QMessageBox::Yes, caption);
    screen.station.click(u"BtExcluir"_s);
    QCOMPARE(headers(screen.database()), (QStringList{u"0000122|00002"_s, u"0000123|00001"_s}));
    QCOMPARE(lots(screen.database()),
        (QStringList{
            u"0000122|00002|FIO30CO|ANTES|50|50|0|0|20|1000"_s, u"0000123|00001|FIO30CO|FICA|50|50|0|0|20|1000"_s}));
    QCOMPARE(screen.station.text(u"EdtLote"_s), u"FICA"_s);
    QCOMPARE(screen.station.text(u"EdtNomeCliente"_s), u"Confecções Serra Azul Ltda"_s);
    QCOMPARE(log(screen.database()), QStringList());
}

void TestNFTerceirosSave::anInvoiceWithOutboundItemsIsNotDeleted_data()
{
    QTest::addColumn<QString>("docto");
    QTest::addColumn<QString>("client");
    QTest::addColumn<QString>("printed");
    QTest::addColumn<bool>("kept");
    QTest::newRow("printed") << u"0000123"_s << u"00001"_s << u"'S'"_s << true;
    QTest::newRow("not printed") << u"0000123"_s << u"00001"_s << u"'N'"_s << true;
    QTest::newRow("of another client") << u"0000123"_s << u"00003"_s << u"'S'"_s << true;
    QTest::newRow("cancelled") << u"0000123"_s << u"00001"_s << u"'C'"_s << false;
    QTest::newRow("another invoice") << u"0000124"_s << u"00001"_s << u"'S'"_s << false;
}

void TestNFTerceirosSave::anInvoiceWithOutboundItemsIsNotDeleted()
{
    QFETCH(QString, docto);
    QFETCH(QString, client);
    QFETCH(QString, printed);
    QFETCH(bool, kept);
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, {{}});
    // Of a material and a lot that are not on the invoice.
    quote(screen.database(), docto, u"M0001"_s, u"Z"_s, client, printed);
    screen.open();
    if (kept)
        screen.expect(u"Nota Fiscal com Saída. Impossível Excluir."_s);
    else
        screen.answers.expect(deleteQuestion, QMessageBox::Yes);
    screen.station.click(u"BtExcluir"_s);
    QCOMPARE(headers(screen.database()).size(), kept ? 1 : 0);
    QCOMPARE(lots(screen.database()).size(), kept ? 1 : 0);
}

void TestNFTerceirosSave::goodsThatLeaveWhileAskingKeepTheInvoice()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, {{}});
    screen.open();
    screen.answers.expectWindow([&](QWidget *window) {
        quote(screen.database(), u"0000123"_s, u"FIO30CO"_s, u"L1"_s);
        QTest::mouseClick(qobject_cast<QMessageBox *>(window)->button(QMessageBox::Yes), Qt::LeftButton);
    });
    screen.expectFailure(u"Nota Fiscal com Saída. Impossível Excluir."_s);
    screen.station.click(u"BtExcluir"_s);
    QCOMPARE(lots(screen.database()).size(), 1);
    QCOMPARE(headers(screen.database()).size(), 1);
}

void TestNFTerceirosSave::nothingRemainsOfADeletionThatFails()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, threeLots());
    // The host keeps something of the invoice that must not lose it.
    screen.database().run(u"CREATE TABLE NOTE (DOCTO VARCHAR(7), CODCLI VARCHAR(5), FOREIGN KEY (DOCTO, CODCLI) "
                          "REFERENCES {NFTERCEIROS} (DOCTO, CODCLI))"_s);
    screen.database().run(u"INSERT INTO NOTE VALUES ('0000123', '00001')"_s);
    screen.open();
    screen.answers.expect(deleteQuestion, QMessageBox::Yes);
    screen.expectFailure(refusedByTable);
    screen.station.click(u"BtExcluir"_s);
    QCOMPARE(lots(screen.database()).size(), 3);
    QVERIFY(!screen.station.tabela.IBDatabase->inTransaction());
    QCOMPARE(screen.station.text(u"DBDocto"_s), u"0000123"_s);
    QCOMPARE(screen.shownLots().size(), 3);
}

void TestNFTerceirosSave::textsAreStoredAsTyped_data()
{
    HostileTexts::addTexts();
}

void TestNFTerceirosSave::textsAreStoredAsTyped()
{
    QFETCH(QString, text);
    Screen screen;
    insert(screen.database(), u"0000100"_s, u"00002"_s, threeLots());
    const QStringList others = lots(screen.database());
    screen.open();
    screen.startInvoice();
    const QString lot = text.left(15);
    screen.station.click(u"BtIIncluir"_s);
    screen.station.enter(u"EdtCodMaterial"_s, u"FIO30CO"_s);
    screen.pasteIn(u"EdtMarca"_s, text);
    screen.pasteIn(u"EdtLote"_s, lot);
    screen.station.enter(u"EdtPeso"_s, u"1"_s);
    screen.station.enter(u"EdtUnitario"_s, u"1"_s);
    screen.station.click(u"btISalvar"_s);
    screen.pasteIn(u"DBObs"_s, text + u'\n' + text);
    screen.station.click(u"SbConfirmar"_s);
    QVERIFY(!screen.isEditing());
    QCOMPARE(screen.database().value(u"SELECT OBS FROM {NFTERCEIROS} WHERE DOCTO = '0000123'"_s).toString(),
        text + u'\n' + text);
    QCOMPARE(screen.database().value(u"SELECT MARCA FROM {NFT_ITEN} WHERE DOCTO = '0000123'"_s).toString(), text);
    QCOMPARE(
        screen.database().value(u"SELECT LOTE FROM {NFT_ITEN} WHERE DOCTO = '0000123'"_s).toString(), lot.trimmed());
    QCOMPARE(lots(screen.database()).filter(u"0000100|"_s), others);
    // And read back, looked for and taken out again.
    screen.station.click(u"BtnAltera"_s);
    QCOMPARE(screen.station.text(u"EdtMarca"_s), text);
    screen.answers.expect(u"Deseja eliminar este Material?"_s, QMessageBox::Yes);
    screen.station.click(u"btIExcluir"_s);
    QCOMPARE(screen.shownLots(), QStringList());
}

void TestNFTerceirosSave::codesMadeToDoHarmAreCodesLikeOthers_data()
{
    HostileTexts::addCodes();
}

void TestNFTerceirosSave::codesMadeToDoHarmAreCodesLikeOthers()
{
    QFETCH(QString, code);
    Screen screen;
    insert(screen.database(), u"0000100"_s, u"00002"_s, threeLots());
    screen.open();
    const auto leave = [&](const QString &field) {
        screen.pasteIn(field, code);
        screen.station.key(Qt::Key_Tab);
    };
    screen.station.click(u"Btincluir"_s);
    leave(u"DBDocto"_s);
    screen.expect(u"Cliente inválido."_s);
    QStringList listed;
    ScreenChecks::expectSearchAndLeave(screen.answers, &listed);
    leave(u"DBCodCliente"_s);
    screen.station.enter(u"DBCodCliente"_s, u"00001"_s);
    screen.station.click(u"BtIIncluir"_s);
    screen.expect(u"Material Inválido."_s);
    ScreenChecks::expectSearchAndLeave(screen.answers, &listed);
    leave(u"EdtCodMaterial"_s);
    screen.fillLot(u"FIO30CO"_s, {}, u"1"_s, u"1"_s);
    screen.pasteIn(u"EdtLote"_s, code);
    screen.station.click(u"btISalvar"_s);
    screen.station.click(u"SbConfirmar"_s);
    QCOMPARE(lots(screen.database()).size(), 4);
    QVERIFY(lots(screen.database()).contains(code + u"|00001|FIO30CO|"_s + code + u"|1|1|0|0|1|1"_s));
    screen.answers.expect(deleteQuestion, QMessageBox::Yes);
    screen.station.click(u"BtExcluir"_s);
    QCOMPARE(lots(screen.database()).size(), 3);
    QCOMPARE(headers(screen.database()), QStringList{u"0000100|00002"_s});
}

void TestNFTerceirosSave::aRemarkThatIsTooLongIsRefused()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.enterLot();
    auto *remark = screen.station.child<QPlainTextEdit>(u"DBObs"_s);
    QApplication::clipboard()->setText(QString(4001, u'x'));
    remark->setFocus();
    screen.station.key(Qt::Key_V, Qt::ControlModifier);
    screen.expectFailure(refusedByTable);
    screen.station.click(u"SbConfirmar"_s);
    QVERIFY(screen.isEditing());
    QCOMPARE(headers(screen.database()), QStringList());
    remark->setFocus();
    screen.station.key(Qt::Key_Backspace);
    screen.station.click(u"SbConfirmar"_s);
    QVERIFY(!screen.isEditing());
    QCOMPARE(screen.database().value(u"SELECT CHAR_LENGTH(OBS) FROM {NFTERCEIROS}"_s).toInt(), 4000);
}

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    if (KilledProcess::isThisProcess())
        return alterAndBeKilled();
    TestNFTerceirosSave test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_nfterceirossave.moc"
