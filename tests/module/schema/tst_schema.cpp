// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/engines.h"
#include "tests/support/testdatabase.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestSchema : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }
    void aNewDatabaseHasTheTablesOfItsCompanies();
};

void TestSchema::aNewDatabaseHasTheTablesOfItsCompanies()
{
    TestDatabase database(Engines::current());
    database.addCommonData();
    QCOMPARE(database.count(u"ENTIDADE"_s), 3);
}

QTEST_MAIN(TestSchema)
#include "tst_schema.moc"
