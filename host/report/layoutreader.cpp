// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/report/layoutreader.h"

#include "host/report/bandreader.h"
#include "module/host_services/errors.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPageSize>

using namespace Qt::StringLiterals;

namespace {

using Place = BandReader::Place;

const QVector<std::pair<QString, QPageSize::PageSizeId>> papers{{u"A3"_s, QPageSize::A3}, {u"A4"_s, QPageSize::A4},
    {u"A5"_s, QPageSize::A5}, {u"A6"_s, QPageSize::A6}, {u"Letter"_s, QPageSize::Letter},
    {u"Legal"_s, QPageSize::Legal}};

class DocumentReader
{
public:
    DocumentReader(QIODevice &device, const QString &file);
    Layout::Document read();

private:
    void readPage();
    void readMargins(LayoutAttributes &attributes);
    void readLabels();
    void readCharacters();
    void readTitle();
    Layout::Rows readRows(bool beneath);
    Layout::Group readGroup();
    QVector<std::pair<QString, QString>> readMatch(LayoutAttributes &attributes);

    /// Reads a band into the place that holds one at most.
    LayoutXml::Child single(const QString &element, Place place, std::optional<Layout::Band> &band);
    double usableWidth() const;
    void setWidth();
    /// What the bands must fit into is to be known before them.
    void beforeBands() const;

    LayoutXml m_xml;
    BandReader m_bands;
    Layout::Document m_document;
};

DocumentReader::DocumentReader(QIODevice &device, const QString &file)
    : m_xml(device, file)
    , m_bands(m_xml)
{
    m_document.file = file;
    m_document.name = QFileInfo(file).completeBaseName();
    m_document.isText = m_document.name.startsWith(u'T');
    if (!m_document.isText && !m_document.name.startsWith(u'W'))
        m_xml.failAt(1, u"nome do arquivo; esperado um que comece com W (gráfico) ou T (texto)"_s);
    m_document.characters.encoding = u"CP850"_s;
}

Layout::Document DocumentReader::read()
{
    m_xml.root(u"layout"_s);
    LayoutAttributes attributes(m_xml);
    m_document.title = attributes.needed(u"title"_s);
    attributes.done();
    setWidth();

    std::vector<LayoutXml::Child> children;
    if (m_document.isText) {
        children.push_back({u"characters"_s, [this] { readCharacters(); }, true});
    } else {
        children.push_back({u"page"_s, [this] { readPage(); }, true});
        children.push_back({u"labels"_s, [this] { readLabels(); }, true});
        children.push_back({u"style"_s, [this] { m_bands.readStyle(); }});
    }
    children.push_back(single(u"page-header"_s, Place::PageHeader, m_document.pageHeader));
    children.push_back({u"title"_s, [this] { readTitle(); }, true});
    children.push_back({u"rows"_s, [this] { m_document.rows.push_back(readRows(false)); }});
    children.push_back(single(u"summary"_s, Place::Summary, m_document.summary));
    children.push_back(single(u"page-footer"_s, Place::PageFooter, m_document.pageFooter));
    m_xml.children(children);
    m_xml.end();
    m_document.aggregates = m_bands.aggregates();
    return m_document;
}

LayoutXml::Child DocumentReader::single(const QString &element, Place place, std::optional<Layout::Band> &band)
{
    return {element, [this, place, &band] { band = m_bands.readBand(place); }, true};
}

double DocumentReader::usableWidth() const
{
    const Layout::Page &page = m_document.page;
    return page.size.width() - page.margins.left() - page.margins.right();
}

void DocumentReader::setWidth()
{
    if (m_document.isText)
        m_bands.setWidth(m_document.characters.raw ? 0 : m_document.characters.columns, true);
    else
        m_bands.setWidth(m_document.page.label.isEmpty() ? usableWidth() : m_document.page.label.width(), false);
}

void DocumentReader::beforeBands() const
{
    if (m_bands.hasBands())
        m_xml.fail(u"<%1> depois de uma faixa; esperado antes da primeira"_s.arg(m_xml.element()));
}

void DocumentReader::readMargins(LayoutAttributes &attributes)
{
    if (!attributes.has(u"margins"_s))
        return;
    QVector<double> margins;
    bool ok = true;
    for (const QString &part : attributes.text(u"margins"_s).simplified().split(u' ')) {
        bool isNumber = false;
        margins.append(part.toDouble(&isNumber));
        ok = ok && isNumber && margins.last() >= 0;
    }
    if (!ok || (margins.size() != 1 && margins.size() != 4))
        attributes.failExpected(u"margins"_s, u"um número, ou quatro: esquerda, em cima, direita, embaixo"_s);
    if (margins.size() == 1)
        margins.fill(margins.first(), 4);
    m_document.page.margins = QMarginsF(margins[0], margins[1], margins[2], margins[3]);
}

void DocumentReader::readPage()
{
    beforeBands();
    if (!m_document.page.label.isEmpty())
        m_xml.fail(u"<page> depois de <labels>; esperado antes"_s);
    LayoutAttributes attributes(m_xml);
    QStringList names;
    for (const auto &paper : papers)
        names.append(paper.first);
    const int paper = attributes.word(u"paper"_s, names, 1);
    QSizeF size = QPageSize::size(papers[paper].second, QPageSize::Millimeter);
    if (attributes.word(u"orientation"_s, {u"portrait"_s, u"landscape"_s}, 0) == 1)
        size.transpose();
    size.setWidth(attributes.number(u"width"_s, size.width(), 1));
    size.setHeight(attributes.number(u"height"_s, size.height(), 1));
    m_document.page.size = size;
    readMargins(attributes);
    attributes.done();
    const QMarginsF &margins = m_document.page.margins;
    if (usableWidth() <= 0 || size.height() <= margins.top() + margins.bottom())
        m_xml.fail(u"as margens cobrem a página; esperado que sobre lugar entre elas"_s);
    setWidth();
    m_xml.noChildren();
}

void DocumentReader::readLabels()
{
    beforeBands();
    LayoutAttributes attributes(m_xml);
    Layout::Page &page = m_document.page;
    page.columns = attributes.whole(u"columns"_s, 1, 1, 100);
    page.label = {attributes.neededNumber(u"width"_s), attributes.neededNumber(u"height"_s)};
    page.columnGap = attributes.number(u"column-gap"_s, 0);
    page.rowGap = attributes.number(u"row-gap"_s, 0);
    attributes.done();
    if (page.label.isEmpty())
        m_xml.fail(u"etiqueta sem tamanho; esperado width e height maiores que 0"_s);
    const double width = page.columns * page.label.width() + (page.columns - 1) * page.columnGap;
    const double usableHeight = page.size.height() - page.margins.top() - page.margins.bottom();
    if (width > usableWidth() + 0.01)
        m_xml.fail(u"as etiquetas ocupam %1 mm e saem da largura; esperado até %2 mm"_s.arg(width).arg(usableWidth()));
    if (page.label.height() > usableHeight + 0.01)
        m_xml.fail(u"a etiqueta sai da altura da página; esperado até %1 mm"_s.arg(usableHeight));
    setWidth();
    m_xml.noChildren();
}

void DocumentReader::readCharacters()
{
    static const QStringList encodings{u"CP850"_s, u"ISO-8859-1"_s, u"UTF-8"_s};
    beforeBands();
    LayoutAttributes attributes(m_xml);
    Layout::CharacterPage &page = m_document.characters;
    page.lines = attributes.whole(u"lines"_s, page.lines, 1, 1000);
    page.columns = attributes.whole(u"columns"_s, page.columns, 1, 1000);
    page.encoding = encodings[attributes.word(u"encoding"_s, encodings, 0)];
    page.raw = attributes.yes(u"raw"_s);
    page.formFeed = attributes.yes(u"form-feed"_s, page.formFeed);
    attributes.done();
    setWidth();
    m_xml.noChildren();
}

void DocumentReader::readTitle()
{
    m_document.titleBand = m_bands.readBand(Place::Title, [this](LayoutAttributes &attributes) {
        m_document.titleBeforePageHeader = attributes.yes(u"before-page-header"_s);
    });
}

QVector<std::pair<QString, QString>> DocumentReader::readMatch(LayoutAttributes &attributes)
{
    QVector<std::pair<QString, QString>> match;
    if (!attributes.has(u"match"_s))
        return match;
    for (const QString &pair : attributes.text(u"match"_s).split(u';')) {
        const QStringList sides = pair.split(u'=');
        if (sides.size() != 2 || sides[0].trimmed().isEmpty() || sides[1].trimmed().isEmpty())
            attributes.failExpected(u"match"_s, u"campos como NUM_OF=NUM_OF;COR=COR"_s);
        match.append({sides[0].trimmed(), sides[1].trimmed()});
    }
    return match;
}

Layout::Rows DocumentReader::readRows(bool beneath)
{
    LayoutAttributes attributes(m_xml);
    Layout::Rows rows;
    rows.line = m_xml.line();
    rows.dataSet = attributes.needed(u"data"_s);
    if (beneath)
        rows.match = readMatch(attributes);
    rows.keepsTogether = attributes.yes(u"keep-together"_s);
    attributes.done();
    m_xml.children({single(u"header"_s, Place::Header, rows.header), single(u"empty"_s, Place::Empty, rows.empty),
        {u"group"_s, [&] { rows.groups.push_back(readGroup()); }},
        {u"detail"_s, [&] { rows.details.push_back(m_bands.readBand(Place::Detail)); }},
        {u"rows"_s, [&] { rows.beneath.push_back(readRows(true)); }}, single(u"footer"_s, Place::Footer, rows.footer)});
    return rows;
}

Layout::Group DocumentReader::readGroup()
{
    LayoutAttributes attributes(m_xml);
    Layout::Group group;
    group.line = m_xml.line();
    group.by = m_bands.readExpression(attributes.needed(u"by"_s));
    group.newPage = attributes.yes(u"new-page"_s);
    group.keepsTogether = attributes.yes(u"keep-together"_s);
    attributes.done();
    m_xml.children(
        {single(u"header"_s, Place::Header, group.header), single(u"footer"_s, Place::Footer, group.footer)});
    return group;
}

} // namespace

QString LayoutReader::find(const QString &name, const QStringList &folders)
{
    if (name.contains(u'/') || name.contains(u'\\'))
        return {};
    for (const QString &folder : folders) {
        const QString file = QDir(folder).filePath(name + u".xml"_s);
        if (QFileInfo(file).isFile())
            return file;
    }
    return {};
}

Layout::Document LayoutReader::read(const QString &file)
{
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly))
        throw EQen(u"O layout %1 não pôde ser lido."_s.arg(QFileInfo(file).fileName()), source.errorString());
    return DocumentReader(source, file).read();
}
