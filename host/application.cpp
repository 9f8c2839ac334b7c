// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/application.h"

#include "host/exceptionbox.h"
#include "host/logfile.h"
#include "host/paths.h"
#include "module/host_services/host.h"
#include "module/host_services/icons.h"
#include "module/host_services/theme.h"

#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

QtMessageHandler previousHandler = nullptr;

/// Warnings of the toolkit and the program go into the log file too.
void logMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    // Off screen there is no window manager to ask; that is nothing to tell anybody.
    if (text.startsWith(u"This plugin does not support"_s))
        return;
    // Writing may warn itself.
    static thread_local bool writing = false;
    if (!writing && type != QtDebugMsg && type != QtInfoMsg) {
        writing = true;
        LogFile(Paths::logFile()).write(text);
        writing = false;
    }
    if (previousHandler)
        previousHandler(type, context, text);
}

void report(QObject *receiver, const std::exception_ptr &error)
{
    auto *widget = qobject_cast<QWidget *>(receiver);
    try {
        Host::current().showException(widget ? widget->window() : nullptr, error);
    } catch (...) {
        // Before there is a host.
        const ExceptionText text = ExceptionText::of(error);
        qCritical("%s %s", qUtf8Printable(text.sentence), qUtf8Printable(text.details));
        showExceptionBox(nullptr, text);
    }
}

} // namespace

void Application::describe()
{
    setApplicationName(u"qen"_s);
    setApplicationVersion(QStringLiteral(QEN_VERSION));
    QLocale::setDefault(QLocale(QLocale::Portuguese, QLocale::Brazil));
    auto *translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(u"qtbase_pt_BR"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(translator);
    else
        qWarning("The toolkit's Portuguese texts are not installed");
}

Application::Application(int &argc, char **argv)
    : QApplication(argc, argv)
{
    describe();
    setApplicationDisplayName(u"qen"_s);
    setDesktopFileName(u"qen"_s);
    setWindowIcon(Icons::get(u"app"));
    Theme::apply(*this);
    previousHandler = qInstallMessageHandler(logMessage);
}

Application::~Application()
{
    qInstallMessageHandler(previousHandler);
}

bool Application::notify(QObject *receiver, QEvent *event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        report(receiver, std::current_exception());
    }
    return false;
}
