// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class TClientDataSet;
class TDataSet;

namespace Ttransfere {

/// Copies the fields and then all rows of a data set into an in-memory one. Owns neither.
class TTransDataSet
{
public:
    void SetTabelaOrigem(TDataSet *DataSet) { m_from = DataSet; }
    void SetTabelaDestino(TClientDataSet *DataSet) { m_to = DataSet; }
    /// Gives the destination the fields of the origin, titles and masks included, and empties it.
    void CriaCampos();
    /// Appends every row of the origin; fields are matched by their names, the others stay null.
    void TransfereDados();

private:
    TDataSet *m_from = nullptr;
    TClientDataSet *m_to = nullptr;
};

} // namespace Ttransfere
