// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/labellist.h"

#include "module/host_services/errors.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace LabelList {

QVector<Label> of(const QString &orderNumber, double totalKg, double rollKg)
{
    // In grams: 0.3 kg are three rolls of 0.1 kg.
    const qint64 total = std::llround(totalKg * 1000);
    const qint64 roll = std::llround(rollKg * 1000);
    const qint64 rolls = roll > 0 ? qMax<qint64>(0, total / roll) : 0;
    if (rolls > mostLabels)
        throw EQen(
            u"A OF %1 daria %2 etiquetas. Verifique o peso e o KG Rolo."_s.arg(orderNumber, QString::number(rolls)));
    QVector<Label> labels;
    for (qint64 i = 1; i <= rolls + spareLabels; ++i)
        labels.append({orderNumber, i <= rolls ? QString::number(i).rightJustified(3, u'0') : QString()});
    return labels;
}

} // namespace LabelList
