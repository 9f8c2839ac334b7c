// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/table.h"
#include "tests/support/engines.h"
#include "tests/support/testdatabase.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/// Orders by their number, and stock items by a key of two columns.
class TestTable : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }
    void init();
    void cleanup();

    void itStandsOnTheFirstAndGoesToTheLast();
    void itRunsThroughTheKeyInBothDirections();
    void atTheEndsItStays();
    void aKeyOfTwoColumnsIsRunThrough();
    void numbersAreRunThroughAsNumbers();
    void aMoveReadsOneRecord();
    void anEmptyTableStandsNowhere();
    void aTableThatWasEmptiedStandsNowhere();
    void locateFindsByAnyFields();
    void locateThatFindsNothingStays();
    void whatOthersWroteIsSeenByMoving();

    void anInsertedRecordHasWhatWasGiven();
    void anEmptyTextIsKeptAsNull();
    void everyTypeIsWrittenAsItWasGiven();
    void aTextMayHoldAnything();
    void onlyChangedColumnsAreWritten();
    void nothingChangedWritesNothing();
    void aChangedKeyIsWritten();
    void cancelShowsTheRecordAsItWas();
    void aRecordThatIsGoneIsAConflict();
    void aRefusedPostIsStillEdited();
    void aPostThatWasRolledBackIsEditedAgain_data();
    void aPostThatWasRolledBackIsEditedAgain();
    void refreshReadsTheRecordAnew();
    void refreshOfAGoneRecordStandsOnItsNeighbour();
    void deleteMovesOn();
    void movingWhileEditingIsRefused();
    void changingOutsideOfEditingIsRefused();
    void changesAreTold();

private:
    void insertOrders(const QStringList &numbers);
    QString number() const { return m_table->AsString(u"NUM_OF"_s); }
    QStringList orders(const QString &columns)
    {
        return m_data->rows(u"SELECT %1 FROM {OF_MALHA} ORDER BY NUM_OF"_s.arg(columns));
    }

    std::unique_ptr<TestDatabase> m_data;
    std::unique_ptr<TTIDatabase> m_database;
    std::unique_ptr<TTITable> m_table;
};

void TestTable::init()
{
    m_data = std::make_unique<TestDatabase>(Engines::current());
    m_database = std::make_unique<TTIDatabase>();
    m_database->open(m_data->settings());
    m_table = std::make_unique<TTITable>();
    m_table->SetDatabase(m_database.get());
    m_table->setTableName(u"OF_MALHA_001"_s);
    m_table->setIndexFieldNames(u"NUM_OF"_s);
}

void TestTable::cleanup()
{
    m_table.reset();
    m_database.reset();
    m_data.reset();
}

void TestTable::insertOrders(const QStringList &numbers)
{
    for (const QString &order : numbers)
        m_data->run(u"INSERT INTO {OF_MALHA} (NUM_OF, CLIENTE, KG_TOTAL) VALUES ('%1', '00001', 100)"_s.arg(order));
}

void TestTable::itStandsOnTheFirstAndGoesToTheLast()
{
    insertOrders({u"000002"_s, u"000001"_s, u"000003"_s});
    QVERIFY(!m_table->Active());
    m_table->Open();
    QCOMPARE(m_table->state(), TTITable::State::Browse);
    QCOMPARE(number(), u"000001"_s);
    m_table->Last();
    QCOMPARE(number(), u"000003"_s);
    m_table->First();
    QCOMPARE(number(), u"000001"_s);
}

void TestTable::itRunsThroughTheKeyInBothDirections()
{
    insertOrders({u"000002"_s, u"000001"_s, u"000003"_s});
    m_table->Open();
    QStringList forward;
    for (; !m_table->Eof(); m_table->Next())
        forward.append(number());
    QCOMPARE(forward, QStringList({u"000001"_s, u"000002"_s, u"000003"_s}));
    m_table->Prior();
    QCOMPARE(number(), u"000002"_s);
    QVERIFY(!m_table->Eof());
}

void TestTable::atTheEndsItStays()
{
    insertOrders({u"000001"_s, u"000002"_s});
    m_table->Open();
    m_table->Prior();
    QCOMPARE(number(), u"000001"_s);
    m_table->Last();
    m_table->Next();
    QCOMPARE(number(), u"000002"_s);
    QVERIFY(m_table->Eof());
}

void TestTable::aKeyOfTwoColumnsIsRunThrough()
{
    const QStringList keys{u"A|001"_s, u"A|002"_s, u"B|000"_s, u"B|001"_s, u"C|000"_s};
    for (const QString &key : keys) {
        m_data->run(u"INSERT INTO {BAIXA_FIO} (NUMERO, DOCTO, CODIGO, LOTE) VALUES ('%1', '%2', 'F', 'L')"_s.arg(
            key.section(u'|', 0, 0), key.section(u'|', 1)));
    }
    m_table->setTableName(u"BAIXA_FIO_001"_s);
    m_table->setIndexFieldNames(u"NUMERO; DOCTO"_s);
    QStringList seen;
    for (m_table->Open(); !m_table->Eof(); m_table->Next())
        seen.append(m_table->AsString(u"NUMERO"_s) + u'|' + m_table->AsString(u"DOCTO"_s));
    QCOMPARE(seen, keys);
    QStringList back{m_table->AsString(u"DOCTO"_s)};
    for (int i = 0; i < 4; ++i) {
        m_table->Prior();
        back.append(m_table->AsString(u"DOCTO"_s));
    }
    QCOMPARE(back, QStringList({u"000"_s, u"001"_s, u"000"_s, u"002"_s, u"001"_s}));
}

void TestTable::numbersAreRunThroughAsNumbers()
{
    for (const QString &roll : {u"1000"_s, u"999"_s, u"1001"_s})
        m_data->run(u"INSERT INTO {OF_MALHA_BAIXAS} (NUM_OF, NUM_BAIXA) VALUES ('000001', '%1')"_s.arg(roll));
    m_table->setTableName(u"OF_MALHA_BAIXAS_001"_s);
    m_table->setIndexFieldNames(u"NUM_OF;NUM_BAIXA"_s);
    QStringList seen;
    for (m_table->Open(); !m_table->Eof(); m_table->Next())
        seen.append(m_table->AsString(u"NUM_BAIXA"_s));
    QCOMPARE(seen, QStringList({u"999"_s, u"1000"_s, u"1001"_s}));
}

void TestTable::aMoveReadsOneRecord()
{
    insertOrders({u"000001"_s, u"000002"_s, u"000003"_s});
    m_table->Open();
    QStringList statements;
    m_database->setObserver([&](const QString &statement) { statements.append(statement); });
    m_table->Next();
    m_table->Last();
    m_table->Locate(u"NUM_OF"_s, {u"000002"_s});
    QCOMPARE(statements.size(), 3);
    for (const QString &statement : statements)
        QVERIFY2(statement.endsWith(u"FETCH FIRST 1 ROWS ONLY"_s), qPrintable(statement));
    QCOMPARE(m_table->rowCount(), 1);
}

void TestTable::anEmptyTableStandsNowhere()
{
    m_table->Open();
    QVERIFY(m_table->IsEmpty());
    QVERIFY(m_table->Eof());
    QVERIFY(m_table->hasField(u"NUM_OF"_s));
    QVERIFY(m_table->IsNull(u"NUM_OF"_s));
    m_table->Last();
    m_table->Next();
    m_table->Prior();
    m_table->Refresh();
    m_table->Edit();
    m_table->Delete();
    QCOMPARE(m_table->state(), TTITable::State::Browse);
    QVERIFY(m_table->IsEmpty());
}

void TestTable::aTableThatWasEmptiedStandsNowhere()
{
    insertOrders({u"000001"_s});
    m_table->Open();
    m_data->run(u"DELETE FROM {OF_MALHA}"_s);
    m_table->Last();
    QVERIFY(m_table->IsEmpty());
    QVERIFY(m_table->IsNull(u"NUM_OF"_s));
}

void TestTable::locateFindsByAnyFields()
{
    insertOrders({u"000001"_s, u"000002"_s, u"000003"_s});
    m_data->run(u"UPDATE {OF_MALHA} SET LOTE = 'L''7', DATA = '03/10/2026' WHERE NUM_OF = '000002'"_s);
    m_table->Open();
    QVERIFY(m_table->Locate(u"num_of"_s, {u"000003"_s}));
    QCOMPARE(number(), u"000003"_s);
    QVERIFY(m_table->Locate(u"CLIENTE; LOTE;DATA;KG_TOTAL"_s, {u"00001"_s, u"L'7"_s, QDate(2026, 3, 10), 100}));
    QCOMPARE(number(), u"000002"_s);
    QVERIFY(m_table->Locate(u"CLIENTE;LOTE;NUM_OF"_s, {u"00001"_s, QVariant(), u"000003"_s}));
    QCOMPARE(number(), u"000003"_s);
}

void TestTable::locateThatFindsNothingStays()
{
    insertOrders({u"000001"_s});
    m_table->Open();
    QSignalSpy scrolled(m_table.get(), &TDataSet::AfterScroll);
    QVERIFY(!m_table->Locate(u"NUM_OF"_s, {u"000009"_s}));
    QCOMPARE(number(), u"000001"_s);
    QCOMPARE(scrolled.size(), 0);
    QVERIFY_THROWS_EXCEPTION(EProgramming, m_table->Locate(u"NADA"_s, {1}));
}

void TestTable::whatOthersWroteIsSeenByMoving()
{
    insertOrders({u"000001"_s});
    m_table->Open();
    insertOrders({u"000002"_s});
    m_table->Next();
    QCOMPARE(number(), u"000002"_s);
}

void TestTable::anInsertedRecordHasWhatWasGiven()
{
    m_table->Open();
    m_table->Append();
    QCOMPARE(m_table->state(), TTITable::State::Insert);
    QVERIFY(m_table->IsNull(u"NUM_OF"_s));
    m_table->setValue(u"num_of"_s, u"000001"_s);
    m_table->setValue(u"KG_TOTAL"_s, 100.25);
    QCOMPARE(number(), u"000001"_s);
    m_table->Post();
    QCOMPARE(m_table->state(), TTITable::State::Browse);
    QCOMPARE(number(), u"000001"_s);
    QCOMPARE(orders(u"NUM_OF, KG_TOTAL, CLIENTE"_s), QStringList(u"000001|100.25|"_s));
}

void TestTable::anEmptyTextIsKeptAsNull()
{
    insertOrders({u"000001"_s});
    m_table->Open();
    m_table->Edit();
    m_table->setValue(u"CLIENTE"_s, QString());
    m_table->setValue(u"LOTE"_s, u""_s);
    m_table->Post();
    QCOMPARE(m_data->count(u"OF_MALHA"_s, u"CLIENTE IS NULL AND LOTE IS NULL"_s), 1);
}

void TestTable::everyTypeIsWrittenAsItWasGiven()
{
    m_table->setTableName(u"OF_MALHA_BAIXAS_001"_s);
    m_table->setIndexFieldNames(u"NUM_OF;NUM_BAIXA"_s);
    m_table->Open();
    m_table->Append();
    m_table->setValue(u"NUM_OF"_s, u"000001"_s);
    m_table->setValue(u"NUM_BAIXA"_s, u"001"_s);
    m_table->setValue(u"DATA"_s, QDate(2026, 12, 31));
    m_table->setValue(u"HORA"_s, QTime(0, 0, 1));
    m_table->setValue(u"QTDE"_s, 0.1 + 0.2);
    m_table->Post();
    m_table->Refresh();
    QCOMPARE(m_table->AsDate(u"DATA"_s), QDate(2026, 12, 31));
    QCOMPARE(m_table->value(u"HORA"_s).toTime(), QTime(0, 0, 1));
    QCOMPARE(m_table->AsFloat(u"QTDE"_s), 0.3);
    QCOMPARE(m_data->count(u"OF_MALHA_BAIXAS"_s, u"QTDE = 0.3 AND DATA = '12/31/2026' AND HORA = '00:00:01'"_s), 1);
}

void TestTable::aTextMayHoldAnything()
{
    const QString text = u"it's {NOTA}; -- \\ % \"x\"\n2ª linha: ção"_s;
    insertOrders({u"000001"_s});
    m_table->Open();
    m_table->Edit();
    m_table->setValue(u"OBSERVACAO"_s, text);
    m_table->Post();
    m_table->Refresh();
    QCOMPARE(m_table->AsString(u"OBSERVACAO"_s), text);
    QCOMPARE(m_data->value(u"SELECT OBSERVACAO FROM {OF_MALHA}"_s).toString(), text);
}

void TestTable::onlyChangedColumnsAreWritten()
{
    insertOrders({u"000001"_s});
    m_table->Open();
    m_table->Edit();
    m_table->setValue(u"LOTE"_s, u"L1"_s);
    m_data->run(u"UPDATE {OF_MALHA} SET KG_TOTAL = 500 WHERE NUM_OF = '000001'"_s);
    m_table->Post();
    QCOMPARE(orders(u"LOTE, KG_TOTAL"_s), QStringList(u"L1|500"_s));
}

void TestTable::nothingChangedWritesNothing()
{
    insertOrders({u"000001"_s});
    m_table->Open();
    m_table->Edit();
    m_table->setValue(u"KG_TOTAL"_s, 7);
    m_table->setValue(u"KG_TOTAL"_s, 100.0);
    QStringList statements;
    m_database->setObserver([&](const QString &statement) { statements.append(statement); });
    m_table->Post();
    QCOMPARE(statements, QStringList());
    QCOMPARE(m_table->state(), TTITable::State::Browse);
}

void TestTable::aChangedKeyIsWritten()
{
    insertOrders({u"000001"_s, u"000002"_s});
    m_table->Open();
    m_table->Edit();
    m_table->setValue(u"NUM_OF"_s, u"000009"_s);
    m_table->Post();
    QCOMPARE(orders(u"NUM_OF"_s), QStringList({u"000002"_s, u"000009"_s}));
    m_table->Prior();
    QCOMPARE(number(), u"000002"_s);
}

void TestTable::cancelShowsTheRecordAsItWas()
{
    insertOrders({u"000001"_s});
    m_table->Open();
    QSignalSpy scrolled(m_table.get(), &TDataSet::AfterScroll);
    m_table->Edit();
    m_table->setValue(u"LOTE"_s, u"L1"_s);
    m_table->Cancel();
    QVERIFY(m_table->IsNull(u"LOTE"_s));
    m_table->Append();
    m_table->Cancel();
    QCOMPARE(number(), u"000001"_s);
    QCOMPARE(m_table->state(), TTITable::State::Browse);
    QCOMPARE(scrolled.size(), 3);
    QCOMPARE(orders(u"NUM_OF, LOTE"_s), QStringList(u"000001|"_s));
}

void TestTable::aRecordThatIsGoneIsAConflict()
{
    insertOrders({u"000001"_s});
    m_table->Open();
    m_table->Edit();
    m_table->setValue(u"LOTE"_s, u"L1"_s);
    m_data->run(u"DELETE FROM {OF_MALHA}"_s);
    try {
        m_table->Post();
        QFAIL("A record that is gone was written");
    } catch (const EDatabaseError &error) {
        QCOMPARE(error.category(), EDatabaseError::Category::Conflict);
    }
    QCOMPARE(m_table->state(), TTITable::State::Edit);
    m_table->Cancel();
    m_table->Refresh();
    QVERIFY(m_table->IsEmpty());
}

void TestTable::aRefusedPostIsStillEdited()
{
    insertOrders({u"000001"_s});
    m_table->Open();
    m_table->Append();
    m_table->setValue(u"NUM_OF"_s, u"000001"_s);
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, m_table->Post());
    QCOMPARE(m_table->state(), TTITable::State::Insert);
    m_table->UndoPost();
    QCOMPARE(m_table->state(), TTITable::State::Insert);
    m_table->setValue(u"NUM_OF"_s, u"000002"_s);
    m_table->Post();
    QCOMPARE(orders(u"NUM_OF"_s), QStringList({u"000001"_s, u"000002"_s}));
}

void TestTable::aPostThatWasRolledBackIsEditedAgain_data()
{
    QTest::addColumn<bool>("inserting");
    QTest::newRow("insert") << true;
    QTest::newRow("edit") << false;
}

void TestTable::aPostThatWasRolledBackIsEditedAgain()
{
    QFETCH(bool, inserting);
    insertOrders({u"000001"_s});
    m_table->Open();
    inserting ? m_table->Append() : m_table->Edit();
    m_table->setValue(u"NUM_OF"_s, u"000005"_s);
    m_table->setValue(u"LOTE"_s, u"L1"_s);
    {
        Save save(*m_database);
        m_table->Post();
    }
    m_table->UndoPost();
    QCOMPARE(m_table->state(), inserting ? TTITable::State::Insert : TTITable::State::Edit);
    QCOMPARE(m_table->AsString(u"LOTE"_s), u"L1"_s);
    QCOMPARE(orders(u"NUM_OF, LOTE"_s), QStringList(u"000001|"_s));
    m_table->Post();
    QCOMPARE(m_data->count(u"OF_MALHA"_s, u"NUM_OF = '000005' AND LOTE = 'L1'"_s), 1);
    m_table->UndoPost();
    QVERIFY(m_table->isEditing());
    m_table->Cancel();
    m_table->UndoPost();
    QCOMPARE(m_table->state(), TTITable::State::Browse);
}

void TestTable::refreshReadsTheRecordAnew()
{
    insertOrders({u"000001"_s, u"000002"_s});
    m_table->Open();
    m_data->run(u"UPDATE {OF_MALHA} SET KG_TOTAL = 500"_s);
    QCOMPARE(m_table->AsFloat(u"KG_TOTAL"_s), 100.0);
    m_table->Refresh();
    QCOMPARE(m_table->AsFloat(u"KG_TOTAL"_s), 500.0);
    QCOMPARE(number(), u"000001"_s);
}

void TestTable::refreshOfAGoneRecordStandsOnItsNeighbour()
{
    insertOrders({u"000001"_s, u"000002"_s, u"000003"_s});
    m_table->Open();
    m_table->Next();
    m_data->run(u"DELETE FROM {OF_MALHA} WHERE NUM_OF = '000002'"_s);
    m_table->Refresh();
    QCOMPARE(number(), u"000003"_s);
    m_data->run(u"DELETE FROM {OF_MALHA} WHERE NUM_OF = '000003'"_s);
    m_table->Refresh();
    QCOMPARE(number(), u"000001"_s);
    m_data->run(u"DELETE FROM {OF_MALHA}"_s);
    m_table->Refresh();
    QVERIFY(m_table->IsEmpty());
}

void TestTable::deleteMovesOn()
{
    insertOrders({u"000001"_s, u"000002"_s, u"000003"_s});
    m_table->Open();
    m_table->Next();
    m_table->Delete();
    QCOMPARE(number(), u"000003"_s);
    m_table->Delete();
    QCOMPARE(number(), u"000001"_s);
    m_table->Delete();
    QVERIFY(m_table->IsEmpty());
    QCOMPARE(m_data->count(u"OF_MALHA"_s), 0);
}

void TestTable::movingWhileEditingIsRefused()
{
    insertOrders({u"000001"_s, u"000002"_s});
    m_table->Open();
    m_table->Edit();
    m_table->setValue(u"LOTE"_s, u"L1"_s);
    QVERIFY_THROWS_EXCEPTION(EProgramming, m_table->Next());
    QVERIFY_THROWS_EXCEPTION(EProgramming, m_table->Prior());
    QVERIFY_THROWS_EXCEPTION(EProgramming, m_table->First());
    QVERIFY_THROWS_EXCEPTION(EProgramming, m_table->Last());
    QVERIFY_THROWS_EXCEPTION(EProgramming, m_table->Locate(u"NUM_OF"_s, {u"000002"_s}));
    QVERIFY_THROWS_EXCEPTION(EProgramming, m_table->Append());
    m_table->Refresh();
    m_table->Post();
    QCOMPARE(orders(u"NUM_OF, LOTE"_s), QStringList({u"000001|L1"_s, u"000002|"_s}));
}

void TestTable::changingOutsideOfEditingIsRefused()
{
    insertOrders({u"000001"_s});
    m_table->Open();
    QVERIFY_THROWS_EXCEPTION(EProgramming, m_table->setValue(u"LOTE"_s, u"L1"_s));
    m_table->Edit();
    QVERIFY_THROWS_EXCEPTION(EProgramming, m_table->setValue(u"NADA"_s, u"L1"_s));
}

void TestTable::changesAreTold()
{
    insertOrders({u"000001"_s});
    m_table->Open();
    QSignalSpy changed(m_table.get(), &TTITable::fieldChanged);
    QSignalSpy states(m_table.get(), &TTITable::stateChanged);
    m_table->Edit();
    m_table->setValue(u"lote"_s, u"L1"_s);
    m_table->setValue(u"LOTE"_s, u"L1"_s);
    m_table->setValue(u"LOTE"_s, QString());
    m_table->Post();
    m_table->Close();
    QCOMPARE(changed.size(), 2);
    QCOMPARE(changed[0][0].toString(), u"LOTE"_s);
    QCOMPARE(states.size(), 3);
    QVERIFY(!m_table->Active());
}

QTEST_MAIN(TestTable)
#include "tst_table.moc"
