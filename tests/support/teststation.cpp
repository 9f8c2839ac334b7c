// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/teststation.h"

#include "module/form.h"
#include "module/host_services/clock.h"
#include "tests/support/keys.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLibrary>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QFunctionPointer ofPackage(const char *name)
{
    static QLibrary library(QString::fromUtf8(QEN_MODULE_FILE));
    const QFunctionPointer resolved = library.resolve(name);
    if (!resolved)
        qFatal("%s", qPrintable(library.errorString()));
    return resolved;
}

} // namespace

TestStation::Home::Home()
{
    qputenv("XDG_DATA_HOME", folder.filePath(u"data"_s).toUtf8());
    qputenv("XDG_CONFIG_HOME", folder.filePath(u"config"_s).toUtf8());
}

TestStation::TestStation(const QString &engine, const QString &user, int company)
    : m_settings(m_home.folder.filePath(u"qen.ini"_s), QSettings::IniFormat)
    , database(engine)
    , host(m_settings)
{
    QLocale::setDefault(QLocale(QLocale::Portuguese, QLocale::Brazil));
    Clock::pin(QDateTime(QDate(2026, 3, 10), QTime(10, 30)));
    database.addCommonData();
    tabela.IBDatabase->open(database.settings());
    host.login(user, company);
    ofPackage("qenMalharia_initialize")();
}

TestStation::~TestStation()
{
    const QWidgetList open = QApplication::topLevelWidgets();
    const QList<QPointer<QWidget>> windows(open.begin(), open.end()); // a screen takes its menus along
    for (const QPointer<QWidget> &window : windows) {
        if (qobject_cast<TForm *>(window.data()))
            delete window;
    }
    ofPackage("qenMalharia_finalize")();
    Clock::pin({});
}

QObject *TestStation::instance(const char *variable)
{
    return reinterpret_cast<QPointer<QObject> *>(ofPackage(variable))->data();
}

QWidget *TestStation::open(const QString &className)
{
    m_form = host.loadForm(u"qenMalharia"_s, className, false, true);
    if (!m_form)
        fail(u"There is no screen %1"_s.arg(className));
    m_form->activateWindow();
    if (!QTest::qWaitForWindowActive(m_form))
        fail(u"%1 does not come up"_s.arg(className));
    return m_form;
}

void TestStation::closeForm()
{
    if (!m_form)
        return;
    m_form->close();
    if (!QTest::qWaitFor([this] { return m_form.isNull(); }))
        fail(u"The screen does not close"_s);
}

void TestStation::comeBack()
{
    // A desktop gives the window its focus back when a box over it has closed; the offscreen platform does not.
    if (!m_form || !m_form->isVisible() || QApplication::activeModalWidget() || m_form->window()->isActiveWindow())
        return;
    m_form->window()->activateWindow();
    if (!QTest::qWaitForWindowActive(m_form->window()))
        fail(u"The screen does not come back"_s);
}

void TestStation::type(const QString &name, const QString &text)
{
    comeBack();
    auto *field = child(name);
    if (!field->isEnabled() || !field->isVisible())
        fail(u"Nothing can be typed in %1"_s.arg(name));
    if (!field->hasFocus())
        field->setFocus(Qt::TabFocusReason);
    if (!field->hasFocus())
        fail(u"%1 does not get the focus; %2 has it"_s.arg(name, focus()));
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty())
        QTest::keyClick(field, Qt::Key_Delete);
    Keys::type(field, text);
}

void TestStation::enter(const QString &name, const QString &text)
{
    type(name, text);
    QTest::keyClick(child(name), Qt::Key_Tab);
    comeBack();
}

void TestStation::click(const QString &name)
{
    comeBack();
    auto *button = child(name);
    if (!button->isEnabled() || !button->isVisible())
        fail(u"%1 cannot be clicked"_s.arg(name));
    QTest::mouseClick(button, Qt::LeftButton);
    comeBack();
}

void TestStation::key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    comeBack();
    QWidget *target = QApplication::focusWidget();
    QTest::keyClick(target ? target : m_form.data(), key, modifiers);
    comeBack();
}

QString TestStation::text(const QString &name) const
{
    const QWidget *widget = child(name);
    if (const auto *line = qobject_cast<const QLineEdit *>(widget))
        return line->text();
    if (const auto *plain = qobject_cast<const QPlainTextEdit *>(widget))
        return plain->toPlainText();
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        return label->text();
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
        return button->text();
    fail(u"%1 shows no text"_s.arg(name));
}

QString TestStation::focus() const
{
    const QWidget *widget = QApplication::focusWidget();
    return widget ? widget->objectName() : QString();
}

QWidget *TestStation::findChild(const QString &name) const
{
    return m_form ? m_form->findChild<QWidget *>(name) : nullptr;
}

void TestStation::fail(const QString &message)
{
    QTest::qFail(qPrintable(message), __FILE__, __LINE__);
    throw std::runtime_error(message.toStdString());
}
