// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/schema/schema.h"

#include "module/host_services/clock.h"
#include "module/host_services/database.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/sqltext.h"
#include "module/schema/tables.h"

using namespace Qt::StringLiterals;

namespace Schema {

namespace {

QString physicalName(const Table &table, int company)
{
    return table.perCompany ? Funcoes::DBLocalEmpresa(table.name, company) : table.name;
}

QString columnText(const Dialect &dialect, const Table &table, const Column &column)
{
    const QString type = dialect.columnType(column.kind, column.length);
    if (!table.key.contains(column.name))
        return u"%1 %2"_s.arg(column.name, type);
    // NOT NULL stands before COLLATE on Firebird, and either way on PostgreSQL.
    const qsizetype collate = type.indexOf(u" COLLATE"_s);
    return collate < 0 ? u"%1 %2 NOT NULL"_s.arg(column.name, type)
                       : u"%1 %2 NOT NULL%3"_s.arg(column.name, type.left(collate), type.mid(collate));
}

} // namespace

Builder::Builder(TTIDatabase &database)
    : Builder(database, allTables(), upgradeSteps())
{
}

Builder::Builder(TTIDatabase &database, const QVector<Table> &tables, const QVector<Step> &steps)
    : m_database(database)
    , m_tables(tables)
    , m_steps(steps)
{
}

QStringList Builder::names(const QString &statement) const
{
    QStringList found;
    QSqlQuery query = m_database.run(statement);
    while (m_database.next(query))
        found.append(query.value(0).toString().trimmed());
    return found;
}

int Builder::version() const
{
    if (names(m_database.dialect().columnsOf(u"QEN_ESQUEMA"_s)).isEmpty())
        return 0;
    return m_database.value(u"SELECT MAX(VERSAO) FROM QEN_ESQUEMA"_s).toInt();
}

void Builder::upgrade()
{
    const int found = version();
    if (found > currentVersion()) {
        throw EQen(u"Este banco de dados é de uma versão mais nova do programa. Atualize o programa."_s,
            u"%1: esquema %2, programa %3"_s.arg(m_database.settings().database).arg(found).arg(currentVersion()));
    }
    if (found == currentVersion())
        return;
    if (found == 0)
        createDatabaseObjects();
    createTables(0);
    const QList<int> numbers = companies();
    for (const int company : numbers)
        createTables(company);
    for (const Step &step : m_steps) {
        if (step.version <= found)
            continue;
        // The version is written with its step, so that an upgrade that was cut short is taken up where it stopped.
        Save save(m_database);
        for (const int company : numbers)
            runStep(step, company);
        m_database.run(u"INSERT INTO QEN_ESQUEMA (VERSAO, MOMENTO) VALUES (%1, '%2 %3')"_s.arg(step.version)
                           .arg(Format::sqlDate(Clock::today()), Format::time(Clock::now().time())));
        save.CommitRetaining();
    }
}

void Builder::runStep(const Step &step, int company)
{
    const auto ofCompany = [company](const QString &name) { return Funcoes::DBLocalEmpresa(name, company); };
    for (const QString &statement : step.statements)
        m_database.run(SqlText::withTables(statement, ofCompany));
}

void Builder::createCompany(int number, const QString &name)
{
    createTables(number);
    if (!companies().contains(number)) {
        m_database.run(u"INSERT INTO QEN_EMPRESA (NUMERO, NOME, ATIVO) VALUES (%1, %2, 'S')"_s.arg(number).arg(
            SqlText::quoted(name)));
    }
}

QList<int> Builder::companies() const
{
    QList<int> numbers;
    QSqlQuery query = m_database.run(u"SELECT NUMERO FROM QEN_EMPRESA ORDER BY NUMERO"_s);
    while (m_database.next(query))
        numbers.append(query.value(0).toInt());
    return numbers;
}

void Builder::createDatabaseObjects()
{
    for (const QString &statement : m_database.dialect().databaseStatements())
        m_database.run(statement);
}

void Builder::createTables(int company)
{
    QVector<Table> wanted;
    for (const Table &table : m_tables) {
        if (table.perCompany == (company > 0))
            wanted.append(table);
    }
    // Two transactions, not one commit per statement, which a slow disk makes felt; and not one alone, because an index
    // needs a table that is committed.
    Save tables(m_database);
    for (const Table &table : wanted) {
        const QString physical = physicalName(table, company);
        const QStringList present = names(m_database.dialect().columnsOf(physical));
        if (present.isEmpty())
            createTable(table, physical);
        else
            addMissingColumns(table, physical, present);
    }
    tables.CommitRetaining();
    Save indexes(m_database);
    for (const Table &table : wanted)
        createMissingIndexes(table, physicalName(table, company));
    indexes.CommitRetaining();
}

void Builder::createTable(const Table &table, const QString &physical)
{
    const Dialect &dialect = m_database.dialect();
    QStringList parts;
    for (const Column &column : table.columns)
        parts.append(columnText(dialect, table, column));
    if (!table.key.isEmpty())
        parts.append(u"PRIMARY KEY (%1)"_s.arg(table.key.join(u", "_s)));
    m_database.run(u"CREATE TABLE %1 (%2)"_s.arg(physical, parts.join(u", "_s)));
}

void Builder::createMissingIndexes(const Table &table, const QString &physical)
{
    if (table.indexes.isEmpty())
        return;
    const Dialect &dialect = m_database.dialect();
    const QStringList present = names(dialect.indexesOf(physical));
    for (qsizetype i = 0; i < table.indexes.size(); ++i) {
        const QString name = u"I%1_%2"_s.arg(i + 1).arg(physical);
        const Index &index = table.indexes[i];
        if (!present.contains(name))
            m_database.run(dialect.createIndex(name, physical, index.columns, index.descending));
    }
}

void Builder::addMissingColumns(const Table &table, const QString &physical, const QStringList &present)
{
    const Dialect &dialect = m_database.dialect();
    for (const Column &column : table.columns) {
        if (!present.contains(column.name))
            m_database.run(dialect.addColumn(physical, column.name, dialect.columnType(column.kind, column.length)));
    }
}

} // namespace Schema
