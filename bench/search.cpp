// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/sections.h"

#include "bench/bareclient.h"
#include "bench/filling.h"
#include "bench/station.h"
#include "host/firstpaint.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/searchdialog.h"
#include "module/host_services/searchmodel.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

/// Searches over the same rows, by the program and by a client that sends the same statements.
class Searching
{
public:
    explicit Searching(const Bench &bench)
        : m_bench(bench)
        , m_database(bench.station.database())
        , m_bare(bench.database.settings())
        , m_source(Filling::rollsOfAllOrders())
    {
        m_database.setObserver([this](const QString &statement) { m_statements.append(statement); });
        m_rows = m_database.value(u"SELECT COUNT(*) FROM "_s + m_source.from).toString();
    }
    ~Searching() { m_database.setObserver({}); }
    Q_DISABLE_COPY_MOVE(Searching)

    Comparison firstRows()
    {
        Comparison result = comparison(u"search: first of %1 rows"_s, 1.5);
        for (int run = -m_bench.effort.warmUps; run < m_bench.effort.runs; ++run) {
            const double program = timed([this] { const SearchModel rows(m_database, m_source); });
            const double floor = byBareClient();
            if (run >= 0)
                result.add(floor, program);
        }
        return result;
    }

    /// Every row has to be looked at, since the text may stand anywhere in it.
    Comparison rareText()
    {
        Comparison result = comparison(u"search: one of %1 rows, by a text"_s, 1.5);
        for (int run = 0; run < m_bench.effort.slowRuns; ++run) {
            SearchModel rows(m_database, m_source);
            const double program = timed([&rows] { rows.setText(Filling::rareText); });
            if (rows.rowCount() != 1)
                throw EQen(u"The search finds %1 rows."_s.arg(rows.rowCount()));
            result.add(byBareClient(), program);
        }
        return result;
    }

    /// The floor is the same window with no row in it.
    Comparison window()
    {
        Comparison result = comparison(u"search: window with the first of %1 rows"_s, 3);
        SearchSource nothing = m_source;
        nothing.filter = u"NUM_OF = ''"_s; // by the index; of "1 = 0" Firebird asks every row
        for (int run = -m_bench.effort.warmUps; run < m_bench.effort.runs; ++run) {
            const double program = timed([this] { open(m_source); });
            const double floor = timed([&] { open(nothing); });
            if (run >= 0)
                result.add(floor, program);
        }
        return result;
    }

private:
    Comparison comparison(const QString &what, double atMost) const
    {
        return {what.arg(m_rows), m_bench.database.engineName(), atMost, {}, {}};
    }

    double timed(const std::function<void()> &search)
    {
        m_statements.clear();
        Clockwork clock;
        clock.start();
        search();
        clock.pause();
        return clock.milliseconds();
    }

    double byBareClient()
    {
        const QStringList sent = m_statements;
        return timed([&] { m_bare.send(sent); });
    }

    void open(const SearchSource &source)
    {
        SearchDialog dialog(m_database, source, u"Rolos"_s, nullptr);
        bool painted = false;
        new FirstPaint(&dialog, [&painted] { painted = true; });
        dialog.show();
        while (!painted)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    const Bench &m_bench;
    TTIDatabase &m_database;
    BareClient m_bare;
    SearchSource m_source;
    QString m_rows;
    QStringList m_statements;
};

} // namespace

QVector<Comparison> measureSearch(const Bench &bench)
{
    bench.station.enter(BenchStation::secondCompany);
    Searching searching(bench);
    return {searching.firstRows(), searching.window(), searching.rareText()};
}
