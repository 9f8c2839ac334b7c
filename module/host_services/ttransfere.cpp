// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/ttransfere.h"

#include "module/host_services/clientdataset.h"

namespace Ttransfere {

void TTransDataSet::CriaCampos()
{
    m_to->CreateDataSet(m_from->fields());
}

void TTransDataSet::TransfereDados()
{
    QVector<int> shared;
    for (int i = 0; i < m_from->fields().size(); ++i) {
        if (m_to->hasField(m_from->fields()[i].name))
            shared.append(i);
    }
    // By row numbers, so that whoever shows the origin does not see its cursor run.
    for (int row = 0;; ++row) {
        if (row >= m_from->rowCount() && m_from->canFetchMore())
            m_from->fetchMore();
        if (row >= m_from->rowCount())
            break;
        m_to->Append();
        for (const int column : shared)
            m_to->setValue(m_from->fields()[column].name, m_from->cell(row, column));
        m_to->Post();
    }
    m_to->First();
}

} // namespace Ttransfere
