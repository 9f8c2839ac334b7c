// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/engines.h"
#include "tests/support/screenchecks.h"
#include "tests/support/teststation.h"

#include <QTableView>

/// A station at which prices are kept, on the engine of the test that is running.
class PriceStation : public TestStation
{
public:
    PriceStation()
        : TestStation(Engines::current())
    {
    }

    static inline const QString caption = QStringLiteral("Tabela de Preços");
    MessageAnswers answers; ///< a box that nobody expects fails every test

    struct Price
    {
        QString region = QStringLiteral("01");
        QString code = QStringLiteral("M0001");
        QString colour = QStringLiteral("00");
        QString description = QStringLiteral("Meia-malha");
        QString first = QStringLiteral("10"); ///< a figure, or NULL
        QString last = QStringLiteral("20");
        QString average = QStringLiteral("15");
    };
    void insertPrice(const Price &price)
    {
        database.run(QStringLiteral("INSERT INTO {TABPRECO} (REGIAO, CODIGO, GRUPO_COR, DESC_PRODUTO, PRECO_00, "
                                    "PRECO_91, PRECO_MEDIO) VALUES ('%1', '%2', '%3', '%4', %5, %6, %7)")
                         .arg(price.region, price.code, price.colour, price.description, price.first, price.last,
                             price.average));
    }
    /// As another station does it, which locks the region of its price.
    void insertPriceElsewhere(const Price &price)
    {
        Save other(database.connection());
        database.run(QStringLiteral("UPDATE {REGIAO} SET REGIAO = '%1' WHERE REGIAO = '%1'").arg(price.region));
        insertPrice(price);
        other.CommitRetaining();
    }
    void setColourGroups(bool on)
    {
        database.run(QStringLiteral(
            "UPDATE QEN_PARAMETRO SET VALOR = '%1' WHERE EMPRESA = 1 AND MODULO = 'VEN' AND NUMERO = 190")
                         .arg(on ? QStringLiteral("S") : QStringLiteral("N")));
    }
    void openPrices() { open(QStringLiteral("TfmMatTabPreco")); }

    /// "region|product|colour group|first price|last price|average" as stored.
    QStringList stored()
    {
        return database.rows(
            QStringLiteral("SELECT REGIAO, CODIGO, GRUPO_COR, PRECO_00, PRECO_91, PRECO_MEDIO FROM {TABPRECO} "
                           "ORDER BY REGIAO NULLS FIRST, CODIGO NULLS FIRST, GRUPO_COR, PRECO_00"));
    }
    int lines() { return database.count(QStringLiteral("TABPRECO")); }

    QTableView *grid() const { return child<QTableView>(QStringLiteral("DBGrid1")); }
    QString cell(int row, int column) const { return grid()->model()->index(row, column).data().toString(); }
    /// "product region colour" of each row of the grid.
    QStringList listed() const
    {
        QStringList rows;
        for (int row = 0; row < grid()->model()->rowCount(); ++row)
            rows.append(QStringList{cell(row, 0), cell(row, 2), cell(row, 4)}.join(QLatin1Char(' ')));
        return rows;
    }
    /// What the panel shows, in the same form.
    QString shown() const
    {
        return QStringList{
            text(QStringLiteral("EdtCodArt")), text(QStringLiteral("EdtRegiao")), text(QStringLiteral("EdtCor"))}
            .join(QLatin1Char(' '));
    }
    bool isEditing() const { return child(QStringLiteral("PainelDados"))->isEnabled(); }

    static QString instalment(int number)
    {
        return QStringLiteral("EdtParcela") + QString::number(number).rightJustified(2, QLatin1Char('0'));
    }
    /// Begins a new row and passes its product; boxes of that exit are the test's to expect.
    void insertProduct(const QString &region, const QString &code, const QString &colour = {})
    {
        click(QStringLiteral("btnincluir"));
        enter(QStringLiteral("EdtRegiao"), region);
        if (!colour.isEmpty())
            enter(QStringLiteral("EdtCor"), colour);
        enter(QStringLiteral("EdtCodArt"), code);
    }
    void confirm() { click(QStringLiteral("SbConfirmar")); }
};
