// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/demo.h"

#include "module/host_services/clock.h"
#include "module/host_services/workingdays.h"
#include "tests/support/engines.h"
#include "tests/support/testdatabase.h"

#include <QTest>

#include <map>

using namespace Qt::StringLiterals;

namespace {

constexpr int companies[] = {1, 2};

/// A Friday whose three months have a holiday on a Monday, one on a Friday, and one on the day itself.
const QDateTime pinned(QDate(2026, 11, 20), QTime(10, 15));

/// The statement with {NAME} for the tables of a company.
QString of(int company, QString statement)
{
    static const QRegularExpression braced(u"\\{(\\w+)\\}"_s);
    return statement.replace(braced, u"\\1_%1"_s.arg(company, 3, 10, QChar(u'0')));
}

/// Thousandths, as figures with three decimals are compared.
qint64 thousandths(const QVariant &value)
{
    return qRound64(value.toDouble() * 1000);
}

} // namespace

/// The figures of the demonstration's mill agree with one another, in both companies.
class tst_demofigures : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }
    void initTestCase() { Clock::pin(pinned); }
    void init();
    void cleanupTestCase() { m_created.clear(); }

    void allHasHappenedByYesterday();
    void nothingIsWeighedOnSundaysAndHolidays();
    void rollsAreWeighedWithinTheirShifts();
    void rollsAreNumberedInTheOrderOfTheirTimes();
    void finishedFabricIsTheSumOfItsRolls();
    void invoicedFabricStandsOnInvoicesThatCount();
    void ordersStandInEveryState();
    void everyCompositionComesToAHundredPercent();
    void someYarnHasTwoLoopLengthsInOneFabric();
    void reservationsCoverTheNeedsAndNoMore();
    void lotsAreNeverPromisedBeyondTheirStock();
    void whatWentBackStandsOnTheLots();
    void everyStateOfInvoicesAndLotsIsThere();
    void codesReferToWhatExists_data();
    void codesReferToWhatExists();
    void inspectedRollsHaveEveryDefectOfTheCatalogue();
    void pricesGrowFromInstalmentToInstalment();
    void onlyYarnsThatTheClientOwnsAreKnitted();
    void everyRaportCanBeDrawnInItsShades();

private:
    TTIDatabase &database() { return m_created.at(Engines::current())->connection(); }
    QVariant value(int company, const QString &statement) { return database().value(of(company, statement)); }
    int count(int company, const QString &statement) { return value(company, statement).toInt(); }

    std::map<QString, std::unique_ptr<TestDatabase>> m_created;
};

void tst_demofigures::init()
{
    const QString engine = Engines::current();
    if (m_created.count(engine))
        return;
    m_created[engine] = std::make_unique<TestDatabase>(engine);
    Demo::create(database());
}

void tst_demofigures::allHasHappenedByYesterday()
{
    const QDate today = pinned.date();
    for (const int company : companies) {
        const QDate first = value(company, u"SELECT MIN(DATA) FROM {OF_MALHA_BAIXAS}"_s).toDate();
        const QDate last = value(company, u"SELECT MAX(DATA) FROM {OF_MALHA_BAIXAS}"_s).toDate();
        QCOMPARE(last, today.addDays(-1));
        QVERIFY2(first.daysTo(today) > 85 && first.daysTo(today) < 100, qPrintable(first.toString()));
        const QDate firstYarn = value(company, u"SELECT MIN(DATA) FROM {NFTERCEIROS}"_s).toDate();
        QVERIFY2(firstYarn.daysTo(today) > 130 && firstYarn.daysTo(today) < 170, qPrintable(firstYarn.toString()));
        QCOMPARE(value(company, u"SELECT MAX(DATA) FROM {OF_MALHA}"_s).toDate(), today);
        QVERIFY(value(company, u"SELECT MAX(DATA) FROM {NFTERCEIROS}"_s).toDate() <= today);
        QVERIFY(value(company, u"SELECT MAX(DATA) FROM {PEDIDO3}"_s).toDate() <= today);
        QVERIFY(value(company, u"SELECT MAX(DT_EMISSAO) FROM {NOTA}"_s).toDate() <= today);
    }
}

void tst_demofigures::nothingIsWeighedOnSundaysAndHolidays()
{
    int nightsFromTheEve = 0;
    for (const int company : companies) {
        QSqlQuery query = database().run(of(company, uR"(SELECT B.DATA, B.HORA, T.NOTURNO FROM {OF_MALHA_BAIXAS} B
            INNER JOIN {TURNO} T ON (B.TURNO = T.TURNO))"_s));
        while (query.next()) {
            const QDate counted = query.value(0).toDate();
            const bool fromTheEve = query.value(2).toString() == u"S"_s && query.value(1).toTime() > QTime(12, 0);
            nightsFromTheEve += fromTheEve ? 1 : 0;
            for (const QDate day : {counted, counted.addDays(fromTheEve ? -1 : 0)})
                QVERIFY2(day.dayOfWeek() != Qt::Sunday && !WorkingDays::isHoliday(day), qPrintable(day.toString()));
        }
    }
    QVERIFY(nightsFromTheEve > 100);
}

void tst_demofigures::rollsAreWeighedWithinTheirShifts()
{
    for (const int company : companies) {
        QSqlQuery query =
            database().run(of(company, u"SELECT TURNO, HORA FROM {OF_MALHA_BAIXAS} WHERE HORA IS NOT NULL"_s));
        while (query.next()) {
            constexpr int hour = 60 * 60;
            const int shift = query.value(0).toInt();
            const int sinceFive = QTime(5, 0).secsTo(query.value(1).toTime());
            const int second = sinceFive < 0 ? sinceFive + 24 * hour : sinceFive;
            QVERIFY2(second >= (shift - 1) * 6 * hour && second < shift * 6 * hour,
                qPrintable(u"%1 %2"_s.arg(shift).arg(query.value(1).toString())));
        }
        const int withoutTime = count(company, u"SELECT COUNT(*) FROM {OF_MALHA_BAIXAS} WHERE HORA IS NULL"_s);
        QVERIFY(withoutTime > 0);
    }
}

void tst_demofigures::rollsAreNumberedInTheOrderOfTheirTimes()
{
    for (const int company : companies) {
        QSqlQuery query = database().run(of(company, uR"(SELECT NUM_OF, NUM_BAIXA, DATA, HORA, TURNO
            FROM {OF_MALHA_BAIXAS} ORDER BY NUM_OF, NUM_BAIXA)"_s));
        QString order;
        int number = 0;
        QDateTime last;
        while (query.next()) {
            number = query.value(0).toString() == order ? number + 1 : 1;
            if (number == 1)
                last = {};
            order = query.value(0).toString();
            QCOMPARE(query.value(1).toString(), QString::number(number).rightJustified(3, u'0'));
            if (query.isNull(3))
                continue;
            const QTime time = query.value(3).toTime();
            const bool eve = query.value(4).toString() == u"4"_s && time > QTime(12, 0);
            const QDateTime moment(query.value(2).toDate().addDays(eve ? -1 : 0), time);
            QVERIFY2(!last.isValid() || moment > last, qPrintable(order));
            last = moment;
        }
    }
}

void tst_demofigures::finishedFabricIsTheSumOfItsRolls()
{
    const QString wrong = uR"(SELECT COUNT(*) FROM {OF_MALHA} O LEFT JOIN {PA_MALHA} P
        ON (P.NUM_OF = O.NUM_OF AND P.CODIGO = O.MATERIAL)
        WHERE COALESCE(P.QTDE_TOTAL, 0) <>
            COALESCE((SELECT SUM(B.QTDE) FROM {OF_MALHA_BAIXAS} B WHERE B.NUM_OF = O.NUM_OF), 0))"_s;
    for (const int company : companies) {
        QCOMPARE(count(company, wrong), 0);
        QCOMPARE(count(company, u"SELECT COUNT(*) FROM {PA_MALHA}"_s),
            count(company, u"SELECT COUNT(DISTINCT NUM_OF) FROM {OF_MALHA_BAIXAS}"_s));
        QCOMPARE(count(company, u"SELECT COUNT(*) FROM {PA_MALHA} WHERE FATURADO > QTDE_TOTAL"_s), 0);
    }
}

void tst_demofigures::invoicedFabricStandsOnInvoicesThatCount()
{
    const QString released = uR"(SELECT COUNT(*) FROM {PA_MALHA} P WHERE P.FATURADO <> COALESCE((
        SELECT SUM(R.QTDE) FROM {PEDIDO3} R INNER JOIN {NOTA} N ON (R.NOTAFISCAL = N.FATURA)
        WHERE R.CAIXA = P.NUM_OF AND R.CODIGO = P.CODIGO AND (N.IMPRESSO <> 'C' OR N.IMPRESSO IS NULL)), 0))"_s;
    // The fabric's lot names the order; an invoice with which the client returned fabric bills nothing.
    const QString invoiced = uR"(SELECT COUNT(*) FROM {PA_MALHA} P INNER JOIN {OF_MALHA} O ON (O.NUM_OF = P.NUM_OF)
        WHERE P.FATURADO <> COALESCE((SELECT SUM(I.QTDE) FROM {NOTAITEN} I
            INNER JOIN {NOTA} N ON (I.FATURA = N.FATURA)
            WHERE I.CODIGO = P.CODIGO AND I.LOTE = O.LOTE AND N.NOTA_DEV IS NULL
                AND (N.IMPRESSO <> 'C' OR N.IMPRESSO IS NULL)), 0))"_s;
    // Rolls of the lines that were released, as many as the release says.
    const QString rolls = uR"(SELECT COUNT(*) FROM {OF_MALHA} O WHERE
        COALESCE((SELECT SUM(R.PESO) FROM {PEDIDO3} R WHERE R.CAIXA = O.NUM_OF), 0) >
        (SELECT COUNT(*) FROM {OF_MALHA_BAIXAS} B WHERE B.NUM_OF = O.NUM_OF))"_s;
    for (const int company : companies) {
        QCOMPARE(count(company, released), 0);
        QCOMPARE(count(company, invoiced), 0);
        QCOMPARE(count(company, rolls), 0);
        QVERIFY(count(company, u"SELECT COUNT(*) FROM {PA_MALHA} WHERE FATURADO > 0"_s) > 10);
        QVERIFY(count(company, u"SELECT COUNT(*) FROM {PA_MALHA} WHERE FATURADO < QTDE_TOTAL"_s) > 3);
        QVERIFY(count(company, u"SELECT COUNT(*) FROM {PEDIDO3} WHERE NOTAFISCAL = ''"_s) > 0);
    }
}

void tst_demofigures::ordersStandInEveryState()
{
    const auto orders = [&](int company, const QString &condition) {
        return count(company, uR"(SELECT COUNT(*) FROM (SELECT O.NUM_OF, O.KG_TOTAL, O.KG_ROLO,
            O.KG_TOTAL - COALESCE((SELECT SUM(B.QTDE) FROM {OF_MALHA_BAIXAS} B WHERE B.NUM_OF = O.NUM_OF), 0) AS SALDO,
            (SELECT COUNT(*) FROM {BAIXA_FIO} F WHERE F.NUMERO = O.NUM_OF) AS LOTES
            FROM {OF_MALHA} O) X WHERE %1)"_s.arg(condition));
    };
    for (const int company : companies) {
        QVERIFY(orders(company, u"SALDO = KG_TOTAL"_s) >= 3);
        QVERIFY(orders(company, u"SALDO < KG_TOTAL AND SALDO > KG_ROLO"_s) >= 3);
        QVERIFY(orders(company, u"SALDO > 0 AND SALDO < KG_ROLO"_s) >= 3);
        QVERIFY(orders(company, u"SALDO = 0"_s) >= 15);
        QVERIFY(orders(company, u"SALDO < 0"_s) >= 2);
        QVERIFY(orders(company, u"LOTES = 0"_s) >= 3);
        QVERIFY(orders(company, u"SALDO = KG_TOTAL AND LOTES > 0"_s) >= 2);
        const int all = orders(company, u"1 = 1"_s);
        QCOMPARE(value(company, u"SELECT MAX(NUM_OF) FROM {OF_MALHA}"_s).toString(),
            QString::number(all).rightJustified(6, u'0'));
    }
    const int ofTheFirst = orders(1, u"1 = 1"_s);
    QVERIFY2(ofTheFirst > 140 && ofTheFirst < 180, qPrintable(QString::number(ofTheFirst)));
    const int rolls = count(1, u"SELECT COUNT(*) FROM {OF_MALHA_BAIXAS}"_s);
    QVERIFY2(rolls > 5500 && rolls < 6700, qPrintable(QString::number(rolls)));
}

void tst_demofigures::everyCompositionComesToAHundredPercent()
{
    for (const int company : companies) {
        QSqlQuery query = database().run(
            of(company, u"SELECT MATERIAL, COR, SUM(PERC) FROM {COMP_MATERIAL} GROUP BY MATERIAL, COR"_s));
        int compositions = 0;
        while (query.next()) {
            ++compositions;
            QCOMPARE(qRound64(query.value(2).toDouble() * 100'000), 10'000'000);
        }
        QVERIFY(compositions > count(company, u"SELECT COUNT(*) FROM {MATERIAL} WHERE GRUPO LIKE '15%'"_s));
        QVERIFY(count(company, u"SELECT COUNT(*) FROM {COMP_MATERIAL} WHERE COR = '0' AND COR_I = '*****'"_s) > 0);
    }
}

void tst_demofigures::someYarnHasTwoLoopLengthsInOneFabric()
{
    const QString twoLengths = uR"(SELECT COUNT(*) FROM (SELECT MATERIAL, CODIGO FROM {COMP_MATERIAL}
        GROUP BY MATERIAL, CODIGO HAVING COUNT(DISTINCT LFA) > 1) X)"_s;
    for (const int company : companies)
        QVERIFY(count(company, twoLengths) > 0);
}

void tst_demofigures::reservationsCoverTheNeedsAndNoMore()
{
    // Each yarn of the order's fabric in its active colours, as the order screen counts it.
    const QString needs = uR"(SELECT O.NUM_OF, C.CODIGO, O.KG_TOTAL, SUM(C.PERC),
        COALESCE((SELECT SUM(F.QTDE) FROM {BAIXA_FIO} F WHERE F.NUMERO = O.NUM_OF AND F.CODIGO = C.CODIGO), 0)
        FROM {OF_MALHA} O INNER JOIN {COMP_MATERIAL} C ON (C.MATERIAL = O.MATERIAL)
        WHERE EXISTS (SELECT 1 FROM {BAIXA_FIO} F WHERE F.NUMERO = O.NUM_OF)
            AND EXISTS (SELECT 1 FROM {MAT_ITEN} I WHERE I.CODIGO = C.MATERIAL AND I.COR = C.COR
                AND (I.ATIVO = 'S' OR I.ATIVO IS NULL))
        GROUP BY O.NUM_OF, C.CODIGO, O.KG_TOTAL)"_s;
    for (const int company : companies) {
        QSqlQuery query = database().run(of(company, needs));
        int checked = 0;
        while (query.next()) {
            const qint64 need = thousandths(query.value(3).toDouble() / 100 * query.value(2).toDouble());
            QCOMPARE(thousandths(query.value(4)), need);
            ++checked;
        }
        QVERIFY(checked > 20);
        const QString foreign = uR"(SELECT COUNT(*) FROM {BAIXA_FIO} F INNER JOIN {OF_MALHA} O ON (O.NUM_OF = F.NUMERO)
            WHERE NOT EXISTS (SELECT 1 FROM {COMP_MATERIAL} C WHERE C.MATERIAL = O.MATERIAL AND C.CODIGO = F.CODIGO)
                OR NOT EXISTS (SELECT 1 FROM {NFT_ITEN} I WHERE I.DOCTO = F.DOCTO AND I.CODCLI = O.CLIENTE
                    AND I.CODIGO = F.CODIGO AND I.LOTE = F.LOTE))"_s;
        QCOMPARE(count(company, foreign), 0);
    }
}

void tst_demofigures::lotsAreNeverPromisedBeyondTheirStock()
{
    // With two loop lengths each of them sees half of the lot.
    const QString beyond = uR"(SELECT COUNT(*) FROM {NFT_ITEN} I WHERE
        (I.ESTOQUE_FISICO - I.QTDE_BAIXA) <
        COALESCE((SELECT SUM(F.QTDE) FROM {BAIXA_FIO} F
            WHERE F.DOCTO = I.DOCTO AND F.CODIGO = I.CODIGO AND F.LOTE = I.LOTE), 0)
        * COALESCE((SELECT MAX(X.N) FROM (SELECT C.CODIGO, COUNT(DISTINCT C.LFA) AS N FROM {COMP_MATERIAL} C
            GROUP BY C.MATERIAL, C.CODIGO) X WHERE X.CODIGO = I.CODIGO), 1))"_s;
    const QString beforeTheYarnCame = uR"(SELECT COUNT(*) FROM {BAIXA_FIO} F
        INNER JOIN {OF_MALHA} O ON (O.NUM_OF = F.NUMERO)
        INNER JOIN {NFTERCEIROS} N ON (N.DOCTO = F.DOCTO AND N.CODCLI = O.CLIENTE) WHERE N.DATA > O.DATA)"_s;
    for (const int company : companies) {
        QCOMPARE(count(company, beyond), 0);
        QCOMPARE(count(company, beforeTheYarnCame), 0);
    }
}

void tst_demofigures::whatWentBackStandsOnTheLots()
{
    const QString wrong = uR"(SELECT COUNT(*) FROM {NFT_ITEN} I WHERE I.QTDE_DEVOL <> COALESCE((
        SELECT SUM(S.QTDE) FROM {NOTAITEN} S INNER JOIN {NOTA} N ON (S.FATURA = N.FATURA)
        WHERE S.NOTA_CLIENTE = I.DOCTO AND S.CODIGO = I.CODIGO AND S.LOTE = I.LOTE
            AND (N.IMPRESSO <> 'C' OR N.IMPRESSO IS NULL)), 0)
        OR I.QTDE_DEVOL > I.ESTOQUE_FISICO OR I.ESTOQUE_FISICO <> I.ESTOQUE_ORIGINAL)"_s;
    for (const int company : companies)
        QCOMPARE(count(company, wrong), 0);
}

void tst_demofigures::everyStateOfInvoicesAndLotsIsThere()
{
    for (const int company : companies) {
        for (const QString &state : {u"= 'S'"_s, u"= 'N'"_s, u"= 'C'"_s, u"IS NULL"_s})
            QVERIFY2(count(company, u"SELECT COUNT(*) FROM {NOTA} WHERE IMPRESSO "_s + state) > 0, qPrintable(state));
        QVERIFY(count(company, u"SELECT COUNT(*) FROM {NOTA} WHERE NOTA_DEV IS NOT NULL"_s) > 0);
        for (const QString &billed : {u"S"_s, u"N"_s})
            QVERIFY(count(company, u"SELECT COUNT(*) FROM {NOTAITEN} WHERE TIPO = '%1'"_s.arg(billed)) > 0);
        const QString lots = u"SELECT COUNT(*) FROM {NFT_ITEN} WHERE "_s;
        QVERIFY(count(company, lots + u"QTDE_DEVOL = ESTOQUE_FISICO"_s) > 0);
        QVERIFY(count(company, lots + u"QTDE_DEVOL > 0 AND QTDE_DEVOL < ESTOQUE_FISICO"_s) > 0);
        QVERIFY(count(company, lots + u"QTDE_DEVOL = 0 AND QTDE_BAIXA = 0"_s) > 0);
        QVERIFY(count(company, lots + u"QTDE_BAIXA > 0"_s) > 0);
        const QString items = u"SELECT COUNT(*) FROM {MAT_ITEN} WHERE ATIVO "_s;
        for (const QString &state : {u"= 'S'"_s, u"= 'N'"_s, u"IS NULL"_s})
            QVERIFY2(count(company, items + state) > 0, qPrintable(state));
    }
}

void tst_demofigures::codesReferToWhatExists_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    const auto refers = [](const char *from, const char *to) {
        QTest::addRow("%s", from) << QString::fromLatin1(from) << QString::fromLatin1(to);
    };
    refers("OF_MALHA.CLIENTE", "ENTIDADE.CODCLI");
    refers("OF_MALHA.MATERIAL", "MATERIAL.CODIGO");
    refers("OF_MALHA.MAQUINA", "MAQUINA.MAQUINA");
    refers("OF_MALHA.FLUXO", "FLUXOTIN.CODIGO");
    refers("OF_MALHA_BAIXAS.NUM_OF", "OF_MALHA.NUM_OF");
    refers("OF_MALHA_BAIXAS.TURNO", "TURNO.TURNO");
    refers("OF_MALHA_BAIXAS.FUNCIONARIO", "PESSOAL.CODIGO");
    refers("PA_MALHA.NUM_OF", "OF_MALHA.NUM_OF");
    refers("BAIXA_FIO.NUMERO", "OF_MALHA.NUM_OF");
    refers("NFT_ITEN.DOCTO", "NFTERCEIROS.DOCTO");
    refers("NFT_ITEN.CODIGO", "MATERIAL.CODIGO");
    refers("PEDIDO3.CAIXA", "OF_MALHA.NUM_OF");
    refers("NOTAITEN.FATURA", "NOTA.FATURA");
    refers("NOTAITEN.CODIGO", "MATERIAL.CODIGO");
    refers("NOTA.CODCLI", "ENTIDADE.CODCLI");
    refers("NOTA.NOTA_DEV", "NOTA.FATURA");
    refers("COMP_MATERIAL.MATERIAL", "MATERIAL.CODIGO");
    refers("COMP_MATERIAL.CODIGO", "MATERIAL.CODIGO");
    refers("COMP_MATERIAL.COR", "CADCOR.COR");
    refers("COMP_MATERIAL.COR_I", "CADCOR.COR");
    refers("MATERIAL.GRUPO", "GRUPO_MA.CODIGO");
    refers("MATERIAL.CODCLI", "ENTIDADE.CODCLI");
    refers("ENTIDADE.GRUPO", "GRUPO_CLI.CODIGO");
    refers("MAT_ITEN.CODIGO", "MATERIAL.CODIGO");
    refers("MAT_ITEN.COR", "CADCOR.COR");
    refers("RAPORT.MATERIAL", "CADRAPORT.CODIGO");
    refers("RAPORT.MILIMETROS", "CADRAPORT.MILIMETROS");
    refers("RAPORT.AGRUPADOR", "TIPO_APL.CODIGO");
    refers("TABPRECO.CODIGO", "MATERIAL.CODIGO");
    refers("TABPRECO.REGIAO", "REGIAO.REGIAO");
    refers("DEF_MOV.REVISOR", "PESSOAL.CODIGO");
    refers("DEF_MOV.QUALIDADE", "TABQUL.CODIGO");
}

void tst_demofigures::codesReferToWhatExists()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    const QString table = from.section(u'.', 0, 0);
    const QString column = from.section(u'.', 1);
    const QString lost = u"SELECT COUNT(*) FROM {%1} A WHERE A.%2 IS NOT NULL AND NOT EXISTS (SELECT 1 FROM {%3} B"
                         " WHERE B.%4 = A.%2)"_s.arg(table, column, to.section(u'.', 0, 0), to.section(u'.', 1));
    for (const int company : companies) {
        QVERIFY(count(company, u"SELECT COUNT(%1) FROM {%2}"_s.arg(column, table)) > 0);
        QCOMPARE(count(company, lost), 0);
    }
}

void tst_demofigures::inspectedRollsHaveEveryDefectOfTheCatalogue()
{
    const QString incomplete = uR"(SELECT COUNT(*) FROM (SELECT NUMERO, ROLO FROM {DEF_MOV} GROUP BY NUMERO, ROLO
        HAVING COUNT(DISTINCT CODIGO) <> (SELECT COUNT(*) FROM {DEFEITO})) X)"_s;
    const QString noRoll = uR"(SELECT COUNT(*) FROM {DEF_MOV} D WHERE D.ROLO >
        (SELECT COUNT(*) FROM {OF_MALHA_BAIXAS} B WHERE B.NUM_OF = D.NUMERO))"_s;
    for (const int company : companies) {
        QCOMPARE(count(company, incomplete), 0);
        QCOMPARE(count(company, noRoll), 0);
        QVERIFY(count(company, u"SELECT COUNT(*) FROM {DEF_MOV} WHERE QUANT = 0"_s) > 100);
        QVERIFY(count(company, u"SELECT COUNT(*) FROM {DEF_MOV} WHERE QUANT > 0"_s) > 100);
        QCOMPARE(count(company, u"SELECT COUNT(*) FROM {DEFEITO}"_s), 12);
    }
}

void tst_demofigures::pricesGrowFromInstalmentToInstalment()
{
    QStringList grows{u"PRECO_00 > 0"_s};
    for (int days = 7; days <= 91; days += 7) {
        grows.append(u"PRECO_%1 > PRECO_%2"_s.arg(days, 2, 10, QChar(u'0')).arg(days - 7, 2, 10, QChar(u'0')));
    }
    for (const int company : companies) {
        QCOMPARE(count(company, u"SELECT COUNT(*) FROM {TABPRECO} WHERE NOT (%1)"_s.arg(grows.join(u" AND "_s))), 0);
        QCOMPARE(count(company, uR"(SELECT COUNT(*) FROM {MATERIAL} M CROSS JOIN {REGIAO} R WHERE M.GRUPO LIKE '15%'
            AND NOT EXISTS (SELECT 1 FROM {TABPRECO} T WHERE T.CODIGO = M.CODIGO AND T.REGIAO = R.REGIAO))"_s),
            0);
        QCOMPARE(count(company, u"SELECT COUNT(*) FROM {REGIAO}"_s), 2);
        QVERIFY(count(company, u"SELECT COUNT(*) FROM {TABPRECO} WHERE GRUPO_COR <> '00'"_s) > 0);
    }
}

void tst_demofigures::onlyYarnsThatTheClientOwnsAreKnitted()
{
    for (const int company : companies) {
        QCOMPARE(count(company, uR"(SELECT COUNT(*) FROM {COMP_MATERIAL} C
            INNER JOIN {MATERIAL} M ON (M.CODIGO = C.MATERIAL) INNER JOIN {MATERIAL} F ON (F.CODIGO = C.CODIGO)
            WHERE M.CODCLI <> F.CODCLI OR M.GRUPO NOT IN ('15', '150') OR F.GRUPO NOT IN ('10', '100'))"_s),
            0);
        QCOMPARE(count(company, uR"(SELECT COUNT(*) FROM {OF_MALHA} O
            INNER JOIN {MATERIAL} M ON (M.CODIGO = O.MATERIAL) WHERE M.CODCLI <> O.CLIENTE)"_s),
            0);
        QCOMPARE(count(company, uR"(SELECT COUNT(*) FROM {NFT_ITEN} I
            INNER JOIN {MATERIAL} M ON (M.CODIGO = I.CODIGO) WHERE M.CODCLI <> I.CODCLI)"_s),
            0);
    }
}

void tst_demofigures::everyRaportCanBeDrawnInItsShades()
{
    for (const int company : companies) {
        QVERIFY(count(company, u"SELECT COUNT(*) FROM {RAPORT}"_s) > 10);
        QCOMPARE(count(company, uR"(SELECT COUNT(*) FROM {RAPORT} R WHERE NOT EXISTS (SELECT 1 FROM {CADCOR} C
            WHERE C.COR = R.COR_I AND C.TONALIDADE LIKE '#______'))"_s),
            0);
        QCOMPARE(count(company, u"SELECT COUNT(DISTINCT TONALIDADE) FROM {CADCOR}"_s),
            count(company, u"SELECT COUNT(TONALIDADE) FROM {CADCOR}"_s));
    }
}

QTEST_GUILESS_MAIN(tst_demofigures)
#include "tst_demofigures.moc"
