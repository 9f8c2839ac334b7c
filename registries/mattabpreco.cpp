// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_mattabpreco.h"

#include "registries/mattabpreco.h"

#include "module/host_services/clock.h"
#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/format.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "module/host_services/tabelas.h"
#include "module/host_services/table.h"
#include "module/look.h"
#include "module/messages.h"
#include "module/package.h"
#include "registries/pricecopy.h"
#include "registries/pricerules.h"

#include <QBoxLayout>
#include <QKeyEvent>

#include <algorithm>

using namespace Funcoes;
using namespace Qt::StringLiterals;

QPointer<TfmMatTabPreco> fmMatTabPreco;

Unit &Mattabpreco::unit()
{
    static Unit unit = Unit::of<TfmMatTabPreco>(u"Tabela de Preços"_s);
    return unit;
}

namespace {

const QString keyFields = QStringLiteral("REGIAO; CODIGO; GRUPO_COR");
constexpr int descriptionSize = 30;

QVariantList keyOf(const TDataSet &prices)
{
    return {prices.value(u"REGIAO"_s), prices.value(u"CODIGO"_s), prices.value(u"GRUPO_COR"_s)};
}

/// Of the record as it stands in the table, whatever has been typed since.
QVariantList savedKeyOf(const TTITable &table)
{
    QVariantList key;
    for (const QString &field : {u"REGIAO"_s, u"CODIGO"_s, u"GRUPO_COR"_s})
        key.append(table.cell(0, table.fieldIndex(field)));
    return key;
}

/// Nothing is nothing, of whichever type.
bool isSameKey(const QVariantList &left, const QVariantList &right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
        [](const QVariant &l, const QVariant &r) { return l.toString() == r.toString(); });
}

QString whereKeyIs(const QVariantList &key)
{
    QStringList terms;
    const QStringList fields{u"REGIAO"_s, u"CODIGO"_s, u"GRUPO_COR"_s};
    for (qsizetype i = 0; i < fields.size(); ++i)
        terms.append(fields[i] + (key[i].isNull() ? u" IS NULL"_s : u" = "_s + Aspas(key[i].toString())));
    return u" WHERE "_s + terms.join(u" AND "_s);
}

/// The mill keeps one price for all colours.
bool withoutColourGroups()
{
    return BuscaParametro(u"VEN"_s, 190) == u"N"_s;
}

} // namespace

TfmMatTabPreco::TfmMatTabPreco()
    : m_ui(std::make_unique<Ui::fmMatTabPreco>())
    , QryPrecos(new TTIQuery(this))
{
    fmMatTabPreco = this;
    QryPrecos->setObjectName(u"QryPrecos"_s);
}

TfmMatTabPreco::~TfmMatTabPreco() = default;

void TfmMatTabPreco::FormCreate()
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    setEnterAsTab(true);
    prepareBar();
    m_ui->PainelCopia->hide();
    // Where all colours have one price, the field can be reached and lies in nobody's way.
    m_ui->lbSemCor->setVisible(withoutColourGroups());
    m_ui->EdtCor->setFocusPolicy(withoutColourGroups() ? Qt::ClickFocus : Qt::StrongFocus);
    QVector<TField> prices;
    for (const QString &name : PriceRules::instalments())
        prices.append(TField(name, TField::Type::Float).shownAs(u",0.00##"_s));
    QryPrecos->Describe(prices);
    m_ui->DBGrid1->setDataSet(QryPrecos);
    AbreTabelas({u"TBRegiao"_s, u"tbMateriais"_s, u"TBTabPrazos"_s, u"tbTabPreco"_s});
    openTable(Tabela->tabela(u"tbTabPreco"_s), u"TABPRECO"_s, u"REGIAO;CODIGO;GRUPO_COR"_s);
    ListaPrecos();
    QryPrecos->Last();
    QryPrecosAfterScroll(); // the handlers are tied after this
}

/// Here the rows are moved through in their grid, and the bar has a button more, before "&Fechar".
void TfmMatTabPreco::prepareBar()
{
    const QStringList names{u"sbPrimeiro"_s, u"sbAnterior"_s, u"sbProximo"_s, u"sbUltimo"_s};
    const QStringList tips{u"Primeiro registro (Ctrl+Home)"_s, u"Registro anterior (seta para cima)"_s,
        u"Próximo registro (seta para baixo)"_s, u"Último registro (Ctrl+End)"_s};
    for (int i = 0; i < names.size(); ++i) {
        auto *button = m_ui->Barras->findChild<QWidget *>(names[i]);
        button->setObjectName(u"SpeedButton%1"_s.arg(i + 1));
        button->setToolTip(tips[i]);
    }
    auto *bar = m_ui->Barras->findChild<QBoxLayout *>(u"layoutBarra"_s);
    bar->insertWidget(bar->count() - 2, m_ui->BtincluirCarlos); // what follows are the free space and "&Fechar"
}

void TfmMatTabPreco::FormClose()
{
    table()->Cancel(); // it is shared, and may stay open for others
}

bool TfmMatTabPreco::FormKeyDown(QKeyEvent *event)
{
    if (isEditing() && event->key() == Qt::Key_F6 && event->modifiers() == Qt::NoModifier) {
        repeatPrice();
        return true;
    }
    // The grid pages through its rows itself.
    if (event->key() == Qt::Key_F4)
        return TRecordForm::FormKeyDown(event);
    return TForm::FormKeyDown(event);
}

void TfmMatTabPreco::Bar_Confirma(bool editing)
{
    if (!editing) {
        m_superseded.clear();
        m_repeated = false;
    }
    TRecordForm::Bar_Confirma(editing);
    m_ui->BtincluirCarlos->setEnabled(!editing);
    m_ui->DBGrid1->setEnabled(!editing);
    if (!editing)
        m_ui->DBGrid1->setFocus();
}

TRecordForm::LogTexts TfmMatTabPreco::logTexts() const
{
    return {};
}

QString TfmMatTabPreco::recordNumber() const
{
    return table()->AsString(u"CODIGO"_s);
}

/// Prices are typed region by region.
void TfmMatTabPreco::newRecord()
{
    table()->setValue(u"REGIAO"_s, m_lastRegion);
}

QWidget *TfmMatTabPreco::firstField(bool inserting) const
{
    return inserting ? static_cast<QWidget *>(m_ui->EdtRegiao) : m_ui->EdtParcela01;
}

void TfmMatTabPreco::ListaPrecos()
{
    QryPrecos->SQL.clear();
    // What has no region or product stands first, on every engine.
    QryPrecos->SQL.add(DBLocal_SQL(u"SELECT TABPRECO.CODIGO, TABPRECO.DESC_PRODUTO, TABPRECO.REGIAO, REGIAO.DESCRICAO,"
                                   " TABPRECO.GRUPO_COR, TABPRECO."_s
        + PriceRules::instalments().join(u", TABPRECO."_s) + uR"(
        FROM {TABPRECO} TABPRECO
        LEFT OUTER JOIN {REGIAO} REGIAO ON (TABPRECO.REGIAO = REGIAO.REGIAO)
        ORDER BY TABPRECO.REGIAO NULLS FIRST, TABPRECO.CODIGO NULLS FIRST, TABPRECO.GRUPO_COR NULLS FIRST)"_s));
    m_listing = true;
    QryPrecos->Open();
    m_listing = false;
}

void TfmMatTabPreco::showDerived()
{
    if (!isEditing())
        ListaPrecos();
    m_listing = true;
    const bool found = table()->rowCount() > 0 && QryPrecos->Locate(keyFields, keyOf(*table()));
    m_listing = false;
    if (!found)
        QryPrecosAfterScroll();
}

void TfmMatTabPreco::QryPrecosAfterScroll()
{
    if (m_listing || isEditing() || QryPrecos->IsEmpty())
        return;
    if (!table()->Locate(keyFields, keyOf(*QryPrecos)))
        showDerived(); // another station has deleted it
}

void TfmMatTabPreco::goTo(const QVariantList &key)
{
    QryPrecos->Locate(keyFields, key);
}

/// Through the rows as they are shown, which may be sorted by a title.
void TfmMatTabPreco::moveTo(int row)
{
    QAbstractItemModel *rows = m_ui->DBGrid1->model();
    if (rows->rowCount() == 0)
        return;
    if (row >= rows->rowCount() && rows->canFetchMore({}))
        rows->fetchMore({});
    const int column = qMax(0, m_ui->DBGrid1->currentIndex().column());
    m_ui->DBGrid1->setCurrentIndex(rows->index(qBound(0, row, rows->rowCount() - 1), column));
}

void TfmMatTabPreco::SpeedButton1Click()
{
    moveTo(0);
}

void TfmMatTabPreco::SpeedButton2Click()
{
    moveTo(m_ui->DBGrid1->currentIndex().row() - 1);
}

void TfmMatTabPreco::SpeedButton3Click()
{
    moveTo(m_ui->DBGrid1->currentIndex().row() + 1);
}

void TfmMatTabPreco::SpeedButton4Click()
{
    QryPrecos->FetchAll();
    moveTo(QryPrecos->rowCount() - 1);
}

void TfmMatTabPreco::DBGrid1DblClick()
{
    BtnAlteraClick();
}

void TfmMatTabPreco::search()
{
    m_ui->PqTabPreco->AbrePesquisa();
}

void TfmMatTabPreco::PqTabPrecoFechaPesquisa()
{
    const auto chosen = [this](const QString &field) {
        const QString text = m_ui->PqTabPreco->RetornoPesquisa(field);
        return text.isEmpty() ? QVariant() : QVariant(text);
    };
    if (!chosen(u"CODIGO"_s).isNull())
        goTo({chosen(u"REGIAO"_s), chosen(u"CODIGO"_s), chosen(u"GRUPO_COR"_s)});
}

void TfmMatTabPreco::EdtCodArtExit()
{
    if (table()->state() == TTITable::State::Insert)
        Verifica_Existe();
}

/// The pair of region and product decides; of several colour groups the one typed is altered, else the lowest.
void TfmMatTabPreco::Verifica_Existe()
{
    TTIQuery recorded;
    recorded.SQL.add(u"SELECT * FROM "_s + DBLocal(u"TABPRECO"_s) + u" TABPRECO WHERE TABPRECO.REGIAO = "_s
        + Aspas(table()->AsString(u"REGIAO"_s)) + u" AND TABPRECO.CODIGO = "_s + Aspas(table()->AsString(u"CODIGO"_s))
        + u" ORDER BY TABPRECO.GRUPO_COR"_s);
    recorded.Open();
    if (recorded.IsEmpty())
        return;
    recorded.Locate(u"GRUPO_COR"_s, {table()->value(u"GRUPO_COR"_s)});
    const QVariantList key = keyOf(recorded);
    const bool alter = Messages::ask(this, u"Este Cadastro já Existe, deseja alterar?"_s);
    SbDesistirClick();
    if (!alter)
        return;
    goTo(key);
    BtnAlteraClick();
}

void TfmMatTabPreco::EdtCodArtChange()
{
    if (!isEditing())
        return;
    const QString code = m_ui->EdtCodArt->text().trimmed();
    QString description;
    if (!code.isEmpty() && table()->state() == TTITable::State::Insert)
        description = Busca_Valor(u"MATERIAL"_s, u"CODIGO"_s, u"DESCRICAO"_s, Aspas(code));
    else if (!code.isEmpty())
        description = Busca_Valor(u"TABPRECO"_s, u"CODIGO"_s, u"DESC_PRODUTO"_s, Aspas(code));
    table()->setValue(u"DESC_PRODUTO"_s, description.left(descriptionSize));
}

void TfmMatTabPreco::EdtDesArtExit()
{
    const QString code = m_ui->EdtCodArt->text().trimmed();
    if (!isEditing() || code.isEmpty() || !m_ui->EdtDesArt->text().trimmed().isEmpty())
        return;
    table()->setValue(
        u"DESC_PRODUTO"_s, Busca_Valor(u"PRODUTO"_s, u"CODIGO"_s, u"DESCRICAO"_s, Aspas(code)).left(descriptionSize));
}

bool TfmMatTabPreco::mayConfirm()
{
    fillDefaults();
    if (!mayTakeOver())
        return false;
    if (table()->state() == TTITable::State::Insert)
        m_lastRegion = table()->AsString(u"REGIAO"_s);
    return true;
}

void TfmMatTabPreco::fillDefaults()
{
    if (withoutColourGroups())
        table()->setValue(u"GRUPO_COR"_s, u"00"_s);
    else
        fillEmpty(u"GRUPO_COR"_s, u"00"_s);
    fillEmpty(u"COLECAO"_s, u"00"_s);
    table()->setValue(u"DT_ALTERACAO"_s, Clock::now());
    for (const QString &field : {u"ACRESCIMO"_s, u"DESCONTO"_s, u"COMISSAO"_s})
        fillEmpty(field, u"0"_s);
    fillEmpty(u"ORIGEM"_s, u"M"_s);
}

void TfmMatTabPreco::fillEmpty(const QString &field, const QString &text)
{
    if (table()->AsString(field).isEmpty())
        table()->setValue(field, text);
}

int TfmMatTabPreco::countOf(const QVariantList &key) const
{
    return database().value(u"SELECT COUNT(*) FROM "_s + DBLocal(u"TABPRECO"_s) + whereKeyIs(key)).toInt();
}

/// A product has one price in a region and colour group: what is typed takes the place of what is there.
bool TfmMatTabPreco::mayTakeOver()
{
    const QVariantList key = keyOf(*table());
    const bool itsOwn = table()->state() == TTITable::State::Edit && isSameKey(key, savedKeyOf(*table()));
    const int count = countOf(key);
    m_first = count == 0;
    if (m_first || (itsOwn && count == 1))
        return true;
    const QString question = itsOwn
        ? u"Este preço está gravado %1 vezes. Deseja ficar só com o que foi digitado?"_s.arg(count)
        : u"Já existe o preço deste material nesta região e cor. Deseja substituí-lo?"_s;
    if (!Messages::ask(this, question)) {
        m_ui->EdtRegiao->setFocus();
        return false;
    }
    takeOver(key, count);
    return true;
}

/// Goes on editing the row of that key, or the one for several that there are, with all that was typed.
void TfmMatTabPreco::takeOver(const QVariantList &key, int count)
{
    QVariantList typed;
    for (const TField &field : table()->fields())
        typed.append(table()->value(field.name));
    if (table()->state() == TTITable::State::Edit && !isSameKey(key, savedKeyOf(*table())))
        m_superseded.append(savedKeyOf(*table()));
    table()->Cancel();
    m_repeated = count > 1;
    if (!m_repeated && table()->Locate(keyFields, key))
        table()->Edit();
    else
        table()->Append();
    for (qsizetype i = 0; i < typed.size(); ++i)
        table()->setValue(table()->fields()[i].name, typed[i]);
}

/// Two stations that store the same new price at one instant do so one after the other, and the second is told.
void TfmMatTabPreco::requireFirst() const
{
    lockRegion(database(), table()->AsString(u"REGIAO"_s));
    if (countOf(keyOf(*table())) > 1)
        throw EDatabaseError(EDatabaseError::Category::Conflict, {}, u"O preço já existe."_s, {});
}

void TfmMatTabPreco::writeDependents()
{
    if (m_first)
        requireFirst();
    const QString remove = u"DELETE FROM "_s + DBLocal(u"TABPRECO"_s);
    for (const QVariantList &key : m_superseded)
        database().run(remove + whereKeyIs(key));
    if (!m_repeated)
        return;
    // The row that was just written is known by its moment.
    const QDateTime moment = table()->value(u"DT_ALTERACAO"_s).toDateTime();
    database().run(remove + whereKeyIs(keyOf(*table())) + u" AND (DT_ALTERACAO IS NULL OR DT_ALTERACAO <> "_s
        + Aspas(Format::sqlDate(moment.date()) + u' ' + Format::time(moment.time())) + u')');
}

bool TfmMatTabPreco::askDelete()
{
    const int count = countOf(keyOf(*table()));
    if (count < 2)
        return TRecordForm::askDelete();
    return Messages::ask(
        this, u"Este preço está gravado %1 vezes. Deseja eliminar todas?"_s.arg(count), u"Eliminação de Registro"_s);
}

QVector<TCurrencyEdit *> TfmMatTabPreco::instalmentEdits() const
{
    QVector<TCurrencyEdit *> edits;
    for (int i = 1; i <= PriceRules::instalments().size(); ++i)
        edits.append(findChild<TCurrencyEdit *>(u"EdtParcela%1"_s.arg(i, 2, 10, QChar(u'0'))));
    return edits;
}

/// The price of the instalment in which the user is, for all that follow; in the average, their mean.
void TfmMatTabPreco::repeatPrice()
{
    const QVector<TCurrencyEdit *> edits = instalmentEdits();
    QVector<double> prices;
    for (const TCurrencyEdit *edit : edits)
        prices.append(edit->value());
    if (m_ui->EdtPrecoMed->hasFocus())
        m_ui->EdtPrecoMed->setValue(PriceRules::average(prices));
    const auto from = std::find_if(edits.begin(), edits.end(), [](const QWidget *edit) { return edit->hasFocus(); });
    for (auto edit = from; edit != edits.end(); ++edit)
        (*edit)->setValue((*from)->value());
}
