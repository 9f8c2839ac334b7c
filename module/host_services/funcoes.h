// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/host_services/host.h"

#include <QDateTime>
#include <QString>

class QWidget;
class TDataSet;
class TTIDatabase;

/// The host's services, by the names that the screens call them.
namespace Funcoes {

/// The logged-in user.
QString vUsuario();

/// Physical name of a logical table, in any case: with the flag that of the current company, "OF_MALHA_001";
/// without it the name of a table that all companies share. Throws EProgramming for what is no table name.
QString DBLocal(const QString &Nome, bool Flag = true);
/// Physical name for a company by its number.
QString DBLocalEmpresa(const QString &Nome, int company);
/// Each {NAME} outside of quotes replaced by its physical name, {EMPRESA} by the company's number; the second text is
/// appended.
QString DBLocal_SQL(const QString &SQL, const QString &Extra = {});
/// The statement once for every company that the user may see, joined by UNION ALL (Flag) or UNION.
/// A company that has no such table is left out; EQen when none has it.
QString UnionTodasEmpresas(const QString &Tabela, const QString &SQL, bool Flag);

QString Aspas(const QString &Valor);
QString PermanecePonto(double Valor);
/// "HH:MM:SS" as a literal; with the flag without seconds' fractions, else with thousandths.
QString HoraSQL(const QDateTime &Hora, bool Flag = true);

/// One column of the row whose fields ("A;B") hold the values (literals, "'a';'b'"); an empty text when there is
/// no such row or the column is null. With Flag1 the table is the current company's, with Flag2 the text is trimmed.
QString Busca_Valor(const QString &Tabela, const QString &CamposChave, const QString &CampoRetorno,
    const QString &Valores, bool Flag1 = true, bool Flag2 = true);
/// Whether a row has the values; several fields and values are separated by commas. Null: the shared connection.
bool Existe(const QString &Tabela, const QString &Campo, const QString &Valor, TTIDatabase *Banco = nullptr);
/// The number after the highest one of that width, as text of that many digits; when the highest is reached the
/// lowest free one. Other texts in the column are passed over. With the flag the table is the current company's.
/// Throws EQen when no number is free.
QString Proximo(const QString &Tabela, const QString &Campo, int Largura, bool Flag = true);

/// Whether the user may do it. The service itself shows nothing.
bool Acessa(const QString &Tela, QChar Operacao, const QString &Nivel, const QString &Extra = {});
QString BuscaParametro(const QString &Modulo, int Numero);
void Ocupado(bool Ativo, QObject *Quem, bool Flag = true, const QString &Mensagem = {});
/// One line of the log with user, date and time. Within a save it is part of it, else it is committed at once.
void GeraLog(const QString &Tela, const QString &Descricao, TOperacaoLog Operacao, const QString &Complemento = {},
    QObject *Quem = nullptr);

/// Creates a screen of a package. Flag1: it is modal and not shown yet, so that the caller can hand over its values
/// and then call ShowModal. Flag2: it is shown at once, or brought to the front when it is open already. Null, with
/// a message, when no loaded package has the class.
QWidget *Carrega_Form(const QString &Pacote, const QString &ClasseForm, const QString &Extra, bool Flag1, bool Flag2);
/// Enter moves the focus to the next control in tab order.
void pSetFocus(QWidget *Form, QChar Tecla);

QString BuscaArquivo(const QString &Codigo, const QString &Pasta, TTipo Tipo);
/// Kilograms in the last whole frame of the text; 0 for what is no weight.
double PegaPesoBalanca(const QString &Leitura, QChar Terminador);
/// The date moved by N working days; with 0 the date itself or the next working day.
QDate DiaUtil(const QDate &Data, int N);
/// Number of inventory rows written, see Host::createInventory.
int GeraInventario(const InventoryColumns &Colunas, TDataSet &Linhas);

void Chama_Relatorio(const ReportCall &call);
void Chama_RelatorioTxt(ReportCall call);
void Chama_RelatorioWin(ReportCall call);

} // namespace Funcoes
