// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/searchsource.h"

#include <QDialog>
#include <QTimer>

#include <memory>

namespace Ui {
class SearchDialog;
}
class SearchModel;
class TTIDatabase;

/// The search that people use all day: typing filters, the arrow keys choose, Enter takes, Esc leaves.
class SearchDialog : public QDialog
{
    Q_OBJECT

public:
    SearchDialog(TTIDatabase &database, const SearchSource &source, const QString &title, QWidget *parent);
    ~SearchDialog() override;

    /// Value of a column of the chosen row; empty when nothing was chosen.
    QString chosen(const QString &column) const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void applyFilter();
    void showCount();
    void takeCurrent();
    void selectRow(int row);

    std::unique_ptr<Ui::SearchDialog> m_ui;
    SearchModel *m_model;
    QTimer m_pause; ///< after the last key, before the table is asked
};
