// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/databaseopening.h"

#include "host/session.h"
#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/firebirdroot.h"
#include "module/schema/schema.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

/// The one path of the file, whichever links lead to it: its folder holds the engine's locks, and two processes that
/// open one file must find the same.
QString realPath(const QString &file)
{
    const QFileInfo info(file);
    if (info.exists())
        return info.canonicalFilePath();
    QDir().mkpath(info.absolutePath());
    const QString folder = QFileInfo(info.absolutePath()).canonicalFilePath();
    return (folder.isEmpty() ? info.absolutePath() : folder) + u'/' + info.fileName();
}

void prepareLocalFile(ConnectionSettings &settings)
{
    settings.database = realPath(settings.database);
    FirebirdRoot::prepare(QFileInfo(settings.database).absolutePath());
    if (!QFileInfo::exists(settings.database))
        FirebirdRoot::createDatabase(settings.database, settings.user);
}

} // namespace

void DatabaseOpening::open(TTIDatabase &database, ConnectionSettings settings)
{
    if (settings.engine == Engine::FirebirdEmbedded)
        prepareLocalFile(settings);
    try {
        database.open(settings);
    } catch (const EDatabaseError &error) {
        database.close();
        const QString place =
            settings.host.isEmpty() ? settings.database : u"%1 (%2)"_s.arg(settings.database, settings.host);
        throw EQen(u"O banco de dados \"%1\" não pôde ser aberto."_s.arg(place), error.details());
    }
    try {
        Schema::Builder(database).upgrade();
    } catch (...) {
        database.close();
        throw;
    }
}

bool DatabaseOpening::isFirstStart(TTIDatabase &database)
{
    return !Session(database).hasUsers();
}

void DatabaseOpening::firstStart(
    TTIDatabase &database, const QString &companyName, const QString &user, const QString &password)
{
    Schema::Builder builder(database);
    if (builder.companies().isEmpty())
        builder.createCompany(1, companyName);
    Session(database).createAdministrator(user, user, password);
}
