// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/paperfont.h"
#include "host/report/pdf.h"
#include "tests/host/report/testreport.h"

#include <QProcess>
#include <QScopeGuard>

#include <csignal>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

const QString layout = u"<layout title=\"OFs\"><page paper=\"A4\" margins=\"15\"/>"
                       "<page-header height=\"12\"><text h=\"6\" size=\"14\" bold=\"yes\">Relação de Ordens</text>"
                       "<line y1=\"10\" x2=\"180\"/></page-header>"
                       "<rows data=\"ordens\"><detail height=\"6\"><text w=\"20\">{OF}</text>"
                       "<text x=\"25\" w=\"100\">{MALHA}</text>"
                       "<text x=\"150\" w=\"30\" align=\"right\">{KG:,0.00}</text></detail></rows>"
                       "<page-footer height=\"6\"><text align=\"right\">Página {PAGE()} de {PAGES()}</text>"
                       "</page-footer></layout>"_s;

std::unique_ptr<TestReport> printed(int rows)
{
    auto report = std::make_unique<TestReport>(u"WOrdens"_s, layout);
    TClientDataSet &set = report->addDataSet(u"ordens"_s,
        {{u"OF"_s, TField::Type::Text, 6}, {u"MALHA"_s, TField::Type::Text}, {u"KG"_s, TField::Type::Float}});
    for (int i = 1; i <= rows; ++i) {
        TestReport::addRow(set,
            {{u"OF"_s, u"%1"_s.arg(i, 6, 10, QChar(u'0'))},
                {u"MALHA"_s, u"Meia-malha penteada ÁÉÍÓÚ ãõçü nº %1"_s.arg(i)}, {u"KG"_s, 1000 + i * 0.25}});
    }
    report->layOut();
    return report;
}

/// What a program of the poppler tools says of the file.
QString answer(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("%s does not run: %s", qPrintable(program), process.readAllStandardError().constData());
    return QString::fromUtf8(process.readAllStandardOutput());
}

} // namespace

class TestPdf : public QObject
{
    Q_OBJECT

private slots:
    void textsAreReadBackAccentsIncluded();
    void sizeTitleAndFontsAreInTheFile();
    void aPictureOnEveryPageIsInTheFileOnce();
    void theProgressIsToldPageByPage();
    void cancellingLeavesTheFileThatWasThere();
    void aFolderThatIsNotThereIsSaid();
    void aFullDiskIsSaidAndLeavesNoFile();
    void thePageIsPaintedAtItsPlaces();
    void justifiedLinesReachTheEndOfTheirPlace();
};

void TestPdf::textsAreReadBackAccentsIncluded()
{
    const auto report = printed(100);
    const QString file = report->folder() + u"/ordens.pdf"_s;
    QVERIFY(Pdf::write(report->pages(), file, u"OFs"_s));
    const QStringList pages = answer(u"pdftotext"_s, {u"-layout"_s, file, u"-"_s}).split(u'\f');
    QCOMPARE(pages.size() - 1, report->pages().count());
    QVERIFY(pages[0].contains(u"Relação de Ordens"_s));
    QVERIFY(pages[2].contains(u"Página 3 de 3"_s));
    const QStringList line = pages[0].split(u'\n').filter(u"000007"_s);
    QCOMPARE(line.size(), 1);
    QCOMPARE(line[0].simplified(), u"000007 Meia-malha penteada ÁÉÍÓÚ ãõçü nº 7 1.001,75"_s);
}

void TestPdf::sizeTitleAndFontsAreInTheFile()
{
    const auto report = printed(3);
    const QString file = report->folder() + u"/ordens.pdf"_s;
    QVERIFY(Pdf::write(report->pages(), file, u"Ordens de fabricação"_s));
    const QString info = answer(u"pdfinfo"_s, {file});
    QVERIFY2(info.contains(u"Ordens de fabricação"_s), qPrintable(info));
    QVERIFY2(info.contains(u"A4"_s), qPrintable(info));
    const QStringList fonts = answer(u"pdffonts"_s, {file}).split(u'\n', Qt::SkipEmptyParts).mid(2);
    QVERIFY(!fonts.isEmpty());
    for (const QString &font : fonts) {
        QVERIFY2(font.contains(u"Liberation"_s), qPrintable(font));
        QVERIFY2(font.simplified().contains(u"Identity-H yes"_s), qPrintable(font)); // embedded
    }
}

void TestPdf::aPictureOnEveryPageIsInTheFileOnce()
{
    const QString withLogo =
        QString(layout).replace(u"<line y1"_s, u"<picture x=\"160\" w=\"10\" h=\"10\" value=\"LOGO\"/><line y1"_s);
    TestReport report(u"WOrdens"_s, withLogo);
    TClientDataSet &set = report.addDataSet(u"ordens"_s,
        {{u"OF"_s, TField::Type::Text, 6}, {u"MALHA"_s, TField::Type::Text}, {u"KG"_s, TField::Type::Float}});
    for (int i = 0; i < 120; ++i)
        TestReport::addRow(set, {{u"OF"_s, QString::number(i)}});
    QImage logo(100, 100, QImage::Format_RGB32);
    logo.fill(Qt::darkGreen);
    report.call().parameters.insert(u"LOGO"_s, logo);
    QVERIFY(report.layOut() > 2);
    const QString file = report.folder() + u"/ordens.pdf"_s;
    QVERIFY(Pdf::write(report.pages(), file, u"OFs"_s));
    const QStringList images = answer(u"pdfimages"_s, {u"-list"_s, file}).split(u'\n', Qt::SkipEmptyParts).mid(2);
    QCOMPARE(images.size(), report.pages().count());
    QStringList objects;
    for (const QString &image : images)
        objects.append(image.simplified().section(u' ', 10, 10));
    QCOMPARE(objects.removeDuplicates(), images.size() - 1);
}

void TestPdf::theProgressIsToldPageByPage()
{
    const auto report = printed(100);
    QVector<int> told;
    QVERIFY(Pdf::write(report->pages(), report->folder() + u"/ordens.pdf"_s, u"OFs"_s, [&](int pagesDone) {
        told.append(pagesDone);
        return true;
    }));
    QCOMPARE(told, (QVector<int>{0, 1, 2}));
}

void TestPdf::cancellingLeavesTheFileThatWasThere()
{
    const auto report = printed(100);
    const QDir folder(report->folder());
    const auto cancel = [](int pagesDone) { return pagesDone < 2; };
    const QStringList before = folder.entryList(QDir::Files);
    QVERIFY(!Pdf::write(report->pages(), folder.filePath(u"ordens.pdf"_s), u"OFs"_s, cancel));
    QCOMPARE(folder.entryList(QDir::Files), before);

    QFile old(folder.filePath(u"velho.pdf"_s));
    QVERIFY(old.open(QIODevice::ReadWrite));
    old.write("velho");
    old.close();
    QVERIFY(!Pdf::write(report->pages(), old.fileName(), u"OFs"_s, cancel));
    QVERIFY(old.open(QIODevice::ReadOnly));
    QCOMPARE(old.readAll(), "velho");
}

void TestPdf::aFolderThatIsNotThereIsSaid()
{
    const auto report = printed(1);
    QVERIFY_EXCEPTION_THROWN(Pdf::write(report->pages(), report->folder() + u"/nenhuma/ordens.pdf"_s, u"OFs"_s), EQen);
}

void TestPdf::aFullDiskIsSaidAndLeavesNoFile()
{
    const auto report = printed(400);
    const QDir folder(report->folder());
    const QStringList before = folder.entryList(QDir::Files);
    rlimit unlimited{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &unlimited), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN); // the write fails instead
    const auto restore = qScopeGuard([&] {
        setrlimit(RLIMIT_FSIZE, &unlimited);
        std::signal(SIGXFSZ, handler);
    });
    const rlimit tight{4096, unlimited.rlim_max};
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &tight), 0);
    QVERIFY_EXCEPTION_THROWN(Pdf::write(report->pages(), folder.filePath(u"ordens.pdf"_s), u"OFs"_s), EQen);
    QCOMPARE(folder.entryList(QDir::Files), before);
    PageStore store({100, 100});
    Page page;
    page.items.resize(200);
    QVERIFY_EXCEPTION_THROWN(store.append(page), EQen);
}

void TestPdf::thePageIsPaintedAtItsPlaces()
{
    const auto report = printed(3);
    constexpr double dots = 150 / 25.4; // per millimetre
    const QImage image = PagePainter::image(report->pages().page(0), report->pages().paper(), 1, 150);
    QCOMPARE(image.size(), QSize(1241, 1754));
    const auto isBlank = [&](const QRectF &place) {
        const QImage part = image.copy(QRectF(place.topLeft() * dots, place.size() * dots).toRect());
        QImage white(part.size(), part.format());
        white.fill(Qt::white);
        return part == white;
    };
    QVERIFY(isBlank({0, 0, 210, 14}));
    QVERIFY(!isBlank(report->item(0, u"Relação de Ordens"_s).place));
    QVERIFY(!isBlank(report->item(0, u"1.000,25"_s).place));
    QVERIFY(isBlank({15, 60, 180, 200}));
    QVERIFY(image.pixelColor(QPoint(int(100 * dots), int(25 * dots))).lightness() < 150);
}

void TestPdf::justifiedLinesReachTheEndOfTheirPlace()
{
    PageItem item;
    item.place = {10, 10, 40, 10};
    item.text = u"linha que quase cabe\nfim dela"_s;
    const double width = PaperFont::of({}, item.size, false, false).width(u"linha que quase cabe");
    item.place.setWidth(width + 4);
    constexpr double resolution = 254; // ten dots per millimetre
    const auto lastDot = [&](Qt::Alignment alignment, int top, int bottom) {
        item.alignment = alignment;
        const QImage image = PagePainter::image({{item}}, {80, 40}, 1, resolution);
        for (int x = image.width() - 1; x >= 0; --x) {
            for (int y = top; y < bottom; ++y) {
                if (image.pixelColor(x, y).lightness() < 128)
                    return x;
            }
        }
        return -1;
    };
    const int end = int(item.place.right() * 10);
    QVERIFY(qAbs(lastDot(Qt::AlignJustify, 100, 135) - end) < 8);
    QVERIFY(lastDot(Qt::AlignLeft, 100, 135) < end - 30);
    QCOMPARE(lastDot(Qt::AlignJustify, 140, 172), lastDot(Qt::AlignLeft, 140, 172));
}

QTEST_MAIN(TestPdf)
#include "tst_pdf.moc"
