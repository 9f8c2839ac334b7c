// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/production/orderstation.h"

#include <QTableView>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

namespace {

/// A station on the page "Consulta", whose filters are all empty.
class ConsultStation : public OrderStation
{
public:
    void openConsult()
    {
        openOrders();
        showPage(u"TabConsulta"_s);
        enter(u"edtDe"_s, {});
        enter(u"edtAte"_s, {});
    }
    QTableView *grid() const { return child<QTableView>(u"DBGrid1"_s); }
    QString cell(int row, int column) const { return grid()->model()->index(row, column).data().toString(); }
    QStringList numbers() const
    {
        QStringList result;
        for (int row = 0; row < grid()->model()->rowCount(); ++row)
            result.append(cell(row, 0));
        return result;
    }
    QStringList consult()
    {
        click(u"BitBtn3"_s);
        return numbers();
    }
    QPoint middleOf(int row) const { return grid()->visualRect(grid()->model()->index(row, 0)).center(); }
    /// Orders that differ in everything that can be asked for.
    void insertOrders()
    {
        insertOrder({.number = u"000003"_s, .date = u"03/01/2026"_s, .client = u"00002"_s});
        insertOrder({.number = u"000001"_s, .date = u"01/15/2026"_s});
        insertOrder({.number = u"000002"_s, .date = u"02/28/2026"_s, .material = u"M0002"_s});
        insertOrder({.number = u"000004"_s, .date = u"03/10/2026"_s, .machine = u"002"_s});
        insertOrder({.number = u"000005"_s, .date = u"03/11/2026"_s, .flow = u"02"_s});
        insertOrder({.number = u"000006"_s, .date = {}, .client = {}, .flow = {}});
    }
};

} // namespace

/// The order screen's page "Consulta", and what it and the order print.
class TestOrdemFabConsulta : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }

    void opensOnTheLastMonthWithoutRows();
    void everyFilterFindsByItself_data();
    void everyFilterFindsByItself();
    void allFiltersTogetherMustHold();
    void bothDatesBelongToTheRange_data();
    void bothDatesBelongToTheRange();
    void aDateThatCannotBeReadIsRefused_data();
    void aDateThatCannotBeReadIsRefused();
    void rowsShowWhatTheCodesStandForInOrderOfNumbers();
    void hostileTextIsATextLikeAnyOther_data();
    void hostileTextIsATextLikeAnyOther();
    void filtersHaveSearchesAndDescriptions();
    void enterWalksThroughTheFilters();
    void aLongListIsFetchedAsItIsScrolled();

    void aRowLeadsToItsOrder_data();
    void aRowLeadsToItsOrder();
    void aRowWhoseOrderVanishedLeadsNowhere();
    void theBarRestsWhereTheOrderIsNotSeen();
    void thePageClosesTheScreen_data();
    void thePageClosesTheScreen();

    void theListIsPrinted();
    void anEmptyListIsNotPrinted();
    void theOrderIsPrintedWithCompositionAndLabels();
    void theLabelsFollowTheWeights_data();
    void theLabelsFollowTheWeights();
    void onlyActiveColoursArePrinted();
    void tooManyLabelsAreRefused();
};

void TestOrdemFabConsulta::opensOnTheLastMonthWithoutRows()
{
    ConsultStation station;
    station.insertOrders();
    station.openOrders();
    station.showPage(u"TabConsulta"_s);
    QCOMPARE(station.text(u"edtDe"_s), u"10/02/2026"_s);
    QCOMPARE(station.text(u"edtAte"_s), u"10/03/2026"_s);
    QCOMPARE(station.numbers(), QStringList());
    QCOMPARE(station.consult(), (QStringList{u"000002"_s, u"000003"_s, u"000004"_s}));
    QVERIFY(!station.host.busyMarker().isBusy());
}

void TestOrdemFabConsulta::everyFilterFindsByItself_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QStringList>("found");
    QTest::newRow("client") << u"edtFCliente"_s << u"00002"_s << QStringList{u"000003"_s};
    QTest::newRow("material") << u"edtFMaterial"_s << u"M0002"_s << QStringList{u"000002"_s};
    QTest::newRow("machine") << u"edtFMaquina"_s << u"002"_s << QStringList{u"000004"_s};
    QTest::newRow("flow") << u"edtFFluxo"_s << u"02"_s << QStringList{u"000005"_s};
    QTest::newRow("number") << u"edtFNumero"_s << u"000006"_s << QStringList{u"000006"_s};
    QTest::newRow("number without zeros") << u"edtFNumero"_s << u"6"_s << QStringList{};
    QTest::newRow("unknown client") << u"edtFCliente"_s << u"99999"_s << QStringList{};
    QTest::newRow("part of a material") << u"edtFMaterial"_s << u"M000"_s << QStringList{};
    QTest::newRow("nothing") << u"edtFMaterial"_s << QString()
                             << QStringList{
                                    u"000001"_s, u"000002"_s, u"000003"_s, u"000004"_s, u"000005"_s, u"000006"_s};
}

void TestOrdemFabConsulta::everyFilterFindsByItself()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    QFETCH(QStringList, found);
    ConsultStation station;
    station.insertOrders();
    station.openConsult();
    station.enter(field, value);
    QCOMPARE(station.consult(), found);
}

void TestOrdemFabConsulta::allFiltersTogetherMustHold()
{
    ConsultStation station;
    station.insertOrders();
    station.openConsult();
    const QList<std::pair<QString, QString>> filters{{u"edtDe"_s, u"01/03/2026"_s}, {u"edtAte"_s, u"31/03/2026"_s},
        {u"edtFCliente"_s, u"00001"_s}, {u"edtFMaterial"_s, u"M0001"_s}, {u"edtFMaquina"_s, u"002"_s},
        {u"edtFFluxo"_s, u"01"_s}, {u"edtFNumero"_s, u"000004"_s}};
    for (const auto &[field, value] : filters)
        station.enter(field, value);
    QCOMPARE(station.consult(), QStringList{u"000004"_s});
    const QList<std::pair<QString, QString>> others{{u"edtDe"_s, u"11/03/2026"_s}, {u"edtAte"_s, u"09/03/2026"_s},
        {u"edtFCliente"_s, u"00002"_s}, {u"edtFMaterial"_s, u"M0002"_s}, {u"edtFMaquina"_s, u"001"_s},
        {u"edtFFluxo"_s, u"02"_s}, {u"edtFNumero"_s, u"000005"_s}};
    for (qsizetype i = 0; i < others.size(); ++i) {
        station.enter(others[i].first, others[i].second);
        QCOMPARE(station.consult(), QStringList());
        station.enter(filters[i].first, filters[i].second);
    }
    QCOMPARE(station.consult(), QStringList{u"000004"_s});
}

void TestOrdemFabConsulta::bothDatesBelongToTheRange_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QStringList>("found");
    const QStringList all{u"000001"_s, u"000002"_s, u"000003"_s, u"000004"_s, u"000005"_s, u"000006"_s};
    QTest::newRow("both bounds hit") << u"28/02/2026"_s << u"10/03/2026"_s << all.mid(1, 3);
    QTest::newRow("a day inside") << u"01/03/2026"_s << u"09/03/2026"_s << all.mid(2, 1);
    QTest::newRow("one day") << u"10/03/2026"_s << u"10/03/2026"_s << all.mid(3, 1);
    QTest::newRow("from alone") << u"10/03/2026"_s << QString() << all.mid(3, 2);
    QTest::newRow("to alone") << QString() << u"15/01/2026"_s << all.mid(0, 1);
    QTest::newRow("the wrong way round") << u"10/03/2026"_s << u"01/01/2026"_s << QStringList();
    QTest::newRow("neither") << QString() << QString() << all;
}

void TestOrdemFabConsulta::bothDatesBelongToTheRange()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QStringList, found);
    ConsultStation station;
    station.insertOrders();
    station.openConsult();
    station.enter(u"edtDe"_s, from);
    station.enter(u"edtAte"_s, to);
    QCOMPARE(station.consult(), found);
}

void TestOrdemFabConsulta::aDateThatCannotBeReadIsRefused_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("button");
    for (const QString &field : {u"edtDe"_s, u"edtAte"_s}) {
        for (const QString &button : {u"BitBtn3"_s, u"BitBtn4"_s})
            QTest::addRow("%s, %s", qPrintable(field), qPrintable(button)) << field << button;
    }
}

void TestOrdemFabConsulta::aDateThatCannotBeReadIsRefused()
{
    QFETCH(QString, field);
    QFETCH(QString, button);
    ConsultStation station;
    station.insertOrders();
    station.openConsult();
    station.type(field, u"31/02/2026"_s);
    expectInformation(station.answers, station.caption, u"Data Inválida. Impossível Continuar."_s);
    station.click(button);
    QVERIFY(station.answers.allCame());
    QTRY_COMPARE(station.focus(), field);
    QCOMPARE(station.numbers(), QStringList());
    QCOMPARE(station.host.recordedReports().size(), 0);
    QVERIFY(!station.host.busyMarker().isBusy());
    station.enter(field, {});
    QCOMPARE(station.consult().size(), 6);
}

void TestOrdemFabConsulta::rowsShowWhatTheCodesStandForInOrderOfNumbers()
{
    ConsultStation station;
    station.insertOrder({.number = u"000010"_s, .client = {}, .material = u"SUMIU"_s, .machine = {}, .flow = {}});
    station.insertOrder({.number = u"000009"_s, .client = u"00003"_s});
    station.openConsult();
    QCOMPARE(station.consult(), (QStringList{u"000009"_s, u"000010"_s}));
    const QStringList shown{u"000009"_s, u"02/03/2026"_s, u"00003"_s, u"Têxtil D'Ávila, Filhos & Cia"_s, u"M0001"_s,
        u"Meia-malha PV 60/40"_s, u"001"_s, u"Circular 30\" 28 agulhas"_s, u"01"_s, u"Tecer"_s};
    QCOMPARE(station.grid()->model()->columnCount(), shown.size());
    for (int column = 0; column < shown.size(); ++column) {
        QCOMPARE(station.cell(0, column), shown[column]);
        QCOMPARE(station.cell(1, column).isEmpty(), column != 0 && column != 1 && column != 4);
    }
}

void TestOrdemFabConsulta::hostileTextIsATextLikeAnyOther_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"'", "''", "%", "_", "' OR '1'='1", "');--", "\\", "{OF_MALHA}", ":a", "?", "<b>"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void TestOrdemFabConsulta::hostileTextIsATextLikeAnyOther()
{
    QFETCH(QString, text);
    ConsultStation station;
    station.insertOrders();
    station.insertOrder({.number = u"000007"_s, .material = text});
    station.openConsult();
    for (const QString &field : {u"edtFNumero"_s, u"edtFCliente"_s, u"edtFMaquina"_s, u"edtFFluxo"_s}) {
        station.enter(field, text);
        QCOMPARE(station.consult(), QStringList());
        station.enter(field, QString());
    }
    station.enter(u"edtFMaterial"_s, text);
    QCOMPARE(station.consult(), QStringList{u"000007"_s});
}

void TestOrdemFabConsulta::filtersHaveSearchesAndDescriptions()
{
    ConsultStation station;
    station.insertOrders();
    station.openConsult();
    const QList<QStringList> searches{{u"edtFNumero"_s, u"000003"_s, u"000003"_s, {}, {}},
        {u"edtFCliente"_s, u"Bento"_s, u"00002"_s, u"edtFDescCliente"_s, u"Malhas São Bento S.A."_s},
        {u"edtFMaterial"_s, u"Ribana"_s, u"M0002"_s, u"edtFDescMaterial"_s, u"Ribana 2x1"_s},
        {u"edtFMaquina"_s, u"34"_s, u"002"_s, u"edtFDescMaquina"_s, u"Circular 34\" 24 agulhas"_s},
        {u"edtFFluxo"_s, u"revisar"_s, u"02"_s, u"edtFDescFluxo"_s, u"Tecer e revisar"_s}};
    for (const QStringList &search : searches) {
        expectSearchAndTake(station.answers, search[1]);
        station.type(search[0], {});
        station.key(Qt::Key_F4);
        QCOMPARE(station.text(search[0]), search[2]);
        if (!search[3].isEmpty())
            QCOMPARE(station.text(search[3]), search[4]);
    }
    QCOMPARE(station.text(u"edtOF"_s), u"000006"_s);
}

void TestOrdemFabConsulta::enterWalksThroughTheFilters()
{
    ConsultStation station;
    station.insertOrders();
    station.openConsult();
    station.type(u"edtDe"_s, u"1/1"_s);
    for (const QString &next : {u"edtAte"_s, u"edtFNumero"_s, u"edtFCliente"_s, u"edtFMaterial"_s, u"edtFMaquina"_s,
             u"edtFFluxo"_s, u"BitBtn3"_s}) {
        station.key(Qt::Key_Return);
        QCOMPARE(station.focus(), next);
    }
    QCOMPARE(station.text(u"edtDe"_s), u"01/01/2026"_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.numbers().size(), 5);
    station.key(Qt::Key_Tab);
    QCOMPARE(station.focus(), u"DBGrid1"_s);
}

void TestOrdemFabConsulta::aLongListIsFetchedAsItIsScrolled()
{
    ConsultStation station;
    for (int number = 1; number <= 250; ++number)
        station.insertOrder({.number = QString::number(number).rightJustified(6, u'0')});
    station.openConsult();
    QVERIFY(station.consult().size() < 250);
    station.grid()->setFocus();
    for (int page = 0; page < 100 && station.numbers().size() < 250; ++page)
        station.key(Qt::Key_PageDown);
    QCOMPARE(station.numbers().size(), 250);
    QCOMPARE(station.cell(249, 0), u"000250"_s);
    // The order behind the page has not moved.
    QCOMPARE(station.text(u"edtOF"_s), u"000250"_s);
    station.key(Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(station.grid()->currentIndex().row(), 0);
    QCOMPARE(station.text(u"edtOF"_s), u"000250"_s);
}

void TestOrdemFabConsulta::aRowLeadsToItsOrder_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("double click") << u"double click"_s;
    QTest::newRow("Enter") << u"Enter"_s;
}

void TestOrdemFabConsulta::aRowLeadsToItsOrder()
{
    QFETCH(QString, way);
    ConsultStation station;
    station.insertOrders();
    station.openConsult();
    station.consult();
    for (const int row : {1, 5}) {
        station.showPage(u"TabConsulta"_s);
        station.writeOff(station.cell(row, 0), {30});
        QTest::mouseClick(station.grid()->viewport(), Qt::LeftButton, {}, station.middleOf(row));
        if (way == u"Enter"_s)
            station.key(Qt::Key_Return);
        else
            QTest::mouseDClick(station.grid()->viewport(), Qt::LeftButton, {}, station.middleOf(row));
        QCOMPARE(station.page(), u"TabOrdem"_s);
        QCOMPARE(station.text(u"edtOF"_s), station.cell(row, 0));
        QCOMPARE(station.text(u"edtMaterial"_s), station.cell(row, 4));
        QCOMPARE(station.text(u"edtSaldo"_s), u"70,00"_s);
        QVERIFY(!station.isEditing());
    }
}

void TestOrdemFabConsulta::aRowWhoseOrderVanishedLeadsNowhere()
{
    ConsultStation station;
    station.insertOrders();
    station.openConsult();
    station.consult();
    station.database.run(u"DELETE FROM {OF_MALHA} WHERE NUM_OF = '000001'"_s);
    station.grid()->setFocus();
    expectInformation(station.answers, station.caption, u"A OF não existe mais."_s);
    station.key(Qt::Key_Return);
    QCOMPARE(station.page(), u"TabConsulta"_s);
    QCOMPARE(station.text(u"edtOF"_s), u"000006"_s);
}

void TestOrdemFabConsulta::theBarRestsWhereTheOrderIsNotSeen()
{
    ConsultStation station;
    station.insertOrders();
    station.openConsult();
    for (const QString &name : {u"btnincluir"_s, u"BtnAltera"_s, u"BtExcluir"_s, u"BtnImprimir"_s, u"sbProximo"_s})
        QVERIFY2(!station.child(name)->isEnabled(), qPrintable(name));
    station.key(Qt::Key_E, Qt::AltModifier);
    QCOMPARE(station.focus(), u"edtDe"_s);
    station.showPage(u"TabOrdem"_s);
    for (const QString &name : {u"btnincluir"_s, u"BtnAltera"_s, u"BtExcluir"_s, u"BtnImprimir"_s, u"sbProximo"_s})
        QVERIFY2(station.child(name)->isEnabled(), qPrintable(name));
}

void TestOrdemFabConsulta::thePageClosesTheScreen_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("Fechar") << 0;
    QTest::newRow("Esc") << 1;
    QTest::newRow("Alt+F") << 2;
}

void TestOrdemFabConsulta::thePageClosesTheScreen()
{
    QFETCH(int, way);
    ConsultStation station;
    station.openConsult();
    const QPointer<QWidget> screen = station.form();
    if (way == 0)
        station.click(u"BitBtn5"_s);
    else
        QTest::keyClick(QApplication::focusWidget(), way == 1 ? Qt::Key_Escape : Qt::Key_F,
            way == 1 ? Qt::NoModifier : Qt::AltModifier);
    QTRY_VERIFY(screen.isNull());
}

void TestOrdemFabConsulta::theListIsPrinted()
{
    ConsultStation station;
    station.insertOrders();
    station.openConsult();
    station.enter(u"edtFCliente"_s, u"00001"_s);
    // It is consulted first when that was not done yet.
    station.click(u"BitBtn4"_s);
    station.enter(u"edtFCliente"_s, u"00002"_s);
    station.consult();
    station.key(Qt::Key_I, Qt::AltModifier);
    QTRY_COMPARE(station.host.recordedReports().size(), 2);
    for (int i = 0; i < 2; ++i) {
        const RecordedReport &report = station.host.recordedReports()[i];
        QCOMPARE(report.name, u"WRelMalOF"_s);
        QCOMPARE(report.dataSets, QStringList{u"qryConsulta"_s});
        QCOMPARE(report.rowCounts, QList<int>{i == 0 ? 4 : 1});
    }
}

void TestOrdemFabConsulta::anEmptyListIsNotPrinted()
{
    ConsultStation station;
    station.openConsult();
    expectInformation(station.answers, station.caption, u"Nenhum registro para imprimir."_s);
    station.click(u"BitBtn4"_s);
    QVERIFY(station.answers.allCame());
    QCOMPARE(station.host.recordedReports().size(), 0);
}

void TestOrdemFabConsulta::theOrderIsPrintedWithCompositionAndLabels()
{
    OrderStation station;
    station.insertOrder({.rollKg = 30, .totalKg = 100});
    station.openOrders();
    station.click(u"BtnImprimir"_s);
    QCOMPARE(station.host.recordedReports().size(), 1);
    const RecordedReport &report = station.host.recordedReports()[0];
    QCOMPARE(report.name, u"WMalLote"_s);
    QCOMPARE(report.dataSets, (QStringList{u"tbOF_Malha"_s, u"QryComposicao"_s, u"tbItens"_s}));
    QCOMPARE(report.rowCounts, (QList<int>{1, 2, 6}));
    QVERIFY(!station.isEditing());
    QCOMPARE(station.log(), QStringList());
}

void TestOrdemFabConsulta::theLabelsFollowTheWeights_data()
{
    QTest::addColumn<double>("total");
    QTest::addColumn<double>("roll");
    QTest::addColumn<int>("labels");
    QTest::newRow("thirds") << 9.999 << 3.333 << 6;
    QTest::newRow("one roll") << 20.0 << 20.0 << 4;
    QTest::newRow("less than a roll") << 5.0 << 20.0 << 3;
    QTest::newRow("no roll weight") << 100.0 << 0.0 << 3;
}

void TestOrdemFabConsulta::theLabelsFollowTheWeights()
{
    QFETCH(double, total);
    QFETCH(double, roll);
    QFETCH(int, labels);
    OrderStation station;
    station.insertOrder({.rollKg = roll, .totalKg = total});
    station.openOrders();
    station.click(u"BtnImprimir"_s);
    QCOMPARE(station.host.recordedReports().value(0).rowCounts.value(2), labels);
}

void TestOrdemFabConsulta::onlyActiveColoursArePrinted()
{
    OrderStation station;
    const QString line = u"INSERT INTO {COMP_MATERIAL} (MATERIAL, COR, CODIGO, COR_I, ORDEM, PERC) VALUES "
                         "('M0001', '%1', 'FIO20ELA', '000001', 3, 5)"_s;
    station.database.run(line.arg(u"000003"_s)); // its stock item is switched off
    station.insertOrder();
    station.openOrders();
    station.click(u"BtnImprimir"_s);
    station.database.run(line.arg(u"000002"_s)); // its flag is empty
    station.click(u"BtnImprimir"_s);
    station.database.run(u"UPDATE {MAT_ITEN} SET ATIVO = 'N'"_s);
    station.click(u"BtnImprimir"_s);
    QList<int> lines;
    for (const RecordedReport &report : station.host.recordedReports())
        lines.append(report.rowCounts.value(1));
    QCOMPARE(lines, (QList<int>{2, 3, 0}));
}

void TestOrdemFabConsulta::tooManyLabelsAreRefused()
{
    OrderStation station;
    station.insertOrder({.rollKg = 1, .totalKg = 10000});
    station.openOrders();
    expectFailure(
        station.answers, station.caption, u"A OF 000012 daria 10000 etiquetas. Verifique o peso e o KG Rolo."_s);
    station.click(u"BtnImprimir"_s);
    QCOMPARE(station.host.recordedReports().size(), 0);
}

QTEST_MAIN(TestOrdemFabConsulta)
#include "tst_ordemfabconsulta.moc"
