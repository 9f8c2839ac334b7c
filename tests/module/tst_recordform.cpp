// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/controls/currencyedit.h"
#include "module/controls/dateedit.h"
#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/tabelas.h"
#include "module/host_services/table.h"
#include "module/messages.h"
#include "module/recordbar.h"
#include "module/recordform.h"
#include "tests/support/engines.h"
#include "tests/support/keys.h"
#include "tests/support/messageanswers.h"
#include "tests/support/recordinghost.h"
#include "tests/support/testdatabase.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

/// Orders with one dependent row each: a yarn reservation.
class TfmCadastro : public TRecordForm
{
    Q_OBJECT

public:
    QStringList steps;
    bool valid = true;
    bool deletable = true;
    std::function<void()> failing; ///< runs with the dependents
    std::function<void()> onNumbering;
    std::function<void()> onDerived;
    using TRecordForm::isEditing;
    using TRecordForm::table;

protected:
    void FormCreate() override;
    LogTexts logTexts() const override
    {
        return {u"ORDEM"_s, u"INCLUSAO NR.: "_s, u"ALTERACAO NR.: "_s, u"EXCLUSAO NR.: "_s};
    }
    QString recordNumber() const override { return table()->AsString(u"NUM_OF"_s); }
    void newRecord() override
    {
        if (onNumbering)
            onNumbering();
        table()->setValue(u"NUM_OF"_s, Funcoes::Proximo(u"OF_MALHA"_s, u"NUM_OF"_s, 6));
    }
    void startEdit() override { steps.append(u"edit"_s); }
    QWidget *firstField(bool) const override { return findChild<QWidget *>(u"DBLote"_s); }
    bool Valida_Dados() override
    {
        steps.append(u"validate"_s);
        if (!valid)
            refuse(u"Informe o Lote. Impossível Continuar."_s, firstField(true));
        return valid;
    }
    void writeDependents() override
    {
        steps.append(u"dependents"_s);
        const QString order = Funcoes::Aspas(recordNumber());
        database().run(Funcoes::DBLocal_SQL(u"DELETE FROM {BAIXA_FIO} WHERE NUMERO = "_s + order));
        database().run(Funcoes::DBLocal_SQL(
            u"INSERT INTO {BAIXA_FIO} (NUMERO, DOCTO, CODIGO, LOTE) VALUES (%1, '1', 'F', 'L')"_s.arg(order)));
        if (failing)
            failing();
    }
    bool mayDelete() override
    {
        if (!deletable)
            Messages::inform(this, u"Existem baixas."_s);
        return deletable;
    }
    void deleteDependents() override
    {
        database().run(
            Funcoes::DBLocal_SQL(u"DELETE FROM {BAIXA_FIO} WHERE NUMERO = "_s + Funcoes::Aspas(recordNumber())));
        if (failing)
            failing();
    }
    void showDerived() override
    {
        steps.append(u"derived"_s);
        if (onDerived)
            onDerived();
    }
    void search() override { steps.append(u"search"_s); }
    void print() override { steps.append(u"print"_s); }

private:
    template <class Kind> void add(const QString &name, const QString &field, QWidget *panel)
    {
        auto *control = new Kind;
        control->setObjectName(name);
        control->setProperty("DataField", field);
        panel->layout()->addWidget(control);
    }
};

void TfmCadastro::FormCreate()
{
    setWindowTitle(u"Ordens"_s);
    auto *layout = new QVBoxLayout(this);
    auto *bars = new RecordBar;
    bars->setObjectName(u"Barras"_s);
    auto *panel = new QWidget;
    panel->setObjectName(u"PainelDados"_s);
    new QVBoxLayout(panel);
    add<QLineEdit>(u"DBOrdem"_s, u"NUM_OF"_s, panel);
    add<QLineEdit>(u"DBLote"_s, u"Lote"_s, panel);
    add<TCurrencyEdit>(u"DBTotal"_s, u"KG_TOTAL"_s, panel);
    add<TDateEdit>(u"DBData"_s, u"DATA"_s, panel);
    add<QPlainTextEdit>(u"DBObs"_s, u"OBSERVACAO"_s, panel);
    layout->addWidget(bars);
    layout->addWidget(panel);
    openTable(new TTITable(this), u"OF_MALHA"_s, u"NUM_OF"_s);
}

class TestRecordForm : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }
    void init();
    void cleanup();

    void itStartsOnTheLastRecordAtRest();
    void insertingIsAsTheBarsSay();
    void whatIsTypedIsSaved();
    void aSaveGoesInItsOrder();
    void anEditReadsTheRecordAnew();
    void anEditOfAGoneRecordIsRefused();
    void anEditedRecordIsLoggedAsChanged();
    void cancelShowsTheRecordAsItWas();
    void aMissingRightDoesNothingAndSaysNothing_data();
    void aMissingRightDoesNothingAndSaysNothing();
    void aRefusedValidationStaysInTheEdit();
    void failingDependentsLeaveNothingAndStayInTheEdit_data();
    void failingDependentsLeaveNothingAndStayInTheEdit();
    void whatCannotBeReadAgainIsSavedAndAtRest();
    void aNumberTakenMeanwhileIsRefused();
    void aRecordWithoutItsNumberIsGivenUp();

    void deletingAsksFirstAndNoIsTheDefault();
    void aDeletedRecordGoesWithItsDependentsAndIsLogged();
    void aRecordWithRowsThatHoldItIsNotDeleted();
    void aDeletionThatFailsLeavesEverything();
    void aDeletionThatIsNotCommittedShowsTheRecordAgain();
    void whatIsDeletedIsLoggedEvenIfTheNextCannotBeShown();

    void keysMoveThroughTheRecords();
    void keysDoNotMoveWhileEditing();
    void searchAndPrintAreForRecordsAtRest();
    void anEmptyTableOffersOnlyInsertion();
    void escapeCancelsTheEditAndThenCloses();
    void closingAnEditAsks();
    void buttonsWithoutActionAreHidden();

private:
    void open();
    void insertOrder(const QString &number);
    void click(const QString &button);
    template <class Kind = QWidget> Kind *child(const QString &name) { return m_form->findChild<Kind *>(name); }
    void type(const QString &name, const QString &text);
    bool atRest();
    bool editing();
    QString shown(const QString &name) { return child<QLineEdit>(name)->text(); }
    QStringList orders() { return m_data->rows(u"SELECT NUM_OF, LOTE FROM {OF_MALHA} ORDER BY NUM_OF"_s); }

    std::unique_ptr<TestDatabase> m_data;
    std::unique_ptr<RecordingHost> m_host;
    std::unique_ptr<TTabela> m_tabela;
    QPointer<TfmCadastro> m_form;
};

void TestRecordForm::init()
{
    m_data = std::make_unique<TestDatabase>(Engines::current());
    m_host = std::make_unique<RecordingHost>();
    m_host->logTable = true;
    m_tabela = std::make_unique<TTabela>();
    m_tabela->IBDatabase->open(m_data->settings());
    insertOrder(u"000001"_s);
    insertOrder(u"000002"_s);
    open();
}

void TestRecordForm::cleanup()
{
    delete m_form;
    m_tabela.reset();
    m_host.reset();
    m_data.reset();
}

void TestRecordForm::open()
{
    delete m_form;
    m_form = new TfmCadastro;
    m_form->Create();
    m_form->show();
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form));
    m_form->steps.clear();
}

void TestRecordForm::insertOrder(const QString &number)
{
    m_data->run(u"INSERT INTO {OF_MALHA} (NUM_OF, LOTE, KG_TOTAL) VALUES ('%1', 'L%1', 100)"_s.arg(number));
}

void TestRecordForm::click(const QString &button)
{
    auto *found = child<QAbstractButton>(button);
    QVERIFY2(found && found->isVisible() && found->isEnabled(), qPrintable(button));
    QTest::mouseClick(found, Qt::LeftButton);
}

void TestRecordForm::type(const QString &name, const QString &text)
{
    QWidget *field = child(name);
    field->setFocus();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Delete);
    Keys::type(field, text);
}

bool TestRecordForm::atRest()
{
    return !m_form->isEditing() && !child(u"PainelDados"_s)->isEnabled() && child(u"PainelBarra"_s)->isVisible()
        && !child(u"PainelConfirma"_s)->isVisible();
}

bool TestRecordForm::editing()
{
    return m_form->isEditing() && child(u"PainelDados"_s)->isEnabled() && !child(u"PainelBarra"_s)->isVisible()
        && child(u"PainelConfirma"_s)->isVisible();
}

void TestRecordForm::itStartsOnTheLastRecordAtRest()
{
    QVERIFY(atRest());
    QCOMPARE(shown(u"DBOrdem"_s), u"000002"_s);
    QCOMPARE(shown(u"DBLote"_s), u"L000002"_s);
    QCOMPARE(child<TCurrencyEdit>(u"DBTotal"_s)->value(), 100.0);
    QCOMPARE(m_host->asked, QStringList());
    QCOMPARE(m_form->methodsWithoutControl(), QStringList());
}

void TestRecordForm::insertingIsAsTheBarsSay()
{
    click(u"btnincluir"_s);
    QVERIFY(editing());
    QCOMPARE(m_host->asked, QStringList(u"TfmCadastro A 0"_s));
    QCOMPARE(shown(u"DBOrdem"_s), u"000003"_s);
    QCOMPARE(shown(u"DBLote"_s), QString());
    QCOMPARE(m_form->focusWidget()->objectName(), u"DBLote"_s);
    m_form->btnincluirClick();
    m_form->BtnAlteraClick();
    QCOMPARE(m_host->asked.size(), 1);
    QCOMPARE(orders().size(), 2);
}

void TestRecordForm::whatIsTypedIsSaved()
{
    click(u"btnincluir"_s);
    type(u"DBLote"_s, u" L'9 "_s);
    type(u"DBTotal"_s, u"1234,567"_s);
    type(u"DBData"_s, u"31122026"_s);
    type(u"DBObs"_s, u"Atenção"_s);
    click(u"SbConfirmar"_s);
    QVERIFY(atRest());
    QCOMPARE(m_data->rows(u"SELECT LOTE, KG_TOTAL, DATA, OBSERVACAO FROM {OF_MALHA} WHERE NUM_OF = '000003'"_s),
        QStringList(u"L'9|1234.567|2026-12-31|Atenção"_s));
    click(u"BtnAltera"_s);
    type(u"DBData"_s, {});
    type(u"DBLote"_s, {});
    click(u"SbConfirmar"_s);
    QCOMPARE(m_data->count(u"OF_MALHA"_s, u"NUM_OF = '000003' AND DATA IS NULL AND LOTE IS NULL"_s), 1);
    QCOMPARE(m_host->failures, QStringList());
}

void TestRecordForm::aSaveGoesInItsOrder()
{
    click(u"btnincluir"_s);
    type(u"DBLote"_s, u"L3"_s);
    QStringList statements;
    m_tabela->IBDatabase->setObserver(
        [&](const QString &statement) { statements.append(statement.section(u' ', 0, 2)); });
    m_form->steps.clear();
    click(u"SbConfirmar"_s);
    m_tabela->IBDatabase->setObserver({});
    QCOMPARE(statements.join(u", "_s),
        u"BEGIN, INSERT INTO QEN_LOG, INSERT INTO OF_MALHA_001, DELETE FROM BAIXA_FIO_001, "
        "INSERT INTO BAIXA_FIO_001, COMMIT, SELECT * FROM"_s);
    QCOMPARE(m_form->steps, QStringList({u"validate"_s, u"dependents"_s, u"derived"_s}));
    QCOMPARE(m_host->log, QStringList(u"ORDEM|INCLUSAO NR.: 000003|0|000003"_s));
    QCOMPARE(m_host->busy, 0);
    QVERIFY(m_host->busyCalls > 0);
    QCOMPARE(m_data->count(u"BAIXA_FIO"_s), 1);
    QCOMPARE(shown(u"DBOrdem"_s), u"000003"_s);
}

void TestRecordForm::anEditReadsTheRecordAnew()
{
    m_data->run(u"UPDATE {OF_MALHA} SET LOTE = 'L9' WHERE NUM_OF = '000002'"_s);
    QCOMPARE(shown(u"DBLote"_s), u"L000002"_s);
    click(u"BtnAltera"_s);
    QVERIFY(editing());
    QCOMPARE(shown(u"DBLote"_s), u"L9"_s);
    QCOMPARE(m_host->asked, QStringList(u"TfmCadastro A 0"_s));
    QVERIFY(m_form->steps.contains(u"edit"_s));
}

void TestRecordForm::anEditOfAGoneRecordIsRefused()
{
    m_data->run(u"DELETE FROM {OF_MALHA} WHERE NUM_OF = '000002'"_s);
    click(u"BtnAltera"_s);
    QCOMPARE(m_host->failures.size(), 1);
    QVERIFY(atRest());
    QCOMPARE(shown(u"DBOrdem"_s), u"000001"_s);
}

void TestRecordForm::anEditedRecordIsLoggedAsChanged()
{
    click(u"BtnAltera"_s);
    type(u"DBLote"_s, u"L7"_s);
    click(u"SbConfirmar"_s);
    QCOMPARE(orders(), QStringList({u"000001|L000001"_s, u"000002|L7"_s}));
    QCOMPARE(m_host->log, QStringList(u"ORDEM|ALTERACAO NR.: 000002|1|000002"_s));
    QVERIFY(atRest());
}

void TestRecordForm::cancelShowsTheRecordAsItWas()
{
    click(u"BtnAltera"_s);
    type(u"DBLote"_s, u"L7"_s);
    m_form->steps.clear();
    click(u"SbDesistir"_s);
    QVERIFY(atRest());
    QCOMPARE(shown(u"DBLote"_s), u"L000002"_s);
    QCOMPARE(m_form->steps, QStringList(u"derived"_s));
    click(u"btnincluir"_s);
    click(u"SbDesistir"_s);
    QCOMPARE(shown(u"DBOrdem"_s), u"000002"_s);
    QCOMPARE(orders().size(), 2);
    QCOMPARE(m_host->log, QStringList());
}

void TestRecordForm::aMissingRightDoesNothingAndSaysNothing_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("right");
    QTest::newRow("insert") << u"btnincluir"_s << u"TfmCadastro A 0"_s;
    QTest::newRow("edit") << u"BtnAltera"_s << u"TfmCadastro A 0"_s;
    QTest::newRow("delete") << u"BtExcluir"_s << u"TfmCadastro E 0"_s;
}

void TestRecordForm::aMissingRightDoesNothingAndSaysNothing()
{
    const MessageAnswers noMessage;
    QFETCH(QString, button);
    QFETCH(QString, right);
    m_host->refused = {right};
    click(button);
    QVERIFY(atRest());
    QCOMPARE(m_host->asked, QStringList(right));
    QCOMPARE(m_host->failures, QStringList());
    QCOMPARE(m_host->log, QStringList());
    QCOMPARE(orders().size(), 2);
    QCOMPARE(shown(u"DBOrdem"_s), u"000002"_s);
}

void TestRecordForm::aRefusedValidationStaysInTheEdit()
{
    MessageAnswers answers;
    answers.expect(u"Informe o Lote. Impossível Continuar."_s, QMessageBox::Ok, u"Ordens"_s);
    click(u"btnincluir"_s);
    m_form->valid = false;
    click(u"SbConfirmar"_s);
    QVERIFY(answers.allCame());
    QVERIFY(editing());
    QCOMPARE(m_form->focusWidget()->objectName(), u"DBLote"_s);
    QCOMPARE(orders().size(), 2);
    QCOMPARE(m_host->log, QStringList());
    QCOMPARE(m_host->busy, 0);
}

void TestRecordForm::failingDependentsLeaveNothingAndStayInTheEdit_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("order");
    QTest::newRow("insert") << u"btnincluir"_s << u"000003"_s;
    QTest::newRow("edit") << u"BtnAltera"_s << u"000002"_s;
}

void TestRecordForm::failingDependentsLeaveNothingAndStayInTheEdit()
{
    QFETCH(QString, button);
    QFETCH(QString, order);
    const QStringList before = orders();
    click(button);
    type(u"DBLote"_s, u"L7"_s);
    m_form->failing = [] { throw EQen(u"Sem rede."_s); };
    click(u"SbConfirmar"_s);
    QCOMPARE(m_host->failures, QStringList(u"Sem rede."_s));
    QVERIFY(editing());
    QCOMPARE(shown(u"DBLote"_s), u"L7"_s);
    QCOMPARE(orders(), before);
    QCOMPARE(m_data->count(u"BAIXA_FIO"_s), 0);
    QCOMPARE(m_data->value(u"SELECT COUNT(*) FROM QEN_LOG"_s).toInt(), 0);
    QCOMPARE(m_host->busy, 0);
    m_form->failing = {};
    click(u"SbConfirmar"_s);
    QVERIFY(atRest());
    QVERIFY(orders().contains(order + u"|L7"_s));
    QCOMPARE(m_data->count(u"BAIXA_FIO"_s), 1);
    QCOMPARE(m_data->value(u"SELECT COUNT(*) FROM QEN_LOG"_s).toInt(), 1);
}

void TestRecordForm::whatCannotBeReadAgainIsSavedAndAtRest()
{
    click(u"btnincluir"_s);
    type(u"DBLote"_s, u"L7"_s);
    bool committed = false;
    m_tabela->IBDatabase->setObserver([&](const QString &statement) {
        if (committed)
            throw EQen(u"Sem rede."_s);
        committed = statement == u"COMMIT"_s;
    });
    click(u"SbConfirmar"_s);
    m_tabela->IBDatabase->setObserver({});
    QCOMPARE(m_host->failures, QStringList(u"Sem rede."_s));
    QVERIFY(atRest());
    QCOMPARE(orders().last(), u"000003|L7"_s);
    QCOMPARE(shown(u"DBLote"_s), u"L7"_s);
    QCOMPARE(m_host->busy, 0);
    click(u"btnincluir"_s); // it goes on
    QVERIFY(editing());
}

void TestRecordForm::aNumberTakenMeanwhileIsRefused()
{
    click(u"btnincluir"_s);
    insertOrder(u"000003"_s);
    type(u"DBLote"_s, u"L7"_s);
    click(u"SbConfirmar"_s);
    QCOMPARE(m_host->failures, QStringList(u"Já existe um registro com esta chave. Nada foi gravado."_s));
    QVERIFY(editing());
    QCOMPARE(orders().last(), u"000003|L000003"_s);
    QCOMPARE(m_data->value(u"SELECT COUNT(*) FROM QEN_LOG"_s).toInt(), 0);
}

void TestRecordForm::aRecordWithoutItsNumberIsGivenUp()
{
    m_form->onNumbering = [] { throw EQen(u"Não há mais números livres."_s); };
    click(u"btnincluir"_s);
    QCOMPARE(m_host->failures, QStringList(u"Não há mais números livres."_s));
    QVERIFY(atRest());
    QCOMPARE(shown(u"DBOrdem"_s), u"000002"_s);
    m_form->onNumbering = {};
    click(u"btnincluir"_s);
    QVERIFY(editing());
}

void TestRecordForm::deletingAsksFirstAndNoIsTheDefault()
{
    MessageAnswers answers;
    answers.expectAndType(u"Deseja eliminar este Registro?"_s, Qt::Key_Return, u"Eliminação de Registro"_s);
    answers.expectAndType(u"Deseja eliminar este Registro?"_s, Qt::Key_Escape);
    answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::No);
    for (int i = 0; i < 3; ++i)
        click(u"BtExcluir"_s);
    QVERIFY(answers.allCame());
    QCOMPARE(orders().size(), 2);
    QCOMPARE(m_host->log, QStringList());
}

void TestRecordForm::aDeletedRecordGoesWithItsDependentsAndIsLogged()
{
    m_data->run(u"INSERT INTO {BAIXA_FIO} (NUMERO, DOCTO, CODIGO, LOTE) VALUES ('000002', '1', 'F', 'L')"_s);
    MessageAnswers answers;
    answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    m_form->steps.clear();
    click(u"BtExcluir"_s);
    QCOMPARE(orders(), QStringList(u"000001|L000001"_s));
    QCOMPARE(m_data->count(u"BAIXA_FIO"_s), 0);
    QCOMPARE(m_host->log, QStringList(u"ORDEM|EXCLUSAO NR.: 000002|2|000002"_s));
    QCOMPARE(m_data->value(u"SELECT COUNT(*) FROM QEN_LOG"_s).toInt(), 1);
    QCOMPARE(shown(u"DBOrdem"_s), u"000001"_s);
    QVERIFY(m_form->steps.contains(u"derived"_s));
    QVERIFY(atRest());
}

void TestRecordForm::aRecordWithRowsThatHoldItIsNotDeleted()
{
    MessageAnswers answers;
    answers.expect(u"Existem baixas."_s, QMessageBox::Ok, u"Ordens"_s);
    m_form->deletable = false;
    click(u"BtExcluir"_s);
    QVERIFY(answers.allCame());
    QCOMPARE(orders().size(), 2);
}

void TestRecordForm::aDeletionThatFailsLeavesEverything()
{
    m_data->run(u"INSERT INTO {BAIXA_FIO} (NUMERO, DOCTO, CODIGO, LOTE) VALUES ('000002', '1', 'F', 'L')"_s);
    MessageAnswers answers;
    answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    m_form->failing = [] { throw EQen(u"Sem rede."_s); };
    click(u"BtExcluir"_s);
    QCOMPARE(m_host->failures, QStringList(u"Sem rede."_s));
    QCOMPARE(orders().size(), 2);
    QCOMPARE(m_data->count(u"BAIXA_FIO"_s), 1);
    QCOMPARE(m_host->log, QStringList());
    QCOMPARE(shown(u"DBOrdem"_s), u"000002"_s);
}

void TestRecordForm::aDeletionThatIsNotCommittedShowsTheRecordAgain()
{
    MessageAnswers answers;
    answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    m_form->failing = [this] { const Save part(*m_tabela->IBDatabase); }; // ends without its commit
    click(u"BtExcluir"_s);
    QCOMPARE(m_host->failures.size(), 1);
    QCOMPARE(orders().size(), 2);
    QCOMPARE(shown(u"DBOrdem"_s), u"000002"_s);
    QCOMPARE(m_host->log, QStringList());
    QVERIFY(atRest());
}

void TestRecordForm::whatIsDeletedIsLoggedEvenIfTheNextCannotBeShown()
{
    MessageAnswers answers;
    answers.expect(u"Deseja eliminar este Registro?"_s, QMessageBox::Yes);
    m_form->onDerived = [] { throw EQen(u"Sem rede."_s); };
    click(u"BtExcluir"_s);
    QCOMPARE(m_host->failures, QStringList(u"Sem rede."_s));
    QCOMPARE(orders(), QStringList(u"000001|L000001"_s));
    QCOMPARE(m_host->log, QStringList(u"ORDEM|EXCLUSAO NR.: 000002|2|000002"_s));
}

void TestRecordForm::keysMoveThroughTheRecords()
{
    insertOrder(u"000003"_s);
    const QList<std::tuple<Qt::Key, Qt::KeyboardModifier, QString>> moves{{Qt::Key_PageUp, Qt::NoModifier, u"000001"_s},
        {Qt::Key_PageUp, Qt::NoModifier, u"000001"_s}, {Qt::Key_PageDown, Qt::NoModifier, u"000002"_s},
        {Qt::Key_End, Qt::ControlModifier, u"000003"_s}, {Qt::Key_PageDown, Qt::NoModifier, u"000003"_s},
        {Qt::Key_Home, Qt::ControlModifier, u"000001"_s}};
    for (const auto &[key, modifier, order] : moves) {
        QTest::keyClick(m_form->focusWidget() ? m_form->focusWidget() : m_form.data(), key, modifier);
        QCOMPARE(shown(u"DBOrdem"_s), order);
    }
    for (const auto &[button, order] : {std::pair(u"sbUltimo"_s, u"000003"_s), {u"sbAnterior"_s, u"000002"_s},
             {u"sbProximo"_s, u"000003"_s}, {u"sbPrimeiro"_s, u"000001"_s}}) {
        click(button);
        QCOMPARE(shown(u"DBOrdem"_s), order);
    }
    QCOMPARE(m_host->failures, QStringList());
}

void TestRecordForm::keysDoNotMoveWhileEditing()
{
    click(u"BtnAltera"_s);
    QTest::keyClick(m_form->focusWidget(), Qt::Key_PageUp);
    QTest::keyClick(m_form->focusWidget(), Qt::Key_Home, Qt::ControlModifier);
    m_form->sbPrimeiroClick();
    QVERIFY(editing());
    QCOMPARE(shown(u"DBOrdem"_s), u"000002"_s);
    QCOMPARE(m_host->failures, QStringList());
}

void TestRecordForm::searchAndPrintAreForRecordsAtRest()
{
    click(u"SbConsulta"_s);
    click(u"BtnImprimir"_s);
    QTest::keyClick(m_form, Qt::Key_F4);
    QCOMPARE(m_form->steps, QStringList({u"search"_s, u"print"_s, u"search"_s}));
    click(u"BtnAltera"_s);
    m_form->steps.clear();
    m_form->SbConsultaClick();
    m_form->BtnImprimirClick();
    QCOMPARE(m_form->steps, QStringList());
}

void TestRecordForm::anEmptyTableOffersOnlyInsertion()
{
    m_data->run(u"DELETE FROM {OF_MALHA}"_s);
    open();
    const MessageAnswers noMessage;
    QCOMPARE(shown(u"DBOrdem"_s), QString());
    for (const QString &button : {u"BtnAltera"_s, u"BtExcluir"_s, u"BtnImprimir"_s, u"sbPrimeiro"_s, u"sbProximo"_s})
        click(button);
    QVERIFY(atRest());
    QVERIFY(!m_form->steps.contains(u"print"_s));
    click(u"btnincluir"_s);
    type(u"DBLote"_s, u"L1"_s);
    click(u"SbConfirmar"_s);
    QCOMPARE(orders(), QStringList(u"000001|L1"_s));
    QCOMPARE(m_host->failures, QStringList());
}

void TestRecordForm::escapeCancelsTheEditAndThenCloses()
{
    click(u"BtnAltera"_s);
    QTest::keyClick(m_form->focusWidget(), Qt::Key_Escape);
    QVERIFY(atRest());
    QTest::keyClick(m_form->focusWidget() ? m_form->focusWidget() : m_form.data(), Qt::Key_Escape);
    QTRY_VERIFY(!m_form);
}

void TestRecordForm::closingAnEditAsks()
{
    MessageAnswers answers;
    const QString question = u"O registro está em edição. Deseja abandonar as alterações?"_s;
    answers.expect(question, QMessageBox::No).expect(question, QMessageBox::Yes);
    click(u"BtnAltera"_s);
    m_form->close();
    QVERIFY(m_form->isVisible());
    QVERIFY(editing());
    m_form->close();
    QTRY_VERIFY(!m_form);
    QCOMPARE(orders(), QStringList({u"000001|L000001"_s, u"000002|L000002"_s}));
}

void TestRecordForm::buttonsWithoutActionAreHidden()
{
    auto *bars = child<RecordBar>(u"Barras"_s);
    bars->setProperty("semBotoes", u"BtnImprimir SbConsulta"_s);
    QVERIFY(!child(u"BtnImprimir"_s)->isVisible());
    QVERIFY(!child(u"SbConsulta"_s)->isVisible());
    QVERIFY(child(u"btnincluir"_s)->isVisible());
}

QTEST_MAIN(TestRecordForm)
#include "tst_recordform.moc"
