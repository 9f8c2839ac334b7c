// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/production/orderstation.h"

#include "module/controls/dbgrid.h"

#include <QTabBar>
#include <QTabWidget>

/// A lot of a client's yarn; its invoice comes with it.
struct YarnLot
{
    QString lot;
    double kg = 0;
    QString yarn = QStringLiteral("FIO30CO");
    QString document = QStringLiteral("0001203");
    double writtenOff = 0;
    double returned = 0;
    QString client = QStringLiteral("00001");
    QString date = QStringLiteral("02/01/2026"); ///< month, day, year
    QString brand = QStringLiteral("Fiação Pedra Redonda");
};

/// A station at which yarn is reserved for orders. The fabric M0001 of client 00001 is of 60 % FIO30CO and 40 %
/// FIO150PES. Reservations are checked unless the test says otherwise.
class YarnStation : public OrderStation
{
public:
    explicit YarnStation(const QString &engine = Engines::current())
        : OrderStation(engine)
    {
        setMode(QStringLiteral("S"));
    }

    void setMode(const QString &mode)
    {
        database.run(
            QStringLiteral("UPDATE QEN_PARAMETRO SET VALOR = '%1' WHERE MODULO = 'MAL' AND NUMERO = 80").arg(mode));
    }
    void insertLot(const YarnLot &lot)
    {
        const QString invoice = QStringLiteral("DOCTO = '%1' AND CODCLI = '%2'").arg(lot.document, lot.client);
        if (database.count(QStringLiteral("NFTERCEIROS"), invoice) == 0)
            database.run(QStringLiteral("INSERT INTO {NFTERCEIROS} (DOCTO, CODCLI, DATA) VALUES ('%1', '%2', '%3')")
                             .arg(lot.document, lot.client, lot.date));
        database.run(QStringLiteral("INSERT INTO {NFT_ITEN} (DOCTO, CODCLI, CODIGO, LOTE, MARCA, UNITARIO, "
                                    "ESTOQUE_ORIGINAL, ESTOQUE_FISICO, QTDE_BAIXA, QTDE_DEVOL) VALUES (")
            + QStringList{SqlText::quoted(lot.document), SqlText::quoted(lot.client), SqlText::quoted(lot.yarn),
                SqlText::quoted(lot.lot), SqlText::quoted(lot.brand), QStringLiteral("21.5"), SqlText::number(lot.kg),
                SqlText::number(lot.kg), SqlText::number(lot.writtenOff), SqlText::number(lot.returned)}
                  .join(QLatin1String(", "))
            + QLatin1Char(')'));
    }
    /// Lots of 50, 30 and 500 kg of the one yarn, and of 40 kg of the other: A, B, C and D.
    void insertLots()
    {
        insertLot({QStringLiteral("A"), 50});
        insertLot({QStringLiteral("B"), 30});
        insertLot({QStringLiteral("C"), 500});
        insertLot({QStringLiteral("D"), 40, QStringLiteral("FIO150PES")});
    }
    void reserve(const QString &order, const YarnLot &lot, double kg)
    {
        database.run(
            QStringLiteral("INSERT INTO {BAIXA_FIO} (NUMERO, DOCTO, CODIGO, LOTE, QTDE) VALUES ('%1', '%2', '%3', ")
                .arg(order, lot.document, lot.yarn)
            + SqlText::quoted(lot.lot) + QStringLiteral(", ") + SqlText::number(kg) + QLatin1Char(')'));
    }
    /// "order lot kg" of all that is reserved.
    QStringList reservations()
    {
        QStringList result =
            database.rows(QStringLiteral("SELECT NUMERO, LOTE, QTDE FROM {BAIXA_FIO} ORDER BY NUMERO, LOTE"));
        return result.replaceInStrings(QStringLiteral("|"), QStringLiteral(" "));
    }

    void clickTab(int index)
    {
        QTest::mouseClick(pages()->tabBar(), Qt::LeftButton, {}, pages()->tabBar()->tabRect(index).center());
        // A box may have come up over the screen.
        form()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(form()));
    }
    void showOrder() { clickTab(0); }
    void showYarn() { clickTab(1); }
    /// The order screen on its yarn, the last order being changed.
    void editYarn()
    {
        openOrders();
        click(QStringLiteral("BtnAltera"));
        showYarn();
    }

    TDBGrid *lots() const { return child<TDBGrid>(QStringLiteral("DBGrid2")); }
    QModelIndex cell(const QString &lot, const QString &field) const
    {
        const QAbstractItemModel *model = lots()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            if (model->index(row, lots()->columnOf(QStringLiteral("Lote"))).data().toString() == lot)
                return model->index(row, lots()->columnOf(field));
        }
        return {};
    }
    bool isShown(const QString &lot) const { return cell(lot, QStringLiteral("Baixa")).isValid(); }
    bool isTicked(const QString &lot) const
    {
        return cell(lot, QStringLiteral("Baixa")).data(Qt::CheckStateRole).toInt() == Qt::Checked;
    }
    QString balance(const QString &lot) const { return cell(lot, QStringLiteral("Saldo")).data().toString(); }
    /// What the order takes of the lot; "-" when it is not ticked.
    QString taken(const QString &lot) const
    {
        return isTicked(lot) ? cell(lot, QStringLiteral("QtdeRes")).data().toString() : QStringLiteral("-");
    }
    /// With the mouse, on the check mark's cell.
    void tick(const QString &lot)
    {
        QTest::mouseClick(
            lots()->viewport(), Qt::LeftButton, {}, lots()->visualRect(cell(lot, QStringLiteral("Baixa"))).center());
    }
    /// "need reserved missing state" of a yarn.
    QString yarn(const QString &code) const
    {
        const auto *grid = child<TDBGrid>(QStringLiteral("DBGrid3"));
        const QAbstractItemModel *model = grid->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            if (model->index(row, 0).data().toString() != code)
                continue;
            QStringList columns;
            for (int column = 2; column < model->columnCount(); ++column)
                columns.append(model->index(row, column).data().toString());
            return columns.join(QLatin1Char(' ')).trimmed();
        }
        return {};
    }

    const QString cotton = QStringLiteral("FIO30CO");
    const QString polyester = QStringLiteral("FIO150PES");
    static QString insufficient(const QString &yarn)
    {
        return QStringLiteral("Saldo do fio %1 insuficiente. Impossível Continuar.").arg(yarn);
    }
};
