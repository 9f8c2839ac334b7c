// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/registries/pricestation.h"

#include "module/host_services/clock.h"

#include <QComboBox>

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

namespace {

/// Three prices in the south, one of them in the south-east too, which has another of its own.
class CopyStation : public PriceStation
{
public:
    CopyStation()
    {
        insertPrice({.region = u"01"_s, .code = u"M0001"_s, .colour = u"00"_s, .first = u"1.5"_s, .last = u"2.5"_s});
        insertPrice({.region = u"01"_s,
            .code = u"M0001"_s,
            .colour = u"01"_s,
            .first = u"3.4525"_s,
            .last = u"NULL"_s,
            .average = u"NULL"_s});
        insertPrice({.region = u"01"_s, .code = u"M0002"_s, .first = u"100"_s, .last = u"0"_s});
        insertPrice({.region = u"02"_s, .code = u"M0001"_s, .first = u"9"_s, .last = u"9"_s, .average = u"9"_s});
        insertPrice({.region = u"02"_s, .code = u"OWN"_s, .first = u"8"_s, .last = u"8"_s, .average = u"8"_s});
    }

    const QStringList source{u"01|M0001|00|1.5|2.5|15"_s, u"01|M0001|01|3.4525||"_s, u"01|M0002|00|100|0|15"_s};
    const QStringList target{u"02|M0001|00|9|9|9"_s, u"02|OWN|00|8|8|8"_s};
    const QStringList dearer{u"02|M0001|01|3.6942||"_s, u"02|M0002|00|107|0|16.05"_s};

    void typeCopy(const QString &from, const QString &to, const QString &percent, bool replace = false)
    {
        click(u"BtincluirCarlos"_s);
        enter(u"EdtRegiaoDe"_s, from);
        enter(u"EdtRegiaoPara"_s, to);
        enter(u"EdtPercentual"_s, percent);
        child<QComboBox>(u"cbExistentes"_s)->setCurrentIndex(replace ? 1 : 0);
    }
    bool isCopying() const { return child(u"PainelCopia"_s)->isVisible(); }
};

} // namespace

/// The prices of a region for another, dearer or cheaper by a percentage.
class TestMatTabPrecoCopia : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void thePanelTakesTheFieldsPlace();
    void whatTheOtherRegionHasIsKept();
    void orReplacedWhenTheUserSaysYes();
    void orNothingIsDoneWhenHeSaysNo();
    void theOtherColumnsAreCopiedToo();
    void cheaperPricesAreCopiedAsWell();
    void whatThePanelRefuses_data();
    void whatThePanelRefuses();
    void theCountIsShownBeforehand();
    void theKeyboardAloneIsEnough();
    void leavingThePanelCopiesNothing_data();
    void leavingThePanelCopiesNothing();
    void nothingRemainsOfACopyThatFails();
    void aRegionThatVanishedMeanwhileGetsNoPrices();
    void twoStationsThatCopyStoreNoPriceTwice();
    void aPriceThatIsThereTwiceIsCopiedOnce();
};

void TestMatTabPrecoCopia::thePanelTakesTheFieldsPlace()
{
    CopyStation station;
    station.openPrices();
    QVERIFY(!station.isCopying());
    station.click(u"BtincluirCarlos"_s);
    QVERIFY(station.isCopying());
    QVERIFY(!station.child(u"PainelDados"_s)->isVisible());
    QCOMPARE(station.focus(), u"EdtRegiaoDe"_s);
    for (const QString &name : {u"Barras"_s, u"DBGrid1"_s, u"BtincluirCarlos"_s})
        QVERIFY2(!station.child(name)->isEnabled(), qPrintable(name));
    expectSearchAndTake(station.answers, u"sudeste"_s, u"Regiões"_s);
    station.key(Qt::Key_F4);
    QCOMPARE(station.text(u"EdtRegiaoDe"_s), u"02"_s);
    QCOMPARE(station.text(u"EdtDescDe"_s), u"Sudeste"_s);
    station.enter(u"EdtRegiaoPara"_s, u"01"_s);
    QCOMPARE(station.text(u"EdtDescPara"_s), u"Sul"_s);
    station.click(u"SbDesistirCopia"_s);
    QVERIFY(!station.isCopying());
    QVERIFY(station.child(u"PainelDados"_s)->isVisible());
    // It opens empty again.
    station.click(u"BtincluirCarlos"_s);
    QCOMPARE(station.text(u"EdtRegiaoDe"_s), QString());
    QCOMPARE(station.text(u"EdtDescPara"_s), QString());
}

void TestMatTabPrecoCopia::whatTheOtherRegionHasIsKept()
{
    CopyStation station;
    station.openPrices();
    station.typeCopy(u"01"_s, u"02"_s, u"7"_s);
    expectInformation(station.answers, PriceStation::caption, u"Preços incluídos: 2. Mantidos como estavam: 1."_s);
    station.click(u"SbCopiar"_s);
    QCOMPARE(station.stored(),
        station.source + QStringList{station.target[0]} + station.dearer + QStringList{station.target[1]});
    QVERIFY(!station.isCopying());
    QCOMPARE(station.listed().size(), 7);
    QCOMPARE(station.focus(), u"DBGrid1"_s);
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
    QCOMPARE(station.value(u"SELECT COUNT(*) FROM QEN_LOG"_s).toInt(), 0);
}

void TestMatTabPrecoCopia::orReplacedWhenTheUserSaysYes()
{
    CopyStation station;
    station.openPrices();
    station.typeCopy(u"01"_s, u"02"_s, u"7"_s, true);
    station.answers.expect(
        u"Preços que serão substituídos na região 02: 1. Deseja continuar?"_s, QMessageBox::Yes, PriceStation::caption);
    expectInformation(station.answers, PriceStation::caption, u"Preços incluídos: 2. Substituídos: 1."_s);
    station.click(u"SbCopiar"_s);
    // 1.5 and 7 % are 1.605, and 2.5 are 2.675: halves.
    QCOMPARE(station.stored(),
        station.source + QStringList{u"02|M0001|00|1.61|2.68|16.05"_s} + station.dearer
            + QStringList{station.target[1]});
}

void TestMatTabPrecoCopia::orNothingIsDoneWhenHeSaysNo()
{
    CopyStation station;
    station.openPrices();
    station.typeCopy(u"01"_s, u"02"_s, u"7"_s, true);
    station.answers.expectAndType(
        u"Preços que serão substituídos na região 02: 1. Deseja continuar?"_s, Qt::Key_Return);
    station.click(u"SbCopiar"_s);
    QVERIFY(station.isCopying());
    QCOMPARE(station.stored(), station.source + station.target);
}

void TestMatTabPrecoCopia::theOtherColumnsAreCopiedToo()
{
    CopyStation station;
    station.database.run(u"DELETE FROM {TABPRECO} WHERE CODIGO <> 'M0002'"_s);
    station.database.run(u"UPDATE {TABPRECO} SET COLECAO = 'V26', ACRESCIMO = '1', DESCONTO = '2', COMISSAO = NULL, "
                         "ORIGEM = 'X', DESC_PRODUTO = 'D''água', PRECO_42 = 4.2, DT_ALTERACAO = '01/31/2025'"_s);
    station.openPrices();
    station.typeCopy(u"01"_s, u"02"_s, u"10"_s);
    expectInformation(station.answers, PriceStation::caption, u"Preços incluídos: 1. Mantidos como estavam: 0."_s);
    station.click(u"SbCopiar"_s);
    QCOMPARE(station.database.rows(u"SELECT COLECAO, ACRESCIMO, DESCONTO, COMISSAO, ORIGEM, DESC_PRODUTO, PRECO_42, "
                                   "PRECO_49 FROM {TABPRECO} WHERE REGIAO = '02'"_s),
        QStringList(u"V26|1|2||X|D'água|4.62|"_s));
    QCOMPARE(station.value(u"SELECT DT_ALTERACAO FROM {TABPRECO} WHERE REGIAO = '02'"_s).toDateTime(), Clock::now());
}

void TestMatTabPrecoCopia::cheaperPricesAreCopiedAsWell()
{
    CopyStation station;
    station.openPrices();
    station.typeCopy(u"02"_s, u"01"_s, u"-12,5"_s);
    expectInformation(station.answers, PriceStation::caption, u"Preços incluídos: 1. Mantidos como estavam: 1."_s);
    station.click(u"SbCopiar"_s);
    QCOMPARE(station.stored(), station.source + QStringList{u"01|OWN|00|7|7|7"_s} + station.target);
}

void TestMatTabPrecoCopia::whatThePanelRefuses_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QString>("percent");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("focus");
    const QString noSource = u"Região de origem não Existe. Impossível Continuar."_s;
    const QString noTarget = u"Região de destino não Existe. Impossível Continuar."_s;
    QTest::newRow("no source") << u""_s << u"02"_s << u"5"_s << noSource << u"EdtRegiaoDe"_s;
    QTest::newRow("unknown source") << u"77"_s << u"02"_s << u"5"_s << noSource << u"EdtRegiaoDe"_s;
    QTest::newRow("no target") << u"01"_s << u""_s << u"5"_s << noTarget << u"EdtRegiaoPara"_s;
    QTest::newRow("unknown target") << u"01"_s << u"'"_s << u"5"_s << noTarget << u"EdtRegiaoPara"_s;
    QTest::newRow("itself") << u"01"_s << u"01"_s << u"5"_s
                            << u"A origem e o destino são a mesma região. Impossível Continuar."_s
                            << u"EdtRegiaoPara"_s;
    QTest::newRow("less than nothing") << u"01"_s << u"02"_s << u"-100,01"_s
                                       << u"O percentual não pode reduzir mais do que 100 %. Impossível Continuar."_s
                                       << u"EdtPercentual"_s;
    QTest::newRow("no prices") << u"03"_s << u"02"_s << u"5"_s
                               << u"A região de origem não tem preços. Impossível Continuar."_s << u"EdtRegiaoDe"_s;
}

void TestMatTabPrecoCopia::whatThePanelRefuses()
{
    CopyStation station;
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QString, percent);
    QFETCH(QString, message);
    station.database.run(u"INSERT INTO {REGIAO} (REGIAO, DESCRICAO) VALUES ('03', 'Norte')"_s);
    station.openPrices();
    station.typeCopy(from, to, percent);
    expectInformation(station.answers, PriceStation::caption, message);
    station.click(u"SbCopiar"_s);
    QVERIFY(station.isCopying());
    QTEST(station.focus(), "focus");
    QCOMPARE(station.stored(), station.source + station.target);
}

void TestMatTabPrecoCopia::theCountIsShownBeforehand()
{
    CopyStation station;
    station.openPrices();
    station.click(u"BtincluirCarlos"_s);
    station.enter(u"EdtRegiaoDe"_s, u"01"_s);
    QCOMPARE(station.text(u"lbCopia"_s), QString());
    station.enter(u"EdtRegiaoPara"_s, u"02"_s);
    QCOMPARE(station.text(u"lbCopia"_s), u"Preços na origem: 3. Já existem no destino: 1."_s);
    station.enter(u"EdtRegiaoDe"_s, u"77"_s);
    QCOMPARE(station.text(u"lbCopia"_s), u"Preços na origem: 0. Já existem no destino: 0."_s);
    station.enter(u"EdtRegiaoDe"_s, {});
    QCOMPARE(station.text(u"lbCopia"_s), QString());
}

void TestMatTabPrecoCopia::theKeyboardAloneIsEnough()
{
    CopyStation station;
    station.openPrices();
    station.key(Qt::Key_P, Qt::AltModifier);
    QTRY_VERIFY(station.isCopying());
    for (const auto &[field, text] : QList<std::pair<QString, QString>>{
             {u"EdtRegiaoDe"_s, u"01"_s}, {u"EdtRegiaoPara"_s, u"02"_s}, {u"EdtPercentual"_s, u"7"_s}}) {
        QCOMPARE(station.focus(), field);
        QTest::keyClicks(station.child(field), text);
        station.key(Qt::Key_Return);
    }
    QCOMPARE(station.focus(), u"cbExistentes"_s);
    station.key(Qt::Key_Down);
    station.key(Qt::Key_Return);
    QCOMPARE(station.focus(), u"SbCopiar"_s);
    station.answers.expect(u"Preços que serão substituídos na região 02: 1. Deseja continuar?"_s, QMessageBox::Yes);
    expectInformation(station.answers, PriceStation::caption, u"Preços incluídos: 2. Substituídos: 1."_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.lines(), 7);
}

void TestMatTabPrecoCopia::leavingThePanelCopiesNothing_data()
{
    QTest::addColumn<QString>("how");
    for (const char *how : {"SbDesistirCopia", "Esc"})
        QTest::newRow(how) << QString::fromLatin1(how);
}

void TestMatTabPrecoCopia::leavingThePanelCopiesNothing()
{
    CopyStation station;
    QFETCH(QString, how);
    station.openPrices();
    station.typeCopy(u"01"_s, u"02"_s, u"7"_s, true);
    how == u"Esc"_s ? station.key(Qt::Key_Escape) : station.click(how);
    QVERIFY(station.form());
    QVERIFY(!station.isCopying());
    QCOMPARE(station.stored(), station.source + station.target);
    QCOMPARE(station.focus(), u"DBGrid1"_s);
}

void TestMatTabPrecoCopia::nothingRemainsOfACopyThatFails()
{
    CopyStation station;
    station.database.run(u"ALTER TABLE {TABPRECO} ADD CONSTRAINT NO_DEAR_ONES CHECK (PRECO_00 < 105)"_s);
    station.openPrices();
    station.typeCopy(u"01"_s, u"02"_s, u"7"_s);
    expectFailure(station.answers, PriceStation::caption, u"O banco de dados recusou a operação. Nada foi gravado."_s);
    station.click(u"SbCopiar"_s);
    QVERIFY(station.isCopying());
    QCOMPARE(station.stored(), station.source + station.target);
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
    station.enter(u"EdtPercentual"_s, u"4"_s);
    expectInformation(station.answers, PriceStation::caption, u"Preços incluídos: 2. Mantidos como estavam: 1."_s);
    station.click(u"SbCopiar"_s);
    QCOMPARE(station.lines(), 7);
}

void TestMatTabPrecoCopia::aRegionThatVanishedMeanwhileGetsNoPrices()
{
    CopyStation station;
    station.openPrices();
    station.typeCopy(u"01"_s, u"02"_s, u"7"_s);
    // Right before this station locks the region, another one takes it away.
    bool taken = false;
    station.tabela.IBDatabase->setObserver([&](const QString &statement) {
        if (statement == u"BEGIN" && !std::exchange(taken, true))
            station.database.run(u"DELETE FROM {REGIAO} WHERE REGIAO = '02'"_s);
    });
    expectFailure(station.answers, PriceStation::caption,
        u"Outra estação alterou estes dados ao mesmo tempo. Nada foi gravado; tente novamente."_s);
    station.click(u"SbCopiar"_s);
    station.tabela.IBDatabase->setObserver({});
    QVERIFY(taken);
    QCOMPARE(station.stored(), station.source + station.target);
}

void TestMatTabPrecoCopia::twoStationsThatCopyStoreNoPriceTwice()
{
    CopyStation station;
    station.openPrices();
    station.typeCopy(u"01"_s, u"02"_s, u"0"_s);
    // The other one is through with its copy after this one has begun.
    bool copied = false;
    station.tabela.IBDatabase->setObserver([&](const QString &statement) {
        if (statement == u"BEGIN" && !std::exchange(copied, true))
            station.insertPriceElsewhere({.region = u"02"_s, .code = u"M0002"_s, .first = u"100"_s});
    });
    if (Engines::current() == u"postgres"_s)
        expectInformation(station.answers, PriceStation::caption, u"Preços incluídos: 1. Mantidos como estavam: 2."_s);
    else
        expectFailure(station.answers, PriceStation::caption,
            u"Outra estação alterou estes dados ao mesmo tempo. Nada foi gravado; tente novamente."_s);
    station.click(u"SbCopiar"_s);
    station.tabela.IBDatabase->setObserver({});
    QVERIFY(copied);
    QCOMPARE(station.database.count(u"TABPRECO"_s, u"REGIAO = '02' AND CODIGO = 'M0002'"_s), 1);
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
}

void TestMatTabPrecoCopia::aPriceThatIsThereTwiceIsCopiedOnce()
{
    CopyStation station;
    station.insertPrice({.region = u"01"_s, .code = u"M0002"_s, .first = u"100"_s, .last = u"0"_s});
    station.openPrices();
    station.typeCopy(u"01"_s, u"02"_s, u"0"_s);
    expectInformation(station.answers, PriceStation::caption, u"Preços incluídos: 2. Mantidos como estavam: 2."_s);
    station.click(u"SbCopiar"_s);
    QCOMPARE(station.database.count(u"TABPRECO"_s, u"REGIAO = '02' AND CODIGO = 'M0002'"_s), 1);
}

QTEST_MAIN(TestMatTabPrecoCopia)
#include "tst_mattabprecocopia.moc"
