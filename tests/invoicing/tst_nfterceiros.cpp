// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/invoicing/invoices.h"

using namespace Invoices;

namespace {

const QString clientRefused = QStringLiteral("Cliente inválido.");
const QString invoiceThere = QStringLiteral("Nota Fiscal para este cliente já cadastrada.");

} // namespace

/// The inbound invoice screen: moving through invoices, rights, the header and its client.
class TestNFTerceiros : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void everyButtonBearsItsCaption();
    void theLotsBearTheirTitles();
    void opensOnTheLastInvoiceByNumberAndClient();
    void withoutInvoicesTheScreenIsEmpty();
    void movesByNumberAndClient();
    void theSearchTellsTwoClientsOfOneNumberApart();
    void closingFreesTheScreenAndItsTables();
    void closingWhileEditingAsks();

    void withoutTheRightNothingHappens_data();
    void withoutTheRightNothingHappens();
    void aNewInvoiceStartsWithTodayAndWithoutLots();
    void lotsWaitForAnAcceptedClient();
    void anUnknownClientIsRefusedAndLookedUp();
    void anEmptyClientIsNoUnknownOne();
    void oneNumberServesTwoClientsButNotOneTwice();
    void theDuplicateIsToldWhileAlteringToo();
    void passingTheClientAgainKeepsTheLots();
    void passingTheClientAgainKeepsTheLotThatIsOpen();
    void anotherClientReloadsTheLots();
    void enterMovesThroughTheWholeInvoice();
    void desistingShowsWhatIsSaved();
};

void TestNFTerceiros::everyButtonBearsItsCaption()
{
    Screen screen;
    screen.open();
    const QList<QStringList> captions{{u"Btincluir"_s, u"&Incluir"_s}, {u"BtnAltera"_s, u"&Alterar"_s},
        {u"BtExcluir"_s, u"&Excluir"_s}, {u"SbConsulta"_s, u"Consultar"_s}, {u"BtSaida"_s, u"&Fechar"_s},
        {u"SbConfirmar"_s, u"&Confirmar "_s}, {u"SbDesistir"_s, u"&Desistir"_s}};
    for (const QStringList &pair : captions)
        QCOMPARE(screen.station.text(pair[0]), pair[1]);
    QCOMPARE(screen.station.form()->windowTitle(), caption);
    QVERIFY(!screen.station.form()->findChild<QWidget *>(u"btnincluir"_s));
    QVERIFY(!screen.station.child(u"BtnImprimir"_s)->isVisible());
}

void TestNFTerceiros::theLotsBearTheirTitles()
{
    Screen screen;
    screen.open();
    const QAbstractItemModel *model = screen.station.child<QTableView>(u"DBGItens"_s)->model();
    QStringList titles;
    for (int column = 0; column < model->columnCount(); ++column)
        titles.append(model->headerData(column, Qt::Horizontal).toString());
    QCOMPARE(titles.join(u'|'),
        u"Material|Descrição|Lote|Estoque NF|Unitário|Valor|Marca|Estoque Fisico|Baixado|Devolvido"_s);
    QCOMPARE(screen.station.text(u"lbPeso"_s).remove(u'&'), u"Quantidade"_s);
}

void TestNFTerceiros::opensOnTheLastInvoiceByNumberAndClient()
{
    Screen screen;
    insert(screen.database(), u"0000200"_s, u"00001"_s, {{.lot = u"X"_s}});
    insert(screen.database(), u"0000200"_s, u"00002"_s, {{.lot = u"Y"_s, .quantity = 1234.5}});
    insert(screen.database(), u"0000100"_s, u"00003"_s, {{.lot = u"Z"_s}});
    screen.open();
    QCOMPARE(screen.station.text(u"DBDocto"_s), u"0000200"_s);
    QCOMPARE(screen.station.text(u"DBCodCliente"_s), u"00002"_s);
    QCOMPARE(screen.station.text(u"EdtNomeCliente"_s), u"Malhas São Bento S.A."_s);
    QCOMPARE(screen.station.text(u"DBData"_s), u"02/03/2026"_s);
    QCOMPARE(screen.station.text(u"DBObs"_s), u"Obs"_s);
    QCOMPARE(screen.shownLots(), QStringList{u"FIO30CO|Y|1.234,50|20,000000|24.690,00|Marca"_s});
    QVERIFY(!screen.isEditing());
    QVERIFY(!screen.station.child(u"PainelItens"_s)->isEnabled());
}

void TestNFTerceiros::withoutInvoicesTheScreenIsEmpty()
{
    Screen screen;
    screen.open();
    QCOMPARE(screen.station.text(u"DBDocto"_s), QString());
    QCOMPARE(screen.shownLots(), QStringList());
    for (const QString &button : {u"BtnAltera"_s, u"BtExcluir"_s, u"sbAnterior"_s, u"sbUltimo"_s})
        screen.station.click(button);
    QVERIFY(!screen.isEditing());
}

void TestNFTerceiros::movesByNumberAndClient()
{
    Screen screen;
    insert(screen.database(), u"0000100"_s, u"00003"_s, {{.lot = u"A"_s}});
    insert(screen.database(), u"0000200"_s, u"00001"_s, {{.lot = u"B"_s}});
    insert(screen.database(), u"0000200"_s, u"00002"_s, {{.lot = u"C"_s}});
    screen.open();
    const auto standsOn = [&](const QString &lot) { return screen.station.text(u"EdtLote"_s) == lot; };
    QVERIFY(standsOn(u"C"_s));
    screen.station.key(Qt::Key_PageUp);
    QVERIFY(standsOn(u"B"_s));
    QCOMPARE(screen.station.text(u"EdtNomeCliente"_s), u"Confecções Serra Azul Ltda"_s);
    screen.station.click(u"sbAnterior"_s);
    QVERIFY(standsOn(u"A"_s));
    screen.station.click(u"sbAnterior"_s);
    QVERIFY(standsOn(u"A"_s));
    screen.station.click(u"sbProximo"_s);
    QVERIFY(standsOn(u"B"_s));
    screen.station.key(Qt::Key_End, Qt::ControlModifier);
    QVERIFY(standsOn(u"C"_s));
    screen.station.key(Qt::Key_Home, Qt::ControlModifier);
    QVERIFY(standsOn(u"A"_s));
    screen.station.key(Qt::Key_PageDown);
    QVERIFY(standsOn(u"B"_s));
    QCOMPARE(screen.shownLots().size(), 1);
}

void TestNFTerceiros::theSearchTellsTwoClientsOfOneNumberApart()
{
    Screen screen;
    insert(screen.database(), u"0000200"_s, u"00001"_s, {{.lot = u"X"_s}});
    insert(screen.database(), u"0000200"_s, u"00002"_s, {{.lot = u"Y"_s}});
    insert(screen.database(), u"0000300"_s, u"00001"_s, {{.lot = u"Z"_s}});
    screen.open();
    for (const QStringList &way : {QStringList{u"0000200 00001"_s, u"X"_s}, QStringList{u"0000200 Bento"_s, u"Y"_s}}) {
        ScreenChecks::expectSearchAndTake(screen.answers, way[0], u"Notas fiscais de entrada"_s);
        screen.station.click(u"SbConsulta"_s);
        QCOMPARE(screen.station.text(u"DBDocto"_s), u"0000200"_s);
        QCOMPARE(screen.station.text(u"EdtLote"_s), way[1]);
    }
    QStringList listed;
    ScreenChecks::expectSearchAndLeave(screen.answers, &listed);
    screen.station.key(Qt::Key_F4);
    QCOMPARE(listed, (QStringList{u"0000200"_s, u"0000200"_s, u"0000300"_s}));
    QCOMPARE(screen.station.text(u"EdtLote"_s), u"Y"_s);
}

void TestNFTerceiros::closingFreesTheScreenAndItsTables()
{
    Screen screen;
    screen.open();
    for (const QString &table : {u"tbEntidade"_s, u"tbMateriais"_s, u"tbNFTerceiros"_s})
        QVERIFY(screen.station.tabela.tabela(table));
    screen.station.click(u"BtSaida"_s);
    QTRY_VERIFY(!screen.station.form());
    for (const QString &table : {u"tbEntidade"_s, u"tbMateriais"_s, u"tbNFTerceiros"_s})
        QVERIFY(!screen.station.tabela.tabela(table));
}

void TestNFTerceiros::closingWhileEditingAsks()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    const QString question = u"O registro está em edição. Deseja abandonar as alterações?"_s;
    screen.answers.expect(question, QMessageBox::No, caption);
    screen.station.form()->close();
    QVERIFY(screen.isEditing());
    screen.answers.expect(question, QMessageBox::Yes, caption);
    screen.station.closeForm();
    QCOMPARE(headers(screen.database()), QStringList());
}

void TestNFTerceiros::withoutTheRightNothingHappens_data()
{
    QTest::addColumn<QString>("granted");
    QTest::addColumn<QString>("button");
    QTest::newRow("insert without any") << QString() << u"Btincluir"_s;
    QTest::newRow("alter without any") << QString() << u"BtnAltera"_s;
    QTest::newRow("delete with A") << u"A"_s << u"BtExcluir"_s;
    QTest::newRow("insert with E") << u"E"_s << u"Btincluir"_s;
    QTest::newRow("alter with E") << u"E"_s << u"BtnAltera"_s;
}

void TestNFTerceiros::withoutTheRightNothingHappens()
{
    QFETCH(QString, granted);
    QFETCH(QString, button);
    Screen screen;
    insert(screen.database(), u"0000100"_s, u"00001"_s, {{}});
    screen.station.host.login(u"SEMDIREITO"_s, 1);
    const auto grant = [&](const QString &letter) {
        screen.database().run(u"INSERT INTO QEN_DIREITO (USUARIO, TELA, LETRA, NIVEL) VALUES ('SEMDIREITO', "
                              "'TfmNFTerceiros', '%1', '0')"_s.arg(letter));
    };
    if (!granted.isEmpty())
        grant(granted);
    screen.open();
    screen.station.click(button);
    QVERIFY(!screen.isEditing());
    QCOMPARE(headers(screen.database()).size(), 1);
    QVERIFY(screen.answers.shown().isEmpty());
    // With the right the same button does something.
    grant(button == u"BtExcluir"_s ? u"E"_s : u"A"_s);
    if (button == u"BtExcluir"_s)
        screen.answers.expect(u"Deseja eliminar esta Nota Fiscal?"_s, QMessageBox::No);
    screen.station.click(button);
    QCOMPARE(screen.isEditing(), button != u"BtExcluir"_s);
}

void TestNFTerceiros::aNewInvoiceStartsWithTodayAndWithoutLots()
{
    Screen screen;
    insert(screen.database(), u"0000100"_s, u"00001"_s, {{}});
    screen.open();
    screen.station.click(u"Btincluir"_s);
    QCOMPARE(screen.station.focus(), u"DBDocto"_s);
    QCOMPARE(screen.station.text(u"DBDocto"_s), QString());
    QCOMPARE(screen.station.text(u"DBData"_s), u"10/03/2026"_s);
    QCOMPARE(screen.station.text(u"EdtNomeCliente"_s), QString());
    QCOMPARE(screen.station.text(u"EdtCodMaterial"_s), QString());
    QCOMPARE(screen.station.text(u"EdtPeso"_s), u"0,00"_s);
    QCOMPARE(screen.shownLots(), QStringList());
    QVERIFY(screen.station.child(u"PainelConfirma"_s)->isVisible());
    QVERIFY(!screen.station.child(u"PainelBarra"_s)->isVisible());
}

void TestNFTerceiros::lotsWaitForAnAcceptedClient()
{
    Screen screen;
    screen.open();
    screen.station.click(u"Btincluir"_s);
    screen.station.enter(u"DBDocto"_s, u"0000123"_s);
    QVERIFY(!screen.station.child(u"BtIIncluir"_s)->isEnabled());
    screen.station.enter(u"DBCodCliente"_s, u"00001"_s);
    QVERIFY(screen.station.child(u"BtIIncluir"_s)->isEnabled());
    QVERIFY(!screen.isLotOpen());
    QCOMPARE(screen.station.text(u"EdtNomeCliente"_s), u"Confecções Serra Azul Ltda"_s);
    // The client is in question again.
    screen.station.type(u"DBCodCliente"_s, u"0000"_s);
    QVERIFY(!screen.station.child(u"BtIIncluir"_s)->isEnabled());
    QCOMPARE(screen.station.text(u"EdtNomeCliente"_s), QString());
}

void TestNFTerceiros::anUnknownClientIsRefusedAndLookedUp()
{
    Screen screen;
    screen.open();
    screen.startInvoice(u"0000123"_s, {});
    screen.expect(clientRefused);
    QStringList listed;
    ScreenChecks::expectSearchAndLeave(screen.answers, &listed, u"Clientes"_s);
    screen.station.enter(u"DBCodCliente"_s, u"99999"_s);
    QCOMPARE(listed.size(), 3);
    QTRY_COMPARE(screen.station.focus(), u"DBCodCliente"_s);
    QVERIFY(!screen.station.child(u"BtIIncluir"_s)->isEnabled());
    screen.expect(clientRefused);
    ScreenChecks::expectSearchAndTake(screen.answers, u"Bento"_s);
    screen.station.enter(u"DBCodCliente"_s, u"99998"_s);
    QCOMPARE(screen.station.text(u"DBCodCliente"_s), u"00002"_s);
    QTRY_COMPARE(screen.station.focus(), u"DBCodCliente"_s);
    screen.station.key(Qt::Key_Tab);
    QCOMPARE(screen.station.text(u"EdtNomeCliente"_s), u"Malhas São Bento S.A."_s);
    QVERIFY(screen.station.child(u"BtIIncluir"_s)->isEnabled());
}

void TestNFTerceiros::anEmptyClientIsNoUnknownOne()
{
    Screen screen;
    screen.open();
    screen.startInvoice(u"0000123"_s, {});
    QVERIFY(screen.answers.shown().isEmpty());
    QVERIFY(!screen.station.child(u"BtIIncluir"_s)->isEnabled());
}

void TestNFTerceiros::oneNumberServesTwoClientsButNotOneTwice()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, {{.lot = u"A"_s}});
    screen.open();
    screen.station.click(u"Btincluir"_s);
    screen.station.enter(u"DBDocto"_s, u"0000123"_s);
    screen.expect(invoiceThere);
    screen.station.enter(u"DBCodCliente"_s, u"00001"_s);
    QTRY_COMPARE(screen.station.focus(), u"DBDocto"_s);
    QVERIFY(!screen.station.child(u"BtIIncluir"_s)->isEnabled());
    screen.station.enter(u"DBCodCliente"_s, u"00002"_s);
    screen.enterLot(u"FIO30CO"_s, u"B"_s);
    screen.station.click(u"SbConfirmar"_s);
    QVERIFY(!screen.isEditing());
    QCOMPARE(headers(screen.database()), (QStringList{u"0000123|00001"_s, u"0000123|00002"_s}));
    QCOMPARE(lots(screen.database()),
        (QStringList{u"0000123|00001|FIO30CO|A|50|50|0|0|20|1000"_s, u"0000123|00002|FIO30CO|B|50|50|0|0|20|1000"_s}));
}

void TestNFTerceiros::theDuplicateIsToldWhileAlteringToo()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, {{}});
    screen.open();
    screen.station.click(u"BtnAltera"_s);
    QVERIFY(screen.station.child(u"BtIIncluir"_s)->isEnabled());
    screen.station.child(u"DBCodCliente"_s)->setFocus();
    screen.expect(invoiceThere);
    screen.station.key(Qt::Key_Tab);
    QTRY_COMPARE(screen.station.focus(), u"DBDocto"_s);
    QVERIFY(screen.isEditing());
    QVERIFY(screen.station.child(u"BtIIncluir"_s)->isEnabled());
    QCOMPARE(screen.shownLots().size(), 1);
    screen.station.click(u"SbConfirmar"_s);
    QVERIFY(!screen.isEditing());
    QCOMPARE(screen.station.text(u"EdtNomeCliente"_s), u"Confecções Serra Azul Ltda"_s);
}

void TestNFTerceiros::passingTheClientAgainKeepsTheLots()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.enterLot();
    screen.station.enter(u"DBDocto"_s, u"0000124"_s);
    screen.station.enter(u"DBCodCliente"_s, u"00001"_s);
    QCOMPARE(screen.shownLots().size(), 1);
    screen.station.click(u"SbConfirmar"_s);
    QCOMPARE(lots(screen.database()), QStringList{u"0000124|00001|FIO30CO|L1|50|50|0|0|20|1000"_s});
}

void TestNFTerceiros::passingTheClientAgainKeepsTheLotThatIsOpen()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.enterLot();
    screen.station.click(u"BtIIncluir"_s);
    screen.fillLot(u"FIO30CO"_s, u"L2"_s, u"30"_s, u"20"_s);
    screen.station.enter(u"DBCodCliente"_s, u"00001"_s);
    QVERIFY(screen.isLotOpen());
    QCOMPARE(screen.station.text(u"EdtLote"_s), u"L2"_s);
    screen.station.click(u"SbConfirmar"_s);
    QCOMPARE(lots(screen.database()),
        (QStringList{u"0000123|00001|FIO30CO|L1|50|50|0|0|20|1000"_s, u"0000123|00001|FIO30CO|L2|30|30|0|0|20|600"_s}));
}

void TestNFTerceiros::anotherClientReloadsTheLots()
{
    Screen screen;
    screen.open();
    screen.startInvoice();
    screen.enterLot();
    screen.station.click(u"BtIIncluir"_s);
    screen.station.enter(u"DBCodCliente"_s, u"00002"_s);
    QVERIFY(!screen.isLotOpen());
    QCOMPARE(screen.shownLots(), QStringList());
    QCOMPARE(screen.station.text(u"EdtCodMaterial"_s), QString());
}

void TestNFTerceiros::enterMovesThroughTheWholeInvoice()
{
    Screen screen;
    screen.open();
    screen.station.click(u"Btincluir"_s);
    screen.station.type(u"DBDocto"_s, u"0000123"_s);
    const QStringList fields{u"DBData"_s, u"DBCodCliente"_s, u"DBObs"_s, u"BtIIncluir"_s, u"EdtCodMaterial"_s,
        u"EdtMarca"_s, u"EdtLote"_s, u"EdtPeso"_s, u"EdtUnitario"_s, u"btISalvar"_s, u"BtIIncluir"_s};
    const QHash<QString, QString> typed{{u"DBCodCliente"_s, u"00001"_s}, {u"EdtCodMaterial"_s, u"FIO30CO"_s},
        {u"EdtPeso"_s, u"12,5"_s}, {u"EdtUnitario"_s, u"3"_s}};
    for (const QString &field : fields) {
        screen.station.key(Qt::Key_Return);
        QCOMPARE(screen.station.focus(), field);
        if (typed.contains(field))
            screen.station.type(field, typed[field]);
    }
    QCOMPARE(screen.shownLots(), QStringList{u"FIO30CO|0|12,50|3,000000|37,50|"_s});
}

void TestNFTerceiros::desistingShowsWhatIsSaved()
{
    Screen screen;
    insert(screen.database(), u"0000123"_s, u"00001"_s, {{}});
    screen.open();
    screen.station.click(u"BtnAltera"_s);
    screen.enterLot(u"FIO30CO"_s, u"L2"_s);
    screen.station.enter(u"DBObs"_s, u"Outra"_s);
    QCOMPARE(screen.shownLots().size(), 2);
    // Another station saves meanwhile.
    screen.database().run(u"UPDATE {NFTERCEIROS} SET OBS = 'Nova'"_s);
    screen.station.click(u"SbDesistir"_s);
    QVERIFY(!screen.isEditing());
    QCOMPARE(screen.shownLots().size(), 1);
    QCOMPARE(screen.station.text(u"DBObs"_s), u"Nova"_s);
    QCOMPARE(lots(screen.database()).size(), 1);
    QCOMPARE(log(screen.database()), QStringList());
}

QTEST_MAIN(TestNFTerceiros)
#include "tst_nfterceiros.moc"
