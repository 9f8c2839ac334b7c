// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "demo/inserter.h"

#include "module/host_services/database.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"

using namespace Qt::StringLiterals;

namespace Demo {

namespace {

QString exact(qint64 value, int decimals)
{
    const QString digits = QString::number(qAbs(value)).rightJustified(decimals + 1, u'0');
    return (value < 0 ? u"-"_s : QString()) + digits.chopped(decimals) + u'.' + digits.right(decimals);
}

} // namespace

Literal::Literal(const QString &text)
    : m_text(Funcoes::Aspas(text))
{
}

Literal::Literal(QStringView text)
    : Literal(text.toString())
{
}

Literal::Literal(const char16_t *text)
    : Literal(QStringView(text))
{
}

Literal::Literal(int number)
    : m_text(QString::number(number))
{
}

Literal::Literal(double number)
    : m_text(Funcoes::PermanecePonto(number))
{
}

Literal::Literal(QDate date)
    : m_text(Funcoes::Aspas(Format::sqlDate(date)))
{
}

Literal::Literal(QTime time)
    : m_text(Funcoes::Aspas(Format::time(time)))
{
}

Literal::Literal(std::nullptr_t)
    : m_text(u"NULL"_s)
{
}

Literal Literal::kilograms(Grams grams)
{
    Literal literal;
    literal.m_text = exact(grams, 3);
    return literal;
}

Literal Literal::money(Cents cents)
{
    Literal literal;
    literal.m_text = exact(cents, 2);
    return literal;
}

void Inserter::into(const QString &table, const QString &columns, int company)
{
    const QString name = company > 0 ? Funcoes::DBLocalEmpresa(table, company) : Funcoes::DBLocal(table, false);
    m_head = u"INSERT INTO %1 (%2) VALUES ("_s.arg(name, columns);
}

void Inserter::row(std::initializer_list<Literal> values)
{
    QStringList texts;
    for (const Literal &value : values)
        texts.append(value.text());
    m_statements.append(m_head + texts.join(u", "_s) + u')');
}

void Inserter::run(TTIDatabase &database, const std::function<void(qsizetype, qsizetype)> &progress) const
{
    for (qsizetype i = 0; i < m_statements.size(); ++i) {
        database.run(m_statements[i]);
        if (i % 100 == 99)
            progress(i + 1, m_statements.size());
    }
}

} // namespace Demo
