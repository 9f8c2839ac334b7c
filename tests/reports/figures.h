// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/controls/gridactions.h"
#include "tests/reports/reportstation.h"
#include "tests/support/sheetreader.h"

#include <QFileDialog>
#include <QTemporaryDir>

/// Columns of the grid of a report as people read them: the cells of a row joined by "|".
inline QStringList shown(const ReportStation &station, const QStringList &fields)
{
    QStringList rows = station.column(fields.first());
    for (const QString &field : fields.mid(1)) {
        const QStringList cells = station.column(field);
        for (qsizetype row = 0; row < rows.size(); ++row)
            rows[row] += QLatin1Char('|') + cells[row];
    }
    return rows;
}

/// The first of the texts that the paper has not after the one before; empty when they all follow one another.
inline QString firstMissing(const QString &paper, const QStringList &texts)
{
    qsizetype from = 0;
    for (const QString &text : texts) {
        const qsizetype found = paper.indexOf(text, from);
        if (found < from)
            return text + QStringLiteral(" is missing in\n") + paper;
        from = found + text.size();
    }
    return {};
}

/// The grid of a report as a spreadsheet program opens it, exported by the grid's own menu entry.
class ExportedGrid
{
public:
    explicit ExportedGrid(ReportStation &station, const QString &grid = QStringLiteral("DBGrid1"))
        : m_rows(station.grid(grid)->model()->rowCount())
        , m_columns(station.grid(grid)->model()->columnCount())
        , m_sheet(exported(station, grid))
    {
    }

    int rowCount() const { return m_rows; }
    /// The values beneath a title as they are stored: figures with a point.
    QStringList column(const QString &title) const
    {
        for (int column = 0; column < m_columns; ++column) {
            const QChar letter(char16_t(u'A' + column));
            if (m_sheet.cell(letter + QStringLiteral("1")).value != title)
                continue;
            QStringList values;
            for (int row = 2; row < m_rows + 2; ++row)
                values.append(plain(m_sheet.cell(letter + QString::number(row))));
            return values;
        }
        return {QStringLiteral("no column ") + title};
    }

private:
    /// A figure is written with all digits of its binary form.
    static QString plain(const SheetReader::Cell &cell)
    {
        return cell.type == QStringLiteral("n") ? QString::number(cell.value.toDouble(), 'g', 12) : cell.value;
    }
    SheetReader exported(ReportStation &station, const QString &grid)
    {
        const QString file = m_folder.filePath(QStringLiteral("relatorio.xlsx"));
        station.answers.expectWindow([file](QWidget *window) {
            auto *name = window->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
            QVERIFY(name);
            name->setText(file);
            QTest::keyClick(name, Qt::Key_Return);
        });
        GridActions::exportRows(*station.grid(grid), GridActions::FileKind::Xlsx);
        return SheetReader(file);
    }

    QTemporaryDir m_folder;
    int m_rows;
    int m_columns;
    SheetReader m_sheet;
};
