// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/engines.h"
#include "tests/support/screenchecks.h"
#include "tests/support/teststation.h"

#include "module/controls/dbgrid.h"

#include <QApplication>

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

namespace {

const QString caption = QStringLiteral("Atualização de Saldo de OF");

/// A station with the balances of three orders.
class BalanceStation : public TestStation
{
public:
    BalanceStation()
        : TestStation(Engines::current())
    {
        insert(u"000010"_s, u"M0001"_s, u"120"_s, u"100"_s);
        insert(u"000010"_s, u"M0002"_s, u"50.125"_s, u"0"_s);
        insert(u"000011"_s, u"M0001"_s, u"80"_s, u"80"_s);
        insert(u"000012"_s, u"GONE"_s, u"30"_s, u"NULL"_s); // a product that is no longer registered
    }

    MessageAnswers answers; ///< a box that nobody expects fails every test

    void insert(const QString &of, const QString &code, const QString &total, const QString &invoiced)
    {
        database.run(u"INSERT INTO {PA_MALHA} (NUM_OF, CODIGO, QTDE_TOTAL, FATURADO) VALUES ('%1', '%2', %3, %4)"_s.arg(
            of, code, total, invoiced));
    }
    void openBalances() { open(u"TfmAcertoMalharia"_s); }
    TDBGrid *grid() const { return child<TDBGrid>(u"DBGrid1"_s); }
    QString row(int row) const
    {
        QStringList columns;
        for (int column = 0; column < grid()->model()->columnCount(); ++column)
            columns.append(grid()->model()->index(row, column).data().toString());
        return columns.join(u'|');
    }
    QStringList listed() const
    {
        QStringList result;
        for (int i = 0; i < grid()->model()->rowCount(); ++i)
            result.append(row(i).section(u'|', 0, 1));
        return result;
    }
    QStringList stored()
    {
        return database.rows(u"SELECT NUM_OF, CODIGO, QTDE_TOTAL, FATURADO FROM {PA_MALHA} ORDER BY NUM_OF, CODIGO"_s);
    }
};

const QStringList untouched{
    u"000010|M0001|120|100"_s, u"000010|M0002|50.125|0"_s, u"000011|M0001|80|80"_s, u"000012|GONE|30|"_s};

} // namespace

/// The correction of an order's finished-fabric balance.
class TestAcertoMalha : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void everyControlBearsItsCaption();
    void withoutFiltersEveryBalanceIsListed();
    void codeAndNumberNarrowTheList();
    void hostileTextFindsNothing();
    void theCurrentRowsBalanceIsShown();
    void theTypedBalanceMakesTheTotal_data();
    void theTypedBalanceMakesTheTotal();
    void onlyTheCurrentRowIsSaved();
    void theKeyboardAloneIsEnough();
    void savingNeedsItsRight();
    void aRowThatVanishedIsNotSaved();
    void withoutRowsNothingIsSaved();
    void cancellingClosesWithoutSaving_data();
    void cancellingClosesWithoutSaving();
    void productAndOrderAreSearched();
    void aLongListIsFetchedAsItIsScrolled();
};

void TestAcertoMalha::everyControlBearsItsCaption()
{
    BalanceStation station;
    station.openBalances();
    QCOMPARE(station.form()->windowTitle(), caption);
    const QList<std::pair<QString, QString>> texts{
        {u"lbCodigo"_s, u"Código"_s}, {u"lbOF"_s, u"OF Número"_s}, {u"lbSaldo"_s, u"Saldo"_s}};
    for (const auto &[name, text] : texts)
        QCOMPARE(station.text(name).remove(u'&'), text);
    QCOMPARE(station.text(u"SbConfirmar"_s), u"&Gravar"_s);
    QCOMPARE(station.text(u"SbDesistir"_s), u"&Cancelar"_s);
    QCOMPARE(station.focus(), u"EdtCodigo"_s);
}

void TestAcertoMalha::withoutFiltersEveryBalanceIsListed()
{
    BalanceStation station;
    station.openBalances();
    QCOMPARE(station.row(0), u"000010|M0001|Meia-malha PV 60/40|120,000|100,000"_s);
    QCOMPARE(station.row(1), u"000010|M0002|Ribana 2x1|50,125|0,000"_s);
    QCOMPARE(station.row(3), u"000012|GONE||30,000|"_s);
    QCOMPARE(station.listed().size(), 4);
    QCOMPARE(station.text(u"EdtQtde"_s), u"20,000"_s);
}

void TestAcertoMalha::codeAndNumberNarrowTheList()
{
    BalanceStation station;
    station.openBalances();
    station.enter(u"EdtCodigo"_s, u"M0001"_s);
    QCOMPARE(station.text(u"EdtDescricao"_s), u"Meia-malha PV 60/40"_s);
    QCOMPARE(station.listed(), (QStringList{u"000010|M0001"_s, u"000011|M0001"_s}));
    station.enter(u"edtOF"_s, u"000011"_s);
    QCOMPARE(station.listed(), QStringList{u"000011|M0001"_s});
    QCOMPARE(station.text(u"EdtQtde"_s), u"0,000"_s);
    station.enter(u"EdtCodigo"_s, {});
    QCOMPARE(station.text(u"EdtDescricao"_s), QString());
    station.enter(u"edtOF"_s, u"000010"_s);
    QCOMPARE(station.listed(), (QStringList{u"000010|M0001"_s, u"000010|M0002"_s}));
    station.enter(u"edtOF"_s, {});
    QCOMPARE(station.listed().size(), 4);
}

void TestAcertoMalha::hostileTextFindsNothing()
{
    BalanceStation station;
    station.openBalances();
    for (const QString &text : {u"' OR '1'='1"_s, u"%"_s, u"M0001' --"_s, u"{PA_MALHA}"_s}) {
        station.enter(u"EdtCodigo"_s, text);
        QCOMPARE(station.listed(), QStringList());
        QCOMPARE(station.text(u"EdtQtde"_s), u"0,000"_s);
    }
    QCOMPARE(station.stored(), untouched);
}

void TestAcertoMalha::theCurrentRowsBalanceIsShown()
{
    BalanceStation station;
    station.openBalances();
    station.grid()->setFocus();
    const QStringList balances{u"20,000"_s, u"50,125"_s, u"0,000"_s, u"30,000"_s};
    for (int row = 0; row < balances.size(); ++row) {
        QCOMPARE(station.text(u"EdtQtde"_s), balances[row]);
        station.key(Qt::Key_Down);
    }
}

void TestAcertoMalha::theTypedBalanceMakesTheTotal_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("total");
    QTest::newRow("nothing left") << u"0"_s << u"100"_s;
    QTest::newRow("grams") << u"12,345"_s << u"112.345"_s;
    QTest::newRow("more") << u"1250,5"_s << u"1350.5"_s;
    QTest::newRow("less than invoiced") << u"-7,5"_s << u"92.5"_s;
    QTest::newRow("unchanged") << u"20"_s << u"120"_s;
}

void TestAcertoMalha::theTypedBalanceMakesTheTotal()
{
    QFETCH(QString, typed);
    QFETCH(QString, total);
    BalanceStation station;
    station.openBalances();
    station.enter(u"EdtQtde"_s, typed);
    QCOMPARE(station.focus(), u"SbConfirmar"_s);
    const QString shown = station.text(u"EdtQtde"_s);
    station.click(u"SbConfirmar"_s);
    QCOMPARE(station.stored(), QStringList{u"000010|M0001|%1|100"_s.arg(total)} + untouched.mid(1));
    // The list is read anew, and the difference is what was typed.
    QCOMPARE(station.listed().size(), 4);
    QCOMPARE(station.text(u"EdtQtde"_s), shown);
    QCOMPARE(station.value(u"SELECT COUNT(*) FROM QEN_LOG"_s).toInt(), 0);
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
}

void TestAcertoMalha::onlyTheCurrentRowIsSaved()
{
    BalanceStation station;
    station.openBalances();
    station.enter(u"edtOF"_s, u"000010"_s);
    station.grid()->setFocus();
    station.key(Qt::Key_Down);
    station.enter(u"EdtQtde"_s, u"1,5"_s);
    station.click(u"SbConfirmar"_s);
    QCOMPARE(station.stored(), (QStringList{untouched[0], u"000010|M0002|1.5|0"_s, untouched[2], untouched[3]}));
    // The same list, on the same row.
    QCOMPARE(station.listed().size(), 2);
    QCOMPARE(station.grid()->currentIndex().row(), 1);
    // Nothing was ever invoiced of the last one.
    station.enter(u"edtOF"_s, u"000012"_s);
    station.enter(u"EdtQtde"_s, u"4"_s);
    station.click(u"SbConfirmar"_s);
    QCOMPARE(station.stored().last(), u"000012|GONE|4|"_s);
}

void TestAcertoMalha::theKeyboardAloneIsEnough()
{
    BalanceStation station;
    station.openBalances();
    station.type(u"EdtCodigo"_s, u"M0002"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.focus(), u"edtOF"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.focus(), u"DBGrid1"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.focus(), u"EdtQtde"_s);
    QTest::keyClicks(station.child(u"EdtQtde"_s), u"9"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.focus(), u"SbConfirmar"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.stored()[1], u"000010|M0002|9|0"_s);
    QCOMPARE(station.focus(), u"DBGrid1"_s);
}

void TestAcertoMalha::savingNeedsItsRight()
{
    BalanceStation station;
    station.host.login(u"SEMDIREITO"_s, 1);
    station.openBalances();
    station.enter(u"EdtQtde"_s, u"1"_s);
    station.click(u"SbConfirmar"_s);
    QCOMPARE(station.stored(), untouched);
    station.database.run(
        u"INSERT INTO QEN_DIREITO (USUARIO, TELA, LETRA, NIVEL) VALUES ('SEMDIREITO', 'TfmAcertoMalharia', 'A', '0')"_s);
    station.click(u"SbConfirmar"_s);
    QCOMPARE(station.stored()[0], u"000010|M0001|101|100"_s);
}

void TestAcertoMalha::aRowThatVanishedIsNotSaved()
{
    BalanceStation station;
    station.openBalances();
    station.enter(u"EdtQtde"_s, u"1"_s);
    // The product has another row still, then none.
    station.database.run(u"DELETE FROM {PA_MALHA} WHERE NUM_OF = '000010'"_s);
    expectFailure(station.answers, caption,
        u"Outra estação alterou estes dados ao mesmo tempo. Nada foi gravado; tente novamente."_s);
    station.click(u"SbConfirmar"_s);
    station.database.run(u"DELETE FROM {PA_MALHA} WHERE CODIGO = 'M0001'"_s);
    expectInformation(station.answers, caption, u"Não há saldo para gravar."_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(station.answers.allCame());
    QCOMPARE(station.stored(), QStringList{untouched[3]});
    // The list is read anew.
    QCOMPARE(station.listed(), QStringList{u"000012|GONE"_s});
}

void TestAcertoMalha::withoutRowsNothingIsSaved()
{
    BalanceStation station;
    station.openBalances();
    station.enter(u"edtOF"_s, u"999999"_s);
    station.enter(u"EdtQtde"_s, u"1"_s);
    expectInformation(station.answers, caption, u"Não há saldo para gravar."_s);
    station.click(u"SbConfirmar"_s);
    QVERIFY(station.answers.allCame());
    QTRY_COMPARE(station.focus(), u"EdtCodigo"_s);
    QCOMPARE(station.stored(), untouched);
}

void TestAcertoMalha::cancellingClosesWithoutSaving_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("button") << false;
    QTest::newRow("Esc") << true;
}

void TestAcertoMalha::cancellingClosesWithoutSaving()
{
    QFETCH(bool, byEscape);
    BalanceStation station;
    station.openBalances();
    station.type(u"EdtQtde"_s, u"1"_s);
    if (byEscape)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    else
        QTest::mouseClick(station.child(u"SbDesistir"_s), Qt::LeftButton);
    QTRY_VERIFY(!station.form());
    QCOMPARE(station.stored(), untouched);
    station.openBalances();
    QCOMPARE(station.text(u"EdtQtde"_s), u"20,000"_s);
}

void TestAcertoMalha::productAndOrderAreSearched()
{
    BalanceStation station;
    station.openBalances();
    expectSearchAndTake(station.answers, u"ribana"_s, u"Materiais"_s);
    station.click(u"PqMat"_s);
    QCOMPARE(station.text(u"EdtCodigo"_s), u"M0002"_s);
    QCOMPARE(station.text(u"EdtDescricao"_s), u"Ribana 2x1"_s);
    QCOMPARE(station.listed(), QStringList{u"000010|M0002"_s});
    QStringList orders;
    expectSearchAndLeave(station.answers, &orders, u"Saldos de OF"_s);
    station.click(u"PqOF"_s);
    QCOMPARE(orders, (QStringList{u"000010"_s, u"000010"_s, u"000011"_s, u"000012"_s}));
    QCOMPARE(station.text(u"edtOF"_s), QString());
    station.enter(u"EdtCodigo"_s, {});
    station.type(u"edtOF"_s, {});
    expectSearchAndTake(station.answers, u"000011"_s);
    station.key(Qt::Key_F4);
    QCOMPARE(station.text(u"edtOF"_s), u"000011"_s);
    QCOMPARE(station.listed(), QStringList{u"000011|M0001"_s});
}

void TestAcertoMalha::aLongListIsFetchedAsItIsScrolled()
{
    BalanceStation station;
    Save save(station.database.connection());
    for (int i = 0; i < 700; ++i)
        station.insert(QString::number(100000 + i), u"M0001"_s, QString::number(i), u"0"_s);
    save.CommitRetaining();
    station.openBalances();
    const int atFirst = station.grid()->model()->rowCount();
    QVERIFY(atFirst < 700);
    station.grid()->setFocus();
    station.key(Qt::Key_End, Qt::ControlModifier);
    QTRY_VERIFY(station.grid()->model()->rowCount() > atFirst);
}

QTEST_MAIN(TestAcertoMalha)
#include "tst_acertomalha.moc"
