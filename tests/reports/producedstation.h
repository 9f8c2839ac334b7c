// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/format.h"
#include "reports/reportchart.h"
#include "tests/reports/reportstation.h"

#include <QAbstractButton>

/// A roll of one of the orders; an empty time is null.
struct Roll
{
    QString order;
    QString date; ///< month, day, year
    QString time;
    QString shift;
    double kg;
};

/// A station with the report of produced orders, and two days of production whose figures are known.
///
///     kg                      1º turno  2º turno  3º turno  4º turno    total
///     001 M0001 00001           41,625    19,250              18,000   78,875
///         on the 2nd            20,500    19,250                       39,750
///         on the 3rd            21,125                        18,000   39,125
///     001 M0002 00002           25,000              24,375             49,375
///         on the 2nd            25,000                                 25,000
///         on the 3rd                                24,375             24,375
///     002 M0001 00001 (3rd)     30,125                                 30,125
///     all                       96,750    19,250    24,375    18,000  158,375   (64,750 on the 2nd, 93,625 on the 3rd)
class ProducedStation : public ReportStation
{
public:
    explicit ProducedStation(const QString &user = QStringLiteral("ADMIN"))
        : ReportStation(QStringLiteral("TfmRelProd"), user)
    {
    }

    void insertProduction()
    {
        const auto t = [](const char *text) { return QString::fromLatin1(text); };
        Orders::insert(database, {.number = t("000012")});
        Orders::insert(database, {.number = t("000013"), .client = t("00002"), .material = t("M0002")});
        Orders::insert(database, {.number = t("000014"), .machine = t("002")});
        insertRolls({{t("000012"), t("03/02/2026"), t("08:00:00"), t("1"), 20.5},
            {t("000012"), t("03/02/2026"), t("15:00:00"), t("2"), 19.25},
            {t("000012"), t("03/03/2026"), t("09:00:00"), t("1"), 21.125},
            {t("000012"), t("03/03/2026"), t("23:30:00"), t("4"), 18},
            {t("000013"), t("03/02/2026"), t("10:00:00"), t("1"), 25},
            {t("000013"), t("03/03/2026"), {}, t("3"), 24.375},
            {t("000014"), t("03/03/2026"), t("10:00:00"), t("1"), 30.125}});
    }
    void insertRolls(const QList<Roll> &rolls)
    {
        for (const Roll &roll : rolls) {
            const QString time = roll.time.isEmpty() ? QStringLiteral("NULL") : SqlText::quoted(roll.time);
            database.run(QStringLiteral("INSERT INTO {OF_MALHA_BAIXAS} (NUM_BAIXA, NUM_OF, DATA, HORA, TURNO, QTDE) "
                                        "VALUES ('%1', '%2', '%3', %4, '%5', %6)")
                             .arg(QString::number(++m_rolls), roll.order, roll.date, time, roll.shift,
                                 SqlText::number(roll.kg)));
        }
    }
    /// The fabric M0001 in the region 01: 2,00 at once and 2,50 in seven days; other colours and regions are dearer.
    void insertPrices()
    {
        for (const QString &values :
            {QStringLiteral("'01', 'M0001', '02', 9, 9, 9"), QStringLiteral("'01', 'M0001', '01', 2, 2.5, 4"),
                QStringLiteral("'02', 'M0001', '01', 7, 7, 7"), QStringLiteral("'02', 'M0002', '01', 3, 3, 3")}) {
            database.run(QStringLiteral("INSERT INTO {TABPRECO} (REGIAO, CODIGO, GRUPO_COR, PRECO_00, PRECO_07, "
                                        "PRECO_91) VALUES (%1)")
                             .arg(values));
        }
    }
    /// Opens the report on the first ten days of March.
    void openMarch()
    {
        openReport();
        setPeriod(QStringLiteral("01/03/2026"), QStringLiteral("10/03/2026"));
    }
    void setPeriod(const QString &from, const QString &to)
    {
        enter(QStringLiteral("EdtDataIni"), from);
        enter(QStringLiteral("EdtDataFim"), to);
    }
    void setTimes(const QString &from, const QString &to)
    {
        enter(QStringLiteral("EdtHoraIni"), from);
        enter(QStringLiteral("EdtHoraFim"), to);
    }
    /// The sums of all shifts of all rows (kg) that the line beneath the grid has to show.
    QString totalKg() { return QString::number(sum(QStringLiteral("TOTAL")), 'f', 3); }
    double sum(const QString &field) const
    {
        const TDataSet *rows = grid()->dataSet();
        double kg = 0;
        for (int row = 0; row < rows->rowCount(); ++row)
            kg += rows->cell(row, rows->fieldIndex(field)).toDouble();
        return kg;
    }
    /// Fields of the rows of the work table, joined by "|".
    QStringList fields(const QStringList &names) const
    {
        TDataSet *rows = grid()->dataSet();
        QStringList result;
        for (int row = 0; row < rows->rowCount(); ++row) {
            QStringList texts;
            for (const QString &name : names)
                texts.append(rows->field(name).text(rows->cell(row, rows->fieldIndex(name))));
            result.append(texts.join(QLatin1Char('|')));
        }
        return result;
    }
    /// The class is the package's own, and its name alone tells it from here.
    const ReportChart &chart(const QString &name) const { return *static_cast<ReportChart *>(child(name)); }
    /// "001: 66,625 19,250 24,375 18,000" of each column or point.
    QStringList drawn(const QString &name) const
    {
        QStringList result;
        const ReportChart &shown = chart(name);
        for (qsizetype category = 0; category < shown.categories().size(); ++category) {
            QStringList values;
            for (const ReportChart::Series &series : shown.series())
                values.append(Format::number(series.values.value(category), QStringLiteral(",0.000")));
            result.append(shown.categories()[category] + QLatin1String(": ") + values.join(QLatin1Char(' ')));
        }
        return result;
    }

private:
    int m_rolls = 0;
};
