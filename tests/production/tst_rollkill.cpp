// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/production/writeoffstation.h"
#include "tests/support/killedprocess.h"

using namespace Qt::StringLiterals;

namespace {

/// A roll is confirmed at the station, and the process is killed meanwhile.
int confirmAndBeKilled()
{
    WriteOffStation station(KilledProcess::engine());
    station.addRoll(u"000012"_s, u"001"_s, 30);
    station.prepareRoll(u"20"_s);
    KilledProcess::arm(station);
    station.confirmRoll(u"20,00"_s);
    return 0;
}

} // namespace

/// What a process that is killed while it writes a roll off leaves of the roll.
class TestRollKill : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void untilTheCommitThereIsNoRoll_data();
    void untilTheCommitThereIsNoRoll();
    void afterTheCommitTheRollStandsWhole();
};

void TestRollKill::untilTheCommitThereIsNoRoll_data()
{
    QTest::addColumn<QString>("statement");
    QTest::newRow("after the lock") << u"UPDATE OF_MALHA"_s;
    QTest::newRow("after the roll") << u"INSERT INTO OF_MALHA_BAIXAS"_s;
    QTest::newRow("after the stock") << u"INSERT INTO PA_MALHA"_s;
}

void TestRollKill::untilTheCommitThereIsNoRoll()
{
    QFETCH(QString, statement);
    KilledProcess process(statement);
    QVERIFY2(process.wasKilled(), qPrintable(process.said()));
    QCOMPARE(process.rows(u"SELECT NUM_BAIXA, QTDE FROM OF_MALHA_BAIXAS_001"_s), QStringList{u"001 30"_s});
    QCOMPARE(process.rows(u"SELECT QTDE_TOTAL FROM PA_MALHA_001"_s), QStringList());
    QCOMPARE(process.rows(u"SELECT TEXTO FROM QEN_LOG"_s), QStringList());
}

void TestRollKill::afterTheCommitTheRollStandsWhole()
{
    KilledProcess process(u"COMMIT"_s);
    QVERIFY2(process.wasKilled(), qPrintable(process.said()));
    QCOMPARE(process.rows(u"SELECT NUM_BAIXA, QTDE FROM OF_MALHA_BAIXAS_001 ORDER BY NUM_BAIXA"_s),
        (QStringList{u"001 30"_s, u"002 20"_s}));
    QCOMPARE(process.rows(u"SELECT QTDE_TOTAL FROM PA_MALHA_001"_s), QStringList{u"20"_s});
}

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    if (KilledProcess::isThisProcess())
        return confirmAndBeKilled();
    TestRollKill test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_rollkill.moc"
