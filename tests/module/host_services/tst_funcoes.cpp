// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/tabelas.h"
#include "module/schema/schema.h"
#include "tests/support/engines.h"
#include "tests/support/recordinghost.h"
#include "tests/support/testdatabase.h"

#include <QLocale>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

/// The services that names, literals, look-ups and numbers come from.
class TestFuncoes : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::Portuguese, QLocale::Brazil)); }
    void init();
    void cleanup();

    void aTableIsTheCurrentCompanys();
    void whatIsNoTableNameIsRefused();
    void bothFormsOfTableNamesAgree();
    void rowsTellTheNumberOfTheirCompany();
    void everyCompanyThatTheUserSeesIsInTheUnion();
    void aCompanyWithoutTheTableIsLeftOutOfTheUnion();
    void aTableThatNoCompanyHasIsTold();
    void aValueInBracesStaysInTheUnion();
    void theUnionKeepsOrMergesEqualRows();

    void aLiteralComesBackFromTheEngineAsItWas_data();
    void aLiteralComesBackFromTheEngineAsItWas();
    void aNumberHasAPointUnderALocaleWithAComma();
    void aNumberThatIsNoneIsRefused();
    void aTimeIsALiteralWithoutItsDate();

    void aValueIsFoundByItsKey();
    void namesOfTablesAndFieldsAreTakenInAnyCase();
    void aValueIsFoundBySeveralKeys();
    void nothingFoundIsAnEmptyText();
    void aNullColumnIsAnEmptyText();
    void aKeyMayHoldSeparatorsAndQuotes();
    void aKeyOfDigitsIsStillAText();
    void figuresAreFoundAsText();
    void aSharedTableIsFoundWithoutTheFlag();
    void blanksAroundAreCutWithTheFlag();
    void anIncompleteKeyIsRefused();

    void aRowExists_data();
    void aRowExists();
    void existenceIsAskedOnTheGivenConnection();
    void aHostileNameNeverReachesAStatement();

    void theNextNumberFollowsTheHighest_data();
    void theNextNumberFollowsTheHighest();
    void whenAllNumbersAreTakenNoneIsGiven();
    void eachCompanyCountsItself();
    void aNumberTakenInASaveCounts();

private:
    void insertOrder(const QString &number);

    std::unique_ptr<TestDatabase> m_data;
    std::unique_ptr<RecordingHost> m_host;
    std::unique_ptr<TTabela> m_tabela;
};

void TestFuncoes::init()
{
    m_data = std::make_unique<TestDatabase>(Engines::current());
    m_host = std::make_unique<RecordingHost>();
    m_tabela = std::make_unique<TTabela>();
    m_tabela->IBDatabase->open(m_data->settings());
}

void TestFuncoes::cleanup()
{
    m_tabela.reset();
    m_host.reset();
    m_data.reset();
}

void TestFuncoes::insertOrder(const QString &number)
{
    m_data->run(u"INSERT INTO {OF_MALHA} (NUM_OF) VALUES ('%1')"_s.arg(number));
}

void TestFuncoes::aTableIsTheCurrentCompanys()
{
    QCOMPARE(Funcoes::DBLocal(u"OF_MALHA"_s, true), u"OF_MALHA_001"_s);
    QCOMPARE(Funcoes::DBLocal(u" of_malha "_s, true), u"OF_MALHA_001"_s);
    m_host->companyNumber = 734;
    QCOMPARE(Funcoes::DBLocal(u"PEDIDO3"_s), u"PEDIDO3_734"_s);
    QCOMPARE(Funcoes::DBLocalEmpresa(u"NOTA"_s, 12), u"NOTA_012"_s);
    QCOMPARE(Funcoes::DBLocal(u"QEN_LOG"_s, false), u"QEN_LOG"_s);
}

void TestFuncoes::whatIsNoTableNameIsRefused()
{
    for (const QString &name : {QString(), u"OF MALHA"_s, u"OF_MALHA;"_s, u"'OF'"_s, u"OF_MALHA--"_s}) {
        QVERIFY_THROWS_EXCEPTION(EProgramming, Funcoes::DBLocal(name));
        QVERIFY_THROWS_EXCEPTION(EProgramming, Funcoes::DBLocal(name, false));
    }
}

void TestFuncoes::bothFormsOfTableNamesAgree()
{
    m_host->companyNumber = 2;
    QCOMPARE(Funcoes::DBLocal_SQL(u"SELECT 1 FROM {NOTA} NOTA, {of_malha} O"_s),
        u"SELECT 1 FROM %1 NOTA, %2 O"_s.arg(Funcoes::DBLocal(u"NOTA"_s), Funcoes::DBLocal(u"OF_MALHA"_s)));
    QCOMPARE(Funcoes::DBLocal_SQL(u"SELECT '{NOTA}' FROM {NOTA}"_s, u" ORDER BY 1"_s),
        u"SELECT '{NOTA}' FROM NOTA_002 ORDER BY 1"_s);
    QCOMPARE(Funcoes::DBLocal_SQL(u"SELECT 1 FROM NOTA_001"_s), u"SELECT 1 FROM NOTA_001"_s);
}

void TestFuncoes::rowsTellTheNumberOfTheirCompany()
{
    const QString select = u"SELECT {EMPRESA} AS EMPRESA FROM {NOTA}"_s;
    m_host->companyNumber = 2;
    QCOMPARE(Funcoes::DBLocal_SQL(select), u"SELECT 2 AS EMPRESA FROM NOTA_002"_s);
    m_host->companies = {1, 2};
    QCOMPARE(Funcoes::UnionTodasEmpresas(u"NOTA"_s, select, true),
        u"SELECT 1 AS EMPRESA FROM NOTA_001\nUNION ALL\nSELECT 2 AS EMPRESA FROM NOTA_002"_s);
}

void TestFuncoes::everyCompanyThatTheUserSeesIsInTheUnion()
{
    insertOrder(u"000001"_s);
    m_data->run(u"INSERT INTO OF_MALHA_002 (NUM_OF) VALUES ('000002')"_s);
    const QString select = u"SELECT NUM_OF FROM {OF_MALHA} OF_MALHA"_s;
    const auto numbers = [&] {
        QStringList found = m_data->rows(
            Funcoes::DBLocal_SQL(Funcoes::UnionTodasEmpresas(u"OF_MALHA"_s, select, true), u" ORDER BY 1"_s));
        return found.join(u',');
    };
    QCOMPARE(numbers(), u"000001"_s);
    m_host->companies = {1, 2};
    QCOMPARE(numbers(), u"000001,000002"_s);
    m_host->companies = {2};
    QCOMPARE(numbers(), u"000002"_s);
}

void TestFuncoes::aCompanyWithoutTheTableIsLeftOutOfTheUnion()
{
    m_host->companies = {1, 7, 2};
    const QString text = Funcoes::UnionTodasEmpresas(u"nota"_s, u"SELECT FATURA FROM {NOTA}"_s, true);
    QCOMPARE(text, u"SELECT FATURA FROM NOTA_001\nUNION ALL\nSELECT FATURA FROM NOTA_002"_s);
    m_host->companies = {1};
    QCOMPARE(
        Funcoes::UnionTodasEmpresas(u"NOTA"_s, u"SELECT FATURA FROM {NOTA}"_s, true), u"SELECT FATURA FROM NOTA_001"_s);
}

void TestFuncoes::aTableThatNoCompanyHasIsTold()
{
    m_host->companies = {7, 8};
    QString sentence;
    try {
        Funcoes::UnionTodasEmpresas(u"nota"_s, u"SELECT FATURA FROM {NOTA}"_s, true);
    } catch (const EQen &error) {
        sentence = error.sentence();
    }
    QCOMPARE(sentence, u"Nenhuma das empresas do usuário tem a tabela NOTA."_s);
}

void TestFuncoes::aValueInBracesStaysInTheUnion()
{
    const QString select = u"SELECT NUM_OF FROM {OF_MALHA} WHERE LOTE = 'it''s {OF_MALHA}'"_s;
    const QString text = Funcoes::DBLocal_SQL(Funcoes::UnionTodasEmpresas(u"OF_MALHA"_s, select, true));
    QCOMPARE(text, u"SELECT NUM_OF FROM OF_MALHA_001 WHERE LOTE = 'it''s {OF_MALHA}'"_s);
    QCOMPARE(m_data->rows(text), QStringList());
}

void TestFuncoes::theUnionKeepsOrMergesEqualRows()
{
    insertOrder(u"000001"_s);
    m_data->run(u"INSERT INTO OF_MALHA_002 (NUM_OF) VALUES ('000001')"_s);
    m_host->companies = {1, 2};
    const QString select = u"SELECT NUM_OF FROM {OF_MALHA}"_s;
    QCOMPARE(m_data->rows(Funcoes::UnionTodasEmpresas(u"OF_MALHA"_s, select, true)).size(), 2);
    QCOMPARE(m_data->rows(Funcoes::UnionTodasEmpresas(u"OF_MALHA"_s, select, false)).size(), 1);
}

void TestFuncoes::aLiteralComesBackFromTheEngineAsItWas_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("quote") << u"Têxtil D'Ávila"_s;
    QTest::newRow("only quotes") << u"''"_s;
    QTest::newRow("backslash") << u"a\\'b\\"_s;
    QTest::newRow("attack") << u"'); DELETE FROM ENTIDADE_001; --"_s;
    QTest::newRow("place holders") << u"{ENTIDADE} ? :x %1"_s;
    QTest::newRow("lines") << u"a\nb\tc"_s;
}

void TestFuncoes::aLiteralComesBackFromTheEngineAsItWas()
{
    QFETCH(QString, text);
    const QString literal = Funcoes::Aspas(text);
    m_tabela->IBDatabase->run(
        Funcoes::DBLocal_SQL(u"INSERT INTO {ENTIDADE} (CODCLI, NOME) VALUES ('00001', "_s + literal + u')'));
    QCOMPARE(m_data->value(u"SELECT NOME FROM {ENTIDADE}"_s).toString(), text);
    QCOMPARE(
        m_tabela->IBDatabase->value(Funcoes::DBLocal_SQL(u"SELECT CODCLI FROM {ENTIDADE} WHERE NOME = "_s + literal))
            .toString(),
        u"00001"_s);
}

void TestFuncoes::aNumberHasAPointUnderALocaleWithAComma()
{
    QCOMPARE(QLocale().decimalPoint(), u","_s);
    QCOMPARE(Funcoes::PermanecePonto(1234.5), u"1234.5"_s);
    QCOMPARE(Funcoes::PermanecePonto(-0.5), u"-0.5"_s);
    QCOMPARE(Funcoes::PermanecePonto(3), u"3"_s);
    insertOrder(u"000001"_s);
    m_data->run(u"UPDATE {OF_MALHA} SET KG_TOTAL = %1"_s.arg(Funcoes::PermanecePonto(1234.567)));
    QCOMPARE(m_data->count(u"OF_MALHA"_s, u"KG_TOTAL = 1234.567"_s), 1);
}

void TestFuncoes::aNumberThatIsNoneIsRefused()
{
    QVERIFY_THROWS_EXCEPTION(EProgramming, Funcoes::PermanecePonto(std::numeric_limits<double>::quiet_NaN()));
}

void TestFuncoes::aTimeIsALiteralWithoutItsDate()
{
    const QDateTime moment(QDate(2026, 3, 10), QTime(0, 5, 9, 87));
    QCOMPARE(Funcoes::HoraSQL(moment, true), u"'00:05:09'"_s);
    QCOMPARE(Funcoes::HoraSQL(moment, false), u"'00:05:09.087'"_s);
    m_data->run(u"INSERT INTO {OF_MALHA_BAIXAS} (NUM_OF, NUM_BAIXA, HORA) VALUES ('1', '1', %1)"_s.arg(
        Funcoes::HoraSQL(QDateTime(QDate(2026, 3, 10), QTime(12, 0, 1)))));
    QCOMPARE(m_data->count(u"OF_MALHA_BAIXAS"_s, u"HORA > '12:00:00' AND HORA <= '12:00:01'"_s), 1);
}

void TestFuncoes::aValueIsFoundByItsKey()
{
    m_data->addCommonData();
    QCOMPARE(Funcoes::Busca_Valor(u"MATERIAL"_s, u"CODIGO"_s, u"DESCRICAO"_s, u"'M0001'"_s), u"Meia-malha PV 60/40"_s);
    QCOMPARE(Funcoes::Busca_Valor(u"PESSOAL"_s, u"CODIGO"_s, u"TURNO"_s, u"'000104'"_s), u"4"_s);
    QCOMPARE(Funcoes::Busca_Valor(u"TURNO"_s, u"TURNO"_s, u"NOTURNO"_s, u"'4'"_s), u"S"_s);
}

void TestFuncoes::namesOfTablesAndFieldsAreTakenInAnyCase()
{
    m_data->addCommonData();
    QCOMPARE(Funcoes::Busca_Valor(u"Entidade"_s, u"CodCli"_s, u"Nome"_s, u"'00002'"_s), u"Malhas São Bento S.A."_s);
    QVERIFY(Funcoes::Existe(u"entidade"_s, u"codcli"_s, u"'00002'"_s));
}

void TestFuncoes::aValueIsFoundBySeveralKeys()
{
    for (const QString &row : {u"'M1', 48, 290"_s, u"'M1', 60, 310"_s, u"'M2', 72, 290"_s})
        m_data->run(u"INSERT INTO {CADRAPORT} (CODIGO, ALIMENTADORES, MILIMETROS) VALUES (%1)"_s.arg(row));
    const auto feeders = [](const QString &values) {
        return Funcoes::Busca_Valor(u"CADRAPORT"_s, u"CODIGO;MILIMETROS"_s, u"ALIMENTADORES"_s, values);
    };
    QCOMPARE(feeders(u"'M1';'310'"_s), u"60"_s);
    QCOMPARE(feeders(u"'M1'; 290"_s), u"48"_s);
    QCOMPARE(feeders(u"'M2';'290'"_s), u"72"_s);
    QCOMPARE(feeders(u"'M2';'310'"_s), QString());
}

void TestFuncoes::nothingFoundIsAnEmptyText()
{
    m_data->addCommonData();
    QCOMPARE(Funcoes::Busca_Valor(u"MATERIAL"_s, u"CODIGO"_s, u"DESCRICAO"_s, u"'NADA'"_s), QString());
    QCOMPARE(Funcoes::Busca_Valor(u"MATERIAL"_s, u"CODIGO"_s, u"DESCRICAO"_s, u"''"_s), QString());
    QCOMPARE(Funcoes::Busca_Valor(u"MATERIAL"_s, u"CODIGO"_s, u"DESCRICAO"_s, QString()), QString());
}

void TestFuncoes::aNullColumnIsAnEmptyText()
{
    m_data->addCommonData();
    QCOMPARE(Funcoes::Busca_Valor(u"PESSOAL"_s, u"CODIGO"_s, u"ATIVO"_s, u"'000106'"_s), QString());
    QCOMPARE(Funcoes::Busca_Valor(u"MATERIAL"_s, u"CODIGO"_s, u"LARGURA"_s, u"'FIO30CO'"_s), QString());
    m_data->run(u"INSERT INTO {CADRAPORT} (CODIGO) VALUES ('M1')"_s);
    QCOMPARE(Funcoes::Busca_Valor(u"CADRAPORT"_s, u"CODIGO"_s, u"ALIMENTADORES"_s, u"'M1'"_s), QString());
}

void TestFuncoes::aKeyMayHoldSeparatorsAndQuotes()
{
    m_data->addCommonData();
    const QString name = u"Têxtil D'Ávila, Filhos & Cia"_s;
    QCOMPARE(Funcoes::Busca_Valor(u"ENTIDADE"_s, u"NOME"_s, u"CODCLI"_s, Funcoes::Aspas(name)), u"00003"_s);
    m_data->run(
        u"INSERT INTO {MAT_ITEN} (CODIGO, COR, LOTE, DEPOSITO, LOCAL) VALUES ('M9', '1;2', 'L''1', '1', 'B2')"_s);
    QCOMPARE(Funcoes::Busca_Valor(u"MAT_ITEN"_s, u"CODIGO;COR;LOTE"_s, u"LOCAL"_s,
                 Funcoes::Aspas(u"M9"_s) + u';' + Funcoes::Aspas(u"1;2"_s) + u';' + Funcoes::Aspas(u"L'1"_s)),
        u"B2"_s);
}

void TestFuncoes::aKeyOfDigitsIsStillAText()
{
    m_data->addCommonData();
    QCOMPARE(Funcoes::Busca_Valor(u"ENTIDADE"_s, u"CODCLI"_s, u"NOME"_s, u"00002"_s), u"Malhas São Bento S.A."_s);
    QCOMPARE(Funcoes::Busca_Valor(u"ENTIDADE"_s, u"CODCLI"_s, u"NOME"_s, u"2"_s), QString());
    QVERIFY(Funcoes::Existe(u"PESSOAL"_s, u"CODIGO"_s, u"000101"_s));
    QVERIFY(!Funcoes::Existe(u"PESSOAL"_s, u"CODIGO"_s, u"101"_s));
}

void TestFuncoes::figuresAreFoundAsText()
{
    insertOrder(u"000001"_s);
    m_data->run(u"UPDATE {OF_MALHA} SET KG_ROLO = 20, KG_TOTAL = 99.99"_s);
    QCOMPARE(Funcoes::Busca_Valor(u"OF_MALHA"_s, u"NUM_OF"_s, u"KG_ROLO"_s, u"'000001'"_s), u"20"_s);
    QCOMPARE(Funcoes::Busca_Valor(u"OF_MALHA"_s, u"NUM_OF"_s, u"KG_TOTAL"_s, u"'000001'"_s), u"99.99"_s);
}

void TestFuncoes::aSharedTableIsFoundWithoutTheFlag()
{
    QCOMPARE(Funcoes::Busca_Valor(u"QEN_EMPRESA"_s, u"NUMERO"_s, u"NOME"_s, u"1"_s, false), u"Malharia Serra Azul"_s);
}

void TestFuncoes::blanksAroundAreCutWithTheFlag()
{
    m_data->run(u"INSERT INTO {CADCOR} (COR, DESCRICAO) VALUES ('1', '  Cru ')"_s);
    QCOMPARE(Funcoes::Busca_Valor(u"CADCOR"_s, u"COR"_s, u"DESCRICAO"_s, u"'1'"_s, true, true), u"Cru"_s);
    QCOMPARE(Funcoes::Busca_Valor(u"CADCOR"_s, u"COR"_s, u"DESCRICAO"_s, u"'1'"_s, true, false), u"  Cru "_s);
}

void TestFuncoes::anIncompleteKeyIsRefused()
{
    QVERIFY_THROWS_EXCEPTION(
        EProgramming, Funcoes::Busca_Valor(u"CADRAPORT"_s, u"CODIGO;MILIMETROS"_s, u"ALIMENTADORES"_s, u"'M1'"_s));
    QVERIFY_THROWS_EXCEPTION(EProgramming, Funcoes::Existe(u"PA_MALHA"_s, u"NUM_OF,CODIGO"_s, u"'1','2','3'"_s));
}

void TestFuncoes::aRowExists_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("fields");
    QTest::addColumn<QString>("values");
    QTest::addColumn<bool>("exists");
    QTest::newRow("one field") << u"ENTIDADE"_s << u"CODCLI"_s << u"'00001'"_s << true;
    QTest::newRow("not there") << u"ENTIDADE"_s << u"CODCLI"_s << u"'99999'"_s << false;
    QTest::newRow("empty") << u"ENTIDADE"_s << u"CODCLI"_s << u"''"_s << false;
    QTest::newRow("a comma and a quote inside")
        << u"ENTIDADE"_s << u"NOME"_s << u"'Têxtil D''Ávila, Filhos & Cia'"_s << true;
    QTest::newRow("unquoted, a comma and a quote inside")
        << u"ENTIDADE"_s << u"NOME"_s << u"Têxtil D'Ávila, Filhos & Cia"_s << true;
    QTest::newRow("four fields") << u"MAT_ITEN"_s << u"CODIGO,COR,LOTE,DEPOSITO"_s << u"'M0001','000002','L1','01'"_s
                                 << true;
    QTest::newRow("four fields, blanks") << u"MAT_ITEN"_s << u"CODIGO, COR, LOTE, DEPOSITO"_s
                                         << u"'M0001', '000002', 'L1', '01'"_s << true;
    QTest::newRow("the last one differs")
        << u"MAT_ITEN"_s << u"CODIGO,COR,LOTE,DEPOSITO"_s << u"'M0001','000002','L1','02'"_s << false;
    QTest::newRow("an attack") << u"ENTIDADE"_s << u"CODCLI"_s << u"'' OR 1=1"_s << false;
}

void TestFuncoes::aRowExists()
{
    m_data->addCommonData();
    QFETCH(QString, table);
    QFETCH(QString, fields);
    QFETCH(QString, values);
    QTEST(Funcoes::Existe(table, fields, values), "exists");
}

void TestFuncoes::existenceIsAskedOnTheGivenConnection()
{
    Save save(m_data->connection());
    insertOrder(u"000001"_s);
    QVERIFY(!Funcoes::Existe(u"OF_MALHA"_s, u"NUM_OF"_s, u"'000001'"_s));
    QVERIFY(Funcoes::Existe(u"OF_MALHA"_s, u"NUM_OF"_s, u"'000001'"_s, &m_data->connection()));
}

void TestFuncoes::aHostileNameNeverReachesAStatement()
{
    const QString hostile = u"CODCLI = '1' OR 1=1 --"_s;
    QVERIFY_THROWS_EXCEPTION(EProgramming, Funcoes::Existe(u"ENTIDADE"_s, hostile, u"'1'"_s));
    QVERIFY_THROWS_EXCEPTION(EProgramming, Funcoes::Busca_Valor(u"ENTIDADE"_s, hostile, u"NOME"_s, u"'1'"_s));
    QVERIFY_THROWS_EXCEPTION(EProgramming, Funcoes::Busca_Valor(u"ENTIDADE"_s, u"CODCLI"_s, hostile, u"'1'"_s));
    QVERIFY_THROWS_EXCEPTION(EProgramming, Funcoes::Proximo(u"OF_MALHA"_s, hostile, 6));
}

void TestFuncoes::theNextNumberFollowsTheHighest_data()
{
    QTest::addColumn<QStringList>("orders");
    QTest::addColumn<QString>("next");
    QTest::newRow("none yet") << QStringList{} << u"000001"_s;
    QTest::newRow("in a row") << QStringList{u"000001"_s, u"000002"_s} << u"000003"_s;
    QTest::newRow("with gaps") << QStringList{u"000001"_s, u"000007"_s, u"000003"_s} << u"000008"_s;
    QTest::newRow("text that is no number")
        << QStringList{u"000004"_s, u"AMOSTR"_s, u"9999X9"_s, u"-00009"_s} << u"000005"_s;
    QTest::newRow("only text") << QStringList{u"AMOSTR"_s} << u"000001"_s;
    QTest::newRow("unpadded") << QStringList{u"000004"_s, u"9"_s, u"77"_s} << u"000005"_s;
    QTest::newRow("carries over") << QStringList{u"000999"_s} << u"001000"_s;
    QTest::newRow("the highest reached") << QStringList{u"000001"_s, u"000002"_s, u"000004"_s, u"999999"_s}
                                         << u"000003"_s;
    QTest::newRow("the highest alone") << QStringList{u"999999"_s} << u"000001"_s;
    QTest::newRow("the highest, and zero") << QStringList{u"000000"_s, u"000001"_s, u"999999"_s} << u"000002"_s;
}

void TestFuncoes::theNextNumberFollowsTheHighest()
{
    QFETCH(QStringList, orders);
    for (const QString &order : orders)
        insertOrder(order);
    QTEST(Funcoes::Proximo(u"OF_MALHA"_s, u"NUM_OF"_s, 6, true), "next");
    QTEST(Funcoes::Proximo(u"of_malha"_s, u"num_of"_s, 6), "next");
}

void TestFuncoes::whenAllNumbersAreTakenNoneIsGiven()
{
    for (int number = 1; number <= 9; ++number)
        m_data->run(u"INSERT INTO {PEDIDO3} (NUMERO) VALUES ('%1')"_s.arg(number));
    try {
        Funcoes::Proximo(u"PEDIDO3"_s, u"NUMERO"_s, 1, true);
        QFAIL("A number was given");
    } catch (const EQen &error) {
        QCOMPARE(error.sentence(), u"Não há mais números livres."_s);
    }
    QCOMPARE(Funcoes::Proximo(u"PEDIDO3"_s, u"NUMERO"_s, 5, true), u"00001"_s);
}

void TestFuncoes::eachCompanyCountsItself()
{
    insertOrder(u"000041"_s);
    m_host->companyNumber = 2;
    QCOMPARE(Funcoes::Proximo(u"OF_MALHA"_s, u"NUM_OF"_s, 6), u"000001"_s);
    m_host->companyNumber = 1;
    QCOMPARE(Funcoes::Proximo(u"OF_MALHA"_s, u"NUM_OF"_s, 6), u"000042"_s);
    QCOMPARE(Funcoes::Proximo(u"QEN_USUARIO"_s, u"USUARIO"_s, 4, false), u"0001"_s);
}

void TestFuncoes::aNumberTakenInASaveCounts()
{
    Save save(*m_tabela->IBDatabase);
    m_tabela->IBDatabase->run(u"INSERT INTO OF_MALHA_001 (NUM_OF) VALUES ('000001')"_s);
    QCOMPARE(Funcoes::Proximo(u"OF_MALHA"_s, u"NUM_OF"_s, 6), u"000002"_s);
}

QTEST_MAIN(TestFuncoes)
#include "tst_funcoes.moc"
