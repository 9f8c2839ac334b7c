// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class TTIDatabase;
struct Roll;

/// Posts produced fabric into the general item stock, while the mill wants it there (parameter "MAL" 20).
class ItemStock
{
public:
    explicit ItemStock(TTIDatabase &database);

    /// The roll's fabric becomes stock of its order's client, with a line in the stock journal. To be called within the
    /// Save that writes the roll.
    void GravaEstoque(const Roll &roll);

private:
    struct Item;
    Item itemOf(const Roll &roll);
    void add(const Item &item, double kg);
    void journal(const Item &item, const Roll &roll);

    TTIDatabase &m_database;
};
