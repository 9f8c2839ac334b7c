// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/paths.h"
#include "host/report/pagestore.h"
#include "host/report/printing.h"
#include "host/report/report.h"
#include "host/reportdesk.h"
#include "module/host_services/clientdataset.h"
#include "module/host_services/errors.h"
#include "module/host_services/host.h"

#include <QDir>
#include <QFile>
#include <QPrinter>
#include <QProcess>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArray graphic = R"(<layout title="Etiqueta">
  <page width="100" height="60" margins="5"/>
  <rows data="qryRolo"><detail new-page-after="yes"><text>Rolo {NUM_BAIXA}</text></detail></rows>
</layout>)";

const QByteArray sheet = R"(<layout title="Etiquetas">
  <labels columns="3" width="60" height="30"/>
  <rows data="qryRolo"><detail><text>Rolo {NUM_BAIXA}</text></detail></rows>
</layout>)";

const QByteArray characters = R"(<layout title="Etiqueta">
  <characters lines="6" columns="40" encoding="CP850"/>
  <rows data="qryRolo"><detail><line condensed="yes">Rolo nº {NUM_BAIXA}</line></detail></rows>
</layout>)";

} // namespace

/// What is printed at once, on printers that are files: those of the system, which it may have, are not asked.
class TestPrinting : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void pagesGoToAPrinter();
    void aRangeOfPagesIsPrintedAlone();
    void thePrinterPdfWritesFiles();
    void labelsOfNoRowsPrintNothing();
    void aTextGoesToItsDevice();
    void aPrinterHasItsOwnCodes();
    void aStationWithoutAPrinterSaysSo();
    void aDeviceThatTakesNothingIsSaid();
    void aFolderGetsEveryReport();
    void aFolderOfPicturesKeepsTheLastPrintOfEachLayout();

private:
    std::unique_ptr<Report> report(const QString &layout);
    QString textOf(const QString &pdf, int pages);
    QByteArray bytesOf(const QString &file);

    QTemporaryDir m_folder;
    TClientDataSet m_rolls;
    ReportCall m_call;
    std::unique_ptr<QSettings> m_settings;
};

void TestPrinting::initTestCase()
{
    qputenv("CUPS_SERVER", m_folder.filePath(u"no-service"_s).toLocal8Bit());
    qputenv("XDG_DATA_HOME", m_folder.filePath(u"data"_s).toLocal8Bit());
    const std::pair<QString, QByteArray> layouts[]{
        {u"WEtqTeste"_s, graphic}, {u"TEtqTeste"_s, characters}, {u"WFolha"_s, sheet}};
    for (const auto &[name, xml] : layouts) {
        QFile file(m_folder.filePath(name + u".xml"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(xml);
    }
    m_rolls.CreateDataSet({TField(u"NUM_BAIXA"_s, TField::Type::Text)});
    for (const QString &number : {u"001"_s, u"002"_s, u"003"_s}) {
        m_rolls.Append();
        m_rolls.setValue(u"NUM_BAIXA"_s, number);
        m_rolls.Post();
    }
    m_call.dataSets = {{u"qryRolo"_s, &m_rolls}};
    m_call.preview = false;
}

void TestPrinting::init()
{
    const QString file = m_folder.filePath(QString::fromLatin1(QTest::currentTestFunction()) + u".ini"_s);
    m_settings = std::make_unique<QSettings>(file, QSettings::IniFormat);
}

std::unique_ptr<Report> TestPrinting::report(const QString &layout)
{
    m_call.name = layout;
    return std::make_unique<Report>(m_folder.filePath(layout + u".xml"_s), m_call, ReportContext{});
}

QString TestPrinting::textOf(const QString &pdf, int pages)
{
    QProcess reader;
    reader.start(u"pdftotext"_s, {u"-layout"_s, pdf, u"-"_s});
    reader.waitForFinished();
    const QString text = QString::fromUtf8(reader.readAllStandardOutput());
    return text.count(QChar(u'\f')) == pages ? text : u"pages: %1\n"_s.arg(text.count(QChar(u'\f'))) + text;
}

QByteArray TestPrinting::bytesOf(const QString &file)
{
    QFile bytes(file);
    return bytes.open(QIODevice::ReadOnly) ? bytes.readAll() : QByteArray("no file");
}

void TestPrinting::pagesGoToAPrinter()
{
    const auto labels = report(u"WEtqTeste"_s);
    while (labels->step()) { }
    QPrinter printer(QPrinter::HighResolution);
    const QString file = m_folder.filePath(u"all.pdf"_s);
    printer.setOutputFileName(file);
    printer.setPageSize(QPageSize(QSizeF(60, 100), QPageSize::Millimeter));
    printer.setPageOrientation(QPageLayout::Landscape);
    QVERIFY(Printing::print(labels->pages(), printer));
    const QString text = textOf(file, 3);
    QVERIFY2(text.contains(u"Rolo 001"_s) && text.contains(u"Rolo 003"_s), qUtf8Printable(text));
}

void TestPrinting::aRangeOfPagesIsPrintedAlone()
{
    const auto labels = report(u"WEtqTeste"_s);
    while (labels->step()) { }
    QPrinter printer(QPrinter::HighResolution);
    const QString file = m_folder.filePath(u"second.pdf"_s);
    printer.setOutputFileName(file);
    printer.setFromTo(2, 2);
    QVERIFY(Printing::print(labels->pages(), printer));
    const QString text = textOf(file, 1);
    QVERIFY2(text.contains(u"Rolo 002"_s) && !text.contains(u"Rolo 001"_s), qUtf8Printable(text));
}

void TestPrinting::thePrinterPdfWritesFiles()
{
    StationDesk desk(*m_settings);
    desk.setFallbackPrinter(StationDesk::filePrinter);
    QSignalSpy printed(&desk, &StationDesk::printed);
    for (int i = 0; i < 2; ++i)
        desk.deliver(*report(u"WEtqTeste"_s), m_call);
    QCOMPARE(printed.size(), 2);
    const QStringList files = QDir(Paths::printsFolder()).entryList({u"WEtqTeste-*.pdf"_s});
    QCOMPARE(files.size(), 2);
    QVERIFY(printed[0][0].toString().contains(files.last().chopped(4)));
    QVERIFY(textOf(Paths::printsFolder() + u'/' + files[0], 3).contains(u"Rolo 002"_s));
}

void TestPrinting::labelsOfNoRowsPrintNothing()
{
    TClientDataSet none;
    none.CreateDataSet({TField(u"NUM_BAIXA"_s, TField::Type::Text)});
    ReportCall call;
    call.name = u"WFolha"_s;
    call.preview = false;
    call.dataSets = {{u"qryRolo"_s, &none}};
    Report sheet(m_folder.filePath(u"WFolha.xml"_s), call, ReportContext{});
    StationDesk desk(*m_settings);
    desk.setFallbackPrinter(StationDesk::filePrinter);
    QSignalSpy printed(&desk, &StationDesk::printed);
    desk.deliver(sheet, call);
    QCOMPARE(printed.size(), 1);
    QCOMPARE(printed[0][0].toString(), u"Etiquetas: nada a imprimir"_s);
    QVERIFY(QDir(Paths::printsFolder()).entryList({u"WFolha*"_s}).isEmpty());
}

void TestPrinting::aTextGoesToItsDevice()
{
    const QString device = m_folder.filePath(u"lp0"_s);
    m_settings->setValue(u"Impressoras/TEtqTeste"_s, u"arquivo:"_s + device);
    m_settings->setValue(u"Impressoras/padrao"_s, u"outra"_s);
    StationDesk(*m_settings).deliver(*report(u"TEtqTeste"_s), m_call);
    const QByteArray sent = bytesOf(device);
    QVERIFY(sent.startsWith("\x1B@"));
    QVERIFY(sent.contains("\x0FRolo n\xA7 001")); // condensed, and º as code page 850 has it
    QVERIFY(sent.contains("003"));
}

void TestPrinting::aPrinterHasItsOwnCodes()
{
    const QString device = m_folder.filePath(u"lp1"_s);
    m_settings->setValue(u"Impressoras/TEtqTeste"_s, u"arquivo:"_s + device);
    m_settings->setValue(u"Codigos/condensado"_s, u"1B21"_s);
    m_settings->setValue(u"Codigos/inicio"_s, u""_s);
    StationDesk(*m_settings).deliver(*report(u"TEtqTeste"_s), m_call);
    QVERIFY(bytesOf(device).startsWith("\x1B!Rolo"));
}

void TestPrinting::aStationWithoutAPrinterSaysSo()
{
    StationDesk desk(*m_settings);
    QVERIFY_EXCEPTION_THROWN(desk.deliver(*report(u"WEtqTeste"_s), m_call), EQen);
    QVERIFY_EXCEPTION_THROWN(Printing::offered(QString()), EQen);
    m_settings->setValue(u"Impressoras/padrao"_s, u"Expedição"_s);
    try {
        desk.deliver(*report(u"TEtqTeste"_s), m_call);
        QFAIL("a printer that is not there took it");
    } catch (const EQen &error) {
        QVERIFY(error.sentence().contains(u"Expedição"_s));
    }
}

void TestPrinting::aDeviceThatTakesNothingIsSaid()
{
    m_settings->setValue(u"Impressoras/padrao"_s, u"arquivo:"_s + m_folder.filePath(u"missing/lp0"_s));
    StationDesk desk(*m_settings);
    QVERIFY_EXCEPTION_THROWN(desk.deliver(*report(u"TEtqTeste"_s), m_call), EQen);
}

void TestPrinting::aFolderGetsEveryReport()
{
    FolderDesk desk(m_folder.filePath(u"paper"_s));
    desk.deliver(*report(u"WEtqTeste"_s), m_call);
    desk.deliver(*report(u"WEtqTeste"_s), m_call);
    desk.deliver(*report(u"TEtqTeste"_s), m_call);
    QCOMPARE(QDir(m_folder.filePath(u"paper"_s)).entryList(QDir::Files),
        QStringList({u"TEtqTeste.pdf"_s, u"TEtqTeste.prn"_s, u"WEtqTeste-2.pdf"_s, u"WEtqTeste.pdf"_s}));
    QVERIFY(textOf(desk.files().last(), 1).contains(u"Rolo nº 003"_s));
}

void TestPrinting::aFolderOfPicturesKeepsTheLastPrintOfEachLayout()
{
    const QString folder = m_folder.filePath(u"pictures"_s);
    for (int print = 0; print < 2; ++print) {
        PictureDesk desk(folder);
        desk.deliver(*report(u"WEtqTeste"_s), m_call);
        desk.deliver(*report(u"TEtqTeste"_s), m_call);
        QCOMPARE(desk.files().size(), 4);
    }
    QCOMPARE(QDir(folder).entryList(QDir::Files),
        QStringList(
            {u"TEtqTeste-1.png"_s, u"TEtqTeste.pdf"_s, u"TEtqTeste.prn"_s, u"WEtqTeste-1.png"_s, u"WEtqTeste.pdf"_s}));
    const QImage page(folder + u"/WEtqTeste-1.png"_s);
    QVERIFY(page.width() > 100);
    QVERIFY(page.width() != page.height());
}

QTEST_MAIN(TestPrinting)
#include "tst_printing.moc"
