// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QStringList>

#include <optional>

class QSettings;
class QWidget;
class Report;
struct ReportCall;

/// Where reports go once their layouts are read.
class ReportDesk
{
public:
    virtual ~ReportDesk() = default;
    /// Lays the report out and hands it over. Throws EQen.
    virtual void deliver(Report &report, const ReportCall &call) = 0;
};

/// The preview and the printers of a station.
///
/// The printer of a report is that of the settings ("Impressoras/<layout>", else "Impressoras/padrao"), else the
/// system's usual one; who chooses another one in the preview finds it again. The printer "PDF" writes files.
class StationDesk : public QObject, public ReportDesk
{
    Q_OBJECT

public:
    static inline const QString filePrinter = QStringLiteral("PDF");

    /// The settings must outlive it.
    explicit StationDesk(QSettings &settings);
    /// For a station that has no printer set.
    void setFallbackPrinter(const QString &printer) { m_fallback = printer; }

    /// What the settings name for a layout; empty when they name none.
    static QString printerInSettings(const QSettings &settings, const QString &layout);

    void deliver(Report &report, const ReportCall &call) override;

signals:
    /// What was printed at once, and where: for the status bar.
    void printed(const QString &what);

private:
    QString printerOf(const Report &report) const;
    void preview(Report &report, QWidget *parent);
    QString print(Report &report, const QString &printer) const;
    QString choosePrinterAndPrint(Report &report, QWidget *parent);

    QSettings &m_settings;
    QString m_fallback;
};

/// Puts each report into a folder, for who works without a screen: <layout>.pdf, <layout>-2.pdf; what text layouts send
/// to their printers stands beside it as <layout>.prn.
class FolderDesk : public ReportDesk
{
public:
    explicit FolderDesk(const QString &folder);

    void deliver(Report &report, const ReportCall &call) override;
    const QStringList &files() const { return m_files; } ///< the PDF files

private:
    QString m_folder;
    QStringList m_files;
};

/// The same in a folder that is used again, in place of what was printed there before, and with a picture of each
/// report's first page: <layout>.pdf and <layout>-1.png.
class PictureDesk : public ReportDesk
{
public:
    explicit PictureDesk(const QString &folder);

    void deliver(Report &report, const ReportCall &call) override;
    const QStringList &files() const { return m_files; } ///< both kinds

private:
    QString m_folder;
    QStringList m_files;
};
