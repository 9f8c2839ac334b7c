// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/schema/schema.h"
#include "tests/support/engines.h"
#include "tests/support/testdatabase.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// The tables and columns that the screens work on, whatever the company's number.
class TestSchema : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data();
    void init();
    void cleanupTestCase() { m_data.reset(); }

    void everyCompanyHasEveryTableAndColumn();
    void aKeyRefusesASecondRow_data();
    void aKeyRefusesASecondRow();
    void whereRowsAreStoredAsTypedTheyMayRepeat_data();
    void whereRowsAreStoredAsTypedTheyMayRepeat();
    void textsHoldWhatTheScreensTake_data();
    void textsHoldWhatTheScreensTake();

    void afterRoll999Comes1000();
    void namesAreSortedAsReadersExpect();
    void nullIsZeroForTheFunctionOfTheReports();
    void aDateIsWrittenWithTheMonthFirst();
    void thirtyRollsOf3333AddUpToTheirPlan();
    void aQuotientOfKilogramsKeepsItsDecimals();
    void anActiveFlagMayBeNull();
    void anUpdateMayQualifyTheColumnsThatItSets();

private:
    void refuses(const QString &statement);

    std::unique_ptr<TestDatabase> m_data;
    QString m_dataOf;
};

namespace {

/// Table and columns.
const QStringList &tables()
{
    static const QStringList list{
        u"OF_MALHA NUM_OF DATA CLIENTE MATERIAL MAQUINA LOTE KG_ROLO KG_TOTAL FLUXO OBSERVACAO"_s,
        u"OF_MALHA_BAIXAS NUM_BAIXA NUM_OF DATA HORA TURNO FUNCIONARIO QTDE"_s,
        u"PA_MALHA CODIGO NUM_OF QTDE_TOTAL FATURADO"_s,
        u"BAIXA_FIO NUMERO DOCTO CODIGO LOTE QTDE"_s,
        u"NFTERCEIROS DOCTO CODCLI DATA OBS"_s,
        u"NFT_ITEN CODCLI CODIGO DOCTO LOTE MARCA VALOR UNITARIO ESTOQUE_ORIGINAL ESTOQUE_FISICO QTDE_BAIXA QTDE_DEVOL"_s,
        u"PEDIDO3 NUMERO CAIXA DATA CODCLI CODIGO QTDE NOTAFISCAL PESO OBS LOCAL"_s,
        u"RAPORT MATERIAL COR ORDEM CODIGO COR_I MILIMETROS AGRUPADOR REPETICAO DESPERDICIO OBSERVACAO"_s,
        u"CADRAPORT CODIGO ALIMENTADORES MILIMETROS"_s,
        u"DEF_MOV NUMERO ROLO CODIGO QUANT REVISOR QUALIDADE"_s,
        u"COMP_MATERIAL MATERIAL COR CODIGO COR_I ORDEM PERC ROCA ALIMENTADORES LFA COMP_PONTO DIAMETRO FINURA LARGURA"
        " GRAMATURA KG_ROLO"_s,
        u"MAT_ITEN CODIGO COR LOTE DEPOSITO LOCAL QTDE PRECO_MED ATIVO"_s,
        u"MAT_MOV CODCRE CODIGO COR NUM_DOCTO OPERACAO QTDE TIPO CUSTO PRECO LOTE DESCRICAO DT_MOVTO DEPOSITO"_s,
        u"NOTAITEN FATURA ORDEM CODIGO LOTE NOTA_CLIENTE QTDE PRECO VALOR TIPO DATA_MVTO"_s,
        u"TABPRECO REGIAO CODIGO GRUPO_COR DESC_PRODUTO PRECO_00 PRECO_07 PRECO_14 PRECO_21 PRECO_28 PRECO_35 PRECO_42"
        " PRECO_49 PRECO_56 PRECO_63 PRECO_70 PRECO_77 PRECO_84 PRECO_91 PRECO_MEDIO"_s,
        u"MATERIAL CODIGO DESCRICAO DESCRICAO2 GRUPO CODCLI LARGURA GRAMATURA MAXIMO CONCENTRACAO NE UNIDADE"
        " OBSERVACAO"_s,
        u"MAT_OBS CODIGO OBSERVACAO"_s,
        u"ENTIDADE CODCLI NOME GRUPO"_s,
        u"MAQUINA MAQUINA DESCRICAO NOME"_s,
        u"FLUXOTIN CODIGO DESCRICAO"_s,
        u"CADCOR COR DESCRICAO TONALIDADE"_s,
        u"PESSOAL CODIGO NOME ATIVO TURNO"_s,
        u"TURNO TURNO NOTURNO DESCRICAO"_s,
        u"TABQUL CODIGO DESCRICAO"_s,
        u"DEFEITO CODIGO DESCRICAO"_s,
        u"TIPO_APL CODIGO"_s,
        u"REGIAO REGIAO DESCRICAO"_s,
        u"GRUPO_MA CODIGO DESCRICAO"_s,
        u"GRUPO_CLI CODIGO"_s,
        u"PRODUTO CODIGO DESCRICAO"_s,
        u"NOTA FATURA CODCLI DT_EMISSAO IMPRESSO NOTA_DEV"_s,
    };
    return list;
}

} // namespace

void TestSchema::initTestCase_data()
{
    Engines::addEngineRows();
    Engines::addServerRow();
}

void TestSchema::init()
{
    // The rows of one test share their database: each works on a table, or an emptied one, of its own.
    const QString wanted = Engines::current() + QString::fromLatin1(QTest::currentTestFunction());
    if (m_dataOf == wanted)
        return;
    m_data.reset();
    m_data = std::make_unique<TestDatabase>(Engines::current());
    m_dataOf = wanted;
}

void TestSchema::everyCompanyHasEveryTableAndColumn()
{
    Schema::Builder(m_data->connection()).createCompany(734, u"Filial"_s);
    for (const QString &suffix : {u"_001"_s, u"_002"_s, u"_734"_s}) {
        for (const QString &line : tables()) {
            QStringList columns = line.split(u' ');
            const QString table = columns.takeFirst() + suffix;
            m_data->run(u"SELECT %1 FROM %2"_s.arg(columns.join(u", "_s), table));
        }
    }
    QCOMPARE(Schema::Builder(m_data->connection()).companies(), QList<int>({1, 2, 734}));
}

void TestSchema::refuses(const QString &statement)
{
    try {
        m_data->run(statement);
        QTest::qFail(qPrintable(statement), __FILE__, __LINE__);
    } catch (const EDatabaseError &error) {
        QCOMPARE(error.category(), EDatabaseError::Category::Unique);
    }
}

/// A row, and one that differs from it in the last column of the key alone.
void TestSchema::aKeyRefusesASecondRow_data()
{
    QTest::addColumn<QString>("columns");
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("other");
    const auto add = [](const char *table, const QString &columns, const QString &row, const QString &other) {
        QTest::newRow(table) << columns << row << other;
    };
    add("OF_MALHA", u"NUM_OF"_s, u"'000001'"_s, u"'000002'"_s);
    add("OF_MALHA_BAIXAS", u"NUM_OF, NUM_BAIXA"_s, u"'000001', '001'"_s, u"'000001', '002'"_s);
    add("PA_MALHA", u"CODIGO, NUM_OF"_s, u"'M1', '000001'"_s, u"'M1', '000002'"_s);
    add("BAIXA_FIO", u"NUMERO, DOCTO, CODIGO, LOTE"_s, u"'1', '2', 'F', 'L1'"_s, u"'1', '2', 'F', 'L2'"_s);
    add("NFTERCEIROS", u"DOCTO, CODCLI"_s, u"'1', '00001'"_s, u"'1', '00002'"_s);
    add("NFT_ITEN", u"DOCTO, CODCLI, CODIGO, LOTE"_s, u"'1', '2', 'F', 'L1'"_s, u"'1', '2', 'F', 'L2'"_s);
    add("RAPORT", u"MATERIAL, COR, ORDEM"_s, u"'M1', '1', 1"_s, u"'M1', '1', 2"_s);
    add("DEF_MOV", u"NUMERO, ROLO, CODIGO"_s, u"'000001', 1, '001'"_s, u"'000001', 1, '002'"_s);
    add("MAT_ITEN", u"CODIGO, COR, LOTE, DEPOSITO"_s, u"'M1', '1', 'L', '1'"_s, u"'M1', '1', 'L', '2'"_s);
    add("NOTAITEN", u"FATURA, ORDEM"_s, u"'1', 1"_s, u"'1', 2"_s);
    add("MATERIAL", u"CODIGO"_s, u"'M1'"_s, u"'m1'"_s);
    add("ENTIDADE", u"CODCLI"_s, u"'00001'"_s, u"'00002'"_s);
    add("MAQUINA", u"MAQUINA"_s, u"'001'"_s, u"'002'"_s);
    add("PESSOAL", u"CODIGO"_s, u"'1'"_s, u"'01'"_s);
    add("TURNO", u"TURNO"_s, u"'1'"_s, u"'2'"_s);
    add("CADCOR", u"COR"_s, u"'000001'"_s, u"'000002'"_s);
    add("NOTA", u"FATURA"_s, u"'1'"_s, u"'2'"_s);
}

void TestSchema::aKeyRefusesASecondRow()
{
    QFETCH(QString, columns);
    QFETCH(QString, row);
    QFETCH(QString, other);
    const QString insert =
        u"INSERT INTO {%1} (%2) VALUES "_s.arg(QString::fromLatin1(QTest::currentDataTag()), columns);
    m_data->run(insert + u'(' + row + u')');
    m_data->run(insert + u'(' + other + u')');
    refuses(insert + u'(' + row + u')');
}

void TestSchema::whereRowsAreStoredAsTypedTheyMayRepeat_data()
{
    QTest::addColumn<QString>("columns");
    QTest::addColumn<QString>("row");
    QTest::newRow("CADRAPORT") << u"CODIGO, ALIMENTADORES, MILIMETROS"_s << u"'M1', 48, 290"_s;
    QTest::newRow("TABPRECO") << u"REGIAO, CODIGO, GRUPO_COR"_s << u"'01', 'M1', '00'"_s;
    QTest::newRow("PEDIDO3") << u"NUMERO, CAIXA"_s << u"'00001', '1'"_s;
    QTest::newRow("MAT_MOV") << u"CODIGO, TIPO"_s << u"'M1', 'E'"_s;
}

void TestSchema::whereRowsAreStoredAsTypedTheyMayRepeat()
{
    QFETCH(QString, columns);
    QFETCH(QString, row);
    const QString table = QString::fromLatin1(QTest::currentDataTag());
    for (int i = 0; i < 2; ++i)
        m_data->run(u"INSERT INTO {%1} (%2) VALUES (%3)"_s.arg(table, columns, row));
    QCOMPARE(m_data->count(table), 2);
}

void TestSchema::textsHoldWhatTheScreensTake_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<int>("length");
    const auto add = [](const QString &name, int length) { QTest::newRow(qPrintable(name)) << name << length; };
    add(u"NFTERCEIROS.DOCTO"_s, 7);
    add(u"NFTERCEIROS.CODCLI"_s, 5);
    add(u"NFT_ITEN.CODIGO"_s, 15);
    add(u"NFT_ITEN.LOTE"_s, 15);
    add(u"NFT_ITEN.MARCA"_s, 30);
    add(u"PEDIDO3.NUMERO"_s, 5);
    add(u"PEDIDO3.LOCAL"_s, 6);
    add(u"RAPORT.MATERIAL"_s, 15);
    add(u"RAPORT.COR"_s, 6);
    add(u"RAPORT.AGRUPADOR"_s, 6);
    add(u"TABPRECO.DESC_PRODUTO"_s, 30);
    add(u"MATERIAL.DESCRICAO"_s, 100);
    add(u"ENTIDADE.NOME"_s, 80);
    add(u"MAQUINA.MAQUINA"_s, 3);
    add(u"CADCOR.COR"_s, 6);
    add(u"DEFEITO.CODIGO"_s, 3);
    add(u"DEFEITO.DESCRICAO"_s, 30);
    add(u"NOTAITEN.FATURA"_s, 7);
    add(u"OF_MALHA.NUM_OF"_s, 6);
    add(u"OF_MALHA.OBSERVACAO"_s, 1000);
    add(u"RAPORT.OBSERVACAO"_s, 1000);
    add(u"NFTERCEIROS.OBS"_s, 1000);
}

void TestSchema::textsHoldWhatTheScreensTake()
{
    QFETCH(QString, column);
    QFETCH(int, length);
    const QString table = column.section(u'.', 0, 0);
    const QString name = column.section(u'.', 1);
    // Accents take more than a byte each; a text is not padded when it comes back.
    const QString text = QString(length - 1, u'ã') + u'z';
    QStringList names{name};
    QStringList values{u"'%1'"_s.arg(text)};
    const QVector<Schema::Table> all = Schema::allTables();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const Schema::Table &candidate) { return candidate.name == table; });
    for (const QString &key : found->key) {
        if (key != name) {
            names.append(key);
            values.append(u"'1'"_s);
        }
    }
    m_data->run(u"DELETE FROM {%1}"_s.arg(table));
    m_data->run(u"INSERT INTO {%1} (%2) VALUES (%3)"_s.arg(table, names.join(u", "_s), values.join(u", "_s)));
    QCOMPARE(m_data->value(u"SELECT %1 FROM {%2}"_s.arg(name, table)).toString(), text);
    m_data->run(u"UPDATE {%1} SET %2 = 'A'"_s.arg(table, name));
    QCOMPARE(m_data->value(u"SELECT %1 FROM {%2}"_s.arg(name, table)).toString(), u"A"_s);
}

void TestSchema::afterRoll999Comes1000()
{
    for (const QString &roll : {u"998"_s, u"1001"_s, u"999"_s, u"1000"_s, u"001"_s})
        m_data->run(u"INSERT INTO {OF_MALHA_BAIXAS} (NUM_OF, NUM_BAIXA) VALUES ('000001', '%1')"_s.arg(roll));
    QCOMPARE(
        m_data->value(u"SELECT MAX(NUM_BAIXA) AS PROXIMA FROM {OF_MALHA_BAIXAS} WHERE NUM_OF = '000001'"_s).toString(),
        u"1001"_s);
    const QString select = u"SELECT NUM_BAIXA FROM {OF_MALHA_BAIXAS} WHERE NUM_OF = '000001' ORDER BY NUM_BAIXA"_s;
    const QStringList ascending{u"001"_s, u"998"_s, u"999"_s, u"1000"_s, u"1001"_s};
    QCOMPARE(m_data->rows(select), ascending);
    const QStringList descending{ascending.rbegin(), ascending.rend()};
    QCOMPARE(m_data->rows(select + u" DESC"_s), descending);
    QCOMPARE(m_data->count(u"OF_MALHA_BAIXAS"_s, u"NUM_BAIXA > '999'"_s), 2);
}

void TestSchema::namesAreSortedAsReadersExpect()
{
    int code = 0;
    for (const QString &name : {u"Zilda"_s, u"Álvaro"_s, u"Bento"_s, u"alice"_s, u"Érica"_s})
        m_data->run(u"INSERT INTO {PESSOAL} (CODIGO, NOME) VALUES ('%1', '%2')"_s.arg(QString::number(++code), name));
    QCOMPARE(m_data->rows(u"SELECT NOME FROM {PESSOAL} ORDER BY NOME"_s),
        QStringList({u"alice"_s, u"Álvaro"_s, u"Bento"_s, u"Érica"_s, u"Zilda"_s}));
}

void TestSchema::nullIsZeroForTheFunctionOfTheReports()
{
    m_data->run(
        u"INSERT INTO {NFT_ITEN} (DOCTO, CODCLI, CODIGO, LOTE, ESTOQUE_FISICO) VALUES ('1', '2', 'F', 'L', 90.5)"_s);
    QCOMPARE(
        m_data->rows(u"SELECT SUM(ESTOQUE_FISICO - UDF_NVL(QTDE_DEVOL)), UDF_NVL(SUM(QTDE_BAIXA)) FROM {NFT_ITEN}"_s),
        QStringList(u"90.5|0"_s));
    m_data->run(u"UPDATE {NFT_ITEN} SET QTDE_DEVOL = 0.125"_s);
    QCOMPARE(m_data->value(u"SELECT ESTOQUE_FISICO - UDF_NVL(QTDE_DEVOL) FROM {NFT_ITEN}"_s).toDouble(), 90.375);
}

void TestSchema::aDateIsWrittenWithTheMonthFirst()
{
    m_data->run(u"INSERT INTO {OF_MALHA} (NUM_OF, DATA) VALUES ('000001', '12/31/2026')"_s);
    QCOMPARE(m_data->value(u"SELECT DATA FROM {OF_MALHA}"_s).toDate(), QDate(2026, 12, 31));
    QCOMPARE(m_data->count(u"OF_MALHA"_s, u"DATA BETWEEN '12/30/2026' AND '01/01/2027'"_s), 1);
    m_data->run(u"UPDATE {OF_MALHA} SET DATA = '02/03/2026'"_s);
    QCOMPARE(m_data->value(u"SELECT DATA FROM {OF_MALHA}"_s).toDate(), QDate(2026, 2, 3));
}

void TestSchema::thirtyRollsOf3333AddUpToTheirPlan()
{
    m_data->run(u"INSERT INTO {OF_MALHA} (NUM_OF, KG_TOTAL) VALUES ('000001', 99.99)"_s);
    for (int roll = 1; roll <= 30; ++roll)
        m_data->run(
            u"INSERT INTO {OF_MALHA_BAIXAS} (NUM_OF, NUM_BAIXA, QTDE) VALUES ('000001', '%1', 3.333)"_s.arg(roll));
    QCOMPARE(m_data->count(u"OF_MALHA"_s,
                 u"KG_TOTAL - (SELECT SUM(B.QTDE) FROM {OF_MALHA_BAIXAS} B WHERE B.NUM_OF = '000001') = 0"_s),
        1);
    m_data->run(u"INSERT INTO {PA_MALHA} (CODIGO, NUM_OF, QTDE_TOTAL) VALUES ('M1', '000001', 0)"_s);
    for (int roll = 1; roll <= 30; ++roll)
        m_data->run(u"UPDATE {PA_MALHA} SET QTDE_TOTAL = QTDE_TOTAL + 3.333"_s);
    QCOMPARE(m_data->count(u"PA_MALHA"_s, u"QTDE_TOTAL = 99.99"_s), 1);
}

void TestSchema::aQuotientOfKilogramsKeepsItsDecimals()
{
    m_data->run(u"INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, PERC) VALUES ('M1', '1', 33.33333)"_s);
    m_data->run(u"INSERT INTO {OF_MALHA} (NUM_OF, KG_TOTAL) VALUES ('000001', 100)"_s);
    QCOMPARE(
        m_data->value(u"SELECT O.KG_TOTAL * C.PERC / 100 FROM {OF_MALHA} O, {COMP_MATERIAL} C"_s).toDouble(), 33.33333);
}

void TestSchema::anActiveFlagMayBeNull()
{
    m_data->addCommonData();
    QCOMPARE(m_data->rows(u"SELECT MAT_ITEN.COR FROM {MAT_ITEN} MAT_ITEN WHERE MAT_ITEN.CODIGO = 'M0001' "
                          "AND (MAT_ITEN.ATIVO = 'S' OR MAT_ITEN.ATIVO IS NULL) ORDER BY MAT_ITEN.COR"_s),
        QStringList({u"000001"_s, u"000002"_s}));
}

void TestSchema::anUpdateMayQualifyTheColumnsThatItSets()
{
    m_data->run(u"INSERT INTO {NOTAITEN} (FATURA, ORDEM, TIPO) VALUES ('0000001', 1, 'N')"_s);
    m_data->run(u"UPDATE {NOTAITEN} NOTAITEN SET NOTAITEN.TIPO = 'S', NOTAITEN.QTDE = 1 "
                "WHERE NOTAITEN.FATURA = '0000001'"_s);
    QCOMPARE(m_data->rows(u"SELECT TIPO, QTDE FROM {NOTAITEN}"_s), QStringList(u"S|1"_s));
}

QTEST_MAIN(TestSchema)
#include "tst_schema.moc"
