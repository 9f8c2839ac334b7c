// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/catalogue.h"
#include "demo/mill.h"
#include "demo/subjects.h"

#include <array>
#include <span>

using namespace Qt::StringLiterals;

namespace Demo {

namespace {

struct ClientName
{
    QStringView name;
    QStringView group;
};

constexpr std::array clientsOfTheFirst{
    ClientName{u"Confecções Flor de Ipê Ltda", u"01"},
    ClientName{u"Malhas Dona Aurora Ltda", u"02"},
    ClientName{u"Vestuário Três Marias Ltda", u"01"},
    ClientName{u"Pijamas Sono Leve Ltda", u"01"},
    ClientName{u"Uniformes Padrão do Sul Ltda", u"03"},
    ClientName{u"Moda Íntima Bela Rosa Ltda", u"01"},
    ClientName{u"Camisaria Vento do Norte Ltda", u"01"},
    ClientName{u"Confecções Pé de Moleque Ltda", u"04"},
    ClientName{u"Arrancada Artigos Esportivos Ltda", u"05"},
    ClientName{u"Ateliê Água Clara Ltda", u"01"},
    ClientName{u"Irmãos Tavarelli Confecções Ltda", u"01"},
    ClientName{u"Corpo Vivo Moda Fitness Ltda", u"05"},
    ClientName{u"Bebê Algodão-Doce Confecções Ltda", u"04"},
    ClientName{u"Morro Verde Têxtil Ltda", u"02"},
    ClientName{u"Estação da Malha Comércio Ltda", u"02"},
    ClientName{u"Distribuidora de Malhas Paineira Ltda", u"02"},
    ClientName{u"Lã & Linho Confecções Ltda", u"01"},
    ClientName{u"Serrana do Vale Indústria de Roupas Ltda", u"01"},
    ClientName{u"Chão de Estrelas Modas Ltda", u"01"},
    ClientName{u"Manhã de Sol Confecções Ltda", u"04"},
    ClientName{u"Linha Reta Roupas Íntimas Ltda", u"01"},
    ClientName{u"Capim-Dourado Confecções Ltda", u"01"},
    ClientName{u"Obra-Prima Roupas Profissionais Ltda", u"03"},
    ClientName{u"Confecções São Gualter Ltda", u"01"},
    ClientName{u"Olho d'Água Vestuário Ltda", u"01"},
};

constexpr std::array clientsOfTheSecond{
    ClientName{u"Ponto Cheio Confecções Ltda", u"01"},
    ClientName{u"Malhas Ribeirão Manso Ltda", u"02"},
    ClientName{u"Maré Alta Moda Praia Ltda", u"05"},
    ClientName{u"Boa Estampa Camisetas Ltda", u"01"},
    ClientName{u"Vila Esperança Confecções Ltda", u"01"},
    ClientName{u"Bola de Meia Artigos Esportivos Ltda", u"05"},
    ClientName{u"Primeiro Passo Roupas Infantis Ltda", u"04"},
    ClientName{u"Pau-d'Alho Uniformes Ltda", u"03"},
};

constexpr std::array firstNames{QStringView(u"Ana Lúcia"), QStringView(u"João"), QStringView(u"Márcia"),
    QStringView(u"Cláudio"), QStringView(u"Terezinha"), QStringView(u"Sérgio"), QStringView(u"Conceição"),
    QStringView(u"Antônio"), QStringView(u"Rosângela"), QStringView(u"Luís"), QStringView(u"Inês"),
    QStringView(u"Fábio"), QStringView(u"Patrícia"), QStringView(u"Vinícius"), QStringView(u"Débora"),
    QStringView(u"Otávio"), QStringView(u"Sônia")};
constexpr std::array familyNames{QStringView(u"Gonçalves"), QStringView(u"Araújo"), QStringView(u"Pacheco"),
    QStringView(u"Simões"), QStringView(u"Magalhães"), QStringView(u"Schmitt"), QStringView(u"da Conceição"),
    QStringView(u"Assunção"), QStringView(u"Brandão"), QStringView(u"Zimmermann"), QStringView(u"Peçanha"),
    QStringView(u"Galvão"), QStringView(u"dos Anjos")};

/// The number of first names and that of family names have no common divisor: no name comes twice.
QString workerName(qsizetype number)
{
    return u"%1 %2"_s.arg(firstNames[number * 5 % firstNames.size()], familyNames[number * 4 % familyNames.size()]);
}

void addClients(Mill &mill, std::span<const ClientName> names)
{
    for (const ClientName &client : names) {
        mill.clients.append({padded(int(mill.clients.size()) + 1, 5), client.name.toString(), client.group.toString()});
    }
}

void addMachines(Mill &mill, std::initializer_list<MachineKinds> kinds)
{
    for (const MachineKinds kind : kinds)
        mill.machines.append({padded(int(mill.machines.size()) + 1, 3), &machineKinds()[kind]});
}

/// A code tells the shift: 203 is the third knitter of the second shift, 290 its inspector.
void addStaff(Mill &mill, int knittersPerShift)
{
    qsizetype number = 40 * qsizetype(mill.company);
    const auto add = [&](int code, int shift, bool active, bool inspector) {
        mill.workers.append({QString::number(code), workerName(number++), shift, active, inspector});
    };
    for (int shift = 1; shift <= 4; ++shift) {
        for (int i = 1; i <= knittersPerShift; ++i)
            add(shift * 100 + i, shift, true, false);
        if (shift % 2 == 0)
            add(shift * 100 + 1 + knittersPerShift, shift, false, false);
        add(shift * 100 + 90, shift, true, true);
    }
    add(501, 0, true, false);
}

void collectStaff(const Mill &mill, Inserter &rows)
{
    rows.into(u"TURNO"_s, u"TURNO, DESCRICAO, NOTURNO"_s, mill.company);
    rows.row({u"1", u"1º turno (05h às 11h)", u"N"});
    rows.row({u"2", u"2º turno (11h às 17h)", u"N"});
    rows.row({u"3", u"3º turno (17h às 23h)", u"N"});
    rows.row({u"4", u"4º turno, noturno (23h às 05h)", u"S"});

    rows.into(u"PESSOAL"_s, u"CODIGO, NOME, TURNO, ATIVO"_s, mill.company);
    for (const Worker &worker : mill.workers) {
        const bool office = worker.shift == 0;
        rows.row({worker.code, worker.name, office ? Literal(nullptr) : Literal(QString::number(worker.shift)),
            office ? Literal(nullptr) : Literal(worker.active ? u"S" : u"N")});
    }
}

} // namespace

void addPeople(Mill &mill)
{
    if (mill.company == 1) {
        addClients(mill, clientsOfTheFirst);
        addMachines(mill,
            {Fine, Fine, Fine, Fine, Fine, Fine, Fine, Coarse, Coarse, Coarse, Coarse, Double, Double, Jacquard,
                Jacquard});
        addStaff(mill, 5);
    } else {
        addClients(mill, clientsOfTheSecond);
        addMachines(mill, {Fine, Fine, Coarse, Double, Jacquard});
        addStaff(mill, 2);
    }
}

void collectPeople(const Mill &mill, Inserter &rows)
{
    rows.into(u"ENTIDADE"_s, u"CODCLI, NOME, GRUPO"_s, mill.company);
    for (const Client &client : mill.clients)
        rows.row({client.code, client.name, client.group});
    rows.row({u"90001", u"Fiação Pedra Redonda Ltda (fornecedor)", u"90"});
    rows.row({u"90002", u"Transportadora Curva do Rio Ltda", u"90"});

    rows.into(u"MAQUINA"_s, u"MAQUINA, DESCRICAO, NOME"_s, mill.company);
    for (const Machine &machine : mill.machines)
        rows.row({machine.code, machine.kind->description, u"%1 nº %2"_s.arg(machine.kind->maker, machine.code)});

    collectStaff(mill, rows);
}

} // namespace Demo
