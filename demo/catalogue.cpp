// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/catalogue.h"

namespace Demo {

namespace {

constexpr std::array machines{
    MachineKind{u"Monofrontura 30\" F28, 96 alimentadores", u"Giramalha GM-30", 30, 28, 96},
    MachineKind{u"Monofrontura 30\" F20, 90 alimentadores", u"Giramalha GM-20 Moletom", 30, 20, 90},
    MachineKind{u"Dupla frontura 34\" F18, 68 alimentadores", u"Rotalha RD-34", 34, 18, 68},
    MachineKind{u"Jacquard eletrônica 30\" F24, 72 alimentadores", u"Teardez Jota 72", 30, 24, 72},
};

enum Yarns { Combed30, Carded24, OpenEnd10, Blend30, Viscose30, Polyester150, Polyester75, Polyamide80, Elastane40 };

constexpr std::array yarns{
    YarnKind{u"Fio algodão penteado 30/1", u"30/1", u"100", 278'500, false},
    YarnKind{u"Fio algodão cardado 24/1", u"24/1", u"100", 241'000, false},
    YarnKind{u"Fio algodão open end 10/1", u"10/1", u"100", 178'000, true},
    YarnKind{u"Fio PV 30/1 (67% poliéster, 33% viscose)", u"30/1", u"100", 213'500, false},
    YarnKind{u"Fio viscose 30/1", u"30/1", u"100", 256'000, false},
    YarnKind{u"Fio poliéster texturizado 150/48", u"150/48", u"10", 124'000, false},
    YarnKind{u"Fio poliéster texturizado 75/36", u"75/36", u"10", 143'500, false},
    YarnKind{u"Fio poliamida texturizada 80/68", u"80/68", u"10", 398'000, false},
    YarnKind{u"Elastano 40 denier", u"40D", u"10", 512'000, true},
};

constexpr std::array fabrics{
    FabricKind{u"Meia malha 30/1 penteada", u"150", Fine, 160, 120, 22, 395, false, false,
        u"Malha tubular. Não dobrar o rolo; embalar em plástico fechado.", {{{Combed30, 100, 96, 275}}}},
    FabricKind{u"Cotton com elastano", u"150", Fine, 190, 175, 22, 520, false, false,
        u"Elastano em todos os alimentadores. Conferir a tensão a cada troca de turno.",
        {{{Combed30, 92, 96, 290}, {Elastane40, 8, 96, 105}}}},
    FabricKind{u"Meia malha PV", u"150", Fine, 155, 120, 21, 385, false, false,
        u"Limpar os porta-fios a cada rolo: o fio solta fibra.", {{{Blend30, 100, 96, 278}}}},
    FabricKind{u"Meia malha listrada fio tinto", u"150", Fine, 165, 120, 20, 640, true, true,
        u"Acompanhar o raport. Emendar na troca de cone somente dentro da listra.", {{{Combed30, 100, 96, 276}}}},
    FabricKind{u"Viscose com elastano", u"150", Fine, 210, 170, 21, 560, false, false,
        u"Fio sensível: não ultrapassar 22 rpm.", {{{Viscose30, 94, 96, 300}, {Elastane40, 6, 96, 108}}}},
    FabricKind{u"Piquet PA", u"150", Coarse, 210, 110, 24, 480, true, false,
        u"Dois comprimentos de ponto com o mesmo fio: conferir os dois no início da OF.",
        {{{Combed30, 58, 46, 282}, {Combed30, 42, 44, 296}}}},
    FabricKind{u"Moletom três cabos", u"150", Coarse, 310, 92, 28, 495, false, false,
        u"Felpa para dentro. Revisar 100% dos rolos.",
        {{{Combed30, 48, 60, 340}, {Polyester75, 9, 60, 310}, {OpenEnd10, 43, 30, 165}}}},
    FabricKind{u"Moletinho dois cabos", u"150", Coarse, 230, 95, 25, 430, false, false, u"Felpa para dentro.",
        {{{Carded24, 62, 60, 335}, {OpenEnd10, 38, 30, 160}}}},
    FabricKind{u"Ribana 1x1", u"150", Double, 220, 85, 22, 450, false, false,
        u"Para golas e punhos do mesmo lote da meia malha do cliente.", {{{Combed30, 100, 68, 265}}}},
    FabricKind{u"Ribana 2x1 com elastano", u"150", Double, 260, 88, 23, 530, false, false, u"Elastano alternado.",
        {{{Combed30, 95, 68, 270}, {Elastane40, 5, 34, 110}}}},
    FabricKind{u"Suplex poliamida", u"15", Fine, 290, 160, 24, 890, false, false,
        u"Usar luvas ao retirar o rolo: marca com facilidade.",
        {{{Polyamide80, 88, 96, 285}, {Elastane40, 12, 96, 100}}}},
    FabricKind{u"Suplex poliéster", u"15", Fine, 280, 160, 24, 690, false, false,
        u"Usar luvas ao retirar o rolo: marca com facilidade.",
        {{{Polyester75, 86, 96, 285}, {Elastane40, 14, 96, 100}}}},
    FabricKind{u"Jacquard dupla face", u"15", Jacquard, 330, 150, 26, 1150, true, false,
        u"Conferir o desenho no primeiro metro de cada rolo.",
        {{{Polyester150, 62, 48, 310}, {Combed30, 38, 24, 290}}}},
};

constexpr std::array colours{
    ColourKind{u"000010", u"Cru", u"#efe6d0"},
    ColourKind{u"000020", u"Branco", u"#fbfbf8"},
    ColourKind{u"000030", u"Preto", u"#1e1e20"},
    ColourKind{u"000040", u"Azul-marinho", u"#1b2a49"},
    ColourKind{u"000050", u"Mescla claro", u"#c3c6c9"},
    ColourKind{u"000060", u"Vermelho", u"#b71c2b"},
    ColourKind{u"000070", u"Verde-musgo", u"#5a6238"},
    ColourKind{u"000080", u"Azul-royal", u"#2244a8"},
    ColourKind{u"000090", u"Cinza-chumbo", u"#4a4e54"},
    ColourKind{u"000100", u"Rosa-bebê", u"#f3c1cb"},
    ColourKind{u"000110", u"Amarelo-ouro", u"#e6a817"},
    ColourKind{u"000120", u"Bordô", u"#6b1a2a"},
    ColourKind{u"000130", u"Areia", u"#d2b98f"},
    ColourKind{u"000140", u"Turquesa", u"#1fa7a4"},
    ColourKind{u"000150", u"Lilás", u"#b79bcf"},
    ColourKind{u"000160", u"Laranja-queimado", u"#c4571f"},
};

} // namespace

std::span<const MachineKind> machineKinds()
{
    return machines;
}

std::span<const YarnKind> yarnKinds()
{
    return yarns;
}

std::span<const FabricKind> fabricKinds()
{
    return fabrics;
}

std::span<const ColourKind> colourKinds()
{
    return colours;
}

} // namespace Demo
