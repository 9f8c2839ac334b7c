// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ui_cadraport.h"

#include "registries/cadraport.h"

#include "module/host_services/busy.h"
#include "module/host_services/clientdataset.h"
#include "module/host_services/database.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/query.h"
#include "module/host_services/tabelas.h"
#include "module/host_services/table.h"
#include "module/look.h"
#include "module/messages.h"
#include "module/package.h"

#include <QMenu>
#include <QScopedValueRollback>
#include <QSplitter>

using namespace Funcoes;
using namespace Qt::StringLiterals;

QPointer<TfmCadRaport> fmCadRaport;

Unit &Cadraport::unit()
{
    static Unit unit = Unit::of<TfmCadRaport>(u"Cadastro de Raport"_s);
    return unit;
}

TfmCadRaport::TfmCadRaport()
    : m_ui(std::make_unique<Ui::fmCadRaport>())
    , TbDados(new TClientDataSet(this))
    , TbComposicao(new TClientDataSet(this))
    , QryAcesso(new TTIQuery(this))
{
    fmCadRaport = this;
}

TfmCadRaport::~TfmCadRaport() = default;

void TfmCadRaport::FormCreate()
{
    m_ui->setupUi(this);
    Look::addIcons(this);
    setEnterAsTab(true);
    AbreTabelas({u"tbMateriais"_s, u"TbCompMaterial"_s});
    createGrids();
    createMenu();
    m_ui->PqFio->setFilter(u"(ATIVO = "_s + Aspas(u"S"_s) + u" OR ATIVO IS NULL)"_s);
    m_ui->PageControl->setCurrentWidget(m_ui->TabManutencao);
    m_ui->divDesenho->setSizes({720, 240});
    m_ui->divDesenho->setStretchFactor(0, 1);
    m_ui->divGrades->setSizes({300, 136});
    m_ui->divGrades->setStretchFactor(0, 1);
    m_loadedState = state();
}

void TfmCadRaport::FormShow()
{
    m_ui->EdtMaterial->setFocus();
}

/// The imports and the combination, beside the lines and by a right click on them.
void TfmCadRaport::createMenu()
{
    auto *menu = new QMenu(this);
    menu->addActions({m_ui->Importarcomposio1, m_ui->Importarcomposiodomaterial1, m_ui->Gerarcomposiocombinada1});
    m_ui->BtComposicao->setMenu(menu);
    m_ui->DBGrid1->addActions(menu->actions());
}

TfmCadRaport::Pair TfmCadRaport::pair() const
{
    return {m_ui->EdtMaterial->text().trimmed(), m_ui->EdtCor->text().trimmed()};
}

QVector<TCurrencyEdit *> TfmCadRaport::technicalFields() const
{
    return {m_ui->EdtDiametro, m_ui->EdtLargura, m_ui->EdtFinura, m_ui->EdtGramatura, m_ui->EdtKgRolo};
}

/// All that is saved, to be compared with what was loaded.
QVariantList TfmCadRaport::state() const
{
    QVariantList all{m_ui->EdtObs->toPlainText()};
    for (const TCurrencyEdit *field : technicalFields())
        all.append(field->value());
    for (const QVector<QVariant> &line : TbDados->allRows())
        all.append(QVariant(QVariantList(line.begin(), line.end())));
    return all;
}

bool TfmCadRaport::isChanged() const
{
    m_ui->DBGrid1->finish();
    return state() != m_loadedState;
}

bool TfmCadRaport::mayClose()
{
    return !isChanged() || Messages::ask(this, u"O raport não foi gravado. Deseja abandonar as alterações?"_s);
}

/// One colour for each description among the stock items of the material.
QString TfmCadRaport::listOfColours(const QString &material) const
{
    return DBLocal_SQL(uR"(
        SELECT DESCRICAO, COR FROM (
            SELECT CADCOR.DESCRICAO, MAX(MAT_ITEN.COR) AS COR FROM {MAT_ITEN} MAT_ITEN
            LEFT JOIN {CADCOR} CADCOR ON (MAT_ITEN.COR = CADCOR.COR)
            WHERE MAT_ITEN.CODIGO = )"_s)
        + Aspas(material) + u" GROUP BY CADCOR.DESCRICAO) AS COR_MAT WHERE 1=1"_s;
}

void TfmCadRaport::EdtMaterialChange()
{
    describe(m_ui->PqMaterial);
    const QString material = pair().material;
    m_ui->Image->setFile(material.isEmpty() ? QString() : BuscaArquivo(material, {}, tpImagemMaterial));
}

void TfmCadRaport::EdtMaterialExit()
{
    const Pair now = pair();
    m_ui->PqCor->setSQL(now.material.isEmpty() ? QString() : listOfColours(now.material));
    // The lines on the screen are never those of another fabric.
    if (now.material != m_loaded.material && !now.colour.isEmpty())
        EdtCorExit();
}

void TfmCadRaport::EdtCorExit()
{
    const Pair now = pair();
    if (now == m_loaded && isChanged())
        return; // the field was passed, no more
    LimpaGrades();
    m_stored = stored(); // before the lines are read: what changes in between is noticed when they are saved
    BuscaDados(now.colour);
    m_loaded = now; // all of it
    m_loadedState = state();
}

void TfmCadRaport::LimpaGrades()
{
    m_loaded = {};
    TbDados->EmptyDataSet();
    TbComposicao->EmptyDataSet();
    for (TCurrencyEdit *field : technicalFields())
        field->setValue(0);
    m_ui->EdtObs->clear();
    m_ui->gbRaport->setTitle(u"Composição Raport"_s);
    showLines();
}

void TfmCadRaport::LimpaTela()
{
    LimpaGrades();
    m_ui->EdtMaterial->clear();
    m_ui->EdtCor->clear();
    m_ui->PqCor->setSQL({});
    m_loadedState = state();
}

void TfmCadRaport::BuscaDados(const QString &colour)
{
    const QString material = pair().material;
    m_shades.clear();
    m_ui->EdtObs->setPlainText(BuscaCompRaport(material, colour));
    Tabela->tabela(u"TbCompMaterial"_s)->Locate(u"Material;Cor"_s, {material, colour});
    TTIQuery composition;
    openComposition(composition, colour);
    showTechnicalData(composition);
    fillComposition(composition);
}

QString TfmCadRaport::BuscaCompRaport(const QString &material, const QString &colour)
{
    TTIQuery lines;
    lines.SQL.add(DBLocal_SQL(uR"(
        SELECT RAPORT.ORDEM, RAPORT.CODIGO, MATERIAL.DESCRICAO,
               RAPORT.COR_I, CADCOR.DESCRICAO AS DESC_COR, RAPORT.MILIMETROS, RAPORT.OBSERVACAO,
               RAPORT.AGRUPADOR, RAPORT.REPETICAO, RAPORT.DESPERDICIO
        FROM {RAPORT} RAPORT
        LEFT JOIN {MATERIAL} MATERIAL ON (RAPORT.CODIGO = MATERIAL.CODIGO)
        LEFT JOIN {CADCOR} CADCOR ON (RAPORT.COR_I = CADCOR.COR)
        WHERE RAPORT.MATERIAL = )"_s)
        + Aspas(material) + u" AND RAPORT.COR = "_s + Aspas(colour) + u" ORDER BY RAPORT.ORDEM DESC"_s);
    lines.Open();
    const QString note = lines.AsString(u"OBSERVACAO"_s);
    // The last line comes first, and each goes before the one that came before it.
    for (const QScopedValueRollback loading(m_loading, true); !lines.Eof(); lines.Next()) {
        TbDados->Insert();
        TbDados->setValue(u"Ordem"_s, lines.value(u"ORDEM"_s));
        TbDados->setValue(u"CodigoFio"_s, lines.value(u"CODIGO"_s));
        TbDados->setValue(u"DescricaoFio"_s, lines.value(u"DESCRICAO"_s));
        TbDados->setValue(u"Cor"_s, lines.value(u"COR_I"_s));
        TbDados->setValue(u"DescricaoCor"_s, lines.value(u"DESC_COR"_s));
        TbDados->setValue(u"Milimetros"_s, lines.value(u"MILIMETROS"_s));
        TbDados->setValue(u"Alimentadores"_s, feedersOf(lines.value(u"MILIMETROS"_s)));
        TbDados->setValue(u"Agrupador"_s, lines.value(u"AGRUPADOR"_s));
        TbDados->setValue(u"Repeticao"_s, lines.value(u"REPETICAO"_s));
        TbDados->setValue(u"Desperdicio"_s, lines.value(u"DESPERDICIO"_s));
        TbDados->Post();
    }
    showLines();
    return note;
}

/// A line stands once, also where several stitch lengths have as many feeders as it has.
void TfmCadRaport::openComposition(TTIQuery &composition, const QString &colour) const
{
    composition.SQL.add(DBLocal_SQL(uR"(
        SELECT COMP_MAT.CODIGO, MATERIAL.DESCRICAO,
               COMP_MAT.COR_I, CADCOR.DESCRICAO AS DESC_COR, CADRAPORT.MILIMETROS,
               COMP_MAT.ROCA AS ALIMENTADORES, '' AS REPETICOES, COMP_MAT.PERC, COMP_MAT.LFA,
               COMP_MAT.DIAMETRO, COMP_MAT.FINURA, COMP_MAT.LARGURA, COMP_MAT.GRAMATURA, COMP_MAT.KG_ROLO
        FROM {COMP_MATERIAL} COMP_MAT
        LEFT JOIN {MATERIAL} MATERIAL ON (COMP_MAT.CODIGO = MATERIAL.CODIGO)
        LEFT JOIN {CADCOR} CADCOR ON (COMP_MAT.COR_I = CADCOR.COR)
        LEFT JOIN (SELECT CODIGO, ALIMENTADORES, MIN(MILIMETROS) AS MILIMETROS
                   FROM {CADRAPORT} GROUP BY CODIGO, ALIMENTADORES) CADRAPORT
               ON (COMP_MAT.MATERIAL = CADRAPORT.CODIGO AND COMP_MAT.ROCA = CADRAPORT.ALIMENTADORES)
        WHERE COMP_MAT.MATERIAL = )"_s)
        + Aspas(pair().material) + u" AND COMP_MAT.COR = "_s + Aspas(colour) + u" ORDER BY COMP_MAT.ORDEM DESC"_s);
    composition.Open();
}

/// Lines that were combined have none yet: their nulls do not hide what the others of the pair hold.
void TfmCadRaport::showTechnicalData(TTIQuery &composition)
{
    const QHash<QString, TCurrencyEdit *> fields{{u"DIAMETRO"_s, m_ui->EdtDiametro}, {u"LARGURA"_s, m_ui->EdtLargura},
        {u"FINURA"_s, m_ui->EdtFinura}, {u"GRAMATURA"_s, m_ui->EdtGramatura}, {u"KG_ROLO"_s, m_ui->EdtKgRolo}};
    for (auto field = fields.begin(); field != fields.end(); ++field) {
        composition.First();
        while (!composition.Eof() && composition.IsNull(field.key()))
            composition.Next();
        field.value()->setValue(composition.Eof() ? 0 : composition.AsFloat(field.key()));
    }
}

void TfmCadRaport::fillComposition(TTIQuery &composition)
{
    TbComposicao->EmptyDataSet();
    for (composition.First(); !composition.Eof(); composition.Next()) {
        TbComposicao->Insert();
        TbComposicao->setValue(u"CodigoFio"_s, composition.value(u"CODIGO"_s));
        TbComposicao->setValue(u"DescricaoFio"_s, composition.value(u"DESCRICAO"_s));
        TbComposicao->setValue(u"Cor"_s, composition.value(u"COR_I"_s));
        TbComposicao->setValue(u"DescricaoCor"_s, composition.value(u"DESC_COR"_s));
        TbComposicao->setValue(u"Percentual"_s, composition.value(u"PERC"_s));
        TbComposicao->Post();
    }
}

bool TfmCadRaport::requirePair()
{
    if (pair().isComplete() && pair() == m_loaded)
        return true;
    if (pair().isComplete()) {
        refuse(u"O raport não foi lido por inteiro. Passe de novo pela cor. Impossível Continuar."_s, m_ui->EdtCor);
        return false;
    }
    refuse(u"Informe o material e a cor. Impossível Continuar."_s,
        pair().material.isEmpty() ? m_ui->EdtMaterial : m_ui->EdtCor);
    return false;
}

/// The lines of the header's pair in the table, what is saved of them.
QStringList TfmCadRaport::stored() const
{
    TTIQuery rows;
    rows.SQL.add(DBLocal_SQL(uR"(
        SELECT ORDEM, CODIGO, COR_I, MILIMETROS, AGRUPADOR, REPETICAO, DESPERDICIO, OBSERVACAO
        FROM {RAPORT} WHERE MATERIAL = )"_s)
        + Aspas(pair().material) + u" AND COR = "_s + Aspas(pair().colour) + u" ORDER BY ORDEM"_s);
    QStringList lines;
    for (rows.Open(); !rows.Eof(); rows.Next()) {
        for (const TField &field : rows.fields())
            lines.append(rows.AsString(field.name));
    }
    return lines;
}

/// What another station has saved of the rapport since it was read is not overwritten unseen.
bool TfmCadRaport::mayReplace()
{
    return stored() == m_stored
        || Messages::ask(
            this, u"Outra estação gravou este raport depois que ele foi aberto aqui. Deseja substituí-lo?"_s);
}

void TfmCadRaport::BitBtn1Click()
{
    if (!Acessa(className(), u'A', u"0"_s, {}) || !requirePair() || !mayReplace())
        return;
    m_ui->DBGrid1->finish();
    {
        const Busy busy(this);
        Save save(database());
        ExcluiDados();
        GravaDados();
        save.CommitRetaining();
    }
    LimpaTela();
    m_ui->EdtMaterial->setFocus();
}

void TfmCadRaport::ExcluiDados()
{
    database().run(u"DELETE FROM "_s + DBLocal(u"RAPORT"_s) + u" WHERE MATERIAL = "_s + Aspas(pair().material)
        + u" AND COR = "_s + Aspas(pair().colour));
}

void TfmCadRaport::GravaDados()
{
    const auto [material, colour] = pair();
    database().run(u"UPDATE "_s + DBLocal(u"COMP_MATERIAL"_s) + u" SET DIAMETRO = "_s
        + PermanecePonto(m_ui->EdtDiametro->value()) + u", LARGURA = "_s + PermanecePonto(m_ui->EdtLargura->value())
        + u", FINURA = "_s + PermanecePonto(m_ui->EdtFinura->value()) + u", GRAMATURA = "_s
        + PermanecePonto(m_ui->EdtGramatura->value()) + u", KG_ROLO = "_s + PermanecePonto(m_ui->EdtKgRolo->value())
        + u" WHERE MATERIAL = "_s + Aspas(material) + u" AND COR = "_s + Aspas(colour));
    const auto text = [this](const QString &field) { return Aspas(TbDados->AsString(field)); };
    const auto number = [this](const QString &field) {
        return TbDados->IsNull(field) ? u"NULL"_s : PermanecePonto(TbDados->AsFloat(field));
    };
    for (TbDados->First(); !TbDados->Eof(); TbDados->Next()) {
        database().run(u"INSERT INTO "_s + DBLocal(u"RAPORT"_s)
            + u" (ORDEM, CODIGO, COR_I, MATERIAL, COR, MILIMETROS, AGRUPADOR, REPETICAO, OBSERVACAO, DESPERDICIO)"_s
            + u" VALUES ("_s
            + QStringList{PermanecePonto(TbDados->row() + 1), text(u"CodigoFio"_s), text(u"Cor"_s), Aspas(material),
                Aspas(colour), number(u"Milimetros"_s), text(u"Agrupador"_s), number(u"Repeticao"_s),
                Aspas(m_ui->EdtObs->toPlainText()), number(u"Desperdicio"_s)}
                  .join(u", "_s)
            + u')');
    }
}

void TfmCadRaport::BitBtn4Click()
{
    close();
}

void TfmCadRaport::BitBtn5Click()
{
    if (!requirePair())
        return;
    m_ui->DBGrid1->finish();
    TTIQuery header;
    header.SQL.add(DBLocal_SQL(uR"(
        SELECT MAX(COMP_MAT.MATERIAL) AS MATERIAL, MATERIAL.DESCRICAO,
               COMP_MAT.DIAMETRO, COMP_MAT.FINURA, COMP_MAT.LARGURA,
               COMP_MAT.GRAMATURA, COMP_MAT.KG_ROLO, RAPORT.OBSERVACAO
        FROM {COMP_MATERIAL} COMP_MAT
        LEFT JOIN {MATERIAL} MATERIAL ON (COMP_MAT.MATERIAL = MATERIAL.CODIGO)
        LEFT JOIN {RAPORT} RAPORT ON (COMP_MAT.MATERIAL = RAPORT.MATERIAL)
        WHERE COMP_MAT.MATERIAL = )"_s)
        + Aspas(pair().material) + u" AND COMP_MAT.COR = "_s + Aspas(pair().colour) + uR"(
        GROUP BY MATERIAL.DESCRICAO, COMP_MAT.DIAMETRO, COMP_MAT.FINURA,
                 COMP_MAT.LARGURA, COMP_MAT.GRAMATURA, COMP_MAT.KG_ROLO, RAPORT.OBSERVACAO)"_s);
    header.Open();
    ReportCall call;
    call.name = u"WMalRaport"_s;
    call.form = this;
    const int line = TbDados->row();
    call.dataSets = {{u"QryRaport"_s, &header}, {u"TbDados"_s, TbDados}};
    // What is on the screen may not be saved yet. Of the rows selected the first may be that of another colour's
    // observation, or of lines just combined, which have no technical data.
    call.parameters = {{u"MATERIAL"_s, pair().material}, {u"DESC_MATERIAL"_s, m_ui->EdtDescMaterial->text()},
        {u"COR"_s, pair().colour}, {u"DESC_COR"_s, m_ui->EdtDescCor->text()},
        {u"DIAMETRO"_s, m_ui->EdtDiametro->value()}, {u"FINURA"_s, m_ui->EdtFinura->value()},
        {u"LARGURA"_s, m_ui->EdtLargura->value()}, {u"GRAMATURA"_s, m_ui->EdtGramatura->value()},
        {u"KG_ROLO"_s, m_ui->EdtKgRolo->value()}, {u"OBSERVACAO"_s, m_ui->EdtObs->toPlainText()},
        {u"ALIMENTADORES"_s, int(m_ui->EdtAlimentadores->value())}, {u"DESENHO"_s, m_ui->Desenho->forPaper()}};
    Chama_Relatorio(call);
    TbDados->setRow(line);
}

void TfmCadRaport::BitBtn6Click()
{
    m_feedersMayChange = true;
    QWidget *feeders = Carrega_Form(u"qenMalharia"_s, u"TfmCadAlimentador"_s, {}, false, true);
    if (feeders && !pair().material.isEmpty())
        feeders->setProperty("Material", pair().material);
}

bool TfmCadRaport::event(QEvent *event)
{
    const bool handled = TForm::event(event);
    // The first events come while the members are being made.
    const bool comesBack = event->type() == QEvent::Show || event->type() == QEvent::WindowActivate;
    if (comesBack && m_feedersMayChange)
        run([this] { refreshFeeders(); });
    return handled;
}

void TfmCadRaport::btnConsultarClick()
{
    m_ui->PqRaport->setSQL(DBLocal_SQL(uR"(
        SELECT DISTINCT RAPORT.MATERIAL, MATERIAL.DESCRICAO, RAPORT.COR, CADCOR.DESCRICAO AS DESC_COR
        FROM {RAPORT} RAPORT
        LEFT JOIN {MATERIAL} MATERIAL ON (RAPORT.MATERIAL = MATERIAL.CODIGO)
        LEFT JOIN {CADCOR} CADCOR ON (RAPORT.COR = CADCOR.COR))"_s));
    m_ui->PqRaport->AbrePesquisa();
}

void TfmCadRaport::PqRaportFechaPesquisa()
{
    const QString material = m_ui->PqRaport->RetornoPesquisa(u"MATERIAL"_s);
    if (!material.isEmpty())
        showRaport(material, m_ui->PqRaport->RetornoPesquisa(u"COR"_s));
}

void TfmCadRaport::showRaport(const QString &material, const QString &colour)
{
    m_ui->EdtMaterial->setText(material);
    m_ui->EdtCor->setText(colour);
    m_ui->PqCor->setSQL(listOfColours(material));
    EdtCorExit();
    m_ui->PageControl->setCurrentWidget(m_ui->TabManutencao);
    m_ui->DBGrid1->setFocus();
}

void TfmCadRaport::BitBtn2Click()
{
    const Busy busy(this);
    QString statement = DBLocal_SQL(uR"(
        SELECT MATERIAL.CODIGO, MATERIAL.DESCRICAO,
               COMP_MATERIAL.CODIGO AS COD_FIO, MAT_FIO.DESCRICAO AS DESC_FIO,
               MAX(MAT_ITEN.COR) AS COR, CADCOR.DESCRICAO AS DESC_COR,
               MAX(COMP_MATERIAL.COR_I) AS COR_FIO, CADCOR_FIO.DESCRICAO AS DESC_COR_FIO
        FROM {MATERIAL} MATERIAL
        LEFT JOIN {COMP_MATERIAL} COMP_MATERIAL ON (MATERIAL.CODIGO = COMP_MATERIAL.MATERIAL)
        LEFT JOIN {MATERIAL} MAT_FIO ON (COMP_MATERIAL.CODIGO = MAT_FIO.CODIGO)
        LEFT JOIN {MAT_ITEN} MAT_ITEN ON (MAT_ITEN.CODIGO = MATERIAL.CODIGO)
        LEFT JOIN {CADCOR} CADCOR ON (MAT_ITEN.COR = CADCOR.COR)
        LEFT JOIN {CADCOR} CADCOR_FIO ON (COMP_MATERIAL.COR_I = CADCOR_FIO.COR)
        WHERE 1 = 1 )"_s);
    const QString material = m_ui->EdtMatAcesso->text().trimmed();
    const QString yarn = m_ui->EdtFioAcesso->text().trimmed();
    if (!material.isEmpty())
        statement += u"AND MATERIAL.CODIGO = "_s + Aspas(material) + u' ';
    if (!yarn.isEmpty())
        statement += u"AND COMP_MATERIAL.CODIGO = "_s + Aspas(yarn) + u' ';
    QryAcesso->SQL.clear();
    QryAcesso->SQL.add(statement + uR"(GROUP BY MATERIAL.CODIGO, MATERIAL.DESCRICAO, CADCOR.DESCRICAO,
                 COMP_MATERIAL.CODIGO, MAT_FIO.DESCRICAO, CADCOR_FIO.DESCRICAO
        ORDER BY MATERIAL.CODIGO, 5, COMP_MATERIAL.CODIGO, 7)"_s);
    QryAcesso->Open();
}

void TfmCadRaport::DBGridDblClick()
{
    if (QryAcesso->IsEmpty())
        return;
    showRaport(QryAcesso->AsString(u"Codigo"_s), QryAcesso->AsString(u"Cor"_s));
    TbDados->Locate(u"CodigoFio;Cor"_s, {QryAcesso->value(u"COD_FIO"_s), QryAcesso->value(u"COR_FIO"_s)});
}
