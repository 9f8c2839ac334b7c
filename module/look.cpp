// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/look.h"

#include "module/host_services/icons.h"

#include <QAbstractButton>

namespace Look {

void addIcons(QWidget *root)
{
    for (QAbstractButton *button : root->findChildren<QAbstractButton *>()) {
        const QString name = button->property("icon_name").toString();
        if (!name.isEmpty())
            button->setIcon(Icons::get(name));
    }
}

} // namespace Look
