// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "registries/pricecopy.h"

#include "module/host_services/clock.h"
#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "registries/pricerules.h"

#include <QSet>

using namespace Funcoes;
using namespace Qt::StringLiterals;

namespace {

/// Product and colour group: which row of a region it is.
using Row = std::pair<QString, QString>;

Row rowOf(const TDataSet &prices)
{
    return {prices.AsString(u"CODIGO"_s), prices.AsString(u"GRUPO_COR"_s)};
}

QString ofRegion(const QString &columns, const QString &region)
{
    return u"SELECT "_s + columns + u" FROM "_s + DBLocal(u"TABPRECO"_s) + u" WHERE REGIAO = "_s + Aspas(region);
}

QSet<Row> rowsOf(TTIDatabase &database, const QString &region)
{
    TTIQuery prices;
    prices.SetDatabase(&database);
    prices.SQL.add(ofRegion(u"CODIGO, GRUPO_COR"_s, region));
    QSet<Row> rows;
    for (prices.Open(); !prices.Eof(); prices.Next())
        rows.insert(rowOf(prices));
    return rows;
}

QString text(const QVariant &value)
{
    return value.isNull() ? u"NULL"_s : Aspas(value.toString());
}

/// The copy's columns, besides its region, with their literals.
QVector<std::pair<QString, QString>> columnsOf(const TDataSet &price, double percent)
{
    const QDateTime now = Clock::now();
    QVector<std::pair<QString, QString>> columns{
        {u"DT_ALTERACAO"_s, Aspas(Format::sqlDate(now.date()) + u' ' + Format::time(now.time()))}};
    for (const QString &name : {u"CODIGO"_s, u"GRUPO_COR"_s, u"DESC_PRODUTO"_s, u"COLECAO"_s, u"ACRESCIMO"_s,
             u"DESCONTO"_s, u"COMISSAO"_s, u"ORIGEM"_s})
        columns.append({name, text(price.value(name))});
    for (const QString &name : PriceRules::instalments() + QStringList{u"PRECO_MEDIO"_s}) {
        const QVariant value = price.value(name);
        columns.append(
            {name, value.isNull() ? u"NULL"_s : PermanecePonto(PriceRules::raised(value.toDouble(), percent))});
    }
    return columns;
}

void insertPrice(TTIDatabase &database, const TDataSet &price, const PriceCopy &copy)
{
    QStringList names{u"REGIAO"_s};
    QStringList values{Aspas(copy.to)};
    for (const auto &[name, value] : columnsOf(price, copy.percent)) {
        names.append(name);
        values.append(value);
    }
    database.run(u"INSERT INTO "_s + DBLocal(u"TABPRECO"_s) + u" ("_s + names.join(u", "_s) + u") VALUES ("_s
        + values.join(u", "_s) + u')');
}

/// Columns that others have added to the table keep what they hold.
void replacePrice(TTIDatabase &database, const TDataSet &price, const PriceCopy &copy)
{
    const auto equals = [&price](const QString &name) {
        const QVariant value = price.value(name);
        return u" AND "_s + name + (value.isNull() ? u" IS NULL"_s : u" = "_s + Aspas(value.toString()));
    };
    QStringList changes;
    for (const auto &[name, value] : columnsOf(price, copy.percent))
        changes.append(name + u" = "_s + value);
    database.run(u"UPDATE "_s + DBLocal(u"TABPRECO"_s) + u" SET "_s + changes.join(u", "_s) + u" WHERE REGIAO = "_s
        + Aspas(copy.to) + equals(u"CODIGO"_s) + equals(u"GRUPO_COR"_s));
}

} // namespace

bool lockRegion(TTIDatabase &database, const QString &region)
{
    const QString statement = u"UPDATE "_s + DBLocal(u"REGIAO"_s) + u" SET REGIAO = "_s + Aspas(region)
        + u" WHERE REGIAO = "_s + Aspas(region);
    return database.run(statement).numRowsAffected() == 1;
}

PriceCount countPrices(TTIDatabase &database, const PriceCopy &copy)
{
    const QSet<Row> source = rowsOf(database, copy.from);
    const QSet<Row> added = source - rowsOf(database, copy.to);
    return {int(added.size()), int(source.size() - added.size())};
}

PriceCount copyPrices(TTIDatabase &database, const PriceCopy &copy)
{
    Save save(database);
    // Two stations that copy to one region do so one after the other, so that no price gets there twice.
    if (!lockRegion(database, copy.to))
        throw EDatabaseError(EDatabaseError::Category::Conflict, {}, u"A região não existe mais."_s, {});
    TTIQuery source;
    source.SetDatabase(&database);
    source.SQL.add(ofRegion(u"*"_s, copy.from));
    QSet<Row> present = rowsOf(database, copy.to);
    PriceCount count;
    for (source.Open(); !source.Eof(); source.Next()) {
        if (!present.contains(rowOf(source))) {
            insertPrice(database, source, copy);
            present.insert(rowOf(source)); // a row that is there twice is copied once
            ++count.added;
            continue;
        }
        ++count.present;
        if (copy.replace)
            replacePrice(database, source, copy);
    }
    save.CommitRetaining();
    return count;
}
