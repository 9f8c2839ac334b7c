// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// The knitting-mill module's package file: its units, in the order in which they start.

#include "invoicing/malfatnf.h"
#include "invoicing/mallibfat.h"
#include "invoicing/nfterceiros.h"
#include "module/package.h"
#include "production/acertomalha.h"
#include "production/baixaof.h"
#include "production/ordembaixa.h"
#include "production/ordembaixabarra.h"
#include "production/ordemfab.h"
#include "registries/cadalimentadores.h"
#include "registries/caddefmalha.h"
#include "registries/cadraport.h"
#include "registries/mattabpreco.h"
#include "reports/reldocto.h"
#include "reports/relestoquemat.h"
#include "reports/relmalsaidas.h"
#include "reports/relmattabpre.h"
#include "reports/relordemfab.h"
#include "reports/relpend.h"
#include "reports/relprod.h"
#include "reports/relregistros.h"

namespace {

Package &package()
{
    static Package units({&Nfterceiros::unit(), &Reldocto::unit(), &Ordemfab::unit(), &Relpend::unit(),
        &Relprod::unit(), &Relregistros::unit(), &Relestoquemat::unit(), &Acertomalha::unit(), &Relordemfab::unit(),
        &Mattabpreco::unit(), &Relmattabpre::unit(), &Malfatnf::unit(), &Relmalsaidas::unit(), &Ordembaixabarra::unit(),
        &Caddefmalha::unit(), &Cadalimentadores::unit(), &Cadraport::unit(), &Ordembaixa::unit(), &Baixaof::unit(),
        &Mallibfat::unit()});
    return units;
}

} // namespace

extern "C" {

/// Runs when the package is loaded, and again for each load of the same process.
Q_DECL_EXPORT void qenMalharia_initialize()
{
    package().initialize();
}

Q_DECL_EXPORT void qenMalharia_finalize()
{
    package().finalize();
}
}
