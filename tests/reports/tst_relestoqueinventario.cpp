// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/reports/stockstation.h"

#include <QCheckBox>

using namespace Qt::StringLiterals;

namespace {

class InventoryStation : public StockStation
{
public:
    explicit InventoryStation(const QString &user = u"ADMIN"_s)
        : StockStation(user)
    {
        insertMill();
    }

    /// Consults with "Gerar Inventário" and expects to be told the number of rows, "4 linhas".
    void generate(const QString &rows)
    {
        if (!child<QCheckBox>(u"CbInv"_s)->isChecked())
            click(u"CbInv"_s);
        ScreenChecks::expectInformation(
            answers, form()->windowTitle(), u"Inventário de 10/03/2026 gerado com %1."_s.arg(rows));
        click(u"BtnExecutaSQL"_s);
        QVERIFY(answers.allCame());
    }
    /// "code|client|kg" of all rows.
    QStringList inventory()
    {
        return database.rows(u"SELECT CODIGO, CODCLI, QTDE FROM {INVENTARIO} ORDER BY CODIGO, CODCLI, QTDE DESC"_s);
    }
    void insertOfSecond()
    {
        database.addCommonData(2);
        // There the fabric is all cotton.
        database.run(u"DELETE FROM COMP_MATERIAL_002 WHERE CODIGO = 'FIO150PES'"_s);
        database.run(u"UPDATE COMP_MATERIAL_002 SET PERC = 100"_s);
        database.run(u"UPDATE QEN_PARAMETRO SET VALOR = 'S' WHERE MODULO = 'MAT' AND NUMERO = 120"_s);
        database.run(u"INSERT INTO NFTERCEIROS_002 (DOCTO, CODCLI, DATA) VALUES ('0000300', '00001', '03/02/2026')"_s);
        database.run(u"INSERT INTO NFT_ITEN_002 (DOCTO, CODCLI, CODIGO, LOTE, ESTOQUE_FISICO, QTDE_DEVOL, UNITARIO) "
                     "VALUES ('0000300', '00001', 'FIO30CO', 'L1', 80, 0, 15)"_s);
        insertFabric(u"000012"_s, 30, 0, u"M0001"_s, u"_002"_s);
    }
};

} // namespace

/// The stock by client: its inventory, and the stock of all companies.
class TestRelEstoqueInventario : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void theInventoryHoldsTheRowsOfBothLists();
    void withoutItsTickNothingIsWritten();
    void generatedAgainItReplacesItself();
    void whatHasLeftLeavesTheInventory();
    void clientsAndDaysStandBesideEachOther();
    void everybodysFabricIsReplacedWhereAllIsListed();
    void withoutTheRightNothingIsWritten();
    void anInventoryIsOneCompanys();
    void aFailedInventoryLeavesTheOneThatWas();
    void allCompaniesKeepTheirOwnCompositions();
    void onlyCompaniesThatTheUserMaySeeAreRead();
};

void TestRelEstoqueInventario::theInventoryHoldsTheRowsOfBothLists()
{
    InventoryStation station;
    station.openFor(u"00001"_s);
    station.click(u"ckbZerados"_s);
    station.generate(u"4 linhas"_s);
    QCOMPARE(station.database.rows(u"SELECT EMPRESA, CODIGO, COR, TAM, POSSE, UNITARIO, QTDE, CODCLI, UN, DESCRICAO, "
                                   "DEPOSITO, LOTE FROM {INVENTARIO} ORDER BY CODIGO, QTDE DESC"_s),
        (QStringList{u"1|FIO150PES|0|0|2|10|252|00001|KG|Fio poliéster 150/48|0000|000000"_s,
            u"1|FIO30CO|0|0|2|22|633.25|00001|KG|Fio algodão 30/1 penteado|0000|000000"_s,
            u"1|M0001|0|0|2|29.95|100|00001|KG|Meia-malha PV 60/40|0000|000000"_s,
            u"1|M0001|0|0|2|29.95|20|00001|KG|Meia-malha PV 60/40|0000|000000"_s}));
    QCOMPARE(station.value(u"SELECT MIN(DATA) FROM {INVENTARIO}"_s).toDate(), QDate(2026, 3, 10));
    QCOMPARE(station.rows().size(), 2); // and the rows are shown
}

void TestRelEstoqueInventario::withoutItsTickNothingIsWritten()
{
    InventoryStation station;
    station.openFor(u"00001"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.inventory(), QStringList());
}

void TestRelEstoqueInventario::generatedAgainItReplacesItself()
{
    InventoryStation station;
    station.openFor(u"00001"_s);
    station.generate(u"6 linhas"_s);
    const QStringList first = station.inventory();
    QCOMPARE(first,
        (QStringList{u"FIO150PES|00001|252"_s, u"FIO30CO|00001|633.25"_s, u"FIOPARADO|00001|0"_s, u"FIOTINTO|00001|0"_s,
            u"M0001|00001|100"_s, u"M0001|00001|20"_s}));
    station.generate(u"6 linhas"_s);
    QCOMPARE(station.inventory(), first);
    station.click(u"ckbZerados"_s);
    station.generate(u"4 linhas"_s);
    QCOMPARE(station.inventory(), QStringList({first[0], first[1], first[4], first[5]}));
}

void TestRelEstoqueInventario::whatHasLeftLeavesTheInventory()
{
    InventoryStation station;
    station.openFor(u"00001"_s);
    station.click(u"ckbZerados"_s);
    station.generate(u"4 linhas"_s);
    station.database.run(u"UPDATE {PA_MALHA} SET FATURADO = QTDE_TOTAL WHERE NUM_OF = '000012'"_s);
    station.database.run(u"UPDATE {NFT_ITEN} SET QTDE_DEVOL = ESTOQUE_FISICO WHERE CODIGO = 'FIO150PES'"_s);
    station.generate(u"2 linhas"_s);
    QCOMPARE(station.inventory(), (QStringList{u"FIO30CO|00001|693.25"_s, u"M0001|00001|20"_s}));
    station.database.run(u"DELETE FROM {PA_MALHA} WHERE NUM_OF = '000013'"_s);
    station.generate(u"1 linha"_s);
    QCOMPARE(station.inventory(), QStringList{u"FIO30CO|00001|705.25"_s});
}

void TestRelEstoqueInventario::clientsAndDaysStandBesideEachOther()
{
    InventoryStation station;
    station.database.run(u"INSERT INTO {INVENTARIO} (DATA, EMPRESA, CODIGO, CODCLI, QTDE) VALUES ('03/09/2026', 1, "
                         "'FIO30CO', '00001', 1)"_s);
    station.openFor(u"00001"_s);
    station.click(u"ckbZerados"_s);
    station.generate(u"4 linhas"_s);
    station.enter(u"EdtCodCli"_s, u"00002"_s);
    station.generate(u"2 linhas"_s);
    QCOMPARE(station.inventory(),
        (QStringList{u"FIO150PES|00001|252"_s, u"FIO30CO|00001|633.25"_s, u"FIO30CO|00001|1"_s, u"FIO30CO|00002|70"_s,
            u"M0001|00001|100"_s, u"M0001|00001|20"_s, u"M0002|00002|7.5"_s}));
}

void TestRelEstoqueInventario::everybodysFabricIsReplacedWhereAllIsListed()
{
    InventoryStation station;
    station.setOwnedMaterials(false);
    station.openFor(u"00001"_s);
    station.click(u"ckbZerados"_s);
    station.generate(u"5 linhas"_s);
    station.database.run(u"DELETE FROM {PA_MALHA} WHERE CODIGO = 'M0002'"_s);
    station.enter(u"EdtCodCli"_s, u"00002"_s);
    // Where materials belong to nobody, fabric takes its yarn from whoever is asked for: 70 - 72.
    station.generate(u"3 linhas"_s);
    QCOMPARE(station.inventory(),
        (QStringList{u"FIO150PES|00001|252"_s, u"FIO30CO|00001|633.25"_s, u"FIO30CO|00002|-2"_s, u"M0001|00001|100"_s,
            u"M0001|00001|20"_s}));
}

void TestRelEstoqueInventario::withoutTheRightNothingIsWritten()
{
    InventoryStation station(u"SEMDIREITO"_s);
    station.openFor(u"00001"_s);
    station.click(u"CbInv"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.rows().size(), 4);
    QCOMPARE(station.inventory(), QStringList());
    station.database.run(u"INSERT INTO QEN_DIREITO (USUARIO, TELA, LETRA, NIVEL) VALUES ('SEMDIREITO', "
                         "'TfmRelEstoqueMat', 'A', '0')"_s);
    station.generate(u"6 linhas"_s);
    QCOMPARE(station.inventory().size(), 6);
}

void TestRelEstoqueInventario::anInventoryIsOneCompanys()
{
    InventoryStation station;
    station.insertOfSecond();
    station.openFor(u"00001"_s);
    auto *all = station.child<QCheckBox>(u"cbRelEmpresa"_s);
    station.click(u"cbRelEmpresa"_s);
    station.click(u"CbInv"_s);
    QVERIFY(!all->isChecked());
    QVERIFY(!all->isEnabled());
    station.generate(u"6 linhas"_s);
    QCOMPARE(station.inventory().size(), 6);
    QCOMPARE(station.database.rows(u"SELECT CODIGO FROM INVENTARIO_002"_s), QStringList());
    station.click(u"CbInv"_s);
    QVERIFY(all->isEnabled());
}

void TestRelEstoqueInventario::aFailedInventoryLeavesTheOneThatWas()
{
    InventoryStation station;
    station.database.run(u"INSERT INTO {INVENTARIO} (DATA, EMPRESA, CODIGO, CODCLI, QTDE) VALUES ('03/10/2026', 1, "
                         "'FIO30CO', '00001', 1)"_s);
    // The yarn could be written; the fabric that comes after it cannot.
    station.database.run(u"ALTER TABLE {INVENTARIO} ADD CONSTRAINT SEM_MALHA CHECK (CODIGO <> 'M0001')"_s);
    station.openFor(u"00001"_s);
    station.click(u"CbInv"_s);
    station.expectRefusedStatement();
    station.click(u"BtnExecutaSQL"_s);
    QVERIFY(station.answers.allCame());
    station.checkReady();
    QCOMPARE(station.inventory(), QStringList{u"FIO30CO|00001|1"_s});
}

void TestRelEstoqueInventario::allCompaniesKeepTheirOwnCompositions()
{
    InventoryStation station;
    station.insertOfSecond();
    station.openFor(u"00001"_s);
    station.click(u"ckbZerados"_s);
    station.click(u"cbRelEmpresa"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.rows(),
        (QStringList{u"Fio poliéster 150/48|FIO150PES|300,000|252,000||80,000|10,0000|KG|1"_s,
            u"Fio algodão 30/1 penteado|FIO30CO|705,250|633,250|45,250|150,000|22,0000|KG|1"_s,
            u"Fio algodão 30/1 penteado|FIO30CO|80,000|50,000||0,000|15,0000|KG|2"_s}));
    QCOMPARE(station.fabrics(),
        (QStringList{u"Meia-malha PV 60/40|000012|100,000|29,9500|M0001|02/03/2026|A1|KG|00001|1"_s,
            u"Meia-malha PV 60/40|000012|30,000|15,0000|M0001|||KG|00001|2"_s,
            u"Meia-malha PV 60/40|000013|20,000|29,9500|M0001|02/03/2026||KG|00001|1"_s}));
    QCOMPARE(station.chart(),
        (QStringList{u"FIO30CO FIO150PES"_s, u"Recebido 830.5 300"_s, u"Em malha 102 48"_s, u"Devolvido 45.25 0"_s,
            u"Livre 683.25 252"_s}));
    station.click(u"ckbZerados"_s); // the first company's alone have a record
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.rows().size(), 5);
}

void TestRelEstoqueInventario::onlyCompaniesThatTheUserMaySeeAreRead()
{
    InventoryStation station(u"SEMDIREITO"_s); // who sees the first alone
    station.insertOfSecond();
    station.openFor(u"00001"_s);
    station.click(u"ckbZerados"_s);
    station.click(u"cbRelEmpresa"_s);
    station.click(u"BtnExecutaSQL"_s);
    QCOMPARE(station.column(u"EMPRESA"_s), (QStringList{u"1"_s, u"1"_s}));
}

QTEST_MAIN(TestRelEstoqueInventario)
#include "tst_relestoqueinventario.moc"
