// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/reportform.h"
#include "reports/clientstock.h"

#include <memory>

namespace Ui {
class fmRelEstoqueMat;
}
class Unit;

/// What the mill holds of a client: the yarn that is still there, and the fabric that is not invoiced yet.
class TfmRelEstoqueMat : public TReportForm
{
    Q_OBJECT

public:
    TfmRelEstoqueMat();
    ~TfmRelEstoqueMat() override;

    Q_INVOKABLE void EdtCodCliExit();
    Q_INVOKABLE void CbInvClick();
    Q_INVOKABLE void tbRelMaterialBeforePost();
    Q_INVOKABLE void tbRelMalhaBeforePost();

protected:
    void FormCreate() override;
    void BuscaDados() override;
    const TDataSet &result() const override;
    QString filters() const override;
    ReportCall report() const override;

private:
    QString client() const;
    /// Whether the fabric list holds the client's fabrics alone; else it holds everybody's.
    bool onlyClientsFabric() const;

    void Gera_SQL_Malha();
    void Gera_SQL_Materiais();
    /// Takes the yarn that lies in fabric off the physical stock.
    void Composicao();
    QList<ClientStock::Share> compositionOf(const QString &fabric, int company) const;
    void IncluirMateriaisZerados();
    void DeletaZerados();
    void writeInventory();
    void showChart();

    std::unique_ptr<Ui::fmRelEstoqueMat> m_ui;
    TClientDataSet *tbRelMaterial;
    TClientDataSet *tbRelMalha;
};

extern QPointer<TfmRelEstoqueMat> fmRelEstoqueMat;

namespace Relestoquemat {
Unit &unit();
}
