// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/inventory.h"

#include "module/host_services/clock.h"
#include "module/host_services/database.h"
#include "module/host_services/dataset.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace {

/// The columns of the inventory table beside the ones of the data set, -1 where the data set has none.
class Reader
{
public:
    Reader(const InventoryColumns &columns, TDataSet &rows)
        : m_rows(rows)
        , m_code(index(columns.codigo))
        , m_client(index(columns.codcli))
    {
        add(u"COR"_s, columns.cor);
        add(u"TAM"_s, columns.tam);
        add(u"POSSE"_s, columns.posse);
        add(u"UNITARIO"_s, columns.unitario);
        add(u"QTDE"_s, columns.quantidade);
        add(u"UN"_s, columns.un);
        add(u"DESCRICAO"_s, columns.descricao);
        add(u"DEPOSITO"_s, columns.deposito);
        add(u"LOTE"_s, columns.lote);
    }

    QString names() const { return m_names.join(u", "_s); }
    QString code(int row) const { return literal(row, m_code); }
    QString client(int row) const { return literal(row, m_client); }

    QString values(int row) const
    {
        QStringList literals;
        for (const int field : m_fields)
            literals.append(literal(row, field));
        return literals.join(u", "_s);
    }

private:
    int index(const QString &name) const { return name.isEmpty() ? -1 : m_rows.fieldIndex(name); }

    void add(const QString &column, const QString &name)
    {
        m_names.append(column);
        m_fields.append(index(name));
    }

    QString literal(int row, int field) const
    {
        const QVariant value = field < 0 ? QVariant() : m_rows.cell(row, field);
        if (value.isNull() || value.toString().isEmpty())
            return u"NULL"_s;
        return m_rows.fields()[field].isNumeric() ? Funcoes::PermanecePonto(value.toDouble())
                                                  : Funcoes::Aspas(value.toString());
    }

    TDataSet &m_rows;
    int m_code;
    int m_client;
    QStringList m_names;
    QVector<int> m_fields;
};

} // namespace

int Inventory::create(TTIDatabase &database, int company, const InventoryColumns &columns, TDataSet &rows)
{
    while (rows.canFetchMore())
        rows.fetchMore();
    const Reader reader(columns, rows);
    const QString table = Funcoes::DBLocalEmpresa(u"INVENTARIO"_s, company);
    const QString today = Funcoes::Aspas(Format::sqlDate(Clock::today()));
    QSet<QString> replaced;
    int written = 0;
    Save save(database);
    for (int row = 0; row < rows.rowCount(); ++row) {
        const QString code = reader.code(row);
        const QString client = reader.client(row);
        if (code == u"NULL"_s)
            continue;
        const QString sameClient = client == u"NULL"_s ? u"CODCLI IS NULL"_s : u"CODCLI = "_s + client;
        if (const QString key = sameClient + u' ' + code; !replaced.contains(key)) {
            replaced.insert(key);
            database.run(u"DELETE FROM %1 WHERE DATA = %2 AND EMPRESA = %3 AND CODIGO = %4 AND %5"_s.arg(
                table, today, QString::number(company), code, sameClient));
        }
        database.run(u"INSERT INTO %1 (DATA, EMPRESA, CODIGO, CODCLI, %2) VALUES (%3, %4, %5, %6, %7)"_s.arg(
            table, reader.names(), today, QString::number(company), code, client, reader.values(row)));
        ++written;
    }
    save.CommitRetaining();
    return written;
}
