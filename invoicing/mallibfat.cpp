// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_mallibfat.h"

#include "invoicing/mallibfat.h"

#include "invoicing/rowtexts.h"
#include "module/controls/dbgrid.h"
#include "module/host_services/busy.h"
#include "module/host_services/clientdataset.h"
#include "module/host_services/clock.h"
#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "module/look.h"
#include "module/messages.h"
#include "module/package.h"

#include <QAbstractItemDelegate>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QShortcut>

using namespace Funcoes;
using namespace Qt::StringLiterals;

QPointer<TfmMalLibFat> fmMalLibFat;

Unit &Mallibfat::unit()
{
    static Unit unit = Unit::of<TfmMalLibFat>(u"Liberação de Faturamento da Malharia"_s);
    return unit;
}

namespace {

/// A line of the work table, its fields in their order.
enum LineField { Numero, Codigo, Descricao, Produzido, Faturado, Saldo, Faturar, Rolos, Maquina, NomeMaq, Local, Lote };

QVector<TField> lineFields()
{
    using enum TField::Type;
    const auto kilograms = [](const QString &name) { return TField(name, Float).shownAs(u",0.000"_s); };
    // The lot is that of the order, whose column holds fifteen characters.
    return {TField(u"Numero"_s, Text, 12).titled(u"OF"_s), TField(u"Codigo"_s, Text, 15).titled(u"Código"_s),
        TField(u"Descricao"_s, Text, 100).titled(u"Descrição"_s), kilograms(u"Produzido"_s), kilograms(u"Faturado"_s),
        kilograms(u"Saldo"_s), kilograms(u"Faturar"_s).editable(), TField(u"Rolos"_s, Integer).editable(),
        TField(u"Maquina"_s, Text, 3).titled(u"Máquina"_s), TField(u"NomeMaq"_s, Text, 50).titled(u"Desc. Maquina"_s),
        TField(u"Local"_s, Text, 6), TField(u"Lote"_s, Text, 15)};
}

QString kilogramsText(double kg)
{
    return Format::number(kg, u",0.000"_s);
}

} // namespace

TfmMalLibFat::TfmMalLibFat()
    : m_ui(std::make_unique<Ui::fmMalLibFat>())
    , TbOF(new TClientDataSet(this))
    , QryImpressao(new TTIQuery(this))
{
    fmMalLibFat = this;
    TbOF->setObjectName(u"TbOF"_s);
    QryImpressao->setObjectName(u"QryImpressao"_s);
}

TfmMalLibFat::~TfmMalLibFat() = default;

void TfmMalLibFat::FormCreate()
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    setEnterAsTab(true);
    TbOF->CreateDataSet(lineFields());
    createGrid();
    LimpaTela();
}

void TfmMalLibFat::createGrid()
{
    TDBGrid *grid = m_ui->DBGrid1;
    grid->setDataSet(TbOF);
    grid->setRowColour(
        [this](int row) { return ReleaseRules::isAboveBalance(lineOf(row)) ? Look::amiss() : QColor(); });
    // What was typed in a cell is taken by Enter or Tab, and the next cell follows.
    connect(grid->itemDelegate(), &QAbstractItemDelegate::closeEditor, this,
        [this, grid](QWidget *, QAbstractItemDelegate::EndEditHint hint) {
            const bool editable = grid->model()->flags(grid->currentIndex()) & Qt::ItemIsEditable;
            if (hint == QAbstractItemDelegate::SubmitModelCache
                || (hint == QAbstractItemDelegate::EditNextItem && !editable))
                moveOn();
        });
    // In a cell that is being typed in, too.
    auto *wholeBalance = new QShortcut(QKeySequence(Qt::Key_F5), grid);
    wholeBalance->setContext(Qt::WidgetWithChildrenShortcut);
    connect(wholeBalance, &QShortcut::activated, this, [this] { run([this] { takeBalance(); }); });
}

void TfmMalLibFat::FormShow()
{
    m_ui->EdtNumero->setFocus();
}

void TfmMalLibFat::LimpaTela()
{
    m_number.clear();
    m_numberGiven = false;
    m_stored.clear();
    m_productionOf.clear();
    m_changed = false;
    for (QLineEdit *field : {m_ui->EdtNumero, m_ui->edtCliente, m_ui->EdtNota})
        field->clear();
    m_ui->EdtObs->clear();
    m_ui->EdtData->setDate(Clock::today());
    TbOF->EmptyDataSet();
    showTotals();
}

/// Passing the field again keeps what was typed for the release.
void TfmMalLibFat::EdtNumeroExit()
{
    const QString number = m_ui->EdtNumero->text().trimmed();
    if (!number.isEmpty() && number == m_number)
        return;
    LimpaTela();
    m_saved.clear();
    m_numberGiven = number.isEmpty();
    m_number = m_numberGiven ? Proximo(u"PEDIDO3"_s, u"NUMERO"_s, 5, true) : number;
    m_ui->EdtNumero->setText(m_number);
    if (!m_numberGiven && Existe(u"PEDIDO3"_s, u"NUMERO"_s, Aspas(m_number)))
        BuscaOF();
    showTotals();
}

void TfmMalLibFat::BuscaOF()
{
    // Before the lines are read: what changes in between is noticed when the release is saved.
    const QStringList asStored = stored(m_number);
    TTIQuery rows;
    rows.SQL.add(DBLocal_SQL(uR"(
        SELECT PEDIDO3.NUMERO, PEDIDO3.CAIXA, PEDIDO3.CODCLI, PEDIDO3.CODIGO, MATERIAL.DESCRICAO, PEDIDO3.QTDE,
               PEDIDO3.DATA, PEDIDO3.NOTAFISCAL, COALESCE(PEDIDO3.PESO, 0) AS ROLOS, PEDIDO3.OBS, MAQUINA.MAQUINA,
               MAQUINA.DESCRICAO AS NOMEMAQ, PEDIDO3.LOCAL, OF_MALHA.LOTE
        FROM {PEDIDO3} PEDIDO3
        LEFT JOIN {MATERIAL} MATERIAL ON (PEDIDO3.CODIGO = MATERIAL.CODIGO)
        LEFT JOIN {OF_MALHA} OF_MALHA ON (PEDIDO3.CAIXA = OF_MALHA.NUM_OF)
        LEFT JOIN {MAQUINA} MAQUINA ON (OF_MALHA.MAQUINA = MAQUINA.MAQUINA)
        WHERE NUMERO = )"_s,
        Aspas(m_number) + u" ORDER BY PEDIDO3.CAIXA DESC, PEDIDO3.NUMERO, PEDIDO3.CODIGO"_s));
    rows.Open();
    m_ui->edtCliente->setText(rows.AsString(u"CODCLI"_s));
    m_ui->EdtData->setDate(rows.AsDate(u"DATA"_s));
    showText(m_ui->EdtNota, rows.AsString(u"NOTAFISCAL"_s));
    m_ui->EdtObs->setPlainText(rows.AsString(u"OBS"_s));
    fill(rows,
        {u"CAIXA"_s, u"CODIGO"_s, u"DESCRICAO"_s, {}, {}, {}, u"QTDE"_s, u"ROLOS"_s, u"MAQUINA"_s, u"NOMEMAQ"_s,
            u"LOCAL"_s, u"LOTE"_s});
    m_stored = asStored; // lines that could not be read are not replaced by none
}

void TfmMalLibFat::BuscaMalhas()
{
    m_productionOf = m_ui->edtCliente->text().trimmed();
    TTIQuery rows;
    rows.SQL.add(DBLocal_SQL(uR"(
        SELECT PA_MALHA.NUM_OF, PA_MALHA.CODIGO, MATERIAL.DESCRICAO, OF_MALHA.LOTE, PA_MALHA.QTDE_TOTAL AS PRODUZIDO,
               PA_MALHA.FATURADO, MAQUINA.MAQUINA, MAQUINA.DESCRICAO AS NOMEMAQ,
               (PA_MALHA.QTDE_TOTAL - (0+PA_MALHA.FATURADO)) AS SALDO
        FROM {PA_MALHA} PA_MALHA
        LEFT JOIN {MATERIAL} MATERIAL ON (PA_MALHA.CODIGO = MATERIAL.CODIGO)
        LEFT JOIN {OF_MALHA} OF_MALHA ON (PA_MALHA.NUM_OF = OF_MALHA.NUM_OF)
        LEFT JOIN {MAQUINA} MAQUINA ON (OF_MALHA.MAQUINA = MAQUINA.MAQUINA)
        WHERE MATERIAL.CODCLI = )"_s,
        Aspas(m_productionOf) + uR"(
          AND (PA_MALHA.QTDE_TOTAL - (0+PA_MALHA.FATURADO)) > 0
        ORDER BY PA_MALHA.CODIGO, PA_MALHA.NUM_OF)"_s));
    rows.Open();
    fill(rows,
        {u"NUM_OF"_s, u"CODIGO"_s, u"DESCRICAO"_s, u"PRODUZIDO"_s, u"FATURADO"_s, u"SALDO"_s, {}, {}, u"MAQUINA"_s,
            u"NOMEMAQ"_s, {}, u"LOTE"_s});
    m_changed = false;
}

void TfmMalLibFat::fill(TTIQuery &rows, const QStringList &columns)
{
    {
        const QScopedValueRollback filling(m_filling, true);
        TbOF->EmptyDataSet();
        for (; !rows.Eof(); rows.Next()) {
            TbOF->Append();
            for (int field = 0; field < columns.size(); ++field) {
                if (!columns[field].isEmpty())
                    TbOF->setValue(TbOF->fields()[field].name, rows.value(columns[field]));
            }
            TbOF->Post();
        }
        TbOF->First();
    }
    moveTo(0, u"Faturar"_s); // who comes into the grid types quantities at once
    showTotals();
}

void TfmMalLibFat::edtClienteChange()
{
    describe(m_ui->PqCliente);
}

void TfmMalLibFat::PqClienteFechaPesquisa()
{
    takeChosen(m_ui->PqCliente);
}

void TfmMalLibFat::edtClienteExit()
{
    const QString client = m_ui->edtCliente->text().trimmed();
    if (client.isEmpty())
        return;
    if (!isKnown(m_ui->PqCliente)) {
        refuse(u"Cliente inválido."_s, m_ui->edtCliente);
        throw EAbort();
    }
    // A number that the program gave is that of a new release, also when another station took it meanwhile.
    const bool isNew = !m_number.isEmpty() && (m_numberGiven || !Existe(u"PEDIDO3"_s, u"NUMERO"_s, Aspas(m_number)));
    // What was typed for this client stays when the field is passed again.
    if (isNew && client != m_productionOf)
        BuscaMalhas();
}

ReleaseRules::Line TfmMalLibFat::lineOf(int row) const
{
    const QVariant balance = TbOF->cell(row, Saldo);
    return {TbOF->cell(row, Faturar).toDouble(), TbOF->cell(row, Rolos).toLongLong(),
        balance.isNull() ? std::nullopt : std::optional(balance.toDouble())};
}

void TfmMalLibFat::TbOFAfterPost()
{
    if (m_filling)
        return;
    m_changed = true;
    showTotals();
}

void TfmMalLibFat::showTotals()
{
    m_ui->lbAcima->clear();
    if (TbOF->IsEmpty()) {
        m_ui->lbTotais->setText(m_saved.isEmpty() ? QString() : u"Liberação %1 gravada."_s.arg(m_saved));
        return;
    }
    QVector<ReleaseRules::Line> lines;
    for (int row = 0; row < TbOF->rowCount(); ++row)
        lines.append(lineOf(row));
    const ReleaseRules::Totals totals = ReleaseRules::totalsOf(lines);
    m_ui->lbTotais->setText(u"Linhas a faturar: %1 de %2     Faturar: %3 kg     Rolos: %4"_s.arg(totals.released)
                                .arg(lines.size())
                                .arg(kilogramsText(totals.quantity))
                                .arg(totals.rolls));
    if (totals.above > 0)
        m_ui->lbAcima->setText(u"Acima do saldo: %1"_s.arg(totals.above));
}

void TfmMalLibFat::moveTo(int row, const QString &field)
{
    m_ui->DBGrid1->setCurrentIndex(m_ui->DBGrid1->model()->index(row, m_ui->DBGrid1->columnOf(field)));
}

/// Quantity, rolls, next line; after the last line the button that saves.
void TfmMalLibFat::moveOn()
{
    const QModelIndex current = m_ui->DBGrid1->currentIndex();
    if (!TbOF->IsEmpty() && current.column() < Faturar)
        moveTo(current.row(), u"Faturar"_s);
    else if (current.column() == Faturar)
        moveTo(current.row(), u"Rolos"_s);
    else if (current.row() + 1 < TbOF->rowCount())
        moveTo(current.row() + 1, u"Faturar"_s);
    else
        m_ui->BitBtn1->setFocus();
}

/// All that the current line has; nothing where the balance is not known.
void TfmMalLibFat::takeBalance()
{
    m_ui->DBGrid1->setFocus(); // takes what is being typed first
    if (TbOF->IsNull(u"Saldo"_s))
        return;
    TbOF->Edit();
    TbOF->setValue(u"Faturar"_s, TbOF->value(u"Saldo"_s));
    TbOF->Post();
    moveTo(m_ui->DBGrid1->currentIndex().row(), u"Rolos"_s);
}

bool TfmMalLibFat::FormKeyDown(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool plain = !(event->modifiers() & ~Qt::KeypadModifier);
    if (!enter || !plain || !m_ui->DBGrid1->hasFocus())
        return TForm::FormKeyDown(event);
    moveOn();
    return true;
}

void TfmMalLibFat::BitBtn1Click()
{
    if (!Acessa(className(), u'A', u"0"_s, {}))
        return;
    if (m_ui->EdtData->hasInvalidText()) {
        refuse(u"Data Inválida. Impossível Continuar."_s, m_ui->EdtData);
        return;
    }
    {
        const Busy busy(this);
        const QString number = save();
        m_saved = TbOF->IsEmpty() ? QString() : number; // without lines there is no release
    }
    LimpaTela();
    m_ui->EdtNumero->setFocus();
}

QStringList TfmMalLibFat::stored(const QString &number) const
{
    const QStringList columns{
        u"CAIXA"_s, u"CODIGO"_s, u"QTDE"_s, u"PESO"_s, u"DATA"_s, u"CODCLI"_s, u"NOTAFISCAL"_s, u"OBS"_s, u"LOCAL"_s};
    TTIQuery rows;
    rows.SQL.add(
        DBLocal_SQL(u"SELECT "_s + columns.join(u", "_s) + u" FROM {PEDIDO3} WHERE NUMERO = "_s, Aspas(number)));
    rows.Open();
    return rowTexts(rows, columns);
}

/// The number that the release has now. One that the program gave is given anew when another station took it meanwhile;
/// what others changed of a release since it was read, or saved under a number that was typed, is not overwritten.
QString TfmMalLibFat::save()
{
    Save save(database());
    // Releases have no key. Two stations that save at one moment meet at the last release.
    database().run(DBLocal_SQL(u"UPDATE {PEDIDO3} SET NUMERO = NUMERO WHERE NUMERO = "_s,
        Aspas(m_number) + u" OR NUMERO = (SELECT MAX(NUMERO) FROM "_s + DBLocal(u"PEDIDO3"_s) + u')'));
    const bool changed = stored(m_number) != m_stored;
    if (changed && !m_numberGiven)
        throw EDatabaseError(EDatabaseError::Category::Conflict, {}, u"A liberação foi alterada."_s, {});
    const QString number = changed ? Proximo(u"PEDIDO3"_s, u"NUMERO"_s, 5, true) : m_number;
    database().run(DBLocal_SQL(u"DELETE FROM {PEDIDO3} WHERE NUMERO = "_s, Aspas(number)));
    insertLines(number);
    save.CommitRetaining();
    return number;
}

void TfmMalLibFat::insertLines(const QString &number)
{
    const QDate date = m_ui->EdtData->date();
    for (int row = 0; row < TbOF->rowCount(); ++row) {
        const auto text = [&](LineField field) { return Aspas(TbOF->cell(row, field).toString()); };
        const ReleaseRules::Line line = lineOf(row);
        const QStringList values{Aspas(number), text(Numero), date.isValid() ? Aspas(Format::sqlDate(date)) : u"NULL"_s,
            Aspas(m_ui->edtCliente->text().trimmed()), text(Codigo), PermanecePonto(line.quantity),
            Aspas(m_ui->EdtNota->text().trimmed()), QString::number(line.rolls), Aspas(m_ui->EdtObs->toPlainText()),
            text(Local)};
        database().run(DBLocal_SQL(
            u"INSERT INTO {PEDIDO3} (NUMERO, CAIXA, DATA, CODCLI, CODIGO, QTDE, NOTAFISCAL, PESO, OBS, LOCAL) VALUES("_s,
            values.join(u',') + u')'));
    }
}

void TfmMalLibFat::BitBtn2Click()
{
    const QString number = m_ui->EdtNumero->text().trimmed();
    QryImpressao->SQL.clear();
    // The yarn's lot too: two lots of one invoice that weigh the same are two, and the fabric counts once beside each.
    QryImpressao->SQL.add(DBLocal_SQL(uR"(
        SELECT P3.NUMERO, P3.CAIXA AS LOTE, M.CODCLI, E.NOME, P3.CODIGO, M.DESCRICAO, BFIO.CODIGO AS FIO,
               M_FIO.DESCRICAO AS DESC_FIO, SUM(P3.QTDE) AS QTDE, BFIO.DOCTO, P3.DATA, P3.NOTAFISCAL, P3.PESO AS ROLOS,
               BFIO.QTDE AS QTDE_FIO, P3.OBS, MQ.MAQUINA, MQ.DESCRICAO AS DESC_MAQUINA, BFIO.LOTE AS LOTE_FIO
        FROM {PEDIDO3} P3
        LEFT JOIN {BAIXA_FIO} BFIO ON (BFIO.NUMERO = P3.CAIXA)
        LEFT JOIN {MATERIAL} M ON (P3.CODIGO = M.CODIGO)
        LEFT JOIN {MATERIAL} M_FIO ON (BFIO.CODIGO = M_FIO.CODIGO)
        LEFT JOIN {ENTIDADE} E ON (M.CODCLI = E.CODCLI)
        LEFT JOIN {OF_MALHA} OF_ ON (P3.CAIXA = OF_.NUM_OF)
        LEFT JOIN {MAQUINA} MQ ON (OF_.MAQUINA = MQ.MAQUINA)
        WHERE P3.NUMERO = )"_s,
        Aspas(number) + uR"( AND P3.QTDE > 0
        GROUP BY P3.NUMERO, P3.CAIXA, M.CODCLI, E.NOME, P3.CODIGO, M.DESCRICAO, BFIO.CODIGO, M_FIO.DESCRICAO,
                 BFIO.DOCTO, P3.DATA, P3.NOTAFISCAL, BFIO.QTDE, P3.PESO, P3.OBS, MQ.MAQUINA, MQ.DESCRICAO, BFIO.LOTE
        ORDER BY P3.CAIXA, P3.CODIGO, BFIO.CODIGO, BFIO.DOCTO, BFIO.LOTE)"_s));
    QryImpressao->Describe({TField(u"QTDE"_s, TField::Type::Float).shownAs(u",0.000"_s),
        TField(u"QTDE_FIO"_s, TField::Type::Float).shownAs(u",0.000"_s)});
    QryImpressao->Open();
    QryImpressao->FetchAll();
    ReportCall call;
    call.name = u"WRelMalLibFat"_s;
    call.form = this;
    call.dataSets = {{QryImpressao->objectName(), QryImpressao}};
    call.parameters = printedTotals(number);
    Chama_Relatorio(call);
}

/// The rows that are printed repeat a line's quantity beside each of its yarns.
QVariantMap TfmMalLibFat::printedTotals(const QString &number) const
{
    TTIQuery sums;
    sums.SQL.add(DBLocal_SQL(
        u"SELECT COUNT(*) AS LINHAS, COALESCE(SUM(QTDE), 0) AS QTDE, COALESCE(SUM(PESO), 0) AS ROLOS FROM {PEDIDO3} "
        "WHERE QTDE > 0 AND NUMERO = "_s,
        Aspas(number)));
    sums.Open();
    return {{u"TOTAL_LINHAS"_s, sums.AsInteger(u"LINHAS"_s)}, {u"TOTAL_QTDE"_s, kilogramsText(sums.AsFloat(u"QTDE"_s))},
        {u"TOTAL_ROLOS"_s, sums.AsInteger(u"ROLOS"_s)}};
}

void TfmMalLibFat::BitBtn3Click()
{
    close();
}

bool TfmMalLibFat::mayClose()
{
    return !m_changed || Messages::ask(this, u"A liberação não foi gravada. Deseja abandonar as alterações?"_s);
}
