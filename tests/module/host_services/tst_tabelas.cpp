// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/tabelas.h"
#include "module/host_services/table.h"
#include "tests/support/engines.h"
#include "tests/support/recordinghost.h"
#include "tests/support/testdatabase.h"

#include <QPointer>
#include <QTest>

using namespace Qt::StringLiterals;

class TestTabelas : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }
    void init();
    void cleanup();

    void everySharedTableOpens_data();
    void everySharedTableOpens();
    void namesInAnyCaseAreOneDataSet();
    void itClosesWithItsLastUser();
    void closingWhatIsNotOpenDoesNothing();
    void anUnknownNameIsAProgrammingError();
    void itIsTheCurrentCompanysTable();
    void withTheFlagTheRecordIsReadAnew();
    void aTableThatCannotBeOpenedIsNotOpen();
    void theDataModuleGoesWithTheProgram();

private:
    std::unique_ptr<TestDatabase> m_data;
    std::unique_ptr<RecordingHost> m_host;
    std::unique_ptr<TTabela> m_tabela;
};

void TestTabelas::init()
{
    m_data = std::make_unique<TestDatabase>(Engines::current());
    m_host = std::make_unique<RecordingHost>();
    m_tabela = std::make_unique<TTabela>();
    m_tabela->IBDatabase->open(m_data->settings());
}

void TestTabelas::cleanup()
{
    m_tabela.reset();
    m_host.reset();
    m_data.reset();
}

void TestTabelas::everySharedTableOpens_data()
{
    QTest::addColumn<QString>("key");
    const QList<std::pair<const char *, QString>> tables{{"tbMateriais", u"CODIGO"_s}, {"tbEntidade", u"CODCLI"_s},
        {"tbNFTerceiros", u"DOCTO"_s}, {"tbMaquina", u"MAQUINA"_s}, {"TBRegiao", u"REGIAO"_s},
        {"tbTabPreco", u"REGIAO"_s}, {"tbGrupo", u"CODIGO"_s}, {"Tbcolecao", u"CODIGO"_s}, {"TbTabQul", u"CODIGO"_s},
        {"TbProduto", u"CODIGO"_s}, {"TbCompMaterial", u"MATERIAL"_s}, {"TBTabPrazos", u"CODIGO"_s}};
    for (const auto &[name, key] : tables)
        QTest::newRow(name) << key;
}

void TestTabelas::everySharedTableOpens()
{
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    TTITable *table = m_tabela->AbreTabela(name);
    QVERIFY(table->Active());
    QFETCH(QString, key);
    QVERIFY(table->hasField(key));
    m_tabela->FechaTabela(name);
    QVERIFY(!m_tabela->tabela(name));
}

void TestTabelas::namesInAnyCaseAreOneDataSet()
{
    TTITable *first = m_tabela->AbreTabela(u"tbentidade"_s);
    QCOMPARE(m_tabela->AbreTabela(u"tbEntidade"_s), first);
    QCOMPARE(m_tabela->tabela(u"TBENTIDADE"_s), first);
}

void TestTabelas::itClosesWithItsLastUser()
{
    const QPointer<TTITable> table = m_tabela->AbreTabela(u"tbMaquina"_s);
    m_tabela->AbreTabela(u"TbMaquina"_s);
    m_tabela->FechaTabela(u"tbMaquina"_s);
    QVERIFY(table);
    QVERIFY(table->Active());
    m_tabela->FechaTabela(u"tbmaquina"_s);
    QVERIFY(!table);
    QVERIFY(!m_tabela->tabela(u"tbMaquina"_s));
    QVERIFY(m_tabela->AbreTabela(u"tbMaquina"_s)->Active());
}

void TestTabelas::closingWhatIsNotOpenDoesNothing()
{
    m_tabela->FechaTabela(u"tbMaquina"_s);
    m_tabela->AbreTabela(u"tbMaquina"_s);
    m_tabela->FechaTabela(u"tbEntidade"_s);
    m_tabela->FechaTabela(u"tbDesconhecida"_s);
    QVERIFY(m_tabela->tabela(u"tbMaquina"_s));
}

void TestTabelas::anUnknownNameIsAProgrammingError()
{
    QVERIFY_THROWS_EXCEPTION(EProgramming, m_tabela->AbreTabela(u"tbNada"_s));
}

void TestTabelas::itIsTheCurrentCompanysTable()
{
    m_host->companyNumber = 2;
    QCOMPARE(m_tabela->AbreTabela(u"tbMateriais"_s)->tableName(), u"MATERIAL_002"_s);
}

void TestTabelas::withTheFlagTheRecordIsReadAnew()
{
    m_data->run(u"INSERT INTO {MAQUINA} (MAQUINA, NOME) VALUES ('001', 'Serra Azul')"_s);
    TTITable *table = m_tabela->AbreTabela(u"tbMaquina"_s);
    m_data->run(u"UPDATE {MAQUINA} SET NOME = 'Vale Claro'"_s);
    m_tabela->AbreTabela(u"tbMaquina"_s, false);
    QCOMPARE(table->AsString(u"NOME"_s), u"Serra Azul"_s);
    m_tabela->AbreTabela(u"tbMaquina"_s, true);
    QCOMPARE(table->AsString(u"NOME"_s), u"Vale Claro"_s);
}

void TestTabelas::aTableThatCannotBeOpenedIsNotOpen()
{
    m_host->companyNumber = 999;
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, m_tabela->AbreTabela(u"tbMaquina"_s));
    QVERIFY(!m_tabela->tabela(u"tbMaquina"_s));
    m_host->companyNumber = 1;
    QCOMPARE(m_tabela->AbreTabela(u"tbMaquina"_s)->tableName(), u"MAQUINA_001"_s);
}

void TestTabelas::theDataModuleGoesWithTheProgram()
{
    QCOMPARE(Tabela, m_tabela.get());
    m_tabela.reset();
    QCOMPARE(Tabela, nullptr);
}

QTEST_MAIN(TestTabelas)
#include "tst_tabelas.moc"
