// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/registries/pricestation.h"

#include "module/host_services/clock.h"

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

namespace {

const QString existsAlready = QStringLiteral("Este Cadastro já Existe, deseja alterar?");
const QString replaceIt = QStringLiteral("Já existe o preço deste material nesta região e cor. Deseja substituí-lo?");

} // namespace

/// What the price table stores.
class TestMatTabPrecoSave : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void aNewRowGetsItsDefaults();
    void whatStandsInThemStays();
    void withoutColourGroupsEveryRowIsOfGroup00();
    void withColourGroupsOnlyAnEmptyOneIs00();
    void theColourFieldSaysWhenItIsOfNoUse();
    void whateverIsTypedIsStored_data();
    void whateverIsTypedIsStored();
    void onlyWhatWasTypedIsChanged();

    void anExistingPriceIsAlteredInstead();
    void orTheNewRowIsGivenUp();
    void theColourGroupDoesNotMatter();
    void theTypedColourGroupIsTheOneAltered();
    void anotherRegionsPriceIsNoMatter();
    void anAlteredRowIsNoDuplicateOfItself();

    void aPriceThatAppearedMeanwhileIsReplacedWhenWanted();
    void twoStationsThatStoreANewPriceStoreItOnce_data();
    void twoStationsThatStoreANewPriceStoreItOnce();
    void theReplacedRowTakesTheOthersPlace();
    void aRowOfGroup00IsReplacedByTheOneThatBecomesIt();
    void ofAPriceThatIsThereTwiceOneRemains();
    void aPriceThatIsThereTwiceIsDeletedWhole();
    void nothingRemainsOfASaveThatFails();
    void aRowThatVanishedIsNotAltered();
};

void TestMatTabPrecoSave::aNewRowGetsItsDefaults()
{
    PriceStation station;
    station.setColourGroups(true);
    station.openPrices();
    station.insertProduct(u"01"_s, u"M0001"_s);
    station.enter(u"EdtParcela01"_s, u"3,45"_s);
    station.confirm();
    QVERIFY(!station.isEditing());
    QCOMPARE(station.database.rows(u"SELECT REGIAO, CODIGO, GRUPO_COR, DESC_PRODUTO, COLECAO, ACRESCIMO, DESCONTO, "
                                   "COMISSAO, ORIGEM, PRECO_00, PRECO_07, PRECO_MEDIO FROM {TABPRECO}"_s),
        QStringList(u"01|M0001|00|Meia-malha PV 60/40|00|0|0|0|M|3.45||"_s));
    QCOMPARE(station.value(u"SELECT DT_ALTERACAO FROM {TABPRECO}"_s).toDateTime(), Clock::now());
    QCOMPARE(station.shown(), u"M0001 01 00"_s);
    QCOMPARE(station.listed(), QStringList(u"M0001 01 00"_s));
    QCOMPARE(station.value(u"SELECT COUNT(*) FROM QEN_LOG"_s).toInt(), 0);
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
}

void TestMatTabPrecoSave::whatStandsInThemStays()
{
    PriceStation station;
    station.database.run(
        u"INSERT INTO {TABPRECO} (REGIAO, CODIGO, GRUPO_COR, COLECAO, ACRESCIMO, DESCONTO, ORIGEM, DT_ALTERACAO) "
        "VALUES ('01', 'M0001', '05', 'V26', '3', '2', 'X', '01/31/2025')"_s);
    station.setColourGroups(true);
    station.openPrices();
    station.click(u"BtnAltera"_s);
    station.confirm();
    QCOMPARE(
        station.database.rows(u"SELECT GRUPO_COR, COLECAO, ACRESCIMO, DESCONTO, COMISSAO, ORIGEM FROM {TABPRECO}"_s),
        QStringList(u"05|V26|3|2|0|X"_s));
    QCOMPARE(station.value(u"SELECT DT_ALTERACAO FROM {TABPRECO}"_s).toDateTime(), Clock::now());
}

void TestMatTabPrecoSave::withoutColourGroupsEveryRowIsOfGroup00()
{
    PriceStation station;
    station.insertPrice({.code = u"A"_s, .colour = u"07"_s});
    station.setColourGroups(false);
    station.openPrices();
    station.insertProduct(u"01"_s, u"M0001"_s, u"05"_s);
    QCOMPARE(station.text(u"EdtCor"_s), u"05"_s);
    station.confirm();
    QCOMPARE(station.stored(), (QStringList{u"01|A|07|10|20|15"_s, u"01|M0001|00|||"_s}));
    station.click(u"SpeedButton1"_s);
    station.click(u"BtnAltera"_s);
    station.enter(u"EdtCor"_s, u"09"_s);
    station.confirm();
    QCOMPARE(station.stored(), (QStringList{u"01|A|00|10|20|15"_s, u"01|M0001|00|||"_s}));
    QCOMPARE(station.shown(), u"A 01 00"_s);
}

void TestMatTabPrecoSave::withColourGroupsOnlyAnEmptyOneIs00()
{
    PriceStation station;
    station.setColourGroups(true);
    station.openPrices();
    station.insertProduct(u"01"_s, u"M0001"_s, u"05"_s);
    station.confirm();
    station.insertProduct(u"01"_s, u"M0002"_s);
    station.confirm();
    QCOMPARE(station.stored(), (QStringList{u"01|M0001|05|||"_s, u"01|M0002|00|||"_s}));
    station.click(u"SpeedButton1"_s);
    station.click(u"BtnAltera"_s);
    station.enter(u"EdtCor"_s, {});
    station.confirm();
    QCOMPARE(station.stored(), (QStringList{u"01|M0001|00|||"_s, u"01|M0002|00|||"_s}));
}

void TestMatTabPrecoSave::theColourFieldSaysWhenItIsOfNoUse()
{
    PriceStation station;
    station.setColourGroups(false);
    station.openPrices();
    QVERIFY(station.child(u"lbSemCor"_s)->isVisible());
    station.click(u"btnincluir"_s);
    station.enter(u"EdtRegiao"_s, u"01"_s);
    QCOMPARE(station.focus(), u"EdtCodArt"_s);
    station.key(Qt::Key_Escape);
    station.closeForm();
    station.setColourGroups(true);
    station.openPrices();
    QVERIFY(!station.child(u"lbSemCor"_s)->isVisible());
    station.click(u"btnincluir"_s);
    station.enter(u"EdtRegiao"_s, u"01"_s);
    QCOMPARE(station.focus(), u"EdtCor"_s);
    station.key(Qt::Key_Escape);
}

void TestMatTabPrecoSave::whateverIsTypedIsStored_data()
{
    QTest::addColumn<QString>("region");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("price");
    QTest::addColumn<QString>("stored");
    QTest::newRow("a price of four decimals") << u"01"_s << u"M0001"_s << u"3,4525"_s << u"01|M0001|00|3.4525||"_s;
    QTest::newRow("a negative price") << u"01"_s << u"M0001"_s << u"-3,5"_s << u"01|M0001|00|-3.5||"_s;
    QTest::newRow("a large price") << u"01"_s << u"M0001"_s << u"1234567,89"_s << u"01|M0001|00|1234567.89||"_s;
    QTest::newRow("no price") << u"01"_s << u"M0001"_s << QString() << u"01|M0001|00|||"_s;
    QTest::newRow("an unknown product") << u"01"_s << u"GONE"_s << u"1"_s << u"01|GONE|00|1||"_s;
    QTest::newRow("an unknown region") << u"77"_s << u"M0001"_s << u"1"_s << u"77|M0001|00|1||"_s;
    QTest::newRow("hostile texts") << u"';-"_s << u"X' OR '1'='1"_s << u"1"_s << u"';-|X' OR '1'='1|00|1||"_s;
    QTest::newRow("no region") << QString() << u"M0001"_s << u"1"_s << u"|M0001|00|1||"_s;
    QTest::newRow("no product") << u"01"_s << QString() << u"1"_s << u"01||00|1||"_s;
    QTest::newRow("neither") << QString() << QString() << QString() << u"||00|||"_s;
}

void TestMatTabPrecoSave::whateverIsTypedIsStored()
{
    PriceStation station;
    QFETCH(QString, region);
    QFETCH(QString, code);
    QFETCH(QString, price);
    station.openPrices();
    station.insertProduct(region, code);
    if (!price.isEmpty())
        station.enter(u"EdtParcela01"_s, price);
    station.confirm();
    QVERIFY(!station.isEditing());
    QTEST(station.stored().join(u'\n'), "stored");
    // It is listed, and can be altered and deleted like any other.
    QCOMPARE(station.listed(), QStringList(QStringList{code, region, u"00"_s}.join(u' ')));
    station.click(u"BtnAltera"_s);
    station.enter(u"EdtPrecoMed"_s, u"8"_s);
    station.confirm();
    QCOMPARE(station.stored().value(0).section(u'|', -1), u"8"_s);
    station.answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.lines(), 0);
    QCOMPARE(station.listed(), QStringList());
}

void TestMatTabPrecoSave::onlyWhatWasTypedIsChanged()
{
    PriceStation station;
    station.insertPrice({.code = u"A"_s, .first = u"1.23456"_s, .last = u"NULL"_s});
    station.insertPrice({.code = u"B"_s});
    station.openPrices();
    station.click(u"SpeedButton1"_s);
    station.click(u"BtnAltera"_s);
    for (int i = 0; i < 14; ++i)
        station.key(Qt::Key_Return);
    station.enter(u"EdtPrecoMed"_s, u"7"_s);
    station.confirm();
    // Passing a field is no typing: what it shows in fewer decimals stays whole, what is empty stays empty.
    QCOMPARE(station.stored(), (QStringList{u"01|A|00|1.23456||7"_s, u"01|B|00|10|20|15"_s}));
}

void TestMatTabPrecoSave::anExistingPriceIsAlteredInstead()
{
    PriceStation station;
    station.insertPrice({.code = u"M0001"_s});
    station.insertPrice({.code = u"M0002"_s, .first = u"5"_s});
    station.openPrices();
    station.answers.expect(existsAlready, QMessageBox::Yes, PriceStation::caption);
    station.insertProduct(u"01"_s, u"M0001"_s);
    QVERIFY(station.isEditing());
    QCOMPARE(station.shown(), u"M0001 01 00"_s);
    QCOMPARE(station.grid()->currentIndex().row(), 0);
    QCOMPARE(station.text(u"EdtDesArt"_s), u"Meia-malha"_s);
    QCOMPARE(station.focus(), u"EdtParcela01"_s);
    station.enter(u"EdtParcela01"_s, u"11"_s);
    station.confirm();
    QCOMPARE(station.stored(), (QStringList{u"01|M0001|00|11|20|15"_s, u"01|M0002|00|5|20|15"_s}));
}

void TestMatTabPrecoSave::orTheNewRowIsGivenUp()
{
    PriceStation station;
    station.insertPrice({.code = u"M0001"_s});
    station.insertPrice({.code = u"M0002"_s});
    station.openPrices();
    station.answers.expectAndType(existsAlready, Qt::Key_Return); // No is the default
    station.insertProduct(u"01"_s, u"M0001"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.shown(), u"M0002 01 00"_s);
    QCOMPARE(station.focus(), u"DBGrid1"_s);
    QCOMPARE(station.lines(), 2);
}

void TestMatTabPrecoSave::theColourGroupDoesNotMatter()
{
    PriceStation station;
    station.setColourGroups(true);
    station.insertPrice({.colour = u"07"_s});
    station.insertPrice({.colour = u"03"_s});
    station.openPrices();
    station.answers.expect(existsAlready, QMessageBox::Yes);
    station.insertProduct(u"01"_s, u"M0001"_s, u"99"_s);
    QCOMPARE(station.shown(), u"M0001 01 03"_s);
    station.enter(u"EdtParcela01"_s, u"4"_s);
    station.confirm();
    QCOMPARE(station.stored(), (QStringList{u"01|M0001|03|4|20|15"_s, u"01|M0001|07|10|20|15"_s}));
}

void TestMatTabPrecoSave::theTypedColourGroupIsTheOneAltered()
{
    PriceStation station;
    station.setColourGroups(true);
    station.insertPrice({.colour = u"07"_s});
    station.insertPrice({.colour = u"03"_s});
    station.openPrices();
    station.answers.expect(existsAlready, QMessageBox::Yes);
    station.insertProduct(u"01"_s, u"M0001"_s, u"07"_s);
    QCOMPARE(station.shown(), u"M0001 01 07"_s);
    station.key(Qt::Key_Escape);
}

void TestMatTabPrecoSave::anotherRegionsPriceIsNoMatter()
{
    PriceStation station;
    station.insertPrice({.region = u"02"_s});
    station.openPrices();
    station.insertProduct(u"01"_s, u"M0001"_s);
    QVERIFY(station.isEditing());
    station.confirm();
    QCOMPARE(station.lines(), 2);
}

void TestMatTabPrecoSave::anAlteredRowIsNoDuplicateOfItself()
{
    PriceStation station;
    station.insertPrice({});
    station.openPrices();
    station.click(u"BtnAltera"_s);
    station.enter(u"EdtCodArt"_s, u"M0001"_s);
    QVERIFY(station.isEditing());
    station.enter(u"EdtParcela01"_s, u"12"_s);
    station.confirm();
    QCOMPARE(station.stored(), QStringList(u"01|M0001|00|12|20|15"_s));
}

void TestMatTabPrecoSave::aPriceThatAppearedMeanwhileIsReplacedWhenWanted()
{
    PriceStation station;
    station.openPrices();
    station.insertProduct(u"01"_s, u"M0001"_s);
    station.enter(u"EdtParcela01"_s, u"7"_s);
    station.insertPrice({}); // at another station
    station.answers.expectAndType(replaceIt, Qt::Key_Return, PriceStation::caption);
    station.confirm();
    QVERIFY(station.isEditing());
    QCOMPARE(station.stored(), QStringList(u"01|M0001|00|10|20|15"_s));
    station.answers.expect(replaceIt, QMessageBox::Yes);
    station.confirm();
    QVERIFY(!station.isEditing());
    // What was left empty is empty.
    QCOMPARE(station.stored(), QStringList(u"01|M0001|00|7||"_s));
}

void TestMatTabPrecoSave::twoStationsThatStoreANewPriceStoreItOnce_data()
{
    QTest::addColumn<bool>("inserted");
    QTest::newRow("a new row") << true;
    QTest::newRow("an altered key") << false;
}

void TestMatTabPrecoSave::twoStationsThatStoreANewPriceStoreItOnce()
{
    QFETCH(bool, inserted);
    PriceStation station;
    station.insertPrice({.code = u"M0002"_s, .first = u"2"_s});
    station.openPrices();
    if (inserted) {
        station.insertProduct(u"01"_s, u"M0001"_s);
    } else {
        station.click(u"BtnAltera"_s);
        station.enter(u"EdtCodArt"_s, u"M0001"_s);
    }
    station.enter(u"EdtParcela01"_s, u"7"_s);
    // The other one is through after this one has found that there is none yet.
    bool stored = false;
    station.tabela.IBDatabase->setObserver([&](const QString &statement) {
        if (statement == u"BEGIN" && !std::exchange(stored, true))
            station.insertPriceElsewhere({});
    });
    expectFailure(station.answers, PriceStation::caption,
        u"Outra estação alterou estes dados ao mesmo tempo. Nada foi gravado; tente novamente."_s);
    station.confirm();
    station.tabela.IBDatabase->setObserver({});
    QVERIFY(stored);
    QVERIFY(station.isEditing());
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
    QCOMPARE(station.stored(), (QStringList{u"01|M0001|00|10|20|15"_s, u"01|M0002|00|2|20|15"_s}));
    // Once more, and it takes the other's place.
    station.answers.expect(replaceIt, QMessageBox::Yes);
    station.confirm();
    QVERIFY(!station.isEditing());
    QCOMPARE(station.stored(),
        inserted ? (QStringList{u"01|M0001|00|7||"_s, u"01|M0002|00|2|20|15"_s})
                 : QStringList{u"01|M0001|00|7|20|15"_s});
}

void TestMatTabPrecoSave::theReplacedRowTakesTheOthersPlace()
{
    PriceStation station;
    station.insertPrice({.code = u"M0001"_s, .first = u"1"_s});
    station.insertPrice({.code = u"M0002"_s, .first = u"2"_s});
    station.openPrices();
    station.click(u"BtnAltera"_s);
    station.enter(u"EdtCodArt"_s, u"M0001"_s);
    station.answers.expect(replaceIt, QMessageBox::Yes);
    station.confirm();
    QCOMPARE(station.stored(), QStringList(u"01|M0001|00|2|20|15"_s));
    QCOMPARE(station.listed(), QStringList(u"M0001 01 00"_s));
}

void TestMatTabPrecoSave::aRowOfGroup00IsReplacedByTheOneThatBecomesIt()
{
    PriceStation station;
    station.insertPrice({.colour = u"00"_s, .first = u"1"_s});
    station.insertPrice({.colour = u"07"_s, .first = u"2"_s});
    station.setColourGroups(false);
    station.openPrices();
    station.click(u"BtnAltera"_s);
    station.enter(u"EdtParcela01"_s, u"3"_s);
    station.answers.expect(replaceIt, QMessageBox::Yes);
    station.confirm();
    QCOMPARE(station.stored(), QStringList(u"01|M0001|00|3|20|15"_s));
}

void TestMatTabPrecoSave::ofAPriceThatIsThereTwiceOneRemains()
{
    PriceStation station;
    station.insertPrice({.first = u"1"_s});
    station.insertPrice({.first = u"2"_s});
    station.insertPrice({.code = u"M0002"_s, .first = u"3"_s});
    station.openPrices();
    QCOMPARE(station.listed().size(), 3);
    station.click(u"SpeedButton1"_s);
    station.click(u"BtnAltera"_s);
    station.enter(u"EdtParcela01"_s, u"9"_s);
    const QString twice = u"Este preço está gravado 2 vezes. Deseja ficar só com o que foi digitado?"_s;
    station.answers.expectAndType(twice, Qt::Key_Return);
    station.confirm();
    QVERIFY(station.isEditing());
    QCOMPARE(station.lines(), 3);
    station.answers.expect(twice, QMessageBox::Yes);
    station.confirm();
    QCOMPARE(station.stored(), (QStringList{u"01|M0001|00|9|20|15"_s, u"01|M0002|00|3|20|15"_s}));
    // Another row that becomes one of several takes the place of all.
    station.insertPrice({.first = u"5"_s});
    station.click(u"SpeedButton4"_s);
    station.click(u"BtnAltera"_s);
    station.enter(u"EdtCodArt"_s, u"M0001"_s);
    station.answers.expect(replaceIt, QMessageBox::Yes);
    Clock::pin(Clock::now().addSecs(60));
    station.confirm();
    QCOMPARE(station.stored(), QStringList(u"01|M0001|00|3|20|15"_s));
}

void TestMatTabPrecoSave::aPriceThatIsThereTwiceIsDeletedWhole()
{
    PriceStation station;
    station.insertPrice({.first = u"1"_s});
    station.insertPrice({.first = u"2"_s});
    station.insertPrice({.code = u"M0002"_s});
    station.openPrices();
    station.click(u"SpeedButton1"_s);
    const QString twice = u"Este preço está gravado 2 vezes. Deseja eliminar todas?"_s;
    station.answers.expectAndType(twice, Qt::Key_Return, u"Eliminação de Registro"_s);
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.lines(), 3);
    station.answers.expect(twice, QMessageBox::Yes);
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.listed(), QStringList(u"M0002 01 00"_s));
}

void TestMatTabPrecoSave::nothingRemainsOfASaveThatFails()
{
    PriceStation station;
    station.insertPrice({.code = u"M0001"_s, .first = u"1"_s});
    station.insertPrice({.code = u"M0002"_s, .first = u"2"_s});
    station.database.run(u"ALTER TABLE {TABPRECO} ADD CONSTRAINT NO_GIFTS CHECK (PRECO_00 > 0)"_s);
    const QStringList before = station.stored();
    station.openPrices();
    station.click(u"BtnAltera"_s);
    station.enter(u"EdtCodArt"_s, u"M0001"_s);
    station.enter(u"EdtParcela01"_s, u"-1"_s);
    station.answers.expect(replaceIt, QMessageBox::Yes);
    expectFailure(station.answers, PriceStation::caption, u"O banco de dados recusou a operação. Nada foi gravado."_s);
    station.confirm();
    QVERIFY(station.isEditing());
    QCOMPARE(station.stored(), before);
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
    // The same once more, with a price that the table takes.
    station.enter(u"EdtParcela01"_s, u"3"_s);
    station.confirm();
    QCOMPARE(station.stored(), QStringList(u"01|M0001|00|3|20|15"_s));
}

void TestMatTabPrecoSave::aRowThatVanishedIsNotAltered()
{
    PriceStation station;
    station.insertPrice({});
    station.openPrices();
    station.click(u"BtnAltera"_s);
    station.enter(u"EdtParcela01"_s, u"3"_s);
    station.database.run(u"DELETE FROM {TABPRECO}"_s);
    expectFailure(station.answers, PriceStation::caption,
        u"Outra estação alterou estes dados ao mesmo tempo. Nada foi gravado; tente novamente."_s);
    station.confirm();
    QVERIFY(station.isEditing());
    station.key(Qt::Key_Escape);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.listed(), QStringList());
}

QTEST_MAIN(TestMatTabPrecoSave)
#include "tst_mattabprecosave.moc"
