// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/reportfilters.h"

#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"

using namespace Qt::StringLiterals;

namespace ReportFilters {

QString within(const QString &column, QDate from, QDate to)
{
    // Both ends always stand in the statement: the earliest date that can be typed, and the last that engines know.
    const QDate first = from.isValid() ? from : QDate(1900, 1, 1);
    const QDate last = to.isValid() ? to : QDate(9999, 12, 31);
    return u"%1 >= %2 AND %1 <= %3"_s.arg(
        column, Funcoes::Aspas(Format::sqlDate(first)), Funcoes::Aspas(Format::sqlDate(last)));
}

QString equals(const QString &column, const QString &value)
{
    const QString text = value.trimmed();
    return text.isEmpty() ? QString() : u" AND "_s + column + u" = "_s + Funcoes::Aspas(text);
}

QString periodText(QDate from, QDate to)
{
    if (from.isValid() && to.isValid())
        return Format::date(from) + u" a "_s + Format::date(to);
    if (from.isValid())
        return u"a partir de "_s + Format::date(from);
    return to.isValid() ? u"até "_s + Format::date(to) : QString();
}

Text &Text::add(const QString &label, const QString &value)
{
    if (const QString shown = value.trimmed(); !shown.isEmpty())
        m_parts.append(label + u": "_s + shown);
    return *this;
}

QString Text::text() const
{
    return m_parts.join(u" · "_s);
}

} // namespace ReportFilters
