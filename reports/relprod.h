// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/reportform.h"
#include "reports/productionpivot.h"

#include <QDateTime>

#include <memory>
#include <optional>

namespace Ui {
class fmRelProd;
}
class QLineEdit;
class Unit;

/// Fabric produced in a period by machine, fabric and client, a column per shift, valued by a price table when wished.
///
/// What was read is kept by day, so that grouping it otherwise reads nothing again.
class TfmRelProd : public TReportForm
{
    Q_OBJECT

public:
    TfmRelProd();
    ~TfmRelProd() override;

    Q_INVOKABLE void EdtCodCliExit();
    Q_INVOKABLE void EdtCodMatExit();
    Q_INVOKABLE void EdtCodTabExit();
    Q_INVOKABLE void Edit1Exit();
    Q_INVOKABLE void EdtHoraIniExit();
    Q_INVOKABLE void EdtHoraFimExit();

protected:
    void FormCreate() override;
    void checkFilters() override;
    void BuscaDados() override;
    const TDataSet &result() const override;
    QString filters() const override;
    ReportCall report() const override;

private:
    struct Grouping;

    const Grouping &grouping() const;
    void completeTime(QLineEdit *field);
    void Cria_Tabela();
    QString Gera_SQL(const QString &term) const;
    QString periodCondition() const;
    void Transfere_Dados();
    void fillTable();
    void append(const ProductionPivot::Row &row, const QVariant &workingDays);
    QVariant workingDays() const;
    void regroup();
    void showColumns();
    void showCharts();

    std::unique_ptr<Ui::fmRelProd> m_ui;
    TClientDataSet *tbProducao;
    QList<ProductionPivot::Produced> m_produced; ///< of the last consultation
    QDate m_from; ///< its period, as it was asked for
    QDate m_to;
};

extern QPointer<TfmRelProd> fmRelProd;

namespace Relprod {
Unit &unit();
}
