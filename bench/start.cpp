// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/sections.h"

#include "bench/station.h"

#include <QCoreApplication>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

/// From the start of the process to its end.
double timed(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    Clockwork clock;
    clock.start();
    process.start(QCoreApplication::applicationDirPath() + u'/' + program, arguments);
    process.waitForFinished();
    clock.pause();
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        throw EQen(u"%1 does not run."_s.arg(program), process.errorString());
    return clock.milliseconds();
}

QString address(const ConnectionSettings &settings)
{
    if (settings.engine == Engine::FirebirdEmbedded)
        return settings.database;
    return u"postgresql://%1@/%2?host=%3&port=%4"_s.arg(
        settings.user, settings.database, settings.host, QString::number(settings.port));
}

} // namespace

QVector<Comparison> measureStart(const Bench &bench)
{
    Comparison result{u"start to the login window"_s, bench.database.engineName(), 2, {}, {}};
    const QStringList arguments{u"--exit-at-login"_s, u"--database"_s, address(bench.database.settings())};
    for (int run = -1; run < bench.effort.processes; ++run) {
        const double bare = timed(u"qen-bench-bare"_s, {});
        const double program = timed(u"qen"_s, arguments);
        if (run >= 0)
            result.add(bare, program);
    }
    return {result};
}
