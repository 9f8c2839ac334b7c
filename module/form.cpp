// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "module/form.h"

#include "module/controls/currencyedit.h"
#include "module/controls/dateedit.h"
#include "module/controls/dbgrid.h"
#include "module/host_services/classregistry.h"
#include "module/host_services/clientdataset.h"
#include "module/host_services/database.h"
#include "module/host_services/funcoes.h"
#include "module/host_services/pesquisa.h"
#include "module/host_services/tabelas.h"
#include "module/host_services/table.h"
#include "module/messages.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QEventLoop>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

const QStringList &eventNames()
{
    static const QStringList names{u"DblClick"_s, u"TitleClick"_s, u"Click"_s, u"Exit"_s, u"Enter"_s, u"KeyDown"_s,
        u"AfterScroll"_s, u"BeforePost"_s, u"AfterPost"_s, u"FechaPesquisa"_s, u"Change"_s};
    return names;
}

/// Ctrl+1 to Ctrl+9, by which a list is sorted; elsewhere the main window opens screens by them.
bool sortsList(const QObject *watched, const QKeyEvent &key)
{
    return qobject_cast<const TDBGrid *>(watched) && (key.modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier
        && key.key() >= Qt::Key_1 && key.key() <= Qt::Key_9;
}

/// The event a method is named after, empty for a method of another kind.
QString eventOf(const QString &method)
{
    for (const QString &event : eventNames()) {
        if (method.size() > event.size() && method.endsWith(event))
            return event;
    }
    return {};
}

} // namespace

TForm::TForm()
{
    setAttribute(Qt::WA_DeleteOnClose);
}

TForm::~TForm()
{
    // A cell that is still open is stored while the controls go, and would call the methods of a screen that is gone.
    for (const QObject *part : findChildren<QObject *>())
        part->disconnect(this);
    for (const QString &name : m_openTables)
        Tabela->FechaTabela(name);
}

QString TForm::className() const
{
    return QString::fromLatin1(metaObject()->className());
}

TTIDatabase &TForm::database() const
{
    return *Tabela->IBDatabase;
}

void TForm::Create()
{
    if (const ScreenClass *registered = ClassRegistry::find(className()))
        setWindowTitle(registered->caption);
    FormCreate();
    tie();
    tieSearches();
}

void TForm::AbreTabelas(const QStringList &names)
{
    for (const QString &name : names) {
        Tabela->AbreTabela(name, false);
        m_openTables.append(name);
    }
}

void TForm::ShowModal()
{
    const QWidget *opener = QApplication::activeWindow();
    setWindowFlags(Qt::Dialog);
    setWindowModality(Qt::ApplicationModal);
    winId(); // it has a window now, which is to stand in front of the opener's
    if (opener)
        windowHandle()->setTransientParent(opener->windowHandle());
    QEventLoop loop;
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    show();
    loop.exec();
}

void TForm::run(const std::function<void()> &action)
{
    try {
        action();
    } catch (const EAbort &) {
        return;
    } catch (...) {
        Host::current().showException(this, std::current_exception());
    }
}

void TForm::showText(QLineEdit *field, const QString &text)
{
    if (field->text() != text) // laying a text out anew takes longer than reading it
        field->setText(text);
    field->setCursorPosition(0);
}

QLineEdit *TForm::codeField(const TPesquisa *search) const
{
    return findChild<QLineEdit *>(search->fieldName());
}

void TForm::describe(const TPesquisa *search)
{
    const QString code = codeField(search)->text().trimmed();
    showText(findChild<QLineEdit *>(search->textName()),
        code.isEmpty()
            ? QString()
            : Funcoes::Busca_Valor(search->table(), search->keyColumn(), search->textColumn(), Funcoes::Aspas(code)));
}

void TForm::takeChosen(const TPesquisa *search)
{
    const QString chosen = search->RetornoPesquisa(search->keyColumn());
    if (chosen.isEmpty())
        return;
    codeField(search)->setText(chosen);
    codeField(search)->setFocus();
}

bool TForm::isKnown(const TPesquisa *search) const
{
    const QString code = codeField(search)->text().trimmed();
    return code.isEmpty() || Funcoes::Existe(search->table(), search->keyColumn(), Funcoes::Aspas(code));
}

void TForm::refuse(const QString &message, QWidget *atFault)
{
    Messages::inform(this, message);
    if (atFault)
        atFault->setFocus();
}

QObject *TForm::component(const QString &name) const
{
    for (QObject *child : findChildren<QObject *>()) {
        if (child->objectName().compare(name, Qt::CaseInsensitive) == 0)
            return child;
    }
    return nullptr;
}

void TForm::tie()
{
    for (QWidget *child : findChildren<QWidget *>())
        child->installEventFilter(this);
    for (QTabBar *tabs : findChildren<QTabBar *>())
        tabs->setFocusPolicy(Qt::StrongFocus); // so that a click on a tab leaves the field before it
    for (int i = TForm::staticMetaObject.methodCount(); i < metaObject()->methodCount(); ++i) {
        const QMetaMethod method = metaObject()->method(i);
        const QString name = QString::fromLatin1(method.name());
        const QString event = eventOf(name);
        if (event.isEmpty() || method.methodType() == QMetaMethod::Signal)
            continue;
        const QString controlName = name.chopped(event.size());
        if (QObject *found = component(controlName)) {
            tieMethod(found, event, method);
            continue;
        }
        // `<data set><field>Change`
        QObject *owner = nullptr;
        for (TDataSet *dataSet : findChildren<TDataSet *>()) {
            if (!dataSet->objectName().isEmpty() && event == u"Change"_s
                && controlName.startsWith(dataSet->objectName(), Qt::CaseInsensitive))
                owner = dataSet;
        }
        if (owner)
            tieFieldChanges(owner, controlName.mid(owner->objectName().size()), method);
        else if (i >= metaObject()->methodOffset()) // a screen may lack what its base class offers
            m_methodsWithoutControl.append(name);
    }
}

void TForm::tieSearches()
{
    const auto hasMethod = [this](const QString &name) {
        for (int i = TForm::staticMetaObject.methodCount(); i < metaObject()->methodCount(); ++i) {
            if (name.compare(QString::fromLatin1(metaObject()->method(i).name()), Qt::CaseInsensitive) == 0)
                return true;
        }
        return false;
    };
    for (TPesquisa *search : findChildren<TPesquisa *>()) {
        QLineEdit *code = codeField(search);
        if (!code)
            continue;
        if (!hasMethod(search->objectName() + u"FechaPesquisa"_s))
            connect(search, &TPesquisa::FechaPesquisa, this, [=, this] { run([&] { takeChosen(search); }); });
        if (!search->textName().isEmpty() && !hasMethod(search->fieldName() + u"Change"_s))
            connect(code, &QLineEdit::textChanged, this, [=, this] { run([&] { describe(search); }); });
        if (!search->textName().isEmpty() && !code->text().isEmpty())
            describe(search); // of the record that the screen opened on
    }
}

void TForm::tieFieldChanges(QObject *dataSet, const QString &field, const QMetaMethod &method)
{
    const auto changed = [this, field, method](const QString &name) {
        if (name.compare(field, Qt::CaseInsensitive) == 0)
            call(method);
    };
    if (auto *inMemory = qobject_cast<TClientDataSet *>(dataSet))
        connect(inMemory, &TClientDataSet::fieldChanged, this, changed);
    else if (auto *table = qobject_cast<TTITable *>(dataSet))
        connect(table, &TTITable::fieldChanged, this, changed);
}

void TForm::tieMethod(QObject *component, const QString &event, const QMetaMethod &method)
{
    const auto callIt = [this, method] { call(method); };
    if (auto *widget = qobject_cast<QWidget *>(component)) {
        tieWidget(widget, event, method);
    } else if (auto *action = qobject_cast<QAction *>(component)) {
        connect(action, &QAction::triggered, this, callIt);
    } else if (auto *dataSet = qobject_cast<TDataSet *>(component); dataSet && event == u"AfterScroll"_s) {
        connect(dataSet, &TDataSet::AfterScroll, this, callIt);
    } else if (auto *inMemory = qobject_cast<TClientDataSet *>(component)) {
        if (event == u"BeforePost"_s)
            connect(inMemory, &TClientDataSet::BeforePost, this, callIt);
        else if (event == u"AfterPost"_s)
            connect(inMemory, &TClientDataSet::AfterPost, this, callIt);
    } else {
        m_methodsWithoutControl.append(QString::fromLatin1(method.name()));
    }
}

void TForm::tieWidget(QWidget *widget, const QString &event, const QMetaMethod &method)
{
    const auto callIt = [this, method] { call(method); };
    if (event == u"Enter"_s) {
        m_fieldEvents[widget].enter = method;
    } else if (event == u"Exit"_s) {
        m_fieldEvents[widget].exit = method;
    } else if (event == u"KeyDown"_s) {
        m_fieldEvents[widget].keyDown = method;
    } else if (auto *search = qobject_cast<TPesquisa *>(widget); search && event == u"FechaPesquisa"_s) {
        connect(search, &TPesquisa::FechaPesquisa, this, callIt);
    } else if (auto *button = qobject_cast<QAbstractButton *>(widget); button && event == u"Click"_s) {
        connect(button, &QAbstractButton::clicked, this, [this, button, method] { clicked(button, method); });
    } else if (auto *grid = qobject_cast<TDBGrid *>(widget); grid && event == u"DblClick"_s) {
        connect(grid, &TDBGrid::rowChosen, this, callIt);
    } else if (grid && event == u"TitleClick"_s) {
        connect(grid, &TDBGrid::titleClicked, this, callIt);
    } else if (event != u"Change"_s) {
        m_methodsWithoutControl.append(QString::fromLatin1(method.name()));
    } else if (auto *number = qobject_cast<TCurrencyEdit *>(widget)) {
        connect(number, &TCurrencyEdit::valueChanged, this, callIt);
    } else if (auto *line = qobject_cast<QLineEdit *>(widget)) {
        connect(line, &QLineEdit::textChanged, this, callIt);
    } else if (auto *text = qobject_cast<QPlainTextEdit *>(widget)) {
        connect(text, &QPlainTextEdit::textChanged, this, callIt);
    } else if (auto *choice = qobject_cast<QComboBox *>(widget)) {
        connect(choice, &QComboBox::currentIndexChanged, this, callIt);
    } else {
        m_methodsWithoutControl.append(QString::fromLatin1(method.name()));
    }
}

void TForm::call(const QMetaMethod &method)
{
    // Straight through the meta object's own entry, so that exceptions reach run() and not the event loop.
    run([&] { method.invoke(this, Qt::DirectConnection); });
}

void TForm::clicked(QAbstractButton *button, const QMetaMethod &method)
{
    // A button pressed by its mnemonic takes the focus first, so that the field before it runs its exit.
    if (button->focusPolicy() != Qt::NoFocus && focusWidget() != button) {
        QPointer<QAbstractButton> alive(button);
        button->setFocus();
        if (!alive || focusWidget() != button)
            return;
    }
    call(method);
}

void TForm::left(QWidget *field, Qt::FocusReason reason)
{
    const bool windowChange =
        reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason;
    const QMetaMethod method = m_fieldEvents.value(field).exit;
    if (windowChange || m_leaving || m_closing || !method.isValid() || !field->isEnabled() || !field->isVisible())
        return;
    // The focus that an exit gives back is no leaving of the field it had moved to.
    m_leaving = true;
    const QPointer<TForm> alive(this);
    call(method);
    if (alive)
        m_leaving = false;
}

bool TForm::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusOut:
        if (auto *field = qobject_cast<QWidget *>(watched); field && m_fieldEvents.contains(watched)) {
            const QPointer<QObject> alive(watched);
            const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
            // The control shows its own leaving first, so that the exit sees the value as it was left.
            watched->event(event);
            if (alive)
                left(field, reason);
            return true;
        }
        break;
    case QEvent::FocusIn: {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        const QMetaMethod method = m_fieldEvents.value(watched).enter;
        if (method.isValid() && reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            call(method);
        break;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        // The exit of the field before has taken the focus back: the button or tab was not reached.
        if (auto *reached = qobject_cast<QWidget *>(watched); reached
            && (qobject_cast<QAbstractButton *>(watched) || qobject_cast<QTabBar *>(watched))
            && (reached->focusPolicy() & Qt::ClickFocus) && focusWidget() != reached)
            return true;
        break;
    case QEvent::Shortcut:
        // So does the mnemonic of a tab.
        if (auto *tabs = qobject_cast<QTabBar *>(watched)) {
            tabs->setFocus(Qt::ShortcutFocusReason);
            if (focusWidget() != tabs)
                return true;
        }
        break;
    case QEvent::ShortcutOverride:
        if (sortsList(watched, *static_cast<QKeyEvent *>(event))) {
            event->accept();
            return true;
        }
        break;
    case QEvent::KeyPress:
        if (keyPressed(watched, static_cast<QKeyEvent *>(event)))
            return true;
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

bool TForm::keyPressed(QObject *watched, QKeyEvent *event)
{
    if (watched != focusWidget())
        return false;
    bool used = false;
    run([&] { used = FormKeyDown(event); });
    if (used)
        return true;
    const QMetaMethod method = m_fieldEvents.value(watched).keyDown;
    if (method.isValid()) {
        event->setAccepted(false);
        run([&] { method.invoke(this, Qt::DirectConnection, Q_ARG(QKeyEvent *, event)); });
        if (event->isAccepted())
            return true;
        event->accept(); // as it came: an ignored Tab would move on in the field and once more in the form
    }
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool plain = !(event->modifiers() & ~Qt::KeypadModifier);
    if (!enter || !plain)
        return false;
    if (auto *button = qobject_cast<QAbstractButton *>(watched)) {
        button->click();
        return true;
    }
    if (!m_enterAsTab || qobject_cast<QAbstractItemView *>(watched))
        return false;
    Funcoes::pSetFocus(this, u'\r');
    return true;
}

bool TForm::FormKeyDown(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape || event->modifiers() != Qt::NoModifier)
        return false;
    for (QAbstractButton *button : findChildren<QAbstractButton *>()) {
        if (button->property("escape").toBool() && button->isVisible() && button->isEnabled()) {
            button->click();
            return true;
        }
    }
    return false;
}

void TForm::keyPressEvent(QKeyEvent *event)
{
    // While no field has the focus; with one, the key was offered to FormKeyDown before the field got it.
    bool used = false;
    if (hasFocus())
        run([&] { used = FormKeyDown(event); });
    if (!used)
        QWidget::keyPressEvent(event);
}

void TForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_shown)
        return;
    m_shown = true;
    if (!focusWidget())
        setFocus();
    run([this] { FormShow(); });
}

void TForm::closeEvent(QCloseEvent *event)
{
    if (m_closing || !mayClose()) {
        event->setAccepted(m_closing);
        return;
    }
    m_closing = true;
    run([this] { FormClose(); });
    event->accept();
}
