// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/production/orderstation.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

/// The fields of the order screen: what leaving them checks and fills, and what their searches list.
class TestOrdemFabFields : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void aNumberThatIsTakenIsRefusedOnceWhicheverWayItIsLeft_data();
    void aNumberThatIsTakenIsRefusedOnceWhicheverWayItIsLeft();
    void blanksDoNotHideATakenNumber();
    void leavingTheMaterialOfANewOrderFillsRollWeightAndFlow();
    void theFlowIsThatOfTheHighestNumberNotOfTheLatestDate();
    void aFabricNeverMadeKeepsTheFlowThatWasTyped();
    void leavingAChangedMaterialOfAnOldOrderFillsNothing();
    void anUnknownCodeIsRefusedOnceAndHoldsTheFocus_data();
    void anUnknownCodeIsRefusedOnceAndHoldsTheFocus();
    void descriptionsFollowTheTyping();
    void moreThanOneActiveColourAsksBeforeGoingOn();
    void aColourThatIsSwitchedOffDoesNotCount();

    void theFabricSearchListsBothGroupsOfTheClientAlone();
    void theClientSearchListsTheFabricsOwnerAndWhoWasTyped();
    void aChosenCodeComesIntoItsField();
};

void TestOrdemFabFields::aNumberThatIsTakenIsRefusedOnceWhicheverWayItIsLeft_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"Tab", "Enter", "another field", "Confirmar", "Alt+C"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void TestOrdemFabFields::aNumberThatIsTakenIsRefusedOnceWhicheverWayItIsLeft()
{
    OrderStation station;
    QFETCH(QString, way);
    station.insertOrder();
    station.openOrders();
    station.click(u"btnincluir"_s);
    station.type(u"edtOF"_s, u"000012"_s);
    expectInformation(station.answers, station.caption, u"Número já Cadastrado."_s);
    if (way == u"Tab"_s)
        station.key(Qt::Key_Tab);
    else if (way == u"Enter"_s)
        station.key(Qt::Key_Return);
    else if (way == u"another field"_s)
        station.click(u"edtLote"_s);
    else if (way == u"Alt+C"_s)
        station.key(Qt::Key_C, Qt::AltModifier);
    else
        station.click(u"SbConfirmar"_s);
    QTRY_VERIFY(station.answers.allCame()); // a mnemonic presses its button for a moment first
    station.form()->activateWindow();
    QTRY_COMPARE(station.focus(), u"edtOF"_s);
    QVERIFY(station.isEditing());
    station.enter(u"edtOF"_s, u"000099"_s);
    QTRY_COMPARE(station.focus(), u"edtData"_s);
    QCOMPARE(station.database.count(u"OF_MALHA"_s), 1);
}

void TestOrdemFabFields::blanksDoNotHideATakenNumber()
{
    OrderStation station;
    station.insertOrder({.number = u"12-A"_s});
    station.openOrders();
    station.click(u"btnincluir"_s);
    expectInformation(station.answers, station.caption, u"Número já Cadastrado."_s);
    station.enter(u"edtOF"_s, u" 12-A "_s);
    QTRY_COMPARE(station.focus(), u"edtOF"_s);
    QVERIFY(station.answers.allCame());
}

void TestOrdemFabFields::leavingTheMaterialOfANewOrderFillsRollWeightAndFlow()
{
    OrderStation station;
    station.insertOrder({.number = u"000005"_s, .flow = u"02"_s});
    station.openOrders();
    station.click(u"btnincluir"_s);
    station.enter(u"edtMaterial"_s, u"M0001"_s);
    QCOMPARE(station.text(u"edtKGRolo"_s), u"20,00"_s);
    QCOMPARE(station.text(u"EdtCodFluxo"_s), u"02"_s);
    QCOMPARE(station.text(u"EdtDescFluxo"_s), u"Tecer e revisar"_s);
    QCOMPARE(station.focus(), u"edtMaquina"_s);
    station.enter(u"edtMaterial"_s, u"M0002"_s);
    QCOMPARE(station.text(u"edtKGRolo"_s), u"25,00"_s);
}

void TestOrdemFabFields::theFlowIsThatOfTheHighestNumberNotOfTheLatestDate()
{
    OrderStation station;
    station.insertOrder({.number = u"000007"_s, .date = u"01/05/2026"_s, .flow = u"02"_s});
    station.insertOrder({.number = u"000006"_s, .date = u"03/09/2026"_s, .flow = u"01"_s});
    station.insertOrder({.number = u"000008"_s, .material = u"M0002"_s, .flow = u"01"_s});
    station.openOrders();
    station.click(u"btnincluir"_s);
    station.enter(u"edtMaterial"_s, u"M0001"_s);
    QCOMPARE(station.text(u"EdtCodFluxo"_s), u"02"_s);
}

void TestOrdemFabFields::aFabricNeverMadeKeepsTheFlowThatWasTyped()
{
    OrderStation station;
    station.database.run(u"DELETE FROM {COMP_MATERIAL} WHERE MATERIAL = 'M0002'"_s);
    station.openOrders();
    station.click(u"btnincluir"_s);
    station.enter(u"EdtCodFluxo"_s, u"02"_s);
    station.enter(u"edtKGRolo"_s, u"18"_s);
    station.enter(u"edtMaterial"_s, u"M0002"_s);
    QCOMPARE(station.text(u"EdtCodFluxo"_s), u"02"_s);
    QCOMPARE(station.text(u"edtKGRolo"_s), u"0,00"_s);
}

void TestOrdemFabFields::leavingAChangedMaterialOfAnOldOrderFillsNothing()
{
    OrderStation station;
    station.insertOrder({.number = u"000004"_s, .material = u"M0002"_s, .flow = u"02"_s});
    station.insertOrder({.rollKg = 17});
    station.openOrders();
    station.click(u"BtnAltera"_s);
    station.enter(u"edtMaterial"_s, u"M0002"_s);
    QCOMPARE(station.text(u"edtKGRolo"_s), u"17,00"_s);
    QCOMPARE(station.text(u"EdtCodFluxo"_s), u"01"_s);
}

void TestOrdemFabFields::anUnknownCodeIsRefusedOnceAndHoldsTheFocus_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("known");
    QTest::newRow("client") << u"edtCliente"_s << u"Cliente não Existe."_s << u"00003"_s;
    QTest::newRow("material") << u"edtMaterial"_s << u"Material não encontrado."_s << u"M0001"_s;
    QTest::newRow("machine") << u"edtMaquina"_s << u"Máquina inexistente."_s << u"001"_s;
    QTest::newRow("flow") << u"EdtCodFluxo"_s << u"Fluxo Inválido."_s << u"01"_s;
}

void TestOrdemFabFields::anUnknownCodeIsRefusedOnceAndHoldsTheFocus()
{
    OrderStation station;
    QFETCH(QString, field);
    QFETCH(QString, message);
    QFETCH(QString, known);
    station.openOrders();
    station.click(u"btnincluir"_s);
    for (const QString &unknown : {u"9"_s, u"'"_s, u"%"_s, u"' O"_s}) {
        expectInformation(station.answers, station.caption, message);
        station.enter(field, unknown);
        QTRY_COMPARE(station.focus(), field);
    }
    expectInformation(station.answers, station.caption, message);
    station.click(u"SbConfirmar"_s);
    QTRY_COMPARE(station.focus(), field);
    QVERIFY(station.isEditing());
    station.enter(field, known);
    QVERIFY(station.focus() != field);
    station.enter(field, QString());
    QVERIFY(station.focus() != field);
}

void TestOrdemFabFields::descriptionsFollowTheTyping()
{
    OrderStation station;
    station.openOrders();
    station.click(u"btnincluir"_s);
    const QList<QStringList> fields{
        {u"edtCliente"_s, u"edtDescCliente"_s, u"0000"_s, u"2"_s, u"Malhas São Bento S.A."_s},
        {u"edtMaterial"_s, u"edtDescMaterial"_s, u"M000"_s, u"2"_s, u"Ribana 2x1"_s},
        {u"edtMaquina"_s, u"edtDescMaquina"_s, u"00"_s, u"1"_s, u"Circular 30\" 28 agulhas"_s},
        {u"EdtCodFluxo"_s, u"EdtDescFluxo"_s, u"0"_s, u"1"_s, u"Tecer"_s}};
    for (const QStringList &field : fields) {
        station.type(field[0], field[2]);
        QCOMPARE(station.text(field[1]), QString());
        QTest::keyClicks(station.child(field[0]), field[3]);
        QCOMPARE(station.text(field[1]), field[4]);
        station.key(Qt::Key_Tab);
    }
}

void TestOrdemFabFields::moreThanOneActiveColourAsksBeforeGoingOn()
{
    OrderStation station;
    const QString question =
        u"Material contém composição com mais de uma cor ativa, podem ocorrer erros no consumo dos fios. Deseja continuar?"_s;
    station.database.run(u"INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, ORDEM, PERC, KG_ROLO) "
                         "VALUES ('M0001', '000002', 'FIO30CO', '000002', 1, 100, 20)"_s);
    station.openOrders();
    station.click(u"btnincluir"_s);
    station.answers.expect(question, QMessageBox::No, station.caption);
    station.enter(u"edtMaterial"_s, u"M0001"_s);
    QTRY_COMPARE(station.focus(), u"edtMaterial"_s);
    station.answers.expectAndType(question, Qt::Key_Escape, station.caption);
    station.key(Qt::Key_Return);
    QTRY_COMPARE(station.focus(), u"edtMaterial"_s);
    station.answers.expect(question, QMessageBox::Yes, station.caption);
    station.key(Qt::Key_Return);
    QTRY_COMPARE(station.focus(), u"edtMaquina"_s);
    QVERIFY(station.answers.allCame());
    // Once accepted it is not asked again.
    station.enter(u"edtMaterial"_s, u"M0001"_s);
    QCOMPARE(station.focus(), u"edtMaquina"_s);
}

void TestOrdemFabFields::aColourThatIsSwitchedOffDoesNotCount()
{
    OrderStation station;
    station.database.run(u"INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, ORDEM, PERC, KG_ROLO) "
                         "VALUES ('M0001', '000003', 'FIO30CO', '000003', 1, 100, 20)"_s);
    station.openOrders();
    station.click(u"btnincluir"_s);
    station.enter(u"edtMaterial"_s, u"M0001"_s);
    QCOMPARE(station.focus(), u"edtMaquina"_s);
}

void TestOrdemFabFields::theFabricSearchListsBothGroupsOfTheClientAlone()
{
    OrderStation station;
    for (const QString &fabric : {u"'M0003', 'Moletom', '15', '00001'"_s, u"'M0004', 'Piquê', '15', NULL"_s,
             u"'M0005', 'Corte', '1500', '00001'"_s, u"'M0006', 'Sem grupo', NULL, '00001'"_s})
        station.database.run(u"INSERT INTO {MATERIAL} (CODIGO, DESCRICAO, GRUPO, CODCLI) VALUES (%1)"_s.arg(fabric));
    station.openOrders();
    station.click(u"btnincluir"_s);
    QStringList listed;
    expectSearchAndLeave(station.answers, &listed, u"Malhas"_s);
    station.click(u"PqMaterial"_s);
    QCOMPARE(listed, (QStringList{u"M0001"_s, u"M0002"_s, u"M0003"_s, u"M0004"_s}));
    const QList<std::pair<QString, QStringList>> clients{{u"00001"_s, {u"M0001"_s, u"M0003"_s}},
        {u"00002"_s, {u"M0002"_s}}, {u"00003"_s, {}}, {{}, {u"M0001"_s, u"M0002"_s, u"M0003"_s, u"M0004"_s}}};
    for (const auto &[client, fabrics] : clients) {
        station.enter(u"edtCliente"_s, client);
        expectSearchAndLeave(station.answers, &listed, u"Malhas"_s);
        station.type(u"edtMaterial"_s, {});
        station.key(Qt::Key_F4);
        QCOMPARE(listed, fabrics);
    }
}

void TestOrdemFabFields::theClientSearchListsTheFabricsOwnerAndWhoWasTyped()
{
    OrderStation station;
    station.database.run(
        u"INSERT INTO {MATERIAL} (CODIGO, DESCRICAO, GRUPO, CODCLI) VALUES ('M0004', 'Piquê', '15', NULL)"_s);
    station.openOrders();
    station.click(u"btnincluir"_s);
    const auto listed = [&] {
        QStringList codes;
        expectSearchAndLeave(station.answers, &codes, u"Clientes"_s);
        station.click(u"PqCliente"_s);
        return codes;
    };
    const QStringList all{u"00001"_s, u"00002"_s, u"00003"_s};
    QCOMPARE(listed(), all);
    station.enter(u"edtMaterial"_s, u"M0001"_s);
    QCOMPARE(listed(), QStringList{u"00001"_s});
    station.enter(u"edtCliente"_s, u"00003"_s);
    QCOMPARE(listed(), (QStringList{u"00001"_s, u"00003"_s}));
    station.enter(u"edtCliente"_s, QString());
    QCOMPARE(listed(), QStringList{u"00001"_s});
    station.enter(u"edtMaterial"_s, u"M0004"_s);
    QCOMPARE(listed(), all);
}

void TestOrdemFabFields::aChosenCodeComesIntoItsField()
{
    OrderStation station;
    station.openOrders();
    station.click(u"btnincluir"_s);
    const QList<QStringList> searches{{u"edtCliente"_s, u"PqCliente"_s, u"vila"_s, u"00003"_s, u"edtDescCliente"_s,
                                          u"Têxtil D'Ávila, Filhos & Cia"_s},
        {u"edtMaquina"_s, u"PqMaquina"_s, u"24"_s, u"002"_s, u"edtDescMaquina"_s, u"Circular 34\" 24 agulhas"_s},
        {u"EdtCodFluxo"_s, u"PqFluxo"_s, u"revisar"_s, u"02"_s, u"EdtDescFluxo"_s, u"Tecer e revisar"_s}};
    for (const QStringList &search : searches) {
        expectSearchAndTake(station.answers, search[2]);
        station.type(search[0], {});
        station.key(Qt::Key_F4);
        QCOMPARE(station.text(search[0]), search[3]);
        QCOMPARE(station.text(search[4]), search[5]);
        QTRY_COMPARE(station.focus(), search[0]);
        // The button does the same; Esc changes nothing.
        QStringList ignored;
        expectSearchAndLeave(station.answers, &ignored);
        station.click(search[1]);
        QCOMPARE(station.text(search[0]), search[3]);
    }
    station.enter(u"edtCliente"_s, {});
    expectSearchAndTake(station.answers, u"ribana"_s);
    station.click(u"PqMaterial"_s);
    QTRY_COMPARE(station.focus(), u"edtMaterial"_s);
    QCOMPARE(station.text(u"edtMaterial"_s), u"M0002"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.text(u"edtKGRolo"_s), u"25,00"_s);
}

QTEST_MAIN(TestOrdemFabFields)
#include "tst_ordemfabfields.moc"
