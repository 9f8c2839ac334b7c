// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/firebirdroot.h"

#include "module/host_services/errors.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QtEndian>

#include <ibase.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// By default one process owns a database file. SuperClassic lets several share it; its page cache, per process, is
// small unless it is asked for (2048 pages of 16 KB: 32 MB).
constexpr auto configuration = "ServerMode = SuperClassic\n"
                               "DefaultDbCachePages = 2048\n";

const QString installedRoot = QStringLiteral(QEN_FIREBIRD_ENGINE);

[[noreturn]] void failOn(const QString &path, const QString &reason)
{
    throw EQen(u"Não foi possível preparar o banco de dados em \"%1\"."_s.arg(path), reason);
}

void requireInstalled(const QString &path)
{
    if (!QFileInfo::exists(path))
        throw EQen(u"O mecanismo do banco de dados Firebird não está instalado: falta \"%1\"."_s.arg(path));
}

void makeFolder(const QString &path)
{
    if (!QDir().mkpath(path))
        failOn(path, u"A pasta não pode ser criada."_s);
}

/// Puts the link in place in one step: another process that starts at the same time finds the old one or the new one.
void link(const QString &target, const QString &name)
{
    if (QFile::symLinkTarget(name) == target)
        return;
    const QByteArray finalName = QFile::encodeName(name);
    const QByteArray temporary = finalName + '.' + QByteArray::number(getpid());
    ::unlink(temporary.constData());
    if (::symlink(QFile::encodeName(target).constData(), temporary.constData()) != 0
        || ::rename(temporary.constData(), finalName.constData()) != 0)
        failOn(name, QString::fromLocal8Bit(std::strerror(errno)));
}

void writeConfiguration(const QString &path)
{
    QFile existing(path);
    if (existing.open(QIODevice::ReadOnly) && existing.readAll() == configuration)
        return;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(configuration) < 0 || !file.commit())
        failOn(path, file.errorString());
}

/// Makes the engine read its root now. Its first attachment, also one that fails, replaces the handlers of SIGINT and
/// SIGTERM by its own, under which a program with an open database no longer ends on Ctrl+C or at the end of the user's
/// session; the program's own are put back.
void startEngine(const QString &root)
{
    struct sigaction interrupt
    {
    };
    struct sigaction terminate
    {
    };
    sigaction(SIGINT, nullptr, &interrupt);
    sigaction(SIGTERM, nullptr, &terminate);
    const QByteArray absent = QFile::encodeName(root + u"/absent.fdb"_s);
    ISC_STATUS_ARRAY status{};
    isc_db_handle handle = 0;
    isc_attach_database(status, static_cast<short>(absent.size()), absent.constData(), &handle, 0, nullptr);
    sigaction(SIGINT, &interrupt, nullptr);
    sigaction(SIGTERM, &terminate, nullptr);
}

void appendText(QByteArray &block, char item, const QByteArray &text)
{
    if (text.size() > 255)
        throw EQen(u"Não foi possível criar o banco de dados: usuário ou senha longos demais."_s);
    block.append(item).append(static_cast<char>(text.size())).append(text);
}

void appendNumber(QByteArray &block, char item, qint32 number)
{
    std::array<char, sizeof number> bytes{};
    qToLittleEndian(number, bytes.data());
    block.append(item).append(static_cast<char>(bytes.size())).append(bytes.data(), bytes.size());
}

QByteArray parametersOf(const QString &user, const QString &password)
{
    QByteArray block(1, isc_dpb_version1);
    appendText(block, isc_dpb_user_name, user.toUtf8());
    if (!password.isEmpty())
        appendText(block, isc_dpb_password, password.toUtf8());
    appendText(block, isc_dpb_lc_ctype, "UTF8");
    appendText(block, isc_dpb_set_db_charset, "UTF8");
    appendNumber(block, isc_dpb_sql_dialect, SQL_DIALECT_V6);
    appendNumber(block, isc_dpb_page_size, 16384);
    appendNumber(block, isc_dpb_overwrite, 0);
    return block;
}

QString wordsOf(const ISC_STATUS *status)
{
    QStringList lines;
    std::array<char, 1024> line{};
    while (fb_interpret(line.data(), line.size(), &status) > 0)
        lines << QString::fromUtf8(line.data());
    return lines.join(u'\n');
}

} // namespace

void FirebirdRoot::prepare(const QString &folder)
{
    static bool prepared = false;
    if (prepared)
        return;
    const QString root = QDir(folder).absoluteFilePath(u"firebird"_s);
    const QString locks = root + u"/lock"_s;
    makeFolder(locks);
    for (const QString &part : {u"/plugins"_s, u"/plugins.conf"_s, u"/intl"_s, u"/firebird.msg"_s}) {
        requireInstalled(installedRoot + part);
        link(installedRoot + part, root + part);
    }
    requireInstalled(installedRoot + u"/plugins/libEngine12.so"_s);
    writeConfiguration(root + u"/firebird.conf"_s);
    qputenv("FIREBIRD", QFile::encodeName(root));
    // The usual lock folder belongs to whoever connected first on this machine, and keeps all others out.
    qputenv("FIREBIRD_LOCK", QFile::encodeName(locks));
    startEngine(root);
    prepared = true;
}

void FirebirdRoot::createDatabase(const QString &address, const QString &user, const QString &password)
{
    if (QDir::isAbsolutePath(address) && QFileInfo::exists(address))
        throw EQen(u"O banco de dados \"%1\" já existe."_s.arg(address));
    const QByteArray name = QFile::encodeName(address);
    const QByteArray parameters = parametersOf(user, password);
    ISC_STATUS_ARRAY status{};
    isc_db_handle handle = 0;
    isc_create_database(status, static_cast<short>(name.size()), name.constData(), &handle,
        static_cast<short>(parameters.size()), parameters.constData(), 0);
    if (status[0] == 1 && status[1] != 0)
        throw EQen(u"Não foi possível criar o banco de dados \"%1\"."_s.arg(address), wordsOf(status));
    isc_detach_database(status, &handle);
}
