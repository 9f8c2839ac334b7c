// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/production/yarnstation.h"
#include "tests/support/killedprocess.h"

using namespace Qt::StringLiterals;

namespace {

/// An order gets other lots and another machine, and the process is killed while it saves.
int changeAndBeKilled()
{
    YarnStation station(KilledProcess::engine());
    station.insertLots();
    station.insertOrder();
    station.reserve(u"000012"_s, {.lot = u"C"_s}, 60);
    station.reserve(u"000012"_s, {.lot = u"D"_s, .yarn = station.polyester}, 40);
    station.openOrders();
    station.click(u"BtnAltera"_s);
    station.enter(u"edtMaquina"_s, u"002"_s);
    station.showYarn();
    for (const QString &lot : {u"C"_s, u"A"_s, u"B"_s})
        station.tick(lot);
    KilledProcess::arm(station);
    station.click(u"SbConfirmar"_s);
    return 0;
}

} // namespace

/// What a process that is killed while it saves an order leaves of the order's yarn.
class TestOrdemFabKill : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void untilTheCommitTheOldReservationsStand_data();
    void untilTheCommitTheOldReservationsStand();
    void afterTheCommitTheNewReservationsStand();
};

void TestOrdemFabKill::untilTheCommitTheOldReservationsStand_data()
{
    QTest::addColumn<QString>("statement");
    QTest::newRow("after the order") << u"UPDATE OF_MALHA"_s;
    QTest::newRow("after the lock") << u"UPDATE NFT_ITEN"_s;
    QTest::newRow("after the deletion") << u"DELETE FROM BAIXA_FIO"_s;
    QTest::newRow("after the first lot") << u"INSERT INTO BAIXA_FIO"_s;
}

void TestOrdemFabKill::untilTheCommitTheOldReservationsStand()
{
    QFETCH(QString, statement);
    KilledProcess process(statement);
    QVERIFY2(process.wasKilled(), qPrintable(process.said()));
    QCOMPARE(process.rows(u"SELECT NUMERO, LOTE, QTDE FROM BAIXA_FIO_001 ORDER BY LOTE"_s),
        (QStringList{u"000012 C 60"_s, u"000012 D 40"_s}));
    QCOMPARE(process.rows(u"SELECT NUM_OF, MAQUINA FROM OF_MALHA_001"_s), QStringList{u"000012 001"_s});
    QCOMPARE(process.rows(u"SELECT TEXTO FROM QEN_LOG"_s), QStringList());
}

void TestOrdemFabKill::afterTheCommitTheNewReservationsStand()
{
    KilledProcess process(u"COMMIT"_s);
    QVERIFY2(process.wasKilled(), qPrintable(process.said()));
    QCOMPARE(process.rows(u"SELECT NUMERO, LOTE, QTDE FROM BAIXA_FIO_001 ORDER BY LOTE"_s),
        (QStringList{u"000012 A 50"_s, u"000012 B 10"_s, u"000012 D 40"_s}));
    QCOMPARE(process.rows(u"SELECT NUM_OF, MAQUINA FROM OF_MALHA_001"_s), QStringList{u"000012 002"_s});
    QCOMPARE(process.rows(u"SELECT TEXTO FROM QEN_LOG"_s), QStringList{u"ALTERACAO DA OF MAL. NR.: 000012"_s});
}

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    if (KilledProcess::isThisProcess())
        return changeAndBeKilled();
    TestOrdemFabKill test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_ordemfabkill.moc"
