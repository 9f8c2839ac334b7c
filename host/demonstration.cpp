// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/demonstration.h"

#include "host/qenhost.h"
#include "module/host_services/classregistry.h"
#include "module/host_services/errors.h"

using namespace Qt::StringLiterals;

int runDemonstration(QenHost &, const QString &)
{
    for (const QString &screen : {u"TfmMalhaOF"_s, u"TfmMalhaOFBaixaBarra"_s}) {
        if (!ClassRegistry::find(screen))
            throw EQen(u"A demonstração precisa da tela %1, que não está registrada."_s.arg(screen));
    }
    return 0;
}
