// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/host_services/spreadsheet.h"

#include "module/host_services/dataset.h"
#include "module/host_services/errors.h"
#include "module/host_services/format.h"

#include <QDateTime>
#include <QSaveFile>
#include <QTemporaryDir>

#include <xlsxwriter.h>

#include <clocale>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int rowsBetweenProgress = 500;
constexpr int mostCharacters = 32767; // of a cell
constexpr int charactersOfSheetName = 31;
constexpr int widestColumn = 60; // characters
constexpr int rowsLookedAt = 200; // for the width of a column
const QString usualMask = QStringLiteral(",0.00"); // of a figure without a mask of its own

[[noreturn]] void cannotWrite(const QString &file, const QString &details)
{
    throw EQen(u"O arquivo \"%1\" não pode ser gravado. Verifique se ele está aberto em outro programa e se a pasta "
               "aceita gravação."_s.arg(file),
        details);
}

/// A tick is read as the word it stands for.
QString textOf(const TField &field, const QVariant &value)
{
    if (field.tick)
        return value.toString() == u"S" ? u"Sim"_s : u"Não"_s;
    return value.toString();
}

/// Calls `write` with each row of the data set, fetching as it goes. False when `progress` gave up.
bool eachRow(TDataSet &dataSet, const QVector<int> &rows, const Spreadsheet::Progress &progress,
    const std::function<void(int row)> &write)
{
    for (int written = 0;; ++written) {
        if (rows.isEmpty() && written >= dataSet.rowCount() && dataSet.canFetchMore())
            dataSet.fetchMore();
        if (written >= (rows.isEmpty() ? dataSet.rowCount() : int(rows.size())))
            return true;
        if (progress && written % rowsBetweenProgress == 0 && !progress(written))
            return false;
        write(rows.isEmpty() ? written : rows[written]);
    }
}

/// The file comes into being when all of it is there.
void commit(QSaveFile &file)
{
    if (!file.commit())
        cannotWrite(file.fileName(), file.errorString());
}

void open(QSaveFile &file)
{
    if (!file.open(QIODevice::WriteOnly))
        cannotWrite(file.fileName(), file.errorString());
}

/// All decimals that the figure has, and at least those of its mask.
QString plainNumber(const TField &field, double value)
{
    const QString mask = field.mask.isEmpty() && field.type == TField::Type::Float ? usualMask : field.mask;
    const QString whole = mask.section(u'.', 0, 0).remove(u',');
    const QString decimals =
        mask.section(u'.', 1).count(u'0') > 0 ? QString(mask.section(u'.', 1).count(u'0'), u'0') : QString();
    return Format::number(value, (whole.isEmpty() ? u"0"_s : whole) + u'.' + decimals + u"########"_s);
}

QString quoted(const QString &text)
{
    static const QRegularExpression special(u"[;\"\r\n]|^\\s|\\s$"_s);
    if (!text.contains(special))
        return text;
    QString inside = text;
    return u'"' + inside.replace(u'"', u"\"\""_s) + u'"';
}

QString csvText(const QString &text)
{
    static const QRegularExpression formula(u"^[=+\\-@\t\r]"_s);
    return quoted(text.contains(formula) ? u'\'' + text : text);
}

QString csvCell(const TField &field, const QVariant &value)
{
    if (value.isNull() && !field.tick)
        return {};
    if (field.isNumeric())
        return plainNumber(field, value.toDouble());
    if (field.type == TField::Type::Text)
        return csvText(textOf(field, value));
    return field.text(value);
}

/// The library writes figures by the locale of the thread, and a comma in them makes an unreadable file.
class PointInFigures
{
public:
    PointInFigures()
        : m_point(newlocale(LC_NUMERIC_MASK, "C", nullptr))
        , m_before(uselocale(m_point))
    {
    }
    ~PointInFigures()
    {
        uselocale(m_before);
        freelocale(m_point);
    }
    Q_DISABLE_COPY_MOVE(PointInFigures)

private:
    locale_t m_point;
    locale_t m_before;
};

/// ",0.00" as spreadsheet programs write it: "#,##0.00".
QString numberFormat(const QString &mask)
{
    QString whole = mask.section(u'.', 0, 0);
    const bool grouped = whole.contains(u',');
    whole = QString(whole.count(u'0'), u'0');
    if (grouped) {
        whole = whole.rightJustified(qMax(4, int(whole.size())), u'#');
        for (qsizetype at = whole.size() - 3; at > 0; at -= 3)
            whole.insert(at, u',');
    }
    const QString decimals = mask.section(u'.', 1);
    return (whole.isEmpty() ? u"#"_s : whole) + (decimals.isEmpty() ? QString() : u'.' + decimals);
}

QString formatOf(const TField &field)
{
    switch (field.type) {
    case TField::Type::Integer:
        return field.mask.isEmpty() ? u"0"_s : numberFormat(field.mask);
    case TField::Type::Float:
        return numberFormat(field.mask.isEmpty() ? usualMask : field.mask);
    case TField::Type::Date:
        return u"dd/mm/yyyy"_s;
    case TField::Type::Time:
        return u"hh:mm:ss"_s;
    case TField::Type::DateTime:
        return u"dd/mm/yyyy hh:mm:ss"_s;
    case TField::Type::Text:
        break;
    }
    return {};
}

/// Without what such a file cannot hold.
QByteArray cellText(const QString &text)
{
    QString kept;
    for (const QChar character : text.left(mostCharacters)) {
        if (character >= u' ' || character == u'\t' || character == u'\n')
            kept.append(character);
    }
    return kept.toUtf8();
}

QString sheetName(const QString &title)
{
    static const QRegularExpression forbidden(u"[\\[\\]:*?/\\\\]"_s);
    static const QRegularExpression outerApostrophes(u"^'+|'+$"_s);
    QString name = title;
    name.replace(forbidden, u" "_s);
    name =
        QString::fromUtf8(cellText(name)).simplified().left(charactersOfSheetName).remove(outerApostrophes).trimmed();
    return name.isEmpty() ? u"Planilha"_s : name;
}

class Workbook
{
public:
    Workbook(const QByteArray &file, const QString &sheet, const TDataSet &dataSet,
        const QVector<Spreadsheet::Column> &columns);
    ~Workbook()
    {
        if (m_book)
            workbook_close(m_book);
    }
    Q_DISABLE_COPY_MOVE(Workbook)

    void writeRow(int row);
    /// Writes the file; an empty text, or what the library says went wrong.
    QString close();

private:
    void writeCell(lxw_row_t row, int column, const TField &field, const QVariant &value);
    void finishSheet();

    const TDataSet &m_dataSet;
    const QVector<Spreadsheet::Column> &m_columns;
    lxw_workbook *m_book;
    lxw_worksheet *m_sheet;
    QVector<lxw_format *> m_formats;
    QVector<int> m_widths; ///< characters
    lxw_row_t m_written = 0;
};

Workbook::Workbook(
    const QByteArray &file, const QString &sheet, const TDataSet &dataSet, const QVector<Spreadsheet::Column> &columns)
    : m_dataSet(dataSet)
    , m_columns(columns)
{
    // Row by row: the memory taken does not grow with the rows.
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    m_book = workbook_new_opt(file.constData(), &options);
    m_sheet = m_book ? workbook_add_worksheet(m_book, sheet.toUtf8().constData()) : nullptr;
    if (!m_sheet)
        return;
    lxw_format *bold = workbook_add_format(m_book);
    format_set_bold(bold);
    for (int column = 0; column < columns.size(); ++column) {
        const TField &field = dataSet.fields()[columns[column].field];
        lxw_format *format = nullptr;
        if (const QString pattern = formatOf(field); !pattern.isEmpty()) {
            format = workbook_add_format(m_book);
            format_set_num_format(format, pattern.toUtf8().constData());
        }
        m_formats.append(format);
        m_widths.append(int(columns[column].title.size()) + 3); // the filter's arrow stands in the title
        worksheet_write_string(m_sheet, 0, lxw_col_t(column), cellText(columns[column].title).constData(), bold);
    }
}

void Workbook::writeRow(int row)
{
    ++m_written;
    if (!m_sheet)
        return;
    for (int column = 0; column < m_columns.size(); ++column) {
        const TField &field = m_dataSet.fields()[m_columns[column].field];
        const QVariant value = m_dataSet.cell(row, m_columns[column].field);
        if (m_written <= rowsLookedAt)
            m_widths[column] = qMax(m_widths[column], int(field.text(value).section(u'\n', 0, 0).size()) + 1);
        if (!value.isNull() || field.tick)
            writeCell(m_written, column, field, value);
    }
}

void Workbook::writeCell(lxw_row_t row, int column, const TField &field, const QVariant &value)
{
    lxw_format *format = m_formats[column];
    const auto place = lxw_col_t(column);
    const QDate date = value.toDate();
    const QTime time = field.type == TField::Type::Date ? QTime(0, 0) : value.toTime();
    const bool dated = field.type == TField::Type::Date || field.type == TField::Type::DateTime;
    if (field.isNumeric() && std::isfinite(value.toDouble())) {
        worksheet_write_number(m_sheet, row, place, value.toDouble(), format);
    } else if (dated && date.year() >= 1900 && date.year() <= 9999) {
        lxw_datetime moment{date.year(), date.month(), date.day(), time.hour(), time.minute(), double(time.second())};
        worksheet_write_datetime(m_sheet, row, place, &moment, format);
    } else if (field.type == TField::Type::Time && time.isValid()) {
        worksheet_write_number(m_sheet, row, place, time.msecsSinceStartOfDay() / 86'400'000.0, format);
    } else {
        const QString text = field.type == TField::Type::Text ? textOf(field, value) : field.text(value);
        worksheet_write_string(m_sheet, row, place, cellText(text).constData(), nullptr);
    }
}

void Workbook::finishSheet()
{
    for (int column = 0; column < m_columns.size(); ++column)
        worksheet_set_column(
            m_sheet, lxw_col_t(column), lxw_col_t(column), qMin(m_widths[column], widestColumn), nullptr);
    worksheet_freeze_panes(m_sheet, 1, 0);
    if (!m_columns.isEmpty())
        worksheet_autofilter(m_sheet, 0, 0, m_written, lxw_col_t(m_columns.size() - 1));
}

QString Workbook::close()
{
    if (!m_sheet)
        return u"out of memory"_s;
    finishSheet();
    const lxw_error error = workbook_close(m_book);
    m_book = nullptr;
    return error == LXW_NO_ERROR ? QString() : QString::fromUtf8(lxw_strerror(error));
}

} // namespace

bool Spreadsheet::writeXlsx(TDataSet &dataSet, const QVector<Column> &columns, const QString &sheetTitle,
    const QString &file, const Progress &progress, const QVector<int> &rows)
{
    QSaveFile target(file);
    open(target);
    // The library writes to a name of its own; what is complete goes where it belongs.
    const QTemporaryDir folder;
    QFile made(folder.filePath(u"planilha.xlsx"_s));
    const PointInFigures point;
    Workbook workbook(QFile::encodeName(made.fileName()), sheetName(sheetTitle), dataSet, columns);
    int written = 0;
    const bool whole = eachRow(dataSet, rows, progress, [&](int row) {
        if (++written >= LXW_ROW_MAX)
            throw EQen(u"Uma planilha não comporta mais de 1.048.575 linhas. Restrinja a consulta."_s);
        workbook.writeRow(row);
    });
    if (!whole)
        return false;
    if (const QString error = workbook.close(); !error.isEmpty())
        cannotWrite(file, error);
    if (!made.open(QIODevice::ReadOnly))
        cannotWrite(file, made.errorString());
    while (!made.atEnd())
        target.write(made.read(1 << 20));
    commit(target);
    return true;
}

bool Spreadsheet::writeCsv(TDataSet &dataSet, const QVector<Column> &columns, const QString &file,
    const Progress &progress, const QVector<int> &rows)
{
    QSaveFile target(file);
    open(target);
    const auto writeLine = [&](const QStringList &cells) { target.write(cells.join(u';').toUtf8() + "\r\n"); };
    target.write("\xEF\xBB\xBF");
    QStringList titles;
    for (const Column &column : columns)
        titles.append(csvText(column.title));
    writeLine(titles);
    const bool whole = eachRow(dataSet, rows, progress, [&](int row) {
        QStringList cells;
        for (const Column &column : columns)
            cells.append(csvCell(dataSet.fields()[column.field], dataSet.cell(row, column.field)));
        writeLine(cells);
    });
    if (whole)
        commit(target);
    return whole;
}
