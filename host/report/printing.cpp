// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/printing.h"

#include "host/report/pagestore.h"
#include "module/host_services/errors.h"

#include <QFile>
#include <QLibrary>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QStandardPaths>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

constexpr int spoolerPatience = 15000; // ms
const QString devicePrefix = QStringLiteral("arquivo:");

EQen refusal(const QString &printer, const QString &details = {})
{
    return EQen(u"A impressora \"%1\" não aceita os dados."_s.arg(printer), details);
}

/// The toolkit hands a job over when its last page is painted, and does not tell when the print service refuses it. The
/// service's library, which the toolkit has loaded, knows.
void throwWhenRefused(const QPrinter &printer)
{
    constexpr int firstFailure = 0x100; // of IPP's states; those that are no answer are negative
    QLibrary service(u"cups"_s, 2);
    const auto state = reinterpret_cast<int (*)()>(service.resolve("cupsLastError"));
    const auto reason = reinterpret_cast<const char *(*)()>(service.resolve("cupsLastErrorString"));
    if (printer.outputFormat() != QPrinter::NativeFormat || !state || !reason)
        return;
    if (state() < 0 || state() >= firstFailure)
        throw refusal(printer.printerName(), QString::fromUtf8(reason()));
}

/// From 0, in the order in which they are printed.
QVector<int> pagesToPrint(const PageStore &pages, const QPrinter &printer)
{
    const int first = printer.fromPage() > 0 ? printer.fromPage() - 1 : 0;
    const int last = printer.toPage() > 0 ? qMin(printer.toPage(), pages.count()) : pages.count();
    QVector<int> numbers(qMax(0, last - first));
    std::iota(numbers.begin(), numbers.end(), first);
    if (printer.pageOrder() == QPrinter::LastPageFirst)
        std::reverse(numbers.begin(), numbers.end());
    return numbers;
}

void sendToDevice(const QByteArray &bytes, const QString &path)
{
    QFile device(path);
    if (!device.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || device.write(bytes) != bytes.size())
        throw refusal(path, device.errorString());
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
    if (!spooler.waitForFinished(spoolerPatience) || spooler.exitStatus() != QProcess::NormalExit)
        throw refusal(printer, spooler.errorString());
    if (spooler.exitCode() != 0)
        throw refusal(printer, QString::fromLocal8Bit(spooler.readAllStandardError()).trimmed());
}

} // namespace

bool Printing::isDevice(const QString &printer)
{
    return printer.startsWith(devicePrefix);
}

QString Printing::existing(const QString &printer)
{
    const QStringList installed = QPrinterInfo::availablePrinterNames();
    if (installed.isEmpty() && printer.isEmpty())
        throw EQen(u"Não há impressora instalada neste computador."_s);
    const QString name = printer.isEmpty() ? QPrinterInfo::defaultPrinterName() : printer;
    if (name.isEmpty())
        throw EQen(u"Nenhuma impressora deste computador é a padrão."_s);
    if (!installed.contains(name))
        throw EQen(u"A impressora \"%1\" não está instalada neste computador."_s.arg(name));
    return name;
}

QString Printing::offered(const QString &printer)
{
    const QStringList installed = QPrinterInfo::availablePrinterNames();
    if (installed.isEmpty())
        throw EQen(u"Não há impressora instalada neste computador."_s);
    for (const QString &name : {printer, QPrinterInfo::defaultPrinterName()}) {
        if (installed.contains(name))
            return name;
    }
    return installed.first();
}

bool Printing::isStopped(const QString &printer)
{
    return QPrinterInfo::printerInfo(printer).state() == QPrinter::Error;
}

bool Printing::print(const PageStore &pages, QPrinter &printer, const Progress &progress)
{
    const auto goesOn = [&progress](int done) { return !progress || progress(done); };
    if (!goesOn(0))
        return false; // before there is a job
    printer.setFullPage(true);
    QPainter painter;
    if (!painter.begin(&printer))
        throw refusal(printer.printerName());
    const QVector<int> numbers = pagesToPrint(pages, printer);
    const int copies = printer.supportsMultipleCopies() ? 1 : qMax(1, printer.copyCount());
    int done = 0;
    for (int copy = 0; copy < copies; ++copy) {
        for (const int number : numbers) {
            if (done > 0) {
                if (!goesOn(done))
                    return false;
                printer.newPage();
            }
            ++done;
            PagePainter::paint(painter, pages.page(number), pages.count());
        }
    }
    if (!painter.end())
        throw refusal(printer.printerName());
    throwWhenRefused(printer);
    return true;
}

void Printing::send(const QByteArray &bytes, const QString &printer, const QString &title)
{
    if (isDevice(printer))
        sendToDevice(bytes, printer.mid(devicePrefix.size()));
    else
        sendToSpooler(bytes, printer, title);
}
