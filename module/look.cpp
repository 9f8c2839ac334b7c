// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/look.h"

#include "module/host_services/icons.h"

#include <QAbstractButton>
#include <QColor>

namespace Look {

void addIcons(QWidget *root)
{
    for (QAbstractButton *button : root->findChildren<QAbstractButton *>()) {
        const QString name = button->property("icon_name").toString();
        if (!name.isEmpty())
            button->setIcon(Icons::get(name));
    }
}

QColor amiss()
{
    return {0xff, 0xe0, 0xdb};
}

} // namespace Look
