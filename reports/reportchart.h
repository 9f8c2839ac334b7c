// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QImage>
#include <QMap>
#include <QStringList>
#include <QWidget>

#include <memory>

class QChart;
class QChartView;

/// A picture of a report's figures beside its grid and, when wished, on its paper. Figures are kilograms.
class ReportChart : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString titulo READ title WRITE setTitulo) ///< stands above the picture

public:
    /// Figures of one colour: "1º turno", "Devolvido". One value per category; missing ones count as 0.
    struct Series
    {
        QString name;
        QList<double> values;
    };
    enum class Columns { Stacked, SideBySide };

    explicit ReportChart(QWidget *parent = nullptr);
    ~ReportChart() override;

    QString title() const { return m_title; }
    void setTitulo(const QString &title) { m_title = title; }

    /// Columns over categories such as machines or clients, from left to right as given. Those beyond the first
    /// `atMost` are one column "Outros" together. Series without any figure are left out.
    void showColumns(Columns kind, const QStringList &categories, const QList<Series> &series, int atMost = 12);
    /// A line over the days from the first to the last of them; a day between them that is missing counts as 0.
    void showDays(const QMap<QDate, double> &kilograms);
    void clear();
    bool isEmpty() const { return m_series.isEmpty(); }

    /// What is shown, as it is shown: "Outros" included, days as "05/03".
    const QStringList &categories() const { return m_categories; }
    const QList<Series> &series() const { return m_series; }

    /// The picture as large as wanted, in pixels, whatever size it has on screen; letters grow with it.
    QImage image(const QSize &size) const;
    /// Those of the charts that show something, one beside the other across a page; null when none does.
    static QImage forPaper(const QList<const ReportChart *> &charts);

private:
    std::unique_ptr<QChart> draw() const;
    void drawColumns(QChart *chart) const;
    void drawDays(QChart *chart) const;
    void showDrawn();

    QString m_title;
    QStringList m_categories;
    QList<Series> m_series;
    Columns m_kind = Columns::Stacked;
    QDate m_firstDay; ///< valid: the categories are days
    QChartView *m_view;
};
