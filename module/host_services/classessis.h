// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Kinds of stock movements; the numbers are the positions in the host's list.
enum TTipoMovimentoEstoque {
    tmCompra = 0,
    tmVenda = 1,
    tmDevolucaoCompra = 2,
    tmDevolucaoVenda = 3,
    tmTransferencia = 4,
    tmRequisicao = 5,
    tmInventario = 6,
    tmProducao = 7
};

namespace Classessis {

class TEstoque
{
public:
    /// The two-digit code under which the stock journal keeps that kind of movement ("08" for production).
    /// Throws EProgramming for a kind that is not in the list.
    static QString CodigoTipoMovEstoque(TTipoMovimentoEstoque Tipo);
};

} // namespace Classessis
