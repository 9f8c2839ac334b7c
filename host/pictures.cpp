// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/pictures.h"

#include "host/qenhost.h"
#include "module/host_services/classregistry.h"
#include "module/host_services/errors.h"

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

const QSize smallest(1000, 640); // as a screen stands in the main window

} // namespace

void Pictures::save(QWidget &widget, const QString &file)
{
    QApplication::processEvents();
    if (!widget.grab().save(file))
        throw EQen(u"A imagem \"%1\" não pôde ser gravada."_s.arg(file));
}

QStringList Pictures::ofAllScreens(QenHost &host, const QString &folder)
{
    if (!QDir().mkpath(folder))
        throw EQen(u"A pasta \"%1\" não pôde ser criada."_s.arg(folder));
    QStringList files;
    for (const QString &name : ClassRegistry::names()) {
        const QPointer<QWidget> screen = host.loadForm(u"qenMalharia"_s, name, false, true);
        if (!screen)
            continue;
        screen->resize(screen->sizeHint().expandedTo(smallest));
        files.append(u"%1/%2-empty.png"_s.arg(folder, name));
        save(*screen, files.last());
        if (screen->metaObject()->indexOfMethod("demonstrate()") >= 0) {
            QMetaObject::invokeMethod(screen, "demonstrate", Qt::DirectConnection);
            files.append(u"%1/%2-in-use.png"_s.arg(folder, name));
            save(*screen, files.last());
        }
        delete screen;
    }
    return files;
}
