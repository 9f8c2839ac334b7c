// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/report/report.h"

#include <QDialog>
#include <QTimer>

#include <exception>
#include <functional>

namespace Ui {
class PreviewWindow;
}

/// Shows a report while it is being laid out, and sends it to printers and files.
class PreviewWindow : public QDialog
{
    Q_OBJECT

public:
    /// The report must outlive the window.
    explicit PreviewWindow(Report &report, QWidget *parent = nullptr);
    ~PreviewWindow() override;

    /// Prints what was laid out, and tells what it did; an empty text when the user thought better of it.
    void setPrinting(const std::function<QString(QWidget *parent)> &printing) { m_printing = printing; }
    /// The folder in which files are kept, and where it is remembered.
    void setFolder(const QString &folder, const std::function<void(const QString &)> &remember);

    /// Shows it until it is closed. Throws what went wrong while the report was laid out.
    void run();

private:
    void connectControls();
    void layOut();
    void finish(const QString &state);
    void stop();
    void showPageNumber(int page);
    void findNext();
    void printPages();
    void writePdf();
    void addSpreadsheets();
    void writeSpreadsheet(TDataSet &rows, bool xlsx);
    QString askFile(const QString &filter, const QString &ending);
    void tell(const QString &text);
    void attempt(const std::function<void()> &action);

    Report &m_report;
    std::unique_ptr<Ui::PreviewWindow> m_ui;
    QTimer m_clock;
    std::exception_ptr m_failure;
    std::function<QString(QWidget *)> m_printing;
    QString m_folder;
    std::function<void(const QString &)> m_remember;
    bool m_stopAsked = false; ///< while a file is being written
};
