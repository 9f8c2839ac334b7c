// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_nfterceiros.h"

#include "invoicing/nfterceiros.h"

#include "invoicing/rowtexts.h"
#include "module/host_services/clientdataset.h"
#include "module/host_services/clock.h"
#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "module/host_services/tabelas.h"
#include "module/host_services/table.h"
#include "module/look.h"
#include "module/messages.h"
#include "module/package.h"

#include <QScopedValueRollback>

using namespace Funcoes;
using namespace Qt::StringLiterals;

QPointer<TfmNFTerceiros> fmNFTerceiros;

Unit &Nfterceiros::unit()
{
    static Unit unit = Unit::of<TfmNFTerceiros>(u"Entrada de Notas Fiscais"_s);
    return unit;
}

namespace {

/// Sizes are those of the fields that the texts are typed in.
QVector<TField> itemFields()
{
    using enum TField::Type;
    const auto kilograms = [](const QString &name) { return TField(name, Float).shownAs(u",0.00"_s); };
    return {TField(u"CODCLI"_s, Text), TField(u"CODIGO"_s, Text), TField(u"DESCRICAO"_s, Text, 100),
        TField(u"VALOR"_s, Float).shownAs(u",0.00"_s), kilograms(u"ESTOQUE_FISICO"_s), kilograms(u"ESTOQUE_ORIGINAL"_s),
        kilograms(u"QTDE_DEVOL"_s), kilograms(u"QTDE_BAIXA"_s), TField(u"MARCA"_s, Text), TField(u"LOTE"_s, Text),
        TField(u"DOCTO"_s, Text), TField(u"UNITARIO"_s, Float).shownAs(u",0.000000"_s)};
}

/// All that another station may have changed in an invoice's lots.
QStringList contents(TTIQuery &items)
{
    return rowTexts(items,
        {u"CODIGO"_s, u"LOTE"_s, u"MARCA"_s, u"UNITARIO"_s, u"VALOR"_s, u"ESTOQUE_FISICO"_s, u"ESTOQUE_ORIGINAL"_s,
            u"QTDE_BAIXA"_s, u"QTDE_DEVOL"_s});
}

} // namespace

TfmNFTerceiros::TfmNFTerceiros()
    : m_ui(std::make_unique<Ui::fmNFTerceiros>())
    , tbNFT_Iten(new TClientDataSet(this))
{
    fmNFTerceiros = this;
    tbNFT_Iten->setObjectName(u"tbNFT_Iten"_s);
}

TfmNFTerceiros::~TfmNFTerceiros() = default;

void TfmNFTerceiros::FormCreate()
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    setEnterAsTab(true);
    m_clientsOwnYarn = BuscaParametro(u"MAT"_s, 120) == u"S"_s;
    tbNFT_Iten->CreateDataSet(itemFields());
    m_ui->DBGItens->setDataSet(tbNFT_Iten);
    // The client's name as well: a number may be there for several clients.
    m_ui->PqDocto->setSQL(DBLocal_SQL(uR"(
        SELECT NF.DOCTO, NF.CODCLI, ENTIDADE.NOME, NF.DATA
        FROM {NFTERCEIROS} NF LEFT JOIN {ENTIDADE} ENTIDADE ON (NF.CODCLI = ENTIDADE.CODCLI))"_s));
    AbreTabelas({u"tbEntidade"_s, u"tbMateriais"_s, u"tbNFTerceiros"_s});
    openTable(Tabela->tabela(u"tbNFTerceiros"_s), u"NFTERCEIROS"_s, u"DOCTO;CODCLI"_s);
    // The handlers are tied after this; what depends on the record is shown here once.
    showDerived();
    tbNFT_ItenAfterScroll();
}

void TfmNFTerceiros::FormClose()
{
    table()->Cancel(); // it is shared, and may stay open for others
}

void TfmNFTerceiros::Bar_Confirma(bool editing)
{
    if (!editing) {
        tbNFT_Iten->Cancel();
        Bar_Itens(false);
        m_ui->PainelItens->setEnabled(false);
        m_ui->DBDocto->setReadOnly(false);
        m_ui->DBCodCliente->setReadOnly(false);
        m_ui->PqCliente->setEnabled(true);
        m_edited = {};
    }
    m_lastLot.reset();
    m_ui->lbColar->setVisible(editing);
    TRecordForm::Bar_Confirma(editing);
}

TRecordForm::LogTexts TfmNFTerceiros::logTexts() const
{
    const QString saved = u"INCLUSAO/ALTERACAO NOTA NR.: "_s;
    return {u"MALHARIA"_s, saved, saved, {}, olAlteracao, true};
}

QString TfmNFTerceiros::recordNumber() const
{
    return table()->AsString(u"DOCTO"_s);
}

TfmNFTerceiros::InvoiceKey TfmNFTerceiros::key() const
{
    return {table()->AsString(u"DOCTO"_s), table()->AsString(u"CODCLI"_s)};
}

void TfmNFTerceiros::BtincluirClick()
{
    btnincluirClick();
}

void TfmNFTerceiros::newRecord()
{
    table()->setValue(u"DATA"_s, Clock::today());
    m_itemsOf = {};
    tbNFT_Iten->EmptyDataSet();
    Limpa_Itens();
    showTotals();
}

void TfmNFTerceiros::startEdit()
{
    m_edited = key();
    filterMaterials();
    m_ui->PainelItens->setEnabled(true);
    // Outbound invoices quote this number.
    const bool quoted = ExisteNota(recordNumber(), {}, {});
    m_ui->DBDocto->setReadOnly(quoted);
    m_ui->DBCodCliente->setReadOnly(quoted);
    m_ui->PqCliente->setEnabled(!quoted);
}

/// An invoice is altered in its lots, most of all; its client's exit would not let anybody through.
QWidget *TfmNFTerceiros::firstField(bool inserting) const
{
    return inserting ? static_cast<QWidget *>(m_ui->DBDocto) : m_ui->DBGItens;
}

void TfmNFTerceiros::DBCodClienteEnter()
{
    // Until the client was accepted, its lots cannot be entered.
    if (table()->state() == TTITable::State::Insert)
        m_ui->PainelItens->setEnabled(false);
}

void TfmNFTerceiros::DBCodClienteChange()
{
    describe(m_ui->PqCliente);
}

void TfmNFTerceiros::DBCodClienteExit()
{
    const auto [docto, client] = key();
    if (!isEditing() || client.isEmpty())
        return;
    m_ui->EdtNomeCliente->clear();
    if (!Existe(u"ENTIDADE"_s, u"CODCLI"_s, Aspas(client))) {
        refuse(u"Cliente inválido."_s, m_ui->DBCodCliente);
        m_ui->PqCliente->AbrePesquisa();
        return;
    }
    // Asked while altering too: the number leads back to where it can be corrected.
    if (Existe(u"NFTERCEIROS"_s, u"DOCTO,CODCLI"_s, Aspas(docto) + u","_s + Aspas(client))) {
        refuse(u"Nota Fiscal para este cliente já cadastrada."_s, m_ui->DBDocto);
        return;
    }
    describe(m_ui->PqCliente);
    filterMaterials();
    m_ui->PainelItens->setEnabled(true);
    // What was entered for this client stays when the field is passed again, a lot that is still open too.
    if (client == m_itemsOf.client)
        return;
    m_lastLot.reset();
    BuscaItens();
    Bar_Itens(false);
    tbNFT_ItenAfterScroll();
}

void TfmNFTerceiros::PqClienteFechaPesquisa()
{
    takeChosen(m_ui->PqCliente);
}

/// Yarns, and the client's own alone where materials belong to clients.
void TfmNFTerceiros::filterMaterials()
{
    QString filter = u"(GRUPO = '100' OR GRUPO = '10')"_s;
    if (m_clientsOwnYarn)
        filter += u" AND (CODCLI = "_s + Aspas(key().client) + u')';
    m_ui->PqMaterial->setFilter(filter);
}

void TfmNFTerceiros::openItems(TTIQuery &items, const InvoiceKey &of) const
{
    items.SQL.clear();
    items.SQL.add(DBLocal_SQL(uR"(
        SELECT NFT_ITEN.CODCLI, NFT_ITEN.CODIGO, MATERIAL.DESCRICAO, NFT_ITEN.VALOR, NFT_ITEN.ESTOQUE_FISICO,
               NFT_ITEN.ESTOQUE_ORIGINAL, NFT_ITEN.QTDE_BAIXA, NFT_ITEN.QTDE_DEVOL, NFT_ITEN.MARCA, NFT_ITEN.LOTE,
               NFT_ITEN.DOCTO, NFT_ITEN.UNITARIO
        FROM {NFT_ITEN} NFT_ITEN
        LEFT OUTER JOIN {MATERIAL} MATERIAL ON (NFT_ITEN.CODIGO = MATERIAL.CODIGO)
        WHERE NFT_ITEN.DOCTO = )"_s,
        Aspas(of.docto) + u" AND NFT_ITEN.CODCLI = "_s + Aspas(of.client)));
    items.Open();
    items.FetchAll();
}

void TfmNFTerceiros::BuscaItens()
{
    m_itemsOf = key();
    TTIQuery items;
    openItems(items, m_itemsOf);
    {
        const QScopedValueRollback loading(m_loading, true);
        tbNFT_Iten->EmptyDataSet();
        for (items.First(); !items.Eof(); items.Next()) {
            tbNFT_Iten->Append();
            for (const TField &field : tbNFT_Iten->fields())
                tbNFT_Iten->setValue(field.name, items.value(field.name));
            tbNFT_Iten->Post();
        }
        tbNFT_Iten->First();
    }
    tbNFT_ItenAfterScroll();
    if (m_itemsOf == m_edited)
        m_savedItems = contents(items);
}

void TfmNFTerceiros::showDerived()
{
    if (m_ui->EdtNomeCliente->text().isEmpty())
        describe(m_ui->PqCliente);
    BuscaItens();
}

void TfmNFTerceiros::search()
{
    m_ui->PqDocto->AbrePesquisa();
}

void TfmNFTerceiros::PqDoctoFechaPesquisa()
{
    const QString docto = m_ui->PqDocto->RetornoPesquisa(u"DOCTO"_s);
    if (docto.isEmpty())
        return;
    table()->Locate(u"DOCTO;CODCLI"_s, {docto, m_ui->PqDocto->RetornoPesquisa(u"CODCLI"_s)});
    showDerived();
}

/// Whether goods have left that quote the invoice number, of whichever client. An empty material or lot is any.
bool TfmNFTerceiros::ExisteNota(const QString &Docto, const QString &Codigo, const QString &Lote) const
{
    QString conditions;
    if (!Codigo.trimmed().isEmpty())
        conditions += u" AND NOTAITEN.CODIGO = "_s + Aspas(Codigo);
    if (!Lote.trimmed().isEmpty())
        conditions += u" AND NOTAITEN.LOTE = "_s + Aspas(Lote);
    TTIQuery outbound;
    outbound.SQL.add(DBLocal_SQL(uR"(
        SELECT CODCLI, FATURA, IMPRESSO FROM {NOTA} NOTA
        WHERE NOTA.IMPRESSO IN ('S','N')
          AND EXISTS(SELECT NOTA_CLIENTE, FATURA FROM {NOTAITEN} NOTAITEN WHERE NOTA.FATURA = NOTAITEN.FATURA)"_s,
        conditions + u" AND NOTAITEN.NOTA_CLIENTE = "_s + Aspas(Docto) + u')'));
    outbound.Open();
    return !outbound.IsEmpty();
}

bool TfmNFTerceiros::mayConfirm()
{
    const auto [docto, client] = key();
    if (docto.isEmpty()) {
        refuse(u"Nota Fiscal inválida."_s, m_ui->DBDocto);
        return false;
    }
    if (client.isEmpty()) {
        refuse(u"Cliente inválido."_s, m_ui->DBCodCliente);
        return false;
    }
    // A lot that was typed and not recorded yet is not lost.
    if (m_itemOpen && m_ui->EdtPeso->value() != 0)
        btISalvarClick();
    if (tbNFT_Iten->IsEmpty()) {
        refuse(u"Nota Fiscal sem itens."_s, m_ui->DBCodCliente);
        return false;
    }
    if (m_ui->DBData->hasInvalidText()) {
        refuse(u"Data Inválida. Impossível Continuar."_s, m_ui->DBData);
        return false;
    }
    return true;
}

/// Two stations that save or delete one invoice do so one after the other.
void TfmNFTerceiros::lockInvoice() const
{
    const auto [docto, client] = key();
    const QString statement = u"UPDATE "_s + DBLocal(u"NFTERCEIROS"_s) + u" SET DOCTO = "_s + Aspas(docto)
        + u" WHERE DOCTO = "_s + Aspas(docto) + u" AND CODCLI = "_s + Aspas(client);
    if (database().run(statement).numRowsAffected() != 1)
        throw EDatabaseError(EDatabaseError::Category::Conflict, {}, u"O registro não existe mais."_s, {});
}

/// Goods may have left since the items were read, and what was written off of a lot then is not to be overwritten.
void TfmNFTerceiros::refuseIfOthersChanged() const
{
    if (m_edited == InvoiceKey())
        return;
    lockInvoice();
    database().run(u"UPDATE "_s + DBLocal(u"NFT_ITEN"_s) + u" SET DOCTO = "_s + Aspas(m_edited.docto)
        + u" WHERE DOCTO = "_s + Aspas(m_edited.docto) + u" AND CODCLI = "_s + Aspas(m_edited.client));
    TTIQuery items;
    openItems(items, m_edited);
    // A number or a lot that goods quote meanwhile stays.
    bool conflict = contents(items) != m_savedItems || (key() != m_edited && ExisteNota(m_edited.docto, {}, {}));
    for (items.First(); !items.Eof() && !conflict; items.Next()) {
        const LotKey lot{items.AsString(u"CODIGO"_s), items.AsString(u"LOTE"_s)};
        conflict = rowOf(lot) < 0 && ExisteNota(m_edited.docto, lot.material, lot.lot);
    }
    if (conflict)
        throw EDatabaseError(EDatabaseError::Category::Conflict, {}, u"Os lotes da nota foram alterados."_s, {});
}

void TfmNFTerceiros::deleteItems(const InvoiceKey &of) const
{
    database().run(u"DELETE FROM "_s + DBLocal(u"NFT_ITEN"_s) + u" WHERE DOCTO = "_s + Aspas(of.docto)
        + u" AND CODCLI = "_s + Aspas(of.client));
}

void TfmNFTerceiros::writeDependents()
{
    refuseIfOthersChanged();
    const InvoiceKey invoice = key();
    deleteItems(invoice);
    if (m_edited != InvoiceKey() && m_edited != invoice)
        deleteItems(m_edited); // its number or its client was corrected
    const auto number = [this](int row, const QString &name) {
        return PermanecePonto(tbNFT_Iten->cell(row, tbNFT_Iten->fieldIndex(name)).toDouble());
    };
    const auto text = [this](int row, const QString &name) {
        return Aspas(tbNFT_Iten->cell(row, tbNFT_Iten->fieldIndex(name)).toString());
    };
    for (int row = 0; row < tbNFT_Iten->rowCount(); ++row) {
        const QStringList values{Aspas(invoice.client), text(row, u"CODIGO"_s), number(row, u"VALOR"_s),
            number(row, u"ESTOQUE_FISICO"_s), number(row, u"ESTOQUE_ORIGINAL"_s), number(row, u"QTDE_BAIXA"_s),
            number(row, u"QTDE_DEVOL"_s), text(row, u"MARCA"_s), text(row, u"LOTE"_s), Aspas(invoice.docto),
            number(row, u"UNITARIO"_s)};
        database().run(u"INSERT INTO "_s + DBLocal(u"NFT_ITEN"_s)
            + u" (CODCLI, CODIGO, VALOR, ESTOQUE_FISICO, ESTOQUE_ORIGINAL, QTDE_BAIXA, QTDE_DEVOL, MARCA, LOTE, DOCTO,"
              " UNITARIO) VALUES("_s
            + values.join(u',') + u')');
    }
}

bool TfmNFTerceiros::mayDelete()
{
    if (!ExisteNota(recordNumber(), {}, {}))
        return true;
    Messages::inform(this, u"Nota Fiscal com Saída. Impossível Excluir."_s);
    return false;
}

bool TfmNFTerceiros::askDelete()
{
    return Messages::ask(this, u"Deseja eliminar esta Nota Fiscal?"_s);
}

void TfmNFTerceiros::deleteDependents()
{
    // Goods may have left since the question was asked.
    lockInvoice();
    if (ExisteNota(recordNumber(), {}, {}))
        throw EQen(u"Nota Fiscal com Saída. Impossível Excluir."_s);
    deleteItems(key());
}
