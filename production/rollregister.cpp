// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "production/rollregister.h"

#include "module/host_services/database.h"
#include "module/host_services/dataset.h"
#include "module/host_services/errors.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"
#include "production/writeoffrules.h"

using namespace Funcoes;
using namespace Qt::StringLiterals;

Roll Roll::in(const TDataSet &writeOffs)
{
    Roll roll;
    roll.of = writeOffs.AsString(u"NUM_OF"_s);
    roll.number = writeOffs.AsString(u"NUM_BAIXA"_s);
    roll.kg = writeOffs.AsFloat(u"QTDE"_s);
    return roll;
}

std::function<void()> following(const QString &done, const std::function<void()> &action)
{
    return [done, action] {
        try {
            action();
        } catch (const EDatabaseError &error) {
            // Its sentence says that nothing was written, and means what follows alone.
            throw EQen(done + u" O registro no log ou a leitura que segue falhou."_s, error.details());
        } catch (const EQen &error) {
            throw EQen(done + u' ' + error.sentence(), error.details());
        }
    };
}

namespace {

/// Selects the defects of a roll, whose register counts the rolls as numbers.
QString ofDefects(const QString &of, const QString &number)
{
    return u" WHERE NUMERO = "_s + Aspas(of) + u" AND ROLO = "_s + QString::number(number.toInt());
}

} // namespace

std::function<void()> afterWriting(const Roll &roll, const std::function<void()> &action)
{
    return following(u"O rolo %1 da OF %2 está gravado."_s.arg(roll.number, roll.of), action);
}

double OrderBalance::open() const
{
    return Format::rounded(planned - produced, 3);
}

RollRegister::RollRegister(TTIDatabase &database)
    : m_database(database)
{
}

bool RollRegister::lock(const QString &of)
{
    const QString statement =
        u"UPDATE "_s + DBLocal(u"OF_MALHA"_s) + u" SET NUM_OF = NUM_OF WHERE NUM_OF = "_s + Aspas(of);
    return m_database.run(statement).numRowsAffected() > 0;
}

OrderBalance RollRegister::balance(const QString &of)
{
    QSqlQuery query = m_database.run(DBLocal_SQL(uR"(
        SELECT OF_MALHA.KG_TOTAL,
               (SELECT SUM(OF_MALHA_BAIXAS.QTDE) FROM {OF_MALHA_BAIXAS} OF_MALHA_BAIXAS
                WHERE OF_MALHA_BAIXAS.NUM_OF = OF_MALHA.NUM_OF) AS BAIXAS
        FROM {OF_MALHA} OF_MALHA WHERE OF_MALHA.NUM_OF = )"_s,
        Aspas(of)));
    if (!m_database.next(query))
        return {};
    return {query.value(0).toDouble(), query.value(1).toDouble()};
}

QString RollRegister::Proxima_baixa(const QString &of)
{
    return WriteOffRules::nextNumber(
        m_database
            .value(DBLocal_SQL(u"SELECT MAX(NUM_BAIXA) AS PROXIMA FROM {OF_MALHA_BAIXAS} WHERE NUM_OF = "_s, Aspas(of)))
            .toString());
}

QString RollRegister::numberFor(const QString &of, const QString &handedOver)
{
    const QString number = WriteOffRules::padded(handedOver);
    const bool given = Existe(u"OF_MALHA_BAIXAS"_s, u"NUM_OF,NUM_BAIXA"_s, Aspas(of) + u',' + Aspas(number));
    return handedOver.isEmpty() || given ? Proxima_baixa(of) : number;
}

void RollRegister::insert(const Roll &roll)
{
    QStringList columns{u"NUM_BAIXA"_s, u"NUM_OF"_s, u"DATA"_s, u"TURNO"_s, u"FUNCIONARIO"_s, u"QTDE"_s};
    QStringList values{Aspas(roll.number), Aspas(roll.of), Aspas(Format::sqlDate(roll.day)), Aspas(roll.shift),
        Aspas(roll.worker), PermanecePonto(roll.kg)};
    if (roll.time.isValid()) {
        columns.append(u"HORA"_s);
        values.append(HoraSQL(QDateTime(roll.day, roll.time)));
    }
    m_database.run(u"INSERT INTO "_s + DBLocal(u"OF_MALHA_BAIXAS"_s) + u" ("_s + columns.join(u", "_s) + u") VALUES ("_s
        + values.join(u", "_s) + u')');
    addToStock(roll.of, roll.kg);
}

void RollRegister::remove(const Roll &roll)
{
    const QString which = DBLocal(u"OF_MALHA_BAIXAS"_s) + u" WHERE NUM_BAIXA = "_s + Aspas(roll.number)
        + u" AND NUM_OF = "_s + Aspas(roll.of);
    // A number taken back is given again: what bears it by now may be another roll.
    const QVariant recorded = m_database.value(u"SELECT QTDE FROM "_s + which);
    const bool same = recorded.isValid() && Format::rounded(recorded.toDouble() - roll.kg, 3) == 0;
    const QString statement = u"DELETE FROM "_s + which;
    if (!same || m_database.run(statement).numRowsAffected() == 0)
        throw EDatabaseError(EDatabaseError::Category::Conflict, {}, u"A baixa não existe mais."_s, statement);
    takeFromStock(roll.of, roll.kg);
    // The next roll may get the number; it must not get the defects.
    m_database.run(u"DELETE FROM "_s + DBLocal(u"DEF_MOV"_s) + ofDefects(roll.of, roll.number));
}

void RollRegister::moveDefects(const QString &of, const QString &from, const QString &to)
{
    // What stands under the new number was counted for a roll that nobody wrote.
    m_database.run(u"DELETE FROM "_s + DBLocal(u"DEF_MOV"_s) + ofDefects(of, to));
    m_database.run(
        u"UPDATE "_s + DBLocal(u"DEF_MOV"_s) + u" SET ROLO = "_s + QString::number(to.toInt()) + ofDefects(of, from));
}

void RollRegister::closeAtProduced(const QString &of)
{
    const OrderBalance now = balance(of);
    m_database.run(u"UPDATE "_s + DBLocal(u"OF_MALHA"_s) + u" SET KG_TOTAL = COALESCE(KG_TOTAL, 0) + "_s
        + PermanecePonto(-now.open()) + u" WHERE NUM_OF = "_s + Aspas(of));
}

void RollRegister::planFor(const QString &of, double kg)
{
    m_database.run(u"UPDATE "_s + DBLocal(u"OF_MALHA"_s) + u" SET KG_TOTAL = "_s
        + PermanecePonto(Format::rounded(balance(of).produced + kg, 3)) + u" WHERE NUM_OF = "_s + Aspas(of));
}

void RollRegister::Estorna_baixa(const Roll &roll, const QString &logLabel)
{
    Save save(m_database);
    lock(roll.of);
    remove(roll);
    save.CommitRetaining();
    following(u"A baixa %1 da OF %2 está estornada."_s.arg(roll.number, roll.of), [&] {
        GeraLog(logLabel,
            u"EXCLUSAO DA BAIXA OF MALHARIA NR.: "_s + roll.of + u" QTDE.: "_s + WriteOffRules::logged(roll.kg)
                + u" NUM.BAIXA: "_s + roll.number,
            olExclusao, roll.of);
    })();
}

void RollRegister::addToStock(const QString &of, double kg)
{
    if (BuscaParametro(u"MAL"_s, 10) != u"S"_s)
        return;
    const QString fabric = Busca_Valor(u"OF_MALHA"_s, u"NUM_OF"_s, u"MATERIAL"_s, Aspas(of));
    const QString stock = DBLocal(u"PA_MALHA"_s);
    if (Existe(u"PA_MALHA"_s, u"NUM_OF,CODIGO"_s, Aspas(of) + u',' + Aspas(fabric))) {
        m_database.run(u"UPDATE "_s + stock + u" SET QTDE_TOTAL = COALESCE(QTDE_TOTAL, 0) + "_s + PermanecePonto(kg)
            + u" WHERE CODIGO = "_s + Aspas(fabric) + u" AND NUM_OF = "_s + Aspas(of));
    } else {
        m_database.run(u"INSERT INTO "_s + stock + u" (QTDE_TOTAL, FATURADO, NUM_OF, CODIGO) VALUES ("_s
            + PermanecePonto(kg) + u", 0, "_s + Aspas(of) + u", "_s + Aspas(fabric) + u')');
    }
}

void RollRegister::takeFromStock(const QString &of, double kg)
{
    if (BuscaParametro(u"MAL"_s, 10) != u"S"_s)
        return;
    const QString fabric = Busca_Valor(u"OF_MALHA"_s, u"NUM_OF"_s, u"MATERIAL"_s, Aspas(of));
    m_database.run(u"UPDATE "_s + DBLocal(u"PA_MALHA"_s) + u" SET QTDE_TOTAL = COALESCE(QTDE_TOTAL, 0) - "_s
        + PermanecePonto(kg) + u" WHERE CODIGO = "_s + Aspas(fabric) + u" AND NUM_OF = "_s + Aspas(of));
}
