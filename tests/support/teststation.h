// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/qenhost.h"
#include "module/host_services/tabelas.h"
#include "tests/support/testdatabase.h"

#include <QPointer>
#include <QSettings>
#include <QTemporaryDir>

#include <concepts>

class QLabel;

/// A station of the mill: a database of its own with the common data, a user who is logged in, and the screens of the
/// package. It is 10 March 2026, 10:30, until the test pins another moment.
///
/// Screens are worked with real keys and clicks on their controls by name; a name that is missing fails the test and
/// ends it by an exception.
class TestStation
{
public:
    explicit TestStation(const QString &engine, const QString &user = QStringLiteral("ADMIN"), int company = 1);
    ~TestStation();
    Q_DISABLE_COPY_MOVE(TestStation)

private:
    /// The user's folders, before anybody asks for them.
    struct Home
    {
        Home();
        QTemporaryDir folder;
    };
    Home m_home;
    QSettings m_settings;

public:
    TestDatabase database;
    TTabela tabela;
    QenHost host;

    /// Creates the screen as the host does and shows it; it is the one that all that follows works on.
    QWidget *open(const QString &className);
    /// Works on a screen that was opened otherwise, such as a modal one.
    void use(QWidget *form) { m_form = form; }
    QWidget *form() const { return m_form; } ///< null when it has closed itself
    void closeForm(); ///< and waits until it is gone
    /// What the package's instance variable of a screen holds, such as "fmMalhaOF"; null while the screen is closed.
    static QObject *instance(const char *variable);

    template <std::derived_from<QWidget> Kind = QWidget> Kind *child(const QString &name) const
    {
        auto *found = qobject_cast<Kind *>(findChild(name));
        return found ? found : throwMissing<Kind>(name);
    }
    /// Enters the field as the Tab key does and types over what stands in it, without leaving it.
    void type(const QString &name, const QString &text);
    /// Types, then leaves by the Tab key.
    void enter(const QString &name, const QString &text);
    /// A click with the mouse. The button must be visible and enabled.
    void click(const QString &name);
    /// A key for the control that has the focus.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// What a field, label, button or text shows.
    QString text(const QString &name) const;
    QString focus() const; ///< name of the control that has the focus

    QVariant value(const QString &statement) { return database.value(statement); }

private:
    QWidget *findChild(const QString &name) const;
    void comeBack();
    [[noreturn]] static void fail(const QString &message);
    template <class Kind> Kind *throwMissing(const QString &name) const
    {
        fail(QStringLiteral("%1 is missing, or no %2")
                 .arg(name, QString::fromLatin1(Kind::staticMetaObject.className())));
    }

    QPointer<QWidget> m_form;
};
