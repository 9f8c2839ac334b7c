// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/controls/dbgrid.h"
#include "module/host_services/dataset.h"
#include "module/reportbar.h"
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
    /// Presses the button that consults and gives what the grid shows of one field.
    QStringList consult(const QString &field, const QString &name = QStringLiteral("DBGrid1"))
    {
        click(button(consulting));
        return column(field, name);
    }
    /// Presses the button that prints and gives what was asked of the report engine; without a name when nothing was.
    RecordedReport print()
    {
        const qsizetype before = host.recordedReports().size();
        click(button(printing));
        return host.recordedReports().size() == before ? RecordedReport() : host.recordedReports().last();
    }

    /// What labels and buttons say, without their mnemonics.
    QStringList captions(const QStringList &names) const
    {
        QStringList texts;
        for (const QString &name : names)
            texts.append(text(name).remove(QLatin1Char('&')));
        return texts;
    }
    /// A wrong code gets its message and its search, in which `sought` is typed and taken.
    void checkWrongCode(const QString &field, const QString &message, const QString &title, const QString &sought)
    {
        ScreenChecks::expectInformation(answers, form()->windowTitle(), message);
        ScreenChecks::expectSearchAndTake(answers, sought, title);
        enter(field, QStringLiteral("777"));
        QVERIFY(answers.allCame());
        QCOMPARE(focus(), field);
    }
    /// With filters that find nothing: it is said, and no paper is asked for.
    void checkNothingFound()
    {
        click(button(consulting));
        QCOMPARE(text(QStringLiteral("lbResultado")), QStringLiteral("Nenhum registro encontrado."));
        ScreenChecks::expectInformation(
            answers, form()->windowTitle(), QStringLiteral("Nenhum registro para imprimir."));
        QCOMPARE(print().name, QString());
    }
    void expectRefusedStatement()
    {
        ScreenChecks::expectFailure(
            answers, form()->windowTitle(), QStringLiteral("O banco de dados recusou a operação. Nada foi gravado."));
    }
    /// A table that the report reads is not there: the consultation fails, and leaves the screen ready.
    void checkRefusedStatement()
    {
        expectRefusedStatement();
        click(button(consulting));
        QVERIFY(answers.allCame());
        checkReady();
    }
    /// Nobody is busy, the button can be pressed, the grids show their data sets.
    void checkReady()
    {
        QVERIFY(!host.busyMarker().isBusy());
        QVERIFY(child(button(consulting))->isEnabled());
        for (const TDBGrid *shown : form()->findChildren<TDBGrid *>())
            QVERIFY2(shown->dataSet(), qPrintable(shown->objectName()));
    }

private:
    static constexpr int consulting = 0;
    static constexpr int printing = 1;
    /// Screens name the buttons of their bar as they like.
    QString button(int place) const
    {
        return child<ReportBar>(QStringLiteral("Barra"))->buttonNames().section(QLatin1Char(' '), place, place);
    }

    QString m_screen;
};
