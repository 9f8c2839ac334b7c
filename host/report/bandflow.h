// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/walker.h"

#include <memory>
#include <vector>

/// A band as it was evaluated, in the form in which its paper wants it. Heights are millimetres or lines.
struct BandContent
{
    virtual ~BandContent() = default;
    double height = 0;
    double gapAfter = 0; ///< kept from the band beneath, but needs no room at the foot of a page
    QVector<qint64> rows; ///< that it prints, counted on the page where it begins
};

/// Decides on which page each band comes: page headers and footers, repeated headers, what is kept together, what goes
/// on on the next page. What a band looks like is left to the paper.
class BandFlow : public BandSink
{
public:
    /// Stands for the page's number in bands whose page is not known yet.
    static constexpr QChar pageMark{0xE001};

    /// Both must outlive it. The height is what lies between the margins; 0: one page without end.
    BandFlow(const Layout::Document &layout, Walker &walker, double height);

    /// One step of the walker; false when the report has ended and its last page is done.
    bool step();
    bool isFinished() const { return m_finished; }
    int pagesDone() const { return m_pagesDone; }

protected:
    using Content = std::shared_ptr<BandContent>;
    struct Halves
    {
        Content stays; ///< null: all goes to the next page
        Content goesOn;
    };

    /// Evaluates the band now.
    virtual Content compose(const Layout::Band &band, const ExpressionScope &scope) = 0;
    /// Cuts what is higher than the room. `must`: the whole page is no higher, so that even two lines are torn apart.
    virtual Halves split(const BandContent &content, double room, bool must) const = 0;
    /// Puts it onto the page that is being filled, at that distance from the upper margin.
    virtual void put(const BandContent &content, double top) = 0;
    virtual void pageDone() = 0;
    /// A band is there; what has to be gathered before it is placed is kept back.
    virtual void take(const Layout::Band &band, const Content &content);
    /// A row of the data has all its bands.
    virtual void completeRow() { }
    /// A page break or the end: what was kept back is placed now.
    virtual void placeAll() { }

    void place(const Layout::Band &band, const Content &content);
    int pageNumber() const { return m_pagesDone + 1; }

private:
    struct Entry
    {
        enum class Kind { Band, BeginBlock, EndBlock, PushRepeated, PopRepeated, NewPage };
        Kind kind;
        const Layout::Band *band = nullptr;
        Content content = {};
        bool keepsTogether = false;
        const ExpressionScope *scope = nullptr; ///< of a repeated header
    };

    void print(const Layout::Band &band, const ExpressionScope &scope) override;
    void beginBlock(bool keepTogether) override;
    void endBlock() override;
    void pushRepeated(const Layout::Band &header, const ExpressionScope &scope) override;
    void popRepeated() override;
    void newPage() override;

    void handle(Entry entry);
    void gather(Entry entry);
    void placeGathered();
    void giveGatheringUp();
    void apply(const Entry &entry);
    void flow(Content content);
    void append(const BandContent &content);

    void openPage();
    void closePage();
    void printPageHeader();
    void printRepeatedHeaders();
    Content composePageBand(const Layout::Band &band);
    double room() const;
    double wholeRoom() const;
    bool isEndless() const { return m_height <= 0; }
    void finish();

    const Layout::Document &m_layout;
    Walker &m_walker;
    double m_height;
    double m_footerHeight;

    std::vector<Entry> m_gathered; // what must stand on one page with what comes next
    double m_gatheredHeight = 0;
    int m_gatheredDepth = 0; // of blocks
    bool m_gatheringWaits = false; // the last band wants one beneath it

    std::vector<Entry> m_repeated;
    Entry m_lastPrinted{Entry::Kind::Band};

    double m_top = 0; // where the next band comes
    double m_headerHeight = 0; // of the page's header
    bool m_pageIsOpen = false;
    bool m_pageIsEmpty = true; // but for headers
    bool m_headerIsDue = false; // the title comes first
    bool m_composesPageBand = false;
    int m_pagesDone = 0;
    bool m_finished = false;
};
