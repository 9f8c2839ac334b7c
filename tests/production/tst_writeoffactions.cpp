// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// What the write-off station does besides writing rolls off: taking back, adjusting, labels, defects, the scale.

#include "module/form.h"
#include "module/host_services/clock.h"
#include "tests/production/writeoffstation.h"
#include "tests/support/engines.h"

#include <QTableView>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_writeoffactions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void takingARollBackAsksAndReducesTheStock();
    void aNumberTakenBackIsGivenAgainOnlyWhenItWasTheHighest();
    void aRollTakenBackTakesItsDefectsAlong();
    void aRollTakenBackElsewhereReducesTheStockOnce();
    void aDateThatIsNoneStopsTheConfirmation();
    void adjustingMakesThePlanWhatWasProduced_data();
    void adjustingMakesThePlanWhatWasProduced();
    void adjustingAsksFirstAndNeedsTheSupervisor();
    void adjustingWithoutAnOrderHasNothingToDo();
    void adjustingStandsWithoutItsLogLine();
    void emptyFiguresCountAsNothing();
    void theLabelCarriesOrderCompositionAndLots();
    void theLabelIsPrintedAfterEachRollWhenTheMillWantsIt();
    void theDefectsOfTheMarkedRollAreOpened();
    void anUnstableOrNegativeWeightIsNoneAndSaysWhy_data();
    void anUnstableOrNegativeWeightIsNoneAndSaysWhy();
    void theWeightOfTheRollBeforeNeverComesBack();
    void theHintTellsAWeightThatIsTyped();
    void aMissingPortIsSaidOnceAndTheWeightCanBeTyped();
    void thePortIsClosedBetweenReadings();
    void f10SetsThePortUp();
    void enterMovesToTheNextField();
    void escapeClosesWithoutReadingTheScale();
};

void tst_writeoffactions::takingARollBackAsksAndReducesTheStock()
{
    WriteOffStation station(Engines::current());
    station.prepareRoll(u"20,5"_s);
    station.confirmRoll(u"20,50"_s);
    station.database.run(u"DELETE FROM QEN_LOG"_s);
    {
        MessageAnswers answers; // No is the default
        answers.expectAndType(u"Deseja eliminar este Registro?"_s, Qt::Key_Return, u"Eliminação de Registro"_s);
        station.click(u"BtExcluir"_s);
    }
    QCOMPARE(station.rolls().size(), 1);
    {
        MessageAnswers answers;
        answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
        station.click(u"BtExcluir"_s);
    }
    QVERIFY(station.rolls().isEmpty());
    QCOMPARE(station.stock(), QStringList({u"M0001|000012|0|0"_s}));
    QCOMPARE(station.log(),
        QStringList(
            {u"BAIXA OF BARRA|EXCLUSAO DA BAIXA OF MALHARIA NR.: 000012 QTDE.: 20,5 NUM.BAIXA: 001|2|ADMIN"_s}));
    QCOMPARE(station.text(u"EdtSaldo"_s), u"100,00"_s);
}

void tst_writeoffactions::aNumberTakenBackIsGivenAgainOnlyWhenItWasTheHighest()
{
    WriteOffStation station(Engines::current());
    for (const QString &number : {u"001"_s, u"002"_s, u"003"_s})
        station.addRoll(u"000012"_s, number, 10);
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    station.enter(u"edtOF"_s, u"000012"_s);
    const auto takeBack = [&](int row) {
        station.child<QTableView>(u"DBGrid"_s)->selectRow(row);
        MessageAnswers answers;
        answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
        station.click(u"BtExcluir"_s);
    };
    takeBack(1); // 002
    station.prepareRoll(u"10"_s);
    station.confirmRoll(u"10,00"_s);
    QVERIFY(station.rolls().last().startsWith(u"004|"_s));
    station.enter(u"edtOF"_s, u"000012"_s);
    takeBack(2); // 004, the highest
    station.prepareRoll(u"10"_s);
    station.confirmRoll(u"10,00"_s);
    QVERIFY(station.rolls().last().startsWith(u"004|"_s));
    QCOMPARE(station.rolls().size(), 3);
}

void tst_writeoffactions::aRollTakenBackTakesItsDefectsAlong()
{
    WriteOffStation station(Engines::current());
    station.addRoll(u"000012"_s, u"001"_s, 20);
    station.addRoll(u"000012"_s, u"002"_s, 20);
    for (const QString &roll : {u"'000012', 1"_s, u"'000012', 2"_s, u"'000013', 2"_s})
        station.database.run(
            u"INSERT INTO {DEF_MOV} (NUMERO, ROLO, CODIGO, QUANT, QUALIDADE) VALUES (%1, '001', 3, '2')"_s.arg(roll));
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    station.enter(u"edtOF"_s, u"000012"_s);
    MessageAnswers answers;
    answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    station.click(u"BtExcluir"_s); // 002, whose number the next roll gets
    QCOMPARE(station.rolls().size(), 1);
    QCOMPARE(station.database.rows(u"SELECT NUMERO, ROLO FROM {DEF_MOV} ORDER BY NUMERO, ROLO"_s),
        QStringList({u"000012|1"_s, u"000013|2"_s}));
}

void tst_writeoffactions::aRollTakenBackElsewhereReducesTheStockOnce()
{
    WriteOffStation station(Engines::current());
    station.prepareRoll(u"20"_s);
    station.confirmRoll(u"20,00"_s);
    station.database.run(u"DELETE FROM {OF_MALHA_BAIXAS}"_s);
    station.database.run(u"UPDATE {PA_MALHA} SET QTDE_TOTAL = 0"_s);
    MessageAnswers answers;
    answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    answers.expect(
        u"Outra estação alterou estes dados ao mesmo tempo. Nada foi gravado; tente novamente."_s, QMessageBox::Ok);
    station.click(u"BtExcluir"_s);
    QCOMPARE(station.stock(), QStringList({u"M0001|000012|0|0"_s}));
    QCOMPARE(station.child<QTableView>(u"DBGrid"_s)->model()->rowCount(), 0); // it is gone from the list, too
}

void tst_writeoffactions::aDateThatIsNoneStopsTheConfirmation()
{
    WriteOffStation station(Engines::current());
    station.prepareRoll(u"20"_s);
    station.enter(u"DtBaixa"_s, u"31/02/2026"_s);
    {
        MessageAnswers answers;
        answers.expect(u"Peso da Baixa 20,00?"_s, QMessageBox::Yes);
        answers.expect(u"Data Inválida. Impossível Continuar."_s, QMessageBox::Ok);
        station.click(u"btnBaixa"_s);
    }
    QVERIFY(station.rolls().isEmpty());
    QCOMPARE(station.focus(), u"DtBaixa"_s);
    QCOMPARE(station.text(u"EdtPesoRolo"_s), u"20,00"_s);
    station.enter(u"DtBaixa"_s, u"09/03/2026"_s);
    station.confirmRoll(u"20,00"_s);
    QVERIFY(station.rolls().value(0).startsWith(u"001|2026-03-09|"_s));
}

void tst_writeoffactions::adjustingMakesThePlanWhatWasProduced_data()
{
    QTest::addColumn<double>("produced");
    QTest::addColumn<QString>("logged");
    QTest::newRow("less than planned") << 60.25 << u"60,25"_s;
    QTest::newRow("more than planned") << 120.5 << u"120,5"_s;
}

void tst_writeoffactions::adjustingMakesThePlanWhatWasProduced()
{
    QFETCH(double, produced);
    QFETCH(QString, logged);
    WriteOffStation station(Engines::current());
    station.addRoll(u"000012"_s, u"001"_s, produced);
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    station.enter(u"edtOF"_s, u"000012"_s);
    MessageAnswers answers;
    answers.expect(u"Deseja alterar o peso da OF para zerar o saldo restante?"_s, QMessageBox::Yes);
    answers.expect(u"Acerto do peso da OF efetuado."_s);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.value(u"SELECT KG_TOTAL FROM {OF_MALHA}"_s).toDouble(), produced);
    QCOMPARE(station.text(u"EdtSaldo"_s), u"0,00"_s);
    QCOMPARE(station.log(), QStringList({u"BAIXA_MALHARIA|ALTERADO PESO DA OF 000012 PARA %1|1|ADMIN"_s.arg(logged)}));
}

void tst_writeoffactions::adjustingAsksFirstAndNeedsTheSupervisor()
{
    WriteOffStation station(Engines::current(), u"SEMDIREITO"_s);
    station.addRoll(u"000012"_s, u"001"_s, 20);
    station.database.run(u"INSERT INTO QEN_DIREITO (USUARIO, TELA, LETRA, NIVEL)"
                         " VALUES ('SEMDIREITO', 'TfmMalhaOFBaixaBarra', 'A', '0')"_s);
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    station.enter(u"edtOF"_s, u"000012"_s);
    const auto adjust = [&](QMessageBox::StandardButton answer, bool done) {
        MessageAnswers answers;
        answers.expect(u"Deseja alterar o peso da OF para zerar o saldo restante?"_s, answer);
        if (done)
            answers.expect(u"Acerto do peso da OF efetuado."_s);
        station.click(u"BitBtn2"_s);
    };
    adjust(QMessageBox::Yes, false); // level "0" is not enough, and nothing says so
    QCOMPARE(station.value(u"SELECT KG_TOTAL FROM {OF_MALHA}"_s).toDouble(), 100.0);
    station.database.run(u"UPDATE QEN_DIREITO SET NIVEL = '1'"_s);
    adjust(QMessageBox::No, false);
    QCOMPARE(station.value(u"SELECT KG_TOTAL FROM {OF_MALHA}"_s).toDouble(), 100.0);
    adjust(QMessageBox::Yes, true);
    QCOMPARE(station.value(u"SELECT KG_TOTAL FROM {OF_MALHA}"_s).toDouble(), 20.0);
}

void tst_writeoffactions::adjustingWithoutAnOrderHasNothingToDo()
{
    WriteOffStation station(Engines::current());
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    MessageAnswers answers;
    answers.expect(u"Deseja alterar o peso da OF para zerar o saldo restante?"_s, QMessageBox::Yes);
    answers.expect(u"Sem dados para fazer acerto."_s);
    station.click(u"BitBtn2"_s);
    QVERIFY(station.log().isEmpty());
}

void tst_writeoffactions::adjustingStandsWithoutItsLogLine()
{
    WriteOffStation station(Engines::current());
    station.addRoll(u"000012"_s, u"001"_s, 20);
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    station.enter(u"edtOF"_s, u"000012"_s);
    station.database.run(u"ALTER TABLE QEN_LOG DROP TEXTO"_s);
    MessageAnswers answers;
    answers.expect(u"Deseja alterar o peso da OF para zerar o saldo restante?"_s, QMessageBox::Yes);
    answers.expectWindow([](QWidget *window) {
        auto *box = qobject_cast<QMessageBox *>(window);
        QVERIFY(box);
        QVERIFY2(box->text().startsWith(u"O peso da OF 000012 está acertado."_s), qUtf8Printable(box->text()));
        box->accept();
    });
    answers.expect(u"Acerto do peso da OF efetuado."_s);
    station.click(u"BitBtn2"_s);
    QVERIFY(answers.allCame());
    QCOMPARE(station.value(u"SELECT KG_TOTAL FROM {OF_MALHA}"_s).toDouble(), 20.0);
    QCOMPARE(station.text(u"EdtSaldo"_s), u"0,00"_s);
}

// As other programs may leave them: a roll that is added to nothing must not vanish in it.
void tst_writeoffactions::emptyFiguresCountAsNothing()
{
    WriteOffStation station(Engines::current());
    station.database.run(
        u"INSERT INTO {PA_MALHA} (CODIGO, NUM_OF, QTDE_TOTAL, FATURADO) VALUES ('M0001', '000012', NULL, 0)"_s);
    station.prepareRoll(u"20"_s);
    station.confirmRoll(u"20,00"_s);
    QCOMPARE(station.stock(), QStringList{u"M0001|000012|20|0"_s});
    station.database.run(u"UPDATE {PA_MALHA} SET QTDE_TOTAL = NULL"_s);
    station.addRoll(u"000012"_s, u"002"_s, 10);
    station.enter(u"edtOF"_s, u"000012"_s);
    MessageAnswers answers;
    answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    station.click(u"BtExcluir"_s); // 002
    QCOMPARE(station.stock(), QStringList{u"M0001|000012|-10|0"_s});
    station.database.run(u"UPDATE {OF_MALHA} SET KG_TOTAL = NULL"_s);
    answers.expect(u"Deseja alterar o peso da OF para zerar o saldo restante?"_s, QMessageBox::Yes);
    answers.expect(u"Acerto do peso da OF efetuado."_s);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.value(u"SELECT KG_TOTAL FROM {OF_MALHA}"_s).toDouble(), 20.0);
}

void tst_writeoffactions::theLabelCarriesOrderCompositionAndLots()
{
    WriteOffStation station(Engines::current());
    station.database.run(u"INSERT INTO {BAIXA_FIO} (NUMERO, DOCTO, CODIGO, LOTE, QTDE)"
                         " VALUES ('000012', '0000077', 'FIO30CO', 'LX', 60)"_s);
    station.prepareRoll(u"20"_s);
    station.click(u"BtnImprimir"_s);
    station.click(u"RgTexto"_s);
    station.click(u"BtnImprimir"_s);
    const QList<RecordedReport> &reports = station.host.recordedReports();
    QCOMPARE(reports.size(), 2);
    QCOMPARE(reports[0].name, u"WEtqBarra"_s);
    QCOMPARE(reports[0].kind, ReportCall::Kind::Graphic);
    QCOMPARE(reports[0].rowCounts, QList<int>({1, 2, 1}));
    QCOMPARE(reports[1].name, u"TEtqBarra"_s);
    QCOMPARE(reports[1].kind, ReportCall::Kind::Text);
}

void tst_writeoffactions::theLabelIsPrintedAfterEachRollWhenTheMillWantsIt()
{
    WriteOffStation station(Engines::current());
    station.setParameter(50, u"S"_s);
    station.prepareRoll(u"20"_s);
    station.confirmRoll(u"20,00"_s);
    QCOMPARE(station.host.recordedReports().size(), 1);
    QCOMPARE(station.host.recordedReports().first().name, u"WEtqBarra"_s);
}

void tst_writeoffactions::theDefectsOfTheMarkedRollAreOpened()
{
    WriteOffStation station(Engines::current());
    station.addRoll(u"000012"_s, u"001"_s, 20);
    station.addRoll(u"000012"_s, u"002"_s, 20);
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    station.enter(u"edtOF"_s, u"000012"_s);
    station.child<QTableView>(u"DBGrid"_s)->selectRow(0);
    MessageAnswers answers;
    answers.expectWindow(
        [](QWidget *window) {
            QCOMPARE(window->findChild<QLineEdit *>(u"edtOF"_s)->text(), u"000012"_s);
            QCOMPARE(window->findChild<QLineEdit *>(u"edtRolo"_s)->text(), u"1"_s);
            window->close();
        },
        u"Cadastro de Defeitos da Malha"_s);
    station.click(u"BitBtn1"_s);
}

void tst_writeoffactions::anUnstableOrNegativeWeightIsNoneAndSaysWhy_data()
{
    QTest::addColumn<double>("kg");
    QTest::addColumn<bool>("stable");
    QTest::newRow("in motion") << 23.45 << false;
    QTest::newRow("negative") << -0.15 << true;
    QTest::newRow("over capacity") << 1500.0 << true;
}

void tst_writeoffactions::anUnstableOrNegativeWeightIsNoneAndSaysWhy()
{
    QFETCH(double, kg);
    QFETCH(bool, stable);
    WriteOffStation station(Engines::current());
    station.scale.setWeight(kg, stable);
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    station.enter(u"edtOF"_s, u"000012"_s);
    QCOMPARE(station.text(u"EdtPesoRolo"_s), u"0,00"_s);
    const auto *hint = station.child(u"lbBalanca"_s);
    QVERIFY(hint->isVisible());
    QVERIFY(hint->property("warning").toBool());
    QVERIFY(!station.text(u"lbBalanca"_s).isEmpty());
}

void tst_writeoffactions::theWeightOfTheRollBeforeNeverComesBack()
{
    WriteOffStation station(Engines::current());
    station.scale.setWeight(23.45);
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    station.enter(u"edtOF"_s, u"000012"_s);
    QCOMPARE(station.text(u"EdtPesoRolo"_s), u"23,45"_s);
    station.scale.setWeight(18.6);
    station.enter(u"edtOF"_s, u"000012"_s);
    QCOMPARE(station.text(u"EdtPesoRolo"_s), u"18,60"_s);
    station.scale.pause(); // the scale says nothing any more
    station.enter(u"edtOF"_s, u"000012"_s);
    QCOMPARE(station.text(u"EdtPesoRolo"_s), u"0,00"_s);
}

void tst_writeoffactions::theHintTellsAWeightThatIsTyped()
{
    WriteOffStation station(Engines::current());
    station.scale.setWeight(23.45);
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    station.enter(u"edtOF"_s, u"000012"_s);
    station.child(u"EdtPesoRolo"_s)->setFocus();
    station.key(Qt::Key_Return); // only passed
    QCOMPARE(station.text(u"lbBalanca"_s), u"Peso lido da balança."_s);
    station.enter(u"EdtPesoRolo"_s, u"22"_s);
    QCOMPARE(station.text(u"lbBalanca"_s), u"Peso digitado."_s);
    station.enter(u"edtOF"_s, u"000012"_s); // and read again
    QCOMPARE(station.text(u"lbBalanca"_s), u"Peso lido da balança."_s);
    QCOMPARE(station.text(u"EdtPesoRolo"_s), u"23,45"_s);
}

void tst_writeoffactions::aMissingPortIsSaidOnceAndTheWeightCanBeTyped()
{
    WriteOffStation station(Engines::current());
    station.usePort(u"/dev/qen-no-such-port"_s);
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    {
        MessageAnswers answers;
        answers.expectWindow([](QWidget *window) {
            auto *box = qobject_cast<QMessageBox *>(window);
            QVERIFY(box);
            QVERIFY2(box->text().contains(u"qen-no-such-port"_s), qPrintable(box->text()));
            QVERIFY(box->text().contains(u"O peso pode ser digitado."_s));
            box->button(QMessageBox::Ok)->click();
        });
        station.enter(u"edtOF"_s, u"000012"_s);
    }
    const MessageAnswers noMore;
    QCOMPARE(station.text(u"edtCliente"_s), u"00001"_s);
    station.prepareRoll(u"20"_s);
    QVERIFY(station.child(u"lbBalanca"_s)->property("warning").toBool());
    QCOMPARE(station.text(u"EdtPesoRolo"_s), u"20,00"_s);
}

void tst_writeoffactions::thePortIsClosedBetweenReadings()
{
    WriteOffStation station(Engines::current());
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    station.enter(u"edtOF"_s, u"000012"_s);
    QVERIFY(!station.scale.hasReader());
}

void tst_writeoffactions::f10SetsThePortUp()
{
    WriteOffStation station(Engines::current());
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    station.child(u"EdtTurno"_s)->setFocus();
    MessageAnswers answers;
    answers.expectWindow([](QWidget *dialog) { dialog->close(); }, u"Configuração da Balança"_s);
    station.key(Qt::Key_F10);
    QVERIFY(answers.allCame());
}

void tst_writeoffactions::enterMovesToTheNextField()
{
    WriteOffStation station(Engines::current());
    station.scale.setWeight(20);
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    station.child(u"DtBaixa"_s)->setFocus();
    for (const QString &next : {u"EdtTurno"_s, u"edtOF"_s, u"EdtCodOper"_s, u"EdtPesoRolo"_s, u"btnBaixa"_s}) {
        station.key(Qt::Key_Return);
        QCOMPARE(station.focus(), next);
    }
}

void tst_writeoffactions::escapeClosesWithoutReadingTheScale()
{
    WriteOffStation station(Engines::current());
    station.usePort(u"/dev/qen-no-such-port"_s); // a reading would complain
    station.open(u"TfmMalhaOFBaixaBarra"_s);
    station.type(u"edtOF"_s, u"000012"_s);
    const MessageAnswers nobodyAsks;
    station.key(Qt::Key_Escape);
    QTRY_VERIFY(!station.form());
}

QTEST_MAIN(tst_writeoffactions)
#include "tst_writeoffactions.moc"
