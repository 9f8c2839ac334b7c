// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// The desk's screen: an order, its rolls, the way into the dialog, taking back, the label.

#include "module/controls/dbgrid.h"
#include "module/form.h"
#include "tests/production/deskstation.h"
#include "tests/support/paper.h"
#include "tests/support/screenchecks.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

class tst_ordembaixa : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void everyControlBearsItsCaption();
    void anOrderShowsItselfAndItsRolls();
    void anEmptyOrUnknownOrderShowsNothing();
    void onlyOrdersWithABalanceAreOffered();
    void theOrderChosenInTheSearchIsShown();
    void aTitleOrdersTheRolls();
    void theDialogGetsTheOrder();
    void theDialogGetsTheNextNumber_data();
    void theDialogGetsTheNextNumber();
    void aRollWrittenOffIsShownAtOnce();
    void anOrderThatIsFinishedCannotBeWrittenOff();
    void refusalsBeforeTheDialogAreSilent();
    void withoutTheRightThereIsNoDialog();
    void takingBackAsksAndReducesTheStock();
    void takingBackNeedsItsRight();
    void withoutRollsThereIsNothingToTakeBack();
    void theNumberOfTheLastRollIsGivenAgain();
    void theNumberOfAMiddleRollIsNot();
    void withoutFinishedFabricStockNoneIsTouched();
    void aRollTakenBackElsewhereIsAConflict();
    void aNumberThatIsAnotherRollsByNowIsNotTakenBack();
    void takingBackStandsWithoutItsLogLine();
    void takingBackFailsWhole_data();
    void takingBackFailsWhole();
    void theLabelIsThatOfTheMarkedRoll();
    void withoutARollThereIsNoLabel();
    void theInstanceIsGoneWithTheScreen();

private:
    /// Takes the roll of that row back.
    static void takeBack(DeskStation &station, int row)
    {
        station.grid()->selectRow(row);
        station.answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes, u"Eliminação de Registro"_s);
        station.click(u"BtExcluir"_s);
    }
};

void tst_ordembaixa::everyControlBearsItsCaption()
{
    DeskStation station;
    station.open(u"TfmMalhaOFBaixa"_s);
    QCOMPARE(station.form()->windowTitle(), u"Baixa Ordem de Fabricação"_s);
    QStringList labels;
    for (const QLabel *label : station.form()->findChildren<QLabel *>())
        labels.append(label->text().remove(u'&'));
    for (const QString &text : {u"OF"_s, u"Cliente"_s, u"Material"_s, u"Máquina"_s, u"Peso Total"_s, u"Peso Peça"_s,
             u"Data"_s, u"Saldo"_s, u"Peso Baixado"_s})
        QVERIFY2(labels.contains(text), qPrintable(text));
    QCOMPARE(station.text(u"btnBaixa"_s), u"&Baixar"_s);
    QCOMPARE(station.text(u"BtExcluir"_s), u"&Excluir"_s);
    QCOMPARE(station.text(u"BtSaida"_s), u"&Fechar"_s);
    QStringList titles;
    for (int column = 0; column < station.grid()->model()->columnCount(); ++column)
        titles.append(station.grid()->model()->headerData(column, Qt::Horizontal).toString());
    QCOMPARE(titles, QStringList({u"Num. OF"_s, u"Num. Baixa"_s, u"Data"_s, u"Turno"_s, u"Funcionário"_s, u"Qtde"_s}));
    QCOMPARE(station.grid()->actions().first()->text(), u"Imprimir Etiqueta"_s);
    QCOMPARE(station.child<QLineEdit>(u"edtOF"_s)->maxLength(), 6);
    QCOMPARE(station.focus(), u"edtOF"_s);
}

void tst_ordembaixa::anOrderShowsItselfAndItsRolls()
{
    DeskStation station;
    station.addRoll(u"000012"_s, u"001"_s, 20.125);
    station.addRoll(u"000012"_s, u"002"_s, 19.5);
    station.addOrder(u"000013"_s, 500);
    station.addRoll(u"000013"_s, u"001"_s, 7);
    station.openDesk();
    const QList<std::pair<QString, QString>> shown{{u"edtCliente"_s, u"00001"_s},
        {u"edtDescCliente"_s, u"Confecções Serra Azul Ltda"_s}, {u"edtMaterial"_s, u"M0001"_s},
        {u"edtDescMaterial"_s, u"Meia-malha PV 60/40"_s}, {u"edtMaquina"_s, u"001"_s},
        {u"edtDescMaq"_s, u"Circular 30\" 28 agulhas"_s}, {u"edtData"_s, u"02/03/2026"_s},
        {u"edtKGTotal"_s, u"100,00"_s}, {u"edtKGRolo"_s, u"20,00"_s}, {u"edtSaldo"_s, u"60,38"_s},
        {u"EdtTotBaixado"_s, u"39,63"_s}};
    for (const auto &[field, text] : shown)
        QCOMPARE(station.text(field), text);
    QCOMPARE(station.column(0), QStringList({u"000012"_s, u"000012"_s}));
    QCOMPARE(station.column(1), QStringList({u"001"_s, u"002"_s}));
    QCOMPARE(station.column(2), QStringList({u"09/03/2026"_s, u"09/03/2026"_s}));
    QCOMPARE(station.column(4), QStringList({u"000101"_s, u"000101"_s}));
    QCOMPARE(station.column(5), QStringList({u"20,13"_s, u"19,50"_s}));
}

void tst_ordembaixa::anEmptyOrUnknownOrderShowsNothing()
{
    DeskStation station;
    station.addRoll(u"000012"_s, u"001"_s, 20);
    for (const QString &other : {u"999999"_s, QString(), u"' OR 1"_s}) {
        station.openDesk();
        QCOMPARE(station.text(u"edtCliente"_s), u"00001"_s);
        station.enter(u"edtOF"_s, other);
        for (const QString &field : {u"edtCliente"_s, u"edtDescCliente"_s, u"edtMaterial"_s, u"edtDescMaterial"_s,
                 u"edtMaquina"_s, u"edtDescMaq"_s, u"edtData"_s})
            QCOMPARE(station.text(field), QString());
        for (const QString &field : {u"edtKGTotal"_s, u"edtKGRolo"_s, u"edtSaldo"_s, u"EdtTotBaixado"_s})
            QCOMPARE(station.text(field), u"0,00"_s);
        QVERIFY(station.column(0).isEmpty());
    }
}

void tst_ordembaixa::onlyOrdersWithABalanceAreOffered()
{
    DeskStation station;
    station.addRoll(u"000012"_s, u"001"_s, 99.999);
    station.addOrder(u"000013"_s, 99.99); // its rolls make exactly its weight
    for (int roll = 1; roll <= 30; ++roll)
        station.addRoll(u"000013"_s, u"%1"_s.arg(roll, 3, 10, QChar(u'0')), 3.333);
    station.addOrder(u"000014"_s, 50); // more than it wants
    station.addRoll(u"000014"_s, u"001"_s, 60);
    station.addOrder(u"000015"_s, 80); // nothing yet
    station.open(u"TfmMalhaOFBaixa"_s);
    QStringList offered;
    expectSearchAndLeave(station.answers, &offered);
    station.click(u"PqOF"_s);
    QCOMPARE(offered, QStringList({u"000012"_s, u"000015"_s}));
    QCOMPARE(station.text(u"edtOF"_s), QString());
}

void tst_ordembaixa::theOrderChosenInTheSearchIsShown()
{
    DeskStation station;
    station.addOrder(u"000015"_s, 80);
    station.open(u"TfmMalhaOFBaixa"_s);
    expectSearchAndTake(station.answers, u"000015"_s);
    station.click(u"PqOF"_s);
    QCOMPARE(station.text(u"edtOF"_s), u"000015"_s);
    QCOMPARE(station.text(u"edtKGTotal"_s), u"80,00"_s);
}

void tst_ordembaixa::aTitleOrdersTheRolls()
{
    DeskStation station;
    station.addRoll(u"000012"_s, u"001"_s, 20);
    station.addRoll(u"000012"_s, u"002"_s, 9.5);
    station.addRoll(u"000012"_s, u"003"_s, 15);
    station.openDesk();
    const auto clickTitle = [&](int column) {
        QHeaderView *header = station.grid()->horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
            QPoint(header->sectionViewportPosition(column) + 10, header->height() / 2));
    };
    clickTitle(5);
    QCOMPARE(station.column(1), QStringList({u"002"_s, u"003"_s, u"001"_s}));
    clickTitle(1);
    QCOMPARE(station.column(1), QStringList({u"001"_s, u"002"_s, u"003"_s}));
    // What is marked is what is worked on, wherever it stands.
    clickTitle(5);
    takeBack(station, 0);
    QCOMPARE(station.rolls().size(), 2);
    QVERIFY(station.rolls()[0].startsWith(u"001|"_s));
    QVERIFY(station.rolls()[1].startsWith(u"003|"_s));
}

void tst_ordembaixa::theDialogGetsTheOrder()
{
    DeskStation station;
    station.addRoll(u"000012"_s, u"001"_s, 20.5);
    station.openDesk();
    station.atDialog([&] {
        QCOMPARE(station.form()->windowTitle(), u"Baixa de OF"_s);
        QVERIFY(station.form()->isModal());
        QCOMPARE(station.text(u"edtOF"_s), u"000012"_s);
        QCOMPARE(station.text(u"edtBaixa"_s), u"002"_s);
        QCOMPARE(station.text(u"edtSaldo"_s), u"79,50"_s);
        QCOMPARE(station.text(u"edtCliente"_s), u"00001"_s);
        QCOMPARE(station.text(u"edtDescCliente"_s), u"Confecções Serra Azul Ltda"_s);
        QCOMPARE(station.text(u"edtMaterial"_s), u"M0001"_s);
        QCOMPARE(station.text(u"edtDescMaterial"_s), u"Meia-malha PV 60/40"_s);
        QCOMPARE(station.text(u"edtMaquina"_s), u"001"_s);
        QCOMPARE(station.text(u"edtDescMaq"_s), u"Circular 30\" 28 agulhas"_s);
        QCOMPARE(station.text(u"edtData"_s), u"10/03/2026"_s);
        QCOMPARE(station.text(u"EdtTotRolos"_s), u"1"_s);
        QCOMPARE(station.column(0), QStringList{u"001"_s});
        QCOMPARE(station.focus(), u"edtKGTotal"_s);
    });
    QCOMPARE(station.rolls().size(), 1);
}

void tst_ordembaixa::theDialogGetsTheNextNumber_data()
{
    QTest::addColumn<QStringList>("rolls");
    QTest::addColumn<QString>("next");
    QTest::newRow("first") << QStringList() << u"001"_s;
    QTest::newRow("with a gap") << QStringList{u"001"_s, u"004"_s} << u"005"_s;
    QTest::newRow("a thousand") << QStringList{u"998"_s, u"999"_s} << u"1000"_s;
    QTest::newRow("a thousand and one") << QStringList{u"999"_s, u"1000"_s} << u"1001"_s;
}

void tst_ordembaixa::theDialogGetsTheNextNumber()
{
    QFETCH(QStringList, rolls);
    QFETCH(QString, next);
    DeskStation station;
    for (const QString &number : rolls)
        station.addRoll(u"000012"_s, number, 1);
    station.addOrder(u"000013"_s, 100);
    station.addRoll(u"000013"_s, u"050"_s, 1); // every order counts its own
    station.writeOff(u"20"_s);
    QCOMPARE(station.rolls().size(), rolls.size() + 1);
    QVERIFY2(station.rolls().last().startsWith(next + u'|'), qPrintable(station.rolls().last()));
}

void tst_ordembaixa::aRollWrittenOffIsShownAtOnce()
{
    DeskStation station;
    station.writeOff(u"20,5"_s);
    QCOMPARE(station.column(1), QStringList{u"001"_s});
    QCOMPARE(station.text(u"edtSaldo"_s), u"79,50"_s);
    QCOMPARE(station.text(u"EdtTotBaixado"_s), u"20,50"_s);
    station.writeOff(u"19,25"_s);
    QCOMPARE(station.column(5), QStringList({u"20,50"_s, u"19,25"_s}));
    QCOMPARE(station.text(u"edtSaldo"_s), u"60,25"_s);
    QCOMPARE(station.text(u"EdtTotBaixado"_s), u"39,75"_s);
}

void tst_ordembaixa::anOrderThatIsFinishedCannotBeWrittenOff()
{
    DeskStation station;
    station.database.run(u"UPDATE {OF_MALHA} SET KG_TOTAL = 99.99"_s);
    for (int roll = 1; roll <= 30; ++roll)
        station.addRoll(u"000012"_s, u"%1"_s.arg(roll, 3, 10, QChar(u'0')), 3.333);
    station.openDesk();
    QCOMPARE(station.text(u"edtSaldo"_s), u"0,00"_s);
    station.click(u"btnBaixa"_s); // nothing comes up
    QVERIFY(!station.host.openForm(u"TfmBaixaOF"_s));
    QCOMPARE(station.rolls().size(), 30);
}

void tst_ordembaixa::refusalsBeforeTheDialogAreSilent()
{
    DeskStation station;
    station.openDesk();
    for (const QString &of : {QString(), u"  "_s, u"555555"_s}) {
        station.enter(u"edtOF"_s, of);
        station.click(u"btnBaixa"_s);
        QVERIFY(!station.host.openForm(u"TfmBaixaOF"_s));
    }
    // Another station has taken the balance since the order was shown.
    station.enter(u"edtOF"_s, u"000012"_s);
    station.addRoll(u"000012"_s, u"001"_s, 100);
    station.click(u"btnBaixa"_s);
    QVERIFY(!station.host.openForm(u"TfmBaixaOF"_s));
    QCOMPARE(station.text(u"edtSaldo"_s), u"0,00"_s);
}

void tst_ordembaixa::withoutTheRightThereIsNoDialog()
{
    DeskStation station(u"SEMDIREITO"_s);
    station.grant({u"A1"_s, u"E0"_s}); // the supervisor's level is not the user's
    station.openDesk();
    station.click(u"btnBaixa"_s);
    QVERIFY(!station.host.openForm(u"TfmBaixaOF"_s));
    station.grant({u"A0"_s});
    station.writeOff(u"20"_s);
    QCOMPARE(station.rolls().size(), 1);
}

void tst_ordembaixa::takingBackAsksAndReducesTheStock()
{
    DeskStation station;
    station.writeOff(u"20,5"_s);
    station.writeOff(u"10"_s);
    station.database.run(u"DELETE FROM QEN_LOG"_s);
    station.grid()->selectRow(0);
    station.answers.expectAndType(u"Deseja eliminar este Registro?"_s, Qt::Key_Return); // No is the default
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.rolls().size(), 2);
    takeBack(station, 0);
    QCOMPARE(station.rolls(), QStringList{u"002|2026-03-10||1|000101|10"_s});
    QCOMPARE(station.stock(), QStringList{u"M0001|000012|10|0"_s});
    QCOMPARE(station.log(),
        QStringList{u"BAIXA OF|EXCLUSAO DA BAIXA OF MALHARIA NR.: 000012 QTDE.: 20,5 NUM.BAIXA: 001|2|ADMIN"_s});
    QCOMPARE(station.text(u"edtSaldo"_s), u"90,00"_s);
    QCOMPARE(station.column(1), QStringList{u"002"_s});
}

void tst_ordembaixa::takingBackNeedsItsRight()
{
    DeskStation station(u"SEMDIREITO"_s);
    station.grant({u"A0"_s, u"A1"_s});
    station.addRoll(u"000012"_s, u"001"_s, 20);
    station.openDesk();
    station.click(u"BtExcluir"_s); // nobody asks
    QCOMPARE(station.rolls().size(), 1);
    QVERIFY(station.log().isEmpty());
    station.grant({u"E0"_s});
    takeBack(station, 0);
    QVERIFY(station.rolls().isEmpty());
}

void tst_ordembaixa::withoutRollsThereIsNothingToTakeBack()
{
    DeskStation station;
    station.openDesk();
    station.click(u"BtExcluir"_s); // nobody asks
    QVERIFY(station.log().isEmpty());
}

void tst_ordembaixa::theNumberOfTheLastRollIsGivenAgain()
{
    DeskStation station;
    for (int roll = 0; roll < 3; ++roll)
        station.writeOff(u"10"_s);
    takeBack(station, 2);
    QCOMPARE(station.column(1), QStringList({u"001"_s, u"002"_s}));
    station.writeOff(u"12"_s);
    QCOMPARE(station.column(1), QStringList({u"001"_s, u"002"_s, u"003"_s}));
    QCOMPARE(station.column(5).last(), u"12,00"_s);
    QCOMPARE(station.stock(), QStringList{u"M0001|000012|32|0"_s});
}

void tst_ordembaixa::theNumberOfAMiddleRollIsNot()
{
    DeskStation station;
    for (int roll = 0; roll < 3; ++roll)
        station.writeOff(u"10"_s);
    takeBack(station, 1);
    station.writeOff(u"12"_s);
    QCOMPARE(station.column(1), QStringList({u"001"_s, u"003"_s, u"004"_s}));
    QCOMPARE(station.stock(), QStringList{u"M0001|000012|32|0"_s});
}

void tst_ordembaixa::withoutFinishedFabricStockNoneIsTouched()
{
    DeskStation station;
    station.setParameter(10, u"N"_s);
    station.addStock(7, 1);
    station.addRoll(u"000012"_s, u"001"_s, 20);
    station.openDesk();
    takeBack(station, 0);
    QVERIFY(station.rolls().isEmpty());
    QCOMPARE(station.stock(), QStringList{u"M0001|000012|7|1"_s});
}

void tst_ordembaixa::aRollTakenBackElsewhereIsAConflict()
{
    DeskStation station;
    station.addRoll(u"000012"_s, u"001"_s, 20);
    station.addStock(20);
    station.openDesk();
    station.database.run(u"DELETE FROM {OF_MALHA_BAIXAS}"_s);
    station.database.run(u"UPDATE {PA_MALHA} SET QTDE_TOTAL = 0"_s);
    station.answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    expectFailure(station.answers, u"Baixa Ordem de Fabricação"_s,
        u"Outra estação alterou estes dados ao mesmo tempo. Nada foi gravado; tente novamente."_s);
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.stock(), QStringList{u"M0001|000012|0|0"_s});
    QVERIFY(station.log().isEmpty());
    QVERIFY(station.column(1).isEmpty()); // the roll is gone from the list, too
    QCOMPARE(station.text(u"edtSaldo"_s), u"100,00"_s);
}

void tst_ordembaixa::aNumberThatIsAnotherRollsByNowIsNotTakenBack()
{
    DeskStation station;
    station.addRoll(u"000012"_s, u"001"_s, 20);
    station.addStock(20);
    station.openDesk();
    // Another station took the roll back and weighed the next one, which got its number.
    station.database.run(u"UPDATE {OF_MALHA_BAIXAS} SET QTDE = 18.5"_s);
    station.database.run(u"UPDATE {PA_MALHA} SET QTDE_TOTAL = 18.5"_s);
    const QStringList theirs = station.tables();
    station.answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    expectFailure(station.answers, u"Baixa Ordem de Fabricação"_s,
        u"Outra estação alterou estes dados ao mesmo tempo. Nada foi gravado; tente novamente."_s);
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.tables(), theirs);
    QVERIFY(station.log().isEmpty());
    QCOMPARE(station.column(5), QStringList{u"18,50"_s});
    takeBack(station, 0); // now that it is seen
    QVERIFY(station.rolls().isEmpty());
    QCOMPARE(station.stock(), QStringList{u"M0001|000012|0|0"_s});
}

void tst_ordembaixa::takingBackStandsWithoutItsLogLine()
{
    DeskStation station;
    station.addRoll(u"000012"_s, u"001"_s, 20);
    station.addStock(20);
    station.openDesk();
    station.tabela.IBDatabase->setObserver([](const QString &ran) {
        if (ran.startsWith(u"INSERT INTO QEN_LOG"_s))
            throw EDatabaseError(EDatabaseError::Category::Statement, {}, u"broken"_s, ran);
    });
    station.answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    station.answers.expectWindow(
        [](QWidget *window) {
            auto *box = qobject_cast<QMessageBox *>(window);
            QVERIFY(box);
            QVERIFY2(
                box->text().startsWith(u"A baixa 001 da OF 000012 está estornada."_s), qUtf8Printable(box->text()));
            box->button(QMessageBox::Ok)->click();
        },
        u"Baixa Ordem de Fabricação"_s);
    station.click(u"BtExcluir"_s);
    QVERIFY(station.rolls().isEmpty());
    QCOMPARE(station.stock(), QStringList{u"M0001|000012|0|0"_s});
    QVERIFY(station.column(1).isEmpty());
}

void tst_ordembaixa::takingBackFailsWhole_data()
{
    QTest::addColumn<QString>("statement");
    QTest::newRow("lock") << u"UPDATE OF_MALHA_001"_s;
    QTest::newRow("register") << u"DELETE FROM OF_MALHA_BAIXAS_001"_s;
    QTest::newRow("stock") << u"UPDATE PA_MALHA_001"_s;
    QTest::newRow("defects") << u"DELETE FROM DEF_MOV_001"_s;
}

void tst_ordembaixa::takingBackFailsWhole()
{
    QFETCH(QString, statement);
    DeskStation station;
    station.addRoll(u"000012"_s, u"001"_s, 20);
    station.addStock(20);
    station.openDesk();
    const QStringList before = station.tables();
    station.tabela.IBDatabase->setObserver([statement](const QString &ran) {
        if (ran.startsWith(statement))
            throw EDatabaseError(EDatabaseError::Category::Statement, {}, u"broken"_s, ran);
    });
    station.answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    expectFailure(station.answers, u"Baixa Ordem de Fabricação"_s, station.refusedByTable);
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.tables(), before);
    QVERIFY(station.log().isEmpty());
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
}

void tst_ordembaixa::theLabelIsThatOfTheMarkedRoll()
{
    DeskStation station;
    station.database.run(u"INSERT INTO {BAIXA_FIO} (NUMERO, DOCTO, CODIGO, LOTE, QTDE)"
                         " VALUES ('000012', '0001203', 'FIO30CO', 'L1', 60)"_s);
    // The yarn is in another colour of the fabric, too: the label names it once.
    station.database.run(u"INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, ORDEM, PERC)"
                         " VALUES ('M0001', '000002', 'FIO30CO', '000002', 1, 100)"_s);
    station.addRoll(u"000012"_s, u"001"_s, 20);
    station.addRoll(u"000012"_s, u"002"_s, 19);
    station.openDesk();
    station.grid()->selectRow(0);
    const Paper paper(station.host);
    QStringList statements;
    station.tabela.IBDatabase->setObserver([&](const QString &ran) { statements.append(ran); });
    station.grid()->actions().first()->trigger();
    QVERIFY(statements.first().contains(u"NUM_BAIXA = '001'"_s));
    const QList<RecordedReport> &reports = station.host.recordedReports();
    QCOMPARE(reports.size(), 1);
    QCOMPARE(reports[0].name, u"WEtqBaiMal"_s);
    QCOMPARE(reports[0].kind, ReportCall::Kind::Graphic);
    QCOMPARE(reports[0].dataSets, QStringList({u"qryBaixas"_s, u"QryComposicao"_s, u"QryLotes"_s}));
    QCOMPARE(reports[0].rowCounts, QList<int>({1, 2, 1}));
    const QString label = paper.flatText();
    for (const QString &shown : {u"000012"_s, u"001"_s, u"20,00 kg"_s, u"0001203"_s, u"L1"_s})
        QVERIFY2(label.contains(shown), qUtf8Printable(label));
    QCOMPARE(paper.barcodes(), QStringList(u"CODE-128:000012"_s));
}

void tst_ordembaixa::withoutARollThereIsNoLabel()
{
    DeskStation station;
    station.openDesk();
    station.grid()->actions().first()->trigger();
    QVERIFY(station.host.recordedReports().isEmpty());
}

void tst_ordembaixa::theInstanceIsGoneWithTheScreen()
{
    DeskStation station;
    station.openDesk();
    QCOMPARE(TestStation::instance("fmMalhaOFBaixa"), station.form());
    station.key(Qt::Key_Escape);
    QTRY_VERIFY(!station.form());
    QVERIFY(!TestStation::instance("fmMalhaOFBaixa"));
}

QTEST_MAIN(tst_ordembaixa)
#include "tst_ordembaixa.moc"
