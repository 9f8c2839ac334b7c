// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/invoicing/hostiletexts.h"
#include "tests/invoicing/releases.h"

using namespace Releases;

namespace {

const QString refusedByTable = QStringLiteral("O banco de dados recusou a operação. Nada foi gravado.");
const QString refusedByConflict =
    QStringLiteral("Outra estação alterou estes dados ao mesmo tempo. Nada foi gravado; tente novamente.");

/// A new release of the client's first order: 5 kg, 2 rolls.
void fillFirstLine(ReleaseStation &station)
{
    station.startRelease();
    station.standOn(0, u"Faturar"_s);
    station.enterCell(u"5"_s);
    station.enterCell(u"2"_s);
}

} // namespace

/// The release of fabric for invoicing: what is stored.
class TestMalLibFatSave : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void everyLineIsStoredAlsoWithoutQuantity();
    void rollsLeftEmptyAreStoredAsZero();
    void savingClearsTheScreenForTheNext();
    void twoReleasesInARow();
    void aSavedReleaseIsReplacedWhole();
    void aLineKeepsItsPlace();
    void whatWasInvoicedIsNeverWritten();
    void aReleaseWithoutClientIsNotRefused();
    void aReleaseWithoutLinesLeavesNone();
    void aCellThatIsOpenIsSavedToo_data();
    void aCellThatIsOpenIsSavedToo();
    void aDateThatIsNoneIsRefused();
    void savingNeedsItsRight();

    void nothingRemainsOfASaveThatFails();
    void moreRollsThanTheTableHoldsAreRefused();
    void aNumberThatWasGivenToAnotherStationIsGivenAnew();
    void aNumberTakenBeforeTheClientIsTypedIsGivenAnewToo();
    void aReleaseChangedMeanwhileIsNotOverwritten();
    void aReleaseThatCouldNotBeReadIsNotReplaced();
    void aTypedNumberUsedMeanwhileIsNotOverwritten();
    void textsAreStoredAsTyped_data();
    void textsAreStoredAsTyped();
    void aRemarkThatIsTooLongIsRefused();
};

void TestMalLibFatSave::everyLineIsStoredAlsoWithoutQuantity()
{
    ReleaseStation station;
    station.openReleases();
    station.startRelease();
    station.enter(u"EdtData"_s, u"07/03/2026"_s);
    station.enter(u"EdtNota"_s, u"000123"_s);
    station.enter(u"EdtObs"_s, u"Entregue por São João"_s);
    station.standOn(1, u"Faturar"_s);
    station.enterCell(u"1234,567"_s);
    station.enterCell(u"61"_s);
    station.click(u"BitBtn1"_s);
    const QString header = u"|2026-03-07|00001|"_s;
    QCOMPARE(station.stored(),
        (QStringList{u"00001|000010"_s + header + u"M0001|0|000123|0|Entregue por São João|"_s,
            u"00001|000012"_s + header + u"M0003|0|000123|0|Entregue por São João|"_s,
            u"00001|000013"_s + header + u"M0001|1234.567|000123|61|Entregue por São João|"_s}));
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
    QVERIFY(!station.host.busyMarker().isBusy());
    QCOMPARE(station.value(u"SELECT COUNT(*) FROM QEN_LOG"_s).toInt(), 0);
}

void TestMalLibFatSave::rollsLeftEmptyAreStoredAsZero()
{
    ReleaseStation station;
    station.openReleases();
    station.startRelease();
    station.standOn(0, u"Faturar"_s);
    station.enterCell(u"5"_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(u"QTDE > 0"_s), QStringList{u"00001|000010|2026-03-10|00001|M0001|5||0||"_s});
    station.enter(u"EdtNumero"_s, u"00001"_s);
    QCOMPARE(station.cell(2, u"Numero"_s), u"000010"_s);
    QCOMPARE(station.cell(2, u"Rolos"_s), u"0"_s);
}

void TestMalLibFatSave::savingClearsTheScreenForTheNext()
{
    ReleaseStation station;
    station.openReleases();
    fillFirstLine(station);
    station.enter(u"EdtData"_s, u"01/03/2026"_s);
    station.enter(u"EdtObs"_s, u"Urgente"_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.focus(), u"EdtNumero"_s);
    for (const QString &field : {u"EdtNumero"_s, u"edtCliente"_s, u"EdtNomeCliente"_s, u"EdtNota"_s, u"EdtObs"_s})
        QCOMPARE(station.text(field), QString());
    QCOMPARE(station.text(u"EdtData"_s), u"10/03/2026"_s);
    QCOMPARE(station.listed(), QStringList());
    QCOMPARE(station.text(u"lbTotais"_s), u"Liberação 00001 gravada."_s);
    // Nothing is left to be asked about.
    QTest::mouseClick(station.child(u"BitBtn3"_s), Qt::LeftButton);
    QTRY_VERIFY(!station.form());
}

void TestMalLibFatSave::twoReleasesInARow()
{
    ReleaseStation station;
    station.openReleases();
    fillFirstLine(station);
    station.click(u"BitBtn1"_s);
    station.startRelease(u"00002"_s);
    QCOMPARE(station.text(u"EdtNumero"_s), u"00002"_s);
    station.key(Qt::Key_F5); // the date has the focus: nothing happens
    station.standOn(0, u"Faturar"_s);
    station.key(Qt::Key_F5);
    station.enterCell(u"1"_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(u"QTDE > 0"_s),
        (QStringList{
            u"00001|000010|2026-03-10|00001|M0001|5||2||"_s, u"00002|000020|2026-03-10|00002|M0002|30||1||"_s}));
    QCOMPARE(station.text(u"lbTotais"_s), u"Liberação 00002 gravada."_s);
}

void TestMalLibFatSave::aSavedReleaseIsReplacedWhole()
{
    ReleaseStation station;
    station.insertReleases();
    const QStringList others = station.stored(u"NUMERO <> '00007'"_s);
    station.openReleases();
    station.enter(u"EdtNumero"_s, u"00007"_s);
    station.enter(u"EdtNota"_s, u"NF-10"_s);
    station.standOn(0, u"Faturar"_s);
    station.enterCell(u"40"_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(u"NUMERO = '00007'"_s),
        (QStringList{u"00007|000010|2026-02-28|00001|M0001|12.5|NF-10|3|Cliente retira|A-01"_s,
            u"00007|000012|2026-02-28|00001|M0003|40|NF-10|2|Cliente retira|A-01"_s}));
    QCOMPARE(station.stored(u"NUMERO <> '00007'"_s), others);
}

void TestMalLibFatSave::aLineKeepsItsPlace()
{
    ReleaseStation station;
    station.insertReleases();
    const QStringList before = station.stored();
    station.openReleases();
    station.enter(u"EdtNumero"_s, u"00007"_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(), before);
}

void TestMalLibFatSave::whatWasInvoicedIsNeverWritten()
{
    ReleaseStation station;
    const QString balances = u"SELECT NUM_OF, CODIGO, QTDE_TOTAL, FATURADO FROM {PA_MALHA} ORDER BY NUM_OF"_s;
    const QStringList before = station.database.rows(balances);
    station.openReleases();
    fillFirstLine(station);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.database.rows(balances), before);
    station.startRelease();
    QCOMPARE(station.cell(0, u"Saldo"_s), u"20,000"_s);
}

void TestMalLibFatSave::aReleaseWithoutClientIsNotRefused()
{
    ReleaseStation station;
    station.openReleases();
    fillFirstLine(station);
    station.enter(u"edtCliente"_s, {});
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(u"QTDE > 0"_s), QStringList{u"00001|000010|2026-03-10||M0001|5||2||"_s});
}

void TestMalLibFatSave::aReleaseWithoutLinesLeavesNone()
{
    ReleaseStation station;
    station.insertReleases();
    const QStringList before = station.stored();
    station.openReleases();
    // The number is empty, and is given as the field is left.
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(), before);
    QCOMPARE(station.text(u"EdtNumero"_s), QString());
    QCOMPARE(station.text(u"lbTotais"_s), QString());
}

void TestMalLibFatSave::aCellThatIsOpenIsSavedToo_data()
{
    QTest::addColumn<bool>("byMouse");
    QTest::newRow("mouse") << true;
    QTest::newRow("Alt+G") << false;
}

void TestMalLibFatSave::aCellThatIsOpenIsSavedToo()
{
    QFETCH(bool, byMouse);
    ReleaseStation station;
    station.openReleases();
    station.startRelease();
    station.standOn(0, u"Faturar"_s);
    station.typeInCell(u"3,25"_s);
    if (byMouse)
        station.click(u"BitBtn1"_s);
    else
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_G, Qt::AltModifier);
    QTRY_COMPARE(station.stored(u"QTDE > 0"_s), QStringList{u"00001|000010|2026-03-10|00001|M0001|3.25||0||"_s});
}

void TestMalLibFatSave::aDateThatIsNoneIsRefused()
{
    ReleaseStation station;
    station.openReleases();
    fillFirstLine(station);
    station.enter(u"EdtData"_s, u"31/02/2026"_s);
    expectInformation(station.answers, caption, u"Data Inválida. Impossível Continuar."_s);
    station.click(u"BitBtn1"_s);
    QTRY_COMPARE(station.focus(), u"EdtData"_s);
    QCOMPARE(station.stored(), QStringList());
    // No date at all is stored as none.
    station.enter(u"EdtData"_s, {});
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(u"QTDE > 0"_s), QStringList{u"00001|000010||00001|M0001|5||2||"_s});
    station.enter(u"EdtNumero"_s, u"00001"_s);
    QCOMPARE(station.text(u"EdtData"_s), QString());
}

void TestMalLibFatSave::savingNeedsItsRight()
{
    ReleaseStation station;
    station.host.login(u"SEMDIREITO"_s, 1);
    station.openReleases();
    fillFirstLine(station);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(), QStringList());
    QCOMPARE(station.cell(0, u"Faturar"_s), u"5,000"_s);
    const QString right =
        u"INSERT INTO QEN_DIREITO (USUARIO, TELA, LETRA, NIVEL) VALUES ('SEMDIREITO', 'TfmMalLibFat', 'A', '%1')"_s;
    station.database.run(right.arg(u"1"_s)); // a supervisor's right is another one
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(), QStringList());
    station.database.run(right.arg(u"0"_s));
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored().size(), 3);
}

void TestMalLibFatSave::nothingRemainsOfASaveThatFails()
{
    ReleaseStation station;
    station.insertReleases();
    const QStringList before = station.stored();
    // The second line is refused, when the old ones are gone and the first is there.
    station.database.run(u"ALTER TABLE {PEDIDO3} ADD CONSTRAINT NO_SEVEN CHECK (QTDE <> 7)"_s);
    station.openReleases();
    station.enter(u"EdtNumero"_s, u"00007"_s);
    station.standOn(1, u"Faturar"_s);
    station.enterCell(u"7"_s);
    station.enter(u"EdtObs"_s, u"Nunca gravada"_s);
    expectFailure(station.answers, caption, refusedByTable);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(), before);
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
    QVERIFY(!station.host.busyMarker().isBusy());
    // Nothing that was typed is lost, and it can be corrected.
    QCOMPARE(station.text(u"EdtObs"_s), u"Nunca gravada"_s);
    QCOMPARE(station.cell(1, u"Faturar"_s), u"7,000"_s);
    station.standOn(1, u"Faturar"_s);
    station.enterCell(u"8"_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(u"CAIXA = '000010'"_s),
        QStringList{u"00007|000010|2026-02-28|00001|M0001|8|NF-9|3|Nunca gravada|A-01"_s});
    QCOMPARE(station.stored().size(), 3);
}

void TestMalLibFatSave::moreRollsThanTheTableHoldsAreRefused()
{
    ReleaseStation station;
    station.openReleases();
    fillFirstLine(station);
    station.standOn(0, u"Rolos"_s);
    station.enterCell(u"999999999999"_s);
    expectFailure(station.answers, caption, refusedByTable);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(), QStringList());
    QCOMPARE(station.text(u"EdtNumero"_s), u"00001"_s);
}

void TestMalLibFatSave::aNumberThatWasGivenToAnotherStationIsGivenAnew()
{
    ReleaseStation station;
    station.openReleases();
    fillFirstLine(station);
    station.insertLine(u"00001"_s, u"000020"_s, u"M0002"_s, 30, 1, u"00002"_s);
    const QStringList theirs = station.stored();
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(u"NUMERO = '00001'"_s), theirs);
    QCOMPARE(station.stored(u"NUMERO = '00002' AND QTDE > 0"_s),
        QStringList{u"00002|000010|2026-03-10|00001|M0001|5||2||"_s});
    QCOMPARE(station.text(u"lbTotais"_s), u"Liberação 00002 gravada."_s);
}

void TestMalLibFatSave::aNumberTakenBeforeTheClientIsTypedIsGivenAnewToo()
{
    ReleaseStation station;
    station.openReleases();
    station.enter(u"EdtNumero"_s, {});
    station.insertLine(u"00001"_s, u"000020"_s, u"M0002"_s, 30, 1, u"00002"_s);
    const QStringList theirs = station.stored();
    station.enter(u"edtCliente"_s, u"00001"_s);
    QCOMPARE(station.listed().size(), 3);
    station.standOn(0, u"Faturar"_s);
    station.enterCell(u"5"_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(u"NUMERO = '00001'"_s), theirs);
    QCOMPARE(station.stored(u"NUMERO = '00002'"_s).size(), 3);
}

void TestMalLibFatSave::aReleaseThatCouldNotBeReadIsNotReplaced()
{
    ReleaseStation station;
    station.insertReleases();
    const QStringList before = station.stored();
    station.openReleases();
    station.database.run(u"ALTER TABLE {MAQUINA} DROP DESCRICAO"_s);
    expectFailure(station.answers, caption, refusedByTable);
    station.enter(u"EdtNumero"_s, u"00007"_s);
    QCOMPARE(station.listed(), QStringList());
    expectFailure(station.answers, caption, refusedByConflict);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(), before);
}

void TestMalLibFatSave::aReleaseChangedMeanwhileIsNotOverwritten()
{
    ReleaseStation station;
    station.insertReleases();
    station.openReleases();
    station.enter(u"EdtNumero"_s, u"00007"_s);
    station.database.run(u"UPDATE {PEDIDO3} SET NOTAFISCAL = 'NF-99' WHERE NUMERO = '00007'"_s);
    const QStringList theirs = station.stored();
    expectFailure(station.answers, caption, refusedByConflict);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(), theirs);
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
    // Read anew, it can be changed.
    station.enter(u"EdtNumero"_s, u"00008"_s);
    station.enter(u"EdtNumero"_s, u"00007"_s);
    QCOMPARE(station.text(u"EdtNota"_s), u"NF-99"_s);
    station.enter(u"EdtObs"_s, u"Nova"_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(u"OBS = 'Nova' AND NOTAFISCAL = 'NF-99'"_s).size(), 2);
}

void TestMalLibFatSave::aTypedNumberUsedMeanwhileIsNotOverwritten()
{
    ReleaseStation station;
    station.openReleases();
    station.enter(u"EdtNumero"_s, u"00050"_s);
    station.enter(u"edtCliente"_s, u"00001"_s);
    station.insertLine(u"00050"_s, u"000020"_s, u"M0002"_s, 30, 1, u"00002"_s);
    const QStringList theirs = station.stored();
    expectFailure(station.answers, caption, refusedByConflict);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(), theirs);
}

void TestMalLibFatSave::textsAreStoredAsTyped_data()
{
    HostileTexts::addTexts();
}

void TestMalLibFatSave::textsAreStoredAsTyped()
{
    QFETCH(QString, text);
    ReleaseStation station;
    station.insertReleases();
    const QStringList others = station.stored();
    const QString number = text.left(5).trimmed();
    const QString invoice = text.left(10).trimmed();
    station.openReleases();
    station.paste(u"EdtNumero"_s, number);
    station.enter(u"edtCliente"_s, u"00002"_s);
    station.paste(u"EdtNota"_s, invoice);
    station.paste(u"EdtObs"_s, text + u'\n' + text);
    station.click(u"BitBtn1"_s);
    const QString condition = u"NUMERO = "_s + SqlText::quoted(number);
    const QStringList line{number, u"000020"_s, u"2026-03-10"_s, u"00002"_s, u"M0002"_s, u"0"_s, invoice, u"0"_s,
        text + u'\n' + text, QString()};
    QCOMPARE(station.stored(condition), QStringList{line.join(u'|')});
    QCOMPARE(station.stored(u"NOT "_s + condition), others);
    // And read back, changed and printed.
    station.paste(u"EdtNumero"_s, number);
    station.key(Qt::Key_Tab);
    QCOMPARE(station.text(u"EdtNota"_s), invoice);
    QCOMPARE(station.text(u"EdtObs"_s), text + u'\n' + text);
    station.click(u"BitBtn2"_s);
    station.enter(u"EdtObs"_s, u"Outra"_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(condition + u" AND OBS = 'Outra'"_s).size(), 1);
    QCOMPARE(station.stored(u"NOT "_s + condition), others);
}

void TestMalLibFatSave::aRemarkThatIsTooLongIsRefused()
{
    ReleaseStation station;
    station.openReleases();
    fillFirstLine(station);
    station.paste(u"EdtObs"_s, QString(4001, u'x'));
    expectFailure(station.answers, caption, refusedByTable);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(), QStringList());
    station.child(u"EdtObs"_s)->setFocus();
    station.key(Qt::Key_Backspace);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.value(u"SELECT MAX(CHAR_LENGTH(OBS)) FROM {PEDIDO3}"_s).toInt(), 4000);
}

QTEST_MAIN(TestMalLibFatSave)
#include "tst_mallibfatsave.moc"
