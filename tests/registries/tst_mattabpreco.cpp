// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/registries/pricestation.h"

#include <QApplication>
#include <QHeaderView>

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

/// The price table as it is looked at and moved through, and how its fields help to fill it.
class TestMatTabPreco : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void bearsItsCaptions();
    void theGridShowsEveryPriceInItsOrder();
    void itOpensOnTheLastRow();
    void gridAndPanelStandOnTheSameRow();
    void enterInTheGridAltersTheRow();
    void theSearchGoesToTheChosenRow();
    void aRowThatAnotherStationDeletedLeavesTheGrid();
    void closingFreesTheScreenAndItsTables();
    void reopeningIsAFreshScreenOnTheLastRow();

    void aNewRowsDescriptionIsTheMaterials();
    void anAlteredRowsDescriptionIsThePriceTables();
    void anEmptyDescriptionIsTheProducts();
    void aTypedDescriptionStays();
    void regionAndProductAreSearched();
    void aNewRowStartsInTheRegionOfTheOneBefore();

    void enterWalksThroughFourteenPrices();
    void f6RepeatsThePriceAndComputesTheAverage();
    void cancellingLeavesTheRowAsItWas_data();
    void cancellingLeavesTheRowAsItWas();
    void withoutTheRightNothingHappens();
    void deletingAsksFirst();
    void aLongTableIsMovedThrough();
    void withoutPricesThereIsNothingToMoveTo();
};

void TestMatTabPreco::bearsItsCaptions()
{
    PriceStation station;
    station.openPrices();
    QCOMPARE(station.form()->windowTitle(), PriceStation::caption);
    QList<std::pair<QString, QString>> texts{{u"btnincluir"_s, u"Incluir"_s}, {u"BtnAltera"_s, u"Alterar"_s},
        {u"BtExcluir"_s, u"Excluir"_s}, {u"SbConfirmar"_s, u"Confirmar "_s}, {u"SbDesistir"_s, u"Desistir"_s},
        {u"SbConsulta"_s, u"Consultar"_s}, {u"BtSaida"_s, u"Fechar"_s}, {u"lbRegiao"_s, u"Região"_s},
        {u"lbMaterial"_s, u"Material"_s}, {u"lbPrecoMed"_s, u"Preço Méd."_s}};
    for (int i = 1; i <= 14; ++i) {
        const QString number = QString::number(i).rightJustified(2, u'0');
        texts.append({u"lbParcela"_s + number, number + u"º Parcela"_s});
    }
    for (const auto &[name, text] : texts)
        QCOMPARE(station.text(name).remove(u'&'), text);
    QVERIFY(!station.child(u"BtnImprimir"_s)->isVisible());
    QStringList titles;
    for (int column = 0; column < station.grid()->model()->columnCount(); ++column)
        titles.append(station.grid()->model()->headerData(column, Qt::Horizontal).toString());
    QStringList expected{u"Codigo"_s, u"Produto"_s, u"Tabela"_s, u"Região"_s, u"Cor"_s};
    for (int i = 1; i <= 14; ++i)
        expected.append(u"%1ºParcel"_s.arg(i));
    QCOMPARE(titles, expected);
    QVERIFY(!station.isEditing());
}

void TestMatTabPreco::theGridShowsEveryPriceInItsOrder()
{
    PriceStation station;
    station.database.run(
        u"INSERT INTO {TABPRECO} (REGIAO, CODIGO, GRUPO_COR, DESC_PRODUTO, PRECO_00, PRECO_07, PRECO_14, PRECO_21, "
        "PRECO_28, PRECO_35, PRECO_42, PRECO_49, PRECO_56, PRECO_63, PRECO_70, PRECO_77, PRECO_84, PRECO_91, "
        "PRECO_MEDIO) VALUES ('02', 'M0001', '00', 'Meia-malha', 1, 2, 3, 4.25, 5, 6, 7, 8, 9, 10, 11, 12.3456, "
        "NULL, 1400.5, 7.5)"_s);
    station.openPrices();
    QStringList row;
    for (int column = 0; column < 19; ++column)
        row.append(station.cell(0, column));
    QCOMPARE(row.join(u' '),
        u"M0001 Meia-malha 02 Sudeste 00 1,00 2,00 3,00 4,25 5,00 6,00 7,00 8,00 9,00 10,00 11,00 12,3456  1.400,50"_s);
    QStringList prices;
    for (int i = 1; i <= 14; ++i)
        prices.append(station.text(PriceStation::instalment(i)));
    QCOMPARE(prices.join(u' '), u"1,00 2,00 3,00 4,25 5,00 6,00 7,00 8,00 9,00 10,00 11,00 12,3456 0,00 1.400,50"_s);
    QCOMPARE(station.text(u"EdtPrecoMed"_s), u"7,50"_s);
    QCOMPARE(station.text(u"EdtDescRegiao"_s), u"Sudeste"_s);
    QCOMPARE(station.text(u"EdtDesArt"_s), u"Meia-malha"_s);
}

void TestMatTabPreco::itOpensOnTheLastRow()
{
    PriceStation station;
    station.insertPrice({.region = u"02"_s, .code = u"M0001"_s});
    station.insertPrice({.region = u"01"_s, .code = u"M0002"_s});
    station.insertPrice({.region = u"02"_s, .code = u"M0001"_s, .colour = u"01"_s});
    station.insertPrice({.region = u"99"_s, .code = u"GONE"_s, .description = u"Sem cadastro"_s});
    station.openPrices();
    QCOMPARE(station.listed(), (QStringList{u"M0002 01 00"_s, u"M0001 02 00"_s, u"M0001 02 01"_s, u"GONE 99 00"_s}));
    QCOMPARE(station.shown(), u"GONE 99 00"_s);
    QCOMPARE(station.grid()->currentIndex().row(), 3);
    QCOMPARE(station.text(u"EdtDescRegiao"_s), QString());
    QCOMPARE(station.focus(), u"DBGrid1"_s);
}

void TestMatTabPreco::gridAndPanelStandOnTheSameRow()
{
    PriceStation station;
    for (const QString &code : {u"A"_s, u"B"_s, u"C"_s})
        station.insertPrice({.code = code});
    station.openPrices();
    const auto stands = [&](int row, const QString &code) {
        return station.grid()->currentIndex().row() == row && station.text(u"EdtCodArt"_s) == code;
    };
    station.key(Qt::Key_Up);
    QVERIFY(stands(1, u"B"_s));
    station.click(u"SpeedButton1"_s);
    QVERIFY(stands(0, u"A"_s));
    station.click(u"SpeedButton2"_s);
    QVERIFY(stands(0, u"A"_s));
    station.click(u"SpeedButton3"_s);
    QVERIFY(stands(1, u"B"_s));
    station.click(u"SpeedButton4"_s);
    station.click(u"SpeedButton3"_s);
    QVERIFY(stands(2, u"C"_s));
    station.key(Qt::Key_Home, Qt::ControlModifier);
    QVERIFY(stands(0, u"A"_s));
    station.key(Qt::Key_PageDown);
    QVERIFY(stands(2, u"C"_s));
    QTest::mouseClick(station.grid()->viewport(), Qt::LeftButton, {},
        station.grid()->visualRect(station.grid()->model()->index(1, 0)).center());
    QVERIFY(stands(1, u"B"_s));
    // Sorted by a title, the buttons go by what is seen.
    station.database.run(u"UPDATE {TABPRECO} SET PRECO_00 = 99 WHERE CODIGO = 'A'"_s);
    station.click(u"BtnAltera"_s);
    station.key(Qt::Key_Escape);
    auto *titles = station.grid()->horizontalHeader();
    QTest::mouseClick(titles->viewport(), Qt::LeftButton, {},
        {titles->sectionViewportPosition(5) + titles->sectionSize(5) / 2, titles->height() / 2});
    station.click(u"SpeedButton4"_s);
    QVERIFY(stands(2, u"A"_s));
    station.click(u"SpeedButton2"_s);
    station.click(u"SpeedButton1"_s);
    QVERIFY(stands(0, u"B"_s));
}

void TestMatTabPreco::enterInTheGridAltersTheRow()
{
    PriceStation station;
    station.insertPrice({});
    station.openPrices();
    station.key(Qt::Key_Return);
    QVERIFY(station.isEditing());
    QVERIFY(!station.grid()->isEnabled());
    QVERIFY(!station.child(u"BtincluirCarlos"_s)->isEnabled());
    QCOMPARE(station.focus(), u"EdtParcela01"_s);
    station.key(Qt::Key_Escape);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.focus(), u"DBGrid1"_s);
}

void TestMatTabPreco::theSearchGoesToTheChosenRow()
{
    PriceStation station;
    station.insertPrice({.region = u"01"_s});
    station.insertPrice({.region = u"02"_s, .colour = u"07"_s});
    station.insertPrice({.region = u"02"_s, .code = u"M0002"_s, .description = u"Ribana"_s});
    station.openPrices();
    QStringList codes;
    expectSearchAndLeave(station.answers, &codes, PriceStation::caption);
    station.click(u"SbConsulta"_s);
    QCOMPARE(codes, (QStringList{u"M0001"_s, u"M0001"_s, u"M0002"_s}));
    QCOMPARE(station.shown(), u"M0002 02 00"_s);
    expectSearchAndTake(station.answers, u"07"_s);
    station.key(Qt::Key_F4);
    QCOMPARE(station.shown(), u"M0001 02 07"_s);
    QCOMPARE(station.grid()->currentIndex().row(), 1);
}

void TestMatTabPreco::aRowThatAnotherStationDeletedLeavesTheGrid()
{
    PriceStation station;
    for (const QString &code : {u"A"_s, u"B"_s, u"C"_s})
        station.insertPrice({.code = code});
    station.openPrices();
    station.database.run(u"DELETE FROM {TABPRECO} WHERE CODIGO = 'B'"_s);
    station.key(Qt::Key_Up);
    QCOMPARE(station.listed(), (QStringList{u"A 01 00"_s, u"C 01 00"_s}));
    QCOMPARE(station.shown(), u"C 01 00"_s);
    station.database.run(u"DELETE FROM {TABPRECO}"_s);
    station.key(Qt::Key_Up);
    QCOMPARE(station.listed(), QStringList());
    expectFailure(station.answers, PriceStation::caption,
        u"Outra estação alterou estes dados ao mesmo tempo. Nada foi gravado; tente novamente."_s);
    station.click(u"BtnAltera"_s);
    QVERIFY(!station.isEditing());
    station.click(u"BtnAltera"_s);
    QVERIFY(!station.isEditing());
}

void TestMatTabPreco::closingFreesTheScreenAndItsTables()
{
    PriceStation station;
    station.openPrices();
    const QPointer<QWidget> screen = station.form();
    QCOMPARE(station.instance("fmMatTabPreco"), screen.data());
    const QStringList tables{u"TBRegiao"_s, u"tbMateriais"_s, u"TBTabPrazos"_s, u"tbTabPreco"_s};
    for (const QString &name : tables)
        QVERIFY2(station.tabela.tabela(name), qPrintable(name));
    station.click(u"BtSaida"_s);
    QTRY_VERIFY(screen.isNull());
    QVERIFY(!station.instance("fmMatTabPreco"));
    for (const QString &name : tables)
        QVERIFY2(!station.tabela.tabela(name), qPrintable(name));
}

void TestMatTabPreco::reopeningIsAFreshScreenOnTheLastRow()
{
    PriceStation station;
    station.insertPrice({.code = u"A"_s});
    station.openPrices();
    station.closeForm();
    station.insertPrice({.code = u"B"_s});
    station.openPrices();
    QCOMPARE(station.shown(), u"B 01 00"_s);
}

void TestMatTabPreco::aNewRowsDescriptionIsTheMaterials()
{
    PriceStation station;
    station.database.run(u"INSERT INTO {MATERIAL} (CODIGO, DESCRICAO) VALUES ('M0009', 'Moletom três cabos felpado e "
                         "peluciado PV')"_s);
    station.insertPrice({.region = u"02"_s, .description = u"Nome antigo"_s});
    station.openPrices();
    station.insertProduct(u"01"_s, u"M0001"_s);
    QCOMPARE(station.text(u"EdtDesArt"_s), u"Meia-malha PV 60/40"_s);
    station.enter(u"EdtCodArt"_s, u"M0009"_s);
    QCOMPARE(station.text(u"EdtDesArt"_s), u"Moletom três cabos felpado e p"_s);
    station.confirm();
    QCOMPARE(station.value(u"SELECT DESC_PRODUTO FROM {TABPRECO} WHERE REGIAO = '01'"_s).toString(),
        u"Moletom três cabos felpado e p"_s);
}

void TestMatTabPreco::anAlteredRowsDescriptionIsThePriceTables()
{
    PriceStation station;
    station.insertPrice({.region = u"01"_s, .code = u"M0002"_s, .description = u"Ribana da tabela"_s});
    station.insertPrice({.region = u"02"_s, .code = u"M0001"_s, .description = u"Meia-malha da tabela"_s});
    station.openPrices();
    station.click(u"BtnAltera"_s);
    QCOMPARE(station.text(u"EdtDesArt"_s), u"Meia-malha da tabela"_s);
    station.enter(u"EdtCodArt"_s, u"M0002"_s);
    QCOMPARE(station.text(u"EdtDesArt"_s), u"Ribana da tabela"_s);
    station.confirm();
    QCOMPARE(station.stored(), (QStringList{u"01|M0002|00|10|20|15"_s, u"02|M0002|00|10|20|15"_s}));
}

void TestMatTabPreco::anEmptyDescriptionIsTheProducts()
{
    PriceStation station;
    station.database.run(
        u"INSERT INTO {PRODUTO} (CODIGO, DESCRICAO) VALUES ('P77', 'Produto acabado de descrição comprida')"_s);
    station.openPrices();
    station.insertProduct(u"01"_s, u"P77"_s);
    QCOMPARE(station.text(u"EdtDesArt"_s), QString());
    QCOMPARE(station.focus(), u"EdtDesArt"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.text(u"EdtDesArt"_s), u"Produto acabado de descrição c"_s);
    station.confirm();
    QCOMPARE(station.value(u"SELECT DESC_PRODUTO FROM {TABPRECO}"_s).toString(), u"Produto acabado de descrição c"_s);
    // A row that is being altered as well.
    station.click(u"BtnAltera"_s);
    station.enter(u"EdtDesArt"_s, {});
    QCOMPARE(station.text(u"EdtDesArt"_s), u"Produto acabado de descrição c"_s);
    station.key(Qt::Key_Escape);
}

void TestMatTabPreco::aTypedDescriptionStays()
{
    PriceStation station;
    station.database.run(u"INSERT INTO {PRODUTO} (CODIGO, DESCRICAO) VALUES ('M0001', 'Produto')"_s);
    station.openPrices();
    station.insertProduct(u"01"_s, u"M0001"_s);
    station.enter(u"EdtDesArt"_s, u"D'água, 30 mm"_s);
    QCOMPARE(station.focus(), u"EdtParcela01"_s);
    station.confirm();
    QCOMPARE(station.value(u"SELECT DESC_PRODUTO FROM {TABPRECO}"_s).toString(), u"D'água, 30 mm"_s);
}

void TestMatTabPreco::regionAndProductAreSearched()
{
    PriceStation station;
    station.openPrices();
    station.click(u"btnincluir"_s);
    expectSearchAndTake(station.answers, u"sudeste"_s, u"Regiões"_s);
    station.key(Qt::Key_F4);
    QCOMPARE(station.text(u"EdtRegiao"_s), u"02"_s);
    QCOMPARE(station.text(u"EdtDescRegiao"_s), u"Sudeste"_s);
    expectSearchAndTake(station.answers, u"ribana"_s, u"Materiais"_s);
    station.click(u"PqMaterial"_s);
    QCOMPARE(station.text(u"EdtCodArt"_s), u"M0002"_s);
    QCOMPARE(station.text(u"EdtDesArt"_s), u"Ribana 2x1"_s);
    QCOMPARE(station.focus(), u"EdtCodArt"_s);
    station.key(Qt::Key_Escape);
}

void TestMatTabPreco::aNewRowStartsInTheRegionOfTheOneBefore()
{
    PriceStation station;
    station.openPrices();
    station.insertProduct(u"02"_s, u"M0001"_s);
    station.confirm();
    station.click(u"btnincluir"_s);
    QCOMPARE(station.text(u"EdtRegiao"_s), u"02"_s);
    QCOMPARE(station.text(u"EdtDescRegiao"_s), u"Sudeste"_s);
    QCOMPARE(station.text(u"EdtCodArt"_s), QString());
    QCOMPARE(station.focus(), u"EdtRegiao"_s);
    station.key(Qt::Key_Escape);
}

void TestMatTabPreco::enterWalksThroughFourteenPrices()
{
    PriceStation station;
    station.openPrices();
    station.key(Qt::Key_I, Qt::AltModifier);
    QTRY_COMPARE(station.focus(), u"EdtRegiao"_s);
    for (const QString &text : {u"01"_s, u"M0001"_s, u"Malha"_s}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(QApplication::focusWidget(), text);
        station.key(Qt::Key_Return);
    }
    for (int i = 1; i <= 14; ++i) {
        QCOMPARE(station.focus(), PriceStation::instalment(i));
        QTest::keyClicks(QApplication::focusWidget(), u"%1,5"_s.arg(i));
        station.key(Qt::Key_Return);
    }
    QCOMPARE(station.focus(), u"EdtPrecoMed"_s);
    QTest::keyClicks(QApplication::focusWidget(), u"8"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.focus(), u"SbConfirmar"_s);
    station.key(Qt::Key_Return);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.database.rows(
                 u"SELECT REGIAO, CODIGO, DESC_PRODUTO, PRECO_00, PRECO_07, PRECO_14, PRECO_21, PRECO_28, PRECO_35, "
                 "PRECO_42, PRECO_49, PRECO_56, PRECO_63, PRECO_70, PRECO_77, PRECO_84, PRECO_91, PRECO_MEDIO "
                 "FROM {TABPRECO}"_s),
        QStringList(u"01|M0001|Malha|1.5|2.5|3.5|4.5|5.5|6.5|7.5|8.5|9.5|10.5|11.5|12.5|13.5|14.5|8"_s));
}

void TestMatTabPreco::f6RepeatsThePriceAndComputesTheAverage()
{
    PriceStation station;
    station.openPrices();
    station.insertProduct(u"01"_s, u"M0001"_s);
    station.enter(u"EdtParcela01"_s, u"3"_s);
    station.enter(u"EdtParcela02"_s, u"3,2"_s);
    station.type(u"EdtParcela03"_s, u"4,45"_s);
    station.key(Qt::Key_F6);
    QStringList prices;
    for (int i = 1; i <= 14; ++i)
        prices.append(station.text(PriceStation::instalment(i)));
    QCOMPARE(prices.mid(0, 2), (QStringList{u"3,00"_s, u"3,20"_s}));
    QCOMPARE(prices.mid(3), QStringList(11, u"4,45"_s));
    station.type(u"EdtPrecoMed"_s, {});
    station.key(Qt::Key_F6);
    // (3 + 3.2 + 12 × 4.45) / 14 = 4.2571…
    station.key(Qt::Key_Return);
    QCOMPARE(station.text(u"EdtPrecoMed"_s), u"4,26"_s);
    // In another field it does nothing.
    station.type(u"EdtDesArt"_s, u"Malha"_s);
    station.key(Qt::Key_F6);
    station.confirm();
    QCOMPARE(station.stored(), QStringList(u"01|M0001|00|3|4.45|4.26"_s));
}

void TestMatTabPreco::cancellingLeavesTheRowAsItWas_data()
{
    QTest::addColumn<QString>("how");
    for (const char *how : {"SbDesistir", "Esc"})
        QTest::newRow(how) << QString::fromLatin1(how);
}

void TestMatTabPreco::cancellingLeavesTheRowAsItWas()
{
    PriceStation station;
    QFETCH(QString, how);
    const auto giveUp = [&] { how == u"Esc"_s ? station.key(Qt::Key_Escape) : station.click(how); };
    station.insertPrice({});
    station.openPrices();
    station.click(u"BtnAltera"_s);
    station.type(u"EdtParcela01"_s, u"99"_s);
    giveUp();
    QVERIFY(!station.isEditing());
    QCOMPARE(station.text(u"EdtParcela01"_s), u"10,00"_s);
    // Giving up is no leaving of the product.
    station.click(u"btnincluir"_s);
    station.enter(u"EdtRegiao"_s, u"01"_s);
    station.type(u"EdtCodArt"_s, u"M0001"_s);
    giveUp();
    QCOMPARE(station.shown(), u"M0001 01 00"_s);
    QCOMPARE(station.stored(), QStringList(u"01|M0001|00|10|20|15"_s));
}

void TestMatTabPreco::withoutTheRightNothingHappens()
{
    PriceStation station;
    station.insertPrice({});
    station.host.login(u"SEMDIREITO"_s, 1);
    station.openPrices();
    for (const QString &button : {u"btnincluir"_s, u"BtnAltera"_s, u"BtExcluir"_s, u"BtincluirCarlos"_s}) {
        station.click(button);
        QVERIFY2(!station.isEditing(), qPrintable(button));
        QVERIFY2(!station.child(u"PainelCopia"_s)->isVisible(), qPrintable(button));
    }
    QCOMPARE(station.lines(), 1);
}

void TestMatTabPreco::deletingAsksFirst()
{
    PriceStation station;
    for (const QString &code : {u"A"_s, u"B"_s, u"C"_s})
        station.insertPrice({.code = code});
    station.insertPrice({.code = u"B"_s, .colour = u"01"_s});
    station.openPrices();
    station.click(u"SpeedButton1"_s);
    station.click(u"SpeedButton3"_s);
    const QString question = u"Deseja eliminar este Registro?"_s;
    const QString title = u"Eliminação de Registro"_s;
    station.answers.expectAndType(question, Qt::Key_Return, title);
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.lines(), 4);
    station.answers.expect(question, QMessageBox::Yes, title);
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.listed(), (QStringList{u"A 01 00"_s, u"B 01 01"_s, u"C 01 00"_s}));
    QCOMPARE(station.shown(), u"B 01 01"_s);
    QCOMPARE(station.lines(), 3);
    QCOMPARE(station.value(u"SELECT COUNT(*) FROM QEN_LOG"_s).toInt(), 0);
}

void TestMatTabPreco::aLongTableIsMovedThrough()
{
    PriceStation station;
    Save save(station.database.connection());
    for (int i = 0; i < 450; ++i)
        station.insertPrice({.code = QString::number(1000 + i)});
    save.CommitRetaining();
    station.openPrices();
    QCOMPARE(station.shown(), u"1449 01 00"_s);
    QCOMPARE(station.grid()->currentIndex().row(), 449);
    station.click(u"BtnAltera"_s);
    station.enter(u"EdtParcela01"_s, u"7"_s);
    station.confirm();
    QCOMPARE(station.grid()->currentIndex().row(), 449);
    QCOMPARE(station.cell(449, 5), u"7,00"_s);
}

void TestMatTabPreco::withoutPricesThereIsNothingToMoveTo()
{
    PriceStation station;
    station.openPrices();
    for (const QString &button :
        {u"SpeedButton1"_s, u"SpeedButton2"_s, u"SpeedButton3"_s, u"SpeedButton4"_s, u"BtnAltera"_s, u"BtExcluir"_s})
        station.click(button);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.listed(), QStringList());
    QCOMPARE(station.shown(), u"  "_s);
}

QTEST_MAIN(TestMatTabPreco)
#include "tst_mattabpreco.moc"
