// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

/// Where each screen stands in the menus. A screen is known by its class name alone.
namespace ScreenCatalog {

enum class Folder { Production, Registries, Invoicing, Reports, Others };

struct Entry
{
    QString className;
    Folder folder = Folder::Others;
    QString icon;
    QString suffix; ///< what tells it from another screen of the same caption, in the menu only
    QString shortName; ///< for a screen that is used all day: its name on the toolbar; else empty
    QString caption; ///< as registered

    QString menuText() const { return caption + suffix; }
};

/// The registered screens in the order of the menus. One that no folder knows stands among the others.
QList<Entry> registered();

/// The texts with a mnemonic each, all of them different as long as letters are left.
QStringList withMnemonics(const QStringList &texts);

} // namespace ScreenCatalog
