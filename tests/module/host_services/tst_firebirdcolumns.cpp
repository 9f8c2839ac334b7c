// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/firebirdcolumns.h"

#include "tests/support/engines.h"
#include "tests/support/testdatabase.h"

#include <QSqlField>
#include <QSqlRecord>
#include <QTest>

using namespace Qt::StringLiterals;

/// The driver's own description is right, and slow: ours says the same.
class TestFirebirdColumns : public QObject
{
    Q_OBJECT

private slots:
    void columnsAreThoseThatTheDriverTells_data();
    void columnsAreThoseThatTheDriverTells();
    void aChangeHasNoColumns();
};

namespace {

QStringList described(const QSqlRecord &record)
{
    QStringList columns;
    for (int i = 0; i < record.count(); ++i)
        columns.append(record.fieldName(i) + u' ' + QString::fromLatin1(record.field(i).metaType().name()));
    return columns;
}

} // namespace

void TestFirebirdColumns::columnsAreThoseThatTheDriverTells_data()
{
    QTest::addColumn<QString>("select");
    for (const char *table : {"OF_MALHA_001", "OF_MALHA_BAIXAS_001", "TABPRECO_001", "MATERIAL_001", "QEN_LOG"})
        QTest::newRow(table) << u"SELECT * FROM "_s + QString::fromLatin1(table);
    QTest::newRow("one column") << u"SELECT NUM_OF FROM OF_MALHA_001"_s;
    QTest::newRow("computed")
        << uR"(SELECT COUNT(*), SUM(KG_TOTAL) AS SOMA, SUM(KG_TOTAL) / 3, AVG(KG_TOTAL) * 1.5 AS M,
        CAST(MAX(NUM_OF) AS INTEGER) + 1, MAX(DATA), 'x' AS TEXTO, 23.45 AS PESO, NULL AS NADA, CURRENT_TIMESTAMP,
        CURRENT_TIME, (1 = 1) AS SIM FROM OF_MALHA_001)"_s;
}

void TestFirebirdColumns::columnsAreThoseThatTheDriverTells()
{
    QFETCH(QString, select);
    TestDatabase data(u"firebird"_s);
    QSqlQuery query = data.connection().run(select);
    const QStringList found = described(FirebirdColumns::of(query));
    QVERIFY(!found.isEmpty());
    QCOMPARE(found, described(query.record()));
}

void TestFirebirdColumns::aChangeHasNoColumns()
{
    TestDatabase data(u"firebird"_s);
    QSqlQuery query = data.connection().run(u"UPDATE OF_MALHA_001 SET KG_TOTAL = 0"_s);
    QCOMPARE(FirebirdColumns::of(query).count(), 0);
}

QTEST_MAIN(TestFirebirdColumns)
#include "tst_firebirdcolumns.moc"
