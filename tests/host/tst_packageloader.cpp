// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/packageloader.h"
#include "module/host_services/classregistry.h"
#include "module/host_services/errors.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// The module's screens in the order of their units.
const QList<std::pair<QString, QString>> screens{{u"TfmNFTerceiros"_s, u"Entrada de Notas Fiscais"_s},
    {u"TfmRelDocto"_s, u"Relatório de Notas Fiscais de Entrada"_s}, {u"TfmMalhaOF"_s, u"Ordem de Fabricação"_s},
    {u"TfmRelPend"_s, u"Relatório de OFs Pendentes"_s}, {u"TfmRelProd"_s, u"Relatório de OFs Produzidas"_s},
    {u"TfmRelRegistros"_s, u".:Relatório de Registro Quantitativo:."_s},
    {u"TfmRelEstoqueMat"_s, u"Relatório de Estoque por Cliente"_s},
    {u"TfmAcertoMalharia"_s, u"Atualização de Saldo de OF"_s}, {u"TfmRelOrdFab"_s, u"Relatorio de OFs"_s},
    {u"TfmMatTabPreco"_s, u"Tabela de Preços"_s}, {u"TfmRelMatTabPre"_s, u"Relatório de Tabela de Preços"_s},
    {u"TfmMalFatNF"_s, u"Atualização de Notas Fiscais de Cobrança"_s},
    {u"TfmRelMalSaidas"_s, u"Relatório de saídas por cliente."_s},
    {u"TfmMalhaOFBaixaBarra"_s, u"Baixa Ordem de Fabricação"_s},
    {u"TfmCadDefMalha"_s, u"Cadastro de Defeitos da Malha"_s}, {u"TfmCadAlimentador"_s, u"Alimentador de Raport"_s},
    {u"TfmCadRaport"_s, u"Cadastro de Raport"_s}, {u"TfmMalhaOFBaixa"_s, u"Baixa Ordem de Fabricação"_s},
    {u"TfmBaixaOF"_s, u"Baixa de OF"_s}, {u"TfmMalLibFat"_s, u"Liberação de Faturamento da Malharia"_s}};

} // namespace

class TstPackageLoader : public QObject
{
    Q_OBJECT

private slots:
    void everyClassBearsItsCaption();
    void theClassesStayUntilTheLastUnload();
    void aLoaderThatGoesEndsItsLoads();
    void anUnloadTooManyDoesNothing();
    void aMissingPackageIsRefused();
    void aLibraryThatIsNoPackageIsRefused();
};

void TstPackageLoader::everyClassBearsItsCaption()
{
    PackageLoader package(u"qenMalharia"_s);
    package.load();
    QStringList expected;
    for (const auto &[name, caption] : screens) {
        const ScreenClass *screen = ClassRegistry::find(name);
        QVERIFY2(screen, qPrintable(name));
        QCOMPARE(screen->caption, caption);
        expected.append(name);
    }
    QCOMPARE(ClassRegistry::names(), expected);
}

void TstPackageLoader::theClassesStayUntilTheLastUnload()
{
    PackageLoader package(u"qenMalharia"_s);
    package.load();
    const QStringList names = ClassRegistry::names();
    QVERIFY(!names.isEmpty());
    package.load();
    QCOMPARE(ClassRegistry::names(), names);
    package.unload();
    QCOMPARE(ClassRegistry::names(), names);
    package.unload();
    QVERIFY(ClassRegistry::names().isEmpty());
    package.load();
    QCOMPARE(ClassRegistry::names(), names);
}

void TstPackageLoader::aLoaderThatGoesEndsItsLoads()
{
    {
        PackageLoader package(u"qenMalharia"_s);
        package.load();
        package.load();
        QCOMPARE(package.loads(), 2);
    }
    QVERIFY(ClassRegistry::names().isEmpty());
}

void TstPackageLoader::anUnloadTooManyDoesNothing()
{
    PackageLoader package(u"qenMalharia"_s);
    package.unload();
    package.load();
    package.unload();
    package.unload();
    QCOMPARE(package.loads(), 0);
    package.load();
    QVERIFY(!ClassRegistry::names().isEmpty());
}

void TstPackageLoader::aMissingPackageIsRefused()
{
    PackageLoader package(u"qenNada"_s);
    QVERIFY_EXCEPTION_THROWN(package.load(), EQen);
    QCOMPARE(package.loads(), 0);
}

void TstPackageLoader::aLibraryThatIsNoPackageIsRefused()
{
    PackageLoader package(u"libqen_services"_s);
    QVERIFY_EXCEPTION_THROWN(package.load(), EQen);
    QVERIFY_EXCEPTION_THROWN(package.load(), EQen);
    QCOMPARE(package.loads(), 0);
}

QTEST_MAIN(TstPackageLoader)
#include "tst_packageloader.moc"
