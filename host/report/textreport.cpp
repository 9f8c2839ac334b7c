// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/report/textreport.h"

#include "host/report/bandflow.h"
#include "host/report/expressionfunctions.h"
#include "host/report/page.h"
#include "host/report/printerencoding.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr auto lineEnd = "\r\n";

struct PrinterLine
{
    QString text;
    bool condensed = false;
    bool bold = false;
};

struct TextBand : BandContent
{
    QVector<PrinterLine> lines;
};

using TextPage = QVector<PrinterLine>;

/// Data must not command the printer.
QString harmless(QString value, bool isRaw)
{
    for (QChar &character : value) {
        const bool isControl = character.category() == QChar::Other_Control;
        if (isControl || (isRaw && (character == u'^' || character == u'~')))
            character = u' ';
    }
    return value;
}

QString evaluated(const TextTemplate &text, const ExpressionScope &scope, bool isRaw)
{
    QString line;
    for (const TextTemplate::Part &part : text.parts()) {
        if (part.expression)
            line += harmless(TextTemplate::shown(part.expression->evaluate(scope), part.mask), isRaw);
        else
            line += part.text;
    }
    return line;
}

/// A number in the place of its mark. Its further digits take blanks away beside it, so that the columns stay.
void putNumber(QString &line, QChar mark, int number)
{
    const QString digits = QString::number(number);
    for (qsizetype at = line.indexOf(mark); at >= 0; at = line.indexOf(mark)) {
        line.replace(at, 1, digits);
        qsizetype end = at + digits.size();
        for (qsizetype surplus = digits.size() - 1; surplus > 0; --surplus) {
            const qsizetype before = line.lastIndexOf(u"  "_s, end - digits.size());
            if (QStringView(line).sliced(end).startsWith(u"  ")) {
                line.remove(end, 1);
            } else if (before >= 0) {
                line.remove(before, 1);
                --end;
            }
        }
    }
}

} // namespace

PrinterCodes PrinterCodes::escP()
{
    return {"\x1B@", "\x0F", "\x12",
        "\x1B"
        "E",
        "\x1B"
        "F",
        "\x0C"};
}

class TextReport::Private : public BandFlow
{
public:
    Private(const Layout::Document &document, Walker &walker)
        : BandFlow(document, walker, document.characters.raw ? 0 : document.characters.lines)
        , layout(document)
    {
    }

    QString shown(const PrinterLine &line) const;
    QByteArray rawBytes() const;
    QByteArray lineBytes(const PrinterLine &line, const PrinterEncoding &encoding, const PrinterCodes &codes) const;

    const Layout::Document &layout;
    QVector<TextPage> pages;

private:
    Content compose(const Layout::Band &band, const ExpressionScope &scope) override;
    Halves split(const BandContent &content, double room, bool must) const override;
    void put(const BandContent &content, double top) override;
    void pageDone() override;

    TextPage page;
};

BandFlow::Content TextReport::Private::compose(const Layout::Band &band, const ExpressionScope &scope)
{
    auto composed = std::make_shared<TextBand>();
    for (const Layout::TextLine &line : band.lines) {
        if (!line.condition || ExpressionFunctions::isTrue(line.condition->evaluate(scope)))
            composed->lines.append({evaluated(line.text, scope, layout.characters.raw), line.condensed, line.bold});
    }
    composed->height = qMax(std::ceil(band.height), double(composed->lines.size()));
    return composed;
}

BandFlow::Halves TextReport::Private::split(const BandContent &content, double room, bool must) const
{
    const auto above = qsizetype(room);
    if (!must || above < 1)
        return {};
    const auto &band = static_cast<const TextBand &>(content);
    auto stays = std::make_shared<TextBand>();
    stays->lines = band.lines.mid(0, above);
    stays->height = double(above);
    auto goesOn = std::make_shared<TextBand>();
    goesOn->lines = band.lines.mid(above);
    goesOn->height = band.height - double(above);
    return {stays, goesOn};
}

void TextReport::Private::put(const BandContent &content, double top)
{
    const auto &band = static_cast<const TextBand &>(content);
    page.resize(qMax(page.size(), qsizetype(top) + qsizetype(content.height)));
    qsizetype number = qsizetype(top);
    for (PrinterLine line : band.lines) {
        putNumber(line.text, pageMark, pageNumber());
        page[number++] = line;
    }
}

void TextReport::Private::pageDone()
{
    pages.append(std::exchange(page, {}));
}

QString TextReport::Private::shown(const PrinterLine &line) const
{
    QString text = line.text;
    putNumber(text, pageCountMark, int(pages.size()));
    if (layout.characters.raw)
        return text;
    const int columns = layout.characters.columns;
    text.truncate(line.condensed ? columns * condensedPerTen / 10 : columns);
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

QByteArray TextReport::Private::rawBytes() const
{
    const PrinterEncoding encoding(layout.characters.encoding);
    QByteArray bytes;
    for (const TextPage &lines : pages) {
        for (const PrinterLine &line : lines)
            bytes += encoding.encoded(shown(line)) + lineEnd;
    }
    return bytes;
}

QByteArray TextReport::Private::lineBytes(
    const PrinterLine &line, const PrinterEncoding &encoding, const PrinterCodes &codes) const
{
    QByteArray bytes = encoding.encoded(shown(line));
    if (bytes.isEmpty())
        return lineEnd;
    if (line.bold)
        bytes = codes.boldOn + bytes + codes.boldOff;
    if (line.condensed)
        bytes = codes.condensedOn + bytes + codes.condensedOff;
    return bytes + lineEnd;
}

TextReport::TextReport(const Layout::Document &layout, Walker &walker)
    : d(std::make_unique<Private>(layout, walker))
{
}

TextReport::~TextReport() = default;

bool TextReport::step()
{
    return d->step();
}

QStringList TextReport::pages() const
{
    QStringList pages;
    for (const TextPage &page : d->pages) {
        QStringList lines;
        for (const PrinterLine &line : page)
            lines.append(d->shown(line));
        pages.append(lines.join(u'\n'));
    }
    return pages;
}

QByteArray TextReport::bytes(const PrinterCodes &codes) const
{
    if (d->layout.characters.raw)
        return d->rawBytes();
    const PrinterEncoding encoding(d->layout.characters.encoding);
    QByteArray bytes = codes.reset;
    for (const TextPage &page : d->pages) {
        for (const PrinterLine &line : page)
            bytes += d->lineBytes(line, encoding, codes);
        if (d->layout.characters.formFeed)
            bytes += codes.formFeed;
        else
            bytes += QByteArray(lineEnd).repeated(qMax<qsizetype>(0, d->layout.characters.lines - page.size()));
    }
    return bytes;
}
