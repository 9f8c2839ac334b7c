// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/engines.h"
#include "tests/support/screenchecks.h"
#include "tests/support/teststation.h"

#include <QApplication>
#include <QTableView>

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

namespace {

const QString caption = QStringLiteral("Atualização de Notas Fiscais de Cobrança");

/// A station with the invoice 0000100: fabric of the groups 150 and 15, yarn of group 10, a fabric of a group that
/// only begins like one, one that has none, and one that is not registered.
class BillingStation : public TestStation
{
public:
    BillingStation()
        : TestStation(Engines::current())
    {
        database.run(u"INSERT INTO {MATERIAL} (CODIGO, DESCRICAO, GRUPO) VALUES ('M1500', 'Malha', '1500')"_s);
        database.run(u"INSERT INTO {MATERIAL} (CODIGO, DESCRICAO, GRUPO) VALUES ('SEMGRUPO', 'Malha', NULL)"_s);
        const QStringList codes{u"M0001"_s, u"M0002"_s, u"FIO30CO"_s, u"M1500"_s, u"SEMGRUPO"_s, u"GONE"_s};
        for (int i = 0; i < codes.size(); ++i)
            insertItem(u"0000100"_s, i + 1, codes[i], u"'N'"_s);
        insertItem(u"0000101"_s, 1, u"M0001"_s, u"'N'"_s);
        insertItem(u"0000102"_s, 1, u"FIO30CO"_s, u"'N'"_s);
    }

    MessageAnswers answers; ///< a box that nobody expects fails every test

    void insertItem(const QString &invoice, int number, const QString &code, const QString &mark)
    {
        database.run(u"INSERT INTO {NOTAITEN} (FATURA, ORDEM, CODIGO, QTDE, VALOR, TIPO) "
                     "VALUES ('%1', %2, '%3', 10.5, 100, %4)"_s.arg(invoice, QString::number(number), code, mark));
    }
    void openBilling() { open(u"TfmMalFatNF"_s); }
    /// The marks of an invoice's items, in their order.
    QString marks(const QString &invoice)
    {
        return database
            .rows(u"SELECT COALESCE(TIPO, '-') FROM {NOTAITEN} WHERE FATURA = '%1' ORDER BY ORDEM"_s.arg(invoice))
            .join(u' ');
    }
    QStringList listed() const
    {
        const QAbstractItemModel *items = child<QTableView>(u"DBGrid1"_s)->model();
        QStringList rows;
        for (int row = 0; row < items->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < items->columnCount(); ++column)
                cells.append(items->index(row, column).data().toString());
            rows.append(cells.join(u'|'));
        }
        return rows;
    }
};

} // namespace

/// The billing mark of an invoice's fabric.
class TestMalFatNF : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void bearsItsCaptions();
    void theFlagOfTheInvoiceIsShown_data();
    void theFlagOfTheInvoiceIsShown();
    void onlyFabricIsMarked();
    void andUnmarked();
    void theItemsAreListed();
    void anInvoiceWithoutFabricIsLeftUnchanged_data();
    void anInvoiceWithoutFabricIsLeftUnchanged();
    void onlySAndNCanBeTyped_data();
    void onlySAndNCanBeTyped();
    void anEmptyFlagIsWrittenAsItIs();
    void savingNeedsItsRight();
    void theKeyboardAloneIsEnough();
    void theInvoiceIsSearched();
    void anotherCompanysInvoiceIsLeftAlone();
    void nothingRemainsOfAnUpdateThatFails();
    void closingSavesNothing_data();
    void closingSavesNothing();
};

void TestMalFatNF::bearsItsCaptions()
{
    BillingStation station;
    station.openBilling();
    QCOMPARE(station.form()->windowTitle(), caption);
    const QList<std::pair<QString, QString>> texts{{u"lbNota"_s, u"Nota Fiscal"_s}, {u"lbFat"_s, u"Faturada"_s},
        {u"BitBtn2"_s, u"Atualizar"_s}, {u"BitBtn1"_s, u"Fechar"_s}};
    for (const auto &[name, text] : texts)
        QCOMPARE(station.text(name).remove(u'&'), text);
    QCOMPARE(station.focus(), u"EdtNota"_s);
    QCOMPARE(station.instance("fmMalFatNF"), station.form());
    station.closeForm();
    QVERIFY(!station.instance("fmMalFatNF"));
}

void TestMalFatNF::theFlagOfTheInvoiceIsShown_data()
{
    QTest::addColumn<QStringList>("marks");
    QTest::addColumn<QString>("flag");
    QTest::newRow("billed") << QStringList{u"'S'"_s, u"'S'"_s} << u"S"_s;
    QTest::newRow("not billed") << QStringList{u"'N'"_s, u"'N'"_s} << u"N"_s;
    QTest::newRow("mixed") << QStringList{u"'N'"_s, u"'S'"_s, u"'N'"_s} << u"S"_s;
    QTest::newRow("mixed with none") << QStringList{u"NULL"_s, u"'N'"_s} << u"N"_s;
    QTest::newRow("none") << QStringList{u"NULL"_s, u"NULL"_s} << QString();
    QTest::newRow("another mark") << QStringList{u"'X'"_s} << QString();
    QTest::newRow("unknown invoice") << QStringList{} << QString();
}

void TestMalFatNF::theFlagOfTheInvoiceIsShown()
{
    BillingStation station;
    QFETCH(QStringList, marks);
    for (int i = 0; i < marks.size(); ++i)
        station.insertItem(u"0000200"_s, i + 1, u"M0001"_s, marks[i]);
    station.openBilling();
    station.enter(u"EdtNota"_s, u"0000100"_s);
    QCOMPARE(station.text(u"EdtFat"_s), u"N"_s);
    station.enter(u"EdtNota"_s, u"0000200"_s);
    QTEST(station.text(u"EdtFat"_s), "flag");
}

void TestMalFatNF::onlyFabricIsMarked()
{
    BillingStation station;
    station.openBilling();
    station.enter(u"EdtNota"_s, u"0000100"_s);
    station.enter(u"EdtFat"_s, u"S"_s);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.marks(u"0000100"_s), u"S S N N N N"_s);
    QCOMPARE(station.marks(u"0000101"_s), u"N"_s);
    QCOMPARE(station.text(u"lbResultado"_s), u"Itens de malha atualizados: 2."_s);
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
    QCOMPARE(station.value(u"SELECT COUNT(*) FROM QEN_LOG"_s).toInt(), 0);
}

void TestMalFatNF::andUnmarked()
{
    BillingStation station;
    station.database.run(u"UPDATE {NOTAITEN} SET TIPO = 'S' WHERE FATURA = '0000100'"_s);
    station.openBilling();
    station.enter(u"EdtNota"_s, u"0000100"_s);
    QCOMPARE(station.text(u"EdtFat"_s), u"S"_s);
    station.enter(u"EdtFat"_s, u"N"_s);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.marks(u"0000100"_s), u"N N S S S S"_s);
    // The yarn's mark is what the invoice shows now.
    station.enter(u"EdtNota"_s, u"0000100"_s);
    QCOMPARE(station.text(u"EdtFat"_s), u"S"_s);
}

void TestMalFatNF::theItemsAreListed()
{
    BillingStation station;
    station.openBilling();
    QCOMPARE(station.listed(), QStringList());
    station.enter(u"EdtNota"_s, u"0000100"_s);
    QCOMPARE(station.listed().size(), 6);
    QCOMPARE(station.listed().first(), u"1|M0001|Meia-malha PV 60/40|150|10,500|100,00|N"_s);
    station.enter(u"EdtFat"_s, u"S"_s);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.listed().first(), u"1|M0001|Meia-malha PV 60/40|150|10,500|100,00|S"_s);
    QCOMPARE(station.listed().last(), u"6|GONE|||10,500|100,00|N"_s);
    station.enter(u"EdtNota"_s, u"0000999"_s);
    QCOMPARE(station.listed(), QStringList());
    QCOMPARE(station.text(u"lbResultado"_s), QString());
}

void TestMalFatNF::anInvoiceWithoutFabricIsLeftUnchanged_data()
{
    QTest::addColumn<QString>("invoice");
    QTest::newRow("yarn") << u"0000102"_s;
    QTest::newRow("unknown") << u"0000999"_s;
    QTest::newRow("none") << QString();
    QTest::newRow("hostile") << u"' OR ''"_s;
}

void TestMalFatNF::anInvoiceWithoutFabricIsLeftUnchanged()
{
    BillingStation station;
    QFETCH(QString, invoice);
    station.openBilling();
    station.enter(u"EdtNota"_s, invoice);
    station.enter(u"EdtFat"_s, u"S"_s);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.database.count(u"NOTAITEN"_s, u"TIPO = 'N'"_s), 8);
    QCOMPARE(station.text(u"lbResultado"_s), u"Nenhum item de malha nesta nota."_s);
}

void TestMalFatNF::onlySAndNCanBeTyped_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("taken");
    QTest::newRow("S") << u"S"_s << u"S"_s;
    QTest::newRow("n") << u"n"_s << u"N"_s;
    QTest::newRow("s") << u"s"_s << u"S"_s;
    QTest::newRow("X") << u"X"_s << QString();
    QTest::newRow("'") << u"'"_s << QString();
    QTest::newRow("1") << u"1"_s << QString();
    QTest::newRow("only one") << u"SN"_s << u"S"_s;
}

void TestMalFatNF::onlySAndNCanBeTyped()
{
    BillingStation station;
    QFETCH(QString, typed);
    QFETCH(QString, taken);
    station.openBilling();
    station.enter(u"EdtNota"_s, u"0000101"_s);
    station.type(u"EdtFat"_s, {});
    QTest::keyClicks(station.child(u"EdtFat"_s), typed);
    QCOMPARE(station.text(u"EdtFat"_s), taken);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.marks(u"0000101"_s), taken);
}

void TestMalFatNF::anEmptyFlagIsWrittenAsItIs()
{
    BillingStation station;
    station.openBilling();
    station.enter(u"EdtNota"_s, u"0000100"_s);
    station.enter(u"EdtFat"_s, {});
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.marks(u"0000100"_s), u"  N N N N"_s);
}

void TestMalFatNF::savingNeedsItsRight()
{
    BillingStation station;
    station.host.login(u"SEMDIREITO"_s, 1);
    station.openBilling();
    station.enter(u"EdtNota"_s, u"0000101"_s);
    station.enter(u"EdtFat"_s, u"S"_s);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.marks(u"0000101"_s), u"N"_s);
    QCOMPARE(station.text(u"lbResultado"_s), QString());
    station.database.run(
        u"INSERT INTO QEN_DIREITO (USUARIO, TELA, LETRA, NIVEL) VALUES ('SEMDIREITO', 'TfmMalFatNF', 'A', '0')"_s);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.marks(u"0000101"_s), u"S"_s);
}

void TestMalFatNF::theKeyboardAloneIsEnough()
{
    BillingStation station;
    station.openBilling();
    for (const QString &invoice : {u"0000100"_s, u"0000101"_s}) {
        QCOMPARE(station.focus(), u"EdtNota"_s);
        QTest::keyClicks(QApplication::focusWidget(), invoice);
        station.key(Qt::Key_Return);
        QCOMPARE(station.focus(), u"EdtFat"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_S);
        station.key(Qt::Key_Return);
        QCOMPARE(station.focus(), u"BitBtn2"_s);
        station.key(Qt::Key_Return);
    }
    QCOMPARE(station.marks(u"0000100"_s), u"S S N N N N"_s);
    QCOMPARE(station.marks(u"0000101"_s), u"S"_s);
}

void TestMalFatNF::theInvoiceIsSearched()
{
    BillingStation station;
    station.database.run(
        u"INSERT INTO {NOTA} (FATURA, CODCLI, DT_EMISSAO) VALUES ('0000100', '00001', '03/09/2026')"_s);
    station.openBilling();
    expectSearchAndTake(station.answers, u"0000100"_s, u"Notas Fiscais"_s);
    station.key(Qt::Key_F4);
    QCOMPARE(station.text(u"EdtNota"_s), u"0000100"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.text(u"EdtFat"_s), u"N"_s);
}

void TestMalFatNF::anotherCompanysInvoiceIsLeftAlone()
{
    BillingStation station;
    station.database.run(u"INSERT INTO MATERIAL_002 (CODIGO, GRUPO) VALUES ('M0001', '150')"_s);
    station.database.run(
        u"INSERT INTO NOTAITEN_002 (FATURA, ORDEM, CODIGO, TIPO) VALUES ('0000101', 1, 'M0001', 'N')"_s);
    station.openBilling();
    station.enter(u"EdtNota"_s, u"0000101"_s);
    station.enter(u"EdtFat"_s, u"S"_s);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.marks(u"0000101"_s), u"S"_s);
    QCOMPARE(station.value(u"SELECT TIPO FROM NOTAITEN_002"_s).toString(), u"N"_s);
}

void TestMalFatNF::nothingRemainsOfAnUpdateThatFails()
{
    BillingStation station;
    station.database.run(
        u"ALTER TABLE {NOTAITEN} ADD CONSTRAINT NEVER_BILLED CHECK (CODIGO <> 'M0002' OR TIPO <> 'S')"_s);
    station.openBilling();
    station.enter(u"EdtNota"_s, u"0000100"_s);
    station.enter(u"EdtFat"_s, u"S"_s);
    expectFailure(station.answers, caption, u"O banco de dados recusou a operação. Nada foi gravado."_s);
    station.click(u"BitBtn2"_s);
    QCOMPARE(station.marks(u"0000100"_s), u"N N N N N N"_s);
    QVERIFY(!station.tabela.IBDatabase->inTransaction());
    QCOMPARE(station.text(u"EdtFat"_s), u"S"_s);
}

void TestMalFatNF::closingSavesNothing_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("button") << false;
    QTest::newRow("Esc") << true;
}

void TestMalFatNF::closingSavesNothing()
{
    QFETCH(bool, byEscape);
    BillingStation station;
    station.openBilling();
    station.enter(u"EdtNota"_s, u"0000100"_s);
    station.type(u"EdtFat"_s, u"S"_s);
    if (byEscape)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    else
        QTest::mouseClick(station.child(u"BitBtn1"_s), Qt::LeftButton);
    QTRY_VERIFY(!station.form());
    QCOMPARE(station.marks(u"0000100"_s), u"N N N N N N"_s);
}

QTEST_MAIN(TestMalFatNF)
#include "tst_malfatnf.moc"
