// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/controls/dateedit.h"
#include "module/controls/dbgrid.h"
#include "module/host_services/clientdataset.h"
#include "module/host_services/clock.h"
#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/pesquisa.h"
#include "module/host_services/query.h"
#include "module/host_services/tabelas.h"
#include "module/reportbar.h"
#include "module/reportfilters.h"
#include "module/reportform.h"
#include "tests/support/engines.h"
#include "tests/support/keys.h"
#include "tests/support/recordinghost.h"
#include "tests/support/screenchecks.h"
#include "tests/support/testdatabase.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace ScreenChecks;

namespace {

/// A host whose inventory may fail, and which notes whether the marker is shown while boxes are.
class StockHost : public RecordingHost
{
public:
    QStringList inventories; ///< "quantity column:rows"
    int failingInventory = 0; ///< which call throws; 0: none

    int createInventory(const InventoryColumns &columns, TDataSet &rows) override
    {
        inventories.append(u"%1:%2"_s.arg(columns.quantidade).arg(rows.rowCount()));
        Tabela->IBDatabase->run(u"INSERT INTO QEN_LOG (TEXTO) VALUES ('inventory')"_s);
        if (inventories.size() == failingInventory)
            throw EQen(u"Sem rede."_s);
        return rows.rowCount();
    }
};

} // namespace

/// A report of orders, by client and date, with a work table beside it.
class TfmRelTeste : public TReportForm
{
    Q_OBJECT

public:
    std::function<void()> searching; ///< what BuscaDados() does besides
    QString statement = u"SELECT NUM_OF, KG_TOTAL FROM {OF_MALHA} WHERE 1 = 1"_s;
    bool allCompanies = false;
    bool inventory = false;
    TTIQuery *orders = new TTIQuery(this);
    TClientDataSet *work = new TClientDataSet(this);
    QStringList calls;

    using TReportForm::fill;

    Q_INVOKABLE void edtClienteExit() { checkCode(child<TPesquisa>(u"PqCliente"_s), u"Cliente inválido."_s); }
    Q_INVOKABLE void DBGrid1Enter() { calls.append(u"grid entered"_s); }
    Q_INVOKABLE void tbTrabalhoBeforePost() { work->setValue(u"DOBRO"_s, 2 * work->AsFloat(u"KG_TOTAL"_s)); }

    template <class Kind> Kind *child(const QString &name) const { return findChild<Kind *>(name); }
    QString line(const QString &name) const { return child<QLineEdit>(name)->text(); }

protected:
    void FormCreate() override;
    void BuscaDados() override;
    const TDataSet &result() const override { return *orders; }
    QString filters() const override
    {
        const QDate from = child<TDateEdit>(u"edtDe"_s)->date();
        return ReportFilters::Text()
            .add(u"Período"_s, ReportFilters::periodText(from, {}))
            .add(u"Cliente"_s, chosen(child<TPesquisa>(u"PqCliente"_s)))
            .text();
    }
    ReportCall report() const override
    {
        ReportCall call;
        call.name = u"WTeste"_s;
        call.dataSets = {{u"qryRelatorio"_s, orders}, {u"tbTrabalho"_s, work}};
        call.parameters.insert(u"situacao"_s, u"Pendente"_s);
        return call;
    }

private:
    template <class Kind> Kind *add(const QString &objectName)
    {
        auto *widget = new Kind(this);
        widget->setObjectName(objectName);
        layout()->addWidget(widget);
        return widget;
    }
};

void TfmRelTeste::FormCreate()
{
    setWindowTitle(u"Relatório"_s);
    new QVBoxLayout(this);
    add<TDateEdit>(u"edtDe"_s);
    add<QLineEdit>(u"edtCliente"_s);
    auto *name = add<QLineEdit>(u"edtNome"_s);
    name->setReadOnly(true);
    name->setFocusPolicy(Qt::NoFocus);
    auto *search = add<TPesquisa>(u"PqCliente"_s);
    search->setTabela(u"ENTIDADE"_s);
    search->setColunas(u"CODCLI=Código;NOME=Nome"_s);
    search->setCampo(u"edtCliente"_s);
    search->setDescricao(u"edtNome"_s);
    add<ReportBar>(u"Barra"_s);
    auto *grid = add<TDBGrid>(u"DBGrid1"_s);
    grid->setColunas(u"NUM_OF=OF;KG_TOTAL=Peso"_s);
    grid->setDataSet(orders);
    work->setObjectName(u"tbTrabalho"_s);
    work->CreateDataSet(
        {{u"NUM_OF"_s, TField::Type::Text}, {u"KG_TOTAL"_s, TField::Type::Float}, {u"DOBRO"_s, TField::Type::Float}});
    add<TDBGrid>(u"DBGrid2"_s)->setDataSet(work);
    resize(700, 500);
}

void TfmRelTeste::BuscaDados()
{
    QString asked = statement + ReportFilters::equals(u"CLIENTE"_s, line(u"edtCliente"_s));
    if (const QDate from = child<TDateEdit>(u"edtDe"_s)->date(); from.isValid())
        asked += u" AND "_s + ReportFilters::within(u"DATA"_s, from, {});
    openQuery(orders, forCompanies(asked, u"OF_MALHA"_s, allCompanies, u"ORDER BY 1"_s));
    if (searching)
        searching();
    if (inventory)
        exportInventory({{orders, u"FISICO"_s}, {work, u"QTDE"_s}});
}

class TestReportForm : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }
    void init();
    void cleanup();

    void theFirstFieldHasTheFocus();
    void theConsultationRunsMarkedAndDetached();
    void afterTheConsultationTheButtonStillHasTheFocus();
    void theOutcomeIsToldBesideTheButtons();
    void aFailureClearsTheMarkerAndKeepsTheRows();
    void columnsKeepTheWidthThatTheUserGaveThem();
    void aDateThatCannotBeReadIsRefused();

    void aWrongCodeGetsItsMessageAndItsSearch();
    void aChosenCodeTakesThePlaceOfTheWrongOne();
    void aKnownOrEmptyCodeIsLeftInSilence();
    void closingAsksNothingOfAWrongCode();

    void thePaperSaysWhatWasAskedFor();
    void thePaperBearsTheRowsThatAreShown();
    void withoutRowsNothingIsPrinted();
    void afterAFailureThePaperReadsAnew();

    void allCompaniesComeSortedTogether();
    void aWorkTableIsFilledByNames();
    void aWorkTableStaysWhenItsStatementFails();
    void theInventoryTellsItsRows();
    void aHalfInventoryIsNone();
    void theBarIsWordedAndNamedByTheScreen();

private:
    template <class Kind = QWidget> Kind *child(const QString &name) const { return m_form->findChild<Kind *>(name); }
    void click(const QString &button);
    void type(const QString &field, const QString &text);
    QString told() const { return child<QLabel>(u"lbResultado"_s)->text(); }
    QStringList shown() const;
    QString focus() const { return m_form->focusWidget() ? m_form->focusWidget()->objectName() : QString(); }
    void insertOrder(const QString &number, const QString &client = u"00001"_s, int company = 1);

    std::unique_ptr<TestDatabase> m_data;
    std::unique_ptr<StockHost> m_host;
    std::unique_ptr<TTabela> m_tabela;
    std::unique_ptr<MessageAnswers> m_answers; ///< a box that nobody expects fails every test
    QPointer<TfmRelTeste> m_form;
};

void TestReportForm::init()
{
    Clock::pin(QDateTime(QDate(2026, 3, 10), QTime(10, 30)));
    m_answers = std::make_unique<MessageAnswers>();
    m_data = std::make_unique<TestDatabase>(Engines::current());
    m_host = std::make_unique<StockHost>();
    m_tabela = std::make_unique<TTabela>();
    m_tabela->IBDatabase->open(m_data->settings());
    m_data->run(u"INSERT INTO {ENTIDADE} (CODCLI, NOME) VALUES ('00001', 'Malhas Aurora')"_s);
    insertOrder(u"000002"_s);
    insertOrder(u"000001"_s);
    m_form = new TfmRelTeste;
    m_form->Create();
    m_form->show();
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form));
}

void TestReportForm::cleanup()
{
    delete m_form;
    m_tabela.reset();
    m_host.reset();
    m_data.reset();
    m_answers.reset();
    Clock::pin({});
}

void TestReportForm::insertOrder(const QString &number, const QString &client, int company)
{
    m_data->run(
        u"INSERT INTO OF_MALHA_%1 (NUM_OF, CLIENTE, DATA, KG_TOTAL) VALUES ('%2', '%3', '03/05/2026', 100)"_s.arg(
            QString::number(company).rightJustified(3, u'0'), number, client));
}

void TestReportForm::click(const QString &name)
{
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form));
    auto *button = child<QAbstractButton>(name);
    QVERIFY2(button && button->isVisible() && button->isEnabled(), qPrintable(name));
    QTest::mouseClick(button, Qt::LeftButton);
}

void TestReportForm::type(const QString &name, const QString &text)
{
    auto *field = child<QLineEdit>(name);
    field->setFocus();
    field->selectAll();
    text.isEmpty() ? QTest::keyClick(field, Qt::Key_Delete) : Keys::type(field, text);
}

QStringList TestReportForm::shown() const
{
    const auto *model = child<TDBGrid>(u"DBGrid1"_s)->model();
    QStringList rows;
    for (int row = 0; row < model->rowCount(); ++row)
        rows.append(model->index(row, 0).data().toString());
    return rows;
}

void TestReportForm::theFirstFieldHasTheFocus()
{
    QCOMPARE(focus(), u"edtDe"_s);
    QTest::keyClick(m_form->focusWidget(), Qt::Key_Return);
    QCOMPARE(focus(), u"edtCliente"_s);
    QTest::keyClick(m_form->focusWidget(), Qt::Key_Return);
    QCOMPARE(focus(), u"BtnExecutaSQL"_s);
    QTest::keyClick(m_form->focusWidget(), Qt::Key_Return);
    QCOMPARE(shown(), (QStringList{u"000001"_s, u"000002"_s}));
}

void TestReportForm::theConsultationRunsMarkedAndDetached()
{
    QStringList seen;
    m_form->searching = [&] {
        seen = {QString::number(m_host->busy), child(u"BtnExecutaSQL"_s)->isEnabled() ? u"open"_s : u"closed"_s,
            QString::number(child<TDBGrid>(u"DBGrid1"_s)->model()->rowCount()),
            child<TDBGrid>(u"DBGrid2"_s)->dataSet() ? u"attached"_s : u"detached"_s};
    };
    click(u"BtnExecutaSQL"_s);
    QCOMPARE(seen, (QStringList{u"1"_s, u"closed"_s, u"0"_s, u"detached"_s}));
    QCOMPARE(m_host->busy, 0);
    QVERIFY(child(u"BtnExecutaSQL"_s)->isEnabled());
    QCOMPARE(child<TDBGrid>(u"DBGrid2"_s)->dataSet(), m_form->work);
    QCOMPARE(shown(), (QStringList{u"000001"_s, u"000002"_s}));
}

void TestReportForm::afterTheConsultationTheButtonStillHasTheFocus()
{
    click(u"BtnExecutaSQL"_s);
    QCOMPARE(focus(), u"BtnExecutaSQL"_s);
    QCOMPARE(m_form->calls, QStringList()); // no other field was entered meanwhile
}

void TestReportForm::theOutcomeIsToldBesideTheButtons()
{
    QCOMPARE(told(), QString());
    click(u"BtnExecutaSQL"_s);
    QCOMPARE(told(), u"2 registros"_s);
    type(u"edtDe"_s, u"06/03/2026"_s);
    click(u"BtnExecutaSQL"_s);
    QCOMPARE(told(), u"Nenhum registro encontrado."_s);
    type(u"edtDe"_s, {});
    m_data->run(u"DELETE FROM {OF_MALHA} WHERE NUM_OF = '000002'"_s);
    click(u"BtnExecutaSQL"_s);
    QCOMPARE(told(), u"1 registro"_s);
    for (int number = 1000; number < 1000 + TTIQuery::fetchSize; ++number)
        insertOrder(QString::number(number));
    click(u"BtnExecutaSQL"_s);
    QCOMPARE(told(), u"Mais de 200 registros"_s);
}

void TestReportForm::aFailureClearsTheMarkerAndKeepsTheRows()
{
    click(u"BtnExecutaSQL"_s);
    m_form->statement = u"SELECT NO_SUCH_COLUMN FROM {OF_MALHA} WHERE 1 = 1"_s;
    click(u"BtnExecutaSQL"_s);
    QCOMPARE(m_host->failures, QStringList(u"O banco de dados recusou a operação. Nada foi gravado."_s));
    QCOMPARE(m_host->busy, 0);
    QVERIFY(child(u"BtnExecutaSQL"_s)->isEnabled());
    QCOMPARE(focus(), u"BtnExecutaSQL"_s);
    QCOMPARE(shown(), (QStringList{u"000001"_s, u"000002"_s}));
    QCOMPARE(told(), QString());
    m_form->statement = u"SELECT NUM_OF, KG_TOTAL FROM {OF_MALHA} WHERE NUM_OF = '000002'"_s;
    click(u"BtnExecutaSQL"_s);
    QCOMPARE(shown(), QStringList(u"000002"_s));
}

void TestReportForm::columnsKeepTheWidthThatTheUserGaveThem()
{
    click(u"BtnExecutaSQL"_s);
    auto *grid = child<TDBGrid>(u"DBGrid1"_s);
    grid->horizontalHeader()->resizeSection(1, 222);
    click(u"BtnExecutaSQL"_s);
    QCOMPARE(grid->columnWidth(1), 222);
    m_form->searching = [&] {
        // A window that changes its size while the grids are detached.
        m_form->resize(900, 600);
        QCoreApplication::sendPostedEvents();
    };
    click(u"BtnExecutaSQL"_s);
    QCOMPARE(grid->columnWidth(1), 222);
}

void TestReportForm::aDateThatCannotBeReadIsRefused()
{
    type(u"edtDe"_s, u"31/02/2026"_s);
    expectInformation(*m_answers, u"Relatório"_s, u"Data inválida."_s);
    click(u"BtnExecutaSQL"_s);
    QCOMPARE(focus(), u"edtDe"_s);
    QCOMPARE(m_host->busyCalls, 0);
    QCOMPARE(shown(), QStringList());
    expectInformation(*m_answers, u"Relatório"_s, u"Data inválida."_s);
    click(u"BtnImprimir"_s);
    QCOMPARE(m_host->reports.size(), 0);
}

void TestReportForm::aWrongCodeGetsItsMessageAndItsSearch()
{
    type(u"edtCliente"_s, u"99999"_s);
    QStringList codes;
    expectInformation(*m_answers, u"Relatório"_s, u"Cliente inválido."_s);
    expectSearchAndLeave(*m_answers, &codes);
    QTest::keyClick(m_form->focusWidget(), Qt::Key_Tab);
    QVERIFY(m_answers->allCame());
    QCOMPARE(codes, QStringList(u"00001"_s));
    QCOMPARE(focus(), u"edtCliente"_s);
    QCOMPARE(m_form->line(u"edtCliente"_s), u"99999"_s);
}

void TestReportForm::aChosenCodeTakesThePlaceOfTheWrongOne()
{
    type(u"edtCliente"_s, u"99999"_s);
    expectInformation(*m_answers, u"Relatório"_s, u"Cliente inválido."_s);
    expectSearchAndTake(*m_answers, u"aurora"_s);
    click(u"BtnExecutaSQL"_s); // the field is left first, and keeps the focus
    QVERIFY(m_answers->allCame());
    QCOMPARE(m_form->line(u"edtCliente"_s), u"00001"_s);
    QCOMPARE(m_form->line(u"edtNome"_s), u"Malhas Aurora"_s);
    QCOMPARE(focus(), u"edtCliente"_s);
    QCOMPARE(shown(), QStringList());
    click(u"BtnExecutaSQL"_s);
    QCOMPARE(shown().size(), 2);
}

void TestReportForm::aKnownOrEmptyCodeIsLeftInSilence()
{
    for (const QString &code : {u"00001"_s, QString()}) {
        type(u"edtCliente"_s, code);
        QTest::keyClick(m_form->focusWidget(), Qt::Key_Tab);
        QCOMPARE(focus(), u"BtnExecutaSQL"_s);
    }
}

void TestReportForm::closingAsksNothingOfAWrongCode()
{
    type(u"edtCliente"_s, u"99999"_s);
    click(u"BitBtn5"_s);
    QTRY_VERIFY(!m_form);
}

void TestReportForm::thePaperSaysWhatWasAskedFor()
{
    type(u"edtDe"_s, u"01/03/2026"_s);
    type(u"edtCliente"_s, u"00001"_s);
    click(u"BtnExecutaSQL"_s);
    click(u"BtnImprimir"_s);
    QCOMPARE(m_host->reports.size(), 1);
    const ReportCall &call = m_host->reports.first();
    QCOMPARE(call.name, u"WTeste"_s);
    QCOMPARE(call.form, m_form.data());
    QCOMPARE(call.dataSets.size(), 2);
    QCOMPARE(call.dataSets[0].second, m_form->orders);
    QCOMPARE(call.parameters.value(u"filtros"_s).toString(),
        u"Período: a partir de 01/03/2026 · Cliente: 00001 Malhas Aurora"_s);
    QCOMPARE(call.parameters.value(u"situacao"_s).toString(), u"Pendente"_s);
    QVERIFY(call.preview);
}

void TestReportForm::thePaperBearsTheRowsThatAreShown()
{
    // Nothing was read yet: it is read now.
    type(u"edtDe"_s, u"01/03/2026"_s);
    click(u"BtnImprimir"_s);
    QCOMPARE(shown().size(), 2);
    // What is typed afterwards was not asked for yet.
    type(u"edtDe"_s, u"06/03/2026"_s);
    click(u"BtnImprimir"_s);
    QCOMPARE(shown().size(), 2);
    QCOMPARE(m_host->reports.size(), 2);
    QCOMPARE(m_host->reports.last().parameters.value(u"filtros"_s).toString(), u"Período: a partir de 01/03/2026"_s);
}

void TestReportForm::withoutRowsNothingIsPrinted()
{
    type(u"edtDe"_s, u"06/03/2026"_s);
    expectInformation(*m_answers, u"Relatório"_s, u"Nenhum registro para imprimir."_s);
    click(u"BtnImprimir"_s);
    QCOMPARE(m_host->reports.size(), 0);
}

void TestReportForm::afterAFailureThePaperReadsAnew()
{
    click(u"BtnExecutaSQL"_s);
    m_form->searching = [] { throw EQen(u"Sem rede."_s); };
    click(u"BtnExecutaSQL"_s);
    click(u"BtnImprimir"_s);
    QCOMPARE(m_host->failures, (QStringList{u"Sem rede."_s, u"Sem rede."_s}));
    QCOMPARE(m_host->reports.size(), 0);
    m_form->searching = {};
    click(u"BtnImprimir"_s);
    QCOMPARE(m_host->reports.size(), 1);
}

void TestReportForm::allCompaniesComeSortedTogether()
{
    insertOrder(u"000001"_s, u"00001"_s, 2);
    insertOrder(u"000003"_s, u"00001"_s, 2);
    m_host->companies = {1, 2};
    click(u"BtnExecutaSQL"_s);
    QCOMPARE(shown(), (QStringList{u"000001"_s, u"000002"_s}));
    m_form->allCompanies = true;
    click(u"BtnExecutaSQL"_s);
    QCOMPARE(shown(), (QStringList{u"000001"_s, u"000001"_s, u"000002"_s, u"000003"_s}));
    m_host->companies = {1}; // all that the user may see
    click(u"BtnExecutaSQL"_s);
    QCOMPARE(shown(), (QStringList{u"000001"_s, u"000002"_s}));
}

void TestReportForm::aWorkTableIsFilledByNames()
{
    m_form->searching = [this] {
        m_form->fill(m_form->work, u"SELECT KG_TOTAL, NUM_OF, DATA FROM OF_MALHA_001 ORDER BY NUM_OF"_s);
        m_form->work->setIndexFieldNames(u"NUM_OF"_s);
    };
    click(u"BtnExecutaSQL"_s);
    click(u"BtnExecutaSQL"_s); // in place of what it held
    QCOMPARE(m_form->work->rowCount(), 2);
    QCOMPARE(m_form->work->AsString(u"NUM_OF"_s), u"000001"_s);
    QCOMPARE(m_form->work->AsFloat(u"DOBRO"_s), 200.0);
    QCOMPARE(child<TDBGrid>(u"DBGrid2"_s)->model()->rowCount(), 2);
}

void TestReportForm::aWorkTableStaysWhenItsStatementFails()
{
    m_form->fill(m_form->work, u"SELECT NUM_OF FROM OF_MALHA_001"_s);
    QVERIFY_EXCEPTION_THROWN(m_form->fill(m_form->work, u"SELECT NUM_OF FROM NO_SUCH_TABLE"_s), EDatabaseError);
    QCOMPARE(m_form->work->rowCount(), 2);
}

void TestReportForm::theInventoryTellsItsRows()
{
    m_form->inventory = true;
    m_answers->expectWindow(
        [this](QWidget *window) {
            QCOMPARE(qobject_cast<QMessageBox *>(window)->text(), u"Inventário de 10/03/2026 gerado com 2 linhas."_s);
            QCOMPARE(m_host->busy, 0); // nobody reads a box under the wait cursor
            QCOMPARE(shown().size(), 2);
            QVERIFY(!m_tabela->IBDatabase->inTransaction());
            QTest::keyClick(window, Qt::Key_Return);
        },
        u"Relatório"_s);
    click(u"BtnExecutaSQL"_s);
    QCOMPARE(m_host->inventories, (QStringList{u"FISICO:2"_s, u"QTDE:0"_s}));
    m_data->run(u"DELETE FROM {OF_MALHA} WHERE NUM_OF = '000002'"_s);
    expectInformation(*m_answers, u"Relatório"_s, u"Inventário de 10/03/2026 gerado com 1 linha."_s);
    click(u"BtnExecutaSQL"_s);
    m_form->inventory = false;
    click(u"BtnExecutaSQL"_s);
    QCOMPARE(m_host->inventories.size(), 4);
}

void TestReportForm::aHalfInventoryIsNone()
{
    m_form->inventory = true;
    m_host->failingInventory = 2;
    click(u"BtnExecutaSQL"_s);
    QCOMPARE(m_host->failures, QStringList(u"Sem rede."_s));
    QCOMPARE(m_data->value(u"SELECT COUNT(*) FROM QEN_LOG"_s).toInt(), 0);
    QCOMPARE(m_host->busy, 0);
    QVERIFY(!m_tabela->IBDatabase->inTransaction());
}

void TestReportForm::theBarIsWordedAndNamedByTheScreen()
{
    ReportBar bar;
    QCOMPARE(bar.consultText(), u"&Confirmar"_s);
    QCOMPARE(bar.buttonNames(), u"BtnExecutaSQL BtnImprimir BitBtn5"_s);
    bar.setTextoConsultar(u"&Consultar"_s);
    bar.setTextoImprimir(u"&Imprimir"_s);
    bar.setTextoFechar(u"Fechar"_s);
    bar.setBotoes(u"ComfirmaRepresen ImprimiRepresen BitBtn1"_s);
    const QList<std::pair<QString, QString>> expected{
        {u"ComfirmaRepresen"_s, u"&Consultar"_s}, {u"ImprimiRepresen"_s, u"&Imprimir"_s}, {u"BitBtn1"_s, u"Fechar"_s}};
    for (const auto &[name, text] : expected) {
        const auto *button = bar.findChild<QPushButton *>(name);
        QVERIFY2(button, qPrintable(name));
        QCOMPARE(button->text(), text);
    }
}

QTEST_MAIN(TestReportForm)
#include "tst_reportform.moc"
