// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/startup.h"

#include "demo/demo.h"
#include "host/databaseopening.h"
#include "host/demonstration.h"
#include "host/demonstrationscale.h"
#include "host/firstpaint.h"
#include "host/firststartdialog.h"
#include "host/logindialog.h"
#include "host/mainwindow.h"
#include "host/packageloader.h"
#include "host/paths.h"
#include "host/pictures.h"
#include "host/qenhost.h"
#include "host/reportdesk.h"
#include "host/settings.h"
#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/tabelas.h"

#include <QApplication>
#include <QProgressDialog>
#include <QTemporaryDir>

#include <cstdio>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

const QString packageName = QStringLiteral("qenMalharia");

ConnectionSettings connectionOf(const Options &options, const Settings &settings)
{
    if (!options.database.isEmpty())
        return Settings::fromAddress(options.database);
    if (settings.namesDatabase())
        return settings.connection();
    return Settings::fromAddress(Paths::demonstrationDatabase());
}

bool isDemonstration(const Options &options, const Settings &settings)
{
    return options.database.isEmpty() && !settings.namesDatabase();
}

/// The demonstration's data, behind a dialog that tells how far it is.
void createDemonstration(TTIDatabase &database, QWidget *parent)
{
    QProgressDialog progress(u"Criando os dados de demonstração..."_s, {}, 0, 100, parent);
    progress.setWindowTitle(u"qen"_s);
    progress.setMinimumWidth(420);
    progress.setMinimumDuration(0);
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setValue(0);
    Demo::create(database, [&](int percent) { progress.setValue(percent); });
}

/// False when the user gave up.
bool prepareFirstStart(TTIDatabase &database, bool demonstration, QWidget *parent)
{
    if (!DatabaseOpening::isFirstStart(database))
        return true;
    if (demonstration) {
        createDemonstration(database, parent);
        return true;
    }
    return FirstStartDialog(database, parent).exec() == QDialog::Accepted;
}

QString hint(bool demonstration)
{
    return demonstration ? u"Dados de demonstração.\nUsuário: %1   Senha: %2"_s.arg(Demo::user, Demo::password)
                         : QString();
}

} // namespace

int runProgram(const Options &options)
{
    Settings settings(options.settings.isEmpty() ? Paths::settingsFile() : options.settings);
    const bool demonstration = isDemonstration(options, settings);
    const ConnectionSettings connection = connectionOf(options, settings);
    TTabela tables;
    QenHost host(settings.store());
    TTIDatabase &database = *tables.IBDatabase;
    LoginDialog login(database, settings.store(), hint(demonstration));
    login.openOnceShown([&] {
        DatabaseOpening::open(database, connection);
        return prepareFirstStart(database, demonstration, &login);
    });
    // The filter that is installed last is asked first: the dialog is gone before the database is opened.
    if (options.exitAtLogin)
        new FirstPaint(&login, [&login] { login.reject(); });
    const bool accepted = login.exec() == QDialog::Accepted;
    if (login.failure())
        std::rethrow_exception(login.failure());
    if (!accepted)
        return 0;
    host.login(login.user(), login.company());
    PackageLoader package(packageName);
    package.load();
    std::optional<DemonstrationScale> scale;
    if (demonstration)
        scale.emplace(settings.store());
    StationDesk desk(settings.store());
    if (demonstration) // which needs no printer
        desk.setFallbackPrinter(StationDesk::filePrinter);
    host.setReportDesk(&desk);
    MainWindow window(host, engineName(connection.engine), database.settings().database);
    QObject::connect(&desk, &StationDesk::printed, &window, &MainWindow::tell);
    window.show();
    return QApplication::exec();
}

int runUnattended(const Options &options)
{
    // Neither the user's settings nor his data have a part in it.
    const QTemporaryDir scratch;
    Settings settings(options.settings.isEmpty() ? scratch.filePath(u"qen.ini"_s) : options.settings);
    const bool demonstration = isDemonstration(options, settings);
    const ConnectionSettings connection = demonstration ? Settings::fromAddress(scratch.filePath(u"demonstracao.fdb"_s))
                                                        : connectionOf(options, settings);
    TTabela tables;
    QenHost host(settings.store());
    DatabaseOpening::open(*tables.IBDatabase, connection);
    if (demonstration)
        Demo::create(*tables.IBDatabase);
    host.login(options.user.isEmpty() ? QString(Demo::user) : options.user, qMax(1, options.company));
    PackageLoader package(packageName);
    package.load();
    int result = 0;
    if (!options.pictures.isEmpty()) {
        const QStringList files = Pictures::ofTheProgram(host, engineName(connection.engine), options.pictures)
            + Pictures::ofAllScreens(host, options.pictures);
        for (const QString &file : files)
            std::puts(qUtf8Printable(file));
    }
    if (!options.demonstrate.isEmpty())
        result = runDemonstration(host, options.demonstrate);
    return result;
}
