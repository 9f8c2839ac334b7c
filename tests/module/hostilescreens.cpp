// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/module/hostilescreens.h"

#include "module/host_services/comport.h"
#include "tests/invoicing/invoices.h"
#include "tests/production/orders.h"

using namespace Qt::StringLiterals;

namespace {

void twoOrders(TestDatabase &database)
{
    Orders::insert(database, {.number = u"000011"_s, .observation = u"Outra"_s});
    Orders::insert(database, {.number = u"000012"_s});
    database.run(u"INSERT INTO {PA_MALHA} (NUM_OF, CODIGO, QTDE_TOTAL, FATURADO) VALUES ('000011', 'M0001', 60, 10)"_s);
    database.run(u"INSERT INTO {PA_MALHA} (NUM_OF, CODIGO, QTDE_TOTAL, FATURADO) VALUES ('000012', 'M0001', 40, 5)"_s);
}

const QStringList orderTables{u"OF_MALHA"_s, u"BAIXA_FIO"_s, u"PA_MALHA"_s, u"OF_MALHA_BAIXAS"_s};

QList<HostileScreen> ordersScreen()
{
    const auto fill = [](TestStation &station) {
        station.click(u"btnincluir"_s);
        station.enter(u"edtCliente"_s, u"00001"_s);
        station.enter(u"edtMaterial"_s, u"M0001"_s);
        station.enter(u"edtMaquina"_s, u"001"_s);
        station.enter(u"EdtCodFluxo"_s, u"01"_s);
        station.enter(u"edtKGTotal"_s, u"100"_s);
        station.enter(u"edtKGRolo"_s, u"20"_s);
    };
    return {{.name = u"TfmMalhaOF"_s,
                .mode = u"new"_s,
                .rows = twoOrders,
                .edit = fill,
                .confirm = u"SbConfirmar"_s,
                .saved = orderTables},
        {.name = u"TfmMalhaOF"_s,
            .mode = u"changed"_s,
            .rows = twoOrders,
            .edit = [](TestStation &station) { station.click(u"BtnAltera"_s); },
            .confirm = u"SbConfirmar"_s,
            .saved = orderTables,
            .key = u"000012"_s},
        {.name = u"TfmMalhaOF"_s, .mode = u"list"_s, .rows = twoOrders, .confirm = u"BitBtn3"_s}};
}

QList<HostileScreen> invoicesScreen()
{
    const auto rows = [](TestDatabase &database) {
        Invoices::insert(database, u"0000100"_s, u"00002"_s, {{}, {.lot = u"L2"_s}});
        Invoices::insert(database, u"0000123"_s, u"00001"_s, {{}});
    };
    const auto fill = [](TestStation &station) {
        station.click(u"Btincluir"_s);
        station.enter(u"DBDocto"_s, u"0000124"_s);
        station.enter(u"DBCodCliente"_s, u"00001"_s);
        station.click(u"BtIIncluir"_s);
        station.enter(u"EdtCodMaterial"_s, u"FIO30CO"_s);
        station.enter(u"EdtLote"_s, u"L1"_s);
        station.enter(u"EdtPeso"_s, u"50"_s);
        station.enter(u"EdtUnitario"_s, u"20"_s);
    };
    const auto change = [](TestStation &station) {
        station.click(u"BtnAltera"_s);
        station.click(u"btIAlterar"_s);
    };
    const HostileScreen screen{.name = u"TfmNFTerceiros"_s,
        .mode = {},
        .rows = rows,
        .confirm = u"SbConfirmar"_s,
        .saved = {u"NFTERCEIROS"_s, u"NFT_ITEN"_s},
        .stored = {u"EdtMarca"_s, u"EdtLote"_s, u"EdtCodMaterial"_s}};
    HostileScreen added = screen;
    added.mode = u"new"_s;
    added.edit = fill;
    HostileScreen changed = screen;
    changed.mode = u"changed"_s;
    changed.edit = change;
    changed.key = u"0000123"_s;
    return {added, changed};
}

QList<HostileScreen> balanceScreen()
{
    return {{.name = u"TfmAcertoMalharia"_s,
        .mode = u"balance"_s,
        .rows = twoOrders,
        .confirm = u"SbConfirmar"_s,
        .saved = orderTables,
        .key = u"000011"_s}};
}

/// No scale answers at this station, and nobody waits for it.
void useNoScale(TestStation &station)
{
    ComPortSettings settings;
    settings.port = u"/nowhere"_s;
    settings.waitMs = 0;
    TCustomComPort port;
    port.SetSettings(settings);
    port.StoreSettings(station.host.settings(), scaleSettingsKey);
}

QList<HostileScreen> stationScreen()
{
    const auto open = [](TestStation &station) {
        useNoScale(station);
        station.open(u"TfmMalhaOFBaixaBarra"_s);
    };
    const auto fill = [](TestStation &station) {
        station.enter(u"EdtTurno"_s, u"1"_s);
        station.enter(u"edtOF"_s, u"000012"_s);
        station.enter(u"EdtCodOper"_s, u"000101"_s);
        station.enter(u"EdtPesoRolo"_s, u"12,5"_s);
    };
    // Leaving the order's field weighs anew.
    const auto weigh = [](TestStation &station) {
        if (station.focus() == u"edtOF"_s || station.text(u"EdtPesoRolo"_s) == u"0,00"_s)
            station.enter(u"EdtPesoRolo"_s, u"12,5"_s);
    };
    return {{.name = u"TfmMalhaOFBaixaBarra"_s,
        .mode = u"roll"_s,
        .rows = twoOrders,
        .open = open,
        .edit = fill,
        .finish = weigh,
        .confirm = u"btnBaixa"_s,
        .saved = orderTables,
        .key = u"000012"_s,
        .stored = {u"EdtTurno"_s, u"EdtCodOper"_s}}};
}

QList<HostileScreen> deskScreen()
{
    const auto rows = [](TestDatabase &database) {
        twoOrders(database);
        Invoices::insert(database, u"0001203"_s, u"00001"_s,
            {{.quantity = 900}, {.material = u"FIO150PES"_s, .lot = u"L2"_s, .quantity = 900}});
    };
    const auto open = [](TestStation &station) {
        useNoScale(station);
        QWidget *form = station.host.loadForm(u"qenMalharia"_s, u"TfmBaixaOF"_s, true, false);
        form->setProperty("NumeroOF", u"000012"_s);
        form->setProperty("Saldo", 100.0);
        form->setProperty("ProximaBaixa", u"001"_s);
        form->setProperty("Cliente", u"00001"_s);
        form->setProperty("Material", u"M0001"_s);
        form->setProperty("Maquina", u"001"_s);
        station.use(form);
        form->show();
    };
    const auto fill = [](TestStation &station) {
        station.enter(u"edtKGTotal"_s, u"12,5"_s);
        station.enter(u"EdtCodFun"_s, u"000101"_s);
    };
    return {{.name = u"TfmBaixaOF"_s,
        .mode = u"roll"_s,
        .rows = rows,
        .open = open,
        .edit = fill,
        .confirm = u"SbConfirmar"_s,
        .saved = orderTables + QStringList{u"NFTERCEIROS"_s, u"NFT_ITEN"_s},
        .key = u"000012"_s,
        .stored = {u"EdtCodFun"_s, u"edtTurno"_s}}};
}

QList<HostileScreen> pricesScreen()
{
    const auto rows = [](TestDatabase &database) {
        database.run(u"UPDATE QEN_PARAMETRO SET VALOR = 'S' WHERE MODULO = 'VEN' AND NUMERO = 190"_s);
        for (const QString &product : {u"'01', 'M0001'"_s, u"'02', 'M0002'"_s}) {
            database.run(u"INSERT INTO {TABPRECO} (REGIAO, CODIGO, GRUPO_COR, DESC_PRODUTO, PRECO_00) "
                         "VALUES (%1, '00', 'Malha', 10)"_s.arg(product));
        }
    };
    const HostileScreen screen{
        .name = u"TfmMatTabPreco"_s, .mode = {}, .rows = rows, .confirm = u"SbConfirmar"_s, .saved = {u"TABPRECO"_s}};
    HostileScreen added = screen;
    added.mode = u"new"_s;
    added.edit = [](TestStation &station) {
        station.click(u"btnincluir"_s);
        station.enter(u"EdtRegiao"_s, u"01"_s);
        station.enter(u"EdtCor"_s, u"07"_s);
        station.enter(u"EdtCodArt"_s, u"M0002"_s);
        station.enter(u"EdtParcela01"_s, u"9,5"_s);
    };
    HostileScreen changed = screen;
    changed.mode = u"changed"_s;
    changed.edit = [](TestStation &station) { station.click(u"BtnAltera"_s); };
    changed.key = u"M0002"_s;
    HostileScreen copied = screen;
    copied.mode = u"copied"_s;
    copied.confirm = u"SbCopiar"_s;
    copied.edit = [](TestStation &station) {
        station.click(u"BtincluirCarlos"_s);
        station.enter(u"EdtRegiaoDe"_s, u"01"_s);
        station.enter(u"EdtRegiaoPara"_s, u"02"_s);
    };
    return {added, changed, copied};
}

QList<HostileScreen> billingScreen()
{
    const auto rows = [](TestDatabase &database) {
        for (const QString &invoice : {u"0000100"_s, u"0000101"_s}) {
            database.run(u"INSERT INTO {NOTAITEN} (FATURA, ORDEM, CODIGO, QTDE, VALOR, TIPO) "
                         "VALUES ('%1', 1, 'M0001', 10.5, 100, 'N')"_s.arg(invoice));
        }
    };
    const auto fill = [](TestStation &station) { station.enter(u"EdtNota"_s, u"0000100"_s); };
    const auto mark = [](TestStation &station) {
        if (station.text(u"EdtFat"_s) == u"N"_s)
            station.enter(u"EdtFat"_s, u"S"_s);
    };
    return {{.name = u"TfmMalFatNF"_s,
        .mode = u"invoice"_s,
        .rows = rows,
        .edit = fill,
        .finish = mark,
        .confirm = u"BitBtn2"_s,
        .saved = {u"NOTAITEN"_s},
        .key = u"0000100"_s}};
}

QList<HostileScreen> feedersScreen()
{
    const auto rows = [](TestDatabase &database) {
        for (const QString &fabric : {u"M0001"_s, u"M0002"_s})
            database.run(
                u"INSERT INTO {CADRAPORT} (CODIGO, MILIMETROS, ALIMENTADORES) VALUES ('%1', 5, 8)"_s.arg(fabric));
    };
    return {{.name = u"TfmCadAlimentador"_s,
        .mode = u"fabric"_s,
        .rows = rows,
        .edit = [](TestStation &station) { station.enter(u"EdtCodMat"_s, u"M0001"_s); },
        .confirm = u"BitBtn2"_s,
        .saved = {u"CADRAPORT"_s},
        .key = u"M0001"_s}};
}

QList<HostileScreen> raportScreen()
{
    const auto rows = [](TestDatabase &database) {
        for (const QString &fabric : {u"M0001"_s, u"M0002"_s}) {
            database.run(
                u"INSERT INTO {CADRAPORT} (CODIGO, MILIMETROS, ALIMENTADORES) VALUES ('%1', 5, 8)"_s.arg(fabric));
            database.run(u"INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, ORDEM, PERC, ROCA) "
                         "VALUES ('%1', '000001', 'FIO30CO', '000001', 1, 100, 8)"_s.arg(fabric));
            database.run(
                u"INSERT INTO {RAPORT} (MATERIAL, COR, ORDEM, CODIGO, COR_I, MILIMETROS, AGRUPADOR, REPETICAO, "
                "DESPERDICIO, OBSERVACAO) VALUES ('%1', '000001', 1, 'FIO30CO', '000001', 5, 'FUNDO', 2, 1.5, "
                "'Nota')"_s.arg(fabric));
        }
    };
    const auto fill = [](TestStation &station) {
        station.enter(u"EdtMaterial"_s, u"M0001"_s);
        station.enter(u"EdtCor"_s, u"000001"_s);
    };
    return {{.name = u"TfmCadRaport"_s,
        .mode = u"fabric"_s,
        .rows = rows,
        .edit = fill,
        .confirm = u"BitBtn1"_s,
        .saved = {u"RAPORT"_s, u"COMP_MATERIAL"_s, u"CADRAPORT"_s},
        .key = u"M0001"_s,
        .stored = {u"EdtObs"_s}}};
}

QList<HostileScreen> defectsScreen()
{
    const auto rows = [](TestDatabase &database) {
        database.run(u"INSERT INTO {DEF_MOV} (CODIGO, QUANT, NUMERO, REVISOR, QUALIDADE, ROLO) "
                     "VALUES ('001', 2, '000012', '000102', '2', 5)"_s);
        database.run(u"INSERT INTO {DEF_MOV} (CODIGO, QUANT, NUMERO, REVISOR, QUALIDADE, ROLO) "
                     "VALUES ('001', 3, '000011', '000102', '2', 5)"_s);
    };
    const auto open = [](TestStation &station) {
        QWidget *form = station.host.loadForm(u"qenMalharia"_s, u"TfmCadDefMalha"_s, true, false);
        form->setProperty("NumeroOF", u"000012"_s);
        form->setProperty("Rolo", 5);
        station.use(form);
        form->show();
    };
    return {{.name = u"TfmCadDefMalha"_s,
        .mode = u"roll"_s,
        .rows = rows,
        .open = open,
        .confirm = u"BitBtn1"_s,
        .saved = {u"DEF_MOV"_s},
        .key = u"000012"_s,
        .stored = {u"EdtCodRev"_s, u"EdtCodQul"_s}}};
}

QList<HostileScreen> releaseScreen()
{
    const auto rows = [](TestDatabase &database) {
        twoOrders(database);
        for (const QString &number : {u"00007"_s, u"00008"_s}) {
            database.run(
                u"INSERT INTO {PEDIDO3} (NUMERO, CAIXA, DATA, CODCLI, CODIGO, QTDE, NOTAFISCAL, PESO, OBS, "
                "LOCAL) VALUES ('%1', '000012', '02/28/2026', '00001', 'M0001', 7, 'NF', 1, 'Obs', 'A')"_s.arg(number));
        }
    };
    const auto fill = [](TestStation &station) {
        station.enter(u"EdtNumero"_s, {});
        station.enter(u"edtCliente"_s, u"00001"_s);
    };
    const QStringList tables = orderTables + QStringList{u"PEDIDO3"_s};
    return {{.name = u"TfmMalLibFat"_s,
                .mode = u"new"_s,
                .rows = rows,
                .edit = fill,
                .confirm = u"BitBtn1"_s,
                .saved = tables,
                .stored = {u"EdtNota"_s, u"EdtObs"_s, u"edtCliente"_s}},
        {.name = u"TfmMalLibFat"_s,
            .mode = u"changed"_s,
            .rows = rows,
            .edit = [](TestStation &station) { station.enter(u"EdtNumero"_s, u"00007"_s); },
            .confirm = u"BitBtn1"_s,
            .saved = tables,
            .key = u"00007"_s,
            .stored = {u"EdtNota"_s, u"EdtObs"_s, u"edtCliente"_s}}};
}

/// The first field is not left without a region.
QList<HostileScreen> priceReport()
{
    return {{.name = u"TfmRelMatTabPre"_s,
        .mode = u"region"_s,
        .edit = [](TestStation &station) { station.enter(u"edtTabPre_CodReg"_s, u"01"_s); },
        .confirm = u"BtnExecutaSQL"_s}};
}

} // namespace

QList<HostileScreen> HostileScreens::entriesOf(const QString &name)
{
    static const QList<HostileScreen> all = ordersScreen() + invoicesScreen() + balanceScreen() + stationScreen()
        + deskScreen() + defectsScreen() + releaseScreen() + pricesScreen() + billingScreen() + feedersScreen()
        + raportScreen() + priceReport();
    QList<HostileScreen> result;
    std::copy_if(all.begin(), all.end(), std::back_inserter(result),
        [&](const HostileScreen &entry) { return entry.name == name; });
    return result;
}
