// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/controls/dbgrid.h"
#include "module/host_services/dataset.h"
#include "tests/production/orders.h"
#include "tests/support/engines.h"
#include "tests/support/screenchecks.h"
#include "tests/support/teststation.h"

/// A station at which one report is open, on the engine of the test that is running.
class ReportStation : public TestStation
{
public:
    explicit ReportStation(const QString &screen, const QString &user = QStringLiteral("ADMIN"))
        : TestStation(Engines::current(), user)
        , m_screen(screen)
    {
    }

    MessageAnswers answers; ///< a box that nobody expects fails every test

    void openReport() { open(m_screen); }
    TDBGrid *grid(const QString &name = QStringLiteral("DBGrid1")) const { return child<TDBGrid>(name); }
    /// What the grid shows in its rows, the cells joined by "|".
    QStringList rows(const QString &name = QStringLiteral("DBGrid1")) const
    {
        const QAbstractItemModel *model = grid(name)->model();
        QStringList result;
        for (int row = 0; row < model->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model->columnCount(); ++column)
                cells.append(model->index(row, column).data().toString());
            result.append(cells.join(QLatin1Char('|')));
        }
        return result;
    }
    /// What the grid shows of one field.
    QStringList column(const QString &field, const QString &name = QStringLiteral("DBGrid1")) const
    {
        const QAbstractItemModel *model = grid(name)->model();
        QStringList result;
        for (int row = 0; row < model->rowCount(); ++row)
            result.append(model->index(row, grid(name)->columnOf(field)).data().toString());
        return result;
    }
    /// Presses "Confirmar" and gives what the first grid shows of one field.
    QStringList consult(const QString &field, const QString &name = QStringLiteral("DBGrid1"))
    {
        click(QStringLiteral("BtnExecutaSQL"));
        return column(field, name);
    }
    QString told() const { return text(QStringLiteral("lbResultado")); }
    /// Presses "Imprimir" and gives what was asked of the report engine.
    RecordedReport print()
    {
        const qsizetype before = host.recordedReports().size();
        click(QStringLiteral("BtnImprimir"));
        return host.recordedReports().size() == before ? RecordedReport() : host.recordedReports().last();
    }
    /// What the engine answers when a table that the report reads is not there.
    void expectRefusedStatement()
    {
        ScreenChecks::expectFailure(
            answers, form()->windowTitle(), QStringLiteral("O banco de dados recusou a operação. Nada foi gravado."));
    }

private:
    QString m_screen;
};
