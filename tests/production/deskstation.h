// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/production/writeoffstation.h"
#include "tests/support/engines.h"

#include <QTableView>
#include <QTest>

/// A desk with an order of 100 kg of the fabric M0001, whose client sent yarn enough: 600 kg of the cotton and 400 kg
/// of the polyester of which the fabric takes 60 % and 40 %.
class DeskStation : public WriteOffStation
{
public:
    explicit DeskStation(const QString &user = QStringLiteral("ADMIN"), const QString &engine = Engines::current())
        : WriteOffStation(engine, user)
    {
        addLot(cotton, 600, 21.5);
        addLot(polyester, 400, 14.25);
    }

    MessageAnswers answers; ///< a box that nobody expects fails every test

    void addLot(const QString &yarn, double kg, double price, const QString &document = QStringLiteral("0001203"),
        const QString &client = QStringLiteral("00001"), double returned = 0)
    {
        const QString invoice = QStringLiteral("DOCTO = '%1' AND CODCLI = '%2'").arg(document, client);
        if (database.count(QStringLiteral("NFTERCEIROS"), invoice) == 0)
            database.run(QStringLiteral("INSERT INTO {NFTERCEIROS} (DOCTO, CODCLI, DATA) VALUES ('%1', '%2', "
                                        "'02/01/2026')")
                             .arg(document, client));
        database.run(QStringLiteral("INSERT INTO {NFT_ITEN} (DOCTO, CODCLI, CODIGO, LOTE, UNITARIO, ESTOQUE_ORIGINAL,"
                                    " ESTOQUE_FISICO, QTDE_DEVOL) VALUES ('%1', '%2', '%3', 'L1', %4, %5, %5, %6)")
                         .arg(document, client, yarn, QString::number(price), QString::number(kg, 'f', 3),
                             QString::number(returned, 'f', 3)));
    }
    void addStock(double total, double invoiced = 0)
    {
        database.run(QStringLiteral("INSERT INTO {PA_MALHA} (CODIGO, NUM_OF, QTDE_TOTAL, FATURADO)"
                                    " VALUES ('M0001', '000012', %1, %2)")
                         .arg(QString::number(total, 'f', 3), QString::number(invoiced, 'f', 3)));
    }
    /// A user without rights gets these on the desk, such as "A0".
    void grant(const QStringList &rights)
    {
        for (const QString &right : rights)
            database.run(QStringLiteral("INSERT INTO QEN_DIREITO (USUARIO, TELA, LETRA, NIVEL)"
                                        " VALUES ('SEMDIREITO', 'TfmMalhaOFBaixa', '%1', '%2')")
                             .arg(right.left(1), right.mid(1)));
    }

    void openDesk(const QString &of = QStringLiteral("000012"))
    {
        open(QStringLiteral("TfmMalhaOFBaixa"));
        enter(QStringLiteral("edtOF"), of);
    }
    /// Presses "Baixar" and works in the dialog that comes up; one that is open still is given up then.
    void atDialog(const std::function<void()> &work)
    {
        if (!form())
            openDesk();
        QWidget *desk = form();
        answers.expectWindow(
            [&](QWidget *dialog) {
                use(dialog);
                work();
                if (dialog->isVisible())
                    click(QStringLiteral("SbDesistir"));
            },
            dialogCaption);
        click(QStringLiteral("btnBaixa"));
        use(desk);
    }
    /// In the dialog: what is typed before a confirmation.
    void fillRoll(const QString &weight, const QString &worker = QStringLiteral("000101"))
    {
        enter(QStringLiteral("edtKGTotal"), weight);
        enter(QStringLiteral("EdtCodFun"), worker);
    }
    /// In the dialog: clicks, and is back in it when boxes came up meanwhile.
    void confirm() { press(QStringLiteral("SbConfirmar")); }
    void press(const QString &button)
    {
        QPointer<QWidget> dialog = form();
        click(button);
        if (!dialog || !dialog->isVisible())
            return;
        dialog->activateWindow();
        QVERIFY(QTest::qWaitFor([&] { return QApplication::activeWindow() == dialog; }));
    }
    /// A whole write-off; the message is that of the box expected, if any.
    void writeOff(const QString &weight, const QString &worker = QStringLiteral("000101"))
    {
        atDialog([&] {
            fillRoll(weight, worker);
            confirm();
        });
    }
    /// The next box is an information of the dialog's.
    void expect(const QString &message) { answers.expect(message, QMessageBox::Ok, dialogCaption); }
    void expectOverProduction(QMessageBox::StandardButton answer)
    {
        answers.expect(QStringLiteral("OF está sendo baixada com quantidade superior a programada. Deseja continuar?"),
            answer, dialogCaption);
    }

    QTableView *grid() const { return child<QTableView>(QStringLiteral("DBGrid")); }
    /// A column of the grid, from top to bottom.
    QStringList column(int number) const
    {
        QStringList cells;
        for (int row = 0; row < grid()->model()->rowCount(); ++row)
            cells.append(grid()->model()->index(row, number).data().toString());
        return cells;
    }

    QString plan()
    {
        return database.rows(QStringLiteral("SELECT KG_TOTAL FROM {OF_MALHA} WHERE NUM_OF = '000012'")).value(0);
    }
    QStringList items()
    {
        return database.rows(QStringLiteral("SELECT CODIGO, COR, LOTE, DEPOSITO, LOCAL, QTDE, PRECO_MED, ATIVO"
                                            " FROM {MAT_ITEN} ORDER BY CODIGO, COR, LOTE, DEPOSITO"));
    }
    QStringList movements()
    {
        return database.rows(QStringLiteral("SELECT CODCRE, CODIGO, COR, NUM_DOCTO, OPERACAO, QTDE, TIPO, CUSTO, PRECO,"
                                            " LOTE, DESCRICAO, DT_MOVTO, DEPOSITO, USUARIO FROM {MAT_MOV}"
                                            " ORDER BY DESCRICAO"));
    }
    /// Every row of the five tables that a write-off may change.
    QStringList tables()
    {
        return rolls() + stock() + items() + movements()
            + database.rows(QStringLiteral("SELECT NUM_OF, KG_TOTAL, MATERIAL, CLIENTE FROM {OF_MALHA}"));
    }

    const QString dialogCaption = QStringLiteral("Baixa de OF");
    const QString cotton = QStringLiteral("FIO30CO");
    const QString polyester = QStringLiteral("FIO150PES");
    const QString refusedByTable = QStringLiteral("O banco de dados recusou a operação. Nada foi gravado.");
};
