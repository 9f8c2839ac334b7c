// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/schema/schema.h"
#include "tests/support/engines.h"
#include "tests/support/testdatabase.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace Schema;

namespace {

/// A program of its own with two tables: clients per company, and the tables that the upgrade itself needs.
QVector<Table> firstTables()
{
    QVector<Table> tables;
    for (const Table &table : systemTables()) {
        if (table.name == u"QEN_EMPRESA"_s || table.name == u"QEN_ESQUEMA"_s)
            tables.append(table);
    }
    tables.append({u"CLIENTE"_s, {{u"CODIGO"_s, ColumnKind::Code, 5}, {u"NOME"_s, ColumnKind::Name, 20}}, {u"CODIGO"_s},
        {{{u"NOME"_s}}}});
    return tables;
}

/// Its next version: two more columns, an index on one of them, another table, and a change of the data.
QVector<Table> secondTables()
{
    QVector<Table> tables = firstTables();
    tables.last().columns.append({u"SALDO"_s, ColumnKind::Kilograms});
    tables.last().columns.append({u"CIDADE"_s, ColumnKind::Name, 30});
    tables.last().indexes.append({{u"CIDADE"_s}, true});
    tables.append({u"CIDADE"_s, {{u"CODIGO"_s, ColumnKind::Integer}}, {u"CODIGO"_s}});
    return tables;
}

const QVector<Step> &firstSteps()
{
    static const QVector<Step> steps{{1, {}}};
    return steps;
}

const QVector<Step> &secondSteps()
{
    static const QVector<Step> steps{{1, {}}, {2, {u"UPDATE {CLIENTE} SET SALDO = 0, NOME = NOME || ' {x}'"_s}}};
    return steps;
}

} // namespace

class TestUpgrade : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }
    void init();
    void cleanup() { m_data.reset(); }

    void anEmptyDatabaseHasVersionZero();
    void theProgramsOwnSchemaIsCreatedInAnEmptyDatabase();
    void anUpgradeAddsColumnsAndKeepsRows();
    void columnsThatAHostAddedStay();
    void everyCompanyIsUpgraded();
    void theColoursOfTheFirstVersionAreKeptWithoutAShade();
    void anUpgradeRunsOnce();
    void aStepThatFailsLeavesTheVersion();
    void aNewerDatabaseIsRefused();
    void anInterruptedCreationCanBeRepeated_data();
    void anInterruptedCreationCanBeRepeated();
    void anInterruptedCompanyCanBeRepeated();
    void aCompanyKeepsItsNameAndItsRows();

private:
    Builder first() { return Builder(m_data->connection(), firstTables(), firstSteps()); }
    Builder second() { return Builder(m_data->connection(), secondTables(), secondSteps()); }
    int indexes(const QString &table);

    std::unique_ptr<TestDatabase> m_data;
};

void TestUpgrade::init()
{
    m_data = std::make_unique<TestDatabase>(Engines::current(), TestDatabase::Content::Nothing);
}

int TestUpgrade::indexes(const QString &table)
{
    return int(
        m_data->rows(m_data->connection().dialect().indexesOf(table)).filter(QRegularExpression(u"^I\\d_"_s)).size());
}

void TestUpgrade::anEmptyDatabaseHasVersionZero()
{
    QCOMPARE(first().version(), 0);
    first().upgrade();
    QCOMPARE(first().version(), 1);
    QCOMPARE(first().companies(), QList<int>());
}

void TestUpgrade::theProgramsOwnSchemaIsCreatedInAnEmptyDatabase()
{
    Builder builder(m_data->connection());
    builder.upgrade();
    QCOMPARE(builder.version(), builder.currentVersion());
    builder.createCompany(999, u"Última"_s);
    for (const Table &table : allTables())
        m_data->run(u"SELECT * FROM "_s + (table.perCompany ? table.name + u"_999"_s : table.name));
    QCOMPARE(m_data->rows(u"SELECT NUMERO, NOME, ATIVO FROM QEN_EMPRESA"_s), QStringList(u"999|Última|S"_s));
}

void TestUpgrade::anUpgradeAddsColumnsAndKeepsRows()
{
    first().upgrade();
    first().createCompany(1, u"Um"_s);
    m_data->run(u"INSERT INTO {CLIENTE} (CODIGO, NOME) VALUES ('00001', 'Ana')"_s);
    QCOMPARE(indexes(u"CLIENTE_001"_s), 1);
    second().upgrade();
    QCOMPARE(second().version(), 2);
    QCOMPARE(m_data->rows(u"SELECT CODIGO, NOME, SALDO, CIDADE FROM {CLIENTE}"_s), QStringList(u"00001|Ana {x}|0|"_s));
    QCOMPARE(m_data->count(u"CIDADE"_s), 0);
    QCOMPARE(indexes(u"CLIENTE_001"_s), 2);
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, m_data->run(u"INSERT INTO {CLIENTE} (CODIGO) VALUES ('00001')"_s));
}

void TestUpgrade::columnsThatAHostAddedStay()
{
    first().upgrade();
    first().createCompany(1, u"Um"_s);
    m_data->run(u"ALTER TABLE {CLIENTE} ADD LIMITE INTEGER"_s);
    m_data->run(u"ALTER TABLE {CLIENTE} ADD CIDADE VARCHAR(60)"_s);
    m_data->run(u"INSERT INTO {CLIENTE} (CODIGO, LIMITE, CIDADE) VALUES ('00001', 500, 'Brusque')"_s);
    second().upgrade();
    QCOMPARE(m_data->rows(u"SELECT LIMITE, CIDADE FROM {CLIENTE}"_s), QStringList(u"500|Brusque"_s));
}

void TestUpgrade::everyCompanyIsUpgraded()
{
    first().upgrade();
    for (const int company : {1, 2, 734}) {
        first().createCompany(company, u"Empresa"_s);
        m_data->run(u"INSERT INTO CLIENTE_%1 (CODIGO) VALUES ('1')"_s.arg(company, 3, 10, QChar(u'0')));
    }
    second().upgrade();
    for (const QString &table : {u"CLIENTE_001"_s, u"CLIENTE_002"_s, u"CLIENTE_734"_s})
        QCOMPARE(m_data->rows(u"SELECT SALDO FROM "_s + table), QStringList(u"0"_s));
}

void TestUpgrade::theColoursOfTheFirstVersionAreKeptWithoutAShade()
{
    QVector<Table> tables = allTables();
    for (Table &table : tables)
        table.columns.removeIf([](const Column &column) { return column.name == u"TONALIDADE"_s; });
    Builder old(m_data->connection(), tables, firstSteps());
    old.upgrade();
    old.createCompany(1, u"Um"_s);
    m_data->run(u"INSERT INTO {CADCOR} (COR, DESCRICAO) VALUES ('000001', 'Cru')"_s);
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, m_data->run(u"SELECT TONALIDADE FROM {CADCOR}"_s));
    Builder current(m_data->connection());
    current.upgrade();
    QCOMPARE(current.version(), current.currentVersion());
    QCOMPARE(m_data->rows(u"SELECT COR, DESCRICAO, TONALIDADE FROM {CADCOR}"_s), QStringList(u"000001|Cru|"_s));
}

void TestUpgrade::anUpgradeRunsOnce()
{
    first().upgrade();
    first().createCompany(1, u"Um"_s);
    m_data->run(u"INSERT INTO {CLIENTE} (CODIGO, NOME) VALUES ('00001', 'Ana')"_s);
    second().upgrade();
    second().upgrade();
    QCOMPARE(m_data->rows(u"SELECT NOME FROM {CLIENTE}"_s), QStringList(u"Ana {x}"_s));
    QCOMPARE(m_data->rows(u"SELECT VERSAO FROM QEN_ESQUEMA ORDER BY VERSAO"_s), QStringList({u"1"_s, u"2"_s}));
}

void TestUpgrade::aStepThatFailsLeavesTheVersion()
{
    first().upgrade();
    first().createCompany(1, u"Um"_s);
    m_data->run(u"INSERT INTO {CLIENTE} (CODIGO, NOME) VALUES ('00001', 'Ana')"_s);
    QVector<Step> steps = secondSteps();
    steps.last().statements.append(u"UPDATE {CLIENTE} SET NADA = 1"_s);
    Builder broken(m_data->connection(), secondTables(), steps);
    QVERIFY_THROWS_EXCEPTION(EDatabaseError, broken.upgrade());
    QCOMPARE(broken.version(), 1);
    QCOMPARE(m_data->rows(u"SELECT NOME, SALDO FROM {CLIENTE}"_s), QStringList(u"Ana|"_s));
    second().upgrade();
    QCOMPARE(m_data->rows(u"SELECT NOME, SALDO FROM {CLIENTE}"_s), QStringList(u"Ana {x}|0"_s));
}

void TestUpgrade::aNewerDatabaseIsRefused()
{
    second().upgrade();
    second().createCompany(1, u"Um"_s);
    try {
        first().upgrade();
        QFAIL("A newer database was opened");
    } catch (const EQen &error) {
        QCOMPARE(
            error.sentence(), u"Este banco de dados é de uma versão mais nova do programa. Atualize o programa."_s);
        QVERIFY(error.details().contains(u"esquema 2, programa 1"_s));
    }
    QCOMPARE(second().version(), 2);
}

/// Where the creation was cut short.
void TestUpgrade::anInterruptedCreationCanBeRepeated_data()
{
    QTest::addColumn<QStringList>("undo");
    QTest::newRow("before the version was written") << QStringList{u"DELETE FROM QEN_ESQUEMA"_s};
    QTest::newRow("before the first table") << QStringList{u"DROP TABLE QEN_ESQUEMA"_s, u"DROP TABLE QEN_EMPRESA"_s};
}

void TestUpgrade::anInterruptedCreationCanBeRepeated()
{
    first().upgrade();
    QFETCH(QStringList, undo);
    for (const QString &statement : undo)
        m_data->run(statement);
    QCOMPARE(first().version(), 0);
    first().upgrade();
    QCOMPARE(first().version(), 1);
    first().createCompany(1, u"Um"_s);
    QCOMPARE(m_data->count(u"CLIENTE"_s), 0);
}

void TestUpgrade::anInterruptedCompanyCanBeRepeated()
{
    first().upgrade();
    first().createCompany(1, u"Um"_s);
    // Cut short after the table, before its index and the company's own line.
    m_data->run(u"DROP INDEX I1_CLIENTE_001"_s);
    m_data->run(u"DELETE FROM QEN_EMPRESA"_s);
    first().createCompany(1, u"Um"_s);
    QCOMPARE(indexes(u"CLIENTE_001"_s), 1);
    QCOMPARE(first().companies(), QList<int>({1}));
}

void TestUpgrade::aCompanyKeepsItsNameAndItsRows()
{
    first().upgrade();
    first().createCompany(1, u"D'Ávila"_s);
    m_data->run(u"INSERT INTO {CLIENTE} (CODIGO) VALUES ('1')"_s);
    first().createCompany(1, u"Outra"_s);
    QCOMPARE(m_data->rows(u"SELECT NOME FROM QEN_EMPRESA"_s), QStringList(u"D'Ávila"_s));
    QCOMPARE(m_data->count(u"CLIENTE"_s), 1);
}

QTEST_MAIN(TestUpgrade)
#include "tst_upgrade.moc"
