// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_previewwindow.h"

#include "host/previewwindow.h"

#include "host/exceptionbox.h"
#include "host/report/pagestore.h"
#include "host/report/pdf.h"
#include "module/host_services/dataset.h"
#include "module/host_services/format.h"
#include "module/host_services/icons.h"
#include "module/host_services/spreadsheet.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QMenu>
#include <QShortcut>

using namespace Qt::StringLiterals;

namespace {

constexpr int slice = 40; // ms of work before the window answers again
constexpr double zoomStep = 1.2;

QString whole(qint64 number)
{
    return Format::number(double(number), u",0"_s);
}

/// The fields that people see, with their titles.
QVector<Spreadsheet::Column> columnsOf(const TDataSet &rows)
{
    QVector<Spreadsheet::Column> columns;
    for (int i = 0; i < rows.fields().size(); ++i) {
        const TField &field = rows.fields()[i];
        if (field.visible)
            columns.append({i, field.title.isEmpty() ? field.name : field.title});
    }
    return columns;
}

} // namespace

PreviewWindow::PreviewWindow(Report &report, QWidget *parent)
    : QDialog(parent, Qt::Window)
    , m_report(report)
    , m_ui(std::make_unique<Ui::PreviewWindow>())
{
    m_ui->setupUi(this);
    setWindowTitle(report.title());
    const std::pair<QAbstractButton *, QStringView> icons[]{{m_ui->btImprimir, u"print"}, {m_ui->btPdf, u"pdf"},
        {m_ui->btPlanilha, u"spreadsheet"}, {m_ui->btMenor, u"zoomout"}, {m_ui->btMaior, u"zoomin"},
        {m_ui->btLargura, u"fitwidth"}, {m_ui->btPagina, u"fitpage"}, {m_ui->btProxima, u"search"},
        {m_ui->btFechar, u"close"}};
    for (const auto &[button, icon] : icons)
        button->setIcon(Icons::get(icon));
    addSpreadsheets();
    connectControls();
    m_ui->paginas->setPages(&m_report.pages());
    m_ui->paginas->setFocus();
    for (QWidget *output : {m_ui->btImprimir, m_ui->btPdf, m_ui->btPlanilha})
        output->setEnabled(false);
    connect(&m_clock, &QTimer::timeout, this, &PreviewWindow::layOut);
    m_clock.start(0);
}

PreviewWindow::~PreviewWindow() = default;

void PreviewWindow::setFolder(const QString &folder, const std::function<void(const QString &)> &remember)
{
    m_folder = folder;
    m_remember = remember;
}

void PreviewWindow::connectControls()
{
    PageView *view = m_ui->paginas;
    connect(m_ui->btImprimir, &QAbstractButton::clicked, this, [this] { attempt([this] { printPages(); }); });
    connect(m_ui->btPdf, &QAbstractButton::clicked, this, [this] { attempt([this] { writePdf(); }); });
    connect(m_ui->btMenor, &QAbstractButton::clicked, view, [view] { view->setZoom(view->zoom() / zoomStep); });
    connect(m_ui->btMaior, &QAbstractButton::clicked, view, [view] { view->setZoom(view->zoom() * zoomStep); });
    connect(m_ui->btLargura, &QAbstractButton::clicked, view, &PageView::fitWidth);
    connect(m_ui->btPagina, &QAbstractButton::clicked, view, &PageView::fitPage);
    connect(m_ui->btProxima, &QAbstractButton::clicked, this, &PreviewWindow::findNext);
    connect(m_ui->edtProcura, &QLineEdit::returnPressed, this, &PreviewWindow::findNext);
    connect(m_ui->btFechar, &QAbstractButton::clicked, this, &QDialog::reject);
    connect(m_ui->btParar, &QAbstractButton::clicked, this, &PreviewWindow::stop);
    connect(view, &PageView::currentPageChanged, this, &PreviewWindow::showPageNumber);
    connect(m_ui->spPagina, &QSpinBox::valueChanged, view, [view](int page) {
        if (page - 1 != view->currentPage())
            view->showPage(page - 1);
    });
    const auto onKey = [this](const QKeySequence &keys, const std::function<void()> &action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    onKey(QKeySequence::Print, [this] { m_ui->btImprimir->click(); });
    onKey(QKeySequence::Save, [this] { m_ui->btPdf->click(); });
    onKey(QKeySequence::ZoomIn, [this] { m_ui->btMaior->click(); });
    onKey(QKeySequence::ZoomOut, [this] { m_ui->btMenor->click(); });
    onKey(QKeySequence(u"Ctrl+0"_s), [this] { m_ui->paginas->setZoom(1); });
    onKey(QKeySequence::FindNext, [this] { findNext(); });
    onKey(QKeySequence::Find, [this] {
        m_ui->edtProcura->setFocus();
        m_ui->edtProcura->selectAll();
    });
}

void PreviewWindow::run()
{
    exec();
    m_clock.stop();
    if (m_failure)
        std::rethrow_exception(m_failure);
}

void PreviewWindow::layOut()
{
    const int before = m_report.pages().count();
    try {
        QElapsedTimer worked;
        worked.start();
        while (m_report.step() && worked.elapsed() < slice) { }
    } catch (...) {
        m_failure = std::current_exception();
        m_clock.stop();
        reject();
        return;
    }
    const int pages = m_report.pages().count();
    if (pages != before) {
        m_ui->paginas->pagesAdded();
        m_ui->spPagina->setMaximum(pages);
        showPageNumber(m_ui->paginas->currentPage());
    }
    if (m_report.isFinished())
        finish(pages == 1 ? u"1 página"_s : whole(pages) + u" páginas"_s);
    else
        tell(u"Montando… %1 páginas, %2 linhas"_s.arg(whole(pages), whole(m_report.rowsDone())));
}

/// What stands can be printed now.
void PreviewWindow::finish(const QString &state)
{
    m_clock.stop();
    m_ui->paginas->numberOfPagesKnown();
    m_ui->progresso->hide();
    m_ui->btParar->hide();
    for (QWidget *output : {m_ui->btImprimir, m_ui->btPdf, m_ui->btPlanilha})
        output->setEnabled(m_report.pages().count() > 0);
    tell(state);
}

void PreviewWindow::stop()
{
    if (!m_clock.isActive()) {
        m_stopAsked = true;
        return;
    }
    finish(u"Interrompido: só as primeiras %1 páginas"_s.arg(whole(m_report.pages().count())));
    m_ui->btImprimir->setEnabled(m_report.pages().count() > 0 && !m_report.isText());
}

void PreviewWindow::showPageNumber(int page)
{
    const QSignalBlocker quiet(m_ui->spPagina);
    m_ui->spPagina->setValue(page + 1);
    m_ui->lbPaginas->setText(u"de %1"_s.arg(whole(m_report.pages().count())));
}

void PreviewWindow::findNext()
{
    const QString text = m_ui->edtProcura->text().trimmed();
    if (text.isEmpty()) {
        m_ui->edtProcura->setFocus();
        return;
    }
    tell(m_ui->paginas->find(text) ? QString() : u"\"%1\" não foi encontrado."_s.arg(text));
}

void PreviewWindow::printPages()
{
    if (!m_printing)
        return;
    if (const QString done = m_printing(this); !done.isEmpty())
        tell(done);
}

QString PreviewWindow::askFile(const QString &filter, const QString &ending)
{
    QFileDialog dialog(this, u"Gravar"_s, m_folder, filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(ending);
    QString name = m_report.title();
    name.replace(u'/', u'-');
    dialog.selectFile(name + u'.' + ending);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    const QString file = dialog.selectedFiles().first();
    m_folder = QFileInfo(file).absolutePath();
    if (m_remember)
        m_remember(m_folder);
    return file;
}

void PreviewWindow::writePdf()
{
    const QString file = askFile(u"Documentos PDF (*.pdf)"_s, u"pdf"_s);
    if (file.isEmpty())
        return;
    const int pages = m_report.pages().count();
    m_stopAsked = false;
    m_ui->progresso->setRange(0, pages);
    m_ui->progresso->show();
    m_ui->btParar->show();
    const auto goOn = [this](int done) {
        m_ui->progresso->setValue(done);
        QCoreApplication::processEvents();
        return !m_stopAsked && isVisible();
    };
    const auto hide = qScopeGuard([this] {
        m_ui->progresso->hide();
        m_ui->btParar->hide();
    });
    const bool written = Pdf::write(m_report.pages(), file, m_report.title(), goOn);
    tell(written ? u"Gravado em %1"_s.arg(QDir::toNativeSeparators(file)) : u"Nada foi gravado."_s);
}

void PreviewWindow::addSpreadsheets()
{
    auto *menu = new QMenu(m_ui->btPlanilha);
    const QList<std::pair<QString, TDataSet *>> listed = m_report.listed();
    for (const auto &[name, rows] : listed) {
        const QString suffix = listed.size() > 1 ? u" – "_s + name : QString();
        for (const bool xlsx : {true, false})
            menu->addAction((xlsx ? u"Planilha (XLSX)…"_s : u"CSV…"_s) + suffix, this,
                [this, rows, xlsx] { attempt([this, rows, xlsx] { writeSpreadsheet(*rows, xlsx); }); });
    }
    m_ui->btPlanilha->setMenu(menu);
    m_ui->btPlanilha->setVisible(!listed.isEmpty());
}

void PreviewWindow::writeSpreadsheet(TDataSet &rows, bool xlsx)
{
    const QString file =
        xlsx ? askFile(u"Planilhas (*.xlsx)"_s, u"xlsx"_s) : askFile(u"Arquivos CSV (*.csv)"_s, u"csv"_s);
    if (file.isEmpty())
        return;
    if (xlsx)
        Spreadsheet::writeXlsx(rows, columnsOf(rows), m_report.title(), file);
    else
        Spreadsheet::writeCsv(rows, columnsOf(rows), file);
    tell(u"Gravado em %1"_s.arg(QDir::toNativeSeparators(file)));
}

void PreviewWindow::tell(const QString &text)
{
    m_ui->lbEstado->setText(text);
}

/// What a file or a printer refuses is said here, and the report stays in sight.
void PreviewWindow::attempt(const std::function<void()> &action)
{
    try {
        action();
    } catch (...) {
        showExceptionBox(this, ExceptionText::of(std::current_exception()));
    }
}
