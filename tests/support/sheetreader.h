// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QProcess>
#include <QStringList>
#include <QXmlStreamReader>

/// What stands in the first sheet of an XLSX file, as other programs read it.
class SheetReader
{
public:
    struct Cell
    {
        QString type; ///< "inlineStr" for a text, "n" for a number, "f" for a formula
        QString value;
        QString format; ///< of the number; empty: none
        bool bold = false;
    };

    explicit SheetReader(const QString &file)
        : m_file(file)
    {
        readStyles();
        readSheet();
    }

    /// "B2"; an empty cell where there is none.
    Cell cell(const QString &place) const { return m_cells.value(place); }
    int cellCount() const { return int(m_cells.size()); }
    /// Of a column, counted from 1, in characters; 0: the usual one.
    double width(int column) const { return m_widths.value(column); }
    QString frozen() const { return m_frozen; } ///< the first cell that scrolls
    QString filtered() const { return m_filtered; } ///< "A1:C9"
    QString name() const
    {
        QXmlStreamReader xml(part(QStringLiteral("xl/workbook.xml")));
        while (!xml.atEnd()) {
            if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QStringLiteral("sheet"))
                return xml.attributes().value(QStringLiteral("name")).toString();
        }
        return {};
    }
    bool isReadable() const { return m_readable; }

private:
    QByteArray part(const QString &name) const
    {
        QProcess unzip;
        unzip.start(QStringLiteral("unzip"), {QStringLiteral("-p"), m_file, name});
        if (!unzip.waitForFinished() || unzip.exitCode() != 0)
            return {};
        return unzip.readAllStandardOutput();
    }

    void readStyles()
    {
        QXmlStreamReader xml(part(QStringLiteral("xl/styles.xml")));
        // Numbers that every spreadsheet program knows without being told.
        QHash<int, QString> formats{{1, QStringLiteral("0")}, {2, QStringLiteral("0.00")}, {3, QStringLiteral("#,##0")},
            {4, QStringLiteral("#,##0.00")}};
        QList<bool> boldFonts;
        bool cells = false;
        while (!xml.atEnd()) {
            const auto token = xml.readNext();
            if (xml.name() == QStringLiteral("cellXfs"))
                cells = token == QXmlStreamReader::StartElement;
            if (token != QXmlStreamReader::StartElement)
                continue;
            const auto number = [&](const char *name) { return xml.attributes().value(QLatin1String(name)).toInt(); };
            if (xml.name() == QStringLiteral("numFmt"))
                formats.insert(number("numFmtId"), xml.attributes().value(QStringLiteral("formatCode")).toString());
            else if (xml.name() == QStringLiteral("font"))
                boldFonts.append(false);
            else if (xml.name() == QStringLiteral("b") && !boldFonts.isEmpty())
                boldFonts.last() = true;
            else if (cells && xml.name() == QStringLiteral("xf"))
                m_styles.append({formats.value(number("numFmtId")), boldFonts.value(number("fontId"))});
        }
    }

    void readSheet()
    {
        const QByteArray sheet = part(QStringLiteral("xl/worksheets/sheet1.xml"));
        QXmlStreamReader xml(sheet);
        QString place;
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement)
                continue;
            const QXmlStreamAttributes attributes = xml.attributes();
            const auto text = [&](const char *name) { return attributes.value(QLatin1String(name)).toString(); };
            if (xml.name() == QStringLiteral("c")) {
                place = text("r");
                Cell cell{text("t").isEmpty() ? QStringLiteral("n") : text("t"), {}, {}, false};
                const auto style = m_styles.value(text("s").toInt());
                cell.format = style.first;
                cell.bold = style.second;
                m_cells.insert(place, cell);
            } else if (xml.name() == QStringLiteral("v") || xml.name() == QStringLiteral("t")) {
                m_cells[place].value = xml.readElementText();
            } else if (xml.name() == QStringLiteral("f")) {
                m_cells[place].type = QStringLiteral("f");
            } else if (xml.name() == QStringLiteral("col")) {
                m_widths.insert(text("min").toInt(), text("width").toDouble());
            } else if (xml.name() == QStringLiteral("pane") && text("state") == QStringLiteral("frozen")) {
                m_frozen = text("topLeftCell");
            } else if (xml.name() == QStringLiteral("autoFilter")) {
                m_filtered = text("ref");
            }
        }
        m_readable = !sheet.isEmpty() && !xml.hasError();
    }

    QString m_file;
    QList<std::pair<QString, bool>> m_styles; ///< number format, bold
    QHash<QString, Cell> m_cells;
    QHash<int, double> m_widths;
    QString m_frozen;
    QString m_filtered;
    bool m_readable = false;
};
