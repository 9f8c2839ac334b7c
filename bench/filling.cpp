// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/filling.h"

#include "module/host_services/database.h"
#include "module/host_services/funcoes.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int numbers = 65536;
// Beyond the numbers of the demonstration.
constexpr int firstAdded = 100'000;
constexpr int firstProgramOrder = 900'000;
constexpr int firstFloorOrder = 950'000;

const QString orderColumns = QStringLiteral("NUM_OF, DATA, CLIENTE, MATERIAL, MAQUINA, LOTE, KG_ROLO, KG_TOTAL, FLUXO");

QString number(int first)
{
    return u"CAST(%1 + S.N AS VARCHAR(6))"_s.arg(first);
}

} // namespace

Filling::Filling(TTIDatabase &database)
    : m_database(database)
{
    if (m_database.run(m_database.dialect().columnsOf(u"BENCH_NUMBER"_s)).next())
        return;
    m_database.run(u"CREATE TABLE BENCH_NUMBER (N INTEGER NOT NULL PRIMARY KEY)"_s);
    Save save(m_database);
    m_database.run(u"INSERT INTO BENCH_NUMBER (N) VALUES (0)"_s);
    for (int count = 1; count < numbers; count *= 2)
        m_database.run(u"INSERT INTO BENCH_NUMBER (N) SELECT N + %1 FROM BENCH_NUMBER"_s.arg(count));
    save.CommitRetaining();
}

QString Filling::patterns() const
{
    return Funcoes::DBLocal_SQL(uR"((SELECT DATA, CLIENTE, MATERIAL, MAQUINA, LOTE, KG_ROLO, KG_TOTAL, FLUXO,
        ROW_NUMBER() OVER (ORDER BY NUM_OF) - 1 AS R FROM {OF_MALHA}) T)"_s);
}

void Filling::addOrders(int wanted, int rollsPerOrder)
{
    const int present = m_database.value(Funcoes::DBLocal_SQL(u"SELECT COUNT(*) FROM {OF_MALHA}"_s)).toInt();
    if (present >= wanted)
        return;
    Save save(m_database);
    m_database.run(Funcoes::DBLocal_SQL(uR"(
        INSERT INTO {OF_MALHA} (%1)
        SELECT %2, T.DATA, T.CLIENTE, T.MATERIAL, T.MAQUINA, T.LOTE, T.KG_ROLO, T.KG_TOTAL, T.FLUXO
        FROM BENCH_NUMBER S INNER JOIN %3 ON (T.R = MOD(S.N, %4)) WHERE S.N < %5)"_s.arg(
        orderColumns, number(firstAdded), patterns(), QString::number(present), QString::number(wanted - present))));
    addRolls(u"NUM_OF >= '%1'"_s.arg(firstAdded), rollsPerOrder);
    save.CommitRetaining();
}

void Filling::addTwins(int count)
{
    Save save(m_database);
    for (const int first : {firstProgramOrder, firstFloorOrder}) {
        m_database.run(Funcoes::DBLocal_SQL(uR"(
            INSERT INTO {OF_MALHA} (%1)
            SELECT %2, T.DATA, T.CLIENTE, T.MATERIAL, T.MAQUINA, T.LOTE, %3, 2 * %3 * %4, T.FLUXO
            FROM BENCH_NUMBER S CROSS JOIN %5 WHERE T.R = 0 AND S.N < %6)"_s.arg(orderColumns, number(first),
            Funcoes::PermanecePonto(rollKg), QString::number(twinRolls), patterns(), QString::number(count))));
    }
    addRolls(u"NUM_OF >= '%1'"_s.arg(firstProgramOrder), twinRolls);
    save.CommitRetaining();
}

void Filling::addRolls(const QString &orders, int rolls)
{
    const QString kg = Funcoes::PermanecePonto(rollKg);
    m_database.run(Funcoes::DBLocal_SQL(uR"(
        INSERT INTO {OF_MALHA_BAIXAS} (NUM_BAIXA, NUM_OF, DATA, HORA, TURNO, FUNCIONARIO, QTDE)
        SELECT LPAD(CAST(S.N + 1 AS VARCHAR(3)), 3, '0'), O.NUM_OF, O.DATA, CAST('10:30:00' AS TIME), '1',
               (SELECT MIN(P.CODIGO) FROM {PESSOAL} P), %1
        FROM {OF_MALHA} O CROSS JOIN BENCH_NUMBER S WHERE O.%2 AND S.N < %3)"_s.arg(
        kg, orders, QString::number(rolls))));
    m_database.run(Funcoes::DBLocal_SQL(uR"(
        INSERT INTO {PA_MALHA} (CODIGO, NUM_OF, QTDE_TOTAL, FATURADO)
        SELECT MATERIAL, NUM_OF, %1 * %2, 0 FROM {OF_MALHA} WHERE %3)"_s.arg(kg, QString::number(rolls), orders)));
}

void Filling::addRareRoll()
{
    m_database.run(Funcoes::DBLocal_SQL(uR"(
        UPDATE {OF_MALHA_BAIXAS} SET FUNCIONARIO = '%1' WHERE NUM_BAIXA = '001' AND NUM_OF = '%2')"_s.arg(
        rareText, QString::number(firstAdded))));
}

void Filling::settle()
{
    if (m_database.settings().engine == Engine::PostgreSQL)
        m_database.run(u"ANALYZE"_s);
}

QString Filling::programOrder(int index)
{
    return QString::number(firstProgramOrder + index);
}

QString Filling::floorOrder(int index)
{
    return QString::number(firstFloorOrder + index);
}

SearchSource Filling::rollsOfAllOrders()
{
    return {Funcoes::DBLocal(u"OF_MALHA_BAIXAS"_s),
        {{u"NUM_OF"_s, u"Número"_s}, {u"NUM_BAIXA"_s, u"Baixa"_s}, {u"DATA"_s, u"Data"_s},
            {u"FUNCIONARIO"_s, u"Operador"_s}},
        {}};
}
