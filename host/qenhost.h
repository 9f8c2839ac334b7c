// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/busymarker.h"
#include "host/logfile.h"
#include "host/session.h"
#include "module/host_services/host.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <functional>

class ReportDesk;
class TTIDatabase;

/// A report that a screen asked for.
struct RecordedReport
{
    QString name;
    ReportCall::Kind kind = ReportCall::Kind::Graphic;
    QStringList dataSets; ///< by the names that the layout knows
    QList<int> rowCounts; ///< of each data set, as far as it was fetched
    QString printer; ///< by the settings; empty: the system's usual one
};

/// What the application does for the screens, over the connection of the data module.
///
/// It needs neither a main window nor a login dialog: a screen may be shown as a window of its own.
class QenHost : public QObject, public Host
{
    Q_OBJECT

public:
    /// The settings, and the data module when it is asked something, must outlive it.
    explicit QenHost(QSettings &settings);

    /// Goes on as that user in that company, without asking for a password. Throws EQen when the user is unknown or
    /// inactive, or may not see the company; who was logged in before then still is.
    void login(const QString &user, int company);
    void logout();

    QString user() const override { return m_account.user; }
    const Account &account() const { return m_account; }
    int company() const override { return m_company.number; } ///< 0: nobody is logged in
    const Company &currentCompany() const { return m_company; }
    QList<int> visibleCompanies() const override;

    /// An administrator may do everything; all others need a row of screen, letter and level. Asked of the database
    /// each time, so that a right that is given or taken counts at once.
    bool hasRight(const QString &screen, QChar letter, const QString &level) override;
    QString parameter(const QString &module, int number) override;
    /// Texts that are longer than their column are cut: a save must not fail because of its log line.
    void writeLog(const QString &label, const QString &text, TOperacaoLog kind, const QString &key) override;

    void setBusy(bool busy, QObject *who) override { m_busy.set(busy, who); }
    BusyMarker &busyMarker() { return m_busy; }

    /// A modal screen is never open twice: one that is open already is closed first, or brought to the front with
    /// a message when it refuses.
    QWidget *loadForm(const QString &package, const QString &className, bool modal, bool show) override;
    /// Where screens are shown; none: as windows of their own.
    void setPlacer(const std::function<void(QWidget *)> &placer) { m_placer = placer; }
    /// The open screen of that class, or null.
    QWidget *openForm(const QString &className) const { return m_open.value(className); }

    /// Reads the layout, in the folder of the settings ("Pastas/leiautes") if it is there, and hands the report to the
    /// desk. Throws EQen.
    void runReport(const ReportCall &call) override;
    /// Where reports go; it must outlive its use. Null: they are only noted.
    void setReportDesk(ReportDesk *desk) { m_reportDesk = desk; }
    const QList<RecordedReport> &recordedReports() const { return m_reports; }

    /// A code is a file name without its ending, in any case; one with a path in it belongs to no file. Without a
    /// folder the one of the settings ("Pastas/imagens") is searched.
    QString findFile(const QString &code, const QString &folder, TTipo kind) override;
    int createInventory(const InventoryColumns &columns, TDataSet &rows) override;
    void showException(QWidget *form, std::exception_ptr error) override;

    QSettings &settings() override { return m_settings; }

private:
    TTIDatabase &database() const;
    QString printerOf(const QString &layout) const;
    QWidget *bringToFront(QWidget *form) const;

    QSettings &m_settings;
    LogFile m_log;
    BusyMarker m_busy;
    Account m_account;
    Company m_company;
    QHash<QString, QPointer<QWidget>> m_open;
    std::function<void(QWidget *)> m_placer;
    ReportDesk *m_reportDesk = nullptr;
    QList<RecordedReport> m_reports;
};
