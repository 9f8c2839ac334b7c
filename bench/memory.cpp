// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/memory.h"

#include "bench/table.h"
#include "module/host_services/errors.h"

#include <QFile>

#include <limits>

#include <malloc.h>

using namespace Qt::StringLiterals;

namespace {

/// Megabytes, by the name of its line in the kernel's account of the process.
double account(const QByteArray &name)
{
    QFile status(u"/proc/self/status"_s);
    if (status.open(QIODevice::ReadOnly)) {
        const QList<QByteArray> lines = status.readAll().split('\n');
        for (const QByteArray &line : lines) {
            if (line.startsWith(name + ':'))
                return line.mid(name.size() + 1).simplified().split(' ').first().toDouble() / 1024;
        }
    }
    throw EQen(u"The kernel does not tell %1."_s.arg(QString::fromLatin1(name)));
}

void forgetPeak()
{
    QFile file(u"/proc/self/clear_refs"_s);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file.write("5") != 1)
        throw EQen(u"The kernel does not forget the peak."_s, file.errorString());
}

QString megabytes(double value)
{
    return QString::number(value, 'f', 1);
}

} // namespace

double Memory::ratio() const
{
    return smaller > 0 ? larger / smaller : std::numeric_limits<double>::infinity();
}

double peakDuring(const std::function<void()> &work)
{
    malloc_trim(0); // what was freed before is not there for this work
    forgetPeak();
    const double before = account("VmRSS");
    work();
    return account("VmHWM") - before;
}

void printMemory(const QVector<Memory> &rows)
{
    QVector<QStringList> lines{
        {u"peak memory"_s, {}, u"smaller (MB)"_s, u"larger (MB)"_s, u"ratio"_s, u"at most"_s, u"ok"_s}};
    for (const Memory &row : rows) {
        lines.append({row.what, {}, megabytes(row.smaller), megabytes(row.larger), QString::number(row.ratio(), 'f', 2),
            QString::number(row.atMost, 'f', 1), row.isGood() ? u"yes"_s : u"NO"_s});
    }
    printLines(lines);
}
