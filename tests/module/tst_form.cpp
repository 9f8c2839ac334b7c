// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/controls/currencyedit.h"
#include "module/controls/dbgrid.h"
#include "module/form.h"
#include "module/host_services/clientdataset.h"
#include "module/host_services/errors.h"
#include "tests/support/keys.h"
#include "tests/support/messageanswers.h"
#include "tests/support/recordinghost.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>

using namespace Qt::StringLiterals;

/// A screen with one control of each kind, in this tab order; it notes what is called.
class TfmTeste : public TForm
{
    Q_OBJECT

public:
    QStringList calls;
    std::function<void()> onExit; ///< of the code
    bool closes = true;
    QLineEdit *code = nullptr;
    QLineEdit *name = nullptr;
    TCurrencyEdit *weight = nullptr;
    QPlainTextEdit *remark = nullptr;
    QPushButton *save = nullptr;
    TClientDataSet *items = nullptr;

    using TForm::refuse;
    using TForm::setEnterAsTab;

    Q_INVOKABLE void edtCodigoEnter() { calls.append(u"code entered"_s); }
    Q_INVOKABLE void edtCodigoExit()
    {
        calls.append(u"code left "_s + code->text());
        if (const std::function<void()> action = onExit)
            action();
    }
    Q_INVOKABLE void EDTCODIGOChange() { calls.append(u"code "_s + code->text()); }
    Q_INVOKABLE void edtNomeEnter() { calls.append(u"name entered"_s); }
    Q_INVOKABLE void edtNomeExit() { calls.append(u"name left"_s); }
    Q_INVOKABLE void edtNomeKeyDown(QKeyEvent *event)
    {
        if (event->key() == Qt::Key_F2) {
            calls.append(u"F2"_s);
            event->accept();
        }
    }
    Q_INVOKABLE void edtPesoExit() { calls.append(u"weight left "_s + weight->text()); }
    Q_INVOKABLE void edtPesoChange() { calls.append(u"weight %1"_s.arg(weight->value())); }
    Q_INVOKABLE void cbTipoChange() { calls.append(u"kind"_s); }
    Q_INVOKABLE void mmObsChange() { calls.append(u"remark"_s); }
    Q_INVOKABLE void btgravarClick() { calls.append(u"saved"_s); }
    Q_INVOKABLE void BtFecharClick() { close(); }
    Q_INVOKABLE void tbItensAfterScroll() { calls.append(u"item %1"_s.arg(items->row())); }
    Q_INVOKABLE void tbItensBeforePost() { calls.append(u"before post"_s); }
    Q_INVOKABLE void tbItensAfterPost() { calls.append(u"after post"_s); }
    Q_INVOKABLE void tbItensQTDEChange() { calls.append(u"item's weight"_s); }
    Q_INVOKABLE void gdItensDblClick() { calls.append(u"item chosen"_s); }
    Q_INVOKABLE void gdItensTitleClick() { calls.append(u"title"_s); }
    Q_INVOKABLE void BtNadaClick() { }
    Q_INVOKABLE void edtNadaExit() { }
    Q_INVOKABLE void Calcula() { }

    QString takeCalls() { return std::exchange(calls, {}).join(u", "_s); }

protected:
    void FormCreate() override;
    void FormShow() override { calls.append(u"shown"_s); }
    void FormClose() override { calls.append(u"closed"_s); }
    bool mayClose() override { return closes; }

private:
    template <class Kind> Kind *add(const QString &objectName)
    {
        auto *widget = new Kind;
        widget->setObjectName(objectName);
        layout()->addWidget(widget);
        return widget;
    }
};

void TfmTeste::FormCreate()
{
    setWindowTitle(u"Tela de Teste"_s);
    new QVBoxLayout(this);
    code = add<QLineEdit>(u"edtCodigo"_s);
    name = add<QLineEdit>(u"edtNome"_s);
    weight = add<TCurrencyEdit>(u"edtPeso"_s);
    weight->setDisplayFormat(u",0.000"_s);
    add<QComboBox>(u"cbTipo"_s)->addItems({u"A"_s, u"B"_s});
    remark = add<QPlainTextEdit>(u"mmObs"_s);
    save = add<QPushButton>(u"BtGravar"_s);
    save->setText(u"&Gravar"_s);
    auto *closing = add<QPushButton>(u"BtFechar"_s);
    closing->setText(u"&Fechar"_s);
    closing->setFocusPolicy(Qt::NoFocus);
    closing->setProperty("escape", true);
    items = new TClientDataSet(this);
    items->setObjectName(u"tbItens"_s);
    items->CreateDataSet({{u"LOTE"_s, TField::Type::Text}, {u"QTDE"_s, TField::Type::Float}});
    add<TDBGrid>(u"gdItens"_s)->setDataSet(items);
}

class TestForm : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void methodsMeetTheirControlsByName();
    void dataSetsMeetTheirMethods();
    void methodsWithoutControlAreNamed();
    void leavingAFieldRunsItsExitOnceBeforeTheNextIsEntered();
    void anExitSeesTheValueAsItWasLeft();
    void anExitThatRefusesKeepsTheFocus_data();
    void anExitThatRefusesKeepsTheFocus();
    void aRefusedFieldCanBeCorrectedAndLeft();
    void aButtonByItsMnemonicRunsTheExitFirst();
    void aButtonIsNotPressedWhenTheExitRefuses_data();
    void aButtonIsNotPressedWhenTheExitRefuses();
    void aButtonWithoutFocusNeverRunsAnExit();
    void escapePressesTheButtonThatLeaves();
    void anotherWindowInFrontIsNoLeaving();
    void aDisabledFieldIsNotLeft();

    void enterMovesOnWhereTheScreenWantsIt();
    void enterStaysElsewhere();
    void enterPressesAButton();
    void aKeyIsOfferedToItsMethodFirst();

    void whatAHandlerLetsEscapeIsReportedOnce();
    void anAbortIsSilent();

    void closingFreesTheScreen();
    void aScreenMayRefuseToClose();
    void aModalScreenReturnsWhenItIsClosed();
    void aScreenClosedByItsOwnExitIsGone();

private:
    QString focus() const { return m_form->focusWidget() ? m_form->focusWidget()->objectName() : QString(); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(m_form->focusWidget(), key, modifiers);
    }
    void refuseOnce(const QString &text);

    std::unique_ptr<RecordingHost> m_host;
    QPointer<TfmTeste> m_form;
};

void TestForm::init()
{
    m_host = std::make_unique<RecordingHost>();
    m_form = new TfmTeste;
    m_form->Create();
    m_form->show();
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form));
    m_form->code->setFocus();
    m_form->takeCalls();
}

void TestForm::cleanup()
{
    delete m_form;
    m_host.reset();
}

void TestForm::methodsMeetTheirControlsByName()
{
    Keys::type(m_form->code, u"7"_s);
    QCOMPARE(m_form->takeCalls(), u"code 7"_s);
    m_form->weight->setValue(2.5);
    m_form->findChild<QComboBox *>()->setCurrentIndex(1);
    m_form->remark->setPlainText(u"x"_s);
    QCOMPARE(m_form->takeCalls(), u"weight 2.5, kind, remark"_s);
    m_form->name->setFocus();
    m_form->takeCalls();
    QTest::mouseClick(m_form->save, Qt::LeftButton);
    QCOMPARE(m_form->takeCalls(), u"name left, saved"_s);
}

void TestForm::dataSetsMeetTheirMethods()
{
    m_form->items->Append();
    m_form->items->setValue(u"LOTE"_s, u"L1"_s);
    m_form->items->setValue(u"QTDE"_s, 1.0);
    m_form->items->Post();
    QCOMPARE(m_form->takeCalls(), u"item's weight, before post, after post, item 0"_s);
    auto *grid = m_form->findChild<TDBGrid *>();
    emit grid->rowChosen();
    emit grid->titleClicked();
    QCOMPARE(m_form->takeCalls(), u"item chosen, title"_s);
}

void TestForm::methodsWithoutControlAreNamed()
{
    QCOMPARE(m_form->methodsWithoutControl(), QStringList({u"BtNadaClick"_s, u"edtNadaExit"_s}));
}

void TestForm::leavingAFieldRunsItsExitOnceBeforeTheNextIsEntered()
{
    press(Qt::Key_Tab);
    QCOMPARE(m_form->takeCalls(), u"code left , name entered"_s);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(m_form->takeCalls(), u"name left, code entered"_s);
    QTest::mouseClick(m_form->name, Qt::LeftButton);
    QCOMPARE(m_form->takeCalls(), u"code left , name entered"_s);
}

void TestForm::anExitSeesTheValueAsItWasLeft()
{
    m_form->weight->setFocus();
    m_form->takeCalls();
    Keys::type(m_form->weight, u"1234,5"_s);
    m_form->takeCalls();
    press(Qt::Key_Tab);
    QCOMPARE(m_form->takeCalls(), u"weight left 1.234,500"_s);
}

void TestForm::refuseOnce(const QString &text)
{
    m_form->onExit = [this, text] {
        m_form->onExit = {};
        m_form->refuse(text, m_form->code);
    };
}

void TestForm::anExitThatRefusesKeepsTheFocus_data()
{
    QTest::addColumn<bool>("byMouse");
    QTest::newRow("Tab") << false;
    QTest::newRow("mouse") << true;
}

void TestForm::anExitThatRefusesKeepsTheFocus()
{
    QFETCH(bool, byMouse);
    MessageAnswers answers;
    answers.expect(u"Código não cadastrado. Impossível Continuar."_s, QMessageBox::Ok, u"Tela de Teste"_s);
    m_form->onExit = [this] { m_form->refuse(u"Código não cadastrado. Impossível Continuar."_s, m_form->code); };
    byMouse ? QTest::mouseClick(m_form->name, Qt::LeftButton) : press(Qt::Key_Tab);
    QVERIFY(answers.allCame());
    QCOMPARE(answers.shown().size(), 1);
    QCOMPARE(focus(), u"edtCodigo"_s);
    QCOMPARE(m_form->calls.filter(u"code left"_s).size(), 1);
}

void TestForm::aRefusedFieldCanBeCorrectedAndLeft()
{
    MessageAnswers answers;
    answers.expect(u"Não."_s);
    refuseOnce(u"Não."_s);
    press(Qt::Key_Tab);
    QCOMPARE(focus(), u"edtCodigo"_s);
    m_form->activateWindow();
    QTRY_VERIFY(m_form->code->hasFocus());
    m_form->takeCalls();
    Keys::type(m_form->code, u"1"_s);
    press(Qt::Key_Tab);
    QCOMPARE(m_form->takeCalls(), u"code 1, code left 1, name entered"_s);
}

void TestForm::aButtonByItsMnemonicRunsTheExitFirst()
{
    QTest::keyClick(m_form->code, Qt::Key_G, Qt::AltModifier);
    QTRY_COMPARE(m_form->calls, QStringList({u"code left "_s, u"saved"_s}));
    QCOMPARE(focus(), u"BtGravar"_s);
}

void TestForm::aButtonIsNotPressedWhenTheExitRefuses_data()
{
    QTest::addColumn<bool>("byMouse");
    QTest::newRow("mnemonic") << false;
    QTest::newRow("mouse") << true;
}

void TestForm::aButtonIsNotPressedWhenTheExitRefuses()
{
    QFETCH(bool, byMouse);
    MessageAnswers answers;
    answers.expect(u"Não."_s);
    refuseOnce(u"Não."_s);
    if (byMouse)
        QTest::mouseClick(m_form->save, Qt::LeftButton);
    else
        QTest::keyClick(m_form->code, Qt::Key_G, Qt::AltModifier);
    QTRY_VERIFY(answers.allCame());
    QCOMPARE(focus(), u"edtCodigo"_s);
    QCOMPARE(m_form->calls.filter(u"saved"_s), QStringList());
}

void TestForm::aButtonWithoutFocusNeverRunsAnExit()
{
    m_form->closes = false;
    m_form->onExit = [] { QFAIL("The exit ran"); };
    QTest::mouseClick(m_form->findChild<QPushButton *>(u"BtFechar"_s), Qt::LeftButton);
    QTest::keyClick(m_form->code, Qt::Key_F, Qt::AltModifier);
    QCOMPARE(m_form->takeCalls(), QString());
    QCOMPARE(focus(), u"edtCodigo"_s);
    m_form->closes = true;
    QTest::mouseClick(m_form->findChild<QPushButton *>(u"BtFechar"_s), Qt::LeftButton);
    QCOMPARE(m_form->takeCalls(), u"closed"_s);
    QTRY_VERIFY(!m_form);
}

void TestForm::escapePressesTheButtonThatLeaves()
{
    m_form->onExit = [] { QFAIL("The exit ran"); };
    press(Qt::Key_Escape);
    QCOMPARE(m_form->takeCalls(), u"closed"_s);
    QTRY_VERIFY(!m_form);
}

void TestForm::anotherWindowInFrontIsNoLeaving()
{
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form));
    QVERIFY(m_form->code->hasFocus());
    QCOMPARE(m_form->takeCalls(), QString());
}

void TestForm::aDisabledFieldIsNotLeft()
{
    m_form->code->setEnabled(false);
    QCOMPARE(m_form->calls.filter(u"code left"_s), QStringList());
    m_form->name->setFocus();
    m_form->takeCalls();
    m_form->name->hide();
    QCOMPARE(m_form->calls.filter(u"name left"_s), QStringList());
}

void TestForm::enterMovesOnWhereTheScreenWantsIt()
{
    m_form->setEnterAsTab(true);
    QStringList visited;
    for (int i = 0; i < 5; ++i) {
        press(i % 2 ? Qt::Key_Enter : Qt::Key_Return, i % 2 ? Qt::KeypadModifier : Qt::NoModifier);
        visited.append(focus());
    }
    QCOMPARE(visited, QStringList({u"edtNome"_s, u"edtPeso"_s, u"cbTipo"_s, u"mmObs"_s, u"BtGravar"_s}));
    QCOMPARE(m_form->remark->toPlainText(), QString());
    QVERIFY(m_form->takeCalls().startsWith(u"code left , name entered, name left"_s));
    m_form->remark->setFocus();
    press(Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(focus(), u"mmObs"_s);
}

void TestForm::enterStaysElsewhere()
{
    press(Qt::Key_Return);
    QCOMPARE(focus(), u"edtCodigo"_s);
    m_form->remark->setFocus();
    press(Qt::Key_Return);
    QCOMPARE(m_form->remark->toPlainText(), u"\n"_s);
}

void TestForm::enterPressesAButton()
{
    m_form->setEnterAsTab(true);
    m_form->save->setFocus();
    m_form->takeCalls();
    press(Qt::Key_Return);
    QCOMPARE(m_form->takeCalls(), u"saved"_s);
}

void TestForm::aKeyIsOfferedToItsMethodFirst()
{
    m_form->name->setFocus();
    m_form->takeCalls();
    press(Qt::Key_F2);
    press(Qt::Key_A);
    QCOMPARE(m_form->takeCalls(), u"F2"_s);
    QCOMPARE(m_form->name->text(), u"a"_s);
}

void TestForm::whatAHandlerLetsEscapeIsReportedOnce()
{
    m_form->onExit = [] { throw EQen(u"Falhou."_s); };
    press(Qt::Key_Tab);
    QCOMPARE(m_host->failures, QStringList(u"Falhou."_s));
    QCOMPARE(focus(), u"edtNome"_s);
    m_form->onExit = {};
    m_form->code->setFocus();
    m_form->takeCalls();
    press(Qt::Key_Tab);
    QCOMPARE(m_form->takeCalls(), u"code left , name entered"_s);
    QCOMPARE(m_host->failures.size(), 1);
}

void TestForm::anAbortIsSilent()
{
    m_form->onExit = [] { throw EAbort(); };
    press(Qt::Key_Tab);
    QCOMPARE(m_host->failures, QStringList());
    QCOMPARE(focus(), u"edtNome"_s);
}

void TestForm::closingFreesTheScreen()
{
    const QPointer<TClientDataSet> items = m_form->items;
    m_form->close();
    m_form->close();
    QCOMPARE(m_form->takeCalls(), u"closed"_s);
    QTRY_VERIFY(!m_form);
    QVERIFY(!items);
}

void TestForm::aScreenMayRefuseToClose()
{
    m_form->closes = false;
    QVERIFY(!m_form->close());
    QVERIFY(m_form->isVisible());
    QCOMPARE(m_form->takeCalls(), QString());
}

void TestForm::aModalScreenReturnsWhenItIsClosed()
{
    auto *modal = new TfmTeste;
    modal->Create();
    const QPointer<TfmTeste> alive(modal);
    MessageAnswers answers;
    answers.expectWindow([this](QWidget *window) {
        QVERIFY(window->isModal());
        QCOMPARE(window->windowHandle()->transientParent(), m_form->windowHandle()); // it stands in front of its opener
        QTest::keyClick(window->focusWidget() ? window->focusWidget() : window, Qt::Key_Escape);
    });
    modal->ShowModal();
    QVERIFY(!alive);
    QVERIFY(answers.allCame());
}

void TestForm::aScreenClosedByItsOwnExitIsGone()
{
    m_form->onExit = [this] { m_form->close(); };
    press(Qt::Key_Tab);
    QTRY_VERIFY(!m_form);
}

QTEST_MAIN(TestForm)
#include "tst_form.moc"
