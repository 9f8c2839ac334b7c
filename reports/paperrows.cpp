// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reports/paperrows.h"

#include "module/controls/roworder.h"
#include "module/host_services/clientdataset.h"

namespace PaperRows {

void together(TDataSet &from, const QString &field, TClientDataSet &to)
{
    while (from.canFetchMore())
        from.fetchMore();
    to.CreateDataSet(from.fields());
    for (const int row : sortedRows(from, from.fieldIndex(field), Qt::AscendingOrder)) {
        to.Append();
        for (int column = 0; column < from.fields().size(); ++column)
            to.setValue(from.fields()[column].name, from.cell(row, column));
        to.Post();
    }
    to.First();
}

} // namespace PaperRows
