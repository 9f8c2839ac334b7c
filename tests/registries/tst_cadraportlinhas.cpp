// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/registries/raportstation.h"

#include <QMenu>

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

namespace {

/// How many pixels of a shade stand one above the other in the middle of the stripes.
int heightOf(const RaportStation &station, const QColor &shade)
{
    QWidget *picture = station.child(u"Desenho"_s);
    const QImage image = picture->grab().toImage();
    int pixels = 0;
    for (int y = 0; y < image.height(); ++y)
        pixels += image.pixelColor(picture->width() / 4, y) == shade ? 1 : 0;
    return pixels;
}

const QColor rawWhite(0xef, 0xe6, 0xd0);
const QColor navyBlue(0x1b, 0x2a, 0x49);

} // namespace

/// The lines of a rapport: typed, looked up, copied, moved, deleted and drawn.
class TestCadRaportLinhas : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void linesAreTypedByTheKeyboardAlone();
    void anEmptyLineAtTheEndGoesAgain();
    void inALineThatIsOnlyBegunNoOtherIsMeant_data();
    void inALineThatIsOnlyBegunNoOtherIsMeant();
    void theArrowsLeaveTheCellForTheNextLine();
    void escGivesTheCellItsOldText();
    void codesAreTrimmedAndDescribed();
    void feedersFollowTheStitchLength();
    void aStitchLengthWithoutSettingHasNoFeeders();
    void theFirstOfTwoSettingsIsTaken();
    void theTotalFollowsEveryChange();

    void yarnsAreLookedUpAmongTheActiveOnes();
    void coloursAreLookedUpInTheYarnsStock();
    void groupsAreLookedUpFromAnOpenCell();
    void aLookUpWithoutALineBeginsOne();
    void theCompositionIsLookedAtOnly();

    void linesAreInsertedCopiedAndMoved();
    void markedLinesAreCopiedAndMovedTogether();
    void linesSavedAfterMovingAreNumberedAnew();
    void deletingAsksAndNoIsTheDefault();
    void theButtonsDoWhatTheKeysDo();
    void theMenuOffersNoSorting();

    void thePictureFollowsTheLines();
    void aClickInThePictureFindsTheLine();
    void aColourWithoutShadeIsDrawnGrey();
    void theFeedersRegistryIsOpenedForTheFabric();
    void newFeedersAreSeenOnReturn();
};

void TestCadRaportLinhas::linesAreTypedByTheKeyboardAlone()
{
    RaportStation station;
    station.openRaport();
    station.load();
    station.grid()->setFocus();
    station.key(Qt::Key_Return);
    station.typeCells({u"FIO30CO"_s, u"000002"_s, u"5"_s, u"LISTRA"_s, u"2"_s, u"1,25"_s});
    station.typeCells({u"FIO150PES"_s, u"000001"_s, u"15"_s, u"FUNDO"_s, u"1"_s, u"0"_s});
    QCOMPARE(station.shown().first(2),
        (QStringList{u"1|FIO30CO|000002|5|8|LISTRA|2|1,25|Fio algodão 30/1 penteado|Azul-marinho"_s,
            u"2|FIO150PES|000001|15|24|FUNDO|1|0,00|Fio poliéster 150/48|Cru"_s}));
    QCOMPARE(station.text(u"EdtAlimentadores"_s), u"32"_s);
    station.key(Qt::Key_G, Qt::AltModifier);
    QTRY_COMPARE(
        station.stored(), (QStringList{u"1|FIO30CO|000002|5|LISTRA|2|1.25|"_s, u"2|FIO150PES|000001|15|FUNDO|1|0|"_s}));
}

void TestCadRaportLinhas::anEmptyLineAtTheEndGoesAgain()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(2, u"Desperdicio"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.shown(u"Ordem"_s), (QStringList{u"1"_s, u"2"_s, u"3"_s, u"4"_s}));
    QCOMPARE(station.grid()->currentIndex().column(), station.grid()->columnOf(u"CodigoFio"_s));
    station.key(Qt::Key_Down); // there is one already
    QCOMPARE(station.shown().size(), 4);
    station.key(Qt::Key_Up);
    QCOMPARE(station.shown().size(), 3);
    station.key(Qt::Key_Down);
    QCOMPARE(station.shown().size(), 4);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored().size(), 3);
}

void TestCadRaportLinhas::inALineThatIsOnlyBegunNoOtherIsMeant_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QString>("button");
    QTest::newRow("deleted") << Qt::Key_Delete << u"BitBtn3"_s;
    QTest::newRow("copied") << Qt::Key_D << u"BtLinhaCopiar"_s;
    QTest::newRow("moved up") << Qt::Key_Up << u"BtLinhaSobe"_s;
    QTest::newRow("moved down") << Qt::Key_Down << u"BtLinhaDesce"_s;
}

void TestCadRaportLinhas::inALineThatIsOnlyBegunNoOtherIsMeant()
{
    QFETCH(Qt::Key, key);
    QFETCH(QString, button);
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    for (const bool byKey : {true, false}) {
        station.goTo(2, u"Desperdicio"_s);
        station.key(Qt::Key_Return);
        QCOMPARE(station.shown().size(), 4);
        byKey ? station.key(key, Qt::ControlModifier) : station.click(button);
        QCOMPARE(station.shown(u"Ordem;Milimetros"_s), (QStringList{u"1|10"_s, u"2|5"_s, u"3|15"_s}));
    }
    // A line is inserted where the user was.
    station.goTo(2, u"Desperdicio"_s);
    station.key(Qt::Key_Return);
    station.key(Qt::Key_Insert);
    QCOMPARE(station.shown(u"Ordem;Milimetros"_s), (QStringList{u"1|10"_s, u"2|5"_s, u"3|15"_s, u"4|"_s}));
    // Of another line than the one that was begun the question is asked.
    station.goTo(0, u"Milimetros"_s);
    station.answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    station.click(u"BitBtn3"_s);
    QCOMPARE(station.shown(u"Ordem;Milimetros"_s), (QStringList{u"1|5"_s, u"2|15"_s}));
}

void TestCadRaportLinhas::theArrowsLeaveTheCellForTheNextLine()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(0, u"Milimetros"_s);
    for (const QString &millimetres : {u"15"_s, u"10"_s, u"5"_s}) {
        station.type(millimetres);
        station.key(Qt::Key_Down);
        QCOMPARE(QApplication::focusWidget(), station.grid());
    }
    QCOMPARE(station.shown(u"Milimetros;Alimentadores"_s), (QStringList{u"15|24"_s, u"10|16"_s, u"5|8"_s, u"|"_s}));
    station.type(u"FIO30CO"_s);
    station.key(Qt::Key_Up);
    QCOMPARE(station.shown(u"CodigoFio"_s).last(), u"FIO30CO"_s);
    QCOMPARE(station.grid()->currentIndex().row(), 2);
}

void TestCadRaportLinhas::escGivesTheCellItsOldText()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(0, u"Milimetros"_s);
    station.type(u"99"_s);
    station.key(Qt::Key_Escape);
    QTRY_COMPARE(QApplication::focusWidget(), station.grid());
    QVERIFY(station.form() && station.form()->isVisible());
    QCOMPARE(station.shown(u"Milimetros"_s).first(), u"10"_s);
}

void TestCadRaportLinhas::codesAreTrimmedAndDescribed()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(0, u"CodigoFio"_s);
    station.typeCells({u" FIO150PES "_s, u"000003 "_s});
    QCOMPARE(station.shown(u"CodigoFio;DescricaoFio;Cor;DescricaoCor"_s).first(),
        u"FIO150PES|Fio poliéster 150/48|000003|Preto"_s);
    QCOMPARE(station.text(u"lbLinha"_s), u"Linha 1: Fio poliéster 150/48 · Preto"_s);
    station.goTo(0, u"CodigoFio"_s);
    station.typeCells({u"NADA"_s, u"999999"_s});
    QCOMPARE(station.shown(u"CodigoFio;DescricaoFio;Cor;DescricaoCor"_s).first(), u"NADA||999999|"_s);
}

void TestCadRaportLinhas::feedersFollowTheStitchLength()
{
    RaportStation station;
    station.feeders(u"M0002"_s, 5, 99);
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(0, u"Milimetros"_s);
    station.typeCells({u"5"_s});
    QCOMPARE(station.shown(u"Alimentadores"_s), (QStringList{u"8"_s, u"8"_s, u"24"_s}));
    // They are looked up, not typed.
    QVERIFY(!(
        station.grid()->model()->flags(station.grid()->model()->index(0, station.grid()->columnOf(u"Alimentadores"_s)))
        & Qt::ItemIsEditable));
}

void TestCadRaportLinhas::aStitchLengthWithoutSettingHasNoFeeders()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(0, u"Milimetros"_s);
    station.typeCells({u"11"_s});
    QCOMPARE(station.shown(u"Alimentadores"_s), (QStringList{u"0"_s, u"8"_s, u"24"_s}));
    QCOMPARE(station.text(u"EdtAlimentadores"_s), u"32"_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored()[0].section(u'|', 3, 3), u"11"_s);
}

void TestCadRaportLinhas::theFirstOfTwoSettingsIsTaken()
{
    RaportStation station;
    station.feeders(u"M0001"_s, 20, 30);
    station.feeders(u"M0001"_s, 20, 32);
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(0, u"Milimetros"_s);
    station.typeCells({u"20"_s});
    const QString feeders = station.shown(u"Alimentadores"_s).first();
    QVERIFY(feeders == u"30"_s || feeders == u"32"_s);
}

void TestCadRaportLinhas::theTotalFollowsEveryChange()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    QCOMPARE(station.text(u"EdtAlimentadores"_s), u"48"_s);
    station.goTo(1, u"Milimetros"_s);
    station.typeCells({u"15"_s});
    QCOMPARE(station.text(u"EdtAlimentadores"_s), u"64"_s);
    QCOMPARE(station.grid()->currentIndex().row(), 1); // the cursor stays on the line
    station.key(Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(station.text(u"EdtAlimentadores"_s), u"88"_s);
    station.answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    station.key(Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(station.text(u"EdtAlimentadores"_s), u"64"_s);
}

void TestCadRaportLinhas::yarnsAreLookedUpAmongTheActiveOnes()
{
    RaportStation station;
    station.database.run(u"UPDATE {MATERIAL} SET ATIVO = 'N' WHERE CODIGO = 'M0001'"_s);
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(1, u"CodigoFio"_s);
    QStringList yarns;
    expectSearchAndLeave(station.answers, &yarns, u"Fios"_s);
    station.key(Qt::Key_F4);
    // What says nothing of itself is active.
    QCOMPARE(yarns, (QStringList{u"FIO150PES"_s, u"FIO20ELA"_s, u"FIO30CO"_s, u"M0002"_s}));
    QCOMPARE(station.shown(u"CodigoFio"_s)[1], u"FIO30CO"_s);
    station.goTo(1, u"CodigoFio"_s);
    expectSearchAndTake(station.answers, u"150/48"_s, u"Fios"_s);
    station.key(Qt::Key_F4);
    QCOMPARE(station.shown(u"CodigoFio;DescricaoFio"_s)[1], u"FIO150PES|Fio poliéster 150/48"_s);
}

void TestCadRaportLinhas::coloursAreLookedUpInTheYarnsStock()
{
    RaportStation station;
    station.stock(u"FIO30CO"_s, u"000003"_s);
    station.stock(u"FIO30CO"_s, u"000001"_s);
    station.stock(u"FIO150PES"_s, u"000002"_s);
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(0, u"Cor"_s);
    QStringList colours;
    expectSearchAndLeave(station.answers, &colours, u"Cores do fio"_s);
    station.key(Qt::Key_F4);
    QCOMPARE(colours, (QStringList{u"000001"_s, u"000003"_s}));
    station.goTo(0, u"Cor"_s);
    expectSearchAndTake(station.answers, u"preto"_s);
    station.key(Qt::Key_F4);
    QCOMPARE(station.shown(u"Cor;DescricaoCor"_s).first(), u"000003|Preto"_s);
}

void TestCadRaportLinhas::groupsAreLookedUpFromAnOpenCell()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(0, u"Agrupador"_s);
    station.type(u"X"_s);
    QVERIFY(QApplication::focusWidget() != station.grid());
    expectSearchAndTake(station.answers, u"LISTRA"_s, u"Agrupadores"_s);
    station.key(Qt::Key_F4);
    QCOMPARE(station.shown(u"Agrupador"_s).first(), u"LISTRA"_s);
    // Where there is nothing to look up, nothing opens.
    station.goTo(0, u"Milimetros"_s);
    station.key(Qt::Key_F4);
}

void TestCadRaportLinhas::aLookUpWithoutALineBeginsOne()
{
    RaportStation station;
    station.openRaport();
    station.load();
    station.grid()->setFocus();
    expectSearchAndTake(station.answers, u"FIO30CO"_s, u"Fios"_s);
    station.key(Qt::Key_F4);
    QCOMPARE(station.shown(u"Ordem;CodigoFio;DescricaoFio"_s), QStringList{u"1|FIO30CO|Fio algodão 30/1 penteado"_s});
}

void TestCadRaportLinhas::theCompositionIsLookedAtOnly()
{
    RaportStation station;
    station.stock(u"FIO150PES"_s, u"000002"_s);
    station.openRaport();
    station.load();
    TDBGrid *composition = station.grid(u"DBGrid2"_s);
    const QStringList before = station.shown({}, u"DBGrid2"_s);
    composition->setFocus();
    composition->setCurrentIndex(composition->model()->index(0, composition->columnOf(u"CodigoFio"_s)));
    expectSearchAndTake(station.answers, u"FIO150PES"_s, u"Fios"_s);
    station.key(Qt::Key_F4);
    composition->setFocus();
    composition->setCurrentIndex(composition->model()->index(1, composition->columnOf(u"Cor"_s)));
    QStringList colours;
    expectSearchAndLeave(station.answers, &colours, u"Cores do fio"_s);
    station.key(Qt::Key_F4);
    QCOMPARE(colours, QStringList{u"000002"_s});
    QCOMPARE(station.shown({}, u"DBGrid2"_s), before);
    QCOMPARE(station.shown(), QStringList());
}

void TestCadRaportLinhas::linesAreInsertedCopiedAndMoved()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(1, u"Milimetros"_s);
    station.key(Qt::Key_Up, Qt::ControlModifier);
    QCOMPARE(station.shown(u"Ordem;Milimetros"_s), (QStringList{u"1|5"_s, u"2|10"_s, u"3|15"_s}));
    station.key(Qt::Key_Up, Qt::ControlModifier); // it is the first already
    station.key(Qt::Key_Down, Qt::ControlModifier);
    station.key(Qt::Key_Down, Qt::ControlModifier);
    QCOMPARE(station.shown(u"Ordem;Milimetros"_s), (QStringList{u"1|10"_s, u"2|15"_s, u"3|5"_s}));
    station.key(Qt::Key_Down, Qt::ControlModifier);
    station.key(Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(
        station.shown(u"Ordem;CodigoFio;Cor;DescricaoCor;Milimetros;Alimentadores;Agrupador;Repeticao;Desperdicio"_s)
            .last(),
        u"4|FIO30CO|000002|Azul-marinho|5|8|FUNDO|2|1,50"_s);
    QCOMPARE(station.grid()->currentIndex().row(), 3);
    station.goTo(0, u"CodigoFio"_s);
    station.key(Qt::Key_Insert);
    QCOMPARE(station.shown(u"Ordem;Milimetros"_s), (QStringList{u"1|"_s, u"2|10"_s, u"3|15"_s, u"4|5"_s, u"5|5"_s}));
    QCOMPARE(station.grid()->currentIndex().row(), 0);
}

void TestCadRaportLinhas::markedLinesAreCopiedAndMovedTogether()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(0, u"Milimetros"_s);
    station.key(Qt::Key_Down, Qt::ShiftModifier);
    station.key(Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(station.shown(u"Milimetros"_s), (QStringList{u"10"_s, u"5"_s, u"10"_s, u"5"_s, u"15"_s}));
    // The copies are marked now.
    station.key(Qt::Key_Down, Qt::ControlModifier);
    QCOMPARE(station.shown(u"Milimetros"_s), (QStringList{u"10"_s, u"5"_s, u"15"_s, u"10"_s, u"5"_s}));
    station.key(Qt::Key_Down, Qt::ControlModifier);
    station.key(Qt::Key_Up, Qt::ControlModifier);
    station.key(Qt::Key_Up, Qt::ControlModifier);
    QCOMPARE(station.shown(u"Ordem;Milimetros"_s), (QStringList{u"1|10"_s, u"2|10"_s, u"3|5"_s, u"4|5"_s, u"5|15"_s}));
    station.answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    station.key(Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(station.shown(u"Ordem;Milimetros"_s), (QStringList{u"1|10"_s, u"2|5"_s, u"3|15"_s}));
}

void TestCadRaportLinhas::linesSavedAfterMovingAreNumberedAnew()
{
    RaportStation station;
    station.line(u"M0001 000001 4 FIO30CO 000001 10"_s);
    station.line(u"M0001 000001 9 FIO30CO 000002 5"_s);
    station.line(u"M0001 000001 20 FIO150PES 000001 15"_s);
    station.openRaport();
    station.load();
    station.goTo(2, u"CodigoFio"_s);
    station.key(Qt::Key_Up, Qt::ControlModifier);
    station.goTo(0, u"CodigoFio"_s);
    station.answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    station.click(u"BitBtn3"_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(),
        (QStringList{u"1|FIO150PES|000001|15|FUNDO|2|1.5|Nota"_s, u"2|FIO30CO|000002|5|FUNDO|2|1.5|Nota"_s}));
}

void TestCadRaportLinhas::deletingAsksAndNoIsTheDefault()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(1, u"CodigoFio"_s);
    station.answers.expectAndType(u"Deseja eliminar este Registro?"_s, Qt::Key_Return, u"Eliminação de Registro"_s);
    station.key(Qt::Key_X, Qt::AltModifier);
    QTRY_VERIFY(station.answers.allCame());
    QCOMPARE(station.shown().size(), 3);
    station.answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes, u"Eliminação de Registro"_s);
    station.key(Qt::Key_X, Qt::AltModifier);
    QTRY_COMPARE(station.shown(u"Ordem;Milimetros"_s), (QStringList{u"1|10"_s, u"2|15"_s}));
    QCOMPARE(station.form()->focusWidget()->objectName(), u"DBGrid1"_s);
    QCOMPARE(station.stored().size(), 3);
}

void TestCadRaportLinhas::theButtonsDoWhatTheKeysDo()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(2, u"Milimetros"_s);
    station.type(u"10"_s); // the cell is still open
    station.click(u"BtLinhaSobe"_s);
    QCOMPARE(station.shown(u"Milimetros"_s), (QStringList{u"10"_s, u"10"_s, u"5"_s}));
    station.click(u"BtLinhaSobe"_s);
    station.click(u"BtLinhaDesce"_s);
    station.click(u"BtLinhaDesce"_s);
    station.click(u"BtLinhaCopiar"_s);
    QCOMPARE(station.shown(u"Milimetros"_s), (QStringList{u"10"_s, u"5"_s, u"10"_s, u"10"_s}));
    station.click(u"BtLinhaInserir"_s);
    QCOMPARE(station.shown(u"Milimetros"_s), (QStringList{u"10"_s, u"5"_s, u"10"_s, QString(), u"10"_s}));
    QCOMPARE(station.focus(), u"DBGrid1"_s);
}

void TestCadRaportLinhas::theMenuOffersNoSorting()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(1, u"Milimetros"_s);
    station.key(Qt::Key_Menu);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    QVERIFY(menu);
    QStringList texts;
    for (const QAction *action : menu->actions()) {
        if (action->isVisible() && !action->isSeparator())
            texts.append(action->text().remove(u'&').section(u'\t', 0, 0));
    }
    menu->close();
    QCOMPARE(texts,
        (QStringList{u"Importar composição da cor"_s, u"Importar composição do material"_s,
            u"Gerar composição combinada"_s, u"Copiar"_s, u"Copiar tudo"_s, u"Exportar para planilha (XLSX)…"_s,
            u"Exportar CSV…"_s, u"Restaurar colunas"_s}));
    // Neither do the titles and the keys.
    station.key(Qt::Key_4, Qt::ControlModifier);
    QCOMPARE(station.shown(u"Milimetros"_s), (QStringList{u"10"_s, u"5"_s, u"15"_s}));
}

void TestCadRaportLinhas::thePictureFollowsTheLines()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    // 16 and 24 feeders of raw white, 8 of navy blue.
    const int white = heightOf(station, rawWhite);
    const int blue = heightOf(station, navyBlue);
    QVERIFY(blue > 15);
    QVERIFY2(qAbs(white - 5 * blue) < 12, qPrintable(u"%1 %2"_s.arg(white).arg(blue)));
    station.goTo(2, u"Cor"_s);
    station.typeCells({u"000002"_s});
    QVERIFY2(qAbs(heightOf(station, navyBlue) - 2 * heightOf(station, rawWhite)) < 8, "32 to 16 feeders");
    station.goTo(0, u"Milimetros"_s);
    station.typeCells({u"11"_s}); // no feeders
    QCOMPARE(heightOf(station, rawWhite), 0);
    station.enter(u"EdtCor"_s, u"000003"_s);
    QCOMPARE(heightOf(station, navyBlue), 0);
}

void TestCadRaportLinhas::aClickInThePictureFindsTheLine()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    QWidget *picture = station.child(u"Desenho"_s);
    const QImage image = picture->grab().toImage();
    int y = 0;
    while (y < image.height() && image.pixelColor(picture->width() / 4, y) != navyBlue)
        ++y;
    QTest::mouseClick(picture, Qt::LeftButton, {}, QPoint(picture->width() / 4, y + 3));
    QCOMPARE(station.grid()->currentIndex().row(), 1);
    QCOMPARE(station.focus(), u"DBGrid1"_s);
}

void TestCadRaportLinhas::aColourWithoutShadeIsDrawnGrey()
{
    RaportStation station;
    station.line(u"M0001 000001 1 FIO30CO 000003 10"_s);
    station.openRaport();
    station.load();
    QVERIFY(heightOf(station, QColor(0xbd, 0xc1, 0xc4)) > 50);
    station.database.run(u"UPDATE {CADCOR} SET TONALIDADE = '#1b2a49' WHERE COR = '000003'"_s);
    station.enter(u"EdtCor"_s, u"000001"_s);
    QVERIFY(heightOf(station, navyBlue) > 50);
}

void TestCadRaportLinhas::theFeedersRegistryIsOpenedForTheFabric()
{
    RaportStation station;
    station.openRaport();
    station.load();
    station.click(u"BitBtn6"_s);
    QWidget *feeders = station.host.openForm(u"TfmCadAlimentador"_s);
    QVERIFY(feeders && feeders->isVisible());
    QCOMPARE(feeders->findChild<QLineEdit *>(u"EdtCodMat"_s)->text(), u"M0001"_s);
    QCOMPARE(feeders->findChild<QTableView *>(u"DBGrid1"_s)->model()->rowCount(), 3);
}

void TestCadRaportLinhas::newFeedersAreSeenOnReturn()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    QWidget *raport = station.form();
    station.click(u"BitBtn6"_s);
    station.database.run(u"UPDATE {CADRAPORT} SET ALIMENTADORES = 40 WHERE MILIMETROS = 5"_s);
    station.host.openForm(u"TfmCadAlimentador"_s)->close();
    raport->activateWindow();
    QTRY_COMPARE(station.text(u"EdtAlimentadores"_s), u"80"_s);
    QCOMPARE(station.shown(u"Alimentadores"_s), (QStringList{u"16"_s, u"40"_s, u"24"_s}));
    // Nothing of it waits to be saved.
    const QPointer<QWidget> screen = raport;
    QTest::mouseClick(station.child(u"BitBtn4"_s), Qt::LeftButton);
    QTRY_VERIFY(screen.isNull());
}

QTEST_MAIN(TestCadRaportLinhas)
#include "tst_cadraportlinhas.moc"
