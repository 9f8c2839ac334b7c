// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "module/controls/gridactions.h"

#include "module/controls/datasetmodel.h"
#include "module/controls/dbgrid.h"
#include "module/host_services/busy.h"
#include "module/host_services/host.h"
#include "module/host_services/spreadsheet.h"
#include "module/messages.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QProgressDialog>
#include <QSettings>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostRows = 100'000; // that anybody sorts or copies by hand

const QString folderKey = QStringLiteral("Pastas/planilhas");

QVector<int> columnsFromTheLeft(const TDBGrid &grid)
{
    QVector<int> columns;
    for (int place = 0; place < grid.horizontalHeader()->count(); ++place)
        columns.append(grid.horizontalHeader()->logicalIndex(place));
    return columns;
}

QString titleOf(const TDBGrid &grid, int column)
{
    return grid.rows()->headerData(column, Qt::Horizontal).toString();
}

/// A cell as one piece of a line.
QString pieceOf(const QModelIndex &index)
{
    const QVariant tick = index.data(Qt::CheckStateRole);
    if (tick.isValid())
        return tick.toInt() == Qt::Checked ? u"Sim"_s : u"Não"_s;
    return index.data().toString().replace(u'\t', u' ').replace(u'\r', QString()).replace(u'\n', u' ');
}

/// The cells of a row from the left; those that are wanted.
QString lineOf(const TDBGrid &grid, int row, const std::function<bool(const QModelIndex &)> &wanted)
{
    QStringList pieces;
    for (const int column : columnsFromTheLeft(grid)) {
        const QModelIndex index = grid.rows()->index(row, column);
        if (wanted(index))
            pieces.append(pieceOf(index));
    }
    return pieces.join(u'\t');
}

/// "Baixa de OF.xlsx" in the folder that was used last.
QString suggestedFile(const TDBGrid &grid, const QString &ending)
{
    static const QRegularExpression notInNames(u"[\\\\/:*?\"<>|]"_s);
    QString folder = Host::current().settings().value(folderKey).toString();
    if (folder.isEmpty() || !QDir(folder).exists())
        folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QWidget *screen = GridActions::screenOf(grid);
    QString name = (screen ? screen : grid.window())->windowTitle().replace(notInNames, u" "_s).simplified();
    if (name.isEmpty())
        name = u"planilha"_s;
    return QDir(folder).filePath(name + u'.' + ending);
}

QVector<Spreadsheet::Column> shownColumns(const TDBGrid &grid)
{
    QVector<Spreadsheet::Column> columns;
    for (const int column : columnsFromTheLeft(grid))
        columns.append({grid.rows()->fieldIndex(column), titleOf(grid, column)});
    return columns;
}

/// Of a data set in its own order: none, which means all.
QVector<int> shownRows(const TDBGrid &grid)
{
    QVector<int> rows;
    for (int row = 0; row < grid.rows()->rowCount() && grid.rows()->sortColumn() >= 0; ++row)
        rows.append(grid.rows()->dataSetRow(row));
    return rows;
}

void write(TDBGrid &grid, GridActions::FileKind kind, const QString &title, const QString &file)
{
    TDataSet &dataSet = *grid.dataSet();
    QProgressDialog progress(u"Gravando a planilha…"_s, u"Cancelar"_s, 0, 0, grid.window());
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(1000);
    const auto told = [&](int written) {
        // Without an end while nobody knows how many rows follow.
        progress.setMaximum(dataSet.canFetchMore() ? 0 : dataSet.rowCount());
        progress.setValue(written);
        return !progress.wasCanceled();
    };
    if (kind == GridActions::FileKind::Xlsx)
        Spreadsheet::writeXlsx(dataSet, shownColumns(grid), title, file, told, shownRows(grid));
    else
        Spreadsheet::writeCsv(dataSet, shownColumns(grid), file, told, shownRows(grid));
}

void addSorting(TDBGrid &grid, QMenu *menu)
{
    int place = 0;
    for (const int column : columnsFromTheLeft(grid)) {
        ++place;
        const QString key = place <= 9 ? u"\tCtrl+%1"_s.arg(place) : QString();
        QAction *action = menu->addAction(titleOf(grid, column) + key);
        action->setCheckable(true);
        action->setChecked(column == grid.rows()->sortColumn());
        action->setVisible(!titleOf(grid, column).isEmpty());
        QObject::connect(action, &QAction::triggered, &grid,
            [&grid, column] { GridActions::run(grid, [&] { grid.chooseTitle(column); }); });
    }
}

bool titlesSort(const TDBGrid &grid)
{
    return grid.horizontalHeader()->sectionsClickable();
}

} // namespace

QWidget *GridActions::screenOf(const TDBGrid &grid)
{
    QWidget *found = grid.parentWidget();
    while (found && !found->inherits("TForm"))
        found = found->parentWidget();
    return found;
}

void GridActions::run(TDBGrid &grid, const std::function<void()> &action)
{
    try {
        action();
    } catch (...) {
        Host::current().showException(grid.window(), std::current_exception());
    }
}

bool GridActions::fetchAll(TDBGrid &grid)
{
    TDataSet *dataSet = grid.dataSet();
    if (!dataSet || !dataSet->canFetchMore())
        return true;
    {
        const Busy busy(&grid);
        while (dataSet->canFetchMore() && dataSet->rowCount() < mostRows)
            dataSet->fetchMore();
    }
    if (!dataSet->canFetchMore())
        return true;
    QWidget *screen = screenOf(grid);
    Messages::inform(
        screen ? screen : grid.window(), u"A lista tem mais de 100.000 registros. Restrinja a consulta."_s);
    return false;
}

void GridActions::copySelection(const TDBGrid &grid)
{
    const QItemSelectionModel *selection = grid.selectionModel();
    QStringList lines;
    for (int row = 0; row < grid.rows()->rowCount(); ++row) {
        if (selection->rowIntersectsSelection(row))
            lines.append(lineOf(grid, row, [&](const QModelIndex &index) { return selection->isSelected(index); }));
    }
    if (!lines.isEmpty())
        QApplication::clipboard()->setText(lines.join(u'\n'));
}

void GridActions::copyAll(TDBGrid &grid)
{
    if (!fetchAll(grid))
        return;
    QStringList titles;
    for (const int column : columnsFromTheLeft(grid))
        titles.append(titleOf(grid, column));
    QStringList lines{titles.join(u'\t')};
    for (int row = 0; row < grid.rows()->rowCount(); ++row)
        lines.append(lineOf(grid, row, [](const QModelIndex &) { return true; }));
    QApplication::clipboard()->setText(lines.join(u'\n'));
}

void GridActions::exportRows(TDBGrid &grid, FileKind kind)
{
    const QString ending = kind == FileKind::Xlsx ? u"xlsx"_s : u"csv"_s;
    const QString filter = kind == FileKind::Xlsx ? u"Planilhas (*.xlsx)"_s : u"Arquivos CSV (*.csv)"_s;
    QFileDialog dialog(grid.window(), u"Exportar"_s, {}, filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(ending);
    dialog.selectFile(suggestedFile(grid, ending));
    if (dialog.exec() != QDialog::Accepted)
        return;
    const QString file = dialog.selectedFiles().first();
    Host::current().settings().setValue(folderKey, QFileInfo(file).absolutePath());
    write(grid, kind, QFileInfo(suggestedFile(grid, ending)).completeBaseName(), file);
}

void GridActions::showMenu(TDBGrid &grid, const QPoint &globalPlace)
{
    auto *menu = new QMenu(&grid);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions(grid.actions());
    menu->addSeparator();
    const auto add = [&](const QString &text, const std::function<void()> &action) {
        return menu->addAction(text, &grid, [&grid, action] { run(grid, action); });
    };
    add(u"&Copiar\tCtrl+C"_s, [&grid] { copySelection(grid); })->setEnabled(grid.selectionModel()->hasSelection());
    QAction *all = add(u"Copiar &tudo"_s, [&grid] { copyAll(grid); });
    menu->addSeparator();
    QMenu *sorting = menu->addMenu(u"&Ordenar"_s);
    addSorting(grid, sorting);
    sorting->menuAction()->setVisible(titlesSort(grid));
    menu->addSeparator();
    QAction *xlsx = add(u"&Exportar para planilha (XLSX)…"_s, [&grid] { exportRows(grid, FileKind::Xlsx); });
    QAction *csv = add(u"Exportar CS&V…"_s, [&grid] { exportRows(grid, FileKind::Csv); });
    menu->addSeparator();
    add(u"&Restaurar colunas"_s, [&grid] { grid.restoreColumns(); });
    for (QAction *action : {all, sorting->menuAction(), xlsx, csv})
        action->setEnabled(grid.dataSet() && grid.rows()->rowCount() > 0);
    menu->popup(globalPlace);
}

bool GridActions::keyPressed(TDBGrid &grid, const QKeyEvent &key)
{
    if (key.matches(QKeySequence::Copy)) {
        copySelection(grid);
        return true;
    }
    if (key.key() == Qt::Key_Menu || (key.key() == Qt::Key_F10 && key.modifiers() == Qt::ShiftModifier)) {
        QContextMenuEvent asked(QContextMenuEvent::Keyboard, {}, {});
        QCoreApplication::sendEvent(&grid, &asked);
        return true;
    }
    if (!titlesSort(grid))
        return false;
    const int place = key.key() - Qt::Key_1;
    const QVector<int> columns = columnsFromTheLeft(grid);
    const bool plain = !(key.modifiers() & ~(Qt::ControlModifier | Qt::KeypadModifier));
    if (!plain || !(key.modifiers() & Qt::ControlModifier) || place < 0 || place > 8 || place >= columns.size())
        return false;
    run(grid, [&] { grid.chooseTitle(columns[place]); });
    return true;
}
