// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QStringList>

/// What a report was asked for, as its statement and its paper say it.
namespace ReportFilters {

/// "DATA >= '03/01/2026' AND DATA <= '03/31/2026'". An invalid date leaves its side open; a row without a date lies in
/// no period at all.
QString within(const QString &column, QDate from, QDate to);

/// " AND NUM_OF = '000012'"; nothing when the value is blank.
QString equals(const QString &column, const QString &value);

/// "01/03/2026 a 31/03/2026", "a partir de 01/03/2026", "até 31/03/2026", or nothing.
QString periodText(QDate from, QDate to);

/// "Período: 01/03/2026 a 31/03/2026 · Cliente: 00001 Confecções Serra Azul Ltda".
class Text
{
public:
    /// What is blank was not asked for and is not mentioned.
    Text &add(const QString &label, const QString &value);
    QString text() const;

private:
    QStringList m_parts;
};

} // namespace ReportFilters
