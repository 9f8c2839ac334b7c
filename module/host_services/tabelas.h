// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QObject>
#include <QString>

class TTIDatabase;
class TTITable;

/// The data module: the connection, and the tables that screens share.
class TTabela : public QObject
{
    Q_OBJECT

public:
    explicit TTabela(QObject *parent = nullptr);
    ~TTabela() override;

    TTIDatabase *const IBDatabase;

    /// Opens a shared table by its component name, in any case. Calls are counted: it closes with the last user.
    /// With the flag its record is read anew when it is open already. Throws EProgramming for an unknown name.
    TTITable *AbreTabela(const QString &Nome, bool Flag = false);
    void FechaTabela(const QString &Nome);
    /// Null while it is closed.
    TTITable *tabela(const QString &Nome) const;

private:
    struct Shared
    {
        TTITable *table = nullptr;
        int users = 0;
    };
    QHash<QString, Shared> m_shared;
};

/// The one data module; null before the program has started.
extern TTabela *Tabela;
