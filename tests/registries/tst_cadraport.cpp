// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/registries/raportstation.h"

#include "module/host_services/errors.h"

#include <QLabel>
#include <QTabWidget>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

/// The rapport screen: a rapport is loaded, its header filled in, saved, printed and found again.
class TestCadRaport : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void bearsItsCaptions();
    void loadsTheLinesInTheirOrder();
    void showsTheCompositionAndTheTechnicalData();
    void combinedLinesDoNotHideTheTechnicalData();
    void aPairWithoutARapportIsEmpty();

    void savesHeaderAndLines();
    void anEmptyGridDeletesTheRapportAndKeepsTheTechnicalData();
    void otherFabricsAndColoursAreLeftAlone();
    void emptyFieldsAreStoredAsTheyStand();
    void hostileTextIsStoredAsTyped();
    void aCellThatIsOpenIsSavedToo_data();
    void aCellThatIsOpenIsSavedToo();
    void nothingRemainsOfASaveThatFails();
    void whatAnotherStationSavedIsReplacedOnlyWhenWanted();
    void whatCouldNotBeReadIsNotReplaced_data();
    void whatCouldNotBeReadIsNotReplaced();
    void withoutTheRightNothingIsSaved();
    void withoutFabricOrColourNothingIsSaved();

    void anotherColourDiscardsWhatWasTyped();
    void passingTheColourAgainKeepsWhatWasTyped();
    void anotherFabricLoadsItsOwnLines();
    void coloursAreThoseOfTheFabricsStock();
    void theFabricsPictureIsShown();

    void closingWithUnsavedLinesAsks();
    void closingWithoutChangesDoesNotAsk();
    void theRapportIsPrinted();
    void enterWalksToTheLines();
};

void TestCadRaport::bearsItsCaptions()
{
    RaportStation station;
    station.openRaport();
    QCOMPARE(station.form()->windowTitle(), RaportStation::caption);
    const QList<std::pair<QString, QString>> texts{{u"BitBtn1"_s, u"&Gravar"_s}, {u"BitBtn3"_s, u"E&xcluir"_s},
        {u"BitBtn5"_s, u"&Imprimir"_s}, {u"BitBtn6"_s, u"Cad. &Alim."_s}, {u"btnConsultar"_s, u"&Consultar"_s},
        {u"BitBtn2"_s, u"Consultar"_s}};
    for (const auto &[name, text] : texts)
        QCOMPARE(station.text(name), text);
    const auto *pages = station.child<QTabWidget>(u"PageControl"_s);
    QCOMPARE(pages->tabText(0).remove(u'&'), u"Manutenção"_s);
    QCOMPARE(pages->tabText(1).remove(u'&'), u"Acesso"_s);
    QCOMPARE(pages->currentIndex(), 0);
    const QList<std::pair<QString, QString>> labels{{u"lbObs"_s, u"Observação"_s}, {u"lbDiametro"_s, u"Diâmetro"_s},
        {u"lbFinura"_s, u"Finura"_s}, {u"lbGramatura"_s, u"Gramatura"_s}, {u"lbLargura"_s, u"Largura"_s},
        {u"lbKgRolo"_s, u"KG Rolo"_s}, {u"lbAlimentadores"_s, u"Alimentadores"_s}};
    for (const auto &[name, text] : labels)
        QCOMPARE(station.text(name).remove(u'&'), text);
    QStringList titles;
    for (int column = 0; column < station.grid()->model()->columnCount(); ++column)
        titles.append(station.grid()->model()->headerData(column, Qt::Horizontal).toString());
    QCOMPARE(titles,
        (QStringList{u"Ordem"_s, u"Código Fio"_s, u"Cor"_s, u"Milímetros"_s, u"Alimentadores"_s, u"Agrupador"_s,
            u"Repetição"_s, u"Desperdício"_s, u"Descrição Fio"_s, u"Descrição Cor"_s}));
    QCOMPARE(station.focus(), u"EdtMaterial"_s);
}

void TestCadRaport::loadsTheLinesInTheirOrder()
{
    RaportStation station;
    station.line(u"M0001 000001 12 FIO30CO 000002 5"_s, u"Última"_s);
    station.line(u"M0001 000001 3 FIO30CO 000001 10"_s, u"Primeira"_s);
    station.line(u"M0001 000001 7 GONE 000009 99"_s, u"Meio"_s);
    station.line(u"M0001 000002 1 FIO150PES 000001 5"_s);
    station.openRaport();
    station.load();
    QCOMPARE(station.text(u"EdtDescMaterial"_s), u"Meia-malha PV 60/40"_s);
    QCOMPARE(station.text(u"EdtDescCor"_s), u"Cru"_s);
    QCOMPARE(station.shown(),
        (QStringList{u"3|FIO30CO|000001|10|16|FUNDO|2|1,50|Fio algodão 30/1 penteado|Cru"_s,
            u"7|GONE|000009|99|0|FUNDO|2|1,50||"_s,
            u"12|FIO30CO|000002|5|8|FUNDO|2|1,50|Fio algodão 30/1 penteado|Azul-marinho"_s}));
    // The first row that is read is the last line.
    QCOMPARE(station.text(u"EdtObs"_s), u"Última"_s);
    QCOMPARE(station.text(u"EdtAlimentadores"_s), u"24"_s);
}

void TestCadRaport::showsTheCompositionAndTheTechnicalData()
{
    RaportStation station;
    // Two stitch lengths with the feeders of the composition make no second line of it.
    station.feeders(u"M0001"_s, 29, 48);
    station.feeders(u"M0001"_s, 30, 48);
    station.openRaport();
    station.load();
    QCOMPARE(station.shown({}, u"DBGrid2"_s),
        (QStringList{u"FIO30CO|Fio algodão 30/1 penteado|000001|Cru|60,00000"_s,
            u"FIO150PES|Fio poliéster 150/48|000001|Cru|40,00000"_s}));
    QCOMPARE(station.grid(u"DBGrid2"_s)->model()->headerData(4, Qt::Horizontal).toString(), u"%Perc"_s);
    const QList<std::pair<QString, QString>> figures{{u"EdtDiametro"_s, u"30"_s}, {u"EdtFinura"_s, u"28"_s},
        {u"EdtLargura"_s, u"1,20"_s}, {u"EdtGramatura"_s, u"165"_s}, {u"EdtKgRolo"_s, u"20,000"_s}};
    for (const auto &[name, text] : figures)
        QCOMPARE(station.text(name), text);
}

void TestCadRaport::combinedLinesDoNotHideTheTechnicalData()
{
    RaportStation station;
    station.database.run(u"INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, ORDEM, PERC) "
                         "VALUES ('M0001', '000001', 'FIO30CO', '000002', 3, 10)"_s);
    station.openRaport();
    station.load();
    QCOMPARE(station.number(u"EdtDiametro"_s), 30.0);
    QCOMPARE(station.number(u"EdtKgRolo"_s), 20.0);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.technicalData(), QStringList(3, u"30|28|1.2|165|20"_s));
}

void TestCadRaport::aPairWithoutARapportIsEmpty()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    QCOMPARE(station.shown().size(), 3);
    for (const QString &colour : {u"000003"_s, u"' OR '1'"_s, u"%"_s, QString()}) {
        station.enter(u"EdtCor"_s, colour);
        QCOMPARE(station.shown(), QStringList());
        QCOMPARE(station.shown({}, u"DBGrid2"_s), QStringList());
        QCOMPARE(station.text(u"EdtObs"_s), QString());
        QCOMPARE(station.number(u"EdtDiametro"_s), 0.0);
        QCOMPARE(station.text(u"EdtAlimentadores"_s), u"0"_s);
    }
}

void TestCadRaport::savesHeaderAndLines()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.enter(u"EdtObs"_s, u"Conferir a 1ª volta"_s);
    station.enter(u"EdtDiametro"_s, u"34"_s);
    station.enter(u"EdtFinura"_s, u"24,5"_s);
    station.enter(u"EdtGramatura"_s, u"180"_s);
    station.enter(u"EdtLargura"_s, u"1,15"_s);
    station.enter(u"EdtKgRolo"_s, u"22,125"_s);
    station.click(u"BitBtn1"_s);
    const QString note = u"|FUNDO|2|1.5|Conferir a 1ª volta"_s;
    QCOMPARE(station.stored(),
        (QStringList{
            u"1|FIO30CO|000001|10"_s + note, u"2|FIO30CO|000002|5"_s + note, u"3|FIO30CO|000001|15"_s + note}));
    QCOMPARE(station.technicalData(), QStringList(2, u"34|24.5|1.15|180|22.125"_s));
    QCOMPARE(station.technicalData(u"M0002"_s), QStringList{u"34|24|0.9|220|25"_s});
    // The screen is ready for the next one.
    for (const QString &field : {u"EdtMaterial"_s, u"EdtDescMaterial"_s, u"EdtCor"_s, u"EdtDescCor"_s, u"EdtObs"_s})
        QCOMPARE(station.text(field), QString());
    QCOMPARE(station.shown(), QStringList());
    QCOMPARE(station.shown({}, u"DBGrid2"_s), QStringList());
    QCOMPARE(station.focus(), u"EdtMaterial"_s);
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
    QCOMPARE(station.value(u"SELECT COUNT(*) FROM QEN_LOG"_s).toInt(), 0);
    station.load();
    QCOMPARE(station.text(u"EdtObs"_s), u"Conferir a 1ª volta"_s);
    QCOMPARE(station.text(u"EdtKgRolo"_s), u"22,125"_s);
}

void TestCadRaport::anEmptyGridDeletesTheRapportAndKeepsTheTechnicalData()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.enter(u"EdtKgRolo"_s, u"19"_s);
    for (int i = 0; i < 3; ++i) {
        station.answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes, u"Eliminação de Registro"_s);
        station.click(u"BitBtn3"_s);
    }
    QCOMPARE(station.shown(), QStringList());
    QCOMPARE(station.stored().size(), 3); // nothing is written before it is saved
    station.click(u"BitBtn3"_s); // without a line there is nothing to ask
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(), QStringList());
    QCOMPARE(station.technicalData(), QStringList(2, u"30|28|1.2|165|19"_s));
}

void TestCadRaport::otherFabricsAndColoursAreLeftAlone()
{
    RaportStation station;
    station.threeLines();
    station.line(u"M0001 000002 1 FIO150PES 000001 5"_s);
    station.line(u"M0002 000001 1 FIO150PES 000001 5"_s);
    station.openRaport();
    station.load();
    station.answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    station.click(u"BitBtn3"_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored().size(), 2);
    const QStringList other{u"1|FIO150PES|000001|5|FUNDO|2|1.5|Nota"_s};
    QCOMPARE(station.stored(u"M0001"_s, u"000002"_s), other);
    QCOMPARE(station.stored(u"M0002"_s), other);
    QCOMPARE(station.technicalData(u"M0002"_s), QStringList{u"34|24|0.9|220|25"_s});
}

void TestCadRaport::emptyFieldsAreStoredAsTheyStand()
{
    RaportStation station;
    station.openRaport();
    station.load();
    station.grid()->setFocus();
    // Of the first line the group alone, of the second the yarn alone.
    station.key(Qt::Key_Return);
    station.typeCells({{}, {}, {}, u"FUNDO"_s, {}, {}, u"FIO30CO"_s});
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(), (QStringList{u"1||||FUNDO|||"_s, u"2|FIO30CO||||||"_s}));
    station.load();
    QCOMPARE(station.shown(u"CodigoFio;Cor;Milimetros;Alimentadores"_s), (QStringList{u"|||0"_s, u"FIO30CO|||0"_s}));
}

void TestCadRaport::hostileTextIsStoredAsTyped()
{
    RaportStation station;
    station.openRaport();
    station.load(u"M'1\"%"_s, u"0'\"%;"_s);
    station.enter(u"EdtObs"_s, u"d'água {RAPORT} -- ; \"50%\""_s);
    station.grid()->setFocus();
    station.key(Qt::Key_Return);
    station.typeCells({u"' OR '1'='1"_s, u"o'c"_s, u"7"_s, u"a'b"_s});
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(u"M''1\"%"_s, u"0''\"%;"_s),
        QStringList{u"1|' OR '1'='1|o'c|7|a'b|||d'água {RAPORT} -- ; \"50%\""_s});
}

void TestCadRaport::aCellThatIsOpenIsSavedToo_data()
{
    QTest::addColumn<bool>("byMnemonic");
    QTest::newRow("click") << false;
    QTest::newRow("Alt+G") << true;
}

void TestCadRaport::aCellThatIsOpenIsSavedToo()
{
    QFETCH(bool, byMnemonic);
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(1, u"Milimetros"_s);
    station.type(u"15"_s);
    QVERIFY(QApplication::focusWidget() != station.grid());
    if (byMnemonic)
        station.key(Qt::Key_G, Qt::AltModifier);
    else
        station.click(u"BitBtn1"_s);
    QTRY_COMPARE(station.focus(), u"EdtMaterial"_s);
    QCOMPARE(station.stored()[1], u"2|FIO30CO|000002|15|FUNDO|2|1.5|Nota"_s);
}

void TestCadRaport::nothingRemainsOfASaveThatFails()
{
    RaportStation station;
    station.threeLines();
    station.database.run(u"ALTER TABLE {RAPORT} ADD CONSTRAINT FEW_LINES CHECK (ORDEM < 3 OR OBSERVACAO = 'Nota')"_s);
    const QStringList before = station.stored();
    station.openRaport();
    station.load();
    station.enter(u"EdtKgRolo"_s, u"1"_s);
    station.enter(u"EdtObs"_s, u"Outra"_s);
    expectFailure(station.answers, RaportStation::caption, u"O banco de dados recusou a operação. Nada foi gravado."_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(), before);
    QCOMPARE(station.technicalData(), QStringList(2, u"30|28|1.2|165|20"_s));
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
    // What was typed is still there.
    QCOMPARE(station.shown().size(), 3);
    QCOMPARE(station.text(u"EdtObs"_s), u"Outra"_s);
}

void TestCadRaport::whatAnotherStationSavedIsReplacedOnlyWhenWanted()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.enter(u"EdtObs"_s, u"Minha"_s);
    station.database.run(u"UPDATE {RAPORT} SET MILIMETROS = 7 WHERE ORDEM = 2"_s);
    const QStringList theirs = station.stored();
    const QString question = u"Outra estação gravou este raport depois que ele foi aberto aqui. Deseja substituí-lo?"_s;
    station.answers.expectAndType(question, Qt::Key_Return, RaportStation::caption); // No is the default
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(), theirs);
    QCOMPARE(station.text(u"EdtObs"_s), u"Minha"_s); // nothing that was typed is lost
    station.answers.expect(question, QMessageBox::Yes, RaportStation::caption);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored()[1], u"2|FIO30CO|000002|5|FUNDO|2|1.5|Minha"_s);
    QCOMPARE(station.text(u"EdtMaterial"_s), QString());
}

void TestCadRaport::whatCouldNotBeReadIsNotReplaced_data()
{
    QTest::addColumn<QString>("broken");
    QTest::newRow("lines") << u"RAPORT.ORDEM DESC"_s;
    QTest::newRow("composition") << u"COMP_MAT.ORDEM DESC"_s;
}

void TestCadRaport::whatCouldNotBeReadIsNotReplaced()
{
    QFETCH(QString, broken);
    RaportStation station;
    station.threeLines();
    const QStringList before = station.stored();
    station.openRaport();
    station.load(u"M0001"_s, u"000002"_s);
    station.tabela.IBDatabase->setObserver([broken](const QString &statement) {
        if (statement.contains(broken))
            throw EDatabaseError(EDatabaseError::Category::Connection, {}, u"broken"_s, statement);
    });
    expectFailure(station.answers, RaportStation::caption, u"A conexão com o banco de dados falhou."_s);
    station.enter(u"EdtCor"_s, u"000001"_s);
    station.tabela.IBDatabase->setObserver({});
    expectInformation(station.answers, RaportStation::caption,
        u"O raport não foi lido por inteiro. Passe de novo pela cor. Impossível Continuar."_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(), before);
    QCOMPARE(station.technicalData(), QStringList(2, u"30|28|1.2|165|20"_s));
    // Once it is read it is saved as ever.
    QTRY_COMPARE(station.focus(), u"EdtCor"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.shown().size(), 3);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(), before);
    QCOMPARE(station.text(u"EdtMaterial"_s), QString());
}

void TestCadRaport::withoutTheRightNothingIsSaved()
{
    RaportStation station;
    station.threeLines();
    station.host.login(u"SEMDIREITO"_s, 1);
    station.openRaport();
    station.load();
    const QStringList before = station.stored();
    station.enter(u"EdtObs"_s, u"Outra"_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(), before);
    QCOMPARE(station.text(u"EdtObs"_s), u"Outra"_s);
    station.database.run(
        u"INSERT INTO QEN_DIREITO (USUARIO, TELA, LETRA, NIVEL) VALUES ('SEMDIREITO', 'TfmCadRaport', 'A', '0')"_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored()[0].section(u'|', -1), u"Outra"_s);
}

void TestCadRaport::withoutFabricOrColourNothingIsSaved()
{
    RaportStation station;
    station.openRaport();
    const QString text = u"Informe o material e a cor. Impossível Continuar."_s;
    expectInformation(station.answers, RaportStation::caption, text);
    station.click(u"BitBtn1"_s);
    QTRY_COMPARE(station.focus(), u"EdtMaterial"_s);
    station.enter(u"EdtMaterial"_s, u"M0001"_s);
    expectInformation(station.answers, RaportStation::caption, text);
    station.click(u"BitBtn1"_s);
    QTRY_COMPARE(station.focus(), u"EdtCor"_s);
    QCOMPARE(station.database.count(u"RAPORT"_s), 0);
}

void TestCadRaport::anotherColourDiscardsWhatWasTyped()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(0, u"Milimetros"_s);
    station.typeCells({u"5"_s});
    station.enter(u"EdtCor"_s, u"000002"_s);
    QCOMPARE(station.shown(), QStringList());
    station.enter(u"EdtCor"_s, u"000001"_s);
    QCOMPARE(station.shown(u"Milimetros"_s), (QStringList{u"10"_s, u"5"_s, u"15"_s}));
}

void TestCadRaport::passingTheColourAgainKeepsWhatWasTyped()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(0, u"Milimetros"_s);
    station.typeCells({u"5"_s});
    station.enter(u"EdtCor"_s, u"000001"_s);
    station.enter(u"EdtMaterial"_s, u"M0001"_s);
    QCOMPARE(station.shown(u"Milimetros"_s), (QStringList{u"5"_s, u"5"_s, u"15"_s}));
}

void TestCadRaport::anotherFabricLoadsItsOwnLines()
{
    RaportStation station;
    station.threeLines();
    station.line(u"M0002 000001 1 FIO150PES 000001 5"_s, u"Da ribana"_s);
    station.openRaport();
    station.load();
    // Saving at once must not put the lines of the one under the name of the other.
    station.enter(u"EdtMaterial"_s, u"M0002"_s);
    QCOMPARE(station.shown(u"CodigoFio"_s), QStringList{u"FIO150PES"_s});
    QCOMPARE(station.text(u"EdtObs"_s), u"Da ribana"_s);
    QCOMPARE(station.number(u"EdtDiametro"_s), 34.0);
}

void TestCadRaport::coloursAreThoseOfTheFabricsStock()
{
    RaportStation station;
    station.database.run(u"INSERT INTO {CADCOR} (COR, DESCRICAO) VALUES ('000099', 'Preto')"_s);
    station.stock(u"M0001"_s, u"000099"_s);
    station.stock(u"M0001"_s, u"000001"_s, u"L2"_s);
    station.openRaport();
    QStringList colours;
    station.enter(u"EdtMaterial"_s, u"M0001"_s);
    expectSearchAndLeave(station.answers, &colours, u"Cores"_s);
    station.click(u"PqCor"_s);
    // One of a description, the highest code; an item that is not active counts as well.
    QCOMPARE(colours, (QStringList{u"000001"_s, u"000002"_s, u"000099"_s}));
    station.enter(u"EdtMaterial"_s, u"M0002"_s);
    expectSearchAndLeave(station.answers, &colours, u"Cores"_s);
    station.click(u"PqCor"_s);
    QCOMPARE(colours, QStringList());
    station.enter(u"EdtMaterial"_s, u"M0001"_s);
    station.child(u"EdtCor"_s)->setFocus();
    expectSearchAndTake(station.answers, u"marinho"_s);
    station.key(Qt::Key_F4);
    QCOMPARE(station.text(u"EdtCor"_s), u"000002"_s);
    QCOMPARE(station.text(u"EdtDescCor"_s), u"Azul-marinho"_s);
}

void TestCadRaport::theFabricsPictureIsShown()
{
    RaportStation station;
    const QTemporaryDir folder;
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY(picture.save(folder.filePath(u"m0001.png"_s)));
    station.host.settings().setValue(u"Pastas/imagens"_s, folder.path());
    station.openRaport();
    const auto *shown = station.child<QLabel>(u"Image"_s);
    QVERIFY(shown->pixmap().isNull());
    station.type(u"EdtMaterial"_s, u"M0001"_s);
    QVERIFY(!shown->pixmap().isNull());
    station.type(u"EdtMaterial"_s, u"M0002"_s);
    QVERIFY(shown->pixmap().isNull());
}

void TestCadRaport::closingWithUnsavedLinesAsks()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(0, u"Milimetros"_s);
    station.typeCells({u"5"_s});
    const QString question = u"O raport não foi gravado. Deseja abandonar as alterações?"_s;
    station.answers.expectAndType(question, Qt::Key_Return, RaportStation::caption); // No is the default
    station.click(u"BitBtn4"_s);
    QVERIFY(station.form() && station.form()->isVisible());
    const QPointer<QWidget> screen = station.form();
    station.answers.expect(question, QMessageBox::Yes);
    QTest::mouseClick(station.child(u"BitBtn4"_s), Qt::LeftButton);
    QTRY_VERIFY(screen.isNull());
    QCOMPARE(station.stored()[0].section(u'|', 3, 3), u"10"_s);
}

void TestCadRaport::closingWithoutChangesDoesNotAsk()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(2, u"Desperdicio"_s);
    station.key(Qt::Key_Return); // a line is begun, nothing is typed in it
    QCOMPARE(station.shown().size(), 4);
    const QPointer<QWidget> screen = station.form();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QTRY_VERIFY(screen.isNull());
}

void TestCadRaport::theRapportIsPrinted()
{
    RaportStation station;
    station.threeLines();
    station.line(u"M0001 000002 1 FIO150PES 000001 5"_s, u"De outra cor"_s);
    station.openRaport();
    expectInformation(station.answers, RaportStation::caption, u"Informe o material e a cor. Impossível Continuar."_s);
    station.click(u"BitBtn5"_s);
    station.load();
    station.goTo(2, u"Desperdicio"_s);
    station.key(Qt::Key_Return); // an empty line is not printed
    station.click(u"BitBtn5"_s);
    QCOMPARE(station.host.recordedReports().size(), 1);
    const RecordedReport &report = station.host.recordedReports().first();
    QCOMPARE(report.name, u"WMalRaport"_s);
    QCOMPARE(report.kind, ReportCall::Kind::Graphic);
    QCOMPARE(report.dataSets, (QStringList{u"QryRaport"_s, u"TbDados"_s}));
    QCOMPARE(report.rowCounts, (QList<int>{2, 3})); // a header for each observation of the fabric
    QCOMPARE(station.shown().size(), 3);
}

void TestCadRaport::enterWalksToTheLines()
{
    RaportStation station;
    station.openRaport();
    for (const QString &field : {u"EdtMaterial"_s, u"EdtCor"_s, u"EdtObs"_s, u"EdtDiametro"_s, u"EdtFinura"_s,
             u"EdtGramatura"_s, u"EdtLargura"_s, u"EdtKgRolo"_s, u"DBGrid1"_s}) {
        QCOMPARE(station.focus(), field);
        station.key(Qt::Key_Return);
    }
}

QTEST_MAIN(TestCadRaport)
#include "tst_cadraport.moc"
