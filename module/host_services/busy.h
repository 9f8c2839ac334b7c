// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/funcoes.h"

/// The busy marker for as long as it lives, whichever way the work ends.
class Busy
{
public:
    explicit Busy(QObject *who)
        : m_who(who)
    {
        Funcoes::Ocupado(true, m_who);
    }
    ~Busy() { Funcoes::Ocupado(false, m_who); }
    Q_DISABLE_COPY_MOVE(Busy)

private:
    QObject *m_who;
};
