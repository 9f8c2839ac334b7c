// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/settings.h"

#include "host/settingsformat.h"
#include "module/host_services/errors.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace {

const QHash<QString, Engine> &engines()
{
    static const QHash<QString, Engine> byName{{u"firebird"_s, Engine::FirebirdEmbedded},
        {u"firebird-servidor"_s, Engine::FirebirdServer}, {u"postgresql"_s, Engine::PostgreSQL}};
    return byName;
}

/// Groups of the file besides [Banco] that have keys of its names, or may have them.
const QStringList &otherGroups()
{
    static const QStringList names{u"Entrada"_s, u"Impressoras"_s, u"Kelta"_s, u"Pastas"_s, u"Grades"_s, u"Janela"_s};
    return names;
}

/// The file may hold a password: it is its owner's alone.
void writeExplanations(const QString &name)
{
    QDir().mkpath(QFileInfo(name).absolutePath());
    QFile file(name);
    if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        file.write(SettingsFormat::emptyFile());
    }
}

/// As whom the embedded engine takes every user of the file.
const QString embeddedUser = QStringLiteral("SYSDBA");

} // namespace

Settings::Settings(const QString &file)
    : m_store((writeExplanations(file), file), SettingsFormat::format())
{
    if (const int line = SettingsFormat::firstBadLine(file); line > 0) {
        throw EQen(u"O arquivo de configuração \"%1\" não pode ser lido: a linha %2 não é \"chave=valor\"."_s.arg(
            file, QString::number(line)));
    }
    if (m_store.status() != QSettings::NoError && QFileInfo::exists(file))
        throw EQen(u"O arquivo de configuração \"%1\" não pode ser lido."_s.arg(file));
}

QString Settings::text(const QString &key) const
{
    return m_store.value(u"Banco/"_s + key).toString().trimmed();
}

void Settings::refuse(const QString &key, const QString &why) const
{
    throw EQen(u"No arquivo de configuração \"%1\", a chave \"%2\" do grupo [Banco] está errada: %3"_s.arg(
        fileName(), key, why));
}

void Settings::refuseUnknownKeys() const
{
    static const QStringList known{u"motor"_s, u"banco"_s, u"servidor"_s, u"porta"_s, u"usuario"_s, u"senha"_s};
    for (const QString &key : m_store.allKeys()) {
        const QString group = key.contains(u'/') ? key.section(u'/', 0, 0) : QString();
        const QString name = key.section(u'/', group.isEmpty() ? 0 : 1);
        if (group.compare(u"Banco"_s, Qt::CaseInsensitive) == 0) {
            if (group != u"Banco"_s)
                refuse(name, u"o grupo se escreve [Banco]."_s);
            if (!known.contains(name))
                refuse(name, u"esta chave não existe."_s);
        } else if (known.contains(name) && !otherGroups().contains(group)) {
            // Passed over, the program would open another database than the one that was meant.
            refuse(name, group.isEmpty() ? u"ela não está em grupo algum."_s : u"ela está no grupo [%1]."_s.arg(group));
        }
    }
}

bool Settings::namesDatabase() const
{
    refuseUnknownKeys();
    // A wrong engine is not passed over: connection() then says what is wrong.
    const QString engine = text(u"motor"_s);
    const bool local = engine.isEmpty() || engine == u"firebird"_s;
    return !local || !text(u"banco"_s).isEmpty() || !text(u"servidor"_s).isEmpty();
}

ConnectionSettings Settings::connection() const
{
    refuseUnknownKeys();
    const QString engine = text(u"motor"_s).isEmpty() ? u"firebird"_s : text(u"motor"_s);
    if (!engines().contains(engine))
        refuse(u"motor"_s, u"use \"firebird\", \"firebird-servidor\" ou \"postgresql\"."_s);
    ConnectionSettings settings;
    settings.engine = engines().value(engine);
    settings.host = text(u"servidor"_s);
    settings.database = text(u"banco"_s);
    settings.user = text(u"usuario"_s);
    settings.password = text(u"senha"_s);
    bool isPort = true;
    if (const QString port = text(u"porta"_s); !port.isEmpty())
        settings.port = port.toInt(&isPort);
    if (!isPort || settings.port < 0 || settings.port > 65535 || text(u"porta"_s) == u"0"_s)
        refuse(u"porta"_s, u"use um número de 1 a 65535."_s);
    if (settings.database.isEmpty())
        refuse(u"banco"_s, u"falta o nome do banco de dados."_s);
    if (settings.engine == Engine::FirebirdEmbedded) {
        if (!settings.host.isEmpty())
            refuse(u"servidor"_s,
                u"um arquivo local não tem servidor; para um servidor use o motor \"firebird-servidor\"."_s);
        if (!QDir::isAbsolutePath(settings.database))
            refuse(u"banco"_s, u"escreva o caminho completo do arquivo."_s);
        settings.user = embeddedUser;
        settings.password.clear();
    } else if (settings.engine == Engine::FirebirdServer) {
        if (settings.host.isEmpty())
            refuse(u"servidor"_s, u"falta o nome do servidor."_s);
        if (settings.user.isEmpty())
            refuse(u"usuario"_s, u"falta o usuário do banco de dados."_s);
    }
    return settings;
}

ConnectionSettings Settings::fromAddress(const QString &address)
{
    ConnectionSettings settings;
    if (!address.contains(u"://"_s)) {
        settings.database = QFileInfo(address).absoluteFilePath();
        settings.user = embeddedUser;
        return settings;
    }
    const QUrl url(address);
    if (url.scheme() != u"firebird"_s && url.scheme() != u"postgresql"_s)
        throw EQen(
            u"Em --database, \"%1\" não é um arquivo nem um endereço firebird:// ou postgresql://."_s.arg(address));
    const bool firebird = url.scheme() == u"firebird"_s;
    settings.engine = firebird ? Engine::FirebirdServer : Engine::PostgreSQL;
    settings.host = url.host();
    settings.port = qMax(0, url.port());
    if (const QString folder = QUrlQuery(url).queryItemValue(u"host"_s); !folder.isEmpty()) {
        settings.host = folder;
        settings.port = QUrlQuery(url).queryItemValue(u"port"_s).toInt();
    }
    settings.database = url.path().mid(1);
    settings.user = url.userName(QUrl::FullyDecoded);
    settings.password = url.password(QUrl::FullyDecoded);
    if (settings.database.isEmpty() || (firebird && settings.host.isEmpty()))
        throw EQen(u"Em --database, faltam o servidor ou o banco de dados em \"%1\"."_s.arg(
            url.toDisplayString(QUrl::RemovePassword)));
    return settings;
}

QString engineName(Engine engine)
{
    switch (engine) {
    case Engine::FirebirdEmbedded:
        return u"Firebird (arquivo local)"_s;
    case Engine::FirebirdServer:
        return u"Firebird (servidor)"_s;
    case Engine::PostgreSQL:
        break;
    }
    return u"PostgreSQL"_s;
}
