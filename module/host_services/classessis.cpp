// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/classessis.h"

#include "module/host_services/errors.h"

using namespace Qt::StringLiterals;

QString Classessis::TEstoque::CodigoTipoMovEstoque(TTipoMovimentoEstoque Tipo)
{
    if (Tipo < tmCompra || Tipo > tmProducao)
        throw EProgramming(u"Tipo de movimento de estoque desconhecido: %1."_s.arg(int(Tipo)));
    return QString::number(int(Tipo) + 1).rightJustified(2, u'0');
}
