// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// The demonstration's orders can be written off at the desk.

#include "demo/demo.h"
#include "module/host_services/clock.h"
#include "module/host_services/query.h"
#include "module/host_services/tabelas.h"
#include "production/clientyarn.h"
#include "tests/support/engines.h"
#include "tests/support/recordinghost.h"
#include "tests/support/testdatabase.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_demodesk : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void theYarnOfEveryOrderInProductionCoversItsNextRoll();
};

void tst_demodesk::theYarnOfEveryOrderInProductionCoversItsNextRoll()
{
    Clock::pin(QDateTime(QDate(2026, 11, 20), QTime(10, 15)));
    TestDatabase created(Engines::current());
    Demo::create(created.connection());
    TTabela tabela;
    tabela.IBDatabase->open(created.settings());
    RecordingHost host;
    TTIQuery orders;
    orders.SQL.add(uR"(
        SELECT OFM.NUM_OF, OFM.CLIENTE, OFM.MATERIAL, OFM.KG_ROLO FROM OF_MALHA_001 OFM
        WHERE OFM.KG_TOTAL - (SELECT SUM(B.QTDE) FROM OF_MALHA_BAIXAS_001 B WHERE B.NUM_OF = OFM.NUM_OF) > OFM.KG_ROLO)"_s);
    QStringList lacking;
    for (orders.Open(); !orders.Eof(); orders.Next()) {
        const auto shortage = ClientYarn(*tabela.IBDatabase, orders.AsString(u"CLIENTE"_s))
                                  .shortageFor(orders.AsString(u"MATERIAL"_s), orders.AsFloat(u"KG_ROLO"_s));
        if (shortage)
            lacking.append(u"%1 %2 %3"_s.arg(orders.AsString(u"NUM_OF"_s), shortage->yarn).arg(shortage->kg));
    }
    QVERIFY(orders.rowCount() > 10);
    QVERIFY2(lacking.isEmpty(),
        qPrintable(u"%1 of %2: "_s.arg(lacking.size()).arg(orders.rowCount()) + lacking.join(u"; "_s)));
    Clock::pin({});
}

QTEST_MAIN(tst_demodesk)
#include "tst_demodesk.moc"
