// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/invoicing/hostiletexts.h"
#include "tests/invoicing/releases.h"

using namespace Releases;

/// The release of fabric for invoicing: what it offers and how its lines are filled.
class TestMalLibFat : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void everyControlBearsItsCaption();
    void quantityAndRollsAloneAreTyped();
    void anEmptyNumberBecomesTheNextFreeOne();
    void theOpenProductionOfTheClientIsOffered();
    void fabricThatIsInvoicedWhollyIsNotOffered();
    void ordersWithoutMachineOrHeaderAreOfferedToo();
    void aSavedReleaseIsShown();
    void aSavedReleaseOffersNoProduction();
    void aNumberThatIsNewIsKeptAsTyped();
    void anUnknownClientIsRefused();
    void theClientIsNamedAndSearched();
    void anotherNumberClearsTheScreen();
    void passingAFieldAgainKeepsWhatWasTyped();
    void anotherClientGetsItsOwnFabric();
    void hostileTextFindsNothing_data();
    void hostileTextFindsNothing();

    void theKeyboardAloneIsEnough();
    void tabMovesThroughTheCellsToo();
    void aKeyTakesTheWholeBalance();
    void withoutABalanceTheKeyTakesNothing();
    void theTotalsFollow();
    void moreThanTheBalanceIsColoured();
    void escLeavesTheCellBeforeTheScreen();
    void leavingQuantitiesUnsavedAsks();
    void withoutQuantitiesClosingAsksNothing();
};

void TestMalLibFat::everyControlBearsItsCaption()
{
    ReleaseStation station;
    station.openReleases();
    QCOMPARE(station.form()->windowTitle(), caption);
    const QList<std::pair<QString, QString>> texts{{u"lbNumero"_s, u"Número"_s}, {u"lbCliente"_s, u"Cliente"_s},
        {u"lbData"_s, u"Data"_s}, {u"lbNota"_s, u"Nota Fiscal"_s}, {u"lbObs"_s, u"Observação"_s}};
    for (const auto &[name, text] : texts)
        QCOMPARE(station.text(name).remove(u'&'), text);
    QCOMPARE(station.text(u"BitBtn1"_s), u"&Gravar"_s);
    QCOMPARE(station.text(u"BitBtn2"_s), u"&Imprimir"_s);
    QCOMPARE(station.text(u"BitBtn3"_s), u"&Fechar"_s);
    QCOMPARE(station.text(u"EdtData"_s), u"10/03/2026"_s);
    QCOMPARE(station.focus(), u"EdtNumero"_s);
}

void TestMalLibFat::quantityAndRollsAloneAreTyped()
{
    ReleaseStation station;
    station.openReleases();
    station.startRelease();
    const QAbstractItemModel *model = station.grid()->model();
    QStringList titles;
    QStringList typed;
    for (int column = 0; column < model->columnCount(); ++column) {
        titles.append(model->headerData(column, Qt::Horizontal).toString());
        if (model->flags(model->index(0, column)) & Qt::ItemIsEditable)
            typed.append(titles.last());
    }
    QCOMPARE(titles.join(u'|'),
        u"OF|Código|Descrição|Produzido|Faturado|Saldo|Faturar|Rolos|Máquina|Desc. Maquina|Local|Lote"_s);
    QCOMPARE(typed, (QStringList{u"Faturar"_s, u"Rolos"_s}));
}

void TestMalLibFat::anEmptyNumberBecomesTheNextFreeOne()
{
    ReleaseStation station;
    station.openReleases();
    station.enter(u"EdtNumero"_s, {});
    QCOMPARE(station.text(u"EdtNumero"_s), u"00001"_s);
    station.insertReleases();
    station.insertLine(u"A9"_s, u"000010"_s, u"M0001"_s, 1, 1);
    station.enter(u"EdtNumero"_s, u"  "_s);
    QCOMPARE(station.text(u"EdtNumero"_s), u"00009"_s);
    QCOMPARE(station.listed(), QStringList());
}

void TestMalLibFat::theOpenProductionOfTheClientIsOffered()
{
    ReleaseStation station;
    station.openReleases();
    station.startRelease();
    QCOMPARE(station.text(u"EdtNomeCliente"_s), u"Confecções Serra Azul Ltda"_s);
    QCOMPARE(station.listed(), (QStringList{u"000010"_s, u"000013"_s, u"000012"_s}));
    QCOMPARE(station.row(0),
        u"000010|M0001|Meia-malha PV 60/40|120,000|100,000|20,000|||001|Circular 30\" 28 agulhas||L10"_s);
    QCOMPARE(station.row(2), u"000012|M0003|Moletom 3 cabos|50,125|0,000|50,125|||002|Circular 34\" 24 agulhas||L12"_s);
    QCOMPARE(station.text(u"lbTotais"_s), u"Linhas a faturar: 0 de 3     Faturar: 0,000 kg     Rolos: 0"_s);
}

void TestMalLibFat::fabricThatIsInvoicedWhollyIsNotOffered()
{
    ReleaseStation station;
    station.database.run(u"UPDATE {PA_MALHA} SET FATURADO = QTDE_TOTAL WHERE NUM_OF = '000010'"_s);
    // More than was produced, and never said how much.
    station.database.run(u"UPDATE {PA_MALHA} SET FATURADO = 51 WHERE NUM_OF = '000012'"_s);
    station.database.run(u"UPDATE {PA_MALHA} SET FATURADO = NULL WHERE NUM_OF = '000013'"_s);
    station.openReleases();
    station.startRelease();
    QCOMPARE(station.listed(), QStringList());
    station.database.run(u"UPDATE {PA_MALHA} SET FATURADO = QTDE_TOTAL - 0.001 WHERE NUM_OF = '000010'"_s);
    station.startRelease();
    QCOMPARE(station.listed(), QStringList{u"000010"_s});
    QCOMPARE(station.cell(0, u"Saldo"_s), u"0,001"_s);
}

void TestMalLibFat::ordersWithoutMachineOrHeaderAreOfferedToo()
{
    ReleaseStation station;
    station.database.run(u"DELETE FROM {OF_MALHA} WHERE NUM_OF = '000010'"_s);
    station.database.run(u"UPDATE {OF_MALHA} SET MAQUINA = NULL WHERE NUM_OF = '000012'"_s);
    station.openReleases();
    station.startRelease();
    QCOMPARE(station.row(0), u"000010|M0001|Meia-malha PV 60/40|120,000|100,000|20,000||||||"_s);
    QCOMPARE(station.row(2), u"000012|M0003|Moletom 3 cabos|50,125|0,000|50,125||||||L12"_s);
}

void TestMalLibFat::aSavedReleaseIsShown()
{
    ReleaseStation station;
    station.insertReleases();
    station.openReleases();
    station.enter(u"EdtNumero"_s, u"00007"_s);
    QCOMPARE(station.text(u"edtCliente"_s), u"00001"_s);
    QCOMPARE(station.text(u"EdtNomeCliente"_s), u"Confecções Serra Azul Ltda"_s);
    QCOMPARE(station.text(u"EdtData"_s), u"28/02/2026"_s);
    QCOMPARE(station.text(u"EdtNota"_s), u"NF-9"_s);
    QCOMPARE(station.text(u"EdtObs"_s), u"Cliente retira"_s);
    QCOMPARE(station.grid()->model()->rowCount(), 2);
    QCOMPARE(station.row(0), u"000012|M0003|Moletom 3 cabos||||50,125|2|002|Circular 34\" 24 agulhas|A-01|L12"_s);
    QCOMPARE(station.row(1), u"000010|M0001|Meia-malha PV 60/40||||12,500|3|001|Circular 30\" 28 agulhas|A-01|L10"_s);
    QCOMPARE(station.text(u"lbTotais"_s), u"Linhas a faturar: 2 de 2     Faturar: 62,625 kg     Rolos: 5"_s);
}

void TestMalLibFat::aSavedReleaseOffersNoProduction()
{
    ReleaseStation station;
    station.insertReleases();
    station.openReleases();
    station.enter(u"EdtNumero"_s, u"00007"_s);
    station.enter(u"edtCliente"_s, u"00001"_s);
    QCOMPARE(station.listed(), (QStringList{u"000012"_s, u"000010"_s}));
    station.enter(u"edtCliente"_s, u"00002"_s);
    QCOMPARE(station.listed(), (QStringList{u"000012"_s, u"000010"_s}));
    QCOMPARE(station.text(u"EdtNomeCliente"_s), u"Malhas São Bento S.A."_s);
}

void TestMalLibFat::aNumberThatIsNewIsKeptAsTyped()
{
    ReleaseStation station;
    station.openReleases();
    station.enter(u"EdtNumero"_s, u"77"_s);
    QCOMPARE(station.text(u"EdtNumero"_s), u"77"_s);
    QCOMPARE(station.text(u"edtCliente"_s), QString());
    station.enter(u"edtCliente"_s, u"00002"_s);
    QCOMPARE(station.listed(), QStringList{u"000020"_s});
}

void TestMalLibFat::anUnknownClientIsRefused()
{
    ReleaseStation station;
    station.openReleases();
    station.enter(u"EdtNumero"_s, {});
    for (const QString &unknown : {u"99999"_s, u"%"_s, u"'1'"_s}) {
        expectInformation(station.answers, caption, u"Cliente inválido."_s);
        station.enter(u"edtCliente"_s, unknown);
        QTRY_COMPARE(station.focus(), u"edtCliente"_s);
        QCOMPARE(station.text(u"EdtNomeCliente"_s), QString());
        QCOMPARE(station.listed(), QStringList());
    }
    // No client at all is no wrong one.
    station.enter(u"edtCliente"_s, {});
    QCOMPARE(station.focus(), u"EdtData"_s);
    QCOMPARE(station.listed(), QStringList());
}

void TestMalLibFat::theClientIsNamedAndSearched()
{
    ReleaseStation station;
    station.openReleases();
    station.enter(u"EdtNumero"_s, {});
    expectSearchAndTake(station.answers, u"serra"_s, u"Clientes"_s);
    station.key(Qt::Key_F4);
    QCOMPARE(station.text(u"edtCliente"_s), u"00001"_s);
    QCOMPARE(station.text(u"EdtNomeCliente"_s), u"Confecções Serra Azul Ltda"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.listed().size(), 3);
    QStringList clients;
    expectSearchAndLeave(station.answers, &clients, u"Clientes"_s);
    station.click(u"PqCliente"_s);
    QCOMPARE(clients, (QStringList{u"00001"_s, u"00002"_s, u"00003"_s}));
    QCOMPARE(station.text(u"edtCliente"_s), u"00001"_s);
}

void TestMalLibFat::anotherNumberClearsTheScreen()
{
    ReleaseStation station;
    station.insertReleases();
    station.openReleases();
    station.enter(u"EdtNumero"_s, u"00007"_s);
    station.enter(u"EdtNumero"_s, u"00100"_s);
    for (const QString &field : {u"edtCliente"_s, u"EdtNomeCliente"_s, u"EdtNota"_s, u"EdtObs"_s, u"lbTotais"_s})
        QCOMPARE(station.text(field), QString());
    QCOMPARE(station.text(u"EdtNumero"_s), u"00100"_s);
    QCOMPARE(station.text(u"EdtData"_s), u"10/03/2026"_s);
    QCOMPARE(station.listed(), QStringList());
    station.enter(u"EdtNumero"_s, u"00008"_s);
    QCOMPARE(station.listed(), QStringList{u"000020"_s});
}

void TestMalLibFat::passingAFieldAgainKeepsWhatWasTyped()
{
    ReleaseStation station;
    station.openReleases();
    station.startRelease();
    station.standOn(1, u"Faturar"_s);
    station.enterCell(u"4,5"_s);
    station.enter(u"EdtObs"_s, u"Urgente"_s);
    station.enter(u"EdtNumero"_s, u"00001"_s);
    station.enter(u"edtCliente"_s, u"00001"_s);
    QCOMPARE(station.text(u"EdtNumero"_s), u"00001"_s);
    QCOMPARE(station.text(u"EdtObs"_s), u"Urgente"_s);
    QCOMPARE(station.cell(1, u"Faturar"_s), u"4,500"_s);
    // Another number starts anew.
    station.enter(u"EdtNumero"_s, {});
    QCOMPARE(station.listed(), QStringList());
}

void TestMalLibFat::anotherClientGetsItsOwnFabric()
{
    ReleaseStation station;
    station.openReleases();
    station.startRelease();
    station.enter(u"edtCliente"_s, u"00002"_s);
    QCOMPARE(station.listed(), QStringList{u"000020"_s});
    station.enter(u"edtCliente"_s, u"00003"_s);
    QCOMPARE(station.listed(), QStringList());
    QCOMPARE(station.text(u"EdtNumero"_s), u"00001"_s);
}

void TestMalLibFat::hostileTextFindsNothing_data()
{
    HostileTexts::addCodes();
}

void TestMalLibFat::hostileTextFindsNothing()
{
    QFETCH(QString, code);
    ReleaseStation station;
    station.insertReleases();
    const QStringList before = station.stored();
    station.openReleases();
    station.paste(u"EdtNumero"_s, code);
    station.key(Qt::Key_Tab);
    QCOMPARE(station.text(u"EdtNumero"_s), code);
    QCOMPARE(station.listed(), QStringList());
    station.paste(u"edtCliente"_s, code);
    expectInformation(station.answers, caption, u"Cliente inválido."_s);
    station.key(Qt::Key_Tab);
    QCOMPARE(station.listed(), QStringList());
    QCOMPARE(station.stored(), before);
}

void TestMalLibFat::theKeyboardAloneIsEnough()
{
    ReleaseStation station;
    station.openReleases();
    station.key(Qt::Key_Return);
    QCOMPARE(station.focus(), u"edtCliente"_s);
    QTest::keyClicks(station.child(u"edtCliente"_s), u"00001"_s);
    for (const QString &next : {u"EdtData"_s, u"EdtNota"_s, u"EdtObs"_s, u"DBGrid1"_s}) {
        station.key(Qt::Key_Return);
        QCOMPARE(station.focus(), next);
    }
    QCOMPARE(station.place(), u"0 Faturar"_s);
    station.enterCell(u"12,5"_s);
    QCOMPARE(station.place(), u"0 Rolos"_s);
    station.enterCell(u"3"_s);
    QCOMPARE(station.place(), u"1 Faturar"_s);
    // A line that is passed over, then the last one.
    station.key(Qt::Key_Return);
    QCOMPARE(station.place(), u"1 Rolos"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.place(), u"2 Faturar"_s);
    station.enterCell(u"7"_s);
    station.enterCell(u"1"_s);
    QCOMPARE(station.focus(), u"BitBtn1"_s);
    QCOMPARE(station.cell(0, u"Faturar"_s), u"12,500"_s);
    QCOMPARE(station.cell(0, u"Rolos"_s), u"3"_s);
    QCOMPARE(station.cell(1, u"Faturar"_s), QString());
    station.key(Qt::Key_Return);
    QCOMPARE(station.stored(u"QTDE > 0"_s),
        (QStringList{
            u"00001|000010|2026-03-10|00001|M0001|12.5||3||"_s, u"00001|000012|2026-03-10|00001|M0003|7||1||"_s}));
    QCOMPARE(station.focus(), u"EdtNumero"_s);
}

void TestMalLibFat::tabMovesThroughTheCellsToo()
{
    ReleaseStation station;
    station.openReleases();
    station.startRelease();
    station.standOn(0, u"Faturar"_s);
    station.typeInCell(u"5"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTRY_COMPARE(station.place(), u"0 Rolos"_s);
    station.typeInCell(u"2"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTRY_COMPARE(station.place(), u"1 Faturar"_s);
    QCOMPARE(station.cell(0, u"Faturar"_s), u"5,000"_s);
    QCOMPARE(station.cell(0, u"Rolos"_s), u"2"_s);
    // From a figure that is only read, Enter goes to the quantity.
    station.standOn(2, u"Numero"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.place(), u"2 Faturar"_s);
}

void TestMalLibFat::aKeyTakesTheWholeBalance()
{
    ReleaseStation station;
    station.openReleases();
    station.startRelease();
    station.standOn(0, u"Faturar"_s);
    station.key(Qt::Key_F5);
    QCOMPARE(station.cell(0, u"Faturar"_s), u"20,000"_s);
    QCOMPARE(station.place(), u"0 Rolos"_s);
    station.enterCell(u"4"_s);
    // Also in a cell that is being typed in.
    station.typeInCell(u"9"_s);
    station.key(Qt::Key_F5);
    QCOMPARE(station.cell(1, u"Faturar"_s), u"8,000"_s);
    QCOMPARE(station.place(), u"1 Rolos"_s);
    station.typeInCell(u"6"_s);
    station.key(Qt::Key_F5);
    QCOMPARE(station.cell(1, u"Rolos"_s), u"6"_s);
    QCOMPARE(station.cell(1, u"Faturar"_s), u"8,000"_s);
    QCOMPARE(station.cell(2, u"Faturar"_s), QString());
    QCOMPARE(station.text(u"lbTotais"_s), u"Linhas a faturar: 2 de 3     Faturar: 28,000 kg     Rolos: 10"_s);
}

void TestMalLibFat::withoutABalanceTheKeyTakesNothing()
{
    ReleaseStation station;
    station.insertReleases();
    station.openReleases();
    station.enter(u"EdtNumero"_s, u"00007"_s);
    station.standOn(1, u"Faturar"_s);
    station.key(Qt::Key_F5);
    QCOMPARE(station.cell(1, u"Faturar"_s), u"12,500"_s);
    // Nor without any line.
    station.enter(u"EdtNumero"_s, u"00100"_s);
    station.grid()->setFocus();
    station.key(Qt::Key_F5);
    station.key(Qt::Key_Return);
    QCOMPARE(station.focus(), u"BitBtn1"_s);
    QCOMPARE(station.listed(), QStringList());
}

void TestMalLibFat::theTotalsFollow()
{
    ReleaseStation station;
    station.openReleases();
    station.startRelease();
    const auto typed = [&](int row, const QString &field, const QString &text) {
        station.standOn(row, field);
        station.enterCell(text);
        return station.text(u"lbTotais"_s);
    };
    QCOMPARE(typed(0, u"Faturar"_s, u"12,345"_s), u"Linhas a faturar: 1 de 3     Faturar: 12,345 kg     Rolos: 0"_s);
    QCOMPARE(typed(0, u"Rolos"_s, u"5"_s), u"Linhas a faturar: 1 de 3     Faturar: 12,345 kg     Rolos: 5"_s);
    QCOMPARE(typed(2, u"Faturar"_s, u"1250,5"_s), u"Linhas a faturar: 2 de 3     Faturar: 1.262,845 kg     Rolos: 5"_s);
    QCOMPARE(station.text(u"lbAcima"_s), u"Acima do saldo: 1"_s);
    QCOMPARE(typed(2, u"Faturar"_s, u"0"_s), u"Linhas a faturar: 1 de 3     Faturar: 12,345 kg     Rolos: 5"_s);
    QCOMPARE(station.text(u"lbAcima"_s), QString());
}

void TestMalLibFat::moreThanTheBalanceIsColoured()
{
    ReleaseStation station;
    station.openReleases();
    station.startRelease();
    const auto colouredCells = [&](int row) {
        const QAbstractItemModel *model = station.grid()->model();
        int cells = 0;
        for (int column = 0; column < model->columnCount(); ++column)
            cells += model->index(row, column).data(Qt::BackgroundRole).isValid() ? 1 : 0;
        return cells;
    };
    station.standOn(0, u"Faturar"_s);
    station.enterCell(u"20"_s);
    QCOMPARE(colouredCells(0), 0);
    station.standOn(0, u"Faturar"_s);
    station.enterCell(u"20,001"_s);
    QCOMPARE(colouredCells(0), 12);
    QCOMPARE(colouredCells(1), 0);
    // It is stored all the same, without a word.
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(u"QTDE > 0"_s), QStringList{u"00001|000010|2026-03-10|00001|M0001|20.001||0||"_s});
}

void TestMalLibFat::escLeavesTheCellBeforeTheScreen()
{
    ReleaseStation station;
    station.openReleases();
    station.startRelease();
    station.standOn(0, u"Faturar"_s);
    station.typeInCell(u"9"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QTRY_COMPARE(QApplication::focusWidget(), station.grid());
    QCOMPARE(station.cell(0, u"Faturar"_s), QString());
    QVERIFY(station.form());
    station.key(Qt::Key_Escape);
    QTRY_VERIFY(!station.form());
}

void TestMalLibFat::leavingQuantitiesUnsavedAsks()
{
    ReleaseStation station;
    const QString question = u"A liberação não foi gravada. Deseja abandonar as alterações?"_s;
    station.openReleases();
    station.startRelease();
    station.standOn(0, u"Faturar"_s);
    station.enterCell(u"9"_s);
    station.answers.expectAndType(question, Qt::Key_Return, caption);
    station.click(u"BitBtn3"_s);
    QVERIFY(station.form()->isVisible());
    QCOMPARE(station.cell(0, u"Faturar"_s), u"9,000"_s);
    station.answers.expect(question, QMessageBox::Yes, caption);
    QTest::mouseClick(station.child(u"BitBtn3"_s), Qt::LeftButton);
    QTRY_VERIFY(!station.form());
    QCOMPARE(station.stored(), QStringList());
}

void TestMalLibFat::withoutQuantitiesClosingAsksNothing()
{
    ReleaseStation station;
    station.insertReleases();
    station.openReleases();
    station.enter(u"EdtNumero"_s, u"00007"_s);
    station.enter(u"EdtObs"_s, u"Nunca gravada"_s);
    QTest::mouseClick(station.child(u"BitBtn3"_s), Qt::LeftButton);
    QTRY_VERIFY(!station.form());
    QCOMPARE(station.stored(u"OBS = 'Nunca gravada'"_s), QStringList());
}

QTEST_MAIN(TestMalLibFat)
#include "tst_mallibfat.moc"
