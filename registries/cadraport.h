// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "module/form.h"
#include "registries/combinedcomposition.h"

#include <QColor>
#include <QHash>

#include <memory>

namespace Ui {
class fmCadRaport;
}
class TClientDataSet;
class TCurrencyEdit;
class TTIQuery;
class Unit;

/// The rapport of a fabric in a colour: its yarns line by line over the feeders, the fabric's technical data, and the
/// composition that follows from it. What is typed stays in the grid until it is saved as a whole.
class TfmCadRaport : public TForm
{
    Q_OBJECT

public:
    TfmCadRaport();
    ~TfmCadRaport() override;

    Q_INVOKABLE void EdtMaterialChange();
    Q_INVOKABLE void EdtMaterialExit();
    Q_INVOKABLE void EdtCorExit();
    Q_INVOKABLE void BitBtn1Click();
    Q_INVOKABLE void BitBtn3Click();
    Q_INVOKABLE void BitBtn4Click();
    Q_INVOKABLE void BitBtn5Click();
    Q_INVOKABLE void BitBtn6Click();
    Q_INVOKABLE void btnConsultarClick();
    Q_INVOKABLE void PqRaportFechaPesquisa();

    // The page "Acesso".
    Q_INVOKABLE void BitBtn2Click();
    Q_INVOKABLE void DBGridDblClick();

    // The lines.
    Q_INVOKABLE void DBGrid1KeyDown(QKeyEvent *event);
    Q_INVOKABLE void DBGrid2KeyDown(QKeyEvent *event);
    Q_INVOKABLE void PqFioFechaPesquisa();
    Q_INVOKABLE void PqCorFioFechaPesquisa();
    Q_INVOKABLE void PqAgrupadorFechaPesquisa();
    Q_INVOKABLE void TbDadosCodigoFioChange();
    Q_INVOKABLE void TbDadosCorChange();
    Q_INVOKABLE void TbDadosMilimetrosChange();
    Q_INVOKABLE void TbDadosAfterPost();
    Q_INVOKABLE void TbDadosAfterScroll();
    Q_INVOKABLE void BtLinhaInserirClick();
    Q_INVOKABLE void BtLinhaCopiarClick();
    Q_INVOKABLE void BtLinhaSobeClick();
    Q_INVOKABLE void BtLinhaDesceClick();

    // Compositions brought in, and the one that is combined.
    Q_INVOKABLE void Importarcomposio1Click();
    Q_INVOKABLE void PqImpCorFechaPesquisa();
    Q_INVOKABLE void Importarcomposiodomaterial1Click();
    Q_INVOKABLE void PqImpMaterialFechaPesquisa();
    Q_INVOKABLE void Gerarcomposiocombinada1Click();
    Q_INVOKABLE void PqCombinadaFechaPesquisa();

protected:
    void FormCreate() override;
    void FormShow() override;
    bool mayClose() override;
    bool event(QEvent *event) override;

private:
    /// What the rapport on the screen belongs to.
    struct Pair
    {
        QString material;
        QString colour;
        bool operator==(const Pair &) const = default;
        bool isComplete() const { return !material.isEmpty() && !colour.isEmpty(); }
    };

    Pair pair() const; ///< of the header
    void showRaport(const QString &material, const QString &colour);
    void createGrids();
    void createMenu();
    void LimpaGrades();
    void LimpaTela();
    /// Loads that colour of the header's fabric.
    void BuscaDados(const QString &colour);
    /// The lines of a rapport, put before the current line. Gives the observation of the first.
    QString BuscaCompRaport(const QString &material, const QString &colour);
    void openComposition(TTIQuery &composition, const QString &colour) const;
    void fillComposition(TTIQuery &composition);
    void showTechnicalData(TTIQuery &composition);
    QStringList stored() const;
    bool mayReplace();
    void ExcluiDados();
    void GravaDados();
    void ProcessaComposicaoCombinada(const QString &material);
    QVector<CombinedComposition::Share> genericShares(const QString &material) const;
    QVector<CombinedComposition::RaportLine> raportLines() const;
    QString listOfColours(const QString &material) const;
    /// False, with a message, when the header does not say whose rapport it is, or when that could not be read: what is
    /// left of it would take its place.
    bool requirePair();
    /// Leaves the field that is being typed in, and the cell. True when the user was in a line that was only begun,
    /// which goes.
    bool enterLines();
    QVariantList state() const;
    bool isChanged() const;
    QVector<TCurrencyEdit *> technicalFields() const;

    void lookUp(TClientDataSet *lines, const QString &field);
    void takeInto(const QString &field, const QString &chosen);
    void refreshFeeders();
    int feedersOf(const QVariant &millimetres) const;
    void showLines();
    void showCurrentLine();
    QColor shadeOf(const QString &colour);

    std::unique_ptr<Ui::fmCadRaport> m_ui;
    TClientDataSet *TbDados;
    TClientDataSet *TbComposicao;
    TTIQuery *QryAcesso;
    TClientDataSet *m_lookedUpIn = nullptr; ///< the list in which F4 was pressed
    Pair m_loaded; ///< none while it is being read
    QVariantList m_loadedState;
    QStringList m_stored; ///< the rapport as the table held it then
    QHash<QString, QColor> m_shades; ///< by colour, as far as they were asked for
    bool m_loading = false;
    bool m_feedersMayChange = false; ///< their registry was opened from here
};

extern QPointer<TfmCadRaport> fmCadRaport;

namespace Cadraport {
Unit &unit();
}
