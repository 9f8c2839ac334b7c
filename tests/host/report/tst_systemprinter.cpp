// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/previewwindow.h"
#include "host/report/printing.h"
#include "host/report/report.h"
#include "host/reportdesk.h"
#include "module/host_services/clientdataset.h"
#include "module/host_services/errors.h"
#include "module/host_services/host.h"
#include "tests/support/printservice.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QPrinter>
#include <QProcess>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

const QByteArray graphic = R"(<layout title="Etiqueta">
  <page width="100" height="60" margins="5"/>
  <rows data="qryRolo"><detail new-page-after="yes"><text>Rolo {NUM_BAIXA}</text></detail></rows>
</layout>)";

const QByteArray characters = R"(<layout title="Etiqueta">
  <characters lines="6" columns="40" encoding="CP850"/>
  <rows data="qryRolo"><detail><line condensed="yes">Rolo nº {NUM_BAIXA}</line></detail></rows>
</layout>)";

} // namespace

/// Printers of the system: what is chosen in the dialog, and what reaches the printer.
class TestSystemPrinter : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void theUsualPrinterIsOffered();
    void theChosenPrinterIsRemembered();
    void aCancelledDialogDoesNothing_data() { layouts(); }
    void aCancelledDialogDoesNothing();
    void aPrinterThatIsGoneLeavesTheChoice();
    void theDialogOffersPrintersAlone_data() { layouts(); }
    void theDialogOffersPrintersAlone();
    void pagesComeInReverse();
    void aTextArrivesByteByByte();
    void aTextGoesToThePrinterChosenInThePreview();
    void theUsualPrinterHasItsOwnCodes();
    void aPrinterThatRefusesIsSaid_data() { layouts(); }
    void aPrinterThatRefusesIsSaid();
    void aStoppedPrinterIsSaid();
    void withoutAUsualPrinterItIsChosen();
    void aCancelledPrintSendsNoMoreThanItsPages();

private:
    static void layouts();
    std::unique_ptr<Report> report(const QString &layout, bool preview);
    /// Prints from the preview, as `use` leaves the dialog; gives what the preview says then.
    QString printed(const QString &layout, const std::function<void(QDialog &)> &use);
    /// The printers of either dialog: that of pages, and the short one of texts.
    static QComboBox *printers(QDialog &dialog) { return dialog.findChild<QComboBox *>(); }
    static void choose(QDialog &dialog, const QString &printer);
    QString textOf(const QByteArray &pdf);

    QTemporaryDir m_folder;
    PrintService m_service;
    TClientDataSet m_rolls;
    ReportCall m_call;
    std::unique_ptr<QSettings> m_settings;
};

void TestSystemPrinter::initTestCase()
{
    for (const auto &[name, xml] : {std::pair(u"WEtqTeste"_s, graphic), std::pair(u"TEtqTeste"_s, characters)}) {
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
    m_service.start({{u"Escritorio"_s, PrintService::State::Usual}, {u"Expedicao"_s, PrintService::State::Ready},
        {u"Matricial"_s, PrintService::State::Ready}, {u"Recusa"_s, PrintService::State::Refusing},
        {u"Parada"_s, PrintService::State::Stopped}});
}

void TestSystemPrinter::init()
{
    const QString file = m_folder.filePath(QString::fromLatin1(QTest::currentTestFunction()) + u".ini"_s);
    m_settings = std::make_unique<QSettings>(file, QSettings::IniFormat);
    m_settings->clear();
    m_service.forget();
}

void TestSystemPrinter::layouts()
{
    QTest::addColumn<QString>("layout");
    QTest::newRow("pages") << u"WEtqTeste"_s;
    QTest::newRow("characters") << u"TEtqTeste"_s;
}

std::unique_ptr<Report> TestSystemPrinter::report(const QString &layout, bool preview)
{
    m_call.name = layout;
    m_call.preview = preview;
    return std::make_unique<Report>(m_folder.filePath(layout + u".xml"_s), m_call, ReportContext{});
}

QString TestSystemPrinter::printed(const QString &layout, const std::function<void(QDialog &)> &use)
{
    QString said;
    bool pressed = false;
    const auto press = [&](PreviewWindow *preview) {
        preview->findChild<QAbstractButton *>(u"btImprimir"_s)->click();
        said += preview->findChild<QLabel *>(u"lbEstado"_s)->text();
        preview->close();
    };
    QTimer user;
    connect(&user, &QTimer::timeout, this, [&] {
        QWidget *window = QApplication::activeModalWidget();
        if (auto *box = qobject_cast<QMessageBox *>(window)) {
            said = box->text();
            box->accept();
        } else if (auto *preview = qobject_cast<PreviewWindow *>(window); !preview && window) {
            use(*qobject_cast<QDialog *>(window));
        } else if (preview && !pressed) {
            pressed = preview->findChild<QAbstractButton *>(u"btImprimir"_s)->isEnabled();
            if (pressed)
                QTimer::singleShot(0, preview, [&press, preview] { press(preview); });
        }
    });
    user.start(10);
    StationDesk(*m_settings).deliver(*report(layout, true), m_call);
    return said;
}

void TestSystemPrinter::choose(QDialog &dialog, const QString &printer)
{
    printers(dialog)->setCurrentIndex(printers(dialog)->findText(printer));
}

QString TestSystemPrinter::textOf(const QByteArray &pdf)
{
    QProcess reader;
    reader.start(u"pdftotext"_s, {u"-"_s, u"-"_s});
    reader.write(pdf);
    reader.closeWriteChannel();
    reader.waitForFinished();
    return QString::fromUtf8(reader.readAllStandardOutput()).simplified();
}

void TestSystemPrinter::theUsualPrinterIsOffered()
{
    QString offered;
    const QString said = printed(u"WEtqTeste"_s, [&](QDialog &dialog) {
        offered = printers(dialog)->currentText();
        dialog.accept();
    });
    QCOMPARE(offered, u"Escritorio"_s);
    QCOMPARE(said, u"Enviado para a impressora Escritorio"_s);
    QCOMPARE(textOf(m_service.received(u"Escritorio"_s)), u"Rolo 001 Rolo 002 Rolo 003"_s);
    QVERIFY(!m_settings->contains(u"Impressoras/WEtqTeste"_s)); // it may be another one tomorrow
}

void TestSystemPrinter::theChosenPrinterIsRemembered()
{
    printed(u"WEtqTeste"_s, [](QDialog &dialog) {
        choose(dialog, u"Expedicao"_s);
        dialog.accept();
    });
    QCOMPARE(textOf(m_service.received(u"Expedicao"_s)), u"Rolo 001 Rolo 002 Rolo 003"_s);
    QCOMPARE(m_settings->value(u"Impressoras/WEtqTeste"_s).toString(), u"Expedicao"_s);
    QString offered;
    printed(u"WEtqTeste"_s, [&](QDialog &dialog) {
        offered = printers(dialog)->currentText();
        dialog.reject();
    });
    QCOMPARE(offered, u"Expedicao"_s);
    printed(u"TEtqTeste"_s, [&](QDialog &dialog) { // another report has its own
        offered = printers(dialog)->currentText();
        dialog.reject();
    });
    QCOMPARE(offered, u"Escritorio"_s);
}

void TestSystemPrinter::aCancelledDialogDoesNothing()
{
    QFETCH(QString, layout);
    const QString said = printed(layout, [](QDialog &dialog) {
        choose(dialog, u"Expedicao"_s);
        dialog.reject();
    });
    QVERIFY2(said.endsWith(u"página"_s) || said.endsWith(u"páginas"_s), qUtf8Printable(said)); // as before
    QVERIFY(m_settings->allKeys().isEmpty());
    QCOMPARE(m_service.jobs(), 0);
}

void TestSystemPrinter::aPrinterThatIsGoneLeavesTheChoice()
{
    m_settings->setValue(u"Impressoras/WEtqTeste"_s, u"Vendida"_s);
    QString offered;
    printed(u"WEtqTeste"_s, [&](QDialog &dialog) {
        offered = printers(dialog)->currentText();
        choose(dialog, u"Expedicao"_s);
        dialog.accept();
    });
    QCOMPARE(offered, u"Escritorio"_s);
    QVERIFY(!m_service.received(u"Expedicao"_s).isEmpty());
    QCOMPARE(m_settings->value(u"Impressoras/WEtqTeste"_s).toString(), u"Expedicao"_s);
}

void TestSystemPrinter::theDialogOffersPrintersAlone()
{
    QFETCH(QString, layout);
    QStringList offered;
    printed(layout, [&](QDialog &dialog) {
        for (int i = 0; i < printers(dialog)->count(); ++i)
            offered.append(printers(dialog)->itemText(i));
        dialog.reject();
    });
    offered.sort();
    QCOMPARE(offered, QStringList({u"Escritorio"_s, u"Expedicao"_s, u"Matricial"_s, u"Parada"_s, u"Recusa"_s}));
}

void TestSystemPrinter::pagesComeInReverse()
{
    printed(u"WEtqTeste"_s, [](QDialog &dialog) {
        dialog.findChild<QAbstractButton *>(u"reverse"_s)->setChecked(true);
        dialog.accept();
    });
    QCOMPARE(textOf(m_service.received(u"Escritorio"_s)), u"Rolo 003 Rolo 002 Rolo 001"_s);
}

void TestSystemPrinter::aTextArrivesByteByByte()
{
    m_settings->setValue(u"Impressoras/TEtqTeste"_s, u"Matricial"_s);
    const auto labels = report(u"TEtqTeste"_s, false);
    StationDesk desk(*m_settings);
    QSignalSpy told(&desk, &StationDesk::printed);
    desk.deliver(*labels, m_call);
    QCOMPARE(m_service.received(u"Matricial"_s), labels->bytes(PrinterCodes::escP()));
    QCOMPARE(told.size(), 1);
    QVERIFY(told[0][0].toString().contains(u"Matricial"_s));
}

void TestSystemPrinter::aTextGoesToThePrinterChosenInThePreview()
{
    const QString said = printed(u"TEtqTeste"_s, [](QDialog &dialog) {
        choose(dialog, u"Matricial"_s);
        dialog.accept();
    });
    QCOMPARE(said, u"Enviado para a impressora Matricial"_s);
    QVERIFY(m_service.received(u"Matricial"_s).contains("\x0FRolo n\xA7 001"));
    QCOMPARE(m_settings->value(u"Impressoras/TEtqTeste"_s).toString(), u"Matricial"_s);
}

void TestSystemPrinter::theUsualPrinterHasItsOwnCodes()
{
    m_settings->setValue(u"Codigos Escritorio/inicio"_s, u"1B21"_s);
    StationDesk(*m_settings).deliver(*report(u"TEtqTeste"_s, false), m_call);
    QVERIFY(m_service.received(u"Escritorio"_s).startsWith("\x1B!"));
}

void TestSystemPrinter::aPrinterThatRefusesIsSaid()
{
    QFETCH(QString, layout);
    const QString sentence = u"A impressora \"Recusa\" não aceita os dados."_s;
    const QString said = printed(layout, [](QDialog &dialog) {
        choose(dialog, u"Recusa"_s);
        dialog.accept();
    });
    QVERIFY2(said.startsWith(sentence), qUtf8Printable(said));
    m_settings->setValue(u"Impressoras/padrao"_s, u"Recusa"_s);
    try {
        StationDesk(*m_settings).deliver(*report(layout, false), m_call);
        QFAIL("what was refused passed as printed");
    } catch (const EQen &error) {
        QCOMPARE(error.sentence(), sentence);
        QVERIFY(!error.details().isEmpty());
    }
}

void TestSystemPrinter::aStoppedPrinterIsSaid()
{
    const QString said = printed(u"WEtqTeste"_s, [](QDialog &dialog) {
        choose(dialog, u"Parada"_s);
        dialog.accept();
    });
    QCOMPARE(said, u"Enviado para a impressora Parada, que está parada"_s);
    m_settings->setValue(u"Impressoras/padrao"_s, u"Parada"_s);
    StationDesk desk(*m_settings);
    QSignalSpy told(&desk, &StationDesk::printed);
    desk.deliver(*report(u"TEtqTeste"_s, false), m_call);
    QVERIFY(told[0][0].toString().endsWith(u"que está parada"_s));
}

void TestSystemPrinter::withoutAUsualPrinterItIsChosen()
{
    qputenv("LPDEST", "Nenhuma"); // what the user has instead of the service's
    const auto again = qScopeGuard([] { qunsetenv("LPDEST"); });
    QString offered;
    printed(u"WEtqTeste"_s, [&](QDialog &dialog) {
        offered = printers(dialog)->currentText();
        dialog.reject();
    });
    QVERIFY(!offered.isEmpty());
    try {
        StationDesk(*m_settings).deliver(*report(u"WEtqTeste"_s, false), m_call);
        QFAIL("a label went to a printer that nobody chose");
    } catch (const EQen &error) {
        QCOMPARE(error.sentence(), u"Nenhuma impressora deste computador é a padrão."_s);
    }
}

void TestSystemPrinter::aCancelledPrintSendsNoMoreThanItsPages()
{
    const auto labels = report(u"WEtqTeste"_s, false);
    while (labels->step()) { }
    QPrinter printer(QPrinter::HighResolution);
    printer.setPrinterName(u"Expedicao"_s);
    QVERIFY(!Printing::print(labels->pages(), printer, [](int) { return false; }));
    QCOMPARE(m_service.jobs(), 0);
    QVERIFY(!Printing::print(labels->pages(), printer, [](int pagesDone) { return pagesDone < 2; }));
    QCOMPARE(textOf(m_service.received(u"Expedicao"_s)), u"Rolo 001 Rolo 002"_s);
}

QTEST_MAIN(TestSystemPrinter)
#include "tst_systemprinter.moc"
