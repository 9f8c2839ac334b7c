// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/controls/dbgrid.h"
#include "tests/production/orders.h"
#include "tests/support/engines.h"
#include "tests/support/screenchecks.h"
#include "tests/support/teststation.h"

#include <QApplication>
#include <QClipboard>

/// Finished fabric and its releases for invoicing, for the tests of the screen that releases.
namespace Releases {

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

inline const QString caption = QStringLiteral("Liberação de Faturamento da Malharia");

/// A station with fabric of two clients: 00001 has 20, 50.125 and 8 kg of its three orders, a fourth is invoiced whole.
class ReleaseStation : public TestStation
{
public:
    ReleaseStation()
        : TestStation(Engines::current())
    {
        database.run(u"INSERT INTO {MATERIAL} (CODIGO, DESCRICAO, GRUPO, CODCLI) "
                     "VALUES ('M0003', 'Moletom 3 cabos', '150', '00001')"_s);
        produce(u"000010"_s, u"M0001"_s, 120, 100);
        produce(u"000011"_s, u"M0001"_s, 80, 80);
        produce(u"000012"_s, u"M0003"_s, 50.125, 0, u"002"_s);
        produce(u"000013"_s, u"M0001"_s, 8, 0);
        produce(u"000020"_s, u"M0002"_s, 30, 0);
    }

    MessageAnswers answers; ///< a box that nobody expects fails every test

    /// An order with finished fabric, in kg; its lot is named after it.
    void produce(
        const QString &of, const QString &fabric, double kg, double invoiced, const QString &machine = u"001"_s)
    {
        Orders::insert(database, {.number = of, .material = fabric, .machine = machine});
        database.run(u"UPDATE {OF_MALHA} SET LOTE = 'L%1' WHERE NUM_OF = '%2'"_s.arg(of.right(2), of));
        database.run(u"INSERT INTO {PA_MALHA} (NUM_OF, CODIGO, QTDE_TOTAL, FATURADO) VALUES ('%1', '%2', %3, %4)"_s.arg(
            of, fabric, SqlText::number(kg), SqlText::number(invoiced)));
    }
    void insertLine(const QString &number, const QString &of, const QString &fabric, double kg, int rolls,
        const QString &client = u"00001"_s)
    {
        database.run(u"INSERT INTO {PEDIDO3} (NUMERO, CAIXA, DATA, CODCLI, CODIGO, QTDE, NOTAFISCAL, PESO, OBS, LOCAL) "
                     "VALUES ('%1', '%2', '02/28/2026', '%3', '%4', %5, 'NF-9', %6, 'Cliente retira', 'A-01')"_s.arg(
                         number, of, client, fabric, SqlText::number(kg), QString::number(rolls)));
    }
    /// Yarn of the client's invoice that is reserved for the order, in kg.
    void reserve(const QString &of, const QString &document, const QString &yarn, const QString &lot, double kg)
    {
        database.run(
            u"INSERT INTO {BAIXA_FIO} (NUMERO, DOCTO, CODIGO, LOTE, QTDE) VALUES ('%1', '%2', '%3', '%4', %5)"_s.arg(
                of, document, yarn, lot, SqlText::number(kg)));
    }
    /// Release 00007 of two orders of 00001, and 00008 of the other client's.
    void insertReleases()
    {
        insertLine(u"00007"_s, u"000010"_s, u"M0001"_s, 12.5, 3);
        insertLine(u"00007"_s, u"000012"_s, u"M0003"_s, 50.125, 2);
        insertLine(u"00008"_s, u"000020"_s, u"M0002"_s, 30, 1, u"00002"_s);
    }

    void openReleases() { open(u"TfmMalLibFat"_s); }
    /// A new release with the open production of the client; the number is given.
    void startRelease(const QString &client = u"00001"_s)
    {
        enter(u"EdtNumero"_s, {});
        enter(u"edtCliente"_s, client);
    }
    TDBGrid *grid() const { return child<TDBGrid>(u"DBGrid1"_s); }
    QString cell(int row, const QString &field) const
    {
        return grid()->model()->index(row, grid()->columnOf(field)).data().toString();
    }
    QString row(int row) const
    {
        QStringList cells;
        for (int column = 0; column < grid()->model()->columnCount(); ++column)
            cells.append(grid()->model()->index(row, column).data().toString());
        return cells.join(u'|');
    }
    /// The orders listed.
    QStringList listed() const
    {
        QStringList result;
        for (int i = 0; i < grid()->model()->rowCount(); ++i)
            result.append(cell(i, u"Numero"_s));
        return result;
    }
    /// "row field" of the cell on which the grid stands.
    QString place() const
    {
        const QModelIndex at = grid()->currentIndex();
        for (const QString &field : {u"Numero"_s, u"Faturar"_s, u"Rolos"_s, u"Maquina"_s}) {
            if (grid()->columnOf(field) == at.column())
                return u"%1 %2"_s.arg(at.row()).arg(field);
        }
        return u"%1 other"_s.arg(at.row());
    }
    void standOn(int row, const QString &field)
    {
        grid()->setFocus();
        grid()->setCurrentIndex(grid()->model()->index(row, grid()->columnOf(field)));
    }
    /// Types in the cell on which the grid stands, without leaving it.
    void typeInCell(const QString &text)
    {
        for (const QChar key : text)
            QTest::keyClicks(QApplication::focusWidget(), key);
    }
    /// Types and takes it by a key.
    void enterCell(const QString &text, Qt::Key by = Qt::Key_Return)
    {
        typeInCell(text);
        QTest::keyClick(QApplication::focusWidget(), by);
        QTRY_VERIFY(QApplication::focusWidget() == grid() || focus() == u"BitBtn1"_s);
    }
    void paste(const QString &field, const QString &text)
    {
        QApplication::clipboard()->setText(text);
        type(field, {});
        key(Qt::Key_V, Qt::ControlModifier);
    }
    /// "number|order|date|client|fabric|kg|invoice|rolls|remark|place" of every line.
    QStringList stored(const QString &condition = u"1 = 1"_s)
    {
        return database.rows(u"SELECT NUMERO, CAIXA, DATA, CODCLI, CODIGO, QTDE, NOTAFISCAL, PESO, OBS, LOCAL "
                             "FROM {PEDIDO3} WHERE %1 ORDER BY NUMERO, CAIXA"_s.arg(condition));
    }
};

} // namespace Releases
