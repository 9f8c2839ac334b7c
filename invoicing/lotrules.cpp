// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "invoicing/lotrules.h"

#include "module/host_services/format.h"

using namespace Qt::StringLiterals;

namespace LotRules {

double total(double quantity, double price)
{
    return Format::rounded(quantity * price, 2);
}

double unitPrice(double total, double quantity)
{
    return quantity > 0 ? Format::rounded(total / quantity, 6) : total;
}

QString lotOf(const QString &typed)
{
    const QString lot = typed.trimmed();
    return lot.isEmpty() ? u"0"_s : lot;
}

QString quantityFault(double quantity)
{
    return quantity > 0 ? QString() : u"Quantidade não pode ser menor ou igual a zero."_s;
}

QString priceFault(double price)
{
    return price > 0 ? QString() : u"Preço não pode ser menor ou igual a zero."_s;
}

QString totalFault(double total)
{
    return total > 0 ? QString() : u"Total não pode ser menor ou igual a zero."_s;
}

} // namespace LotRules
