// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/host_services/funcoes.h"

#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/scaleframe.h"
#include "module/host_services/sqltext.h"
#include "module/host_services/tabelas.h"
#include "module/host_services/workingdays.h"

#include <QApplication>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

QString checkedName(const QString &name)
{
    if (!SqlText::isName(name.trimmed()))
        throw EProgramming(u"Nome inválido: %1."_s.arg(name));
    return name.trimmed().toUpper();
}

/// "A = 'a' AND B = 'b'". A value that is no literal is quoted, digits too: the engines compare a quoted number with a
/// column of numbers, but not a bare one with a column of codes.
QString conditions(const QString &fields, const QString &values, QChar separator)
{
    const QStringList names = SqlText::split(fields, separator);
    const QStringList literals = names.size() == 1 ? QStringList{values.trimmed()} : SqlText::split(values, separator);
    if (names.size() != literals.size())
        throw EProgramming(u"Chave incompleta: %1."_s.arg(fields));
    QStringList terms;
    for (qsizetype i = 0; i < names.size(); ++i) {
        const QString literal = SqlText::isLiteral(literals[i]) ? literals[i] : SqlText::quoted(literals[i]);
        terms.append(checkedName(names[i]) + u" = "_s + literal);
    }
    return terms.join(u" AND "_s);
}

TTIDatabase &database(TTIDatabase *given = nullptr)
{
    return given ? *given : *Tabela->IBDatabase;
}

/// The lowest number of that width that no row has.
QString lowestFree(const QString &table, const QString &field, int width, const QString &digits)
{
    QSqlQuery query =
        database().run(u"SELECT DISTINCT %2 FROM %1 WHERE %2 SIMILAR TO '%3' ORDER BY %2"_s.arg(table, field, digits));
    qlonglong expected = 1;
    while (database().next(query) && query.value(0).toString().toLongLong() <= expected) {
        if (query.value(0).toString().toLongLong() == expected)
            ++expected;
    }
    const QString number = QString::number(expected).rightJustified(width, u'0');
    if (number.size() > width)
        throw EQen(u"Não há mais números livres."_s);
    return number;
}

/// What a name in braces stands for: a company's table, or with {EMPRESA} its number, by which a statement over all
/// companies tells whose its rows are.
QString ofCompany(const QString &name, int company)
{
    return name.compare(u"EMPRESA"_s, Qt::CaseInsensitive) == 0 ? QString::number(company)
                                                                : Funcoes::DBLocalEmpresa(name, company);
}

} // namespace

namespace Funcoes {

QString vUsuario()
{
    return Host::current().user();
}

QString DBLocalEmpresa(const QString &Nome, int company)
{
    return u"%1_%2"_s.arg(checkedName(Nome), QString::number(company).rightJustified(3, u'0'));
}

QString DBLocal(const QString &Nome, bool Flag)
{
    return Flag ? DBLocalEmpresa(Nome, Host::current().company()) : checkedName(Nome);
}

QString DBLocal_SQL(const QString &SQL, const QString &Extra)
{
    const auto ofCurrent = [](const QString &name) { return ofCompany(name, Host::current().company()); };
    return SqlText::withTables(SQL, ofCurrent) + Extra;
}

QString UnionTodasEmpresas(const QString &Tabela, const QString &SQL, bool Flag)
{
    QStringList parts;
    for (const int company : Host::current().visibleCompanies()) {
        const QString physical = DBLocalEmpresa(Tabela, company);
        if (database().value(database().dialect().columnsOf(physical)).isValid())
            parts.append(SqlText::withTables(SQL, [=](const QString &name) { return ofCompany(name, company); }));
    }
    if (parts.isEmpty())
        throw EQen(u"Nenhuma das empresas do usuário tem a tabela %1."_s.arg(checkedName(Tabela)));
    return parts.join(Flag ? u"\nUNION ALL\n"_s : u"\nUNION\n"_s);
}

QString Aspas(const QString &Valor)
{
    return SqlText::quoted(Valor);
}

QString PermanecePonto(double Valor)
{
    return SqlText::number(Valor);
}

QString HoraSQL(const QDateTime &Hora, bool Flag)
{
    return SqlText::quoted(Hora.time().toString(Flag ? u"HH:mm:ss"_s : u"HH:mm:ss.zzz"_s));
}

QString Busca_Valor(const QString &Tabela, const QString &CamposChave, const QString &CampoRetorno,
    const QString &Valores, bool Flag1, bool Flag2)
{
    const QString statement = u"SELECT %1 FROM %2 WHERE %3 FETCH FIRST 1 ROWS ONLY"_s.arg(
        checkedName(CampoRetorno), DBLocal(Tabela, Flag1), conditions(CamposChave, Valores, u';'));
    const QVariant found = database().value(statement);
    const QString text = found.isNull() ? QString() : found.toString(); // a null number is no "0"
    return Flag2 ? text.trimmed() : text;
}

bool Existe(const QString &Tabela, const QString &Campo, const QString &Valor, TTIDatabase *Banco)
{
    const QString statement =
        u"SELECT 1 FROM %1 WHERE %2 FETCH FIRST 1 ROWS ONLY"_s.arg(DBLocal(Tabela), conditions(Campo, Valor, u','));
    QSqlQuery query = database(Banco).run(statement);
    return database(Banco).next(query);
}

QString Proximo(const QString &Tabela, const QString &Campo, int Largura, bool Flag)
{
    const QString table = DBLocal(Tabela, Flag);
    const QString field = checkedName(Campo);
    const QString digits = u"[0-9]{%1}"_s.arg(Largura);
    const QString highest = database()
                                .value(u"SELECT %2 FROM %1 WHERE %2 SIMILAR TO '%3' ORDER BY %2 DESC "
                                       "FETCH FIRST 1 ROWS ONLY"_s.arg(table, field, digits))
                                .toString();
    const QString next = QString::number(highest.toLongLong() + 1).rightJustified(Largura, u'0');
    return next.size() > Largura ? lowestFree(table, field, Largura, digits) : next;
}

bool Acessa(const QString &Tela, QChar Operacao, const QString &Nivel, const QString &)
{
    return Host::current().hasRight(Tela, Operacao, Nivel);
}

QString BuscaParametro(const QString &Modulo, int Numero)
{
    return Host::current().parameter(Modulo, Numero);
}

void Ocupado(bool Ativo, QObject *Quem, bool, const QString &)
{
    Host::current().setBusy(Ativo, Quem);
}

void GeraLog(
    const QString &Tela, const QString &Descricao, TOperacaoLog Operacao, const QString &Complemento, QObject *)
{
    Host::current().writeLog(Tela, Descricao, Operacao, Complemento);
}

QWidget *Carrega_Form(const QString &Pacote, const QString &ClasseForm, const QString &, bool Flag1, bool Flag2)
{
    return Host::current().loadForm(Pacote, ClasseForm, Flag1, Flag2);
}

void pSetFocus(QWidget *Form, QChar Tecla)
{
    if (Tecla != u'\r' && Tecla != u'\n')
        return;
    QWidget *from = Form->focusWidget() ? Form->focusWidget() : Form;
    for (QWidget *next = from->nextInFocusChain(); next != from; next = next->nextInFocusChain()) {
        const bool takesTab = (next->focusPolicy() & Qt::TabFocus) && !next->focusProxy();
        if (takesTab && next->isEnabled() && next->isVisibleTo(Form) && Form->isAncestorOf(next)) {
            next->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

QString BuscaArquivo(const QString &Codigo, const QString &Pasta, TTipo Tipo)
{
    return Host::current().findFile(Codigo, Pasta, Tipo);
}

double PegaPesoBalanca(const QString &Leitura, QChar Terminador)
{
    return readScaleText(Leitura.toLatin1(), char(Terminador.unicode())).kg;
}

QDate DiaUtil(const QDate &Data, int N)
{
    return WorkingDays::addWorkingDays(Data, N);
}

int GeraInventario(const InventoryColumns &Colunas, TDataSet &Linhas)
{
    return Host::current().createInventory(Colunas, Linhas);
}

void Chama_Relatorio(const ReportCall &call)
{
    Host::current().runReport(call);
}

void Chama_RelatorioTxt(ReportCall call)
{
    call.kind = ReportCall::Kind::Text;
    Chama_Relatorio(call);
}

void Chama_RelatorioWin(ReportCall call)
{
    call.kind = ReportCall::Kind::Graphic;
    Chama_Relatorio(call);
}

} // namespace Funcoes
