// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "invoicing/rowtexts.h"

#include "module/host_services/query.h"

#include <algorithm>

QStringList rowTexts(TTIQuery &rows, const QStringList &columns)
{
    QStringList texts;
    for (rows.First(); !rows.Eof(); rows.Next()) {
        QStringList row;
        for (const QString &column : columns)
            row.append(rows.AsString(column));
        texts.append(row.join(u'\t'));
    }
    std::sort(texts.begin(), texts.end());
    return texts;
}
