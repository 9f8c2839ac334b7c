// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the program against floors that are taken in the same run; docs/benchmarks.md tells how.

#include "bench/filling.h"
#include "bench/reads.h"
#include "bench/reports.h"
#include "bench/sections.h"
#include "bench/station.h"
#include "bench/table.h"
#include "host/application.h"
#include "host/exceptionbox.h"

#include <QCommandLineParser>
#include <QTemporaryDir>

#include <algorithm>
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

struct Wanted
{
    Effort effort;
    QString only; ///< one section; empty: all
    bool judged; ///< whether a ratio that is too high is a failure
};

struct Results
{
    QVector<Comparison> comparisons;
    QVector<Reads> reads;
    QVector<Memory> memory;
};

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

void measure(Engine engine, const QString &folder, const Wanted &wanted, Results &results)
{
    const BenchDatabase database(engine, folder, wanted.judged);
    const auto tell = [&](const QString &step) { say(u"%1: %2"_s.arg(database.engineName(), step)); };
    tell(u"filling the tables"_s);
    BenchStation station(database.settings(), folder);
    fill(station, wanted.effort);
    const Bench bench{database, station, wanted.effort};
    for (const Section &section : sections) {
        if (!wanted.only.isEmpty() && section.name != wanted.only)
            continue;
        tell(section.name);
        results.comparisons += section.measure(bench);
    }
    tell(u"records read"_s);
    results.reads += countReads(bench);
}

void measureAll(const QString &folder, const Wanted &wanted, Results &results)
{
    const bool onlyReports = wanted.only == "reports"_L1;
    if (wanted.only.isEmpty() || onlyReports) {
        say(u"reports"_s);
        results.comparisons += measureReports(wanted.effort);
        results.memory += measureReportMemory(wanted.effort);
    }
    if (onlyReports)
        return; // they ask no database
    measure(Engine::FirebirdEmbedded, folder, wanted, results);
    if (BenchDatabase::hasPostgres())
        measure(Engine::PostgreSQL, folder, wanted, results);
    else
        say(u"no PostgreSQL: QEN_TEST_POSTGRES is not set, see packaging/test-engines"_s);
}

bool isSection(const QString &name)
{
    return name == u"reports"_s
        || std::any_of(sections.begin(), sections.end(), [&](const Section &section) { return section.name == name; });
}

int run(const QString &folder, const Wanted &wanted)
{
    if (!wanted.only.isEmpty() && !isSection(wanted.only))
        throw EQen(u"There is no section %1."_s.arg(wanted.only));
    Results results;
    measureAll(folder, wanted, results);
    printTable(results.comparisons);
    if (!results.memory.isEmpty()) {
        std::puts("");
        printMemory(results.memory);
    }
    std::puts("");
    printReads(results.reads);
    const auto allGood = [](const auto &rows) {
        return std::all_of(rows.begin(), rows.end(), [](const auto &row) { return row.isGood(); });
    };
    const bool fast = allGood(results.comparisons) && allGood(results.memory);
    return allGood(results.reads) && (fast || !wanted.judged) ? 0 : 1;
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
    parser.addOptions({{u"quick"_s, u"Only show that everything runs: few rows, few runs, no judgement of times."_s},
        {u"runs"_s, u"How often each thing is measured."_s, u"number"_s},
        {u"only"_s, u"Measure one section: reports, rolls, screens, search or start."_s, u"section"_s}});
    parser.addHelpOption();
    parser.process(application);
    try {
        const bool quick = parser.isSet(u"quick"_s);
        Wanted wanted{quick ? Effort::smoke() : Effort::whole(), parser.value(u"only"_s), !quick};
        if (parser.isSet(u"runs"_s))
            wanted.effort.runs = qMax(1, parser.value(u"runs"_s).toInt());
        return run(folder.path(), wanted);
    } catch (...) {
        const ExceptionText text = ExceptionText::of(std::current_exception());
        say(text.sentence + u' ' + text.details);
    }
    return 1;
}
