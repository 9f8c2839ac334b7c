// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/testdatabase.h"

#include <sodium.h>

using namespace Qt::StringLiterals;

namespace {

struct Rows
{
    QString table; ///< with its columns
    QStringList values;
};

/// Clients, among them one whose name holds a quote and a comma.
QVector<Rows> peopleAndPlaces()
{
    return {
        {u"GRUPO_CLI (CODIGO, DESCRICAO)"_s, {u"'1', 'Confecções'"_s, u"'2', 'Atacado'"_s}},
        {u"ENTIDADE (CODCLI, NOME, GRUPO)"_s,
            {u"'00001', 'Confecções Serra Azul Ltda', '1'"_s, u"'00002', 'Malhas São Bento S.A.', '1'"_s,
                u"'00003', 'Têxtil D''Ávila, Filhos & Cia', '2'"_s}},
        {u"MAQUINA (MAQUINA, DESCRICAO, NOME)"_s,
            {u"'001', 'Circular 30\" 28 agulhas', 'Serra Azul 1'"_s, u"'002', 'Circular 34\" 24 agulhas', 'Vale Claro 2'"_s}},
        {u"TURNO (TURNO, DESCRICAO, NOTURNO)"_s,
            {u"'1', 'Manhã', 'N'"_s, u"'2', 'Tarde', 'N'"_s, u"'3', 'Geral', 'N'"_s, u"'4', 'Noite', 'S'"_s}},
        {u"PESSOAL (CODIGO, NOME, TURNO, ATIVO)"_s,
            {u"'000101', 'Ana Souza', '1', 'S'"_s, u"'000102', 'Bruno Lima', '2', 'S'"_s,
                u"'000103', 'Célia Rocha', '3', 'S'"_s, u"'000104', 'Davi Nunes', '4', 'S'"_s,
                u"'000105', 'Elza Prado', '1', 'N'"_s, u"'000106', 'Fábio Reis', '1', NULL"_s}},
        {u"REGIAO (REGIAO, DESCRICAO)"_s, {u"'01', 'Sul'"_s, u"'02', 'Sudeste'"_s}},
    };
}

/// The fabric M0001 in raw white is knitted of 60 % cotton and 40 % polyester.
QVector<Rows> materials()
{
    return {
        {u"CADCOR (COR, DESCRICAO)"_s, {u"'000001', 'Cru'"_s, u"'000002', 'Azul-marinho'"_s, u"'000003', 'Preto'"_s}},
        {u"GRUPO_MA (CODIGO, DESCRICAO)"_s,
            {u"'10', 'Fios'"_s, u"'15', 'Malhas próprias'"_s, u"'150', 'Malhas de terceiros'"_s}},
        {u"MATERIAL (CODIGO, DESCRICAO, GRUPO, CODCLI, LARGURA, GRAMATURA, NE, UNIDADE, ATIVO)"_s,
            {u"'FIO30CO', 'Fio algodão 30/1 penteado', '10', NULL, NULL, NULL, '30/1', 'KG', 'S'"_s,
                u"'FIO150PES', 'Fio poliéster 150/48', '10', NULL, NULL, NULL, '150/48', 'KG', 'S'"_s,
                u"'FIO20ELA', 'Elastano 20 dtex', '10', NULL, NULL, NULL, '20', 'KG', NULL"_s,
                u"'M0001', 'Meia-malha PV 60/40', '150', '00001', 1.2, 165, NULL, 'KG', 'S'"_s,
                u"'M0002', 'Ribana 2x1', '15', '00002', 0.9, 220, NULL, 'KG', NULL"_s}},
        {u"COMP_MATERIAL (MATERIAL, COR, CODIGO, COR_I, ORDEM, PERC, ROCA, ALIMENTADORES, LFA, COMP_PONTO, DIAMETRO,"
         " FINURA, LARGURA, GRAMATURA, KG_ROLO)"_s,
            {u"'M0001', '000001', 'FIO30CO', '000001', 1, 60, 48, 48, 290, 2.9, 30, 28, 1.2, 165, 20"_s,
                u"'M0001', '000001', 'FIO150PES', '000001', 2, 40, 48, 48, 290, 2.9, 30, 28, 1.2, 165, 20"_s,
                u"'M0002', '000001', 'FIO30CO', '000001', 1, 100, 60, 60, 310, 3.1, 34, 24, 0.9, 220, 25"_s}},
        {u"MAT_ITEN (CODIGO, COR, LOTE, DEPOSITO, LOCAL, QTDE, PRECO_MED, ATIVO)"_s,
            {u"'M0001', '000001', 'L1', '01', 'A1', 100, 25.5, 'S'"_s,
                u"'M0001', '000002', 'L1', '01', 'A1', 50, 25.5, NULL"_s,
                u"'M0001', '000003', 'L1', '01', 'A1', 10, 25.5, 'N'"_s}},
        {u"FLUXOTIN (CODIGO, DESCRICAO)"_s, {u"'01', 'Tecer'"_s, u"'02', 'Tecer e revisar'"_s}},
        {u"TABQUL (CODIGO, DESCRICAO)"_s, {u"'1', 'Primeira'"_s, u"'2', 'Segunda'"_s}},
        {u"DEFEITO (CODIGO, DESCRICAO)"_s,
            {u"'001', 'Furo'"_s, u"'002', 'Barramento'"_s, u"'003', 'Agulha quebrada'"_s}},
    };
}

void insert(TTIDatabase &database, const QVector<Rows> &tables, const QString &suffix)
{
    for (const Rows &rows : tables) {
        const QString name = rows.table.section(u' ', 0, 0);
        for (const QString &values : rows.values) {
            database.run(u"INSERT INTO %1%2 %3 VALUES (%4)"_s.arg(name, suffix, rows.table.mid(name.size()), values));
        }
    }
}

QString passwordHash(const QByteArray &password)
{
    // The cheapest work factor: what is tested is not how long guessing takes.
    QByteArray hash(crypto_pwhash_STRBYTES, '\0');
    if (sodium_init() < 0
        || crypto_pwhash_str(hash.data(), password.constData(), password.size(), crypto_pwhash_OPSLIMIT_MIN,
               crypto_pwhash_MEMLIMIT_MIN)
            != 0)
        throw EQen(u"The password of the test's users cannot be hashed."_s);
    return QString::fromLatin1(hash.constData());
}

void insertUsers(TTIDatabase &database)
{
    const QString hash = passwordHash("malha");
    insert(database,
        {{u"QEN_USUARIO (USUARIO, NOME, SENHA, ADMINISTRADOR, ATIVO)"_s,
             {u"'ADMIN', 'Administrador', '%1', 'S', 'S'"_s.arg(hash),
                 u"'SEMDIREITO', 'Sem direito algum', '%1', 'N', 'S'"_s.arg(hash)}},
            {u"QEN_USUARIO_EMPRESA (USUARIO, EMPRESA)"_s, {u"'ADMIN', 1"_s, u"'ADMIN', 2"_s, u"'SEMDIREITO', 1"_s}}},
        {});
}

} // namespace

void TestDatabase::addCommonData(int company)
{
    TTIDatabase &database = connection();
    const QString suffix = u'_' + QString::number(company).rightJustified(3, u'0');
    Save save(database);
    insert(database, peopleAndPlaces() + materials(), suffix);
    for (const QString &parameter : {u"'MAL', 10, 'S'"_s, u"'MAL', 20, 'N'"_s, u"'MAL', 50, 'N'"_s, u"'MAL', 80, 'N'"_s,
             u"'MAT', 120, 'N'"_s, u"'VEN', 190, 'N'"_s}) {
        database.run(u"INSERT INTO QEN_PARAMETRO (EMPRESA, MODULO, NUMERO, VALOR) VALUES (%1, %2)"_s.arg(
            QString::number(company), parameter));
    }
    if (!database.value(u"SELECT USUARIO FROM QEN_USUARIO WHERE USUARIO = 'ADMIN'"_s).isValid())
        insertUsers(database);
    save.CommitRetaining();
}
