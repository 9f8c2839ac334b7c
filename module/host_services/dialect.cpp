// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/dialect.h"

#include "module/host_services/firebirdcolumns.h"
#include "module/host_services/sqltext.h"

#include <QSqlQuery>
#include <QSqlRecord>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

using Category = EDatabaseError::Category;

class Firebird : public Dialect
{
public:
    QString driver() const override { return u"QIBASE"_s; }
    QString connectOptions() const override { return u"ISC_DPB_LC_CTYPE=UTF8"_s; }
    QStringList sessionStatements() const override { return {}; }

    QStringList databaseStatements() const override
    {
        return {collation(u"QEN_NAME"_s, u"FROM UNICODE"_s),
            collation(u"QEN_NUMBER"_s, u"FROM UNICODE ''NUMERIC-SORT=1''"_s),
            uR"(CREATE OR ALTER FUNCTION UDF_NVL (V NUMERIC(18,3)) RETURNS NUMERIC(18,3) AS
                BEGIN RETURN COALESCE(V, 0); END)"_s};
    }

    QString adapted(const QString &statement) const override { return statement; }

    QVariant exact(const QVariant &value) const override
    {
        // The driver makes 99990 thousandths 99.99000000000001. Fifteen digits are all that a decimal column holds.
        if (value.typeId() != QMetaType::Double || value.isNull())
            return value;
        const double read = value.toDouble();
        // Nearly all are thousandths; the nearest of them, less than half a fifteenth digit away, is what the text of
        // fifteen digits would give, and sooner.
        const double thousandths = std::nearbyint(read * 1000) / 1000;
        if (std::abs(read) < 1e12 && std::abs(thousandths - read) <= std::abs(read) * 4e-16)
            return thousandths;
        return QByteArray::number(read, 'g', 15).toDouble();
    }

    QString firstRows(const QString &, int) const override { return {}; }
    QSqlRecord shapeOf(const QSqlQuery &query) const override { return FirebirdColumns::of(query); }

    Category category(const QSqlError &error) const override
    {
        // The driver gives the SQLCODE; conflicts and lost connections share theirs with other failures.
        const QString code = error.nativeErrorCode();
        const QString text = error.databaseText() + error.driverText();
        if (code == u"-803"_s)
            return Category::Unique;
        if (code == u"-913"_s || text.contains(u"deadlock"_s) || text.contains(u"update conflicts"_s)
            || text.contains(u"lock conflict"_s))
            return Category::Conflict;
        if (error.type() == QSqlError::ConnectionError || code == u"-902"_s || code == u"-901"_s)
            return Category::Connection;
        return Category::Statement;
    }

    QString collate(ColumnKind kind) const override
    {
        switch (kind) {
        case ColumnKind::Name:
            return u" COLLATE QEN_NAME"_s;
        case ColumnKind::Number:
            return u" COLLATE QEN_NUMBER"_s;
        default:
            return {};
        }
    }

    QString columnsOf(const QString &table) const override
    {
        return u"SELECT TRIM(RDB$FIELD_NAME) AS COLUNA FROM RDB$RELATION_FIELDS WHERE RDB$RELATION_NAME = %1"_s.arg(
            SqlText::quoted(table.toUpper()));
    }

    QString indexesOf(const QString &table) const override
    {
        return u"SELECT TRIM(RDB$INDEX_NAME) AS INDICE FROM RDB$INDICES WHERE RDB$RELATION_NAME = %1"_s.arg(
            SqlText::quoted(table.toUpper()));
    }

    QString addColumn(const QString &table, const QString &column, const QString &type) const override
    {
        return u"ALTER TABLE %1 ADD %2 %3"_s.arg(table, column, type);
    }

    QString createIndex(
        const QString &index, const QString &table, const QStringList &columns, bool descending) const override
    {
        return u"CREATE %1 INDEX %2 ON %3 (%4)"_s.arg(
            descending ? u"DESCENDING"_s : QString(), index, table, columns.join(u", "_s));
    }

    QString contains(const QString &column, const QString &literal) const override
    {
        return u"%1 CONTAINING %2"_s.arg(column, literal);
    }

private:
    static QString collation(const QString &name, const QString &definition)
    {
        return uR"(EXECUTE BLOCK AS BEGIN
            IF (NOT EXISTS (SELECT 1 FROM RDB$COLLATIONS WHERE RDB$COLLATION_NAME = '%1')) THEN
                EXECUTE STATEMENT 'CREATE COLLATION %1 FOR UTF8 %2'; END)"_s.arg(name, definition);
    }
};

class PostgreSQL : public Dialect
{
public:
    QString driver() const override { return u"QPSQL"_s; }
    QString connectOptions() const override { return u"connect_timeout=5"_s; }

    QStringList sessionStatements() const override
    {
        // A station that hangs in the middle of a save keeps its rows: the others get a message instead of hanging too.
        return {u"SET datestyle = 'ISO, MDY'"_s, u"SET standard_conforming_strings = on"_s,
            u"SET client_min_messages = warning"_s, u"SET lock_timeout = '30s'"_s};
    }

    QStringList databaseStatements() const override
    {
        return {u"CREATE COLLATION IF NOT EXISTS qen_name (provider = icu, locale = 'pt-BR')"_s,
            u"CREATE COLLATION IF NOT EXISTS qen_number (provider = icu, locale = 'und-u-kn-true')"_s,
            uR"(CREATE OR REPLACE FUNCTION udf_nvl (v NUMERIC) RETURNS NUMERIC IMMUTABLE LANGUAGE SQL
                AS $$ SELECT COALESCE(v, 0) $$)"_s};
    }

    QString adapted(const QString &statement) const override { return SqlText::withoutAliasInSet(statement); }

    QString firstRows(const QString &select, int count) const override
    {
        return u"SELECT * FROM ("_s + select + u"\n) AS FIRST_ROWS LIMIT "_s + QString::number(count);
    }

    QVariant exact(const QVariant &value) const override { return value; }
    QSqlRecord shapeOf(const QSqlQuery &query) const override { return query.record(); }

    Category category(const QSqlError &error) const override
    {
        const QString state = error.nativeErrorCode();
        if (state == u"23505"_s)
            return Category::Unique;
        if (state == u"40001"_s || state == u"40P01"_s || state == u"55P03"_s)
            return Category::Conflict;
        if (error.type() == QSqlError::ConnectionError || state.startsWith(u"08"_s) || state.startsWith(u"57P"_s)
            || (state.isEmpty() && error.databaseText().contains(u"connection"_s)))
            return Category::Connection;
        return Category::Statement;
    }

    QString collate(ColumnKind kind) const override
    {
        switch (kind) {
        case ColumnKind::Name:
            return u" COLLATE qen_name"_s;
        case ColumnKind::Number:
            return u" COLLATE qen_number"_s;
        default:
            return u" COLLATE \"C\""_s;
        }
    }

    QString columnsOf(const QString &table) const override
    {
        return uR"(SELECT UPPER(column_name) AS COLUNA FROM information_schema.columns
                   WHERE table_schema = current_schema() AND table_name = %1)"_s.arg(SqlText::quoted(table.toLower()));
    }

    QString indexesOf(const QString &table) const override
    {
        return uR"(SELECT UPPER(indexname) AS INDICE FROM pg_indexes
                   WHERE schemaname = current_schema() AND tablename = %1)"_s.arg(SqlText::quoted(table.toLower()));
    }

    QString addColumn(const QString &table, const QString &column, const QString &type) const override
    {
        return u"ALTER TABLE %1 ADD COLUMN %2 %3"_s.arg(table, column, type);
    }

    QString createIndex(
        const QString &index, const QString &table, const QStringList &columns, bool descending) const override
    {
        return u"CREATE INDEX %1 ON %2 (%3%4)"_s.arg(
            index, table, columns.join(descending ? u" DESC, "_s : u", "_s), descending ? u" DESC"_s : QString());
    }

    QString contains(const QString &column, const QString &literal) const override
    {
        // The text is looked for as it stands: its own per cent signs and underscores mean themselves.
        return u"POSITION(UPPER(%2 COLLATE qen_name) IN UPPER(CAST(%1 AS TEXT) COLLATE qen_name)) > 0"_s.arg(
            column, literal);
    }
};

} // namespace

QString Dialect::columnType(ColumnKind kind, int length) const
{
    switch (kind) {
    case ColumnKind::Code:
    case ColumnKind::Name:
    case ColumnKind::Number:
        return u"VARCHAR(%1)"_s.arg(length) + collate(kind);
    case ColumnKind::Kilograms:
        return u"NUMERIC(15,3)"_s;
    case ColumnKind::Money:
        return u"NUMERIC(15,2)"_s;
    case ColumnKind::Real:
        return u"DOUBLE PRECISION"_s;
    case ColumnKind::Integer:
        return u"INTEGER"_s;
    case ColumnKind::Date:
        return u"DATE"_s;
    case ColumnKind::Time:
        return u"TIME"_s;
    case ColumnKind::Timestamp:
        break;
    }
    return u"TIMESTAMP"_s;
}

std::unique_ptr<Dialect> Dialect::of(Engine engine)
{
    if (engine == Engine::PostgreSQL)
        return std::make_unique<PostgreSQL>();
    return std::make_unique<Firebird>();
}
