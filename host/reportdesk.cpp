// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/reportdesk.h"

#include "host/paths.h"
#include "host/previewwindow.h"
#include "host/report/pagestore.h"
#include "host/report/pdf.h"
#include "host/report/printing.h"
#include "module/host_services/clock.h"
#include "module/host_services/errors.h"
#include "module/host_services/host.h"

#include <QDir>
#include <QInputDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProgressDialog>
#include <QSaveFile>
#include <QSettings>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 700; // ms until a report that is printed at once shows how far it is
const QString folderKey = QStringLiteral("Pastas/relatorios");

/// False when the user gave up.
bool layOut(Report &report, QWidget *parent)
{
    QProgressDialog progress(u"Montando %1…"_s.arg(report.title()), u"Cancelar"_s, 0, 0, parent);
    progress.setWindowTitle(report.title());
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(patience);
    while (report.step()) {
        progress.setValue(report.rowsDone());
        if (progress.wasCanceled())
            return false;
    }
    return true;
}

void writeBytes(const QByteArray &bytes, const QString &file)
{
    QSaveFile out(file);
    if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size() || !out.commit())
        throw EQen(u"O arquivo \"%1\" não pode ser gravado."_s.arg(file), out.errorString());
}

/// A name in the folder that no file has yet; the number follows from the second on.
QString freeName(const QString &folder, const QString &name, const QString &ending)
{
    if (!QDir().mkpath(folder))
        throw EQen(u"A pasta \"%1\" não pode ser criada."_s.arg(folder));
    QString file = u"%1/%2.%3"_s.arg(folder, name, ending);
    for (int number = 2; QFile::exists(file); ++number)
        file = u"%1/%2-%3.%4"_s.arg(folder, name, QString::number(number), ending);
    return file;
}

/// The codes of a printer of characters: its own group of the settings, else the group for all, else ESC/P.
PrinterCodes codesOf(const QSettings &settings, const QString &printer)
{
    PrinterCodes codes = PrinterCodes::escP();
    const std::pair<QString, QByteArray *> keys[]{{u"inicio"_s, &codes.reset}, {u"condensado"_s, &codes.condensedOn},
        {u"fim-condensado"_s, &codes.condensedOff}, {u"negrito"_s, &codes.boldOn}, {u"fim-negrito"_s, &codes.boldOff},
        {u"pagina"_s, &codes.formFeed}};
    for (const auto &[key, code] : keys) {
        for (const QString &group : {u"Codigos"_s, u"Codigos "_s + printer}) {
            if (const QVariant own = settings.value(group + u'/' + key); own.isValid())
                *code = QByteArray::fromHex(own.toString().toLatin1());
        }
    }
    return codes;
}

void setUp(QPrinter &printer, const Report &report)
{
    const QSizeF paper = report.pages().paper();
    const bool across = paper.width() > paper.height();
    printer.setPageSize(QPageSize(across ? paper.transposed() : paper, QPageSize::Millimeter));
    printer.setPageOrientation(across ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer.setDocName(report.title());
}

/// For texts, which are sent as they stand: no option of the printer's changes them. Empty when the user gave up.
QString choosePrinter(const QString &offered, QWidget *parent)
{
    const QStringList printers = QPrinterInfo::availablePrinterNames();
    bool chosen = false;
    const QString printer = QInputDialog::getItem(
        parent, u"Imprimir"_s, u"Impressora:"_s, printers, int(printers.indexOf(offered)), false, &chosen);
    return chosen ? printer : QString();
}

/// For pages, with what else is asked of the printer. Empty when the user gave up.
QString choosePrinter(QPrinter &device, const QString &offered, const Report &report, QWidget *parent)
{
    device.setPrinterName(offered);
    setUp(device, report);
    QPrintDialog dialog(&device, parent);
    dialog.setMinMax(1, report.pages().count());
    dialog.setOption(QAbstractPrintDialog::PrintToFile, false); // the preview writes PDF files itself
    return dialog.exec() == QDialog::Accepted ? device.printerName() : QString();
}

/// The printer, and what keeps the paper from coming.
QString named(const QString &printer)
{
    return !Printing::isDevice(printer) && Printing::isStopped(printer) ? printer + u", que está parada"_s : printer;
}

QString sentTo(const QString &printer)
{
    return u"Enviado para a impressora %1"_s.arg(named(printer));
}

/// Tells what became of it.
QString printPages(const Report &report, QPrinter &printer, QWidget *parent)
{
    QProgressDialog progress(u"Imprimindo…"_s, u"Cancelar"_s, 0, report.pages().count(), parent);
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(patience);
    int sent = 0;
    const bool whole = Printing::print(report.pages(), printer, [&](int pages) {
        sent = pages;
        progress.setValue(pages);
        return !progress.wasCanceled();
    });
    if (whole)
        return sentTo(printer.printerName());
    return sent == 0 ? u"Impressão cancelada."_s
                     : u"Impressão cancelada; páginas que já foram para a impressora: %1"_s.arg(sent);
}

} // namespace

StationDesk::StationDesk(QSettings &settings)
    : m_settings(settings)
{
}

QString StationDesk::printerInSettings(const QSettings &settings, const QString &layout)
{
    const QString own = settings.value(u"Impressoras/"_s + layout).toString().trimmed();
    return own.isEmpty() ? settings.value(u"Impressoras/padrao"_s).toString().trimmed() : own;
}

QString StationDesk::printerOf(const Report &report) const
{
    const QString set = printerInSettings(m_settings, report.name());
    return set.isEmpty() ? m_fallback : set;
}

void StationDesk::deliver(Report &report, const ReportCall &call)
{
    if (call.preview) {
        preview(report, call.form);
        return;
    }
    if (!layOut(report, call.form))
        return;
    const bool hasPages = report.pages().count() > 0; // a sheet of labels without rows has none
    emit printed(hasPages ? print(report, printerOf(report)) : u"%1: nada a imprimir"_s.arg(report.title()));
}

void StationDesk::preview(Report &report, QWidget *parent)
{
    PreviewWindow window(report, parent ? parent->window() : nullptr);
    window.setFolder(
        m_settings.value(folderKey, QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)).toString(),
        [this](const QString &folder) { m_settings.setValue(folderKey, folder); });
    window.setPrinting([this, &report](QWidget *above) { return choosePrinterAndPrint(report, above); });
    window.run();
}

/// Tells where it went.
QString StationDesk::print(Report &report, const QString &printer) const
{
    if (printer == filePrinter) {
        const QString stamp = Clock::now().toString(u"yyyyMMdd-HHmmss"_s);
        const QString file = freeName(Paths::printsFolder(), report.name() + u'-' + stamp, u"pdf"_s);
        Pdf::write(report.pages(), file, report.title());
        return u"%1: %2"_s.arg(report.title(), QDir::toNativeSeparators(file));
    }
    const QString name = Printing::isDevice(printer) ? printer : Printing::existing(printer);
    if (report.isText()) {
        Printing::send(report.bytes(codesOf(m_settings, name)), name, report.title());
    } else {
        QPrinter device(QPrinter::HighResolution);
        device.setPrinterName(Printing::existing(name));
        setUp(device, report);
        Printing::print(report.pages(), device);
    }
    return u"%1: enviado para a impressora %2"_s.arg(report.title(), named(name));
}

QString StationDesk::choosePrinterAndPrint(Report &report, QWidget *parent)
{
    const QString usual = printerOf(report);
    if (usual == filePrinter || (report.isText() && Printing::isDevice(usual)))
        return print(report, usual);
    const QString offered = Printing::offered(usual);
    QPrinter device(QPrinter::HighResolution);
    const QString chosen =
        report.isText() ? choosePrinter(offered, parent) : choosePrinter(device, offered, report, parent);
    if (chosen.isEmpty())
        return {};
    if (chosen != offered)
        m_settings.setValue(u"Impressoras/"_s + report.name(), chosen);
    if (!report.isText())
        return printPages(report, device, parent);
    Printing::send(report.bytes(codesOf(m_settings, chosen)), chosen, report.title());
    return sentTo(chosen);
}

FolderDesk::FolderDesk(const QString &folder)
    : m_folder(folder)
{
}

void FolderDesk::deliver(Report &report, const ReportCall &)
{
    while (report.step()) { }
    const QString file = freeName(m_folder, report.name(), u"pdf"_s);
    Pdf::write(report.pages(), file, report.title());
    m_files.append(file);
    if (report.isText())
        writeBytes(report.bytes(PrinterCodes::escP()), file.chopped(3) + u"prn"_s);
}

PictureDesk::PictureDesk(const QString &folder)
    : m_folder(folder)
{
}

void PictureDesk::deliver(Report &report, const ReportCall &call)
{
    constexpr double resolution = 110;
    const QString file = m_folder + u'/' + report.name();
    for (const QString &ending : {u".pdf"_s, u".prn"_s})
        QFile::remove(file + ending);
    FolderDesk(m_folder).deliver(report, call);
    const PageStore &pages = report.pages();
    if (!PagePainter::image(pages.page(0), pages.paper(), pages.count(), resolution).save(file + u"-1.png"_s))
        throw EQen(u"O arquivo \"%1\" não pode ser gravado."_s.arg(file + u"-1.png"_s));
    m_files << file + u".pdf"_s << file + u"-1.png"_s;
}
