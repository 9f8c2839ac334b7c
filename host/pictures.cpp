// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/pictures.h"

#include "host/demonstrationscale.h"
#include "host/firststartdialog.h"
#include "host/logindialog.h"
#include "host/mainwindow.h"
#include "host/qenhost.h"
#include "host/reportdesk.h"
#include "host/screendriver.h"
#include "host/screenprinting.h"
#include "host/screenusage.h"
#include "module/host_services/classregistry.h"
#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/tabelas.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QPixmap>
#include <QScopeGuard>
#include <QSettings>
#include <QTimer>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

const QSize smallest(1000, 640); // as a screen stands in the main window

void makeFolder(const QString &folder)
{
    if (!QDir().mkpath(folder))
        throw EQen(u"A pasta \"%1\" não pode ser criada."_s.arg(folder));
}

void show(QWidget &window)
{
    window.show();
    window.activateWindow();
    QApplication::processEvents();
}

/// A picture of the box that showException opens, which is closed then.
void saveFailure(QenHost &host, QWidget &window, const QString &file)
{
    // The box stands in an event loop of its own.
    QTimer::singleShot(0, &window, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        for (QAbstractButton *button : box->buttons()) {
            if (box->buttonRole(button) == QMessageBox::ActionRole)
                button->click();
        }
        Pictures::save(*box, file);
        box->accept();
    });
    host.showException(&window,
        std::make_exception_ptr(EDatabaseError(EDatabaseError::Category::Conflict, u"-913"_s,
            u"deadlock\nupdate conflicts with concurrent update"_s,
            u"UPDATE PA_MALHA_001 SET QTDE_TOTAL = QTDE_TOTAL + 25.3 WHERE NUM_OF = '000160'"_s)));
}

} // namespace

void Pictures::save(QWidget &widget, const QString &file)
{
    QApplication::processEvents();
    if (!widget.grab().save(file))
        throw EQen(u"A imagem \"%1\" não pôde ser gravada."_s.arg(file));
}

QStringList Pictures::ofAllScreens(QenHost &host, const QString &folder)
{
    makeFolder(folder);
    const DemonstrationScale scale(host.settings());
    const BoxAnswers answers; // an empty database has nothing to be brought into use, and says so
    PictureDesk desk(folder);
    host.setReportDesk(&desk);
    const auto away = qScopeGuard([&host] { host.setReportDesk(nullptr); });
    QStringList files;
    for (const QString &name : ClassRegistry::names()) {
        const QPointer<QWidget> screen = host.loadForm(u"qenMalharia"_s, name, true, false);
        if (!screen)
            continue;
        handOver(*screen);
        screen->resize(screen->sizeHint().expandedTo(smallest));
        show(*screen);
        files.append(u"%1/%2-empty.png"_s.arg(folder, name));
        save(*screen, files.last());
        if (bringIntoUse(*screen)) {
            files.append(u"%1/%2-in-use.png"_s.arg(folder, name));
            save(*screen, files.last());
        }
        printInUse(*screen);
        delete screen;
    }
    return files + desk.files();
}

QStringList Pictures::ofTheProgram(QenHost &host, const QString &engineName, const QString &folder)
{
    makeFolder(folder);
    QStringList files;
    const auto add = [&](QWidget &window, const QString &name) {
        files.append(u"%1/%2.png"_s.arg(folder, name));
        show(window);
        save(window, files.last());
    };
    TTIDatabase &database = *Tabela->IBDatabase;
    host.settings().setValue(u"Entrada/usuario"_s, host.user());
    LoginDialog login(database, host.settings(), {});
    add(login, u"login"_s);
    login.hide();
    FirstStartDialog firstStart(database);
    add(firstStart, u"first-start"_s);
    firstStart.hide();
    MainWindow window(host, engineName, database.settings().database);
    add(window, u"main-window-empty"_s);
    const QList<ScreenCatalog::Entry> screens = ScreenCatalog::registered();
    for (const ScreenCatalog::Entry &screen : screens.first(qMin<qsizetype>(2, screens.size())))
        window.openScreen(screen.className);
    add(window, u"main-window"_s);
    files.append(folder + u"/failure.png"_s);
    saveFailure(host, window, files.last());
    window.closeScreens();
    return files;
}
