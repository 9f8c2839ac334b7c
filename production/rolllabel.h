// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/query.h"

struct ReportCall;

/// What every roll label says of its yarn: the fabric's composition, and the lots that the order reserved.
class RollLabelYarn
{
public:
    RollLabelYarn(const QString &of, const QString &fabric);

    /// Adds "QryComposicao" and "QryLotes"; the rows must outlive the call.
    void addTo(ReportCall &call);
    /// The function of roll labels that the engine does not know: ZEROE(text;width) fills up with zeros from the left.
    static QVariant answer(const QString &function, const QVariantList &arguments);

private:
    TTIQuery m_composition;
    TTIQuery m_lots;
};
