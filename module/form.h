// SPDX-FileCopyrightText: The qen authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QPointer>
#include <QStringList>
#include <QWidget>

class QLineEdit;
class TPesquisa;
class TTIDatabase;

/// Ends an action without a word: the message, where one was due, has been shown already.
struct EAbort
{
};

/// A screen of the module.
///
/// A control `edtOF` and an invokable method `edtOFExit` meet because of their names, upper and lower case alike:
/// Click, DblClick, Enter, Exit, Change, KeyDown for controls, AfterScroll, BeforePost, AfterPost and
/// `<data set><field>Change` for data sets, FechaPesquisa for searches, TitleClick for grids.
/// A screen owns its data sets, and frees itself when it is closed.
class TForm : public QWidget
{
    Q_OBJECT

public:
    TForm();
    ~TForm() override;

    /// Prepares the screen and ties its controls; called once, by whoever made it, before it is shown.
    void Create();
    /// Shows the screen and returns when it was closed.
    void ShowModal();
    /// "TfmMalhaOF": the name of rights and of the class registry.
    QString className() const;
    /// Methods of the screen's own class that are named like events but have no control; a programming error.
    const QStringList &methodsWithoutControl() const { return m_methodsWithoutControl; }

protected:
    virtual void FormCreate() { }
    virtual void FormShow() { }
    virtual void FormClose() { }
    /// A key pressed anywhere on the form, before the control gets it. True when it was used up.
    virtual bool FormKeyDown(QKeyEvent *event);
    /// False keeps the screen open.
    virtual bool mayClose() { return true; }

    /// On such a screen Enter in any field moves to the next one, and in a text of many lines too.
    void setEnterAsTab(bool on) { m_enterAsTab = on; }
    /// Opens shared tables of the data module until the screen closes.
    void AbreTabelas(const QStringList &names);
    TTIDatabase &database() const;
    /// Runs the action as an event of this screen: what it lets escape is reported once, and nothing of it remains.
    void run(const std::function<void()> &action);
    /// A text of the program's in a field, shown from its beginning.
    static void showText(QLineEdit *field, const QString &text);

    // A search knows its table, its columns, the code field beside it and the field that describes the code. For one
    // that has no methods of its own in the screen, describe() and takeChosen() run by themselves.

    /// Shows what the code stands for; an unknown or empty code shows nothing.
    void describe(const TPesquisa *search);
    /// Puts what was chosen into the code field; nothing when the search was cancelled.
    void takeChosen(const TPesquisa *search);
    /// Whether the code is in the table. An empty code is no unknown one.
    bool isKnown(const TPesquisa *search) const;

    /// Shows the message, puts the focus on the field at fault when it can take it.
    void refuse(const QString &message, QWidget *atFault = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void tie();
    void tieSearches();
    QLineEdit *codeField(const TPesquisa *search) const;
    void tieMethod(QObject *component, const QString &event, const QMetaMethod &method);
    void tieWidget(QWidget *widget, const QString &event, const QMetaMethod &method);
    void tieFieldChanges(QObject *dataSet, const QString &field, const QMetaMethod &method);
    void call(const QMetaMethod &method);
    void clicked(QAbstractButton *button, const QMetaMethod &method);
    void left(QWidget *field, Qt::FocusReason reason);
    bool keyPressed(QObject *watched, QKeyEvent *event);
    QObject *component(const QString &name) const;

    struct FieldEvents
    {
        QMetaMethod enter;
        QMetaMethod exit;
        QMetaMethod keyDown;
    };
    QHash<QObject *, FieldEvents> m_fieldEvents;
    QStringList m_methodsWithoutControl;
    QStringList m_openTables;
    bool m_enterAsTab = false;
    bool m_leaving = false;
    bool m_closing = false;
    bool m_shown = false;
};
