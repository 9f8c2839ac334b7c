// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/demo.h"
#include "demo/inserter.h"
#include "demo/subjects.h"
#include "module/host_services/errors.h"

#include <sodium.h>

#include <array>

using namespace Qt::StringLiterals;

namespace Demo {

namespace {

constexpr std::array screens{QStringView(u"TfmNFTerceiros"), QStringView(u"TfmRelDocto"), QStringView(u"TfmMalhaOF"),
    QStringView(u"TfmRelPend"), QStringView(u"TfmRelProd"), QStringView(u"TfmRelRegistros"),
    QStringView(u"TfmRelEstoqueMat"), QStringView(u"TfmAcertoMalharia"), QStringView(u"TfmRelOrdFab"),
    QStringView(u"TfmMatTabPreco"), QStringView(u"TfmRelMatTabPre"), QStringView(u"TfmMalFatNF"),
    QStringView(u"TfmRelMalSaidas"), QStringView(u"TfmMalhaOFBaixaBarra"), QStringView(u"TfmCadDefMalha"),
    QStringView(u"TfmCadAlimentador"), QStringView(u"TfmCadRaport"), QStringView(u"TfmMalhaOFBaixa"),
    QStringView(u"TfmBaixaOF"), QStringView(u"TfmMalLibFat")};

QString passwordHash(QLatin1StringView text)
{
    std::array<char, crypto_pwhash_STRBYTES> hash{};
    if (sodium_init() < 0
        || crypto_pwhash_str(hash.data(), text.data(), static_cast<unsigned long long>(text.size()),
               crypto_pwhash_OPSLIMIT_INTERACTIVE, crypto_pwhash_MEMLIMIT_INTERACTIVE)
            != 0)
        throw EQen(u"A senha dos usuários de demonstração não pôde ser calculada."_s);
    return QString::fromLatin1(hash.data());
}

void collectUsers(Inserter &rows)
{
    rows.into(u"QEN_USUARIO"_s, u"USUARIO, NOME, SENHA, ADMINISTRADOR, ATIVO"_s, 0);
    const auto add = [&](const QString &name, QStringView fullName, QStringView administrator) {
        rows.row({name, fullName, passwordHash(password), administrator, u"S"});
    };
    add(user, u"Usuário de demonstração", u"S");
    add(u"supervisor"_s, u"Supervisor da malharia", u"N");
    add(u"operador"_s, u"Operador da balança", u"N");
    add(u"consulta"_s, u"Somente consulta", u"N");

    rows.into(u"QEN_USUARIO_EMPRESA"_s, u"USUARIO, EMPRESA"_s, 0);
    for (const int company : {1, 2}) {
        for (const QString &name : {QString(user), u"supervisor"_s, u"consulta"_s})
            rows.row({name, company});
    }
    rows.row({u"operador", 1});
}

void collectRights(Inserter &rows)
{
    rows.into(u"QEN_DIREITO"_s, u"USUARIO, TELA, LETRA, NIVEL"_s, 0);
    for (const QStringView screen : screens) {
        rows.row({u"supervisor", screen, u"A", u"0"});
        rows.row({u"supervisor", screen, u"A", u"1"});
        rows.row({u"supervisor", screen, u"E", u"0"});
    }
    rows.row({u"operador", u"TfmMalhaOFBaixaBarra", u"A", u"0"});
    rows.row({u"operador", u"TfmCadDefMalha", u"A", u"0"});
}

} // namespace

void collectSystem(Inserter &rows)
{
    collectUsers(rows);
    collectRights(rows);
    rows.into(u"QEN_PARAMETRO"_s, u"EMPRESA, MODULO, NUMERO, VALOR"_s, 0);
    for (const int company : {1, 2}) {
        rows.row({company, u"MAL", 10, u"S"});
        rows.row({company, u"MAL", 20, u"N"});
        rows.row({company, u"MAL", 50, u"N"});
        rows.row({company, u"MAL", 80, u"S"});
        rows.row({company, u"MAT", 120, u"S"});
        rows.row({company, u"VEN", 190, u"S"});
    }
}

} // namespace Demo
