// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QVariant>

#include <exception>
#include <functional>

class QObject;
class QSettings;
class QWidget;
class TDataSet;

/// Kinds of log lines; the numbers are stored.
enum TOperacaoLog { olInclusao = 0, olAlteracao = 1, olExclusao = 2, olBaixa = 3 };

/// Kinds of files that belong to a code.
enum TTipo { tpImagemMaterial = 5 };

/// What a screen hands to the report engine.
struct ReportCall
{
    enum class Kind { Graphic, Text };

    QString name; ///< of the layout: "WEtqBarra"
    Kind kind = Kind::Graphic;
    QWidget *form = nullptr; ///< the screen that prints
    /// Data sets by the names that the layout knows.
    QList<std::pair<QString, TDataSet *>> dataSets;
    /// Values by the names that the layout knows: the filters as text, a chart as QImage.
    QVariantMap parameters;
    /// Answers the functions of the layout that the engine does not know, by their names in upper case; an invalid
    /// value when it does not know them either.
    std::function<QVariant(const QString &function, const QVariantList &arguments)> unknownFunction;
    bool preview = true; ///< false: printed at once, without a dialog
};

/// Where the columns of an inventory stand in a data set.
struct InventoryColumns
{
    QString codigo, cor, tam, posse, unitario, quantidade, codcli, un, descricao, deposito, lote;
};

/// What the application does for the screens. There is one, and it outlives every screen.
class Host
{
public:
    Host();
    virtual ~Host();
    Q_DISABLE_COPY_MOVE(Host)

    /// Throws EProgramming when there is none.
    static Host &current();

    virtual QString user() const = 0; ///< name of the logged-in user
    virtual int company() const = 0; ///< 1 to 999
    virtual QList<int> visibleCompanies() const = 0; ///< those the user may see, the current one included

    virtual bool hasRight(const QString &screen, QChar letter, const QString &level) = 0;
    virtual QString parameter(const QString &module, int number) = 0; ///< empty when not set
    virtual void writeLog(const QString &label, const QString &text, TOperacaoLog kind, const QString &key) = 0;

    /// Calls are counted per caller; the marker goes when the last has ended.
    virtual void setBusy(bool busy, QObject *who) = 0;
    virtual QWidget *loadForm(const QString &package, const QString &className, bool modal, bool show) = 0;
    virtual void runReport(const ReportCall &call) = 0;
    /// Path of the file, empty when there is none.
    virtual QString findFile(const QString &code, const QString &folder, TTipo kind) = 0;
    /// Replaces the inventory of the day and company by the rows; gives their number.
    virtual int createInventory(const InventoryColumns &columns, TDataSet &rows) = 0;

    /// Reports what a handler let escape: one message box, a line in the program's log file.
    virtual void showException(QWidget *form, std::exception_ptr error) = 0;

    /// The station's own settings.
    virtual QSettings &settings() = 0;
};
