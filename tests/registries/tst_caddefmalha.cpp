// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/host_services/errors.h"
#include "tests/support/engines.h"
#include "tests/support/screenchecks.h"
#include "tests/support/teststation.h"

#include <QApplication>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

namespace {

const QString caption = QStringLiteral("Cadastro de Defeitos da Malha");

/// A station at which the defects of a roll are counted, on the engine of the test that is running.
class DefectStation : public TestStation
{
public:
    DefectStation()
        : TestStation(Engines::current())
    {
    }

    MessageAnswers answers; ///< a box that nobody expects fails every test

    /// As the write-off screens open it: the roll is handed over before the screen is shown.
    void openRoll(const QString &order, int roll)
    {
        QWidget *form = host.loadForm(u"qenMalharia"_s, u"TfmCadDefMalha"_s, true, false);
        QVERIFY(form->setProperty("NumeroOF", order));
        QVERIFY(form->setProperty("Rolo", roll));
        use(form);
        form->show();
        form->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(form));
    }
    void record(const QString &order, int roll, const QString &defect, double quantity)
    {
        database.run(u"INSERT INTO {DEF_MOV} (CODIGO, QUANT, NUMERO, REVISOR, QUALIDADE, ROLO) "
                     "VALUES ('%1', %2, '%3', '000102', '2', %4)"_s.arg(
                         defect, QString::number(quantity), order, QString::number(roll)));
    }
    QTableView *grid() const { return child<QTableView>(u"DBGrid1"_s); }
    /// "code|description|quantity" as shown.
    QStringList shown() const
    {
        QStringList rows;
        for (int row = 0; row < grid()->model()->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < grid()->model()->columnCount(); ++column)
                cells.append(grid()->model()->index(row, column).data().toString());
            rows.append(cells.join(u'|'));
        }
        return rows;
    }
    /// "order|roll|defect|quantity|inspector|quality" as stored.
    QStringList stored()
    {
        return database.rows(
            u"SELECT NUMERO, ROLO, CODIGO, QUANT, REVISOR, QUALIDADE FROM {DEF_MOV} ORDER BY NUMERO, ROLO, CODIGO"_s);
    }
    /// Types in the cell on which the grid stands, and takes the figure by Enter.
    void typeQuantity(const QString &text)
    {
        for (const QChar digit : text)
            QTest::keyClicks(QApplication::focusWidget(), digit);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTRY_COMPARE(QApplication::focusWidget(), grid());
    }
    void confirm()
    {
        const QPointer<QWidget> screen = form();
        click(u"BitBtn1"_s);
        QTRY_VERIFY(screen.isNull());
    }
};

} // namespace

/// The defects of a roll.
class TestCadDefMalha : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void bearsItsCaptions();
    void listsTheCatalogueByCodeWithWhatWasRecorded();
    void showsTheRollItsInspectorAndItsGrade();
    void everyDefectGetsARowZerosToo();
    void confirmingWithoutChangeWritesTheSame();
    void aDefectAddedLaterIsZeroAndWrittenSo();
    void aDefectTakenOutOfTheCatalogueGoes();
    void otherRollsAndOrdersAreLeftAlone();
    void theOrderIsATextAndTheRollANumber();
    void anotherStationsCountIsReplacedWhole();

    void quantitiesAreTypedFromTheKeyboard();
    void escLeavesTheCellBeforeTheScreen();
    void aCellThatIsOpenIsSavedToo_data();
    void aCellThatIsOpenIsSavedToo();
    void enterWalksToTheQuantities();

    void anUnknownCodeOpensTheSearch_data();
    void anUnknownCodeOpensTheSearch();
    void aKnownCodeIsDescribedAndLeft();
    void inspectorAndGradeMayStayEmpty();
    void hostileCodesAreStoredAsTyped();

    void leavingWithoutConfirmingWritesNothing_data();
    void leavingWithoutConfirmingWritesNothing();
    void withoutTheRightNothingHappens();
    void withoutARollThereIsNothingToSave();
    void whatCouldNotBeReadIsNotReplaced();
    void nothingRemainsOfASaveThatFails();
    void theInstanceIsGoneWithTheScreen();
};

void TestCadDefMalha::bearsItsCaptions()
{
    DefectStation station;
    station.openRoll(u"000012"_s, 5);
    QCOMPARE(station.form()->windowTitle(), caption);
    QCOMPARE(station.text(u"BitBtn1"_s), u"&Confirmar"_s);
    QCOMPARE(station.text(u"BitBtn2"_s), u"Fechar"_s);
    QCOMPARE(station.text(u"lbRevisor"_s).remove(u'&'), u"Revisor"_s);
    QCOMPARE(station.text(u"lbQualidade"_s).remove(u'&'), u"Qualidade"_s);
}

void TestCadDefMalha::listsTheCatalogueByCodeWithWhatWasRecorded()
{
    DefectStation station;
    station.database.run(u"INSERT INTO {DEFEITO} (CODIGO, DESCRICAO) VALUES ('010', 'Mancha d''água')"_s);
    station.database.run(u"INSERT INTO {DEFEITO} (CODIGO, DESCRICAO) VALUES ('000', 'Ângulo')"_s);
    station.record(u"000012"_s, 5, u"002"_s, 3);
    station.record(u"000012"_s, 5, u"010"_s, 1.25);
    station.record(u"000012"_s, 6, u"001"_s, 9);
    station.openRoll(u"000012"_s, 5);
    QCOMPARE(station.shown(),
        (QStringList{u"000|Ângulo|0,00"_s, u"001|Furo|0,00"_s, u"002|Barramento|3,00"_s, u"003|Agulha quebrada|0,00"_s,
            u"010|Mancha d'água|1,25"_s}));
    QCOMPARE(station.text(u"lbTotal"_s), u"Total de defeitos: 4,25"_s);
}

void TestCadDefMalha::showsTheRollItsInspectorAndItsGrade()
{
    DefectStation station;
    station.record(u"000012"_s, 5, u"001"_s, 1);
    station.openRoll(u"000012"_s, 5);
    QCOMPARE(station.text(u"edtOF"_s), u"000012"_s);
    QCOMPARE(station.text(u"edtRolo"_s), u"5"_s);
    QCOMPARE(station.text(u"EdtCodRev"_s), u"000102"_s);
    QCOMPARE(station.text(u"EdtNomRev"_s), u"Bruno Lima"_s);
    QCOMPARE(station.text(u"EdtCodQul"_s), u"2"_s);
    QCOMPARE(station.text(u"EdtDescQul"_s), u"Segunda"_s);
    QCOMPARE(station.focus(), u"EdtCodRev"_s);
}

void TestCadDefMalha::everyDefectGetsARowZerosToo()
{
    DefectStation station;
    station.openRoll(u"000012"_s, 5);
    station.enter(u"EdtCodRev"_s, u"000101"_s);
    station.enter(u"EdtCodQul"_s, u"1"_s);
    station.confirm();
    QCOMPARE(station.stored(),
        (QStringList{u"000012|5|001|0|000101|1"_s, u"000012|5|002|0|000101|1"_s, u"000012|5|003|0|000101|1"_s}));
    // The defects have no line of their own in the log.
    QCOMPARE(station.value(u"SELECT COUNT(*) FROM QEN_LOG"_s).toInt(), 0);
}

void TestCadDefMalha::confirmingWithoutChangeWritesTheSame()
{
    DefectStation station;
    station.record(u"000012"_s, 5, u"001"_s, 2);
    station.record(u"000012"_s, 5, u"002"_s, 0);
    station.record(u"000012"_s, 5, u"003"_s, 0.75);
    const QStringList before = station.stored();
    for (int i = 0; i < 2; ++i) {
        station.openRoll(u"000012"_s, 5);
        station.confirm();
        QCOMPARE(station.stored(), before);
    }
}

void TestCadDefMalha::aDefectAddedLaterIsZeroAndWrittenSo()
{
    DefectStation station;
    for (const QString &defect : {u"001"_s, u"002"_s, u"003"_s})
        station.record(u"000012"_s, 5, defect, 4);
    station.database.run(u"INSERT INTO {DEFEITO} (CODIGO, DESCRICAO) VALUES ('004', 'Pé de galinha')"_s);
    station.openRoll(u"000012"_s, 5);
    QCOMPARE(station.shown().value(3), u"004|Pé de galinha|0,00"_s);
    station.confirm();
    QCOMPARE(station.stored(),
        (QStringList{u"000012|5|001|4|000102|2"_s, u"000012|5|002|4|000102|2"_s, u"000012|5|003|4|000102|2"_s,
            u"000012|5|004|0|000102|2"_s}));
}

void TestCadDefMalha::aDefectTakenOutOfTheCatalogueGoes()
{
    DefectStation station;
    station.record(u"000012"_s, 5, u"001"_s, 4);
    station.record(u"000012"_s, 5, u"099"_s, 7);
    station.openRoll(u"000012"_s, 5);
    station.confirm();
    QCOMPARE(station.stored(),
        (QStringList{u"000012|5|001|4|000102|2"_s, u"000012|5|002|0|000102|2"_s, u"000012|5|003|0|000102|2"_s}));
}

void TestCadDefMalha::otherRollsAndOrdersAreLeftAlone()
{
    DefectStation station;
    const QList<std::pair<QString, int>> others{
        {u"000012"_s, 1}, {u"000012"_s, 15}, {u"000012"_s, 51}, {u"000013"_s, 5}, {u"12"_s, 5}};
    for (const auto &[order, roll] : others)
        station.record(order, roll, u"001"_s, 8);
    const QStringList before = station.stored();
    station.openRoll(u"000012"_s, 5);
    QCOMPARE(station.text(u"EdtCodRev"_s), QString());
    QCOMPARE(station.shown().value(0), u"001|Furo|0,00"_s);
    station.enter(u"EdtCodRev"_s, u"000101"_s);
    station.enter(u"EdtCodQul"_s, u"1"_s);
    station.confirm();
    QStringList rest = station.stored();
    QCOMPARE(rest.removeIf([](const QString &row) { return row.startsWith(u"000012|5|"_s); }), 3);
    QCOMPARE(rest, before);
}

void TestCadDefMalha::theOrderIsATextAndTheRollANumber()
{
    DefectStation station;
    station.openRoll(u"A'1\"%"_s, 1001);
    station.enter(u"EdtCodRev"_s, u"000101"_s);
    station.enter(u"EdtCodQul"_s, u"1"_s);
    station.confirm();
    QCOMPARE(station.stored().value(0), u"A'1\"%|1001|001|0|000101|1"_s);
    station.openRoll(u"A'1\"%"_s, 1001);
    QCOMPARE(station.text(u"EdtCodRev"_s), u"000101"_s);
}

void TestCadDefMalha::anotherStationsCountIsReplacedWhole()
{
    DefectStation station;
    station.openRoll(u"000012"_s, 5);
    station.enter(u"EdtCodRev"_s, u"000101"_s);
    station.enter(u"EdtCodQul"_s, u"1"_s);
    station.record(u"000012"_s, 5, u"001"_s, 6);
    station.record(u"000012"_s, 5, u"002"_s, 6);
    station.confirm();
    QCOMPARE(station.stored(),
        (QStringList{u"000012|5|001|0|000101|1"_s, u"000012|5|002|0|000101|1"_s, u"000012|5|003|0|000101|1"_s}));
}

void TestCadDefMalha::quantitiesAreTypedFromTheKeyboard()
{
    DefectStation station;
    station.record(u"000012"_s, 5, u"001"_s, 7);
    station.openRoll(u"000012"_s, 5);
    station.key(Qt::Key_Return);
    station.key(Qt::Key_Return);
    QCOMPARE(station.focus(), u"DBGrid1"_s);
    station.typeQuantity(u"3"_s);
    station.key(Qt::Key_Down);
    station.typeQuantity(u"12,25"_s);
    station.key(Qt::Key_Down);
    // Enter opens the cell as well, with all of it selected.
    station.key(Qt::Key_Return);
    QVERIFY(QApplication::focusWidget() != station.grid());
    station.typeQuantity(u"4"_s);
    QCOMPARE(
        station.shown(), (QStringList{u"001|Furo|3,00"_s, u"002|Barramento|12,25"_s, u"003|Agulha quebrada|4,00"_s}));
    QCOMPARE(station.text(u"lbTotal"_s), u"Total de defeitos: 19,25"_s);
    QCOMPARE(station.focus(), u"DBGrid1"_s);
    station.key(Qt::Key_Tab);
    QCOMPARE(station.focus(), u"BitBtn1"_s);
    const QPointer<QWidget> screen = station.form();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTRY_VERIFY(screen.isNull());
    QCOMPARE(station.database.rows(u"SELECT CODIGO, QUANT FROM {DEF_MOV} ORDER BY CODIGO"_s),
        (QStringList{u"001|3"_s, u"002|12.25"_s, u"003|4"_s}));
}

void TestCadDefMalha::escLeavesTheCellBeforeTheScreen()
{
    DefectStation station;
    station.record(u"000012"_s, 5, u"001"_s, 7);
    station.openRoll(u"000012"_s, 5);
    station.grid()->setFocus();
    QTest::keyClicks(station.grid(), u"3"_s);
    QVERIFY(QApplication::focusWidget() != station.grid());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(station.form() && station.form()->isVisible());
    QCOMPARE(station.shown().value(0), u"001|Furo|7,00"_s);
    QTRY_COMPARE(station.focus(), u"DBGrid1"_s);
    const QPointer<QWidget> screen = station.form();
    QTest::keyClick(station.grid(), Qt::Key_Escape);
    QTRY_VERIFY(screen.isNull());
    QCOMPARE(station.stored(), QStringList{u"000012|5|001|7|000102|2"_s});
}

void TestCadDefMalha::aCellThatIsOpenIsSavedToo_data()
{
    QTest::addColumn<bool>("byMnemonic");
    QTest::newRow("click") << false;
    QTest::newRow("Alt+C") << true;
}

void TestCadDefMalha::aCellThatIsOpenIsSavedToo()
{
    QFETCH(bool, byMnemonic);
    DefectStation station;
    station.record(u"000012"_s, 5, u"001"_s, 7);
    station.openRoll(u"000012"_s, 5);
    station.grid()->setFocus();
    QTest::keyClicks(station.grid(), u"3"_s);
    const QPointer<QWidget> screen = station.form();
    if (byMnemonic)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::AltModifier);
    else
        station.click(u"BitBtn1"_s);
    QTRY_VERIFY(screen.isNull());
    QCOMPARE(station.stored().value(0), u"000012|5|001|3|000102|2"_s);
}

void TestCadDefMalha::enterWalksToTheQuantities()
{
    DefectStation station;
    station.record(u"000012"_s, 5, u"001"_s, 7);
    station.openRoll(u"000012"_s, 5);
    for (const QString &field : {u"EdtCodRev"_s, u"EdtCodQul"_s, u"DBGrid1"_s}) {
        QCOMPARE(station.focus(), field);
        station.key(Qt::Key_Return);
    }
}

void TestCadDefMalha::anUnknownCodeOpensTheSearch_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("sought");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("name");
    for (const char *wrong : {"999", "", "'", "%"}) {
        QTest::addRow("inspector \"%s\"", wrong) << u"EdtCodRev"_s << QString::fromLatin1(wrong) << u"Funcionários"_s
                                                 << u"Lia"_s << u"000103"_s << u"Célia Rocha"_s;
        QTest::addRow("grade \"%s\"", wrong) << u"EdtCodQul"_s << QString::fromLatin1(wrong) << u"Qualidades"_s
                                             << u"Segunda"_s << u"2"_s << u"Segunda"_s;
    }
}

void TestCadDefMalha::anUnknownCodeOpensTheSearch()
{
    QFETCH(QString, field);
    QFETCH(QString, text);
    QFETCH(QString, title);
    QFETCH(QString, sought);
    QFETCH(QString, code);
    QFETCH(QString, name);
    const QString next = field == u"EdtCodRev"_s ? u"EdtCodQul"_s : u"DBGrid1"_s;
    const QString description = field == u"EdtCodRev"_s ? u"EdtNomRev"_s : u"EdtDescQul"_s;
    DefectStation station;
    station.record(u"000012"_s, 5, u"001"_s, 7);
    station.openRoll(u"000012"_s, 5);
    station.child(field)->setFocus();
    QStringList listed;
    expectSearchAndLeave(station.answers, &listed, title);
    station.enter(field, text);
    QVERIFY(listed.contains(code));
    QTRY_COMPARE(station.focus(), next);
    QCOMPARE(station.text(field), text);
    QCOMPARE(station.text(description), QString());
    station.child(field)->setFocus();
    expectSearchAndTake(station.answers, sought, title);
    station.key(Qt::Key_Return);
    QTRY_COMPARE(station.focus(), field);
    QCOMPARE(station.text(field), code);
    QCOMPARE(station.text(description), name);
    station.key(Qt::Key_Return);
    QCOMPARE(station.focus(), next);
}

void TestCadDefMalha::aKnownCodeIsDescribedAndLeft()
{
    DefectStation station;
    station.openRoll(u"000012"_s, 5);
    station.type(u"EdtCodRev"_s, u"00010"_s);
    QCOMPARE(station.text(u"EdtNomRev"_s), QString());
    QTest::keyClicks(station.child(u"EdtCodRev"_s), u"1"_s);
    QCOMPARE(station.text(u"EdtNomRev"_s), u"Ana Souza"_s);
    station.key(Qt::Key_Tab);
    QCOMPARE(station.focus(), u"EdtCodQul"_s);
    station.enter(u"EdtCodQul"_s, u"1"_s);
    QCOMPARE(station.text(u"EdtDescQul"_s), u"Primeira"_s);
    QCOMPARE(station.focus(), u"DBGrid1"_s);
}

void TestCadDefMalha::inspectorAndGradeMayStayEmpty()
{
    DefectStation station;
    station.openRoll(u"000012"_s, 5);
    // The search offers help, and is left.
    QStringList listed;
    expectSearchAndLeave(station.answers, &listed, u"Funcionários"_s);
    station.confirm();
    QCOMPARE(station.database.count(u"DEF_MOV"_s, u"REVISOR = '' AND QUALIDADE = ''"_s), 3);
}

void TestCadDefMalha::hostileCodesAreStoredAsTyped()
{
    DefectStation station;
    station.database.run(u"INSERT INTO {PESSOAL} (CODIGO, NOME) VALUES ('D''%\"_', 'Jô D''Ângelo')"_s);
    station.openRoll(u"000012"_s, 5);
    station.enter(u"EdtCodRev"_s, u"D'%\"_"_s);
    QCOMPARE(station.text(u"EdtNomRev"_s), u"Jô D'Ângelo"_s);
    station.enter(u"EdtCodQul"_s, u"1"_s);
    station.confirm();
    QCOMPARE(station.stored().value(0), u"000012|5|001|0|D'%\"_|1"_s);
}

void TestCadDefMalha::leavingWithoutConfirmingWritesNothing_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("Fechar") << 0;
    QTest::newRow("Esc") << 1;
    QTest::newRow("the window's own button") << 2;
}

void TestCadDefMalha::leavingWithoutConfirmingWritesNothing()
{
    QFETCH(int, way);
    DefectStation station;
    station.record(u"000012"_s, 5, u"001"_s, 7);
    station.openRoll(u"000012"_s, 5);
    station.grid()->setFocus();
    station.typeQuantity(u"99"_s);
    // No search keeps anybody from going.
    station.type(u"EdtCodRev"_s, u"x"_s);
    const QPointer<QWidget> screen = station.form();
    if (way == 0)
        station.click(u"BitBtn2"_s);
    else if (way == 1)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    else
        screen->close();
    QTRY_VERIFY(screen.isNull());
    QCOMPARE(station.stored(), QStringList{u"000012|5|001|7|000102|2"_s});
}

void TestCadDefMalha::withoutTheRightNothingHappens()
{
    DefectStation station;
    station.record(u"000012"_s, 5, u"001"_s, 7);
    station.host.login(u"SEMDIREITO"_s, 1);
    station.openRoll(u"000012"_s, 5);
    station.click(u"BitBtn1"_s);
    QVERIFY(station.form() && station.form()->isVisible());
    QCOMPARE(station.stored(), QStringList{u"000012|5|001|7|000102|2"_s});
    station.database.run(u"INSERT INTO QEN_DIREITO VALUES ('SEMDIREITO', 'TfmCadDefMalha', 'A', '0')"_s);
    station.confirm();
    QCOMPARE(station.stored().size(), 3);
}

void TestCadDefMalha::withoutARollThereIsNothingToSave()
{
    DefectStation station;
    station.open(u"TfmCadDefMalha"_s);
    QCOMPARE(station.text(u"edtOF"_s), QString());
    QCOMPARE(station.text(u"edtRolo"_s), QString());
    station.enter(u"EdtCodRev"_s, u"000101"_s);
    station.enter(u"EdtCodQul"_s, u"1"_s);
    expectInformation(
        station.answers, caption, u"Abra esta tela a partir da baixa de um rolo. Impossível Continuar."_s);
    station.click(u"BitBtn1"_s);
    QVERIFY(station.form() && station.form()->isVisible());
    QCOMPARE(station.stored(), QStringList());
}

void TestCadDefMalha::whatCouldNotBeReadIsNotReplaced()
{
    DefectStation station;
    station.record(u"000012"_s, 5, u"001"_s, 7);
    station.tabela.IBDatabase->setObserver([](const QString &statement) {
        if (statement.contains(u"DEFEITO.CODIGO"_s))
            throw EDatabaseError(EDatabaseError::Category::Connection, {}, u"broken"_s, statement);
    });
    expectFailure(station.answers, caption, u"A conexão com o banco de dados falhou."_s);
    station.openRoll(u"000012"_s, 5);
    station.tabela.IBDatabase->setObserver({});
    QCOMPARE(station.shown(), QStringList());
    expectInformation(station.answers, caption,
        u"Os defeitos do rolo não foram lidos por inteiro. Abra a tela de novo. Impossível Continuar."_s);
    station.click(u"BitBtn1"_s);
    QCOMPARE(station.stored(), QStringList{u"000012|5|001|7|000102|2"_s});
}

void TestCadDefMalha::nothingRemainsOfASaveThatFails()
{
    DefectStation station;
    station.record(u"000012"_s, 5, u"001"_s, 7);
    station.database.run(u"ALTER TABLE {DEF_MOV} ADD CONSTRAINT FEW_NEEDLES CHECK (CODIGO <> '003' OR QUANT < 9)"_s);
    station.openRoll(u"000012"_s, 5);
    station.grid()->setFocus();
    station.typeQuantity(u"1"_s);
    station.key(Qt::Key_Down);
    station.key(Qt::Key_Down);
    station.typeQuantity(u"9"_s);
    expectFailure(station.answers, caption, u"O banco de dados recusou a operação. Nada foi gravado."_s);
    station.click(u"BitBtn1"_s);
    QVERIFY(station.form() && station.form()->isVisible());
    QCOMPARE(station.stored(), QStringList{u"000012|5|001|7|000102|2"_s});
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
    QCOMPARE(
        station.shown(), (QStringList{u"001|Furo|1,00"_s, u"002|Barramento|0,00"_s, u"003|Agulha quebrada|9,00"_s}));
    station.grid()->setFocus();
    station.typeQuantity(u"8"_s);
    station.confirm();
    QCOMPARE(station.database.rows(u"SELECT CODIGO, QUANT FROM {DEF_MOV} ORDER BY CODIGO"_s),
        (QStringList{u"001|1"_s, u"002|0"_s, u"003|8"_s}));
}

void TestCadDefMalha::theInstanceIsGoneWithTheScreen()
{
    DefectStation station;
    for (int i = 0; i < 3; ++i) {
        station.openRoll(u"000012"_s, i);
        QCOMPARE(station.instance("fmCadDefMalha"), station.form());
        station.closeForm();
        QVERIFY(!station.instance("fmCadDefMalha"));
        QVERIFY(!station.host.openForm(u"TfmCadDefMalha"_s));
    }
}

QTEST_MAIN(TestCadDefMalha)
#include "tst_caddefmalha.moc"
