// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
// The lines of the rapport that is on the screen: typed, looked up, copied, moved, brought in from other rapports,
// drawn, and turned into a composition.

#include "ui_cadraport.h"

#include "registries/cadraport.h"

#include "module/host_services/clientdataset.h"
#include "module/host_services/database.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "module/messages.h"

#include <QKeyEvent>
#include <QScopedValueRollback>

using namespace Funcoes;
using namespace Qt::StringLiterals;

void TfmCadRaport::createGrids()
{
    using Type = TField::Type;
    TbDados->setObjectName(u"TbDados"_s);
    TbDados->CreateDataSet(
        {TField(u"Ordem"_s, Type::Integer), TField(u"CodigoFio"_s, Type::Text, 15).titled(u"Código Fio"_s).editable(),
            TField(u"DescricaoFio"_s, Type::Text, 50).titled(u"Descrição Fio"_s),
            TField(u"Cor"_s, Type::Text, 6).editable(),
            TField(u"DescricaoCor"_s, Type::Text, 80).titled(u"Descrição Cor"_s),
            TField(u"Milimetros"_s, Type::Integer).titled(u"Milímetros"_s).shownAs(u"0"_s).editable(),
            TField(u"Alimentadores"_s, Type::Integer), TField(u"Percentual"_s, Type::Float).hidden(),
            TField(u"LFA"_s, Type::Integer).hidden(), TField(u"Agrupador"_s, Type::Text, 6).editable(),
            TField(u"Repeticao"_s, Type::Integer).titled(u"Repetição"_s).shownAs(u"0"_s).editable(),
            TField(u"Desperdicio"_s, Type::Float).titled(u"Desperdício"_s).shownAs(u"0.00"_s).editable()});
    TbComposicao->setObjectName(u"TbComposicao"_s);
    TbComposicao->CreateDataSet({TField(u"CodigoFio"_s, Type::Text, 15).titled(u"Código Fio"_s),
        TField(u"DescricaoFio"_s, Type::Text, 50).titled(u"Descrição Fio"_s), TField(u"Cor"_s, Type::Text, 6),
        TField(u"DescricaoCor"_s, Type::Text, 80).titled(u"Descrição Cor"_s),
        TField(u"Percentual"_s, Type::Float).titled(u"%Perc"_s).shownAs(u"0.00000"_s)});
    QryAcesso->setObjectName(u"QryAcesso"_s);
    m_ui->DBGrid1->setLines(TbDados, u"Ordem"_s);
    m_ui->DBGrid2->setDataSet(TbComposicao);
    m_ui->DBGrid->setDataSet(QryAcesso);
    connect(m_ui->DBGrid1, &LineGrid::linesChanged, this, [this] { run([this] { showLines(); }); });
    connect(m_ui->DBGrid1, &LineGrid::removeWanted, this, [this] { run([this] { BitBtn3Click(); }); });
    connect(m_ui->Desenho, &RaportPicture::lineClicked, this, [this](int line) {
        TbDados->setRow(line);
        m_ui->DBGrid1->setFocus();
    });
}

bool TfmCadRaport::enterLines()
{
    m_ui->DBGrid1->setFocus();
    return m_ui->DBGrid1->finish();
}

void TfmCadRaport::DBGrid1KeyDown(QKeyEvent *event)
{
    if (event->key() != Qt::Key_F4 || event->modifiers() != Qt::NoModifier)
        return;
    event->accept();
    lookUp(TbDados, TbDados->IsEmpty() ? u"CodigoFio"_s : m_ui->DBGrid1->currentField());
}

void TfmCadRaport::DBGrid2KeyDown(QKeyEvent *event)
{
    if (event->key() != Qt::Key_F4 || event->modifiers() != Qt::NoModifier)
        return;
    event->accept();
    const int column = m_ui->DBGrid2->currentIndex().column();
    for (const QString &field : {u"CodigoFio"_s, u"Cor"_s}) {
        if (m_ui->DBGrid2->columnOf(field) == column)
            lookUp(TbComposicao, field);
    }
}

void TfmCadRaport::lookUp(TClientDataSet *lines, const QString &field)
{
    m_lookedUpIn = lines;
    if (field == u"CodigoFio"_s) {
        m_ui->PqFio->AbrePesquisa();
    } else if (field == u"Cor"_s) {
        m_ui->PqCorFio->setSQL(listOfColours(lines->AsString(u"CodigoFio"_s)));
        m_ui->PqCorFio->AbrePesquisa();
    } else if (field == u"Agrupador"_s) {
        m_ui->PqAgrupador->AbrePesquisa();
    }
}

/// The composition is looked at, not typed: what is chosen there goes nowhere.
void TfmCadRaport::takeInto(const QString &field, const QString &chosen)
{
    if (!chosen.isEmpty() && m_lookedUpIn == TbDados)
        m_ui->DBGrid1->typeInto(field, chosen);
}

void TfmCadRaport::PqFioFechaPesquisa()
{
    takeInto(u"CodigoFio"_s, m_ui->PqFio->RetornoPesquisa(u"CODIGO"_s));
}

void TfmCadRaport::PqCorFioFechaPesquisa()
{
    takeInto(u"Cor"_s, m_ui->PqCorFio->RetornoPesquisa(u"COR"_s));
}

void TfmCadRaport::PqAgrupadorFechaPesquisa()
{
    takeInto(u"Agrupador"_s, m_ui->PqAgrupador->RetornoPesquisa(u"CODIGO"_s));
}

void TfmCadRaport::TbDadosCodigoFioChange()
{
    if (m_loading)
        return;
    const QString yarn = TbDados->AsString(u"CodigoFio"_s).trimmed();
    TbDados->setValue(u"CodigoFio"_s, yarn);
    TbDados->setValue(u"DescricaoFio"_s, Busca_Valor(u"MATERIAL"_s, u"CODIGO"_s, u"DESCRICAO"_s, Aspas(yarn)));
}

void TfmCadRaport::TbDadosCorChange()
{
    if (m_loading)
        return;
    const QString colour = TbDados->AsString(u"Cor"_s).trimmed();
    TbDados->setValue(u"Cor"_s, colour);
    TbDados->setValue(u"DescricaoCor"_s, Busca_Valor(u"CADCOR"_s, u"COR"_s, u"DESCRICAO"_s, Aspas(colour)));
}

int TfmCadRaport::feedersOf(const QVariant &millimetres) const
{
    return Busca_Valor(u"CADRAPORT"_s, u"CODIGO;MILIMETROS"_s, u"ALIMENTADORES"_s,
        Aspas(pair().material) + u';' + Aspas(QString::number(millimetres.toInt())))
        .toInt();
}

void TfmCadRaport::TbDadosMilimetrosChange()
{
    if (!m_loading)
        TbDados->setValue(u"Alimentadores"_s, feedersOf(TbDados->value(u"Milimetros"_s)));
}

/// After the feeders' registry was open.
void TfmCadRaport::refreshFeeders()
{
    const bool unchanged = !isChanged();
    const int current = TbDados->row();
    {
        const QScopedValueRollback loading(m_loading, true);
        for (int row = 0; row < TbDados->rowCount(); ++row) {
            TbDados->setRow(row);
            TbDados->Edit();
            TbDados->setValue(u"Alimentadores"_s, feedersOf(TbDados->value(u"Milimetros"_s)));
            TbDados->Post();
        }
        TbDados->setRow(current);
    }
    showLines();
    if (unchanged)
        m_loadedState = state(); // feeders are not part of what is saved
}

void TfmCadRaport::TbDadosAfterPost()
{
    if (!m_loading)
        showLines();
}

void TfmCadRaport::TbDadosAfterScroll()
{
    if (!m_loading)
        showCurrentLine();
}

/// In the picture, and in words beneath the lines.
void TfmCadRaport::showCurrentLine()
{
    m_ui->Desenho->setCurrentLine(TbDados->row());
    QStringList names{TbDados->AsString(u"DescricaoFio"_s), TbDados->AsString(u"DescricaoCor"_s)};
    names.removeAll(QString());
    m_ui->lbLinha->setText(
        names.isEmpty() ? QString() : u"Linha %1: %2"_s.arg(TbDados->row() + 1).arg(names.join(u" · "_s)));
}

QColor TfmCadRaport::shadeOf(const QString &colour)
{
    if (!m_shades.contains(colour)) {
        m_shades.insert(
            colour, RaportPicture::shadeOf(Busca_Valor(u"CADCOR"_s, u"COR"_s, u"TONALIDADE"_s, Aspas(colour))));
    }
    return m_shades.value(colour);
}

/// The total of the feeders and the picture.
void TfmCadRaport::showLines()
{
    m_ui->EdtAlimentadores->setValue(TbDados->sum(u"Alimentadores"_s));
    QVector<RaportPicture::Stripe> stripes;
    const auto named = [this](int row, const QString &text, const QString &code) {
        const QString shown = TbDados->cell(row, TbDados->fieldIndex(text)).toString();
        return shown.isEmpty() ? TbDados->cell(row, TbDados->fieldIndex(code)).toString() : shown;
    };
    const auto number = [this](int row, const QString &field) {
        return TbDados->cell(row, TbDados->fieldIndex(field)).toInt();
    };
    for (int row = 0; row < TbDados->rowCount(); ++row) {
        stripes.append({named(row, u"DescricaoFio"_s, u"CodigoFio"_s), named(row, u"DescricaoCor"_s, u"Cor"_s),
            shadeOf(TbDados->cell(row, TbDados->fieldIndex(u"Cor"_s)).toString()), number(row, u"Alimentadores"_s),
            number(row, u"Repeticao"_s)});
    }
    m_ui->Desenho->setStripes(stripes);
    showCurrentLine();
}

void TfmCadRaport::BtLinhaInserirClick()
{
    m_ui->DBGrid1->setFocus();
    m_ui->DBGrid1->insertLine();
}

void TfmCadRaport::BtLinhaCopiarClick()
{
    m_ui->DBGrid1->setFocus();
    m_ui->DBGrid1->copyLines();
}

void TfmCadRaport::BtLinhaSobeClick()
{
    m_ui->DBGrid1->setFocus();
    m_ui->DBGrid1->moveLines(-1);
}

void TfmCadRaport::BtLinhaDesceClick()
{
    m_ui->DBGrid1->setFocus();
    m_ui->DBGrid1->moveLines(1);
}

void TfmCadRaport::BitBtn3Click()
{
    if (!enterLines() && m_ui->DBGrid1->markedLines() > 0 && Messages::askDelete(this))
        m_ui->DBGrid1->removeLines();
}

void TfmCadRaport::Importarcomposio1Click()
{
    enterLines();
    if (!requirePair())
        return;
    m_ui->PqImpCor->setSQL(DBLocal_SQL(uR"(
        SELECT DISTINCT CADCOR.DESCRICAO, CADCOR.COR FROM {RAPORT} RAPORT
        INNER JOIN {CADCOR} CADCOR ON CADCOR.COR = RAPORT.COR
        WHERE MATERIAL = )"_s)
        + Aspas(pair().material));
    m_ui->PqImpCor->AbrePesquisa();
}

/// The header's colour stays: what is saved is the copy.
void TfmCadRaport::PqImpCorFechaPesquisa()
{
    const QString colour = m_ui->PqImpCor->RetornoPesquisa(u"COR"_s);
    if (colour.isEmpty())
        return;
    LimpaGrades();
    BuscaDados(colour);
    m_loaded = pair();
    const QString name = Busca_Valor(u"CADCOR"_s, u"COR"_s, u"DESCRICAO"_s, Aspas(colour));
    m_ui->gbRaport->setTitle(u"Composição Raport (cópia da cor %1 %2)"_s.arg(colour, name));
}

void TfmCadRaport::Importarcomposiodomaterial1Click()
{
    enterLines();
    if (!requirePair())
        return;
    if (!TbDados->IsEmpty()) {
        refuse(u"Existem composições gravadas para este material, remova-as antes de importar."_s, m_ui->DBGrid1);
        return;
    }
    m_ui->PqImpMaterial->AbrePesquisa();
}

void TfmCadRaport::PqImpMaterialFechaPesquisa()
{
    const QString material = m_ui->PqImpMaterial->RetornoPesquisa(u"CODIGO"_s);
    if (material.isEmpty())
        return;
    TTIQuery known;
    known.SQL.add(DBLocal_SQL(u"SELECT RAPORT.MATERIAL, RAPORT.COR FROM {RAPORT} RAPORT WHERE RAPORT.MATERIAL = "_s)
        + Aspas(material) + u" AND RAPORT.COR = "_s + Aspas(pair().colour));
    known.Open();
    if (known.IsEmpty()) {
        refuse(u"Composição de Raport não encontrada."_s, m_ui->DBGrid1);
        return;
    }
    BuscaCompRaport(material, pair().colour);
}

void TfmCadRaport::Gerarcomposiocombinada1Click()
{
    enterLines();
    if (Acessa(className(), u'A', u"0"_s, {}) && requirePair())
        m_ui->PqCombinada->AbrePesquisa();
}

void TfmCadRaport::PqCombinadaFechaPesquisa()
{
    const QString material = m_ui->PqCombinada->RetornoPesquisa(u"CODIGO"_s);
    if (!material.isEmpty())
        ProcessaComposicaoCombinada(material);
}

/// The shares of a material's yarns whatever their colour.
QVector<CombinedComposition::Share> TfmCadRaport::genericShares(const QString &material) const
{
    TTIQuery generic;
    generic.SQL.add(DBLocal_SQL(uR"(
        SELECT COMP_MATERIAL.CODIGO, COMP_MATERIAL.PERC FROM {COMP_MATERIAL} COMP_MATERIAL
        WHERE MATERIAL = )"_s)
        + Aspas(material) + u" AND COR = "_s + Aspas(u"0"_s) + u" AND COR_I = "_s + Aspas(u"*****"_s)
        + u" ORDER BY ORDEM"_s);
    QVector<CombinedComposition::Share> shares;
    for (generic.Open(); !generic.Eof(); generic.Next())
        shares.append({generic.AsString(u"CODIGO"_s), generic.AsFloat(u"PERC"_s)});
    return shares;
}

QVector<CombinedComposition::RaportLine> TfmCadRaport::raportLines() const
{
    QVector<CombinedComposition::RaportLine> lines;
    for (const QVector<QVariant> &line : TbDados->allRows()) {
        lines.append({line[TbDados->fieldIndex(u"CodigoFio"_s)].toString(),
            line[TbDados->fieldIndex(u"Cor"_s)].toString(), line[TbDados->fieldIndex(u"Milimetros"_s)].toDouble()});
    }
    return lines;
}

void TfmCadRaport::ProcessaComposicaoCombinada(const QString &material)
{
    const QVector<CombinedComposition::Share> source = genericShares(material);
    if (source.isEmpty()) {
        refuse(u"Composição inválida para o material %1.\nImpossível continuar."_s.arg(material));
        return;
    }
    const auto [fabric, colour] = pair();
    const QString table = DBLocal(u"COMP_MATERIAL"_s);
    Save save(database());
    const int highest =
        database().value(u"SELECT MAX(ORDEM) ORDEM FROM "_s + table + u" WHERE MATERIAL = "_s + Aspas(fabric)).toInt();
    for (const CombinedComposition::Line &line : CombinedComposition::combine(source, raportLines(), highest)) {
        database().run(u"INSERT INTO "_s + table + u" (MATERIAL, CODIGO, ORDEM, PERC, COR, COR_I) VALUES ("_s
            + QStringList{Aspas(fabric), Aspas(line.yarn), QString::number(line.order), PermanecePonto(line.percent),
                Aspas(colour), Aspas(line.colour)}
                  .join(u", "_s)
            + u')');
    }
    save.CommitRetaining();
    Messages::inform(this, u"Composição gravada."_s);
    TTIQuery composition;
    openComposition(composition, colour);
    fillComposition(composition);
}
