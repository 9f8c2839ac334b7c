// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// The order screen's page "Selecione os Fios".

#include "ui_ordemfab.h"

#include "production/ordemfab.h"

#include "module/host_services/clientdataset.h"
#include "module/host_services/errors.h"
#include "module/host_services/table.h"
#include "module/look.h"

#include <QTimer>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;
using namespace YarnReservation;

namespace {

/// The yarns' groups of lots, one after the other.
const std::array bands{QColor(Qt::white), QColor(0xec, 0xf4, 0xf2)};

QString insufficient(const QString &yarn)
{
    return u"Saldo do fio %1 insuficiente. Impossível Continuar."_s.arg(yarn);
}

/// A row of the grid, its fields in their order.
enum LotField { Baixa, Codigo, Descricao, Nota, Marca, Lote, Qtde, Saldo, Data, QtdeRes, Preco, Vez };

Lot lotOf(const QVector<QVariant> &row)
{
    Lot lot;
    lot.ticked = row[Baixa].toString() == u"S";
    lot.yarn = row[Codigo].toString();
    lot.description = row[Descricao].toString();
    lot.document = row[Nota].toString();
    lot.brand = row[Marca].toString();
    lot.lot = row[Lote].toString();
    lot.need = row[Qtde].toDouble();
    lot.balance = row[Saldo].toDouble();
    lot.date = row[Data].toDate();
    lot.reserved = row[QtdeRes].toDouble();
    lot.price = row[Preco].toDouble();
    lot.turn = row[Vez].toInt();
    return lot;
}

bool anyTick(const QVector<Lot> &lots)
{
    return std::any_of(lots.begin(), lots.end(), [](const Lot &lot) { return lot.ticked; });
}

QString situationOf(const Coverage &yarn, bool lacks)
{
    if (lacks)
        return u"Falta fio"_s;
    if (yarn.missing > 0)
        return yarn.reserved > 0 ? u"Em parte"_s : u"Sem reserva"_s;
    return yarn.need > 0 ? u"Coberto"_s : QString();
}

} // namespace

void TfmMalhaOF::createYarnGrids()
{
    using Type = TField::Type;
    const QString kg = u",0.000"_s;
    TbSaldo->setObjectName(u"TbSaldo"_s);
    TbSaldo->CreateDataSet({TField(u"Baixa"_s, Type::Text, 1).asTick(), TField(u"Codigo"_s, Type::Text, 15),
        TField(u"Descricao"_s, Type::Text, 50), TField(u"Nota"_s, Type::Text, 7), TField(u"Marca"_s, Type::Text, 30),
        TField(u"Lote"_s, Type::Text, 15), TField(u"Qtde"_s, Type::Float).shownAs(kg),
        TField(u"Saldo"_s, Type::Float).shownAs(kg), TField(u"Data"_s, Type::Date),
        TField(u"QtdeRes"_s, Type::Float).titled(u"Reserva"_s).shownAs(kg), TField(u"Preco"_s, Type::Float),
        TField(u"Vez"_s, Type::Integer).hidden()});
    m_yarns->CreateDataSet({TField(u"Codigo"_s, Type::Text, 15).titled(u"Fio"_s),
        TField(u"Descricao"_s, Type::Text, 50).titled(u"Descrição"_s),
        TField(u"Necessario"_s, Type::Float).titled(u"Necessário"_s).shownAs(kg),
        TField(u"Reservado"_s, Type::Float).titled(u"Reservado"_s).shownAs(kg),
        TField(u"Falta"_s, Type::Float).titled(u"Falta"_s).shownAs(kg),
        TField(u"Situacao"_s, Type::Text, 20).titled(u"Situação"_s)});
    m_ui->DBGrid2->setDataSet(TbSaldo);
    m_ui->DBGrid3->setDataSet(m_yarns);
    m_ui->DBGrid3->setSelectionMode(QAbstractItemView::NoSelection);
}

void TfmMalhaOF::enableTicks(bool on)
{
    TbSaldo->field(u"Baixa"_s).readOnly = !on;
    m_superfluous.clear();
    warn(false);
    showYarnHint();
}

YarnOrder TfmMalhaOF::yarnOrder() const
{
    return {recordNumber(), tbOF_Malha->AsString(u"MATERIAL"_s), tbOF_Malha->AsString(u"CLIENTE"_s),
        tbOF_Malha->AsFloat(u"KG_TOTAL"_s)};
}

void TfmMalhaOF::refreshYarn()
{
    if (m_lotsTaken || m_yarnOf != yarnOrder())
        FiosPendentes();
}

void TfmMalhaOF::FiosPendentes()
{
    const YarnOrder order = yarnOrder();
    YarnLots yarn(database());
    QVector<Lot> lots = yarn.lotsOf(order, m_mode);
    if (isEditing() && m_yarnOf && m_yarnOf->fabric == order.fabric && m_yarnOf->client == order.client)
        keepTicks(lots, lotsInGrid(), m_mode);
    m_shares = yarn.sharesOf(order.fabric);
    m_yarnOf = order;
    m_lotsTaken = false;
    m_superfluous.clear();
    fillLots(lots);
    showCoverage();
}

void TfmMalhaOF::fillLots(const QVector<Lot> &lots)
{
    m_loadingYarn = true;
    TbSaldo->EmptyDataSet();
    for (const Lot &lot : lots) {
        TbSaldo->Append();
        TbSaldo->setValue(u"Baixa"_s, lot.ticked ? u"S"_s : u"N"_s);
        TbSaldo->setValue(u"Codigo"_s, lot.yarn);
        TbSaldo->setValue(u"Descricao"_s, lot.description);
        TbSaldo->setValue(u"Nota"_s, lot.document);
        TbSaldo->setValue(u"Marca"_s, lot.brand);
        TbSaldo->setValue(u"Lote"_s, lot.lot);
        TbSaldo->setValue(u"Qtde"_s, lot.need);
        TbSaldo->setValue(u"Saldo"_s, lot.balance);
        TbSaldo->setValue(u"Data"_s, lot.date);
        TbSaldo->setValue(u"QtdeRes"_s, lot.reserved);
        TbSaldo->setValue(u"Preco"_s, lot.price);
        TbSaldo->setValue(u"Vez"_s, lot.turn);
        TbSaldo->Post();
    }
    TbSaldo->First();
    m_loadingYarn = false;
}

QVector<Lot> TfmMalhaOF::lotsInGrid() const
{
    QVector<Lot> lots;
    for (const QVector<QVariant> &row : TbSaldo->allRows())
        lots.append(lotOf(row));
    return lots;
}

void TfmMalhaOF::TbSaldoBeforePost()
{
    if (m_loadingYarn)
        return;
    QVector<QVariant> row;
    for (const TField &field : TbSaldo->fields())
        row.append(TbSaldo->value(field.name));
    const Lot lot = lotOf(row);
    const Lot stored = posted(lot, lotsInGrid(), m_mode);
    TbSaldo->setValue(u"Baixa"_s, stored.ticked ? u"S"_s : u"N"_s);
    TbSaldo->setValue(u"QtdeRes"_s, stored.reserved);
    TbSaldo->setValue(u"Vez"_s, stored.turn);
    m_superfluous = lot.ticked && !stored.ticked ? lot.yarn : QString();
}

void TfmMalhaOF::TbSaldoAfterPost()
{
    if (!m_loadingYarn)
        showCoverage();
}

/// Need, reserved and missing of each yarn; one that would keep the order from being saved is marked.
void TfmMalhaOF::showCoverage()
{
    const QVector<Lot> lots = lotsInGrid();
    const bool checked = m_mode == Mode::Checked && anyTick(lots);
    QHash<QString, QColor> colours;
    bool lacking = false;
    m_yarns->EmptyDataSet();
    for (const Coverage &yarn : coverageOf(m_shares, tbOF_Malha->AsFloat(u"KG_TOTAL"_s), lots)) {
        const bool lacks = checked && yarn.missing > 0;
        lacking |= lacks;
        colours.insert(yarn.yarn, lacks ? Look::amiss() : bands[colours.size() % bands.size()]);
        m_yarns->Append();
        m_yarns->setValue(u"Codigo"_s, yarn.yarn);
        m_yarns->setValue(u"Descricao"_s, yarn.description);
        m_yarns->setValue(u"Necessario"_s, yarn.need);
        m_yarns->setValue(u"Reservado"_s, yarn.reserved);
        m_yarns->setValue(u"Falta"_s, yarn.missing);
        m_yarns->setValue(u"Situacao"_s, situationOf(yarn, lacks));
        m_yarns->Post();
    }
    m_yarns->First();
    m_ui->DBGrid2->setRowColour([this, colours](int row) { return colours[TbSaldo->cell(row, Codigo).toString()]; });
    m_ui->DBGrid3->setRowColour([this, colours](int row) { return colours[m_yarns->cell(row, 0).toString()]; });
    warn(lacking && isEditing());
    showYarnHint();
}

/// Tells on every page that the order cannot be saved as it is.
void TfmMalhaOF::warn(bool lacking)
{
    m_ui->PageControl->setTabIcon(m_ui->PageControl->indexOf(m_ui->TabFios),
        lacking ? style()->standardIcon(QStyle::SP_MessageBoxWarning) : QIcon());
}

void TfmMalhaOF::showYarnHint()
{
    QString hint = u"Espaço ou clique marca o lote. Os lotes são consumidos na ordem em que são marcados."_s;
    if (!isEditing())
        hint = u"Para marcar lotes, use Incluir ou Alterar."_s;
    else if (!m_superfluous.isEmpty())
        hint = u"O fio %1 já está coberto: o lote não é necessário."_s.arg(m_superfluous);
    else if (tbOF_Malha->AsFloat(u"KG_TOTAL"_s) <= 0)
        hint = u"Informe o peso da OF antes de marcar os lotes."_s;
    else if (TbSaldo->IsEmpty())
        hint = u"O cliente não tem saldo dos fios desta malha."_s;
    m_ui->lbFios->setText(hint);
}

bool TfmMalhaOF::hasEnoughYarn()
{
    refreshYarn();
    const QVector<Lot> lots = lotsInGrid();
    const std::optional<QString> yarn =
        insufficientYarn(coverageOf(m_shares, tbOF_Malha->AsFloat(u"KG_TOTAL"_s), lots), lots, m_mode);
    if (!yarn)
        return true;
    m_ui->PageControl->setCurrentWidget(m_ui->TabFios);
    TbSaldo->Locate(u"Codigo"_s, {*yarn});
    refuse(insufficient(*yarn), m_ui->DBGrid2);
    return false;
}

void TfmMalhaOF::GravaFiosBaixa()
{
    const QVector<Lot> lots = lotsInGrid();
    YarnLots yarn(database());
    if (m_mode == Mode::Checked) {
        // Another order may have reserved of these lots since they were shown.
        yarn.lock(yarnOrder(), lots);
        if (const std::optional<QString> taken = overdrawnYarn(lots, yarn.lotsOf(yarnOrder(), m_mode))) {
            m_lotsTaken = true;
            // When the save is undone, so that behind the message the lots stand as they are now.
            QTimer::singleShot(0, this, [this] { run([this] { refreshYarn(); }); });
            throw EQen(insufficient(*taken));
        }
    }
    yarn.replace(recordNumber(), lots);
}

void TfmMalhaOF::BitBtn2Click()
{
    if (!isEditing())
        return;
    refreshYarn();
    tbOF_Malha->setValue(u"KG_TOTAL"_s, CalculaSaldoPeso());
    refreshYarn();
    Calcula_Saldo();
}

double TfmMalhaOF::CalculaSaldoPeso()
{
    return largestWeight(YarnLots(database()).linesOf(yarnOrder().fabric), lotsInGrid());
}
