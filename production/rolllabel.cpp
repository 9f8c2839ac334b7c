// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "production/rolllabel.h"

#include "module/host_services/funcoes.h"

using namespace Funcoes;
using namespace Qt::StringLiterals;

// A yarn and its lots stand once, in however many colours of the fabric the yarn is.
RollLabelYarn::RollLabelYarn(const QString &of, const QString &fabric)
{
    m_composition.SQL.add(DBLocal_SQL(uR"(
        SELECT DISTINCT COMP.MATERIAL, COMP.CODIGO, MATERIAL.DESCRICAO
        FROM {COMP_MATERIAL} COMP
        LEFT JOIN {MATERIAL} MATERIAL ON (COMP.CODIGO = MATERIAL.CODIGO)
        WHERE COMP.MATERIAL = )"_s,
        Aspas(fabric) + u" ORDER BY COMP.CODIGO"_s));
    m_composition.Open();
    m_lots.SQL.add(DBLocal_SQL(uR"(
        SELECT DISTINCT BAIXA.CODIGO, BAIXA.DOCTO, BAIXA.LOTE, MATERIAL.DESCRICAO
        FROM {COMP_MATERIAL} COMP
        INNER JOIN {BAIXA_FIO} BAIXA ON (COMP.CODIGO = BAIXA.CODIGO AND COMP.MATERIAL = )"_s,
                       Aspas(fabric))
        + DBLocal_SQL(uR"()
        LEFT JOIN {MATERIAL} MATERIAL ON (BAIXA.CODIGO = MATERIAL.CODIGO)
        WHERE BAIXA.NUMERO = )"_s,
            Aspas(of) + u" ORDER BY BAIXA.CODIGO, BAIXA.DOCTO, BAIXA.LOTE"_s));
    m_lots.Open();
}

void RollLabelYarn::addTo(ReportCall &call)
{
    call.dataSets.append({u"QryComposicao"_s, &m_composition});
    call.dataSets.append({u"QryLotes"_s, &m_lots});
}

QVariant RollLabelYarn::answer(const QString &function, const QVariantList &arguments)
{
    if (function != u"ZEROE"_s || arguments.size() != 2)
        return {};
    return arguments[0].toString().trimmed().rightJustified(arguments[1].toInt(), u'0');
}
