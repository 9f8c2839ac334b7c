// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/printservice.h"

#include "module/host_services/errors.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 10000; // ms

// What stands under the names of the system's own service must not be touched: all its folders are ours.
const QByteArray folders = R"(ServerRoot @
ServerBin @/programs
RequestRoot @/spool
TempDir @/spool
CacheDir @/cache
StateDir @/state
AccessLog @/access.log
ErrorLog @/error.log
PageLog @/page.log
)";

const QByteArray rules = R"(Listen @/socket
Browsing No
WebInterface No
PreserveJobHistory Yes
<Location />
Order allow,deny
Allow all
</Location>
<Policy default>
JobPrivateAccess all
JobPrivateValues none
SubscriptionPrivateAccess all
SubscriptionPrivateValues none
<Limit All>
Order allow,deny
Allow all
</Limit>
</Policy>
)";

// The way to a printer: the job's number first, the file last. A file that is there is there whole.
const QByteArray way = R"(#!/bin/sh
cat "$6" > "@/paper/$PRINTER.part" && mv "@/paper/$PRINTER.part" "@/paper/$PRINTER"
)";

/// What the service says; nothing while it does not run.
QByteArray asked(const QStringList &arguments)
{
    QProcess program;
    program.start(u"lpstat"_s, arguments);
    program.waitForFinished();
    return program.exitCode() == 0 ? program.readAllStandardOutput() : QByteArray();
}

} // namespace

PrintService::~PrintService()
{
    m_service.terminate();
    if (!m_service.waitForFinished(patience))
        m_service.kill();
}

void PrintService::write(const QString &name, const QByteArray &content) const
{
    QFile file(m_folder.filePath(name));
    QByteArray own = content;
    if (!file.open(QIODevice::WriteOnly) || file.write(own.replace("@", m_folder.path().toUtf8())) < 0)
        throw EQen(u"%1: %2"_s.arg(file.fileName(), file.errorString()));
}

void PrintService::start(const QList<std::pair<QString, State>> &printers)
{
    for (const QString &folder : {u"programs/backend"_s, u"spool"_s, u"cache"_s, u"state"_s, u"paper"_s})
        QDir(m_folder.path()).mkpath(folder);
    write(u"cups-files.conf"_s, folders);
    write(u"cupsd.conf"_s, rules);
    write(u"programs/backend/paper"_s, way);
    QFile::setPermissions(m_folder.filePath(u"programs/backend/paper"_s), QFile::ReadOwner | QFile::ExeOwner);
    QByteArray list;
    for (const auto &[name, state] : printers) {
        const QByteArray kind = state == State::Usual ? "DefaultPrinter" : "Printer";
        list += '<' + kind + ' ' + name.toUtf8() + ">\nDeviceURI paper:/\nAccepting "
            + (state == State::Refusing ? "No" : "Yes") + "\nState " + (state == State::Stopped ? "Stopped" : "Idle")
            + "\n</" + kind + ">\n";
    }
    write(u"printers.conf"_s, list);
    QFile::link(u"/usr/lib/cups/daemon"_s, m_folder.filePath(u"programs/daemon"_s)); // starts the way
    // A copy, which what the system allows its own service does not bind.
    const QString program = m_folder.filePath(u"programs/cupsd"_s);
    if (!QFile::copy(QStandardPaths::findExecutable(u"cupsd"_s, {u"/usr/sbin"_s}), program))
        throw EQen(u"cupsd is not installed"_s);
    qputenv("CUPS_SERVER", m_folder.filePath(u"socket"_s).toLocal8Bit());
    qputenv("HOME", m_folder.path().toLocal8Bit()); // whose user may have a usual printer
    m_service.start(program,
        {u"-f"_s, u"-c"_s, m_folder.filePath(u"cupsd.conf"_s), u"-s"_s, m_folder.filePath(u"cups-files.conf"_s)});
    if (!QTest::qWaitFor([&] { return !asked({u"-r"_s}).isEmpty(); }, patience))
        throw EQen(u"cupsd does not start"_s, QString::fromUtf8(m_service.readAllStandardError()));
}

QByteArray PrintService::received(const QString &printer) const
{
    QFile file(m_folder.filePath(u"paper/"_s + printer));
    if (!QTest::qWaitFor([&] { return file.exists(); }, patience) || !file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

int PrintService::jobs() const
{
    return int(asked({u"-W"_s, u"all"_s, u"-o"_s}).count('\n')) - m_forgotten;
}

void PrintService::forget()
{
    m_forgotten += jobs();
    QDir(m_folder.filePath(u"paper"_s)).removeRecursively();
    QDir(m_folder.path()).mkpath(u"paper"_s);
}
