// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/application.h"
#include "host/exceptionbox.h"
#include "host/options.h"
#include "host/startup.h"
#include "module/host_services/errors.h"

#include <QCoreApplication>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

int say(const QString &text, int result)
{
    std::fprintf(result == 0 ? stdout : stderr, "%s\n", qUtf8Printable(text.trimmed()));
    return result;
}

/// The toolkit ends a program without a display by a signal; a sentence is better.
bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        || !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

/// Answers what needs no window, and decides where the windows are drawn. Null: go on.
std::optional<int> beforeWindows(int argc, char **argv, Options &options)
{
    QCoreApplication application(argc, argv);
    Application::describe();
    try {
        options = Options::parse(application.arguments());
    } catch (const EQen &error) {
        return say(error.sentence() + u"\nAs opções estão em: qen --help"_s, 2);
    }
    if (options.help)
        return say(Options::helpText(), 0);
    if (options.version)
        return say(u"qen "_s + QCoreApplication::applicationVersion(), 0);
    if (options.isUnattended())
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (!hasDisplay())
        return say(u"Não há tela neste computador: defina DISPLAY ou WAYLAND_DISPLAY, ou use --demonstrate."_s, 1);
    return {};
}

} // namespace

int main(int argc, char **argv)
{
    Options options;
    if (const std::optional<int> result = beforeWindows(argc, argv, options))
        return *result;
    Application application(argc, argv);
    try {
        return options.isUnattended() ? runUnattended(options) : runProgram(options);
    } catch (...) {
        const ExceptionText text = ExceptionText::of(std::current_exception());
        qCritical("%s %s", qUtf8Printable(text.sentence), qUtf8Printable(text.details));
        if (!options.isUnattended())
            showExceptionBox(nullptr, text);
    }
    return 1;
}
