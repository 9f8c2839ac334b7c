// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "reports/paperrows.h"

#include "module/controls/roworder.h"
#include "module/host_services/clientdataset.h"

namespace PaperRows {

void together(TDataSet &from, const QStringList &fields, TClientDataSet &to)
{
    if (fields.size() > 1) {
        TClientDataSet byOthers; // whose order stays among rows that are alike in the first field
        together(from, fields.sliced(1), byOthers);
        together(byOthers, {fields.first()}, to);
        return;
    }
    while (from.canFetchMore())
        from.fetchMore();
    to.CreateDataSet(from.fields());
    for (const int row : sortedRows(from, from.fieldIndex(fields.first()), Qt::AscendingOrder)) {
        to.Append();
        for (int column = 0; column < from.fields().size(); ++column)
            to.setValue(from.fields()[column].name, from.cell(row, column));
        to.Post();
    }
    to.First();
}

} // namespace PaperRows
