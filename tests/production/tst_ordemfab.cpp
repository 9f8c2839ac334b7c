// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/production/orderstation.h"

#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

namespace {

const QString abandonQuestion = QStringLiteral("O registro está em edição. Deseja abandonar as alterações?");

} // namespace

/// The order screen: what it shows, how its states and its life change.
class TestOrdemFab : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

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
    void enterWalksThroughTheWholeOrder();

    void cancellingRunsNoExit_data();
    void cancellingRunsNoExit();
    void cancellingANewOrderShowsTheOneBefore();
    void closingWhileEditingAsks();

    void theBalanceIsThePlanLessTheRolls_data();
    void theBalanceIsThePlanLessTheRolls();
};

void TestOrdemFab::everyButtonBearsItsCaption()
{
    OrderStation station;
    station.openOrders();
    QCOMPARE(station.form()->windowTitle(), station.caption);
    const QList<std::pair<QString, QString>> captions{{u"btnincluir"_s, u"&Incluir"_s}, {u"BtnAltera"_s, u"&Alterar"_s},
        {u"BtExcluir"_s, u"&Excluir"_s}, {u"SbConsulta"_s, u"Consultar"_s}, {u"BtnImprimir"_s, u"Imprimir"_s},
        {u"BtSaida"_s, u"&Fechar"_s}, {u"SbConfirmar"_s, u"&Confirmar "_s}, {u"SbDesistir"_s, u"&Cancelar"_s},
        {u"BitBtn1"_s, u"&Zerar Saldo"_s}, {u"BitBtn2"_s, u"&Buscar Saldo"_s}, {u"BitBtn3"_s, u"&Consultar"_s},
        {u"BitBtn4"_s, u"&Imprimir"_s}, {u"BitBtn5"_s, u"&Fechar"_s}};
    for (const auto &[name, text] : captions)
        QCOMPARE(station.text(name), text);
    const QList<std::pair<QString, QString>> labels{{u"lbOF"_s, u"Número OF"_s}, {u"lbData"_s, u"Data"_s},
        {u"lbCliente"_s, u"Cliente"_s}, {u"lbMaterial"_s, u"Material"_s}, {u"lbMaquina"_s, u"Máquina"_s},
        {u"lbFluxo"_s, u"Fluxo"_s}, {u"lbPeso"_s, u"Peso"_s}, {u"lbKGRolo"_s, u"KG. Rolo"_s},
        {u"lbBaixado"_s, u"Baixado"_s}, {u"lbSaldo"_s, u"Saldo"_s}, {u"lbDesc2"_s, u"Descrição 2"_s},
        {u"lbLargura"_s, u"Largura"_s}, {u"lbGramatura"_s, u"Gramatura"_s}, {u"lbConcentr"_s, u"Concentr."_s},
        {u"lbObsMaterial"_s, u"Observação do Material"_s}, {u"lbDe"_s, u"De"_s}, {u"lbAte"_s, u"Até"_s}};
    for (const auto &[name, text] : labels)
        QCOMPARE(station.text(name).remove(u'&'), text);
}

void TestOrdemFab::opensOnTheHighestOrder()
{
    OrderStation station;
    station.insertOrder({.number = u"000013"_s, .date = u"01/02/2026"_s, .rollKg = 12.345, .totalKg = 1234.5});
    station.insertOrder({.number = u"000012"_s, .date = u"03/09/2026"_s});
    station.writeOff(u"000013"_s, {20, 14.5});
    station.openOrders();
    QVERIFY(!station.isEditing());
    QCOMPARE(station.page(), u"TabOrdem"_s);
    QCOMPARE(station.text(u"edtOF"_s), u"000013"_s);
    QCOMPARE(station.text(u"edtData"_s), u"02/01/2026"_s);
    QCOMPARE(station.text(u"edtKGTotal"_s), u"1234,50"_s);
    QCOMPARE(station.text(u"edtKGRolo"_s), u"12,35"_s);
    QCOMPARE(station.text(u"edtBaixado"_s), u"34,50"_s);
    QCOMPARE(station.text(u"edtSaldo"_s), u"1200,00"_s);
}

void TestOrdemFab::showsWhatTheCodesStandFor()
{
    OrderStation station;
    station.insertOrder({.client = u"00003"_s, .material = u"M0002"_s, .machine = u"002"_s, .flow = u"02"_s});
    station.openOrders();
    QCOMPARE(station.text(u"edtCliente"_s), u"00003"_s);
    QCOMPARE(station.text(u"edtDescCliente"_s), u"Têxtil D'Ávila, Filhos & Cia"_s);
    QCOMPARE(station.text(u"edtMaterial"_s), u"M0002"_s);
    QCOMPARE(station.text(u"edtDescMaterial"_s), u"Ribana 2x1"_s);
    QCOMPARE(station.text(u"edtDescMaquina"_s), u"Circular 34\" 24 agulhas"_s);
    QCOMPARE(station.text(u"EdtDescFluxo"_s), u"Tecer e revisar"_s);
}

void TestOrdemFab::showsTheFabricsOwnData()
{
    OrderStation station;
    station.database.run(uR"(UPDATE {MATERIAL} SET DESCRICAO2 = 'Malha leve', LARGURA = 1.25, GRAMATURA = 165,
        MAXIMO = 3.5, CONCENTRACAO = 40, OBSERVACAO = 'Não esticar' WHERE CODIGO = 'M0001')"_s);
    station.insertOrder();
    station.openOrders();
    QCOMPARE(station.text(u"edtDescricao2"_s), u"Malha leve"_s);
    QCOMPARE(station.text(u"edtLargura"_s), u"1,25"_s);
    QCOMPARE(station.text(u"edtGramatura"_s), u"165,00"_s);
    QCOMPARE(station.text(u"edtMaximo"_s), u"3,50"_s);
    QCOMPARE(station.text(u"edtConcentracao"_s), u"40,00"_s);
    QCOMPARE(station.text(u"MemoObsMaterial"_s), u"Não esticar"_s);
    for (const QString &name : {u"edtDescMaterial"_s, u"edtDescCliente"_s, u"edtBaixado"_s, u"edtSaldo"_s})
        QVERIFY2(station.child<QLineEdit>(name)->isReadOnly(), qPrintable(name));
}

void TestOrdemFab::withoutOrdersThereIsNothingToChangeDeleteOrPrint()
{
    OrderStation station;
    station.openOrders();
    QCOMPARE(station.text(u"edtOF"_s), QString());
    QCOMPARE(station.text(u"edtSaldo"_s), u"0,00"_s);
    for (const QString &button : {u"BtnAltera"_s, u"BtExcluir"_s, u"BtnImprimir"_s, u"sbPrimeiro"_s, u"sbProximo"_s}) {
        station.click(button);
        QVERIFY2(!station.isEditing(), qPrintable(button));
    }
    QCOMPARE(station.host.recordedReports().size(), 0);
    station.click(u"btnincluir"_s);
    station.click(u"SbDesistir"_s);
    QCOMPARE(station.text(u"edtOF"_s), QString());
}

void TestOrdemFab::keysAndButtonsMoveThroughTheOrders()
{
    OrderStation station;
    for (const QString &number : {u"000001"_s, u"000007"_s, u"000100"_s})
        station.insertOrder({.number = number, .totalKg = number.toDouble()});
    station.openOrders();
    const auto stands = [&](const QString &number, const QString &balance) {
        return station.text(u"edtOF"_s) == number && station.text(u"edtSaldo"_s) == balance;
    };
    QVERIFY(stands(u"000100"_s, u"100,00"_s));
    station.key(Qt::Key_PageUp);
    QVERIFY(stands(u"000007"_s, u"7,00"_s));
    station.key(Qt::Key_PageUp);
    station.key(Qt::Key_PageUp);
    QVERIFY(stands(u"000001"_s, u"1,00"_s));
    station.key(Qt::Key_PageDown);
    QVERIFY(stands(u"000007"_s, u"7,00"_s));
    station.key(Qt::Key_End, Qt::ControlModifier);
    QVERIFY(stands(u"000100"_s, u"100,00"_s));
    station.key(Qt::Key_Home, Qt::ControlModifier);
    QVERIFY(stands(u"000001"_s, u"1,00"_s));
    station.click(u"sbUltimo"_s);
    station.click(u"sbProximo"_s);
    QVERIFY(stands(u"000100"_s, u"100,00"_s));
    station.click(u"sbAnterior"_s);
    station.click(u"sbPrimeiro"_s);
    QVERIFY(stands(u"000001"_s, u"1,00"_s));
}

void TestOrdemFab::theSearchGoesToTheChosenOrder()
{
    OrderStation station;
    for (const QString &number : {u"000001"_s, u"000007"_s, u"000100"_s})
        station.insertOrder({.number = number});
    station.openOrders();
    QStringList listed;
    expectSearchAndLeave(station.answers, &listed, u"Ordens de fabricação"_s);
    station.click(u"SbConsulta"_s);
    QCOMPARE(listed, (QStringList{u"000001"_s, u"000007"_s, u"000100"_s}));
    QCOMPARE(station.text(u"edtOF"_s), u"000100"_s);
    expectSearchAndTake(station.answers, u"000007"_s);
    station.key(Qt::Key_F4);
    QCOMPARE(station.text(u"edtOF"_s), u"000007"_s);
    QVERIFY(!station.isEditing());
}

void TestOrdemFab::closingFreesTheScreenAndItsTables()
{
    OrderStation station;
    station.openOrders();
    const QPointer<QWidget> screen = station.form();
    QCOMPARE(station.instance("fmMalhaOF"), screen.data());
    for (const QString &name : {u"tbMateriais"_s, u"tbEntidade"_s, u"tbMaquina"_s})
        QVERIFY2(station.tabela.tabela(name), qPrintable(name));
    station.click(u"BtSaida"_s);
    QTRY_VERIFY(screen.isNull());
    QVERIFY(!station.instance("fmMalhaOF"));
    QVERIFY(!station.host.openForm(u"TfmMalhaOF"_s));
    for (const QString &name : {u"tbMateriais"_s, u"tbEntidade"_s, u"tbMaquina"_s})
        QVERIFY2(!station.tabela.tabela(name), qPrintable(name));
}

void TestOrdemFab::reopeningIsAFreshScreenOnTheLastOrder()
{
    OrderStation station;
    station.insertOrder({.number = u"000001"_s});
    station.insertOrder({.number = u"000002"_s});
    station.openOrders();
    station.showPage(u"TabConsulta"_s);
    station.enter(u"edtFCliente"_s, u"00002"_s);
    station.key(Qt::Key_Escape);
    QTRY_VERIFY(!station.form());
    station.insertOrder({.number = u"000003"_s});
    station.openOrders();
    QCOMPARE(station.instance("fmMalhaOF"), station.form());
    QCOMPARE(station.text(u"edtOF"_s), u"000003"_s);
    QCOMPARE(station.text(u"edtFCliente"_s), QString());
    QCOMPARE(station.page(), u"TabOrdem"_s);
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
    OrderStation station;
    QFETCH(QStringList, existing);
    QFETCH(QString, next);
    for (const QString &number : existing)
        station.insertOrder({.number = number});
    station.openOrders();
    station.click(u"btnincluir"_s);
    QCOMPARE(station.text(u"edtOF"_s), next);
    // It is no one's before it is saved.
    QCOMPARE(station.database.count(u"OF_MALHA"_s), existing.size());
}

void TestOrdemFab::incluirOpensAnEmptyRecordForTyping()
{
    OrderStation station;
    station.insertOrder({.observation = u"Urgente"_s});
    station.openOrders();
    station.click(u"btnincluir"_s);
    QVERIFY(station.isEditing());
    QCOMPARE(station.focus(), u"edtOF"_s);
    QVERIFY(station.child(u"edtOF"_s)->isEnabled());
    QCOMPARE(station.text(u"edtData"_s), u"10/03/2026"_s);
    for (const QString &name : {u"edtCliente"_s, u"edtDescCliente"_s, u"edtMaterial"_s, u"edtDescMaterial"_s,
             u"edtMaquina"_s, u"edtDescMaquina"_s, u"EdtCodFluxo"_s, u"EdtDescFluxo"_s, u"MemoObs"_s})
        QCOMPARE(station.text(name), QString());
    for (const QString &name : {u"edtKGTotal"_s, u"edtKGRolo"_s, u"edtBaixado"_s, u"edtSaldo"_s, u"edtLargura"_s})
        QCOMPARE(station.text(name), u"0,00"_s);
    QVERIFY(!station.isPageEnabled(u"TabConsulta"_s));
}

void TestOrdemFab::withoutTheRightNothingHappens()
{
    OrderStation station;
    station.goOnWithRights({});
    station.insertOrder();
    station.openOrders();
    for (const QString &button : {u"btnincluir"_s, u"BtnAltera"_s, u"BtExcluir"_s}) {
        station.click(button);
        QVERIFY2(!station.isEditing(), qPrintable(button));
    }
    QCOMPARE(station.database.count(u"OF_MALHA"_s), 1);
    QCOMPARE(station.log(), QStringList());
}

void TestOrdemFab::enterWalksThroughTheWholeOrder()
{
    OrderStation station;
    station.openOrders();
    station.click(u"btnincluir"_s);
    const QStringList order{u"edtOF"_s, u"edtData"_s, u"edtLote"_s, u"edtCliente"_s, u"edtMaterial"_s, u"edtMaquina"_s,
        u"EdtCodFluxo"_s, u"edtKGTotal"_s, u"edtKGRolo"_s, u"MemoObs"_s, u"SbConfirmar"_s};
    for (const QString &field : order) {
        QCOMPARE(station.focus(), field);
        if (field != u"SbConfirmar"_s)
            station.key(Qt::Key_Return);
    }
    for (qsizetype i = order.size() - 1; i > 0; --i) {
        QCOMPARE(station.focus(), order[i]);
        station.key(Qt::Key_Backtab, Qt::ShiftModifier);
    }
    QCOMPARE(station.focus(), u"edtOF"_s);
    station.key(Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(station.focus(), u"edtData"_s);
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
    OrderStation station;
    QFETCH(QString, field);
    QFETCH(QString, wrong);
    QFETCH(QString, way);
    station.insertOrder();
    station.openOrders();
    station.click(u"btnincluir"_s);
    station.type(field, wrong);
    if (way == u"close"_s) {
        station.answers.expect(abandonQuestion, QMessageBox::Yes, station.caption);
        station.closeForm();
        return;
    }
    if (way == u"Esc"_s)
        station.key(Qt::Key_Escape);
    else
        station.click(u"SbDesistir"_s);
    QVERIFY(!station.isEditing());
    QCOMPARE(station.text(u"edtOF"_s), u"000012"_s);
    QCOMPARE(station.text(u"edtCliente"_s), u"00001"_s);
    // And the keys still work.
    station.key(Qt::Key_Escape);
    QTRY_VERIFY(!station.form());
}

void TestOrdemFab::cancellingANewOrderShowsTheOneBefore()
{
    OrderStation station;
    station.insertOrder({.number = u"000011"_s, .totalKg = 50});
    station.insertOrder({.number = u"000012"_s});
    station.openOrders();
    station.key(Qt::Key_PageUp);
    station.click(u"btnincluir"_s);
    station.enter(u"edtMaterial"_s, u"M0002"_s);
    station.enter(u"edtKGTotal"_s, u"700"_s);
    station.enter(u"MemoObs"_s, u"x"_s);
    station.click(u"SbDesistir"_s);
    QCOMPARE(station.text(u"edtOF"_s), u"000011"_s);
    QCOMPARE(station.text(u"edtMaterial"_s), u"M0001"_s);
    QCOMPARE(station.text(u"edtKGTotal"_s), u"50,00"_s);
    QCOMPARE(station.text(u"edtSaldo"_s), u"50,00"_s);
    QCOMPARE(station.text(u"MemoObs"_s), QString());
    QVERIFY(station.isPageEnabled(u"TabConsulta"_s));
    QCOMPARE(station.database.count(u"OF_MALHA"_s), 2);
    QCOMPARE(station.log(), QStringList());
}

void TestOrdemFab::closingWhileEditingAsks()
{
    OrderStation station;
    station.insertOrder();
    station.openOrders();
    station.click(u"BtnAltera"_s);
    station.enter(u"edtKGTotal"_s, u"700"_s);
    for (const Qt::Key refuses : {Qt::Key_Return, Qt::Key_Escape}) {
        station.answers.expectAndType(abandonQuestion, refuses, station.caption);
        QVERIFY(!station.form()->close());
        QVERIFY(station.isEditing());
    }
    station.answers.expect(abandonQuestion, QMessageBox::Yes, station.caption);
    station.closeForm();
    QCOMPARE(station.value(u"SELECT KG_TOTAL FROM {OF_MALHA}"_s).toDouble(), 100.0);
    station.openOrders();
    QVERIFY(!station.isEditing());
    QCOMPARE(station.text(u"edtKGTotal"_s), u"100,00"_s);
}

void TestOrdemFab::theBalanceIsThePlanLessTheRolls_data()
{
    QTest::addColumn<double>("total");
    QTest::addColumn<QList<double>>("rolls");
    QTest::addColumn<QString>("produced");
    QTest::addColumn<QString>("balance");
    QTest::newRow("no rolls") << 100.0 << QList<double>{} << u"0,00"_s << u"100,00"_s;
    QTest::newRow("some") << 100.0 << QList<double>{20.5, 19.25} << u"39,75"_s << u"60,25"_s;
    QTest::newRow("all") << 99.99 << QList<double>(30, 3.333) << u"99,99"_s << u"0,00"_s;
    QTest::newRow("over the plan") << 40.0 << QList<double>{20, 25} << u"45,00"_s << u"-5,00"_s;
    QTest::newRow("a gram left") << 0.3 << QList<double>{0.1, 0.199} << u"0,30"_s << u"0,00"_s;
}

void TestOrdemFab::theBalanceIsThePlanLessTheRolls()
{
    OrderStation station;
    QFETCH(double, total);
    QFETCH(QList<double>, rolls);
    QFETCH(QString, produced);
    QFETCH(QString, balance);
    station.insertOrder({.number = u"000011"_s});
    station.writeOff(u"000011"_s, {1, 2, 3});
    station.insertOrder({.totalKg = total});
    station.writeOff(u"000012"_s, rolls);
    station.openOrders();
    QCOMPARE(station.text(u"edtBaixado"_s), produced);
    QCOMPARE(station.text(u"edtSaldo"_s), balance);
    station.click(u"sbAnterior"_s);
    QCOMPARE(station.text(u"edtBaixado"_s), u"6,00"_s);
    QCOMPARE(station.text(u"edtSaldo"_s), u"94,00"_s);
}

QTEST_MAIN(TestOrdemFab)
#include "tst_ordemfab.moc"
