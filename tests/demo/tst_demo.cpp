// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/demo.h"

#include "module/host_services/clock.h"
#include "module/host_services/errors.h"
#include "module/schema/tables.h"
#include "tests/support/engines.h"
#include "tests/support/testdatabase.h"

#include <QCryptographicHash>
#include <QTest>

#include <sodium.h>

#include <map>

using namespace Qt::StringLiterals;

namespace {

constexpr int companies[] = {1, 2};

/// A Friday whose three months have a holiday on a Monday, one on a Friday, and one on the day itself.
const QDateTime pinned(QDate(2026, 11, 20), QTime(10, 15));

QString physical(const QString &table, int company)
{
    return u"%1_%2"_s.arg(table, QString::number(company).rightJustified(3, u'0'));
}

QString text(const QVariant &value)
{
    return value.typeId() == QMetaType::Double ? QString::number(value.toDouble(), 'f', 5) : value.toString();
}

/// All rows of a table in an order that does not depend on the engine. A password's hash is salted anew each time.
QByteArray fingerprint(TTIDatabase &database, const Schema::Table &table, const QString &name)
{
    QStringList columns;
    for (const Schema::Column &column : table.columns) {
        if (column.name != u"SENHA"_s)
            columns.append(column.name);
    }
    QStringList rows;
    QSqlQuery query = database.run(u"SELECT %1 FROM %2"_s.arg(columns.join(u", "_s), name));
    while (query.next()) {
        QStringList values;
        for (int i = 0; i < columns.size(); ++i)
            values.append(query.isNull(i) ? u"NULL"_s : text(query.value(i)));
        rows.append(values.join(u'|'));
    }
    rows.sort();
    return QCryptographicHash::hash(rows.join(u'\n').toUtf8(), QCryptographicHash::Sha256).toHex()
        + QByteArray::number(rows.size()).prepend(' ');
}

/// The rolls of the first company, all but their dates.
QStringList rollsOf(TTIDatabase &database)
{
    QStringList rolls;
    QSqlQuery query = database.run(u"SELECT NUM_OF, NUM_BAIXA, TURNO, FUNCIONARIO, QTDE FROM OF_MALHA_BAIXAS_001"
                                   " ORDER BY NUM_OF, NUM_BAIXA"_s);
    while (query.next()) {
        rolls.append(u"%1/%2: %3 %4 %5"_s.arg(query.value(0).toString(), query.value(1).toString(),
            query.value(2).toString(), query.value(3).toString(), text(query.value(4))));
    }
    return rolls;
}

std::map<QString, QByteArray> fingerprints(TTIDatabase &database)
{
    std::map<QString, QByteArray> result;
    for (const Schema::Table &table : Schema::allTables()) {
        if (!table.perCompany) {
            result[table.name] = fingerprint(database, table, table.name);
            continue;
        }
        for (const int company : companies)
            result[physical(table.name, company)] = fingerprint(database, table, physical(table.name, company));
    }
    return result;
}

QStringList differences(const std::map<QString, QByteArray> &left, const std::map<QString, QByteArray> &right)
{
    QStringList names;
    for (const auto &[name, print] : left) {
        if (right.at(name) != print)
            names.append(name);
    }
    return names;
}

} // namespace

/// Creating the demonstration data, and who gets in.
class tst_demo : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }
    void initTestCase() { Clock::pin(pinned); }
    void init();
    void cleanup() { Clock::pin(pinned); }
    void cleanupTestCase() { m_created.clear(); }

    void twoCreationsGiveTheSameRows();
    void bothEnginesHoldTheSameRows();
    void onAnotherDayOnlyTheDatesDiffer();
    void aMillInUseIsLeftAlone();
    void aCreationCutShortLeavesNothingAndCanBeRepeated();
    void progressRunsFromZeroToAHundred();
    void theStatedUserGetsInWithTheStatedPassword();
    void operatorAndGuestHaveTheirRightsOnly();

private:
    TTIDatabase &database() { return m_created.at(Engines::current())->connection(); }

    std::map<QString, std::unique_ptr<TestDatabase>> m_created;
    std::map<QString, std::map<QString, QByteArray>> m_prints;
    std::map<QString, QList<int>> m_told;
};

void tst_demo::init()
{
    const QString engine = Engines::current();
    if (m_created.count(engine))
        return;
    auto created = std::make_unique<TestDatabase>(engine, TestDatabase::Content::Nothing);
    QElapsedTimer timer;
    timer.start();
    Demo::create(created->connection(), [&](int percent) { m_told[engine].append(percent); });
    qInfo("created in %lld ms", timer.elapsed());
    m_created[engine] = std::move(created);
    m_prints[engine] = fingerprints(database());
}

void tst_demo::twoCreationsGiveTheSameRows()
{
    TestDatabase second(Engines::current(), TestDatabase::Content::Nothing);
    // The time of day makes no difference.
    Clock::pin(pinned.addSecs(5 * 60 * 60));
    Demo::create(second.connection());
    Clock::pin(pinned);
    auto prints = fingerprints(second.connection());
    prints[u"QEN_ESQUEMA"_s] = m_prints[Engines::current()][u"QEN_ESQUEMA"_s]; // tells when it was created
    QCOMPARE(differences(m_prints[Engines::current()], prints), QStringList());
}

void tst_demo::bothEnginesHoldTheSameRows()
{
    QCOMPARE(differences(m_prints.begin()->second, m_prints[Engines::current()]), QStringList());
}

void tst_demo::onAnotherDayOnlyTheDatesDiffer()
{
    TestDatabase later(Engines::current(), TestDatabase::Content::Nothing);
    const QDate monday(2027, 2, 15);
    Clock::pin(monday.startOfDay());
    Demo::create(later.connection());
    const QStringList rolls = rollsOf(later.connection());
    QVERIFY(rolls.size() > 5000);
    QVERIFY(rolls == rollsOf(database()));
    const QDate last = later.value(u"SELECT MAX(DATA) FROM {OF_MALHA_BAIXAS}"_s).toDate();
    QCOMPARE(last, QDate(2027, 2, 13)); // the Saturday
}

void tst_demo::aMillInUseIsLeftAlone()
{
    TestDatabase used(Engines::current());
    used.addCommonData();
    const auto before = fingerprints(used.connection());
    QVERIFY_EXCEPTION_THROWN(Demo::create(used.connection()), EQen);
    QCOMPARE(differences(before, fingerprints(used.connection())), QStringList());
}

void tst_demo::aCreationCutShortLeavesNothingAndCanBeRepeated()
{
    TestDatabase cutShort(Engines::current(), TestDatabase::Content::Nothing);
    const auto stopHalfWay = [](int percent) {
        if (percent > 50)
            throw std::runtime_error("stopped");
    };
    QVERIFY_EXCEPTION_THROWN(Demo::create(cutShort.connection(), stopHalfWay), std::runtime_error);
    QCOMPARE(cutShort.count(u"OF_MALHA_BAIXAS"_s), 0);
    QCOMPARE(cutShort.count(u"MATERIAL"_s), 0);
    QCOMPARE(cutShort.value(u"SELECT COUNT(*) FROM QEN_PARAMETRO"_s).toInt(), 0);
    Demo::create(cutShort.connection());
    QCOMPARE(differences(m_prints[Engines::current()], fingerprints(cutShort.connection())), QStringList());
}

void tst_demo::progressRunsFromZeroToAHundred()
{
    const QList<int> &told = m_told[Engines::current()];
    QCOMPARE(told.first(), 0);
    QCOMPARE(told.last(), 100);
    QVERIFY(std::is_sorted(told.begin(), told.end()));
    QVERIFY(told.size() > 50);
}

void tst_demo::theStatedUserGetsInWithTheStatedPassword()
{
    QVERIFY(sodium_init() >= 0);
    QCOMPARE(database().value(u"SELECT ADMINISTRADOR FROM QEN_USUARIO WHERE USUARIO = '%1'"_s.arg(Demo::user)), u"S"_s);
    QSqlQuery query = database().run(u"SELECT SENHA FROM QEN_USUARIO"_s);
    int users = 0;
    while (query.next()) {
        ++users;
        const QByteArray hash = query.value(0).toString().toLatin1();
        QVERIFY(hash.startsWith("$argon2id$"));
        QCOMPARE(crypto_pwhash_str_verify(hash.constData(), Demo::password.data(), Demo::password.size()), 0);
        QVERIFY(crypto_pwhash_str_verify(hash.constData(), "outra", 5) != 0);
    }
    QCOMPARE(users, 4);
}

void tst_demo::operatorAndGuestHaveTheirRightsOnly()
{
    const auto rights = [&](const QString &user) {
        QStringList result;
        QSqlQuery query = database().run(
            u"SELECT TELA, LETRA, NIVEL FROM QEN_DIREITO WHERE USUARIO = '%1' ORDER BY TELA, LETRA, NIVEL"_s.arg(user));
        while (query.next())
            result.append(query.value(0).toString() + query.value(1).toString() + query.value(2).toString());
        return result;
    };
    QCOMPARE(rights(u"consulta"_s), QStringList());
    QCOMPARE(rights(u"operador"_s), QStringList({u"TfmCadDefMalhaA0"_s, u"TfmMalhaOFBaixaBarraA0"_s}));
    QVERIFY(rights(u"supervisor"_s).contains(u"TfmMalhaOFBaixaBarraA1"_s));
    QCOMPARE(rights(u"supervisor"_s).size(), 60);
    QCOMPARE(
        database().value(u"SELECT VALOR FROM QEN_PARAMETRO WHERE EMPRESA = 2 AND MODULO = 'MAL' AND NUMERO = 10"_s),
        u"S"_s);
}

QTEST_GUILESS_MAIN(tst_demo)
#include "tst_demo.moc"
