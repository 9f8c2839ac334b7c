// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/reportform.h"

#include "module/controls/dateedit.h"
#include "module/controls/dbgrid.h"
#include "module/host_services/busy.h"
#include "module/host_services/clientdataset.h"
#include "module/host_services/clock.h"
#include "module/host_services/database.h"
#include "module/host_services/format.h"
#include "module/host_services/pesquisa.h"
#include "module/host_services/query.h"
#include "module/host_services/ttransfere.h"
#include "module/messages.h"
#include "module/reportbar.h"

#include <QPushButton>

using namespace Funcoes;
using namespace Qt::StringLiterals;

namespace {

/// The grids show nothing of what their data sets go through while it lives.
class DetachedGrids
{
public:
    explicit DetachedGrids(const QWidget *form)
    {
        for (TDBGrid *grid : form->findChildren<TDBGrid *>()) {
            m_grids.append({grid, grid->dataSet()});
            grid->setDataSet(nullptr);
        }
    }
    ~DetachedGrids()
    {
        for (const auto &[grid, dataSet] : m_grids)
            grid->setDataSet(dataSet);
    }
    Q_DISABLE_COPY_MOVE(DetachedGrids)

private:
    QList<std::pair<TDBGrid *, TDataSet *>> m_grids;
};

/// A button that cannot be pressed while it lives, and has the focus again afterwards.
class ClosedButton
{
public:
    explicit ClosedButton(QPushButton *button)
        : m_button(button)
        , m_hadFocus(button->hasFocus())
    {
        m_button->clearFocus(); // else closing it would enter the next field
        m_button->setEnabled(false);
    }
    ~ClosedButton()
    {
        m_button->setEnabled(true);
        if (m_hadFocus)
            m_button->setFocus();
    }
    Q_DISABLE_COPY_MOVE(ClosedButton)

private:
    QPushButton *m_button;
    bool m_hadFocus;
};

QString outcome(const TDataSet &rows)
{
    const int count = rows.rowCount();
    if (count == 0)
        return u"Nenhum registro encontrado."_s;
    if (count == 1)
        return u"1 registro"_s;
    const QString number = Format::number(count, u",0"_s);
    return rows.canFetchMore() ? u"Mais de %1 registros"_s.arg(number) : u"%1 registros"_s.arg(number);
}

InventoryColumns inventoryColumns(const QString &quantity)
{
    return {.codigo = u"CODIGO"_s,
        .cor = u"COR"_s,
        .tam = u"TAM"_s,
        .posse = u"POSSE"_s,
        .unitario = u"UNITARIO"_s,
        .quantidade = quantity,
        .codcli = u"CODCLI"_s,
        .un = u"UN"_s,
        .descricao = u"DESCRICAO"_s,
        .deposito = u"DEPOSITO"_s,
        .lote = u"LOTE"_s};
}

} // namespace

TReportForm::TReportForm()
{
    setEnterAsTab(true);
}

ReportBar *TReportForm::bar() const
{
    return findChild<ReportBar *>(u"Barra"_s);
}

void TReportForm::FormShow()
{
    focusNextChild();
}

void TReportForm::BtnExecutaSQLClick()
{
    consult();
}

void TReportForm::BtnImprimirClick()
{
    print();
}

void TReportForm::BitBtn5Click()
{
    close();
}

void TReportForm::consult()
{
    refuseUnreadableDates();
    checkFilters();
    m_consulted = false;
    m_inventoryRows.reset();
    bar()->tell({});
    {
        const Busy busy(this);
        const ClosedButton closed(bar()->consultButton());
        const DetachedGrids detached(this);
        BuscaDados();
    }
    m_filters = filters();
    m_consulted = true;
    tellOutcome();
}

void TReportForm::refuseUnreadableDates()
{
    for (TDateEdit *date : findChildren<TDateEdit *>()) {
        if (date->hasInvalidText()) {
            refuse(u"Data inválida."_s, date);
            throw EAbort();
        }
    }
}

void TReportForm::tellOutcome()
{
    bar()->tell(outcome(result()));
    if (!m_inventoryRows)
        return;
    const QString day = Format::date(Clock::today());
    const QString rows = Format::number(*m_inventoryRows, u",0"_s);
    Messages::inform(this,
        *m_inventoryRows == 1 ? u"Inventário de %1 gerado com 1 linha."_s.arg(day)
                              : u"Inventário de %1 gerado com %2 linhas."_s.arg(day, rows));
}

void TReportForm::print()
{
    if (!m_consulted)
        consult();
    if (result().IsEmpty()) {
        refuse(u"Nenhum registro para imprimir."_s);
        return;
    }
    ReportCall call = report();
    call.form = this;
    call.parameters.insert(u"filtros"_s, m_filters);
    Chama_Relatorio(call);
}

void TReportForm::rowsRearranged()
{
    if (m_consulted)
        bar()->tell(outcome(result()));
}

void TReportForm::setLastMonth(TDateEdit *from, TDateEdit *to)
{
    from->setDate(Clock::today().addMonths(-1));
    to->setDate(Clock::today());
}

TField TReportForm::kilograms(const QString &name)
{
    return TField(name, TField::Type::Float).shownAs(u",0.000"_s);
}

void TReportForm::openQuery(TTIQuery *query, const QString &statement)
{
    query->SQL.clear();
    query->SQL.add(statement);
    query->Open();
}

void TReportForm::fill(TClientDataSet *table, const QString &statement)
{
    TTIQuery rows;
    openQuery(&rows, statement);
    rows.FetchAll();
    table->EmptyDataSet();
    table->setIndexFieldNames({}); // rows are put in faster where they need no place
    Ttransfere::TTransDataSet transfer;
    transfer.SetTabelaOrigem(&rows);
    transfer.SetTabelaDestino(table);
    transfer.TransfereDados();
}

QString TReportForm::forCompanies(
    const QString &statement, const QString &mainTable, bool allCompanies, const QString &order)
{
    const QString resolved = allCompanies ? UnionTodasEmpresas(mainTable, statement, true) : DBLocal_SQL(statement);
    return resolved + u'\n' + order;
}

void TReportForm::checkCode(TPesquisa *search, const QString &message)
{
    if (isKnown(search))
        return;
    refuse(message, findChild<QWidget *>(search->fieldName()));
    search->AbrePesquisa();
}

QString TReportForm::chosen(const TPesquisa *search) const
{
    const QString code = findChild<QLineEdit *>(search->fieldName())->text().trimmed();
    const auto *name = findChild<QLineEdit *>(search->textName());
    return code.isEmpty() || !name ? code : (code + u' ' + name->text()).trimmed();
}

void TReportForm::exportInventory(const QList<Stock> &stocks)
{
    Save save(database());
    int written = 0;
    for (const Stock &stock : stocks)
        written += GeraInventario(inventoryColumns(stock.quantity), *stock.rows);
    save.CommitRetaining();
    m_inventoryRows = written;
}
