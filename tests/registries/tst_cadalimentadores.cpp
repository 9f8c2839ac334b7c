// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/registries/raportstation.h"

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

namespace {

const QString caption = QStringLiteral("Alimentador de Raport");

class FeederStation : public RaportStation
{
public:
    void openFeeders(const QString &fabric = {})
    {
        open(u"TfmCadAlimentador"_s);
        if (!fabric.isEmpty())
            enter(u"EdtCodMat"_s, fabric);
    }
    /// "fabric|millimetres|feeders" of all.
    QStringList settings()
    {
        return database.rows(
            u"SELECT CODIGO, MILIMETROS, ALIMENTADORES FROM {CADRAPORT} ORDER BY CODIGO, MILIMETROS, ALIMENTADORES"_s);
    }
};

} // namespace

/// The feeders per stitch length of a fabric.
class TestCadAlimentadores : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void bearsItsCaptions();
    void showsTheFabricsSettings();
    void settingsAreTypedByTheKeyboardAlone();
    void anEmptyGridRemovesEverySetting();
    void repeatedStitchLengthsAreStoredAsTyped();
    void otherFabricsAreLeftAlone();
    void hostileFabricsAreQuoted();
    void anotherFabricDiscardsWhatWasTyped();
    void passingTheFabricAgainKeepsWhatWasTyped();
    void afterSavingTheFabricCanBeReadAgain();
    void whatAnotherStationSavedIsReplacedOnlyWhenWanted();
    void twoStationsThatSaveLeaveNoMixture();
    void withoutTheRightNothingIsSaved();
    void withoutAFabricNothingIsSaved();
    void nothingRemainsOfASaveThatFails();
    void closingWithUnsavedRowsAsks();
    void aFabricThatIsHandedOverStaysBehindUnsavedRows();
};

void TestCadAlimentadores::bearsItsCaptions()
{
    FeederStation station;
    station.openFeeders();
    QCOMPARE(station.form()->windowTitle(), caption);
    QCOMPARE(station.text(u"BitBtn2"_s), u"Gravar"_s);
    QCOMPARE(station.text(u"BitBtn4"_s), u"Fechar"_s);
    QCOMPARE(station.text(u"lbMaterial"_s).remove(u'&'), u"Material"_s);
    QCOMPARE(station.grid()->model()->headerData(0, Qt::Horizontal).toString(), u"Milímetros"_s);
    QCOMPARE(station.grid()->model()->headerData(1, Qt::Horizontal).toString(), u"Alimentadores"_s);
    QCOMPARE(station.focus(), u"EdtCodMat"_s);
}

void TestCadAlimentadores::showsTheFabricsSettings()
{
    FeederStation station;
    station.feeders(u"M0002"_s, 7, 9);
    station.openFeeders(u"M0001"_s);
    QCOMPARE(station.text(u"EdtDescMat"_s), u"Meia-malha PV 60/40"_s);
    QCOMPARE(station.shown(), (QStringList{u"5|8"_s, u"10|16"_s, u"15|24"_s}));
    station.enter(u"EdtCodMat"_s, u"GONE"_s);
    QCOMPARE(station.text(u"EdtDescMat"_s), QString());
    QCOMPARE(station.shown(), QStringList());
    expectSearchAndTake(station.answers, u"ribana"_s, u"Materiais"_s);
    station.click(u"PqMat"_s);
    QTRY_COMPARE(station.focus(), u"EdtCodMat"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.shown(), QStringList{u"7|9"_s});
}

void TestCadAlimentadores::settingsAreTypedByTheKeyboardAlone()
{
    FeederStation station;
    station.openFeeders();
    station.type(u"EdtCodMat"_s, u"M0002"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.focus(), u"DBGrid1"_s);
    station.key(Qt::Key_Return);
    station.typeCells({u"5"_s, u"8"_s, u"10"_s, u"18"_s});
    QCOMPARE(station.shown(), (QStringList{u"5|8"_s, u"10|18"_s, u"|"_s}));
    station.key(Qt::Key_Tab);
    QCOMPARE(station.focus(), u"BitBtn2"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.settings().last(2), (QStringList{u"M0002|5|8"_s, u"M0002|10|18"_s}));
    QCOMPARE(station.focus(), u"EdtCodMat"_s);
    QCOMPARE(station.shown(), QStringList());
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
}

void TestCadAlimentadores::anEmptyGridRemovesEverySetting()
{
    FeederStation station;
    station.feeders(u"M0002"_s, 7, 9);
    station.openFeeders(u"M0001"_s);
    station.goTo(0, u"Milimetros"_s);
    station.answers.expectAndType(u"Deseja eliminar este Registro?"_s, Qt::Key_Return, u"Eliminação de Registro"_s);
    station.click(u"BtLinhaExcluir"_s);
    QCOMPARE(station.shown().size(), 3);
    for (int i = 0; i < 3; ++i) {
        station.answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes, u"Eliminação de Registro"_s);
        i ? station.key(Qt::Key_Delete, Qt::ControlModifier) : station.click(u"BtLinhaExcluir"_s);
    }
    QCOMPARE(station.settings().size(), 4);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.settings(), QStringList{u"M0002|7|9"_s});
}

void TestCadAlimentadores::repeatedStitchLengthsAreStoredAsTyped()
{
    FeederStation station;
    station.openFeeders(u"M0002"_s);
    station.grid()->setFocus();
    station.key(Qt::Key_Return);
    station.typeCells({u"5"_s, u"8"_s, u"5"_s, u"9"_s, u"5"_s, u"8"_s, {}, u"3"_s});
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.settings().filter(QRegularExpression(u"^M0002"_s)),
        (QStringList{u"M0002|0|3"_s, u"M0002|5|8"_s, u"M0002|5|8"_s, u"M0002|5|9"_s}));
}

void TestCadAlimentadores::otherFabricsAreLeftAlone()
{
    FeederStation station;
    station.feeders(u"M0002"_s, 7, 9);
    station.openFeeders(u"M0001"_s);
    station.goTo(0, u"Alimentadores"_s);
    station.typeCells({u"12"_s});
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.settings(), (QStringList{u"M0001|5|12"_s, u"M0001|10|16"_s, u"M0001|15|24"_s, u"M0002|7|9"_s}));
}

void TestCadAlimentadores::hostileFabricsAreQuoted()
{
    FeederStation station;
    for (const QString &fabric : {u"' OR '1'='1"_s, u"%"_s, u"{CADRAPORT}"_s}) {
        station.openFeeders(fabric);
        QCOMPARE(station.shown(), QStringList());
        station.grid()->setFocus();
        station.key(Qt::Key_Return);
        station.typeCells({u"1"_s, u"2"_s});
        station.click(u"BitBtn2"_s);
        QVERIFY2(station.settings().contains(fabric + u"|1|2"_s), qPrintable(fabric));
        station.closeForm();
    }
    QCOMPARE(station.settings().size(), 6);
}

void TestCadAlimentadores::anotherFabricDiscardsWhatWasTyped()
{
    FeederStation station;
    station.openFeeders(u"M0001"_s);
    station.goTo(0, u"Alimentadores"_s);
    station.typeCells({u"12"_s});
    station.enter(u"EdtCodMat"_s, u"M0002"_s);
    QCOMPARE(station.shown(), QStringList());
    station.enter(u"EdtCodMat"_s, u"M0001"_s);
    QCOMPARE(station.shown().first(), u"5|8"_s);
}

void TestCadAlimentadores::passingTheFabricAgainKeepsWhatWasTyped()
{
    FeederStation station;
    station.openFeeders(u"M0001"_s);
    station.goTo(0, u"Alimentadores"_s);
    station.typeCells({u"12"_s});
    station.enter(u"EdtCodMat"_s, u"M0001"_s);
    QCOMPARE(station.shown().first(), u"5|12"_s);
}

void TestCadAlimentadores::afterSavingTheFabricCanBeReadAgain()
{
    FeederStation station;
    station.openFeeders(u"M0001"_s);
    station.goTo(0, u"Alimentadores"_s);
    station.typeCells({u"12"_s});
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.text(u"EdtCodMat"_s), u"M0001"_s);
    // The empty grid is not saved over it: the field is left first, and reads it.
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.settings().size(), 3);
    station.key(Qt::Key_Return);
    QCOMPARE(station.shown().first(), u"5|12"_s);
}

void TestCadAlimentadores::whatAnotherStationSavedIsReplacedOnlyWhenWanted()
{
    FeederStation station;
    station.openFeeders(u"M0001"_s);
    station.goTo(0, u"Alimentadores"_s);
    station.typeCells({u"12"_s});
    station.database.run(u"UPDATE {CADRAPORT} SET ALIMENTADORES = 99 WHERE CODIGO = 'M0001' AND MILIMETROS = 15"_s);
    const QStringList theirs = station.settings();
    const QString question =
        u"Outra estação gravou os alimentadores deste material depois que foram abertos aqui. Deseja substituí-los?"_s;
    station.answers.expectAndType(question, Qt::Key_Return, caption); // No is the default
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.settings(), theirs);
    QCOMPARE(station.shown(), (QStringList{u"5|12"_s, u"10|16"_s, u"15|24"_s})); // nothing that was typed is lost
    station.answers.expect(question, QMessageBox::Yes, caption);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.settings(), (QStringList{u"M0001|5|12"_s, u"M0001|10|16"_s, u"M0001|15|24"_s}));
}

void TestCadAlimentadores::twoStationsThatSaveLeaveNoMixture()
{
    FeederStation station;
    station.openFeeders(u"M0002"_s);
    station.grid()->setFocus();
    station.key(Qt::Key_Return);
    station.typeCells({u"5"_s, u"8"_s});
    // The other one is through after this one has found the table as it was.
    bool saved = false;
    station.tabela.IBDatabase->setObserver([&](const QString &statement) {
        if (statement != u"BEGIN" || std::exchange(saved, true))
            return;
        Save other(station.database.connection());
        station.database.run(u"UPDATE {MATERIAL} SET CODIGO = 'M0002' WHERE CODIGO = 'M0002'"_s);
        station.feeders(u"M0002"_s, 7, 9);
        other.CommitRetaining();
    });
    expectFailure(station.answers, caption,
        u"Outra estação alterou estes dados ao mesmo tempo. Nada foi gravado; tente novamente."_s);
    station.click(u"BitBtn2"_s);
    station.tabela.IBDatabase->setObserver({});
    QVERIFY(saved);
    QCOMPARE(station.settings().last(), u"M0002|7|9"_s);
    QCOMPARE(station.settings().size(), 4);
    QCOMPARE(station.shown(), QStringList{u"5|8"_s});
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
}

void TestCadAlimentadores::withoutTheRightNothingIsSaved()
{
    FeederStation station;
    station.host.login(u"SEMDIREITO"_s, 1);
    station.openFeeders(u"M0001"_s);
    station.goTo(0, u"Alimentadores"_s);
    station.typeCells({u"12"_s});
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.settings().first(), u"M0001|5|8"_s);
    QCOMPARE(station.shown().first(), u"5|12"_s);
}

void TestCadAlimentadores::withoutAFabricNothingIsSaved()
{
    FeederStation station;
    station.openFeeders();
    expectInformation(station.answers, caption, u"Informe o material. Impossível Continuar."_s);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.settings().size(), 3);
    QTRY_COMPARE(station.focus(), u"EdtCodMat"_s);
}

void TestCadAlimentadores::nothingRemainsOfASaveThatFails()
{
    FeederStation station;
    station.database.run(u"ALTER TABLE {CADRAPORT} ADD CONSTRAINT FEW CHECK (ALIMENTADORES < 100)"_s);
    const QStringList before = station.settings();
    station.openFeeders(u"M0001"_s);
    station.goTo(2, u"Alimentadores"_s);
    station.typeCells({u"100"_s});
    expectFailure(station.answers, caption, u"O banco de dados recusou a operação. Nada foi gravado."_s);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.settings(), before);
    QCOMPARE(station.shown().value(2), u"15|100"_s);
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
}

void TestCadAlimentadores::closingWithUnsavedRowsAsks()
{
    FeederStation station;
    station.openFeeders(u"M0001"_s);
    station.goTo(0, u"Alimentadores"_s);
    station.typeCells({u"12"_s});
    const QString question = u"Há linhas que não foram gravadas. Deseja abandonar as alterações?"_s;
    station.answers.expect(question, QMessageBox::No, caption);
    station.click(u"BitBtn4"_s);
    QVERIFY(station.form() && station.form()->isVisible());
    const QPointer<QWidget> screen = station.form();
    station.answers.expect(question, QMessageBox::Yes, caption);
    QTest::mouseClick(station.child(u"BitBtn4"_s), Qt::LeftButton);
    QTRY_VERIFY(screen.isNull());
}

void TestCadAlimentadores::aFabricThatIsHandedOverStaysBehindUnsavedRows()
{
    FeederStation station;
    station.feeders(u"M0002"_s, 7, 9);
    station.openFeeders();
    QVERIFY(station.form()->setProperty("Material", u"M0001"_s));
    QCOMPARE(station.shown().size(), 3);
    QCOMPARE(station.focus(), u"DBGrid1"_s);
    station.goTo(0, u"Alimentadores"_s);
    station.typeCells({u"12"_s});
    station.form()->setProperty("Material", u"M0002"_s);
    QCOMPARE(station.form()->property("Material").toString(), u"M0001"_s);
    QCOMPARE(station.shown().first(), u"5|12"_s);
}

QTEST_MAIN(TestCadAlimentadores)
#include "tst_cadalimentadores.moc"
