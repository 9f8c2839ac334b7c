// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/database.h"

#include <QStringList>

/// A client that knows nothing of the program: a connection of its own over the same driver with the same options, and
/// statements that are sent as they are.
class BareClient
{
public:
    explicit BareClient(const ConnectionSettings &settings);
    ~BareClient();
    Q_DISABLE_COPY_MOVE(BareClient)

    /// Sends them one after the other and fetches all values of all rows; "BEGIN" and "COMMIT" bracket a transaction.
    /// Gives the number of rows. Throws EQen.
    int send(const QStringList &statements);

private:
    int send(const QString &statement);

    std::unique_ptr<Dialect> m_dialect;
    QSqlDatabase m_connection;
};
