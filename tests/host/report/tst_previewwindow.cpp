// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/previewwindow.h"
#include "host/report/pagestore.h"
#include "host/report/pageview.h"
#include "module/host_services/clientdataset.h"
#include "module/host_services/errors.h"
#include "module/host_services/host.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QScrollBar>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

const QByteArray layout = R"(<layout title="Rolos">
  <page paper="A4" margins="10"/>
  <page-header height="10"><text w="100">{COMPANY()} {USER()} {DATE()}</text></page-header>
  <rows data="qryRolos">
    <detail height="6"><text w="40">{NUM_BAIXA}</text><text x="50" w="30" align="right">{QTDE:,0.000}</text></detail>
  </rows>
  <page-footer height="6"><text w="60">{PAGE()} de {PAGES()}</text></page-footer>
</layout>)";

} // namespace

/// A report of rolls in its preview, with real keys and clicks.
class TestPreviewWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void theFirstPageStandsBeforeTheRest();
    void allPagesAreThereAtTheEnd();
    void stoppingKeepsThePagesThatStand();
    void pageKeysTurnPages();
    void thePageNumberLeadsToItsPage();
    void zoomingKeepsThePage();
    void textIsFoundPageAfterPage();
    void textThatStandsNowhereIsSaid();
    void printingIsHandedOn();
    void aRefusedPrintLeavesTheReportInSight();
    void thePdfIsWritten();
    void theDataBecomeASpreadsheet();
    void aFailureOfTheDataEndsThePreview();

private:
    void fill(int rolls);
    void open();
    void layOutWhole();
    template <class Kind> Kind *child(const char *name) const
    {
        return m_window->findChild<Kind *>(QString::fromLatin1(name));
    }
    PageView *view() const { return child<PageView>("paginas"); }
    void click(const char *name) { QTest::mouseClick(child<QAbstractButton>(name), Qt::LeftButton); }
    QString state() const { return child<QLabel>("lbEstado")->text(); }
    /// The next file dialog takes this name.
    void chooseFile(const QString &name);

    QTemporaryDir m_folder;
    std::unique_ptr<TClientDataSet> m_rolls;
    ReportCall m_call;
    std::unique_ptr<Report> m_report;
    std::unique_ptr<PreviewWindow> m_window;
};

void TestPreviewWindow::initTestCase()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QFile file(m_folder.filePath(u"WRolos.xml"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(layout);
}

void TestPreviewWindow::init()
{
    m_rolls = std::make_unique<TClientDataSet>();
    m_rolls->CreateDataSet({TField(u"NUM_BAIXA"_s, TField::Type::Text).titled(u"Rolo"_s),
        TField(u"QTDE"_s, TField::Type::Float).titled(u"Peso"_s).shownAs(u",0.000"_s)});
    m_call = {};
    m_call.name = u"WRolos"_s;
    m_call.dataSets = {{u"qryRolos"_s, m_rolls.get()}};
}

void TestPreviewWindow::cleanup()
{
    m_window.reset();
    m_report.reset();
}

void TestPreviewWindow::fill(int rolls)
{
    for (int i = 1; i <= rolls; ++i) {
        m_rolls->Append();
        m_rolls->setValue(u"NUM_BAIXA"_s, u"%1"_s.arg(i, 4, 10, QChar(u'0')));
        m_rolls->setValue(u"QTDE"_s, 3.333);
        m_rolls->Post();
    }
}

void TestPreviewWindow::open()
{
    const ReportContext context{u"MARTA"_s, u"Malharia Ipê"_s, QDateTime(QDate(2026, 3, 10), QTime(10, 30))};
    m_report = std::make_unique<Report>(m_folder.filePath(u"WRolos.xml"_s), m_call, context);
    m_window = std::make_unique<PreviewWindow>(*m_report);
    m_window->setFolder(m_folder.path(), {});
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void TestPreviewWindow::layOutWhole()
{
    QTRY_VERIFY_WITH_TIMEOUT(m_report->isFinished(), 20000);
    QTRY_VERIFY(child<QAbstractButton>("btPdf")->isEnabled());
}

void TestPreviewWindow::chooseFile(const QString &name)
{
    auto *clock = new QTimer(m_window.get());
    connect(clock, &QTimer::timeout, this, [clock, name] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        clock->deleteLater();
        dialog->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(name);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    clock->start(10);
}

void TestPreviewWindow::theFirstPageStandsBeforeTheRest()
{
    fill(20000);
    open();
    QTRY_VERIFY(m_report->pages().count() > 0);
    QVERIFY(!m_report->isFinished());
    QVERIFY(!child<QAbstractButton>("btPdf")->isEnabled());
    QCOMPARE(view()->currentPage(), 0);
}

void TestPreviewWindow::allPagesAreThereAtTheEnd()
{
    fill(200);
    open();
    layOutWhole();
    QCOMPARE(m_report->pages().count(), 5);
    QCOMPARE(state(), u"5 páginas"_s);
    QCOMPARE(child<QLabel>("lbPaginas")->text(), u"de 5"_s);
    QCOMPARE(child<QSpinBox>("spPagina")->maximum(), 5);
}

void TestPreviewWindow::stoppingKeepsThePagesThatStand()
{
    fill(20000);
    open();
    QTRY_VERIFY(m_report->pages().count() > 2);
    click("btParar");
    const int stand = m_report->pages().count();
    QVERIFY(!m_report->isFinished());
    QVERIFY(state().startsWith(u"Interrompido"_s));
    QVERIFY(child<QAbstractButton>("btPdf")->isEnabled());
    QCoreApplication::processEvents();
    QCOMPARE(m_report->pages().count(), stand);
}

void TestPreviewWindow::pageKeysTurnPages()
{
    fill(200);
    open();
    layOutWhole();
    view()->setFocus();
    QTest::keyClick(view(), Qt::Key_PageDown);
    QCOMPARE(view()->currentPage(), 1);
    QCOMPARE(child<QSpinBox>("spPagina")->value(), 2);
    QTest::keyClick(view(), Qt::Key_End);
    QCOMPARE(view()->currentPage(), 4);
    QTest::keyClick(view(), Qt::Key_PageUp);
    QCOMPARE(view()->currentPage(), 3);
    QTest::keyClick(view(), Qt::Key_Home);
    QCOMPARE(view()->currentPage(), 0);
}

void TestPreviewWindow::thePageNumberLeadsToItsPage()
{
    fill(200);
    open();
    layOutWhole();
    auto *number = child<QSpinBox>("spPagina");
    number->setFocus();
    number->selectAll();
    QTest::keyClicks(number, u"4"_s);
    QTest::keyClick(number, Qt::Key_Return);
    QCOMPARE(view()->currentPage(), 3);
    QVERIFY(m_window->isVisible());
}

void TestPreviewWindow::zoomingKeepsThePage()
{
    fill(200);
    open();
    layOutWhole();
    view()->showPage(2);
    const double before = view()->zoom();
    click("btMaior");
    click("btMaior");
    QVERIFY(view()->zoom() > before);
    QCOMPARE(view()->currentPage(), 2);
    QTest::keyClick(m_window.get(), Qt::Key_0, Qt::ControlModifier);
    QCOMPARE(view()->zoom(), 1.0);
    click("btPagina");
    QVERIFY(view()->horizontalScrollBar()->maximum() == 0);
    QCOMPARE(view()->currentPage(), 2);
}

void TestPreviewWindow::textIsFoundPageAfterPage()
{
    fill(200);
    open();
    layOutWhole();
    QTest::keyClick(m_window.get(), Qt::Key_F, Qt::ControlModifier);
    auto *sought = child<QLineEdit>("edtProcura");
    QTRY_VERIFY(sought->hasFocus());
    QTest::keyClicks(sought, u"0199"_s);
    QTest::keyClick(sought, Qt::Key_Return);
    QCOMPARE(view()->currentPage(), 4);
    QVERIFY(m_window->isVisible());
    sought->clear();
    QTest::keyClicks(sought, u"IPÊ"_s); // in the head of each page, in other letters
    for (const int page : {4, 0, 1}) {
        QTest::keyClick(sought, Qt::Key_Return);
        QCOMPARE(view()->currentPage(), page);
    }
}

void TestPreviewWindow::textThatStandsNowhereIsSaid()
{
    fill(3);
    open();
    layOutWhole();
    child<QLineEdit>("edtProcura")->setText(u"tear"_s);
    click("btProxima");
    QCOMPARE(state(), u"\"tear\" não foi encontrado."_s);
}

void TestPreviewWindow::printingIsHandedOn()
{
    fill(3);
    open();
    m_window->setPrinting([this](QWidget *parent) { return parent == m_window.get() ? u"Impresso."_s : QString(); });
    layOutWhole();
    QTest::keyClick(m_window.get(), Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(state(), u"Impresso."_s);
}

void TestPreviewWindow::aRefusedPrintLeavesTheReportInSight()
{
    fill(3);
    open();
    m_window->setPrinting([](QWidget *) -> QString { throw EQen(u"Não há papel."_s); });
    layOutWhole();
    QString said;
    QTimer clock;
    connect(&clock, &QTimer::timeout, this, [&] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            said = box->text();
            box->accept();
        }
    });
    clock.start(10);
    click("btImprimir");
    QCOMPARE(said, u"Não há papel."_s);
    QVERIFY(m_window->isVisible());
}

void TestPreviewWindow::thePdfIsWritten()
{
    fill(200);
    open();
    layOutWhole();
    const QString file = m_folder.filePath(u"rolos"_s);
    chooseFile(file);
    click("btPdf");
    QVERIFY(state().startsWith(u"Gravado em"_s));
    QFile written(file + u".pdf"_s);
    QVERIFY(written.open(QIODevice::ReadOnly));
    QVERIFY(written.readAll().startsWith("%PDF"));
}

void TestPreviewWindow::theDataBecomeASpreadsheet()
{
    fill(2);
    open();
    layOutWhole();
    const QString file = m_folder.filePath(u"rolos.csv"_s);
    chooseFile(file);
    child<QToolButton>("btPlanilha")->menu()->actions().last()->trigger();
    QFile written(file);
    QVERIFY(written.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(written.readAll()).remove(QChar(0xfeff)).remove(u'\r'),
        u"Rolo;Peso\n0001;3,333\n0002;3,333\n"_s);
}

void TestPreviewWindow::aFailureOfTheDataEndsThePreview()
{
    struct Failing : TClientDataSet
    {
        QVariant cell(int row, int field) const override
        {
            if (row > 50)
                throw EQen(u"A conexão caiu."_s);
            return TClientDataSet::cell(row, field);
        }
        QVariant value(const QString &name) const override
        {
            if (row() > 50)
                throw EQen(u"A conexão caiu."_s);
            return TClientDataSet::value(name);
        }
    };
    m_rolls = std::make_unique<Failing>();
    m_rolls->CreateDataSet({TField(u"NUM_BAIXA"_s, TField::Type::Text), TField(u"QTDE"_s, TField::Type::Float)});
    m_call.dataSets = {{u"qryRolos"_s, m_rolls.get()}};
    for (int i = 0; i < 51; ++i) {
        m_rolls->Append();
        m_rolls->Post();
    }
    m_rolls->Append();
    m_rolls->Post();
    m_report = std::make_unique<Report>(m_folder.filePath(u"WRolos.xml"_s), m_call, ReportContext{});
    m_window = std::make_unique<PreviewWindow>(*m_report);
    QVERIFY_EXCEPTION_THROWN(m_window->run(), EQen);
    QVERIFY(!m_window->isVisible());
}

QTEST_MAIN(TestPreviewWindow)
#include "tst_previewwindow.moc"
