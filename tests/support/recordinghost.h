// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/host.h"

#include <QSet>
#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>

/// A host for the tests of what stands below the application: it keeps what it was told, and grants what the test says.
class RecordingHost : public Host
{
public:
    RecordingHost();

    QString userName = QStringLiteral("ADMIN");
    int companyNumber = 1;
    QList<int> companies{1};
    QSet<QString> refused; ///< rights that are not granted, "TfmTeste A 0"; all others are
    QHash<QString, QString> parameters; ///< "MAL 10" → "S"
    bool logTable = false; ///< log lines go into QEN_LOG too, on the shared connection

    QStringList asked; ///< rights that were asked for, "TfmTeste A 0"
    QStringList log; ///< "label|text|kind|key"
    QStringList failures; ///< the sentences of what handlers let escape
    int busy = 0; ///< how many callers are at work
    int busyCalls = 0;
    QStringList loaded; ///< "package|class|modal|show"
    QList<ReportCall> reports;

    QString user() const override { return userName; }
    int company() const override { return companyNumber; }
    QList<int> visibleCompanies() const override { return companies; }
    bool hasRight(const QString &screen, QChar letter, const QString &level) override;
    QString parameter(const QString &module, int number) override;
    void writeLog(const QString &label, const QString &text, TOperacaoLog kind, const QString &key) override;
    void setBusy(bool on, QObject *who) override;
    QWidget *loadForm(const QString &package, const QString &className, bool modal, bool show) override;
    void runReport(const ReportCall &call) override { reports.append(call); }
    QString findFile(const QString &code, const QString &folder, TTipo kind) override;
    int createInventory(const InventoryColumns &columns, TDataSet &rows) override;
    void showException(QWidget *form, std::exception_ptr error) override;
    QSettings &settings() override { return m_settings; }

private:
    QTemporaryDir m_folder;
    QSettings m_settings;
};
