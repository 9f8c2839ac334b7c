// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/dataset.h"

/// Written-off rolls of clients and their orders, made up as they are read: whatever memory a report of them takes is
/// the report's own.
class ReportRows : public TDataSet
{
    Q_OBJECT

public:
    explicit ReportRows(int rows);

    int rowCount() const override { return m_rows; }
    QVariant cell(int row, int fieldIndex) const override;

private:
    int m_rows;
};
