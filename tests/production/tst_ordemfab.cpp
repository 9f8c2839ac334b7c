// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/production/orders.h"
#include "tests/support/engines.h"
#include "tests/support/messageanswers.h"
#include "tests/support/screenchecks.h"
#include "tests/support/teststation.h"

#include "module/host_services/table.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QLibrary>
#include <QLineEdit>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace ScreenChecks;
using Orders::Order;

namespace {

const QString caption = QStringLiteral("Ordem de Fabricação");

/// The package's instance variable of the screen.
QObject *instance()
{
    QLibrary package(QCoreApplication::applicationDirPath() + u"/../lib/qenMalharia"_s);
    auto *variable = reinterpret_cast<QPointer<QObject> *>(package.resolve("fmMalhaOF"));
    if (!variable)
        qFatal("%s", qPrintable(package.errorString()));
    return variable->data();
}

} // namespace

/// The order screen: what it shows, and how a new order is filled in.
class TestOrdemFab : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }
    void init() { m_station = std::make_unique<TestStation>(Engines::current()); }
    void cleanup() { m_station.reset(); }

    void everyButtonBearsItsCaption();
    void opensOnTheHighestOrder();
    void showsWhatTheCodesStandFor();
    void showsTheFabricsOwnData();
    void withoutOrdersThereIsNothingToChangeDeleteOrPrint();
    void keysAndButtonsMoveThroughTheOrders();
    void theSearchGoesToTheChosenOrder();
    void closingFreesTheScreenAndItsTables();
    void reopeningIsAFreshScreenOnTheLastOrder();

    void aNewOrderTakesTheNextNumber_data();
    void aNewOrderTakesTheNextNumber();
    void incluirOpensAnEmptyRecordForTyping();
    void withoutTheRightNothingHappens();
    void aNumberThatIsTakenIsRefusedOnceWhicheverWayItIsLeft_data();
    void aNumberThatIsTakenIsRefusedOnceWhicheverWayItIsLeft();
    void enterWalksThroughTheWholeOrder();

    void leavingTheMaterialOfANewOrderFillsRollWeightAndFlow();
    void theFlowIsThatOfTheHighestNumberNotOfTheLatestDate();
    void aFabricNeverMadeKeepsTheFlowThatWasTyped();
    void leavingAChangedMaterialOfAnOldOrderFillsNothing();
    void anUnknownCodeIsRefusedOnceAndHoldsTheFocus_data();
    void anUnknownCodeIsRefusedOnceAndHoldsTheFocus();
    void descriptionsFollowTheTyping();
    void moreThanOneActiveColourAsksBeforeGoingOn();
    void aColourThatIsSwitchedOffDoesNotCount();
    void cancellingRunsNoExit_data();
    void cancellingRunsNoExit();
    void cancellingANewOrderShowsTheOneBefore();
    void closingWhileEditingAsks();

    void theFabricSearchListsBothGroupsOfTheClientAlone();
    void theClientSearchListsTheFabricsOwnerAndWhoWasTyped();
    void aChosenCodeComesIntoItsField();

private:
    TestStation &station() { return *m_station; }
    void insertOrder(const Order &order = {}) { Orders::insert(m_station->database, order); }
    void openScreen() { m_station->open(u"TfmMalhaOF"_s); }
    bool isEditing();

    std::unique_ptr<TestStation> m_station;
};

bool TestOrdemFab::isEditing()
{
    const bool panel = m_station->child(u"PainelDados"_s)->isEnabled();
    const bool main = m_station->child(u"PainelBarra"_s)->isVisible();
    const bool confirmation = m_station->child(u"PainelConfirma"_s)->isVisible();
    if (panel == main || panel != confirmation)
        QTest::qFail("Panel and bars do not agree", __FILE__, __LINE__);
    return panel;
}

void TestOrdemFab::everyButtonBearsItsCaption()
{
    openScreen();
    QCOMPARE(station().form()->windowTitle(), caption);
    const QList<std::pair<QString, QString>> captions{{u"btnincluir"_s, u"&Incluir"_s}, {u"BtnAltera"_s, u"&Alterar"_s},
        {u"BtExcluir"_s, u"&Excluir"_s}, {u"SbConsulta"_s, u"Consultar"_s}, {u"BtnImprimir"_s, u"Imprimir"_s},
        {u"BtSaida"_s, u"&Fechar"_s}, {u"SbConfirmar"_s, u"&Confirmar "_s}, {u"SbDesistir"_s, u"&Cancelar"_s},
        {u"BitBtn1"_s, u"&Zerar Saldo"_s}, {u"BitBtn3"_s, u"&Consultar"_s}, {u"BitBtn4"_s, u"&Imprimir"_s},
        {u"BitBtn5"_s, u"&Fechar"_s}};
    for (const auto &[name, text] : captions)
        QCOMPARE(station().text(name), text);
    const QList<std::pair<QString, QString>> labels{{u"lbOF"_s, u"Número OF"_s}, {u"lbData"_s, u"Data"_s},
        {u"lbCliente"_s, u"Cliente"_s}, {u"lbMaterial"_s, u"Material"_s}, {u"lbMaquina"_s, u"Máquina"_s},
        {u"lbFluxo"_s, u"Fluxo"_s}, {u"lbPeso"_s, u"Peso"_s}, {u"lbKGRolo"_s, u"KG. Rolo"_s},
        {u"lbBaixado"_s, u"Baixado"_s}, {u"lbSaldo"_s, u"Saldo"_s}, {u"lbDesc2"_s, u"Descrição 2"_s},
        {u"lbLargura"_s, u"Largura"_s}, {u"lbGramatura"_s, u"Gramatura"_s}, {u"lbConcentr"_s, u"Concentr."_s},
        {u"lbObsMaterial"_s, u"Observação do Material"_s}, {u"lbDe"_s, u"De"_s}, {u"lbAte"_s, u"Até"_s}};
    for (const auto &[name, text] : labels)
        QCOMPARE(station().text(name).remove(u'&'), text);
}

void TestOrdemFab::opensOnTheHighestOrder()
{
    insertOrder({.number = u"000013"_s, .date = u"01/02/2026"_s, .rollKg = 12.345, .totalKg = 1234.5});
    insertOrder({.number = u"000012"_s, .date = u"03/09/2026"_s});
    Orders::writeOff(station().database, u"000013"_s, {20, 14.5});
    openScreen();
    QVERIFY(!isEditing());
    QCOMPARE(station().child<QTabWidget>(u"PageControl"_s)->currentWidget()->objectName(), u"TabOrdem"_s);
    QCOMPARE(station().text(u"edtOF"_s), u"000013"_s);
    QCOMPARE(station().text(u"edtData"_s), u"02/01/2026"_s);
    QCOMPARE(station().text(u"edtKGTotal"_s), u"1234,50"_s);
    QCOMPARE(station().text(u"edtKGRolo"_s), u"12,35"_s);
    QCOMPARE(station().text(u"edtBaixado"_s), u"34,50"_s);
    QCOMPARE(station().text(u"edtSaldo"_s), u"1200,00"_s);
}

void TestOrdemFab::showsWhatTheCodesStandFor()
{
    insertOrder({.client = u"00003"_s, .material = u"M0002"_s, .machine = u"002"_s, .flow = u"02"_s});
    openScreen();
    QCOMPARE(station().text(u"edtCliente"_s), u"00003"_s);
    QCOMPARE(station().text(u"edtDescCliente"_s), u"Têxtil D'Ávila, Filhos & Cia"_s);
    QCOMPARE(station().text(u"edtMaterial"_s), u"M0002"_s);
    QCOMPARE(station().text(u"edtDescMaterial"_s), u"Ribana 2x1"_s);
    QCOMPARE(station().text(u"edtDescMaquina"_s), u"Circular 34\" 24 agulhas"_s);
    QCOMPARE(station().text(u"EdtDescFluxo"_s), u"Tecer e revisar"_s);
}

void TestOrdemFab::showsTheFabricsOwnData()
{
    station().database.run(uR"(UPDATE {MATERIAL} SET DESCRICAO2 = 'Malha leve', LARGURA = 1.25, GRAMATURA = 165,
        MAXIMO = 3.5, CONCENTRACAO = 40, OBSERVACAO = 'Não esticar' WHERE CODIGO = 'M0001')"_s);
    insertOrder();
    openScreen();
    QCOMPARE(station().text(u"edtDescricao2"_s), u"Malha leve"_s);
    QCOMPARE(station().text(u"edtLargura"_s), u"1,25"_s);
    QCOMPARE(station().text(u"edtGramatura"_s), u"165,00"_s);
    QCOMPARE(station().text(u"edtMaximo"_s), u"3,50"_s);
    QCOMPARE(station().text(u"edtConcentracao"_s), u"40,00"_s);
    QCOMPARE(station().text(u"MemoObsMaterial"_s), u"Não esticar"_s);
    for (const QString &name : {u"edtDescMaterial"_s, u"edtDescCliente"_s, u"edtBaixado"_s, u"edtSaldo"_s})
        QVERIFY2(station().child<QLineEdit>(name)->isReadOnly(), qPrintable(name));
}

void TestOrdemFab::withoutOrdersThereIsNothingToChangeDeleteOrPrint()
{
    const MessageAnswers none;
    openScreen();
    QCOMPARE(station().text(u"edtOF"_s), QString());
    QCOMPARE(station().text(u"edtSaldo"_s), u"0,00"_s);
    for (const QString &button : {u"BtnAltera"_s, u"BtExcluir"_s, u"BtnImprimir"_s, u"sbPrimeiro"_s, u"sbProximo"_s}) {
        station().click(button);
        QVERIFY2(!isEditing(), qPrintable(button));
    }
    QCOMPARE(station().host.recordedReports().size(), 0);
    station().click(u"btnincluir"_s);
    station().click(u"SbDesistir"_s);
    QCOMPARE(station().text(u"edtOF"_s), QString());
}

void TestOrdemFab::keysAndButtonsMoveThroughTheOrders()
{
    for (const QString &number : {u"000001"_s, u"000007"_s, u"000100"_s})
        insertOrder({.number = number, .totalKg = number.toDouble()});
    openScreen();
    const auto stands = [this](const QString &number, const QString &balance) {
        return station().text(u"edtOF"_s) == number && station().text(u"edtSaldo"_s) == balance;
    };
    QVERIFY(stands(u"000100"_s, u"100,00"_s));
    station().key(Qt::Key_PageUp);
    QVERIFY(stands(u"000007"_s, u"7,00"_s));
    station().key(Qt::Key_PageUp);
    station().key(Qt::Key_PageUp);
    QVERIFY(stands(u"000001"_s, u"1,00"_s));
    station().key(Qt::Key_PageDown);
    QVERIFY(stands(u"000007"_s, u"7,00"_s));
    station().key(Qt::Key_End, Qt::ControlModifier);
    QVERIFY(stands(u"000100"_s, u"100,00"_s));
    station().key(Qt::Key_Home, Qt::ControlModifier);
    QVERIFY(stands(u"000001"_s, u"1,00"_s));
    station().click(u"sbUltimo"_s);
    station().click(u"sbProximo"_s);
    QVERIFY(stands(u"000100"_s, u"100,00"_s));
    station().click(u"sbAnterior"_s);
    station().click(u"sbPrimeiro"_s);
    QVERIFY(stands(u"000001"_s, u"1,00"_s));
}

void TestOrdemFab::theSearchGoesToTheChosenOrder()
{
    for (const QString &number : {u"000001"_s, u"000007"_s, u"000100"_s})
        insertOrder({.number = number});
    openScreen();
    MessageAnswers answers;
    QStringList listed;
    expectSearchAndLeave(answers, &listed, u"Ordens de fabricação"_s);
    station().click(u"SbConsulta"_s);
    QCOMPARE(listed, (QStringList{u"000001"_s, u"000007"_s, u"000100"_s}));
    QCOMPARE(station().text(u"edtOF"_s), u"000100"_s);
    expectSearchAndTake(answers, u"000007"_s);
    station().key(Qt::Key_F4);
    QCOMPARE(station().text(u"edtOF"_s), u"000007"_s);
    QVERIFY(!isEditing());
}

void TestOrdemFab::closingFreesTheScreenAndItsTables()
{
    openScreen();
    const QPointer<QWidget> screen = station().form();
    QCOMPARE(instance(), screen.data());
    for (const QString &name : {u"tbMateriais"_s, u"tbEntidade"_s, u"tbMaquina"_s})
        QVERIFY2(station().tabela.tabela(name), qPrintable(name));
    QTest::mouseClick(station().child(u"BtSaida"_s), Qt::LeftButton);
    QTRY_VERIFY(screen.isNull());
    QVERIFY(!instance());
    QVERIFY(!station().host.openForm(u"TfmMalhaOF"_s));
    for (const QString &name : {u"tbMateriais"_s, u"tbEntidade"_s, u"tbMaquina"_s})
        QVERIFY2(!station().tabela.tabela(name), qPrintable(name));
}

void TestOrdemFab::reopeningIsAFreshScreenOnTheLastOrder()
{
    insertOrder({.number = u"000001"_s});
    insertOrder({.number = u"000002"_s});
    openScreen();
    station().child<QTabWidget>(u"PageControl"_s)->setCurrentIndex(1);
    station().enter(u"edtFCliente"_s, u"00002"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QTRY_VERIFY(!station().form());
    insertOrder({.number = u"000003"_s});
    openScreen();
    QCOMPARE(instance(), station().form());
    QCOMPARE(station().text(u"edtOF"_s), u"000003"_s);
    QCOMPARE(station().text(u"edtFCliente"_s), QString());
    QCOMPARE(station().child<QTabWidget>(u"PageControl"_s)->currentIndex(), 0);
}

void TestOrdemFab::aNewOrderTakesTheNextNumber_data()
{
    QTest::addColumn<QStringList>("existing");
    QTest::addColumn<QString>("next");
    QTest::newRow("the first") << QStringList{} << u"000001"_s;
    QTest::newRow("one more") << QStringList{u"000012"_s} << u"000013"_s;
    QTest::newRow("over a gap") << QStringList{u"000001"_s, u"000500"_s} << u"000501"_s;
    QTest::newRow("the thousandth") << QStringList{u"000999"_s} << u"001000"_s;
    QTest::newRow("beside texts") << QStringList{u"000012"_s, u"TESTE"_s, u"99"_s, u"1A2B3C"_s} << u"000013"_s;
    QTest::newRow("the last is taken") << QStringList{u"000001"_s, u"000002"_s, u"999999"_s} << u"000003"_s;
}

void TestOrdemFab::aNewOrderTakesTheNextNumber()
{
    QFETCH(QStringList, existing);
    QFETCH(QString, next);
    for (const QString &number : existing)
        insertOrder({.number = number});
    openScreen();
    station().click(u"btnincluir"_s);
    QCOMPARE(station().text(u"edtOF"_s), next);
    // It is no one's before it is saved.
    QCOMPARE(station().database.count(u"OF_MALHA"_s), existing.size());
}

void TestOrdemFab::incluirOpensAnEmptyRecordForTyping()
{
    insertOrder({.observation = u"Urgente"_s});
    openScreen();
    station().child<QTabWidget>(u"PageControl"_s)->setCurrentIndex(1);
    station().click(u"btnincluir"_s);
    QVERIFY(isEditing());
    QCOMPARE(station().focus(), u"edtOF"_s);
    QVERIFY(station().child(u"edtOF"_s)->isEnabled());
    QCOMPARE(station().text(u"edtData"_s), u"10/03/2026"_s);
    for (const QString &name : {u"edtCliente"_s, u"edtDescCliente"_s, u"edtMaterial"_s, u"edtDescMaterial"_s,
             u"edtMaquina"_s, u"edtDescMaquina"_s, u"EdtCodFluxo"_s, u"EdtDescFluxo"_s, u"MemoObs"_s})
        QCOMPARE(station().text(name), QString());
    for (const QString &name : {u"edtKGTotal"_s, u"edtKGRolo"_s, u"edtBaixado"_s, u"edtSaldo"_s, u"edtLargura"_s})
        QCOMPARE(station().text(name), u"0,00"_s);
    QVERIFY(!station().child<QTabWidget>(u"PageControl"_s)->isTabEnabled(1));
}

void TestOrdemFab::withoutTheRightNothingHappens()
{
    m_station->host.login(u"SEMDIREITO"_s, 1);
    insertOrder();
    const MessageAnswers none;
    openScreen();
    for (const QString &button : {u"btnincluir"_s, u"BtnAltera"_s, u"BtExcluir"_s}) {
        station().click(button);
        QVERIFY2(!isEditing(), qPrintable(button));
    }
    QCOMPARE(station().database.count(u"OF_MALHA"_s), 1);
    QCOMPARE(Orders::log(station().database), QStringList());
}

void TestOrdemFab::aNumberThatIsTakenIsRefusedOnceWhicheverWayItIsLeft_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"Tab", "Enter", "another field", "Confirmar", "Alt+C"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void TestOrdemFab::aNumberThatIsTakenIsRefusedOnceWhicheverWayItIsLeft()
{
    QFETCH(QString, way);
    insertOrder();
    openScreen();
    station().click(u"btnincluir"_s);
    station().type(u"edtOF"_s, u"000012"_s);
    {
        MessageAnswers answers;
        expectInformation(answers, caption, u"Número já Cadastrado."_s);
        if (way == u"Tab"_s)
            station().key(Qt::Key_Tab);
        else if (way == u"Enter"_s)
            station().key(Qt::Key_Return);
        else if (way == u"another field"_s)
            QTest::mouseClick(station().child(u"edtLote"_s), Qt::LeftButton);
        else if (way == u"Alt+C"_s)
            station().key(Qt::Key_C, Qt::AltModifier);
        else
            station().click(u"SbConfirmar"_s);
    }
    QTRY_COMPARE(station().focus(), u"edtOF"_s);
    QVERIFY(isEditing());
    const MessageAnswers none;
    station().enter(u"edtOF"_s, u"000099"_s);
    QTRY_COMPARE(station().focus(), u"edtData"_s);
    QCOMPARE(station().database.count(u"OF_MALHA"_s), 1);
}

void TestOrdemFab::enterWalksThroughTheWholeOrder()
{
    openScreen();
    station().click(u"btnincluir"_s);
    const QStringList order{u"edtOF"_s, u"edtData"_s, u"edtLote"_s, u"edtCliente"_s, u"edtMaterial"_s, u"edtMaquina"_s,
        u"EdtCodFluxo"_s, u"edtKGTotal"_s, u"edtKGRolo"_s, u"MemoObs"_s, u"SbConfirmar"_s};
    for (const QString &field : order) {
        QCOMPARE(station().focus(), field);
        if (field != u"SbConfirmar"_s)
            station().key(Qt::Key_Return);
    }
    for (qsizetype i = order.size() - 1; i > 0; --i) {
        QCOMPARE(station().focus(), order[i]);
        station().key(Qt::Key_Backtab, Qt::ShiftModifier);
    }
    QCOMPARE(station().focus(), u"edtOF"_s);
    station().key(Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(station().focus(), u"edtData"_s);
}

void TestOrdemFab::leavingTheMaterialOfANewOrderFillsRollWeightAndFlow()
{
    insertOrder({.number = u"000005"_s, .flow = u"02"_s});
    openScreen();
    station().click(u"btnincluir"_s);
    station().enter(u"edtMaterial"_s, u"M0001"_s);
    QCOMPARE(station().text(u"edtKGRolo"_s), u"20,00"_s);
    QCOMPARE(station().text(u"EdtCodFluxo"_s), u"02"_s);
    QCOMPARE(station().text(u"EdtDescFluxo"_s), u"Tecer e revisar"_s);
    QCOMPARE(station().focus(), u"edtMaquina"_s);
    station().enter(u"edtMaterial"_s, u"M0002"_s);
    QCOMPARE(station().text(u"edtKGRolo"_s), u"25,00"_s);
}

void TestOrdemFab::theFlowIsThatOfTheHighestNumberNotOfTheLatestDate()
{
    insertOrder({.number = u"000007"_s, .date = u"01/05/2026"_s, .flow = u"02"_s});
    insertOrder({.number = u"000006"_s, .date = u"03/09/2026"_s, .flow = u"01"_s});
    insertOrder({.number = u"000008"_s, .material = u"M0002"_s, .flow = u"01"_s});
    openScreen();
    station().click(u"btnincluir"_s);
    station().enter(u"edtMaterial"_s, u"M0001"_s);
    QCOMPARE(station().text(u"EdtCodFluxo"_s), u"02"_s);
}

void TestOrdemFab::aFabricNeverMadeKeepsTheFlowThatWasTyped()
{
    station().database.run(u"DELETE FROM {COMP_MATERIAL} WHERE MATERIAL = 'M0002'"_s);
    openScreen();
    station().click(u"btnincluir"_s);
    station().enter(u"EdtCodFluxo"_s, u"02"_s);
    station().enter(u"edtKGRolo"_s, u"18"_s);
    station().enter(u"edtMaterial"_s, u"M0002"_s);
    QCOMPARE(station().text(u"EdtCodFluxo"_s), u"02"_s);
    QCOMPARE(station().text(u"edtKGRolo"_s), u"0,00"_s);
}

void TestOrdemFab::leavingAChangedMaterialOfAnOldOrderFillsNothing()
{
    insertOrder({.number = u"000004"_s, .material = u"M0002"_s, .flow = u"02"_s});
    insertOrder({.rollKg = 17});
    openScreen();
    station().click(u"BtnAltera"_s);
    station().enter(u"edtMaterial"_s, u"M0002"_s);
    QCOMPARE(station().text(u"edtKGRolo"_s), u"17,00"_s);
    QCOMPARE(station().text(u"EdtCodFluxo"_s), u"01"_s);
}

void TestOrdemFab::anUnknownCodeIsRefusedOnceAndHoldsTheFocus_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("known");
    QTest::newRow("client") << u"edtCliente"_s << u"Cliente não Existe."_s << u"00003"_s;
    QTest::newRow("material") << u"edtMaterial"_s << u"Material não encontrado."_s << u"M0001"_s;
    QTest::newRow("machine") << u"edtMaquina"_s << u"Máquina inexistente."_s << u"001"_s;
    QTest::newRow("flow") << u"EdtCodFluxo"_s << u"Fluxo Inválido."_s << u"01"_s;
}

void TestOrdemFab::anUnknownCodeIsRefusedOnceAndHoldsTheFocus()
{
    QFETCH(QString, field);
    QFETCH(QString, message);
    QFETCH(QString, known);
    openScreen();
    station().click(u"btnincluir"_s);
    for (const QString &unknown : {u"9"_s, u"'"_s, u"%"_s, u"' O"_s}) {
        MessageAnswers answers;
        expectInformation(answers, caption, message);
        station().enter(field, unknown);
        QTRY_COMPARE(station().focus(), field);
    }
    MessageAnswers answers;
    expectInformation(answers, caption, message);
    station().click(u"SbConfirmar"_s);
    QTRY_COMPARE(station().focus(), field);
    QVERIFY(isEditing());
    station().enter(field, known);
    QVERIFY(station().focus() != field);
    station().enter(field, QString());
    QVERIFY(station().focus() != field);
}

void TestOrdemFab::descriptionsFollowTheTyping()
{
    openScreen();
    station().click(u"btnincluir"_s);
    const QList<QStringList> fields{
        {u"edtCliente"_s, u"edtDescCliente"_s, u"0000"_s, u"2"_s, u"Malhas São Bento S.A."_s},
        {u"edtMaterial"_s, u"edtDescMaterial"_s, u"M000"_s, u"2"_s, u"Ribana 2x1"_s},
        {u"edtMaquina"_s, u"edtDescMaquina"_s, u"00"_s, u"1"_s, u"Circular 30\" 28 agulhas"_s},
        {u"EdtCodFluxo"_s, u"EdtDescFluxo"_s, u"0"_s, u"1"_s, u"Tecer"_s}};
    for (const QStringList &field : fields) {
        station().type(field[0], field[2]);
        QCOMPARE(station().text(field[1]), QString());
        QTest::keyClicks(station().child(field[0]), field[3]);
        QCOMPARE(station().text(field[1]), field[4]);
        station().key(Qt::Key_Tab);
    }
}

void TestOrdemFab::moreThanOneActiveColourAsksBeforeGoingOn()
{
    const QString question =
        u"Material contém composição com mais de uma cor ativa, podem ocorrer erros no consumo dos fios. Deseja continuar?"_s;
    station().database.run(u"INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, ORDEM, PERC, KG_ROLO) "
                           "VALUES ('M0001', '000002', 'FIO30CO', '000002', 1, 100, 20)"_s);
    openScreen();
    station().click(u"btnincluir"_s);
    MessageAnswers answers;
    answers.expect(question, QMessageBox::No, caption);
    station().enter(u"edtMaterial"_s, u"M0001"_s);
    QTRY_COMPARE(station().focus(), u"edtMaterial"_s);
    answers.expectAndType(question, Qt::Key_Escape, caption);
    station().key(Qt::Key_Return);
    QTRY_COMPARE(station().focus(), u"edtMaterial"_s);
    answers.expect(question, QMessageBox::Yes, caption);
    station().key(Qt::Key_Return);
    QTRY_COMPARE(station().focus(), u"edtMaquina"_s);
    QVERIFY(answers.allCame());
    // Once accepted it is not asked again.
    station().enter(u"edtMaterial"_s, u"M0001"_s);
    QCOMPARE(station().focus(), u"edtMaquina"_s);
}

void TestOrdemFab::aColourThatIsSwitchedOffDoesNotCount()
{
    station().database.run(u"INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, ORDEM, PERC, KG_ROLO) "
                           "VALUES ('M0001', '000003', 'FIO30CO', '000003', 1, 100, 20)"_s);
    openScreen();
    station().click(u"btnincluir"_s);
    const MessageAnswers none;
    station().enter(u"edtMaterial"_s, u"M0001"_s);
    QCOMPARE(station().focus(), u"edtMaquina"_s);
}

void TestOrdemFab::cancellingRunsNoExit_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("wrong");
    QTest::addColumn<QString>("way");
    const QList<std::pair<QString, QString>> fields{{u"edtOF"_s, u"000012"_s}, {u"edtCliente"_s, u"99"_s},
        {u"edtMaterial"_s, u"X"_s}, {u"edtMaquina"_s, u"X"_s}, {u"EdtCodFluxo"_s, u"X"_s}};
    for (const auto &[field, wrong] : fields) {
        for (const char *way : {"Cancelar", "Esc", "close"})
            QTest::addRow("%s, %s", qPrintable(field), way) << field << wrong << QString::fromLatin1(way);
    }
}

void TestOrdemFab::cancellingRunsNoExit()
{
    QFETCH(QString, field);
    QFETCH(QString, wrong);
    QFETCH(QString, way);
    insertOrder();
    openScreen();
    station().click(u"btnincluir"_s);
    station().type(field, wrong);
    MessageAnswers answers;
    if (way == u"close"_s) {
        answers.expect(u"O registro está em edição. Deseja abandonar as alterações?"_s, QMessageBox::Yes, caption);
        station().closeForm();
        return;
    }
    if (way == u"Esc"_s)
        station().key(Qt::Key_Escape);
    else
        station().click(u"SbDesistir"_s);
    QVERIFY(!isEditing());
    QCOMPARE(station().text(u"edtOF"_s), u"000012"_s);
    QCOMPARE(station().text(u"edtCliente"_s), u"00001"_s);
    // And the keys still work.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QTRY_VERIFY(!station().form());
}

void TestOrdemFab::cancellingANewOrderShowsTheOneBefore()
{
    insertOrder({.number = u"000011"_s, .totalKg = 50});
    insertOrder({.number = u"000012"_s});
    openScreen();
    station().key(Qt::Key_PageUp);
    station().click(u"btnincluir"_s);
    station().enter(u"edtMaterial"_s, u"M0002"_s);
    station().enter(u"edtKGTotal"_s, u"700"_s);
    station().enter(u"MemoObs"_s, u"x"_s);
    station().click(u"SbDesistir"_s);
    QCOMPARE(station().text(u"edtOF"_s), u"000011"_s);
    QCOMPARE(station().text(u"edtMaterial"_s), u"M0001"_s);
    QCOMPARE(station().text(u"edtKGTotal"_s), u"50,00"_s);
    QCOMPARE(station().text(u"edtSaldo"_s), u"50,00"_s);
    QCOMPARE(station().text(u"MemoObs"_s), QString());
    QVERIFY(station().child<QTabWidget>(u"PageControl"_s)->isTabEnabled(1));
    QCOMPARE(station().database.count(u"OF_MALHA"_s), 2);
    QCOMPARE(Orders::log(station().database), QStringList());
}

void TestOrdemFab::closingWhileEditingAsks()
{
    const QString question = u"O registro está em edição. Deseja abandonar as alterações?"_s;
    insertOrder();
    openScreen();
    station().click(u"BtnAltera"_s);
    station().enter(u"edtKGTotal"_s, u"700"_s);
    for (const Qt::Key refuses : {Qt::Key_Return, Qt::Key_Escape}) {
        MessageAnswers answers;
        answers.expectAndType(question, refuses, caption);
        QVERIFY(!station().form()->close());
        QVERIFY(isEditing());
    }
    MessageAnswers answers;
    answers.expect(question, QMessageBox::Yes, caption);
    station().closeForm();
    QCOMPARE(station().value(u"SELECT KG_TOTAL FROM {OF_MALHA}"_s).toDouble(), 100.0);
    openScreen();
    QVERIFY(!isEditing());
    QCOMPARE(station().text(u"edtKGTotal"_s), u"100,00"_s);
}

void TestOrdemFab::theFabricSearchListsBothGroupsOfTheClientAlone()
{
    for (const QString &fabric : {u"'M0003', 'Moletom', '15', '00001'"_s, u"'M0004', 'Piquê', '15', NULL"_s,
             u"'M0005', 'Corte', '1500', '00001'"_s, u"'M0006', 'Sem grupo', NULL, '00001'"_s})
        station().database.run(u"INSERT INTO {MATERIAL} (CODIGO, DESCRICAO, GRUPO, CODCLI) VALUES (%1)"_s.arg(fabric));
    openScreen();
    station().click(u"btnincluir"_s);
    MessageAnswers answers;
    QStringList listed;
    expectSearchAndLeave(answers, &listed, u"Malhas"_s);
    station().click(u"PqMaterial"_s);
    QCOMPARE(listed, (QStringList{u"M0001"_s, u"M0002"_s, u"M0003"_s, u"M0004"_s}));
    const QList<std::pair<QString, QStringList>> clients{{u"00001"_s, {u"M0001"_s, u"M0003"_s}},
        {u"00002"_s, {u"M0002"_s}}, {u"00003"_s, {}}, {{}, {u"M0001"_s, u"M0002"_s, u"M0003"_s, u"M0004"_s}}};
    for (const auto &[client, fabrics] : clients) {
        station().enter(u"edtCliente"_s, client);
        expectSearchAndLeave(answers, &listed, u"Malhas"_s);
        station().type(u"edtMaterial"_s, {});
        station().key(Qt::Key_F4);
        QCOMPARE(listed, fabrics);
    }
}

void TestOrdemFab::theClientSearchListsTheFabricsOwnerAndWhoWasTyped()
{
    station().database.run(
        u"INSERT INTO {MATERIAL} (CODIGO, DESCRICAO, GRUPO, CODCLI) VALUES ('M0004', 'Piquê', '15', NULL)"_s);
    openScreen();
    station().click(u"btnincluir"_s);
    MessageAnswers answers;
    const auto listed = [&] {
        QStringList codes;
        expectSearchAndLeave(answers, &codes, u"Clientes"_s);
        station().click(u"PqCliente"_s);
        return codes;
    };
    const QStringList all{u"00001"_s, u"00002"_s, u"00003"_s};
    QCOMPARE(listed(), all);
    station().enter(u"edtMaterial"_s, u"M0001"_s);
    QCOMPARE(listed(), QStringList{u"00001"_s});
    station().enter(u"edtCliente"_s, u"00003"_s);
    QCOMPARE(listed(), (QStringList{u"00001"_s, u"00003"_s}));
    station().enter(u"edtCliente"_s, QString());
    QCOMPARE(listed(), QStringList{u"00001"_s});
    station().enter(u"edtMaterial"_s, u"M0004"_s);
    QCOMPARE(listed(), all);
}

void TestOrdemFab::aChosenCodeComesIntoItsField()
{
    openScreen();
    station().click(u"btnincluir"_s);
    MessageAnswers answers;
    const QList<QStringList> searches{{u"edtCliente"_s, u"PqCliente"_s, u"ávila"_s, u"00003"_s, u"edtDescCliente"_s,
                                          u"Têxtil D'Ávila, Filhos & Cia"_s},
        {u"edtMaquina"_s, u"PqMaquina"_s, u"24"_s, u"002"_s, u"edtDescMaquina"_s, u"Circular 34\" 24 agulhas"_s},
        {u"EdtCodFluxo"_s, u"PqFluxo"_s, u"revisar"_s, u"02"_s, u"EdtDescFluxo"_s, u"Tecer e revisar"_s}};
    for (const QStringList &search : searches) {
        expectSearchAndTake(answers, search[2]);
        station().type(search[0], {});
        station().key(Qt::Key_F4);
        QCOMPARE(station().text(search[0]), search[3]);
        QCOMPARE(station().text(search[4]), search[5]);
        QTRY_COMPARE(station().focus(), search[0]);
        // The button does the same; Esc changes nothing.
        QStringList ignored;
        expectSearchAndLeave(answers, &ignored);
        station().click(search[1]);
        QCOMPARE(station().text(search[0]), search[3]);
    }
    station().enter(u"edtCliente"_s, {});
    expectSearchAndTake(answers, u"ribana"_s);
    station().click(u"PqMaterial"_s);
    QTRY_COMPARE(station().focus(), u"edtMaterial"_s);
    QCOMPARE(station().text(u"edtMaterial"_s), u"M0002"_s);
    station().key(Qt::Key_Return);
    QCOMPARE(station().text(u"edtKGRolo"_s), u"25,00"_s);
}

QTEST_MAIN(TestOrdemFab)
#include "tst_ordemfab.moc"
