// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/form.h"
#include "module/host_services/database.h"
#include "module/host_services/errors.h"
#include "module/host_services/pesquisa.h"
#include "module/host_services/tabelas.h"
#include "module/host_services/table.h"
#include "module/messages.h"
#include "tests/support/engines.h"
#include "tests/support/keys.h"
#include "tests/support/messageanswers.h"
#include "tests/support/recordinghost.h"
#include "tests/support/testdatabase.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

/// A screen with a client's code, its search and its name, and a button that saves.
class TfmDados : public TForm
{
    Q_OBJECT

public:
    std::function<void()> saving;
    QLineEdit *code = nullptr;
    QLineEdit *name = nullptr;
    TPesquisa *search = nullptr;
    TTITable *orders = nullptr;
    QStringList calls;
    using TForm::isKnown;

    Q_INVOKABLE void BtGravarClick() { saving(); }
    Q_INVOKABLE void tbOrdensLOTEChange() { calls.append(orders->AsString(u"LOTE"_s)); }
    Q_INVOKABLE void tbOrdensAfterScroll() { calls.append(orders->AsString(u"NUM_OF"_s)); }

protected:
    void FormCreate() override
    {
        setWindowTitle(u"Dados"_s);
        AbreTabelas({u"tbEntidade"_s, u"tbMaquina"_s});
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(code = new QLineEdit);
        layout->addWidget(search = new TPesquisa);
        layout->addWidget(name = new QLineEdit);
        auto *save = new QPushButton(u"&Gravar"_s);
        save->setObjectName(u"BtGravar"_s);
        layout->addWidget(save);
        code->setObjectName(u"edtCliente"_s);
        name->setObjectName(u"edtNome"_s);
        search->setObjectName(u"PqCliente"_s);
        search->setTabela(u"ENTIDADE"_s);
        search->setColunas(u"CODCLI=Código;NOME=Nome"_s);
        search->setCampo(u"edtCliente"_s);
        search->setDescricao(u"edtNome"_s);
        orders = new TTITable(this);
        orders->setObjectName(u"tbOrdens"_s);
        orders->setTableName(u"OF_MALHA_001"_s);
        orders->setIndexFieldNames(u"NUM_OF"_s);
        orders->Open();
    }
};

class TestFormData : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Engines::addEngineRows(); }
    void init();
    void cleanup();

    void whatAHandlerLetsEscapeLeavesNothing();
    void theProgramGoesOnAfterAFailure();
    void sharedTablesCloseWithTheScreen();
    void severalScreensShareATable();
    void aCodeIsDescribed();
    void aChosenCodeIsTakenOver();
    void aCancelledSearchTakesNothingOver();
    void aCodeIsKnownOrNot();
    void tablesMeetTheirMethods();

private:
    void clickSave() { QTest::mouseClick(m_form->findChild<QPushButton *>(u"BtGravar"_s), Qt::LeftButton); }

    std::unique_ptr<TestDatabase> m_data;
    std::unique_ptr<RecordingHost> m_host;
    std::unique_ptr<TTabela> m_tabela;
    QPointer<TfmDados> m_form;
};

void TestFormData::init()
{
    m_data = std::make_unique<TestDatabase>(Engines::current());
    m_data->addCommonData();
    m_host = std::make_unique<RecordingHost>();
    m_tabela = std::make_unique<TTabela>();
    m_tabela->IBDatabase->open(m_data->settings());
    m_form = new TfmDados;
    m_form->Create();
    m_form->show();
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form));
}

void TestFormData::cleanup()
{
    delete m_form;
    m_tabela.reset();
    m_host.reset();
    m_data.reset();
}

void TestFormData::whatAHandlerLetsEscapeLeavesNothing()
{
    m_form->saving = [this] {
        Save save(*m_tabela->IBDatabase);
        m_tabela->IBDatabase->run(u"INSERT INTO OF_MALHA_001 (NUM_OF) VALUES ('000001')"_s);
        m_tabela->IBDatabase->run(u"INSERT INTO OF_MALHA_001 (NUM_OF) VALUES ('000001')"_s);
        save.CommitRetaining();
    };
    clickSave();
    QCOMPARE(m_host->failures, QStringList(u"Já existe um registro com esta chave. Nada foi gravado."_s));
    QCOMPARE(m_data->count(u"OF_MALHA"_s), 0);
    QVERIFY(!m_tabela->IBDatabase->inSave());
    QVERIFY(!m_tabela->IBDatabase->inTransaction());
}

void TestFormData::theProgramGoesOnAfterAFailure()
{
    m_form->saving = [] { throw EQen(u"Falhou."_s); };
    clickSave();
    m_form->saving = [this] {
        Save save(*m_tabela->IBDatabase);
        m_tabela->IBDatabase->run(u"INSERT INTO OF_MALHA_001 (NUM_OF) VALUES ('000001')"_s);
        save.CommitRetaining();
    };
    clickSave();
    QCOMPARE(m_host->failures, QStringList(u"Falhou."_s));
    QCOMPARE(m_data->count(u"OF_MALHA"_s), 1);
}

void TestFormData::sharedTablesCloseWithTheScreen()
{
    QVERIFY(m_tabela->tabela(u"tbEntidade"_s));
    QVERIFY(m_tabela->tabela(u"tbMaquina"_s));
    m_form->close();
    QTRY_VERIFY(!m_form);
    QVERIFY(!m_tabela->tabela(u"tbEntidade"_s));
    QVERIFY(!m_tabela->tabela(u"tbMaquina"_s));
}

void TestFormData::severalScreensShareATable()
{
    auto *other = new TfmDados;
    other->Create();
    m_form->close();
    QTRY_VERIFY(!m_form);
    QVERIFY(m_tabela->tabela(u"tbEntidade"_s));
    delete other;
    QVERIFY(!m_tabela->tabela(u"tbEntidade"_s));
}

void TestFormData::aCodeIsDescribed()
{
    m_form->code->setFocus();
    Keys::type(m_form->code, u"00003"_s);
    QCOMPARE(m_form->name->text(), u"Têxtil D'Ávila, Filhos & Cia"_s);
    QCOMPARE(m_form->name->cursorPosition(), 0);
    Keys::type(m_form->code, u"9"_s);
    QCOMPARE(m_form->name->text(), QString());
    m_form->code->setText(u" 00001 "_s);
    QCOMPARE(m_form->name->text(), u"Confecções Serra Azul Ltda"_s);
    m_form->code->clear();
    QCOMPARE(m_form->name->text(), QString());
    QCOMPARE(m_host->failures, QStringList());
}

void TestFormData::aChosenCodeIsTakenOver()
{
    MessageAnswers answers;
    answers.expectWindow([](QWidget *window) {
        QTest::keyClick(window->focusWidget(), Qt::Key_Down);
        QTest::keyClick(window->focusWidget(), Qt::Key_Return);
    });
    m_form->search->AbrePesquisa();
    QCOMPARE(m_form->code->text(), u"00002"_s);
    QCOMPARE(m_form->name->text(), u"Malhas São Bento S.A."_s);
    QCOMPARE(m_form->focusWidget(), m_form->code);
}

void TestFormData::aCancelledSearchTakesNothingOver()
{
    m_form->code->setText(u"00001"_s);
    MessageAnswers answers;
    answers.expectWindow([](QWidget *window) { QTest::keyClick(window->focusWidget(), Qt::Key_Escape); });
    m_form->search->AbrePesquisa();
    QCOMPARE(m_form->code->text(), u"00001"_s);
}

void TestFormData::aCodeIsKnownOrNot()
{
    for (const auto &[code, known] : {std::pair(u"00001"_s, true), {u" 00001"_s, true}, {QString(), true},
             {u"1"_s, false}, {u"' OR 1=1 --"_s, false}}) {
        m_form->code->setText(code);
        QCOMPARE(m_form->isKnown(m_form->search), known);
    }
}

void TestFormData::tablesMeetTheirMethods()
{
    m_data->run(u"INSERT INTO {OF_MALHA} (NUM_OF) VALUES ('000001')"_s);
    m_form->orders->First();
    m_form->orders->Edit();
    m_form->orders->setValue(u"lote"_s, u"L1"_s);
    QCOMPARE(m_form->calls, QStringList({u"000001"_s, u"L1"_s}));
}

QTEST_MAIN(TestFormData)
#include "tst_formdata.moc"
