// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/report/walker.h"

#include "host/report/aggregates.h"
#include "host/report/expressionfunctions.h"
#include "host/report/layoutcheck.h"
#include "host/report/rowframe.h"
#include "module/host_services/clock.h"
#include "module/host_services/dataset.h"
#include "module/host_services/errors.h"
#include "module/host_services/host.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

class Walker::Private : public ReportValues
{
public:
    Private(const Layout::Document &document, const ReportCall &screenCall);

    QVariant call(const QString &function, const QVariantList &arguments) const override;
    QVariant aggregate(int number) const override { return aggregates.result(number); }
    const ReportCall &reportCall() const override { return reportOf; }
    const RowFrame *frameOf(const TDataSet *dataSet) const override;

    void start(BandSink &sink);
    void stepRows(BandSink &sink);
    /// One row beneath another, from its first to its last.
    void walkBeneath(BandSink &sink, RowFrame &frame);
    void open(BandSink &sink, RowFrame &frame, int firstRow);
    void close(BandSink &sink, RowFrame &frame);
    void walkRow(BandSink &sink, RowFrame &frame, int row);
    /// Ends the groups that the row is no part of and begins its own.
    void changeGroups(BandSink &sink, RowFrame &frame, int row);
    void openGroups(BandSink &sink, const RowFrame &frame, size_t from);
    void closeGroups(BandSink &sink, const RowFrame &frame, size_t from);
    void count(const RowFrame &frame);
    void printDetails(BandSink &sink, const RowFrame &frame);
    bool print(BandSink &sink, const Layout::Band &band, const RowFrame &frame);
    void print(BandSink &sink, const std::optional<Layout::Band> &band, const RowFrame &frame);
    bool isFirst(const RowFrame &frame) const { return &frame == frames.front().get(); }

    const Layout::Document &layout;
    const ReportCall &reportOf;
    ReportAggregates aggregates;
    std::vector<std::unique_ptr<RowFrame>> frames;
    RowFrame bare; ///< of a report without rows
    QHash<const RowFrame *, QStringList> groupKeys; ///< of the current row
    QHash<QString, std::function<QVariant()>> functions;
    bool started = false;
    bool ended = false;
    size_t current = 0; ///< of the frames
    int nextRow = 0; ///< of the current frame
    int rowsDone = 0;
    qint64 nextPageRow = 0;
    qint64 pageRow = -1;
    QHash<qint64, QVariantList> pageValues; ///< of rows that were not counted on a page yet
};

Walker::Private::Private(const Layout::Document &document, const ReportCall &screenCall)
    : layout(document)
    , reportOf(screenCall)
    , aggregates(document)
    , bare(*this, nullptr, nullptr)
{
    try {
        for (const Layout::Rows &rows : layout.rows)
            frames.push_back(std::make_unique<RowFrame>(*this, &rows, nullptr));
        LayoutCheck::check(layout, reportOf, frames.empty() ? bare : *frames.front(), frames);
    } catch (const EQen &error) {
        throw EQen(u"%1, %2."_s.arg(QFileInfo(layout.file).fileName(), error.sentence()), layout.file);
    }
    functions.insert(u"TITLE"_s, [this] { return layout.title; });
    functions.insert(u"DATE"_s, [] { return Clock::today(); });
    functions.insert(u"TIME"_s, [] { return Clock::now().time(); });
    functions.insert(u"NOW"_s, [] { return Clock::now(); });
}

QVariant Walker::Private::call(const QString &function, const QVariantList &arguments) const
{
    if (function == "PARAM"_L1) {
        const QString name = arguments.value(0).toString();
        for (auto known = reportOf.parameters.begin(); known != reportOf.parameters.end(); ++known) {
            if (known.key().compare(name, Qt::CaseInsensitive) == 0)
                return known.value();
        }
        return {};
    }
    const auto answer = functions.constFind(function);
    if (answer != functions.constEnd())
        return (*answer)();
    const QVariant answered = reportOf.unknownFunction ? reportOf.unknownFunction(function, arguments) : QVariant();
    if (!answered.isValid())
        throw EQen(u"%1: função %2 desconhecida."_s.arg(QFileInfo(layout.file).fileName(), function));
    return answered;
}

const RowFrame *Walker::Private::frameOf(const TDataSet *dataSet) const
{
    std::vector<const RowFrame *> open;
    for (const auto &frame : frames)
        open.push_back(frame.get());
    for (size_t i = 0; i < open.size(); ++i) {
        if (open[i]->dataSet() == dataSet)
            return open[i];
        for (const auto &inner : open[i]->beneath())
            open.push_back(inner.get());
    }
    return nullptr;
}

void Walker::Private::start(BandSink &sink)
{
    started = true;
    if (!frames.empty())
        frames.front()->setRow(frames.front()->hasRow(0) ? 0 : -1);
    print(sink, layout.titleBand, frames.empty() ? bare : *frames.front());
}

void Walker::Private::stepRows(BandSink &sink)
{
    RowFrame &frame = *frames[current];
    if (nextRow == 0) {
        if (!frame.hasRow(0)) {
            print(sink, frame.rows()->empty, frame);
            ++current;
            return;
        }
        open(sink, frame, 0);
    }
    walkRow(sink, frame, nextRow++);
    if (isFirst(frame))
        ++rowsDone;
    if (!frame.hasRow(nextRow)) {
        close(sink, frame);
        ++current;
        nextRow = 0;
    }
}

void Walker::Private::walkBeneath(BandSink &sink, RowFrame &frame)
{
    frame.setRow(-1);
    frame.setNumber(0);
    const QVector<int> rows = frame.matchingRows();
    if (rows.isEmpty()) {
        print(sink, frame.rows()->empty, frame);
        return;
    }
    open(sink, frame, rows.first());
    for (const int row : rows)
        walkRow(sink, frame, row);
    close(sink, frame);
}

void Walker::Private::open(BandSink &sink, RowFrame &frame, int firstRow)
{
    const Layout::Rows &rows = *frame.rows();
    frame.setRow(firstRow);
    frame.setNumber(0);
    groupKeys.remove(&frame);
    aggregates.clear(rows.footer);
    print(sink, rows.header, frame);
    if (rows.header && rows.header->repeats)
        sink.pushRepeated(*rows.header, frame);
}

void Walker::Private::close(BandSink &sink, RowFrame &frame)
{
    const Layout::Rows &rows = *frame.rows();
    closeGroups(sink, frame, 0);
    print(sink, rows.footer, frame);
    if (rows.header && rows.header->repeats)
        sink.popRepeated();
}

void Walker::Private::walkRow(BandSink &sink, RowFrame &frame, int row)
{
    const Layout::Rows &rows = *frame.rows();
    changeGroups(sink, frame, row);
    frame.setNumber(frame.number() + 1);
    count(frame);
    if (rows.keepsTogether)
        sink.beginBlock(true);
    printDetails(sink, frame);
    for (const auto &inner : frame.beneath())
        walkBeneath(sink, *inner);
    if (rows.keepsTogether)
        sink.endBlock();
}

void Walker::Private::changeGroups(BandSink &sink, RowFrame &frame, int row)
{
    const std::vector<Layout::Group> &groups = frame.rows()->groups;
    const int rowBefore = frame.row();
    frame.setRow(row);
    QStringList keys;
    for (const Layout::Group &group : groups)
        keys.append(ExpressionFunctions::text(group.by.evaluate(frame)));

    const auto known = groupKeys.constFind(&frame);
    size_t changed = 0;
    if (known != groupKeys.constEnd()) {
        while (changed < groups.size() && known->at(qsizetype(changed)) == keys.at(qsizetype(changed)))
            ++changed;
        const bool newPage = std::any_of(groups.begin() + std::ptrdiff_t(changed), groups.end(),
            [](const Layout::Group &group) { return group.newPage; });
        // Totals and the page's footer belong to the row before.
        frame.setRow(rowBefore);
        closeGroups(sink, frame, changed);
        if (newPage)
            sink.newPage();
        frame.setRow(row);
    }
    groupKeys.insert(&frame, keys);
    openGroups(sink, frame, changed);
}

void Walker::Private::openGroups(BandSink &sink, const RowFrame &frame, size_t from)
{
    const std::vector<Layout::Group> &groups = frame.rows()->groups;
    for (size_t i = from; i < groups.size(); ++i) {
        aggregates.clear(groups[i].footer);
        sink.beginBlock(groups[i].keepsTogether);
        print(sink, groups[i].header, frame);
        if (groups[i].header && groups[i].header->repeats)
            sink.pushRepeated(*groups[i].header, frame);
    }
}

void Walker::Private::closeGroups(BandSink &sink, const RowFrame &frame, size_t from)
{
    const std::vector<Layout::Group> &groups = frame.rows()->groups;
    for (size_t i = groups.size(); i > from; --i) {
        const Layout::Group &group = groups[i - 1];
        print(sink, group.footer, frame);
        if (group.header && group.header->repeats)
            sink.popRepeated();
        sink.endBlock();
    }
}

void Walker::Private::count(const RowFrame &frame)
{
    for (const Layout::Group &group : frame.rows()->groups)
        aggregates.add(group.footer, frame);
    aggregates.add(frame.rows()->footer, frame);
    if (isFirst(frame))
        aggregates.add(layout.summary, frame);
}

void Walker::Private::printDetails(BandSink &sink, const RowFrame &frame)
{
    if (isFirst(frame) && aggregates.has(layout.pageFooter)) {
        pageRow = nextPageRow++;
        pageValues.insert(pageRow, aggregates.values(layout.pageFooter, frame));
    }
    for (const Layout::Band &detail : frame.rows()->details) {
        if (print(sink, detail, frame))
            pageRow = -1;
    }
    if (pageRow >= 0)
        pageValues.remove(pageRow); // no band of the row was printed
    pageRow = -1;
}

bool Walker::Private::print(BandSink &sink, const Layout::Band &band, const RowFrame &frame)
{
    if (band.condition && !ExpressionFunctions::isTrue(band.condition->evaluate(frame)))
        return false;
    if (band.newPageBefore)
        sink.newPage();
    sink.print(band, frame);
    if (band.newPageAfter)
        sink.newPage();
    return true;
}

void Walker::Private::print(BandSink &sink, const std::optional<Layout::Band> &band, const RowFrame &frame)
{
    if (band)
        print(sink, *band, frame);
}

Walker::Walker(const Layout::Document &layout, const ReportCall &call)
    : d(std::make_unique<Private>(layout, call))
{
}

Walker::~Walker() = default;

void Walker::setFunction(const QString &name, const std::function<QVariant()> &answer)
{
    d->functions.insert(name.toUpper(), answer);
}

bool Walker::step(BandSink &sink)
{
    if (d->ended)
        return false;
    if (!d->started) {
        d->start(sink);
        return true;
    }
    if (d->current < d->frames.size()) {
        d->stepRows(sink);
        return true;
    }
    d->ended = true;
    d->print(sink, d->layout.summary, d->frames.empty() ? d->bare : *d->frames.front());
    return false;
}

int Walker::rowsDone() const
{
    return d->rowsDone;
}

const ExpressionScope &Walker::pageScope() const
{
    return d->frames.empty() ? d->bare : *d->frames.front();
}

void Walker::startPage()
{
    d->aggregates.clear(d->layout.pageFooter);
}

qint64 Walker::pageRow() const
{
    return d->pageRow;
}

void Walker::countOnPage(qint64 pageRow)
{
    const auto values = d->pageValues.find(pageRow);
    if (values == d->pageValues.end())
        return;
    d->aggregates.addValues(d->layout.pageFooter, *values);
    d->pageValues.erase(values);
}
