// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog of the desk: what it asks, refuses and lets pass, its scale and its keys.

#include "module/form.h"
#include "module/host_services/comport.h"
#include "tests/production/deskstation.h"
#include "tests/support/screenchecks.h"

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

class tst_baixaof : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void aConfirmedRollIsWrittenStockedAndLogged();
    void theRollCountsForTheDateGiven();
    void aDateThatIsNoneIsRefused();
    void theOperatorBringsNameAndShift();
    void aShiftThatWasTypedStays();
    void searchesOfferActiveOperatorsAndAllShifts();
    void anInactiveOperatorIsRefused_data();
    void anInactiveOperatorIsRefused();
    void anUnknownShiftIsRefused_data();
    void anUnknownShiftIsRefused();
    void aRollWithoutWeightIsNotWritten();
    void aHundredthAboveTheBalancePasses_data();
    void aHundredthAboveTheBalancePasses();
    void theToleranceHoldsAfterManyRolls_data();
    void theToleranceHoldsAfterManyRolls();
    void overProductionRaisesThePlanToWhatWasMade();
    void overProductionThatIsDeclinedWritesNothing();
    void overProductionNeedsTheSupervisor();
    void aRollThatPassesNeedsNoSupervisor();
    void aBalanceTakenMeanwhileIsAskedFor();
    void aNumberGivenMeanwhileIsNotGivenTwice();
    void defectsFollowTheRollToAnotherNumber();
    void anOrderThatIsGoneIsAConflict();
    void withoutAnOrderNothingIsWritten();
    void f5ReadsTheScale();
    void f5SaysWhyThereIsNoWeight();
    void aMissingPortIsSaidOnce();
    void f10SetsThePortUp();
    void theWeightOfTheScaleIsRecordedWithTwoDecimals();
    void theDefectsOfTheRollAreOpened();
    void enterMovesToTheNextField();
    void givingUpWritesNothing_data();
    void givingUpWritesNothing();
};

void tst_baixaof::aConfirmedRollIsWrittenStockedAndLogged()
{
    DeskStation station;
    station.writeOff(u"23,45"_s);
    QCOMPARE(station.rolls(), QStringList{u"001|2026-03-10||1|000101|23.45"_s}); // the desk keeps no time
    QCOMPARE(station.stock(), QStringList{u"M0001|000012|23.45|0"_s});
    QCOMPARE(station.log(), QStringList{u"BAIXA OF MALHARIA|BAIXA DA OF 000012 PESO 23,45 NUM.BAIXA: 001|3|ADMIN"_s});
    QCOMPARE(station.plan(), u"100"_s);
    QVERIFY(!station.host.openForm(u"TfmBaixaOF"_s));
    QVERIFY(!TestStation::instance("fmBaixaOF"));
}

void tst_baixaof::theRollCountsForTheDateGiven()
{
    DeskStation station;
    station.atDialog([&] {
        station.fillRoll(u"20"_s, u"000104"_s); // the night shift: no day is added at the desk
        station.enter(u"edtData"_s, u"28/02/2026"_s);
        station.confirm();
    });
    QCOMPARE(station.rolls(), QStringList{u"001|2026-02-28||4|000104|20"_s});
}

void tst_baixaof::aDateThatIsNoneIsRefused()
{
    DeskStation station;
    station.atDialog([&] {
        station.fillRoll(u"20"_s);
        station.enter(u"edtData"_s, u"31/02/2026"_s);
        station.expect(u"Data Inválida. Impossível Continuar."_s);
        station.confirm();
        QCOMPARE(station.focus(), u"edtData"_s);
        QVERIFY(station.rolls().isEmpty());
        station.enter(u"edtData"_s, {}); // none at all is today
        station.confirm();
    });
    QCOMPARE(station.rolls(), QStringList{u"001|2026-03-10||1|000101|20"_s});
}

void tst_baixaof::theOperatorBringsNameAndShift()
{
    DeskStation station;
    station.atDialog([&] {
        station.enter(u"EdtCodFun"_s, u"000102"_s);
        QCOMPARE(station.text(u"EdtNome"_s), u"Bruno Lima"_s);
        QCOMPARE(station.text(u"edtTurno"_s), u"2"_s);
        QCOMPARE(station.text(u"EdtDescTurno"_s), u"Tarde"_s);
        station.enter(u"EdtCodFun"_s, u"000104"_s);
        QCOMPARE(station.text(u"edtTurno"_s), u"4"_s);
        QCOMPARE(station.text(u"EdtDescTurno"_s), u"Noite"_s);
        station.enter(u"EdtCodFun"_s, u"999999"_s);
        QCOMPARE(station.text(u"EdtNome"_s), QString());
    });
}

void tst_baixaof::aShiftThatWasTypedStays()
{
    DeskStation station;
    station.atDialog([&] {
        station.fillRoll(u"20"_s);
        station.enter(u"edtTurno"_s, u"3"_s);
        station.child(u"EdtCodFun"_s)->setFocus(); // the operator is only passed
        station.key(Qt::Key_Tab);
        QCOMPARE(station.text(u"edtTurno"_s), u"3"_s);
        station.confirm();
    });
    QCOMPARE(station.rolls(), QStringList{u"001|2026-03-10||3|000101|20"_s});
}

void tst_baixaof::searchesOfferActiveOperatorsAndAllShifts()
{
    DeskStation station;
    station.atDialog([&] {
        QStringList offered;
        expectSearchAndLeave(station.answers, &offered);
        station.click(u"PqFunc"_s);
        QCOMPARE(offered, QStringList({u"000101"_s, u"000102"_s, u"000103"_s, u"000104"_s}));
        expectSearchAndLeave(station.answers, &offered);
        station.click(u"PqTurno"_s);
        QCOMPARE(offered, QStringList({u"1"_s, u"2"_s, u"3"_s, u"4"_s}));
    });
}

void tst_baixaof::anInactiveOperatorIsRefused_data()
{
    QTest::addColumn<QString>("worker");
    QTest::newRow("inactive") << u"000105"_s;
    QTest::newRow("neither active nor inactive") << u"000106"_s;
    QTest::newRow("unknown") << u"000999"_s;
    QTest::newRow("none") << QString();
    QTest::newRow("hostile") << u"' OR '"_s;
}

void tst_baixaof::anInactiveOperatorIsRefused()
{
    QFETCH(QString, worker);
    DeskStation station;
    station.atDialog([&] {
        station.fillRoll(u"20"_s, worker);
        station.enter(u"edtTurno"_s, u"1"_s); // a shift that exists does not help
        station.expect(u"Funcionário sem permissão. Impossível Continuar."_s);
        station.confirm();
        QCOMPARE(station.focus(), u"EdtCodFun"_s);
    });
    QVERIFY(station.rolls().isEmpty());
    QVERIFY(station.stock().isEmpty());
    QVERIFY(station.log().isEmpty());
}

void tst_baixaof::anUnknownShiftIsRefused_data()
{
    QTest::addColumn<QString>("shift");
    QTest::newRow("none") << QString();
    QTest::newRow("unknown") << u"9"_s;
    QTest::newRow("hostile") << u"''"_s;
}

void tst_baixaof::anUnknownShiftIsRefused()
{
    QFETCH(QString, shift);
    DeskStation station;
    station.atDialog([&] {
        station.fillRoll(u"500"_s); // it would be over-production, too
        station.enter(u"edtTurno"_s, shift);
        station.expect(u"Turno inválido."_s);
        station.confirm();
        QCOMPARE(station.focus(), u"edtTurno"_s);
    });
    QVERIFY(station.rolls().isEmpty());
}

void tst_baixaof::aRollWithoutWeightIsNotWritten()
{
    DeskStation station;
    station.atDialog([&] {
        for (const QString &weight : {u"0"_s, u"-5"_s, QString()}) {
            station.fillRoll(weight);
            station.confirm();
            QCOMPARE(station.text(u"lbBalanca"_s), u"Informe o peso do rolo."_s);
            QCOMPARE(station.focus(), u"edtKGTotal"_s);
        }
    });
    QVERIFY(station.rolls().isEmpty());
}

void tst_baixaof::aHundredthAboveTheBalancePasses_data()
{
    QTest::addColumn<QString>("weight");
    QTest::addColumn<bool>("asks");
    QTest::newRow("less") << u"19,89"_s << false;
    QTest::newRow("equal") << u"19,9"_s << false;
    QTest::newRow("one hundredth more") << u"19,91"_s << false;
    QTest::newRow("two hundredths more") << u"19,92"_s << true;
}

void tst_baixaof::aHundredthAboveTheBalancePasses()
{
    QFETCH(QString, weight);
    QFETCH(bool, asks);
    DeskStation station;
    station.addRoll(u"000012"_s, u"001"_s, 80.1);
    station.atDialog([&] {
        station.fillRoll(weight);
        if (asks)
            station.expectOverProduction(QMessageBox::No);
        station.confirm();
    });
    QCOMPARE(station.rolls().size(), asks ? 1 : 2);
    QCOMPARE(station.plan(), u"100"_s); // what passes leaves the plan
}

void tst_baixaof::theToleranceHoldsAfterManyRolls_data()
{
    QTest::addColumn<QString>("weight");
    QTest::addColumn<bool>("asks");
    QTest::newRow("equal") << u"3,3"_s << false;
    QTest::newRow("one hundredth more") << u"3,31"_s << false;
    QTest::newRow("two hundredths more") << u"3,32"_s << true;
}

void tst_baixaof::theToleranceHoldsAfterManyRolls()
{
    QFETCH(QString, weight);
    QFETCH(bool, asks);
    DeskStation station;
    station.database.run(u"UPDATE {OF_MALHA} SET KG_TOTAL = 300.3"_s);
    for (int roll = 1; roll <= 90; ++roll) // 297 kg, of weights that no binary fraction is
        station.addRoll(u"000012"_s, u"%1"_s.arg(roll, 3, 10, QChar(u'0')), 3.3);
    station.openDesk();
    QCOMPARE(station.text(u"edtSaldo"_s), u"3,30"_s);
    station.atDialog([&] {
        station.fillRoll(weight);
        if (asks)
            station.expectOverProduction(QMessageBox::No);
        station.confirm();
    });
    QCOMPARE(station.rolls().size(), asks ? 90 : 91);
}

void tst_baixaof::overProductionRaisesThePlanToWhatWasMade()
{
    DeskStation station;
    station.addRoll(u"000012"_s, u"001"_s, 90.123);
    station.atDialog([&] {
        station.fillRoll(u"20,5"_s);
        station.expectOverProduction(QMessageBox::Yes);
        station.confirm();
    });
    QCOMPARE(station.plan(), u"110.623"_s);
    QCOMPARE(station.rolls().last(), u"002|2026-03-10||1|000101|20.5"_s);
    QCOMPARE(station.stock(), QStringList{u"M0001|000012|20.5|0"_s});
    QCOMPARE(station.text(u"edtSaldo"_s), u"0,00"_s);
    QCOMPARE(station.log(), QStringList{u"BAIXA OF MALHARIA|BAIXA DA OF 000012 PESO 20,5 NUM.BAIXA: 002|3|ADMIN"_s});
}

void tst_baixaof::overProductionThatIsDeclinedWritesNothing()
{
    DeskStation station;
    const QStringList before = station.tables();
    station.atDialog([&] {
        station.fillRoll(u"120"_s);
        station.expectOverProduction(QMessageBox::No);
        station.confirm();
        QCOMPARE(station.text(u"edtKGTotal"_s), u"120,00"_s); // it can be corrected
    });
    QCOMPARE(station.tables(), before);
    QVERIFY(station.log().isEmpty());
}

void tst_baixaof::overProductionNeedsTheSupervisor()
{
    DeskStation station(u"SEMDIREITO"_s);
    station.grant({u"A0"_s});
    const QStringList before = station.tables();
    const auto writeOff = [&] {
        station.atDialog([&] {
            station.fillRoll(u"120"_s);
            station.expectOverProduction(QMessageBox::Yes);
            station.confirm();
        });
    };
    writeOff(); // no word says why
    QCOMPARE(station.tables(), before);
    QVERIFY(station.log().isEmpty());
    station.grant({u"A1"_s});
    writeOff();
    QCOMPARE(station.plan(), u"120"_s);
    QCOMPARE(station.rolls(), QStringList{u"001|2026-03-10||1|000101|120"_s});
    QCOMPARE(
        station.log(), QStringList{u"BAIXA OF MALHARIA|BAIXA DA OF 000012 PESO 120 NUM.BAIXA: 001|3|SEMDIREITO"_s});
}

void tst_baixaof::aRollThatPassesNeedsNoSupervisor()
{
    DeskStation station(u"SEMDIREITO"_s);
    station.grant({u"A0"_s});
    station.writeOff(u"100,01"_s);
    QCOMPARE(station.rolls().size(), 1);
    QCOMPARE(station.plan(), u"100"_s);
}

void tst_baixaof::aBalanceTakenMeanwhileIsAskedFor()
{
    DeskStation station;
    station.atDialog([&] {
        station.fillRoll(u"30"_s);
        station.addRoll(u"000012"_s, u"001"_s, 75); // by another station, while the dialog stood
        station.expectOverProduction(QMessageBox::No);
        station.confirm();
        QCOMPARE(station.text(u"edtSaldo"_s), u"25,00"_s); // what is left by now
        QCOMPARE(station.rolls().size(), 1);
        station.expectOverProduction(QMessageBox::Yes);
        station.confirm();
    });
    QCOMPARE(station.rolls().size(), 2);
    QCOMPARE(station.plan(), u"105"_s);
}

void tst_baixaof::aNumberGivenMeanwhileIsNotGivenTwice()
{
    DeskStation station;
    station.atDialog([&] {
        station.fillRoll(u"20"_s);
        QCOMPARE(station.text(u"edtBaixa"_s), u"001"_s);
        station.addRoll(u"000012"_s, u"001"_s, 20);
        station.confirm();
    });
    QCOMPARE(station.rolls().size(), 2);
    QVERIFY(station.rolls().last().startsWith(u"002|2026-03-10||"_s));
    QCOMPARE(station.log(), QStringList{u"BAIXA OF MALHARIA|BAIXA DA OF 000012 PESO 20 NUM.BAIXA: 002|3|ADMIN"_s});
}

void tst_baixaof::defectsFollowTheRollToAnotherNumber()
{
    DeskStation station;
    // Counted in a dialog that was given up.
    station.database.run(u"INSERT INTO {DEF_MOV} (NUMERO, ROLO, CODIGO, QUANT) VALUES ('000012', 2, '001', 9)"_s);
    station.atDialog([&] {
        station.answers.expectWindow(
            [&](QWidget *window) {
                station.database.run(
                    u"INSERT INTO {DEF_MOV} (NUMERO, ROLO, CODIGO, QUANT) VALUES ('000012', 1, '001', 3)"_s);
                window->close();
            },
            u"Cadastro de Defeitos da Malha"_s);
        station.press(u"BitBtn1"_s);
        station.fillRoll(u"20"_s);
        station.addRoll(u"000012"_s, u"001"_s, 20); // by another station
        station.confirm();
    });
    QCOMPARE(station.rolls().size(), 2);
    QCOMPARE(station.database.rows(u"SELECT NUMERO, ROLO, CODIGO, QUANT FROM {DEF_MOV}"_s),
        QStringList{u"000012|2|001|3"_s});
    // Defects that were not counted here stay where they are.
    station.database.run(u"UPDATE {DEF_MOV} SET ROLO = 3"_s);
    station.atDialog([&] {
        station.fillRoll(u"20"_s);
        station.addRoll(u"000012"_s, u"003"_s, 20);
        station.confirm();
    });
    QCOMPARE(station.rolls().size(), 4);
    QCOMPARE(station.value(u"SELECT ROLO FROM {DEF_MOV}"_s).toInt(), 3);
}

void tst_baixaof::anOrderThatIsGoneIsAConflict()
{
    DeskStation station;
    station.atDialog([&] {
        station.fillRoll(u"20"_s);
        station.database.run(u"DELETE FROM {OF_MALHA}"_s);
        expectFailure(station.answers, station.dialogCaption,
            u"Outra estação alterou estes dados ao mesmo tempo. Nada foi gravado; tente novamente."_s);
        station.confirm();
    });
    QVERIFY(station.rolls().isEmpty());
}

void tst_baixaof::withoutAnOrderNothingIsWritten()
{
    DeskStation station;
    station.open(u"TfmBaixaOF"_s);
    QCOMPARE(station.text(u"edtBaixa"_s), QString());
    station.fillRoll(u"20"_s);
    station.expect(u"Abra esta tela a partir da baixa de uma OF. Impossível Continuar."_s);
    station.click(u"SbConfirmar"_s);
    station.click(u"BitBtn1"_s); // no roll, no defects
    QVERIFY(!station.host.openForm(u"TfmCadDefMalha"_s));
    QVERIFY(station.rolls().isEmpty());
}

void tst_baixaof::f5ReadsTheScale()
{
    DeskStation station;
    station.scale.setWeight(23.45);
    station.atDialog([&] {
        station.key(Qt::Key_F5);
        QCOMPARE(station.text(u"edtKGTotal"_s), u"23,45"_s);
        QVERIFY(!station.scale.hasReader()); // the port is closed again
        station.scale.setWeight(18.6);
        station.child(u"EdtCodFun"_s)->setFocus(); // from any field
        station.key(Qt::Key_F5);
        QCOMPARE(station.text(u"edtKGTotal"_s), u"18,60"_s);
    });
}

void tst_baixaof::f5SaysWhyThereIsNoWeight()
{
    DeskStation station;
    station.atDialog([&] {
        station.enter(u"edtKGTotal"_s, u"20"_s);
        station.scale.setWeight(23.45, false); // in motion
        station.key(Qt::Key_F5);
        QCOMPARE(station.text(u"edtKGTotal"_s), u"0,00"_s);
        QVERIFY(station.child(u"lbBalanca"_s)->property("warning").toBool());
        QVERIFY(!station.text(u"lbBalanca"_s).isEmpty());
    });
}

void tst_baixaof::aMissingPortIsSaidOnce()
{
    DeskStation station;
    station.usePort(u"/dev/qen-no-such-port"_s);
    station.atDialog([&] {
        station.answers.expectWindow([](QWidget *window) {
            auto *box = qobject_cast<QMessageBox *>(window);
            QVERIFY(box);
            QVERIFY(box->text().contains(u"O peso pode ser digitado."_s));
            box->button(QMessageBox::Ok)->click();
        });
        station.key(Qt::Key_F5);
        station.key(Qt::Key_F5); // the hint says it
        QVERIFY(station.child(u"lbBalanca"_s)->property("warning").toBool());
    });
}

void tst_baixaof::f10SetsThePortUp()
{
    DeskStation station;
    station.atDialog([&] {
        station.answers.expectWindow([](QWidget *dialog) { dialog->close(); }, u"Configuração da Balança"_s);
        station.key(Qt::Key_F10);
    });
}

void tst_baixaof::theWeightOfTheScaleIsRecordedWithTwoDecimals()
{
    DeskStation station;
    station.scale.setFormat(SimulatedScale::Format::PlainCr);
    station.scale.setWeight(23.456);
    station.atDialog([&] {
        station.key(Qt::Key_F5);
        station.enter(u"EdtCodFun"_s, u"000101"_s);
        QCOMPARE(station.text(u"edtKGTotal"_s), u"23,46"_s);
        station.confirm();
    });
    QCOMPARE(station.rolls(), QStringList{u"001|2026-03-10||1|000101|23.46"_s});
    QCOMPARE(station.stock(), QStringList{u"M0001|000012|23.46|0"_s}); // taking it back leaves nothing
}

void tst_baixaof::theDefectsOfTheRollAreOpened()
{
    DeskStation station;
    station.addRoll(u"000012"_s, u"001"_s, 20);
    station.atDialog([&] {
        station.answers.expectWindow(
            [](QWidget *window) {
                QCOMPARE(window->findChild<QLineEdit *>(u"edtOF"_s)->text(), u"000012"_s);
                QCOMPARE(window->findChild<QLineEdit *>(u"edtRolo"_s)->text(), u"2"_s);
                window->close();
            },
            u"Cadastro de Defeitos da Malha"_s);
        station.click(u"BitBtn1"_s);
    });
}

void tst_baixaof::enterMovesToTheNextField()
{
    DeskStation station;
    station.atDialog([&] {
        for (const QString &next : {u"edtData"_s, u"EdtCodFun"_s, u"edtTurno"_s, u"SbConfirmar"_s}) {
            station.key(Qt::Key_Return);
            QCOMPARE(station.focus(), next);
        }
    });
}

void tst_baixaof::givingUpWritesNothing_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("button") << false;
    QTest::newRow("Esc") << true;
}

void tst_baixaof::givingUpWritesNothing()
{
    QFETCH(bool, byKey);
    DeskStation station;
    const QStringList before = station.tables();
    station.atDialog([&] {
        station.fillRoll(u"20"_s);
        if (byKey)
            station.key(Qt::Key_Escape);
        else
            station.click(u"SbDesistir"_s);
    });
    QCOMPARE(station.tables(), before);
    QVERIFY(station.log().isEmpty());
}

QTEST_MAIN(tst_baixaof)
#include "tst_baixaof.moc"
