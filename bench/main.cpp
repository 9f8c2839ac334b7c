// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the program against floors that are taken in the same run; docs/benchmarks.md tells how.

#include "bench/filling.h"
#include "bench/sections.h"
#include "bench/station.h"
#include "bench/table.h"
#include "host/application.h"
#include "host/exceptionbox.h"

#include <QCommandLineParser>
#include <QTemporaryDir>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

struct Section
{
    QString name;
    QVector<Comparison> (*measure)(const Bench &bench);
};

const QVector<Section> sections{{u"rolls"_s, measureRolls}, {u"screens"_s, measureScreens},
    {u"search"_s, measureSearch}, {u"start"_s, measureStart}};

void say(const QString &text)
{
    std::fprintf(stderr, "qen-bench: %s\n", qUtf8Printable(text));
}

void fill(BenchStation &station, const Effort &effort)
{
    station.enter(BenchStation::firstCompany);
    Filling(station.database()).addOrders(effort.fewOrders, effort.rollsPerOrder);
    station.enter(BenchStation::secondCompany);
    Filling filling(station.database());
    filling.addOrders(effort.manyOrders, effort.rollsPerOrder);
    filling.addTwins(effort.warmUps + effort.runs);
    filling.addRareRoll();
    filling.settle();
}

QVector<Comparison> measure(Engine engine, const QString &folder, const Effort &effort, const QString &only)
{
    const BenchDatabase database(engine, folder);
    say(u"%1: filling the tables"_s.arg(database.engineName()));
    BenchStation station(database.settings(), folder);
    fill(station, effort);
    const Bench bench{database, station, effort};
    QVector<Comparison> rows;
    for (const Section &section : sections) {
        if (!only.isEmpty() && section.name != only)
            continue;
        say(u"%1: %2"_s.arg(database.engineName(), section.name));
        rows += section.measure(bench);
    }
    return rows;
}

int run(const QString &folder, const Effort &effort, const QString &only)
{
    QVector<Comparison> rows = measure(Engine::FirebirdEmbedded, folder, effort, only);
    if (BenchDatabase::hasPostgres())
        rows += measure(Engine::PostgreSQL, folder, effort, only);
    else
        say(u"no PostgreSQL: QEN_TEST_POSTGRES is not set, see packaging/test-engines"_s);
    printTable(rows);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir folder;
    for (const char *variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"})
        qputenv(variable, folder.path().toUtf8());
    Application application(argc, argv);
    QCommandLineParser parser;
    parser.addOptions({{u"quick"_s, u"Only show that everything runs: few rows, few runs."_s},
        {u"runs"_s, u"How often each thing is measured."_s, u"number"_s},
        {u"only"_s, u"Measure one section: rolls, screens, search or start."_s, u"section"_s}});
    parser.addHelpOption();
    parser.process(application);
    try {
        Effort effort = parser.isSet(u"quick"_s) ? Effort::smoke() : Effort::whole();
        if (parser.isSet(u"runs"_s))
            effort.runs = qMax(1, parser.value(u"runs"_s).toInt());
        return run(folder.path(), effort, parser.value(u"only"_s));
    } catch (...) {
        const ExceptionText text = ExceptionText::of(std::current_exception());
        say(text.sentence + u' ' + text.details);
    }
    return 1;
}
