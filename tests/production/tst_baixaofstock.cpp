// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// What a write-off at the desk does to the stocks, what the client's yarn allows, and what remains of one that fails.

#include "module/form.h"
#include "tests/production/deskstation.h"
#include "tests/support/screenchecks.h"

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

class tst_baixaofstock : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void bothParametersDecideWhatIsStocked_data();
    void bothParametersDecideWhatIsStocked();
    void overProductionChangesThePlanAlone();
    void theNextRollAddsToBothStocks();
    void theFirstRollOfAFabricMakesItsItem();
    void anItemWithoutPlaceColourOrPriceIsComplete();
    void onlyTheItemOfTheFabricsOwnKeyGrows();
    void yarnThatIsUsedUpRefusesTheRoll();
    void yarnOnOutboundInvoicesIsGone_data();
    void yarnOnOutboundInvoicesIsGone();
    void yarnInFabricThatIsNotInvoicedIsGone();
    void yarnOfOtherClientsAndLotsSentBackDoNotCount();
    void anInactiveColoursCompositionTakesNoYarn();
    void anOrderWithoutAClientIsNotTested();
    void theYarnIsTestedBeforeOverProductionIsAskedFor();
    void whicheverStatementFailsNothingRemains_data();
    void whicheverStatementFailsNothingRemains();
    void whatATableRefusesLeavesNothing_data();
    void whatATableRefusesLeavesNothing();

private:
    static void expectShortage(DeskStation &station, const QString &hint)
    {
        const QStringList before = station.tables();
        station.atDialog([&] {
            station.fillRoll(u"20"_s);
            station.expect(u"Estoque de fio Insuficiente. Impossível Continuar."_s);
            station.confirm();
            QCOMPARE(station.text(u"lbBalanca"_s), hint);
            QCOMPARE(station.focus(), u"edtKGTotal"_s);
        });
        QCOMPARE(station.tables(), before);
        QVERIFY(station.log().isEmpty());
    }
    static void prepareStocks(DeskStation &station, bool stocked)
    {
        station.setParameter(20, u"S"_s);
        if (stocked)
            station.writeOff(u"1"_s);
    }
    /// The statements of the save of a roll above the plan, from its beginning to before its commit.
    static QStringList saved(bool stocked)
    {
        DeskStation station;
        prepareStocks(station, stocked);
        QStringList statements;
        station.atDialog([&] {
            station.fillRoll(u"120"_s);
            station.expectOverProduction(QMessageBox::Yes);
            station.tabela.IBDatabase->setObserver([&](const QString &ran) { statements.append(ran); });
            station.confirm();
        });
        return statements.mid(
            statements.indexOf(u"BEGIN"_s), statements.indexOf(u"COMMIT"_s) - statements.indexOf(u"BEGIN"_s));
    }
    /// The next save fails when it has run so many statements and one more.
    static void failAt(DeskStation &station, int step)
    {
        station.tabela.IBDatabase->setObserver([left = step, saving = false](const QString &ran) mutable {
            saving = (saving || ran == u"BEGIN") && ran != u"ROLLBACK";
            if (saving && left-- == 0)
                throw EDatabaseError(EDatabaseError::Category::Statement, {}, u"broken"_s, ran);
        });
    }
    /// An outbound invoice that quotes the client's one.
    static void sendOut(DeskStation &station, const QString &yarn, double kg, const QString &printed = u"'S'"_s)
    {
        station.database.run(
            u"INSERT INTO {NOTA} (FATURA, CODCLI, IMPRESSO) VALUES ('0000900', '00001', %1)"_s.arg(printed));
        station.database.run(u"INSERT INTO {NOTAITEN} (FATURA, ORDEM, CODIGO, LOTE, NOTA_CLIENTE, QTDE)"
                             " VALUES ('0000900', 1, '%1', 'L1', '0001203', %2)"_s.arg(yarn)
                                 .arg(kg));
    }
};

namespace {

const QStringList itemsBefore{
    u"M0001|000001|L1|01|A1|100|25.5|S"_s, u"M0001|000002|L1|01|A1|50|25.5|"_s, u"M0001|000003|L1|01|A1|10|25.5|N"_s};

} // namespace

void tst_baixaofstock::bothParametersDecideWhatIsStocked_data()
{
    QTest::addColumn<QString>("finishedFabric");
    QTest::addColumn<QString>("itemStock");
    for (const QString &ten : {u"S"_s, u"N"_s}) {
        for (const QString &twenty : {u"S"_s, u"N"_s})
            QTest::addRow("%s %s", qPrintable(ten), qPrintable(twenty)) << ten << twenty;
    }
}

void tst_baixaofstock::bothParametersDecideWhatIsStocked()
{
    QFETCH(QString, finishedFabric);
    QFETCH(QString, itemStock);
    DeskStation station;
    station.setParameter(10, finishedFabric);
    station.setParameter(20, itemStock);
    const QStringList order{u"000012|100|M0001|00001"_s};
    QCOMPARE(station.tables(), itemsBefore + order);
    station.writeOff(u"20,5"_s);
    const QStringList fabric{u"M0001|000012|20.5|0"_s};
    // The item of the active colour, with the value of its yarns: 60 % of 21.50 and 40 % of 14.25.
    const QStringList item{u"M0001|000001|000000|0000|A1|20.5|18.6|"_s};
    const QStringList movement{u"00001|M0001|000001|000012|08|20.5|E|0|18.6|000000|PRODUCAO DA OF 000012 ROLO 001|"
                               "2026-03-10|0000|ADMIN"_s};
    const bool both = itemStock == u"S";
    const QStringList roll{u"001|2026-03-10||1|000101|20.5"_s};
    QCOMPARE(station.tables(),
        roll + (finishedFabric == u"S" ? fabric : QStringList()) + (both ? item : QStringList()) + itemsBefore
            + (both ? movement : QStringList()) + order);
}

void tst_baixaofstock::overProductionChangesThePlanAlone()
{
    DeskStation station;
    station.setParameter(10, u"N"_s);
    station.setParameter(20, u"N"_s);
    station.addStock(7, 1);
    station.atDialog([&] {
        station.fillRoll(u"120"_s);
        station.expectOverProduction(QMessageBox::Yes);
        station.confirm();
    });
    QCOMPARE(station.tables(),
        QStringList({u"001|2026-03-10||1|000101|120"_s, u"M0001|000012|7|1"_s}) + itemsBefore
            + QStringList{u"000012|120|M0001|00001"_s});
}

void tst_baixaofstock::theNextRollAddsToBothStocks()
{
    DeskStation station;
    station.setParameter(20, u"S"_s);
    station.addStock(7.5, 1);
    station.writeOff(u"20,5"_s);
    station.database.run(u"UPDATE {NFT_ITEN} SET UNITARIO = 99"_s); // the item keeps the price it got
    station.writeOff(u"19,25"_s);
    QCOMPARE(station.stock(), QStringList{u"M0001|000012|47.25|1"_s});
    QCOMPARE(station.items(), QStringList{u"M0001|000001|000000|0000|A1|39.75|18.6|"_s} + itemsBefore);
    QCOMPARE(station.movements().size(), 2);
    QCOMPARE(station.movements().last(),
        u"00001|M0001|000001|000012|08|19.25|E|0|99|000000|PRODUCAO DA OF 000012 ROLO 002|2026-03-10|0000|ADMIN"_s);
}

void tst_baixaofstock::theFirstRollOfAFabricMakesItsItem()
{
    DeskStation station;
    station.setParameter(20, u"S"_s);
    station.database.run(u"UPDATE {OF_MALHA} SET MATERIAL = 'M0002', CLIENTE = '00001'"_s);
    station.database.run(u"INSERT INTO {MAT_ITEN} (CODIGO, COR, LOTE, DEPOSITO, LOCAL, QTDE, PRECO_MED)"
                         " VALUES ('M0002', '000001', 'X', '01', 'B7', 5, 1)"_s);
    station.atDialog([&] {
        station.fillRoll(u"20"_s, u"000102"_s);
        station.enter(u"edtData"_s, u"01/12/2025"_s);
        station.confirm();
    });
    QVERIFY(station.items().contains(u"M0002|000001|000000|0000|B7|20|21.5|"_s));
    QCOMPARE(station.movements(),
        QStringList{u"00001|M0002|000001|000012|08|20|E|0|21.5|000000|PRODUCAO DA OF 000012 ROLO 001|"
                    "2025-12-01|0000|ADMIN"_s});
}

void tst_baixaofstock::anItemWithoutPlaceColourOrPriceIsComplete()
{
    DeskStation station;
    station.setParameter(20, u"S"_s);
    station.database.run(u"DELETE FROM {MAT_ITEN}"_s); // no colour of the fabric is active, so it takes no yarn either
    station.writeOff(u"20"_s);
    QCOMPARE(station.items(), QStringList{u"M0001|000000|000000|0000|000000|20|0|"_s});
    QCOMPARE(station.movements(),
        QStringList{u"00001|M0001|000000|000012|08|20|E|0|0|000000|PRODUCAO DA OF 000012 ROLO 001|"
                    "2026-03-10|0000|ADMIN"_s});
}

void tst_baixaofstock::onlyTheItemOfTheFabricsOwnKeyGrows()
{
    DeskStation station;
    station.setParameter(20, u"S"_s);
    for (const QString &key : {u"'M0001', '000001', '000000', '01'"_s, u"'M0001', '000001', 'L1', '0000'"_s,
             u"'M0001', '000002', '000000', '0000'"_s, u"'M0002', '000001', '000000', '0000'"_s})
        station.database.run(u"INSERT INTO {MAT_ITEN} (CODIGO, COR, LOTE, DEPOSITO, QTDE) VALUES (%1, 1)"_s.arg(key));
    station.database.run(u"INSERT INTO {MAT_ITEN} (CODIGO, COR, LOTE, DEPOSITO, QTDE, LOCAL, PRECO_MED)"
                         " VALUES ('M0001', '000001', '000000', '0000', NULL, 'C3', 7)"_s);
    const QStringList before = station.items();
    station.writeOff(u"20"_s);
    QStringList expected = before;
    expected.replaceInStrings(u"M0001|000001|000000|0000|C3||7|"_s, u"M0001|000001|000000|0000|C3|20|7|"_s);
    QVERIFY(expected != before);
    QCOMPARE(station.items(), expected);
}

void tst_baixaofstock::yarnThatIsUsedUpRefusesTheRoll()
{
    DeskStation station;
    station.database.run(u"UPDATE {NFT_ITEN} SET ESTOQUE_FISICO = 7.999 WHERE CODIGO = 'FIO150PES'"_s);
    expectShortage(station, u"Fio FIO150PES: faltam 0,001 kg."_s); // of 20 kg 8 are polyester
    station.database.run(u"UPDATE {NFT_ITEN} SET ESTOQUE_FISICO = 8 WHERE CODIGO = 'FIO150PES'"_s);
    station.writeOff(u"20"_s);
    QCOMPARE(station.rolls().size(), 1);
}

void tst_baixaofstock::yarnOnOutboundInvoicesIsGone_data()
{
    QTest::addColumn<QString>("printed");
    QTest::addColumn<bool>("gone");
    QTest::newRow("printed") << u"'S'"_s << true;
    QTest::newRow("not printed yet") << u"'N'"_s << true;
    QTest::newRow("undecided") << u"NULL"_s << true;
    QTest::newRow("cancelled") << u"'C'"_s << false;
}

void tst_baixaofstock::yarnOnOutboundInvoicesIsGone()
{
    QFETCH(QString, printed);
    QFETCH(bool, gone);
    DeskStation station;
    sendOut(station, station.cotton, 590.5, printed);
    if (gone) {
        expectShortage(station, u"Fio FIO30CO: faltam 2,500 kg."_s);
        return;
    }
    station.writeOff(u"20"_s);
    QCOMPARE(station.rolls().size(), 1);
}

void tst_baixaofstock::yarnInFabricThatIsNotInvoicedIsGone()
{
    DeskStation station;
    station.addStock(1200, 219); // 981 kg hold 588.6 of the cotton and 392.4 of the polyester
    expectShortage(station, u"Fio FIO150PES: faltam 0,400 kg."_s);
    station.database.run(u"UPDATE {PA_MALHA} SET FATURADO = 220"_s);
    station.writeOff(u"20"_s);
    QCOMPARE(station.rolls().size(), 1);
    // And now it is used up.
    station.atDialog([&] {
        station.fillRoll(u"0,01"_s);
        station.expect(u"Estoque de fio Insuficiente. Impossível Continuar."_s);
        station.confirm();
    });
    QCOMPARE(station.rolls().size(), 1);
}

void tst_baixaofstock::yarnOfOtherClientsAndLotsSentBackDoNotCount()
{
    DeskStation station;
    station.database.run(u"DELETE FROM {NFT_ITEN}"_s);
    station.addLot(station.polyester, 400, 1, u"0000001"_s);
    station.addLot(station.cotton, 500, 1, u"0000002"_s, u"00002"_s);
    station.addLot(station.cotton, 500, 1, u"0000003"_s, u"00001"_s, 500);
    expectShortage(station, u"Fio FIO30CO: faltam 12,000 kg."_s);
    // Neither does what another client's fabric holds.
    station.addLot(station.cotton, 12, 1, u"0000004"_s);
    station.database.run(
        u"INSERT INTO {OF_MALHA} (NUM_OF, CLIENTE, MATERIAL, KG_TOTAL) VALUES ('000077', '00002', 'M0002', 900)"_s);
    station.database.run(
        u"INSERT INTO {PA_MALHA} (CODIGO, NUM_OF, QTDE_TOTAL, FATURADO) VALUES ('M0002', '000077', 900, 0)"_s);
    station.writeOff(u"20"_s);
    QCOMPARE(station.rolls().size(), 1);
}

void tst_baixaofstock::anInactiveColoursCompositionTakesNoYarn()
{
    DeskStation station;
    station.database.run(u"INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, ORDEM, PERC)"
                         " VALUES ('M0001', '000003', 'FIO20ELA', '000001', 3, 5)"_s);
    station.writeOff(u"20"_s); // the client never sent elastane
    QCOMPARE(station.rolls().size(), 1);
    station.database.run(u"UPDATE {MAT_ITEN} SET ATIVO = NULL WHERE COR = '000003'"_s); // as good as "S"
    station.atDialog([&] {
        station.fillRoll(u"20"_s);
        station.expect(u"Estoque de fio Insuficiente. Impossível Continuar."_s);
        station.confirm();
        QCOMPARE(station.text(u"lbBalanca"_s), u"Fio FIO20ELA: faltam 2,000 kg."_s);
    });
    QCOMPARE(station.rolls().size(), 1);
}

void tst_baixaofstock::anOrderWithoutAClientIsNotTested()
{
    DeskStation station;
    station.database.run(u"UPDATE {OF_MALHA} SET CLIENTE = NULL"_s);
    station.writeOff(u"20"_s);
    QCOMPARE(station.rolls().size(), 1);
}

void tst_baixaofstock::theYarnIsTestedBeforeOverProductionIsAskedFor()
{
    DeskStation station;
    station.database.run(u"UPDATE {OF_MALHA} SET KG_TOTAL = 10"_s);
    station.database.run(u"UPDATE {NFT_ITEN} SET ESTOQUE_FISICO = 0"_s);
    expectShortage(station, u"Fio FIO150PES: faltam 8,000 kg."_s); // the composition's yarns by their codes
}

void tst_baixaofstock::whicheverStatementFailsNothingRemains_data()
{
    QTest::addColumn<bool>("stocked");
    QTest::newRow("first roll of the order") << false;
    QTest::newRow("stocks that grow") << true;
}

void tst_baixaofstock::whicheverStatementFailsNothingRemains()
{
    QFETCH(bool, stocked);
    // What a roll above the plan runs when nothing fails.
    const int steps = int(saved(stocked).size());
    QVERIFY2(steps >= 10, qPrintable(saved(stocked).join(u'\n')));
    DeskStation station;
    prepareStocks(station, stocked);
    const QStringList before = station.tables();
    const QStringList logged = station.log();
    station.atDialog([&] {
        station.fillRoll(u"120"_s);
        for (int step = 0; step < steps; ++step) {
            failAt(station, step);
            station.expectOverProduction(QMessageBox::Yes);
            expectFailure(station.answers, station.dialogCaption, station.refusedByTable);
            station.confirm();
            QCOMPARE(station.tables(), before);
            QCOMPARE(station.log(), logged);
            QVERIFY(!station.tabela.IBDatabase->inTransaction());
        }
        station.tabela.IBDatabase->setObserver({});
        station.expectOverProduction(QMessageBox::Yes);
        station.confirm(); // and nothing stands in the way of the roll
    });
    QCOMPARE(station.rolls().size(), stocked ? 2 : 1);
}

void tst_baixaofstock::whatATableRefusesLeavesNothing_data()
{
    QTest::addColumn<QString>("broken");
    QTest::addColumn<bool>("stocked");
    QTest::newRow("plan") << u"ALTER TABLE {OF_MALHA} ADD CHECK (KG_TOTAL <= 100)"_s << false;
    QTest::newRow("register") << u"ALTER TABLE {OF_MALHA_BAIXAS} ADD CHECK (QTDE < 100)"_s << false;
    QTest::newRow("fabric's first stock") << u"ALTER TABLE {PA_MALHA} ADD CHECK (QTDE_TOTAL < 100)"_s << false;
    QTest::newRow("fabric's stock") << u"ALTER TABLE {PA_MALHA} ADD CHECK (QTDE_TOTAL < 100)"_s << true;
    QTest::newRow("first item") << u"ALTER TABLE {MAT_ITEN} ADD CHECK (QTDE <= 100)"_s << false;
    QTest::newRow("item") << u"ALTER TABLE {MAT_ITEN} ADD CHECK (QTDE <= 100)"_s << true;
    QTest::newRow("journal") << u"ALTER TABLE {MAT_MOV} ADD CHECK (QTDE < 100)"_s << false;
}

void tst_baixaofstock::whatATableRefusesLeavesNothing()
{
    QFETCH(QString, broken);
    QFETCH(bool, stocked);
    DeskStation station;
    station.database.run(broken);
    prepareStocks(station, stocked);
    const QStringList before = station.tables();
    const QStringList logged = station.log();
    station.atDialog([&] {
        station.fillRoll(u"120"_s);
        station.expectOverProduction(QMessageBox::Yes);
        expectFailure(station.answers, station.dialogCaption, station.refusedByTable);
        station.confirm();
        QCOMPARE(station.text(u"edtKGTotal"_s), u"120,00"_s); // it can be tried again
    });
    QCOMPARE(station.tables(), before);
    QCOMPARE(station.log(), logged);
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
}

QTEST_MAIN(tst_baixaofstock)
#include "tst_baixaofstock.moc"
