// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_cadalimentadores.h"

#include "registries/cadalimentadores.h"

#include "module/host_services/clientdataset.h"
#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "module/look.h"
#include "module/messages.h"
#include "module/package.h"

using namespace Funcoes;
using namespace Qt::StringLiterals;

QPointer<TfmCadAlimentador> fmCadAlimentador;

Unit &Cadalimentadores::unit()
{
    static Unit unit = Unit::of<TfmCadAlimentador>(u"Alimentador de Raport"_s);
    return unit;
}

TfmCadAlimentador::TfmCadAlimentador()
    : m_ui(std::make_unique<Ui::fmCadAlimentador>())
    , TbDados(new TClientDataSet(this))
{
    fmCadAlimentador = this;
}

TfmCadAlimentador::~TfmCadAlimentador() = default;

void TfmCadAlimentador::FormCreate()
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    setEnterAsTab(true);
    TbDados->setObjectName(u"TbDados"_s);
    TbDados->CreateDataSet(
        {TField(u"Milimetros"_s, TField::Type::Integer).titled(u"Milímetros"_s).shownAs(u"0"_s).editable(),
            TField(u"Alimentadores"_s, TField::Type::Integer).shownAs(u"0"_s).editable()});
    m_ui->DBGrid1->setLines(TbDados);
    connect(m_ui->DBGrid1, &LineGrid::removeWanted, this, [this] { run([this] { BtLinhaExcluirClick(); }); });
}

void TfmCadAlimentador::FormShow()
{
    m_ui->EdtCodMat->setFocus();
}

QString TfmCadAlimentador::material() const
{
    return m_ui->EdtCodMat->text().trimmed();
}

void TfmCadAlimentador::openMaterial(const QString &code)
{
    if (hasUnsavedRows())
        return;
    m_ui->EdtCodMat->setText(code);
    EdtCodMatExit();
    m_ui->DBGrid1->setFocus();
}

void TfmCadAlimentador::EdtCodMatExit()
{
    if (material() == m_loadedMaterial && hasUnsavedRows())
        return; // the field was passed, no more
    LimpaTela();
    BuscaDados();
    m_loadedMaterial = material();
    m_loadedRows = TbDados->allRows();
}

void TfmCadAlimentador::LimpaTela()
{
    TbDados->EmptyDataSet();
    m_loadedMaterial.clear();
    m_loadedRows.clear();
    m_stored.clear();
}

/// The settings of the header's fabric in the table.
QVector<TfmCadAlimentador::Setting> TfmCadAlimentador::stored() const
{
    TTIQuery settings;
    settings.SQL.add(u"SELECT * FROM "_s + DBLocal(u"CADRAPORT"_s) + u" WHERE CODIGO = "_s + Aspas(material())
        + u" ORDER BY MILIMETROS, ALIMENTADORES"_s);
    QVector<Setting> found;
    for (settings.Open(); !settings.Eof(); settings.Next())
        found.append({settings.value(u"Milimetros"_s), settings.value(u"Alimentadores"_s)});
    return found;
}

void TfmCadAlimentador::BuscaDados()
{
    m_stored = stored();
    for (const auto &[millimetres, feeders] : m_stored) {
        TbDados->Append();
        TbDados->setValue(u"Alimentadores"_s, feeders);
        TbDados->setValue(u"Milimetros"_s, millimetres);
        TbDados->Post();
    }
    TbDados->First();
}

bool TfmCadAlimentador::hasUnsavedRows() const
{
    m_ui->DBGrid1->finish();
    return TbDados->allRows() != m_loadedRows;
}

void TfmCadAlimentador::BtLinhaInserirClick()
{
    m_ui->DBGrid1->setFocus(); // which leaves the fabric's field
    m_ui->DBGrid1->insertLine();
}

void TfmCadAlimentador::BtLinhaExcluirClick()
{
    m_ui->DBGrid1->setFocus();
    if (!m_ui->DBGrid1->finish() && m_ui->DBGrid1->markedLines() > 0 && Messages::askDelete(this))
        m_ui->DBGrid1->removeLines();
}

/// What another station has saved of the fabric since it was read is not overwritten unseen.
bool TfmCadAlimentador::mayReplace()
{
    const QVector<Setting> now = stored();
    if (now != m_stored
        && !Messages::ask(this,
            u"Outra estação gravou os alimentadores deste material depois que foram abertos aqui. "
            "Deseja substituí-los?"_s))
        return false;
    m_stored = now;
    return true;
}

/// Nor is what it saves at this instant; and its rows do not stay beside those of this station.
void TfmCadAlimentador::lockSettings()
{
    database().run(u"UPDATE "_s + DBLocal(u"MATERIAL"_s) + u" SET CODIGO = "_s + Aspas(material())
        + u" WHERE CODIGO = "_s + Aspas(material()));
    if (stored() != m_stored)
        throw EDatabaseError(EDatabaseError::Category::Conflict, {}, u"Os alimentadores são outros agora."_s, {});
}

void TfmCadAlimentador::BitBtn2Click()
{
    if (!Acessa(className(), u'A', u"0"_s, {}))
        return;
    if (material().isEmpty()) {
        refuse(u"Informe o material. Impossível Continuar."_s, m_ui->EdtCodMat);
        return;
    }
    m_ui->DBGrid1->finish();
    if (!mayReplace())
        return;
    Save save(database());
    lockSettings();
    ExcluiDados();
    GravaDados();
    save.CommitRetaining();
    LimpaTela();
    m_ui->EdtCodMat->setFocus();
    m_ui->EdtCodMat->selectAll();
}

void TfmCadAlimentador::ExcluiDados()
{
    database().run(u"DELETE FROM "_s + DBLocal(u"CADRAPORT"_s) + u" WHERE CODIGO = "_s + Aspas(material()));
}

void TfmCadAlimentador::GravaDados()
{
    const QString table = DBLocal(u"CADRAPORT"_s);
    for (TbDados->First(); !TbDados->Eof(); TbDados->Next()) {
        database().run(u"INSERT INTO "_s + table + u" (CODIGO, ALIMENTADORES, MILIMETROS) VALUES ("_s
            + Aspas(material()) + u", "_s + PermanecePonto(TbDados->AsFloat(u"Alimentadores"_s)) + u", "_s
            + PermanecePonto(TbDados->AsFloat(u"Milimetros"_s)) + u')');
    }
}

void TfmCadAlimentador::BitBtn4Click()
{
    close();
}

bool TfmCadAlimentador::mayClose()
{
    return !hasUnsavedRows()
        || Messages::ask(this, u"Há linhas que não foram gravadas. Deseja abandonar as alterações?"_s);
}
