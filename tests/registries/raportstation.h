// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/controls/currencyedit.h"
#include "module/controls/dbgrid.h"
#include "tests/support/engines.h"
#include "tests/support/keys.h"
#include "tests/support/screenchecks.h"
#include "tests/support/teststation.h"

#include <QApplication>

/// A station at which rapports and their feeders are kept, on the engine of the test that is running.
class RaportStation : public TestStation
{
public:
    RaportStation()
        : TestStation(Engines::current())
    {
        using namespace Qt::StringLiterals;
        feeders(u"M0001"_s, 5, 8);
        feeders(u"M0001"_s, 10, 16);
        feeders(u"M0001"_s, 15, 24);
        database.run(u"UPDATE {CADCOR} SET TONALIDADE = '#efe6d0' WHERE COR = '000001'"_s);
        database.run(u"UPDATE {CADCOR} SET TONALIDADE = '#1b2a49' WHERE COR = '000002'"_s);
        database.run(u"INSERT INTO {TIPO_APL} (CODIGO, DESCRICAO) VALUES ('FUNDO', 'Fundo')"_s);
        database.run(u"INSERT INTO {TIPO_APL} (CODIGO, DESCRICAO) VALUES ('LISTRA', 'Listra')"_s);
    }

    static inline const QString caption = QStringLiteral("Cadastro de Raport");
    MessageAnswers answers; ///< a box that nobody expects fails every test

    void feeders(const QString &fabric, int millimetres, int count)
    {
        database.run(QStringLiteral("INSERT INTO {CADRAPORT} (CODIGO, MILIMETROS, ALIMENTADORES) VALUES ('%1', %2, %3)")
                         .arg(fabric)
                         .arg(millimetres)
                         .arg(count));
    }
    void stock(const QString &material, const QString &colour, const QString &lot = QStringLiteral("L1"))
    {
        database.run(
            QStringLiteral("INSERT INTO {MAT_ITEN} (CODIGO, COR, LOTE, DEPOSITO) VALUES ('%1', '%2', '%3', '01')")
                .arg(material, colour, lot));
    }
    /// "FABRIC COLOUR ORDER YARN YARNCOLOUR MM" becomes a stored line.
    void line(const QString &text, const QString &note = QStringLiteral("Nota"))
    {
        const QStringList parts = text.split(u' ');
        database.run(QStringLiteral("INSERT INTO {RAPORT} (MATERIAL, COR, ORDEM, CODIGO, COR_I, MILIMETROS, AGRUPADOR, "
                                    "REPETICAO, DESPERDICIO, OBSERVACAO) VALUES ('%1', '%2', %3, '%4', '%5', %6, "
                                    "'FUNDO', 2, 1.5, '%7')")
                         .arg(parts[0], parts[1], parts[2], parts[3], parts[4], parts[5], note));
    }
    /// Cotton in raw white 10, navy blue 5, raw white 15.
    void threeLines()
    {
        using namespace Qt::StringLiterals;
        line(u"M0001 000001 1 FIO30CO 000001 10"_s);
        line(u"M0001 000001 2 FIO30CO 000002 5"_s);
        line(u"M0001 000001 3 FIO30CO 000001 15"_s);
    }
    /// A line of a composition in no colour of its own: "*****" of the fabric's colour "0".
    void generic(const QString &material, const QString &yarn, int order, double percent)
    {
        database.run(QStringLiteral("INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, ORDEM, PERC) "
                                    "VALUES ('%1', '0', '%2', '*****', %3, %4)")
                         .arg(material, yarn)
                         .arg(order)
                         .arg(percent));
    }

    void openRaport() { open(QStringLiteral("TfmCadRaport")); }
    void load(const QString &material = QStringLiteral("M0001"), const QString &colour = QStringLiteral("000001"))
    {
        enter(QStringLiteral("EdtMaterial"), material);
        enter(QStringLiteral("EdtCor"), colour);
    }
    TDBGrid *grid(const QString &name = QStringLiteral("DBGrid1")) const { return child<TDBGrid>(name); }
    /// The columns of a grid as shown, joined by "|"; all of them, or those named "A;B".
    QStringList shown(const QString &fields = {}, const QString &name = QStringLiteral("DBGrid1")) const
    {
        QStringList rows;
        const QTableView *view = grid(name);
        for (int row = 0; row < view->model()->rowCount(); ++row) {
            QStringList cells;
            if (fields.isEmpty()) {
                for (int column = 0; column < view->model()->columnCount(); ++column)
                    cells.append(view->model()->index(row, column).data().toString());
            }
            for (const QString &field : fields.split(u';', Qt::SkipEmptyParts))
                cells.append(view->model()->index(row, grid(name)->columnOf(field)).data().toString());
            rows.append(cells.join(u'|'));
        }
        return rows;
    }
    double number(const QString &field) const { return child<TCurrencyEdit>(field)->value(); }

    /// Stands on a cell of the lines, with the focus in the grid.
    void goTo(int row, const QString &field)
    {
        grid()->setFocus();
        grid()->setCurrentIndex(grid()->model()->index(row, grid()->columnOf(field)));
    }
    /// Types into whatever has the focus: the grid, or the cell that is being typed in.
    void type(const QString &text)
    {
        for (const QChar c : text)
            Keys::type(QApplication::focusWidget(), c);
    }
    using TestStation::type;
    /// Types one cell after the other, Enter after each.
    void typeCells(const QStringList &cells)
    {
        for (const QString &cell : cells) {
            type(cell);
            key(Qt::Key_Return);
        }
    }

    /// "order|yarn|colour|mm|group|repeats|waste|note" of a fabric in a colour.
    QStringList stored(
        const QString &material = QStringLiteral("M0001"), const QString &colour = QStringLiteral("000001"))
    {
        return database.rows(
            QStringLiteral("SELECT ORDEM, CODIGO, COR_I, MILIMETROS, AGRUPADOR, REPETICAO, DESPERDICIO, "
                           "OBSERVACAO FROM {RAPORT} WHERE MATERIAL = '%1' AND COR = '%2' ORDER BY ORDEM")
                .arg(material, colour));
    }
    /// "order|yarn|colour|percent" of a fabric's composition in a colour.
    QStringList composition(
        const QString &material = QStringLiteral("M0001"), const QString &colour = QStringLiteral("000001"))
    {
        return database.rows(
            QStringLiteral("SELECT ORDEM, CODIGO, COR_I, PERC FROM {COMP_MATERIAL} WHERE MATERIAL = '%1' "
                           "AND COR = '%2' ORDER BY ORDEM, CODIGO")
                .arg(material, colour));
    }
    /// "diameter|gauge|width|grammage|kg per roll", once for each line of the composition.
    QStringList technicalData(
        const QString &material = QStringLiteral("M0001"), const QString &colour = QStringLiteral("000001"))
    {
        return database.rows(QStringLiteral("SELECT DIAMETRO, FINURA, LARGURA, GRAMATURA, KG_ROLO FROM {COMP_MATERIAL} "
                                            "WHERE MATERIAL = '%1' AND COR = '%2'")
                                 .arg(material, colour));
    }
};
