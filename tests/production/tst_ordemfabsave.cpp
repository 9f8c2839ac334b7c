// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/production/orderstation.h"
#include "tests/support/engines.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

namespace {

/// Lets every commit of PostgreSQL fail that would leave an order with rolls of 7 kg.
void refuseCommits(OrderStation &station)
{
    station.database.run(uR"(CREATE FUNCTION refuse() RETURNS TRIGGER LANGUAGE plpgsql AS $$
        BEGIN IF NEW.KG_ROLO = 7 THEN RAISE EXCEPTION 'refused'; END IF; RETURN NULL; END $$)"_s);
    station.database.run(uR"(CREATE CONSTRAINT TRIGGER refuse AFTER INSERT OR UPDATE ON {OF_MALHA}
        DEFERRABLE INITIALLY DEFERRED FOR EACH ROW EXECUTE FUNCTION refuse())"_s);
}

} // namespace

/// Confirming an order: what is checked, what is stored, and what remains when that fails.
class TestOrdemFabSave : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void whatIsMissingIsToldInItsOrder_data();
    void whatIsMissingIsToldInItsOrder();
    void aRollAsHeavyAsTheOrderIsAccepted();
    void clientAndFlowMayBeEmpty();
    void aNewOrderIsStoredAndLogged();
    void confirmingSavesOnceWhicheverWay_data();
    void confirmingSavesOnceWhicheverWay();
    void textsAreStoredAsTyped_data();
    void textsAreStoredAsTyped();
    void blanksAroundACodeAreNoPartOfIt();
    void fourThousandCharactersAreKeptAndOneMoreIsRefused();

    void nothingRemainsOfASaveThatFails_data();
    void nothingRemainsOfASaveThatFails();
    void aNumberTakenMeanwhileCanBeCorrected();
    void anOrderWithoutNumberIsRefusedByTheTable();
    void whatTwoStationsChangedInOneOrderIsKept();
    void anOrderThatVanishedWhileEditedIsNotSaved();
};

void TestOrdemFabSave::whatIsMissingIsToldInItsOrder_data()
{
    QTest::addColumn<QString>("total");
    QTest::addColumn<QString>("roll");
    QTest::addColumn<QString>("machine");
    QTest::addColumn<QString>("material");
    QTest::addColumn<QString>("date");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("field");
    const QString none;
    const QString heavier = u"KG Rolo ultrapassa o peso. Impossível Continuar."_s;
    const QString noRoll = u"KG Rolo Zerado. Impossível Continuar."_s;
    const QString noTotal = u"KG Total Zerado. Impossível Continuar."_s;
    const QString roll = u"edtKGRolo"_s;
    QTest::newRow("heavier roll, all else empty") << none << u"5"_s << none << none << none << heavier << roll;
    QTest::newRow("heavier by a gram") << u"20"_s << u"20,001"_s << u"001"_s << u"M0001"_s << u"1"_s << heavier << roll;
    QTest::newRow("all empty") << none << none << none << none << none << noRoll << roll;
    QTest::newRow("no roll weight") << u"100"_s << u"0"_s << u"001"_s << u"M0001"_s << u"1"_s << noRoll << roll;
    QTest::newRow("no weight") << none << u"-1"_s << none << none << none << noTotal << u"edtKGTotal"_s;
    QTest::newRow("negative weights") << u"100"_s << u"-1"_s << u"001"_s << u"M0001"_s << u"1"_s << noRoll << roll;
    QTest::newRow("no machine") << u"100"_s << u"20"_s << none << none << none
                                << u"Máquina Inválida. Impossível Continuar."_s << u"edtMaquina"_s;
    QTest::newRow("no material") << u"100"_s << u"20"_s << u"001"_s << none << none
                                 << u"Material Inválido. Impossível Continuar."_s << u"edtMaterial"_s;
    QTest::newRow("no date") << u"100"_s << u"20"_s << u"001"_s << u"M0001"_s << none
                             << u"Data Inválida. Impossível Continuar."_s << u"edtData"_s;
    QTest::newRow("no day of the calendar") << u"100"_s << u"20"_s << u"001"_s << u"M0001"_s << u"31/02/2026"_s
                                            << u"Data Inválida. Impossível Continuar."_s << u"edtData"_s;
}

void TestOrdemFabSave::whatIsMissingIsToldInItsOrder()
{
    OrderStation station;
    QFETCH(QString, total);
    QFETCH(QString, roll);
    QFETCH(QString, machine);
    QFETCH(QString, material);
    QFETCH(QString, date);
    QFETCH(QString, message);
    QFETCH(QString, field);
    station.openOrders();
    station.click(u"btnincluir"_s);
    station.enter(u"edtMaterial"_s, material);
    station.enter(u"edtData"_s, date);
    station.enter(u"edtMaquina"_s, machine);
    station.enter(u"edtKGTotal"_s, total);
    station.enter(u"edtKGRolo"_s, roll);
    expectInformation(station.answers, station.caption, message);
    station.click(u"SbConfirmar"_s);
    QTRY_COMPARE(station.focus(), field);
    QVERIFY(station.answers.allCame());
    QVERIFY(station.isEditing());
    QVERIFY(!station.host.busyMarker().isBusy());
    QCOMPARE(station.database.count(u"OF_MALHA"_s), 0);
    QCOMPARE(station.log(), QStringList());
}

void TestOrdemFabSave::aRollAsHeavyAsTheOrderIsAccepted()
{
    OrderStation station;
    station.openOrders();
    station.startOrder();
    station.enter(u"edtKGTotal"_s, u"33,335"_s);
    station.enter(u"edtKGRolo"_s, u"33,335"_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.database.rows(u"SELECT KG_TOTAL, KG_ROLO FROM {OF_MALHA}"_s), QStringList{u"33.335|33.335"_s});
}

void TestOrdemFabSave::clientAndFlowMayBeEmpty()
{
    OrderStation station;
    station.openOrders();
    station.startOrder();
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.database.count(u"OF_MALHA"_s, u"CLIENTE IS NULL AND FLUXO IS NULL"_s), 1);
}

void TestOrdemFabSave::aNewOrderIsStoredAndLogged()
{
    OrderStation station;
    station.insertOrder();
    station.openOrders();
    station.startOrder();
    station.enter(u"edtData"_s, u"07/03/2026"_s);
    station.enter(u"edtLote"_s, u"L-77"_s);
    station.enter(u"edtCliente"_s, u"00003"_s);
    station.enter(u"EdtCodFluxo"_s, u"02"_s);
    station.enter(u"edtKGRolo"_s, u"12,5"_s);
    station.enter(u"MemoObs"_s, u"Entregar cedo"_s);
    QSignalSpy busy(&station.host.busyMarker(), &BusyMarker::changed);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(busy, (QList<QVariantList>{{true}, {false}}));
    QCOMPARE(station.database.rows(uR"(SELECT NUM_OF, DATA, LOTE, CLIENTE, MATERIAL, MAQUINA, FLUXO, KG_TOTAL, KG_ROLO,
        OBSERVACAO FROM {OF_MALHA} WHERE NUM_OF > '000012')"_s),
        QStringList{u"000013|2026-03-07|L-77|00003|M0001|001|02|100|12.5|Entregar cedo"_s});
    QCOMPARE(station.log(), QStringList{u"ORDEM FAB. MAL.|INCLUSAO DA OF MAL. NR.: 000013|0|000013|ADMIN"_s});
    QCOMPARE(station.text(u"edtOF"_s), u"000013"_s);
    QCOMPARE(station.text(u"edtSaldo"_s), u"100,00"_s);
    QVERIFY(station.child(u"PainelBarra"_s)->isVisible());
    QVERIFY(station.isPageEnabled(u"TabConsulta"_s));
}

void TestOrdemFabSave::confirmingSavesOnceWhicheverWay_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("click") << 0;
    QTest::newRow("Enter") << 1;
    QTest::newRow("Alt+C") << 2;
}

void TestOrdemFabSave::confirmingSavesOnceWhicheverWay()
{
    OrderStation station;
    QFETCH(int, way);
    station.openOrders();
    station.startOrder();
    station.type(u"edtKGTotal"_s, u"120"_s);
    if (way == 0)
        station.click(u"SbConfirmar"_s);
    else if (way == 2)
        station.key(Qt::Key_C, Qt::AltModifier);
    for (int i = 0; way == 1 && i < 4; ++i) // roll weight, observation, Confirmar
        station.key(Qt::Key_Return);
    QTRY_VERIFY(!station.isEditing());
    QCOMPARE(station.database.rows(u"SELECT NUM_OF, KG_TOTAL FROM {OF_MALHA}"_s), QStringList{u"000001|120"_s});
    QCOMPARE(station.log().size(), 1);
    // The keys go on working.
    QStringList listed;
    expectSearchAndLeave(station.answers, &listed);
    station.key(Qt::Key_F4);
    QCOMPARE(listed, QStringList{u"000001"_s});
}

void TestOrdemFabSave::textsAreStoredAsTyped_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("quotes") << u"D'Ávila \"30\" ''x'' `y` 'O"_s;
    QTest::newRow("accents") << u"ÀÉÎÕÜÇ àéîõüç ñ ß ł №"_s;
    QTest::newRow("beyond the basic plane") << u"\U0001F9F6 \U0001F44D\U0001F3FD fim"_s;
    QTest::newRow("wild cards") << u"100% _ [a-z]* ? :a $1 %1 %2"_s;
    QTest::newRow("statement") << u"'; DELETE FROM {OF_MALHA}; UPDATE X A SET A.B = 'c' --"_s;
    QTest::newRow("braces") << u"{OF_MALHA} }{ {}"_s;
    QTest::newRow("backslashes") << u"C:\\mill\\' \\\\ \\n"_s;
    QTest::newRow("lines") << u"primeira\nsegunda\n\n\tquarta "_s;
    QTest::newRow("markup") << u"<b>negrito</b> &amp; <script>"_s;
}

void TestOrdemFabSave::textsAreStoredAsTyped()
{
    OrderStation station;
    QFETCH(QString, text);
    station.openOrders();
    station.startOrder();
    station.paste(u"MemoObs"_s, text);
    station.paste(u"edtLote"_s, text.left(15).simplified());
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.value(u"SELECT OBSERVACAO FROM {OF_MALHA}"_s).toString(), text);
    QCOMPARE(station.value(u"SELECT LOTE FROM {OF_MALHA}"_s).toString(), text.left(15).simplified());
    QCOMPARE(station.text(u"MemoObs"_s), text);
    // And it can be found again by itself.
    station.click(u"BtnAltera"_s);
    station.enter(u"edtKGTotal"_s, u"150"_s);
    station.click(u"SbConfirmar"_s);
    QCOMPARE(station.database.count(u"OF_MALHA"_s, u"KG_TOTAL = 150"_s), 1);
    QCOMPARE(station.value(u"SELECT OBSERVACAO FROM {OF_MALHA}"_s).toString(), text);
}

void TestOrdemFabSave::blanksAroundACodeAreNoPartOfIt()
{
    OrderStation station;
    station.openOrders();
    station.startOrder();
    station.paste(u"edtMaterial"_s, u" M0002 "_s);
    station.paste(u"EdtCodFluxo"_s, u"01 "_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.database.rows(u"SELECT '<' || MATERIAL || '>', '<' || FLUXO || '>' FROM {OF_MALHA}"_s),
        QStringList{u"<M0002>|<01>"_s});
    QCOMPARE(station.text(u"edtMaterial"_s), u"M0002"_s);
}

void TestOrdemFabSave::fourThousandCharactersAreKeptAndOneMoreIsRefused()
{
    OrderStation station;
    const QString unit = u"Malha ção '\"% \n"_s;
    QString text;
    while (text.size() < 4001)
        text += unit;
    text = text.left(3999);
    station.openOrders();
    station.startOrder();
    station.paste(u"MemoObs"_s, text + u"ão"_s);
    expectFailure(station.answers, station.caption, station.refusedByTable);
    station.click(u"SbConfirmar"_s);
    QVERIFY(station.isEditing());
    QCOMPARE(station.text(u"MemoObs"_s).size(), 4001);
    station.child(u"MemoObs"_s)->setFocus();
    station.key(Qt::Key_End, Qt::ControlModifier);
    station.key(Qt::Key_Backspace);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.value(u"SELECT OBSERVACAO FROM {OF_MALHA}"_s).toString(), text + u'ã');
    QCOMPARE(station.log().size(), 1);
}

void TestOrdemFabSave::nothingRemainsOfASaveThatFails_data()
{
    QTest::addColumn<QString>("failing");
    QTest::addColumn<bool>("inserting");
    for (const char *failing : {"log", "post", "commit"}) {
        QTest::addRow("insert, %s", failing) << QString::fromLatin1(failing) << true;
        QTest::addRow("change, %s", failing) << QString::fromLatin1(failing) << false;
    }
}

void TestOrdemFabSave::nothingRemainsOfASaveThatFails()
{
    OrderStation station;
    QFETCH(QString, failing);
    QFETCH(bool, inserting);
    // The driver of Firebird forgets a transaction whose commit failed: its locks stay until the program ends.
    if (failing == u"commit"_s && Engines::current() != u"postgres"_s)
        return;
    station.insertOrder({.rollKg = 25});
    if (failing == u"log"_s)
        station.database.run(u"ALTER TABLE QEN_LOG DROP OPERACAO"_s);
    else if (failing == u"post"_s)
        station.database.run(u"ALTER TABLE {OF_MALHA} ADD CONSTRAINT NO_SEVEN CHECK (KG_ROLO <> 7)"_s);
    else
        refuseCommits(station);
    station.openOrders();
    if (inserting)
        station.startOrder();
    else
        station.click(u"BtnAltera"_s);
    station.enter(u"edtKGRolo"_s, u"7"_s);
    expectFailure(station.answers, station.caption, station.refusedByTable);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.answers.shown().value(0).details.isEmpty());
    QVERIFY(station.isEditing());
    QVERIFY(station.child(u"PainelConfirma"_s)->isVisible());
    QVERIFY(!station.host.busyMarker().isBusy());
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
    QCOMPARE(station.text(u"edtKGRolo"_s), u"7,00"_s);
    QCOMPARE(station.database.rows(u"SELECT NUM_OF, KG_ROLO FROM {OF_MALHA}"_s), QStringList{u"000012|25"_s});
    QCOMPARE(station.value(u"SELECT COUNT(*) FROM QEN_LOG"_s).toInt(), 0);
    if (failing == u"post"_s) {
        station.enter(u"edtKGRolo"_s, u"8"_s);
        station.click(u"SbConfirmar"_s);
        QVERIFY(!station.isEditing());
        QCOMPARE(station.database.count(u"OF_MALHA"_s, u"KG_ROLO = 8"_s), 1);
        QCOMPARE(station.database.count(u"OF_MALHA"_s), inserting ? 2 : 1);
        QCOMPARE(station.log().size(), 1);
        return;
    }
    station.click(u"SbDesistir"_s);
    QCOMPARE(station.text(u"edtOF"_s), u"000012"_s);
    QCOMPARE(station.text(u"edtKGRolo"_s), u"25,00"_s);
}

void TestOrdemFabSave::aNumberTakenMeanwhileCanBeCorrected()
{
    OrderStation station;
    station.openOrders();
    station.startOrder();
    station.insertOrder({.number = u"000001"_s, .totalKg = 55});
    expectFailure(station.answers, station.caption, u"Já existe um registro com esta chave. Nada foi gravado."_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(station.isEditing());
    QCOMPARE(station.log(), QStringList());
    expectInformation(station.answers, station.caption, u"Número já Cadastrado."_s);
    station.enter(u"edtOF"_s, u"000001"_s);
    station.enter(u"edtOF"_s, u"000002"_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.database.rows(u"SELECT NUM_OF, KG_TOTAL FROM {OF_MALHA} ORDER BY NUM_OF"_s),
        (QStringList{u"000001|55"_s, u"000002|100"_s}));
    QCOMPARE(station.log(), QStringList{u"ORDEM FAB. MAL.|INCLUSAO DA OF MAL. NR.: 000002|0|000002|ADMIN"_s});
}

void TestOrdemFabSave::anOrderWithoutNumberIsRefusedByTheTable()
{
    OrderStation station;
    station.openOrders();
    station.startOrder();
    station.enter(u"edtOF"_s, QString());
    expectFailure(station.answers, station.caption, station.refusedByTable);
    station.click(u"SbConfirmar"_s);
    QVERIFY(station.isEditing());
    QCOMPARE(station.database.count(u"OF_MALHA"_s), 0);
    QCOMPARE(station.log(), QStringList());
}

void TestOrdemFabSave::whatTwoStationsChangedInOneOrderIsKept()
{
    OrderStation station;
    station.insertOrder();
    station.openOrders();
    station.click(u"BtnAltera"_s);
    station.enter(u"edtKGTotal"_s, u"300"_s);
    station.database.run(u"UPDATE {OF_MALHA} SET FLUXO = '02', OBSERVACAO = 'Da outra'"_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.database.rows(u"SELECT KG_TOTAL, FLUXO, OBSERVACAO FROM {OF_MALHA}"_s),
        QStringList{u"300|02|Da outra"_s});
    QCOMPARE(station.text(u"EdtCodFluxo"_s), u"02"_s);
    QCOMPARE(station.text(u"MemoObs"_s), u"Da outra"_s);
}

void TestOrdemFabSave::anOrderThatVanishedWhileEditedIsNotSaved()
{
    OrderStation station;
    station.insertOrder({.number = u"000011"_s});
    station.insertOrder();
    station.openOrders();
    station.click(u"BtnAltera"_s);
    station.enter(u"edtKGTotal"_s, u"300"_s);
    station.database.run(u"DELETE FROM {OF_MALHA} WHERE NUM_OF = '000012'"_s);
    expectFailure(station.answers, station.caption, station.refusedByConflict);
    station.click(u"SbConfirmar"_s);
    QVERIFY(station.isEditing());
    QCOMPARE(station.database.count(u"OF_MALHA"_s), 1);
    QCOMPARE(station.log(), QStringList());
    station.click(u"SbDesistir"_s);
    station.key(Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(station.text(u"edtOF"_s), u"000011"_s);
}

QTEST_MAIN(TestOrdemFabSave)
#include "tst_ordemfabsave.moc"
