// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/clientdataset.h"
#include "module/host_services/database.h"
#include "module/host_services/query.h"
#include "module/host_services/ttransfere.h"
#include "tests/support/engines.h"
#include "tests/support/testdatabase.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

class TestTransfere : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }
    void init();
    void cleanup();

    void fieldsAreCopiedWithTheirTitlesAndMasks();
    void everyRowIsCopied();
    void rowsAreAppendedToWhatIsThere();
    void fieldsAreMatchedByTheirNames();
    void theOriginsCursorStays();
    void nothingIsCopiedFromNothing();
    void anInMemorySetCanBeTheOrigin();

private:
    void openRolls(int count);
    void transfer(TDataSet *from);

    std::unique_ptr<TestDatabase> m_data;
    std::unique_ptr<TTIQuery> m_query;
    std::unique_ptr<TClientDataSet> m_set;
};

void TestTransfere::init()
{
    m_data = std::make_unique<TestDatabase>(Engines::current());
    m_query = std::make_unique<TTIQuery>();
    m_query->SetDatabase(&m_data->connection());
    m_set = std::make_unique<TClientDataSet>();
}

void TestTransfere::cleanup()
{
    m_set.reset();
    m_query.reset();
    m_data.reset();
}

void TestTransfere::openRolls(int count)
{
    Save save(m_data->connection());
    for (int i = 1; i <= count; ++i)
        m_data->run(u"INSERT INTO {OF_MALHA_BAIXAS} (NUM_OF, NUM_BAIXA, QTDE) VALUES ('000001', '%1', %1)"_s.arg(i));
    save.CommitRetaining();
    m_query->SQL.add(u"SELECT NUM_BAIXA, QTDE, TURNO FROM OF_MALHA_BAIXAS_001 ORDER BY NUM_BAIXA"_s);
    m_query->Open();
}

void TestTransfere::transfer(TDataSet *from)
{
    Ttransfere::TTransDataSet transfer;
    transfer.SetTabelaOrigem(from);
    transfer.SetTabelaDestino(m_set.get());
    transfer.CriaCampos();
    transfer.TransfereDados();
}

void TestTransfere::fieldsAreCopiedWithTheirTitlesAndMasks()
{
    openRolls(1);
    m_query->field(u"QTDE"_s).titled(u"Peso"_s).shownAs(u"0.000"_s);
    transfer(m_query.get());
    QCOMPARE(m_set->fields().size(), 3);
    QCOMPARE(m_set->field(u"QTDE"_s).title, u"Peso"_s);
    QCOMPARE(m_set->field(u"QTDE"_s).mask, u"0.000"_s);
    QCOMPARE(m_set->field(u"QTDE"_s).type, TField::Type::Float);
}

void TestTransfere::everyRowIsCopied()
{
    const int count = 2 * TTIQuery::fetchSize + 3;
    openRolls(count);
    transfer(m_query.get());
    QCOMPARE(m_set->rowCount(), count);
    QCOMPARE(m_set->row(), 0);
    QCOMPARE(m_set->AsString(u"NUM_BAIXA"_s), u"1"_s);
    QVERIFY(m_set->IsNull(u"TURNO"_s));
    m_set->Last();
    QCOMPARE(m_set->AsFloat(u"QTDE"_s), double(count));
    QCOMPARE(m_set->state(), TClientDataSet::State::Browse);
}

void TestTransfere::rowsAreAppendedToWhatIsThere()
{
    openRolls(2);
    transfer(m_query.get());
    Ttransfere::TTransDataSet again;
    again.SetTabelaOrigem(m_query.get());
    again.SetTabelaDestino(m_set.get());
    again.TransfereDados();
    QCOMPARE(m_set->rowCount(), 4);
    again.CriaCampos();
    QVERIFY(m_set->IsEmpty());
}

void TestTransfere::fieldsAreMatchedByTheirNames()
{
    openRolls(1);
    m_set->CreateDataSet({{u"PRECO"_s, TField::Type::Float}, {u"num_baixa"_s, TField::Type::Text}});
    Ttransfere::TTransDataSet transfer;
    transfer.SetTabelaOrigem(m_query.get());
    transfer.SetTabelaDestino(m_set.get());
    transfer.TransfereDados();
    QCOMPARE(m_set->AsString(u"NUM_BAIXA"_s), u"1"_s);
    QVERIFY(m_set->IsNull(u"PRECO"_s));
}

void TestTransfere::theOriginsCursorStays()
{
    openRolls(5);
    m_query->setRow(2);
    QSignalSpy scrolled(m_query.get(), &TDataSet::AfterScroll);
    transfer(m_query.get());
    QCOMPARE(m_query->row(), 2);
    QCOMPARE(scrolled.size(), 0);
}

void TestTransfere::nothingIsCopiedFromNothing()
{
    openRolls(0);
    transfer(m_query.get());
    QVERIFY(m_set->IsEmpty());
    QVERIFY(m_set->Eof());
    QCOMPARE(m_set->fields().size(), 3);
}

void TestTransfere::anInMemorySetCanBeTheOrigin()
{
    TClientDataSet origin;
    origin.CreateDataSet({{u"LOTE"_s, TField::Type::Text, 3}});
    for (const QString &lot : {u"B"_s, u"A"_s}) {
        origin.Append();
        origin.setValue(u"LOTE"_s, lot);
        origin.Post();
    }
    origin.setIndexFieldNames(u"LOTE"_s);
    transfer(&origin);
    QCOMPARE(m_set->rowCount(), 2);
    QCOMPARE(m_set->AsString(u"LOTE"_s), u"A"_s);
}

QTEST_MAIN(TestTransfere)
#include "tst_ttransfere.moc"
