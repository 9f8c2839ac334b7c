// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/printing.h"

#include "host/report/pagestore.h"
#include "module/host_services/errors.h"

#include <QFile>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

constexpr int spoolerPatience = 15000; // ms

void sendToDevice(const QByteArray &bytes, const QString &path)
{
    QFile device(path);
    if (!device.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || device.write(bytes) != bytes.size())
        throw EQen(u"A impressora \"%1\" não aceita os dados."_s.arg(path), device.errorString());
}

void sendToSpooler(const QByteArray &bytes, const QString &printer, const QString &title)
{
    const QString program = QStandardPaths::findExecutable(u"lp"_s);
    if (program.isEmpty())
        throw EQen(u"Para a impressora \"%1\" falta o programa \"lp\" (pacote cups-client)."_s.arg(printer));
    QProcess spooler;
    spooler.start(program, {u"-d"_s, printer, u"-t"_s, title, u"-o"_s, u"raw"_s});
    spooler.write(bytes);
    spooler.closeWriteChannel();
    if (!spooler.waitForFinished(spoolerPatience) || spooler.exitStatus() != QProcess::NormalExit
        || spooler.exitCode() != 0)
        throw EQen(u"A impressora \"%1\" não aceita os dados."_s.arg(printer),
            QString::fromLocal8Bit(spooler.readAllStandardError()) + spooler.errorString());
}

} // namespace

QString Printing::existing(const QString &printer)
{
    if (printer.isEmpty() && QPrinterInfo::defaultPrinter().isNull())
        throw EQen(u"Não há impressora instalada neste computador."_s);
    if (!printer.isEmpty() && !QPrinterInfo::availablePrinterNames().contains(printer))
        throw EQen(u"A impressora \"%1\" não está instalada neste computador."_s.arg(printer));
    return printer.isEmpty() ? QPrinterInfo::defaultPrinter().printerName() : printer;
}

bool Printing::print(const PageStore &pages, QPrinter &printer, const Progress &progress)
{
    printer.setFullPage(true);
    QPainter painter;
    if (!painter.begin(&printer))
        throw EQen(u"A impressora \"%1\" não aceita os dados."_s.arg(printer.printerName()));
    const int first = printer.fromPage() > 0 ? printer.fromPage() - 1 : 0;
    const int last = printer.toPage() > 0 ? qMin(printer.toPage(), pages.count()) : pages.count();
    const int copies = printer.supportsMultipleCopies() ? 1 : qMax(1, printer.copyCount());
    bool begun = false;
    for (int copy = 0; copy < copies; ++copy) {
        for (int number = first; number < last; ++number) {
            if (progress && !progress(number)) {
                printer.abort();
                return false;
            }
            if (begun)
                printer.newPage();
            begun = true;
            PagePainter::paint(painter, pages.page(number), pages.count());
        }
    }
    if (!painter.end())
        throw EQen(u"A impressora \"%1\" não aceita os dados."_s.arg(printer.printerName()));
    return true;
}

void Printing::send(const QByteArray &bytes, const QString &printer, const QString &title)
{
    const QString device = u"arquivo:"_s;
    if (printer.startsWith(device))
        sendToDevice(bytes, printer.mid(device.size()));
    else
        sendToSpooler(bytes, existing(printer), title);
}
