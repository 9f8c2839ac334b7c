// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/sqltext.h"
#include "tests/support/engines.h"
#include "tests/support/keys.h"
#include "tests/support/messageanswers.h"
#include "tests/support/screenchecks.h"
#include "tests/support/teststation.h"

#include <QApplication>
#include <QClipboard>
#include <QTest>

/// Inbound invoices of company 1 for the tests of the screens that work on them.
namespace Invoices {

using namespace Qt::StringLiterals;

inline const QString caption = QStringLiteral("Entrada de Notas Fiscais");

struct Lot
{
    QString material = QStringLiteral("FIO30CO");
    QString lot = QStringLiteral("L1");
    double quantity = 50; ///< kg received
    double price = 20;
    double stock = -1; ///< physical quantity; less than 0: as received
    double writtenOff = 0;
    double returned = 0;
    QString brand = QStringLiteral("Marca");
};

inline void insert(TestDatabase &database, const QString &docto, const QString &client, const QList<Lot> &lots)
{
    using SqlText::number, SqlText::quoted;
    const QString key = quoted(docto) + u", "_s + quoted(client);
    database.run(
        u"INSERT INTO {NFTERCEIROS} (DOCTO, CODCLI, DATA, OBS) VALUES ("_s + key + u", '03/02/2026', 'Obs')"_s);
    for (const Lot &lot : lots) {
        database.run(u"INSERT INTO {NFT_ITEN} (DOCTO, CODCLI, CODIGO, LOTE, MARCA, ESTOQUE_ORIGINAL, ESTOQUE_FISICO, "
                     "QTDE_BAIXA, QTDE_DEVOL, UNITARIO, VALOR) VALUES ("_s
            + QStringList{key, quoted(lot.material), quoted(lot.lot), quoted(lot.brand), number(lot.quantity),
                number(lot.stock < 0 ? lot.quantity : lot.stock), number(lot.writtenOff), number(lot.returned),
                number(lot.price), number(lot.quantity * lot.price)}
                  .join(u", "_s)
            + u')');
    }
}

/// An outbound invoice with one item that quotes an inbound one; `printed` is a literal.
inline void quote(TestDatabase &database, const QString &docto, const QString &material, const QString &lot,
    const QString &client = QStringLiteral("00001"), const QString &printed = QStringLiteral("'S'"))
{
    const QString number = u"S%1"_s.arg(database.count(u"NOTA"_s) + 1);
    database.run(
        u"INSERT INTO {NOTA} (FATURA, CODCLI, IMPRESSO) VALUES ('%1', '%2', %3)"_s.arg(number, client, printed));
    database.run(u"INSERT INTO {NOTAITEN} (FATURA, ORDEM, CODIGO, LOTE, NOTA_CLIENTE, QTDE) VALUES ('%1', 1, "
                 "'%2', '%3', '%4', 5)"_s.arg(number, material, lot, docto));
}

/// "docto|client|material|lot|received|physical|written off|returned|price|total" of every lot.
inline QStringList lots(TestDatabase &database)
{
    return database.rows(u"SELECT DOCTO, CODCLI, CODIGO, LOTE, ESTOQUE_ORIGINAL, ESTOQUE_FISICO, QTDE_BAIXA, "
                         "QTDE_DEVOL, UNITARIO, VALOR FROM {NFT_ITEN} ORDER BY DOCTO, CODCLI, CODIGO, LOTE"_s);
}

inline QStringList headers(TestDatabase &database)
{
    return database.rows(u"SELECT DOCTO, CODCLI FROM {NFTERCEIROS} ORDER BY DOCTO, CODCLI"_s);
}

/// "label|text|kind|key|user" of every log line.
inline QStringList log(TestDatabase &database)
{
    return database.rows(u"SELECT ROTULO, TEXTO, OPERACAO, CHAVE, USUARIO FROM QEN_LOG"_s);
}

/// The screen at a station of its own; a box that nobody expects fails the test.
class Screen
{
public:
    Screen()
        : station(Engines::current())
    {
    }

    TestStation station;
    MessageAnswers answers;

    TestDatabase &database() { return station.database; }
    void open() { station.open(u"TfmNFTerceiros"_s); }
    /// Materials belong to clients: the cotton to 00001, the polyester to 00002.
    void letMaterialsBelongToClients()
    {
        database().run(u"UPDATE QEN_PARAMETRO SET VALOR = 'S' WHERE MODULO = 'MAT' AND NUMERO = 120"_s);
        database().run(u"UPDATE {MATERIAL} SET CODCLI = '00001' WHERE CODIGO = 'FIO30CO'"_s);
        database().run(u"UPDATE {MATERIAL} SET CODCLI = '00002' WHERE CODIGO = 'FIO150PES'"_s);
    }
    void expect(const QString &message) { ScreenChecks::expectInformation(answers, caption, message); }
    void expectFailure(const QString &message) { ScreenChecks::expectFailure(answers, caption, message); }

    void startInvoice(const QString &docto = u"0000123"_s, const QString &client = u"00001"_s)
    {
        station.click(u"Btincluir"_s);
        station.enter(u"DBDocto"_s, docto);
        station.enter(u"DBCodCliente"_s, client);
    }
    /// Fills the entry panel, which is open.
    void fillLot(const QString &material, const QString &lot, const QString &quantity, const QString &price)
    {
        station.enter(u"EdtCodMaterial"_s, material);
        station.enter(u"EdtLote"_s, lot);
        station.enter(u"EdtPeso"_s, quantity);
        station.enter(u"EdtUnitario"_s, price);
    }
    void enterLot(const QString &material = u"FIO30CO"_s, const QString &lot = u"L1"_s,
        const QString &quantity = u"50"_s, const QString &price = u"20"_s)
    {
        station.click(u"BtIIncluir"_s);
        fillLot(material, lot, quantity, price);
        station.click(u"btISalvar"_s);
    }
    /// Ctrl+V in a field: it takes what no key gives.
    void pasteIn(const QString &field, const QString &text)
    {
        QApplication::clipboard()->setText(text);
        station.type(field, {});
        station.key(Qt::Key_V, Qt::ControlModifier);
    }
    /// Ctrl+V in the list of lots.
    void paste(const QString &text)
    {
        QApplication::clipboard()->setText(text);
        station.child(u"DBGItens"_s)->setFocus();
        station.key(Qt::Key_V, Qt::ControlModifier);
    }
    bool isEditing() const { return station.child(u"PainelDados"_s)->isEnabled(); }
    bool isLotOpen() const { return station.child(u"PainelItem"_s)->isEnabled(); }
    /// The rows of the list, their columns joined by "|": material, lot, quantity, price, total, brand.
    QStringList shownLots() const
    {
        const auto *model = station.child<QTableView>(u"DBGItens"_s)->model();
        QStringList rows;
        for (int row = 0; row < model->rowCount(); ++row) {
            QStringList cells;
            for (const int column : {0, 2, 3, 4, 5, 6})
                cells.append(model->index(row, column).data().toString());
            rows.append(cells.join(u'|'));
        }
        return rows;
    }
};

} // namespace Invoices
