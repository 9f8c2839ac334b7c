// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/screenusage.h"

#include "host/screendriver.h"
#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/tabelas.h"

#include <QTabWidget>
#include <QTableView>

using namespace Funcoes;
using namespace Qt::StringLiterals;

namespace {

QString value(const QString &statement)
{
    return Tabela->IBDatabase->value(DBLocal_SQL(statement)).toString();
}

/// An order that has a good many rolls and still room for one.
QString orderInProduction()
{
    return value(uR"(
        SELECT MAX(OFM.NUM_OF) FROM {OF_MALHA} OFM
        WHERE OFM.KG_TOTAL - (SELECT SUM(B.QTDE) FROM {OF_MALHA_BAIXAS} B WHERE B.NUM_OF = OFM.NUM_OF) > 30
          AND (SELECT COUNT(*) FROM {OF_MALHA_BAIXAS} B WHERE B.NUM_OF = OFM.NUM_OF) > 8)"_s);
}

QString worker()
{
    return value(u"SELECT MIN(CODIGO) FROM {PESSOAL} WHERE ATIVO = 'S'"_s);
}

/// An order that is to become heavier than the yarn that is reserved for it.
void useOrder(ScreenDriver &order)
{
    order.press(u"BtnAltera"_s);
    order.type(u"edtKGTotal"_s, u"1200"_s);
    if (auto *pages = order.screen()->findChild<QTabWidget *>(u"PageControl"_s))
        pages->setCurrentIndex(1);
}

void useBalance(ScreenDriver &balance)
{
    balance.enter(u"edtOF"_s, value(u"SELECT MAX(NUM_OF) FROM {PA_MALHA} WHERE QTDE_TOTAL > FATURADO"_s));
    balance.type(u"EdtQtde"_s, u"12,5"_s);
}

void useWriteOff(ScreenDriver &station)
{
    station.enter(u"EdtTurno"_s, u"1"_s);
    station.enter(u"edtOF"_s, orderInProduction());
    station.enter(u"EdtCodOper"_s, worker());
}

void useDesk(ScreenDriver &desk)
{
    desk.enter(u"edtOF"_s, orderInProduction());
}

void useDeskRoll(ScreenDriver &roll)
{
    roll.enter(u"edtKGTotal"_s, u"19,84"_s);
    roll.key(Qt::Key_Return);
    roll.type(u"EdtCodFun"_s, worker());
}

/// A new price for the first instalment, and for those that follow.
void usePrices(ScreenDriver &prices)
{
    prices.press(u"BtnAltera"_s);
    prices.enter(u"EdtParcela01"_s, u"4,85"_s);
    prices.type(u"EdtParcela02"_s, u"4,92"_s);
    prices.key(Qt::Key_F6);
}

/// An invoice of fabric and yarn that was not billed yet.
void useBilling(ScreenDriver &billing)
{
    billing.enter(u"EdtNota"_s, value(uR"(
        SELECT MAX(I.FATURA) FROM {NOTAITEN} I INNER JOIN {MATERIAL} M ON (M.CODIGO = I.CODIGO)
        WHERE M.GRUPO IN ('150', '15') AND I.TIPO = 'N'
          AND (SELECT COUNT(*) FROM {NOTAITEN} N WHERE N.FATURA = I.FATURA) > 3)"_s));
    billing.type(u"EdtFat"_s, u"S"_s);
}

/// A fabric with stripes, on its third line.
void useRaport(ScreenDriver &raport)
{
    const QString fabric = value(u"SELECT MAX(MATERIAL) FROM {RAPORT} WHERE ORDEM > 5"_s);
    raport.enter(u"EdtMaterial"_s, fabric);
    raport.enter(
        u"EdtCor"_s, value(u"SELECT MAX(COR) FROM {RAPORT} WHERE ORDEM > 5 AND MATERIAL = "_s + Aspas(fabric)));
    if (auto *lines = raport.screen()->findChild<QTableView *>(u"DBGrid1"_s))
        lines->setFocus();
    raport.key(Qt::Key_Down);
    raport.key(Qt::Key_Down);
}

void useFeeders(ScreenDriver &feeders)
{
    feeders.enter(u"EdtCodMat"_s, value(u"SELECT MAX(CODIGO) FROM {CADRAPORT}"_s));
}

void useDefects(ScreenDriver &defects)
{
    defects.type(u"EdtCodRev"_s, worker());
    defects.type(u"EdtCodQul"_s, value(u"SELECT MIN(CODIGO) FROM {TABQUL}"_s));
}

/// A lot of the last invoice's yarn more.
void useInboundInvoice(ScreenDriver &invoice)
{
    invoice.press(u"BtnAltera"_s);
    invoice.press(u"BtIIncluir"_s);
    invoice.enter(u"EdtCodMaterial"_s, value(uR"(
        SELECT MAX(I.CODIGO) FROM {NFT_ITEN} I
        WHERE I.CODCLI = (SELECT NF.CODCLI FROM {NFTERCEIROS} NF ORDER BY NF.DOCTO DESC, NF.CODCLI DESC
                          FETCH FIRST 1 ROWS ONLY))"_s));
    invoice.enter(u"EdtMarca"_s, u"Cataguases"_s);
    invoice.enter(u"EdtLote"_s, u"4471-B"_s);
    invoice.enter(u"EdtPeso"_s, u"480,5"_s);
    invoice.enter(u"EdtUnitario"_s, u"24,35"_s);
}

/// The client who has most orders open of which fabric waits to be invoiced.
QString clientWithFabric()
{
    return value(uR"(
        SELECT M.CODCLI FROM {PA_MALHA} PA INNER JOIN {MATERIAL} M ON (M.CODIGO = PA.CODIGO)
        WHERE PA.QTDE_TOTAL > PA.FATURADO GROUP BY M.CODCLI ORDER BY COUNT(*) DESC, M.CODCLI FETCH FIRST 1 ROWS ONLY)"_s);
}

/// The fabric of the client who has most orders open: one released whole, one with too much, one in part.
void useRelease(ScreenDriver &release)
{
    release.enter(u"EdtNumero"_s, {});
    release.enter(u"edtCliente"_s, clientWithFabric());
    auto *rows = release.screen()->findChild<QTableView *>(u"DBGrid1"_s)->model();
    constexpr int balance = 5;
    constexpr int quantity = 6;
    constexpr int rolls = 7;
    const double parts[]{1, 1.1, 0.5};
    for (int row = 0; row < qMin(3, rows->rowCount()); ++row) {
        const double kg = rows->index(row, balance).data(Qt::EditRole).toDouble() * parts[row];
        rows->setData(rows->index(row, quantity), Format::rounded(kg, 1));
        rows->setData(rows->index(row, rolls), qRound(kg / 20) + 1);
    }
}

void handOverRoll(QWidget &defects)
{
    const QString of = value(u"SELECT MAX(NUMERO) FROM {DEF_MOV} WHERE QUANT > 1"_s);
    defects.setProperty("NumeroOF", of);
    defects.setProperty(
        "Rolo", value(u"SELECT MAX(ROLO) FROM {DEF_MOV} WHERE QUANT > 1 AND NUMERO = "_s + Aspas(of)).toInt());
}

void handOverOrder(QWidget &roll)
{
    const QString of = orderInProduction();
    const auto ofOrder = [&](const QString &column) {
        return Busca_Valor(u"OF_MALHA"_s, u"NUM_OF"_s, column, Aspas(of));
    };
    const QString rolls = u" FROM {OF_MALHA_BAIXAS} WHERE NUM_OF = "_s + Aspas(of);
    roll.setProperty("NumeroOF", of);
    roll.setProperty("Saldo", ofOrder(u"KG_TOTAL"_s).toDouble() - value(u"SELECT SUM(QTDE)"_s + rolls).toDouble());
    roll.setProperty("ProximaBaixa", QString::number(value(u"SELECT MAX(NUM_BAIXA)"_s + rolls).toInt() + 1));
    roll.setProperty("Cliente", ofOrder(u"CLIENTE"_s));
    roll.setProperty("Material", ofOrder(u"MATERIAL"_s));
    roll.setProperty("Maquina", ofOrder(u"MAQUINA"_s));
}

/// An order of which the client's yarn is reserved.
void useOrderSheets(ScreenDriver &sheets)
{
    sheets.type(u"edtNumero"_s, value(u"SELECT MAX(NUMERO) FROM {BAIXA_FIO}"_s));
    sheets.press(u"BtnExecutaSQL"_s);
}

void usePending(ScreenDriver &pending)
{
    pending.press(u"BtnExecutaSQL"_s);
}

void useProduction(ScreenDriver &production)
{
    production.enter(u"EdtCodTab"_s, value(u"SELECT MIN(REGIAO) FROM {TABPRECO}"_s));
    production.press(u"BtnExecutaSQL"_s);
}

/// The rolls of the last ten orders that have any.
void useRegister(ScreenDriver &rolls)
{
    const QString last = value(u"SELECT MAX(NUM_OF) FROM {OF_MALHA_BAIXAS}"_s);
    rolls.enter(u"edtOfIni"_s, QString::number(last.toInt() - 9).rightJustified(last.size(), u'0'));
    rolls.type(u"edtOfFim"_s, last);
    rolls.press(u"BtnExecutaSQL"_s);
}

void usePriceList(ScreenDriver &prices)
{
    prices.press(u"ComfirmaRepresen"_s);
}

void useStock(ScreenDriver &stock)
{
    stock.enter(u"EdtCodCli"_s, clientWithFabric());
    stock.press(u"BtnExecutaSQL"_s);
}

} // namespace

void handOver(QWidget &screen)
{
    const QByteArray name = screen.metaObject()->className();
    if (name == "TfmCadDefMalha")
        handOverRoll(screen);
    else if (name == "TfmBaixaOF")
        handOverOrder(screen);
}

bool bringIntoUse(QWidget &screen)
{
    static const QHash<QString, void (*)(ScreenDriver &)> uses{{u"TfmNFTerceiros"_s, useInboundInvoice},
        {u"TfmMalhaOF"_s, useOrder}, {u"TfmAcertoMalharia"_s, useBalance}, {u"TfmMalhaOFBaixaBarra"_s, useWriteOff},
        {u"TfmCadDefMalha"_s, useDefects}, {u"TfmCadRaport"_s, useRaport}, {u"TfmCadAlimentador"_s, useFeeders},
        {u"TfmMalLibFat"_s, useRelease}, {u"TfmMatTabPreco"_s, usePrices}, {u"TfmMalFatNF"_s, useBilling},
        {u"TfmRelOrdFab"_s, useOrderSheets}, {u"TfmRelPend"_s, usePending}, {u"TfmRelDocto"_s, usePending},
        {u"TfmRelMalSaidas"_s, usePending}, {u"TfmRelMatTabPre"_s, usePriceList}, {u"TfmRelEstoqueMat"_s, useStock},
        {u"TfmRelProd"_s, useProduction}, {u"TfmRelRegistros"_s, useRegister}, {u"TfmMalhaOFBaixa"_s, useDesk},
        {u"TfmBaixaOF"_s, useDeskRoll}};
    const auto use = uses.constFind(QString::fromLatin1(screen.metaObject()->className()));
    if (use == uses.constEnd())
        return false;
    try {
        ScreenDriver driver(&screen);
        (*use)(driver);
    } catch (const EProgramming &) {
        return false; // a button stayed closed: the user has no right to it
    }
    return true;
}
