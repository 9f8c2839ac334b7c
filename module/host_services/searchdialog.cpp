// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/searchdialog.h"

#include "module/host_services/searchmodel.h"
#include "ui_searchdialog.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPushButton>

using namespace Qt::StringLiterals;

SearchDialog::SearchDialog(TTIDatabase &database, const SearchSource &source, const QString &title, QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::SearchDialog>())
    , m_model(new SearchModel(database, source, this))
{
    m_ui->setupUi(this);
    setWindowTitle(title);
    m_ui->buttons->button(QDialogButtonBox::Ok)->setText(u"&Escolher"_s);
    m_ui->rows->setModel(m_model);
    m_ui->rows->horizontalHeader()->setSortIndicator(0, Qt::AscendingOrder);
    m_ui->rows->resizeColumnsToContents();
    for (int column = 0; column < m_model->columnCount(); ++column)
        m_ui->rows->setColumnWidth(column, qBound(90, m_ui->rows->columnWidth(column) + 20, 420));
    m_ui->text->installEventFilter(this);
    m_pause.setSingleShot(true);
    m_pause.setInterval(150);
    connect(m_ui->text, &QLineEdit::textEdited, &m_pause, qOverload<>(&QTimer::start));
    connect(&m_pause, &QTimer::timeout, this, &SearchDialog::applyFilter);
    connect(m_ui->rows->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this,
        [this](int column, Qt::SortOrder order) {
            m_model->sort(column, order);
            selectRow(0);
        });
    connect(m_ui->rows, &QTableView::doubleClicked, this, &SearchDialog::takeCurrent);
    connect(m_ui->buttons, &QDialogButtonBox::accepted, this, &SearchDialog::takeCurrent);
    connect(m_ui->buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_model, &QAbstractItemModel::rowsInserted, this, &SearchDialog::showCount);
    connect(m_model, &QAbstractItemModel::modelReset, this, &SearchDialog::showCount);
    selectRow(0);
    showCount();
}

SearchDialog::~SearchDialog() = default;

void SearchDialog::applyFilter()
{
    m_pause.stop();
    m_model->setText(m_ui->text->text());
    selectRow(0);
}

void SearchDialog::showCount()
{
    const int rows = m_model->rowCount();
    if (rows == 0)
        m_ui->count->setText(u"Nenhum registro encontrado"_s);
    else if (m_model->canFetchMore({}))
        m_ui->count->setText(u"Mais de %1 registros"_s.arg(rows));
    else
        m_ui->count->setText(rows == 1 ? u"1 registro"_s : u"%1 registros"_s.arg(rows));
    m_ui->buttons->button(QDialogButtonBox::Ok)->setEnabled(rows > 0);
}

void SearchDialog::selectRow(int row)
{
    if (m_model->rowCount() > 0)
        m_ui->rows->setCurrentIndex(m_model->index(qBound(0, row, m_model->rowCount() - 1), 0));
}

void SearchDialog::takeCurrent()
{
    if (m_pause.isActive())
        applyFilter(); // Enter right after typing means the row that the typed text finds
    if (m_ui->rows->currentIndex().isValid())
        accept();
}

QString SearchDialog::chosen(const QString &column) const
{
    return result() == Accepted ? m_model->value(m_ui->rows->currentIndex().row(), column) : QString();
}

bool SearchDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_ui->text || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    auto *key = static_cast<QKeyEvent *>(event);
    const bool moves = key->key() == Qt::Key_Up || key->key() == Qt::Key_Down || key->key() == Qt::Key_PageUp
        || key->key() == Qt::Key_PageDown;
    if (moves) {
        QCoreApplication::sendEvent(m_ui->rows, event);
        return true;
    }
    // Ctrl+1 … Ctrl+9 sort by that column, and the other way round the second time.
    const int column = key->key() - Qt::Key_1;
    if (key->modifiers() == Qt::ControlModifier && column >= 0 && column < m_model->columnCount()) {
        QHeaderView *header = m_ui->rows->horizontalHeader();
        const bool again =
            header->sortIndicatorSection() == column && header->sortIndicatorOrder() == Qt::AscendingOrder;
        header->setSortIndicator(column, again ? Qt::DescendingOrder : Qt::AscendingOrder);
        return true;
    }
    return QDialog::eventFilter(watched, event);
}
