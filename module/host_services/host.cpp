// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/host.h"

#include "module/host_services/errors.h"

using namespace Qt::StringLiterals;

namespace {

Host *theHost = nullptr;

} // namespace

Host::Host()
{
    theHost = this;
}

Host::~Host()
{
    theHost = nullptr;
}

Host &Host::current()
{
    if (!theHost)
        throw EProgramming(u"O programa ainda não foi iniciado."_s);
    return *theHost;
}
