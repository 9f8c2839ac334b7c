// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/form.h"
#include "module/host_services/host.h"

#include <optional>

class ReportBar;
class TClientDataSet;
class TDateEdit;
struct TField;
class TPesquisa;
class TTIQuery;

/// A report screen: filters, a consultation that fills one or two grids, and paper.
///
/// Its .ui has a ReportBar "Barra" below the filters. The screen gives what is its own: the statements, what is said
/// of the filters, the layout with its data sets, and a line per code field for its exit.
class TReportForm : public TForm
{
    Q_OBJECT

public:
    TReportForm();

    // A screen that names its buttons otherwise calls consult(), print() and close() from methods of its own.
    Q_INVOKABLE void BtnExecutaSQLClick();
    Q_INVOKABLE void BtnImprimirClick();
    Q_INVOKABLE void BitBtn5Click();

protected:
    /// Refuses filters that nothing can be asked with: their message, then EAbort. Dates have been looked at already.
    virtual void checkFilters() { }
    /// Runs the statements and fills the data sets that grids and paper read.
    virtual void BuscaDados() = 0;
    /// The data set whose rows are the result.
    virtual const TDataSet &result() const = 0;
    /// What is asked for, by ReportFilters::Text. The paper bears what was asked when its rows were read.
    virtual QString filters() const = 0;
    /// Layout, kind and data sets; the form and the parameter "filtros" are added to it.
    virtual ReportCall report() const = 0;

    /// The first field has the focus.
    void FormShow() override;

    /// BuscaDados() under the busy marker, with the button closed and the grids detached until the end, whichever way
    /// it ends. A date that cannot be read gets its message before. Throws EDatabaseError, and EAbort after a message.
    void consult();
    /// The rows that are shown, on paper; they are read first when none were yet.
    void print();

    /// The rows of the last consultation are shown otherwise, such as grouped anew: tells how many they are now.
    void rowsRearranged();

    /// The month up to today, as most reports open.
    static void setLastMonth(TDateEdit *from, TDateEdit *to);
    /// A field for kilograms, shown to the gram.
    static TField kilograms(const QString &name);
    /// Runs a select. The rows stay as they were when it fails.
    static void openQuery(TTIQuery *query, const QString &statement);
    /// Copies the rows of a select into a work table by the names of the fields, in place of what it held; the table
    /// has no index then. Rows are completed in the table's BeforePost. The table stays as it was when the select
    /// fails.
    static void fill(TClientDataSet *table, const QString &statement);
    /// The statement with physical names, for the current company or for every one that the user may see, ordered:
    /// "ORDER BY 7, 4". `mainTable` decides which companies have the module.
    static QString forCompanies(
        const QString &statement, const QString &mainTable, bool allCompanies, const QString &order);

    /// The exit of a code field: a wrong code gets the message, such as "Cliente inválido.", and its search.
    void checkCode(TPesquisa *search, const QString &message);
    /// "00001 Confecções Serra Azul Ltda" of a search's fields; nothing while no code stands there.
    QString chosen(const TPesquisa *search) const;

    struct Stock
    {
        TDataSet *rows; ///< with the columns CODIGO, COR, TAM, POSSE, UNITARIO, CODCLI, UN, DESCRICAO, DEPOSITO, LOTE
        QString quantity; ///< name of the column with the quantity
    };
    /// To be called in BuscaDados: writes the inventory of the day, all of it or nothing. How many rows it got is told
    /// when the consultation has ended.
    void exportInventory(const QList<Stock> &stocks);

private:
    ReportBar *bar() const;
    void refuseUnreadableDates();
    void tellOutcome();

    bool m_consulted = false; ///< the rows shown are those of m_filters
    QString m_filters;
    std::optional<int> m_inventoryRows;
};
