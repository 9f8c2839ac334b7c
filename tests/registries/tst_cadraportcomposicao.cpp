// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/registries/raportstation.h"

#include <QAction>
#include <QGroupBox>
#include <QTabWidget>

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

namespace {

/// Chooses an entry of the menu beside the lines.
void choose(const RaportStation &station, const QString &action)
{
    auto *found = station.form()->findChild<QAction *>(action);
    QVERIFY2(found, qPrintable(action));
    found->trigger();
}

} // namespace

/// Rapports copied from other colours and fabrics, the combined composition, and the page "Acesso".
class TestCadRaportComposicao : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void theMenuBearsItsTexts();
    void anotherColoursRapportIsSavedUnderTheEditedOne();
    void onlyColoursWithARapportAreOffered();
    void leavingTheSearchKeepsWhatWasTyped();
    void anotherFabricsRapportComesInTheEditedColour();
    void aFabricWithoutThatRapportIsRefused();
    void aGridWithLinesTakesNoOtherFabric();

    void theCompositionIsCombinedFromTheLines();
    void twoLinesOfOneYarnAndColourBecomeOne();
    void withoutGenericLinesNothingIsWritten();
    void aYarnWithoutLinesIsLeftOut();
    void whatWasComposedBeforeStays();
    void unsavedLinesAreCombined();
    void combiningNeedsItsRight();
    void theCombinedCompositionIsShownAtOnce();

    void theConsultationListsFabricsWithTheirYarns();
    void theConsultationIsNarrowedByFabricAndYarn();
    void aRowOfTheConsultationLeadsToItsLine();
    void theSearchLeadsToARapport();
};

void TestCadRaportComposicao::theMenuBearsItsTexts()
{
    RaportStation station;
    station.openRaport();
    const QList<std::pair<QString, QString>> texts{{u"Importarcomposio1"_s, u"Importar composição da cor"_s},
        {u"Importarcomposiodomaterial1"_s, u"Importar composição do material"_s},
        {u"Gerarcomposiocombinada1"_s, u"Gerar composição combinada"_s}};
    const QList<QAction *> menu = station.grid()->actions();
    QCOMPARE(menu.size(), texts.size());
    for (int i = 0; i < texts.size(); ++i) {
        QCOMPARE(menu[i]->objectName(), texts[i].first);
        QCOMPARE(menu[i]->text(), texts[i].second);
    }
}

void TestCadRaportComposicao::anotherColoursRapportIsSavedUnderTheEditedOne()
{
    RaportStation station;
    station.threeLines();
    station.line(u"M0001 000002 1 FIO150PES 000003 15"_s, u"Velha"_s);
    station.openRaport();
    station.load(u"M0001"_s, u"000002"_s);
    expectSearchAndTake(station.answers, u"Cru"_s, u"Importar composição da cor"_s);
    choose(station, u"Importarcomposio1"_s);
    QCOMPARE(station.text(u"EdtCor"_s), u"000002"_s);
    QCOMPARE(station.text(u"EdtDescCor"_s), u"Azul-marinho"_s);
    QCOMPARE(station.shown(u"CodigoFio;Cor;Milimetros;Alimentadores"_s),
        (QStringList{u"FIO30CO|000001|10|16"_s, u"FIO30CO|000002|5|8"_s, u"FIO30CO|000001|15|24"_s}));
    QCOMPARE(station.shown(u"CodigoFio;Percentual"_s, u"DBGrid2"_s).size(), 2);
    QCOMPARE(station.text(u"EdtObs"_s), u"Nota"_s);
    const auto *lines = station.child<QGroupBox>(u"gbRaport"_s);
    QCOMPARE(lines->title(), u"Composição Raport (cópia da cor 000001 Cru)"_s);
    const QStringList source = station.stored();
    station.click(u"BitBtn1"_s);
    QCOMPARE(lines->title(), u"Composição Raport"_s);
    QCOMPARE(station.stored(u"M0001"_s, u"000002"_s), source);
    QCOMPARE(station.stored(), source);
}

void TestCadRaportComposicao::onlyColoursWithARapportAreOffered()
{
    RaportStation station;
    station.threeLines();
    station.line(u"M0002 000003 1 FIO150PES 000003 15"_s);
    station.openRaport();
    station.load(u"M0001"_s, u"000002"_s);
    QStringList colours;
    expectSearchAndLeave(station.answers, &colours);
    choose(station, u"Importarcomposio1"_s);
    QCOMPARE(colours, QStringList{u"000001"_s});
}

void TestCadRaportComposicao::leavingTheSearchKeepsWhatWasTyped()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    station.goTo(0, u"Milimetros"_s);
    station.typeCells({u"5"_s});
    for (const QString &action : {u"Importarcomposio1"_s, u"Gerarcomposiocombinada1"_s}) {
        QStringList listed;
        expectSearchAndLeave(station.answers, &listed);
        choose(station, action);
    }
    QCOMPARE(station.shown(u"Milimetros"_s), (QStringList{u"5"_s, u"5"_s, u"15"_s}));
    QCOMPARE(station.composition().size(), 2);
}

void TestCadRaportComposicao::anotherFabricsRapportComesInTheEditedColour()
{
    RaportStation station;
    station.feeders(u"M0002"_s, 5, 99);
    station.line(u"M0002 000002 1 FIO150PES 000003 15"_s, u"Da ribana"_s);
    station.line(u"M0002 000002 2 FIO30CO 000001 5"_s, u"Da ribana"_s);
    station.line(u"M0002 000001 1 FIO30CO 000001 5"_s);
    station.openRaport();
    station.load(u"M0001"_s, u"000002"_s);
    station.enter(u"EdtObs"_s, u"Desta cor"_s);
    expectSearchAndTake(station.answers, u"M0002"_s, u"Importar composição do material"_s);
    choose(station, u"Importarcomposiodomaterial1"_s);
    // The feeders are those of the fabric that is being edited.
    QCOMPARE(station.shown(u"Ordem;CodigoFio;Cor;Milimetros;Alimentadores"_s),
        (QStringList{u"1|FIO150PES|000003|15|24"_s, u"2|FIO30CO|000001|5|8"_s}));
    QCOMPARE(station.text(u"EdtAlimentadores"_s), u"32"_s);
    QCOMPARE(station.text(u"EdtObs"_s), u"Desta cor"_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(u"M0001"_s, u"000002"_s),
        (QStringList{u"1|FIO150PES|000003|15|FUNDO|2|1.5|Desta cor"_s, u"2|FIO30CO|000001|5|FUNDO|2|1.5|Desta cor"_s}));
}

void TestCadRaportComposicao::aFabricWithoutThatRapportIsRefused()
{
    RaportStation station;
    station.line(u"M0002 000001 1 FIO30CO 000001 5"_s);
    station.openRaport();
    station.load(u"M0001"_s, u"000002"_s);
    expectSearchAndTake(station.answers, u"M0002"_s);
    expectInformation(station.answers, RaportStation::caption, u"Composição de Raport não encontrada."_s);
    choose(station, u"Importarcomposiodomaterial1"_s);
    QCOMPARE(station.shown(), QStringList());
}

void TestCadRaportComposicao::aGridWithLinesTakesNoOtherFabric()
{
    RaportStation station;
    station.threeLines();
    station.line(u"M0002 000001 1 FIO30CO 000001 5"_s);
    station.openRaport();
    station.load();
    expectInformation(station.answers, RaportStation::caption,
        u"Existem composições gravadas para este material, remova-as antes de importar."_s);
    choose(station, u"Importarcomposiodomaterial1"_s);
    QCOMPARE(station.shown().size(), 3);
    // Lines that were not saved count as well, an empty one that was only begun does not.
    station.enter(u"EdtCor"_s, u"000002"_s);
    station.grid()->setFocus();
    station.key(Qt::Key_Return);
    expectSearchAndTake(station.answers, u"M0002"_s);
    expectInformation(station.answers, RaportStation::caption, u"Composição de Raport não encontrada."_s);
    choose(station, u"Importarcomposiodomaterial1"_s);
}

void TestCadRaportComposicao::theCompositionIsCombinedFromTheLines()
{
    RaportStation station;
    station.generic(u"M0002"_s, u"FIO30CO"_s, 1, 60);
    station.generic(u"M0002"_s, u"FIO150PES"_s, 2, 40);
    // Another colour and another yarn colour are not generic.
    station.database.run(u"INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, ORDEM, PERC) "
                         "VALUES ('M0002', '0', 'FIO20ELA', '000001', 3, 50)"_s);
    // Of 30 mm of cotton 10, 5 and 15; polyester has one line.
    station.line(u"M0001 000003 1 FIO30CO 000001 10"_s);
    station.line(u"M0001 000003 2 FIO30CO 000002 5"_s);
    station.line(u"M0001 000003 3 FIO150PES 000002 7"_s);
    station.line(u"M0001 000003 4 FIO30CO 000003 15"_s);
    station.openRaport();
    station.load(u"M0001"_s, u"000003"_s);
    expectSearchAndTake(station.answers, u"M0002"_s, u"Gerar composição combinada"_s);
    expectInformation(station.answers, RaportStation::caption, u"Composição gravada."_s);
    choose(station, u"Gerarcomposiocombinada1"_s);
    // The fabric's composition has two lines in raw white, so these are the third and on.
    QCOMPARE(station.composition(u"M0001"_s, u"000003"_s),
        (QStringList{
            u"3|FIO30CO|000001|20"_s, u"4|FIO30CO|000002|10"_s, u"5|FIO30CO|000003|30"_s, u"6|FIO150PES|000002|40"_s}));
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
    QCOMPARE(station.stored(u"M0001"_s, u"000003"_s).size(), 4);
}

void TestCadRaportComposicao::twoLinesOfOneYarnAndColourBecomeOne()
{
    RaportStation station;
    station.generic(u"M0002"_s, u"FIO30CO"_s, 1, 100);
    station.line(u"M0001 000003 1 FIO30CO 000001 10"_s);
    station.line(u"M0001 000003 2 FIO30CO 000002 10"_s);
    station.line(u"M0001 000003 3 FIO30CO 000001 10"_s);
    station.line(u"M0001 000003 4 FIO30CO 000003 10"_s);
    station.openRaport();
    station.load(u"M0001"_s, u"000003"_s);
    expectSearchAndTake(station.answers, u"M0002"_s);
    station.answers.expect(u"Composição gravada."_s);
    choose(station, u"Gerarcomposiocombinada1"_s);
    QCOMPARE(station.composition(u"M0001"_s, u"000003"_s),
        (QStringList{u"3|FIO30CO|000001|50"_s, u"4|FIO30CO|000002|25"_s, u"6|FIO30CO|000003|25"_s}));
}

void TestCadRaportComposicao::withoutGenericLinesNothingIsWritten()
{
    RaportStation station;
    station.threeLines();
    station.openRaport();
    station.load();
    const QStringList before = station.composition();
    expectSearchAndTake(station.answers, u"M0002"_s);
    expectInformation(station.answers, RaportStation::caption,
        u"Composição inválida para o material M0002.\nImpossível continuar."_s);
    choose(station, u"Gerarcomposiocombinada1"_s);
    QCOMPARE(station.composition(), before);
}

void TestCadRaportComposicao::aYarnWithoutLinesIsLeftOut()
{
    RaportStation station;
    station.generic(u"M0001"_s, u"FIO20ELA"_s, 3, 5);
    station.generic(u"M0001"_s, u"FIO30CO"_s, 4, 95);
    station.line(u"M0001 000003 1 FIO30CO 000001 10"_s);
    station.line(u"M0001 000003 2 FIO30CO 000002 5"_s);
    station.openRaport();
    station.load(u"M0001"_s, u"000003"_s);
    expectSearchAndTake(station.answers, u"M0001"_s);
    station.answers.expect(u"Composição gravada."_s);
    choose(station, u"Gerarcomposiocombinada1"_s);
    // 63.33333|3 and 31.66666|6.
    QCOMPARE(station.composition(u"M0001"_s, u"000003"_s),
        (QStringList{u"5|FIO30CO|000001|63.33333"_s, u"6|FIO30CO|000002|31.66667"_s}));
}

void TestCadRaportComposicao::whatWasComposedBeforeStays()
{
    RaportStation station;
    station.threeLines();
    station.generic(u"M0001"_s, u"FIO30CO"_s, 9, 100);
    station.openRaport();
    station.load();
    const QStringList before = station.composition();
    expectSearchAndTake(station.answers, u"M0001"_s);
    station.answers.expect(u"Composição gravada."_s);
    choose(station, u"Gerarcomposiocombinada1"_s);
    QCOMPARE(station.composition(),
        (before + QStringList{u"10|FIO30CO|000001|83.33333"_s, u"11|FIO30CO|000002|16.66667"_s}));
}

void TestCadRaportComposicao::unsavedLinesAreCombined()
{
    RaportStation station;
    station.generic(u"M0002"_s, u"FIO30CO"_s, 1, 100);
    station.openRaport();
    station.load(u"M0001"_s, u"000003"_s);
    station.grid()->setFocus();
    station.key(Qt::Key_Return);
    station.typeCells({u"FIO30CO"_s, u"000002"_s});
    station.type(u"5"_s); // and the cell is still open
    expectSearchAndTake(station.answers, u"M0002"_s);
    station.answers.expect(u"Composição gravada."_s);
    choose(station, u"Gerarcomposiocombinada1"_s);
    QCOMPARE(station.composition(u"M0001"_s, u"000003"_s), QStringList{u"3|FIO30CO|000002|100"_s});
    QCOMPARE(station.stored(u"M0001"_s, u"000003"_s), QStringList());
    QCOMPARE(station.shown(u"CodigoFio;Cor;Milimetros"_s), QStringList{u"FIO30CO|000002|5"_s});
}

void TestCadRaportComposicao::combiningNeedsItsRight()
{
    RaportStation station;
    station.threeLines();
    station.generic(u"M0001"_s, u"FIO30CO"_s, 9, 100);
    station.host.login(u"SEMDIREITO"_s, 1);
    station.openRaport();
    station.load();
    choose(station, u"Gerarcomposiocombinada1"_s);
    QCOMPARE(station.composition().size(), 2);
}

void TestCadRaportComposicao::theCombinedCompositionIsShownAtOnce()
{
    RaportStation station;
    station.generic(u"M0002"_s, u"FIO30CO"_s, 1, 100);
    station.line(u"M0001 000003 1 FIO30CO 000001 10"_s);
    station.openRaport();
    station.load(u"M0001"_s, u"000003"_s);
    station.enter(u"EdtDiametro"_s, u"30"_s);
    expectSearchAndTake(station.answers, u"M0002"_s);
    station.answers.expect(u"Composição gravada."_s);
    choose(station, u"Gerarcomposiocombinada1"_s);
    QCOMPARE(station.shown({}, u"DBGrid2"_s), QStringList{u"FIO30CO|Fio algodão 30/1 penteado|000001|Cru|100,00000"_s});
    // What was typed is kept, and goes to the new lines when it is saved.
    QCOMPARE(station.number(u"EdtDiametro"_s), 30.0);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.technicalData(u"M0001"_s, u"000003"_s), QStringList{u"30|0|0|0|0"_s});
}

void TestCadRaportComposicao::theConsultationListsFabricsWithTheirYarns()
{
    RaportStation station;
    station.openRaport();
    station.child<QTabWidget>(u"PageControl"_s)->setCurrentIndex(1);
    station.click(u"BitBtn2"_s);
    // A fabric in each colour of its stock with each of its yarns; yarns are materials without any of that.
    QCOMPARE(station.shown({}, u"DBGrid"_s).filter(QRegularExpression(u"^M0001"_s)).size(), 6);
    QVERIFY(
        station.shown({}, u"DBGrid"_s)
            .contains(u"M0001|Meia-malha PV 60/40|000002|Azul-marinho|FIO30CO|Fio algodão 30/1 penteado|000001|Cru"_s));
    QVERIFY(
        station.shown({}, u"DBGrid"_s).contains(u"M0002|Ribana 2x1|||FIO30CO|Fio algodão 30/1 penteado|000001|Cru"_s));
    QVERIFY(station.shown({}, u"DBGrid"_s).contains(u"FIO20ELA|Elastano 20 dtex||||||"_s));
}

void TestCadRaportComposicao::theConsultationIsNarrowedByFabricAndYarn()
{
    RaportStation station;
    station.openRaport();
    station.child<QTabWidget>(u"PageControl"_s)->setCurrentIndex(1);
    station.enter(u"EdtFioAcesso"_s, u"FIO30CO"_s);
    QCOMPARE(station.text(u"EdtDescFioAcesso"_s), u"Fio algodão 30/1 penteado"_s);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.shown(u"CODIGO;COD_FIO"_s, u"DBGrid"_s),
        (QStringList{u"M0001|FIO30CO"_s, u"M0001|FIO30CO"_s, u"M0001|FIO30CO"_s, u"M0002|FIO30CO"_s}));
    station.enter(u"EdtMatAcesso"_s, u"M0002"_s);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.shown(u"CODIGO;COD_FIO"_s, u"DBGrid"_s), QStringList{u"M0002|FIO30CO"_s});
    station.enter(u"EdtMatAcesso"_s, u"' OR 1=1 --"_s);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.shown({}, u"DBGrid"_s), QStringList());
}

void TestCadRaportComposicao::aRowOfTheConsultationLeadsToItsLine()
{
    RaportStation station;
    station.line(u"M0001 000002 1 FIO150PES 000001 10"_s);
    station.line(u"M0001 000002 2 FIO30CO 000002 5"_s);
    station.line(u"M0001 000002 3 FIO30CO 000001 15"_s);
    station.openRaport();
    station.child<QTabWidget>(u"PageControl"_s)->setCurrentIndex(1);
    station.enter(u"EdtFioAcesso"_s, u"FIO30CO"_s);
    station.click(u"BitBtn2"_s);
    TDBGrid *list = station.grid(u"DBGrid"_s);
    const int row = int(station.shown(u"COR"_s, u"DBGrid"_s).indexOf(u"000002"_s));
    const QRect cell = list->visualRect(list->model()->index(row, 0));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, cell.center());
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, cell.center());
    QCOMPARE(station.child<QTabWidget>(u"PageControl"_s)->currentIndex(), 0);
    QCOMPARE(station.text(u"EdtMaterial"_s), u"M0001"_s);
    QCOMPARE(station.text(u"EdtCor"_s), u"000002"_s);
    QCOMPARE(station.shown(u"Milimetros"_s), (QStringList{u"10"_s, u"5"_s, u"15"_s}));
    QCOMPARE(station.grid()->currentIndex().row(), 2);
    QCOMPARE(station.focus(), u"DBGrid1"_s);
}

void TestCadRaportComposicao::theSearchLeadsToARapport()
{
    RaportStation station;
    station.threeLines();
    station.line(u"M0002 000003 1 FIO30CO 000002 5"_s, u"Da ribana"_s);
    station.openRaport();
    QStringList listed;
    expectSearchAndLeave(station.answers, &listed, u"Raportes"_s);
    station.click(u"btnConsultar"_s);
    QCOMPARE(listed, (QStringList{u"M0001"_s, u"M0002"_s})); // each once
    QCOMPARE(station.text(u"EdtMaterial"_s), QString());
    expectSearchAndTake(station.answers, u"ribana preto"_s);
    station.click(u"btnConsultar"_s);
    QCOMPARE(station.text(u"EdtMaterial"_s), u"M0002"_s);
    QCOMPARE(station.text(u"EdtDescCor"_s), u"Preto"_s);
    QCOMPARE(station.text(u"EdtObs"_s), u"Da ribana"_s);
    QCOMPARE(station.shown().size(), 1);
}

QTEST_MAIN(TestCadRaportComposicao)
#include "tst_cadraportcomposicao.moc"
