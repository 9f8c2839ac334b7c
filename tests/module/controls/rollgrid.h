// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/controls/datasetmodel.h"
#include "module/controls/dbgrid.h"
#include "module/host_services/clientdataset.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QTest>

/// A grid of rolls, shown: number, kilograms (typed), date, shift, and a key that nobody sees.
class RollGrid
{
public:
    explicit RollGrid(QWidget *parent = nullptr, const QString &name = QStringLiteral("DBGrid"))
        : grid(new TDBGrid(parent))
        , tester(grid->rows(), QAbstractItemModelTester::FailureReportingMode::QtTest)
    {
        if (!parent)
            m_owned.reset(grid);
        using Type = TField::Type;
        rolls.CreateDataSet({TField(QStringLiteral("NUM_BAIXA"), Type::Text, 10).titled(QStringLiteral("Rolo")),
            TField(QStringLiteral("QTDE"), Type::Float)
                .titled(QStringLiteral("Peso"))
                .shownAs(QStringLiteral(",0.000"))
                .editable(),
            TField(QStringLiteral("DATA"), Type::Date).titled(QStringLiteral("Data")),
            TField(QStringLiteral("TURNO"), Type::Integer).titled(QStringLiteral("Turno")),
            TField(QStringLiteral("CHAVE"), Type::Integer).hidden()});
        grid->setObjectName(name);
        tester.setUseFetchMore(false); // it would fetch what was not asked for
        grid->setDataSet(&rolls);
    }

    void add(const QString &number, const QVariant &kg, QDate date = {2026, 3, 9}, int shift = 1)
    {
        rolls.Append();
        rolls.setValue(QStringLiteral("NUM_BAIXA"), number);
        rolls.setValue(QStringLiteral("QTDE"), kg);
        rolls.setValue(QStringLiteral("DATA"), date);
        rolls.setValue(QStringLiteral("TURNO"), shift);
        rolls.Post();
    }
    void show()
    {
        grid->resize(700, 260);
        grid->window()->show();
        grid->window()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(grid->window()));
        grid->setFocus();
    }

    QStringList shown(int column) const
    {
        QStringList texts;
        for (int row = 0; row < grid->rows()->rowCount(); ++row)
            texts.append(grid->rows()->index(row, column).data().toString());
        return texts;
    }
    QString current() const { return rolls.AsString(QStringLiteral("NUM_BAIXA")); }
    QString currentShown() const { return grid->currentIndex().siblingAtColumn(0).data().toString(); }
    QHeaderView *header() const { return grid->horizontalHeader(); }
    void clickTitle(int column) const
    {
        QTest::mouseClick(header()->viewport(), Qt::LeftButton, {},
            QPoint(
                header()->sectionViewportPosition(column) + header()->sectionSize(column) / 2, header()->height() / 2));
    }

    TClientDataSet rolls;
    TDBGrid *grid;
    QAbstractItemModelTester tester;

private:
    std::unique_ptr<TDBGrid> m_owned;
};

/// Numbers that come in steps, as those of a large query do: the last first.
class NumbersInSteps : public TDataSet
{
public:
    NumbersInSteps(int rows, int step)
        : m_all(rows)
        , m_step(step)
    {
        setFields({TField(QStringLiteral("NUMERO"), TField::Type::Integer).titled(QStringLiteral("Número"))});
        NumbersInSteps::fetchMore();
        moveTo(0, false);
    }

    int rowCount() const override { return m_fetched; }
    QVariant cell(int row, int) const override { return m_all - row; }
    bool canFetchMore() const override { return m_fetched < m_all; }
    void fetchMore() override
    {
        if (failing)
            throw std::runtime_error("the server is gone");
        const int more = qMin(m_step, m_all - m_fetched);
        emit rowsAboutToBeInserted(m_fetched, m_fetched + more - 1);
        m_fetched += more;
        emit rowsInserted();
    }

    bool failing = false;

private:
    int m_all;
    int m_step;
    int m_fetched = 0;
};
