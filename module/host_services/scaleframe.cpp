// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/host_services/scaleframe.h"

#include "module/host_services/scaleforms.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr char cr = '\r';
constexpr char lf = '\n';
constexpr qsizetype maxBody = 40;

/// Cuts a stream into frames, byte by byte. High bits are dropped: a scale of seven bits and parity may be read with
/// eight.
class FrameSplitter
{
public:
    FrameSplitter(char terminator, bool startsAtBoundary)
        : m_state(startsAtBoundary ? State::Between : State::Skipping)
        , m_terminator(terminator)
    {
    }

    void take(char raw)
    {
        ++m_position;
        step(char(raw & 0x7F));
    }

    void finish();

    const std::vector<ScaleFrame> &frames() const { return m_frames; }
    /// Whether the stream stops inside a frame that STX began.
    bool stopsInsideStx() const { return m_state == State::Stx; }

private:
    enum class State { Between, Skipping, Line, Stx, AfterP03, AfterP03Stx };

    void step(char byte);
    void between(char byte);
    void inside(char byte);
    void afterP03(char byte);
    void afterP03Stx(char byte);
    void begin(char byte, qsizetype position);
    void emitFrame(qsizetype end);
    void emitP03(ScaleFrame::Check check, qsizetype end);
    bool isRightChecksum(char byte) const;
    bool endsLine(char byte) const { return byte == cr || byte == lf || (m_terminator != 0 && byte == m_terminator); }

    State m_state;
    char m_terminator;
    qsizetype m_position = 0; ///< behind the byte in hand
    ScaleFrame m_frame;
    std::vector<ScaleFrame> m_frames;
};

void FrameSplitter::step(char byte)
{
    switch (m_state) {
    case State::Between:
        return between(byte);
    case State::Skipping:
        if (byte == ScaleFrame::stx)
            begin(byte, m_position - 1);
        else if (endsLine(byte) || byte == ScaleFrame::etx)
            m_state = State::Between;
        return;
    case State::Line:
    case State::Stx:
        return inside(byte);
    case State::AfterP03:
        return afterP03(byte);
    case State::AfterP03Stx:
        return afterP03Stx(byte);
    }
}

void FrameSplitter::between(char byte)
{
    // The LF of CR LF belongs to the frame that CR ended.
    if (byte == lf && !m_frames.empty() && m_frames.back().end == m_position - 1)
        m_frames.back().end = m_position;
    const bool isControl = byte < ' ' || byte == 0x7F;
    if (byte == ScaleFrame::stx || (!isControl && !endsLine(byte)))
        begin(byte, m_position - 1);
}

void FrameSplitter::begin(char byte, qsizetype position)
{
    m_frame = {};
    m_frame.begin = position;
    m_frame.body.append(byte);
    m_state = byte == ScaleFrame::stx ? State::Stx : State::Line;
}

void FrameSplitter::inside(char byte)
{
    if (m_frame.body == "\x02?") {
        m_frame.body.append(byte); // a status byte, whatever it looks like
        return;
    }
    if (byte == ScaleFrame::stx)
        return begin(byte, m_position - 1); // the frame before it lost its end
    if (m_state == State::Stx && byte == cr && isToledoP03(m_frame.body)) {
        m_frame.end = m_position;
        m_state = State::AfterP03;
        return;
    }
    if (byte == ScaleFrame::etx) {
        m_frame.body.append(byte);
        if (m_state == State::Stx)
            emitFrame(m_position);
        m_state = State::Between; // without its STX it is a tail
        return;
    }
    if (byte == cr || byte == lf || (m_state == State::Line && endsLine(byte)))
        return emitFrame(m_position);
    m_frame.body.append(byte);
    if (m_frame.body.size() > maxBody)
        m_state = State::Skipping;
}

// A checksum may stand behind the CR, and may itself look like STX, CR or LF.
void FrameSplitter::afterP03(char byte)
{
    if (byte == ScaleFrame::stx)
        m_state = State::AfterP03Stx;
    else
        emitP03(isRightChecksum(byte) ? ScaleFrame::Check::Right : ScaleFrame::Check::Wrong, m_position);
}

// Two STX: the first was the checksum. One: it begins the next frame.
void FrameSplitter::afterP03Stx(char byte)
{
    if (byte == ScaleFrame::stx) {
        emitP03(isRightChecksum(byte) ? ScaleFrame::Check::Right : ScaleFrame::Check::Wrong, m_position - 1);
        begin(byte, m_position - 1);
        return;
    }
    emitP03(ScaleFrame::Check::Absent, m_frame.end);
    begin(ScaleFrame::stx, m_position - 2);
    inside(byte);
}

void FrameSplitter::emitFrame(qsizetype end)
{
    m_frame.end = end;
    m_frames.push_back(m_frame);
    m_state = State::Between;
}

void FrameSplitter::emitP03(ScaleFrame::Check check, qsizetype end)
{
    m_frame.check = check;
    emitFrame(end);
}

bool FrameSplitter::isRightChecksum(char byte) const
{
    int sum = cr + byte;
    for (const char each : m_frame.body)
        sum += each;
    return sum % 128 == 0;
}

void FrameSplitter::finish()
{
    if (m_state == State::AfterP03)
        emitP03(ScaleFrame::Check::Absent, m_position);
    else if (m_state == State::AfterP03Stx && isRightChecksum(ScaleFrame::stx))
        emitP03(ScaleFrame::Check::Right, m_position);
    else if (m_state == State::AfterP03Stx)
        emitP03(ScaleFrame::Check::Absent, m_position - 1);
    else if (m_state == State::Line && m_frame.begin == 0 && m_frame.body.size() == 5) {
        m_frame.fixedLength = true;
        if (recogniseScaleFrame(m_frame))
            emitFrame(m_position);
    }
}

struct WholeFrame
{
    qsizetype begin;
    qsizetype end;
    std::optional<ScaleReading> reading; ///< empty when no form fits
};

std::vector<WholeFrame> wholeFrames(const QByteArray &bytes, char terminator, bool startsAtBoundary)
{
    const qsizetype dropped = std::max<qsizetype>(0, bytes.size() - maxScaleStream);
    FrameSplitter splitter(terminator, startsAtBoundary && dropped == 0);
    std::for_each(bytes.begin() + dropped, bytes.end(), [&splitter](char byte) { splitter.take(byte); });
    splitter.finish();

    std::vector<WholeFrame> result;
    std::vector<WholeFrame> stxOnly;
    bool speaksStx = splitter.stopsInsideStx();
    for (const ScaleFrame &frame : splitter.frames()) {
        const WholeFrame whole{dropped + frame.begin, dropped + frame.end, recogniseScaleFrame(frame)};
        result.push_back(whole);
        if (!frame.beginsWithStx())
            continue;
        stxOnly.push_back(whole);
        speaksStx = speaksStx || whole.reading;
    }
    // A scale that begins its frames with STX sends none without: what looks like one is a tail, and a tail of tare
    // digits would be a weight.
    return speaksStx ? stxOnly : result;
}

} // namespace

ScaleReading readScaleText(const QByteArray &bytes, char terminator)
{
    ScaleReading reading;
    const std::vector<WholeFrame> frames = wholeFrames(bytes, terminator, true);
    if (frames.empty()) {
        reading.raw = bytes;
        reading.reason = bytes.isEmpty() ? u"A balança não enviou leitura."_s : u"Leitura incompleta da balança."_s;
        return reading;
    }
    const WholeFrame &last = frames.back();
    if (last.reading)
        reading = *last.reading;
    else
        reading.reason = u"Leitura da balança não reconhecida."_s;
    reading.raw = bytes.mid(last.begin, last.end - last.begin);
    return reading;
}

QByteArray lastWholeFrames(const QByteArray &buffer, qsizetype maxBytes, bool startsAtBoundary)
{
    const std::vector<WholeFrame> frames = wholeFrames(buffer, cr, startsAtBoundary);
    if (frames.empty())
        return {};
    const qsizetype end = frames.back().end;
    qsizetype begin = end;
    for (auto frame = frames.rbegin(); frame != frames.rend() && end - frame->begin <= maxBytes; ++frame)
        begin = frame->begin;
    return buffer.mid(begin, end - begin);
}
