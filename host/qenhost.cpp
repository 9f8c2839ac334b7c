// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/qenhost.h"

#include "host/exceptionbox.h"
#include "host/inventory.h"
#include "host/paths.h"
#include "host/report/layoutreader.h"
#include "host/report/report.h"
#include "host/reportdesk.h"
#include "module/host_services/classregistry.h"
#include "module/host_services/clock.h"
#include "module/host_services/database.h"
#include "module/host_services/dataset.h"
#include "module/host_services/errors.h"
#include "module/host_services/format.h"
#include "module/host_services/sqltext.h"
#include "module/host_services/tabelas.h"

#include <QApplication>
#include <QDirIterator>
#include <QMessageBox>
#include <QSettings>
#include <QWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype reportsNoted = 100; ///< the last ones: a station prints labels for months

void inform(const QString &text)
{
    QMessageBox::information(QApplication::activeWindow(), QApplication::applicationDisplayName(), text);
}

/// Picture files of a code, the preferred kind first.
const QStringList &pictureEndings()
{
    static const QStringList endings{u"png"_s, u"jpg"_s, u"jpeg"_s, u"bmp"_s, u"svg"_s};
    return endings;
}

} // namespace

QenHost::QenHost(QSettings &settings)
    : m_settings(settings)
    , m_log(Paths::logFile())
{
}

TTIDatabase &QenHost::database() const
{
    if (!Tabela)
        throw EProgramming(u"O programa ainda não abriu o banco de dados."_s);
    return *Tabela->IBDatabase;
}

void QenHost::login(const QString &user, int company)
{
    const Session session(database());
    const std::optional<Account> account = session.account(user);
    if (!account || !account->active)
        throw EQen(u"O usuário \"%1\" não existe ou está inativo."_s.arg(user));
    for (const Company &seen : session.companies(*account)) {
        if (seen.number != company)
            continue;
        m_account = *account;
        m_company = seen;
        return;
    }
    throw EQen(u"O usuário \"%1\" não tem acesso à empresa %2."_s.arg(account->user, QString::number(company)));
}

void QenHost::logout()
{
    m_account = {};
    m_company = {};
}

QList<int> QenHost::visibleCompanies() const
{
    QList<int> numbers;
    for (const Company &company : Session(database()).companies(m_account))
        numbers.append(company.number);
    // It may have been closed to the user since he came in.
    if (company() > 0 && !numbers.contains(company()))
        numbers.append(company());
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

bool QenHost::hasRight(const QString &screen, QChar letter, const QString &level)
{
    return database()
        .value(uR"(SELECT 1 FROM QEN_USUARIO U WHERE U.USUARIO = %1 AND (U.ATIVO = 'S' OR U.ATIVO IS NULL)
                 AND (U.ADMINISTRADOR = 'S' OR EXISTS (SELECT 1 FROM QEN_DIREITO D WHERE D.USUARIO = U.USUARIO
                      AND D.TELA = %2 AND D.LETRA = %3 AND D.NIVEL = %4)))"_s.arg(
            SqlText::quoted(m_account.user), SqlText::quoted(screen), SqlText::quoted(letter), SqlText::quoted(level)))
        .isValid();
}

QString QenHost::parameter(const QString &module, int number)
{
    return database()
        .value(u"SELECT VALOR FROM QEN_PARAMETRO WHERE EMPRESA = %1 AND MODULO = %2 AND NUMERO = %3"_s.arg(
            QString::number(company()), SqlText::quoted(module), QString::number(number)))
        .toString()
        .trimmed();
}

void QenHost::writeLog(const QString &label, const QString &text, TOperacaoLog kind, const QString &key)
{
    const QDateTime now = Clock::now();
    const QString moment = Format::sqlDate(now.date()) + now.time().toString(u" HH:mm:ss.zzz"_s);
    database().run(u"INSERT INTO QEN_LOG (MOMENTO, EMPRESA, USUARIO, ROTULO, TEXTO, OPERACAO, CHAVE) "
                   "VALUES (%1, %2, %3, %4, %5, %6, %7)"_s.arg(SqlText::quoted(moment), QString::number(company()),
                       SqlText::quoted(m_account.user), SqlText::quoted(label.left(30)),
                       SqlText::quoted(text.left(250)), QString::number(int(kind)), SqlText::quoted(key.left(60))));
}

QWidget *QenHost::loadForm(const QString &package, const QString &className, bool modal, bool show)
{
    const ScreenClass *screen = ClassRegistry::find(className);
    if (!screen) {
        m_log.write(u"%1 has no screen %2"_s.arg(package, className));
        inform(u"Esta tela ainda não está disponível."_s);
        return nullptr;
    }
    if (QWidget *open = openForm(className)) {
        if (!modal)
            return bringToFront(open);
        if (!open->close()) {
            bringToFront(open);
            inform(u"A tela \"%1\" já está aberta. Termine o que está nela primeiro."_s.arg(screen->caption));
            return nullptr;
        }
        // At once, so that it does not clear its instance variable after the new one has set it.
        delete m_open.take(className);
    }
    QWidget *form = screen->create();
    m_open.insert(className, form);
    if (show && !modal)
        bringToFront(form);
    return form;
}

QWidget *QenHost::bringToFront(QWidget *form) const
{
    if (m_placer) {
        m_placer(form);
    } else {
        form->show();
        form->raise();
        form->activateWindow();
    }
    return form;
}

void QenHost::runReport(const ReportCall &call)
{
    RecordedReport report{call.name, call.kind, {}, {}, printerOf(call.name)};
    QStringList parts;
    for (const auto &[name, dataSet] : call.dataSets) {
        report.dataSets.append(name);
        report.rowCounts.append(dataSet ? dataSet->rowCount() : 0);
        parts.append(u"%1: %2"_s.arg(name, QString::number(report.rowCounts.last())));
    }
    m_reports.append(report);
    if (m_reports.size() > reportsNoted)
        m_reports.removeFirst();
    m_log.write(u"report %1 (%2) for printer \"%3\", rows %4"_s.arg(call.name,
        call.kind == ReportCall::Kind::Text ? u"text"_s : u"graphic"_s, report.printer, parts.join(u", "_s)));
    if (!m_reportDesk)
        return;
    QStringList folders = Paths::layoutFolders();
    if (const QString own = m_settings.value(u"Pastas/leiautes"_s).toString(); !own.isEmpty())
        folders.prepend(own);
    const QString file = LayoutReader::find(call.name, folders);
    if (file.isEmpty())
        throw EQen(u"O leiaute \"%1\" não foi encontrado."_s.arg(call.name), folders.join(u'\n'));
    Report paper(file, call, {m_account.user, m_company.name, Clock::now()});
    m_reportDesk->deliver(paper, call);
}

QString QenHost::printerOf(const QString &layout) const
{
    return StationDesk::printerInSettings(m_settings, layout);
}

QString QenHost::findFile(const QString &code, const QString &folder, TTipo)
{
    const QString wanted = code.trimmed();
    if (wanted.isEmpty())
        return {};
    QString searched = folder.isEmpty() ? m_settings.value(u"Pastas/imagens"_s).toString() : folder;
    if (searched.isEmpty())
        searched = Paths::imagesFolder();
    // The code is compared with the names in the folder and never made a part of a path.
    QString found;
    qsizetype rank = pictureEndings().size();
    QDirIterator files(searched, QDir::Files);
    while (files.hasNext()) {
        files.next();
        const QFileInfo file = files.fileInfo();
        const qsizetype ending = pictureEndings().indexOf(file.suffix().toLower());
        if (ending < 0 || ending >= rank || file.completeBaseName().compare(wanted, Qt::CaseInsensitive) != 0)
            continue;
        rank = ending;
        found = file.filePath();
    }
    return found;
}

int QenHost::createInventory(const InventoryColumns &columns, TDataSet &rows)
{
    return Inventory::create(database(), company(), columns, rows);
}

void QenHost::showException(QWidget *form, std::exception_ptr error)
{
    try {
        m_busy.clear();
        if (Tabela)
            Tabela->IBDatabase->Rollback();
        const ExceptionText text = ExceptionText::of(error);
        m_log.write(u"%1: %2\n%3"_s.arg(
            form ? QString::fromLatin1(form->metaObject()->className()) : u"qen"_s, text.sentence, text.details));
        showExceptionBox(form, text);
    } catch (...) {
        qCritical("An error could not be shown");
    }
}
